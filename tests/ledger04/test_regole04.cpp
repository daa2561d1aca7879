// The 04 ledger's rules at their edges: teams, numbering, the extraction's
// filters, the currency's cut-over, the balance rows' description.

#include "Prova04.h"

#include "frame/core/Ini.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Saldi04.h"
#include "ledger04/Squadre.h"

using namespace sorvane;
using namespace sorvane::prova;

namespace {

class Regole04 : public Prova04
{
protected:
    QStringList Estrai(const FiltroDistinte &f)
    {
        const CondizioneDistinte c = CondizioneEstrazione04(f, Oggi);
        QStringList codici;
        for (const QString &r : Righe(QueryLista04(c), c.parametri))
            codici.append(r.section(QLatin1Char('|'), 0, 0));
        return codici;
    }
    // The currency field left with that code on that date; the answers
    // given, the questions asked.
    QStringList Moneta(const QString &moneta, int giorno, Risposta risposta)
    {
        m_messaggi.pulisci();
        m_messaggi.gestore = [risposta](const Richiesta &) { return std::optional(risposta); };
        Giorno(giorno);
        m_campi.imposta(Campo04Moneta, moneta);
        m_codice = m_c4.ControllaCampo4(Campo04Moneta);
        return m_messaggi.testi();
    }

    ControlloCampi4 m_c4{m_campi};
    int m_codice = 0;
};

TEST_F(Regole04, SquadraElencaIMembriAncheSenzaScheda)
{
    EXPECT_EQ(NumeroSquadra(QStringLiteral(" 7 ")), 7);
    EXPECT_EQ(NumeroSquadra(QStringLiteral("EREDI")), 0);
    EXPECT_EQ(NumeroSquadra(QString()), 0);
    const QStringList righe = RigheSquadra(7);
    ASSERT_EQ(righe.size(), 3);
    EXPECT_EQ(righe[0], QStringLiteral("000012 ROSSI MARIO                    VIA DELL'ORTO 1 "
                                       "       MILANO                "));
    EXPECT_TRUE(righe[1].startsWith(QStringLiteral("000013 D'ANGELO \"TINA\"")));
    EXPECT_EQ(righe[2].trimmed(), QStringLiteral("000099 ") + CodiceInesistente);
    EXPECT_EQ(righe[2].size(), 83);
    EXPECT_EQ(CodiceDaRiga(righe[2]), 99);
    EXPECT_TRUE(RigheSquadra(8).isEmpty());
    QList<std::int32_t> membri;
    EXPECT_EQ(ElencoGruppo(7, &membri), QStringLiteral("12, 13, 99"));
    EXPECT_EQ(membri, (QList<std::int32_t>{12, 13, 99}));
    EXPECT_EQ(ElencoGruppo(0), QString());
    EXPECT_EQ(TitoloSquadra(QStringLiteral("7 ")),
              QStringLiteral("ELENCO CLIENTI COMPONENTI IL GRUPPO N. 7"));
}

TEST_F(Regole04, NumeroDopoIlPiuAltoSottoIlRiservato)
{
    Riga04(41, Oggi, 12, QStringLiteral("ALFA SIM"));
    EXPECT_EQ(ProssimoCodice04(m_d04), 800000001);
    Riga04(CodiceRiservato04, Oggi, 12, QStringLiteral("ALFA SIM"));
    Riga04(800000005, Oggi, 12, QStringLiteral("ALFA SIM"));
    RigaDistinta04 nuova{.dstDitta = DittaStrana, .dstData = Oggi, .dstCliente = 13,
                         .dstCausale = QStringLiteral("001"), .dstMoneta = QStringLiteral("EUR"),
                         .dstImporto = 5, .dstCodP = QStringLiteral("X'\"Y")};
    ASSERT_TRUE(AggiungiRiga04(m_d04, nuova).riuscito);
    EXPECT_EQ(nuova.dstCodice, 800000006);
    EXPECT_EQ(NumeroMostrato04(nuova.dstCodice), 6);
    EXPECT_EQ(NumeroMostrato04(41), 41);
    nuova.dstImporto = 7;
    ASSERT_TRUE(SalvaRiga04(m_d04, nuova).riuscito);
    ASSERT_TRUE(EliminaRiga04(m_d04, 41).riuscito);
    EXPECT_EQ(Ledger(), (QStringList{
        QStringLiteral("800000005|ALFA SIM|45458|12|001|EUR|100|PROD1"),
        QStringLiteral("800000006|L'ALFA \"SIM\"|45458|13|001|EUR|7|X'\"Y"),
        QStringLiteral("999999999|ALFA SIM|45458|12|001|EUR|100|PROD1")}));
}

TEST_F(Regole04, EstrazionePerPeriodoClienteEDitta)
{
    Riga04(1, Oggi - 400, 12, QStringLiteral("ALFA SIM"));
    Riga04(2, Oggi, 13, DittaStrana);
    Riga04(3, Oggi + 1, 12, QStringLiteral("ALFA SIM"));
    Riga04(800000001, Oggi - 1, 12, DittaStrana);
    // A blank to-date is today: tomorrow's row falls out.
    EXPECT_EQ(Estrai({}), (QStringList{"1", "800000001", "2"}));
    EXPECT_EQ(Estrai({.dal = QStringLiteral("1/1/2024")}), (QStringList{"800000001", "2"}));
    EXPECT_EQ(Estrai({.al = QStringLiteral("31/12/2024"), .codiceCliente = QStringLiteral("12")}),
              (QStringList{"1", "800000001", "3"}));
    EXPECT_EQ(Estrai({.ditta = QStringLiteral(" ") + DittaStrana}),
              (QStringList{"800000001", "2"}));
}

TEST_F(Regole04, MonetaDel2002ChiedeEConCorreggeSoloIlCodice)
{
    const int fine2001 = 37256;
    const QString prima = QStringLiteral("MOVIMENTO PRIMA DEL 2002 NON IN LIRE; Confermi");
    const QString dopo = QStringLiteral("MOVIMENTO DOPO IL 2001 IN LIRE; Confermi");
    EXPECT_EQ(Moneta(QStringLiteral("EUR"), fine2001, Risposta::No), QStringList{prima});
    EXPECT_EQ(m_campi.testo(Campo04Moneta), QStringLiteral("LIT"));
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, QStringLiteral("MOVIMENTO NON IN LIRE"));
    EXPECT_EQ(Moneta(QStringLiteral("LIT"), fine2001 + 1, Risposta::No), QStringList{dopo});
    EXPECT_EQ(m_campi.testo(Campo04Moneta), QStringLiteral("EUR"));
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, QStringLiteral("MOVIMENTO IN LIRE"));
    EXPECT_EQ(Moneta(QStringLiteral("LIT"), fine2001 + 1, Risposta::Si), QStringList{dopo});
    EXPECT_EQ(m_campi.testo(Campo04Moneta), QStringLiteral("LIT"));
    // A dollar with a rate is asked about as lire; without one it fails.
    EXPECT_EQ(Moneta(QStringLiteral("USD"), Oggi, Risposta::Si), QStringList{dopo});
    EXPECT_EQ(m_codice, 0);
    EXPECT_TRUE(Moneta(QStringLiteral("USD"), fine2001, Risposta::Si).isEmpty());
    EXPECT_EQ(m_codice, Campo04Moneta);
    EXPECT_TRUE(Moneta(QStringLiteral("LIT"), fine2001, Risposta::No).isEmpty());
    EXPECT_EQ(m_c4.MonetaProposta(), QStringLiteral("LIT"));
    Giorno(fine2001 + 1);
    EXPECT_EQ(m_c4.MonetaProposta(), QStringLiteral("EUR"));
}

