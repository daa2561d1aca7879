#pragma once

// The configuration of the run: paths and settings read once at start from
// the local and server INI files. Screens read impostazioni(); only
// TrovaIni..., LeggiPercorsi and CaricaImpostazioni write it.

#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

namespace sorvane {

// Where an office on a server lives: the local INI's [ARCHIVIO] past its
// MOTORE. The password is never here but in libpq's password or service
// file.
struct ServerArchivio
{
    QString host;
    int porta = 0; // 0: libpq's default
    QString database;
    QString utente;
    QString servizio;   // a service of pg_service.conf, instead of the above
    QString postazione; // names the workstation's working schema
};

struct Impostazioni
{
    QString IniLocale;
    QString IniServer;

    QString PathDati;            // ends with the separator
    QString PathLavoro;          // ends with the separator
    QString PathLavoroOperatore; // PathLavoro + operator + separator
    QString FileDati;
    QString FileVisite;
    QString FileLavoro;
    QString FileIndici;          // set by the connection
    QString PathComune;          // parent of PathDati + "Dati0" + separator
    QString PathReport;
    QString PathReportOperatore; // empty when the operator is blank
    QString PathSave;
    QString PathStampe;
    QString PathTemp;
    QString PathTesti;
    QString PathFogli;
    QString PathImpExp;

    // The store, from the local INI's [ARCHIVIO]: "SQLITE" (the files
    // above) or "POSTGRES" (a server database; the password is never in
    // the INI but in libpq's password or service file).
    QString Motore = QStringLiteral("SQLITE");
    ServerArchivio Server;

    std::array<QString, 14> MesiNomi;

    QString CodLit = QStringLiteral("LIT");
    QString CodEur = QStringLiteral("EUR");
    QString CodBase = QStringLiteral("EUR");
    double CambioLire = 1936.27;
    std::uint32_t ColoreEvidenza = 0xFFFFC0; // RGB(255, 255, 192) as 0xRRGGBB
    QChar TipoStampa = QLatin1Char('V');
    std::uint8_t PreviewStampa = 0;
    std::uint8_t ZoomStampa = 0;
    QString FormatoDecimali = QStringLiteral("#,###,###,##0.00");
    std::int16_t AnnoSolare = 0;
    QString DataRendimento = QStringLiteral(" ");
    std::array<QString, 10> TipiEstrattoConto;

    // Read for the suite's shared module, not used by this program.
    bool MovimentiPositivi = false;
    QChar PercAss = QLatin1Char('I');
    float PercMax = 95;
    int LunghezzaMandatoA = 9;
    int LunghezzaMandatoB = 9;
    QString SaldoIniPiu = QStringLiteral("SI+");
    QString SaldoIniMeno = QStringLiteral("SI-");
    QString CauPlus = QStringLiteral("PM+");
    QString CauMinus = QStringLiteral("PM-");
    QString CauRateo = QStringLiteral("RTT");
    QString BancheRas;
    QString VitaRiv;
};

Impostazioni &impostazioni();

// The server as the user is told of it: "host/database" (localhost when
// no host is named) or "servizio NAME".
QString LuogoServer(const ServerArchivio &server);

// "HOST" or "HOST:PORTA" into the host and port of `server`; false, with
// `server` unchanged, when what follows the last ":" is not a port (1 to
// 65535).
bool LeggiIndirizzo(const QString &indirizzo, ServerArchivio &server);

// Finds the local INI: SORVANE_INI when set and existing, then
// dirProgramma/nomeExe.ini, dirProgramma/SORVANE.ini, CartellaWindows()
// nomeExe.ini, CartellaWindows() SORVANE.ini. Empty when none exists.
QString TrovaIniLocale(const QString &dirProgramma, const QString &nomeExe,
                       const QString &cartellaSistema);
QString TrovaIniLocale(); // with the running program's directory and name

// PATH/Fileini of the local INI when it names an existing file, else the
// local INI itself.
QString TrovaIniServer(const QString &iniLocale);

// Strips a "%" and what follows, adds the separator, creates the directory;
// with a "%" appends the operator and creates that too. Failures are told
// through the message seam ("ERRORE ..."), and the path is returned anyway.
QString PreparaCartella(const QString &etichetta, const QString &percorso);

// Both read impostazioni().IniLocale/IniServer and sessione().CodiceOperatore.
// LeggiPercorsi sets PathDati, PathLavoro, PathComune and the operator (the
// INI's BASE/OPERATORE, else NomeUtenteBreve). CaricaImpostazioni starts from
// the defaults, keeping the INI files, what LeggiPercorsi set and FileIndici.
void LeggiPercorsi();
void CaricaImpostazioni();

} // namespace sorvane
