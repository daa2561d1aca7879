#include "ProvaAccesso.h"
#include "store/Motore.h"

#include <QSqlQuery>

#include <chrono>
#include <future>
#include <thread>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

class Transazioni : public ProvaAccesso
{
protected:
    void SetUp() override
    {
        ProvaAccesso::SetUp();
        // Short waits: the other program of these tests holds on for good.
        ASSERT_TRUE(Esegui(SuServerDiProva() ? "SET lock_timeout = 50" : "PRAGMA busy_timeout = 50"));
    }

    // A movement in the data file and its working copy in the working file.
    bool ScriviDue(int codice)
    {
        return Esegui(QString("INSERT INTO Distinte (dstCodice, dstPrg) VALUES (%1, '0')")
                          .arg(codice))
               && Esegui(QString("INSERT INTO BkDistinte (dstCodice, dstPrg) VALUES (%1, '0')")
                             .arg(codice));
    }

    // Rows of both files as another program sees them on disk.
    QPair<int, int> RigheSuDisco()
    {
        AltraConnessione dati(PercorsoArchivio(Archivio::Dati));
        AltraConnessione lavoro(PercorsoArchivio(Archivio::Lavoro));
        return {dati.valore("SELECT count(*) FROM Distinte").toInt(),
                lavoro.valore("SELECT count(*) FROM BkDistinte").toInt()};
    }
};

} // namespace

TEST_F(Transazioni, DueFileInsiemeOPerNiente)
{
    {
        Transazione t;
        ASSERT_TRUE(t.attiva()) << qPrintable(t.errore());
        ASSERT_TRUE(ScriviDue(1));
        ASSERT_TRUE(t.conferma()) << qPrintable(t.errore());
    }
    EXPECT_EQ(RigheSuDisco(), qMakePair(1, 1));

    {
        Transazione t;
        ASSERT_TRUE(ScriviDue(2));
        // The second write of the working file breaks its key.
        EXPECT_FALSE(Esegui("INSERT INTO BkDistinte (dstCodice, dstPrg) VALUES (2, '0')"));
        t.annulla();
    }
    EXPECT_EQ(RigheSuDisco(), qMakePair(1, 1));

    {
        Transazione t;
        ASSERT_TRUE(ScriviDue(3));
    } // left without conferma
    EXPECT_EQ(RigheSuDisco(), qMakePair(1, 1));
    EXPECT_EQ(Transazione::profondita(Db()), 0);
}

TEST_F(Transazioni, DataFilePienoAMetaScrittura)
{
    SOLO_SU_FILE();
    const int pagine = Valore("PRAGMA dati.page_count").toInt();
    ASSERT_TRUE(Esegui(QString("PRAGMA dati.max_page_count = %1").arg(pagine + 2)));
    Transazione t;
    ASSERT_TRUE(Esegui("INSERT INTO BkDistinte (dstCodice, dstPrg) VALUES (9, '0')"));
    QSqlQuery q(Db());
    bool pieno = false;
    for (int i = 0; i < 2000 && !pieno; ++i) {
        if (!q.exec(QString("INSERT INTO Distinte (dstCodice, dstPrg, dstDitta) "
                            "VALUES (%1, '0', printf('%.300c', 'x'))").arg(i + 10))) {
            EXPECT_EQ(CodiceSqlite(q.lastError()) & 0xff, sqlite::Pieno);
            EXPECT_TRUE(TestoErroreSqlite(q.lastError()).contains("codice SQLite 13"));
            pieno = true;
        }
    }
    ASSERT_TRUE(pieno);
    t.annulla();
    EXPECT_EQ(RigheSuDisco(), qMakePair(0, 0));
}

