#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Modale.h"
#include "reports/Anteprima.h"
#include "reports/CaricaDati.h"
#include "reports/Gstampe.h"
#include "reports/Staging.h"
#include "reports/StampaReport.h"
#include "tests/reports/DatiProva.h"
#include "tests/store/ProvaAccesso.h"

#include <QFile>
#include <QFileInfo>
#include <QPrinterInfo>
#include <gtest/gtest.h>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// The four files connected, a report folder with the sample module, and a
// local INI; the dialogs a print opens are recorded, not shown.
class Stampe : public ProvaAccesso
{
protected:
    void SetUp() override
    {
        ProvaAccesso::SetUp();
        Impostazioni &imp = impostazioni();
        QDir().mkpath(m_cartella.file(QStringLiteral("moduli")));
        imp.PathReport = m_cartella.file(QStringLiteral("moduli")) + QLatin1Char('/');
        imp.PathReportOperatore.clear();
        imp.IniLocale = m_cartella.scrivi(QStringLiteral("SORVANE.ini"), "[PARAMETRI]\n");
        imp.TipoStampa = QLatin1Char('V');
        QFile::copy(QStringLiteral(PROVA_DATI "/Prova.rpt"), modulo(QStringLiteral("Prova.rpt")));
        consegnaStampa() = ConsegnaStampa();
        m_messaggi.gestore = {};
        installaGestoreModale([this](QDialog &d) {
            auto *f = qobject_cast<FinestraAnteprima *>(&d);
            m_titoli.append(d.windowTitle());
            if (f) {
                f->attendiCompleta();
                m_pagine.append(f->vista()->pagine());
            }
            return int(QDialog::Rejected);
        });
    }
    void TearDown() override
    {
        installaGestoreModale({});
        consegnaStampa() = ConsegnaStampa();
        sessione().CodiceStop = 0;
        ProvaAccesso::TearDown();
    }

    QString modulo(const QString &nome) const { return impostazioni().PathReport + nome; }
    void scriviModulo(const QString &nome, const QByteArray &testo) const
    {
        QFile f(modulo(nome));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(testo);
    }
    int Conta(const QString &tabella) { return Valore("SELECT COUNT(*) FROM " + tabella).toInt(); }

    QStringList m_titoli;  // of the dialogs opened
    QList<int> m_pagine;   // of the previews among them
};

} // namespace

TEST_F(Stampe, TemporaneiScrittiNellOrdine)
{
    ASSERT_TRUE(Esegui("INSERT INTO PrtPiede (PCampo1) VALUES ('vecchio')"));
    DatiReport d = DatiEstratto(25);
    d.testa.insert(QStringLiteral("TNumero1"), 12.5);
    d.piede = {{QStringLiteral("Pnumero26"), 7}};
    ASSERT_TRUE(PreparaTemporanei(d));
    EXPECT_TRUE(m_messaggi.testi().isEmpty());
    EXPECT_EQ(Conta("PrtTesta"), 1);
    EXPECT_EQ(Conta("PrtCorpo"), 25);
    EXPECT_EQ(Conta("PrtPiede"), 1); // the old foot is gone
    EXPECT_EQ(Valore("SELECT Pnumero26 FROM PrtPiede").toInt(), 7);


    // A second print replaces the first one's rows; no foot, no foot row.
    ASSERT_TRUE(PreparaTemporanei(DatiReport{{}, {{{"CCampo1", "solo"}}}, {}, {}}));
    EXPECT_EQ(Conta("PrtTesta"), 0);
    EXPECT_EQ(Conta("PrtCorpo"), 1);
    EXPECT_EQ(Conta("PrtPiede"), 0);
}

