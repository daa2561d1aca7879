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

#include <QDialog>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::A;
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
        Scrivi(QStringLiteral("INSERT INTO Societa VALUES (?, ?, ?, ?, ?)"),
               {Alfa, QStringLiteral("VIA ROMA 1"), QStringLiteral("00184"),
                QStringLiteral("ROMA"), QStringLiteral("RM")});
    }
    void TearDown() override
    {
        installaGestoreModale({});
        consegnaStampa() = ConsegnaStampa();
        ProvaDistinte::TearDown();
    }

    struct Riga
    {
        int codice;
        QString prg;
        int giorno;
        int cliente;
        QString causale;
        double importo;
        QStringList fette;
        QString ditta = QStringLiteral("ALFA VITA");
        QString assegno = QStringLiteral(" ");
        QString banca = QStringLiteral(" ");
        double spese = 0;
        QString moneta = QStringLiteral("EUR");
    };
    static void Salva(const Riga &r)
    {
        QVariantList v{r.codice,     r.prg,     r.ditta,   r.giorno, r.cliente, r.causale,
                       r.moneta,     r.importo, r.assegno, r.banca,  r.spese};
        for (int i = 0; i < FetteProdotto; ++i)
            v.append(i < r.fette.size() ? r.fette.at(i) : QStringLiteral(" "));
        Scrivi(QStringLiteral("INSERT INTO Distinte (dstCodice, dstPrg, dstDitta, dstData, "
                              "dstCliente, dstCausale, dstMoneta, dstImporto, dstAssegno, "
                              "dstBanca, dstSpeseUT, dstCodP0, dstCodP1, dstCodP2, dstCodP3, "
                              "dstCodP4, dstChiusa) "
                              "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ' ')"),
               v);
    }

    static FiltroDistinte Filtro(const QString &dal, const QString &al,
                                 const QString &ditta = QString(),
                                 const QString &cliente = QStringLiteral(" "),
                                 const QString &nome = QStringLiteral(" "))
    {
        return {.dal = dal,
                .al = al,
                .codiceCliente = cliente,
                .nomeCliente = nome,
                .ditta = ditta,
                .ancheChiusi = true};
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
    static double Numero(const QVariantMap &r, int n, const char *tipo = "CNumero")
    {
        return r.value(QString::fromLatin1(tipo) + QString::number(n)).toDouble();
    }
    static QStringList Fette(const QVariantMap &r)
    {
        QStringList f;
        for (int i = 3; i <= 7; ++i)
            f.append(Testo(r, i));
        return f;
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
    Salva({7, "0", Oggi - 3, 13, "ABC", 250.5, {"RISC9" + A}, Arca, "A-77", "BANCA SUD", 0});
    Salva({5, "0", Oggi - 3, 12, "001", 1000, {"FND01" + A, "  POL22  ", " ", "ZZ" + A, "Q9"},
           Alfa, "123456", "CREDITO ROMAGNOLO", 12.5});
    // The switch's second row repeats the header, amount included: it must
    // not count twice.
    Salva({5, "1", Oggi - 3, 12, "001", 1000, {"OLD1", "NEW2" + A}, Alfa, "123456",
           "CREDITO ROMAGNOLO", 12.5});
    Salva({2, "0", Oggi - 20, 14, "001", 99.99, {" "}, Alfa, " ", " ", 0, "USD"});

    ASSERT_TRUE(Stampa(Filtro("1/5/2024", "15/06/2024")));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
    const DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 4);

    // In the list's order: date, number, row.
    const QVariantMap &p = d.corpo.at(0);
    EXPECT_EQ(Numero(p, 1), 2);
    EXPECT_EQ(Testo(p, 1), "26/05/24");
    EXPECT_EQ(Testo(p, 2), "BIANCHI LUCA");
    EXPECT_EQ(Fette(p), QStringList({"", "", "", "", ""}));
    EXPECT_EQ(Testo(p, 12), "USD");

    const QVariantMap &m = d.corpo.at(1);
    EXPECT_EQ(Numero(m, 1), 5);
    EXPECT_EQ(Numero(m, 2), 1000);
    EXPECT_EQ(Numero(m, 3), 12.5);
    EXPECT_EQ(Testo(m, 1), "12/06/24");
    EXPECT_EQ(Testo(m, 2), "ROSSI MARIO");
    EXPECT_EQ(Fette(m), QStringList({"FND01", "POL22  *", "", "ZZ", "Q9*"}));
    EXPECT_EQ(Testo(m, 8), "VERSAMENTO");
    EXPECT_EQ(Testo(m, 9), "123456");
    EXPECT_EQ(Testo(m, 10), "CREDITO ROMAGNOLO");
    EXPECT_TRUE(m.value("CCampo11").isNull());
    EXPECT_EQ(Testo(m, 12), "EUR");
    EXPECT_EQ(Testo(m, 13), "+");
    EXPECT_EQ(Testo(m, 14), " ");

    const QVariantMap &g = d.corpo.at(2);
    EXPECT_EQ(Fette(g), QStringList({"OLD1*", "NEW2", "", "", ""}));
    for (int n : {1, 2, 3})
        EXPECT_EQ(Numero(g, n), 0) << n;
    for (int n : {1, 2, 8, 9, 10, 12, 13, 14})
        EXPECT_EQ(Testo(g, n), " ") << n;

    const QVariantMap &r = d.corpo.at(3);
    EXPECT_EQ(Numero(r, 1), 7);
    EXPECT_EQ(Fette(r), QStringList({"RISC9", "", "", "", ""}));
    EXPECT_EQ(Testo(r, 8), "RISCATTO");
    EXPECT_EQ(Testo(r, 13), "-");

    // Payments less the outgoing reason; the switch's row "1" adds nothing.
    EXPECT_DOUBLE_EQ(Numero(d.testa, 1, "TNumero"), 1000 + 99.99 - 250.5);
    EXPECT_EQ(m_titoli, QStringList{"Modulo:  'DistXdit'"});
    EXPECT_EQ(sessione().CodiceStop, 0);
}

