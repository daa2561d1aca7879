#include "tools/importa/FileAccess.h"

#include <QFile>

#include <charconv>
#include <cstring>
#include <vector>

#include <mdbtools.h>

namespace sorvane::importa {

namespace {

// Room for one value as the library hands it over. A memo longer than this
// would be cut by the library, so it is generous.
constexpr int Spazio = 1 << 18;

struct LiberaTabella
{
    void operator()(MdbTableDef *t) const { mdb_free_tabledef(t); }
};
using Tabella = std::unique_ptr<MdbTableDef, LiberaTabella>;

TipoAccess Tipo(int tipoMdb)
{
    switch (tipoMdb) {
    case MDB_TEXT: return TipoAccess::Testo;
    case MDB_MEMO: return TipoAccess::Memo;
    case MDB_BYTE: return TipoAccess::Byte;
    case MDB_INT: return TipoAccess::Intero;
    case MDB_LONGINT: return TipoAccess::Lungo;
    case MDB_FLOAT: return TipoAccess::Singolo;
    case MDB_DOUBLE:
    case MDB_NUMERIC: return TipoAccess::Doppio;
    case MDB_MONEY: return TipoAccess::Valuta;
    case MDB_DATETIME: return TipoAccess::DataOra;
    case MDB_BOOL: return TipoAccess::SiNo;
    default: return TipoAccess::Altro;
    }
}

// Little-endian whole numbers from a page.
qint64 Intero(const unsigned char *p, int byte)
{
    quint64 v = 0;
    for (int i = byte - 1; i >= 0; --i)
        v = (v << 8) | p[i];
    const int spostamento = 64 - 8 * byte; // sign-extend
    return static_cast<qint64>(v << spostamento) >> spostamento;
}

double Doppio(const unsigned char *p)
{
    const quint64 bit = static_cast<quint64>(Intero(p, 8));
    double d;
    std::memcpy(&d, &bit, sizeof d);
    return d;
}

// A Single as the decimal it was typed as: 0.15f becomes 0.15, not
// 0.150000006.
double Singolo(const unsigned char *p)
{
    const quint32 bit = static_cast<quint32>(Intero(p, 4));
    float f;
    std::memcpy(&f, &bit, sizeof f);
    char testo[32];
    const auto fine = std::to_chars(testo, testo + sizeof testo, f).ptr;
    double d = f;
    std::from_chars(testo, fine, d);
    return d;
}

QVariant Valore(MdbHandle *mdb, MdbColumn *c, const char *testo, int lunghezza)
{
    if (c->col_type == MDB_BOOL)
        return QVariant(testo[0] == '1');
    if (lunghezza == 0)
        return {};
    const unsigned char *p = mdb->pg_buf + c->cur_value_start;
    switch (c->col_type) {
    case MDB_TEXT:
    case MDB_MEMO: return QString::fromUtf8(testo, lunghezza);
    case MDB_BYTE: return QVariant(static_cast<qint64>(p[0]));
    case MDB_INT: return QVariant(Intero(p, 2));
    case MDB_LONGINT: return QVariant(Intero(p, 4));
    case MDB_MONEY: return QVariant(static_cast<double>(Intero(p, 8)) / 10000.0);
    case MDB_FLOAT: return QVariant(Singolo(p));
    case MDB_DOUBLE:
    case MDB_DATETIME: return QVariant(Doppio(p));
    case MDB_NUMERIC: return QVariant(QByteArray(testo, lunghezza).toDouble());
    case MDB_OLE: {
        size_t dimensione = 0;
        void *dati = mdb_ole_read_full(mdb, c, &dimensione);
        QByteArray b(static_cast<const char *>(dati), static_cast<qsizetype>(dimensione));
        free(dati);
        return b;
    }
    default: return QByteArray(testo, lunghezza);
    }
}

} // namespace

QString NomeTipo(TipoAccess t)
{
    switch (t) {
    case TipoAccess::Testo: return QStringLiteral("Text");
    case TipoAccess::Memo: return QStringLiteral("Memo");
    case TipoAccess::Byte: return QStringLiteral("Byte");
    case TipoAccess::Intero: return QStringLiteral("Integer");
    case TipoAccess::Lungo: return QStringLiteral("Long");
    case TipoAccess::Singolo: return QStringLiteral("Single");
    case TipoAccess::Doppio: return QStringLiteral("Double");
    case TipoAccess::Valuta: return QStringLiteral("Currency");
    case TipoAccess::DataOra: return QStringLiteral("Date/Time");
    case TipoAccess::SiNo: return QStringLiteral("Yes/No");
    case TipoAccess::Altro: break;
    }
    return QStringLiteral("OLE/Binary");
}

struct FileAccess::Stato
{
    explicit Stato(MdbHandle *h) : mdb(h) {}
    ~Stato() { mdb_close(mdb); }
    Stato(const Stato &) = delete;
    Stato &operator=(const Stato &) = delete;
    MdbHandle *mdb;
};

FileAccess::FileAccess(const QString &percorso)
    : m_percorso(percorso)
{
    const QByteArray nome = QFile::encodeName(percorso);
    MdbHandle *mdb = mdb_open(nome.constData(), MDB_NOFLAGS);
    if (!mdb)
        return;
    auto stato = std::make_unique<Stato>(mdb);
    if (!mdb_read_catalog(mdb, MDB_TABLE))
        return;
    m_stato = std::move(stato);
    mdb_set_bind_size(mdb, Spazio);
    mdb_set_boolean_fmt_numbers(mdb);
}

FileAccess::~FileAccess() = default;

QList<TabellaAccess> FileAccess::tabelle() const
{
    QList<TabellaAccess> elenco;
    if (!m_stato)
        return elenco;
    MdbHandle *mdb = m_stato->mdb;
    for (unsigned i = 0; i < mdb->num_catalog; ++i) {
        auto *voce = static_cast<MdbCatalogEntry *>(g_ptr_array_index(mdb->catalog, i));
        if (voce->object_type != MDB_TABLE || !mdb_is_user_table(voce))
            continue;
        Tabella t(mdb_read_table(voce));
        if (!t || !mdb_read_columns(t.get()))
            continue;
        TabellaAccess tabella;
        tabella.nome = QString::fromUtf8(voce->object_name);
        for (unsigned c = 0; c < t->num_cols; ++c) {
            auto *col = static_cast<MdbColumn *>(g_ptr_array_index(t->columns, c));
            const TipoAccess tipo = Tipo(col->col_type);
            // Jet 4 keeps text in UCS-2: the size is in bytes.
            const int larghezza = tipo != TipoAccess::Testo ? 0
                                  : IS_JET3(mdb)             ? col->col_size
                                                             : col->col_size / 2;
            tabella.colonne.append({QString::fromUtf8(col->name), tipo, larghezza});
        }
        elenco.append(tabella);
    }
    return elenco;
}

bool FileAccess::leggi(const QString &tabella, const LettoreRighe &riga,
                       QString *errore) const
{
    if (!m_stato) {
        *errore = QStringLiteral("IL FILE %1 NON E' UN DATABASE ACCESS LEGGIBILE").arg(m_percorso);
        return false;
    }
    MdbHandle *mdb = m_stato->mdb;
    QByteArray nome = tabella.toUtf8();
    Tabella t(mdb_read_table_by_name(mdb, nome.data(), MDB_TABLE));
    if (!t || !mdb_read_columns(t.get()) || mdb_rewind_table(t.get()) != 0) {
        *errore = QStringLiteral("TABELLA %1 NON LEGGIBILE IN %2").arg(tabella, m_percorso);
        return false;
    }
    const unsigned colonne = t->num_cols;
    std::vector<std::vector<char>> testi(colonne, std::vector<char>(Spazio + 1));
    std::vector<int> lunghezze(colonne, 0);
    for (unsigned c = 0; c < colonne; ++c)
        mdb_bind_column(t.get(), static_cast<int>(c + 1), testi[c].data(), &lunghezze[c]);

    RigaAccess valori;
    valori.reserve(colonne);
    while (mdb_fetch_row(t.get())) {
        valori.clear();
        for (unsigned c = 0; c < colonne; ++c) {
            auto *col = static_cast<MdbColumn *>(g_ptr_array_index(t->columns, c));
            valori.append(Valore(mdb, col, testi[c].data(), lunghezze[c]));
        }
        if (!riga(valori))
            break;
    }
    return true;
}

} // namespace sorvane::importa
