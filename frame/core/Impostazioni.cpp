#include "frame/core/Impostazioni.h"

#include "frame/core/Campi.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cmath>
#include <filesystem>
#include <limits>
#include <system_error>

namespace sorvane {

namespace {

const QString Prodotto = QStringLiteral("SORVANE");
const QString Parametri = QStringLiteral("PARAMETRI");
const QString SezionePath = QStringLiteral("PATH");

// A decimal count that no number format could use is a failed step.
constexpr int MassimoDecimali = 255;

// Whole numbers as the classic conversions make them: half to even, and a
// value out of the type's range is a failure, not a wrap.
template <typename T>
bool Intero(double valore, T &esito)
{
    if (!std::isfinite(valore))
        return false;
    const double r = std::nearbyint(valore);
    if (r < double(std::numeric_limits<T>::min()) || r > double(std::numeric_limits<T>::max()))
        return false;
    esito = static_cast<T>(r);
    return true;
}

std::filesystem::path PercorsoFs(const QString &percorso)
{
#ifdef Q_OS_WIN
    return std::filesystem::path(percorso.toStdWString());
#else
    return std::filesystem::path(QFile::encodeName(percorso).toStdString());
#endif
}

QString DescrizioneErrore(const std::error_code &e)
{
    static const struct
    {
        std::errc causa;
        const char *testo;
    } descrizioni[] = {
        {std::errc::permission_denied, "Permesso negato"},
        {std::errc::operation_not_permitted, "Permesso negato"},
        {std::errc::not_a_directory, "Una parte del percorso non è una cartella"},
        {std::errc::file_exists, "Esiste già un file con questo nome"},
        {std::errc::no_such_file_or_directory, "Impossibile trovare il percorso"},
        {std::errc::no_space_on_device, "Spazio esaurito sul disco"},
        {std::errc::read_only_file_system, "Disco protetto da scrittura"},
        {std::errc::filename_too_long, "Nome del percorso troppo lungo"},
        {std::errc::invalid_argument, "Nome del percorso non valido"},
    };
    for (const auto &d : descrizioni) {
        if (e == d.causa)
            return QString::fromUtf8(d.testo);
    }
    return QStringLiteral("Errore di accesso al percorso/file");
}

// Creates a missing directory with the folders above it; a failure is told
// with the label, the path, the error number and its description.
bool CreaCartella(const QString &etichetta, const QString &percorso)
{
    if (EsisteFile(percorso, AttributoCartella))
        return true;
    QString p = percorso;
    while (p.size() > 1 && p.endsWith(QDir::separator()))
        p.chop(1);
    std::error_code errore;
    std::filesystem::create_directories(PercorsoFs(p), errore);
    if (!errore && EsisteFile(percorso, AttributoCartella))
        return true;
    if (!errore)
        errore = std::make_error_code(std::errc::io_error);
    Messaggio(QStringLiteral("ERRORE ") + etichetta + QLatin1Char('\n') + percorso
              + QLatin1Char('\n') + QString::number(errore.value()) + QLatin1Char('-')
              + DescrizioneErrore(errore));
    return false;
}

// The directory and, when asked, the operator's folder inside it. After a
// failure the folder below is not tried: it could not be made either.
QString Prepara(const QString &etichetta, const QString &cartella, bool perOperatore)
{
    const bool fatta = CreaCartella(etichetta, cartella);
    if (!perOperatore)
        return cartella;
    const QString operatore = cartella + sessione().CodiceOperatore + Separatore();
    if (fatta)
        CreaCartella(etichetta, operatore);
    return operatore;
}

// A path of the INI, or the default when the key is blank.
QString Percorso(const QString &file, const QString &sezione, const QString &chiave,
                 const QString &predefinito)
{
    const QString v = LeggiIni(file, sezione, chiave);
    return v.isEmpty() ? predefinito : PercorsoNativo(v);
}

QString Testo(const QString &file, const QString &chiave, const QString &predefinito)
{
    const QString v = LeggiIni(file, Parametri, chiave);
    return v.isEmpty() ? predefinito : v;
}

// The root of the drive the program stands on.
QString RadiceDisco()
{
#ifdef Q_OS_WIN
    return PercorsoNativo(QDir::currentPath().left(3));
#else
    return QStringLiteral("/");
#endif
}

QString CartellaBase(const QString &iniLocale, const QString &chiave)
{
    return ConSeparatore(Percorso(iniLocale, SezionePath, chiave, RadiceDisco()));
}

// A "|"-separated list ends with "|" and never begins with one.
QString Lista(QString testo)
{
    if (!testo.endsWith(QLatin1Char('|')))
        testo += QLatin1Char('|');
    if (testo.startsWith(QLatin1Char('|')))
        testo.remove(0, 1);
    return testo;
}

void AzzeraImpostazioni(Impostazioni &imp)
{
    // What LeggiPercorsi and the connection set survives; the rest is read
    // again from its defaults.
    Impostazioni nuove;
    nuove.IniLocale = imp.IniLocale;
    nuove.IniServer = imp.IniServer;
    nuove.PathDati = imp.PathDati;
    nuove.PathLavoro = imp.PathLavoro;
    nuove.PathComune = imp.PathComune;
    nuove.FileIndici = imp.FileIndici;
    imp = nuove;
    imp.MesiNomi = {QStringLiteral("GENNAIO"),   QStringLiteral("FEBBRAIO"),
                    QStringLiteral("MARZO"),     QStringLiteral("APRILE"),
                    QStringLiteral("MAGGIO"),    QStringLiteral("GIUGNIO"),
                    QStringLiteral("LUGLIO"),    QStringLiteral("AGOSTO"),
                    QStringLiteral("SETTEMBRE"), QStringLiteral("OTTOBRE"),
                    QStringLiteral("NOVEMBRE"),  QStringLiteral("DICEMBRE"),
                    QStringLiteral("NON DEFINITI"), QStringLiteral("TUTTI")};
}

void LeggiCartelle(Impostazioni &imp)
{
    const QString &locale = imp.IniLocale;
    const QString sep = Separatore();
    const QString &operatore = sessione().CodiceOperatore;

    imp.FileDati = imp.PathDati + operatore + sep + QStringLiteral("DatiDV.db");
    imp.FileVisite = imp.PathDati + operatore + sep + QStringLiteral("VisiteDV.db");
    imp.PathLavoroOperatore = imp.PathLavoro + operatore + sep;
    imp.FileLavoro = imp.PathLavoroOperatore + QStringLiteral("WorkDV.db");

    const auto archivio = [&](const char *chiave) {
        return LeggiIni(locale, QStringLiteral("ARCHIVIO"), QString::fromLatin1(chiave)).trimmed();
    };
    imp.Motore = archivio("MOTORE").toUpper();
    if (imp.Motore.isEmpty())
        imp.Motore = QStringLiteral("SQLITE");
    imp.Server = ServerArchivio{.host = archivio("HOST"),
                                .porta = archivio("PORTA").toInt(),
                                .database = archivio("DATABASE"),
                                .utente = archivio("UTENTE"),
                                .servizio = archivio("SERVIZIO"),
                                .postazione = archivio("POSTAZIONE")};

    imp.PathReport = ConSeparatore(
        Percorso(locale, QStringLiteral("REPORT"), QStringLiteral("MODULI"), imp.PathDati));
    if (!operatore.trimmed().isEmpty())
        imp.PathReportOperatore = imp.PathReport + operatore + sep;

    const QString save = Percorso(locale, SezionePath, QStringLiteral("SAVE"),
                                  imp.PathDati + QStringLiteral("save") + sep);
    imp.PathSave = Prepara(QStringLiteral("SAVE"), ConSeparatore(save), true);

    imp.PathStampe = Percorso(locale, SezionePath, QStringLiteral("STAMPE"), imp.PathDati);
    const auto cartella = [&](const QString &chiave, const QString &predefinito) {
        return PreparaCartella(chiave, Percorso(locale, SezionePath, chiave, predefinito));
    };
    imp.PathTemp = cartella(QStringLiteral("TEMP"), imp.PathDati + QStringLiteral("temp") + sep);
    imp.PathTesti = cartella(QStringLiteral("TESTI"), imp.PathDati);
    imp.PathFogli = cartella(QStringLiteral("FOGLI"), imp.PathTesti);
    imp.PathImpExp = cartella(QStringLiteral("IMPEXP"), imp.PathTemp);
}

void LeggiStampaEuro(Impostazioni &imp)
{
    const QString &locale = imp.IniLocale;
    const QString &server = imp.IniServer;

    imp.MovimentiPositivi =
        LeggiIni(server, Parametri, QStringLiteral("cmmovpos")).toUpper() == QLatin1String("S");
    const QString percAss = LeggiIni(server, Parametri, QStringLiteral("PercAss"));
    imp.PercAss = percAss.startsWith(QLatin1Char('V')) ? QLatin1Char('V') : QLatin1Char('I');
    const double percMax =
        CDbl(DataDaCampo(LeggiIni(server, Parametri, QStringLiteral("PercMax"))));
    if (std::isfinite(percMax) && std::fabs(percMax) <= std::numeric_limits<float>::max())
        imp.PercMax = float(percMax) == 0 ? 95 : float(percMax);

    const QString stampa = QStringLiteral("STAMPA");
    const QString tipo = LeggiIni(locale, stampa, QStringLiteral("TIPO")).left(1);
    imp.TipoStampa = (tipo == QLatin1String("D") || tipo == QLatin1String("P")) ? tipo.at(0)
                                                                                : QLatin1Char('V');
    Intero(CDbl(DataDaCampo(LeggiIni(locale, stampa, QStringLiteral("PREVIEW")))),
           imp.PreviewStampa);
    Intero(CDbl(DataDaCampo(LeggiIni(locale, stampa, QStringLiteral("ZOOM")))), imp.ZoomStampa);

    const QString euro = QStringLiteral("EURO");
    const auto codice = [&](const QString &chiave, QString &esito) {
        const QString v = LeggiIni(locale, euro, chiave);
        if (!v.isEmpty())
            esito = v;
    };
    codice(QStringLiteral("CODLIT"), imp.CodLit);
    codice(QStringLiteral("CODEUR"), imp.CodEur);
    double lire = 0;
    if (LeggiNumero(LeggiIni(locale, euro, QStringLiteral("LIRE")), &lire))
        imp.CambioLire = lire;
    imp.ColoreEvidenza = 0xFFFFC0;
    imp.CodBase = imp.CodEur;
    codice(QStringLiteral("CODBASE"), imp.CodBase);
}

void LeggiParametri(Impostazioni &imp)
{
    const QString &locale = imp.IniLocale;
    const QString &server = imp.IniServer;

    double decimali = 2;
    LeggiNumero(LeggiIni(locale, Parametri, QStringLiteral("DECIMALI")), &decimali);
    if (int n = 0; Intero(decimali, n) && n <= MassimoDecimali) {
        imp.FormatoDecimali = n > 0
            ? QStringLiteral("#,###,###,##0.") + QString(n, QLatin1Char('0'))
            : QStringLiteral("###,###,##0.000");
    }

    const QString mandato = LeggiIni(server, Parametri, QStringLiteral("MANDATO"));
    if (const qsizetype trattino = mandato.indexOf(QLatin1Char('-')); trattino >= 0) {
        int a = 0;
        int b = 0;
        if (Intero(Val(mandato.left(trattino)), a) && Intero(Val(mandato.mid(trattino + 1)), b)) {
            imp.LunghezzaMandatoA = a == 0 ? 9 : a;
            imp.LunghezzaMandatoB = b == 0 ? 9 : b;
        }
    }

    imp.SaldoIniPiu = Testo(server, QStringLiteral("SaldoIni+"), QStringLiteral("SI+"));
    imp.SaldoIniMeno = Testo(server, QStringLiteral("SaldoIni-"), QStringLiteral("SI-"));
    imp.CauPlus = Testo(server, QStringLiteral("CauPlus"), QStringLiteral("PM+"));
    imp.CauMinus = Testo(server, QStringLiteral("CauMinus"), QStringLiteral("PM-"));
    imp.CauRateo = Testo(server, QStringLiteral("CauRateo"), QStringLiteral("RTT"));

    imp.DataRendimento = TestoDaCampo(LeggiIni(locale, Parametri, QStringLiteral("datarendim")));

    imp.AnnoSolare = std::int16_t(QDate::currentDate().year() - 1);
    const QString anno = LeggiIni(locale, Parametri, QStringLiteral("AnnoSolare"));
    if (double n = 0; LeggiNumero(anno, &n))
        Intero(n, imp.AnnoSolare);

    imp.BancheRas = Lista(LeggiIni(server, Parametri, QStringLiteral("rasbank")));
    imp.VitaRiv = Lista(LeggiIni(server, Parametri, QStringLiteral("vitariv")));

    for (int i = 0; i < int(imp.TipiEstrattoConto.size()); ++i) {
        imp.TipiEstrattoConto[i] =
            Testo(locale, QStringLiteral("TIPOEC") + QString::number(i), QStringLiteral("TUTTO"));
    }
}

} // namespace

Impostazioni &impostazioni()
{
    static Impostazioni s;
    return s;
}

QString LuogoServer(const ServerArchivio &server)
{
    if (!server.servizio.isEmpty())
        return QStringLiteral("servizio ") + server.servizio;
    return (server.host.isEmpty() ? QStringLiteral("localhost") : server.host) + QLatin1Char('/')
           + server.database;
}

bool LeggiIndirizzo(const QString &indirizzo, ServerArchivio &server)
{
    const qsizetype due = indirizzo.lastIndexOf(QLatin1Char(':'));
    int porta = 0;
    if (due >= 0) {
        bool ok = false;
        porta = indirizzo.mid(due + 1).toInt(&ok);
        if (!ok || porta < 1 || porta > 65535)
            return false;
    }
    server.host = due >= 0 ? indirizzo.left(due) : indirizzo;
    server.porta = porta;
    return true;
}

QString TrovaIniLocale(const QString &dirProgramma, const QString &nomeExe,
                       const QString &cartellaSistema)
{
    const QString daAmbiente = qEnvironmentVariable("SORVANE_INI").trimmed();
    if (EsisteFile(daAmbiente))
        return PercorsoNativo(QFileInfo(PercorsoNativo(daAmbiente)).absoluteFilePath());
    for (const QString &cartella : {dirProgramma, cartellaSistema}) {
        if (cartella.isEmpty())
            continue;
        for (const QString &nome : {nomeExe, Prodotto}) {
            if (nome.isEmpty())
                continue;
            const QString candidato = ConSeparatore(cartella) + nome + QStringLiteral(".ini");
            if (EsisteFile(candidato))
                return candidato;
        }
    }
    return QString();
}

QString TrovaIniLocale()
{
    QString nome = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    if (nome.isEmpty())
        nome = QCoreApplication::applicationName();
    return TrovaIniLocale(PercorsoNativo(QCoreApplication::applicationDirPath()), nome,
                          CartellaWindows());
}

QString TrovaIniServer(const QString &iniLocale)
{
    const QString v = LeggiIni(iniLocale, SezionePath, QStringLiteral("Fileini"));
    if (v.isEmpty() || !EsisteFile(v))
        return iniLocale;
    return PercorsoNativo(v);
}

QString PreparaCartella(const QString &etichetta, const QString &percorso)
{
    // A "%" anywhere means a folder per operator from there on.
    const qsizetype percento = percorso.indexOf(QLatin1Char('%'));
    const QString base = percento < 0 ? percorso : percorso.left(percento);
    return Prepara(etichetta, ConSeparatore(base), percento >= 0);
}

void LeggiPercorsi()
{
    Impostazioni &imp = impostazioni();
    imp.PathDati = CartellaBase(imp.IniLocale, QStringLiteral("FILE"));
    imp.PathLavoro = CartellaBase(imp.IniLocale, QStringLiteral("WORK"));

    // The operator of the INI wins over the one of the command line.
    QString operatore =
        LeggiIni(imp.IniLocale, QStringLiteral("BASE"), QStringLiteral("OPERATORE"));
    if (operatore.isEmpty())
        operatore = sessione().NomeUtenteBreve;
    if (operatore.trimmed().isEmpty())
        operatore = NomeUtente().left(5);
    sessione().CodiceOperatore = operatore.trimmed().toUpper();

    QString dati = imp.PathDati;
    if (dati.endsWith(QDir::separator()))
        dati.chop(1);
    imp.PathComune = CartellaDi(dati) + Separatore() + QStringLiteral("Dati0") + Separatore();
}

void CaricaImpostazioni()
{
    Impostazioni &imp = impostazioni();
    AzzeraImpostazioni(imp);
    LeggiCartelle(imp);
    LeggiStampaEuro(imp);
    LeggiParametri(imp);
}

} // namespace sorvane
