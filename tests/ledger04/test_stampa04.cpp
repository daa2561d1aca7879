// The 04 statement on real files: PrtCorpo, PrtTesta and PrtPiede read back
// field by field across the 2002 cut-over, for a client alone, a client of
// a team and all clients; the module each asks for; the failing steps; the
// three layouts on paper, and the slip that shares one of them.

#include "Prova04.h"
#include "StampeRegistrate.h"

#include "frame/core/Formato.h"
#include "ledger04/StampaDistinta04.h"

#include <QRegularExpression>

#include <optional>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

constexpr int G10_06_2001 = 37052;
constexpr int G31_12_2001 = 37256;
constexpr int G01_01_2002 = 37257;
constexpr int G15_03_2002 = 37330;
const double R = 1936.27;

class Stampa04 : public Prova04
{
protected:
    void SetUp() override
    {
        Prova04::SetUp();
        m_stampe.emplace(QStringLiteral(MODULI_PREDEFINITI), impostazioni().IniLocale);
        Scrivi(QStringLiteral("UPDATE Societa SET SocIndirizzo = 'VIA ROMA 1', SocCap = '20121',"
                              " SocLocalita = 'MILANO', SocProvincia = 'MI'"
                              " WHERE SocNome = 'ALFA SIM'"));
        // A reason without a sign counts as "+".
        Scrivi(QStringLiteral("INSERT INTO DistCausali VALUES ('NOS', 'SENZA SEGNO', NULL)"));
    }
    void TearDown() override
    {
        m_stampe.reset();
        Prova04::TearDown();
    }

    // The screen's values over an extraction of that period, client and firm.
    static SchermoEstratto04 Schermo(const QString &dal, const QString &al, const QString &cliente,
                                     const QString &ditta = QString(),
                                     const QString &squadra = QString())
    {
        FiltroDistinte f{.dal = dal, .al = al, .codiceCliente = cliente, .ditta = ditta};
        SchermoEstratto04 s;
        s.estrazione = CondizioneEstrazione04(f, Oggi);
        s.dataDal = dal;
        s.dataAl = al;
        s.ditta = ditta;
        s.codiceCliente = cliente;
        s.nomeCliente = cliente.isEmpty() ? QString() : QStringLiteral("NOME ") + cliente;
        s.squadra = squadra;
        return s;
    }
    static DatiReport Staged()
    {
        DatiReport d;
        QString errore;
        EXPECT_TRUE(CaricaDatiReport(DbLavoro(), d, &errore)) << qPrintable(errore);
        return d;
    }
    // The fields of a staged row from `da` to `a`, as texts.
    static QStringList Campi(const QVariantMap &r, const char *tipo, int da, int a)
    {
        QStringList campi;
        for (int n = da; n <= a; ++n)
            campi.append(r.value(QString::fromLatin1(tipo) + QString::number(n)).toString());
        return campi;
    }
    static double N(const QVariantMap &r, const char *nome) { return r.value(nome).toDouble(); }
    qint64 Conta(const QString &tabella)
    {
        return Valore("SELECT COUNT(*) FROM " + tabella).toLongLong();
    }

    std::optional<StampeRegistrate> m_stampe;
    QStringList &Titoli() { return m_stampe->titoli; } // of the previews opened
};

// The six numbers of a set of sums, in the foot's order.
std::array<double, 6> Numeri(double piuL, double menoL, double piuE, double menoE)
{
    return {piuE * R + piuL, menoE * R + menoL, piuE * R + piuL - (menoE * R + menoL),
            piuL / R + piuE, menoL / R + menoE, piuL / R + piuE - (menoL / R + menoE)};
}

void AttesiNumeri(const QVariantMap &piede, int base, const std::array<double, 6> &attesi)
{
    for (int i = 0; i < 6; ++i) {
        const QString nome = QStringLiteral("Pnumero%1").arg(base + 1 + i);
        EXPECT_NEAR(piede.value(nome).toDouble(), attesi[i], 1e-6) << qPrintable(nome);
    }
}

} // namespace

