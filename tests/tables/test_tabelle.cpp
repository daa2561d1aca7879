// The three small screens of the menu over real files: rows typed, changed
// and deleted through the grid, refused rows, the table that does not open.

#include "support/Finestre.h"
#include "../distinte/ProvaDistinte.h"

#include "distinte/Gestione.h"
#include "tables/ModelloTabella.h"
#include "tables/SchermoTabella.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>
#include <QTest>

#include <memory>

namespace sorvane::prova {
namespace {

class ProvaTabelle : public ProvaDistinte
{
protected:
    void TearDown() override
    {
        m_schermo.reset();
        ProvaDistinte::TearDown();
    }

    template <class S>
    S &Apri()
    {
        auto *s = new S;
        m_schermo.reset(s);
        s->resize(640, 360);
        MostraAttiva(s);
        return *s;
    }
    QTableView *Griglia() const { return m_schermo->TDBGrid2(); }
    ModelloTabella *Dati() const { return m_schermo->Dati(); }
    QString Cella(int riga, int colonna) const
    {
        return Dati()->index(riga, colonna).data().toString();
    }

    // Types into a cell as the user does: the editor opens on the cell, the
    // keys go to it, Enter gives its text to the row.
    void Digita(int riga, int colonna, const QString &testo)
    {
        const QModelIndex cella = Dati()->index(riga, colonna);
        Griglia()->setFocus();
        Griglia()->setCurrentIndex(cella);
        Griglia()->edit(cella);
        Attendi();
        QWidget *editor = QApplication::focusWidget();
        ASSERT_NE(editor, Griglia());
        ASSERT_FALSE(editor->accessibleName().isEmpty());
        if (auto *combo = qobject_cast<QComboBox *>(editor))
            editor = combo->lineEdit();
        static_cast<QLineEdit *>(editor)->selectAll();
        QTest::keyClicks(editor, testo);
        QTest::keyClick(editor, Qt::Key_Return);
        Attendi();
    }
    // The user moves to another row: the row left is written.
    void CambiaRiga(int riga)
    {
        Griglia()->setFocus();
        Griglia()->setCurrentIndex(Dati()->index(riga, 0));
        Attendi();
    }
    static QStringList Causali()
    {
        return Righe(QStringLiteral(
            "SELECT Codice || '|' || Descrizione || '|' || COALESCE(Segno, 'null') "
            "FROM DistCausali ORDER BY Codice"));
    }

