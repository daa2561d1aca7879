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

TEST_F(DatiDemo, LireInteriPrimaDel2002EuroDopo)
{
    for (const QString t : {"Distinte", "Distinte04"}) {
        SCOPED_TRACE(qPrintable(t));
        EXPECT_EQ(N("SELECT COUNT(*) FROM " + t + " WHERE dstData < ? AND (dstMoneta <> 'LIT' "
                    "OR dstImporto <> ROUND(dstImporto) OR dstImporto <= 0)", {GiornoEuro}), 0);
        EXPECT_EQ(N("SELECT COUNT(*) FROM " + t + " WHERE dstData >= ? AND (dstMoneta <> 'EUR' "
                    "OR ABS(dstImporto * 100 - ROUND(dstImporto * 100)) > 1e-6 OR "
                    "dstImporto <= 0)", {GiornoEuro}), 0);
        EXPECT_GT(N("SELECT COUNT(*) FROM " + t + " WHERE dstData < ?", {GiornoEuro}), 0);
    }
    EXPECT_GT(N("SELECT COUNT(*) FROM Distinte WHERE dstData >= ?", {GiornoEuro}), 0);
    // Every movement lies between the first slips and the run date.
    EXPECT_EQ(N("SELECT COUNT(*) FROM Distinte WHERE dstData > ? OR dstData < ?",
                {GiornoDaData(Oggi), GiornoDaData(QDate(1999, 1, 1))}), 0);
}

TEST_F(DatiDemo, OgniMovimentoHaLaRigaZeroELaChiusaDeiSuoiSegni)
{
    EXPECT_EQ(N("SELECT COUNT(*) FROM Distinte WHERE dstPrg NOT IN ('0', '1')"), 0);
    // One row "0", at most one row "1", both with the same header and flag.
    EXPECT_EQ(N("SELECT COUNT(*) FROM (SELECT dstCodice FROM Distinte GROUP BY dstCodice "
                "HAVING SUM(dstPrg = '0') <> 1 OR COUNT(*) > 2 OR COUNT(DISTINCT dstChiusa) > 1 "
                "OR COUNT(DISTINCT dstCliente) > 1 OR COUNT(DISTINCT dstData) > 1)"), 0);
    EXPECT_GT(N("SELECT COUNT(*) FROM Distinte WHERE dstPrg = '1'"), 0);

    // "S" exactly when no slice of either row holds the open mark, and the
    // mark only ever ends a slice.
    QSqlQuery q(db());
    ASSERT_TRUE(q.exec(QStringLiteral(
        "SELECT dstCodice, dstChiusa, dstData, dstCodP0, dstCodP1, dstCodP2, dstCodP3, "
        "dstCodP4 FROM Distinte ORDER BY dstCodice, dstPrg")));
    QMap<int, bool> segnato;
    QMap<int, QString> chiusa;
    QMap<int, int> data;
    while (q.next()) {
        const int codice = q.value(0).toInt();
        chiusa[codice] = q.value(1).toString();
        data[codice] = q.value(2).toInt();
        for (int i = 3; i < 8; ++i) {
            const QString fetta = q.value(i).toString();
            EXPECT_LE(fetta.size(), 15);
            EXPECT_FALSE(fetta.isEmpty());
            const int segno = fetta.indexOf(QChar(10));
            EXPECT_TRUE(segno < 0 || segno == fetta.size() - 1) << codice;
            segnato[codice] = segnato[codice] || segno >= 0;
        }
    }
    int aperti = 0, vecchi = 0, vecchiAperti = 0;
    for (auto it = chiusa.cbegin(); it != chiusa.cend(); ++it) {
        EXPECT_EQ(it.value(), segnato[it.key()] ? QStringLiteral(" ") : QStringLiteral("S"))
            << it.key();
        aperti += segnato[it.key()];
        if (GiornoDaData(Oggi) - data[it.key()] > 365) {
            ++vecchi;
            vecchiAperti += segnato[it.key()];
        }
    }
    EXPECT_GT(aperti, 0);
    EXPECT_LT(vecchiAperti * 20, vecchi); // old slips are nearly all confirmed
}

