// The 04 ledger's screens driven through their widgets on real files: the
// extraction by each filter, a row added, changed, deleted; the currency's
// question; the team popup; the balance rows' round.

#include "Prova04.h"
#include "../distinte/ProvaSchermi.h"

#include "frame/ui/Modale.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/EleCli.h"
#include "ledger04/GesDist4.h"
#include "ledger04/GesIntMd.h"
#include "ledger04/InsSald4.h"
#include "ledger04/ModelloDistinte04.h"
#include "lookup/ChkCliC.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

template <class S>
class Schermo04 : public ProvaSchermo<S>
{
protected:
    void SetUp() override
    {
        ProvaSchermo<S>::SetUp();
        impostazioni().IniLocale = this->m_cartella.file(QStringLiteral("sorvane.ini"));
        Prova04Dati();
        sessione().ModoProva = true;
    }
    void TearDown() override
    {
        installaGestoreModale({});
        ProvaSchermo<S>::TearDown();
    }
    // The fixture's ledger rows and team, as the rules' tests have them.
    void Prova04Dati()
    {
        ProvaAccesso::Scrivi(QStringLiteral("UPDATE Clienti SET CliRagsocEstesa = '7' WHERE CliCodice IN (12, 13)"));
        ProvaAccesso::Scrivi(QStringLiteral("UPDATE Clienti SET CliRagsoc = ? WHERE CliCodice = 13"),
               {QStringLiteral("D'ANGELO \"TINA\"")});
        for (int membro : {12, 13, 99})
            ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Squadre VALUES (7, ?)"), {membro});
        for (const char *c : {"007", "008"})
            ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO DistCausali VALUES (?, 'SALDO', '+')"),
                   {QString::fromLatin1(c)});
        ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Societa (SocNome) VALUES (?)"), {Strana()});
    }
    static QString Strana() { return QStringLiteral("L'ALFA \"SIM\""); }
    static void Riga(int codice, int giorno, int cliente, const QString &ditta)
    {
        ProvaAccesso::Scrivi(QStringLiteral("INSERT INTO Distinte04 VALUES (?, ?, ?, ?, '001', 'EUR', 100, 'P')"),
               {codice, ditta, giorno, cliente});
    }
    QStringList Numeri() const
    {
        QStringList n;
        for (int r = 0; r < this->m_schermo->Data1()->rowCount(); ++r)
            n << this->m_schermo->Data1()->index(r, 0).data().toString();
        return n;
    }
    void Scrivi2(int campo, const QString &testo)
    {
        QLineEdit *t = this->m_schermo->txt(campo);
        this->Fuoco(t);
        t->setText(testo);
    }
    // GesDist4 with a row in its list and the form of a new movement up.
    S &ApriNuovo()
    {
        Riga(5, this->Oggi - 3, 12, QStringLiteral("ALFA SIM"));
        S &s = this->Apri();
        this->Premi(s.Command1(1));
        this->Premi(s.Command1(3));
        return s;
    }
    // Typed the Italian way, an amount comes out of the key rule as no number.
    void ImportoStorto(int campo)
    {
        this->Fuoco(this->m_schermo->txt(campo));
        QTest::keyClicks(this->m_schermo->txt(campo), QStringLiteral("2.500,50"));
        this->m_messaggi.pulisci();
    }
    bool InFuoco(int campo) const
    {
        return QApplication::focusWidget() == this->m_schermo->txt(campo);
    }
};

using GesDist4Schermo = Schermo04<GesDist4>;
using InsSald4Schermo = Schermo04<InsSald4>;

