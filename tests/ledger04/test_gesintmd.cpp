// The average-interest screen driven through its widgets on real files: a
// client's session from the extraction with its opening balance to the
// print, the checks of the balances' fields, a team's extraction and its
// popup.

#include "../distinte/ProvaSchermi.h"
#include "StampeRegistrate.h"

#include "frame/core/Giorni.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"
#include "ledger04/EleCli.h"
#include "ledger04/GesIntMd.h"
#include "ledger04/ModelloDistinte04.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

int G(int giorno, int mese, int anno) { return GiornoDaData(QDate(anno, mese, giorno)); }

const QString Strana = QStringLiteral("L'ALFA \"SIM\"");

class GesIntMdSchermo : public ProvaSchermo<GesIntMd>
{
protected:
    void SetUp() override
    {
        ProvaSchermo<GesIntMd>::SetUp();
        Scrivi(QStringLiteral("UPDATE Clienti SET CliRagsocEstesa = '7' WHERE CliCodice IN (12, 13)"));
        for (int membro : {12, 13, 99})
            Scrivi(QStringLiteral("INSERT INTO Squadre VALUES (7, ?)"), {membro});
        Scrivi(QStringLiteral("INSERT INTO Societa (SocNome) VALUES (?)"), {Strana});
        sessione().ModoProva = true;
        m_stampe.emplace(QStringLiteral(MODULI_PREDEFINITI),
                         m_cartella.scrivi(QStringLiteral("SORVANE.ini"), "[PARAMETRI]\n"));
    }
    void TearDown() override
    {
        m_stampe.reset();
        installaGestoreModale({});
        ProvaSchermo<GesIntMd>::TearDown();
    }
    static void Riga04(int codice, int giorno, int cliente, const QString &moneta, double importo,
                       const QString &ditta = QStringLiteral("ALFA SIM"),
                       const QString &causale = QStringLiteral("001"))
    {
        Scrivi(QStringLiteral("INSERT INTO Distinte04 VALUES (?, ?, ?, ?, ?, ?, ?, 'P')"),
               {codice, ditta, giorno, cliente, causale, moneta, importo});
    }
    // A field typed and left for the next one.
    void Scrivi2(int campo, const QString &testo)
    {
        Fuoco(m_schermo->txt(campo));
        m_schermo->txt(campo)->setText(testo);
        Fuoco(m_schermo->txt(campo == CampoIMNomeCliente ? Campo04GiornoDal : campo + 1));
    }
    QStringList Codici() const
    {
        QStringList n;
        for (int r = 0; r < m_schermo->Data1()->rowCount(); ++r)
            n << QString::number(m_schermo->Data1()->Codice(r));
        return n;
    }
    static QStringList Saldo()
    {
        return Righe(QStringLiteral("SELECT dstDitta, dstData, dstCliente, CliRagsoc, dstCausale,"
                                    " dstMoneta, CAST(dstImporto AS INTEGER), Descrizione, Segno"
                                    " FROM WInterMedi"
                                    " WHERE dstCodice = 999999999"));
    }
    bool InFuoco(int campo) const { return QApplication::focusWidget() == m_schermo->txt(campo); }

    std::optional<StampeRegistrate> m_stampe;
};

