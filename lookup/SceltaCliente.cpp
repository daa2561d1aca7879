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
    const std::int16_t quanti = CercaClienti(testo, ancheChiusi);
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

std::int16_t CercaClienti(const QString &nome, bool ancheChiusi)
{
    ListaCli &lista = listaCli();
    Cli().Codice = 0;
    condivisiListaCli().LookupLive = 0;
    // With the flag down the box searches nothing.
    lista.Check1->setChecked(ancheChiusi);
    return lista.CercaNomi(nome.trimmed());
}

std::int32_t MostraClienti(int sinistra, int alto)
{
    CondivisiListaCli &condivisi = condivisiListaCli();
    condivisi.PosX = sinistra;
    condivisi.PosY = alto;
    EseguiModale(listaCli());
    return Cli().Codice;
}

} // namespace sorvane