// Every field of the three tables is part of the contract with the modules:
// each is written and reaches the template under its own name.
TEST_F(Stampe, TuttiICampiDeiTemporanei)
{
    auto riga = [](const QString &testo, int nTesti, const QString &numero, int nNumeri,
                   bool senzaNumero) {
        QVariantMap r;
        if (senzaNumero)
            r.insert(testo, testo);
        for (int i = 1; i <= nTesti; ++i)
            r.insert(testo + QString::number(i), testo + QString::number(i));
        for (int i = 1; i <= nNumeri; ++i)
            r.insert(numero + QString::number(i), i + 0.5);
        return r;
    };
    DatiReport d;
    d.testa = riga(QStringLiteral("TCampo"), 17, QStringLiteral("TNumero"), 10, true);
    d.corpo = {riga(QStringLiteral("CCampo"), 14, QStringLiteral("CNumero"), 20, true)};
    d.piede = riga(QStringLiteral("PCampo"), 20, QStringLiteral("Pnumero"), 26, false);
    ASSERT_TRUE(PreparaTemporanei(d)) << m_messaggi.testi().join('|').toStdString();

    DatiReport letti;
    ASSERT_TRUE(CaricaDatiReport(DbLavoro(), letti));
    ASSERT_EQ(letti.corpo.size(), 1);
    const QList<QPair<QVariantMap, QVariantMap>> parti = {
        {d.testa, letti.testa}, {d.corpo.at(0), letti.corpo.at(0)}, {d.piede, letti.piede}};
    for (const auto &[scritta, letta] : parti) {
        for (auto it = scritta.cbegin(); it != scritta.cend(); ++it) {
            SCOPED_TRACE(it.key().toStdString());
            EXPECT_EQ(letta.value(it.key()).toString(), it.value().toString());
        }
    }
}

// Rows come back in the order written, not sorted; a missing number stays
// Null; an empty table is no part; a missing table fails with its name.
TEST_F(Stampe, RigheLetteComeScritte)
{
    DatiReport d;
    d.corpo.append({{QStringLiteral("CCampo1"), QStringLiteral("vecchia")}});
    ASSERT_TRUE(CaricaDatiReport(DbLavoro(), d));
    EXPECT_TRUE(d.testa.isEmpty() && d.corpo.isEmpty() && d.piede.isEmpty());

    ASSERT_TRUE(Esegui("INSERT INTO PrtCorpo (CCampo1, CNumero1) VALUES ('VERS', 1), "
                       "('ALFA', 1), ('RISC', 1)"));
    ASSERT_TRUE(Esegui("INSERT INTO PrtPiede (Pnumero1) VALUES (60)"));
    QString errore;
    ASSERT_TRUE(CaricaDatiReport(DbLavoro(), d, &errore)) << errore.toStdString();
    ASSERT_EQ(d.corpo.size(), 3);
    EXPECT_EQ(d.corpo.at(1).value("CCampo1").toString(), "ALFA");
    EXPECT_TRUE(d.corpo.at(0).value("CNumero2").isNull());
    EXPECT_EQ(d.piede.value("Pnumero1").toDouble(), 60);

    ASSERT_TRUE(Esegui("DROP TABLE PrtPiede"));
    EXPECT_FALSE(CaricaDatiReport(DbLavoro(), d, &errore));
    EXPECT_TRUE(errore.contains("PrtPiede")) << errore.toStdString();
}

// Step 3 fails halfway: what it wrote goes, head row included, and the step's
// words are told; a name the tables lack fails the same way.
TEST_F(Stampe, TemporaneiErroreAggiornamento)
{
    // The reasons come round every fourth row: the fifth is refused.
    ASSERT_TRUE(Esegui("CREATE UNIQUE INDEX no ON PrtCorpo (CCampo2)"));
    EXPECT_FALSE(PreparaTemporanei(DatiEstratto(20)));
    EXPECT_EQ(m_messaggi.testi(), QStringList{"ERRORE 3: AGGIORNAMENTO TEMPORANEI DI STAMPA"});
    EXPECT_EQ(sessione().CodiceStop, PassoAggiornamento);
    EXPECT_EQ(Conta("PrtTesta"), 0);
    EXPECT_EQ(Conta("PrtCorpo"), 0);

    m_messaggi.pulisci();
    DatiReport d = DatiEstratto(3);
    d.corpo[2].insert(QStringLiteral("CCampo99"), QStringLiteral("x"));
    EXPECT_FALSE(PreparaTemporanei(d));
    EXPECT_EQ(m_messaggi.testi(), QStringList{"ERRORE 3: AGGIORNAMENTO TEMPORANEI DI STAMPA"});
    EXPECT_EQ(Conta("PrtCorpo"), 0);
}

