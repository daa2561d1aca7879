// The entry screen driven through its widgets, over the real files: the
// keyboard types movements, the buttons add, change, delete and save.

#include "ProvaDistinte.h"

#include "distinte/InsDist.h"
#include "distinte/ModelloBkDistinte.h"
#include "frame/ui/Fine.h"
#include "frame/ui/Documenti.h"
#include "frame/ui/Modale.h"
#include "lookup/Datario.h"
#include "reports/Esporta.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTableView>
#include <QTest>
#include <QUrl>

#include <memory>

namespace sorvane::prova {
namespace {

class ProvaInsDist : public ProvaDistinte
{
protected:
    void SetUp() override
    {
        ProvaDistinte::SetUp();
        Scrivi(QStringLiteral("INSERT INTO Societa (SocNome) VALUES (?)"),
               {QStringLiteral("ALFA SIM")});
        Scrivi(QStringLiteral("INSERT INTO Societa (SocNome) VALUES (?)"),
               {QStringLiteral("BETA FONDI")});
        Scrivi(QStringLiteral("INSERT INTO DistCausali VALUES (?, ?, ?)"),
               {QStringLiteral("002"), QStringLiteral("GIROCONTO"), "+"});
        Scrivi(QStringLiteral("INSERT INTO DistBanche (CodBanca) VALUES (?)"),
               {QStringLiteral("BPM")});
        // The old-date question answers No: the date stays accepted.
        m_messaggi.gestore = [this](const Richiesta &r) -> std::optional<Risposta> {
            if (r.titolo == QStringLiteral("KELVAR - CANCELLAZIONE"))
                return m_confermaCancella;
            return Risposta::No;
        };
    }
    void TearDown() override
    {
        m_schermo.reset();
        ProvaDistinte::TearDown();
    }

    InsDist &Apri()
    {
        m_schermo = std::make_unique<InsDist>();
        m_schermo->resize(1200, 700);
        m_schermo->show();
        QApplication::setActiveWindow(m_schermo.get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_schermo.get()));
        Attendi();
        return *m_schermo;
    }

    static void Attendi()
    {
        for (int i = 0; i < 5; ++i)
            QApplication::processEvents();
    }

    QLineEdit *Fuoco() const { return qobject_cast<QLineEdit *>(QApplication::focusWidget()); }
    int CampoInFuoco() const
    {
        for (int i = 1; i <= CampoSpese; ++i) {
            if (m_schermo->txt(i) == QApplication::focusWidget())
                return i;
        }
        return 0;
    }

    // Types into the field in focus, its old text selected as the focus left it.
    void Digita(const QString &testo)
    {
        QTest::keyClicks(QApplication::focusWidget(), testo);
        Attendi();
    }
    void Tasto(Qt::Key tasto)
    {
        QTest::keyClick(QApplication::focusWidget(), tasto);
        Attendi();
    }

    // A movement as the user types it: client code, Down (which skips the
    // name), reason, Enter, the slices of both groups with Down over the
    // blank rest of a group, currency, amount.
    void Movimento(const QString &cliente, const QString &causale, const QStringList &prodotti,
                   const QStringList &giro, const QString &importo)
    {
        InsDist &s = *m_schermo;
        s.txt(CampoCodiceCliente)->setFocus();
        Attendi();
        Digita(cliente);
        Tasto(Qt::Key_Down);
        EXPECT_EQ(CampoInFuoco(), CampoCausale);
        Digita(causale);
        Tasto(Qt::Key_Return);
        EXPECT_EQ(CampoInFuoco(), CampoPrimoProdotto);
        for (const QString &p : prodotti) {
            Digita(p);
            Tasto(Qt::Key_Down);
        }
        Tasto(Qt::Key_Down); // a blank slice: on to the second group
        EXPECT_EQ(CampoInFuoco(), CampoPrimoGiro);
        for (const QString &p : giro) {
            Digita(p);
            Tasto(Qt::Key_Down);
        }
        if (giro.size() < FetteProdotto)
            Tasto(Qt::Key_Down);
        EXPECT_EQ(CampoInFuoco(), CampoMoneta);
        EXPECT_EQ(s.txt(CampoMoneta)->text(), QStringLiteral("EUR"));
        Tasto(Qt::Key_Return);
        Digita(importo);
        Tasto(Qt::Key_Return);
        EXPECT_EQ(CampoInFuoco(), CampoAssegno);
    }

