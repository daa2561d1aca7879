// The client search's two prints: the rows they stage, and the pages of
// their default modules read back from a PDF, the labels' words by their
// place on the sheet.

#include "ProvaAnagrafiche.h"

#include "lookup/StampeAnagrafiche.h"
#include "reports/CaricaDati.h"
#include "reports/Renderer.h"
#include "reports/Staging.h"
#include "tests/reports/TestoPdf.h"

#include <QRegularExpression>
#include <QRectF>

namespace sorvane::prova {
namespace {

const QString Moduli = QStringLiteral(MODULI_PREDEFINITI);

class StampeAnagrafiche : public ProvaAnagrafiche
{
protected:
    // What the module prints of the staged rows, as a PDF in the folder.
    QString Pdf(const QString &modulo, const CriteriAnagrafiche &criteri)
    {
        EXPECT_TRUE(PreparaTemporanei(RigheClienti(modulo, criteri, QString())));
        Modello modello;
        DatiReport dati;
        EXPECT_TRUE(CaricaModello(Moduli + QLatin1Char('/') + modulo + QStringLiteral(".rpt"),
                                  modello));
        EXPECT_TRUE(CaricaDatiReport(DbLavoro(), dati));
        const ModelloCompilato compilato = CompilaModello(modello, dati);
        EXPECT_TRUE(compilato.errore.isEmpty()) << qPrintable(compilato.errore);
        const QString pdf = m_cartella.percorso() + QLatin1Char('/') + modulo + QStringLiteral(".pdf");
        EXPECT_TRUE(SalvaPdf(pdf, modello, compilato));
        return pdf;
    }
    static QStringList Colonna(const char *sql)
    {
        QStringList valori;
        QSqlQuery q(Db());
        EXPECT_TRUE(q.exec(QString::fromLatin1(sql)));
        while (q.next())
            valori << q.value(0).toString().trimmed();
        return valori;
    }
};

struct Parola
{
    int pagina;
    QRectF box; // millimetres from the page's top left corner
    QString testo;
};

// Every word of the file with its box (pdftotext -bbox).
QList<Parola> Parole(const QString &pdf)
{
    QProcess lettore;
    lettore.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
    EXPECT_TRUE(lettore.waitForFinished(60000));
    const QString html = QString::fromUtf8(lettore.readAllStandardOutput());
    const QRegularExpression re(QStringLiteral(
        R"re(<page |<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re"));
    constexpr double MmPerPunto = 25.4 / 72.0;
    QList<Parola> parole;
    int pagina = -1;
    for (auto it = re.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        if (m.captured(1).isEmpty()) {
            ++pagina;
            continue;
        }
        const QRectF box(QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()) * MmPerPunto,
                         QPointF(m.captured(3).toDouble(), m.captured(4).toDouble()) * MmPerPunto);
        parole.append({pagina, box, m.captured(5)});
    }
    return parole;
}

// The label of the sheet a box lies inside, as column + 3 * row; -1 when
// it lies in none.
int Etichetta(const QRectF &box)
{
    for (int riga = 0; riga < RigheEtichettePerFoglio; ++riga) {
        for (int colonna = 0; colonna < EtichettePerRiga; ++colonna) {
            const QRectF etichetta(6.46 + 66.04 * colonna, 12.9 + 33.9 * riga, 63.5, 33.9);
            if (etichetta.contains(box))
                return colonna + EtichettePerRiga * riga;
        }
    }
    return -1;
}

TEST_F(StampeAnagrafiche, LElencoTelefonicoPortaTuttiITrovati)
{
    Cliente(1, QStringLiteral("ROSSI MARIO"), {{QStringLiteral("CliTelefono"), QStringLiteral("02 5550101")}});
    Cliente(2, QStringLiteral("BIANCHI & FIGLI"), {{QStringLiteral("CliTelefono3"), QStringLiteral("06 777")}});
    Cliente(3, QStringLiteral("CHIUSO"), {{QStringLiteral("CliCategoria"), CategoriaChiusi}});
    CriteriAnagrafiche c;
    c.abbinati = false;
    ASSERT_TRUE(PreparaClienti(ModuloTelefoni, c, {}));
    EXPECT_EQ(Colonna("SELECT CliRagsoc FROM PrtClienti ORDER BY rowid"),
              (QStringList{"BIANCHI & FIGLI", "ROSSI MARIO"}));

    const DatiReport dati = RigheClienti(ModuloTelefoni, c, QStringLiteral("TEL    TELEFONATA"));
    EXPECT_EQ(dati.testa.value(QStringLiteral("TCampo11")).toString(), QStringLiteral("TEL    TELEFONATA"));
    EXPECT_EQ(dati.testa.value(QStringLiteral("TCampo12")).toString(), QStringLiteral(" "));
    const QStringList pagine = PagineTestoPdf(Pdf(ModuloTelefoni, c));
    ASSERT_EQ(pagine.size(), 1);
    EXPECT_TRUE(pagine[0].contains(QStringLiteral("BIANCHI & FIGLI")));
    EXPECT_TRUE(pagine[0].contains(QStringLiteral("Fax 06 777")));
    EXPECT_TRUE(pagine[0].contains(QStringLiteral("02 5550101")));
}

TEST_F(StampeAnagrafiche, UnEtichettaPerNomeEIndirizzoOgniParolaDentroLaSua)
{
    const QString via = QStringLiteral("VIA GIUSEPPE GARIBALDI 118");
    // Two rows of one person (marks after the name) at one address: one label.
    Cliente(1, QStringLiteral("ROSSI MARIO *"), {{QStringLiteral("CliIndirizzo"), via}});
    Cliente(2, QStringLiteral("ROSSI MARIO=="), {{QStringLiteral("CliIndirizzo"), via}});
    Cliente(3, QStringLiteral("ROSSI MARIO"), {{QStringLiteral("CliIndirizzo"), QStringLiteral("VIA VERDI 1")}});
    // Long names and towns, 26 labels: two sheets.
    for (int i = 4; i <= 26; ++i)
        Cliente(i, QStringLiteral("SOCIETA' IMMOBILIARE LOMBARDA %1").arg(i, 2, 10, QLatin1Char('0')),
                {{QStringLiteral("CliIndirizzo"), QStringLiteral("PIAZZA DEL POPOLO %1").arg(i)},
                 {QStringLiteral("CliCap"), QStringLiteral("20121")},
                 {QStringLiteral("CliLocalita"), QStringLiteral("SAN GIOVANNI IN PERSICETO")},
                 {QStringLiteral("CliProvincia"), QStringLiteral("BO")}});
    CriteriAnagrafiche c;
    ASSERT_TRUE(PreparaClienti(ModuloEtichette, c, {}));
    const QStringList nomi = Colonna("SELECT CliRagsoc FROM PrtClienti ORDER BY rowid");
    ASSERT_EQ(nomi.size(), 25);
    EXPECT_EQ(nomi.mid(0, 2), (QStringList{"ROSSI MARIO", "ROSSI MARIO"}));
    EXPECT_EQ(Colonna("SELECT CliIndirizzo FROM PrtClienti WHERE CliRagsoc = 'ROSSI MARIO' "
                      "ORDER BY CliIndirizzo"),
              (QStringList{via, "VIA VERDI 1"}));
    EXPECT_EQ(Colonna("SELECT COUNT(*) FROM WPrtClienti"), QStringList{"25"});

    const QList<Parola> parole = Parole(Pdf(ModuloEtichette, c));
    ASSERT_FALSE(parole.isEmpty());
    QSet<int> etichette[2];
    for (const Parola &p : parole) {
        ASSERT_LT(p.pagina, 2) << qPrintable(p.testo);
        const int n = Etichetta(p.box);
        EXPECT_GE(n, 0) << qPrintable(p.testo) << " page " << p.pagina << " at "
                        << p.box.x() << "," << p.box.y() << " - " << p.box.right() << ","
                        << p.box.bottom();
        etichette[p.pagina].insert(n);
    }
    // The first sheet full, the second with its first label only.
    EXPECT_EQ(etichette[0].size(), 24);
    EXPECT_EQ(etichette[1], QSet<int>{0});
}

} // namespace
} // namespace sorvane::prova