TEST_F(DatiDemo, IMovimentiSempliciSonoCopiatiNelLibro04)
{
    QSqlQuery uno(db());
    ASSERT_TRUE(uno.exec(QStringLiteral(
        "SELECT dstDitta, dstData, dstCliente, dstCausale, dstMoneta, dstImporto, dstCodP0, "
        "dstCodP1, dstCodP2, dstCodP3, dstCodP4 FROM Distinte d WHERE NOT EXISTS "
        "(SELECT 1 FROM Distinte g WHERE g.dstCodice = d.dstCodice AND g.dstPrg = '1') "
        "ORDER BY dstCodice")));
    QSqlQuery quattro(db());
    ASSERT_TRUE(quattro.exec(QStringLiteral(
        "SELECT dstDitta, dstData, dstCliente, dstCausale, dstMoneta, dstImporto, dstCodP "
        "FROM Distinte04 WHERE dstCodice < 800000000 ORDER BY dstCodice")));
    int copiati = 0;
    while (uno.next()) {
        ASSERT_TRUE(quattro.next()) << copiati;
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(uno.value(i), quattro.value(i)) << copiati << " " << i;
        QStringList fette;
        for (int i = 6; i < 11; ++i) {
            const QString f = uno.value(i).toString().section(QChar(10), 0, 0).trimmed();
            if (!f.isEmpty())
                fette << f;
        }
        EXPECT_EQ(quattro.value(6).toString(), fette.join(QLatin1Char(','))) << copiati;
        ++copiati;
    }
    EXPECT_FALSE(quattro.next());
    EXPECT_EQ(N("SELECT MIN(dstCodice) FROM Distinte04"), 1);

    // The yearly balances: numbered from 800000001, in lire, on the first of
    // January of the year that their text names.
    QSqlQuery saldi(db());
    ASSERT_TRUE(saldi.exec(QStringLiteral(
        "SELECT dstCodice, dstData, dstCausale, dstMoneta, dstCodP FROM Distinte04 "
        "WHERE dstCodice > 800000000 ORDER BY dstCodice")));
    int numero = 800000000;
    while (saldi.next()) {
        EXPECT_EQ(saldi.value(0).toInt(), ++numero);
        const QDate d = DataDaGiorno(saldi.value(1).toInt());
        EXPECT_EQ(d, QDate(d.year(), 1, 1));
        EXPECT_TRUE(saldi.value(2).toString() == "007" || saldi.value(2).toString() == "008");
        EXPECT_EQ(saldi.value(3).toString(), QStringLiteral("LIT"));
        EXPECT_EQ(saldi.value(4).toString(),
                  QStringLiteral("al 31/12/%1 Movimenti vari").arg(d.year()));
    }
    EXPECT_GT(numero, 800000010);
}

TEST_F(DatiDemo, IMovimentiRimandanoAlleTabelle)
{
    const QStringList orfani = {
        QStringLiteral("SELECT COUNT(*) FROM Distinte WHERE dstCliente NOT IN "
                       "(SELECT CliCodice FROM Clienti)"),
        QStringLiteral("SELECT COUNT(*) FROM Distinte WHERE dstCausale NOT IN "
                       "(SELECT Codice FROM DistCausali)"),
        QStringLiteral("SELECT COUNT(*) FROM Distinte WHERE dstDitta NOT IN "
                       "(SELECT SocNome FROM Societa)"),
        QStringLiteral("SELECT COUNT(*) FROM Distinte WHERE dstBanca <> ' ' AND dstBanca NOT "
                       "IN (SELECT CodBanca FROM DistBanche)"),
        QStringLiteral("SELECT COUNT(*) FROM Distinte WHERE dstCodP0 = ' ' OR "
                       "RTRIM(dstCodP0, char(10)) NOT IN (SELECT Codice FROM TabProdotti)"),
        QStringLiteral("SELECT COUNT(*) FROM Distinte04 WHERE dstCliente NOT IN "
                       "(SELECT CliCodice FROM Clienti) OR dstCausale NOT IN "
                       "(SELECT Codice FROM DistCausali)"),
        QStringLiteral("SELECT COUNT(*) FROM TabProdotti WHERE Categoria NOT IN "
                       "(SELECT Codice FROM TabCategorie) OR Gruppo NOT IN "
                       "(SELECT GrpCodice FROM TabGruppi)"),
        // A split product's shares make 100.
        QStringLiteral("SELECT COUNT(*) FROM TabProdotti WHERE BuoniCattivi = 9 AND "
                       "(SELECT SUM(MpPercentuale) FROM TabMultiPartner WHERE MpProdotto = "
                       "Codice) IS NOT 100"),
    };
    for (const QString &sql : orfani)
        EXPECT_EQ(N(sql), 0) << qPrintable(sql);
}