    // The grid's row of a movement's row "0".
    int Riga(std::int32_t codice) const
    {
        ModelloBkDistinte *m = m_schermo->Data1();
        for (int r = 0; r < m->rowCount(); ++r) {
            if (m->index(r, ColPrg).data().toInt() == codice)
                return r;
        }
        return -1;
    }
    void DoppioClick(int riga)
    {
        QTableView *g = m_schermo->TDBGrid1();
        const QRect cella = g->visualRect(g->model()->index(riga, ColNominativo));
        // The first click of the pair, then the double click.
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, cella.center());
        QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, cella.center());
        Attendi();
    }

    static QStringList Righe(const QString &sql)
    {
        QStringList righe;
        QSqlQuery q(Db());
        EXPECT_TRUE(q.exec(sql)) << qPrintable(sql);
        while (q.next()) {
            QStringList campi;
            for (int i = 0; i < q.record().count(); ++i)
                campi.append(q.value(i).toString());
            righe.append(campi.join(QLatin1Char('|')));
        }
        return righe;
    }

    std::unique_ptr<InsDist> m_schermo;
    Risposta m_confermaCancella = Risposta::Si;
};

TEST_F(ProvaInsDist, IlGiroDiUnaDistintaDallaTastieraAlSalvataggio)
{
    // A slip already in the ledger: the new numbers follow its highest.
    Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstData, dstCliente)"
                          " VALUES (40, '0', 45000, 12)"));
    InsDist &s = Apri();
    EXPECT_TRUE(s.Command1(0)->isVisible());
    for (int i = 1; i <= 3; ++i)
        EXPECT_FALSE(s.Command1(i)->isVisible()) << i;
    EXPECT_FALSE(s.cmdExcel()->isVisible());
    EXPECT_EQ(s.txt(CampoGiorno)->text(), QStringLiteral("15"));
    EXPECT_EQ(s.txt(CampoAnno)->text(), QStringLiteral("2024"));

    s.cmbSoc()->setCurrentIndex(1);
    Movimento(QStringLiteral("12"), QStringLiteral("1"), {QStringLiteral("P1")}, {},
              QStringLiteral("100"));
    EXPECT_EQ(s.txt(CampoNomeCliente)->text(), QStringLiteral("ROSSI MARIO"));
    EXPECT_EQ(s.txt(CampoCausale)->text(), QStringLiteral("001"));
    EXPECT_EQ(s.CauDes()->text(), QStringLiteral("VERSAMENTO"));
    ASSERT_TRUE(s.Command1(1)->isVisible());
    s.Command1(1)->click();
    Attendi();
    // Date, client and firm stay for the next movement; the rest is blank.
    EXPECT_EQ(CampoInFuoco(), CampoCodiceCliente);
    EXPECT_EQ(s.txt(CampoCodiceCliente)->text(), QStringLiteral("12"));
    EXPECT_EQ(s.cmbSoc()->currentText(), QStringLiteral("ALFA SIM"));
    EXPECT_TRUE(s.txt(CampoCausale)->text().trimmed().isEmpty());
    EXPECT_TRUE(s.Command1(2)->isVisible());
    EXPECT_TRUE(s.cmdExcel()->isVisible());
    EXPECT_FALSE(s.Command1(1)->isVisible());

    // A switch between products: two rows under one number.
    Movimento(QStringLiteral("14"), QStringLiteral("2"), {QStringLiteral("P2")},
              {QStringLiteral("G1"), QStringLiteral("G2")}, QStringLiteral("50"));
    s.Command1(1)->click();
    Attendi();
    // A third, a switch as well, to be saved as one.
    Movimento(QStringLiteral("12"), QStringLiteral("1"),
              {QStringLiteral("P3"), QStringLiteral("P4")}, {QStringLiteral("G3")},
              QStringLiteral("75"));
    s.Command1(1)->click();
    Attendi();
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstPrg, dstCliente, dstCausale,"
                                   " dstCodP0, dstCodP1, dstImporto, dstDitta"
                                   " FROM BkDistinte ORDER BY dstCodice, dstPrg")),
              QStringList({"1|0|12|001|P1| |100|ALFA SIM", "2|0|14|002|P2| |50|ALFA SIM",
                           "2|1|14|002|G1|G2|50|ALFA SIM", "3|0|12|001|P3|P4|75|ALFA SIM",
                           "3|1|12|001|G3| |75|ALFA SIM"}));
    ASSERT_EQ(s.Data1()->rowCount(), 5);
    // The second row shows only its slices.
    const QModelIndex giro = s.Data1()->index(Riga(2) + 1, ColNominativo);
    EXPECT_EQ(giro.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::white));
    EXPECT_FALSE(s.Data1()->index(Riga(2) + 1, ColPrimoCodice).data(Qt::ForegroundRole).isValid());

    // A change: blanking the second group takes row "1" away.
    DoppioClick(Riga(2));
    EXPECT_EQ(s.CodiceMovimento(), 2);
    EXPECT_EQ(s.Command1(1)->text(), QStringLiteral("&MODIFICA MOV"));
    EXPECT_EQ(s.Command1(3)->text(), QStringLiteral("&CANCELLA MOV"));
    EXPECT_TRUE(s.Command1(3)->isVisible());
    EXPECT_FALSE(s.Command1(2)->isVisible());
    EXPECT_EQ(s.txt(CampoNomeCliente)->text(), QStringLiteral("BIANCHI LUCA"));
    EXPECT_EQ(s.txt(CampoPrimoGiro + 1)->text(), QStringLiteral("G2"));
    for (int i = CampoPrimoGiro; i <= CampoPrimoGiro + 1; ++i) {
        s.txt(i)->setFocus();
        Attendi();
        Tasto(Qt::Key_Delete);
    }
    s.txt(CampoImporto)->setFocus();
    Attendi();
    Digita(QStringLiteral("60"));
    Tasto(Qt::Key_Return);
    s.Command1(1)->click();
    Attendi();
    EXPECT_EQ(s.CodiceMovimento(), 0);
    EXPECT_EQ(s.Command1(1)->text(), QStringLiteral("&AGGIUNGI"));
    EXPECT_TRUE(s.txt(CampoCodiceCliente)->text().trimmed().isEmpty());
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstPrg, dstImporto FROM BkDistinte"
                                   " WHERE dstCodice = 2")),
              QStringList({"0|60"}));

    // A fourth, deleted again; a No first leaves it.
    Movimento(QStringLiteral("14"), QStringLiteral("1"), {QStringLiteral("P9")}, {},
              QStringLiteral("5"));
    s.Command1(1)->click();
    Attendi();
    DoppioClick(Riga(4));
    ASSERT_EQ(s.CodiceMovimento(), 4);
    m_confermaCancella = Risposta::No;
    s.Command1(3)->click();
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM BkDistinte WHERE dstCodice = 4")),
              QStringList({"1"}));
    m_confermaCancella = Risposta::Si;
    m_messaggi.pulisci();
    s.Command1(3)->click();
    Attendi();
    EXPECT_EQ(m_messaggi.testi(),
              QStringList({"CONFERMI LA CANCELLAZIONE DEL MOVIMENTO 4"}));
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM BkDistinte WHERE dstCodice = 4")),
              QStringList({"0"}));
    EXPECT_FALSE(s.Command1(3)->isVisible());
    EXPECT_TRUE(s.Command1(2)->isVisible());

    // The save: final numbers after 40, slices marked open, one-row
    // movements in the 04 ledger as well, the working table empty.
    s.Command1(2)->click();
    Attendi();
    EXPECT_FALSE(s.isVisible());
    const QString a = QString(MarcaAperta);
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstPrg, dstCliente, dstCodP0, dstCodP1,"
                                   " dstImporto, dstChiusa FROM Distinte WHERE dstCodice > 40"
                                   " ORDER BY dstCodice, dstPrg")),
              QStringList({"41|0|12|P1" + a + "| |100| ", "42|0|14|P2" + a + "| |60| ",
                           "43|0|12|P3" + a + "|P4" + a + "|75| ",
                           "43|1|12|G3" + a + "| |75| "}));
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstCliente, dstCodP, dstImporto"
                                   " FROM Distinte04 ORDER BY dstCodice")),
              QStringList({"1|12|P1|100", "2|14|P2|60"}));
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM BkDistinte")), QStringList({"0"}));
}

