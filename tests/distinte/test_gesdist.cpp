// The management screen driven through its widgets over the real files:
// the filter extracts, a double click confirms codes and closes movements,
// the change form saves or deletes, the headings sort.

#include "ProvaSchermi.h"

#include "distinte/GesDist.h"
#include "distinte/ModelloDistinte.h"
#include "frame/ui/Fine.h"

#include <QBrush>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

namespace sorvane::prova {
namespace {

class ProvaGesDist : public ProvaSchermo<GesDist>
{
protected:
    void SetUp() override
    {
        ProvaSchermo::SetUp();
        m_messaggi.gestore = [this](const Richiesta &r) -> std::optional<Risposta> {
            if (r.titolo == QStringLiteral("KELVAR - ELIMINAZIONE"))
                return m_conferma;
            return std::nullopt;
        };
        // Open ones: 5 (a second row left alone), 1, 2 (a switch); 3 closed;
        // 4 after today.
        Semina(Riga(5, "1", Oggi - 40, 13, "ALFA SIM", {"R1" + A}));
        Semina(Riga(1, "0", Oggi - 30, 12, "ALFA SIM", {"P1" + A}, 1234.5));
        Semina(Riga(2, "0", Oggi - 20, 14, "BETA FONDI", {"X1" + A, "X2"}));
        Semina(Riga(2, "1", Oggi - 20, 14, "BETA FONDI", {"G1" + A}));
        Semina(Riga(3, "0", Oggi - 10, 12, "BETA FONDI", {"C1"}, 100, "S"));
        Semina(Riga(4, "0", Oggi + 5, 13, "ALFA SIM", {"F1" + A}));
        Scrivi(QStringLiteral("UPDATE Distinte SET dstBanca = 'BPM'"));
    }

    GesDist &ApriEdEstrai()
    {
        GesDist &s = Apri();
        Premi(s.Command1(1));
        return s;
    }
    // Types into a field of the screen as the user does: focus, text, Tab.
    void Digita(int campo, const QString &testo)
    {
        Fuoco(m_schermo->txt(campo));
        QTest::keyClicks(m_schermo->txt(campo), testo);
        Tasto(Qt::Key_Tab);
    }
    ModelloDistinte &Lista() const { return *m_schermo->Data1(); }
    // The list as movement/row pairs, top to bottom.
    QStringList Elenco() const
    {
        QStringList righe;
        for (int r = 0; r < Lista().rowCount(); ++r)
            righe.append(QString::number(Lista().Codice(r)) + QLatin1Char('/') + Lista().Prg(r));
        return righe;
    }
    int RigaDi(std::int32_t codice, const QString &prg = QStringLiteral("0")) const
    {
        return int(Elenco().indexOf(QString::number(codice) + QLatin1Char('/') + prg));
    }
    // The cell's own colour; none for the grid's.
    QColor Colore(int riga, int colonna) const
    {
        const QVariant v = Lista().index(riga, colonna).data(Qt::ForegroundRole);
        return v.isValid() ? v.value<QBrush>().color() : QColor();
    }
    void DoppioClick(int riga, int colonna)
    {
        ASSERT_GE(riga, 0);
        ProvaSchermo::DoppioClick(Lista().index(riga, colonna));
    }

    RigaDistinta Letta(std::int32_t codice, const QString &prg = QStringLiteral("0"))
    {
        const std::optional<RigaDistinta> r = CercaRiga(m_dist, codice, prg);
        EXPECT_TRUE(r.has_value()) << codice << "/" << qPrintable(prg);
        return r.value_or(RigaDistinta());
    }

