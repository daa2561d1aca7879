// The entry screen driven through its widgets, over the real files: the
// keyboard types movements, the buttons add, change, delete and save.

#include "ProvaSchermi.h"

#include "distinte/InsDist.h"
#include "distinte/ModelloBkDistinte.h"
#include "frame/ui/Fine.h"
#include "frame/ui/Modale.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace sorvane::prova {
namespace {

class ProvaInsDist : public ProvaSchermo<InsDist>
{
protected:
    void SetUp() override
    {
        ProvaSchermo::SetUp();
        Scrivi(QStringLiteral("INSERT INTO DistCausali VALUES (?, ?, ?)"),
               {QStringLiteral("002"), QStringLiteral("GIROCONTO"), "+"});
        // The old-date question answers No: the date stays accepted.
        m_messaggi.gestore = [this](const Richiesta &r) -> std::optional<Risposta> {
            if (r.titolo == QStringLiteral("KELVAR - CANCELLAZIONE"))
                return m_confermaCancella;
            if (r.titolo == QStringLiteral("KELVAR - USCITA"))
                return m_esci;
            return Risposta::No;
        };
        // The client popup: Enter on the row of m_scelta, or Esc when it is 0.
        installaGestoreModale([this](QDialog &d) {
            ++m_liste;
            auto *griglia = d.findChild<QTableView *>();
            const QAbstractItemModel *righe = griglia->model();
            for (int r = 0; m_scelta > 0 && r < righe->rowCount(); ++r) {
                if (righe->index(r, 0).data().toString().trimmed().toInt() == m_scelta) {
                    griglia->setCurrentIndex(righe->index(r, 0));
                    QTest::keyClick(griglia, Qt::Key_Return);
                    return d.result();
                }
            }
            d.reject();
            return d.result();
        });
    }
    void TearDown() override
    {
        installaGestoreModale({});
        ProvaSchermo::TearDown();
    }

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
    // A movement as the user types it: client code, Down (which skips the
    // name), reason, Enter, the slices of both groups with Down over the
    // blank rest of a group, currency, amount.
    void Movimento(const QString &cliente, const QString &causale, const QStringList &prodotti,
                   const QStringList &giro, const QString &importo)
    {
        InsDist &s = *m_schermo;
        Fuoco(s.txt(CampoCodiceCliente));
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

    // The grid's cell of a movement's row "0".
    QModelIndex Cella(std::int32_t codice, int colonna = ColNominativo) const
    {
        ModelloBkDistinte *m = m_schermo->Data1();
        for (int r = 0; r < m->rowCount(); ++r) {
            if (m->index(r, ColPrg).data().toInt() == codice)
                return m->index(r, colonna);
        }
        return {};
    }

    Risposta m_confermaCancella = Risposta::Si;
    Risposta m_esci = Risposta::No;
    std::int32_t m_scelta = 0;
    int m_liste = 0; // times the client popup was shown
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

    s.cmbSoc()->setCurrentIndex(1);
    Movimento(QStringLiteral("12"), QStringLiteral("1"), {QStringLiteral("P1")}, {},
              QStringLiteral("100"));
    EXPECT_EQ(s.txt(CampoNomeCliente)->text(), QStringLiteral("ROSSI MARIO"));
    EXPECT_EQ(s.txt(CampoCausale)->text(), QStringLiteral("001"));
    EXPECT_EQ(s.CauDes()->text(), QStringLiteral("VERSAMENTO"));
    ASSERT_TRUE(s.Command1(1)->isVisible());
    // Enter goes on from the cheque by the bank and the expenses to the add
    // button, and once more adds.
    for (QWidget *w : {static_cast<QWidget *>(s.cmbBanca()), static_cast<QWidget *>(s.txt(CampoSpese)),
                       static_cast<QWidget *>(s.Command1(1))}) {
        Tasto(Qt::Key_Return);
        EXPECT_EQ(QApplication::focusWidget(), w);
    }
    Tasto(Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&s] { return s.Data1()->rowCount() == 1; }, 1000));
    // Date, client and firm stay for the next movement; the rest is blank.
    EXPECT_EQ(CampoInFuoco(), CampoCodiceCliente);
    EXPECT_EQ(s.txt(CampoCodiceCliente)->text(), QStringLiteral("12"));
    EXPECT_EQ(s.cmbSoc()->currentText(), QStringLiteral("ALFA SIM"));
    EXPECT_TRUE(s.txt(CampoCausale)->text().trimmed().isEmpty());
    EXPECT_TRUE(s.Command1(2)->isVisible());