TEST_F(ProvaInsDist, RigheRimasteEBottoniDellaMaschera)
{
    // Rows left by an earlier run show at once and can be saved.
    Scrivi(QStringLiteral("INSERT INTO BkDistinte (dstCodice, dstPrg, dstData, dstCliente,"
                          " dstCausale, dstMoneta, dstImporto, dstCodP0, dstDitta)"
                          " VALUES (7, '0', ?, 13, '001', 'EUR', 10, 'X1', 'BETA FONDI')"),
           {Oggi});
    InsDist &s = Apri();
    ASSERT_EQ(s.Data1()->rowCount(), 1);
    EXPECT_EQ(s.Data1()->index(0, ColData).data().toString(), QStringLiteral("15/06/2024"));
    EXPECT_EQ(s.Data1()->index(0, ColNominativo).data().toString(), QStringLiteral("ROSSI MARTA"));
    EXPECT_EQ(s.Data1()->index(0, ColImporto).data().toString(), QStringLiteral("10,00"));
    EXPECT_TRUE(s.Command1(2)->isVisible());
    EXPECT_TRUE(s.cmdExcel()->isVisible());
    EXPECT_TRUE(s.TDBGrid1()->horizontalHeader()->model()->headerData(ColRiga, Qt::Horizontal)
                    .toString().isEmpty());

    // Client and reason without any slice: nothing to add.
    s.txt(CampoCodiceCliente)->setFocus();
    Attendi();
    Digita(QStringLiteral("12"));
    Tasto(Qt::Key_Down);
    Digita(QStringLiteral("1"));
    Tasto(Qt::Key_Return);
    EXPECT_FALSE(s.Command1(1)->isVisible());
    // Home goes to the day.
    Tasto(Qt::Key_Home);
    EXPECT_EQ(CampoInFuoco(), CampoGiorno);

    // A wrong reason is told and keeps the focus.
    s.txt(CampoCausale)->setFocus();
    Attendi();
    Digita(QStringLiteral("999"));
    m_messaggi.pulisci();
    Tasto(Qt::Key_Return);
    EXPECT_EQ(m_messaggi.testi(), QStringList({"CAUSALE NON CODIFICATA"}));
    EXPECT_EQ(CampoInFuoco(), CampoCausale);

    Digita(QStringLiteral("1"));
    // Down over a blank slice goes on by one while a later one is filled.
    s.txt(CampoPrimoProdotto + 2)->setText(QStringLiteral("X"));
    s.txt(CampoPrimoProdotto)->setFocus();
    Attendi();
    Tasto(Qt::Key_Down);
    EXPECT_EQ(CampoInFuoco(), CampoPrimoProdotto + 1);
    Tasto(Qt::Key_Up);
    EXPECT_EQ(CampoInFuoco(), CampoPrimoProdotto);
    // Enter on the cheque goes to the bank.
    s.txt(CampoAssegno)->setFocus();
    Attendi();
    Tasto(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), s.cmbBanca());

    // Another button on a heading sorts descending, the left one ascending.
    QHeaderView *testata = s.TDBGrid1()->horizontalHeader();
    const QPoint nome(testata->sectionViewportPosition(ColNominativo) + 5, 5);
    QTest::mousePress(testata->viewport(), Qt::RightButton, {}, nome);
    EXPECT_TRUE(s.Data1()->Query().contains(QStringLiteral("ORDER BY CliRagsoc DESC")));
    QTest::mousePress(testata->viewport(), Qt::LeftButton, {}, nome);
    EXPECT_TRUE(s.Data1()->Query().contains(QStringLiteral("ORDER BY CliRagsoc ASC")));
}