// The head from the filter: dates only when they are dates, the firm's
// block only for a firm found (by a name with an apostrophe too), the
// module per firm or per client.
TEST_F(StampaDist, TestaDittaEModulo)
{
    Salva({1, "0", Oggi - 2, 13, "ABC", 300, {"A1"}, Arca});
    Salva({2, "0", Oggi - 1, 13, "001", 100, {"A2"}, Arca});
    Salva({3, "0", Oggi - 1, 12, "001", 40, {"B1"}, QStringLiteral("DITTA SENZA SCHEDA")});

    // No from date: the query runs from the beginning of time all the same.
    ASSERT_TRUE(Stampa(Filtro("//", "30/6/2024", "  " + Arca + " ", "13", "ROSSI MARTA")));
    DatiReport d = Staged();
    ASSERT_EQ(d.corpo.size(), 2);
    EXPECT_EQ(Testo(d.testa, 1, "TCampo"), " ");
    EXPECT_EQ(Testo(d.testa, 2, "TCampo"), "30/6/2024");
    EXPECT_EQ(Testo(d.testa, 3, "TCampo"), "  " + Arca + " ");
    EXPECT_EQ(Testo(d.testa, 4, "TCampo"), Arca);
    EXPECT_EQ(Testo(d.testa, 5, "TCampo"), "IT60X0542811101000000123456");
    EXPECT_EQ(Testo(d.testa, 6, "TCampo"), "20121");
    EXPECT_EQ(Testo(d.testa, 7, "TCampo"), "MILANO");
    EXPECT_EQ(Testo(d.testa, 8, "TCampo"), "MI");
    EXPECT_EQ(Testo(d.testa, 9, "TCampo"), "13");
    EXPECT_EQ(Testo(d.testa, 10, "TCampo"), "ROSSI MARTA");
    // Only the outgoing reason: the total is negative.
    EXPECT_DOUBLE_EQ(Numero(d.testa, 1, "TNumero"), 100 - 300);

    // A firm without its card: the block stays blank. A date that is not
    // one prints as a blank.
    ASSERT_TRUE(Stampa(Filtro("1/6/2024", "31/6/2024", "DITTA SENZA SCHEDA")));
    d = Staged();
    ASSERT_EQ(d.corpo.size(), 1);
    EXPECT_EQ(Testo(d.testa, 1, "TCampo"), "1/6/2024");
    EXPECT_EQ(Testo(d.testa, 2, "TCampo"), " ");
    for (int n = 4; n <= 8; ++n)
        EXPECT_EQ(Testo(d.testa, n, "TCampo"), " ") << n;
    EXPECT_DOUBLE_EQ(Numero(d.testa, 1, "TNumero"), 40);

    // No firm at all: every firm's rows, the block blank.
    ASSERT_TRUE(Stampa(Filtro("1/6/2024", "15/6/2024")));
    d = Staged();
    EXPECT_EQ(d.corpo.size(), 3);
    for (int n = 4; n <= 8; ++n)
        EXPECT_EQ(Testo(d.testa, n, "TCampo"), " ") << n;

    EXPECT_EQ(m_titoli, QStringList({"Modulo:  'DistXcli'", "Modulo:  'DistXdit'",
                                     "Modulo:  'DistXdit'"}));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join('|'));
}