    // A switch between products: two rows under one number.
    Movimento(QStringLiteral("14"), QStringLiteral("2"), {QStringLiteral("P2")},
              {QStringLiteral("G1"), QStringLiteral("G2")}, QStringLiteral("50"));
    Premi(s.Command1(1));
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstPrg, dstCliente, dstCausale,"
                                   " dstCodP0, dstCodP1, dstImporto, dstDitta"
                                   " FROM BkDistinte ORDER BY dstCodice, dstPrg")),
              QStringList({"1|0|12|001|P1| |100|ALFA SIM", "2|0|14|002|P2| |50|ALFA SIM",
                           "2|1|14|002|G1|G2|50|ALFA SIM"}));
    ASSERT_EQ(s.Data1()->rowCount(), 3);
    // The second row shows only its slices.
    const QModelIndex giro = Cella(2).siblingAtRow(Cella(2).row() + 1);
    EXPECT_EQ(giro.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::white));
    EXPECT_FALSE(giro.siblingAtColumn(ColPrimoCodice).data(Qt::ForegroundRole).isValid());

    // A change: blanking the second group takes row "1" away.
    DoppioClick(Cella(2));
    EXPECT_EQ(s.CodiceMovimento(), 2);
    EXPECT_EQ(s.Command1(1)->text(), QStringLiteral("&MODIFICA MOV"));
    EXPECT_EQ(s.Command1(3)->text(), QStringLiteral("&CANCELLA MOV"));
    EXPECT_FALSE(s.Command1(2)->isVisible());
    EXPECT_EQ(s.txt(CampoPrimoGiro + 1)->text(), QStringLiteral("G2"));
    for (int i = CampoPrimoGiro; i <= CampoPrimoGiro + 1; ++i) {
        Fuoco(s.txt(i));
        Tasto(Qt::Key_Delete);
    }
    Fuoco(s.txt(CampoImporto));
    Digita(QStringLiteral("60"));
    Tasto(Qt::Key_Return);
    Premi(s.Command1(1));
    EXPECT_EQ(s.CodiceMovimento(), 0);
    EXPECT_EQ(s.Command1(1)->text(), QStringLiteral("&AGGIUNGI"));
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstPrg, dstImporto FROM BkDistinte"
                                   " WHERE dstCodice = 2")),
              QStringList({"0|60"}));

    // A third, deleted again; a No first leaves it.
    Movimento(QStringLiteral("14"), QStringLiteral("1"), {QStringLiteral("P9")}, {},
              QStringLiteral("5"));
    Premi(s.Command1(1));
    DoppioClick(Cella(3));
    ASSERT_EQ(s.CodiceMovimento(), 3);
    const QString terzo = QStringLiteral("SELECT COUNT(*) FROM BkDistinte WHERE dstCodice = 3");
    m_confermaCancella = Risposta::No;
    s.Command1(3)->click();
    EXPECT_EQ(Righe(terzo), QStringList({"1"}));
    m_confermaCancella = Risposta::Si;
    m_messaggi.pulisci();
    Premi(s.Command1(3));
    EXPECT_EQ(m_messaggi.testi(), QStringList({"CONFERMI LA CANCELLAZIONE DEL MOVIMENTO 3"}));
    EXPECT_EQ(Righe(terzo), QStringList({"0"}));
    EXPECT_TRUE(s.Command1(2)->isVisible());

    // The save: final numbers after 40, slices marked open, the movements
    // in the 04 ledger as well, the working table empty.
    Premi(s.Command1(2));
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstPrg, dstCliente, dstCodP0, dstCodP1,"
                                   " dstImporto, dstChiusa FROM Distinte WHERE dstCodice > 40"
                                   " ORDER BY dstCodice, dstPrg")),
              QStringList({"41|0|12|P1" + A + "| |100| ", "42|0|14|P2" + A + "| |60| "}));
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstCliente, dstCodP, dstImporto"
                                   " FROM Distinte04 ORDER BY dstCodice")),
              QStringList({"1|12|P1|100", "2|14|P2|60"}));
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM BkDistinte")), QStringList({"0"}));
}

TEST_F(ProvaInsDist, RigheRimasteTastiEUscita)
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

    // Client and reason without any slice: nothing to add.
    Fuoco(s.txt(CampoCodiceCliente));
    Digita(QStringLiteral("12"));
    Tasto(Qt::Key_Down);
    Digita(QStringLiteral("1"));
    Tasto(Qt::Key_Return);
    EXPECT_FALSE(s.Command1(1)->isVisible());
    // Home goes to the day.
    Tasto(Qt::Key_Home);
    EXPECT_EQ(CampoInFuoco(), CampoGiorno);

    // A wrong reason is told and keeps the focus.
    Fuoco(s.txt(CampoCausale));
    Digita(QStringLiteral("999"));
    m_messaggi.pulisci();
    Tasto(Qt::Key_Return);
    EXPECT_EQ(m_messaggi.testi(), QStringList({"CAUSALE NON CODIFICATA"}));
    EXPECT_EQ(CampoInFuoco(), CampoCausale);

    Digita(QStringLiteral("1"));
    // Down over a blank slice goes on by one while a later one is filled.
    s.txt(CampoPrimoProdotto + 2)->setText(QStringLiteral("X"));
    Fuoco(s.txt(CampoPrimoProdotto));
    Tasto(Qt::Key_Down);
    EXPECT_EQ(CampoInFuoco(), CampoPrimoProdotto + 1);
    Tasto(Qt::Key_Up);
    EXPECT_EQ(CampoInFuoco(), CampoPrimoProdotto);
    // Enter on the cheque goes to the bank.
    Fuoco(s.txt(CampoAssegno));
    Tasto(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), s.cmbBanca());

    // A heading sorts the working rows; USCITA ends the program and leaves
    // them for the next run, once it is told that the movement typed and
    // not added goes (No by default).
    Testata(ColNominativo, Qt::RightButton);
    EXPECT_TRUE(s.Data1()->Query().contains(QStringLiteral(" CliRagsoc DESC, ")));
    int fine = 0;
    installaFineProgramma([&fine] { ++fine; });
    m_messaggi.pulisci();
    Premi(s.Command1(0));
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_EQ(m_messaggi.richieste().first().testo,
              QStringLiteral("MOVIMENTO NON AGGIUNTO: ESCO LO STESSO?"));
    EXPECT_EQ(m_messaggi.richieste().first().predefinito, 1);
    EXPECT_TRUE(s.isVisible());
    m_esci = Risposta::Si;
    Premi(s.Command1(0));
    installaFineProgramma({});
    EXPECT_EQ(fine, 1);
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM BkDistinte")), QStringList({"1"}));
}

