// The set-up tool, run as the user runs it, and the program's own start on
// the folder it makes.

#include "ProvaInsieme.h"

#include "frame/core/Ini.h"

#include <QFile>
#include <QProcess>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

struct Esito
{
    int codice = -1;
    QString uscita;
    QString errori;
};

Esito Lancia(const QStringList &argomenti)
{
    QProcess p;
    p.start(QStringLiteral(SORVANE_INIT), argomenti);
    p.waitForFinished(120000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

class Installazione : public ProvaInsieme
{
protected:
    QString Radice() const { return m_cartella.file("ufficio"); }

    // Starts as the program does: settings from the INI, then the files.
    void AvviaComeIlProgramma(QStringList *parole)
    {
        impostazioni() = Impostazioni();
        impostazioni().IniLocale = Radice() + "/sorvane.ini";
        impostazioni().IniServer = impostazioni().IniLocale;
        sessione().CodiceOperatore = "ALTRO"; // the INI's operator wins
        LeggiPercorsi();
        CaricaImpostazioni();
        ASSERT_TRUE(ConnettiDatabase([&](const QString &p) { parole->append(p); }));
    }
};

} // namespace

TEST_F(Installazione, CartellaNuovaProntaPerIlProgramma)
{
    const Esito e = Lancia({Radice(), "--operatore", "mario"});
    ASSERT_EQ(e.codice, 0) << qPrintable(e.errori);
    EXPECT_TRUE(e.uscita.contains("SORVANE_INI=")) << qPrintable(e.uscita);

    const QString ini = Radice() + "/sorvane.ini";
    EXPECT_EQ(QDir(LeggiIni(ini, "PATH", "FILE")), QDir(Radice() + "/dati"));
    EXPECT_EQ(QDir(LeggiIni(ini, "PATH", "WORK")), QDir(Radice() + "/lavoro"));
    EXPECT_EQ(QDir(LeggiIni(ini, "REPORT", "MODULI")), QDir(Radice() + "/moduli"));
    EXPECT_EQ(LeggiIni(ini, "BASE", "OPERATORE"), "MARIO");

    QStringList parole;
    AvviaComeIlProgramma(&parole);
    EXPECT_EQ(sessione().CodiceOperatore, "MARIO");
    EXPECT_TRUE(QFileInfo(impostazioni().FileDati).isFile());
    EXPECT_TRUE(QFileInfo(impostazioni().FileLavoro).isFile());
    EXPECT_TRUE(QFileInfo(impostazioni().PathSave).isDir());
    // The attachments the tool made stand: no rebuild, no message.
    EXPECT_FALSE(parole.contains("Connessione Tabelle Base"));
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join("|"));

    EXPECT_EQ(Valore("SELECT Descrizione FROM TabBuoCat WHERE Codice = '4'").toString(),
              "Redd.Var.: G.P.F.");
    EXPECT_EQ(Valore("SELECT group_concat(Codice || Segno, ' ') FROM "
                     "(SELECT * FROM DistCausali ORDER BY Codice)").toString(),
              "007+ 008- 900+");
    EXPECT_EQ(Valore("SELECT count(*) FROM Distinte").toInt(), 0);

    EXPECT_EQ(Valore("SELECT count(*) FROM dati.sqlite_master WHERE name = 'Distinte_data'")
                  .toInt(),
              1);
}

TEST_F(Installazione, ConDemoUnUfficioConGliIndiciDopoIlCarico)
{
    const Esito e = Lancia({"--demo", Radice()});
    ASSERT_EQ(e.codice, 0) << qPrintable(e.errori);
    QStringList parole;
    AvviaComeIlProgramma(&parole);
    EXPECT_GT(Valore("SELECT count(*) FROM Distinte").toInt(), 0);
    EXPECT_GT(Valore("SELECT count(*) FROM Clienti").toInt(), 0);
    // The office's rows join to the default ones.
    EXPECT_EQ(Valore("SELECT count(*) FROM DistCausali WHERE Codice IN ('007','008','900')")
                  .toInt(),
              3);
    for (Archivio a : TuttiGliArchivi)
        for (const Tabella *t : TabelleDi(a))
            for (const Indice &i : t->indici)
                EXPECT_EQ(Valore(QString("SELECT count(*) FROM %1.sqlite_master WHERE name = '%2'")
                                     .arg(NomeSchema(a), NomeIndiceSql(*t, i)))
                              .toInt(),
                          1)
                    << qPrintable(NomeIndiceSql(*t, i));
}

TEST_F(Installazione, RifiutaSenzaToccareCioCheEsiste)
{
    struct Caso
    {
        const char *file;  // written before the run, under the test's folder
        const char *parole; // what the refusal says
    };
    const Caso casi[] = {
        {"ufficio/dati/UFFICIO/DatiDV.db", "DatiDV.db ESISTE GIA': NON VIENE SOVRASCRITTO"},
        {"ufficio/dati/IndiciDV.db", "IndiciDV.db ESISTE GIA'"},
        {"ufficio/sorvane.ini", "sorvane.ini ESISTE GIA'"},
        // A plain file stands where the folder should go.
        {"ufficio", "IMPOSSIBILE CREARE LA CARTELLA"},
    };
    for (const Caso &c : casi) {
        CartellaProva cartella;
        const QString radice = cartella.file("ufficio");
        cartella.scrivi(c.file, "da non toccare");
        const Esito e = Lancia({radice});
        EXPECT_EQ(e.codice, 1) << c.file;
        EXPECT_TRUE(e.errori.contains(c.parole)) << qPrintable(e.errori);
        EXPECT_EQ(cartella.leggi(c.file), "da non toccare") << c.file;
        // Nothing new is left behind either.
        EXPECT_FALSE(QFile::exists(radice + "/lavoro/UFFICIO/WorkDV.db")) << c.file;
        EXPECT_FALSE(QFile::exists(radice + "/dati/UFFICIO/VisiteDV.db")) << c.file;
        if (QString(c.file) != "ufficio/sorvane.ini") {
            EXPECT_FALSE(QFile::exists(radice + "/sorvane.ini")) << c.file;
        }
    }
}