TEST_F(GesDist4Schermo, EstraeEAggiungeCambiaCancella)
{
    Riga(5, Oggi - 3, 12, QStringLiteral("ALFA SIM"));
    Riga(6, Oggi - 2, 13, Strana());
    Riga(7, Oggi + 5, 12, QStringLiteral("ALFA SIM"));
    GesDist4 &s = Apri();
    Premi(s.Command1(1));
    EXPECT_EQ(Numeri(), (QStringList{"5", "6"}));
    s.cmbSoc(1)->setCurrentIndex(s.cmbSoc(1)->findText(Strana()));
    Premi(s.Command1(1));
    EXPECT_EQ(Numeri(), QStringList{"6"});
    s.cmbSoc(1)->setCurrentIndex(0);
    Scrivi2(Campo04CodiceFiltro, QStringLiteral("12"));
    Fuoco(s.txt(Campo04NomeFiltro));
    EXPECT_EQ(s.lbTeam()->text(), QStringLiteral("7"));
    Scrivi2(Campo04AnnoAl, QStringLiteral("2025"));
    Premi(s.Command1(1));
    EXPECT_EQ(Numeri(), (QStringList{"5", "7"}));

    // Only slip numbers: the first typed row is number 1.
    ASSERT_TRUE(s.Command1(3)->isVisible());
    Premi(s.Command1(3));
    EXPECT_EQ(s.Label2()->text(), QStringLiteral("INSERIMENTO MOVIMENTO N. 1"));
    EXPECT_EQ(s.txt(Campo04CodiceCliente)->text(), QStringLiteral("12"));
    s.cmbSoc(0)->setCurrentIndex(s.cmbSoc(0)->findText(Strana()));
    s.txt(Campo04Causale)->setText(QStringLiteral("1"));
    s.txt(Campo04Prodotto)->setText(QStringLiteral("FONDO D'ORO \"A\""));
    s.txt(Campo04Moneta)->setText(QStringLiteral("EUR"));
    s.txt(Campo04Importo)->setText(QStringLiteral("250"));
    Premi(s.cmdMOD());
    EXPECT_TRUE(s.pctLista()->isVisible());
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstDitta, dstCliente, dstCausale, dstCodP,"
                                   " dstImporto FROM Distinte04 WHERE dstCodice > 800000000")),
              QStringList{QStringLiteral("800000001|L'ALFA \"SIM\"|12|001|FONDO D'ORO \"A\"|250")});
    EXPECT_EQ(Numeri(), (QStringList{"5", "1", "7"}));

    // Changed, then deleted with No and Yes.
    DoppioClick(s.Data1()->index(1, Lista04Nominativo));
    EXPECT_EQ(s.Label2()->text(), QStringLiteral("MODIFICA MOVIMENTO N. 1"));
    EXPECT_EQ(s.txt(Campo04Prodotto)->text(), QStringLiteral("FONDO D'ORO \"A\""));
    s.txt(Campo04Importo)->setText(QStringLiteral("300"));
    Premi(s.cmdMOD());
    EXPECT_EQ(Valore(QStringLiteral("SELECT dstImporto FROM Distinte04 WHERE dstCodice = 800000001"))
                  .toDouble(), 300.0);
    DoppioClick(s.Data1()->index(1, Lista04Nominativo));
    m_messaggi.pulisci();
    m_messaggi.gestore = [](const Richiesta &) { return std::optional(Risposta::No); };
    Premi(s.cmdDEL());
    EXPECT_EQ(m_messaggi.testi(), QStringList{"CONFERMI LA CANCELLAZIONE DEL MOVIMENTO "});
    EXPECT_EQ(Valore(QStringLiteral("SELECT COUNT(*) FROM Distinte04")).toInt(), 4);
    m_messaggi.gestore = [](const Richiesta &) { return std::optional(Risposta::Si); };
    Premi(s.cmdDEL());
    EXPECT_EQ(Valore(QStringLiteral("SELECT COUNT(*) FROM Distinte04")).toInt(), 3);
    EXPECT_EQ(Numeri(), (QStringList{"5", "7"}));
}

