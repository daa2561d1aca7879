// The client search's statement on a real data folder: what each criterion
// finds and what it leaves out, and the orders of the headings.

#include "ProvaAnagrafiche.h"

namespace sorvane::prova {
namespace {

using RicercaAnagrafiche = ProvaAnagrafiche;

TEST_F(RicercaAnagrafiche, SenzaCriteriGliApertiEConChiusiSoloIChiusi)
{
    Cliente(1, QStringLiteral("ROSSI"));
    Cliente(2, QStringLiteral("BIANCHI"), {{QStringLiteral("CliCategoria"), CategoriaChiusi}});
    CriteriAnagrafiche c;
    EXPECT_EQ(Trovati(c), QList<int>{1});
    c.chiusi = true;
    EXPECT_EQ(Trovati(c), QList<int>{2});
}

TEST_F(RicercaAnagrafiche, IlSessoEsattoGliAltriPerInizio)
{
    Cliente(1, QStringLiteral("ROSSI MARIO"), {{QStringLiteral("CliSesso"), QStringLiteral("M")},
                                               {QStringLiteral("CliCap"), QStringLiteral("20121")}});
    Cliente(2, QStringLiteral("ROSSINI ANNA"), {{QStringLiteral("CliSesso"), QStringLiteral("F")},
                                                {QStringLiteral("CliCap"), QStringLiteral("20100")}});
    Cliente(3, QStringLiteral("VERDI"), {{QStringLiteral("CliSesso"), QStringLiteral("MF")}});
    CriteriAnagrafiche c;
    c.testi[BoxNome] = QStringLiteral("ROSSI");
    EXPECT_EQ(Trovati(c), (QList<int>{1, 2}));
    c.testi[BoxSesso] = QStringLiteral("M");
    EXPECT_EQ(Trovati(c), QList<int>{1});
    c = {};
    c.testi[BoxCap] = QStringLiteral("201*"); // a trailing wildcard is harmless
    EXPECT_EQ(Trovati(c), (QList<int>{1, 2}));
    c.testi[BoxCap] = QStringLiteral("2012?");
    EXPECT_EQ(Trovati(c), QList<int>{1});
    c.testi[BoxCap] = QStringLiteral("20_");
    EXPECT_TRUE(Trovati(c).isEmpty()) << "an underscore stands for itself";
}

TEST_F(RicercaAnagrafiche, ApostrofiEVirgolettePerOgniCasella)
{
    Cliente(1, QStringLiteral("L'ERBA \"SRL\""),
            {{QStringLiteral("CliIndirizzo"), QStringLiteral("VIA DELL'ORTO 3")},
             {QStringLiteral("CliTelefono"), QStringLiteral("02'55")},
             {QStringLiteral("CliProvincia"), QStringLiteral("\"MI")}});
    Cliente(2, QStringLiteral("LERBA"));
    CriteriAnagrafiche c;
    c.testi[BoxNome] = QStringLiteral("L'ERBA \"");
    EXPECT_EQ(Trovati(c), QList<int>{1});
    c.testi[BoxTelefono] = QStringLiteral("02'");
    c.testi[BoxProvincia] = QStringLiteral("\"M");
    EXPECT_EQ(Trovati(c), QList<int>{1});
}

TEST_F(RicercaAnagrafiche, VisiteAzioniAbbinatiEGruppi)
{
    Cliente(1, QStringLiteral("A"), {{QStringLiteral("CliVisite"), QStringLiteral("SNNNNNNNNNNN ")},
                                     {QStringLiteral("CliAbbinamento"), 4}});
    Cliente(2, QStringLiteral("B"), {{QStringLiteral("CliVisite"), QStringLiteral("SSNNNNNNNNNN ")},
                                     {QStringLiteral("CliRagsocEstesa"), QStringLiteral("7")}});
    Cliente(3, QStringLiteral("C"), {{QStringLiteral("CliVisite"), QStringLiteral("SNNNNNNNNNNN")}});
    CriteriAnagrafiche c;
    c.mesi[0] = true;
    EXPECT_EQ(ModelloVisite(c.mesi), QStringLiteral("S___________ "));
    // The stored field's trailing blank is part of the pattern.
    EXPECT_EQ(Trovati(c), (QList<int>{1, 2}));
    c.mesi[1] = true;
    EXPECT_EQ(Trovati(c), QList<int>{2});
    c = {};
    c.abbinati = true;
    EXPECT_EQ(Trovati(c), QList<int>{1});
    c = {};
    c.gruppi = true;
    EXPECT_EQ(Trovati(c), QList<int>{2});

    Scrivi(QStringLiteral("INSERT INTO Azioni VALUES (1, 'TEL', ' '), (2, 'TEL', 'S'), "
                          "(3, 'POSTA', ' ')"));
    c = {};
    c.azione = QStringLiteral("TEL   ");
    EXPECT_EQ(Trovati(c), QList<int>{1}) << "a deleted action does not count";
}

TEST_F(RicercaAnagrafiche, GliOrdiniDelleIntestazioni)
{
    Cliente(1, QStringLiteral("BETA"), {{QStringLiteral("CliLocalita"), QStringLiteral("ROMA")},
                                        {QStringLiteral("CliAbbinamento"), 2}});
    Cliente(2, QStringLiteral("ALFA"), {{QStringLiteral("CliLocalita"), QStringLiteral("ROMA")},
                                        {QStringLiteral("CliAbbinamento"), 1}});
    Cliente(3, QStringLiteral("GAMMA"), {{QStringLiteral("CliLocalita"), QStringLiteral("BARI")}});
    CriteriAnagrafiche c;
    EXPECT_EQ(Trovati(c), (QList<int>{2, 1, 3}));
    EXPECT_EQ(Trovati(c, {AnaRagSoc, 2}), (QList<int>{3, 1, 2}));
    // The town descending, then the pairing ascending.
    EXPECT_EQ(Trovati(c, {AnaLocalita, 2}), (QList<int>{2, 1, 3}));
    EXPECT_EQ(Trovati(c, {AnaCodice, VersoCrescente}), (QList<int>{1, 2, 3}));
    EXPECT_EQ(OrdineSql({AnaNazione, 2}), QStringLiteral(" ORDER BY CliNazione DESC, CliRagSoc ASC"));
}

} // namespace
} // namespace sorvane::prova