// Nothing to print: no preview, no word, and the last print's rows stay.
TEST_F(StampaDist, EstrazioneVuota)
{
    Salva({1, "0", Oggi - 2, 13, "001", 300, {"A1"}});
    ASSERT_TRUE(Stampa(Filtro("//", "//")));
    m_titoli.clear();

    EXPECT_FALSE(Stampa(Filtro("1/1/2020", "31/12/2020")));
    EXPECT_FALSE(Stampa(Filtro("//", "//", QStringLiteral("NESSUNA"))));
    // Before any extraction there is nothing to print either.
    EXPECT_FALSE(StampaDistinta(CondizioneDistinte(), Filtro("//", "//")));
    QString errore = QStringLiteral("x");
    EXPECT_FALSE(RigheStampaDistinta(CondizioneEstrazione(Filtro("//", "1/1/2000"), Oggi),
                                     Filtro("//", "1/1/2000"), &errore));
    EXPECT_TRUE(errore.isEmpty());

    EXPECT_TRUE(m_titoli.isEmpty());
    EXPECT_TRUE(m_messaggi.testi().isEmpty());
    EXPECT_EQ(Conta("PrtCorpo"), 1);
    EXPECT_EQ(Conta("PrtTesta"), 1);
}

// A failing step is told in its words, its writing undone, nothing printed.
TEST_F(StampaDist, PassoFallito)
{
    Salva({1, "0", Oggi - 2, 13, "001", 300, {"A1"}});
    Salva({2, "0", Oggi - 1, 14, "001", 200, {"B1" + A}});
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
    Scrivi(QStringLiteral("CREATE TRIGGER Rifiuta BEFORE INSERT ON PrtCorpo "
                          "WHEN NEW.CCampo3 = 'B1' BEGIN SELECT RAISE(ABORT, 'no'); END"));
    fallisce(QString(), 3, QStringLiteral("ERRORE 3: AGGIORNAMENTO TEMPORANEI DI STAMPA"));
    EXPECT_EQ(Conta("PrtCorpo"), 0);
    EXPECT_EQ(Conta("PrtTesta"), 0);
    Scrivi(QStringLiteral("DROP TRIGGER Rifiuta"));

    // The firm's card cannot be read: the writing step fails.
    Scrivi(QStringLiteral("DROP TABLE Societa"));
    fallisce(Alfa, 3, QStringLiteral("ERRORE 3: AGGIORNAMENTO TEMPORANEI DI STAMPA"));

    // The extraction itself cannot run: the engine's words, nothing staged.
    m_messaggi.pulisci();
    Scrivi(QStringLiteral("DROP TABLE DistCausali"));
    EXPECT_FALSE(Stampa(Filtro("//", "//")));
    ASSERT_EQ(m_messaggi.testi().size(), 1);
    EXPECT_TRUE(m_messaggi.testi().first().contains(QStringLiteral("DistCausali")))
        << qPrintable(m_messaggi.testi().first());
    EXPECT_TRUE(m_titoli.isEmpty());
}

namespace {

// The text of each page of a PDF, laid out as on paper.
QStringList TestoPagine(const QString &pdf)
{
    QProcess lettore;
    lettore.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, "-"});
    if (!lettore.waitForFinished(60000))
        return {};
    QStringList pagine = QString::fromUtf8(lettore.readAllStandardOutput()).split(u'\f');
    while (!pagine.isEmpty() && pagine.constLast().trimmed().isEmpty())
        pagine.removeLast();
    return pagine;
}

