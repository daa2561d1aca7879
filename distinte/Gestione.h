#pragma once

// The management of saved slips: which movements the list shows (period,
// client, firm, open ones only), in which order, and the writes on
// `Distinte` that the management screen makes: a product code confirmed
// or reopened, a movement changed or deleted. Each write is one
// transaction; nothing here shows a message.

#include "distinte/Movimento.h"

#include <QList>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <array>
#include <cstdint>
#include <optional>

namespace sorvane {

// Columns of the management list, in the order the grid shows them.
enum ColonnaGestione : int {
    GesPrg = 0,         // dstCodice
    GesRiga = 1,        // dstPrg
    GesData = 2,        // dstData
    GesNominativo = 3,  // CliRagsoc
    GesPrimoCodice = 4, // dstCodP0 to dstCodP4
    GesUltimoCodice = 8,
    GesCausale = 9,     // Descrizione
    GesMoneta = 10,     // dstMoneta
    GesImporto = 11,    // dstImporto
    GesAssegno = 12,    // dstAssegno
    GesBanca = 13,      // dstBanca
    GesChiusa = 14,     // dstChiusa
    GesSpese = 15,      // dstSpeseUT
    ColonneGestione = 16,
};

// The filter as the screen's fields hold it.
struct FiltroDistinte
{
    QString dal;           // day/month/year of fields 21 to 23, each trimmed
    QString al;            // the same of fields 24 to 26
    QString codiceCliente; // field 27 as typed
    QString nomeCliente;   // field 28
    QString ditta;         // the text of the firm combo
    bool ancheChiusi = false;

    // The client of the filter: the value of field 27, 0 for none.
    std::int32_t cliente() const;
};

// The WHERE part of an extraction with its bound values, kept so that the
// heading sorts and the print run on the rows the list shows.
struct CondizioneDistinte
{
    QString where; // " WHERE dstData BETWEEN ? AND ? ..."
    QVariantList parametri;
    bool vuota() const { return where.isEmpty(); }
};

// From: the whole day number of `dal` when it is a date, else 0; to: that
// of `al`, else `oggi`. Then the client when above 0, the firm when not
// blank, and only open movements unless ancheChiusi.
CondizioneDistinte CondizioneEstrazione(const FiltroDistinte &filtro, std::int32_t oggi);

// The list's usual order.
QString OrdineDistinte(); // " ORDER BY dstData, dstCodice, dstPrg"
// The order of a heading's field in that direction, with the tie-breaks
// of the slip lists: date, movement, row.
QString OrdinePer(const QString &campo, bool discendente);
// The movement's header fields: the columns a heading sorts, which a
// second row leaves blank and a closed movement paints blue.
bool ColonnaDiTestata(int colonna);
// The order a heading asks for, with its tie-breaks; empty for a column
// that does not sort (the row mark, the codes, the currency, the closed
// mark).
QString OrdineColonna(int colonna, bool discendente);

// A list order: the field it sorts on (a grid column's), its direction,
// and its ORDER BY clause with the tie-breaks.
struct OrdineLista
{
    QString campo = QStringLiteral("dstData");
    bool discendente = false;
    QString clausola = OrdineDistinte();
};
// The order a heading asks for; nothing for a column that does not sort.
std::optional<OrdineLista> OrdineDellaColonna(int colonna, bool discendente);

// The query of the list: one column per grid column, in grid order.
QString QueryGestione(const CondizioneDistinte &condizione, const QString &ordine);

// The list's rows a page at a time, in the order of the whole query, each
// page read from where the last one ended, so that a page costs the same
// at the top as far down. Rows come group by group, a group being the rows
// that share the sorted field's value (NULL first ascending, last
// descending); within a group they follow the tie-breaks, and a page
// resumes after the last row's keys. A group of the client's name or of
// the reason's description is read through the codes that carry it, so
// that each group is a walk of the movements' index on that code.
class PagineDistinte
{
public:
    PagineDistinte(CondizioneDistinte condizione, OrdineLista ordine);

    // Up to `quante` further rows, one value per grid column; fewer at the
    // end. False with the engine's words in *errore when a statement fails.
    bool Prossime(int quante, QList<QVariantList> *righe, QString *errore = nullptr);
    bool Finite() const { return m_stato == Stato::Fine; }
    // No further rows (after a page that failed).
    void Termina() { m_stato = Stato::Fine; }
    const CondizioneDistinte &Condizione() const { return m_condizione; }
    const OrdineLista &Ordine() const { return m_ordine; }

private:
    enum class Stato { Inizio, Nulli, Valore, Fine };

    bool righeDelGruppo(int quante, QList<QVariantList> *righe, QString *errore);
    bool gruppoSeguente(QString *errore);
    QString colonnaChiave() const;
    bool esegui(const QString &sql, const QVariantList &valori, QSqlQuery *q,
                QString *errore) const;

    CondizioneDistinte m_condizione;
    OrdineLista m_ordine;
    int m_colonna = GesData;        // the grid column holding the field
    Stato m_stato = Stato::Inizio;  // the group in hand
    QVariant m_valore;              // its value when Stato::Valore
    QVariantList m_ultime;          // the tie-break values of its last row given
};
// The query of the print: every field of `Distinte` with the client's
// name, the reason's words and its sign, in the list's usual order.
QString QueryStampaDistinte(const CondizioneDistinte &condizione);

// What a write of the management screen ended in.
struct EsitoGestione
{
    bool riuscito = false;
    QString errore; // the engine's words when it failed
};

// The code in slice `fetta` (0 to 4) of row (codice, prg) confirmed when
// open, reopened when confirmed, then dstChiusa of the movement recomputed
// on both rows, in one transaction. A blank slice or a missing row is left
// alone: nothing written, `toccata` false.
struct EsitoMarca : EsitoGestione
{
    bool toccata = false;
    EsitoChiusa chiusa;
};
EsitoMarca InvertiMarca(Recordset &distinte, std::int32_t codice, const QString &prg, int fetta);

// The movement for the change form. A movement left with a row "1" only
// gets its row "0" back first, built from row "1"'s header with every slice
// blank and dstChiusa " " (`ricostruita` then true). Nothing when neither
// row exists or the rebuild failed (the words in *errore).
std::optional<Movimento> MovimentoDaModificare(Recordset &distinte, std::int32_t codice,
                                               bool *ricostruita = nullptr,
                                               QString *errore = nullptr);

// The movement the change form saves. `originale` is the movement as read
// for the form (marks and all); `testata` brings the header fields (firm,
// date, client, reason, currency, amount, cheque, bank, expenses); the
// slice texts are as the form holds them. A slice whose text is the one
// shown keeps its mark state; a changed or new one is marked open; a blank
// one is " ". Row "1" exists when any of its slices is filled. dstChiusa
// is "S" on both rows unless a slice of either holds a mark.
Movimento MovimentoModificato(const Movimento &originale, const RigaDistinta &testata,
                              const std::array<QString, FetteProdotto> &prodotti,
                              const std::array<QString, FetteProdotto> &giro);

// Writes a changed movement: row "0" added or changed, row "1" added,
// changed or deleted, in one transaction.
EsitoGestione SalvaModifica(Recordset &distinte, const Movimento &movimento);

// Deletes both rows in one transaction. On a failure `errore` is the text
// naming the row that failed: "NON CANCELLO IL MOVIMENTO (0)" or "(g1)"
// followed by the number, then the engine's words on a new line.
EsitoGestione EliminaMovimento(Recordset &distinte, std::int32_t codice);

} // namespace sorvane