// A client across the cut-over: a lire row, an euro row of 31/12/2001 that
// counts in lire rounded to units, an euro row of 01/01/2002 that stays in
// euro, and a lira row of 2002 that takes the lire value of the row before
// it, then, in a period that starts in 2002, nothing.
TEST_F(Stampa04, ClienteAllaSvoltaDel2002)
{
    const QString p = QString(60, QLatin1Char('P')) + QStringLiteral(" SEGUITO");
    Riga04(1, G10_06_2001, 14, "ALFA SIM", "LIT", 1000000, "ABC");
    Riga04(2, G31_12_2001, 14, "ALFA SIM", "EUR", 10.55, "NOS");
    Riga04(3, G01_01_2002, 14, "ALFA SIM", "EUR", 10.555, "ABC");
    Riga04(800000004, G15_03_2002, 14, "ALFA SIM", "LIT", 999);
    Scrivi(QStringLiteral("UPDATE Distinte04 SET dstCodP = ? WHERE dstCodice = 3"), {p});

    ASSERT_TRUE(StampaDistinta04(Schermo("1/1/2001", "31/12/2002", " 14", "ALFA SIM")));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    EXPECT_EQ(Titoli(), QStringList{"Modulo:  'DistC04'"});
    DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 4);
    const auto riga = [&](int i) {
        const QVariantMap &r = d.corpo.at(i);
        return Campi(r, "CCampo", 1, 8) + Campi(r, "CCampo", 11, 12);
    };
    const auto numeri = [&](int i) {
        const QVariantMap &r = d.corpo.at(i);
        return std::vector<double>{N(r, "CNumero1"), N(r, "CNumero2"), N(r, "CNumero3")};
    };
    EXPECT_EQ(riga(0), QStringList({"10/06/01", "BIANCHI LUCA", "PROD1", "", "RISCATTO", "LIT",
                                    "-", "0", "", "1.000.000"}));
    EXPECT_EQ(numeri(0), std::vector<double>({1, 1000000, 1}));
    // 10.55 * 1936.27 = 20427.6485.
    EXPECT_EQ(riga(1), QStringList({"31/12/01", "BIANCHI LUCA", "PROD1", "", "SENZA SEGNO",
                                    "EUR", "+", "0", "20.428", ""}));
    EXPECT_EQ(numeri(1), std::vector<double>({2, 20428, 2}));
    EXPECT_EQ(riga(2), QStringList({"01/01/02", "BIANCHI LUCA", p.left(50), p.mid(50),
                                    "RISCATTO", "EUR", "-", "1", "", "10,56"}));
    EXPECT_EQ(numeri(2), std::vector<double>({3, 10.56, 3}));
    // 20428 / 1936.27 = 10.5502..., not 999 lire.
    EXPECT_EQ(riga(3), QStringList({"15/03/02", "BIANCHI LUCA", "PROD1", "", "VERSAMENTO", "LIT",
                                    "+", "1", "10,55", ""}));
    EXPECT_EQ(numeri(3), std::vector<double>({800000004, 10.55, 4}));

    EXPECT_EQ(Campi(d.testa, "TCampo", 1, 10),
              QStringList({"1/1/2001", "31/12/2002", "ALFA SIM", "ALFA SIM", "VIA ROMA 1",
                           "20121", "MILANO", "MI", " 14", "NOME  14"}));
    EXPECT_EQ(Campi(d.piede, "PCampo", 1, 8),
              QStringList({"20.428", "10,55", "1.000.000", "516,46", "10,55", "20.428", "10,56",
                           "20.447"}));
    AttesiNumeri(d.piede, 0, Numeri(20428, 1000000, 10.55, 10.56));
    EXPECT_LT(N(d.piede, "Pnumero3"), 0); // the unsigned totals subtracted
    EXPECT_EQ(Campi(d.piede, "PCampo", 19, 20), QStringList({"", ""}));
    AttesiNumeri(d.piede, 20, {0, 0, 0, 0, 0, 0});
    EXPECT_TRUE(d.piede.value("PCampo11").isNull());

    // No row of the lire era walked before the lira row of 2002: 0.
    ASSERT_TRUE(StampaDistinta04(Schermo("1/1/2002", "31/12/2002", "14")));
    d = Staged();
    ASSERT_EQ(d.corpo.size(), 2);
    EXPECT_EQ(d.corpo.at(1).value("CCampo11").toString(), "0,00");
    EXPECT_EQ(N(d.corpo.at(1), "CNumero2"), 0);
    EXPECT_EQ(d.testa.value("TCampo4").toString(), " ");
    EXPECT_EQ(Campi(d.piede, "PCampo", 5, 8), QStringList({"0,00", "0", "10,56", "20.447"}));
}

