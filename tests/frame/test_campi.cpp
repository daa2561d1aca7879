#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Valore.h"

#include "support/CartellaProva.h"

#include <QDate>
#include <gtest/gtest.h>

#include <vector>

using namespace sorvane;
using prova::Inglese;
using prova::Italiano;
using prova::LocaleFissato;

namespace {

struct Tasto
{
    int premuto;
    int atteso;
};

// Runs a key filter over a table of presses, naming the failing press.
template<typename Filtro>
void ProvaTasti(Filtro filtro, const std::vector<Tasto> &tabella)
{
    for (const Tasto &t : tabella) {
        SCOPED_TRACE(testing::Message() << "tasto " << t.premuto);
        int tasto = t.premuto;
        filtro(tasto);
        EXPECT_EQ(tasto, t.atteso);
    }
}

// Presses that every numeric filter treats alike, whatever the locale.
const std::vector<Tasto> &TastiComuniNumerici()
{
    static const std::vector<Tasto> tabella{
        {'0', '0'}, {'5', '5'}, {'9', '9'}, {8, 8}, {3, 3}, {18, 18}, {22, 22},
        {13, 0},  {27, 0},  {32, 0},  {47, 0}, {58, 0}, {'a', 0}, {'E', 0},
        {'+', 0}, {127, 0}, {0xE0, 0}, {1, 0},
    };
    return tabella;
}

// The lira code as the settings have it (another test may have loaded an INI).
QString Lire() { return impostazioni().CodLit; }

} // namespace

TEST(TastiCampo, SoloCifrePassaCifreECopiaIncolla)
{
    ProvaTasti(SoloCifre, TastiComuniNumerici());
    ProvaTasti(SoloCifre, {{'-', 0}, {'.', 0}, {',', 0}});
}

TEST(TastiCampo, SoloImportoConVirgolaDecimale)
{
    LocaleFissato it(Italiano());
    ProvaTasti(SoloImporto, TastiComuniNumerici());
    ProvaTasti(SoloImporto, {{'.', ','}, {',', ','}, {'-', '-'}});
}

TEST(TastiCampo, SoloImportoConPuntoDecimale)
{
    LocaleFissato en(Inglese());
    ProvaTasti(SoloImporto, TastiComuniNumerici());
    ProvaTasti(SoloImporto, {{',', '.'}, {'.', '.'}, {'-', '-'}});
}

TEST(TastiCampo, MaiuscoloSoloLettereSemplici)
{
    ProvaTasti([](int &t) { Maiuscolo(t); },
               {{'a', 'A'}, {'m', 'M'}, {'z', 'Z'}, {'A', 'A'}, {'`', '`'}, {'{', '{'},
                {'1', '1'}, {8, 8}, {13, 13}, {0xE0, 0xE0}, {0xE8, 0xE8}, {0xE9, 0xE9},
                {0xF9, 0xF9}, {0x20AC, 0x20AC}});
    int tasto = 'q';
    EXPECT_EQ(Maiuscolo(tasto), 'Q');
}

TEST(DataDaCampo, VuotiENonDateDannoEmpty)
{
    EXPECT_TRUE(IsEmpty(DataDaCampo(Null())));
    EXPECT_TRUE(IsEmpty(DataDaCampo(Empty())));
    EXPECT_TRUE(IsEmpty(DataDaCampo(QString())));
    EXPECT_TRUE(IsEmpty(DataDaCampo(QStringLiteral("  "))));
    EXPECT_TRUE(IsEmpty(DataDaCampo(QStringLiteral("12/3"))));   // one "/" only
    EXPECT_TRUE(IsEmpty(DataDaCampo(QStringLiteral("abc"))));
    EXPECT_TRUE(IsEmpty(DataDaCampo(QStringLiteral("30/02/2001")))); // no such day
    EXPECT_TRUE(IsEmpty(DataDaCampo(QStringLiteral("12/3/"))));
    // Without two "/" a date isn't looked for, and the text isn't a number.
    EXPECT_TRUE(IsEmpty(DataDaCampo(QStringLiteral("31-12-2001"))));
}

