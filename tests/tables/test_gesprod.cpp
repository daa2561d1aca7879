// GesProd through its widgets on real files: the list's search, buttons,
// headings and colours; the detail face's checks, save and shares; the
// category editor; a new product's defaults and its pop-ups; F4 from the
// entry screen's product field.

#include "support/Finestre.h"
#include "../distinte/ProvaSchermi.h"
#include "ProvaProdotti.h"

#include "distinte/InsDist.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Valore.h"
#include "frame/ui/Modale.h"
#include "lookup/Datario.h"
#include "store/Schema.h"
#include "tables/GesCambi.h"
#include "tables/GesCategorie.h"
#include "tables/GesProd.h"
#include "tables/ModelloProdotti.h"
#include "tables/ModelloQuote.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <memory>

namespace sorvane::prova {
namespace {

class SchermoProdotti : public ProvaProdotti
{
protected:
    void TearDown() override
    {
        m_gp.reset();
        ProvaProdotti::TearDown();
    }
    GesProd &Apri(const QString &codice = QString())
    {
        tabelle().CodiceCercato = codice;
        tabelle().DescrizioneCercata.clear();
        m_gp = std::make_unique<GesProd>();
        m_gp->show();
        Attendi();
        return *m_gp;
    }
    static void Scrivi(QLineEdit *campo, const QString &testo)
    {
        campo->setFocus();
        campo->selectAll();
        QTest::keyClicks(campo, testo);
        Attendi();
    }
    using ProvaProdotti::Scrivi;
    void Testata(int colonna, Qt::MouseButton tasto)
    {
        QHeaderView *h = m_gp->TDBGrid2()->horizontalHeader();
        QTest::mousePress(h->viewport(), tasto, {},
                          QPoint(h->sectionViewportPosition(colonna) + 4, 4));
        Attendi();
    }
    // Tab from the field in focus reaches every control of the face in
    // view, each with a name for the screen reader.
    void TabSulleFacce(QWidget *faccia)
    {
        QSet<QWidget *> visti;
        for (QWidget *w = QApplication::focusWidget(); w && !visti.contains(w);
             w = QApplication::focusWidget()) {
            visti.insert(w);
            QTest::keyClick(w, Qt::Key_Tab);
            Attendi();
        }
        for (QWidget *w : faccia->findChildren<QWidget *>()) {
            const bool controllo = qobject_cast<QLineEdit *>(w) || qobject_cast<QComboBox *>(w)
                                   || qobject_cast<QAbstractButton *>(w)
                                   || qobject_cast<QAbstractItemView *>(w);
            // The parts of a grid or a combo are the control's own.
            const bool parte = qobject_cast<QComboBox *>(w->parent())
                               || qobject_cast<QAbstractItemView *>(w->parent())
                               || qobject_cast<QAbstractItemView *>(w->parentWidget()
                                                                        ? w->parentWidget()->parent()
                                                                        : nullptr);
            if (!controllo || !w->isVisible() || parte)
                continue;
            EXPECT_TRUE(visti.contains(w)) << w->metaObject()->className() << ' '
                                           << qPrintable(w->objectName());
            const bool nome = !w->accessibleName().isEmpty() || qobject_cast<QAbstractButton *>(w);
            EXPECT_TRUE(nome || Etichettato(w)) << qPrintable(w->objectName());
        }
    }
    static bool Etichettato(QWidget *w)
    {
        for (QLabel *l : w->window()->findChildren<QLabel *>())
            if (l->buddy() == w)
                return true;
        return false;
    }
    std::unique_ptr<GesProd> m_gp;
};

TEST_F(SchermoProdotti, OgniControlloSulGiroDelTab)
{
    GesProd &g = Apri();
    QApplication::setActiveWindow(&g);
    g.Check1()->setChecked(true);
    Scrivi(g.CodTab(), "BTP");
    TabSulleFacce(g.Picture1());
    Scrivi(g.CodTab(), "BTP01");
    g.Premi_cmdRt(1);
    Attendi();
    ASSERT_TRUE(g.Picture2()->isVisible());
    TabSulleFacce(g.Picture2());
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
}

TEST_F(SchermoProdotti, ElencoRicercaPulsantiETestate)
{
    Scrivi("UPDATE TabProdotti SET NoIndici = 0 WHERE Codice = 'BTP02'");
    GesProd &g = Apri();
    EXPECT_EQ(QApplication::focusWidget(), g.CodTab());
    EXPECT_EQ(g.elenco()->rowCount(), 2);
    EXPECT_EQ(g.cmdRt(1)->text(), "&X SELEZIONA");
    // Right button: descending; the "% Tot." headings do nothing.
    Testata(ProdCodice, Qt::RightButton);
    EXPECT_EQ(g.elenco()->codice(0), "BTP02");
    Testata(ProdYPercTot, Qt::LeftButton);
    Testata(ProdZPercTot, Qt::LeftButton);
    EXPECT_EQ(g.elenco()->codice(0), "BTP02");
    EXPECT_EQ(g.TDBGrid2()->horizontalHeader()->sortIndicatorSection(), int(ProdCodice));
    const QModelIndex tot = g.elenco()->index(0, ProdYPercTot);
    EXPECT_EQ(tot.data().toString(), "0,600");
    EXPECT_EQ(tot.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(0xFF, 0xFF, 0xC0));
    EXPECT_EQ(g.elenco()->index(0, ProdIndici).data().toString(), "S");
    EXPECT_EQ(g.elenco()->index(0, ProdTipo).data().toString(), "N");

    Scrivi(g.CodTab(), "BTP01");
    EXPECT_TRUE(g.cmdRt(0)->isVisible());
    EXPECT_FALSE(g.cmdRt(1)->isVisible()); // GESTISCI waits for "Gestione"
    g.Check1()->setChecked(true);
    EXPECT_EQ(g.cmdRt(1)->text(), "&GESTISCI");
    Scrivi(g.CodTab(), "ZZ'");
    EXPECT_EQ(g.cmdRt(1)->text(), "&INSERISCI");
    Scrivi(g.DescTab(), "L'ITALIA");
    EXPECT_EQ(g.elenco()->codice(0), "BTP01");
    g.Premi_cmdRt(0);
    EXPECT_EQ(tabelle().CodiceCercato, "BTP01");
    EXPECT_EQ(tabelle().DescrizioneCercata, "BTP L'ITALIA 2030");
}

TEST_F(SchermoProdotti, SchedaControlliQuoteESalvataggio)
{
    GesProd &g = Apri();
    g.Check1()->setChecked(true);
    Scrivi(g.CodTab(), "BTP01");
    g.Premi_cmdRt(1);
    Attendi();
    ASSERT_TRUE(g.Picture2()->isVisible());
    EXPECT_TRUE(g.Cod2()->isReadOnly());
    EXPECT_EQ(g.cmbCateg()->currentText(), "OBB");
    EXPECT_EQ(g.cmbGruppi()->currentText(), "A - AZIONARI");
    EXPECT_EQ(g.lbFee(0)->text(), "0,600");

    Scrivi(g.txt(CampoMonetaProdotto), "ZZZ");
    Scrivi(g.txt(CampoISIN), "IT");
    EXPECT_EQ(m_messaggi.testi(), QStringList{"VALUTA INESISTENTE"});
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, NomeProgrammaMaiuscolo() + " -ERRORE N. 1");
    Scrivi(g.txt(CampoMonetaProdotto), "USD");
    m_messaggi.pulisci();
    for (int i = 0; i < 3; ++i)
        Scrivi(g.txt(CampoGiornoEmissione + i), QStringList{"00", "00", "0000"}[i]);
    Scrivi(g.txt(CampoGiornoAcquisto), "30");
    Scrivi(g.txt(CampoGiornoAcquisto + 1), "02");
    Scrivi(g.txt(CampoGiornoAcquisto + 2), "2024"); // full: the focus moves on
    EXPECT_EQ(m_messaggi.testi(), QStringList{"DATA ACQUISTO ERRATA"});
    EXPECT_EQ(QApplication::focusWidget(), g.txt(CampoGiornoAcquisto));
    g.txt(CampoGiornoAcquisto)->clear();
    g.txt(CampoGiornoAcquisto + 1)->clear();
    g.txt(CampoGiornoAcquisto + 2)->clear();

