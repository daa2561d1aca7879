#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"

#include "support/CartellaProva.h"

#include <QDateTime>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <tuple>

namespace sorvane {
namespace {

using prova::Inglese;
using prova::Italiano;
using prova::LocaleFissato;

// One value, one pattern, the text under a decimal-comma and under a
// decimal-point locale.
struct Riga
{
    double valore;
    const char *formato;
    const char *it;
    const char *en;
};

void verifica(const Riga *righe, size_t quante)
{
    for (size_t k = 0; k < quante; ++k) {
        const Riga &r = righe[k];
        SCOPED_TRACE(testing::Message() << r.valore << " in \"" << r.formato << "\"");
        {
            LocaleFissato l(Italiano());
            EXPECT_EQ(Format(r.valore, QString::fromUtf8(r.formato)), QString::fromUtf8(r.it));
        }
        {
            LocaleFissato l(Inglese());
            EXPECT_EQ(Format(r.valore, QString::fromUtf8(r.formato)), QString::fromUtf8(r.en));
        }
    }
}

TEST(Format, PatternsOfAmountsAndCounts)
{
    static const Riga righe[] = {
        {1234.4, "#0", "1234", "1234"}, {0.5, "#0.00", "0,50", "0.50"},
        {999.5, "#,###,###,##0", "1.000", "1,000"}, {0, "#,###,###,##0", "0", "0"},
        {-1234.5, "#,###,###,##0.00", "-1.234,50", "-1,234.50"},
        {1234.567, "##,###,###,###.##", "1.234,57", "1,234.57"},
        {1000, "##,###,###,###.##", "1.000,", "1,000."},
        {1936.27, "#,##0.000000", "1.936,270000", "1,936.270000"},
        {12, "0.000", "12,000", "12.000"}, {5, "00", "05", "05"}, {123, "00", "123", "123"},
        {-0.5, "standard", "-0,50", "-0.50"},
        // The decimals setting builds these.
        {5, "#,###,###,##0.", "5,", "5."}, {1.123456, "#,###,###,##0.00000", "1,12346", "1.12346"},
        {1234.5678, "###,###,##0.000", "1.234,568", "1,234.568"},
    };
    verifica(righe, std::size(righe));
}

// "#" prints nothing where a digit isn't significant: the amount layout
// strips what is left of a zero.
TEST(Format, OptionalPlaceholders)
{
    static const Riga righe[] = {
        {0, "#,###,###,###,###", "", ""}, {0.4, "#,###,###,###,###", "", ""},
        {-0.4, "#,###,###,###,###", "", ""}, {12.05, "##,###,###,###.##", "12,05", "12.05"},
        {-0.5, "##,###,###,###.##", "-,5", "-.5"}, {0.001, "##,###,###,###.##", ",", "."},
        {12, "0.0#", "12,0", "12.0"},
    };
    verifica(righe, std::size(righe));
}

// Half away from zero on the digits the value has with 15 significant
// digits, not on its binary fraction.
TEST(Format, RoundingEdges)
{
    static const Riga righe[] = {
        {1.005, "#0.00", "1,01", "1.01"}, {2.675, "#0.00", "2,68", "2.68"},
        {-1.005, "#0.00", "-1,01", "-1.01"}, {1.0049999, "#0.00", "1,00", "1.00"},
        {2.5, "#0", "3", "3"}, {-2.5, "#0", "-3", "-3"}, {-0.4, "#0", "0", "0"},
        {-0.001, "#0.00", "0,00", "0.00"}, {-0.005, "#,###,###,##0.00", "-0,01", "-0.01"},
        {9.995, "#0.00", "10,00", "10.00"}, {99999.5, "#,##0", "100.000", "100,000"},
        // 15 digits are kept exactly; beyond them the value is written with 15.
        {123456789012345, "#0", "123456789012345", "123456789012345"},
        {999999999999999, "#,###,###,###,###", "999.999.999.999.999",
         "999,999,999,999,999"},
        {1234567890123.45, "#,###,###,##0.00", "1.234.567.890.123,45",
         "1,234,567,890,123.45"},
        {12345678901234567.0, "#0", "12345678901234600", "12345678901234600"},
        {0.1 + 0.2, "#0.0000000000000000", "0,3000000000000000", "0.3000000000000000"},
    };
    verifica(righe, std::size(righe));
}

TEST(Format, EngineBeyondTheUsualPatterns)
{
    static const Riga righe[] = {
        {12345, "000-00", "123-45", "123-45"}, {-5, "\"EUR \"#0.00", "-EUR 5,00", "-EUR 5.00"},
        {5, "#0\\#", "5#", "5#"}, {0.256, "0%", "26%", "26%"}, {1234567, "#0,", "1235", "1235"},
        {0.25, "Percent", "25,00%", "25.00%"}, {-0.000125, "", "-0,000125", "-0.000125"},
        {1e20, "General Number", "100000000000000000000", "100000000000000000000"},
    };
    verifica(righe, std::size(righe));
}

TEST(Format, ExtremeNumbersDoNotBreakIt)
{
    LocaleFissato l(Italiano());
    const double massimo = std::numeric_limits<double>::max();
    const QString grande = Format(massimo, QStringLiteral("#,###,###,##0.00"));
    EXPECT_TRUE(grande.startsWith(QLatin1String("179.769.313.486.232.000")))
        << grande.toStdString();
    EXPECT_TRUE(grande.endsWith(QLatin1String(".000,00")));
    EXPECT_EQ(grande.size(), 309 + 102 + 3); // digits, groups, ",00"
    EXPECT_EQ(Format(-1e300, QStringLiteral("#0")).size(), 302);
    EXPECT_EQ(Format(std::numeric_limits<double>::denorm_min(), QStringLiteral("#0.00")),
              QStringLiteral("0,00"));
    EXPECT_EQ(Format(std::nan(""), QStringLiteral("#0")), QString());
    EXPECT_EQ(Format(HUGE_VAL, QStringLiteral("#0")), QString());
    EXPECT_EQ(Format(1e300, QStringLiteral("dd/mm/yyyy")), QString());
}

TEST(Format, DayNumbersInDatePatterns)
{
    static const Riga righe[] = {
        {37256, "dd/mm/yyyy", "31/12/2001", "31/12/2001"},
        {37257, "dd/mm/yy", "01/01/02", "01/01/02"},
        {37256, "dd mmmm yyyy", "31 dicembre 2001", "31 December 2001"},
        {37256, "Long Date", "lunedì 31 dicembre 2001", "Monday, December 31, 2001"},
        {37256.75, "Long Time", "18:00:00", "18:00:00"},
        {37256.75, "dd/mm/yyyy", "31/12/2001", "31/12/2001"},
        {0, "dd/mm/yyyy", "30/12/1899", "30/12/1899"},
        {61, "dd/mm/yyyy", "01/03/1900", "01/03/1900"},
        // Before day 0 the time still runs forward from midnight.
        {-1, "dd/mm/yyyy", "29/12/1899", "29/12/1899"},
        {-1.25, "dd/mm/yyyy hh:mm", "29/12/1899 06:00", "29/12/1899 06:00"},
        {GiornoMinimo, "dd/mm/yyyy", "01/01/0100", "01/01/0100"},
        {GiornoMassimo, "d/m/yyyy", "31/12/9999", "31/12/9999"},
        {GiornoMassimo + 1, "dd/mm/yyyy", "", ""},
        // Shown to the second, the last moment of a day is the next one.
        {37256.9999999, "dd/mm/yyyy", "01/01/2002", "01/01/2002"},
        {37257.5 + 90.0 / 86400, "d/m/yy h:mm:ss", "1/1/02 12:01:30", "1/1/02 12:01:30"},
        {37257, "ddd dd mmm", "mar 01 gen", "Tue 01 Jan"}, {37257, "\"day\" y", "day 1", "day 1"},
    };
    verifica(righe, std::size(righe));
}

TEST(Format, VariantValues)
{
    LocaleFissato l(Italiano());
    const QString data = QStringLiteral("dd/mm/yyyy");
    const QString importo = QStringLiteral("#,###,###,##0.00");
    const QDate fine(2001, 12, 31);
    // Texts: numbers as numbers, dates in date patterns as dates, others as
    // they are.
    const std::tuple<QVariant, QString, QString> casi[] = {
        {Null(), importo, ""}, {Empty(), data, ""}, {true, "#0", "-1"},
        {fine, data, "31/12/2001"}, {fine, "#0", "37256"},
        {QDateTime(fine, QTime(13, 45, 10)), "Long Time", "13:45:10"},
        {" 1234,5 ", importo, "1.234,50"}, {"1.234", importo, "1.234,00"},
        {"31-12-2001", "dd mmmm yyyy", "31 dicembre 2001"}, {"37256", data, "31/12/2001"},
        {"31/12/2001", importo, "31/12/2001"}, {"31/02/2001", data, "31/02/2001"},
    };
    for (const auto &[valore, formato, atteso] : casi)
        EXPECT_EQ(Format(valore, formato), atteso) << valore.toString().toStdString();

    LocaleFissato en(Inglese());
    EXPECT_EQ(Format(QVariant(QStringLiteral("1234.5")), importo), QStringLiteral("1,234.50"));
    EXPECT_EQ(Format(QVariant(QStringLiteral("31/12/2001")), QStringLiteral("dd mmmm yyyy")),
              QStringLiteral("31 December 2001"));
}

// Rounding through a format is formatting and reading back; Arrotonda must
// give the same double for every value, in either locale.
TEST(Arrotonda, EqualsFormatThenReadBack)
{
    static const char *const formati[] = {"#0", "#0.00", "#0.000", "#0.000000"};
    std::mt19937_64 caso(20020101);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    std::uniform_int_distribution<int> esponente(-8, 16);
    std::uniform_int_distribution<int> centesimi(-200000, 200000);
    for (const QLocale &locale : {Italiano(), Inglese()}) {
        LocaleFissato l(locale);
        for (int k = 0; k < 20000; ++k) {
            // Random magnitudes, and exact halves of cents and units that
            // the binary fraction puts on either side of the tie.
            double x = mantissa(caso) * std::pow(10.0, esponente(caso));
            if (k % 3 == 1)
                x = centesimi(caso) / 100.0 + 0.005;
            else if (k % 3 == 2)
                x = centesimi(caso) / 2.0;
            for (int d = 0; d < 4; ++d) {
                const int decimali[] = {0, 2, 3, 6};
                double letto = 0;
                const QString testo = Format(x, QString::fromLatin1(formati[d]));
                ASSERT_TRUE(LeggiNumero(testo, &letto)) << testo.toStdString();
                ASSERT_EQ(Arrotonda(x, decimali[d]), letto)
                    << x << " " << formati[d] << " " << testo.toStdString();
            }
        }
    }
}

TEST(Arrotonda, Edges)
{
    EXPECT_EQ(Arrotonda(1936.27 * 1000, 0), 1936270);
    EXPECT_EQ(Arrotonda(123456789012345.0, 0), 123456789012345.0);
    const double zero = Arrotonda(-0.001, 2);
    EXPECT_EQ(zero, 0);
    EXPECT_FALSE(std::signbit(zero));
    EXPECT_EQ(Arrotonda(1e300, 2), 1e300);
    EXPECT_EQ(Arrotonda(std::numeric_limits<double>::max(), 0),
              std::numeric_limits<double>::max());
    EXPECT_EQ(Arrotonda(12.345, -1), 12);
}

} // namespace
} // namespace sorvane
