// GesTabel over real files: the long list's question, the two searches,
// a row added, changed and deleted on the detail face.

#include "support/Finestre.h"
#include "../distinte/ProvaDistinte.h"

#include "distinte/InsDist.h"
#include "frame/ui/Modale.h"
#include "tables/GesTabel.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace sorvane::prova {
namespace {

class ProvaGesTabel : public ProvaDistinte
{
protected:
    void SetUp() override
    {
        ProvaDistinte::SetUp();
        m_messaggi.gestore = {}; // the questions here take the answers given
    }
    void TearDown() override
    {
        m_lookup.reset();
        ProvaDistinte::TearDown();
    }
    GesTabel &Apri(const QString &tabella, const QString &codice = QString())
    {
        ChiudiTabella();
        tabelle().NomeTabella = tabella;
        tabelle().CodiceCercato = codice;
        tabelle().DescrizioneCercata.clear();
        m_lookup = std::make_unique<GesTabel>();
        m_lookup->show();
        Attendi();
        return *m_lookup;
    }
    static void Scrivi(QLineEdit *campo, const QString &testo)
    {
        campo->setFocus();
        campo->selectAll();
        QTest::keyClicks(campo, testo);
        Attendi();
    }
    QStringList Lista() const
    {
        QStringList righe;
        for (int i = 0; i < m_lookup->Lista()->count(); ++i)
            righe.append(m_lookup->Lista()->item(i)->text());
        return righe;
    }
    std::unique_ptr<GesTabel> m_lookup;
};

TEST_F(ProvaGesTabel, ElencoLungoChiestoUnaVoltaPerApertura)
{
    Transazione t;
    for (int i = 1; i <= 350; ++i)
        ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO TabProvincie VALUES (?, ?)"),
                             {QStringLiteral("%1").arg(i, 3, 10, QLatin1Char('0')),
                              QStringLiteral("PROVINCIA %1").arg(i)});
    ASSERT_TRUE(t.conferma());
    GesTabel &g = Apri(QStringLiteral("TabProvincie"));
    EXPECT_EQ(g.windowTitle(), QStringLiteral("GESTIONE Provincie"));
    EXPECT_EQ(QApplication::focusWidget(), g.CodTab());
    m_messaggi.rispondi(Risposta::No);
    Scrivi(g.CodTab(), QStringLiteral(" "));
    EXPECT_EQ(m_messaggi.testi(), QStringList{"OLTRE 300 ELEMENTI: ESTRAGGO TUTTO?"});
    EXPECT_EQ(g.Lista()->count(), 300);
    EXPECT_EQ(Lista().first(), QStringLiteral("001 - ") + QStringLiteral("PROVINCIA 1").leftJustified(40));
    EXPECT_EQ(g.cmdRt(1)->text(), Seleziona);
    EXPECT_FALSE(g.cmdRt(0)->isVisible());

    // Leaving the field searches again; nobody is asked again.
    g.DescTab()->setFocus();
    Attendi();
    EXPECT_EQ(m_messaggi.testi().size(), 1);
    EXPECT_EQ(g.Lista()->count(), 300);
    Scrivi(g.CodTab(), QStringLiteral("1"));
    EXPECT_EQ(g.Lista()->count(), 100);
    Scrivi(g.DescTab(), QStringLiteral("provincia 35"));
    EXPECT_EQ(Lista(), (QStringList{QStringLiteral("PROVINCIA 35") + QString(28, ' ') + " - 035",
                                    QStringLiteral("PROVINCIA 350") + QString(27, ' ') + " - 350"}));
    EXPECT_EQ(m_messaggi.testi().size(), 1);
}

TEST_F(ProvaGesTabel, RicercaSceltaERisposta)
{
    ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO DistCausali VALUES ('D''A', 'DELL''AGENTE', '+')"));
    GesTabel &g = Apri(QStringLiteral("DistCausali"));
    Scrivi(g.DescTab(), QStringLiteral("DELL'A"));
    ASSERT_EQ(g.Lista()->count(), 1);
    EXPECT_TRUE(g.cmdRt(0)->isVisible());
    EXPECT_EQ(g.cmdRt(1)->text(), Gestisci);

    // A double click on a line of a longer list puts its code in the search.
    Scrivi(g.CodTab(), QString());
    g.CodTab()->clear();
    Scrivi(g.CodTab(), QStringLiteral(" "));
    ASSERT_EQ(g.Lista()->count(), 3);
    g.Lista()->setFocus();
    Attendi();
    EXPECT_EQ(g.cmdRt(1)->text(), Ricerca);
    g.Lista()->setCurrentRow(1);
    QTest::keyClick(g.Lista(), Qt::Key_Return);
    Attendi();
    EXPECT_EQ(g.CodTab()->text(), QStringLiteral("ABC"));
    EXPECT_EQ(QApplication::focusWidget(), g.CodTab());
    ASSERT_EQ(g.Lista()->count(), 1);
    g.cmdRt(0)->click();
    EXPECT_EQ(g.result(), int(QDialog::Accepted));
    EXPECT_EQ(tabelle().CodiceCercato, QStringLiteral("ABC"));
    EXPECT_EQ(tabelle().DescrizioneCercata, QStringLiteral("RISCATTO"));
}

