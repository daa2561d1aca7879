#include "ProvaDistinte.h"

#include "distinte/Movimento.h"
#include "distinte/Numerazione.h"

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::A;
using sorvane::prova::ProvaDistinte;

namespace {

class Movimenti : public ProvaDistinte
{
protected:
    // A movement of the entry screen: slices of row "0" and of the switch.
    Movimento Dai(const QStringList &prodotti, const QStringList &giro = {})
    {
        m_campi.imposta(CampoCausale, QStringLiteral("001"));
        m_campi.imposta(CampoImporto, QStringLiteral("1.000,5"));
        for (int i = 0; i < FetteProdotto; ++i) {
            m_campi.imposta(CampoPrimoProdotto + i, prodotti.value(i, QStringLiteral(" ")));
            m_campi.imposta(CampoPrimoGiro + i, giro.value(i, QStringLiteral(" ")));
        }
        return MovimentoDaCampi(m_campi, QStringLiteral("DITTA"), QString(), 45450, 12);
    }
    void Distinta(std::int32_t codice, const QString &prg, const QStringList &fette,
                  const QString &chiusa = QStringLiteral(" "))
    {
        RigaDistinta r;
        r.dstCodice = codice;
        r.dstPrg = prg;
        r.dstChiusa = chiusa;
        for (int i = 0; i < fette.size(); ++i)
            r.dstCodP[i] = fette.at(i);
        ASSERT_TRUE(m_dist.AddNew());
        ScriviRiga(m_dist, r);
        ASSERT_TRUE(m_dist.Update()) << qPrintable(m_dist.Errore());
    }
    QString Chiusa(std::int32_t codice, const QString &prg)
    {
        auto r = CercaRiga(m_dist, codice, prg);
        return r ? r->dstChiusa : QStringLiteral("assente");
    }

};

} // namespace

TEST(Fette, LaMarcaApertaEIlCodiceNudo)
{
    EXPECT_EQ(MarcaAperta, QChar(10));
    EXPECT_EQ(TagliaMarca("AB12" + A), "AB12");
    EXPECT_EQ(TagliaMarca("AB" + A + "X" + A), "AB");
    EXPECT_EQ(TagliaMarca(" AB "), " AB ");
    EXPECT_TRUE(HaMarca("X" + A));
    EXPECT_FALSE(HaMarca("X"));
    EXPECT_EQ(FettaAperta(" AB12 "), "AB12" + A);
    EXPECT_EQ(FettaAperta("   "), " ");
    EXPECT_EQ(FettaSalvata(""), " ");

    RigaDistinta r;
    r.dstCodP = {" ", "P1 ", " ", "P3", " "};
    EXPECT_EQ(CodiciDistinte04(r), "P1,P3");
    EXPECT_FALSE(r.fetteVuote());
    r.dstCodP = {" ", " ", "", " ", " "};
    EXPECT_EQ(CodiciDistinte04(r), "");
    EXPECT_TRUE(r.fetteVuote());
}

TEST(Fette, AggiungiRestaNascostoSenzaProdotti)
{
    CampiInMemoria txt;
    txt.imposta(CampoCodiceCliente, QStringLiteral("12"));
    txt.imposta(CampoCausale, QStringLiteral("001"));
    for (int i = CampoPrimoProdotto; i <= CampoUltimoGiro; ++i)
        txt.imposta(i, QStringLiteral(" "));
    EXPECT_FALSE(AggiungiVisibile(txt));
    txt.imposta(CampoUltimoGiro, QStringLiteral("G1"));
    EXPECT_TRUE(AggiungiVisibile(txt));
    txt.imposta(CampoCausale, QStringLiteral(" "));
    EXPECT_FALSE(AggiungiVisibile(txt));
    txt.imposta(CampoCausale, QStringLiteral("001"));
    txt.imposta(CampoCodiceCliente, QString());
    EXPECT_FALSE(AggiungiVisibile(txt));
}

