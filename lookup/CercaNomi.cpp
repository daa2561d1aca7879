#include "lookup/CercaNomi.h"

#include "frame/core/Campi.h"
#include "frame/core/Valore.h"
#include "store/Cliente.h"
#include "store/Connessione.h"
#include "store/Recordset.h"

#include <algorithm>
#include <cstdint>

namespace sorvane {

namespace {

const QString MarcaEstesa = QStringLiteral(" >");
// U+10FFFF, the last code point: in UTF-8 it sorts after every other.
const QString OltreOgniCarattere = QString::fromUcs4(U"\U0010FFFF", 1);
constexpr int LarghezzaTesto = 35;
constexpr int LarghezzaCodice = 6;

// The columns in the order of the statement.
enum : int { SelCodice, SelRagSoc, SelEstesa, SelIndirizzo, SelLocalita, SelCategoria,
             SelAbbinamento };

QString Fisso(const QString &testo)
{
    return testo.left(LarghezzaTesto).leftJustified(LarghezzaTesto, QLatin1Char(' '));
}

QString Testo(const Recordset &rs, int colonna)
{
    return TestoDaCampo(rs.Fields(colonna));
}

bool Chiuso(const QString &categoria)
{
    return categoria.trimmed().compare(CategoriaChiusi, Qt::CaseInsensitive) == 0;
}

// The first match goes to the client buffer, as far as the list knows it;
// the rest of the buffer is left for CaricaCliente.
void NelBuffer(const Recordset &rs)
{
    BufferCliente &b = Cli();
    std::int32_t codice = 0;
    std::int32_t abbinamento = 0;
    if (!LeggiIntero32(rs.Fields(SelCodice), &codice))
        codice = 0;
    if (!LeggiIntero32(rs.Fields(SelAbbinamento), &abbinamento))
        abbinamento = 0;
    b.Codice = codice;
    b.Ragsoc = Testo(rs, SelRagSoc).trimmed().left(LarghezzaTesto);
    b.RagsocEstesa = Testo(rs, SelEstesa).trimmed().left(LarghezzaTesto);
    b.Indirizzo = Fisso(Testo(rs, SelIndirizzo));
    b.Localita = Fisso(Testo(rs, SelLocalita));
    b.Nominativo = b.Ragsoc;
    if (!b.RagsocEstesa.isEmpty())
        b.Nominativo += MarcaEstesa + b.RagsocEstesa;
    b.Abbinamento = abbinamento;
}

RigaListaCli Riga(const Recordset &rs)
{
    std::int32_t codice = 0;
    if (!LeggiIntero32(rs.Fields(SelCodice), &codice))
        codice = 0;
    return {QString::number(codice).rightJustified(LarghezzaCodice, QLatin1Char(' ')),
            Testo(rs, SelRagSoc),
            Testo(rs, SelIndirizzo).trimmed(),
            Testo(rs, SelLocalita).trimmed(),
            Testo(rs, SelEstesa),
            Chiuso(Testo(rs, SelCategoria)) ? QStringLiteral("X") : QString()};
}

} // namespace

QString ElencoClienti::TestoDaCercare(const QString &nome)
{
    const qsizetype marca = nome.indexOf(MarcaEstesa);
    return marca < 0 ? nome : nome.left(marca);
}

QString ElencoClienti::ClausolaOrdine(std::uint8_t colonna, std::uint8_t verso)
{
    const QString direzione = verso == VersoCrescente ? QStringLiteral(" ASC")
                                                      : QStringLiteral(" DESC");
    switch (colonna) {
    case ColNominativo:
        return QStringLiteral("ORDER BY CliRagSoc") + direzione;
    case ColIndirizzo:
        return QStringLiteral("ORDER BY CliIndirizzo") + direzione;
    case ColLocalita:
        return QStringLiteral("ORDER BY CliLocalita") + direzione;
    case ColSqd:
        return QStringLiteral("ORDER BY CliRagSocEstesa") + direzione;
    case ColCh:
        // Closed clients together, each group by name.
        return QStringLiteral("ORDER BY CliCategoria") + direzione
               + QStringLiteral(", CliRagSoc");
    default:
        return QStringLiteral("ORDER BY CliRagSoc");
    }
}

SqlRicerca ElencoClienti::Sql(const QString &testo, bool ancheChiusi, std::uint8_t colonna,
                              std::uint8_t verso)
{
    SqlRicerca s;
    s.testo = QStringLiteral("SELECT CliCodice, CliRagSoc, CliRagSocEstesa, CliIndirizzo, "
                             "CliLocalita, CliCategoria, CliAbbinamento FROM Clienti WHERE ");
    if (testo.size() >= LunghezzaNomeCliente) {
        // The whole field: nothing longer can match, so the name as it stands.
        s.testo += QStringLiteral("CliRagSoc = ? ");
        s.parametri << testo;
    } else {
        // Every name that starts with the text, as a range on the name's
        // index: from the text itself to the text followed by the highest
        // character there is, which no letter of a name passes, accented
        // ones ("NICOLÒ", "SAVOIÀ") included.
        s.testo += QStringLiteral("CliRagSoc >= ? AND CliRagSoc < ? ");
        s.parametri << testo << testo + OltreOgniCarattere;
    }
    if (!ancheChiusi)
        s.testo += QStringLiteral("AND CliCategoria <> 'ZZZZZ' ");
    s.testo += ClausolaOrdine(colonna, verso);
    return s;
}

void ElencoClienti::Svuota()
{
    m_righe = {RigaListaCli{QStringLiteral(" ")}};
}

std::int32_t ElencoClienti::CodiceRiga(int riga) const
{
    if (riga < 0 || riga >= m_righe.size())
        return 0;
    std::int32_t codice = 0;
    if (!LeggiIntero32(Val(m_righe[riga][ColCodice].trimmed()), &codice))
        return 0;
    return codice;
}

std::int16_t ElencoClienti::Quanti(std::int32_t trovati)
{
    return std::int16_t(std::clamp<std::int32_t>(trovati, 0, INT16_MAX));
}

std::int32_t ElencoClienti::CercaNomi(const QString &nome)
{
    if (nome.trimmed().isEmpty())
        return 0;
    const QString testo = TestoDaCercare(nome);
    // The blank row stands in the grid until a real one arrives.
    Svuota();
    m_sql = {};
    m_trovati = 0;
    m_caricate = 0;
    UltimaRicerca = testo;

    const SqlRicerca sql = Sql(testo, AncheChiusi, ColonnaOrdine, VersoOrdine);
    // The engine counts on the name's index; only the rows shown are read.
    const qsizetype da = sql.testo.indexOf(QLatin1String(" FROM "));
    const qsizetype ordine = sql.testo.indexOf(QLatin1String("ORDER BY"));
    const QString conta = QStringLiteral("SELECT COUNT(*)") + sql.testo.mid(da, ordine - da);
    Recordset rs = Recordset::Apri(Db(), conta, dbOpenSnapshot, sql.parametri);
    if (!rs.IsOpen() || rs.Eof())
        return 0;
    std::int32_t trovati = 0;
    if (!LeggiIntero32(rs.Fields(0), &trovati) || trovati <= 0)
        return 0;
    rs.Close();
    m_sql = sql;
    m_trovati = trovati;
    if (!CaricaAltre()) {
        m_trovati = 0;
        return 0;
    }
    return m_trovati;
}

bool ElencoClienti::CaricaAltre()
{
    QList<RigaListaCli> righe = LeggiAltre();
    if (righe.isEmpty())
        return false;
    Accogli(std::move(righe));
    return true;
}

QList<RigaListaCli> ElencoClienti::LeggiAltre()
{
    QList<RigaListaCli> righe;
    if (!AltreDaCaricare())
        return righe;
    QVariantList parametri = m_sql.parametri;
    parametri << RighePerVolta << m_caricate;
    // The code settles ties, so that pages neither repeat nor skip a client.
    Recordset rs = Recordset::Apri(
        Db(), m_sql.testo + QStringLiteral(", CliCodice LIMIT ? OFFSET ?"), dbOpenSnapshot,
        parametri);
    if (!rs.IsOpen())
        return righe;
    for (; !rs.Eof(); rs.MoveNext()) {
        if (m_caricate == 0 && righe.isEmpty())
            NelBuffer(rs);
        righe.append(Riga(rs));
    }
    rs.Close();
    // Fewer rows than counted: the table changed in between.
    if (righe.isEmpty())
        m_trovati = m_caricate;
    return righe;
}

void ElencoClienti::Accogli(QList<RigaListaCli> righe)
{
    if (m_caricate == 0)
        m_righe.clear();
    m_caricate += std::int32_t(righe.size());
    m_righe += std::move(righe);
}

} // namespace sorvane