TEST_F(ProvaGesTabel, InserisceCambiaEliminaDalDettaglio)
{
    GesTabel &g = Apri(QStringLiteral("DistCausali"));
    Scrivi(g.CodTab(), QStringLiteral("NEW"));
    EXPECT_EQ(g.Lista()->count(), 0);
    EXPECT_EQ(g.cmdRt(1)->text(), Inserisci);
    g.cmdRt(1)->click();
    Attendi();
    ASSERT_TRUE(g.Picture2()->isVisible());
    EXPECT_EQ(g.Cod2()->text(), QStringLiteral("NEW"));
    Scrivi(g.Des2(), QStringLiteral("NUOVA CAUSALE"));
    g.CmdT(0)->click();
    Attendi();
    EXPECT_TRUE(g.Picture1()->isVisible());
    EXPECT_EQ(Righe(QStringLiteral("SELECT Codice, Descrizione FROM DistCausali WHERE Codice = 'NEW'")),
              QStringList{"NEW|NUOVA CAUSALE"});
    ASSERT_EQ(g.Lista()->count(), 1);

    g.cmdRt(1)->click(); // "&GESTISCI"
    Attendi();
    EXPECT_EQ(g.Des2()->text(), QStringLiteral("NUOVA CAUSALE"));
    Scrivi(g.Des2(), QStringLiteral("CAMBIATA"));
    g.CmdT(0)->click();
    Attendi();
    EXPECT_EQ(Righe(QStringLiteral("SELECT Descrizione FROM DistCausali WHERE Codice = 'NEW'")),
              QStringList{"CAMBIATA"});

    g.cmdRt(1)->click();
    Attendi();
    m_messaggi.rispondi(Risposta::No);
    g.CmdT(2)->click();
    Attendi();
    EXPECT_EQ(m_messaggi.testi(), QStringList{"Elimino il codice NEW ?"});
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM DistCausali")), QStringList{"3"});
    g.cmdRt(1)->click();
    Attendi();
    m_messaggi.rispondi(Risposta::Si);
    g.CmdT(2)->click();
    Attendi();
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM DistCausali")), QStringList{"2"});
    EXPECT_EQ(g.Lista()->count(), 0);
    g.cmdRt(2)->click();
    EXPECT_TRUE(tabelle().CodiceCercato.isEmpty());
}

TEST_F(ProvaGesTabel, F4SullaCausaleDellInserimentoRiportaIlCodiceScelto)
{
    InsDist s;
    s.resize(1220, 720);
    s.show();
    QApplication::setActiveWindow(&s);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&s));
    Attendi();
    QStringList aperti;
    installaGestoreModale([&aperti](QDialog &d) {
        auto &g = dynamic_cast<GesTabel &>(d);
        aperti.append(g.windowTitle() + QLatin1Char('|') + g.CodTab()->text());
        EXPECT_EQ(g.Lista()->count(), 1);
        g.cmdRt(0)->click();
        return d.result();
    });
    s.txt(CampoCodiceCliente)->setFocus();
    QTest::keyClicks(s.txt(CampoCodiceCliente), QStringLiteral("12"));
    QTest::keyClick(s.txt(CampoCodiceCliente), Qt::Key_Down);
    Attendi();
    QLineEdit *causale = s.txt(CampoCausale);
    ASSERT_EQ(QApplication::focusWidget(), causale);
    QTest::keyClicks(causale, QStringLiteral("00"));
    QTest::keyClick(causale, Qt::Key_F4);
    Attendi();
    EXPECT_EQ(aperti, QStringList{"GESTIONE tCausali|00"});
    EXPECT_EQ(causale->text(), QStringLiteral("001"));
    EXPECT_EQ(QApplication::focusWidget(), causale);

    // A disabled field opens nothing.
    causale->setEnabled(false);
    EXPECT_FALSE(CercaCausale(causale));
    installaGestoreModale({});
    EXPECT_EQ(aperti.size(), 1);
}

} // namespace
} // namespace sorvane::prova