TEST_F(Movimenti, LaNumerazioneProvvisoria)
{
    EXPECT_EQ(UltimoCodice(m_bk), 0);
    EXPECT_EQ(ScriviInLavoro(m_bk, Dai({"P1"})), 1);
    EXPECT_EQ(ScriviInLavoro(m_bk, Dai({"P2"}, {"G1", "G2"})), 2);
    EXPECT_EQ(UltimoCodice(m_bk), 2);
    EXPECT_EQ(NuovoCodiceProvvisorio(m_bk), 3);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM BkDistinte").toInt(), 3);

    auto m = LeggiMovimento(m_bk, 2);
    ASSERT_TRUE(m.has_value());
    ASSERT_TRUE(m->giro.has_value());
    EXPECT_EQ(m->principale.dstCodP[0], "P2");
    EXPECT_EQ(m->principale.dstCodP[1], " ");
    EXPECT_EQ(m->giro->dstCodP[1], "G2");
    EXPECT_EQ(m->giro->dstCliente, 12);
    EXPECT_EQ(m->principale.dstDitta, "DITTA");
    EXPECT_EQ(m->principale.dstBanca, " ");
    EXPECT_DOUBLE_EQ(m->principale.dstImporto, 1000.5);
    EXPECT_EQ(m->principale.dstData, 45450);

    // A changed movement with the switch blanked loses its row "1".
    Movimento cambiato = Dai({"P9"});
    cambiato.principale.dstCodice = 2;
    EXPECT_EQ(ScriviInLavoro(m_bk, cambiato), 2);
    m = LeggiMovimento(m_bk, 2);
    ASSERT_TRUE(m.has_value());
    EXPECT_FALSE(m->giro.has_value());
    EXPECT_EQ(m->principale.dstCodP[0], "P9");
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM BkDistinte").toInt(), 2);

    EXPECT_TRUE(CancellaMovimento(m_bk, 1));
    EXPECT_FALSE(LeggiMovimento(m_bk, 1).has_value());
    EXPECT_EQ(NuovoCodiceProvvisorio(m_bk), 3);
}

TEST_F(Movimenti, ChiusoQuandoNessunaFettaHaLaMarca)
{
    Distinta(5, QStringLiteral("0"), {"P1" + A, " ", "P2"});
    Distinta(5, QStringLiteral("1"), {"G1" + A});
    EsitoChiusa e = AggiornaChiusa(m_dist, 5);
    EXPECT_FALSE(e.cambiato());
    EXPECT_EQ(e.nuovo, " ");

    // Confirming the first code leaves the switch's open.
    m_dist.Seek(QStringLiteral("="), QVariantList{5, QStringLiteral("0")});
    m_dist.Edit();
    m_dist.SetField(QStringLiteral("dstCodP0"), QStringLiteral("P1"));
    m_dist.Update();
    EXPECT_FALSE(AggiornaChiusa(m_dist, 5).cambiato());
    EXPECT_EQ(Chiusa(5, "0"), " ");

    m_dist.Seek(QStringLiteral("="), QVariantList{5, QStringLiteral("1")});
    m_dist.Edit();
    m_dist.SetField(QStringLiteral("dstCodP0"), QStringLiteral("G1"));
    m_dist.Update();
    e = AggiornaChiusa(m_dist, 5);
    EXPECT_TRUE(e.cambiato());
    EXPECT_EQ(e.vecchio, " ");
    EXPECT_EQ(e.nuovo, "S");
    EXPECT_EQ(Chiusa(5, "0"), "S");
    EXPECT_EQ(Chiusa(5, "1"), "S");

    // All blank reads as closed; without a row "0" nothing is written.
    Distinta(6, QStringLiteral("0"), {" ", " "});
    EXPECT_EQ(AggiornaChiusa(m_dist, 6).nuovo, "S");
    Distinta(7, QStringLiteral("1"), {"G" + A}, QStringLiteral("S"));
    e = AggiornaChiusa(m_dist, 7);
    EXPECT_EQ(e.vecchio, " ");
    EXPECT_EQ(e.nuovo, " ");
    EXPECT_EQ(Chiusa(7, "1"), "S");
    EXPECT_EQ(Chiusa(7, "0"), "assente");
}
