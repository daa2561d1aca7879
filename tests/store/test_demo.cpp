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

QVariant Valore(const QSqlDatabase &db, const QString &sql, const QVariantList &valori = {})
{
    QSqlQuery q(db);
    q.prepare(sql);
    for (const QVariant &v : valori)
        q.addBindValue(v);
    if (!q.exec() || !q.next()) {
        ADD_FAILURE() << qPrintable(sql) << " " << qPrintable(q.lastError().text());
        return {};
    }
    return q.value(0);
}

qint64 Conta(const QSqlDatabase &db, const QString &sql, const QVariantList &valori = {})
{
    return Valore(db, sql, valori).toLongLong();
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
    QSqlDatabase db() const { return s_ufficio->db(); }
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
        {"SELECT COUNT(*) FROM TabProdotti WHERE Categoria NOT IN (SELECT Codice FROM "
         "TabCategorie) OR Gruppo NOT IN (SELECT GrpCodice FROM TabGruppi) OR LENGTH(ISIN) <> 12",
         {}},
        // A split product's shares make 100.
        {"SELECT COUNT(*) FROM TabProdotti WHERE BuoniCattivi = 9 AND (SELECT "
         "SUM(MpPercentuale) FROM TabMultiPartner WHERE MpProdotto = Codice) IS NOT 100", {}},
        {"SELECT COUNT(*) FROM Clienti WHERE CliRagsoc = '' OR (CliSesso IN ('M', 'F') AND "
         "LENGTH(CliCodiceFiscale) <> 16)", {}},
        // A member's team number is in its extended name, and a number there
        // means membership of that team.
        {"SELECT COUNT(*) FROM Squadre s JOIN Clienti c ON c.CliCodice = s.Cliente "
         "WHERE TRIM(c.CliRagsocEstesa) <> CAST(s.Squadra AS TEXT)", {}},
        {"SELECT COUNT(*) FROM Clienti c WHERE CAST(c.CliRagsocEstesa AS INTEGER) > 0 "
         "AND NOT EXISTS (SELECT 1 FROM Squadre s WHERE s.Cliente = c.CliCodice)", {}},
        // The last visit on the card is the newest in the visits file, so that
        // loading a client finds nothing to correct.
        {"SELECT COUNT(*) FROM Clienti c WHERE c.CliUltimaVisita <> COALESCE((SELECT "
         "MAX(VsData) FROM VisiteN v WHERE v.VsCliente = c.CliCodice), 0)", {}},
        {"SELECT COUNT(*) FROM TabCambi WHERE CmbValore <= 0 OR CmbData > ?",
         {GiornoDaData(Oggi)}},
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

// Enough of each kind for the screens to show something of every case.
TEST_F(DatiDemo, DiOgniCasoQualcuno)
{
    const QVariantList euro{GiornoEuro};
    EXPECT_GT(N("SELECT COUNT(*) FROM Distinte WHERE dstData < ?", euro), 0);
    EXPECT_GT(N("SELECT COUNT(*) FROM Distinte04 WHERE dstData < ?", euro), 0);
    EXPECT_GT(N("SELECT COUNT(*) FROM Distinte WHERE dstData >= ?", euro), 0);
    EXPECT_GT(N("SELECT COUNT(*) FROM Distinte WHERE dstPrg = '1'"), 0);
    EXPECT_GT(N("SELECT COUNT(*) FROM Distinte WHERE dstChiusa = ' '"), 0);
    // Slips older than a year are nearly all confirmed.
    const QString vecchi = "SELECT COUNT(DISTINCT dstCodice) FROM Distinte WHERE dstData < ?";
    const QVariantList annoFa{GiornoDaData(Oggi) - 365};
    EXPECT_LT(N(vecchi + " AND dstChiusa = ' '", annoFa) * 20, N(vecchi, annoFa));
    const qint64 clienti = N("SELECT COUNT(*) FROM Clienti");
    EXPECT_GE(clienti, 200);
    EXPECT_LE(clienti, 500);
    EXPECT_GT(N("SELECT COUNT(*) FROM VisiteN"), clienti);
    EXPECT_GT(N("SELECT COUNT(*) FROM Clienti WHERE CliCategoria = 'ZZZZZ'"), 5);
    EXPECT_GT(N("SELECT COUNT(*) FROM Clienti WHERE CliRagsoc LIKE ?", {"%'%"}), 0);
    EXPECT_GT(N("SELECT COUNT(DISTINCT Squadra) FROM Squadre"), 5);
    // The lira's fixed rate, one dollar rate a month from January 1999.
    EXPECT_DOUBLE_EQ(Valore(db(), QStringLiteral("SELECT CmbValore FROM TabCambi WHERE "
                                                 "CmbMoneta = 'LIT' AND CmbData <= ?"),
                            {GiornoDaData(QDate(1999, 1, 4))}).toDouble(),
                     1936.27);
    EXPECT_EQ(N("SELECT COUNT(*) FROM TabCambi WHERE CmbMoneta = 'USD'"),
              (Oggi.year() - 1999) * 12 + Oggi.month());
}

TEST_F(DatiDemo, IMovimentiSempliciSonoCopiatiNelLibro04)
{
    // Row by row in code order: the same fields, and the slices' codes joined
    // by "," without their open marks.
    QStringList fette;
    for (int i = 0; i < 5; ++i)
        fette << QStringLiteral("CASE WHEN %1 <> '' THEN ',' || %1 ELSE '' END")
                     .arg(QStringLiteral("trim(replace(dstCodP%1, char(10), ''))").arg(i));
    const QString campi = "dstDitta, dstData, dstCliente, dstCausale, dstMoneta, dstImporto, ";
    const QString uguali = "SELECT COUNT(*) FROM uno JOIN quattro q USING (n) WHERE "
                           "(uno.dstDitta, uno.dstData, uno.dstCliente, uno.dstCausale, "
                           "uno.dstMoneta, uno.dstImporto, uno.fette) IS (q.dstDitta, q.dstData, "
                           "q.dstCliente, q.dstCausale, q.dstMoneta, q.dstImporto, q.fette)";
    EXPECT_EQ(N("WITH uno AS (SELECT ROW_NUMBER() OVER (ORDER BY dstCodice) AS n, " + campi
                + "ltrim(" + fette.join(" || ") + ", ',') AS fette FROM Distinte d WHERE NOT "
                "EXISTS (SELECT 1 FROM Distinte g WHERE g.dstCodice = d.dstCodice AND g.dstPrg "
                "= '1')), quattro AS (SELECT ROW_NUMBER() OVER (ORDER BY dstCodice) AS n, "
                + campi + "dstCodP AS fette FROM Distinte04 WHERE dstCodice < 800000000) "
                "SELECT (SELECT COUNT(*) FROM uno) + (SELECT COUNT(*) FROM quattro) - 2 * ("
                + uguali + ")"), 0);
    EXPECT_EQ(N("SELECT MIN(dstCodice) FROM Distinte04"), 1);

    // The yearly balances: numbered on from 800000001, in lire, on the first
    // of January of the year that their text names.
    const QString saldi = "FROM Distinte04 WHERE dstCodice > 800000000";
    EXPECT_EQ(N("SELECT MAX(dstCodice) - 800000000 - COUNT(*) " + saldi), 0);
    EXPECT_GT(N("SELECT COUNT(*) " + saldi), 10);
    EXPECT_EQ(N("SELECT COUNT(*) " + saldi + " AND (dstMoneta <> 'LIT' OR dstCausale NOT IN "
                "('007', '008') OR strftime('%m-%d', '1899-12-30', dstData || ' days') <> "
                "'01-01' OR dstCodP <> 'al 31/12/' || strftime('%Y', '1899-12-30', dstData || "
                "' days') || ' Movimenti vari')"), 0);
}

TEST(DatiDemoSemi, LoStessoSemeDaGliStessiDatiEUnAltroNo)
{
    UfficioProva a, b, c;
    ASSERT_TRUE(a.pronto() && b.pronto() && c.pronto());
    ASSERT_TRUE(a.genera(Opzioni(800, 7))) << qPrintable(a.errore());
    ASSERT_TRUE(b.genera(Opzioni(800, 7))) << qPrintable(b.errore());
    ASSERT_TRUE(c.genera(Opzioni(800, 8))) << qPrintable(c.errore());
    for (const QString &t : TabelleDemo) {
        EXPECT_EQ(Impronta(a.db(), t), Impronta(b.db(), t)) << qPrintable(t);
        EXPECT_NE(Impronta(a.db(), t), Impronta(c.db(), t)) << qPrintable(t);
    }
}

TEST(DatiDemoSemi, NMovimentiSonoNMovimentiSullaStessaBase)
{
    UfficioProva piccolo, grande;
    ASSERT_TRUE(piccolo.pronto() && grande.pronto());
    ASSERT_TRUE(piccolo.genera(Opzioni(1, 3))) << qPrintable(piccolo.errore());
    ASSERT_TRUE(grande.genera(Opzioni(2345, 3))) << qPrintable(grande.errore());
    const QString movimenti = QStringLiteral("SELECT COUNT(DISTINCT dstCodice) FROM Distinte");
    EXPECT_EQ(Conta(piccolo.db(), movimenti), 1);
    EXPECT_EQ(Conta(grande.db(), movimenti), 2345);
    for (const QString &t : {QStringLiteral("Clienti"), QStringLiteral("TabProdotti"),
                             QStringLiteral("TabCambi")})
        EXPECT_EQ(Impronta(piccolo.db(), t), Impronta(grande.db(), t)) << qPrintable(t);
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
