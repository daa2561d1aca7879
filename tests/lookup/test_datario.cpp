#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Modale.h"
#include "lookup/Datario.h"
#include "lookup/RegoleDatario.h"
#include "support/CartellaProva.h"

#include <QAbstractItemModel>
#include <QCalendarWidget>
#include <QComboBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace sorvane;

namespace {

// Clicks the cell of a day of the month shown; days of the months around it
// come later in the grid than the shown month's own for days up to 22.
void CliccaGiorno(QCalendarWidget *c, int giorno, bool doppio = false)
{
    auto *vista = c->findChild<QTableView *>(QStringLiteral("qt_calendar_calendarview"));
    QAbstractItemModel *m = vista->model();
    for (int r = 1; r < m->rowCount(); ++r) {
        for (int k = 0; k < m->columnCount(); ++k) {
            if (m->index(r, k).data().toInt() != giorno)
                continue;
            const QPoint punto = vista->visualRect(m->index(r, k)).center();
            if (doppio)
                QTest::mouseDClick(vista->viewport(), Qt::LeftButton, {}, punto);
            else
                QTest::mouseClick(vista->viewport(), Qt::LeftButton, {}, punto);
            return;
        }
    }
    ADD_FAILURE() << "no day " << giorno;
}

template <typename T> T *Figlio(QDialog &d, const char *nome)
{
    T *w = d.findChild<T *>(QString::fromLatin1(nome));
    EXPECT_NE(w, nullptr) << nome;
    return w;
}

class DatarioProva : public ::testing::Test
{
protected:
    void SetUp() override
    {
        impostazioni().IniLocale = m_cartella.scrivi(QStringLiteral("sorvane.ini"), "");
        impostazioni().DataRendimento = QStringLiteral(" ");
        datario() = StatoDatario{};
        sessione().CodiceChiamante = 70;
    }
    void TearDown() override { installaGestoreModale({}); }

    QString ini(const QString &chiave) const
    {
        return LeggiIni(impostazioni().IniLocale, QStringLiteral("PARAMETRI"), chiave);
    }

    // Runs the calendar on a date, with `lavoro` working the open dialog.
    int Apri(const QDate &data, const std::function<void(Datario &)> &lavoro)
    {
        datario().DataComune = GiornoDaData(data);
        installaGestoreModale([lavoro](QDialog &d) {
            d.show();
            lavoro(static_cast<Datario &>(d));
            return d.result();
        });
        return MostraDatario();
    }

    prova::StatoSalvato m_stato;
    prova::CartellaProva m_cartella;
    MessaggiRegistrati m_messaggi;
};

} // namespace

// The edges the dialog's tests don't reach: no day selected, leap years,
// lists written by hand.
TEST(RegoleDatario, CasiLimiteDelleRegole)
{
    EXPECT_EQ(GiornoDiPassaggio(31), 1);
    EXPECT_TRUE(DaRiselezionare(QDate(), 15));
    EXPECT_EQ(GiornoNelMese(2024, 2, 30), QDate(2024, 2, 29));
    EXPECT_EQ(TestoUscita(QDate()), QStringLiteral("&USCITA"));
    EXPECT_EQ(TestoDataScelta(QDate()), QString());
    EXPECT_TRUE(OggiVisibile(QDate(), QDate(2024, 5, 9)));

    EXPECT_EQ(LeggiElencoDate(QStringLiteral(" 01/02/21 |31/02/21|xx|15/03/2021")),
              (QStringList{QStringLiteral("01/02/21"), QStringLiteral("15/03/2021")}));
    EXPECT_TRUE(LeggiElencoDate(QString()).isEmpty());
    EXPECT_EQ(IndiceDateIniziale(QStringLiteral("3"), 3), 0);
    EXPECT_EQ(IndiceDateIniziale(QStringLiteral("-1"), 3), 0);
    EXPECT_EQ(IndiceDateIniziale(QStringLiteral("2"), 0), -1);
    const QStringList voci{QStringLiteral("01/02/21"), QStringLiteral("15/03/21")};
    EXPECT_TRUE(PostoInElenco(voci, QDate(2021, 3, 15)).presente);
    EXPECT_EQ(PostoInElenco(voci, QDate(2020, 1, 1)).indice, 0);
    EXPECT_EQ(PostoInElenco(voci, QDate(2022, 1, 1)).indice, 2);
}

TEST_F(DatarioProva, ClickOnTheSelectedFirstStepsThroughTheSecondAndKeepsIt)
{
    QList<QDate> passi;
    QString uscita;
    QString msg;
    const int esito = Apri(QDate(2021, 3, 1), [&](Datario &d) {
        auto *cal = Figlio<QCalendarWidget>(d, "Calendar1");
        QObject::connect(cal, &QCalendarWidget::selectionChanged,
                         [&] { passi.append(cal->selectedDate()); });
        CliccaGiorno(cal, 1);
        EXPECT_EQ(cal->selectedDate(), QDate(2021, 3, 1));
        uscita = Figlio<QPushButton>(d, "Cmd_esci")->text();
        msg = Figlio<QLabel>(d, "MsgData")->text();
        Figlio<QPushButton>(d, "Cmd_esci")->click();
    });
    EXPECT_EQ(passi, (QList<QDate>{QDate(2021, 3, 2), QDate(2021, 3, 1)}));
    EXPECT_EQ(uscita, QStringLiteral("&CONFERMA"));
    EXPECT_EQ(msg, QStringLiteral("01 marzo 2021"));
    EXPECT_EQ(esito, QDialog::Accepted);
    EXPECT_EQ(datario().DataComune, GiornoDaData(QDate(2021, 3, 1)));
}

