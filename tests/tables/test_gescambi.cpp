// The exchange screen through its widgets, headless, on a real data folder:
// the three modes, the day's colours and steps, picking a currency, a typed
// rate confirmed, a dragged row, the currencies' editor and the export.

#include "support/Finestre.h"
#include "ProvaCambi.h"

#include "frame/core/Sessione.h"
#include "frame/ui/Documenti.h"
#include "frame/ui/Modale.h"
#include "reports/Esporta.h"
#include "store/Tabelle.h"
#include "tables/AggNazioni.h"
#include "tables/GesCambi.h"
#include "tables/ModelloTabella.h"
#include "tables/SchermoTabella.h"

#include <QApplication>
#include <QColor>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace sorvane::prova {
namespace {

class SchermoCambi : public ProvaCambi
{
protected:
    void SetUp() override
    {
        ProvaCambi::SetUp();
        sessione().LarghezzaSchermo = 12120;
        sessione().AltezzaSchermo = 9120;
        sessione().CodiceStop = 0;
        impostazioni().IniLocale = m_cartella.scrivi(QStringLiteral("sorvane.ini"), "");
        impostazioni().PathTemp = m_cartella.percorso() + QLatin1Char('/');
        m_messaggi.gestore = {};
    }
    void TearDown() override
    {
        m_schermo.reset();
        installaGestoreModale({});
        ProvaCambi::TearDown();
    }

    GesCambi &Apri(std::uint8_t modo, double giorno = Giorno)
    {
        gesCambi().ModoCambi = modo;
        gesCambi().DataCambi = giorno;
        m_schermo = std::make_unique<GesCambi>();
        MostraAttiva(m_schermo.get());
        return *m_schermo;
    }
    QString Cella(int riga, int colonna) const
    {
        return m_schermo->tdbgCambi()->model()->index(riga, colonna).data().toString();
    }
    QColor Colore(int riga) const
    {
        return m_schermo->tdbgCambi()->model()->index(riga, ColRapporto)
            .data(Qt::ForegroundRole)
            .value<QColor>();
    }
    QStringList Codici() const
    {
        QStringList r;
        for (int i = 0; i < m_schermo->elenco().size(); ++i)
            r << Cella(i, ColCodiceMoneta);
        return r;
    }
    QPoint Centro(int riga, int colonna = ColDescrizione) const
    {
        QTableView *g = m_schermo->tdbgCambi();
        return g->visualRect(g->model()->index(riga, colonna)).center();
    }

    StatoSalvato m_stato;
    std::unique_ptr<GesCambi> m_schermo;
};

TEST_F(SchermoCambi, IlSelettoreMostraIColoriDelGiornoEScegliePerInvio)
{
    GesCambi &s = Apri(RicercaValute);
    EXPECT_EQ(s.windowTitle(), "Ricerca valute generiche");
    EXPECT_EQ(s.txt(1)->text() + s.txt(2)->text() + s.txt(3)->text(), "10062024");
    EXPECT_FALSE(s.txt(1)->isEnabled());
    EXPECT_TRUE(s.spinSu()->isVisible());
    EXPECT_TRUE(s.CmdRp(1)->isVisible());
    EXPECT_FALSE(s.Label2()->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), s.tdbgCambi());
    EXPECT_EQ(Colore(2), QColor(Qt::red));
    EXPECT_EQ(Colore(3), QColor(Qt::black));
    EXPECT_EQ(Colore(0), QColor(Qt::black));

    // One day later the same rate is carried over: black, with "N".
    s.spinSu()->click();
    EXPECT_EQ(s.txt(1)->text(), "11");
    EXPECT_EQ(Cella(2, ColRapporto), "0,850000");
    EXPECT_EQ(Cella(2, ColNonDelGiorno), "N");
    EXPECT_EQ(Colore(2), QColor(Qt::black));
    s.spinGiu()->click();
    s.spinGiu()->click();
    EXPECT_EQ(s.txt(1)->text(), "09");
    EXPECT_EQ(Cella(2, ColRapporto), "0,840000");

    tabelle().CodiceCercato.clear();
    s.tdbgCambi()->setCurrentIndex(s.tdbgCambi()->model()->index(2, ColRapporto));
    QTest::keyClick(s.tdbgCambi(), Qt::Key_Return);
    EXPECT_EQ(tabelle().CodiceCercato, "GBP");
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join(" | "));
}

