#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Locale.h"
#include "frame/core/Valore.h"

#include "support/CartellaProva.h"

#include <QDateTime>
#include <gtest/gtest.h>

#include <cmath>

namespace sorvane {
namespace {

using prova::Inglese;
using prova::Italiano;
using prova::LocaleFissato;

TEST(Giorni, KnownDayNumbers)
{
    const struct
    {
        QDate data;
        int giorno;
    } righe[] = {
        {QDate(1899, 12, 30), 0},         {QDate(1899, 12, 29), -1},
        {QDate(1900, 2, 28), 60},         {QDate(1900, 3, 1), 61},
        {QDate(2000, 2, 29), 36585},      {QDate(2002, 1, 1), GiornoEuro},
        {QDate(100, 1, 1), GiornoMinimo}, {QDate(9999, 12, 31), GiornoMassimo},
    };
    for (const auto &r : righe) {
        SCOPED_TRACE(r.data.toString().toStdString());
        EXPECT_EQ(GiornoDaData(r.data), r.giorno);
        EXPECT_EQ(DataDaGiorno(r.giorno), r.data);
    }
    EXPECT_EQ(GiornoDaData(QDate()), 0);
}

TEST(Giorni, FractionIsTheTimeOfDay)
{
    EXPECT_EQ(DataDaGiorno(37256.75), QDate(2001, 12, 31));
    // Before day 0 the fraction doesn't move the day back: -1.25 is still
    // 29/12/1899.
    EXPECT_EQ(DataDaGiorno(-1.25), QDate(1899, 12, 29));
    EXPECT_EQ(DataDaGiorno(-0.5), QDate(1899, 12, 30));
    EXPECT_EQ(GiornoDaDataOra(QDateTime(QDate(2001, 12, 31), QTime(18, 0))), 37256.75);
    EXPECT_EQ(GiornoDaDataOra(QDateTime(QDate(1899, 12, 29), QTime(6, 0))), -1.25);
    for (const double fuori : {GiornoMassimo + 1.0, GiornoMinimo - 1.0, std::nan(""), 1e300})
        EXPECT_FALSE(DataDaGiorno(fuori).isValid()) << fuori;
}

// Written by Format and read back by LeggiData, every day of the classic
// range (sampled) comes back to its number.
TEST(Giorni, TextRoundTripOverTheWholeRange)
{
    const QString formato = QStringLiteral("dd/mm/yyyy");
    for (int g = GiornoMinimo; g <= GiornoMassimo; g += 997) {
        const QString testo = Format(double(g), formato);
        const auto data = LeggiData(testo);
        ASSERT_TRUE(data.has_value()) << testo.toStdString();
        ASSERT_EQ(GiornoDaData(*data), g) << testo.toStdString();
    }
}

TEST(Giorni, DateTexts)
{
    const struct
    {
        const char *testo;
        QDate data; // invalid: not a date
    } righe[] = {
        {"01-02-2003", QDate(2003, 2, 1)}, {"\t1/1/02\n", QDate(2002, 1, 1)},
        // Two-digit years: 00-29 this century, 30-99 the last.
        {"01/01/00", QDate(2000, 1, 1)}, {"31/12/29", QDate(2029, 12, 31)},
        {"01/01/30", QDate(1930, 1, 1)}, {"1/1/99", QDate(1999, 1, 1)},
        // Leap days: every fourth year, centuries only every fourth.
        {"29/02/2004", QDate(2004, 2, 29)}, {"29/02/00", QDate(2000, 2, 29)},
        {"29/02/1900", QDate()}, {"31/04/2001", QDate()},
        {"12/31/2001", QDate()}, // no day/month swapping
        // One digit falls in the window too; four-digit years from 0100 on;
        // three digits, or none, are no year.
        {"1/2/3", QDate(2003, 2, 1)}, {"1-2-9", QDate(2009, 2, 1)},
        {"01/01/0100", QDate(100, 1, 1)}, {"31/12/9999", QDate(9999, 12, 31)},
        {"31/12/0099", QDate()}, {"31/12/201", QDate()}, {"12/3/", QDate()},
        {"2001/12/31", QDate()}, {"31-12/2001", QDate()}, {"", QDate()},
    };
    for (const auto &r : righe) {
        SCOPED_TRACE(r.testo);
        const QString testo = QString::fromUtf8(r.testo);
        const auto data = LeggiData(testo);
        EXPECT_EQ(IsDate(testo), r.data.isValid());
        EXPECT_EQ(data.value_or(QDate()), r.data);
    }
    // Digits of other scripts are not digits here.
    EXPECT_FALSE(IsDate(QStringLiteral("\uFF11/\uFF11/2001")));
}


// ---------------------------------------------------------------------------
// Numbers typed by a person

TEST(Valore, LeggiNumeroInBothLocales)
{
    const struct
    {
        const char *testo;
        bool okIt;
        double it;
        bool okEn;
        double en;
    } righe[] = {
        {"1.234.567,8", true, 1234567.8, false, 0},
        // A dot where a group can't stand is read as a decimal point.
        {"1.234", true, 1234, true, 1.234}, {"12.34", true, 12.34, true, 12.34},
        {"1,234.5", false, 0, true, 1234.5}, {"  -3,5 ", true, -3.5, false, 0},
        {"1e3", true, 1000, true, 1000}, {",5", true, 0.5, false, 0},
        {"   ", false, 0, false, 0}, {"12abc", false, 0, false, 0},
        {"1,2,3", false, 0, false, 0}, {"nan", false, 0, false, 0},
        {"1e400", false, 0, false, 0}, {"31/12/2001", false, 0, false, 0},
    };
    for (const auto &r : righe) {
        SCOPED_TRACE(r.testo);
        const QString testo = QString::fromUtf8(r.testo);
        double v = -99;
        {
            LocaleFissato l(Italiano());
            EXPECT_EQ(LeggiNumero(testo, &v), r.okIt);
            if (r.okIt) {
                EXPECT_DOUBLE_EQ(v, r.it);
            }
            EXPECT_EQ(IsNumeric(QVariant(testo)), r.okIt);
        }
        {
            LocaleFissato l(Inglese());
            EXPECT_EQ(LeggiNumero(testo, &v), r.okEn);
            if (r.okEn) {
                EXPECT_DOUBLE_EQ(v, r.en);
            }
        }
    }
}

TEST(Valore, ValReadsTheNumericPrefixWithADot)
{
    const struct
    {
        const char *testo;
        double valore;
    } righe[] = {
        {"abc", 0}, {" -3.5x", -3.5}, {"1 2 3", 123}, {"- 3", -3}, {"1,5", 1},
        {"1.2.3", 1.2}, {"--3", 0}, {"1D2", 100}, {"1e2e3", 100}, {"1e400", 0},

    };
    for (const QLocale &locale : {Italiano(), Inglese()}) {
        LocaleFissato l(locale);
        for (const auto &r : righe) {
            SCOPED_TRACE(r.testo);
            EXPECT_DOUBLE_EQ(Val(QString::fromUtf8(r.testo)), r.valore);
        }
    }
}

// Italian and English separators run through every table above; a third
// locale proves they are read, not assumed.
TEST(Locale, SeparatorsFollowTheDefaultLocale)
{
    LocaleFissato l(QLocale(QLocale::German, QLocale::Switzerland));
    EXPECT_EQ(SeparatoreDecimale(), QLatin1Char('.'));
    EXPECT_EQ(Format(1234567.5, QStringLiteral("#,##0.00")),
              QStringLiteral("1") + QLocale().groupSeparator() + QStringLiteral("234")
                  + QLocale().groupSeparator() + QStringLiteral("567.50"));
}

TEST(Locale, IlProgrammaNonGiraMaiNelLocaleC)
{
    LocaleFissato l(QLocale::c());
    ImpostaLocaleProgramma();
    const QLocale sistema = QLocale::system();
    if (sistema.language() == QLocale::C)
        EXPECT_EQ(QLocale().name(), QStringLiteral("it_IT"));
    else
        EXPECT_EQ(QLocale().name(), sistema.name());
}

} // namespace
} // namespace sorvane