TEST_F(DatiDemo, ClientiChiusiSquadreApostrofiEVisite)
{
    const qint64 clienti = N("SELECT COUNT(*) FROM Clienti");
    EXPECT_GE(clienti, 200);
    EXPECT_LE(clienti, 500);
    EXPECT_GT(N("SELECT COUNT(*) FROM Clienti WHERE CliCategoria = 'ZZZZZ'"), 5);
    EXPECT_GT(N("SELECT COUNT(*) FROM Clienti WHERE CliRagsoc LIKE ?", {"%'%"}), 0);
    EXPECT_EQ(N("SELECT COUNT(*) FROM Clienti WHERE LENGTH(CliRagsoc) > 35 OR CliRagsoc = ''"),
              0);
    EXPECT_EQ(N("SELECT COUNT(*) FROM Clienti WHERE CliSesso IN ('M', 'F') AND "
                "LENGTH(CliCodiceFiscale) <> 16"), 0);

    // A member's team number is in its extended name, and a number there
    // means membership of that team.
    EXPECT_GT(N("SELECT COUNT(DISTINCT Squadra) FROM Squadre"), 5);
    EXPECT_EQ(N("SELECT COUNT(*) FROM Squadre s JOIN Clienti c ON c.CliCodice = s.Cliente "
                "WHERE TRIM(c.CliRagsocEstesa) <> CAST(s.Squadra AS TEXT)"), 0);
    EXPECT_EQ(N("SELECT COUNT(*) FROM Clienti c WHERE CAST(c.CliRagsocEstesa AS INTEGER) > 0 "
                "AND NOT EXISTS (SELECT 1 FROM Squadre s WHERE s.Cliente = c.CliCodice)"), 0);

    // The last visit on the card is the newest in the visits file, so that
    // loading a client finds nothing to correct.
    EXPECT_GT(N("SELECT COUNT(*) FROM VisiteN"), clienti);
    EXPECT_EQ(N("SELECT COUNT(*) FROM Clienti c WHERE c.CliUltimaVisita <> COALESCE((SELECT "
                "MAX(VsData) FROM VisiteN v WHERE v.VsCliente = c.CliCodice), 0)"), 0);
}

TEST_F(DatiDemo, CambiDellaLiraFissiEDelleAltreMensili)
{
    EXPECT_DOUBLE_EQ(Valore(db(), QStringLiteral("SELECT CmbValore FROM TabCambi WHERE "
                                                 "CmbMoneta = ? AND CmbData <= ?"),
                            {QStringLiteral("LIT"), GiornoDaData(QDate(1999, 1, 4))})
                         .toDouble(),
                     1936.27);
    // One dollar rate a month from January 1999 to the run date.
    const int mesi = (Oggi.year() - 1999) * 12 + Oggi.month();
    EXPECT_EQ(N("SELECT COUNT(*) FROM TabCambi WHERE CmbMoneta = 'USD'"), mesi);
    EXPECT_EQ(N("SELECT COUNT(*) FROM TabCambi WHERE CmbValore <= 0 OR CmbData > ?",
                {GiornoDaData(Oggi)}), 0);
    const double dollaro2008 = Valore(db(), QStringLiteral(
        "SELECT AVG(CmbValore) FROM TabCambi WHERE CmbMoneta = 'USD' AND CmbData BETWEEN ? AND ?"),
        {GiornoDaData(QDate(2008, 1, 1)), GiornoDaData(QDate(2008, 12, 31))}).toDouble();
    EXPECT_GT(dollaro2008, 1.3);
    EXPECT_LT(dollaro2008, 1.6);
}

TEST_F(DatiDemo, OgniTestoStaNellaSuaLarghezza)
{
    for (const Tabella &t : Tabelle()) {
        for (const Colonna &c : t.colonne) {
            if (c.tipo != Tipo::Testo)
                continue;
            EXPECT_EQ(N(QStringLiteral("SELECT COUNT(*) FROM \"%1\" WHERE LENGTH(\"%2\") > ?")
                            .arg(t.nome, c.nome), {c.larghezza}), 0)
                << qPrintable(t.nome + "." + c.nome);
        }
    }
    EXPECT_EQ(N("SELECT COUNT(*) FROM TabProdotti WHERE LENGTH(ISIN) <> 12"), 0);
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