TEST_F(Regole04, FiltroEImportoConLeLoroParole)
{
    struct Caso { int campo; const char *testo; int codice; };
    const Caso casi[] = {{Campo04GiornoDal, "", 0},   {Campo04GiornoDal, "32", 10},
                         {Campo04MeseDal, "13", 11},  {Campo04GiornoAl, "0", 13},
                         {Campo04MeseAl, "13", 14},   {Campo04Importo, "abc", 9},
                         {Campo04Importo, "0", 0},    {Campo04Prodotto, "", 0}};
    for (const Caso &c : casi) {
        m_campi.imposta(c.campo, QString::fromLatin1(c.testo));
        EXPECT_EQ(m_c4.ControllaCampo4(c.campo), c.codice) << c.campo << " " << c.testo;
    }
    m_campi.imposta(Campo04GiornoDal, QStringLiteral("31"));
    m_campi.imposta(Campo04MeseDal, QStringLiteral("2"));
    EXPECT_EQ(m_c4.ControllaCampo4(Campo04AnnoDal), 12);
    EXPECT_EQ(TestoErroreCampo4(12), QStringLiteral("DATA MOVIMENTO INIZIALE ERRATA"));
    for (int i = Campo04GiornoDal; i <= Campo04AnnoDal; ++i)
        m_campi.imposta(i, QString());
    EXPECT_EQ(m_c4.ControllaCampo4(Campo04AnnoDal), 0);
    // At CONFERMA a zero amount is no amount.
    Giorno(Oggi);
    m_campi.imposta(Campo04CodiceCliente, QStringLiteral("12"));
    m_campi.imposta(Campo04Causale, QStringLiteral("1"));
    m_campi.imposta(Campo04Moneta, QStringLiteral("EUR"));
    m_campi.imposta(Campo04Importo, QStringLiteral("0"));
    EXPECT_EQ(m_c4.ControllaMovimento4(), Campo04Importo);
    EXPECT_EQ(MostraErroreCampo4(), Campo04Importo);
    EXPECT_EQ(m_messaggi.richieste().last().titolo, QStringLiteral("KELVAR - ERRORE N. 9"));
    EXPECT_EQ(m_campi.testo(Campo04Causale), QStringLiteral("001"));
}

