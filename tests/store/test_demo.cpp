#include "tools/demo/DatiDemo.h"

#include "store/Schema.h"
#include "support/CartellaProva.h"

#include "frame/core/Giorni.h"

#include <QCryptographicHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <gtest/gtest.h>

using namespace sorvane;

namespace {

const QDate Oggi(2024, 3, 15);

// The four files of an office in a temporary folder, on one connection,
// with their tables: what the set-up tool hands to the generator.
class UfficioProva
{
public:
    UfficioProva() : m_nome(QUuid::createUuid().toString())
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_nome);
        db.setDatabaseName(m_cartella.file(NomeFile(Archivio::Lavoro)));
        m_aperto = db.open();
        for (Archivio a : TuttiGliArchivi) {
            if (a != Archivio::Lavoro) {
                QSqlQuery q(db);
                q.prepare(QStringLiteral("ATTACH DATABASE ? AS %1").arg(NomeSchema(a)));
                q.addBindValue(m_cartella.file(NomeFile(a)));
                m_aperto = m_aperto && q.exec();
            }
            // Throw-away files: no need to wait for the disk.
            QSqlQuery(db).exec(QStringLiteral("PRAGMA %1.synchronous = OFF").arg(NomeSchema(a)));
            m_aperto = m_aperto && CreaSchema(db, a, NomeSchema(a), &m_errore);
        }
    }
    ~UfficioProva() { QSqlDatabase::removeDatabase(m_nome); }

    QSqlDatabase db() const { return QSqlDatabase::database(m_nome); }
    bool pronto() const { return m_aperto; }

    bool genera(const OpzioniDemo &opzioni)
    {
        QSqlDatabase d = db();
        return GeneraDatiDemo(d, opzioni, &m_errore);
    }
    const QString &errore() const { return m_errore; }

private:
    prova::CartellaProva m_cartella;
    QString m_nome;
    QString m_errore;
    bool m_aperto = false;
};

OpzioniDemo Opzioni(qint64 movimenti = 0, quint32 seme = 1)
{
    OpzioniDemo o;
    o.movimenti = movimenti;
    o.seme = seme;
    o.oggi = Oggi;
    return o;
}

qint64 Conta(const QSqlDatabase &db, const QString &sql, const QVariantList &valori = {})
{
    QSqlQuery q(db);
    q.prepare(sql);
    for (const QVariant &v : valori)
        q.addBindValue(v);
    if (!q.exec() || !q.next()) {
        ADD_FAILURE() << qPrintable(sql) << " " << qPrintable(q.lastError().text());
        return -1;
    }
    return q.value(0).toLongLong();
}

// A fingerprint of a whole table, row by row in the order written.
QByteArray Impronta(const QSqlDatabase &db, const QString &tabella)
{
    QCryptographicHash h(QCryptographicHash::Sha1);
    QSqlQuery q(db);
    EXPECT_TRUE(q.exec(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(tabella)));
    while (q.next())
        for (int i = 0; i < q.record().count(); ++i)
            h.addData((q.value(i).toString() + QLatin1Char('|')).toUtf8());
    return h.result();
}

const QStringList TabelleDemo = {
    QStringLiteral("Clienti"),  QStringLiteral("Squadre"),    QStringLiteral("VisiteN"),
    QStringLiteral("Distinte"), QStringLiteral("Distinte04"), QStringLiteral("TabCambi"),
    QStringLiteral("TabProdotti"), QStringLiteral("Indici"),
};

class DatiDemo : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_ufficio = new UfficioProva;
        ASSERT_TRUE(s_ufficio->pronto()) << qPrintable(s_ufficio->errore());
        ASSERT_TRUE(s_ufficio->genera(Opzioni())) << qPrintable(s_ufficio->errore());
    }
    static void TearDownTestSuite()
    {
        delete s_ufficio;
        s_ufficio = nullptr;
    }
    // A count on the demo office.
    static qint64 N(const QString &sql, const QVariantList &valori = {})
    {
        return Conta(s_ufficio->db(), sql, valori);
    }

    static UfficioProva *s_ufficio;
};

UfficioProva *DatiDemo::s_ufficio = nullptr;

