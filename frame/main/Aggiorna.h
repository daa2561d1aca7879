#pragma once

// The update check: this program's version against the list the maker
// publishes at /Aggiornamenti/Versioni.htm on its web site (local INI,
// AGGIORNA/SITO). The screen tells whether a newer version exists, lists its
// news and can be asked to remind the user later: the day of the next check
// is kept in AGGIORNA under the program's name. AGGIORNA/ATTESA is how long,
// in milliseconds, the fetch may take before it counts as failed.

#include <QDialog>
#include <QList>
#include <array>
#include <cstdint>

class QComboBox;
class QFrame;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace sorvane {

// Set by the first check of the run: a check that is not forced runs once.
bool &Aggiornato();
// 0 when the page was fetched, -2 when the check was not due, -1 when the
// fetch failed.
std::int32_t &EsitoAggiorna();

// The maker's site, "https://..." or "http://..."; a bare host is HTTP.
QString SitoAggiornamenti();
int AttesaAggiornamenti(); // milliseconds

// forzato -1 (the menu) always shows the outcome; 0 returns at once after a
// first check in the run, and shows the screen only when the page was read.
void VerificaAggiornamenti(std::int16_t forzato, QWidget *parent = nullptr);

class Aggiorna : public QDialog
{
    Q_OBJECT

public:
    explicit Aggiorna(QWidget *parent = nullptr);

    void AgInforma(std::int16_t forzato) { m_Forzato = forzato; }
    // Reads the reminder, fetches the page and lays out the outcome; leaves
    // EsitoAggiorna for the caller to decide whether the screen shows.
    void Form_Load();

    void cmbNum_Click();
    void cmdRicorda_Click();
    void cmdAggiorna_Click();
    void cmdOK_Click();

    // True after "&VEDI LE NOVITA'": the program's screens are to close.
    bool ChiudiTutto() const { return m_ChiudiTutto; }
    QString NomeProgramma() const { return m_NomeProgramma; }

    // 0 connection error, 1 versions and outcome, 2 news and reminder.
    std::array<QFrame *, 3> Picture1{};
    QPushButton *cmdOK = nullptr;
    QLabel *lbMess = nullptr;
    QLabel *lbTitoloErr = nullptr;
    QLabel *lbMessErr = nullptr;
    QLabel *Label1 = nullptr;
    QList<QLabel *> lbAgg;
    QFrame *pctRicorda = nullptr;
    QPushButton *cmdRicorda = nullptr;
    QComboBox *cmbNum = nullptr;
    QLabel *lbRemember = nullptr;
    QPushButton *cmdAggiorna = nullptr;
    std::array<QLabel *, 2> lbVersion{}; // 0 in use, 1 published
    std::array<QLabel *, 2> lbDescr{};
    QLabel *lbExe = nullptr;

private:
    bool Scarica();
    void MostraEsito(int pannello, const QString &titolo, int altezzaTwips);
    void AggiungiNovita(const QString &testo);

    std::int16_t m_Forzato = 0;
    QString m_NomeProgramma;
    QString m_PaginaVersioni;
    QString m_TestoPagina;
    std::int32_t m_VersioneInUso = 0;
    std::int32_t m_VersioneNuova = 0;
    QVBoxLayout *m_righe = nullptr;
    bool m_ChiudiTutto = false;
};

} // namespace sorvane
