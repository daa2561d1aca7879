#include "ProvaInsieme.h"

#include <QFile>
#include <QSet>

#ifdef __linux__
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace sorvane;
using namespace sorvane::prova;

namespace {

const QStringList ParoleApertura = {
    "Aggancio WorkSpace operativo",    "Apertura DataBase operativo",
    "Aggancio WorkSpace di lavoro",    "Apertura DataBase di lavoro",
    "Aggancio WorkSpace delle Visite", "Apertura DataBase delle Visite",
    "Aggancio WorkSpace degli indici", "Apertura DataBase degli indici",
};
const QStringList ParoleRicostruzione = {
    "Connessione Tabelle Base",
    "Connessione Tabelle delle Visite",
    "Connessione Tabelle degli Indici",
};

class Connessione : public ProvaInsieme
{
protected:
    void SetUp() override
    {
        ProvaInsieme::SetUp();
        CreaTutti();
    }
    bool Connetti()
    {
        m_parole.clear();
        return ConnettiDatabase([this](const QString &p) { m_parole.append(p); });
    }

    // The catalogue as name -> Connect text.
    QMap<QString, QString> Catalogo()
    {
        QMap<QString, QString> c;
        QSqlQuery q(Db());
        EXPECT_TRUE(q.exec("SELECT Nome, Connessione, Origine FROM Allegati"));
        while (q.next()) {
            EXPECT_EQ(q.value(0).toString(), q.value(2).toString());
            c.insert(q.value(0).toString(), q.value(1).toString());
        }
        return c;
    }

    // What a catalogue built on the present settings holds.
    QMap<QString, QString> CatalogoAtteso()
    {
        QMap<QString, QString> c;
        for (int i = 0; i < NumeroAllegati; ++i)
            if (!ElencoAllegati()[i].isEmpty())
                c.insert(ElencoAllegati()[i],
                         ";DATABASE=" + PercorsoArchivio(ArchivioAllegato(i)));
        c.insert("Indici", ";DATABASE=" + PercorsoArchivio(Archivio::Indici));
        return c;
    }

    QStringList m_parole;
};

// A file without write permission for as long as this lives. Root writes
// through the mode bits: its override goes out of the thread's effective
// set meanwhile, so that the file is read-only for it as for anyone.
class SoloLettura
{
public:
    explicit SoloLettura(const QString &file) : m_file(file), m_permessi(QFile::permissions(file))
    {
        QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
#ifdef __linux__
        if (geteuid() == 0 && syscall(SYS_capget, &m_testa, m_prima) == 0) {
            __user_cap_data_struct senza[_LINUX_CAPABILITY_U32S_3];
            std::copy(std::begin(m_prima), std::end(m_prima), senza);
            senza[CAP_TO_INDEX(CAP_DAC_OVERRIDE)].effective &= ~CAP_TO_MASK(CAP_DAC_OVERRIDE);
            m_tolto = syscall(SYS_capset, &m_testa, senza) == 0;
        }
#endif
    }
    ~SoloLettura()
    {
#ifdef __linux__
        if (m_tolto)
            syscall(SYS_capset, &m_testa, m_prima);
#endif
        QFile::setPermissions(m_file, m_permessi);
    }
    // False when the file can be written all the same.
    bool protetto() const
    {
        QFile f(m_file);
        return !f.open(QIODevice::ReadWrite);
    }

private:
    QString m_file;
    QFile::Permissions m_permessi;
#ifdef __linux__
    __user_cap_header_struct m_testa{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_prima[_LINUX_CAPABILITY_U32S_3]{};
    bool m_tolto = false;
#endif
};

} // namespace

TEST_F(Connessione, UnArchivioDiLavoroVuotoHaTuttiGliAllegati)
{
    SOLO_SU_FILE();
    // An empty working file: not even the catalogue is there.
    QFile::remove(PercorsoArchivio(Archivio::Lavoro));
    { AltraConnessione vuoto(PercorsoArchivio(Archivio::Lavoro)); vuoto.esegui("VACUUM"); }

    ASSERT_TRUE(Connetti());
    EXPECT_EQ(m_parole, ParoleApertura + ParoleRicostruzione);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join("|"));
    EXPECT_TRUE(archivi().DbDatiAperto);
    EXPECT_TRUE(archivi().DbLavoroAperto);
    EXPECT_TRUE(archivi().IndiciAperto);
    EXPECT_EQ(impostazioni().FileIndici, impostazioni().PathDati + "IndiciDV.db");
    EXPECT_EQ(Catalogo(), CatalogoAtteso());
    // A blank entry of the list never reaches the catalogue.
    EXPECT_EQ(Valore("SELECT count(*) FROM Allegati WHERE trim(Nome) = ''").toInt(), 0);
    EXPECT_EQ(Catalogo().size(), 49);

