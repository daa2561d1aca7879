// The average-interest print on real files: the extraction's rows written
// into WInterMedi as the screen leaves them, the print run, PrtTesta and
// PrtCorpo read back field by field; the two modules on paper.

#include "Prova04.h"
#include "StampeRegistrate.h"

#include "frame/core/Formato.h"
#include "frame/core/Ini.h"
#include "ledger04/Interessi.h"
#include "ledger04/Tir.h"
#include "reports/CaricaDati.h"

#include <QRegularExpression>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

int G(int giorno, int mese, int anno) { return GiornoDaData(QDate(anno, mese, giorno)); }

class Interessi : public Prova04
{
protected:
    void SetUp() override
    {
        Prova04::SetUp();
        m_stampe.emplace(QStringLiteral(MODULI_PREDEFINITI),
                         m_cartella.scrivi(QStringLiteral("SORVANE.ini"), "[PARAMETRI]\n"));
    }
    void TearDown() override
    {
        m_stampe.reset();
        Prova04::TearDown();
    }

    // A row of the extraction, as the screen copies it from the ledger.
    static void Riga(std::int32_t codice, int giorno, int cliente, const QString &moneta,
                     double importo, const QString &segno = QStringLiteral("+"))
    {
        Scrivi(QStringLiteral("INSERT INTO WInterMedi (CliRagsoc, dstCodice, dstDitta, dstData,"
                              " dstCliente, dstCausale, dstMoneta, dstImporto, dstCodP,"
                              " Descrizione, Segno) VALUES (?, ?, 'ALFA SIM', ?, ?, ?, ?, ?, 'P',"
                              " 'X', ?)"),
               {cliente == 12 ? QStringLiteral("ROSSI MARIO") : QStringLiteral("ROSSI MARTA"),
                codice, giorno, cliente, segno == "+" ? "001" : "ABC", moneta, importo, segno});
    }
    // The screen's fields: the client, the period typed, the closing balance.
    static CampiInteressi Campi(int dal, int al, const QString &saldo,
                                const QString &squadra = QString())
    {
        const QDate d = DataDaGiorno(dal), a = DataDaGiorno(al);
        const auto n = [](int v) { return QString::number(v); };
        return {.cliente = QStringLiteral("12"), .nomeCliente = QStringLiteral("ROSSI MARIO"),
                .dalGiorno = n(d.day()), .dalMese = n(d.month()), .dalAnno = n(d.year()),
                .alGiorno = n(a.day()), .alMese = n(a.month()), .alAnno = n(a.year()),
                .monetaIniziale = QStringLiteral("EUR"), .saldoIniziale = QString(),
                .monetaFinale = QStringLiteral("EUR"), .saldoFinale = saldo,
                .ditta = QStringLiteral("ALFA SIM"), .squadra = squadra, .oggi = Oggi};
    }
    bool Stampa(const CampiInteressi &c)
    {
        m_stato = StatoInteressi();
        return StampaInteressi(c, m_stato);
    }
    static DatiReport Staged()
    {
        DatiReport d;
        EXPECT_TRUE(CaricaDatiReport(DbLavoro(), d));
        return d;
    }
    // Named fields of a staged row, as text joined by "|".
    static std::string Campi(const QVariantMap &r, std::initializer_list<const char *> nomi)
    {
        QStringList v;
        for (const char *n : nomi) {
            const QVariant x = r.value(QString::fromLatin1(n));
            v.append(x.typeId() == QMetaType::Double ? QString::number(x.toDouble(), 'g', 12)
                                                     : x.toString());
        }
        return v.join(u'|').toStdString();
    }
    // The rate the search gives for a series written out by hand.
    static QString TassoDi(std::initializer_list<std::pair<double, double>> flussi,
                           std::int16_t segno)
    {
        SerieTir s;
        for (const auto &[importo, giorni] : flussi)
            s.Aggiungi(importo, giorni);
        s.SegnoTir = segno;
        return Format(CalcolaTirX(s), QStringLiteral("#0.000")) + QLatin1Char('%');
    }

