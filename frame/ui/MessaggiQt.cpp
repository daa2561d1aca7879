#include "frame/ui/MessaggiQt.h"

#include "frame/ui/Modale.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetrics>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>

namespace sorvane {

namespace {

// The title bar's own buttons and margins beside the title, in pixels.
constexpr int SpazioBarraTitolo = 120;

struct Bottone
{
    QMessageBox::StandardButton standard;
    const char *testo;
    Risposta risposta;
};

QList<Bottone> bottoni(Pulsanti p)
{
    const Bottone ok{QMessageBox::Ok, "OK", Risposta::Ok};
    const Bottone annulla{QMessageBox::Cancel, "Annulla", Risposta::Annulla};
    const Bottone interrompi{QMessageBox::Abort, "Interrompi", Risposta::Interrompi};
    const Bottone riprova{QMessageBox::Retry, "Riprova", Risposta::Riprova};
    const Bottone ignora{QMessageBox::Ignore, "Ignora", Risposta::Ignora};
    const Bottone si{QMessageBox::Yes, "S\u00ec", Risposta::Si};
    const Bottone no{QMessageBox::No, "No", Risposta::No};
    switch (p) {
    case Pulsanti::Ok: return {ok};
    case Pulsanti::OkAnnulla: return {ok, annulla};
    case Pulsanti::InterrompiRiprovaIgnora: return {interrompi, riprova, ignora};
    case Pulsanti::SiNoAnnulla: return {si, no, annulla};
    case Pulsanti::SiNo: return {si, no};
    case Pulsanti::RiprovaAnnulla: return {riprova, annulla};
    }
    return {ok};
}

QMessageBox::Icon icona(Icona i)
{
    switch (i) {
    case Icona::Stop: return QMessageBox::Critical;
    case Icona::Domanda: return QMessageBox::Question;
    case Icona::Esclamazione: return QMessageBox::Warning;
    case Icona::Informazione: return QMessageBox::Information;
    case Icona::Nessuna: break;
    }
    return QMessageBox::NoIcon;
}

// Escape answers Cancel where the box has it, else No, else the default button:
// a box without a way out keeps the answer the program proposes.
int PulsanteEsc(const QList<Bottone> &lista, int predefinito)
{
    for (Risposta via : {Risposta::Annulla, Risposta::No}) {
        for (int i = 0; i < lista.size(); ++i) {
            if (lista.at(i).risposta == via)
                return i;
        }
    }
    return predefinito;
}

} // namespace

Risposta MessaggiQt::chiedi(const Richiesta &richiesta)
{
    QMessageBox box(QApplication::activeWindow());
    box.setIcon(icona(richiesta.icona));
    // A box without a title carries the program's name, as the classic one did.
    box.setWindowTitle(richiesta.titolo.isEmpty() ? QApplication::applicationName().toUpper()
                                                   : richiesta.titolo);
    // Messages hold "<" and ">" ("IMPORTO < 0", "ROSSI >MARIO"): never read as markup.
    box.setTextFormat(Qt::PlainText);
    box.setText(richiesta.testo);
    const QList<Bottone> lista = bottoni(richiesta.pulsanti);
    QList<QPushButton *> creati;
    for (const Bottone &b : lista) {
        QPushButton *pb = box.addButton(b.standard);
        pb->setText(QString::fromUtf8(b.testo));
        creati.append(pb);
    }
    // Out of range means the first button, as for the silent responder.
    const int predefinito =
        (richiesta.predefinito >= 0 && richiesta.predefinito < creati.size())
            ? richiesta.predefinito
            : 0;
    box.setDefaultButton(creati.at(predefinito));
    // The box is as wide as its title needs, whose words would otherwise be
    // cut in the title bar of a short message ("KELVAR - ERRORE N. 18").
    if (auto *griglia = qobject_cast<QGridLayout *>(box.layout())) {
        QFont grassetto = box.font();
        grassetto.setBold(true);
        const int larghezza =
            QFontMetrics(grassetto).horizontalAdvance(box.windowTitle()) + SpazioBarraTitolo;
        griglia->addItem(new QSpacerItem(larghezza, 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
                         griglia->rowCount(), 0, 1, griglia->columnCount());
    }
    box.setEscapeButton(creati.at(PulsanteEsc(lista, predefinito)));
    // A message in the middle of a long job must not show the hourglass.
    const bool attesa = QApplication::overrideCursor() != nullptr;
    if (attesa)
        QApplication::setOverrideCursor(QCursor(Qt::ArrowCursor));
    {
        RitornoAllaFinestra ritorno;
        box.exec();
    }
    if (attesa)
        QApplication::restoreOverrideCursor();
    const int scelto = int(creati.indexOf(static_cast<QPushButton *>(box.clickedButton())));
    if (scelto < 0)
        return lista.at(predefinito).risposta;
    return lista.at(scelto).risposta;
}

} // namespace sorvane
