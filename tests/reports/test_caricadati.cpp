#include "reports/CaricaDati.h"
#include "reports/Modello.h"
#include "tests/store/ProvaInsieme.h"

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// A work file of its own, with the staging tables as the dictionary makes
// them.
struct FileLavoro
{
    FileLavoro()
    {
        QSqlDatabase d = db();
        QString errore;
        EXPECT_TRUE(CreaTabelle(d, Archivio::Lavoro, QStringLiteral("main"), &errore))
            << errore.toStdString();
    }
    QSqlDatabase db() const { return m_file.db(); }

    void esegui(const QString &sql, const QVariantList &valori = {}) const
    {
        Scrivi(db(), sql, valori);
    }

    CartellaProva m_dir;
    AltraConnessione m_file{m_dir.file(QStringLiteral("WorkDV.db"))};
};

} // namespace

TEST(CaricaDatiReport, RigheComeScritte)
{
    LocaleFissato it(Italiano());
    FileLavoro f;
    f.esegui(QStringLiteral("INSERT INTO PrtTesta (TCampo1, TNumero1) VALUES (?, ?)"),
             {QStringLiteral("Bianchi & Figli <Sas>"), 1234.5});
    // Written out of alphabetical and numeric order: the print keeps it.
    const QStringList causali = {QStringLiteral("VERS"), QStringLiteral("ALFA"),
                                 QStringLiteral("RISC")};
    for (int i = 0; i < causali.size(); ++i)
        f.esegui(QStringLiteral("INSERT INTO PrtCorpo (CCampo1, CNumero1) VALUES (?, ?)"),
                 {causali.at(i), 30.0 - i * 10});
    f.esegui(QStringLiteral("INSERT INTO PrtPiede (PCampo1, Pnumero1) VALUES (?, ?)"),
             {QStringLiteral("FINE"), 60.0});

    DatiReport d;
    QString errore;
    ASSERT_TRUE(CaricaDatiReport(f.db(), d, &errore)) << errore.toStdString();
    ASSERT_EQ(d.corpo.size(), 3);
    EXPECT_EQ(d.corpo.at(1).value("CCampo1").toString(), "ALFA");
    EXPECT_TRUE(d.corpo.at(0).value("CNumero2").isNull());

    const Modello m = LeggiModello(QStringLiteral(
        "{{TCampo1}}|{{TNumero1}}|{{#corpo}}{{CCampo1}} {{CNumero1}} [{{CNumero2}}];"
        "{{/corpo}}|{{PCampo1}} {{Pnumero1}} {{totali.CNumero1}}"));
    EXPECT_EQ(CompilaModello(m, d).corpo,
              "Bianchi &amp; Figli &lt;Sas&gt;|1.234,50|VERS 30,00 [];ALFA 20,00 [];"
              "RISC 10,00 [];|FINE 60,00 60,00");
}

TEST(CaricaDatiReport, TabelleVuoteOMancanti)
{
    FileLavoro f;
    DatiReport d;
    d.corpo.append({{QStringLiteral("CCampo1"), QStringLiteral("vecchia")}});
    ASSERT_TRUE(CaricaDatiReport(f.db(), d));
    EXPECT_TRUE(d.testa.isEmpty());
    EXPECT_TRUE(d.corpo.isEmpty());
    EXPECT_TRUE(d.piede.isEmpty());

    f.esegui(QStringLiteral("DROP TABLE PrtPiede"));
    QString errore;
    EXPECT_FALSE(CaricaDatiReport(f.db(), d, &errore));
    EXPECT_TRUE(errore.contains("PrtPiede")) << errore.toStdString();
}
