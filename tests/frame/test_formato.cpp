#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"

#include "support/CartellaProva.h"

#include <QDateTime>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
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
        {999.5, "#,###,###,##0", "1.000", "1,000"},
        {-1234.5, "#,###,###,##0.00", "-1.234,50", "-1,234.50"},
        {1000, "##,###,###,###.##", "1.000,", "1,000."}, {5, "00", "05", "05"},
        {-0.5, "standard", "-0,50", "-0.50"}, {5, "#,###,###,##0.", "5,", "5."},
    };
    verifica(righe, std::size(righe));
}

// "#" prints nothing where a digit isn't significant: the amount layout
// strips what is left of a zero.
TEST(Format, OptionalPlaceholders)
{
    static const Riga righe[] = {
        {0, "#,###,###,###,###", "", ""}, {-0.4, "#,###,###,###,###", "", ""},
        {-0.5, "##,###,###,###.##", "-,5", "-.5"}, {0.001, "##,###,###,###.##", ",", "."},
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
        {0.256, "0%", "26%", "26%"}, {1234567, "#0,", "1235", "1235"},
    };
    verifica(righe, std::size(righe));
}

TEST(Format, DayNumbersInDatePatterns)
{
    static const Riga righe[] = {
        {37256, "dd/mm/yyyy", "31/12/2001", "31/12/2001"},
        {37257, "dd/mm/yy", "01/01/02", "01/01/02"},
        {37256, "dd mmmm yyyy", "31 dicembre 2001", "31 December 2001"},
        {37256, "Long Date", "lunedì 31 dicembre 2001", "Monday, December 31, 2001"},
        {37256.75, "Long Time", "18:00:00", "18:00:00"},
        {0, "dd/mm/yyyy", "30/12/1899", "30/12/1899"},
        // Before day 0 the time still runs forward from midnight.
        {-1, "dd/mm/yyyy", "29/12/1899", "29/12/1899"},
        {-1.25, "dd/mm/yyyy hh:mm", "29/12/1899 06:00", "29/12/1899 06:00"},
        {GiornoMinimo, "dd/mm/yyyy", "01/01/0100", "01/01/0100"},
        {GiornoMassimo, "d/m/yyyy", "31/12/9999", "31/12/9999"},
        {GiornoMassimo + 1, "dd/mm/yyyy", "", ""},
        // Shown to the second, the last moment of a day is the next one.
        {37256.9999999, "dd/mm/yyyy", "01/01/2002", "01/01/2002"},
        {37257, "ddd dd mmm", "mar 01 gen", "Tue 01 Jan"},
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
        {Null(), importo, ""}, {true, "#0", "-1"}, {fine, data, "31/12/2001"},
        {QDateTime(fine, QTime(13, 45, 10)), "Long Time", "13:45:10"},
        {" 1234,5 ", importo, "1.234,50"},
        {"31-12-2001", "dd mmmm yyyy", "31 dicembre 2001"}, {"31/02/2001", data, "31/02/2001"},

    };
    for (const auto &[valore, formato, atteso] : casi)
        EXPECT_EQ(Format(valore, formato), atteso) << valore.toString().toStdString();

    LocaleFissato en(Inglese());
    EXPECT_EQ(Format(QVariant(QStringLiteral("1234.5")), importo), QStringLiteral("1,234.50"));
    EXPECT_EQ(Format(QVariant(QStringLiteral("31/12/2001")), QStringLiteral("dd mmmm yyyy")),
              QStringLiteral("31 December 2001"));
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
