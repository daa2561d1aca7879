#pragma once

// InsDist, the entry of a new slip: the user types movements, which collect
// in the working table `BkDistinte` (where they survive an exit or a
// crash), changes or deletes them from the grid, and moves them all to the
// ledgers with "&SALVA DIST.", which closes the screen.

#include "distinte/SchermoDistinta.h"
#include "store/Recordset.h"

#include <QStringList>

namespace sorvane {

class ModelloBkDistinte;
struct ControlloCampi;

// Command1: 0 exit, 1 add/change, 2 save, 3 delete. txt(1) to txt(20).
class InsDist : public SchermoDistinta
{
    Q_OBJECT

public:
    explicit InsDist(QWidget *padre = nullptr);
    ~InsDist() override;

    QPushButton *cmdExcel() const { return m_cmdExcel; }
    QPushButton *cmdData() const { return m_cmdData; }
    QComboBox *cmbSoc() const { return m_cmbSoc; }
    QComboBox *cmbBanca() const { return m_cmbBanca; }
    QLabel *CauDes() const { return m_cauDes; }
    ModelloBkDistinte *Data1() const { return m_data1; }
    std::int32_t CodiceMovimento() const { return m_codiceMovimento; }

    // The button routines, as the buttons run them.
    void Aggiungi();     // Command1(1)
    void SalvaDist();    // Command1(2)
    void Cancella();     // Command1(3)
    void Esporta();      // cmdExcel
    void ScegliData();   // cmdData
    // The grid's double click on a row: that movement comes up for a change.
    void ApriMovimento(int riga);
    // A heading pressed with the left (ascending) or another button.
    void OrdinaColonna(int colonna, bool discendente);

protected:
    void closeEvent(QCloseEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    void installaSchermo();
    QWidget *costruisciCampi();
    QWidget *costruisciPulsanti();
    void costruisciGriglia();
    void carica();
    void caricaCombo();
    bool apriTemporaneo();

    void PulisciMaschera();
    void mostraSalvataggio();
    // What the fields hold of the movement, to tell whether anything was
    // typed since the form was last cleared, added or filled from the grid.
    QStringList statoMovimento() const;
    void fissaMovimento() { m_fissato = statoMovimento(); }
    bool movimentoNonAggiunto() const { return statoMovimento() != m_fissato; }
    // The fields' lost-focus routines check nothing while the screen is
    // unloading or its tables are closed.
    bool controlliSospesi() const;

    void fuocoEntrato(int indice);
    void fuocoUscito(int indice);
    bool tastoGiu(int codice, int maschera);
    void vaiA(int indice);
    int campoSotto(int indice) const;
    int campoSopra(int indice) const;
    void ApriRicercaCampo();

    QPushButton *m_cmdExcel = nullptr;
    QPushButton *m_cmdData = nullptr;
    QComboBox *m_cmbSoc = nullptr;
    QComboBox *m_cmbBanca = nullptr;
    QLabel *m_cauDes = nullptr;
    ModelloBkDistinte *m_data1 = nullptr;
    ControlloCampi *m_controllo = nullptr;
    Recordset m_bk; // BkDistinte on "primaria"

    std::int32_t m_codiceMovimento = 0;
    QStringList m_fissato; // statoMovimento() when nothing was left to add
    int m_campoAttivo = 0;
    bool m_apriRicerca = false; // a lookup or a button routine is running
    bool m_errore = false;      // a field's message is being shown
};

} // namespace sorvane