TEST_F(DatarioProva, TodayAnswersAtOnceAndHidesWhileShowing)
{
    bool visibilePrima = false;
    bool apertoDopo = true;
    const int esito = Apri(QDate(2020, 6, 10), [&](Datario &d) {
        auto *oggi = Figlio<QPushButton>(d, "Cmd_oggi");
        visibilePrima = oggi->isVisible();
        oggi->click();
        apertoDopo = d.isVisible();
    });
    EXPECT_TRUE(visibilePrima);
    EXPECT_FALSE(apertoDopo);
    EXPECT_EQ(esito, QDialog::Accepted);
    EXPECT_EQ(datario().DataComune, GiornoDaData(QDate::currentDate()));
}


TEST_F(DatarioProva, CloseBoxLeavesTheCallersDateAndTheIniAlone)
{
    const QDate data(2019, 11, 20);
    const int esito = Apri(data, [&](Datario &d) {
        CliccaGiorno(Figlio<QCalendarWidget>(d, "Calendar1"), 5);
        d.close();
    });
    EXPECT_EQ(esito, QDialog::Rejected);
    EXPECT_EQ(datario().DataComune, GiornoDaData(data));
    EXPECT_TRUE(ini(QStringLiteral("DataDefaultTmp")).isEmpty());
}

TEST_F(DatarioProva, PeriodFrameNestedCallFillsTheListInOrder)
{
    ScriviIni(impostazioni().IniLocale, QStringLiteral("PARAMETRI"), QStringLiteral("Date"),
              QStringLiteral("01/02/21|15/03/21|"));
    datario().PeriodoScelto = 3;
    bool frame = false;
    QStringList voci;
    datario().DataComune = GiornoDaData(QDate(2021, 6, 1));
    installaGestoreModale([&](QDialog &dialogo) {
        auto &d = static_cast<Datario &>(dialogo);
        d.show();
        if (d.Modo() == ModoAnnidato) {
            // The nested calendar has no frame, and answers with its day.
            EXPECT_FALSE(Figlio<QGroupBox>(d, "Frame1")->isVisible());
            Figlio<QCalendarWidget>(d, "Calendar1")->setSelectedDate(QDate(2021, 2, 20));
            Figlio<QPushButton>(d, "Cmd_esci")->click();
            return d.result();
        }
        frame = Figlio<QGroupBox>(d, "Frame1")->isVisible();
        Figlio<QPushButton>(d, "cmdData")->click();
        auto *elenco = Figlio<QComboBox>(d, "cmbDate");
        for (int i = 0; i < elenco->count(); ++i)
            voci.append(elenco->itemText(i));
        EXPECT_EQ(elenco->currentIndex(), 1);
        // A period other than a year answers at once.
        Figlio<QRadioButton>(d, "Option1_1")->click();
        return d.result();
    });
    EXPECT_EQ(MostraDatario(), QDialog::Accepted);
    EXPECT_TRUE(frame);

    EXPECT_EQ(voci, (QStringList{QStringLiteral("01/02/21"), QStringLiteral("20/02/21"),
                                 QStringLiteral("15/03/21")}));
    EXPECT_EQ(ini(QStringLiteral("Date")), QStringLiteral("01/02/21|20/02/21|15/03/21|"));
    EXPECT_EQ(datario().PeriodoScelto, 1);
    EXPECT_TRUE(datario().PeriodoCambiato);
}

TEST_F(DatarioProva, WrongPortfolioDateIsToldAndNotStored)
{
    datario().PeriodoScelto = 6;
    Apri(QDate(2021, 3, 4), [&](Datario &d) {
        auto *campo = Figlio<QLineEdit>(d, "TDataRend");
        // Leaving the field, as a click elsewhere would.
        const auto lascia = [campo] {
            QFocusEvent uscita(QEvent::FocusOut, Qt::TabFocusReason);
            QCoreApplication::sendEvent(campo, &uscita);
        };
        campo->setText(QStringLiteral("32/01/21"));
        lascia();
        EXPECT_TRUE(ini(QStringLiteral("datarendim")).isEmpty());
        campo->setText(QStringLiteral("05/01/21"));
        lascia();
        d.close();
    });
    EXPECT_EQ(m_messaggi.testi(),
              QStringList{QStringLiteral("DATA PERSONALIZZA PORTAFOGLIO ERRATA")});
    EXPECT_EQ(ini(QStringLiteral("datarendim")), QStringLiteral("05/01/21"));
}