TEST_F(Transazioni, AnnidataAnnullaSoloLaSuaParte)
{
    {
        Transazione esterna;
        ASSERT_TRUE(ScriviDue(1));
        {
            Transazione interna;
            ASSERT_TRUE(interna.attiva());
            EXPECT_TRUE(interna.annidata());
            EXPECT_EQ(Transazione::profondita(Db()), 2);
            ASSERT_TRUE(ScriviDue(2));
            interna.annulla();
        }
        {
            Transazione interna;
            ASSERT_TRUE(ScriviDue(3));
            ASSERT_TRUE(interna.conferma());
        }
        ASSERT_TRUE(esterna.conferma()) << qPrintable(esterna.errore());
    }
    EXPECT_EQ(RigheSuDisco(), qMakePair(2, 2));
    EXPECT_EQ(Valore("SELECT min(dstCodice) * 10 + max(dstCodice) FROM Distinte").toInt(), 13);

    {
        Transazione esterna;
        {
            Transazione interna;
            ASSERT_TRUE(ScriviDue(4));
            ASSERT_TRUE(interna.conferma());
        }
        esterna.annulla(); // takes the confirmed inner part with it
    }
    EXPECT_EQ(RigheSuDisco(), qMakePair(2, 2));
}

// A statement inside a walk's loop costs the walk no row, on either engine.
TEST_F(Transazioni, UnaLetturaNonPerdeRigheSeNelCicloSiScrive)
{
    for (int codice = 1; codice <= 3; ++codice)
        ASSERT_TRUE(ScriviDue(codice));
    QSqlQuery q(Db());
    LetturaInAvanti(q);
    ASSERT_TRUE(q.exec("SELECT dstCodice FROM Distinte ORDER BY dstCodice"));
    int lette = 0;
    while (q.next()) {
        ++lette;
        EXPECT_TRUE(Esegui(QString("UPDATE BkDistinte SET dstImporto = 1 WHERE dstCodice = %1")
                               .arg(q.value(0).toInt())));
    }
    EXPECT_EQ(lette, 3);
}

// Readers hold up a commit on the files only.
TEST_F(Transazioni, OccupatoAllaConfermaAnnullaTutto)
{
    SOLO_SU_FILE();
    AltraConnessione lettore(PercorsoArchivio(Archivio::Dati));
    ASSERT_TRUE(lettore.esegui("BEGIN"));
    ASSERT_TRUE(lettore.valore("SELECT count(*) FROM Distinte").isValid());

    Transazione t;
    ASSERT_TRUE(t.attiva());
    ASSERT_TRUE(ScriviDue(1));
    EXPECT_FALSE(t.conferma(2));
    EXPECT_EQ(t.codice() & 0xff, sqlite::Occupato);
    // The engine's words and code, no statement before them.
    EXPECT_EQ(t.errore(), "database is locked (codice SQLite 5)");
    EXPECT_EQ(Transazione::profondita(Db()), 0);
    ASSERT_TRUE(lettore.esegui("COMMIT"));

    EXPECT_EQ(RigheSuDisco(), qMakePair(0, 0));
    EXPECT_EQ(Valore("SELECT count(*) FROM BkDistinte").toInt(), 0);
    // The connection is free for the next one.
    Transazione dopo;
    ASSERT_TRUE(ScriviDue(5));
    EXPECT_TRUE(dopo.conferma());
}

TEST_F(Transazioni, OccupatoAllaConfermaRiprovaFinoAlRilascio)
{
    SOLO_SU_FILE();
    const QString file = PercorsoArchivio(Archivio::Dati);
    std::promise<void> pronto;
    std::thread lettore([&] {
        AltraConnessione c(file);
        c.esegui("BEGIN");
        c.valore("SELECT count(*) FROM Distinte");
        pronto.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        c.esegui("COMMIT");
    });
    pronto.get_future().wait();

    Transazione t;
    ASSERT_TRUE(ScriviDue(1));
    const bool confermata = t.conferma(100);
    lettore.join();
    EXPECT_TRUE(confermata) << qPrintable(t.errore());
    EXPECT_EQ(RigheSuDisco(), qMakePair(1, 1));
}