TEST(DataDaCampo, NumeriEDate)
{
    const QVariant zero = DataDaCampo(0);
    EXPECT_FALSE(IsEmpty(zero));
    EXPECT_EQ(CDbl(zero), 0.0);

    const QVariant data = DataDaCampo(QStringLiteral("31/12/01"));
    EXPECT_EQ(data.typeId(), QMetaType::Double);
    EXPECT_EQ(data.toDouble(), 37256.0);
    EXPECT_EQ(DataDaCampo(QStringLiteral(" 31/12/2001 ")).toDouble(), 37256.0);
    // Day before month, and a two-digit year in this century.
    EXPECT_EQ(DataDaCampo(QStringLiteral("01/02/03")).toDouble(), 37653.0);
    EXPECT_EQ(DataDaCampo(QDate(2002, 1, 1)).toDouble(), 37257.0);

    // A number comes back as it stands, text included.
    EXPECT_EQ(DataDaCampo(37256.5).toDouble(), 37256.5);
    const QVariant testo = DataDaCampo(QStringLiteral(" 12,5"));
    EXPECT_EQ(testo.toString(), " 12,5");
    EXPECT_EQ(CDbl(testo), 12.5);
}

TEST(TestoDaCampo, ValoriVuotiDannoIlPredefinito)
{
    EXPECT_EQ(TestoDaCampo(Null()), " ");
    EXPECT_EQ(TestoDaCampo(Empty()), " ");
    EXPECT_EQ(TestoDaCampo(QString()), " ");
    EXPECT_EQ(TestoDaCampo(Null(), QStringLiteral("N.D.")), "N.D.");
    EXPECT_EQ(TestoDaCampo(QStringLiteral("   "), QStringLiteral("-")), "-");
    EXPECT_EQ(TestoDaCampo(Null(), QStringLiteral("   ")), " ");
    EXPECT_EQ(TestoDaCampo(QString(QChar(0)) + QStringLiteral("abc"), QStringLiteral("X")), "X");
}

TEST(TestoDaCampo, AltriValoriComeTesto)
{
    LocaleFissato it(Italiano());
    EXPECT_EQ(TestoDaCampo(QStringLiteral("  Rossi  ")), "  Rossi  ");
    const QString nulInFondo = QStringLiteral("a") + QChar(0); // only a leading NUL counts
    EXPECT_EQ(TestoDaCampo(nulInFondo), nulInFondo);
    EXPECT_EQ(TestoDaCampo(12.5), "12,5");
    EXPECT_EQ(TestoDaCampo(1234567), "1234567");
    EXPECT_EQ(TestoDaCampo(0), "0");
    EXPECT_EQ(TestoDaCampo(QDate(2001, 12, 31)), "31/12/2001");
}

TEST(MaggioreDi, ConfrontaPerValore)
{
    EXPECT_EQ(MaggioreDi(3, 10).toInt(), 10);
    EXPECT_EQ(MaggioreDi(2.5, -7).toDouble(), 2.5);
    // Texts of numbers compare as numbers, not letter by letter.
    EXPECT_EQ(MaggioreDi(QStringLiteral("9"), QStringLiteral("10")).toString(), "10");
    EXPECT_EQ(MaggioreDi(10, QStringLiteral("9")).toInt(), 10);
    EXPECT_EQ(MaggioreDi(QStringLiteral("01/12/2001"), QStringLiteral("31/01/2001")).toString(),
              "01/12/2001");
    EXPECT_EQ(MaggioreDi(QDate(2002, 1, 1), 37256.0).toDate(), QDate(2002, 1, 1));
    EXPECT_EQ(MaggioreDi(QStringLiteral("abc"), QStringLiteral("abd")).toString(), "abd");
    EXPECT_EQ(MaggioreDi(QStringLiteral("B"), 5).toString(), "B");
}

TEST(MaggioreDi, TerzoEQuartoFacoltativi)
{
    EXPECT_EQ(MaggioreDi(1, 2, 7, 3).toInt(), 7);
    EXPECT_EQ(MaggioreDi(1, 2, 3, 9).toInt(), 9);
    EXPECT_EQ(MaggioreDi(-1, -2, Empty(), -3).toInt(), -1);
    EXPECT_EQ(MaggioreDi(Null(), -5).toInt(), -5);
    EXPECT_TRUE(IsEmpty(MaggioreDi(Null(), Empty())));
    // On a tie the first one stays.
    EXPECT_EQ(MaggioreDi(5, QStringLiteral("5")).typeId(), QMetaType::Int);
}

