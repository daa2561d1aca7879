#include "ProvaDistinte.h"

#include "distinte/Movimento.h"
#include "distinte/Salvataggio.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::A;
using sorvane::prova::ProvaDistinte;

namespace {

class Salva : public ProvaDistinte
{
protected:
    // A working movement; the amount tells the movements apart.
    void Lavoro(double importo, const QStringList &prodotti, const QStringList &giro = {})
    {
        Movimento m;
        m.principale.dstCliente = 12;
        m.principale.dstCausale = QStringLiteral("001");
        m.principale.dstMoneta = QStringLiteral("EUR");
        m.principale.dstImporto = importo;
        for (int i = 0; i < prodotti.size(); ++i)
            m.principale.dstCodP[i] = prodotti.at(i);
        if (!giro.isEmpty()) {
            m.giro = m.principale;
            m.giro->dstCodP = {" ", " ", " ", " ", " "};
            for (int i = 0; i < giro.size(); ++i)
                m.giro->dstCodP[i] = giro.at(i);
        }
        ASSERT_GT(ScriviInLavoro(m_bk, m), 0);
    }
    // "codice/prg:importo" of every row of a table, in key order.
    QStringList Righe(const QString &tabella, bool prg = true)
    {
        QSqlQuery q(Db());
        q.exec(QStringLiteral("SELECT dstCodice, %1, dstImporto FROM %2 ORDER BY 1, 2")
                   .arg(prg ? QStringLiteral("dstPrg") : QStringLiteral("''"), tabella));
        QStringList righe;
        while (q.next())
            righe.append(q.value(0).toString()
                         + (prg ? QLatin1Char('/') + q.value(1).toString() : QString())
                         + QLatin1Char(':') + q.value(2).toString());
        return righe;
    }
};

} // namespace

TEST_F(Salva, NumeriDefinitiviEMarcheAperte)
{
    Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg) VALUES (41, '0')"));
    Scrivi(QStringLiteral("INSERT INTO Distinte04 (dstCodice) VALUES (7)"));
    Lavoro(100, {"P1", " ", " P2 "});
    Lavoro(200, {"P3"}, {"G1", "G2"});
    Lavoro(300, {" "}, {" ", "G3"});

    const EsitoSalvataggio e = SalvaDistinta();
    ASSERT_TRUE(e.riuscito) << qPrintable(e.errore);
    EXPECT_EQ(e.movimenti, 3);
    EXPECT_EQ(e.righeDistinte, 5);
    EXPECT_EQ(e.righe04, 1);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());

    EXPECT_EQ(Righe("Distinte"), QStringList({"41/0:", "42/0:100", "43/0:200", "43/1:200",
                                             "44/0:300", "44/1:300"}));
    // Only the plain movement reaches the 04 ledger.
    EXPECT_EQ(Righe("Distinte04", false), QStringList({"7:", "8:100"}));
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM BkDistinte").toInt(), 0);

    auto m = LeggiMovimento(m_dist, 42);
    ASSERT_TRUE(m.has_value());
    EXPECT_EQ(m->principale.dstCodP[0], "P1" + A);
    EXPECT_EQ(m->principale.dstCodP[1], " ");
    EXPECT_EQ(m->principale.dstCodP[2], "P2" + A);
    EXPECT_EQ(m->principale.dstChiusa, " ");
    m = LeggiMovimento(m_dist, 43);
    ASSERT_TRUE(m.has_value() && m->giro.has_value());
    EXPECT_EQ(m->giro->dstCodP[1], "G2" + A);
    EXPECT_EQ(Valore("SELECT dstCodP FROM Distinte04 WHERE dstCodice = 8").toString(), "P1,P2");
    EXPECT_EQ(Valore("SELECT dstCliente FROM Distinte04 WHERE dstCodice = 8").toInt(), 12);
}

TEST_F(Salva, IlPrimoMovimentoDiSempre)
{
    Lavoro(10, {"P1"});
    ASSERT_TRUE(SalvaDistinta().riuscito);
    EXPECT_EQ(Righe("Distinte"), QStringList{"1/0:10"});
    EXPECT_EQ(Righe("Distinte04", false), QStringList{"1:10"});
}

TEST_F(Salva, UnGuastoNonLasciaNullaEIlSecondoSalvaUnaVolta)
{
    Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg) VALUES (3, '0')"));
    Lavoro(100, {"P1"});
    Lavoro(200, {"P2"}, {"G2"});
    Lavoro(666, {"P3"});
    Lavoro(400, {"P4"});
    const QStringList lavoro = Righe("BkDistinte");
    // The last plain movement but one cannot be written to the 04 ledger.
    Scrivi(QStringLiteral("CREATE TRIGGER dati.Rifiuta BEFORE INSERT ON Distinte04 "
                          "WHEN NEW.dstImporto = 666 BEGIN SELECT RAISE(ABORT, 'rifiutato'); "
                          "END"));

    EsitoSalvataggio e = SalvaDistinta();
    EXPECT_FALSE(e.riuscito);
    EXPECT_TRUE(e.errore.contains(QStringLiteral("rifiutato"))) << qPrintable(e.errore);
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_TRUE(m_messaggi.richieste().first().testo.startsWith(
        QStringLiteral("ERRORE NEL SALVATAGGIO DELLA DISTINTA\n")));
    EXPECT_EQ(m_messaggi.richieste().first().icona, Icona::Stop);
    EXPECT_EQ(Righe("Distinte"), QStringList{"3/0:"});
    EXPECT_TRUE(Righe("Distinte04", false).isEmpty());
    EXPECT_EQ(Righe("BkDistinte"), lavoro);

    Scrivi(QStringLiteral("DROP TRIGGER dati.Rifiuta"));
    e = SalvaDistinta();
    ASSERT_TRUE(e.riuscito) << qPrintable(e.errore);
    EXPECT_EQ(Righe("Distinte"), QStringList({"3/0:", "4/0:100", "5/0:200", "5/1:200",
                                             "6/0:666", "7/0:400"}));
    EXPECT_EQ(Righe("Distinte04", false), QStringList({"1:100", "2:666", "3:400"}));
    EXPECT_TRUE(Righe("BkDistinte").isEmpty());

    // Nothing left: a save again writes nothing.
    e = SalvaDistinta();
    EXPECT_TRUE(e.riuscito);
    EXPECT_EQ(e.movimenti, 0);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte").toInt(), 6);
}