    std::unique_ptr<SchermoTabella> m_schermo;
};

TEST_F(ProvaTabelle, CausaliAggiunteCambiateEliminateDallaGriglia)
{
    riferimento::GesCauDs &s = Apri<riferimento::GesCauDs>();
    EXPECT_EQ(s.windowTitle(), QStringLiteral("GESTIONE CAUSALI PER LE DISTINTE"));
    EXPECT_EQ(s.Command1()->text(), QStringLiteral("&USCITA"));
    EXPECT_TRUE(Griglia()->tabKeyNavigation());
    ASSERT_EQ(Dati()->rigaNuova(), 2);
    EXPECT_EQ(Cella(0, 0), QStringLiteral("001"));

    // A new row: the code is cut at three characters, the sign left blank
    // shows as "+".
    Digita(2, 0, QStringLiteral("XYZW"));
    Digita(2, 1, QStringLiteral("GIROCONTO"));
    CambiaRiga(0);
    EXPECT_EQ(Dati()->rigaInSospeso(), -1);
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    EXPECT_EQ(Causali(), (QStringList{"001|VERSAMENTO|+", "ABC|RISCATTO|-",
                                      "XYZ|GIROCONTO|null"}));
    EXPECT_EQ(Cella(2, 2), QStringLiteral("+"));

    // A change stays in its place until the list is read again.
    Digita(0, 0, QStringLiteral("ZZ1"));
    Digita(0, 2, QStringLiteral("-"));
    CambiaRiga(1);
    EXPECT_EQ(Cella(0, 0), QStringLiteral("ZZ1"));
    EXPECT_EQ(Causali(), (QStringList{"ABC|RISCATTO|-", "XYZ|GIROCONTO|null",
                                      "ZZ1|VERSAMENTO|-"}));

    // A row chosen on its selector goes with Delete, and the list sorts.
    Griglia()->selectRow(1);
    QTest::keyClick(Griglia(), Qt::Key_Delete);
    Attendi();
    EXPECT_EQ(Causali(), (QStringList{"XYZ|GIROCONTO|null", "ZZ1|VERSAMENTO|-"}));
    EXPECT_EQ(Cella(0, 0), QStringLiteral("XYZ"));
    EXPECT_TRUE(m_messaggi.testi().isEmpty());
}

TEST_F(ProvaTabelle, CodiceDoppioRifiutatoInChiaroERigaTenuta)
{
    Apri<riferimento::GesCauDs>();
    Digita(2, 0, QStringLiteral("abc"));
    Digita(2, 1, QStringLiteral("DOPPIONE"));
    CambiaRiga(0);
    ASSERT_EQ(m_messaggi.testi().size(), 1);
    const QString testo = m_messaggi.testi().first();
    EXPECT_TRUE(testo.startsWith(QStringLiteral(
        "LA RIGA NON E' STATA REGISTRATA: COD. \"abc\" ESISTE GIA'.")))
        << qPrintable(testo);
    // The engine's own words follow, with its code.
    EXPECT_TRUE(testo.contains(QRegularExpression(QStringLiteral("codice (SQLite|PostgreSQL) "))))
        << qPrintable(testo);
    // The row typed is still there, the cursor on it; the others intact.
    EXPECT_EQ(Dati()->rigaInSospeso(), 2);
    EXPECT_EQ(Griglia()->currentIndex().row(), 2);
    EXPECT_EQ(Cella(2, 1), QStringLiteral("DOPPIONE"));
    EXPECT_EQ(Causali(), (QStringList{"001|VERSAMENTO|+", "ABC|RISCATTO|-"}));

    // Corrected, it goes; Esc would have dropped it.
    Digita(2, 0, QStringLiteral("ABD"));
    CambiaRiga(0);
    EXPECT_EQ(Causali().size(), 3);
    Digita(3, 1, QStringLiteral("SCARTO"));
    QTest::keyClick(Griglia(), Qt::Key_Escape);
    Attendi();
    EXPECT_EQ(Dati()->rigaInSospeso(), -1);
    EXPECT_EQ(Dati()->rigaNuova(), 3);
}

TEST_F(ProvaTabelle, CausaleEliminataToglieIMovimentiDallaGestioneFinoAlRitorno)
{
    Semina(Riga(5, QStringLiteral("0"), Oggi, 12, QStringLiteral("ALFA SIM"), {"P1"}));
    const CondizioneDistinte tutte;
    const QString lista = QueryGestione(tutte, OrdineDistinte());
    ASSERT_EQ(Righe(lista).size(), 1);

    Apri<riferimento::GesCauDs>();
    Griglia()->selectRow(0);
    QTest::keyClick(Griglia(), Qt::Key_Delete);
    Attendi();
    EXPECT_TRUE(Righe(lista).isEmpty());
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM Distinte")), QStringList{"1"});

    Digita(Dati()->rigaNuova(), 0, QStringLiteral("001"));
    CambiaRiga(0);
    EXPECT_EQ(Righe(lista).size(), 1);
}

TEST_F(ProvaTabelle, DitteEBancheTabEsceDallaGriglia)
{
    {
        riferimento::GesSoc &s = Apri<riferimento::GesSoc>();
        EXPECT_FALSE(Griglia()->tabKeyNavigation());
        EXPECT_EQ(Dati()->headerData(3, Qt::Horizontal).toString(), QStringLiteral("Localita'"));
        Digita(0, 0, QStringLiteral("GAMMA SGR"));
        Digita(0, 1, QStringLiteral("IT60X0542811101000000123456"));
        QTest::keyClick(Griglia(), Qt::Key_Tab);
        Attendi();
        EXPECT_EQ(QApplication::focusWidget(), s.Command1());
        EXPECT_EQ(Righe(QStringLiteral("SELECT SocNome, SocIndirizzo FROM Societa")),
                  QStringList{"GAMMA SGR|IT60X0542811101000000123456"});
    }
    riferimento::GesBanca &b = Apri<riferimento::GesBanca>();
    EXPECT_EQ(b.windowTitle(), QStringLiteral("GESTIONE BANCHE PER LE DISTINTE"));
    Digita(0, 0, QString(31, QLatin1Char('B')));
    QTest::keyClick(b.Command1(), Qt::Key_F2);
    Attendi();
    EXPECT_FALSE(b.isVisible());
    EXPECT_EQ(Righe(QStringLiteral("SELECT CodBanca FROM DistBanche ORDER BY CodBanca")),
              QStringList{QString(30, QLatin1Char('B'))});
}

TEST_F(ProvaTabelle, TabellaCheNonSiApreDettaESchermoChiuso)
{
    Scrivi("DROP TABLE " + NomeSchemaSql(SchemaDi(Db(), Archivio::Dati)) + ".DistBanche");
    riferimento::GesBanca *s = new riferimento::GesBanca;
    m_schermo.reset(s);
    ASSERT_EQ(m_messaggi.testi().size(), 1);
    EXPECT_TRUE(m_messaggi.testi().first().startsWith(
        QStringLiteral("ERRORE IN APERTURA TABELLA 'BANCHE'\n")));
    s->show();
    EXPECT_TRUE(QTest::qWaitFor([s] { return !s->isVisible(); }, 1000));
}

} // namespace
} // namespace sorvane::prova