// A team of three (one member without a card) with a firm filter: the
// other member's rows of the period and firm only, walked with the same
// rules; the codes listed, the grand totals, the team's module.
TEST_F(Stampa04, SquadraDiTreConDitta)
{
    Riga04(1, G10_06_2001, 12, "ALFA SIM", "LIT", 500000);
    Riga04(2, G01_01_2002, 12, "ALFA SIM", "EUR", 20, "ABC");
    Riga04(3, G31_12_2001 - 30, 13, "ALFA SIM", "EUR", 50);     // 96813.5 lire
    Riga04(4, G15_03_2002, 13, "ALFA SIM", "LIT", 123, "ABC"); // 96814 / R
    Riga04(5, G15_03_2002, 13, DittaStrana, "EUR", 999);      // another firm
    Riga04(6, 30000, 13, "ALFA SIM", "EUR", 777);             // before the period
    Riga04(7, G15_03_2002, 99, "ALFA SIM", "EUR", 555);       // no card: out of the join

    ASSERT_TRUE(StampaDistinta04(Schermo("1/1/2001", "", "12", "ALFA SIM", " 7 ")));
    EXPECT_EQ(Titoli(), QStringList{"Modulo:  'DistC041'"});
    const DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 2);
    EXPECT_EQ(Campi(d.piede, "PCampo", 19, 20), QStringList({"( 12, 13, 99 )", "7"}));
    AttesiNumeri(d.piede, 0, Numeri(500000, 0, 0, 20));
    const double euro13 = Arrotonda(96814 / R, 2);
    EXPECT_EQ(euro13, 50);
    EXPECT_EQ(Campi(d.piede, "PCampo", 11, 18),
              QStringList({"96.814", "50,00", "0", "0,00", "0,00", "0", "50,00", "96.814"}));
    AttesiNumeri(d.piede, 10, Numeri(96814, 0, 0, euro13));
    AttesiNumeri(d.piede, 20, Numeri(500000 + 96814, 0, 0, 20 + euro13));

    // A team caption that is no number: the team's module all the same,
    // no members and zero sums.
    ASSERT_TRUE(StampaDistinta04(Schermo("1/1/2001", "", "12", "ALFA SIM", "EREDI")));
    EXPECT_EQ(Titoli().constLast(), "Modulo:  'DistC041'");
    const DatiReport e = Staged();
    EXPECT_EQ(Campi(e.piede, "PCampo", 19, 20), QStringList({"", "EREDI"}));
    AttesiNumeri(e.piede, 10, {0, 0, 0, 0, 0, 0});
    AttesiNumeri(e.piede, 20, Numeri(500000, 0, 0, 20));
}

// No client: the firm's module, whatever the team label holds; a file of
// the module's table with ".RPT" in its name loses it before "1.rpt". An
// empty list stages and prints nothing.
TEST_F(Stampa04, SenzaClienteEListaVuota)
{
    Riga04(1, G10_06_2001, 12, "ALFA SIM", "LIT", 500000);
    Riga04(2, G01_01_2002, 14, "ALFA SIM", "EUR", 20, "ABC");
    ASSERT_TRUE(StampaDistinta04(Schermo("", "", "", "ALFA SIM", "7")));
    EXPECT_EQ(Titoli(), QStringList{"Modulo:  'DistXdit'"});
    const DatiReport d = Staged();
    EXPECT_EQ(d.corpo.size(), 2);
    EXPECT_EQ(Campi(d.testa, "TCampo", 1, 2), QStringList({" ", " "}));
    EXPECT_EQ(d.piede.value("PCampo19").toString(), "( 0, 12, 13, 99 )");

    Scrivi(QStringLiteral("INSERT INTO Moduli (MdKey, MdPrg, MdFile) VALUES"
                          " ('DistC04', 1, 'Estratto.Rpt.vecchio')"));
    EXPECT_EQ(ModuloEstratto04(Schermo("", "", "12", "", "7")), "Estratto1.rpt");
    EXPECT_EQ(ModuloEstratto04(Schermo("", "", "12")), "Estratto.Rpt.vecchio");
    EXPECT_EQ(ModuloEstratto04(Schermo("", "", "0", "", "7")), "DistXdit.rpt");

    Titoli().clear();
    const auto contati = [this] { return QList<qint64>{Conta("PrtTesta"), Conta("PrtCorpo"),
                                                   Conta("PrtPiede")}; };
    const QList<qint64> prima = contati();
    EXPECT_FALSE(StampaDistinta04(Schermo("1/1/2020", "", "")));
    EXPECT_FALSE(StampaDistinta04(SchermoEstratto04{}));
    EXPECT_EQ(contati(), prima);
    EXPECT_TRUE(Titoli().isEmpty());
    EXPECT_TRUE(m_messaggi.testi().isEmpty());
}

