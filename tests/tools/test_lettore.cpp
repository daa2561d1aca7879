// The Access reader against mdb-export, value by value: every table of the
// public samples, read both ways.

#include "tools/importa/FileAccess.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QDir>
#include <QProcess>
#include <QSet>
#include <QTime>

#include <cmath>

using namespace sorvane::importa;

namespace {

QString Campione(const char *nome)
{
    return QDir(QStringLiteral(SORVANE_ACCESS_PROVA)).filePath(QString::fromLatin1(nome));
}

#define RICHIEDI_CAMPIONE(percorso)                                                        \
    if (!QFile::exists(percorso))                                                          \
        GTEST_SKIP() << "manca il file di prova " << (percorso).toStdString()             \
                     << " (cartella ../shared/legacy-mdb accanto al repository)";

// A field of mdb-export's CSV: `quotato` tells "" (empty text) from a bare
// empty field (Null).
struct Campo
{
    QString testo;
    bool quotato = false;
};

// Parses CSV with quoted fields that may hold commas, doubled quotes and
// line breaks.
QList<QList<Campo>> LeggiCsv(const QString &csv)
{
    QList<QList<Campo>> righe;
    QList<Campo> riga;
    Campo campo;
    bool dentro = false;
    for (qsizetype i = 0; i < csv.size(); ++i) {
        const QChar c = csv[i];
        if (dentro) {
            if (c == u'"' && i + 1 < csv.size() && csv[i + 1] == u'"') {
                campo.testo += c;
                ++i;
            } else if (c == u'"') {
                dentro = false;
            } else {
                campo.testo += c;
            }
        } else if (c == u'"') {
            dentro = campo.quotato = true;
        } else if (c == u',') {
            riga.append(campo);
            campo = {};
        } else if (c == u'\n') {
            riga.append(campo);
            righe.append(riga);
            riga.clear();
            campo = {};
        } else {
            campo.testo += c;
        }
    }
    return righe;
}

QList<QList<Campo>> Esporta(const QString &file, const QString &tabella)
{
    QProcess p;
    p.start(QStringLiteral("mdb-export"),
            {QStringLiteral("-b"), QStringLiteral("strip"), QStringLiteral("-T"),
             QStringLiteral("%Y-%m-%d %H:%M:%S"), file, tabella});
    EXPECT_TRUE(p.waitForFinished(-1));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    return LeggiCsv(QString::fromUtf8(p.readAllStandardOutput()));
}

// The day serial as mdb-export writes it: the whole part is the day, the
// fraction the time of day even below day 0.
QString TestoData(double serie)
{
    const double giorno = std::trunc(serie);
    const qint64 secondi = std::llround(std::fabs(serie - giorno) * 86400.0);
    const QDate d = QDate(1899, 12, 30).addDays(static_cast<qint64>(giorno) + secondi / 86400);
    return d.toString(QStringLiteral("yyyy-MM-dd ")) + QTime(0, 0).addSecs(secondi % 86400).toString(QStringLiteral("HH:mm:ss"));
}

// The mark mdb-export leaves where its own conversion gives up (dates
// before 1900 or after 9998).
const QString DataIgnotaAlloStrumento = QStringLiteral("1900-01-00 00:00:00");

// Compares one table; returns the number of date values mdb-export could
// not write, which the caller checks on its own.
int Confronta(const FileAccess &f, const TabellaAccess &t, QList<RigaAccess> *letti = nullptr)
{
    const QList<QList<Campo>> attesi = Esporta(f.nome(), t.nome);
    int dateIgnote = 0;
    [&] {
        ASSERT_FALSE(attesi.isEmpty()) << t.nome.toStdString();
        ASSERT_EQ(attesi[0].size(), t.colonne.size());
        for (int c = 0; c < t.colonne.size(); ++c)
            EXPECT_EQ(attesi[0][c].testo, t.colonne[c].nome);

        qsizetype n = 0;
        QString errore;
        const bool ok = f.leggi(t.nome, [&](const RigaAccess &r) {
            ++n;
            if (letti)
                letti->append(r);
            if (n >= attesi.size())
                return true;
            const QList<Campo> &a = attesi[n];
            EXPECT_EQ(a.size(), r.size());
            for (int c = 0; c < t.colonne.size() && c < a.size(); ++c) {
                const QVariant &v = r[c];
                const Campo &e = a[c];
                const auto dove = [&] {
                    return t.nome.toStdString() + " riga " + std::to_string(n) + " "
                           + t.colonne[c].nome.toStdString() + " = '" + e.testo.toStdString() + "'";
                };
                const TipoAccess tipo = t.colonne[c].tipo;
                if (tipo == TipoAccess::Altro)
                    continue;
                if (e.testo.isEmpty() && !e.quotato) {
                    EXPECT_FALSE(v.isValid()) << dove();
                    continue;
                }
                if (!v.isValid()) {
                    ADD_FAILURE() << "Null dove mdb-export ha un valore: " << dove();
                    continue;
                }
                switch (tipo) {
                case TipoAccess::Testo:
                case TipoAccess::Memo: EXPECT_EQ(v.toString(), e.testo) << dove(); break;
                case TipoAccess::Byte:
                case TipoAccess::Intero:
                case TipoAccess::Lungo:
                    EXPECT_EQ(v.typeId(), QMetaType::LongLong) << dove();
                    EXPECT_EQ(v.toLongLong(), e.testo.toLongLong()) << dove();
                    break;
                case TipoAccess::SiNo: EXPECT_EQ(v.toBool(), e.testo == u"1") << dove(); break;
                case TipoAccess::Valuta: EXPECT_EQ(v.toDouble(), e.testo.toDouble()) << dove(); break;
                case TipoAccess::Singolo:
                case TipoAccess::Doppio:
                    EXPECT_NEAR(v.toDouble(), e.testo.toDouble(),
                                1e-6 * std::max(1.0, std::fabs(e.testo.toDouble())))
                        << dove();
                    break;
                case TipoAccess::DataOra:
                    if (e.testo == DataIgnotaAlloStrumento)
                        ++dateIgnote;
                    else
                        EXPECT_EQ(TestoData(v.toDouble()), e.testo) << dove();
                    break;
                case TipoAccess::Altro: break;
                }
            }
            return true;
        }, &errore);
        EXPECT_TRUE(ok) << errore.toStdString();
        EXPECT_EQ(n, attesi.size() - 1) << t.nome.toStdString();
    }();
    return dateIgnote;
}

} // namespace