TEST_F(Stampe, TemporaneiErrorePulizia)
{
    ASSERT_TRUE(Esegui("DROP TABLE PrtPiede"));
    EXPECT_FALSE(StampaModulo(QStringLiteral("Prova"), DatiEstratto(3)));
    EXPECT_EQ(m_messaggi.testi(), QStringList{"ERRORE 1: PULIZIA TEMPORANEI DI STAMPA"});
    EXPECT_EQ(sessione().CodiceStop, PassoPulizia);
    EXPECT_FALSE(sessione().TestoErrore.isEmpty());
    EXPECT_TRUE(m_titoli.isEmpty()); // nothing printed
}

TEST_F(Stampe, ModuloDiStampa)
{
    // No row: the key and ".rpt", silently.
    EXPECT_EQ(ModuloDiStampa(QStringLiteral("DISTINTA")), "DISTINTA.rpt");
    ASSERT_TRUE(Esegui("INSERT INTO Moduli (MdKey, MdPrg, MdFile) "
                       "VALUES ('DISTINTA', 1, 'DistSoc.RPT'), ('O''Brien', 2, 'Ob')"));
    EXPECT_EQ(ModuloDiStampa(QStringLiteral("DISTINTA")), "DistSoc.RPT");
    EXPECT_EQ(ModuloDiStampa(QStringLiteral("O'Brien")), "Ob");
    EXPECT_TRUE(m_messaggi.testi().isEmpty());

    ASSERT_TRUE(Esegui("DROP TABLE Moduli"));
    EXPECT_EQ(ModuloDiStampa(QStringLiteral("DISTINTA")), "DISTINTA.rpt");
    EXPECT_EQ(m_messaggi.testi(), QStringList{"Tabella dei moduli non aggiornata!"});
}

// The road of a print: staged rows, the module by its key (".RPT" dropped
// before the extension goes on), the preview with its title.
TEST_F(Stampe, StampaModuloAnteprima)
{
    ASSERT_TRUE(Esegui("INSERT INTO Moduli (MdKey, MdPrg, MdFile) VALUES ('EC', 1, 'Prova.RPT')"));
    sessione().CodiceStop = 9;
    ASSERT_TRUE(StampaModulo(QStringLiteral("EC"), DatiEstratto(120), QStringLiteral("f")));
    EXPECT_TRUE(m_messaggi.testi().isEmpty()) << m_messaggi.testi().join('|').toStdString();
    EXPECT_EQ(m_titoli, QStringList{"Modulo:  'Prova'"});
    ASSERT_EQ(m_pagine.size(), 1);
    EXPECT_GE(m_pagine.at(0), 3);
    EXPECT_EQ(consegnaStampa().ModuloCorrente, "Prova");
    EXPECT_TRUE(consegnaStampa().FormulaCorrente.isEmpty());
    EXPECT_EQ(sessione().CodiceStop, 0);
}

