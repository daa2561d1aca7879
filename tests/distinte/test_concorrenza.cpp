// Two workstations of one operator saving slips at the same moment on one
// server, each through its own program: the numbers of the ledger stay
// distinct and no movement is lost, also when one program is killed
// halfway through its saves.

#include "../store/ProvaInsieme.h"

#include <QProcess>
#include <QSet>

#include <algorithm>

namespace sorvane::prova {
namespace {

constexpr int Movimenti = 500;

class Concorrenza : public ProvaInsieme
{
protected:
    void SetUp() override
    {
        if (!SuServerDiProva())
            GTEST_SKIP() << "solo con due postazioni su un server";
        ProvaInsieme::SetUp();
        impostazioni().Server.postazione = QStringLiteral("A");
        for (Archivio a : TuttiGliArchivi)
            ASSERT_NO_FATAL_FAILURE(Crea(a));
        impostazioni().Server.postazione = QStringLiteral("B");
        ASSERT_NO_FATAL_FAILURE(Crea(Archivio::Lavoro));
    }

    void Avvia(QProcess &p, const QString &postazione)
    {
        p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p.start(QStringLiteral(SALVA_MOVIMENTI),
                {m_database, QString::fromLatin1(Operatore), postazione,
                 QString::number(Movimenti)});
        ASSERT_TRUE(p.waitForStarted()) << qPrintable(p.errorString());
    }
    static void Finisce(QProcess &p)
    {
        ASSERT_TRUE(p.waitForFinished(-1));
        EXPECT_EQ(p.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(p.exitCode(), 0);
        EXPECT_TRUE(p.readAllStandardOutput().endsWith(
            QByteArray("salvato ") + QByteArray::number(Movimenti) + '\n'));
    }

    // The ordinals of a workstation's movements, sorted, in the ledger or
    // in its working table.
    QList<int> Ordinali(const QString &postazione, bool inLavoro)
    {
        impostazioni().Server.postazione = postazione;
        const QString tabella = inLavoro
            ? NomeSchemaSql(SchemaServer(Archivio::Lavoro)) + QStringLiteral(".BkDistinte")
            : QStringLiteral("Distinte");
        AltraConnessione c(QString{});
        QSqlQuery q(c.db());
        q.prepare(QStringLiteral("SELECT CAST(dstImporto AS integer) FROM %1 WHERE dstDitta = ?")
                      .arg(tabella));
        q.addBindValue(postazione);
        EXPECT_TRUE(q.exec()) << qPrintable(q.lastError().text());
        QList<int> ordinali;
        while (q.next())
            ordinali.append(q.value(0).toInt());
        std::sort(ordinali.begin(), ordinali.end());
        return ordinali;
    }

    // One number per movement in both ledgers (every movement is one row).
    void NumeriDistinti(int movimenti)
    {
        AltraConnessione c(QString{});
        for (const char *tabella : {"Distinte", "Distinte04"}) {
            SCOPED_TRACE(tabella);
            const QString sql =
                QStringLiteral("SELECT COUNT(*), COUNT(DISTINCT dstCodice), MIN(dstCodice), "
                               "MAX(dstCodice) FROM %1")
                    .arg(QLatin1String(tabella));
            QSqlQuery q(c.db());
            ASSERT_TRUE(q.exec(sql) && q.next()) << qPrintable(q.lastError().text());
            EXPECT_EQ(q.value(0).toInt(), movimenti);
            EXPECT_EQ(q.value(1).toInt(), movimenti);
            EXPECT_EQ(q.value(2).toInt(), 1);
            EXPECT_EQ(q.value(3).toInt(), movimenti);
        }
    }
};

QList<int> DaUnoA(int n)
{
    QList<int> l;
    for (int i = 1; i <= n; ++i)
        l.append(i);
    return l;
}

TEST_F(Concorrenza, DuePostazioniSalvanoInsiemeSenzaDoppiNePerdite)
{
    QProcess a, b;
    ASSERT_NO_FATAL_FAILURE(Avvia(a, QStringLiteral("A")));
    ASSERT_NO_FATAL_FAILURE(Avvia(b, QStringLiteral("B")));
    Finisce(a);
    Finisce(b);

    NumeriDistinti(2 * Movimenti);
    for (const QString &postazione : {QStringLiteral("A"), QStringLiteral("B")}) {
        SCOPED_TRACE(qPrintable(postazione));
        EXPECT_EQ(Ordinali(postazione, false), DaUnoA(Movimenti));
        EXPECT_TRUE(Ordinali(postazione, true).isEmpty());
    }
}

TEST_F(Concorrenza, UnaPostazioneUccisaAMetaNonPerdeNeDoppiaMovimenti)
{
    QProcess a, b;
    ASSERT_NO_FATAL_FAILURE(Avvia(a, QStringLiteral("A")));
    ASSERT_NO_FATAL_FAILURE(Avvia(b, QStringLiteral("B")));
    // Killed as soon as it tells half of its movements saved.
    int salvati = 0;
    while (salvati < Movimenti / 2 && a.waitForReadyRead(-1)) {
        while (a.canReadLine())
            salvati = a.readLine().trimmed().split(' ').value(1).toInt();
    }
    ASSERT_EQ(a.state(), QProcess::Running) << "finito prima di essere ucciso";
    a.kill();
    a.waitForFinished(-1);
    Finisce(b);

    // The killed one's movements are each either in the ledger or still in
    // its working table, never both: together, every one it had made.
    const QList<int> salvatiA = Ordinali(QStringLiteral("A"), false);
    const QList<int> restanoA = Ordinali(QStringLiteral("A"), true);
    EXPECT_GE(salvatiA.size(), Movimenti / 2);
    EXPECT_LE(restanoA.size(), 1);
    QList<int> tutti = salvatiA + restanoA;
    std::sort(tutti.begin(), tutti.end());
    EXPECT_EQ(tutti, DaUnoA(int(tutti.size())));

    NumeriDistinti(int(salvatiA.size()) + Movimenti);
    EXPECT_EQ(Ordinali(QStringLiteral("B"), false), DaUnoA(Movimenti));
    EXPECT_TRUE(Ordinali(QStringLiteral("B"), true).isEmpty());
}

} // namespace
} // namespace sorvane::prova