TEST_F(GesDist4Schermo, LireRifiutateScriveIlCodiceSenzaConvertire)
{
    GesDist4 &s = ApriNuovo();
    s.txt(Campo04Giorno)->setText(QStringLiteral("10"));
    s.txt(Campo04Mese)->setText(QStringLiteral("5"));
    s.txt(Campo04Anno)->setText(QStringLiteral("2001"));
    s.txt(Campo04CodiceCliente)->setText(QStringLiteral("13"));
    s.txt(Campo04Causale)->setText(QStringLiteral("001"));
    s.txt(Campo04Importo)->setText(QStringLiteral("1000"));
    s.txt(Campo04Moneta)->setText(QStringLiteral("EUR"));
    m_messaggi.pulisci();
    m_messaggi.gestore = [](const Richiesta &r) {
        return std::optional(r.titolo == QLatin1String("MOVIMENTO NON IN LIRE") ? Risposta::No
                                                                                : Risposta::Si);
    };
    Premi(s.cmdMOD());
    EXPECT_TRUE(m_messaggi.testi().contains(
        QStringLiteral("MOVIMENTO PRIMA DEL 2002 NON IN LIRE; Confermi")));
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstMoneta, dstImporto, dstCliente FROM Distinte04"
                                   " WHERE dstCodice = 800000001")),
              QStringList{QStringLiteral("LIT|1000|13")});
}

TEST_F(GesDist4Schermo, SquadraPortaAUnAltroMembro)
{
    Riga(5, Oggi - 3, 12, QStringLiteral("ALFA SIM"));
    Riga(6, Oggi - 2, 13, Strana());
    GesDist4 &s = Apri();
    Scrivi2(Campo04CodiceFiltro, QStringLiteral("12"));
    Fuoco(s.txt(Campo04NomeFiltro));
    Premi(s.Command1(1));
    EXPECT_EQ(Numeri(), QStringList{"5"});
    QStringList viste;
    QString titolo;
    installaGestoreModale([&](QDialog &d) {
        auto &e = static_cast<EleCli &>(d);
        titolo = e.windowTitle();
        for (int i = 0; i < e.Lista1()->count(); ++i)
            viste << e.Lista1()->item(i)->text().simplified();
        e.Lista1()->setCurrentRow(1);
        e.Cmde(0)->click();
        return int(e.result());
    });
    s.ClickSquadra();
    Attendi();
    EXPECT_EQ(titolo, QStringLiteral("ELENCO CLIENTI COMPONENTI IL GRUPPO N. 7"));
    EXPECT_EQ(viste, (QStringList{"000012 ROSSI MARIO", "000013 D'ANGELO \"TINA\"",
                                  "000099 *** CODICE INESISTENTE ***"}));
    EXPECT_EQ(s.txt(Campo04CodiceFiltro)->text(), QStringLiteral("13"));
    EXPECT_EQ(s.txt(Campo04NomeFiltro)->text(), QStringLiteral("D'ANGELO \"TINA\""));
    EXPECT_EQ(Numeri(), QStringList{"6"});
}

// An amount that is no number keeps the focus. CONFERMA takes the client the
// screen shows: a blank code stands only for a name that names one client.
TEST_F(GesDist4Schermo, ImportoEClienteDelMovimento)
{
    GesDist4 &s = ApriNuovo();
    s.txt(Campo04Causale)->setText(QStringLiteral("001"));
    s.txt(Campo04Moneta)->setText(QStringLiteral("EUR"));
    ImportoStorto(Campo04Importo);
    Tasto(Qt::Key_Tab);
    EXPECT_EQ(m_messaggi.testi(), QStringList{"IMPORTO NON INDICATO"});
    EXPECT_TRUE(InFuoco(Campo04Importo));
    s.txt(Campo04Importo)->setText(QStringLiteral("250"));
    s.txt(Campo04NomeCliente)->setText(QStringLiteral("NESSUNO"));
    m_messaggi.pulisci();
    Premi(s.cmdMOD());
    EXPECT_EQ(m_messaggi.testi(), QStringList{"CLIENTE NON CODIFICATO"});
    s.txt(Campo04NomeCliente)->setText(QStringLiteral("ROSSI MARIO"));
    Premi(s.cmdMOD());
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCliente, dstImporto FROM Distinte04"
                                   " WHERE dstCodice > 800000000")),
              QStringList{"12|250"});
}