    // The staged rows printed on paper by the installed module, as text.
    QString SuCarta(const QString &modulo)
    {
        return PagineStampate(QStringLiteral(MODULI_PREDEFINITI), modulo, m_cartella.percorso())
            .join(u'\f');
    }
    static void Contiene(const QString &testo, const QStringList &attesi)
    {
        for (const QString &a : attesi)
            EXPECT_TRUE(testo.contains(QRegularExpression(a))) << qPrintable(a);
    }

    LocaleFissato m_locale{Italiano()};
    StatoInteressi m_stato;
    std::optional<StampeRegistrate> m_stampe;
};

} // namespace

// One client across the cut-over: the opening row and a payment in lire,
// a withdrawal in euro on the first day of the euro. Every field of the
// body and the head.
TEST_F(Interessi, UnClienteTraLireEdEuro)
{
    Riga(CodiceRiservato04, G(1, 7, 2001), 12, QStringLiteral("LIT"), 10000000);
    Riga(1, G(31, 12, 2001), 12, QStringLiteral("LIT"), 1000000);
    Riga(2, G(1, 1, 2002), 12, QStringLiteral("EUR"), 500, QStringLiteral("-"));
    Scrivi(QStringLiteral("INSERT INTO Societa VALUES ('ALFA SIM', 'VIA RO 1', '20100',"
                          " 'MILANO', 'MI') ON CONFLICT (SocNome) DO UPDATE SET SocCap = '20100',"
                          " SocIndirizzo = 'VIA RO 1', SocLocalita = 'MILANO',"
                          " SocProvincia = 'MI'"));
    ScriviIni(impostazioni().IniLocale, "PARAMETRI", "PrintGiacMedia", "1");
    ASSERT_TRUE(Stampa(Campi(G(1, 7, 2001), G(30, 6, 2002), QStringLiteral("6000"))));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join(u'\n'));
    EXPECT_EQ(m_stampe->titoli, QStringList{"Modulo:  'InterMed'"});

    const DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 3);
    const auto corpo = {"CCampo1", "CCampo2", "CNumero20", "CCampo3", "CCampo4", "CNumero1",
                        "CNumero2", "CNumero11", "CNumero12", "CNumero13", "CNumero14",
                        "CCampo11", "CCampo12", "CCampo13", "CNumero3", "CNumero5", "CCampo5",
                        "CNumero6", "CNumero4"};
    // The lire rows: the opening balance stood 183 days, the payment of
    // 31/12/2001 one day; "-" is the withdrawal's side, left unset on a
    // payment.
    EXPECT_EQ(Campi(d.corpo[0], corpo),
              "01/07/2001|12|12|ROSSI MARIO|L|10000000|0|10000000|0|5164.57|0|10.000.000||"
              "10.000.000|10000000|795045.78|795.046|7.95|183");
    EXPECT_EQ(Campi(d.corpo[1], corpo),
              "31/12/2001|12|12|ROSSI MARIO|L|1000000|0|1000000|0|516.46|0|1.000.000||"
              "11.000.000|11000000|4344.51|4.345|0.04|1");
    // The first day of the euro: "E" and euro formats, the balance in euro.
    EXPECT_EQ(Campi(d.corpo[2], corpo),
              "01/01/2002|12|12|ROSSI MARIO|E|0|-500|0|-968135|0|-500||-500,00|5.181,03|"
              "5181.03|403.88|403,88|7.8|180");

    const auto testa = {"TCampo1", "TCampo2", "TCampo3", "TCampo4", "TCampo5", "TCampo6",
                        "TCampo7", "TCampo8", "TCampo9", "TCampo10", "TCampo11", "TCampo12",
                        "TNumero1", "TNumero2", "TNumero3", "TCampo17", "TNumero4", "TCampo14",
                        "TNumero5", "TNumero6", "TNumero7", "TNumero8", "TNumero9", "TNumero10",
                        "TCampo15", "TCampo16", "TCampo"};
    EXPECT_EQ(Campi(d.testa, testa),
              "12|ROSSI MARIO|01/07/2001|30/06/2002|ALFA SIM|ALFA SIM|VIA RO 1|20100|MILANO|MI|||"
              "6000|818.97|818.97|1.585.747|364|1,00|11000000|5181.03|11000000|0|5681.03|-500|"
              "5.174,13|S|15,828%");
    // The series: each movement at its age from the first day, the closing
    // value at the end; a year of 365 days keeps the first age.
    EXPECT_EQ(d.testa.value("TCampo13").toString(),
              TassoDi({{5164.57, 1}, {516.46, 184}, {-500, 185}, {-6000, 365}}, 1));
    EXPECT_EQ(m_stato.DataInizio, G(1, 7, 2001));

    const QString carta = SuCarta(QStringLiteral("InterMed"));
    Contiene(carta, {"MOVIMENTI CON INTERESSI MEDI", "Cliente 12 · ROSSI MARIO",
                     "dal 01/07/2001 al 30/06/2002", "VIA RO 1 · 20100 MILANO \\(MI\\)",
                     "Saldo finale +€ 6\\.000,00", "Guadagno del periodo +€ 818,97",
                     "Guadagno annuo +€ 818,970", "Guadagno annuo in lire +L\\. 1\\.585\\.747",
                     "364 giorni, anni 1,00", "Capitale medio +€ 5\\.174,13",
                     "Rendimento del periodo +15,828%", "Tasso annuo +" + QRegularExpression::escape(d.testa.value("TCampo13").toString()),
                     "01/07/2001 +12 ROSSI MARIO +L +10\\.000\\.000 +10\\.000\\.000 +183 +795\\.046 +7,95",
                     "01/01/2002 +12 ROSSI MARIO +E +-500,00 +5\\.181,03 +180 +403,88 +7,80",
                     "Pagina 1 di 1"});
}