// A failing step is told in its words and prints nothing: the tables that
// cannot be emptied, a row refused, a team that cannot be read.
TEST_F(Stampa04, PassoFallito)
{
    Riga04(1, G10_06_2001, 12, "ALFA SIM", "LIT", 500000);
    Riga04(2, G01_01_2002, 12, "ALFA SIM", "EUR", 20, "ABC");
    const auto fallisce = [this](const SchermoEstratto04 &s, int passo) {
        m_messaggi.pulisci();
        sessione().TestoErrore.clear();
        EXPECT_FALSE(StampaDistinta04(s));
        EXPECT_EQ(m_messaggi.testi(), QStringList{TestoPassoStampa(passo)});
        EXPECT_EQ(sessione().CodiceStop, passo);
        EXPECT_FALSE(sessione().TestoErrore.isEmpty());
        EXPECT_TRUE(Titoli().isEmpty());
    };
    Rifiuta("Fermo", "DELETE", "PrtPiede", "no");
    Scrivi(QStringLiteral("INSERT INTO PrtPiede (PCampo1) VALUES ('vecchio')"));
    fallisce(Schermo("", "", "12"), PassoPulizia);
    TogliRifiuto("Fermo", "PrtPiede");

    Rifiuta("Rifiuta", "INSERT", "PrtPiede", "no");
    fallisce(Schermo("", "", "12"), PassoAggiornamento);
    EXPECT_EQ(Conta("PrtCorpo"), 0); // the body rows written before go too
    TogliRifiuto("Rifiuta", "PrtPiede");

    Cambia(QStringLiteral("DROP TABLE Squadre"));
    fallisce(Schermo("", "", "12", "", "7"), PassoAggiornamento);
    EXPECT_TRUE(sessione().TestoErrore.contains("Squadre", Qt::CaseInsensitive)) << qPrintable(sessione().TestoErrore);
    // Without a team the statement does not need the table.
    m_messaggi.pulisci();
    EXPECT_TRUE(StampaDistinta04(Schermo("", "", "12")));
}

namespace {

// Every page carries the heading and its number; the last the foot's
// totals as staged, in the formats the foot names.
void ControllaPagine(const QStringList &pagine, const QString &intestazione,
                     const QVariantMap &piede, int ultimoCampo, int ultimoNumero)
{
    ASSERT_GE(pagine.size(), 2);
    // A page with movements on it: a date, then the number.
    static const QRegularExpression movimento(QStringLiteral("\\d\\d/\\d\\d/\\d\\d +\\d+ "));
    int conMovimenti = 0;
    for (int p = 0; p < pagine.size(); ++p) {
        SCOPED_TRACE(p + 1);
        const QString &pagina = pagine.at(p);
        for (const QString &a : {QStringLiteral("ESTRATTO CONTO"),
                                 QStringLiteral("Pagina %1 di %2").arg(p + 1).arg(pagine.size())})
            EXPECT_TRUE(pagina.contains(a)) << qPrintable(a);
        if (pagina.contains(movimento)) {
            ++conMovimenti;
            EXPECT_TRUE(pagina.contains(QRegularExpression(intestazione)));
        }
    }
    EXPECT_GE(conMovimenti, 2);
    const QString &ultima = pagine.constLast();
    for (int n = 1; n <= ultimoCampo; ++n) {
        if (n > 8 && n < 11)
            continue;
        const QString campo = piede.value(QStringLiteral("PCampo%1").arg(n)).toString();
        EXPECT_TRUE(ultima.contains(campo)) << n << " " << qPrintable(campo);
    }
    for (int n = 1; n <= ultimoNumero; ++n) {
        if ((n > 6 && n < 11) || (n > 16 && n < 21))
            continue;
        const double v = piede.value(QStringLiteral("Pnumero%1").arg(n)).toDouble();
        const QString testo = Format(v, (n - 1) % 10 < 3 ? QStringLiteral("#,###,###,##0")
                                                         : QStringLiteral("#,###,###,##0.00"));
        EXPECT_TRUE(ultima.contains(testo)) << n << " " << qPrintable(testo);
    }
}

} // namespace

