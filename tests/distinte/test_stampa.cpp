// The slip print on a real ledger: what PrtTesta and PrtCorpo hold after it,
// read back from the work file, which module it asks for, what it says when
// a step fails; and the slip per firm on paper.

#include "ProvaDistinte.h"

#include "distinte/StampaDistinta.h"
#include "frame/core/Formato.h"
#include "frame/ui/Modale.h"
#include "reports/Anteprima.h"
#include "reports/CaricaDati.h"
#include "reports/Renderer.h"
#include "reports/Staging.h"
#include "tests/reports/TestoPdf.h"

#include <QDialog>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::A;
using sorvane::prova::PagineTestoPdf;
using sorvane::prova::ProvaDistinte;

namespace {

const QString Alfa = QStringLiteral("ALFA VITA");
const QString Arca = QStringLiteral("L'ARCA ASSICURAZIONI");

class StampaDist : public ProvaDistinte
{
protected:
    void SetUp() override
    {
        ProvaDistinte::SetUp();
        Impostazioni &imp = impostazioni();
        imp.PathReport = QStringLiteral(MODULI_PREDEFINITI "/");
        imp.PathReportOperatore.clear();
        imp.IniLocale = m_cartella.scrivi(QStringLiteral("SORVANE.ini"), "[PARAMETRI]\n");
        imp.TipoStampa = QLatin1Char('V');
        consegnaStampa() = ConsegnaStampa();
        // The preview is recorded and closed at once: nothing stays open.
        installaGestoreModale([this](QDialog &d) {
            if (auto *f = qobject_cast<FinestraAnteprima *>(&d))
                f->attendiCompleta();
            m_titoli.append(d.windowTitle());
            return int(QDialog::Rejected);
        });
        Scrivi(QStringLiteral("INSERT INTO Societa VALUES (?, ?, ?, ?, ?)"),
               {Arca, QStringLiteral("IT60X0542811101000000123456"), QStringLiteral("20121"),
                QStringLiteral("MILANO"), QStringLiteral("MI")});
    }
    void TearDown() override
    {
        installaGestoreModale({});
        consegnaStampa() = ConsegnaStampa();
        ProvaDistinte::TearDown();
    }

    // A row with its reason, cheque, bank and expenses.
    static void Salva(RigaDistinta r, const QString &causale, const QString &assegno,
                      const QString &banca, double spese = 0)
    {
        r.dstCausale = causale;
        r.dstAssegno = assegno;
        r.dstBanca = banca;
        r.dstSpeseUT = spese;
        Semina(r);
    }

    static FiltroDistinte Filtro(const QString &dal, const QString &al,
                                 const QString &ditta = QString(),
                                 const QString &cliente = " ", const QString &nome = " ")
    {
        return {.dal = dal, .al = al, .codiceCliente = cliente, .nomeCliente = nome,
                .ditta = ditta, .ancheChiusi = true};
    }

    bool Stampa(const FiltroDistinte &f)
    {
        return StampaDistinta(CondizioneEstrazione(f, Oggi), f);
    }

    // The staged rows as the report reads them.
    static DatiReport Staged()
    {
        DatiReport d;
        QString errore;
        EXPECT_TRUE(CaricaDatiReport(DbLavoro(), d, &errore)) << qPrintable(errore);
        return d;
    }
    static QString Testo(const QVariantMap &r, int n, const char *tipo = "CCampo")
    {
        return r.value(QString::fromLatin1(tipo) + QString::number(n)).toString();
    }
    // The text fields from `da` to `a`.
    static QStringList Campi(const QVariantMap &r, int da, int a, const char *tipo = "CCampo")
    {
        QStringList campi;
        for (int n = da; n <= a; ++n)
            campi.append(Testo(r, n, tipo));
        return campi;
    }
    static double Numero(const QVariantMap &r, int n, const char *tipo = "CNumero")
    {
        return r.value(QString::fromLatin1(tipo) + QString::number(n)).toDouble();
    }
    qint64 Conta(const QString &tabella)
    {
        return Valore("SELECT COUNT(*) FROM " + tabella).toLongLong();
    }

    QStringList m_titoli; // of the previews opened
};

} // namespace

