#include "frame/ui/MessaggiQt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace sorvane {

namespace {

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

} // namespace

Risposta MessaggiQt::chiedi(const Richiesta &richiesta)
{
    QMessageBox box(QApplication::activeWindow());
    box.setIcon(icona(richiesta.icona));
    // A box without a title carries the program's name, as the classic one did.
    box.setWindowTitle(richiesta.titolo.isEmpty() ? QApplication::applicationName().toUpper()
                                                   : richiesta.titolo);
    box.setText(richiesta.testo);
    const QList<Bottone> lista = bottoni(richiesta.pulsanti);
    QList<QPushButton *> creati;
    for (const Bottone &b : lista) {
        QPushButton *pb = box.addButton(b.standard);
        pb->setText(QString::fromUtf8(b.testo));
        creati.append(pb);
    }
    const int predefinito = qBound(0, richiesta.predefinito, int(creati.size()) - 1);
    box.setDefaultButton(creati.at(predefinito));
    // Escape answers Cancel or No where the box has one, else the default.
    box.setEscapeButton(creati.last());
    box.exec();
    const int scelto = int(creati.indexOf(static_cast<QPushButton *>(box.clickedButton())));
    if (scelto < 0)
        return lista.at(predefinito).risposta;
    return lista.at(scelto).risposta;
}

} // namespace sorvane
