#include "reports/StampaReport.h"

#include "frame/core/Messaggi.h"
#include "reports/CaricaDati.h"
#include "reports/Lancio.h"
#include "store/Connessione.h"

namespace sorvane {

bool StampaReport::lancioStampa()
{
    Modello modello;
    if (!ApriModulo(stNomeModuloStampa, modello))
        return false;
    DatiReport dati;
    QString errore;
    if (!CaricaDatiReport(DbLavoro(), dati, &errore)) {
        Messaggio(errore, QString(), Icona::Stop);
        return false;
    }
    if (!stStringaSQL.isEmpty())
        dati.esecuzione.insert(QStringLiteral("formula"), stStringaSQL);

    Lancio lancio;
    const QString tipo = stTipoStampa.trimmed().toUpper();
    lancio.tipo = tipo.isEmpty() ? QLatin1Char('V') : tipo.at(0);
    lancio.copie = stCopie;
    lancio.titolo = stIntestazioneVideo;
    lancio.stampante = stStampante;
    lancio.padre = stObjStampante;
    return LanciaReport(lancio, modello, dati);
}

} // namespace sorvane