// Every body field as staged: a payment with open and confirmed codes, a
// switch whose second row prints only its codes, an outgoing reason.
TEST_F(StampaDist, CorpoCampoPerCampo)
{
    Salva(Riga(7, "0", Oggi - 3, 13, Arca, {"RISC9" + A}, 250.5), "ABC", "A-77", "BANCA SUD");
    const QStringList fette{"FND01" + A, "  POL22  ", " ", "ZZ" + A, "Q9"};
    Salva(Riga(5, "0", Oggi - 3, 12, Alfa, fette, 1000), "001", "123456", "CREDITO ROMAGNOLO",
          12.5);
    // The switch's second row repeats the header, amount included: it must
    // not count twice.
    Salva(Riga(5, "1", Oggi - 3, 12, Alfa, {"OLD1", "NEW2" + A}, 1000), "001", "123456",
          "CREDITO ROMAGNOLO", 12.5);
    RigaDistinta usd = Riga(2, "0", Oggi - 20, 14, Alfa, {" "}, 99.99);
    usd.dstMoneta = QStringLiteral("USD");
    Semina(usd);

    ASSERT_TRUE(Stampa(Filtro("1/5/2024", "15/06/2024")));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    const DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 4);

    // In the list's order: date, number, row.
    const QVariantMap &p = d.corpo.at(0);
    EXPECT_EQ(Numero(p, 1), 2);
    EXPECT_EQ(Campi(p, 1, 7), QStringList({"26/05/24", "BIANCHI LUCA", "", "", "", "", ""}));
    EXPECT_EQ(Testo(p, 12), "USD");

    const QVariantMap &m = d.corpo.at(1);
    EXPECT_EQ(Numero(m, 1), 5);
    EXPECT_EQ(Numero(m, 2), 1000);
    EXPECT_EQ(Numero(m, 3), 12.5);
    EXPECT_EQ(Campi(m, 1, 10), QStringList({"12/06/24", "ROSSI MARIO", "FND01", "POL22  *", "",
                                            "ZZ", "Q9*", "VERSAMENTO", "123456",
                                            "CREDITO ROMAGNOLO"}));
    EXPECT_TRUE(m.value("CCampo11").isNull());
    EXPECT_EQ(Campi(m, 12, 14), QStringList({"EUR", "+", " "}));

    const QVariantMap &g = d.corpo.at(2);
    EXPECT_EQ(Campi(g, 3, 7), QStringList({"OLD1*", "NEW2", "", "", ""}));
    for (int n : {1, 2, 3})
        EXPECT_EQ(Numero(g, n), 0) << n;
    for (int n : {1, 2, 8, 9, 10, 12, 13, 14})
        EXPECT_EQ(Testo(g, n), " ") << n;

    const QVariantMap &r = d.corpo.at(3);
    EXPECT_EQ(Numero(r, 1), 7);
    EXPECT_EQ(Campi(r, 3, 8), QStringList({"RISC9", "", "", "", "", "RISCATTO"}));
    EXPECT_EQ(Testo(r, 13), "-");

    // Payments less the outgoing reason; the switch's row "1" adds nothing.
    EXPECT_DOUBLE_EQ(Numero(d.testa, 1, "TNumero"), 1000 + 99.99 - 250.5);
    EXPECT_EQ(m_titoli, QStringList{"Modulo:  'DistXdit'"});
}

