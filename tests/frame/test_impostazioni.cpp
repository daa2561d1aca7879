#include "frame/core/Impostazioni.h"

#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "support/CartellaProva.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <utility>

using namespace sorvane;
using sorvane::prova::CartellaProva;

namespace {

// Puts an environment variable back as it was, set or not.
struct AmbienteSalvato
{
    explicit AmbienteSalvato(const char *n)
        : nome(n), era(qEnvironmentVariableIsSet(n)), valore(qgetenv(n)) {}
    ~AmbienteSalvato() { era ? qputenv(nome, valore) : qunsetenv(nome); }
    const char *nome;
    bool era;
    QByteArray valore;
};


class ImpostazioniProva : public ::testing::Test
{
protected:
    ImpostazioniProva()
    {
        impostazioni() = Impostazioni{};
        sessione().CodiceOperatore = QStringLiteral("CMD");
        sessione().NomeUtenteBreve = QStringLiteral("utent");
        qunsetenv("SORVANE_INI");
    }

    QString Cartella(const QString &nome) const { return ConSeparatore(m_dir.file(nome)); }

    QByteArray Percorso(const QString &nome) const { return m_dir.file(nome).toUtf8(); }

    // The local INI holds the data and work folders of the test plus the
    // lines given; the server INI is the local one unless a test writes it.
    void Locale(const QByteArray &altro, const QByteArray &righePath = {})
    {
        impostazioni().IniLocale = m_dir.scrivi(
            "locale.ini", "[PATH]\nFILE=" + Percorso("dati") + "\nWORK=" + Percorso("lavoro")
                              + "\n" + righePath + altro);
        if (impostazioni().IniServer.isEmpty())
            impostazioni().IniServer = impostazioni().IniLocale;
    }

    void Server(const QByteArray &testo)
    {
        impostazioni().IniServer = m_dir.scrivi("server.ini", testo);
    }

    void Carica(const QByteArray &altro = {}, const QByteArray &righePath = {})
    {
        Locale(altro, righePath);
        LeggiPercorsi();
        CaricaImpostazioni();
    }

    // The settings read from a local INI with the lines given.
    const Impostazioni &Con(const QByteArray &righe)
    {
        Carica(righe + "\n");
        return impostazioni();
    }

    prova::StatoSalvato m_stato; // first: put back after the rest
    CartellaProva m_dir;
    MessaggiRegistrati m_messaggi;
    AmbienteSalvato m_ini{"SORVANE_INI"};
};

} // namespace

TEST_F(ImpostazioniProva, IniLocaleNellOrdineDeiCandidati)
{
    const QString programma = m_dir.file("prog");
    const QString sistema = Cartella("etc");
    const QStringList candidati{m_dir.scrivi("prog/prova.ini", "x"),
                                m_dir.scrivi("prog/SORVANE.ini", "x"),
                                m_dir.scrivi("etc/prova.ini", "x"),
                                m_dir.scrivi("etc/SORVANE.ini", "x")};
    const QString altrove = m_dir.scrivi("altrove/mio.ini", "x");

    qputenv("SORVANE_INI", altrove.toLocal8Bit());
    EXPECT_EQ(TrovaIniLocale(programma, "prova", sistema), altrove);
    EXPECT_EQ(TrovaIniLocale(), altrove);
    qputenv("SORVANE_INI", m_dir.file("manca.ini").toLocal8Bit());
    for (const QString &c : candidati) {
        EXPECT_EQ(QDir::cleanPath(TrovaIniLocale(programma, "prova", sistema)), c);
        QFile::remove(c);
    }
    EXPECT_EQ(TrovaIniLocale(programma, "prova", sistema), "");
}

TEST_F(ImpostazioniProva, IniServerDaFileini)
{
    const QString server = m_dir.scrivi("server.ini", "[PARAMETRI]\n");
    const QString locale = m_dir.scrivi("a.ini", "[PATH]\nFileini=" + server.toUtf8() + "\n");
    EXPECT_EQ(TrovaIniServer(locale), server);

    QString rovescio = server;
    rovescio.replace('/', '\\');
    const QString locale2 = m_dir.scrivi("b.ini", "[path]\nfileini=" + rovescio.toUtf8() + "\n");
    EXPECT_EQ(QDir::cleanPath(TrovaIniServer(locale2)), QDir::cleanPath(server));

    const QString mancante = m_dir.scrivi("c.ini", "[PATH]\nFileini=" + Percorso("no.ini") + "\n");
    EXPECT_EQ(TrovaIniServer(mancante), mancante);
}

