#include "frame/core/Formato.h"
#include "frame/core/Impostazioni.h"
#include "frame/ui/Modale.h"
#include "reports/Anteprima.h"
#include "reports/Renderer.h"
#include "support/CartellaProva.h"
#include "tests/reports/DatiProva.h"

#include <QFile>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// The text of each page of a PDF, as a reader would copy it.
QStringList PaginePdf(const QString &file)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    EXPECT_TRUE(p.waitForFinished(30000));
    QStringList pagine = QString::fromUtf8(p.readAllStandardOutput()).split(QLatin1Char('\f'));
    if (!pagine.isEmpty() && pagine.constLast().trimmed().isEmpty())
        pagine.removeLast();
    return pagine;
}

// Answers the modal dialogs of a test with a function, and puts the real
// ones back at its end.
class Dialoghi
{
public:
    explicit Dialoghi(GestoreModale g) { installaGestoreModale(std::move(g)); }
    ~Dialoghi() { installaGestoreModale({}); }
};

} // namespace

// A statement of 200 rows on paper: every page has the firm's header, the
// table's heading and its own number; the totals close the last page.
TEST(StampaPdf, EstrattoSuPiuPagine)
{
    CartellaProva dir;
    const Modello modello = ModelloProva();
    const DatiReport dati = DatiEstratto(200);
    const QString file = dir.file(QStringLiteral("estratto.pdf"));
    ASSERT_TRUE(SalvaPdf(file, modello, CompilaModello(modello, dati)));
    // SORVANE_PDF_PROVA=path keeps a copy, to look at the pages by eye.
    if (const QString copia = qEnvironmentVariable("SORVANE_PDF_PROVA"); !copia.isEmpty()) {
        QFile::remove(copia);
        QFile::copy(file, copia);
    }

    const QStringList pagine = PaginePdf(file);
    const int n = int(pagine.size());
    ASSERT_GE(n, 3);
    for (int i = 0; i < n; ++i) {
        const QString &p = pagine.at(i);
        SCOPED_TRACE(i + 1);
        EXPECT_TRUE(p.contains("Studio Ferraresi Consulenze"));
        EXPECT_TRUE(p.contains("Stampato il 15/03/2025"));
        EXPECT_TRUE(p.contains(QRegularExpression("Data +Causale +Descrizione +Importo")));
        EXPECT_TRUE(p.contains(QStringLiteral("Pagina %1 di %2").arg(i + 1).arg(n)));
        // The footer closes the page: nothing of the body comes after it.
        EXPECT_TRUE(p.trimmed().endsWith(QStringLiteral("Pagina %1 di %2").arg(i + 1).arg(n)));
    }
    EXPECT_TRUE(pagine.at(0).contains(NomeCliente()));

    double importi = 0, spese = 0;
    for (const QVariantMap &r : dati.corpo) {
        importi += r.value("CNumero1").toDouble();
        spese += r.value("CNumero2").toDouble();
    }
    // "Saldo finale" may come out with the "fi" ligature.
    const QString &ultima = pagine.constLast();
    EXPECT_TRUE(ultima.contains(QRegularExpression(
        "Totali +" + QRegularExpression::escape(Format(importi, "#,###,###,##0.00")) + " +"
        + QRegularExpression::escape(Format(spese, "#,###,###,##0.00")))))
        << ultima.toStdString();
    EXPECT_TRUE(ultima.contains(QRegularExpression(
        "Saldo \\S+ +" + QRegularExpression::escape(Format(importi, "#,###,###,##0.00")))));

    // Every row printed once: none lost or doubled at a page break.
    const QString tutto = pagine.join(QLatin1Char('\n'));
    for (int i = 1; i <= 200; ++i)
        EXPECT_EQ(tutto.count(QRegularExpression(QStringLiteral(" n\\. %1 ").arg(i))), 1) << i;
}

TEST(Anteprima, PosizioneConBarraApplicazioni)
{
    const QRect schermo(0, 0, 1200, 900);
    struct Caso
    {
        QRect disponibile; // what the bar leaves of the screen
        LatoBarra lato;
        int codice;
        QRect atteso;
    };
    const QRect basso(0, 0, 1200, 860), alto(0, 30, 1200, 870);
    const QRect sinistra(60, 0, 1140, 900), destra(0, 0, 1140, 900);
    const Caso casi[] = {
        {basso, LatoBarra::Basso, 3, QRect(0, 410, 1199, 450)},
        // Bar on top, code 4: the window starts under the bar.
        {alto, LatoBarra::Alto, 4, QRect(200, 30, 800, 600)},

        {sinistra, LatoBarra::Sinistra, 7, QRect(60, 0, 0, 0)},

        {destra, LatoBarra::Destra, 1, QRect(0, 0, 1139, 450)},
        // An unknown code leaves everything at 0: the window's own place.
        {basso, LatoBarra::Basso, 8, QRect()},
    };
    for (const Caso &c : casi) {
        SCOPED_TRACE(c.codice);
        const BarraApplicazioni barra = LeggiBarraApplicazioni(schermo, c.disponibile);
        EXPECT_EQ(barra.lato, c.lato);
        EXPECT_EQ(GeometriaAnteprima(c.codice, schermo.size(), barra), c.atteso);
    }
    EXPECT_EQ(LeggiBarraApplicazioni(schermo, basso).altezza, 40);
    EXPECT_EQ(LeggiBarraApplicazioni(schermo, schermo).altezza, 0);
}

// "P": Cancel in the print dialog prints nothing; OK prints once with the
// copies asked.
TEST(Lancio, StampanteConDialogo)
{
    CartellaProva dir;
    const QString file = dir.file(QStringLiteral("stampa.pdf"));
    QDialog::DialogCode risposta = QDialog::Rejected;
    int copie = 0;
    Dialoghi dialoghi([&](QDialog &d) {
        auto *pd = qobject_cast<QPrintDialog *>(&d);
        EXPECT_NE(pd, nullptr);
        if (!pd)
            return int(QDialog::Rejected);
        copie = pd->printer()->copyCount();
        pd->printer()->setOutputFormat(QPrinter::PdfFormat);
        pd->printer()->setOutputFileName(file);
        return int(risposta);
    });
    Lancio l;
    l.tipo = QLatin1Char('P');
    l.copie = 2;
    EXPECT_FALSE(LanciaReport(l, ModelloProva(), DatiEstratto(10)));
    EXPECT_EQ(copie, 2);
    EXPECT_FALSE(QFile::exists(file));

    risposta = QDialog::Accepted;
    l.copie = 0;
    EXPECT_TRUE(LanciaReport(l, ModelloProva(), DatiEstratto(10)));
    EXPECT_EQ(copie, 1);
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_EQ(PaginePdf(file).size(), 1);
}