    // Every table answers by its plain name on the one connection.
    for (const char *t : {"Distinte", "BkDistinte", "VisiteN", "Indici", "TabAzioni"})
        EXPECT_TRUE(Esegui(QString("SELECT * FROM %1").arg(t))) << t;

    // A second start finds the attachments standing and leaves them be.
    ChiudiDatabase();
    ASSERT_TRUE(Connetti());
    EXPECT_EQ(m_parole, ParoleApertura);
}

TEST_F(Connessione, UnSoloAllegatoScadutoLiRicostruisceTutti)
{
    SOLO_SU_FILE();
    ASSERT_TRUE(Connetti());
    // One entry points at a file that has gone; another at a different file
    // that exists, which the count takes as good.
    const QString altro = m_cartella.scrivi("altro.db", "x");
    ASSERT_TRUE(Esegui("UPDATE Allegati SET Connessione = ';DATABASE=/non/esiste.db' "
                       "WHERE Nome = 'Societa'"));
    ASSERT_TRUE(Esegui(QString("UPDATE Allegati SET Connessione = ';DATABASE=%1' "
                               "WHERE Nome = 'Azioni'").arg(altro)));
    ChiudiDatabase();

    ASSERT_TRUE(Connetti());
    EXPECT_EQ(m_parole, ParoleApertura + ParoleRicostruzione);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()); // rebuilt in silence
    EXPECT_EQ(Catalogo(), CatalogoAtteso());
}


TEST_F(Connessione, TabellaMancanteDettaUnaVoltaELAvvioProsegue)
{
    {
        AltraConnessione dati(PercorsoArchivio(Archivio::Dati));
        ASSERT_TRUE(dati.esegui("DROP TABLE Moduli"));
    }
    ASSERT_TRUE(Connetti());
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const Richiesta r = m_messaggi.richieste().first();
    EXPECT_EQ(r.testo, "ERRORE IN CONNESSIONE TABELLA BASE Moduli");
    EXPECT_EQ(r.titolo, NomeProgrammaMaiuscolo() + " -ERRORE CONNESIONE TABELLE");
    EXPECT_EQ(r.icona, Icona::Stop);
    // The rebuild is undone whole: the catalogue stays as it was, empty.
    EXPECT_EQ(Valore("SELECT count(*) FROM Allegati").toInt(), 0);
    EXPECT_TRUE(archivi().DbDatiAperto);
}

TEST_F(Connessione, FileMancanteNonVieneCreato)
{
    const QString visite = PercorsoArchivio(Archivio::Visite);
    if (SuServerDiProva()) {
        AltraConnessione server(visite);
        ASSERT_TRUE(server.esegui("DROP SCHEMA \"visite_OP1\" CASCADE"));
    } else {
        ASSERT_TRUE(QFile::remove(visite));
    }

    EXPECT_FALSE(Connetti());
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const Richiesta r = m_messaggi.richieste().first();
    EXPECT_EQ(r.testo, "DATABASE " + LuogoArchivio(Archivio::Visite) + " INESISTENTE");
    EXPECT_EQ(r.titolo, NomeProgrammaMaiuscolo() + " -ERRORE");
    EXPECT_EQ(r.icona, Icona::Stop);
    EXPECT_EQ(r.pulsanti, Pulsanti::RiprovaAnnulla);
    // Cancel leaves nothing open, and the wrong path stays without a file.
    EXPECT_FALSE(QFile::exists(visite));
    EXPECT_FALSE(archivi().DbDatiAperto);
    EXPECT_FALSE(archivi().DbLavoroAperto);
    EXPECT_FALSE(archivi().IndiciAperto);
    EXPECT_FALSE(Db().isValid());
    EXPECT_EQ(m_parole.last(), "Apertura DataBase delle Visite");
}

