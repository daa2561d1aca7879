#include "distinte/GesDist.h"
#include "distinte/InsDist.h"
#include "frame/core/Locale.h"
#include "frame/core/Messaggi.h"
#include "frame/main/Aggiorna.h"
#include "frame/main/Schermate.h"
#include "frame/main/Startup.h"
#include "frame/ui/MessaggiQt.h"
#include "ledger04/GesDist4.h"
#include "ledger04/GesIntMd.h"
#include "ledger04/InsSald4.h"
#include "lookup/ListaCli.h"
#include "reports/Gstampe.h"
#include "reports/Lancio.h"
#include "tables/GesCambi.h"
#include "tables/SchermoTabella.h"

#include <QApplication>
#include <QStringList>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("sorvane"));
    sorvane::ImpostaLocaleProgramma();
    // Qt's own dialogs (print, files, page set-up) speak Italian too.
    sorvane::CaricaTestiQtItaliani();
    sorvane::MessaggiQt risponditore;
    sorvane::installaMessaggi(&risponditore);

    // The suite passes one parameter string; a shell may have split it.
    const QString riga = QApplication::arguments().mid(1).join(QLatin1Char(' '));
    int esito = 0;
    sorvane::RegistraSchermo(0, [] { return new sorvane::InsDist; });
    sorvane::RegistraSchermo(1, [] { return new sorvane::GesDist; });
    sorvane::RegistraSchermo(2, [] { return new sorvane::GesDist4; });
    sorvane::RegistraSchermo(3, [] { return new sorvane::GesIntMd; });
    sorvane::RegistraSchermo(4, [] { return new sorvane::InsSald4; });
    sorvane::RegistraSchermo(5, [] { return new sorvane::riferimento::GesSoc; });
    sorvane::RegistraSchermo(6, [] { return new sorvane::riferimento::GesBanca; });
    sorvane::RegistraSchermo(7, [] { return new sorvane::riferimento::GesCauDs; });
    {
        sorvane::Startup cornice;
        // The client popup is made once at start, so the first lookup opens at once.
        cornice.CaricaListaCli = sorvane::CaricaListaCli;
        cornice.AvviaStampe = sorvane::AvviaMotoreStampe;
        cornice.FermaStampe = sorvane::FermaMotoreStampe;
        cornice.GestioneCambi = [&cornice](int modo) { sorvane::GestisciCambi(&cornice, modo); };
        cornice.VerificaAggiornamenti = [&cornice] {
            sorvane::VerificaAggiornamenti(-1, &cornice);
        };
        if (cornice.Avvia(riga)) {
            cornice.show();
            esito = app.exec();
        }
    }
    sorvane::ScaricaListaCli();
    sorvane::installaMessaggi(nullptr);
    return esito;
}
