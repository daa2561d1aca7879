// Rows typed straight into the 04 ledger, as its management screen and the
// average-interest screen write them (numbers from 800000001 up): for the
// teams' members, payments and withdrawals over the year of the euro's
// arrival, in lire up to 2001 and in euro from 2002. With a scale the
// ledger is topped up with such rows to the number asked, for benchmarks.

#include "tools/demo/Ufficio.h"

#include "frame/core/Giorni.h"
#include "store/Transazione.h"

#include <QSqlError>

#include <algorithm>
#include <cmath>

namespace sorvane::demo {
namespace {

constexpr int BaseManuale = 800000000;
constexpr int NumeroRiservato = 999999999;
// A team member who has left the office: a row of the team, no card.
constexpr int MembroSenzaScheda = 999990;

const char *const Operazioni[] = {"VERSAMENTO DIRETTO", "BONIFICO", "GIROCONTO",
                                  "PRELIEVO", "CEDOLA INCASSATA", "DELL'ANNO \"VARIE\""};

} // namespace

bool ScriviRighe04(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, qint64 quanti,
                   QString *errore)
{
    Inserimento righe(db, QStringLiteral("Distinte04"),
                      QStringLiteral("dstCodice dstDitta dstData dstCliente dstCausale "
                                     "dstMoneta dstImporto dstCodP")
                          .split(QLatin1Char(' ')));
    QSqlQuery massimo(db);
    massimo.prepare(QStringLiteral("SELECT MAX(dstCodice) FROM Distinte04 WHERE dstCodice < ?"));
    massimo.addBindValue(NumeroRiservato);
    int numero = massimo.exec() && massimo.next() ? massimo.value(0).toInt() : 0;
    numero = std::max(numero, BaseManuale);
    auto scrivi = [&](int giorno, qint32 cliente, int ditta) {
        const bool lire = giorno < GiornoEuro;
        const bool prelievo = caso.prob(0.3);
        const double euro = caso.intero(2, 60) * 250.0;
        return righe.scrivi({++numero, ufficio.ditte[ditta], giorno, cliente,
                             QLatin1String(prelievo ? "003" : "001"),
                             QLatin1String(lire ? "LIT" : "EUR"),
                             lire ? std::round(euro * 1936.27 / 1000) * 1000 : euro,
                             QLatin1String(caso.scegli(Operazioni))});
    };

    // The teams' members, a few rows each around the cut-over.
    QSqlQuery membri(db);
    if (!membri.exec(QStringLiteral("SELECT Squadra, Cliente FROM Squadre ORDER BY Squadra"))) {
        *errore = TestoErroreSqlite(membri.lastError());
        return false;
    }
    std::vector<std::pair<int, qint32>> elenco;
    while (membri.next())
        elenco.emplace_back(membri.value(0).toInt(), membri.value(1).toInt());
    if (!elenco.empty()) {
        Inserimento assente(db, QStringLiteral("Squadre"),
                            {QStringLiteral("Squadra"), QStringLiteral("Cliente")});
        if (!assente.scrivi({elenco.front().first, MembroSenzaScheda})) {
            *errore = assente.errore();
            return false;
        }
    }
    const int dal = GiornoDaData(QDate(2001, 1, 2));
    for (const auto &membro : elenco) {
        const int ditta = int(caso.indice(ufficio.ditte.size()));
        for (int i = caso.intero(2, 4); i > 0; --i) {
            if (!scrivi(dal + caso.intero(0, 700), membro.second, ditta)) {
                *errore = righe.errore();
                return false;
            }
        }
    }

    // A scale asks for that many rows in the ledger.
    QSqlQuery conta(db);
    const qint64 presenti =
        conta.exec(QStringLiteral("SELECT COUNT(*) FROM Distinte04")) && conta.next()
            ? conta.value(0).toLongLong() : 0;
    for (qint64 i = presenti; i < quanti; ++i) {
        const ClienteDemo &c = caso.scegli(ufficio.clienti);
        const int giorno = std::max(c.dal, c.al - caso.intero(0, 3650));
        if (!scrivi(giorno, c.codice, c.ditta)) {
            *errore = righe.errore();
            return false;
        }
    }
    return true;
}

} // namespace sorvane::demo