TEST(Allinea, AllineaTesto)
{
    EXPECT_EQ(AllineaTesto(QStringLiteral("12"), 5), "   12");
    EXPECT_EQ(AllineaTesto(QStringLiteral(" 12  "), 5), "   12");
    EXPECT_EQ(AllineaTesto(QString(), 5), "");
    EXPECT_EQ(AllineaTesto(QStringLiteral("   "), 5), "   ");
    EXPECT_EQ(AllineaTesto(QStringLiteral(" abc "), 3), " abc ");
    EXPECT_EQ(AllineaTesto(QStringLiteral("abcdef"), 3), "abcdef");
}

TEST(Allinea, AllineaCodice)
{
    EXPECT_EQ(AllineaCodice(QStringLiteral("12"), 5), "00012");
    EXPECT_EQ(AllineaCodice(QStringLiteral(" 12 "), 5), "00012");
    EXPECT_EQ(AllineaCodice(QStringLiteral("A12"), 5), "A12");
    EXPECT_EQ(AllineaCodice(QString(), 5), "");
    EXPECT_EQ(AllineaCodice(QStringLiteral("   "), 5), "");
    EXPECT_EQ(AllineaCodice(QStringLiteral(" 12345 "), 5), "12345");
    EXPECT_EQ(AllineaCodice(QStringLiteral("123456"), 5), "123456");
    // Numbers that aren't plain digits are not codes to fill.
    EXPECT_EQ(AllineaCodice(QStringLiteral("-3"), 5), "-3");
    EXPECT_EQ(AllineaCodice(QStringLiteral("1,5"), 5), "1,5");
    EXPECT_EQ(AllineaCodice(QStringLiteral("1.5"), 5), "1.5");
}

TEST(Allinea, Virgolettato)
{
    EXPECT_EQ(Virgolettato(QStringLiteral("C:/Programmi/calc.exe")), "\"C:/Programmi/calc.exe\"");
    EXPECT_EQ(Virgolettato(QStringLiteral(" a b ")), "\" a b \"");
    EXPECT_EQ(Virgolettato(QString()), "");
    EXPECT_EQ(Virgolettato(QStringLiteral("  ")), "  ");
}

TEST(FormatoImporto, ConVirgolaDecimale)
{
    LocaleFissato it(Italiano());
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 0), "0");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 0, true), "");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 12.5), "12,5");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 1234.56), "1.234,56");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 1234), "1.234");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), -12.5), "-12,5");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 0.001), "0");
    EXPECT_EQ(FormatoImporto(Lire(), 1234567), "1.234.567");
    EXPECT_EQ(FormatoImporto(Lire(), 1234567.6), "1.234.568");
    EXPECT_EQ(FormatoImporto(Lire(), 0), "0");
    EXPECT_EQ(FormatoImporto(Lire(), 0, true), "");
}

TEST(FormatoImporto, ConPuntoDecimale)
{
    LocaleFissato en(Inglese());
    EXPECT_EQ(FormatoImporto(Lire(), 1234567), "1,234,567");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 1234.5), "1,234.5");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 1234), "1,234");
    EXPECT_EQ(FormatoImporto(QStringLiteral("EUR"), 0), "0");
}

TEST(FormatoImporto, IlCodiceLireSiRiconosceSenzaSpaziNeMaiuscole)
{
    LocaleFissato it(Italiano());
    const QString scritto = QLatin1Char(' ') + Lire().toLower() + QLatin1Char(' ');
    EXPECT_EQ(FormatoImporto(scritto, 1234.5), "1.235");
}

TEST(TestiData, DueEQuattroCifre)
{
    EXPECT_EQ(GiornoTesto(5), "05");
    EXPECT_EQ(GiornoTesto(31), "31");
    EXPECT_EQ(MeseTesto(1), "01");
    EXPECT_EQ(MeseTesto(12), "12");
    EXPECT_EQ(AnnoTesto(2001), "2001");
    EXPECT_EQ(AnnoTesto(95), "0095");
}
