#pragma once

// The main window: the frame inside which every work screen opens as a child.
// Started by the suite's main program for one screen (operator, menu index,
// x and y on the command line), it ends with that screen; started without
// parameters it runs in ModoProva with its menu.

#include <QMainWindow>
#include <array>
#include <cstdint>
#include <functional>

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace sorvane {

class Startup : public QMainWindow
{
    Q_OBJECT

public:
    explicit Startup(QWidget *parent = nullptr);
    ~Startup() override;

    // MDIForm_Initialize then MDIForm_Load. False after one of the early stops
    // (no parameters, no configuration, no database): the program is to end
    // at once, with nothing to close.
    bool Avvia(const QString &rigaComando);
    bool MDIForm_Initialize(const QString &rigaComando);
    bool MDIForm_Load();
    void MDIForm_Activate();

    void Mu_GesDis_Click(int indice);
    void Mu_end_Click();
    void Mu_newexe_Click();

    // Stops the report engine, releases the databases and ends the process.
    void FineProgramma();

    // What the frame starts and stops but does not own. AvviaStampe returns
    // false when the report engine could not start.
    std::function<bool()> AvviaStampe;
    std::function<void()> FermaStampe;
    std::function<void()> CaricaListaCli;     // the client popup, loaded unseen
    std::function<void()> VerificaAggiornamenti; // forced display
    std::function<void(int)> GestioneCambi;      // the rates screen, in mode 1 or 2
    // The end of the process; QCoreApplication::exit unless replaced (tests).
    std::function<void(int)> TerminaProcesso;

    QMdiArea *area() const { return m_area; }
    std::int16_t IndiceMenu() const { return m_IndiceMenu; }
    bool ConfigMancante() const { return m_ConfigMancante; }
    bool DaAprire() const { return m_DaAprire; }

    QAction *Mu_end = nullptr;
    QMenu *Mu_Distinte = nullptr;
    std::array<QAction *, 8> Mu_GesDis{};
    QMenu *Mu_Cambi = nullptr;
    QAction *Mu_newexe = nullptr;
    QWidget *Picture1 = nullptr;
    QLabel *aspetta = nullptr;
    QLabel *Label1 = nullptr;

protected:
    bool event(QEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;
    void closeEvent(QCloseEvent *evento) override;

private:
    bool ChiudiSchermi();
    void costruisciMenu();
    void applicaSfondo();
    QMdiSubWindow *apri(QWidget *schermo, bool riempi, const QString &titolo);
    void aggiornaTitolo();

    QMdiArea *m_area = nullptr;
    QString m_titolo; // the frame's own caption, with no screen open
    std::int16_t m_IndiceMenu = 0;
    bool m_ConfigMancante = false;
    bool m_DaAprire = false;
    bool m_caricato = false;
    bool m_finito = false;
};

} // namespace sorvane
