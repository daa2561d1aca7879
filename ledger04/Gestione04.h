#pragma once

// What the two list screens of the 04 ledger share, GesDist4 and GesIntMd:
// a filter over a list of movements, with the team of the client beside
// it, and the change form of a `Distinte04` row over the list. A double
// click opens a row for a change or a delete, "&AGGIUNGI" opens a new one;
// both screens write the ledger the same way, and each then shows its list
// again in its own way. The dates of the period (fields 10 to 15) are
// alike too; the rest of the filter, the extraction and the print are each
// screen's own. The screen mechanics are those of the slips' management.

#include "distinte/SchermoDistinta.h"

#include <optional>

class QCheckBox;
class QGridLayout;
class QHBoxLayout;

namespace sorvane {

class EtichettaSquadra;
class ModelloDistinte04;
struct ControlloCampi4;

// Command1: 0 exit, 1 extract, 2 print, 3 add. txt(1) to txt(9) the
// movement, txt(10) up the filter.
class Gestione04 : public SchermoGestione
{
    Q_OBJECT

public:
    ~Gestione04() override;

    // 0 the movement's date, 1 the from date, 2 the to date.
    QPushButton *cmdData(int indice) const { return m_cmdData.value(indice); }
    PulsanteSpin *SpinButtonM() const { return m_spinM; }
    QCheckBox *chkClose() const { return m_chkClose; }
    EtichettaSquadra *lbTeam() const { return m_lbTeam; }
    ModelloDistinte04 *Data1() const { return m_data1; }

    // The routines, as the buttons, the label and the grid run them.
    virtual void Estrai() = 0; // Command1(1)
    virtual void Stampa() = 0; // Command1(2)
    void NuovoMovimento04();   // Command1(3)
    void ApriRiga(int riga);   // a double click on the list
    void Conferma();           // cmdMOD
    void Elimina();            // cmdDEL
    void Annulla();            // the form's exit
    void ClickSquadra();       // lbTeam
    void ScegliData(int indice); // cmdData(indice)

protected:
    // `ultimoCampo` is the last index of txt; `nomeFine` the name of the
    // form's exit button.
    Gestione04(int ultimoCampo, const QString &nomeFine, QWidget *padre);

    // Builds and loads the screen; the screen's constructor calls it, once
    // its own hooks stand.
    void costruisci();

    // A filter field of the screen's own (index 16 up): its size in
    // characters held and drawn, its accessible name, its key rule.
    struct Misura
    {
        int lunghezza; // characters a field holds, 0 no limit
        int larghezza; // characters it is drawn for
        const char *nome;
        std::uint8_t modo; // ModoTesto, ModoCifre, ModoImporto
    };
    virtual Misura misuraFiltro(int indice) const = 0;
    // The filter's widgets (fields, arrows, calendars, firm, team, "Chiusi")
    // stand made in `riquadro`; the screen lays them on `g`.
    virtual void disponiFiltri(QGridLayout *g, QWidget *riquadro) = 0;
    // The filter's controls in Tab order, after its firm.
    virtual QList<QWidget *> tabFiltri() const = 0;
    // The filter's client code field; its name field is the next.
    virtual int campoCodiceFiltro() const = 0;
    int campoNomeFiltro() const { return campoCodiceFiltro() + 1; }
    // The client of the list on view; 0 for none.
    virtual std::int32_t clienteEstratto() const = 0;
    // A row written or deleted: the list is shown again.
    virtual void dopoModifica(bool eliminato) = 0;
    virtual QString chiaveGriglia() const = 0;
    // The field's check as it is left; 0 when good, else its code.
    virtual int controllaCampo(int indice);
    // The message of the failing code; answers the field for the focus.
    virtual int mostraErrore();
    // A filter field entered, and left with a good check.
    virtual void filtroEntrato(int /*indice*/) {}
    virtual void filtroLasciato(int /*indice*/) {}
    // The date text a currency field's rates are read on; none for a field
    // that holds no currency.
    virtual std::optional<QString> dataDellaMoneta(int indice) const;

    void aggiornaPulsanti();
    // The from (1) or to (2) date's fields in a row, its arrows and calendar.
    QHBoxLayout *filaData(int data) const;
    // A routine runs: no field check meanwhile.
    void occupa(bool occupato) { m_occupato = occupato; }

    void closeEvent(QCloseEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

    QList<QPushButton *> m_cmdData;
    PulsanteSpin *m_spinM = nullptr;
    QCheckBox *m_chkClose = nullptr;
    EtichettaSquadra *m_lbTeam = nullptr;
    QPushButton *m_cmdFine = nullptr;
    ModelloDistinte04 *m_data1 = nullptr;
    ControlloCampi4 *m_controllo = nullptr;

private:
    QWidget *costruisciLista();
    QWidget *costruisciFiltri();
    QWidget *costruisciPulsanti();
    QWidget *costruisciModifica();
    QLineEdit *nuovoCampo(int indice, QWidget *padre);
    void installaSchermo();
    void ordineTab();
    void carica();
    void mostraModifica(const QString &titolo, int primo);
    void tornaAllaLista();
    void spin(int data, int passo); // data as cmdData's index

    void fuocoEntrato(int indice);
    void fuocoUscito(int indice);
    bool tastoGiu(int codice, int maschera);
    bool fermo() const;

    int m_ultimoCampo;
    QString m_nomeFine;
    bool m_occupato = false; // a lookup, a popup or a button routine is running
};

} // namespace sorvane