// Every movement on one day, the period ending that day: one day for each
// row and for both divisors; the series lies inside a year.
TEST_F(Interessi, TuttoInUnGiorno)
{
    const int giorno = G(10, 3, 2024);
    Riga(1, giorno, 12, QStringLiteral("EUR"), 1000);
    Riga(2, giorno, 12, QStringLiteral("EUR"), 500);
    ASSERT_TRUE(Stampa(Campi(giorno, giorno, QStringLiteral("1510"))));
    const DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 2);
    const auto corpo = {"CCampo4", "CNumero3", "CNumero4", "CNumero5", "CNumero6"};
    EXPECT_EQ(Campi(d.corpo[0], corpo), "E|1000|1|10|1");
    EXPECT_EQ(Campi(d.corpo[1], corpo), "E|1500|1|10|0.67");
    EXPECT_EQ(Campi(d.testa, {"TNumero2", "TNumero3", "TNumero4", "TCampo14", "TCampo15",
                              "TCampo16", "TCampo"})
                  ,
              "10|3650|1|0,00||N|0,667%");
    EXPECT_EQ(d.testa.value("TCampo13").toString(),
              TassoDi({{1000, 0}, {500, 1}, {-1510, 1}}, 1));
}

// A lire-period row whose balance comes back to 0 shows a percentage of 0;
// a negative opening balance stored with "-" counts as a positive one on
// the side of the withdrawals; a dollar amount counts as it is in the
// totals and as lire in the rows, so that the two balances differ.
TEST_F(Interessi, SaldoNulloSegnoMenoEAltraMoneta)
{
    Riga(CodiceRiservato04, G(1, 2, 2001), 12, QStringLiteral("EUR"), -5000,
         QStringLiteral("-"));
    Riga(1, G(1, 3, 2001), 12, QStringLiteral("LIT"), 1000000);
    Riga(2, G(1, 6, 2001), 12, QStringLiteral("LIT"), 10681350, QStringLiteral("-"));
    Riga(3, G(1, 2, 2002), 12, QStringLiteral("USD"), 1000);
    ASSERT_TRUE(Stampa(Campi(G(1, 2, 2001), G(1, 2, 2003), QStringLiteral("1100"))));
    const DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 4);
    const auto corpo = {"CCampo4", "CNumero1", "CNumero2", "CNumero11", "CNumero12",
                        "CNumero13", "CNumero14", "CNumero3", "CNumero6"};
    EXPECT_EQ(Campi(d.corpo[0], corpo),
              "L|0|9681350|0|9681350|0|5000|9681350|0.08");
    EXPECT_EQ(Campi(d.corpo[2], corpo), "L|0|-10681350|0|-10681350|0|-5516.46|0|0");
    // The dollars are 0.52 euro here, so the gain of the year is 9602% of it.
    EXPECT_EQ(Campi(d.corpo[3], corpo), "E|0.52|0|1000|0|0.52|0|0.52|9602.23");
    // The gain takes the dollars as euro: 1100 - (5000 + 516.46 - 5516.46 + 1000);
    // the lire totals stop at 2001, the euro ones take every row.
    EXPECT_EQ(Campi(d.testa, {"TNumero2", "TNumero5", "TNumero6", "TNumero7", "TNumero8"})
                  ,
              "100|0|0.52|1000000|-1000000");
}

