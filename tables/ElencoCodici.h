#pragma once

// The rules of GesTabel, the lookup of every small table of codes and
// descriptions (`Codice`, `Descrizione`, indexes "primaria" and
// "secondaria"): the table is tabelle().NomeTabella, reached through the
// shared RsTabella. No widgets here: the screen asks and shows.

#include <QString>
#include <QStringList>

#include <cstdint>

namespace sorvane {

// The characters the list gives a code and a description: their widths in
// the dictionary, capped at 10 and 40.
struct LarghezzeCodici
{
    int codice = 10;
    int descrizione = 40;
};
LarghezzeCodici LarghezzeTabella(const QString &nomeTabella);
// The widths in the dictionary, uncapped: what the detail face accepts.
LarghezzeCodici LarghezzeCampi(const QString &nomeTabella);

// "GESTIONE " and the table's name less its first three characters:
// `TabProvincie` gives "GESTIONE Provincie".
QString TitoloTabella(const QString &nomeTabella);

// modo 1 searches and lists by code, 2 by description.
enum : std::uint8_t { ElencoPerCodice = 1, ElencoPerDescrizione = 2 };

struct RigaElenco
{
    QString codice;      // as on file, trimmed
    QString descrizione; // as on file, trimmed
    QString testo;       // the line shown, padded and cut to the widths
};

// A list runs to 300 lines; past them the user is asked once per opening
// of the screen, and the answer (kept in *risposta, 0 before asking) holds
// for every later search.
constexpr int RigheSenzaDomanda = 300;

// The rows whose code (or description) lies from testo up to testo + "zzz"
// in the table's order, testo bound as a value. A blank testo lists from a
// blank to "zzz". After an open failure (told by ApriTabella) the list is
// empty.
QList<RigaElenco> RiempiLista(const QString &testo, std::uint8_t modo,
                              const LarghezzeCodici &larghezze, std::int16_t *risposta);

// The buttons of the list face after a search: `conferma` is cmdRt(0)
// "&CONFERMA" shown; `secondo` the caption of cmdRt(1), empty when hidden.
struct PulsantiElenco
{
    bool conferma = false;
    QString secondo;
};
PulsantiElenco AggiornaPulsanti(int righe, const QString &testo, bool soloScelta);

inline const QString Seleziona = QStringLiteral("&X SELEZIONA");
inline const QString Ricerca = QStringLiteral("&X RICERCA");
inline const QString Inserisci = QStringLiteral("&INSERISCI");
inline const QString Gestisci = QStringLiteral("&GESTISCI");

// The detail face's CONFERMA: the row of codice changed, or added when
// there is none, in one transaction. Empty when written; otherwise the words
// for the user.
QString SalvaCodice(const QString &codice, const QString &descrizione);
// The detail face's ELIMINA: when the code is on file, asks "Elimino il
// codice ... ?" and deletes on Yes. Empty when deleted, not found or kept;
// otherwise the words for the user.
QString EliminaCodice(const QString &codice);

} // namespace sorvane
