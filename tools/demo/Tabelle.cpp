// The reference tables of the demo office: firms, banks, reasons, currencies,
// provinces, product categories, groups and products.

#include "tools/demo/Nomi.h"
#include "tools/demo/Ufficio.h"

#include "frame/core/Giorni.h"

#include <QSqlError>

#include <iterator>

namespace sorvane::demo {
namespace {

struct Ditta
{
    const char *nome;
    const char *indirizzo;
    const char *cap;
    const char *localita;
    const char *provincia;
    const char *prefisso; // of its product codes
    const char *paese;    // of its ISIN codes
    const char *gamma;    // the kinds of product it sells, by their codes
};

const Ditta Ditte[] = {
    {"BANCA ALPINA INVESTIMENTI S.P.A.", "PIAZZA GARIBALDI 4", "23900", "LECCO", "LC",
     "ALP", "IT", "MON OBB OBE BIL AIT AEU AAM GPF"},
    {"LARIO FONDI SGR S.P.A.", "VIA NAZARIO SAURO 21", "22100", "COMO", "CO", "LAR", "IT",
     "MON OBE OBL BIL AIT AEU AAM MIX"},
    {"PREVIDENZA BRIANTEA VITA S.P.A.", "VIALE ITALIA 101", "20900", "MONZA", "MB", "PBV",
     "IT", "VIT UNI RIV FPA PIP"},
    {"GESTIONI DELL'ADDA SGR S.P.A.", "IT60X0542811101000000123456", "20121", "MILANO",
     "MI", "ADD", "IT", "MON OBE BIL AIT GPF GPM"},
    {"ORIZZONTE SICAV", "BOULEVARD ROYAL 26", "L2449", "LUSSEMBURGO", "EE", "ORZ", "LU",
     "MON OBE AEU AAM BIL"},
};

struct Genere
{
    const char *codice;
    const char *descrizione;
    const char *categoria;
    const char *gruppo;
    const char *moneta;
    bool polizza;
};

const Genere Generi[] = {
    {"MON", "MONETARIO", "LIQ", "F", "EUR", false},
    {"OBB", "OBBLIGAZ. BREVE TERMINE", "OBBBT", "F", "EUR", false},
    {"OBE", "OBBLIGAZIONARIO EURO", "OBBMT", "F", "EUR", false},
    {"OBL", "OBBLIGAZ. LUNGO TERMINE", "OBBLT", "F", "EUR", false},
    {"BIL", "BILANCIATO", "BIL", "F", "EUR", false},
    {"AIT", "AZIONI ITALIA", "AZITA", "F", "EUR", false},
    {"AEU", "AZIONI EUROPA", "AZEUR", "F", "EUR", false},
    {"AAM", "AZIONI AMERICA", "AZINT", "F", "USD", false},
    {"MIX", "PORTAFOGLIO MISTO", "MULTI", "F", "EUR", false},
    {"GPF", "GESTIONE IN FONDI", "GPF", "G", "EUR", false},
    {"GPM", "GESTIONE MOBILIARE", "GPM", "G", "EUR", false},
    {"VIT", "POLIZZA VITA", "POL", "P", "EUR", true},
    {"UNI", "UNIT LINKED", "POL", "P", "EUR", true},
    {"RIV", "RIVALUTABILE", "POL", "P", "EUR", true},
    {"FPA", "FONDO PENSIONE APERTO", "FPE", "V", "EUR", true},
    {"PIP", "PIANO INDIV. PENSIONISTICO", "FPE", "V", "EUR", true},
};

struct Categoria
{
    const char *codice;
    const char *descrizione;
    const char *tipo;
    int buoniCattivi;
    int colore;
};

const Categoria Categorie[] = {
    {"LIQ", "LIQUIDITA'", "S", 1, 0xC0FFC0},
    {"OBBBT", "OBBLIGAZ. BREVE T.", "S", 1, 0xC0FFFF},
    {"OBBMT", "OBBLIGAZ. MEDIO T.", "S", 2, 0x80FFFF},
    {"OBBLT", "OBBLIGAZ. LUNGO T.", "S", 3, 0x40C0FF},
    {"BIL", "BILANCIATI", "S", 5, 0xFFE0C0},
    {"AZITA", "AZIONARI ITALIA", "S", 5, 0xFFC0C0},
    {"AZEUR", "AZIONARI EUROPA", "S", 5, 0xFFA0A0},
    {"AZINT", "AZIONARI INTERNAZ.", "S", 5, 0xFF8080},
    {"GPF", "GESTIONI IN FONDI", "S", 4, 0xE0C0FF},
    {"GPM", "GESTIONI MOBILIARI", "S", 6, 0xC0A0FF},
    {"POL", "POLIZZE VITA", "N", 7, 0xFFFFC0},
    {"FPE", "FONDI PENSIONE", "N", 8, 0xE0FFE0},
    {"MULTI", "PRODOTTI RIPARTITI", "C", 9, 0xFFFFFF},
};

// The good and bad classes group into these totals, as the default rows
// of their table say.
int Totalizzatore(int buoniCattivi)
{
    static const int totali[10] = {0, 1, 1, 1, 2, 2, 2, 3, 3, 9};
    return totali[buoniCattivi];
}

const char *const Gruppi[][2] = {
    {"F", "FONDI COMUNI"}, {"G", "GESTIONI PATRIMONIALI"}, {"P", "POLIZZE"},
    {"V", "PREVIDENZA"},   {"T", "TITOLI"},
};

const char *const Banche[] = {
    "CASSA DI RISPARMIO DEL LARIO", "BANCA POPOLARE DELLA BRIANZA",
    "CREDITO COOPERATIVO DI OGGIONO", "BANCA DI VALMADRERA",
    "CREDITO ARTIGIANO LOMBARDO", "BANCO DI SAN GIORGIO", "BANCA DELL'ALTO LARIO",
    "POSTE - CONTO BANCOPOSTA",
};

// Code, description, sign. "004", the switch, has no sign: the money only
// moves between products.
const char *const Causali[][3] = {
    {"001", "SOTTOSCRIZIONE", "+"},   {"002", "VERSAMENTO P.A.C.", "+"},
    {"003", "RIMBORSO", "-"},         {"004", "SWITCH", " "},
    {"005", "VERSAM. AGGIUNTIVO", "+"}, {"006", "PREMIO POLIZZA", "+"},
    {"007", "SALDO VERSAMENTI", "+"}, {"008", "SALDO PRELIEVI", "-"},
    {"009", "LIQUIDAZ. POLIZZA", "-"},
};

bool Fallito(const Inserimento &ins, QString *errore)
{
    *errore = ins.errore();
    return false;
}

bool ScriviDitteBanche(QSqlDatabase &db, Ufficio &ufficio, QString *errore)
{
    Inserimento soc(db, QStringLiteral("Societa"),
                    {QStringLiteral("SocNome"), QStringLiteral("SocIndirizzo"),
                     QStringLiteral("SocCap"), QStringLiteral("SocLocalita"),
                     QStringLiteral("SocProvincia")});
    for (const Ditta &d : Ditte) {
        ufficio.ditte << QLatin1String(d.nome);
        if (!soc.scrivi({QLatin1String(d.nome), QLatin1String(d.indirizzo),
                         QLatin1String(d.cap), QLatin1String(d.localita),
                         QLatin1String(d.provincia)}))
            return Fallito(soc, errore);
    }
    Inserimento banca(db, QStringLiteral("DistBanche"), {QStringLiteral("CodBanca")});
    for (const char *b : Banche) {
        ufficio.banche << QLatin1String(b);
        if (!banca.scrivi({QLatin1String(b)}))
            return Fallito(banca, errore);
    }
    // The balances' reasons are among the rows of a fresh office already.
    return ScriviCodici(db, "DistCausali", Causali, errore,
                        {QStringLiteral("Codice"), QStringLiteral("Descrizione"),
                         QStringLiteral("Segno")});
}

bool ScriviCategorieGruppi(QSqlDatabase &db, QString *errore)
{
    Inserimento cat(db, QStringLiteral("TabCategorie"),
                    {QStringLiteral("Codice"), QStringLiteral("Descrizione"),
                     QStringLiteral("Tipo"), QStringLiteral("BuoniCattivi"),
                     QStringLiteral("Colore"), QStringLiteral("Totale")});
    for (const Categoria &c : Categorie) {
        if (!cat.scrivi({QLatin1String(c.codice), QLatin1String(c.descrizione),
                         QLatin1String(c.tipo), QString::number(c.buoniCattivi),
                         c.colore, Totalizzatore(c.buoniCattivi)}))
            return Fallito(cat, errore);
    }
    return ScriviCodici(db, "TabGruppi", Gruppi, errore,
                        {QStringLiteral("GrpCodice"), QStringLiteral("GrpDescrizione")}) &&
        ScriviCodici(db, QStringLiteral("TabProvincie"), Province(), NumeroProvince(), 2,
                     errore);
}

const Categoria &CategoriaDi(const Genere &g)
{
    for (const Categoria &c : Categorie)
        if (qstrcmp(c.codice, g.categoria) == 0)
            return c;
    return Categorie[0];
}

// A split product spreads over three categories that are not split.
bool ScriviRipartizione(Inserimento &mp, const QString &prodotto)
{
    return mp.scrivi({prodotto, QStringLiteral("OBBMT"), 40.0}) &&
        mp.scrivi({prodotto, QStringLiteral("AZEUR"), 35.0}) &&
        mp.scrivi({prodotto, QStringLiteral("LIQ"), 25.0});
}

QVariant Giorno(int anno, int mese, int giorno)
{
    return double(GiornoDaData(QDate(anno, mese, giorno)));
}

bool ScriviProdotti(QSqlDatabase &db, Caso &caso, Ufficio &ufficio, QString *errore)
{
    Inserimento prod(db, QStringLiteral("TabProdotti"),
                     QStringLiteral("Codice Descrizione Categoria Gruppo Moneta BuoniCattivi "
                                    "NoIndici Perc1 Perc2 Perc3 Perc4 PercSpese Chiuso ISIN "
                                    "Tasso Tassazione Periodo TipoPeriodo AcqInvEff "
                                    "EmissioneDat EmissioneImp ScadenzaDat ScadenzaImp")
                         .split(QLatin1Char(' ')));
    Inserimento mp(db, QStringLiteral("TabMultiPartner"),
                   {QStringLiteral("MpProdotto"), QStringLiteral("MpCategoria"),
                    QStringLiteral("MpPercentuale")});
    const int annoOggi = DataDaGiorno(ufficio.oggi).year();
    for (int d = 0; d < int(std::size(Ditte)); ++d) {
        const QStringList gamma = QString::fromLatin1(Ditte[d].gamma).split(QLatin1Char(' '));
        for (const Genere &g : Generi) {
            if (!gamma.contains(QLatin1String(g.codice)))
                continue;
            ProdottoDemo p;
            p.codice = QLatin1String(Ditte[d].prefisso) + QLatin1String(g.codice);
            p.segnato = p.codice + QChar(10);
            p.categoria = QLatin1String(g.categoria);
            p.moneta = QLatin1String(g.moneta);
            p.ditta = d;
            p.polizza = g.polizza;
            const int annoNascita = caso.prob(0.6) ? 1995 : caso.intero(1999, annoOggi - 3);
            const int primoAnno = qMax(annoNascita, 1999);
            p.dal = GiornoDaData(QDate(primoAnno, 1, 1));
            const bool chiuso = caso.prob(0.12);
            const int annoChiusura = caso.intero(qMin(primoAnno + 3, annoOggi - 1), annoOggi - 1);
            p.al = chiuso ? GiornoDaData(QDate(annoChiusura, 6, 30)) : ufficio.oggi;
            const Categoria &cat = CategoriaDi(g);
            const bool fondo = !g.polizza && g.gruppo[0] != 'G';
            const QString descrizione = (QLatin1String(Ditte[d].prefisso) +
                                         QLatin1Char(' ') + QLatin1String(g.descrizione));
            const QVariant scadenza = g.polizza
                ? Giorno(annoNascita + caso.intero(10, 30), 12, 31) : QVariant();
            const QVariantList riga = {
                p.codice, descrizione, QLatin1String(g.categoria), QLatin1String(g.gruppo),
                QLatin1String(g.moneta), cat.buoniCattivi, chiuso ? 2 : (fondo ? 0 : 1),
                caso.intero(5, 25) / 10.0, double(caso.intero(3, 7) * 10),
                fondo ? caso.intero(0, 4) / 2.0 : 0.0, 70.0, 0.0,
                QLatin1String(chiuso ? "S" : "N"),
                Isin(caso, Ditte[d].paese), g.polizza ? caso.intero(15, 40) / 10.0 : 0.0,
                annoNascita < 2012 ? 12.5 : 26.0, g.polizza ? 1 : 0, g.polizza ? 3 : 0, 0,
                Giorno(annoNascita, caso.intero(1, 12), 1), fondo ? 5.0 : 100.0, scadenza,
                g.polizza ? 100.0 : 0.0};
            if (!prod.scrivi(riga))
                return Fallito(prod, errore);
            if (cat.buoniCattivi == 9 && !ScriviRipartizione(mp, p.codice))
                return Fallito(mp, errore);
            ufficio.prodotti.push_back(p);
        }
    }
    return true;
}

} // namespace

bool ScriviTabelle(QSqlDatabase &db, Caso &caso, Ufficio &ufficio, QString *errore)
{
    return ScriviDitteBanche(db, ufficio, errore) && ScriviCategorieGruppi(db, errore) &&
        ScriviProdotti(db, caso, ufficio, errore);
}

} // namespace sorvane::demo