// An amount typed the Italian way comes out of the key rule as no number:
// leaving the field says so and keeps the focus there, for the expenses too.
TEST_F(ProvaInsDist, UnImportoCheNonENumeroTieneIlFuoco)
{
    InsDist &s = Apri();
    for (const int campo : {int(CampoImporto), int(CampoSpese)}) {
        Fuoco(s.txt(campo));
        Digita(QStringLiteral("2.500,50"));
        EXPECT_EQ(s.txt(campo)->text().trimmed(), QStringLiteral("2,500,50"));
        m_messaggi.pulisci();
        Tasto(Qt::Key_Return);
        EXPECT_EQ(m_messaggi.testi(), QStringList({"IMPORTO NON INDICATO"}));
        EXPECT_EQ(CampoInFuoco(), campo);
        // Corrected, it is read with the groups it is shown with.
        s.txt(campo)->setText(QStringLiteral("2500,5"));
        Tasto(Qt::Key_Tab);
        EXPECT_EQ(s.txt(campo)->text(), QStringLiteral("2.500,5"));
    }
}

// The movement's client is the one the screen shows: a popup left without
// a choice leaves no client behind the blank code, and a client chosen is
// not asked for again. A write that fails keeps every field.
TEST_F(ProvaInsDist, IlClienteEQuelloCheSiVedeENienteVaPerso)
{
    Scrivi(QStringLiteral("INSERT INTO Clienti (CliCodice, CliRagsoc, CliRagsocEstesa, "
                          "CliCategoria) VALUES (16, 'ROSSI MARIO', ' ', 'A')"));
    InsDist &s = Apri();
    Movimento(QStringLiteral("12"), QStringLiteral("1"), {QStringLiteral("P1")}, {},
              QStringLiteral("100"));
    Fuoco(s.txt(CampoNomeCliente));
    Digita(QStringLiteral("ROSSI"));
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(m_liste, 1);
    EXPECT_TRUE(s.txt(CampoCodiceCliente)->text().isEmpty());
    EXPECT_EQ(CampoInFuoco(), CampoNomeCliente);
    m_messaggi.pulisci();
    s.Aggiungi(); // as its button or key runs it, whatever the screen shows
    Attendi();
    EXPECT_EQ(m_messaggi.testi(), QStringList({"CLIENTE NON CODIFICATO"}));
    EXPECT_EQ(CampoInFuoco(), CampoCodiceCliente);
    EXPECT_EQ(Righe(QStringLiteral("SELECT COUNT(*) FROM BkDistinte")), QStringList({"0"}));

    // Two clients of one name: the one chosen stays, the field passed again.
    m_scelta = 16;
    Fuoco(s.txt(CampoNomeCliente));
    Digita(QStringLiteral("ROSSI MARIO"));
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(s.txt(CampoCodiceCliente)->text(), QStringLiteral("16"));
    Fuoco(s.txt(CampoNomeCliente));
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(m_liste, 2);

    Rifiuta("Rifiuta", "INSERT", "BkDistinte", "rifiutato");
    QStringList prima;
    for (int i = CampoGiorno; i <= CampoSpese; ++i)
        prima << s.txt(i)->text();
    m_messaggi.pulisci();
    Premi(s.Command1(1));
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_TRUE(m_messaggi.testi().first().contains(QStringLiteral("'BKDISTINTE'")));
    QStringList dopo;
    for (int i = CampoGiorno; i <= CampoSpese; ++i)
        dopo << s.txt(i)->text();
    EXPECT_EQ(dopo, prima);
    EXPECT_TRUE(s.Command1(1)->isVisible());
    TogliRifiuto("Rifiuta", "BkDistinte");
    Premi(s.Command1(1));
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCliente, dstCodP0 FROM BkDistinte")),
              QStringList({"16|P1"}));
}

TEST_F(ProvaInsDist, SiEsceSubitoColCodiceClienteInFuoco)
{
    EsceInTreModi(CampoCodiceCliente);
}

} // namespace
} // namespace sorvane::prova
