#include "frame/core/ModuliOpzionali.h"

#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"

#include <QCoreApplication>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#endif
#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace sorvane {

namespace {

const QString ChiaveHandle = QStringLiteral("HANDLE");
const QString ChiaveDitta = QStringLiteral("DITTA");

} // namespace

bool AttivaProcesso(std::int64_t numero)
{
    if (numero <= 0)
        return false;
#if defined(Q_OS_UNIX)
    return ::kill(static_cast<pid_t>(numero), 0) == 0 || errno == EPERM;
#elif defined(Q_OS_WIN)
    HANDLE h = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, DWORD(numero));
    if (!h)
        return false;
    DWORD codice = 0;
    const bool vivo = GetExitCodeProcess(h, &codice) && codice == STILL_ACTIVE;
    CloseHandle(h);
    return vivo;
#else
    return false;
#endif
}

QString NomeEseguibile(const QString &nome)
{
#ifdef Q_OS_WIN
    return nome + QStringLiteral(".exe");
#else
    return nome;
#endif
}

ModuliOpzionali::ModuliOpzionali(const QString &fileIni)
    : m_FileIni(fileIni.isEmpty() ? impostazioni().IniLocale : fileIni),
      m_CodiceDitta(sessione().CodiceOperatore)
{
}

void ModuliOpzionali::nomeProceduraChiamata(const QString &valore)
{
    m_Argomenti.clear();
    QString nome = valore;
    const qsizetype barra = valore.indexOf(QLatin1Char('|'));
    if (barra >= 0) {
        nome = valore.left(barra);
        m_Argomenti = valore.mid(barra + 1);
    }
    m_NomeChiamata = nome;
    m_SezioneChiamata = nome;
}

void ModuliOpzionali::nomeProceduraChiamante(const QString &valore)
{
    m_NomeChiamante = valore;
    m_SezioneChiamante = valore;
}

void ModuliOpzionali::codiceDitta(const QString &)
{
    m_CodiceDitta = sessione().CodiceOperatore;
}

void ModuliOpzionali::scrivi(const QString &chiave, const QString &valore)
{
    ScriviIni(m_FileIni, m_SezioneChiamata, chiave, valore);
}

QString ModuliOpzionali::leggiCodiceSocieta()
{
    m_ChiaveCorrente = ChiaveDitta;
    m_DittaChiamata = LeggiIni(m_FileIni, m_SezioneChiamata, ChiaveDitta);
    return m_DittaChiamata;
}

void ModuliOpzionali::scriviCodiceSocieta()
{
    m_ChiaveCorrente = ChiaveDitta;
    scrivi(ChiaveDitta, m_CodiceDitta);
}

void ModuliOpzionali::pulisciHandle()
{
    scrivi(ChiaveHandle, QString());
}

void ModuliOpzionali::scriviHandle()
{
    scrivi(ChiaveHandle, QString::number(QCoreApplication::applicationPid()));
}

QString ModuliOpzionali::leggiHandle()
{
    m_HandleTesto = LeggiIni(m_FileIni, m_SezioneChiamata, ChiaveHandle);
    return m_HandleTesto;
}

void ModuliOpzionali::attivaProcedura()
{
    QString percorso = LeggiIni(m_FileIni, QStringLiteral("APPLICATIVI"), m_NomeChiamata);
    if (percorso.trimmed().isEmpty()) {
        const QString cartella = QCoreApplication::applicationDirPath();
        percorso = cartella.isEmpty()
                       ? NomeEseguibile(m_NomeChiamata)
                       : ConSeparatore(cartella) + NomeEseguibile(m_NomeChiamata);
    }
    percorso = PercorsoNativo(percorso);

    leggiHandle();
    if (!m_HandleTesto.trimmed().isEmpty()) {
        const QString dittaChiamante =
            LeggiIni(m_FileIni, m_SezioneChiamante, ChiaveDitta);
        const QString dittaChiamata = leggiCodiceSocieta();
        // A copy that works for another firm is left alone: a second one starts.
        if (dittaChiamante == dittaChiamata && AttivaProcesso(m_HandleTesto.toLongLong()))
            return;
    }
    lanciaProcedura(percorso);
}

bool ModuliOpzionali::lanciaProcedura(const QString &comando)
{
    qint64 numero = 0;
    const bool partito = QProcess::startDetached(
        comando, QProcess::splitCommand(m_Argomenti), QString(), &numero);
    m_Processo = partito ? static_cast<std::int32_t>(numero) : 0;
    m_HandleTesto = partito ? QString::number(m_Processo) : QString();
    scrivi(ChiaveHandle, m_HandleTesto);
    // The suite's vault program may well be absent: nothing to tell then.
    if (!partito
        && !comando.toUpper().contains(NomeEseguibile(QStringLiteral("RULVAT")).toUpper()))
        Messaggio(comando + QStringLiteral("  NON TROVATO"));
    sessione().CodiceStop = 0;
    return partito;
}

} // namespace sorvane