// Rows that break a rule of the office: there must be none.
TEST_F(DatiDemo, NessunaRigaFuoriRegola)
{
    const QVariantList euro{GiornoEuro, GiornoEuro};
    using Regola = std::pair<QString, QVariantList>;
    QList<Regola> regole = {
        // Between the first slips and the run date.
        {"SELECT COUNT(*) FROM Distinte WHERE dstData > ? OR dstData < ?",
         {GiornoDaData(Oggi), GiornoDaData(QDate(1999, 1, 1))}},
        // One row "0", at most one row "1", both with the same header and flag.
        {"SELECT COUNT(*) FROM Distinte WHERE dstPrg NOT IN ('0', '1')", {}},
        {"SELECT COUNT(*) FROM (SELECT dstCodice FROM Distinte GROUP BY dstCodice "
         "HAVING SUM(dstPrg = '0') <> 1 OR COUNT(*) > 2 OR COUNT(DISTINCT dstChiusa) > 1 "
         "OR COUNT(DISTINCT dstCliente) > 1 OR COUNT(DISTINCT dstData) > 1)", {}},
        // Every code points at a row of its table.
        {"SELECT COUNT(*) FROM Distinte WHERE dstCliente NOT IN (SELECT CliCodice FROM Clienti) "
         "OR dstCausale NOT IN (SELECT Codice FROM DistCausali) "
         "OR dstDitta NOT IN (SELECT SocNome FROM Societa) "
         "OR (dstBanca <> ' ' AND dstBanca NOT IN (SELECT CodBanca FROM DistBanche)) "
         "OR dstCodP0 = ' ' "
         "OR RTRIM(dstCodP0, char(10)) NOT IN (SELECT Codice FROM TabProdotti)", {}},
        {"SELECT COUNT(*) FROM Distinte04 WHERE dstCliente NOT IN "
         "(SELECT CliCodice FROM Clienti) OR dstCausale NOT IN (SELECT Codice FROM DistCausali)",
         {}},
        // The last visit on the card is the newest in the visits file, so that
        // loading a client finds nothing to correct.
        {"SELECT COUNT(*) FROM Clienti c WHERE c.CliUltimaVisita <> COALESCE((SELECT "
         "MAX(VsData) FROM VisiteN v WHERE v.VsCliente = c.CliCodice), 0)", {}},
    };
    // A slip is closed ("S") exactly when no slice of either row holds the
    // open mark, and the mark only ever ends a slice.
    regole << Regola{"SELECT COUNT(*) FROM (SELECT MAX(dstChiusa) AS c, MAX(instr(dstCodP0 || "
                     "dstCodP1 || dstCodP2 || dstCodP3 || dstCodP4, char(10))) > 0 AS aperto "
                     "FROM Distinte GROUP BY dstCodice) WHERE c <> CASE WHEN aperto THEN ' ' "
                     "ELSE 'S' END", {}};
    for (int i = 0; i < 5; ++i)
        regole << Regola{QStringLiteral("SELECT COUNT(*) FROM Distinte WHERE dstCodP%1 = '' OR "
                                        "instr(dstCodP%1, char(10)) NOT IN (0, "
                                        "length(dstCodP%1))").arg(i), {}};
    // Whole lire before 2002, euro cents after, every amount positive.
    for (const QString t : {"Distinte", "Distinte04"})
        regole << Regola{"SELECT COUNT(*) FROM " + t + " WHERE dstImporto <= 0 OR (dstData < ? "
                         "AND (dstMoneta <> 'LIT' OR dstImporto <> ROUND(dstImporto))) OR "
                         "(dstData >= ? AND (dstMoneta <> 'EUR' OR ABS(dstImporto * 100 - "
                         "ROUND(dstImporto * 100)) > 1e-6))", euro};
    for (const auto &[sql, valori] : regole)
        EXPECT_EQ(N(sql, valori), 0) << qPrintable(sql);
    for (const Tabella &t : Tabelle()) {
        for (const Colonna &c : t.colonne) {
            if (c.tipo == Tipo::Testo) {
                EXPECT_EQ(N(QStringLiteral("SELECT COUNT(*) FROM \"%1\" WHERE LENGTH(\"%2\") > ?")
                                .arg(t.nome, c.nome), {c.larghezza}), 0)
                    << qPrintable(t.nome + "." + c.nome);
            }
        }
    }
}

TEST(DatiDemoSemi, LoStessoSemeDaGliStessiDatiEUnAltroNo)
{
    UfficioProva a, b, c;
    ASSERT_TRUE(a.pronto() && b.pronto() && c.pronto());
    ASSERT_TRUE(a.genera(Opzioni(200, 7))) << qPrintable(a.errore());
    ASSERT_TRUE(b.genera(Opzioni(200, 7))) << qPrintable(b.errore());
    ASSERT_TRUE(c.genera(Opzioni(200, 8))) << qPrintable(c.errore());
    for (const QString &t : TabelleDemo) {
        EXPECT_EQ(Impronta(a.db(), t), Impronta(b.db(), t)) << qPrintable(t);
        EXPECT_NE(Impronta(a.db(), t), Impronta(c.db(), t)) << qPrintable(t);
    }
    // N movements asked, N made.
    EXPECT_EQ(Conta(a.db(), QStringLiteral("SELECT COUNT(DISTINCT dstCodice) FROM Distinte")),
              200);


}

TEST(DatiDemoSemi, UnErroreNonLasciaNulla)
{
    // A firm of the demo already there: its insert fails, and the whole
    // office goes back, the rows written before the failure included.
    UfficioProva u;
    ASSERT_TRUE(u.pronto());
    QSqlQuery q(u.db());
    ASSERT_TRUE(q.exec(QStringLiteral("INSERT INTO DistBanche (CodBanca) VALUES "
                                      "('BANCO DI SAN GIORGIO')")));
    EXPECT_FALSE(u.genera(Opzioni(50)));
    EXPECT_TRUE(u.errore().contains(QStringLiteral("DistBanche"))) << qPrintable(u.errore());
    EXPECT_EQ(Conta(u.db(), QStringLiteral("SELECT COUNT(*) FROM Societa")), 0);
    EXPECT_EQ(Conta(u.db(), QStringLiteral("SELECT COUNT(*) FROM DistBanche")), 1);
    // The connection is usable again afterwards.
    EXPECT_TRUE(q.exec(QStringLiteral("DELETE FROM DistBanche")));
    EXPECT_TRUE(u.genera(Opzioni(50)));
}

} // namespace