// GesStampe=1: the ".rep" module first; when it fails, its words and then
// the ".rpt" one; when it is missing, the ".rpt" one without a word.
TEST_F(Stampe, SecondaViaConRitorno)
{
    ASSERT_TRUE(PreparaTemporanei(DatiEstratto(3)));
    impostazioni().IniLocale =
        m_cartella.scrivi(QStringLiteral("SORVANE.ini"), "[PARAMETRI]\nGesStampe=1\n");
    consegnaStampa().ModuloCorrente = QStringLiteral("Prova");
    Gstampe g;
    g.Load();
    EXPECT_EQ(m_titoli, QStringList{"Modulo:  'Prova'"});
    EXPECT_TRUE(m_messaggi.testi().isEmpty());

    m_titoli.clear();
    QFile::copy(modulo(QStringLiteral("Prova.rpt")), modulo(QStringLiteral("Prova.rep")));
    g.Load();
    EXPECT_EQ(m_titoli, QStringList{"Prova"});

    m_titoli.clear();
    scriviModulo(QStringLiteral("Prova.rep"), "{{/corpo}}");
    g.Load();
    ASSERT_EQ(m_messaggi.testi().size(), 1);
    EXPECT_TRUE(m_messaggi.testi().at(0).startsWith("MODELLO DI STAMPA NON VALIDO"));
    EXPECT_EQ(g.testoErrore(), m_messaggi.testi().at(0));
    EXPECT_EQ(m_titoli, QStringList{"Modulo:  'Prova'"});

    // The ".rep" rows come from the database named, when one is.
    m_titoli.clear();
    m_messaggi.pulisci();
    QFile::copy(modulo(QStringLiteral("Prova.rpt")), modulo(QStringLiteral("Altro.rep")));
    consegnaStampa().ModuloCorrente = QStringLiteral("Altro");
    g.PlPathDB = m_cartella.file(QStringLiteral("nessuno.db"));
    g.Load();
    ASSERT_EQ(m_messaggi.testi().size(), 2);
    EXPECT_TRUE(m_messaggi.testi().at(0).contains("nessuno.db"));
    EXPECT_EQ(m_messaggi.testi().at(1),
              "GESTORE REPORT " + modulo("Altro.rpt") + " INESISTENTE");
    EXPECT_TRUE(m_titoli.isEmpty());
}

// A chosen printer turns the preview into a direct print; the type is put
// back afterwards.
TEST_F(Stampe, StampanteSceltaSenzaAnteprima)
{
    ASSERT_TRUE(PreparaTemporanei(DatiEstratto(3)));
    consegnaStampa().ModuloCorrente = QStringLiteral("Prova");
    consegnaStampa().StampanteScelta = QStringLiteral("Nessuna Stampante Simile");
    if (!QPrinterInfo::defaultPrinter().isNull())
        GTEST_SKIP() << "a real default printer would print";
    Gstampe g;
    g.Load();
    EXPECT_TRUE(m_titoli.isEmpty());
    EXPECT_EQ(m_messaggi.testi(), QStringList{"NESSUNA STAMPANTE PREDEFINITA"});
    EXPECT_EQ(impostazioni().TipoStampa, QLatin1Char('V'));
}

// The modules the set-up tool installs are read, filled and printed.
TEST_F(Stampe, ModuliPredefiniti)
{
    const QDir cartella(QStringLiteral(MODULI_PREDEFINITI));
    const QStringList moduli = cartella.entryList({QStringLiteral("*.rpt")}, QDir::Files);
    ASSERT_FALSE(moduli.isEmpty());
    DatiReport d = DatiEstratto(80);
    d.testa.insert(QStringLiteral("TCampo3"), QStringLiteral("Data"));
    ASSERT_TRUE(PreparaTemporanei(d));
    impostazioni().PathReport = cartella.path() + QLatin1Char('/');
    for (const QString &m : moduli) {
        SCOPED_TRACE(m.toStdString());
        m_titoli.clear();
        consegnaStampa().ModuloCorrente = QFileInfo(m).completeBaseName();
        Gstampe g;
        g.Load();
        EXPECT_TRUE(m_messaggi.testi().isEmpty()) << m_messaggi.testi().join('|').toStdString();
        EXPECT_EQ(m_pagine.size(), 1);
        m_pagine.clear();
    }
}