// A team of two: rows client by client, the first client's last row runs
// to the end of the period, the second client's first row stands from its
// own date and its balance carries on; the rate is the team's series in
// date order; the team's module and member list.
TEST_F(Interessi, SquadraDiDueClienti)
{
    Riga(1, G(1, 3, 2024), 12, QStringLiteral("EUR"), 1000);
    Riga(2, G(1, 5, 2024), 12, QStringLiteral("EUR"), 500);
    Riga(3, G(1, 4, 2024), 13, QStringLiteral("EUR"), 2000);
    Riga(4, G(1, 4, 2024), 13, QStringLiteral("EUR"), 0);
    ASSERT_TRUE(Stampa(Campi(G(1, 3, 2024), G(31, 5, 2024), QStringLiteral("3600"),
                             QStringLiteral("7"))));
    EXPECT_EQ(m_stampe->titoli, QStringList{"Modulo:  'InterMed1'"});
    const DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 4);
    const auto corpo = {"CCampo1", "CCampo2", "CCampo3", "CNumero3", "CNumero4"};
    std::vector<std::string> righe;
    for (const QVariantMap &r : d.corpo)
        righe.push_back(Campi(r, corpo));
    EXPECT_EQ(righe, (std::vector<std::string>{"01/03/2024|12|ROSSI MARIO|1000|61",
                                  "01/05/2024|12|ROSSI MARIO|1500|30",
                                  "01/04/2024|13|ROSSI MARTA|3500|1",
                                  "01/04/2024|13|ROSSI MARTA|3500|60"}));
    EXPECT_EQ(Campi(d.testa, {"TCampo11", "TCampo12"}), "7|12, 13, 99");
    // The amount of 0 is no flow of the team's series.
    EXPECT_EQ(d.testa.value("TCampo13").toString(),
              TassoDi({{1000, 1}, {2000, 32}, {500, 62}, {-3600, 92}}, 1));

    // On paper: the team and its members, each client's rows under it; no
    // mean capital unless the office asks for it.
    const QString carta = SuCarta(QStringLiteral("InterMed1"));
    Contiene(carta, {"Gruppo N\\. 7 · clienti 12, 13, 99", "Cliente 12\\s+01/03/2024 +12 ROSSI MARIO",
                     "Cliente 13\\s+01/04/2024 +13 ROSSI MARTA +E +2\\.000,00 +3\\.500,00 +1\\b",
                     "Rendimento del periodo", "Tasso annuo"});
    EXPECT_FALSE(carta.contains(QStringLiteral("Capitale medio")));
}

// No client, no closing balance: told, nothing staged. No rows: nothing
// printed and nothing said.
TEST_F(Interessi, CampiMancantiENessunaRiga)
{
    CampiInteressi c = Campi(G(1, 3, 2024), G(31, 5, 2024), QStringLiteral("100"));
    c.cliente = QStringLiteral(" ");
    EXPECT_FALSE(Stampa(c));
    c = Campi(G(1, 3, 2024), G(31, 5, 2024), QString());
    EXPECT_FALSE(Stampa(c));
    EXPECT_EQ(m_messaggi.testi(), (QStringList{"INDICARE IL CLIENTE", "INDICARE IL SALDO"}));
    m_messaggi.pulisci();
    EXPECT_FALSE(Stampa(Campi(G(1, 3, 2024), G(31, 5, 2024), QStringLiteral("100"))));
    EXPECT_TRUE(m_messaggi.testi().isEmpty());
    EXPECT_TRUE(m_stampe->titoli.isEmpty());
}
