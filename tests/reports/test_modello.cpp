#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "reports/Modello.h"
#include "support/CartellaProva.h"
#include "tests/reports/DatiProva.h"

#include <QDir>
#include <QTextDocument>
#include <gtest/gtest.h>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

QString Compila(const QString &testo, const DatiReport &dati)
{
    const ModelloCompilato c = CompilaModello(LeggiModello(testo), dati);
    EXPECT_TRUE(c.errore.isEmpty()) << c.errore.toStdString();
    return c.corpo;
}

// What the page shows of some HTML: the text after the markup is read.
QString Testo(const QString &html)
{
    QTextDocument doc;
    doc.setHtml(html);
    return doc.toPlainText();
}

} // namespace

TEST(CercaModulo, CartellaOperatorePrimaPoiComune)
{
    CartellaProva dir;
    QDir(dir.percorso()).mkpath(QStringLiteral("op"));
    QDir(dir.percorso()).mkpath(QStringLiteral("comune"));
    const QString op = dir.file(QStringLiteral("op")) + QDir::separator();
    const QString comune = dir.file(QStringLiteral("comune")) + QDir::separator();
    dir.scrivi(QStringLiteral("comune/Dist.rpt"), "<p>comune</p>");
    dir.scrivi(QStringLiteral("comune/Solo.rpt"), "<p>solo</p>");
    dir.scrivi(QStringLiteral("op/Dist.rpt"), "<p>operatore</p>");

    EXPECT_EQ(PercorsoModulo(QStringLiteral("Dist.rpt"), op, comune), op + "Dist.rpt");
    EXPECT_EQ(PercorsoModulo(QStringLiteral("Solo.rpt"), op, comune), comune + "Solo.rpt");
    // A blank operator's folder is skipped, not taken for the current one.
    EXPECT_EQ(PercorsoModulo(QStringLiteral("Dist.rpt"), QString(), comune),
              comune + "Dist.rpt");
}


TEST(LeggiModello, PartiDellaPagina)
{
    const Modello m = LeggiModello(QStringLiteral(
        "<html><head><meta name=\"gruppo\" content=\"CCampo2\">"
        "<meta name=\"pagina\" content=\"orizzontale\">"
        "<style>td { color: red; }</style></head><body>"
        "<header><b>{{TCampo1}}</b></header><p>corpo</p>"
        "<footer>Pagina {{pagina}} di {{pagine}}</footer></body></html>"));
    EXPECT_EQ(m.gruppo, "CCampo2");
    EXPECT_TRUE(m.orizzontale);
    EXPECT_EQ(m.intestazione, "<b>{{TCampo1}}</b>");
    EXPECT_EQ(m.piede, "Pagina {{pagina}} di {{pagine}}");
    EXPECT_TRUE(m.stile.contains("color: red"));
    EXPECT_FALSE(m.corpo.contains("header"));
    EXPECT_FALSE(m.corpo.contains("Pagina"));
    EXPECT_TRUE(m.corpo.contains("<p>corpo</p>"));
    const Modello semplice = LeggiModello(QStringLiteral("<p>{{pagina}}</p>"));
    EXPECT_FALSE(semplice.orizzontale);
    EXPECT_TRUE(semplice.piede.contains("Pagina {{pagina}} di {{pagine}}"));
    EXPECT_EQ(CompilaModello(semplice, {}).corpo, "<p></p>");
    EXPECT_TRUE(LeggiModello(QStringLiteral("<p>x</p><footer></footer>")).piede.isEmpty());
}

TEST(CompilaModello, ValoriStampatiComeScritti)
{
    DatiReport d;
    d.testa.insert(QStringLiteral("TCampo3"), NomeCliente());
    d.testa.insert(QStringLiteral("TCampo4"), QStringLiteral("\"Rossi\" l'avvocato"));
    const QString html = Compila(QStringLiteral("<p>{{TCampo3}}</p><p>{{TCampo4}}</p>"), d);
    EXPECT_TRUE(html.contains("Bianchi &amp; Figli &lt;Sas&gt;")) << html.toStdString();
    EXPECT_EQ(Testo(html), NomeCliente() + "\n\"Rossi\" l'avvocato");
    // Pieces of trusted markup go in with three braces.
    d.testa.insert(QStringLiteral("TCampo5"), QStringLiteral("<b>grassetto</b>"));
    EXPECT_TRUE(Compila(QStringLiteral("{{{TCampo5}}}"), d).contains("<b>grassetto</b>"));
}