// The head from the filter: dates only when they are dates, the firm's
// block only for a firm found (by a name with an apostrophe too), the
// module per firm or per client.
TEST_F(StampaDist, TestaDittaEModulo)
{
    Salva(Riga(1, "0", Oggi - 2, 13, Arca, {"A1"}, 300), "ABC", " ", " ");
    Semina(Riga(2, "0", Oggi - 1, 13, Arca, {"A2"}));
    Semina(Riga(3, "0", Oggi - 1, 12, "DITTA SENZA SCHEDA", {"B1"}, 40));

    // No from date: the query runs from the beginning of time all the same.
    ASSERT_TRUE(Stampa(Filtro("//", "30/6/2024", "  " + Arca + " ", "13", "ROSSI MARTA")));
    DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 2);
    EXPECT_EQ(Campi(d.testa, 1, 10, "TCampo"),
              QStringList({" ", "30/6/2024", "  " + Arca + " ", Arca,
                           "IT60X0542811101000000123456", "20121", "MILANO", "MI", "13",
                           "ROSSI MARTA"}));
    // Only the outgoing reason: the total is negative.
    EXPECT_DOUBLE_EQ(Numero(d.testa, 1, "TNumero"), 100 - 300);

    // A firm without its card: the block stays blank. A date that is not
    // one prints as a blank.
    ASSERT_TRUE(Stampa(Filtro("1/6/2024", "31/6/2024", "DITTA SENZA SCHEDA")));
    d = Staged();
    ASSERT_EQ(d.corpo.size(), 1);
    EXPECT_EQ(Campi(d.testa, 1, 8, "TCampo"), QStringList({"1/6/2024", " ", "DITTA SENZA SCHEDA",
                                                          " ", " ", " ", " ", " "}));
    EXPECT_DOUBLE_EQ(Numero(d.testa, 1, "TNumero"), 40);

    // No firm at all: every firm's rows, the block blank.
    ASSERT_TRUE(Stampa(Filtro("1/6/2024", "15/6/2024")));
    d = Staged();
    EXPECT_EQ(d.corpo.size(), 3);
    EXPECT_EQ(Campi(d.testa, 4, 8, "TCampo"), QStringList(5, QStringLiteral(" ")));

    EXPECT_EQ(m_titoli, QStringList({"Modulo:  'DistXcli'", "Modulo:  'DistXdit'",
                                     "Modulo:  'DistXdit'"}));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
}

// A failing step is told in its words, its writing undone, nothing printed.
TEST_F(StampaDist, PassoFallito)
{
    Semina(Riga(1, "0", Oggi - 2, 13, Alfa, {"A1"}, 300));
    Semina(Riga(2, "0", Oggi - 1, 14, Alfa, {"B1" + A}, 200));
    Scrivi(QStringLiteral("INSERT INTO PrtTesta (TCampo1) VALUES ('vecchio')"));
    const auto fallisce = [this](const QString &ditta, int passo, const QString &parole) {
        m_messaggi.pulisci();
        EXPECT_FALSE(Stampa(Filtro("//", "//", ditta)));
        EXPECT_EQ(m_messaggi.testi(), QStringList{parole});
        EXPECT_EQ(sessione().CodiceStop, passo);
        EXPECT_FALSE(sessione().TestoErrore.isEmpty());
        EXPECT_TRUE(m_titoli.isEmpty());
    };

    // The second body row is refused: the first goes with it, and the head.
    Rifiuta("Rifiuta", "INSERT", "PrtCorpo", "no", "NEW.CCampo3 = 'B1'");
    fallisce(QString(), 3, QStringLiteral("ERRORE 3: AGGIORNAMENTO TEMPORANEI DI STAMPA"));
    EXPECT_EQ(Conta("PrtCorpo"), 0);
    EXPECT_EQ(Conta("PrtTesta"), 0);
    TogliRifiuto("Rifiuta", "PrtCorpo");

    // The extraction itself cannot run: the engine's words, nothing staged.
    m_messaggi.pulisci();
    Cambia(QStringLiteral("DROP TABLE DistCausali"));
    EXPECT_FALSE(Stampa(Filtro("//", "//")));
    ASSERT_EQ(m_messaggi.testi().size(), 1);
    EXPECT_TRUE(m_messaggi.testi().first().startsWith(
        QStringLiteral("ERRORE IN LETTURA DEI MOVIMENTI DA STAMPARE\n")));
    EXPECT_TRUE(m_messaggi.testi().first().contains(QStringLiteral("DistCausali"), Qt::CaseInsensitive))
        << qPrintable(m_messaggi.testi().first());
    EXPECT_TRUE(m_titoli.isEmpty());
}

namespace {

// The staged rows printed on paper by the installed module, page by page.
QStringList SuCarta(const QString &modulo, const QString &cartella)
{
    Modello modello;
    DatiReport dati;
    if (!CaricaModello(QStringLiteral(MODULI_PREDEFINITI "/") + modulo + ".rpt", modello)
        || !CaricaDatiReport(DbLavoro(), dati))
        return {};
    EXPECT_TRUE(modello.orizzontale);
    const ModelloCompilato compilato = CompilaModello(modello, dati);
    EXPECT_TRUE(compilato.errore.isEmpty()) << qPrintable(compilato.errore);
    const QString pdf = cartella + QLatin1Char('/') + modulo + QStringLiteral(".pdf");
    if (!SalvaPdf(pdf, modello, compilato))
        return {};
    return PagineTestoPdf(pdf);
}

// An amount as the slip prints it, as a pattern.
QString Euro(double importo)
{
    return QRegularExpression::escape(Format(importo, QStringLiteral("#,###,###,##0.00")));
}

} // namespace