TEST_F(GesDist4Schermo, LeColonneApronoLargheQuantoIlLoroContenuto)
{
    ProvaAccesso::Scrivi(QStringLiteral("UPDATE Clienti SET CliRagsoc = ? WHERE CliCodice = 12"),
                         {QStringLiteral("SOCIETA' IMMOBILIARE DEL LAGO DI COMO SRL")});
    Riga(5, Oggi - 3, 12, QStringLiteral("ALFA SIM"));
    Riga(800000001, Oggi - 2, 12, QStringLiteral("ALFA SIM"));
    ProvaAccesso::Scrivi(QStringLiteral("UPDATE Distinte04 SET dstCodP = ? WHERE dstCodice = ?"),
                         {QStringLiteral("al 31/12/2001 Movimenti vari del conto titoli"),
                          800000001});
    GesDist4 &s = Apri();
    Premi(s.Command1(1));
    ASSERT_EQ(s.Data1()->rowCount(), 2);
    // What the cells' text needs, by the grid's own measure.
    QAbstractItemView *g = s.TDBGrid1();
    for (int colonna = 0; colonna < ColonneLista04; ++colonna)
        EXPECT_GE(s.TDBGrid1()->columnWidth(colonna), g->sizeHintForColumn(colonna)) << colonna;
    // The spare width is left blank, not given to the last column.
    EXPECT_LT(s.TDBGrid1()->columnWidth(Lista04Importo),
              s.TDBGrid1()->columnWidth(Lista04Nominativo));
}

// F4 on each client code: the full client search, from the name when the
// code is a number; the client chosen lands in code and name and the focus
// moves on, the code checked as it goes (the filter's shows the team).
TEST_F(GesDist4Schermo, F4SuOgniCodiceClienteLaRicercaCompleta)
{
    QStringList cercati;
    installaGestoreModale([&](QDialog &d) {
        auto &ricerca = dynamic_cast<ChkCliC &>(d);
        cercati << ricerca.Btxt(BoxNome)->text();
        ricerca.Seleziona(0);
        return ricerca.result();
    });
    const auto f4 = [&](QLineEdit *codice, QLineEdit *nome, QWidget *dopo) {
        SCOPED_TRACE(qPrintable(codice->window()->objectName() + codice->objectName()));
        Fuoco(codice);
        codice->setText(QStringLiteral("12"));
        nome->setText(QStringLiteral("D'ANGELO"));
        Tasto(Qt::Key_F4);
        EXPECT_EQ(codice->text(), QStringLiteral("13"));
        EXPECT_EQ(nome->text(), QStringLiteral("D'ANGELO \"TINA\""));
        EXPECT_EQ(QApplication::focusWidget(), dopo);
    };
    GesDist4 &s = ApriNuovo();
    f4(s.txt(Campo04CodiceCliente), s.txt(Campo04NomeCliente), s.txt(Campo04Causale));
    Premi(s.cndEND());
    f4(s.txt(Campo04CodiceFiltro), s.txt(Campo04NomeFiltro), s.Command1(1));
    EXPECT_EQ(s.lbTeam()->text(), QStringLiteral("7"));
    s.close();
    {
        GesIntMd medi;
        MostraAttiva(&medi);
        f4(medi.txt(CampoIMCodiceCliente), medi.txt(CampoIMNomeCliente), medi.Command1(1));
        medi.close();
    }
    InsSald4 saldi;
    MostraAttiva(&saldi);
    f4(saldi.txt(CampoSaldoCodice), saldi.txt(CampoSaldoNome), saldi.txt(CampoSaldoAnno));
    saldi.close();
    EXPECT_EQ(cercati, QStringList(4, QStringLiteral("D'ANGELO")));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join(" | "));
}

TEST_F(GesDist4Schermo, SiEsceSubitoColCodiceClienteInFuoco)
{
    EsceInTreModi(Campo04CodiceFiltro);
}