TEST(CompilaModello, FormatiPerSuffisso)
{
    LocaleFissato it(Italiano());
    DatiReport d;
    d.testa = {
        {QStringLiteral("TNumero1"), 1234567.891},
        {QStringLiteral("TNumero2"), qlonglong(37257)},
        {QStringLiteral("TNumero3"), 0.0},
        {QStringLiteral("TNumero4"), QVariant()},
        {QStringLiteral("TCampo1"), QStringLiteral("   ")},
        {QStringLiteral("TCampo2"), QDate(2002, 1, 1)},
    };
    const QString html = Compila(QStringLiteral(
        "[{{TNumero1}}][{{TNumero1_0}}][{{TNumero1_3}}][{{TNumero1_6}}][{{TNumero1_grezzo}}]"
        "[{{TNumero2}}][{{TNumero2_data}}][{{TNumero4}}][{{TCampo2}}]"
        "{{#TNumero1_presente}}[pieno]{{/TNumero1_presente}}"
        "{{#TNumero3_presente}}[zero]{{/TNumero3_presente}}"
        "{{^TNumero4_presente}}[nullo]{{/TNumero4_presente}}"
        "{{#TCampo1_presente}}[bianco]{{/TCampo1_presente}}"), d);
    EXPECT_EQ(html, "[1.234.567,89][1.234.568][1.234.567,891][1.234.567,891000][1234567.891]"
                    "[37.257][01/01/2002][][01/01/2002][pieno][nullo]");
}

TEST(CompilaModello, RigheTotaliEGruppi)
{
    LocaleFissato it(Italiano());
    DatiReport d;
    const QList<std::pair<QString, double>> righe = {
        {QStringLiteral("VERS"), 100.10}, {QStringLiteral("VERS"), 200.20},
        {QStringLiteral("RISC"), 50}, {QStringLiteral("VERS"), 1},
    };
    for (const auto &[causale, importo] : righe)
        d.corpo.append({{QStringLiteral("CCampo2"), causale},
                        {QStringLiteral("CNumero1"), importo},
                        {QStringLiteral("CCampo3"), QStringLiteral("nota")}});

    EXPECT_EQ(Compila(QStringLiteral("{{conteggio}}:{{#corpo}}{{riga}}{{#pari}}p{{/pari}}"
                                     " {{CNumero1}};{{/corpo}}={{totali.CNumero1}}"), d),
              "4:1 100,10;2p 200,20;3 50,00;4p 1,00;=351,30");

    // A group is a run of rows with the same value, in staging order: the
    // last "VERS" starts a group of its own.
    const QString gruppi = Compila(QStringLiteral(
        "<meta name=\"gruppo\" content=\"CCampo2\">"
        "{{#gruppi}}{{numero}}.{{chiave}}({{conteggio}}):"
        "{{#righe}}{{riga}}/{{CNumero1_0}} {{/righe}}={{totali.CNumero1}}|{{/gruppi}}"), d);
    EXPECT_TRUE(gruppi.endsWith(
        "1.VERS(2):1/100 2/200 =300,30|2.RISC(1):1/50 =50,00|3.VERS(1):1/1 =1,00|"))
        << gruppi.toStdString();

    // The first rows only, for the first pages of a long report: counts and
    // totals are still those of every row, of the report and of a group.
    const Modello m = LeggiModello(QStringLiteral(
        "<meta name=\"gruppo\" content=\"CCampo2\">{{conteggio}}:"
        "{{#corpo}}{{CNumero1_0}} {{/corpo}}={{totali.CNumero1}}|"
        "{{#gruppi}}{{chiave}}({{conteggio}}):{{#righe}}{{CNumero1_0}} {{/righe}}"
        "={{totali.CNumero1}}|{{/gruppi}}"));
    auto prime = [&](int n) { // after the <meta> tag, which stays in the text
        const QString c = CompilaModello(m, d, n).corpo;
        return c.mid(c.indexOf(QLatin1Char('>')) + 1);
    };
    EXPECT_EQ(prime(1), "4:100 =351,30|VERS(2):100 =300,30|");
    EXPECT_EQ(prime(3), "4:100 200 50 =351,30|VERS(2):100 200 =300,30|RISC(1):50 =50,00|");
    EXPECT_EQ(CompilaModello(m, d, 9).corpo, CompilaModello(m, d).corpo);
}

TEST(CompilaModello, ValoriDellaCorsa)
{
    DatiReport d = DatiEstratto(3);
    EXPECT_EQ(Compila(QStringLiteral("{{oggi}} {{operatore}}"), d), "15/03/2025 ROSSI");
    // Without a date given, today's.
    d.esecuzione.clear();
    EXPECT_EQ(Compila(QStringLiteral("{{oggi}}"), d).size(), 10);
}