    // A share of an unknown category is refused; a product of class 1 with
    // shares asks, and Cancel keeps it unsaved.
    ModelloQuote *q = g.quote();
    m_messaggi.pulisci();
    EXPECT_FALSE(q->setData(q->index(0, ModelloQuote::ColCategoria), "NOPE"));
    EXPECT_TRUE(q->setData(q->index(0, ModelloQuote::ColCategoria), "obb"));
    EXPECT_TRUE(q->setData(q->index(0, ModelloQuote::ColPercentuale), "25"));
    EXPECT_EQ(q->index(0, ModelloQuote::ColProdotto).data().toString(), "BTP01");
    EXPECT_EQ(g.lbTot()->text(), "25,00");
    m_messaggi.rispondi(Risposta::Annulla);
    g.Premi_CmdT(0);
    EXPECT_EQ(m_messaggi.testi(), (QStringList{"CATEGORIA INESISTENTE",
                                               "PERCENTUALE RIPARTIZIONE NON = 0%"}));
    EXPECT_TRUE(g.Picture2()->isVisible());

    // The period both ways, then a save that goes back to the list.
    m_messaggi.pulisci();
    g.txt(CampoPeriodo)->setText("3");
    g.Combo3()->setCurrentIndex(0);
    g.Premi_CmdT(0);
    g.txt(CampoPeriodo)->setText("0");
    g.Combo3()->setCurrentIndex(2);
    g.Premi_CmdT(0);
    EXPECT_EQ(m_messaggi.testi(),
              (QStringList{"Indicare il tipo periodo", "Indicare quanti mesi"}));
    g.txt(CampoPeriodo)->setText("6");
    m_messaggi.rispondi(Risposta::Ok);
    g.Premi_CmdT(0);
    Attendi();
    EXPECT_TRUE(g.Picture1()->isVisible());
    EXPECT_EQ(Righe("SELECT Moneta, CASE WHEN EmissioneDat IS NULL THEN 1 ELSE 0 END, Periodo, "
                    "TipoPeriodo FROM TabProdotti WHERE Codice = 'BTP01'"),
              QStringList{"USD|1|6|2"});
    EXPECT_EQ(Righe("SELECT MpCategoria, MpPercentuale FROM TabMultiPartner"),
              QStringList{"OBB|25"});
}

TEST_F(SchermoProdotti, UnaSolaVoltaIlSalvataggioELaRisposta)
{
    tabelle().CodiceCercato.clear();
    GesProd g(nullptr, 3); // "Gestione" and one shot
    g.show();
    Attendi();
    EXPECT_TRUE(g.Check1()->isChecked());
    Scrivi(g.CodTab(), "BTP01");
    g.Premi_cmdRt(1);
    Scrivi(g.Des2(), "BTP NUOVO");
    g.Premi_CmdT(0);
    EXPECT_EQ(g.result(), QDialog::Accepted);
    EXPECT_EQ(tabelle().CodiceCercato, "BTP01");
    EXPECT_EQ(tabelle().DescrizioneCercata, "BTP NUOVO");
}

TEST_F(SchermoProdotti, SenzaTabellaDeiBuoniCattivi)
{
    Scrivi("DROP TABLE " + NomeSchemaSql(SchemaDi(Db(), Archivio::Dati)) + ".TabBuoCat");
    QString pannello;
    installaGestoreModale([&](QDialog &d) {
        pannello = QString::fromLatin1(d.metaObject()->className());
        return 0;
    });
    Apri();
    installaGestoreModale({});
    EXPECT_EQ(m_messaggi.testi(), QStringList{"ATTENZIONE: non esiste la tabella dei "
                                              "Buoni-Cattivi\nContattare ZERLO sas"});
    EXPECT_EQ(pannello, "sorvane::InfZerlo");
}

TEST_F(SchermoProdotti, EditorCategoriaRiempieIlCombo)
{
    GesProd &g = Apri();
    g.Check1()->setChecked(true);
    Scrivi(g.CodTab(), "BTP01");
    g.Premi_cmdRt(1);
    installaGestoreModale([](QDialog &d) {
        auto &e = dynamic_cast<GesCategorie &>(d);
        EXPECT_EQ(e.Descrizione()->text(), "OBBLIGAZIONI");
        e.Codice()->setText("AZI");
        e.Descrizione()->setText("AZIONARI D'ITALIA");
        e.Tipo()->setCurrentIndex(2);
        e.BuoniCattivi()->setCurrentIndex(5);
        e.Conferma();
        return d.result();
    });
    g.ApriCategorie();
    installaGestoreModale({});
    EXPECT_EQ(g.cmbCateg()->currentText(), "AZI");
    EXPECT_EQ(g.cmbBuoniCattivi()->currentIndex(), 5);
    EXPECT_EQ(Righe("SELECT Descrizione, Tipo, BuoniCattivi FROM TabCategorie "
                    "WHERE Codice = 'AZI'"),
              QStringList{"AZIONARI D'ITALIA|C|5"});
}

TEST_F(SchermoProdotti, NuovoCodiceConLaQuotaDiBaseEIPopup)
{
    impostazioni().IniLocale =
        m_cartella.scrivi(QStringLiteral("SORVANE.ini"), "[PARAMETRI]\nPercCommissioni=12,5\n");
    Scrivi("UPDATE TabNazioni SET GesCmb = 1"); // the rates' screen lists them
    QStringList aperture;
    installaGestoreModale([&](QDialog &d) {
        if (auto *cambi = dynamic_cast<GesCambi *>(&d)) {
            aperture << QStringLiteral("cambi %1 %2 %3").arg(cambi->modo()).arg(cambi->giorno())
                            .arg(sessione().CodiceStop);
            QTableView *v = cambi->tdbgCambi();
            v->setCurrentIndex(v->model()->match(v->model()->index(0, ColCodiceMoneta),
                                                 Qt::DisplayRole, "USD").value(0));
            QTest::keyClick(v, Qt::Key_Return);
            return d.result();
        }
        aperture << QStringLiteral("datario %1").arg(datario().PeriodoScelto);
        datario().DataComune = GiornoDaData(QDate(2030, 12, 31));
        return int(QDialog::Accepted);
    });
    GesProd &g = Apri();
    g.Check1()->setChecked(true);
    Scrivi(g.CodTab(), "NUOVO");
    g.Premi_cmdRt(1);
    Attendi();
    EXPECT_EQ(g.txt(CampoPerc2)->text() + "|" + g.txt(CampoPerc4)->text(), "12,50|12,50");
    // The currency from the rates on the working day, unless it is locked.
    sessione().CodiceStop = 7;
    QTest::mouseDClick(g.txt(CampoMonetaProdotto), Qt::LeftButton);
    g.txt(CampoMonetaProdotto)->setReadOnly(true);
    QTest::mouseDClick(g.txt(CampoMonetaProdotto), Qt::LeftButton);
    g.txt(CampoMonetaProdotto)->setReadOnly(false);
    g.cmdData(2)->click();
    installaGestoreModale({});
    EXPECT_EQ(aperture, (QStringList{QStringLiteral("cambi 3 %1 0").arg(Oggi), "datario -99"}));
    EXPECT_EQ(g.txt(CampoMonetaProdotto)->text(), "USD");
    EXPECT_EQ(g.txt(CampoGiornoScadenza)->text() + g.txt(CampoGiornoScadenza + 1)->text()
                  + g.txt(CampoGiornoScadenza + 2)->text(),
              "31122030");
    g.cmbCateg()->setCurrentIndex(g.cmbCateg()->findText("OBB"));
    g.Premi_CmdT(0);
    EXPECT_EQ(Righe("SELECT Moneta, Perc2, Perc4 FROM TabProdotti WHERE Codice = 'NUOVO'"),
              QStringList{"USD|12.5|12.5"});
    // A product on file shows its own shares.
    Scrivi(g.CodTab(), "BTP01");
    g.Premi_cmdRt(1);
    EXPECT_EQ(g.txt(CampoPerc2)->text() + "|" + g.txt(CampoPerc4)->text(), "40,00|");
}

using ProdottoDelCampo = ProvaSchermo<InsDist>;

TEST_F(ProdottoDelCampo, F4SulCampoDelProdottoPortaIlCodiceScelto)
{
    Scrivi("INSERT INTO TabCategorie (Codice, Tipo, BuoniCattivi) VALUES ('OBB', 'S', '1')");
    for (const char *codice : {"BTP01", "BTP02"})
        Scrivi("INSERT INTO TabProdotti (Codice, Descrizione, Categoria, NoIndici) "
               "VALUES (?, 'BTP', 'OBB', 0)",
               {QString::fromLatin1(codice)});
    QString cercato;
    installaGestoreModale([&](QDialog &d) {
        auto &g = dynamic_cast<GesProd &>(d);
        cercato = g.CodTab()->text();
        g.TDBGrid2()->setCurrentIndex(g.elenco()->index(1, 0));
        g.Premi_cmdRt(0);
        return d.result();
    });
    InsDist &s = Apri();
    Fuoco(s.txt(CampoPrimoProdotto + 1));
    QTest::keyClicks(s.txt(CampoPrimoProdotto + 1), "BTP");
    Tasto(Qt::Key_F4);
    installaGestoreModale({});
    EXPECT_EQ(cercato, "BTP");
    EXPECT_EQ(s.txt(CampoPrimoProdotto + 1)->text(), "BTP02");
    EXPECT_EQ(QApplication::focusWidget(), s.txt(CampoPrimoProdotto + 1));
}

} // namespace
} // namespace sorvane::prova