// Sixty movements of a firm on paper, as the office prints them: the
// firm's block and the heading on every page, each movement once, the
// codes with their stars, the continuation of a switch, the signed total.
// A reason as long as the field and codes as long as theirs keep to one
// line, no word cut in two.
TEST_F(StampaDist, DistintaPerDittaSuCarta)
{
    const QString lunga = QStringLiteral("LIQUIDAZIONE POLIZZA");
    Scrivi(QStringLiteral("INSERT INTO DistCausali VALUES (?, ?, ?)"),
           {QStringLiteral("LQP"), lunga, "-"});
    const QString causali[] = {QStringLiteral("001"), QStringLiteral("LQP")};
    double totale = 0;
    for (int i = 1; i <= 60; ++i) {
        const bool uscita = i % 5 == 0;
        const double importo = 1000 + i * 37.25;
        totale += uscita ? -importo : importo;
        RigaDistinta r = Riga(
            i, "0", Oggi - 60 + i, 12 + i % 3, Arca,
            {QStringLiteral("AZIONARIOEUR%1").arg(i, 3, 10, QLatin1Char('0')) + (i % 2 ? A : ""),
             QStringLiteral("POL%1").arg(i) + (i % 3 ? "" : A)},
            importo);
        r.dstCausale = causali[uscita];
        r.dstAssegno = QString::number(500000 + i);
        r.dstBanca = QStringLiteral("BANCA POPOLARE");
        r.dstSpeseUT = i % 4 ? 0.0 : 7.5;
        Semina(r);
        if (i % 7 == 0) {
            r.dstPrg = "1";
            r.dstCodP[0] = QStringLiteral("GIRO%1").arg(i) + A;
            r.dstCodP[1] = QStringLiteral("VECCHIO%1").arg(i);
            Semina(r);
        }
    }
    ASSERT_TRUE(Stampa(Filtro("//", "15/06/2024", Arca)));
    ASSERT_EQ(m_titoli, QStringList{"Modulo:  'DistXdit'"});

    const QStringList pagine = SuCarta(QStringLiteral("DistXdit"), m_cartella.percorso());
    ASSERT_GE(pagine.size(), 2);
    // Every page holds the firm's block, the heading and its own number.
    for (int p = 0; p < pagine.size(); ++p) {
        SCOPED_TRACE(p + 1);
        for (const QString &a : {QRegularExpression::escape(Arca),
                                 QStringLiteral("20121 +MILANO +\\(MI\\)"),
                                 QStringLiteral("fino +al +15/06/2024"),
                                 QStringLiteral("Data +N\\. +Cliente +Prodotti +Causale +Mon\\. "
                                                "+Importo +Assegno +Banca +Spese UT"),
                                 QStringLiteral("Pagina %1 di %2").arg(p + 1).arg(pagine.size())})
            EXPECT_TRUE(pagine.at(p).contains(QRegularExpression(a))) << qPrintable(a);
    }
    const QString tutto = pagine.join(u'\n');
    for (int i = 1; i <= 60; ++i) {
        SCOPED_TRACE(i);
        // The cheque is the movement's own: each once, none lost at a break.
        EXPECT_EQ(tutto.count(QString::number(500000 + i)), 1);
        const QString fnd = QStringLiteral("AZIONARIOEUR%1").arg(i, 3, 10, QLatin1Char('0'));
        EXPECT_TRUE(tutto.contains(QRegularExpression(fnd + (i % 2 ? "(?!\\*)\\b" : "\\*"))));
    }
    EXPECT_EQ(tutto.count(lunga), 12);
    EXPECT_TRUE(tutto.contains(QRegularExpression("giro .*GIRO7 +VECCHIO7\\*")));
    EXPECT_TRUE(tutto.contains(QRegularExpression("- +" + Euro(1000 + 5 * 37.25))));
    const QString &ultima = pagine.constLast();
    EXPECT_TRUE(ultima.contains(QRegularExpression("Totale distinta +" + Euro(totale))));
    EXPECT_TRUE(ultima.contains(QRegularExpression("Totale spese UT +" + Euro(15 * 7.5))));
}