TEST_F(ImpostazioniProva, PercorsiDallIni)
{
    const QString s = Separatore();
    QByteArray rovescio = Percorso("dati");
    rovescio.replace('/', '\\');
    impostazioni().IniLocale = m_dir.scrivi(
        "a.ini", "[PATH]\nFILE=" + rovescio + "\nWORK=" + Percorso("lavoro") + "/\n");
    LeggiPercorsi();
    EXPECT_EQ(impostazioni().PathDati, Cartella("dati"));
    EXPECT_EQ(impostazioni().PathLavoro, Cartella("lavoro"));
    EXPECT_EQ(impostazioni().PathComune, Cartella("Dati0"));

    // Without PATH/FILE and WORK the data stand at the root of the drive.
    impostazioni().IniLocale = m_dir.scrivi("b.ini", "[PATH]\nFileini=x\n");
    LeggiPercorsi();
#ifdef Q_OS_WIN
    const QString radice = QDir::toNativeSeparators(QDir::currentPath().left(3));
#else
    const QString radice = "/";
#endif
    EXPECT_EQ(impostazioni().PathDati, radice);
    EXPECT_EQ(impostazioni().PathLavoro, radice);
    EXPECT_EQ(impostazioni().PathComune, s + "Dati0" + s);
}

TEST_F(ImpostazioniProva, OperatoreDallIniOppureDalNomeUtente)
{
    const AmbienteSalvato user("USER");
    impostazioni().IniLocale = m_dir.scrivi("a.ini", "[BASE]\nOPERATORE= rossi \n");
    LeggiPercorsi();
    EXPECT_EQ(sessione().CodiceOperatore, "ROSSI"); // the command line's CMD goes

    impostazioni().IniLocale = m_dir.scrivi("b.ini", "[BASE]\nOPERATORE=\n");
    LeggiPercorsi();
    EXPECT_EQ(sessione().CodiceOperatore, "UTENT");

#ifndef Q_OS_WIN
    sessione().NomeUtenteBreve.clear();
    qputenv("USER", "verdimario");
    LeggiPercorsi();
    EXPECT_EQ(sessione().CodiceOperatore, "VERDI");
#endif
}


TEST_F(ImpostazioniProva, ValoriPredefiniti)
{
    Carica();
    const Impostazioni &imp = impostazioni();
    const QString s = Separatore();
    const QString dati = Cartella("dati");
    ASSERT_EQ(sessione().CodiceOperatore, "UTENT");
    const std::pair<QString, QString> percorsi[] = {
        {imp.FileDati, dati + "UTENT" + s + "DatiDV.db"},
        {imp.FileVisite, dati + "UTENT" + s + "VisiteDV.db"},
        {imp.PathLavoroOperatore, Cartella("lavoro") + "UTENT" + s},
        {imp.FileLavoro, Cartella("lavoro") + "UTENT" + s + "WorkDV.db"},
        {imp.PathReport, dati}, {imp.PathReportOperatore, dati + "UTENT" + s},
        {imp.PathSave, dati + "save" + s + "UTENT" + s}, {imp.PathStampe, dati},
        {imp.PathTemp, dati + "temp" + s}, {imp.PathTesti, dati}, {imp.PathFogli, dati},
        {imp.PathImpExp, imp.PathTemp},
    };
    for (const auto &[letto, atteso] : percorsi)
        EXPECT_EQ(letto, atteso);
    EXPECT_TRUE(EsisteFile(imp.PathSave, AttributoCartella));
    EXPECT_TRUE(EsisteFile(imp.PathTemp, AttributoCartella));
    EXPECT_EQ(imp.CodBase, "EUR");
    EXPECT_TRUE(m_messaggi.richieste().isEmpty()) << m_messaggi.testi().join('|').toStdString();
}

