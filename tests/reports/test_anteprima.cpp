#include "frame/core/Impostazioni.h"
#include "frame/ui/Modale.h"
#include "reports/Anteprima.h"
#include "reports/Renderer.h"
#include "support/CartellaProva.h"
#include "tests/reports/DatiProva.h"
#include "tests/reports/TestoPdf.h"

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QScreen>
#include <QSpinBox>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// A page as the layout draws it, on an image of the sheet's printable area.
QImage Pagina(const Impaginazione &pagine, int indice)
{
    QImage img(pagine.area().toSize(), QImage::Format_RGB32);
    img.fill(Qt::white);
    QPainter p(&img);
    pagine.disegnaPagina(p, indice);
    return img;
}

// The labels' module with nine rows of labels: its count of pages, then
// where the bands of ink of its first page start and end, in units.
QList<int> MisuraEtichette()
{
    Modello modello;
    EXPECT_TRUE(CaricaModello(QStringLiteral(MODULI_PREDEFINITI "/CliEtic.rpt"), modello));
    DatiReport dati;
    for (int r = 0; r < 9; ++r) {
        QVariantMap riga;
        for (int c = 1; c <= 9; ++c)
            riga[QStringLiteral("CCampo%1").arg(c)] = QStringLiteral("ROSSI MARIO %1").arg(r);
        dati.corpo.append(riga);
    }
    const Impaginazione pagine(modello, CompilaModello(modello, dati));
    QList<int> misura{pagine.pagine()};
    const QImage img = Pagina(pagine, 0);
    bool dentro = false;
    for (int y = 0; y < img.height(); ++y) {
        const auto *riga = reinterpret_cast<const QRgb *>(img.constScanLine(y));
        const bool inchiostro = std::any_of(riga, riga + img.width(),
                                            [](QRgb c) { return qGray(c) < 128; });
        if (inchiostro != dentro)
            misura.append(y);
        dentro = inchiostro;
    }
    return misura;
}

std::string Testo(const QList<int> &numeri)
{
    std::string t;
    for (int n : numeri)
        t += std::to_string(n) + ' ';
    return t;
}

void Premi(QDialog &d, const char *nome)
{
    QAction *a = d.findChild<QAction *>(QString::fromLatin1(nome));
    ASSERT_NE(a, nullptr) << nome;
    a->trigger();
}

} // namespace

// The layout a preview draws from gives the same pages as the paper: as many,
// and the first rows' layout draws the first page as the whole one does.
TEST(Impaginazione, PrimePagineComeLeTutte)
{
    const Modello modello = ModelloProva();
    const DatiReport dati = DatiEstratto(600);
    const ModelloCompilato tutto = CompilaModello(modello, dati);
    const Impaginazione pagine(modello, tutto);

    CartellaProva dir;
    QPdfWriter pdf(dir.file(QStringLiteral("conta.pdf")));
    pdf.setResolution(int(DpiImpaginazione()));
    PreparaPagina(pdf, modello);
    EXPECT_EQ(StampaDocumento(pdf, modello, tutto), pagine.pagine());
    EXPECT_GT(pagine.pagine(), 8);

    const Impaginazione parziale(modello, CompilaModello(modello, dati, 150), pagine.area(),
                                 true);
    ASSERT_GE(parziale.pagine(), 1);
    EXPECT_TRUE(parziale.parziale());
    EXPECT_LT(parziale.pagine(), pagine.pagine());
    // Above the footer, whose count of pages is not known yet, the page is
    // the same to the dot.
    const QImage a = Pagina(parziale, 0);
    const QImage b = Pagina(pagine, 0);
    const int alto = a.height() * 85 / 100;
    EXPECT_EQ(a.copy(0, 0, a.width(), alto), b.copy(0, 0, b.width(), alto));
    EXPECT_NE(a, b); // "di ..." against the real count

    // Empty lines under the body's last mark make no page of their own.
    const Modello breve = LeggiModello(QStringLiteral("<p>Fine</p>") + QString("<br>").repeated(200));
    EXPECT_EQ(Impaginazione(breve, CompilaModello(breve, DatiReport())).pagine(), 1);
}

// A long table is laid out in pieces that each start at the top of a page:
// where one piece hands over to the next, the pages hold the rows that one
// layout of the whole would put there, as a layout of the first rows shows.
TEST(Impaginazione, TabellaLungaAPezzi)
{
    const Modello modello = ModelloProva();
    const DatiReport dati = DatiEstratto(2600);
    const Impaginazione pagine(modello, CompilaModello(modello, dati));
    const Impaginazione prime(modello, CompilaModello(modello, dati, 1999), pagine.area(), true);
    ASSERT_GT(prime.pagine(), 30);
    ASSERT_GT(pagine.pagine(), prime.pagine());

    CartellaProva dir;
    const QString tutte = dir.file(QStringLiteral("tutte.pdf"));
    const QString soloPrime = dir.file(QStringLiteral("prime.pdf"));
    ASSERT_TRUE(SalvaPdf(tutte, modello, pagine));
    ASSERT_TRUE(SalvaPdf(soloPrime, modello, prime));
    const QRegularExpression numero(QStringLiteral("Pagina \\d+ di \\S+"));
    const QStringList a = PagineTestoPdf(tutte);
    const QStringList b = PagineTestoPdf(soloPrime);
    ASSERT_EQ(a.size(), pagine.pagine());
    ASSERT_EQ(b.size(), prime.pagine());
    for (int i = 0; i < b.size(); ++i)
        EXPECT_EQ(QString(a.at(i)).remove(numero).toStdString(),
                  QString(b.at(i)).remove(numero).toStdString()) << i;
}

