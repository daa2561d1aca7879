// The rows a fresh office cannot do without.

#include "tools/init/Installazione.h"

#include "store/Transazione.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariantList>

namespace sorvane::init {

namespace {

// Rows of one table, values in the order of the columns.
struct Righe
{
    const char *tabella;
    const char *colonne;
    QList<QVariantList> valori;
};

// The good and bad categories of the products, with their totals.
const Righe BuoniCattivi = {
    "TabBuoCat", "Codice, Descrizione, Totalizzatore",
    {{"0", "DA ESCLUDERE", 0}, {"1", "Redd.Fisso: Breve", 1}, {"2", "Redd.Fisso: Medio", 1},
     {"3", "Redd.Fisso: Lungo", 1}, {"4", "Redd.Var.: G.P.F.", 2},
     {"5", "Redd.Var.: Azionario", 2}, {"6", "Redd.Var.: G.P.M.", 2}, {"7", "Polizze", 3},
     {"8", "Fondi Pensione", 3}, {"9", "Ripartito", 9}}};

// The reasons of the opening balances of the 04 ledger and of the
// average-interest print.
const Righe Causali = {
    "DistCausali", "Codice, Descrizione, Segno",
    {{"007", "Versamento", "+"}, {"008", "Prelievo", "-"}, {"900", "Saldo iniziale", "+"}}};

// The report modules the program prints, by key.
const Righe Moduli = {
    "Moduli", "MdKey, MdPrg, MdFile, MdTitolo",
    {{"DistXdit", 1, "DistXdit.rpt", "DISTINTA DOCUMENTI PER DITTA"},
     {"DistXcli", 1, "DistXcli.rpt", "DISTINTA DOCUMENTI PER CLIENTE"},
     {"DistC04", 1, "DistC04.rpt", "ESTRATTO CONTO DISTINTE 04"},
     {"InterMed", 1, "InterMed.rpt", "MOVIMENTI CON INTERESSI MEDI"},
     {"CliTel", 1, "CliTel.rpt", "ELENCO TELEFONICO CLIENTI"},
     {"CliEtic", 1, "CliEtic.rpt", "ETICHETTE CLIENTI"}}};

// The currencies of the exchange screen, in its order: the euro, the
// currencies fixed to it in 1999 ('S') and the others ('N'). The fourth
// value is the currency's code at the exchange office.
const Righe Valute = {
    "TabNazioni", "Codice, Descrizione, CodiceISO, CodiceISTAT, TipoNaz, GesCmb",
    {{"EUR", "EURO", "EUR", "242", "S", 1},
     {"LIT", "LIRA ITALIANA", "ITL", "018", "S", 2},
     {"DEM", "MARCO TEDESCO", "DEM", "094", "S", 3},
     {"FRF", "FRANCO FRANCESE", "FRF", "029", "S", 4},
     {"ESP", "PESETA SPAGNOLA", "ESP", "067", "S", 5},
     {"NLG", "FIORINO OLANDESE", "NLG", "050", "S", 6},
     {"BEF", "FRANCO BELGA", "BEF", "009", "S", 7},
     {"ATS", "SCELLINO AUSTRIACO", "ATS", "008", "S", 8},
     {"PTE", "ESCUDO PORTOGHESE", "PTE", "064", "S", 9},
     {"IEP", "STERLINA IRLANDESE", "IEP", "040", "S", 10},
     {"FIM", "MARCO FINLANDESE", "FIM", "032", "S", 11},
     {"LUF", "FRANCO LUSSEMBURGHESE", "LUF", "044", "S", 12},
     {"GRD", "DRACMA GRECA", "GRD", "035", "S", 13},
     {"USD", "DOLLARO USA", "USD", "001", "N", 14},
     {"GBP", "STERLINA INGLESE", "GBP", "002", "N", 15},
     {"CHF", "FRANCO SVIZZERO", "CHF", "003", "N", 16},
     {"JPY", "YEN GIAPPONESE", "JPY", "071", "N", 17}}};

bool Scrivi(QSqlDatabase &db, const Righe &righe, QString *errore)
{
    const QString tabella = QString::fromLatin1(righe.tabella);
    const QString colonne = QString::fromLatin1(righe.colonne);
    QStringList segnaposti;
    for (int i = 0; i < colonne.count(QLatin1Char(',')) + 1; ++i)
        segnaposti.append(QStringLiteral("?"));
    QSqlQuery q(db);
    q.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(tabella, colonne, segnaposti.join(QStringLiteral(", "))));
    for (const QVariantList &riga : righe.valori) {
        for (const QVariant &v : riga)
            q.addBindValue(v);
        if (!q.exec()) {
            *errore = QStringLiteral("ERRORE SCRIVENDO LA TABELLA %1: %2")
                          .arg(tabella, TestoErroreSqlite(q.lastError()));
            return false;
        }
    }
    return true;
}

} // namespace

bool ScriviRigheIniziali(QSqlDatabase &db, QString *errore)
{
    Transazione t(db);
    if (!t.attiva()) {
        *errore = t.errore();
        return false;
    }
    if (!Scrivi(db, BuoniCattivi, errore) || !Scrivi(db, Causali, errore)
        || !Scrivi(db, Moduli, errore) || !Scrivi(db, Valute, errore))
        return false;
    if (!t.conferma()) {
        *errore = t.errore();
        return false;
    }
    return true;
}

} // namespace sorvane::init