TEST_F(ImpostazioniProva, ValoriLettiEPoiAzzerati)
{
    Carica("[REPORT]\nMODULI=" + Percorso("moduli") + "\n"
           "[STAMPA]\nTIPO=P\nPREVIEW=1\nZOOM=300\n"
           "[EURO]\nCODLIT=ITL\nCODEUR= EU \nLIRE=1936,5\n"
           "[PARAMETRI]\ncmmovpos= s \nPercAss=V\nPercMax=80\nSaldoIni+=S+\nCauRateo=RT\n"
           "datarendim=31/12/2001\nAnnoSolare=2019\nTIPOEC3=FONDI\n",
           "STAMPE=" + Percorso("stampe") + "\nTESTI=" + Percorso("testi") + "\n");
    const Impostazioni &imp = impostazioni();
    EXPECT_EQ(imp.PathReport, Cartella("moduli"));
    EXPECT_EQ(imp.PathStampe, m_dir.file("stampe"));
    EXPECT_EQ(imp.PathTesti, Cartella("testi"));
    EXPECT_TRUE(imp.MovimentiPositivi);
    EXPECT_EQ(imp.ZoomStampa, 0); // beyond a byte: the step fails
    EXPECT_EQ(imp.CodBase, "EU");
    EXPECT_DOUBLE_EQ(imp.CambioLire, 1936.5);
    EXPECT_EQ(imp.TipiEstrattoConto[3], "FONDI");


    // A second reading starts from the defaults again.
    Carica("[STAMPA]\nTIPO=X\n[PARAMETRI]\nAnnoSolare=due\nPercMax=0\n");
    EXPECT_EQ(imp.CodLit, "LIT");
    EXPECT_EQ(imp.TipoStampa, 'V');
    EXPECT_FALSE(imp.MovimentiPositivi);
    EXPECT_FLOAT_EQ(imp.PercMax, 95);
    EXPECT_EQ(imp.AnnoSolare, QDate::currentDate().year() - 1);
    EXPECT_EQ(imp.TipiEstrattoConto[3], "TUTTO");
}

TEST_F(ImpostazioniProva, ChiaviDelServerSoloDalServer)
{
    Server("[PARAMETRI]\nMANDATO=5-7\nrasbank=a|b\n[EURO]\nCODLIT=SRV\n");
    Carica("[PARAMETRI]\nvitariv=x|y\nCauPlus=LOC\n");
    const Impostazioni &imp = impostazioni();
    EXPECT_EQ(imp.LunghezzaMandatoA, 5);
    EXPECT_EQ(imp.LunghezzaMandatoB, 7);
    EXPECT_EQ(imp.BancheRas, "a|b|");
    EXPECT_EQ(imp.CodLit, "LIT");
    EXPECT_EQ(imp.VitaRiv, "");
    EXPECT_EQ(imp.CauPlus, "PM+");
}

TEST_F(ImpostazioniProva, CartellaPerOperatoreConPercento)
{
    const QString s = Separatore();
    Carica({}, "TEMP=" + Percorso("tmp") + "%qualunque\\cosa\nFOGLI=" + Percorso("fogli") + "%\n");
    const Impostazioni &imp = impostazioni();
    EXPECT_EQ(imp.PathTemp, Cartella("tmp") + "UTENT" + s);
    EXPECT_TRUE(EsisteFile(imp.PathTemp, AttributoCartella));
    EXPECT_EQ(imp.PathImpExp, imp.PathTemp);
    EXPECT_EQ(imp.PathFogli, Cartella("fogli") + "UTENT" + s);
    EXPECT_TRUE(EsisteFile(imp.PathFogli, AttributoCartella));
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

// Values that don't read as what they should fall back to the default.
TEST_F(ImpostazioniProva, DecimaliCambioEListeLetti)
{
    const std::pair<QByteArray, QString> decimali[] = {
        {"due", "#,###,###,##0.00"}, {"0", "###,###,##0.000"},
        {"2,5", "#,###,###,##0.00"}, // half to even, as the classic conversion
    };
    for (const auto &[valore, formato] : decimali)
        EXPECT_EQ(Con("[PARAMETRI]\nDECIMALI=" + valore).FormatoDecimali, formato)
            << valore.data();
    EXPECT_DOUBLE_EQ(Con("[EURO]\nLIRE=12abc").CambioLire, 1936.27);
    EXPECT_EQ(Con("[PARAMETRI]\nrasbank=|a\nvitariv=|").BancheRas, "a|");
    EXPECT_EQ(impostazioni().VitaRiv, "");

}

TEST_F(ImpostazioniProva, CartellaSaveNonCreabile)
{
    m_dir.scrivi("piano.txt", "un file, non una cartella");
    const QString save = Cartella("piano.txt/save");
    Carica({}, "SAVE=" + Percorso("piano.txt/save") + "\n");

    ASSERT_EQ(m_messaggi.richieste().size(), 1) << m_messaggi.testi().join('|').toStdString();
    const QString testo = m_messaggi.richieste().first().testo;
    EXPECT_TRUE(testo.startsWith("ERRORE SAVE\n" + save + "\n")) << testo.toStdString();
    EXPECT_TRUE(QRegularExpression("\n\\d+-\\S").match(testo).hasMatch()) << testo.toStdString();
    // The run goes on with the path it was given and the later steps.
    EXPECT_EQ(impostazioni().PathSave, save + "UTENT" + Separatore());
    EXPECT_EQ(impostazioni().PathTemp, Cartella("dati/temp"));
    EXPECT_EQ(impostazioni().TipiEstrattoConto[9], "TUTTO");
}