TEST_F(Connessione, FileDaScrivereInSolaLetturaRifiutatoAllAvvio)
{
    SOLO_SU_FILE();
    // The engine would open them for reading without a word.
    for (Archivio a : {Archivio::Dati, Archivio::Lavoro}) {
        const QString file = PercorsoArchivio(a);
        SoloLettura sola(file);
        if (!sola.protetto())
            GTEST_SKIP() << "no way to write-protect a file here";
        m_messaggi.pulisci();
        EXPECT_FALSE(Connetti());
        ASSERT_EQ(m_messaggi.richieste().size(), 1);
        const Richiesta r = m_messaggi.richieste().first();
        EXPECT_EQ(r.testo, "DATABASE " + file + " IN SOLA LETTURA");
        EXPECT_EQ(r.pulsanti, Pulsanti::RiprovaAnnulla);
        EXPECT_FALSE(Db().isValid());
    }
    // Writable again, the same files open.
    EXPECT_TRUE(Connetti());
}

TEST_F(Connessione, FileCheNonEUnDatabaseRestaIntatto)
{
    SOLO_SU_FILE();
    for (Archivio a : {Archivio::Dati, Archivio::Lavoro, Archivio::Indici}) {
        const QString file = PercorsoArchivio(a);
        const QByteArray prima = "non sono un database, solo testo\n";
        {
            QFile f(file);
            ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(prima);
        }
        m_messaggi.pulisci();
        EXPECT_FALSE(Connetti());
        EXPECT_EQ(m_messaggi.testi(), QStringList{"DATABASE " + file + " INESISTENTE"});
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        EXPECT_EQ(f.readAll(), prima);
        f.close();
        QFile::remove(file);
        Crea(a);
    }
}

TEST_F(Connessione, OgniFileInJournalConSincroniaPienaEAttesa)
{
    SOLO_SU_FILE();
    {
        AltraConnessione dati(PercorsoArchivio(Archivio::Dati));
        ASSERT_EQ(dati.valore("PRAGMA journal_mode = WAL").toString(), "wal");
        dati.esegui("INSERT INTO Societa (SocNome) VALUES ('ZERLO')");
    }
    ASSERT_TRUE(Connetti());
    for (Archivio a : TuttiGliArchivi) {
        const QString s = NomeSchema(a);
        EXPECT_EQ(Valore(QString("PRAGMA %1.journal_mode").arg(s)).toString(), "delete")
            << qPrintable(s);
        EXPECT_EQ(Valore(QString("PRAGMA %1.synchronous").arg(s)).toInt(), 2) << qPrintable(s);
    }
    EXPECT_GE(Valore("PRAGMA busy_timeout").toInt(), 5000);
    EXPECT_EQ(Valore("SELECT SocNome FROM Societa").toString(), "ZERLO");
    EXPECT_FALSE(QFile::exists(PercorsoArchivio(Archivio::Dati) + "-wal"));
}

TEST_F(Connessione, WalTenutoDaUnAltroProgrammaRifiutato)
{
    SOLO_SU_FILE();
    AltraConnessione dati(PercorsoArchivio(Archivio::Dati));
    ASSERT_EQ(dati.valore("PRAGMA journal_mode = WAL").toString(), "wal");
    ASSERT_TRUE(dati.valore("SELECT count(*) FROM Societa").isValid());

    EXPECT_FALSE(Connetti());
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    EXPECT_TRUE(m_messaggi.testi().first().startsWith(
        "DATABASE " + PercorsoArchivio(Archivio::Dati) + " IN MODALITA' WAL"))
        << qPrintable(m_messaggi.testi().first());
    EXPECT_FALSE(Db().isValid());
}

