#pragma once

// GesCambi, the exchange rates against one euro of every currency on a day:
// the user corrects them (modes 1 and 2) or picks a currency for a field
// (mode 3). The caller sets gesCambi() and empties tabelle().CodiceCercato,
// shows the screen modally and reads the code back; it is empty, or as it
// was, when the user left with "&USCITA". While the caller has a field in
// error (sessione().CodiceStop above 0) the rates cannot be changed.
//
//     const QString codice = ScegliMoneta(this, giornoDelMovimento);

#include "store/Recordset.h"
#include "tables/CambiDati.h"

#include <QDialog>
#include <QList>
#include <QString>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QToolButton;

namespace sorvane {

class ModelloCambi;
class Schermo;

class GesCambi : public QDialog
{
    Q_OBJECT

public:
    explicit GesCambi(QWidget *padre = nullptr);
    ~GesCambi() override;

    // TabCambi could be opened: without it the screen is not shown.
    bool aperto() const { return m_cambi.IsOpen(); }
    std::uint8_t modo() const { return m_modo; }
    double giorno() const { return m_giorno; }
    const ElencoCambi &elenco() const { return m_elenco; }

    QTableView *tdbgCambi() const { return m_griglia; }
    QLineEdit *txt(int indice) const { return m_txt.at(indice); } // 1 day, 2 month, 3 year
    QPushButton *CmdRp(int indice) const { return m_cmdRp.at(indice); }
    QPushButton *cmdExcel() const { return m_cmdExcel; }
    QToolButton *spinGiu() const { return m_spinGiu; }
    QToolButton *spinSu() const { return m_spinSu; }
    QLabel *Label2() const { return m_label2; }

    // The buttons' routines.
    void Conferma();
    void Monete();
    void Esporta();
    // One day back or forward.
    void CambiaGiorno(int passo);
    // Mode 3: the row's code is the answer, and the screen goes.
    void Scegli(int riga);

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    void done(int esito) override;

private:
    void costruisci();
    void caricaValute();
    void caricaCambi();
    void scriviData(double giorno);
    bool controllaData(int campo);
    bool tastoData(int campo, int tasto);
    bool tastoGriglia(QObject *oggetto, class QKeyEvent *tasto);
    bool mouseGriglia(QEvent *evento);
    int campoData(QObject *oggetto) const;

    std::uint8_t m_modo = RicercaValute;
    double m_giorno = 0;
    bool m_caricamento = false;
    bool m_inErrore = false;
    bool m_mostrato = false;
    int m_rigaTrascinata = -1;
    std::array<QString, 4> m_entrata; // the date fields' text when they got the focus
    ElencoCambi m_elenco;
    Recordset m_cambi; // TabCambi on "primaria", for the screen's whole life

    ModelloCambi *m_modello = nullptr;
    Schermo *m_schermo = nullptr;
    QList<QLineEdit *> m_txt; // [0] unused
    QTableView *m_griglia = nullptr;
    QList<QPushButton *> m_cmdRp; // 0 USCITA, 1 CONFERMA, 2 MONETE
    QPushButton *m_cmdExcel = nullptr;
    QWidget *m_spin = nullptr;
    QToolButton *m_spinGiu = nullptr;
    QToolButton *m_spinSu = nullptr;
    QLabel *m_label1 = nullptr;
    QLabel *m_label2 = nullptr; // the row being dragged
};

// Shows the screen modally in the mode and on the day of gesCambi(); the
// result code of the dialog, 0 when it could not open.
int MostraGesCambi(QWidget *padre = nullptr);
// The rates' own management, in the euro-area mode or the other one, on
// today's rates (the frame's menu).
void GestisciCambi(QWidget *padre, int modo);
// The picker of a currency field: mode 3 on giorno. The code chosen, or
// empty when the user left without choosing.
QString ScegliMoneta(QWidget *padre, double giorno);
// F4 on a currency field that may be edited: the picker on the day of the
// text data (today when it is no date); a code chosen goes into the field.
void ScegliMonetaDelCampo(QLineEdit *campo, const QString &data);

} // namespace sorvane