TEST_F(InsSald4Schermo, ImportoEClienteDelSaldo)
{
    InsSald4 &s = Apri();
    Scrivi2(CampoSaldoAnno, QStringLiteral("2001"));
    ImportoStorto(CampoSaldoImporto);
    Fuoco(s.txt(CampoSaldoDescrizione));
    EXPECT_EQ(m_messaggi.testi(), QStringList{"IMPORTO NON INDICATO"});
    EXPECT_TRUE(InFuoco(CampoSaldoImporto));
    // Corrected and confirmed at once: the amount is the one on view.
    s.txt(CampoSaldoImporto)->setText(QStringLiteral("5000"));
    s.txt(CampoSaldoNome)->setText(QStringLiteral("NESSUNO"));
    m_messaggi.pulisci();
    Premi(s.Command1(1));
    EXPECT_EQ(m_messaggi.testi(), QStringList{"CLIENTE NON CODIFICATO"});
    s.txt(CampoSaldoNome)->setText(QStringLiteral("ROSSI MARIO"));
    Premi(s.Command1(1));
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCliente, CAST(dstImporto AS INTEGER)"
                                   " FROM Distinte04")),
              QStringList{"12|5000"});
}

TEST_F(InsSald4Schermo, SiEsceSubitoColCodiceClienteInFuoco)
{
    EsceInTreModi(CampoSaldoCodice);
}

TEST_F(InsSald4Schermo, GiroCompletoPerDueClienti)
{
    // A pattern learned from a description that ends in the date: the
    // right half is empty, and the next opening brings the default back.
    {
        InsSald4 &s = Apri();
        s.txt(CampoSaldoDescrizione)->setText(QStringLiteral("Saldo al 31/12/1999"));
        Premi(s.Command2());
        s.close();
    }
    InsSald4 &s = Apri();
    s.cmbSoc()->setCurrentIndex(s.cmbSoc()->findText(Strana()));
    for (const char *cliente : {"12", "13"}) {
        Scrivi2(CampoSaldoCodice, QString::fromLatin1(cliente));
        Scrivi2(CampoSaldoAnno, QStringLiteral("2001"));
        Fuoco(s.txt(CampoSaldoImporto));
        EXPECT_EQ(s.txt(CampoSaldoDescrizione)->text(),
                  QStringLiteral("Saldo al 31/12/2001 Movimenti vari"));
        for (const char *importo : {"5000000", "1500000"}) {
            Scrivi2(CampoSaldoImporto, QString::fromLatin1(importo));
            Fuoco(s.txt(CampoSaldoDescrizione));
            Premi(s.Command1(1));
        }
        EXPECT_TRUE(s.Option1(0)->isChecked());
    }
    EXPECT_EQ(Righe(QStringLiteral("SELECT dstCodice, dstDitta, dstData, dstCliente, dstCausale,"
                                   " dstMoneta, CAST(dstImporto AS INTEGER), dstCodP FROM Distinte04"
                                   " ORDER BY dstCodice")),
              (QStringList{
                  "800000001|L'ALFA \"SIM\"|36892|12|007|LIT|5000000|Saldo al 31/12/2001 Movimenti vari",
                  "800000002|L'ALFA \"SIM\"|36892|12|008|LIT|1500000|Saldo al 31/12/2001 Movimenti vari",
                  "800000003|L'ALFA \"SIM\"|36892|13|007|LIT|5000000|Saldo al 31/12/2001 Movimenti vari",
                  "800000004|L'ALFA \"SIM\"|36892|13|008|LIT|1500000|Saldo al 31/12/2001 Movimenti vari"}));
    m_messaggi.pulisci();
    s.txt(CampoSaldoDescrizione)->setText(QStringLiteral("SALDO"));
    Premi(s.Command2());
    EXPECT_EQ(m_messaggi.testi(),
              QStringList{"IMPOSTARE LA DESCRIZIONE CON LA DATA '31/12/XXXX'"});
}

} // namespace