TEST_F(GesIntMdSchermo, SessioneDiUnCliente)
{
    Riga04(5, G(10, 3, 2001), 14, QStringLiteral("LIT"), 1000000);
    Riga04(6, G(5, 2, 2002), 14, QStringLiteral("EUR"), 500, QStringLiteral("ALFA SIM"),
           QStringLiteral("ABC"));
    Riga04(7, G(6, 2, 2002), 13, QStringLiteral("EUR"), 100);
    Riga04(8, G(7, 2, 2002), 14, QStringLiteral("EUR"), 0);
    Riga04(9, G(8, 2, 2002), 14, QStringLiteral("EUR"), 300, Strana);
    GesIntMd &s = Apri();
    EXPECT_TRUE(InFuoco(Campo04GiornoDal));

    Scrivi2(CampoIMCodiceCliente, QStringLiteral("14"));
    EXPECT_EQ(s.txt(CampoIMNomeCliente)->text(), QStringLiteral("BIANCHI LUCA"));
    Scrivi2(Campo04GiornoDal, QStringLiteral("1"));
    Scrivi2(Campo04MeseDal, QStringLiteral("1"));
    Scrivi2(Campo04AnnoDal, QStringLiteral("2001"));
    // A blank currency takes the one of the date beside it.
    Fuoco(s.txt(CampoIMMonetaIniziale));
    EXPECT_EQ(s.txt(CampoIMMonetaIniziale)->text(), QStringLiteral("LIT"));
    Scrivi2(CampoIMSaldoIniziale, QStringLiteral("-2000000"));
    Premi(s.Command1(1));
    EXPECT_EQ(Codici(), (QStringList{"999999999", "5", "6", "9"}));
    EXPECT_EQ(Saldo().join(u'/').toStdString(),
              QStringLiteral(" |%1|14|BIANCHI LUCA|900|LIT|-2000000|Saldo iniziale|-")
                  .arg(G(1, 1, 2001))
                  .toStdString());
    EXPECT_TRUE(s.Command1(2)->isVisible());
    EXPECT_TRUE(s.Command1(3)->isVisible());

    // The firm with a quote selects its own rows.
    s.cmbSoc(1)->setCurrentIndex(s.cmbSoc(1)->findText(Strana));
    Premi(s.Command1(1));
    EXPECT_EQ(Codici(), (QStringList{"999999999", "9"}));
    s.cmbSoc(1)->setCurrentIndex(0);
    Premi(s.Command1(1));

    // The row follows the from date; a changed filter hides the print.
    Scrivi2(Campo04GiornoDal, QStringLiteral("2"));
    EXPECT_EQ(Saldo().value(0).section(u'|', 1, 1), QString::number(G(2, 1, 2001)));
    EXPECT_FALSE(s.Command1(2)->isVisible());
    // A blank from date: the earliest movement's.
    for (int campo : {Campo04GiornoDal, Campo04MeseDal, Campo04AnnoDal})
        Scrivi2(campo, QString());
    Premi(s.Command1(1));
    EXPECT_EQ(Saldo().value(0).section(u'|', 1, 1), QString::number(G(10, 3, 2001)));
    EXPECT_TRUE(s.Command1(2)->isVisible());

    // Wrong balance fields stop, each with its words.
    m_messaggi.pulisci();
    Scrivi2(CampoIMMonetaFinale, QStringLiteral("XYZ"));
    EXPECT_TRUE(InFuoco(CampoIMMonetaFinale));
    s.txt(CampoIMMonetaFinale)->setText(QStringLiteral("EUR"));
    Scrivi2(CampoIMSaldoFinale, QStringLiteral("2,500,50"));
    EXPECT_TRUE(InFuoco(CampoIMSaldoFinale));
    ASSERT_EQ(m_messaggi.richieste().size(), 2);
    EXPECT_EQ(m_messaggi.testi(), (QStringList{"MONETA NON CODIFICATA", "IMPORTO NON INDICATO"}));
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, QStringLiteral("KELVAR - ERRORE N. 18"));
    s.txt(CampoIMSaldoFinale)->setText(QStringLiteral("3000"));

    // A movement added from the screen joins the list; deleted, it leaves.
    Premi(s.Command1(3));
    EXPECT_EQ(s.Label2()->text(), QStringLiteral("INSERIMENTO MOVIMENTO N. 1"));
    EXPECT_EQ(s.txt(Campo04CodiceCliente)->text(), QStringLiteral("14"));
    s.txt(Campo04Causale)->setText(QStringLiteral("001"));
    s.txt(Campo04Moneta)->setText(QStringLiteral("EUR"));
    s.txt(Campo04Importo)->setText(QStringLiteral("250"));
    Premi(s.cmdMOD());
    EXPECT_TRUE(s.pctLista()->isVisible());
    EXPECT_TRUE(Codici().contains(QStringLiteral("800000001")));
    DoppioClick(s.Data1()->index(int(Codici().indexOf(QStringLiteral("800000001"))), 2));
    m_messaggi.gestore = [](const Richiesta &) { return std::optional(Risposta::Si); };
    Premi(s.cmdDEL());
    EXPECT_FALSE(Codici().contains(QStringLiteral("800000001")));
    EXPECT_EQ(Valore(QStringLiteral("SELECT COUNT(*) FROM Distinte04")).toInt(), 5);
    // The balance row lives in the list alone: nothing of the ledger opens.
    DoppioClick(s.Data1()->index(int(Codici().indexOf(QStringLiteral("999999999"))), 2));
    EXPECT_TRUE(s.pctLista()->isVisible());

    // The print stages a row per movement of the list, the balance's too.
    m_messaggi.pulisci();
    Premi(s.Command1(2));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    EXPECT_EQ(m_stampe->titoli, QStringList{"Modulo:  'InterMed'"});
    EXPECT_EQ(Valore(QStringLiteral("SELECT COUNT(*) FROM PrtCorpo")).toInt(), 4);
    EXPECT_EQ(Righe(QStringLiteral("SELECT TCampo1, TCampo2, TCampo3 FROM PrtTesta")),
              QStringList{QStringLiteral("14|BIANCHI LUCA|10/03/2001")});

    // An amount of 0 takes the row away.
    Scrivi2(CampoIMSaldoIniziale, QStringLiteral("0"));
    EXPECT_TRUE(Saldo().isEmpty());
    EXPECT_EQ(Codici(), (QStringList{"5", "6", "9"}));
}

TEST_F(GesIntMdSchermo, SquadraPerClienteEData)
{
    Riga04(5, G(10, 3, 2024), 12, QStringLiteral("EUR"), 100);
    Riga04(6, G(1, 2, 2024), 13, QStringLiteral("EUR"), 200);
    Riga04(7, G(1, 1, 2024), 12, QStringLiteral("EUR"), 300);
    Riga04(8, G(1, 1, 2024), 14, QStringLiteral("EUR"), 400);
    GesIntMd &s = Apri();
    Scrivi2(CampoIMCodiceCliente, QStringLiteral("12"));
    Premi(s.Command1(1));
    EXPECT_EQ(Codici(), (QStringList{"7", "5", "6"}));
    Scrivi2(CampoIMSaldoFinale, QStringLiteral("1000"));
    Premi(s.Command1(2));
    EXPECT_EQ(m_stampe->titoli, QStringList{"Modulo:  'InterMed1'"});

    // Another member through the popup: the same team, extracted again.
    installaGestoreModale([](QDialog &d) {
        auto &e = static_cast<EleCli &>(d);
        e.Lista1()->setCurrentRow(1);
        e.Cmde(0)->click();
        return int(e.result());
    });
    s.ClickSquadra();
    Attendi();
    EXPECT_EQ(s.txt(CampoIMCodiceCliente)->text(), QStringLiteral("13"));
    EXPECT_EQ(s.lbTeam()->text(), QStringLiteral("7"));
    EXPECT_EQ(s.Stato().ClienteEstratto, 13);
    EXPECT_EQ(Codici(), (QStringList{"7", "5", "6"}));
}

TEST_F(GesIntMdSchermo, SiEsceSubitoColCodiceClienteInFuoco)
{
    EsceInTreModi(CampoIMCodiceCliente);
}

} // namespace
