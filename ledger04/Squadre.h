#pragma once

// Client teams. A client's team number lives in its extended name; the
// table `Squadre` lists the members of each team. The screens that show a
// team keep its number as the text of their `lbTeam` label: these routines
// read that text, list the members for the team popup, and give the member
// codes to the statement and the average-interest print.

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <cstdint>

namespace sorvane {

struct BufferCliente;

// The caption of `lbTeam` after a lookup of that client: its extended name,
// trimmed. A client with a note there instead of a number shows the note.
QString TestoSquadra(const BufferCliente &cliente);

// The team a caption names: its value as a whole number; empty, not
// numeric or out of range counts as 0, no team.
std::int32_t NumeroSquadra(const QString &didascalia);

// The placeholder of a member whose code has no client card.
inline const QString CodiceInesistente = QStringLiteral("*** CODICE INESISTENTE ***");

// The title of the member popup for a team caption.
QString TitoloSquadra(const QString &didascalia);

// One line of the member popup, for a fixed-pitch font: the code aligned in
// 6, a blank, the name in 30, a blank, address and place in 22 each (cut or
// padded).
QString RigaMembro(std::int32_t codice, const QString &ragsoc, const QString &indirizzo,
                   const QString &localita);
// The client code a line of the popup begins with; 0 when it has none.
std::int32_t CodiceDaRiga(const QString &riga);

// The popup lines of a team's members in the order `Squadre` gives them,
// the name, address and place read from `Clienti`; a member without a card
// gets the placeholder with blank address and place. Empty for team 0, a
// team without rows, or a table that can't be read.
QStringList RigheSquadra(std::int32_t squadra);

// The team's member codes in code order, and as the print lists them:
// "12, 13, 40". Empty for team 0.
QList<std::int32_t> MembriSquadra(std::int32_t squadra);
QString ElencoGruppo(std::int32_t squadra, QList<std::int32_t> *membri = nullptr);

// The other members of a team, the client in hand left out, in the order
// the statement adds their rows (SommaGruppo): the query and its values.
struct QueryMembri
{
    QString sql;
    QVariantList parametri;
};
QueryMembri AltriMembri(std::int32_t squadra, std::int32_t cliente);

} // namespace sorvane
