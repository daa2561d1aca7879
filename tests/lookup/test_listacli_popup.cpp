// The client popup through its real widgets, headless, and the round trip
// of a client field that every work screen runs.

#include "test_listacli.h"

#include "frame/core/Sessione.h"
#include "frame/ui/Finestra.h"
#include "lookup/SceltaCliente.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace sorvane::prova {
namespace {

class PopupClienti : public ProvaListaCli
{
protected:
    void SetUp() override
    {
        ProvaListaCli::SetUp();
        sessione().LarghezzaSchermo = 12120;
        sessione().AltezzaSchermo = 9120;
    }

    static QStringList Codici(ListaCli &l)
    {
        QStringList codici;
        const QAbstractItemModel *m = l.Grid1->model();
        for (int r = 0; r < m->rowCount(); ++r)
            codici << m->index(r, ColCodice).data().toString().trimmed();
        return codici;
    }
    static void ClicIntestazione(ListaCli &l, int colonna, Qt::MouseButton pulsante)
    {
        QHeaderView *h = l.Grid1->horizontalHeader();
        const QPoint punto(h->sectionViewportPosition(colonna) + 3, h->height() / 2);
        QTest::mousePress(h->viewport(), pulsante, {}, punto);
        QTest::mouseRelease(h->viewport(), pulsante, {}, punto);
    }
    static void Scegli(ListaCli &l, int riga)
    {
        l.Grid1->setCurrentIndex(l.Grid1->model()->index(riga, ColNominativo));
        QTest::keyClick(l.Grid1, Qt::Key_Return);
    }

private:
    StatoSalvato m_stato;
};

TEST_F(PopupClienti, LeIntestazioniOrdinanoEIlVersoRestaTraLeRicerche)
{
    Clienti({{1, "CORTI BRUNO", "ASTI"}, {3, "CORTI CARLA", "BIELLA"}, {5, "CORTI ELIO", "ALBA"}});
    ListaCli &l = listaCli();
    ASSERT_EQ(l.CercaNomi(QStringLiteral("CORTI")), 3);
    EXPECT_EQ(Codici(l), (QStringList{"1", "3", "5"}));
    l.show();

    ClicIntestazione(l, ColLocalita, Qt::LeftButton);
    EXPECT_EQ(Codici(l), (QStringList{"5", "1", "3"}));
    ClicIntestazione(l, ColLocalita, Qt::RightButton);
    EXPECT_EQ(Codici(l), (QStringList{"3", "1", "5"}));
    ClicIntestazione(l, ColCodice, Qt::LeftButton);
    EXPECT_EQ(Codici(l), (QStringList{"3", "1", "5"})) << "Codice never sorts";

    // The next use searches in the same order.
    l.hide();
    Cliente({7, "CORTI DINO", "AOSTA"});
    ASSERT_EQ(l.CercaNomi(QStringLiteral("CORTI")), 4);
    EXPECT_EQ(Codici(l), (QStringList{"3", "1", "7", "5"}));
}


TEST_F(PopupClienti, LaSceltaCaricaIlClienteMaNonIlCodiceRiservato)
{
    Clienti({{5, "FERRI ADA", "LODI", "PRV", "2"}, {CodiceNonCaricato, "FERRI ZOE", "PAVIA"}});
    ListaCli &l = listaCli();
    ASSERT_EQ(l.CercaNomi(QStringLiteral("FERRI")), 2);
    l.show();
    Scegli(l, 1);
    EXPECT_FALSE(l.isVisible());
    EXPECT_EQ(l.result(), QDialog::Accepted);
    EXPECT_EQ(Cli().Codice, CodiceNonCaricato);
    EXPECT_EQ(Cli().Ragsoc, QStringLiteral("FERRI ADA")) << "the first row's values stay";
    EXPECT_EQ(Cli().Categoria, QString(5, QLatin1Char(' '))) << "nothing was read";

    l.show();
    Scegli(l, 0);
    EXPECT_EQ(Cli().Codice, 5);
    EXPECT_EQ(Cli().Categoria, QStringLiteral("PRV  ")) << "the whole card is loaded";

    // The blank placeholder of an empty search chooses nothing.
    ASSERT_EQ(l.CercaNomi(QStringLiteral("NESSUNO")), 0);
    l.show();
    Scegli(l, 0);
    EXPECT_TRUE(l.isVisible());
    EXPECT_EQ(Cli().Codice, 5);
}

TEST_F(PopupClienti, UscitaEscEF2SvuotanoIlCodice)
{
    Clienti({{5, "FERRI ADA", "LODI", "PRV", "2"}, {6, "FERRI BICE"}});
    ListaCli &l = listaCli();
    for (Qt::Key tasto : {Qt::Key_unknown, Qt::Key_Escape, Qt::Key_F2}) {
        ASSERT_EQ(l.CercaNomi(QStringLiteral("FERRI")), 2);
        ASSERT_EQ(Cli().Codice, 5);
        l.show();
        if (tasto == Qt::Key_unknown)
            l.Command1->click();
        else
            QTest::keyClick(l.Grid1, tasto);
        // F2 presses the button once the key's routine is over.
        EXPECT_TRUE(QTest::qWaitFor([&l] { return !l.isVisible(); }, 2000));
        EXPECT_EQ(l.result(), QDialog::Rejected);
        EXPECT_EQ(Cli().Codice, 0);
        EXPECT_EQ(Cli().Ragsoc, QString());
        EXPECT_EQ(Cli().Nominativo, QString());
        EXPECT_EQ(Cli().Localita, QString(35, QLatin1Char(' ')));
    }
}

TEST_F(PopupClienti, LaCasellaCercaDiNuovoSoloAPopupAperto)
{
    Clienti({{1, "VERDI LUIGI", "COMO", CategoriaChiusi}});
    ListaCli &l = listaCli();
    l.Check1->setChecked(false);
    condivisiListaCli().LookupLive = 0;
    ASSERT_EQ(l.CercaNomi(QStringLiteral("VERDI")), 0);

    l.show();
    EXPECT_EQ(condivisiListaCli().LookupLive, 1);
    l.Check1->setChecked(true);
    EXPECT_EQ(Codici(l), QStringList{"1"});
    EXPECT_EQ(l.Grid1->model()->index(0, ColCh).data().toString(), QStringLiteral("X"));
    l.hide();

    condivisiListaCli().LookupLive = 0;
    l.Check1->setChecked(false);
    EXPECT_EQ(Codici(l), QStringList{"1"}) << "no search while a screen prepares one";
    EXPECT_EQ(condivisiListaCli().LookupLive, 1);
}

// A work screen with its client code and name fields.
struct Schermata
{
    Schermata()
    {
        finestra.move(100, 50);
        finestra.resize(600, 300);
        codice->setGeometry(10, 10, 80, 24);
        nome->setGeometry(100, 30, 300, 24);
        finestra.show();
    }
    QWidget finestra;
    QLineEdit *codice = new QLineEdit(&finestra);
    QLineEdit *nome = new QLineEdit(&finestra);
};

TEST_F(PopupClienti, IlCampoClienteNeiCinquePassi)
{
    Clienti({{1, "BIANCHI ANNA", "LODI"}, {2, "NERI ADA", "PAVIA", "PRV", "4"},
             {3, "NERI BRUNO", "COMO", "PRV", "4"}, {4, "NERI CARLO", "BRA", CategoriaChiusi}});
    int mostrato = 0;
    installaGestoreModale([&mostrato](QDialog &) {
        ++mostrato;
        return 0;
    });
    Schermata s;

    // A blank name does nothing.
    s.codice->setText(QStringLiteral("77"));
    s.nome->setText(QStringLiteral("  "));
    Cli().Codice = 77;
    EXPECT_EQ(SceltaCliente(&s.finestra, s.codice, s.nome), 0);
    EXPECT_EQ(Cli().Codice, 77);

    // No match: the fields stay for the screen to judge, and nothing shows.
    s.nome->setText(QStringLiteral("VERDI"));
    EXPECT_EQ(SceltaCliente(&s.finestra, s.codice, s.nome), 0);
    EXPECT_EQ(s.codice->text(), QStringLiteral("77"));
    EXPECT_EQ(s.nome->text(), QStringLiteral("VERDI"));

    // One match is taken at once, and the box starts off each time.
    listaCli().Check1->setChecked(true);
    s.nome->setText(QStringLiteral(" bianchi "));
    EXPECT_EQ(SceltaCliente(&s.finestra, s.codice, s.nome), 1);
    EXPECT_EQ(s.codice->text(), QStringLiteral("1"));
    EXPECT_EQ(s.nome->text(), QStringLiteral("BIANCHI ANNA"));
    EXPECT_FALSE(listaCli().Check1->isChecked());
    EXPECT_EQ(mostrato, 0);

    // Several: the popup, then the chosen client in the fields.
    installaGestoreModale([&mostrato](QDialog &d) {
        ++mostrato;
        auto &l = static_cast<ListaCli &>(d);
        d.show();
        EXPECT_EQ(condivisiListaCli().LookupLive, 1);
        Scegli(l, 1);
        return d.result();
    });
    s.nome->setText(QStringLiteral("NERI"));
    EXPECT_EQ(SceltaCliente(&s.finestra, s.codice, s.nome), 2);
    EXPECT_EQ(mostrato, 1);
    EXPECT_EQ(s.codice->text(), QStringLiteral("3"));
    EXPECT_EQ(s.nome->text(), QStringLiteral("NERI BRUNO"));
    EXPECT_EQ(Cli().Nominativo, QStringLiteral("NERI BRUNO >4"));
    EXPECT_EQ(condivisiListaCli().PosX, InTwips(s.finestra.x()));
    EXPECT_EQ(condivisiListaCli().PosY, InTwips(30 + 24 + s.finestra.y()) + 360);

    // Closed clients when the screen asks for them; leaving chooses none.
    installaGestoreModale([&mostrato](QDialog &d) {
        ++mostrato;
        d.show();
        static_cast<ListaCli &>(d).Command1->click();
        return d.result();
    });
    s.nome->setText(QStringLiteral("NERI"));
    EXPECT_EQ(SceltaCliente(&s.finestra, s.codice, s.nome, true), 3);
    EXPECT_EQ(mostrato, 2);
    EXPECT_EQ(s.codice->text(), QString());
    EXPECT_EQ(s.finestra.focusWidget(), s.codice);
    EXPECT_EQ(s.nome->text(), QStringLiteral("NERI"));
    EXPECT_EQ(Cli().Codice, 0);
}

} // namespace
} // namespace sorvane::prova
