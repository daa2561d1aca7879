#pragma once

// Starting another program of the suite, or bringing forward the copy that
// already runs for the same firm. The programs share the local INI:
// APPLICATIVI/<name> is the path of a program's executable, and the section
// named after the program keeps HANDLE, the process number of its running
// copy, and DITTA, the firm (the operator) it works for.

#include <QString>
#include <cstdint>

namespace sorvane {

class ModuliOpzionali
{
public:
    // Works on impostazioni().IniLocale unless another file is given.
    explicit ModuliOpzionali(const QString &fileIni = QString());

    // "name|arguments": the called program and what it is started with.
    void nomeProceduraChiamata(const QString &valore);
    void nomeProceduraChiamante(const QString &valore);
    // The firm is always the present operator, whatever is passed.
    void codiceDitta(const QString &valore);
    QString codiceDitta() const { return m_CodiceDitta; }
    QString numeroHandleString() const { return m_HandleTesto; }

    // DITTA of the called program's section.
    QString leggiCodiceSocieta();
    void scriviCodiceSocieta();
    // HANDLE of the called program's section: emptied, set to this process's
    // number, read into numeroHandleString.
    void pulisciHandle();
    void scriviHandle();
    QString leggiHandle();

    // Brings forward the running copy when it works for the caller's firm,
    // else starts the program.
    void attivaProcedura();
    // Starts the program; a failure is told ("<path>  NON TROVATO").
    bool lanciaProcedura(const QString &comando);

    std::int32_t numeroProcesso() const { return m_Processo; }

private:
    void scrivi(const QString &chiave, const QString &valore);

    QString m_FileIni;
    QString m_NomeChiamata;
    QString m_SezioneChiamata;
    QString m_NomeChiamante;
    QString m_SezioneChiamante;
    QString m_Argomenti;
    QString m_ChiaveCorrente;
    QString m_CodiceDitta;
    QString m_DittaChiamata;
    QString m_HandleTesto;
    std::int32_t m_Processo = 0;
};

// "Activating" a running program by its number: done when the process lives.
bool AttivaProcesso(std::int64_t numero);

// The name of a program of the suite as a file: ".exe" added on Windows.
QString NomeEseguibile(const QString &nome);

} // namespace sorvane