// The working rows go to the spreadsheet file of the screen, the open marks
// left out, and the file is handed to the desktop's program.
TEST_F(ProvaInsDist, EsportaLeRigheDiLavoro)
{
    Scrivi(QStringLiteral("INSERT INTO BkDistinte (dstCodice, dstPrg, dstData, dstCliente,"
                          " dstCausale, dstMoneta, dstImporto, dstCodP0, dstDitta)"
                          " VALUES (7, '0', ?, 13, '001', 'EUR', 10, ?, 'BETA FONDI')"),
           {Oggi, QStringLiteral("X1") + A});
    const QString primaTemp = impostazioni().PathTemp;
    impostazioni().PathTemp = m_cartella.percorso() + QDir::separator();
    QList<QUrl> aperti;
    installaApriUrl([&aperti](const QUrl &u) {
        aperti.append(u);
        return true;
    });
    InsDist &s = Apri();
    s.cmdExcel()->click();
    installaApriUrl({});
    impostazioni().PathTemp = primaTemp;

    const QString file = m_cartella.file(QStringLiteral("EXPIDistinte.csv"));
    ASSERT_EQ(aperti.size(), 1);
    EXPECT_EQ(aperti.first().toLocalFile(), file);
    const QString testo = QString::fromUtf8(m_cartella.leggi(QStringLiteral("EXPIDistinte.csv")));
    EXPECT_TRUE(testo.contains(QStringLiteral("ROSSI MARTA;")));
    EXPECT_TRUE(testo.contains(QStringLiteral("X1;")));
    // Every field ends with ";": a mark kept would stand between code and ";".
    EXPECT_FALSE(testo.contains(QStringLiteral("X1") + A));
}

