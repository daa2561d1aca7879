#include "frame/core/Formato.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Documenti.h"
#include "frame/ui/Modale.h"
#include "frame/ui/SchermoPdf.h"
#include "reports/Anteprima.h"
#include "reports/Renderer.h"
#include "support/CartellaProva.h"
#include "tests/reports/DatiProva.h"
#include "tests/reports/TestoPdf.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGroupBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTranslator>
#include <QUrl>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// Answers the modal dialogs of a test with a function, and puts the real
// ones back at its end.
class Dialoghi
{
public:
    explicit Dialoghi(GestoreModale g) { installaGestoreModale(std::move(g)); }
    ~Dialoghi() { installaGestoreModale({}); }
};

} // namespace

// A statement of 600 rows on paper, in two font families: every page has
// the firm's header, the table's heading and its own number; the totals
// close the last page. The pages the preview counts, those of a PDF and
// those of a printer at its own resolution are one number, the "di M" of
// every footer.
TEST(StampaPdf, EstrattoSuPiuPagine)
{
    const int righe = 600;
    const DatiReport dati = DatiEstratto(righe);
    double importi = 0, spese = 0;
    for (const QVariantMap &r : dati.corpo) {
        importi += r.value("CNumero1").toDouble();
        spese += r.value("CNumero2").toDouble();
    }
    for (const QString &famiglia : {QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans")}) {
        SCOPED_TRACE(famiglia.toStdString());
        ASSERT_TRUE(QFontDatabase::hasFamily(famiglia)) << "scripts/deps.sh installs it";
        Modello modello = ModelloProva();
        modello.stile += QStringLiteral("\nbody { font-family: '%1'; }").arg(famiglia);
        const ModelloCompilato compilato = CompilaModello(modello, dati);
        const int n = Impaginazione(modello, compilato).pagine();
        ASSERT_GE(n, 3);

        CartellaProva dir;
        const QString file = dir.file(QStringLiteral("estratto.pdf"));
        const QString carta = dir.file(QStringLiteral("stampante.pdf"));
        ASSERT_TRUE(SalvaPdf(file, modello, compilato));
        EXPECT_TRUE(CaratteriPdf(file).contains(QString(famiglia).remove(u' ')));
        QPrinter stampante(QPrinter::HighResolution);
        stampante.setOutputFileName(carta);
        PreparaPagina(stampante, modello);
        ASSERT_TRUE(StampaSuStampante(stampante, modello, compilato));

        const QStringList pagine = PagineTestoPdf(file);
        const QStringList suCarta = PagineTestoPdf(carta);
        ASSERT_EQ(pagine.size(), n);
        ASSERT_EQ(suCarta.size(), n);
        for (int i = 0; i < n; ++i) {
            const QString &p = pagine.at(i);
            SCOPED_TRACE(i + 1);
            const QString numero = QStringLiteral("Pagina %1 di %2").arg(i + 1).arg(n);
            EXPECT_TRUE(p.contains("Studio Ferraresi Consulenze"));
            EXPECT_TRUE(p.contains("Stampato il 15/03/2025"));
            EXPECT_TRUE(p.contains(QRegularExpression("Data +Causale +Descrizione +Importo")));
            // The footer closes the page: nothing of the body comes after it.
            EXPECT_TRUE(p.trimmed().endsWith(numero));
            EXPECT_TRUE(suCarta.at(i).trimmed().endsWith(numero));
        }
        EXPECT_TRUE(pagine.at(0).contains(NomeCliente()));

        const QString &ultima = pagine.constLast();
        EXPECT_TRUE(ultima.contains(QRegularExpression(
            "Totali +" + QRegularExpression::escape(Format(importi, "#,###,###,##0.00")) + " +"
            + QRegularExpression::escape(Format(spese, "#,###,###,##0.00")))))
            << ultima.toStdString();
        EXPECT_TRUE(ultima.contains(QRegularExpression(
            "Saldo finale +" + QRegularExpression::escape(Format(importi, "#,###,###,##0.00")))));

        // Every row printed once: none lost or doubled at a page break.
        const QString tutto = pagine.join(QLatin1Char('\n'));
        for (int i = 1; i <= righe; ++i)
            EXPECT_EQ(tutto.count(QRegularExpression(QStringLiteral(" n\\. %1 ").arg(i))), 1) << i;
    }
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

// "P": the dialog speaks Italian and offers, for a print to PDF, the
// module's name in the prints folder. Cancel prints nothing; OK prints once
// with the copies asked; a file the PDF writer cannot write is told, in
// Italian before the system's words.
TEST(Lancio, StampanteConDialogo)
{
    StatoSalvato stato;
    MessaggiRegistrati messaggi;
    ASSERT_TRUE(CaricaTestiQtItaliani()) << "scripts/deps.sh installs Qt's translations";
    CartellaProva dir;
    impostazioni().PathStampe = dir.percorso() + QLatin1Char('/');
    QString file = dir.file(QStringLiteral("stampa.pdf"));
    QDialog::DialogCode risposta = QDialog::Rejected;
    int copie = 0;
    QString proposto, stampa;
    QStringList riquadri;
    Dialoghi dialoghi([&](QDialog &d) {
        auto *pd = qobject_cast<QPrintDialog *>(&d);
        EXPECT_NE(pd, nullptr);
        if (!pd)
            return int(QDialog::Rejected);
        copie = pd->printer()->copyCount();
        proposto = pd->printer()->outputFileName();
        if (auto *pulsanti = pd->findChild<QDialogButtonBox *>())
            stampa = pulsanti->button(QDialogButtonBox::Ok)->text();
        for (const QGroupBox *riquadro : pd->findChildren<QGroupBox *>())
            riquadri << riquadro->title();
        pd->printer()->setOutputFormat(QPrinter::PdfFormat);
        pd->printer()->setOutputFileName(file);
        return int(risposta);
    });
    Lancio l;
    l.tipo = QLatin1Char('P');
    l.copie = 2;
    EXPECT_FALSE(LanciaReport(l, ModelloProva(), DatiEstratto(10)));
    qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator *>());
    EXPECT_EQ(copie, 2);
    EXPECT_EQ(proposto, dir.file(QStringLiteral("Prova.pdf")));
    EXPECT_EQ(stampa.remove(u'&'), QStringLiteral("Stampa"));
    // A text Qt's catalogue lacks, from the program's own.
    EXPECT_TRUE(riquadri.contains(QStringLiteral("Stampa fronte e retro"))) << qPrintable(riquadri.join(", "));
    EXPECT_FALSE(QFile::exists(file));

    risposta = QDialog::Accepted;
    l.copie = 0;
    EXPECT_TRUE(LanciaReport(l, ModelloProva(), DatiEstratto(10)));
    EXPECT_EQ(copie, 1);
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_EQ(PagineTestoPdf(file).size(), 1);
    EXPECT_TRUE(messaggi.testi().isEmpty());

    file = dir.file(QStringLiteral("manca/stampa.pdf"));
    EXPECT_FALSE(LanciaReport(l, ModelloProva(), DatiEstratto(10)));
    ASSERT_EQ(messaggi.testi().size(), 1);
    const QString testo = messaggi.testi().constFirst();
    EXPECT_TRUE(testo.startsWith(QStringLiteral("ERRORE DI STAMPA SUL FILE ") + file + "\n"))
        << qPrintable(testo);
    EXPECT_GT(testo.section(QLatin1Char('\n'), 1).size(), 0);
}

// The PDF of the screen: a missing folder is made; one that cannot be made
// is told with the system's words, and nothing is opened.
TEST(SchermoPdf, CartellaMancante)
{
    MessaggiRegistrati messaggi;
    QStringList aperti;
    installaApriUrl([&](const QUrl &u) {
        aperti.append(u.toLocalFile());
        return true;
    });
    const ImpostazioniPdf prima = pdf();
    CartellaProva dir;
    pdf() = {QStringLiteral("PDFCREATOR"), QStringLiteral("schermo"),
             dir.file(QStringLiteral("nuova/pdf"))};
    QPixmap immagine(300, 200);
    immagine.fill(Qt::white);
    const QString file = SchermoInPdf(1, immagine);
    EXPECT_EQ(QFileInfo(file), QFileInfo(dir.file(QStringLiteral("nuova/pdf/schermo.pdf"))));
    EXPECT_GT(QFileInfo(file).size(), 0);
    EXPECT_EQ(aperti.size(), 1);
    EXPECT_TRUE(messaggi.testi().isEmpty());

    pdf().CartellaPdf = dir.scrivi(QStringLiteral("file"), "x") + QStringLiteral("/pdf");
    EXPECT_TRUE(SchermoInPdf(1, immagine).isEmpty());
    ASSERT_EQ(messaggi.testi().size(), 1);
    const QString testo = messaggi.testi().constFirst();
    EXPECT_TRUE(testo.startsWith("IMPOSSIBILE CREARE LA CARTELLA " + pdf().CartellaPdf + "\n"))
        << qPrintable(testo);
    EXPECT_GT(testo.section(QLatin1Char('\n'), 1).size(), 0);
    EXPECT_EQ(aperti.size(), 1);
    pdf() = prima;
    installaApriUrl({});
}