TEST_F(Regole04, ClienteDelFiltroPortaLaSquadra)
{
    m_c4.base.ricerca.CercaNomi = [this](const QString &nome) { return Cerca(nome); };
    m_campi.imposta(Campo04CodiceFiltro, QStringLiteral("12"));
    EXPECT_EQ(m_c4.ControllaCampo4(Campo04CodiceFiltro), 0);
    EXPECT_EQ(m_c4.Squadra, QStringLiteral("7"));
    EXPECT_TRUE(m_c4.VersoEstrai);
    EXPECT_EQ(m_campi.testo(Campo04NomeFiltro), QStringLiteral("ROSSI MARIO"));
    m_campi.imposta(Campo04CodiceFiltro, QString());
    m_campi.imposta(Campo04NomeFiltro, QStringLiteral("BIANCHI L"));
    EXPECT_EQ(m_c4.ControllaCampo4(Campo04NomeFiltro), 0);
    EXPECT_EQ(m_campi.testo(Campo04CodiceFiltro), QStringLiteral("14"));
    EXPECT_EQ(m_c4.Squadra, QStringLiteral("EREDI"));
    EXPECT_EQ(m_c4.ClienteCorrente(), 14);
    m_campi.imposta(Campo04CodiceFiltro, QStringLiteral("77"));
    EXPECT_EQ(m_c4.ControllaCampo4(Campo04CodiceFiltro), Campo04CodiceFiltro);
    EXPECT_EQ(m_c4.ClienteCorrente(), 0);
    EXPECT_EQ(m_c4.Squadra, QString());
}

TEST_F(Regole04, DescrizioneDelSaldoImparataERicordata)
{
    EXPECT_EQ(LeggiDescrizioneSaldo().sx, QStringLiteral("al 31/12/"));
    EXPECT_EQ(LeggiDescrizioneSaldo().dx, QStringLiteral(" Movimenti vari"));
    EXPECT_FALSE(ImparaDescrizione(QStringLiteral("SALDO 2001")));
    const auto d = ImparaDescrizione(QStringLiteral(" Saldo al 31/12/1999 dell'anno \"A\" "));
    ASSERT_TRUE(d);
    EXPECT_EQ(d->sx, QStringLiteral("Saldo al 31/12/"));
    EXPECT_EQ(d->dx, QStringLiteral(" dell'anno \"A\""));
    ASSERT_TRUE(ScriviDescrizioneSaldo(*d));
    EXPECT_EQ(DescrizioneAnno(LeggiDescrizioneSaldo(), 2001),
              QStringLiteral("Saldo al 31/12/2001 dell'anno \"A\""));
    // Ending in the date: no right half, and the default comes back.
    const auto fine = ImparaDescrizione(QStringLiteral("al 31/12/2000"));
    ASSERT_TRUE(fine);
    EXPECT_EQ(fine->dx, QString());
    ASSERT_TRUE(ScriviDescrizioneSaldo(*fine));
    EXPECT_EQ(DescrizioneAnno(LeggiDescrizioneSaldo(), 2001),
              QStringLiteral("al 31/12/2001 Movimenti vari"));
}

TEST_F(Regole04, ImportoDelSaldoSopravviveAlFormato)
{
    CampiInMemoria campi;
    ControlloSaldi s(campi);
    for (const QLocale &l : {QLocale(QLocale::Italian, QLocale::Italy),
                             QLocale(QLocale::English, QLocale::UnitedStates)}) {
        LocaleFissato locale(l);
        campi.imposta(CampoSaldoImporto, QStringLiteral("12500000"));
        ASSERT_EQ(s.ControllaSaldo(CampoSaldoImporto), 0);
        EXPECT_EQ(campi.testo(CampoSaldoImporto),
                  QStringLiteral("12") + l.groupSeparator() + QStringLiteral("500") + l.groupSeparator() + QStringLiteral("000"));
        ASSERT_EQ(s.ControllaSaldo(CampoSaldoImporto), 0);
        EXPECT_EQ(s.ImportoSaldo, 12500000.0);
    }
    campi.imposta(CampoSaldoAnno, QStringLiteral("2001"));
    ASSERT_EQ(s.ControllaSaldo(CampoSaldoAnno), 0);
    EXPECT_EQ(s.DataSaldo, 36892);
    EXPECT_EQ(campi.testo(CampoSaldoDescrizione), QStringLiteral("al 31/12/2001 Movimenti vari"));
    campi.imposta(CampoSaldoAnno, QStringLiteral(" "));
    ASSERT_EQ(s.ControllaSaldo(CampoSaldoAnno), 0);
    EXPECT_EQ(s.DataSaldo, 36892);
    campi.imposta(CampoSaldoCodice, QStringLiteral("13"));
    ASSERT_EQ(s.ControllaSaldo(CampoSaldoCodice), 0);
    EXPECT_EQ(campi.testo(CampoSaldoNome), QStringLiteral("D'ANGELO \"TINA\""));
    campi.imposta(CampoSaldoCodice, QStringLiteral("77"));
    EXPECT_EQ(s.ControllaSaldo(CampoSaldoCodice), CampoSaldoCodice);
    EXPECT_EQ(TestoErroreSaldo(CampoSaldoCodice), QStringLiteral("CLIENTE NON CODIFICATO"));
}

} // namespace
