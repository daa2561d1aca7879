#include "ProvaIni.h"

#include "frame/core/ModuliOpzionali.h"
#include "frame/ui/Documenti.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QUrl>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

class Consegna : public ProvaIni
{
protected:
    void SetUp() override
    {
        ProvaIni::SetUp();
        ScriviIni(m_ini, "BASE", "DITTA", "ROSSI");
        sessione().CodiceOperatore = "ROSSI";
        m_vero = QStandardPaths::findExecutable("true");
    }

    QString Handle() { return LeggiIni(m_ini, "Prova", "HANDLE"); }

    void Avvia()
    {
        ModuliOpzionali m;
        m.nomeProceduraChiamata("Prova|--uno due");
        m.nomeProceduraChiamante("BASE");
        m.attivaProcedura();
    }

    QString m_vero;
    const QString m_mio = QString::number(QCoreApplication::applicationPid());
};

} // namespace

// Already running for the same firm it is left alone; for another firm, or
// under a number that no process has any more, it starts again.
TEST_F(Consegna, RipartePerUnAltraDittaOConHandleVecchio)
{
    ASSERT_FALSE(m_vero.isEmpty());
    ScriviIni(m_ini, "APPLICATIVI", "Prova", m_vero);
    const struct
    {
        QString handle;
        const char *ditta;
        bool riparte;
    } casi[] = {{m_mio, "ROSSI", false}, {m_mio, "BIANCHI", true}, {"999999999", "ROSSI", true}};
    for (const auto &c : casi) {
        SCOPED_TRACE(c.ditta);
        ScriviIni(m_ini, "Prova", "HANDLE", c.handle);
        ScriviIni(m_ini, "Prova", "DITTA", c.ditta);
        Avvia();
        EXPECT_EQ(Handle() != c.handle, c.riparte) << qPrintable(Handle());
        EXPECT_GT(Handle().toLongLong(), 0);
    }
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

TEST_F(Consegna, SenzaPercorsoSiCercaAccantoAlProgramma)
{
    sessione().CodiceStop = 3;
    ModuliOpzionali m;
    m.nomeProceduraChiamata("NonEsiste");
    m.nomeProceduraChiamante("BASE");
    m.attivaProcedura();
    const QString atteso = QDir::toNativeSeparators(QCoreApplication::applicationDirPath())
                           + QDir::separator() + NomeEseguibile("NonEsiste");
    EXPECT_EQ(m_messaggi.testi(), QStringList{atteso + "  NON TROVATO"});
    EXPECT_EQ(sessione().CodiceStop, 0);

    // The vault program may be missing without a word.
    m_messaggi.pulisci();
    m.lanciaProcedura(m_cartella.file(NomeEseguibile("Rulvat")));
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

TEST_F(Consegna, LanciaAccessorioScriveLaDittaDellOperatore)
{
    ModuliOpzionali m;
    m.codiceDitta("ALTRA");
    EXPECT_EQ(m.codiceDitta(), "ROSSI");
    ScriviIni(m_ini, "APPLICATIVI", "Calcolat", m_vero);
    LanciaAccessorio("Calcolat");
    EXPECT_EQ(LeggiIni(m_ini, "Calcolat", "DITTA"), "ROSSI");
    EXPECT_GT(LeggiIni(m_ini, "Calcolat", "HANDLE").toLongLong(), 0);
}

TEST_F(Consegna, ApriDocumentoDiceSeNonRiesce)
{
    QList<QUrl> aperti;
    installaApriUrl([&aperti](const QUrl &u) {
        aperti.append(u);
        return u.scheme() == "mailto";
    });
    EXPECT_GT(ApriDocumento("mailto:" + IndirizzoAssistenza), 32);
    EXPECT_EQ(ApriDocumento("/manca/foglio.csv"), 2);
    installaApriUrl({});
    ASSERT_EQ(aperti.size(), 2);
    EXPECT_EQ(aperti[1], QUrl::fromLocalFile("/manca/foglio.csv"));
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_EQ(m_messaggi.richieste()[0].testo,
              "ERRORE DI ESECUZIONE DEL PROGRAMMA  '/manca/foglio.csv' ");
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, "ERRORE IN ESECUZIONE DI '/manca/foglio.csv'");
    EXPECT_EQ(m_messaggi.richieste()[0].icona, Icona::Stop);
}
