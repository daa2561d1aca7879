#pragma once

// ChkCliC, "RICERCA ANAGRAFICHE": the full client search. The criteria
// (twelve boxes, the visits' twelve months, an action, three check boxes)
// search live: a box left changed, a check box or a month runs the search
// again, the action's list waits for the next one. The result grid sorts
// on a heading (left button ascending, the others descending) and keeps
// its column widths in `LayOutCol` under "GridRic". A double click or Enter
// on a row chooses that client: Cli() is loaded with it and the screen
// closes; Cli().Codice stays 0 when nothing was chosen. The result prints
// as a phone list or as address labels, and goes to a spreadsheet.
//
// A caller shows it modally through CercaClienteDelCampo
// (lookup/CercaClienteCampo.h), or as it stands:
//
//     ChkCliC ricerca(this);
//     ricerca.impostaNome(testo);
//     EseguiModale(ricerca);

#include "lookup/RicercaAnagrafiche.h"

#include <QDialog>
#include <QList>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTableView;

namespace sorvane {

class ModelloAnagrafiche;
class Schermo;

class ChkCliC : public QDialog
{
    Q_OBJECT

public:
    explicit ChkCliC(QWidget *padre = nullptr);
    ~ChkCliC() override;

    // Btxt(1) to Btxt(12); the months are 0 (January) to 11.
    QLineEdit *Btxt(int box) const { return m_btxt.value(box); }
    QPushButton *Mese(int mese) const { return m_mesi.value(mese); }
    bool MeseAcceso(int mese) const { return m_criteri.mesi.at(mese); }
    QListWidget *Lista(int i) const { return i == 1 ? m_listaNazioni : m_listaSessi; }
    QComboBox *cmbAzioni() const { return m_cmbAzioni; }
    QCheckBox *chkAbbin() const { return m_chkAbbin; }
    QCheckBox *chkChiuso() const { return m_chkChiuso; }
    QCheckBox *chkTeam() const { return m_chkTeam; }
    QPushButton *CmdR(int i) const { return m_cmdR.value(i); }
    QPushButton *cmdExcel() const { return m_cmdExcel; }
    QTableView *GridRic() const { return m_grid; }
    ModelloAnagrafiche *risultato() const { return m_modello; }
    OrdineAnagrafiche ordine() const { return m_ordine; }

    // A caller's text: the name box holds it and the search runs.
    void impostaNome(const QString &testo);

    // CmdR(2): the search with the criteria on the screen.
    void Cerca();
    // A click on a month box.
    void Mese_Click(int mese);
    // A heading pressed with a mouse button: that column's order, again.
    void OrdinaPerColonna(int colonna, Qt::MouseButton pulsante);
    // The grid's row as the choice: the client loaded, the screen closed.
    void Seleziona(int riga);
    void Premi_CmdR(int indice);
    // F4 or a double click in a box: its table's lookup, or its list.
    void ApriRicercaBox(int box);

    void done(int esito) override;

protected:
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    QWidget *costruisciCriteri();
    QWidget *costruisciMesi();
    void caricaListe();
    void leggiCriteri();
    void coloraMese(int mese);
    bool tastoGiu(int codice, int maschera);
    void entraInLista(QListWidget *lista);
    void esciDaLista(QListWidget *lista);
    void aggiornaPulsanti();
    void stampa(const QString &modulo);

    QList<QLineEdit *> m_btxt; // [0] unused
    QList<QPushButton *> m_mesi;
    QListWidget *m_listaNazioni = nullptr;
    QListWidget *m_listaSessi = nullptr;
    QComboBox *m_cmbAzioni = nullptr;
    QCheckBox *m_chkAbbin = nullptr;
    QCheckBox *m_chkChiuso = nullptr;
    QCheckBox *m_chkTeam = nullptr;
    QList<QPushButton *> m_cmdR;
    QPushButton *m_cmdExcel = nullptr;
    QTableView *m_grid = nullptr;
    ModelloAnagrafiche *m_modello = nullptr;
    Schermo *m_schermo = nullptr;

    CriteriAnagrafiche m_criteri;
    OrdineAnagrafiche m_ordine;
    QString m_valoreEntrato; // a box's text when it took the focus
    bool m_loading = true;   // no search while the screen is built
    bool m_occupato = false; // a lookup or a print is running
    // The grid at the last choice: top row, row and column.
    int m_rigaAlta = 0;
    int m_riga = 0;
    int m_colonna = 0;
};

} // namespace sorvane