TEST(LettoreAccess, OgniTabellaDiNwindComeMdbExport)
{
    const QString file = Campione("nwind.mdb");
    RICHIEDI_CAMPIONE(file);
    const FileAccess f(file);
    ASSERT_TRUE(f.aperto());
    const QList<TabellaAccess> tabelle = f.tabelle();
    QStringList nomi;
    for (const TabellaAccess &t : tabelle) {
        nomi << t.nome;
        EXPECT_EQ(Confronta(f, t), 0) << t.nome.toStdString();
    }
    // A name with a blank and one with an accent; the types the office's
    // files hold.
    EXPECT_TRUE(nomi.contains(QStringLiteral("Order Details")));
    EXPECT_TRUE(nomi.contains(QStringLiteral("Umsätze")));
    QSet<TipoAccess> tipi;
    for (const TabellaAccess &t : tabelle)
        for (const ColonnaAccess &c : t.colonne)
            tipi.insert(c.tipo);
    for (TipoAccess t : {TipoAccess::Testo, TipoAccess::Memo, TipoAccess::Intero,
                         TipoAccess::Lungo, TipoAccess::Singolo, TipoAccess::Valuta,
                         TipoAccess::DataOra, TipoAccess::SiNo})
        EXPECT_TRUE(tipi.contains(t)) << NomeTipo(t).toStdString();
}

TEST(LettoreAccess, DateFuoriDallaPortataDelloStrumento)
{
    const QString file = Campione("DateTestDatabase.mdb");
    RICHIEDI_CAMPIONE(file);
    const FileAccess f(file);
    ASSERT_TRUE(f.aperto());
    const QList<TabellaAccess> tabelle = f.tabelle();
    ASSERT_EQ(tabelle.size(), 1);
    QList<RigaAccess> righe;
    EXPECT_GT(Confronta(f, tabelle[0], &righe), 0);
    // Where mdb-export gives up, the serial is still the real one: a date
    // in the year 9999 and dates before 30/12/1899.
    ASSERT_GE(righe.size(), 4);
    EXPECT_EQ(TestoData(righe[1][1].toDouble()).left(4), u"9999");
    EXPECT_LT(righe[2][1].toDouble(), 0.0);
    EXPECT_LT(righe[3][1].toDouble(), -300000.0); // before the year 1000
}

TEST(LettoreAccess, FileCheNonEAccess)
{
    const FileAccess f(QStringLiteral(SORVANE_ACCESS_PROVA "/non-esiste.mdb"));
    EXPECT_FALSE(f.aperto());
    EXPECT_TRUE(f.tabelle().isEmpty());
    QString errore;
    EXPECT_FALSE(f.leggi(QStringLiteral("X"), [](const RigaAccess &) { return true; }, &errore));
    EXPECT_FALSE(errore.isEmpty());
}
