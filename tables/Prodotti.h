#pragma once

// The product master without widgets: the list's query, one product read
// and written, its shares over the categories, the checks of its dates and
// period, the save (with the first index row and the currency of every
// index row), the duplicate and the delete. GesProd asks and shows.

#include <QList>
#include <QString>
#include <QVariant>
#include <QVariantList>

#include <cstdint>
#include <optional>

namespace sorvane {

// One row of `TabProdotti`. A date is a day number, or null when it is none.
struct Prodotto
{
    QString Codice;
    QString Descrizione;
    QString Categoria;
    QString Gruppo;
    QString Moneta;
    QString ISIN;
    QString Chiuso;
    QVariant EmissioneDat;
    double EmissioneImp = 0;
    QVariant AcquistoDat;
    double AcquistoImp = 0;
    QVariant ScadenzaDat;
    double ScadenzaImp = 0;
    int Periodo = 0;
    int TipoPeriodo = 0; // 0 none, 1 giorni, 2 mesi, 3 anni
    int AcqInvEff = 0;
    int BuoniCattivi = 0;
    int NoIndici = 0; // 0 managed, 1 not, 2 closed
    double Tasso = 0;
    double Tassazione = 0;
    double Perc1 = 0;
    double Perc2 = 0;
    double Perc3 = 0;
    double Perc4 = 0;
    double PercSpese = 0;
};

// The class of a split product, and of a category split over others.
constexpr int BuoniCattiviRipartito = 9;
// A product with NoIndici from here on is closed.
constexpr int IndiciChiuso = 2;
// The export list of the products holds this many entries at most.
constexpr int MassimoProdottiEsportati = 200;

// ---- The list -------------------------------------------------------------

struct ColonnaProdotti
{
    QString intestazione;
    QString campo;        // the query's column
    bool ordinabile = true;
};
// The list's columns in the order shown.
const QList<ColonnaProdotti> &ColonneProdotti();
enum : int {
    ProdCodice = 0, ProdDescrizione, ProdCategoria, ProdIndici, ProdTipo, ProdGruppo, ProdMoneta,
    ProdBuoniCattivi, ProdPerc1, ProdPerc2, ProdYPercTot, ProdPerc3, ProdPerc4, ProdZPercTot, ProdColore
};

struct RicercaProdotti
{
    QString testo;
    bool perDescrizione = false; // the code matches from its start, the description anywhere
    bool chiusi = false;         // closed products listed too
    int colonna = ProdCodice;     // the ordering column
    bool ascendente = true;
};

struct Interrogazione
{
    QString sql;
    QVariantList parametri;
};
// The list's query: products joined to their category (a product of an
// unknown category is not listed), the search text bound as a value.
Interrogazione SqlElencoProdotti(const RicercaProdotti &ricerca);

// What "Ip" shows for NoIndici and "Ic" for a category's Tipo.
QString IndiciMostrato(const QVariant &noIndici);
QString TipoMostrato(const QVariant &tipo);

// ---- One product ----------------------------------------------------------

std::optional<Prodotto> LeggiProdotto(const QString &codice);
bool EsisteProdotto(const QString &codice);

// The date of three fields: null when "00/00/0000" or "//" (or not a date).
QVariant DataDaParti(const QString &giorno, const QString &mese, const QString &anno);

// A date group: 0 issue, 1 purchase, 2 maturity. parte 0 day, 1 month, 2 the
// whole date. Empty when right, else the words for the user.
QString ControllaDataProdotto(int gruppo, int parte, const QString &giorno, const QString &mese,
                              const QString &anno);

// Periodo and TipoPeriodo set together or not at all; tipoTesto is the
// list's text of the type. Empty when right.
QString ControllaPeriodo(int periodo, int tipoPeriodo, const QString &tipoTesto);
enum : int { ErrorePeriodo = 9 };

// ---- Shares ---------------------------------------------------------------

// One share of a split product: the screen holds them until the product is
// saved, and writes them with it.
struct Quota
{
    QString categoria;
    double percentuale = 0;
};
QList<Quota> LeggiQuote(const QString &prodotto);
double TotaleQuote(const QList<Quota> &quote);
bool EsisteCategoria(const QString &codice);
// The class of a category, -1 when there is none.
int BuoniCattiviCategoria(const QString &codice);
// When the split is wrong for the class, asks under "RIPARTIZIONE ERRATA";
// false when the user stops.
bool ConfermaRipartizione(int buoniCattivi, double totale);

// ---- Save, duplicate, delete ---------------------------------------------

// Writes the product with its shares, or for a duplicate (nuovoCodice not
// empty) a new product under the new code with the same shares, the code
// recorded in the export list; then the first index row when the product
// keeps its index and has none, and its currency on every index row. One
// transaction. Empty when written, else the words for the user.
QString SalvaProdotto(const Prodotto &p, const QList<Quota> &quote,
                      const QString &nuovoCodice = QString());

// The new code of a duplicate: empty when it may be used.
QString ControllaNuovoCodice(const QString &codice);

// Records the code in `TabProdExpo` at the next free row, unless it is
// there or the list is full. Inside the caller's transaction; false on a
// store failure.
bool RegistraProdottoEsportato(const QString &codice, QString *motivo = nullptr);

enum class EsitoEliminazione { Eliminato, Tenuto, Guasto };
// Asks the two questions and, on two Yes, deletes the product's mandates,
// their holders and movements, its shares and the product, all or nothing.
// A failure says "ERRORE IN CANCELLAZIONE: non cancello".
EsitoEliminazione EliminaProdotto(const QString &codice);

// ---- The combos -------------------------------------------------------------

struct VoceCombo
{
    QString codice;
    QString testo;
};
// `TabBuoCat` in code order, filled with its default rows when empty. When
// it can't be read, the caller tells the user (AvvisaBuoniCattivi).
std::optional<QList<VoceCombo>> VociBuoniCattivi();
// Nothing when the table can't be read.
std::optional<QList<VoceCombo>> VociCategorie(); // code as text
std::optional<QList<VoceCombo>> VociGruppi();    // "code - description"
// A group's description, "******" when there is none.
QString DescrizioneGruppo(const QString &codice);

} // namespace sorvane