TEST_F(SchermoCambi, UnCampoChiamaIlSelettoreEUnDoppioClickSceglie)
{
    QString titolo;
    installaGestoreModale([&titolo](QDialog &d) {
        auto &s = dynamic_cast<GesCambi &>(d);
        titolo = s.windowTitle();
        s.show();
        QTableView *g = s.tdbgCambi();
        const QPoint punto = g->visualRect(g->model()->index(3, ColCodiceMoneta)).center();
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, punto);
        QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, punto);
        return s.result();
    });
    tabelle().CodiceCercato = QStringLiteral("XXX");
    gesCambi().ModoCambi = CambiExtraEuro;
    EXPECT_EQ(ScegliMoneta(nullptr, Giorno), "JPY");
    EXPECT_EQ(titolo, "Ricerca valute generiche");

    // Left with USCITA: nothing chosen.
    installaGestoreModale([](QDialog &d) {
        dynamic_cast<GesCambi &>(d).CmdRp(0)->click();
        return d.result();
    });
    EXPECT_EQ(ScegliMoneta(nullptr, Giorno), "");
}

TEST_F(SchermoCambi, AreaEuroAlPrimoGennaioEExtraEuroConLeDateDaControllare)
{
    GesCambi &uno = Apri(CambiAreaEuro);
    EXPECT_EQ(uno.windowTitle(), "Valute area EURO: Gestione rapporti rispetto un EURO");
    EXPECT_EQ(uno.txt(1)->text() + "/" + uno.txt(2)->text() + "/" + uno.txt(3)->text(),
              "01/01/1999");
    EXPECT_FALSE(uno.txt(3)->isEnabled());
    EXPECT_FALSE(uno.spinSu()->isVisible());
    EXPECT_EQ(Codici(), (QStringList{"EUR"}));

    GesCambi &s = Apri(CambiExtraEuro);
    EXPECT_EQ(s.windowTitle(), "Valute extraEURO: Gestione rapporti rispetto un EURO");
    EXPECT_EQ(Codici(), (QStringList{"USD", "GBP", "JPY"}));
    ASSERT_EQ(QApplication::focusWidget(), s.txt(1));
    EXPECT_TRUE(s.txt(1)->isEnabled());

    // A full field moves on, and is checked as it is left.
    QTest::keyClicks(s.txt(1), QStringLiteral("32"));
    Attendi();
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_EQ(m_messaggi.richieste()[0].testo, "GIORNO DATA INDICE ERRATO");
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, NomeProgrammaMaiuscolo() + " -ERRORE N. 1");
    EXPECT_EQ(QApplication::focusWidget(), s.txt(1));

    // A good day refills the rates.
    s.txt(1)->selectAll();
    QTest::keyClicks(s.txt(1), QStringLiteral("11"));
    Attendi();
    EXPECT_EQ(QApplication::focusWidget(), s.txt(2));
    EXPECT_EQ(s.giorno(), Giorno + 1);
    EXPECT_EQ(Cella(1, ColNonDelGiorno), "N");
    // The arrows walk the three fields round.
    QTest::keyClick(s.txt(2), Qt::Key_Up);
    QTest::keyClick(s.txt(1), Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget(), s.txt(3));

    s.txt(3)->selectAll();
    QTest::keyClicks(s.txt(3), QStringLiteral("202"));
    QTest::keyClick(s.txt(3), Qt::Key_Down);
    Attendi();
    ASSERT_EQ(m_messaggi.richieste().size(), 2);
    EXPECT_EQ(m_messaggi.richieste()[1].testo, "DATA INDICE ERRATA");
    EXPECT_EQ(m_messaggi.richieste()[1].titolo, NomeProgrammaMaiuscolo() + " -ERRORE N. 3");
    EXPECT_EQ(QApplication::focusWidget(), s.txt(3));
    s.txt(3)->selectAll();
    QTest::keyClicks(s.txt(3), QStringLiteral("2025"));
    Attendi();
    EXPECT_EQ(s.giorno(), Giorno + 1 + 365);
    EXPECT_EQ(QApplication::focusWidget(), s.tdbgCambi());
    // Enter on the year goes to the grid.
    s.txt(3)->setFocus();
    QTest::keyClick(s.txt(3), Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), s.tdbgCambi());
}

