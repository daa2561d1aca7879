#pragma once

// GesDist, the management of saved slips: the list of `Distinte` by period,
// client and firm, sorted by a heading, where a double click on a product
// code confirms it (or reopens it) and on any other cell opens the movement
// for a change or a delete. A movement whose codes are all confirmed is
// closed and leaves a list of open ones at once.

#include "distinte/CampiData.h"
#include "distinte/Gestione.h"
#include "distinte/Movimento.h"
#include "distinte/SchermoDistinta.h"

#include <optional>

class QCheckBox;

namespace sorvane {

class ModelloDistinte;
struct ControlloCampi;

// Command1: 0 exit, 1 extract, 2 print. txt(1) to txt(20) the movement,
// txt(21) to txt(28) the filter.
class GesDist : public SchermoGestione
{
    Q_OBJECT

public:
    explicit GesDist(QWidget *padre = nullptr);
    ~GesDist() override;

    QPushButton *cmdExcel() const { return m_cmdExcel; }
    QPushButton *cmdData() const { return m_cmdData; }
    QCheckBox *Check1() const { return m_check1; }
    // The change form's exit and bank.
    QPushButton *cndEND() const { return m_cndEND; }
    QComboBox *cmbBanca() const { return m_cmbBanca; }
    ModelloDistinte *Data1() const { return m_data1; }
    const CondizioneDistinte &UltimaCondizione() const { return m_condizione; }

    // The routines, as the buttons and the grid run them.
    void EstraiDistinte();  // Command1(1), Check1, a new firm in cmbSoc(1)
    void Stampa();          // Command1(2)
    void Esporta();         // cmdExcel
    void ScegliData();      // cmdData: the from date
    void Conferma();        // cmdMOD
    void Elimina();         // cmdDEL
    void Annulla();         // cndEND
    // SpinButton1 (from, fields 21 to 23) and SpinButton2 (to, 24 to 26).
    void AggiornaSpin(int giorno, int mese, int anno, int passo);
    // A double click on a cell of the list.
    void DoppioClick(int riga, int colonna);
    // Ctrl+R: the last confirmed or reopened code, once more.
    void RipetiMarca();
    // A heading pressed with the left (ascending) or another button.
    void OrdinaColonna(int colonna, bool discendente);

protected:
    void closeEvent(QCloseEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    // Where the user stands in the list, for a refresh to come back to.
    struct Posto
    {
        int riga = -1;
        int colonna = 0;
        int scorrimento = 0;
        std::int32_t codice = 0;
        QString prg;
    };
    // A code confirmed or reopened, kept for Ctrl+R.
    struct Marca
    {
        std::int32_t codice = 0;
        QString prg;
        int fetta = 0;
    };

    void costruisci();
    QWidget *costruisciLista();
    QWidget *costruisciFiltri();
    QWidget *costruisciPulsanti();
    QWidget *costruisciModifica();
    void costruisciGriglia();
    QLineEdit *nuovoCampo(int indice, QWidget *padre);
    void installaSchermo();
    void ordineTab();
    void carica();
    void caricaCombo();

    void PulisciFiltri();
    void AggiornaPulsanti();
    FiltroDistinte filtro() const;
    bool caricaLista(const OrdineLista &ordine);
    Posto posto() const;
    void ripristina(const Posto &p);
    void aggiorna();

    void invertiMarca(const Marca &marca);
    void apriModifica(std::int32_t codice);
    void riempiModifica(const Movimento &m);
    void tornaAllaLista();

    void fuocoEntrato(int indice);
    void fuocoUscito(int indice);
    bool tastoGiu(int codice, int maschera);
    int campoVicino(int indice, int verso) const;
    void ApriRicercaCampo();

    QPushButton *m_cmdExcel = nullptr;
    QPushButton *m_cmdData = nullptr;
    QPushButton *m_cndEND = nullptr;
    QCheckBox *m_check1 = nullptr;
    QComboBox *m_cmbBanca = nullptr;
    ModelloDistinte *m_data1 = nullptr;
    ControlloCampi *m_controllo = nullptr;

    CondizioneDistinte m_condizione; // the last extraction's WHERE
    FiltroDistinte m_filtro;         // and the filter it came from
    OrdineLista m_ordine;            // the list's order in hand
    int m_indiceDitta = 0;           // cmbSoc(1)'s index, to see a change
    std::optional<Movimento> m_originale; // the movement in the form, marks and all
    std::optional<Marca> m_ripeti;
    int m_campoAttivo = 0;
    bool m_apriRicerca = false; // a lookup or a button routine is running
};

} // namespace sorvane