TEST_F(Connessione, FileBloccatoDaUnAltroProgramma)
{
    SOLO_SU_FILE();
    AltraConnessione visite(PercorsoArchivio(Archivio::Visite));
    ASSERT_TRUE(visite.esegui("BEGIN EXCLUSIVE"));
    ASSERT_TRUE(visite.esegui("INSERT INTO VisiteN VALUES (1, 37000, 5)"));

    EXPECT_FALSE(Connetti());
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const QString testo = m_messaggi.testi().first();
    EXPECT_TRUE(testo.startsWith("DATABASE " + PercorsoArchivio(Archivio::Visite)
                                 + " BLOCCATO DA UN ALTRO PROGRAMMA"))
        << qPrintable(testo);
    EXPECT_TRUE(testo.contains("codice SQLite 5")) << qPrintable(testo);
    EXPECT_TRUE(visite.esegui("ROLLBACK"));
}

TEST_F(Connessione, IndiciNonApribili)
{
    {
        AltraConnessione indici(PercorsoArchivio(Archivio::Indici));
        ASSERT_TRUE(indici.esegui("DROP TABLE Indici"));
    }
    EXPECT_FALSE(Connetti());
    ASSERT_EQ(m_messaggi.richieste().size(), 2);
    const Richiesta tabella = m_messaggi.richieste()[0];
    EXPECT_TRUE(tabella.testo.startsWith("ERRORE IN APERTURA ARCHIVIO 'INDICI'\n"));
    EXPECT_EQ(tabella.titolo, "ERRORE APERTURA TABELLA");
    EXPECT_EQ(tabella.icona, Icona::Esclamazione);
    const Richiesta avvio = m_messaggi.richieste()[1];
    EXPECT_EQ(avvio.testo, "ERRORE IN APERTURA INDICI\nDataBase: " + LuogoArchivio(Archivio::Indici));
    EXPECT_EQ(avvio.titolo, NomeProgrammaMaiuscolo() + " -ERRORE");
    EXPECT_FALSE(archivi().IndiciAperto);
}

// A workstation new to the office: its working schema is made at the start,
// and every table of the list answers by its plain name.
TEST_F(Connessione, SulServerLoSchemaDiLavoroNuovoNasceAllAvvio)
{
    if (!SuServerDiProva())
        GTEST_SKIP() << "solo sul server";
    impostazioni().Server.postazione = QStringLiteral("nuova");
    ASSERT_TRUE(Connetti()) << qPrintable(sessione().TestoErrore);
    EXPECT_EQ(m_parole.mid(0, 1), QStringList{"Collegamento al server"});
    EXPECT_EQ(m_parole.mid(1, 8), ParoleApertura);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join("|"));
    EXPECT_EQ(Valore("SELECT current_schema()").toString(), "lavoro_OP1_nuova");
    for (const char *t : {"Distinte", "BkDistinte", "VisiteN", "Indici", "TabAzioni"})
        EXPECT_TRUE(Esegui(QString("SELECT * FROM %1").arg(t))) << t;

    // Text keys compare without case, as on the files.
    ASSERT_TRUE(Esegui("INSERT INTO DistCausali VALUES ('abc', 'Versamento', '+')"));
    EXPECT_EQ(Valore("SELECT Descrizione FROM DistCausali WHERE Codice = 'ABC'").toString(),
              "Versamento");
    EXPECT_EQ(Valore("SELECT count(*) FROM DistCausali WHERE Descrizione LIKE 'vers%'").toInt(), 1);
    EXPECT_FALSE(Esegui("INSERT INTO DistCausali VALUES ('ABC', 'Altro', '-')"));
}

TEST_F(Connessione, SulServerIrraggiungibileRiprovaOAnnulla)
{
    if (!SuServerDiProva())
        GTEST_SKIP() << "solo sul server";
    impostazioni().Server.host = QStringLiteral("127.0.0.1");
    impostazioni().Server.porta = 1;
    EXPECT_FALSE(Connetti());
    ASSERT_EQ(m_messaggi.richieste().size(), 1);
    const Richiesta r = m_messaggi.richieste().first();
    EXPECT_TRUE(r.testo.startsWith("SERVER 127.0.0.1/" + impostazioni().Server.database
                                   + " NON RAGGIUNGIBILE\n"))
        << qPrintable(r.testo);
    EXPECT_EQ(r.pulsanti, Pulsanti::RiprovaAnnulla);
    EXPECT_FALSE(archivi().DbDatiAperto);
}