// The staged rows printed on paper by the installed module, page by page.
// SORVANE_PDF_PROVA=path keeps a copy of each PDF (the module's name
// before ".pdf"), to look at the pages by eye.
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
    if (QString copia = qEnvironmentVariable("SORVANE_PDF_PROVA"); !copia.isEmpty()) {
        if (copia.endsWith(QStringLiteral(".pdf")))
            copia.chop(4);
        copia += modulo + QStringLiteral(".pdf");
        QFile::remove(copia);
        QFile::copy(pdf, copia);
    }
    return TestoPagine(pdf);
}

// Every page holds each of the texts (patterns) and its own number.
void OgniPagina(const QStringList &pagine, const QStringList &attesi)
{
    const int n = int(pagine.size());
    for (int i = 0; i < n; ++i) {
        SCOPED_TRACE(i + 1);
        for (const QString &a : attesi)
            EXPECT_TRUE(pagine.at(i).contains(QRegularExpression(a))) << qPrintable(a);
        EXPECT_TRUE(pagine.at(i).contains(QStringLiteral("Pagina %1 di %2").arg(i + 1).arg(n)));
    }
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
TEST_F(StampaDist, DistintaPerDittaSuCarta)
{
    const QString causali[] = {QStringLiteral("001"), QStringLiteral("ABC")};
    double totale = 0;
    for (int i = 1; i <= 60; ++i) {
        const bool uscita = i % 5 == 0;
        const double importo = 1000 + i * 37.25;
        totale += uscita ? -importo : importo;
        Riga r{i, "0", Oggi - 60 + i, 12 + i % 3, causali[uscita], importo,
               {QStringLiteral("FND%1").arg(i, 3, 10, QLatin1Char('0')) + (i % 2 ? A : ""),
                QStringLiteral("POL%1").arg(i) + (i % 3 ? "" : A)},
               Arca, QStringLiteral("%1").arg(500000 + i), QStringLiteral("BANCA POPOLARE"),
               i % 4 ? 0.0 : 7.5};
        Salva(r);
        if (i % 7 == 0) {
            r.prg = "1";
            r.fette = {QStringLiteral("GIRO%1").arg(i) + A, QStringLiteral("VECCHIO%1").arg(i)};
            Salva(r);
        }
    }
    ASSERT_TRUE(Stampa(Filtro("//", "15/06/2024", Arca)));
    ASSERT_EQ(m_titoli, QStringList{"Modulo:  'DistXdit'"});

    const QStringList pagine = SuCarta(QStringLiteral("DistXdit"), m_cartella.percorso());
    ASSERT_GE(pagine.size(), 2);
    OgniPagina(pagine, {QRegularExpression::escape(Arca), "20121 +MILANO +\\(MI\\)",
                        "fino +al +15/06/2024",
                        "Data +N\\. +Cliente +Prodotti +Causale +Mon\\. +Importo +Assegno "
                        "+Banca +Spese UT"});
    const QString tutto = pagine.join(u'\n');
    for (int i = 1; i <= 60; ++i) {
        SCOPED_TRACE(i);
        // The cheque is the movement's own: each once, none lost at a break.
        EXPECT_EQ(tutto.count(QString::number(500000 + i)), 1);
        const QString fnd = QStringLiteral("FND%1").arg(i, 3, 10, QLatin1Char('0'));
        EXPECT_TRUE(tutto.contains(QRegularExpression(fnd + (i % 2 ? "(?!\\*)\\b" : "\\*"))));
    }
    EXPECT_TRUE(tutto.contains(QRegularExpression("giro .*GIRO7 +VECCHIO7\\*")));
    EXPECT_TRUE(tutto.contains(QRegularExpression("- +" + Euro(1000 + 5 * 37.25))));
    const QString &ultima = pagine.constLast();
    EXPECT_TRUE(ultima.contains(QRegularExpression("Totale distinta +" + Euro(totale))));
    EXPECT_TRUE(ultima.contains(QRegularExpression("Totale spese UT +" + Euro(15 * 7.5))));
}
