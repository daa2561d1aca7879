#include "lookup/SceltaCliente.h"

#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "lookup/ListaCli.h"
#include "store/Cliente.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMdiSubWindow>

namespace sorvane {

namespace {

// The name field shows the name without the blanks of the fixed field.
void Mostra(QLineEdit *codice, QLineEdit *nome, std::int32_t cliente)
{
    codice->setText(QString::number(cliente));
    QString ragsoc = Cli().Ragsoc;
    while (!ragsoc.isEmpty() && ragsoc.back() == QLatin1Char(' '))
        ragsoc.chop(1);
    nome->setText(ragsoc);
}

} // namespace

std::int16_t SceltaCliente(QWidget *schermo, QLineEdit *codice, QLineEdit *nome,
                           bool ancheChiusi)
{
    const QString testo = nome->text().trimmed();
    if (testo.isEmpty())
        return 0;
    ListaCli &lista = listaCli();
    CondivisiListaCli &condivisi = condivisiListaCli();
    Cli().Codice = 0;
    condivisi.LookupLive = 0;
    // With the flag down the box searches nothing.
    lista.Check1->setChecked(ancheChiusi);
    const std::int16_t quanti = lista.CercaNomi(testo);
    if (quanti == 0)
        return 0;
    if (quanti == 1) {
        Mostra(codice, nome, Cli().Codice);
        return quanti;
    }

    // Under the field, in the calling screen's coordinates. These values
    // never reach the popup, which opens where its own position says.
    // The screen's place is its MDI child window's, else its own window's.
    auto *sotto = qobject_cast<QMdiSubWindow *>(schermo->parentWidget());
    const QWidget *cornice = sotto ? static_cast<QWidget *>(sotto) : schermo->window();
    const int campoAlto = nome->mapTo(schermo, QPoint(0, 0)).y();
    condivisi.PosX = InTwips(cornice->x());
    condivisi.PosY = InTwips(campoAlto + nome->height() + cornice->y()) + 360;
    EseguiModale(lista);

    const std::int32_t scelto = Cli().Codice;
    if (scelto < 1) {
        codice->clear();
        codice->setFocus();
        return quanti;
    }
    CaricaCliente(scelto);
    Mostra(codice, nome, scelto);
    return quanti;
}

} // namespace sorvane
