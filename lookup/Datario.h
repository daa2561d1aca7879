#pragma once

// Datario, the calendar through which a screen asks for a date. The caller
// leaves a date in datario().DataComune, shows the pop-up and reads the same
// value back; a pop-up closed by its close box leaves it as it was. The
// period frame "PERIODO UTILE" stays hidden unless PeriodoScelto is 0 or
// above, which no screen of this program asks for.
//
//     datario().DataComune = DataComuneDaTesto(gg + "/" + mm + "/" + aa);
//     datario().PeriodoScelto = -99;
//     MostraDatario(this);
//     const QDate d = DataDaGiorno(datario().DataComune);

#include <QDate>
#include <QDialog>
#include <QList>
#include <QString>
#include <cstdint>

class QCalendarWidget;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTimer;

namespace sorvane {

// Values the calendar shares with its callers. The `datarendim` text lives in
// impostazioni().DataRendimento.
struct StatoDatario
{
    double DataComune = 0;            // the call's input and result, a day number
    std::int16_t PeriodoScelto = -99; // period option; -99: the frame is off
    std::int16_t AnnoScelto = 0;      // below 1: the default year
    bool PeriodoCambiato = false;
};

StatoDatario &datario();

// Modo of a call made by the calendar's own date buttons.
constexpr std::int16_t ModoAnnidato = -55;

// AnnoSolare of the settings when set, else last year.
std::int16_t AnnoPredefinito();
// The day number of a text that is a date, else today's.
double DataComuneDaTesto(const QString &testo);

class Datario : public QDialog
{
    Q_OBJECT

public:
    explicit Datario(QWidget *padre = nullptr, std::int16_t modo = 0);

    std::int16_t Modo() const { return m_Modo; }

    // The two ways out, as the buttons have them.
    void Conferma(); // Cmd_esci
    void Oggi();     // Cmd_oggi

protected:
    void keyPressEvent(QKeyEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    void carica();
    void posiziona();
    void dopoCambio();
    void cambioSelezione();
    void cambioPagina(int anno, int mese);
    void aggiornaOrario();
    void sceltaPeriodo(int indice);
    void sceltaAnno(int indice);
    void scegliDataElenco();
    void scegliDataRendimento();
    void cambioTestoElenco(const QString &testo);
    void salvaElenco();
    bool controllaDataRendimento();
    QDate chiamataAnnidata(const QString &testoIniziale);

    std::int16_t m_Modo = 0;
    int m_giornoSelezionato = 0;
    int m_indiceElencoIniziale = -1;
    bool m_inCaricamento = true;
    bool m_inRoutine = false;
    QDate m_ultimoCambio;

    QCalendarWidget *m_calendario = nullptr; // Calendar1
    QPushButton *m_esci = nullptr;           // Cmd_esci
    QPushButton *m_oggi = nullptr;           // Cmd_oggi
    QLabel *m_msgData = nullptr;             // MsgData
    QLabel *m_orario = nullptr;              // Orario
    QTimer *m_timer = nullptr;               // Timer1
    QGroupBox *m_frame = nullptr;            // Frame1
    QList<QRadioButton *> m_opzioni;         // Option1
    QComboBox *m_anni = nullptr;             // Combo1
    QComboBox *m_date = nullptr;             // cmbDate
    QLineEdit *m_dataRend = nullptr;         // TDataRend
    QPushButton *m_cmdData = nullptr;        // cmdData
    QPushButton *m_cmdDataPP = nullptr;      // cmdDataPP
};

// Shows the calendar modally (through EseguiModale) and returns its result
// code; the answer is in datario().DataComune.
int MostraDatario(QWidget *padre = nullptr, std::int16_t modo = 0);

} // namespace sorvane