TEST_F(Installazione, OpzioniErrate)
{
    EXPECT_EQ(Lancia({}).codice, 2);
    EXPECT_EQ(Lancia({Radice(), "--scale", "molti"}).codice, 2);
    EXPECT_EQ(Lancia({Radice(), "--sconosciuta"}).codice, 2);
    EXPECT_EQ(Lancia({Radice(), "--server", "db:65536", "--database", "x"}).codice, 2);
    const Esito aiuto = Lancia({"--aiuto"});
    EXPECT_EQ(aiuto.codice, 0);
    EXPECT_TRUE(aiuto.uscita.contains("--demo")) << qPrintable(aiuto.uscita);
    EXPECT_FALSE(QFile::exists(Radice()));
}

// A file office taken onto the server: every table of every file arrives
// whole, in the order its rows were added, and the program opens it.
TEST_F(Installazione, UfficioSuFileCopiatoSulServer)
{
    if (!SuServerDiProva())
        GTEST_SKIP() << "solo con un server di prova";
    CartellaProva cartella;
    const QString origine = cartella.file("file");
    ASSERT_EQ(Lancia({origine, "--demo", "--seme", "7"}).codice, 0);

    const QString database = impostazioni().Server.database;
    const QStringList server = {"--server", qEnvironmentVariable("SORVANE_PROVA_SERVER"),
                                "--database", database, "--postazione", "prova"};
    // A row the server's types refuse stops the copy, and the schemas it
    // made go with it: the run can be made again once the row is mended.
    const QString dati = origine + "/dati/UFFICIO/" + NomeFile(Archivio::Dati);
    const QString ultima = " WHERE rowid = (SELECT max(rowid) FROM Distinte)";
    const auto suFile = [&](const QString &sql) {
        QSqlDatabase f = QSqlDatabase::addDatabase("QSQLITE", "origine");
        f.setDatabaseName(dati);
        const QVariant v = f.open() ? PrimoValore(f, sql) : QVariant();
        f = QSqlDatabase();
        QSqlDatabase::removeDatabase("origine");
        return v;
    };
    const qint64 giorno = suFile("SELECT dstData FROM Distinte" + ultima).toLongLong();
    suFile("UPDATE Distinte SET dstData = 'ieri'" + ultima);
    const Esito rifiuto = Lancia(QStringList{Radice(), "--copia", origine} + server);
    EXPECT_EQ(rifiuto.codice, 1);
    EXPECT_TRUE(rifiuto.errori.contains("ERRORE COPIANDO LA TABELLA Distinte"))
        << qPrintable(rifiuto.errori);
    EXPECT_FALSE(QFile::exists(Radice() + "/sorvane.ini"));
    suFile(QString("UPDATE Distinte SET dstData = %1").arg(giorno) + ultima);

    const Esito e = Lancia(QStringList{Radice(), "--copia", origine} + server);
    ASSERT_EQ(e.codice, 0) << qPrintable(e.errori);
    EXPECT_EQ(LeggiIni(Radice() + "/sorvane.ini", "ARCHIVIO", "DATABASE"), database);
    // The office's schemas are there now: a second run refuses.
    const Esito ancora = Lancia(QStringList{cartella.file("altro"), "--demo"} + server);
    EXPECT_EQ(ancora.codice, 1);
    EXPECT_TRUE(ancora.errori.contains("ESISTE GIA'")) << qPrintable(ancora.errori);

    QStringList parole;
    AvviaComeIlProgramma(&parole);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << qPrintable(m_messaggi.testi().join("|"));
    EXPECT_EQ(Valore("SELECT Descrizione FROM TabBuoCat WHERE Codice = '4'").toString(),
              "Redd.Var.: G.P.F.");
    for (Archivio a : TuttiGliArchivi) {
        const QString file = a == Archivio::Indici ? origine + "/dati/" + NomeFile(a)
                             : a == Archivio::Lavoro
                                 ? origine + "/lavoro/UFFICIO/" + NomeFile(a)
                                 : origine + "/dati/UFFICIO/" + NomeFile(a);
        QSqlDatabase f = QSqlDatabase::addDatabase("QSQLITE", "origine");
        f.setDatabaseName(file);
        ASSERT_TRUE(f.open()) << qPrintable(file);
        int piene = 0;
        for (const Tabella *t : TabelleDi(a)) {
            const QString conta = "SELECT count(*) FROM " + t->nome;
            const qint64 righe = PrimoValore(f, conta).toLongLong();
            EXPECT_EQ(Valore(conta).toLongLong(), righe) << qPrintable(t->nome);
            if (righe == 0)
                continue;
            ++piene;
            // The first row added, column by column.
            for (const Colonna &c : t->colonne) {
                const QString prima =
                    QString("SELECT %1 FROM %2 ORDER BY rowid LIMIT 1").arg(c.nome, t->nome);
                const auto testo = [](const QVariant &v) {
                    return v.isNull() ? QString("NULL") : v.toString();
                };
                EXPECT_EQ(testo(PrimoValore(f, prima)), testo(Valore(prima)))
                    << qPrintable(t->nome + "." + c.nome);
            }
        }
        EXPECT_GT(piene, 0) << qPrintable(NomeFile(a));
        f = QSqlDatabase();
        QSqlDatabase::removeDatabase("origine");
    }
}