// The three layouts on paper, each long enough for several pages, and the
// firm's slip through the layout it shares with the statement.
TEST_F(Stampa04, TreModuliSuCarta)
{
    for (int i = 1; i <= 120; ++i) {
        const bool lire = i <= 60;
        Riga04(i, (lire ? G31_12_2001 : G15_03_2002) - 60 + (i % 60), 12 + i % 2, "ALFA SIM",
               lire ? "LIT" : "EUR", lire ? 150000.0 * i : 37.5 * i, i % 4 ? "001" : "ABC");
        Scrivi(QStringLiteral("UPDATE Distinte04 SET dstCodP = ? WHERE dstCodice = ?"),
               {QStringLiteral("FONDO AZIONARIO EUROPA CLASSE A N. %1").arg(i), i});
    }
    const QString testa = QStringLiteral("Data +N\\. +Descrizione +Causale +Mon\\. +Entrate "
                                         "\\(\\+\\) +Uscite");
    const auto pagine = [this](const QString &modulo) {
        return PagineStampate(QStringLiteral(MODULI_PREDEFINITI), modulo, m_cartella.percorso());
    };

    ASSERT_TRUE(StampaDistinta04(Schermo("", "", "12", "ALFA SIM")));
    QStringList p = pagine(QStringLiteral("DistC04"));
    ControllaPagine(p, testa, Staged().piede, 8, 6);
    QString tutto = p.join(u'\n');
    EXPECT_EQ(tutto.count(QStringLiteral("Movimenti dal 01/01/2002 · importi in euro")), 1);
    // Each movement once, none lost at a page break.
    for (int i = 1; i <= 120; ++i)
        EXPECT_EQ(tutto.count(QRegularExpression(QStringLiteral("N\\. %1\\b").arg(i))), i % 2 ? 0 : 1) << i;
    EXPECT_TRUE(tutto.contains(QStringLiteral("Cliente 12 · NOME 12")));

    ASSERT_TRUE(StampaDistinta04(Schermo("", "", "12", "ALFA SIM", "7")));
    p = pagine(QStringLiteral("DistC041"));
    ControllaPagine(p, testa, Staged().piede, 20, 26);
    EXPECT_TRUE(p.constLast().contains(QStringLiteral("Gruppo n. 7 · clienti ( 12, 13, 99 )")));

    ASSERT_TRUE(StampaDistinta04(Schermo("", "", "", "ALFA SIM")));
    p = pagine(QStringLiteral("DistXdit"));
    ControllaPagine(p, QStringLiteral("Data +N\\. +Cliente +Descrizione +Causale +Mon\\. "
                                      "+Entrate \\(\\+\\) +Uscite"),
                    Staged().piede, 8, 6);
    tutto = p.join(u'\n');
    for (int i = 1; i <= 120; ++i)
        EXPECT_EQ(tutto.count(QRegularExpression(QStringLiteral("N\\. %1\\b").arg(i))), 1) << i;
    EXPECT_FALSE(tutto.contains(QStringLiteral("DISTINTA DOCUMENTI")));

    // The slip stages no foot: the same file prints the slip, as ever.
    DatiReport distinta;
    distinta.testa = {{"TCampo3", "ALFA SIM"}, {"TNumero1", 1234.5}};
    distinta.corpo = {{{"CNumero1", 7}, {"CCampo1", "12/06/24"}, {"CCampo8", "VERSAMENTO"},
                       {"CNumero2", 1234.5}, {"CCampo13", "+"}}};
    ASSERT_TRUE(PreparaTemporanei(distinta));
    tutto = pagine(QStringLiteral("DistXdit")).join(u'\n');
    for (const char *a : {"DISTINTA DOCUMENTI", "Totale distinta", "VERSAMENTO",
                          "Distinta documenti · stampata il"})
        EXPECT_TRUE(tutto.contains(QString::fromUtf8(a))) << a;
    EXPECT_FALSE(tutto.contains(QStringLiteral("ESTRATTO")));
}
