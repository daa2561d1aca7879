#include "distinte/Salvataggio.h"

#include "distinte/Movimento.h"
#include "distinte/Numerazione.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Connessione.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/Transazione.h"

#include <QList>
#include <QSqlError>
#include <QSqlQuery>
#include <utility>

namespace sorvane {

namespace {

// The rows of the working table in movement order, with their provisional
// numbers.
bool LeggiLavoro(QList<RigaDistinta> *righe, QString *errore)
{
    Recordset rs = Recordset::Apri(
        DbLavoro(), QStringLiteral("SELECT * FROM BkDistinte ORDER BY dstCodice, dstPrg"),
        dbOpenSnapshot);
    if (!rs.IsOpen()) {
        *errore = rs.Errore();
        return false;
    }
    for (; !rs.Eof(); rs.MoveNext())
        righe->append(LeggiRiga(rs));
    rs.Close();
    return true;
}

Recordset ApriPerIndice(const QString &nome, QString *errore)
{
    Recordset rs = Recordset::Apri(DbDati(), nome, dbOpenTable);
    if (rs.IsOpen() && !rs.SetIndex(IndicePrimario))
        rs.Close();
    if (!rs.IsOpen())
        *errore = rs.Errore();
    return rs;
}

bool Aggiorna(Recordset &rs, QString *errore)
{
    if (rs.Update())
        return true;
    *errore = rs.Errore();
    rs.CancelUpdate();
    return false;
}

// The slip row as it reaches `Distinte`: its slices still to be confirmed.
bool ScriviDistinta(Recordset &rs, RigaDistinta riga, QString *errore)
{
    for (QString &fetta : riga.dstCodP)
        fetta = FettaAperta(fetta);
    if (!rs.AddNew()) {
        *errore = rs.Errore();
        return false;
    }
    ScriviRiga(rs, riga);
    return Aggiorna(rs, errore);
}

bool ScriviDistinta04(Recordset &rs, const RigaDistinta &riga, QString *errore)
{
    if (!rs.AddNew()) {
        *errore = rs.Errore();
        return false;
    }
    // The ledger keeps the header of the movement and its codes in one text.
    const std::pair<const char *, QVariant> campi[] = {
        {"dstCodice", riga.dstCodice},   {"dstData", riga.dstData},
        {"dstDitta", riga.dstDitta},     {"dstCliente", riga.dstCliente},
        {"dstCausale", riga.dstCausale}, {"dstMoneta", riga.dstMoneta},
        {"dstImporto", riga.dstImporto}, {"dstCodP", CodiciDistinte04(riga)},
    };
    for (const auto &[nome, valore] : campi)
        rs.SetField(QString::fromLatin1(nome), valore);
    return Aggiorna(rs, errore);
}

// The writes of the save, inside the caller's transaction.
bool Trasferisci(EsitoSalvataggio &esito)
{
    QList<RigaDistinta> righe;
    if (!LeggiLavoro(&righe, &esito.errore))
        return false;
    Recordset distinte = ApriPerIndice(QStringLiteral("Distinte"), &esito.errore);
    if (!distinte.IsOpen())
        return false;
    Recordset distinte04 = ApriPerIndice(QStringLiteral("Distinte04"), &esito.errore);
    if (!distinte04.IsOpen())
        return false;

    std::int32_t codice = UltimoCodice(distinte);
    std::int32_t codice04 = UltimoCodice(distinte04);
    for (int i = 0; i < righe.size(); ++i) {
        RigaDistinta riga = righe.at(i);
        const std::int32_t provvisorio = riga.dstCodice;
        // A row "1" keeps the number of the row "0" before it; one without
        // its row "0" is a movement of its own rather than a clash of keys.
        const bool seguito = riga.dstPrg != RigaPrincipale && i > 0
            && righe.at(i - 1).dstCodice == provvisorio
            && righe.at(i - 1).dstPrg == RigaPrincipale;
        if (!seguito) {
            ++codice;
            ++esito.movimenti;
        }
        riga.dstCodice = codice;
        if (!ScriviDistinta(distinte, riga, &esito.errore))
            return false;
        ++esito.righeDistinte;

        // A plain movement, one row "0" alone, reaches the 04 ledger too.
        const bool solo = riga.dstPrg == RigaPrincipale
            && (i + 1 == righe.size() || righe.at(i + 1).dstCodice != provvisorio);
        if (solo) {
            riga.dstCodice = ++codice04;
            if (!ScriviDistinta04(distinte04, riga, &esito.errore))
                return false;
            ++esito.righe04;
        }
    }
    distinte.Close();
    distinte04.Close();

    QSqlQuery svuota(DbLavoro());
    if (!svuota.exec(QStringLiteral("DELETE FROM BkDistinte"))) {
        esito.errore = TestoErroreSqlite(svuota.lastError());
        return false;
    }
    return true;
}

} // namespace

EsitoSalvataggio SalvaDistinta()
{
    EsitoSalvataggio esito;
    {
        Transazione t;
        if (!t.attiva())
            esito.errore = t.errore();
        else if (Trasferisci(esito) && t.conferma())
            esito.riuscito = true;
        else if (esito.errore.isEmpty())
            esito.errore = t.errore();
    }
    if (esito.riuscito)
        return esito;
    // Nothing was written: the counts would only mislead.
    esito.movimenti = esito.righeDistinte = esito.righe04 = 0;
    sessione().TestoErrore = TestoGuasto(
        QStringLiteral("ERRORE NEL SALVATAGGIO DELLA DISTINTA\n"
                       "NESSUN MOVIMENTO E' STATO SALVATO: RESTANO TUTTI DA SALVARE"),
        esito.errore);
    Messaggio(sessione().TestoErrore, QStringLiteral("KELVAR - SALVA DISTINTA"), Icona::Stop);
    return esito;
}

} // namespace sorvane