TEST_F(ProvaInsDist, LUscitaChiudeIlProgrammaELeRigheRestano)
{
    int fine = 0;
    installaFineProgramma([&fine] { ++fine; });
    Scrivi(QStringLiteral("INSERT INTO BkDistinte (dstCodice, dstPrg, dstData, dstCliente,"
                          " dstCausale, dstMoneta, dstImporto, dstCodP0)"
                          " VALUES (1, '0', ?, 12, '001', 'EUR', 10, 'X1')"),
           {Oggi});
    sessione().ModoProva = true;
    Apri().Command1(0)->click();
    Attendi();
    EXPECT_EQ(fine, 0);
    sessione().ModoProva = false;
    InsDist &s = Apri();
    EXPECT_EQ(s.Data1()->rowCount(), 1);
    s.Command1(0)->click();
    Attendi();
    EXPECT_EQ(fine, 1);
    installaFineProgramma({});
}

TEST_F(ProvaInsDist, IlBottoneDellaDataPassaPerIlCalendario)
{
    InsDist &s = Apri();
    double ricevuta = 0;
    installaGestoreModale([&ricevuta](QDialog &) {
        ricevuta = datario().DataComune;
        datario().DataComune = Oggi + 20; // 05/07/2024
        return 1;
    });
    s.cmdData()->click();
    installaGestoreModale({});
    EXPECT_EQ(ricevuta, Oggi);
    EXPECT_EQ(s.txt(CampoGiorno)->text(), QStringLiteral("05"));
    EXPECT_EQ(s.txt(CampoMese)->text(), QStringLiteral("07"));
    EXPECT_EQ(s.txt(CampoAnno)->text(), QStringLiteral("2024"));

    // Fields that make no date give today to the calendar.
    s.txt(CampoMese)->setText(QStringLiteral("13"));
    installaGestoreModale([&ricevuta](QDialog &) {
        ricevuta = datario().DataComune;
        return 1;
    });
    s.cmdData()->click();
    installaGestoreModale({});
    EXPECT_EQ(ricevuta, Oggi);
}

TEST(OrdineGrigliaBk, UnaColonnaPerTestataEIProdottiNonOrdinano)
{
    EXPECT_TRUE(QueryOrdinataBk(ColPrimoCodice, false).isEmpty());
    EXPECT_TRUE(QueryOrdinataBk(ColUltimoCodice, true).isEmpty());
    EXPECT_TRUE(QueryOrdinataBk(ColPrg, false).isEmpty());
    EXPECT_TRUE(QueryOrdinataBk(ColData, false)
                    .endsWith(QStringLiteral(" ORDER BY dstData ASC, dstCodice, dstPrg")));
    EXPECT_TRUE(QueryOrdinataBk(ColNominativo, true)
                    .endsWith(QStringLiteral(" ORDER BY CliRagsoc DESC, dstData, dstCodice,"
                                             " dstPrg")));
    EXPECT_TRUE(QueryOrdinataBk(ColSpese, false).contains(QStringLiteral("dstSpeseUT ASC")));
}

} // namespace
} // namespace sorvane::prova