// A long report opens on the pages of its first rows; the whole layout then
// takes their place and the count of pages shows.
TEST(FinestraAnteprima, PrimaLePrimePagine)
{
    StatoSalvato stato;
    impostazioni().ZoomStampa = 0;
    impostazioni().PreviewStampa = 8;
    const Modello modello = ModelloProva();
    const DatiReport dati = DatiEstratto(3 * FinestraAnteprima::RighePrimePagine);
    FinestraAnteprima f(modello, CompilaModello(modello, dati), QStringLiteral("Prova"), &dati);
    f.resize(900, 700);
    f.show();
    auto *totale = f.findChild<QLabel *>(QStringLiteral("totale"));
    auto *numero = f.findChild<QSpinBox *>(QStringLiteral("numero"));
    ASSERT_TRUE(totale && numero);
    if (!f.completa()) {
        EXPECT_EQ(totale->text(), " di ... ");
    }
    f.attendiCompleta();
    ASSERT_TRUE(f.completa());
    const int n = f.vista()->pagine();
    EXPECT_EQ(n, Impaginazione(modello, CompilaModello(modello, dati)).pagine());
    EXPECT_EQ(totale->text(), QStringLiteral(" di %1 ").arg(n));
    EXPECT_EQ(numero->maximum(), n);
}


// The PDF of a preview comes from the layout made for the screen: asked for
// while the whole is being laid out, it waits for it and has every page.
// The file offered is the module's name in the prints folder.
TEST(FinestraAnteprima, PdfDaiFogliDellaVista)
{
    StatoSalvato stato;
    CartellaProva dir;
    impostazioni().PathStampe = dir.percorso() + QLatin1Char('/');
    const QString file = dir.file(QStringLiteral("vista.pdf"));
    QString proposto;
    installaGestoreModale([&](QDialog &d) {
        auto *fd = qobject_cast<QFileDialog *>(&d);
        if (!fd)
            return int(QDialog::Rejected);
        proposto = fd->selectedFiles().value(0);
        fd->selectFile(file);
        return int(QDialog::Accepted);
    });
    const Modello modello = ModelloProva();
    const DatiReport dati = DatiEstratto(3 * FinestraAnteprima::RighePrimePagine);
    FinestraAnteprima f(modello, CompilaModello(modello, dati), QString(), &dati);
    Premi(f, "pdf");
    installaGestoreModale({});
    EXPECT_EQ(proposto, dir.file(QStringLiteral("Prova.pdf")));
    EXPECT_TRUE(f.completa());
    QFile pdf(file);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    const QString testo = QString::fromLatin1(pdf.readAll());
    EXPECT_EQ(testo.count(QRegularExpression(QStringLiteral("/Type\\s*/Page[^s]"))),
              f.vista()->pagine());
}

// Templates measure in pixels of 1/96 inch: the labels stand 128 units
// apart, eight rows to a sheet, and a screen of 120 dots per inch (a program
// of its own, the screen being fixed at the start) lays them out alike.
TEST(Impaginazione, NovantaseiUnitaAlPolliceSuOgniSchermo)
{
    const QList<int> misura = MisuraEtichette();
    ASSERT_GT(misura.size(), 3);
    EXPECT_EQ(misura[0], 2);
    EXPECT_TRUE(misura.contains(misura[1] + 7 * 128)) << Testo(misura);

    CartellaProva dir;
    const QString schermo = dir.scrivi(
        QStringLiteral("schermo.json"),
        R"({"screens": [{"name": "S", "x": 0, "y": 0, "width": 1600, "height": 1200,)"
        R"( "logicalDpi": 120, "logicalBaseDpi": 96, "dpr": 1}]})");
    const QByteArray piattaforma = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + schermo.toUtf8());
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::cerr << "dpi " << qRound(QGuiApplication::primaryScreen()->logicalDotsPerInchY())
                      << ' ' << Testo(MisuraEtichette()) << "fine" << std::endl;
            std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), "dpi 120 " + Testo(misura) + "fine");
    qputenv("QT_QPA_PLATFORM", piattaforma);
    qunsetenv("QT_ENABLE_HIGHDPI_SCALING");
}