TEST_F(Transazioni, UnAltroScrittoreFermaLInizio)
{
    // Another workstation in the middle of a save.
    AltraConnessione scrittore(PercorsoArchivio(Archivio::Lavoro));
    Transazione altra(scrittore.db());
    ASSERT_TRUE(altra.attiva());
    Transazione t;
    EXPECT_FALSE(t.attiva());
    EXPECT_EQ(t.codice() & 0xff, sqlite::Occupato);
    EXPECT_EQ(t.errore(), SuServerDiProva()
                              ? "canceling statement due to lock timeout (codice PostgreSQL 55P03)"
                              : "database is locked (codice SQLite 5)");
    EXPECT_FALSE(t.conferma());
    EXPECT_EQ(Transazione::profondita(Db()), 0);
}

// The server goes away in the middle of a save: nothing of it is kept, the
// words say what happened, and the next save finds the server again.
TEST_F(Transazioni, SulServerUnCollegamentoCadutoANulla)
{
    if (!SuServerDiProva())
        GTEST_SKIP() << "solo sul server";
    const qint64 processo = Valore("SELECT pg_backend_pid()").toLongLong();
    Recordset distinte = Recordset::Apri(Db(), "Distinte", dbOpenTable);
    ASSERT_TRUE(distinte.SetIndex(IndicePrimario));
    ASSERT_TRUE(distinte.Seek(">=", QVariantList{0, "0"}));
    ASSERT_TRUE(distinte.NoMatch());
    Transazione t;
    ASSERT_TRUE(t.attiva());
    ASSERT_TRUE(ScriviDue(1));
    {
        AltraConnessione amministratore(PercorsoArchivio(Archivio::Dati));
        ASSERT_TRUE(amministratore.esegui(QString("SELECT pg_terminate_backend(%1)").arg(processo)));
    }
    EXPECT_FALSE(ScriviDue(2));
    EXPECT_FALSE(t.conferma());
    EXPECT_EQ(t.codice() & 0xff, sqlite::ErroreIO);
    EXPECT_TRUE(t.errore().startsWith("COLLEGAMENTO CON IL SERVER INTERROTTO\n")) << qPrintable(t.errore());
    EXPECT_EQ(RigheSuDisco(), qMakePair(0, 0));

    // The server still there: the next use opens the connection again, and
    // a recordset of before the drop goes on.
    Transazione dopo;
    ASSERT_TRUE(dopo.attiva()) << qPrintable(dopo.errore());
    ASSERT_TRUE(ScriviDue(3));
    ASSERT_TRUE(dopo.conferma()) << qPrintable(dopo.errore());
    EXPECT_EQ(RigheSuDisco(), qMakePair(1, 1));
    ASSERT_TRUE(distinte.Seek(">=", QVariantList{0, "0"})) << qPrintable(distinte.Errore());
    EXPECT_EQ(distinte.Fields("dstCodice").toInt(), 3);
}

// A transaction the engine broke off runs again whole; a refusal of the
// body's own does not.
TEST_F(Transazioni, InTransazioneRipeteSoloCioCheSiPuoRipetere)
{
    int volte = 0;
    QString errore;
    const bool fatto = InTransazione(
        [&](int *codice) {
            ++volte;
            if (!ScriviDue(volte))
                return false;
            if (volte < 3) {
                *codice = sqlite::Istantanea;
                return false;
            }
            return true;
        },
        &errore);
    EXPECT_TRUE(fatto) << qPrintable(errore);
    EXPECT_EQ(volte, 3);
    EXPECT_EQ(Valore("SELECT min(dstCodice) FROM Distinte").toInt(), 3);
    EXPECT_EQ(RigheSuDisco(), qMakePair(1, 1));

    volte = 0;
    EXPECT_FALSE(InTransazione([&](int *) { return ++volte == 0; }, &errore));
    EXPECT_EQ(volte, 1);
    if (SuServerDiProva()) {
        // The server's deadlock is told as a transaction to start again.
        QSqlQuery q(Db());
        EXPECT_FALSE(q.exec("DO $$ BEGIN RAISE EXCEPTION 'stallo' USING ERRCODE = '40P01'; END $$"));
        EXPECT_TRUE(Ripetibile(CodiceSqlite(q.lastError())));
    }
}