    Risposta m_conferma = Risposta::Si;
};

TEST_F(ProvaGesDist, OgniFiltroEstraeLeSueDistinte)
{
    GesDist &s = Apri();
    // Nothing shows before the first extraction; the period runs to today.
    EXPECT_EQ(Lista().rowCount(), 0);
    EXPECT_FALSE(s.Command1(2)->isVisible());
    EXPECT_EQ(s.txt(CampoGiornoAl)->text(), QStringLiteral("15"));
    EXPECT_TRUE(s.txt(CampoGiornoDal)->text().trimmed().isEmpty());

    Premi(s.Command1(1));
    EXPECT_EQ(Elenco(), QStringList({"5/1", "1/0", "2/0", "2/1"}));
    EXPECT_TRUE(s.Command1(2)->isVisible());
    EXPECT_TRUE(s.cmdExcel()->isVisible());
    const int uno = RigaDi(1);
    EXPECT_EQ(Lista().index(uno, GesData).data().toString(), QStringLiteral("16/05/2024"));
    EXPECT_EQ(Lista().index(uno, GesImporto).data().toString(), QStringLiteral("1.234,50"));
    // An open code shows bare, in red; the header of a second row is hidden.
    EXPECT_EQ(Lista().index(uno, GesPrimoCodice).data().toString(), QStringLiteral("P1"));
    EXPECT_EQ(Colore(uno, GesPrimoCodice), QColor(Qt::red));
    EXPECT_EQ(Colore(RigaDi(2), GesPrimoCodice + 1), QColor());
    EXPECT_EQ(Colore(RigaDi(2, "1"), GesNominativo), QColor(Qt::white));

    // The closed ones as well, their header in blue.
    Premi(s.Check1());
    EXPECT_EQ(Elenco(), QStringList({"5/1", "1/0", "2/0", "2/1", "3/0"}));
    EXPECT_EQ(Colore(RigaDi(3), GesNominativo), QColor(Qt::blue));

    // A period from a date.
    Digita(CampoGiornoDal, QStringLiteral("20"));
    Digita(CampoMeseDal, QStringLiteral("05"));
    Digita(CampoAnnoDal, QStringLiteral("2024"));
    Premi(s.Command1(1));
    EXPECT_EQ(Elenco(), QStringList({"2/0", "2/1", "3/0"}));

    // The client of the filter.
    for (int i = CampoGiornoDal; i <= CampoAnnoDal; ++i)
        s.txt(i)->setText(QStringLiteral(" "));
    Digita(CampoCodiceFiltro, QStringLiteral("12"));
    EXPECT_EQ(s.txt(CampoNomeFiltro)->text(), QStringLiteral("ROSSI MARIO"));
    Premi(s.Command1(1));
    EXPECT_EQ(Elenco(), QStringList({"1/0", "3/0"}));

    // A firm picked in the combo extracts at once.
    s.txt(CampoCodiceFiltro)->setText(QStringLiteral(" "));
    s.txt(CampoNomeFiltro)->setText(QStringLiteral(" "));
    Fuoco(s.cmbSoc(1));
    Tasto(Qt::Key_Down);
    Tasto(Qt::Key_Down);
    ASSERT_EQ(s.cmbSoc(1)->currentText(), QStringLiteral("BETA FONDI"));
    EXPECT_EQ(Elenco(), QStringList({"2/0", "2/1", "3/0"}));

    // Nothing found: nothing to print or export.
    Digita(CampoCodiceFiltro, QStringLiteral("13"));
    Premi(s.Command1(1));
    EXPECT_EQ(Lista().rowCount(), 0);
    EXPECT_FALSE(s.cmdExcel()->isVisible());
}

TEST_F(ProvaGesDist, IlDoppioClickSuUnCodiceLoConfermaOLoRiapre)
{
    GesDist &s = ApriEdEstrai();
    // A blank code cell does nothing at all.
    DoppioClick(RigaDi(1), GesPrimoCodice + 1);
    EXPECT_FALSE(s.pctMod()->isVisible());
    EXPECT_EQ(Letta(1).dstChiusa, QStringLiteral(" "));

    // The first code of the switch: the movement stays open for its second
    // row, and the list keeps the row in hand.
    DoppioClick(RigaDi(2), GesPrimoCodice);
    EXPECT_EQ(Letta(2).dstCodP[0], QStringLiteral("X1"));
    EXPECT_EQ(Letta(2).dstChiusa, QStringLiteral(" "));
    EXPECT_EQ(s.TDBGrid1()->currentIndex().row(), RigaDi(2));
    EXPECT_EQ(Colore(RigaDi(2), GesPrimoCodice), QColor());

    // Its last open code closes it: both rows read "S" and it leaves the list.
    DoppioClick(RigaDi(2, "1"), GesPrimoCodice);
    EXPECT_EQ(Letta(2, "1").dstCodP[0], QStringLiteral("G1"));
    EXPECT_EQ(Letta(2).dstChiusa, QStringLiteral("S"));
    EXPECT_EQ(Letta(2, "1").dstChiusa, QStringLiteral("S"));
    EXPECT_EQ(Elenco(), QStringList({"5/1", "1/0"}));

    // Ctrl+R puts the mark back once: open again, in the list again.
    s.TDBGrid1()->setFocus();
    Tasto(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(Letta(2, "1").dstCodP[0], "G1" + A);
    EXPECT_EQ(Letta(2).dstChiusa, QStringLiteral(" "));
    EXPECT_EQ(Letta(2, "1").dstChiusa, QStringLiteral(" "));
    EXPECT_EQ(Elenco(), QStringList({"5/1", "1/0", "2/0", "2/1"}));
    Tasto(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(Letta(2, "1").dstCodP[0], "G1" + A);

    // With the closed ones on, a closed movement stays and is reopened by
    // a double click on its code.
    DoppioClick(RigaDi(1), GesPrimoCodice);
    EXPECT_EQ(Letta(1).dstChiusa, QStringLiteral("S"));
    Premi(s.Check1());
    DoppioClick(RigaDi(3), GesPrimoCodice);
    EXPECT_EQ(Letta(3).dstCodP[0], "C1" + A);
    EXPECT_EQ(Letta(3).dstChiusa, QStringLiteral(" "));
    EXPECT_EQ(Colore(RigaDi(3), GesNominativo), QColor(Qt::black));
    EXPECT_EQ(Colore(RigaDi(3), GesPrimoCodice), QColor(Qt::red));
}

TEST_F(ProvaGesDist, IlModuloCambiaUnMovimento)
{
    GesDist &s = ApriEdEstrai();
    DoppioClick(RigaDi(2), GesNominativo);
    ASSERT_TRUE(s.pctMod()->isVisible());
    EXPECT_FALSE(s.pctLista()->isEnabled());
    EXPECT_EQ(s.Label2()->text(), QStringLiteral("MODIFICA MOVIMENTO N. 2"));
    EXPECT_EQ(QApplication::focusWidget(), s.txt(CampoGiorno));
    EXPECT_EQ(s.txt(CampoNomeCliente)->text(), QStringLiteral("BIANCHI LUCA"));
    EXPECT_EQ(s.cmbSoc(0)->currentText(), QStringLiteral("BETA FONDI"));
    EXPECT_EQ(s.cmbBanca()->currentText(), QStringLiteral("BPM"));
    EXPECT_EQ(s.txt(CampoPrimoProdotto)->text(), QStringLiteral("X1"));
    EXPECT_EQ(s.txt(CampoPrimoGiro)->text(), QStringLiteral("G1"));

    // A wrong reason stops the save where it is.
    Digita(CampoCausale, QStringLiteral("9"));
    m_messaggi.pulisci();
    Premi(s.cmdMOD());
    EXPECT_EQ(m_messaggi.testi(), QStringList({"CAUSALE NON CODIFICATA"}));
    EXPECT_EQ(QApplication::focusWidget(), s.txt(CampoCausale));
    EXPECT_TRUE(s.pctMod()->isVisible());

    // A changed code goes open, the unchanged open one stays open, a blank
    // second group takes row "1" away; the amount is laid out as it is left.
    s.txt(CampoCausale)->setText(QStringLiteral("ABC"));
    Digita(CampoPrimoProdotto + 1, QStringLiteral("X3"));
    s.txt(CampoPrimoGiro)->setText(QStringLiteral(" "));
    Digita(CampoImporto, QStringLiteral("2500"));
    EXPECT_EQ(s.txt(CampoImporto)->text(), QStringLiteral("2.500"));
    s.cmbBanca()->setCurrentIndex(0);
    Premi(s.cmdMOD());
    EXPECT_FALSE(s.pctMod()->isVisible());
    EXPECT_TRUE(s.pctLista()->isEnabled());
    const RigaDistinta r = Letta(2);
    EXPECT_EQ(r.dstCodP[0], "X1" + A);
    EXPECT_EQ(r.dstCodP[1], "X3" + A);
    EXPECT_EQ(r.dstCausale, QStringLiteral("ABC"));
    EXPECT_EQ(r.dstImporto, 2500);
    EXPECT_EQ(r.dstBanca, QStringLiteral(" "));
    EXPECT_EQ(r.dstChiusa, QStringLiteral(" "));
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 2").toInt(), 1);
    EXPECT_EQ(Elenco(), QStringList({"5/1", "1/0", "2/0"}));
    EXPECT_EQ(Lista().index(RigaDi(2), GesCausale).data().toString(), QStringLiteral("RISCATTO"));

    // A closed movement changed in its amount only stays closed.
    Premi(s.Check1());
    DoppioClick(RigaDi(3), GesImporto);
    ASSERT_TRUE(s.pctMod()->isVisible());
    EXPECT_EQ(s.txt(CampoPrimoProdotto)->text(), QStringLiteral("C1"));
    Digita(CampoImporto, QStringLiteral("7"));
    Premi(s.cmdMOD());
    EXPECT_EQ(Letta(3).dstCodP[0], QStringLiteral("C1"));
    EXPECT_EQ(Letta(3).dstImporto, 7);
    EXPECT_EQ(Letta(3).dstChiusa, QStringLiteral("S"));

    // USCITA leaves the form and writes nothing.
    DoppioClick(RigaDi(3), GesImporto);
    Digita(CampoImporto, QStringLiteral("9"));
    Premi(s.cndEND());
    EXPECT_FALSE(s.pctMod()->isVisible());
    EXPECT_EQ(Letta(3).dstImporto, 7);
}

TEST_F(ProvaGesDist, EliminaUnMovimentoDiDueRigheSoloSeConfermato)
{
    GesDist &s = ApriEdEstrai();
    DoppioClick(RigaDi(2, "1"), GesCausale);
    ASSERT_TRUE(s.pctMod()->isVisible());
    m_conferma = Risposta::No;
    m_messaggi.pulisci();
    Premi(s.cmdDEL());
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const Richiesta domanda = m_messaggi.richieste().first();
    EXPECT_EQ(domanda.testo, QStringLiteral("CONFERMI LA CANCELLAZIONE DEL MOVIMENTO 2"));
    EXPECT_EQ(domanda.titolo, QStringLiteral("KELVAR - ELIMINAZIONE"));
    EXPECT_EQ(domanda.icona, Icona::Domanda);
    EXPECT_EQ(domanda.pulsanti, Pulsanti::SiNo);
    EXPECT_EQ(RispostaPredefinita(domanda), Risposta::No);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 2").toInt(), 2);
    EXPECT_TRUE(s.pctMod()->isVisible());

    // A delete that fails on the second row leaves both, and the form up.
    m_conferma = Risposta::Si;
    Rifiuta("dati.NoElimina", "DELETE", "Distinte", "bloccata", "OLD.dstPrg = '1'");
    m_messaggi.pulisci();
    Premi(s.cmdDEL());
    ASSERT_EQ(m_messaggi.richieste().size(), 2);
    EXPECT_EQ(m_messaggi.richieste().last().icona, Icona::Stop);
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 2").toInt(), 2);
    EXPECT_TRUE(s.pctMod()->isVisible());
    EXPECT_FALSE(s.pctLista()->isEnabled());
    EXPECT_EQ(s.CodiceMovimento(), 2);

    TogliRifiuto("dati.NoElimina", "Distinte");
    Premi(s.cmdDEL());
    EXPECT_EQ(Valore("SELECT COUNT(*) FROM Distinte WHERE dstCodice = 2").toInt(), 0);
    EXPECT_FALSE(s.pctMod()->isVisible());
    EXPECT_TRUE(s.pctLista()->isEnabled());
    EXPECT_EQ(Elenco(), QStringList({"5/1", "1/0"}));
}

TEST_F(ProvaGesDist, LeColonneApronoLargheQuantoIlLoroContenuto)
{
    // A code of 15 characters, the longest bank on file.
    const QString banca = QStringLiteral("CREDITO COOPERATIVO DI OGGIONO");
    Scrivi(QStringLiteral("INSERT INTO DistBanche (CodBanca) VALUES (?)"), {banca});
    Scrivi(QStringLiteral("UPDATE Distinte SET dstCodP0 = ?, dstBanca = ? WHERE dstCodice = 1"),
           {QStringLiteral("ADDOBILANC20241"), banca});
    GesDist &s = ApriEdEstrai();
    // What the cells' text needs, by the grid's own measure.
    QAbstractItemView *g = s.TDBGrid1();
    for (int colonna : {int(GesPrimoCodice), int(GesBanca), int(GesNominativo)})
        EXPECT_GE(s.TDBGrid1()->columnWidth(colonna), g->sizeHintForColumn(colonna)) << colonna;
    // The spare width is left blank, not given to the last column.
    EXPECT_LT(s.TDBGrid1()->columnWidth(GesSpese), s.TDBGrid1()->columnWidth(GesBanca));
    // The form's bank shows whole as well.
    DoppioClick(RigaDi(1), GesNominativo);
    ASSERT_EQ(s.cmbBanca()->currentText(), banca);
    EXPECT_GE(s.cmbBanca()->width(), s.cmbBanca()->sizeHint().width());
}

TEST_F(ProvaGesDist, UnaSecondaRigaSolaRiavraLaSuaRigaPrincipale)
{
    GesDist &s = ApriEdEstrai();
    DoppioClick(RigaDi(5, "1"), GesData);
    ASSERT_TRUE(s.pctMod()->isVisible());
    const RigaDistinta r = Letta(5);
    EXPECT_EQ(r.dstCliente, 13);
    EXPECT_EQ(r.dstData, Oggi - 40);
    EXPECT_TRUE(r.fetteVuote());
    EXPECT_EQ(r.dstChiusa, QStringLiteral(" "));
    EXPECT_EQ(s.txt(CampoNomeCliente)->text(), QStringLiteral("ROSSI MARTA"));
    EXPECT_TRUE(s.txt(CampoPrimoProdotto)->text().trimmed().isEmpty());
    EXPECT_EQ(s.txt(CampoPrimoGiro)->text(), QStringLiteral("R1"));
    Premi(s.cndEND());
    EXPECT_EQ(Elenco(), QStringList({"5/0", "5/1", "1/0", "2/0", "2/1"}));
}

TEST_F(ProvaGesDist, LeTestateOrdinanoEIlFiltroErratoTieneIlFuoco)
{
    GesDist &s = ApriEdEstrai();
    // Another button on a heading sorts descending, the left one ascending;
    // the codes never sort.
    Testata(GesNominativo, Qt::RightButton);
    EXPECT_TRUE(Lista().Query().contains(QStringLiteral(" CliRagsoc DESC, ")));
    EXPECT_EQ(Elenco(), QStringList({"5/1", "1/0", "2/0", "2/1"}));
    Testata(GesNominativo, Qt::LeftButton);
    EXPECT_EQ(Elenco(), QStringList({"2/0", "2/1", "1/0", "5/1"}));
    const QString prima = Lista().Query();
    Testata(GesPrimoCodice, Qt::LeftButton);
    Testata(GesMoneta, Qt::RightButton);
    EXPECT_EQ(Lista().Query(), prima);

    // A wrong month from shows its (one field late) words and keeps the
    // focus; the list stays as it was.
    m_messaggi.pulisci();
    Digita(CampoMeseDal, QStringLiteral("13"));
    EXPECT_EQ(m_messaggi.testi(), QStringList({"DATA MOVIMENTO INIZIALE ERRATA"}));
    EXPECT_EQ(QApplication::focusWidget(), s.txt(CampoMeseDal));
    EXPECT_EQ(Lista().Query(), prima);
    s.txt(CampoMeseDal)->setText(QStringLiteral(" "));

    // Enter on the client's name goes to ESTRAI; on the expenses, to the bank.
    s.txt(CampoCodiceFiltro)->setText(QStringLiteral(" "));
    Fuoco(s.txt(CampoNomeFiltro));
    Tasto(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), s.Command1(1));
    // and Enter there extracts.
    QSignalSpy premuto(s.Command1(1), &QPushButton::clicked);
    Tasto(Qt::Key_Return);
    EXPECT_TRUE(premuto.wait(1000));
    DoppioClick(RigaDi(1), GesNominativo);
    Fuoco(s.txt(CampoSpese));
    Tasto(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), s.cmbBanca());
}

TEST_F(ProvaGesDist, LUscitaChiudeLeTabelleEIlProgramma)
{
    int fine = 0;
    installaFineProgramma([&fine] { ++fine; });
    Premi(Apri().Command1(0));
    installaFineProgramma({});
    EXPECT_EQ(fine, 1);
    EXPECT_FALSE(tabelle().RsDistinte.IsOpen());
    EXPECT_FALSE(tabelle().RsDistinte04.IsOpen());
}

TEST_F(ProvaGesDist, SiEsceSubitoColCodiceClienteInFuoco)
{
    EsceInTreModi(CampoCodiceFiltro);
}

} // namespace
} // namespace sorvane::prova
