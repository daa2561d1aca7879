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
        {'0', '0'}, {'9', '9'}, {8, 8}, {3, 3}, {22, 22}, {13, 0}, {47, 0}, {58, 0}, {'E', 0},
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

TEST(TastiCampo, SoloImportoColSeparatoreDelLocale)
{
    for (const QLocale &locale : {Italiano(), Inglese()}) {
        LocaleFissato l(locale);
        const int d = locale.decimalPoint().at(0).unicode();
        ProvaTasti(SoloImporto, TastiComuniNumerici());
        ProvaTasti(SoloImporto, {{'.', d}, {',', d}, {'-', '-'}});
    }
}

TEST(TastiCampo, MaiuscoloSoloLettereSemplici)
{
    ProvaTasti([](int &t) { Maiuscolo(t); },
               {{'a', 'A'}, {'z', 'Z'}, {'`', '`'}, {'{', '{'}, {0xE8, 0xE8}});
}

TEST(DataDaCampo, VuotiENonDateDannoEmpty)
{
    // "12/3": one "/" only; "30/02/2001": no such day; without two "/" a date
    // isn't looked for, and "31-12-2001" isn't a number either.
    for (const QVariant &v : {Null(), Empty(), QVariant(QString()), QVariant("  "),
                              QVariant("12/3"), QVariant("abc"), QVariant("30/02/2001"),
                              QVariant("12/3/"), QVariant("31-12-2001")}) {
        EXPECT_TRUE(IsEmpty(DataDaCampo(v))) << v.toString().toStdString();
    }
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
    // Day before month, and a two-digit year in this century; one digit
    // reads the same, as IsDate says.
    EXPECT_EQ(DataDaCampo(QStringLiteral("01/02/03")).toDouble(), 37653.0);
    EXPECT_EQ(DataDaCampo(QStringLiteral("1/2/3")).toDouble(), 37653.0);

    // A number comes back as it stands, text included.
    EXPECT_EQ(DataDaCampo(37256.5).toDouble(), 37256.5);
    const QVariant testo = DataDaCampo(QStringLiteral(" 12,5"));
    EXPECT_EQ(testo.toString(), " 12,5");
    EXPECT_EQ(CDbl(testo), 12.5);
}

TEST(TestoDaCampo, VuotiDannoIlPredefinitoAltriComeTesto)
{
    LocaleFissato it(Italiano());
    const QString nulInFondo = QStringLiteral("a") + QChar(0); // only a leading NUL counts
    const struct
    {
        QVariant valore;
        QString predefinito, atteso;
    } righe[] = {
        {Empty(), {}, " "}, {"   ", "-", "-"}, {Null(), "   ", " "},
        {QString(QChar(0)) + "abc", "X", "X"}, {nulInFondo, {}, nulInFondo}, {12.5, {}, "12,5"},
    };
    for (const auto &r : righe) {
        SCOPED_TRACE(r.valore.toString().toStdString());
        EXPECT_EQ(TestoDaCampo(r.valore, r.predefinito), r.atteso);
    }
}

TEST(Allinea, TestoCodiceVirgolettato)
{
    const struct
    {
        QString (*funzione)(const QString &, int);
        const char *testo;
        int lunghezza;
        const char *atteso;
    } righe[] = {
        {AllineaCodice, " 12 ", 5, "00012"}, {AllineaCodice, "A12", 5, "A12"},

        {AllineaCodice, "   ", 5, ""},
        // Whatever is numeric is filled, sign and separator included.
        {AllineaCodice, "-7", 5, "000-7"}, {AllineaCodice, "1,5", 5, "001,5"},
    };
    for (const auto &r : righe) {
        SCOPED_TRACE(r.testo);
        EXPECT_EQ(r.funzione(QString::fromUtf8(r.testo), r.lunghezza), r.atteso);
    }
    EXPECT_EQ(Virgolettato(QStringLiteral("C:/Programmi/calc.exe")), "\"C:/Programmi/calc.exe\"");
    EXPECT_EQ(Virgolettato(QStringLiteral("  ")), "  ");
}

TEST(FormatoImporto, NeiDueLocaliConIlCodiceLire)
{
    const QString lire = Lire();
    // The lira code is known without blanks or capitals.
    const QString scritto = QLatin1Char(' ') + lire.toLower() + QLatin1Char(' ');
    const struct
    {
        bool virgola;
        QString codice;
        double importo;
        bool vuotoSeZero;
        const char *atteso;
    } righe[] = {
        {true, "EUR", 0, false, "0"}, {true, "EUR", 0, true, ""},
        {true, "EUR", 1234.56, false, "1.234,56"}, {true, "EUR", -12.5, false, "-12,5"},
        {true, lire, 1234567.6, false, "1.234.568"}, {true, scritto, 1234.5, false, "1.235"},
        {false, lire, 1234567, false, "1,234,567"}, {false, "EUR", 1234.5, false, "1,234.5"},

    };
    for (const auto &r : righe) {
        SCOPED_TRACE(testing::Message() << r.codice.toStdString() << " " << r.importo);
        LocaleFissato l(r.virgola ? Italiano() : Inglese());
        EXPECT_EQ(FormatoImporto(r.codice, r.importo, r.vuotoSeZero), r.atteso);
    }
}
