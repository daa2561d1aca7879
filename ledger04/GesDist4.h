#pragma once

// GesDist4, the management of the 04 ledger: the list of `Distinte04` by
// period, client and firm, with the team of the client shown beside it; a
// double click opens a row for a change or a delete, "&AGGIUNGI" opens a
// new one. The screen mechanics are those of the slips' management.

#include "distinte/Gestione.h"
#include "distinte/SchermiDistinte.h"

#include <QList>
#include <QWidget>
#include <cstdint>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace sorvane {

class CampiInsDist;
class EtichettaSquadra;
class ModelloDistinte04;
class PulsanteSpin;
class Schermo;
struct ControlloCampi4;

class GesDist4 : public QWidget
{
    Q_OBJECT

public:
    explicit GesDist4(QWidget *padre = nullptr);
    ~GesDist4() override;

    // The list panel: 0 exit, 1 extract, 2 print, 3 add.
    QPushButton *Command1(int indice) const { return m_command1.value(indice); }
    // 0 the movement's date, 1 the from date, 2 the to date.
    QPushButton *cmdData(int indice) const { return m_cmdData.value(indice); }
    PulsanteSpin *SpinButton1() const { return m_spin1; }
    PulsanteSpin *SpinButton2() const { return m_spin2; }
    PulsanteSpin *SpinButtonM() const { return m_spinM; }
    QCheckBox *chkClose() const { return m_chkClose; }
    EtichettaSquadra *lbTeam() const { return m_lbTeam; }
    // 0 the movement's firm, 1 the filter's.
    QComboBox *cmbSoc(int indice) const { return indice == 0 ? m_cmbSoc0 : m_cmbSoc1; }
    // txt(1) to txt(9) the movement, txt(10) to txt(17) the filter.
    QLineEdit *txt(int indice) const { return m_txt.value(indice); }
    QLabel *Label2() const { return m_label2; }
    QLabel *CauDes() const { return m_cauDes; }
    QPushButton *cmdMOD() const { return m_cmdMOD; }
    QPushButton *cmdDEL() const { return m_cmdDEL; }
    QPushButton *cndEND() const { return m_cndEND; }
    QWidget *pctLista() const { return m_pctLista; }
    QWidget *pctMod() const { return m_pctMod; }
    QTableView *TDBGrid1() const { return m_grid; }
    ModelloDistinte04 *Data1() const { return m_data1; }
    std::int32_t CodiceMovimento() const { return m_codiceMovimento; }
    const CondizioneDistinte &UltimaCondizione() const { return m_condizione; }
    const FiltroDistinte &UltimoFiltro() const { return m_filtro; }

    // The routines, as the buttons, the label and the grid run them.
    void Estrai();           // Command1(1)
    void Stampa();           // Command1(2)
    void NuovoMovimento04(); // Command1(3)
    void ApriRiga(int riga); // a double click on the list
    void Conferma();         // cmdMOD
    void Elimina();          // cmdDEL
    void Annulla();          // cndEND
    void ClickSquadra();     // lbTeam
    void ScegliData(int indice); // cmdData(indice)

protected:
    void closeEvent(QCloseEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    QWidget *costruisciLista();
    QWidget *costruisciFiltri();
    QWidget *costruisciPulsanti();
    QWidget *costruisciModifica();
    QLineEdit *nuovoCampo(int indice, QWidget *padre);
    void installaSchermo();
    void ordineTab();
    void carica();
    void aggiornaPulsanti();
    void aggiorna();
    void mostraModifica(const QString &titolo, int primo);
    void tornaAllaLista();
    void spin(int data, int passo); // data as cmdData's index

    void fuocoEntrato(int indice);
    void fuocoUscito(int indice);
    bool tastoGiu(int codice, int maschera);
    void vaiA(int indice) { m_fuoco.vaiA(indice); }
    bool fermo() const;

    QList<QLineEdit *> m_txt; // txt(1) to txt(17); [0] unused
    QList<QPushButton *> m_command1;
    QList<QPushButton *> m_cmdData;
    PulsanteSpin *m_spin1 = nullptr;
    PulsanteSpin *m_spin2 = nullptr;
    PulsanteSpin *m_spinM = nullptr;
    QCheckBox *m_chkClose = nullptr;
    EtichettaSquadra *m_lbTeam = nullptr;
    QComboBox *m_cmbSoc0 = nullptr;
    QComboBox *m_cmbSoc1 = nullptr;
    QLabel *m_label2 = nullptr;
    QLabel *m_cauDes = nullptr;
    QPushButton *m_cmdMOD = nullptr;
    QPushButton *m_cmdDEL = nullptr;
    QPushButton *m_cndEND = nullptr;
    QWidget *m_pctLista = nullptr;
    QWidget *m_pctMod = nullptr;
    QTableView *m_grid = nullptr;
    ModelloDistinte04 *m_data1 = nullptr;
    Schermo *m_schermo = nullptr;

    CampiInsDist *m_campi = nullptr;
    ControlloCampi4 *m_controllo = nullptr;

    CondizioneDistinte m_condizione;
    FiltroDistinte m_filtro;
    std::int32_t m_codiceMovimento = 0;
    RitornoCampo m_fuoco{this, m_txt};
    bool m_occupato = false; // a lookup, a popup or a button routine is running
    bool m_errore = false;   // a field's message is being shown
    bool m_attivato = false;
};

} // namespace sorvane
