#pragma once

// The client search behind the client popup, apart from its window: one
// snapshot query on `Clienti` by the start of the name, its rows as the
// popup's grid shows them, and the first of them in the client buffer.
// The popup keeps one ElencoClienti for the whole run, so that the order
// chosen on a heading and the last search outlive each use.

#include <QList>
#include <QString>
#include <QVariantList>

#include <array>
#include <cstdint>

namespace sorvane {

// The grid's columns; 1 to 5 are also the sort columns.
enum ColonnaListaCli : int {
    ColCodice = 0,
    ColNominativo = 1,
    ColIndirizzo = 2,
    ColLocalita = 3,
    ColSqd = 4,
    ColCh = 5,
    NumeroColonneListaCli = 6,
};

// A name as long as the whole field is looked up as it stands.
constexpr int LunghezzaNomeCliente = 35;
// A code that is shown and chosen but never read from the table.
constexpr std::int32_t CodiceNonCaricato = 999999;
// The category of a closed client.
inline const QString CategoriaChiusi = QStringLiteral("ZZZZZ");

using RigaListaCli = std::array<QString, NumeroColonneListaCli>;

// Sort direction: a left click on a heading (1) sorts ascending; the other
// buttons' numbers all sort descending.
constexpr std::uint8_t VersoCrescente = 1;

// A statement and the values for its "?".
struct SqlRicerca
{
    QString testo;
    QVariantList parametri;
};

class ElencoClienti
{
public:
    // Runs the search unseen: the number of matches counted by the engine,
    // the first rows of the grid in Righe(), the first match in Cli(); the
    // other rows come as the grid asks for them (CaricaAltre). Returns the
    // number of clients found; 0 for a blank text and for a query that
    // fails, which tells nothing to the user.
    std::int32_t CercaNomi(const QString &nome);
    // The next rows of the last search after those in Righe(); false when
    // every match is there already.
    bool CaricaAltre();
    // The same in two steps, for a grid that announces the rows it adds:
    // the next rows read, then taken into Righe().
    QList<RigaListaCli> LeggiAltre();
    void Accogli(QList<RigaListaCli> righe);
    bool AltreDaCaricare() const { return m_caricate < m_trovati; }
    // The matches of the last search, all of them.
    std::int32_t Trovati() const { return m_trovati; }
    // The 16-bit count of the callers: a longer list still reads as several.
    static std::int16_t Quanti(std::int32_t trovati);

    // The text cut at the display name's " >" mark.
    static QString TestoDaCercare(const QString &nome);
    // The statement for a text already cut.
    static SqlRicerca Sql(const QString &testo, bool ancheChiusi, std::uint8_t colonna,
                          std::uint8_t verso);
    static QString ClausolaOrdine(std::uint8_t colonna, std::uint8_t verso);

    // The grid's data rows. Before the first search and after one that
    // found nothing they are the one blank placeholder.
    const QList<RigaListaCli> &Righe() const { return m_righe; }
    // Code of a row as the grid shows it, trimmed; 0 for the placeholder.
    std::int32_t CodiceRiga(int riga) const;

    std::uint8_t ColonnaOrdine = ColNominativo;
    std::uint8_t VersoOrdine = VersoCrescente;
    bool AncheChiusi = false; // the popup's "Anche chiusi"
    QString UltimaRicerca;    // what a sort or the check box searches again

    // Rows read at a time.
    static constexpr int RighePerVolta = 200;

private:
    void Svuota();
    QList<RigaListaCli> m_righe{RigaListaCli{QStringLiteral(" ")}};
    SqlRicerca m_sql;          // the last search's statement
    std::int32_t m_trovati = 0;
    std::int32_t m_caricate = 0; // matches in m_righe
};

} // namespace sorvane