TEST_F(SchermoCambi, UnRapportoDigitatoEConfermato)
{
    GesCambi &s = Apri(CambiExtraEuro);
    QTableView *g = s.tdbgCambi();
    g->setFocus();
    g->setCurrentIndex(g->model()->index(1, ColRapporto));
    QTest::keyClicks(g, QStringLiteral("x0"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x.9"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Attendi();
    EXPECT_EQ(Cella(1, ColRapporto), "0,9");
    EXPECT_EQ(Cella(1, ColVariazione), "5,882");
    s.CmdRp(1)->click();
    EXPECT_EQ(Cambi("GBP"), (QStringList{"45423=0.84", "45453=0.9"}));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join(" | "));
    // Enter outside the picker goes down a row.
    QTest::keyClick(g, Qt::Key_Return);
    EXPECT_EQ(g->currentIndex().row(), 2);
    EXPECT_EQ(s.result(), 0);

    // A field of the caller in error: nothing to change, nothing to confirm.
    sessione().CodiceStop = 17;
    GesCambi &bloccato = Apri(RicercaValute);
    EXPECT_FALSE(bloccato.CmdRp(1)->isVisible());
    EXPECT_FALSE(bloccato.tdbgCambi()->model()->index(2, ColRapporto).flags()
                 & Qt::ItemIsEditable);
}

TEST_F(SchermoCambi, UnaRigaTrascinataRestaAlSuoPostoAllaRiapertura)
{
    GesCambi &s = Apri(RicercaValute);
    QWidget *vista = s.tdbgCambi()->viewport();
    QTest::mousePress(vista, Qt::RightButton, {}, Centro(3));
    EXPECT_TRUE(s.Label2()->isVisible());
    EXPECT_EQ(s.Label2()->text(), "JPY  YEN GIAPPONESE");
    QTest::mouseRelease(vista, Qt::RightButton, {}, Centro(1));
    EXPECT_FALSE(s.Label2()->isVisible());
    EXPECT_EQ(Codici(), (QStringList{"EUR", "JPY", "USD", "GBP"}));
    EXPECT_EQ(Cella(1, ColRapporto), "168,500000");

    Apri(RicercaValute);
    EXPECT_EQ(Codici(), (QStringList{"EUR", "JPY", "USD", "GBP"}));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join(" | "));
}

TEST_F(SchermoCambi, LeMoneteAggiunteNellEditorEntranoNellElenco)
{
    installaGestoreModale([](QDialog &d) {
        auto &editore = dynamic_cast<AggNazioni &>(d);
        editore.show();
        QAbstractItemModel *m = editore.griglia()->model();
        const int nuova = m->rowCount() - 1;
        const QStringList valori{"SEK", "CORONA SVEDESE", "SEK", "009", "N", "5"};
        for (int c = 0; c < valori.size(); ++c)
            m->setData(m->index(nuova, c), valori[c]);
        editore.tabella()->Command1()->click();
        QApplication::processEvents();
        return d.result();
    });
    GesCambi &s = Apri(RicercaValute);
    s.CmdRp(2)->click();
    EXPECT_EQ(Codici(), (QStringList{"EUR", "USD", "GBP", "JPY", "SEK"}));
    EXPECT_EQ(Cella(4, ColRapporto), "0");
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join(" | "));

    QString aperto;
    installaApriUrl([&aperto](const QUrl &u) {
        aperto = u.toLocalFile();
        return true;
    });
    s.cmdExcel()->click();
    installaApriUrl({});
    EXPECT_EQ(aperto, FileEsportazione(QStringLiteral("GesCambi")));
    const QString testo = QString::fromUtf8(m_cartella.leggi(QStringLiteral("EXPGesCambi.csv")));
    EXPECT_TRUE(testo.contains("COD.;DESCRIZIONE;RAPPORTO;N;VAR. %;RAPP. ORIGIN.;"))
        << qPrintable(testo);
    EXPECT_TRUE(testo.contains("GBP;STERLINA INGLESE;\"0,850000\";;;\"0,850000\";")
                || testo.contains("GBP;STERLINA INGLESE;0,850000;;;0,850000;"))
        << qPrintable(testo);
}

} // namespace
} // namespace sorvane::prova
