#pragma once

// The three small maintenance screens of the menu, GesSoc (firms), GesBanca
// (banks) and GesCauDs (reasons): one editable grid bound to its table and
// one exit button. The grid writes what the user types row by row as the
// user leaves the row; Esc drops the row being typed; a row chosen on its
// selector at the left goes with Delete, at once, and the list is read
// again in order. A row the table refuses is told in plain words and stays
// as typed. A table that does not open is told at load, and the screen
// closes itself as soon as it is shown.

#include "tables/TabelleRiferimento.h"

#include <QWidget>

class QPushButton;
class QStyledItemDelegate;
class QTableView;

namespace sorvane {

class DelegatoTabella;
class ModelloTabella;
class Schermo;

class SchermoTabella : public QWidget
{
    Q_OBJECT

public:
    explicit SchermoTabella(const TabellaRiferimento &tabella, QWidget *padre = nullptr);

    QPushButton *Command1() const { return m_command1; } // "&USCITA"
    QTableView *TDBGrid2() const { return m_grid; }
    ModelloTabella *Dati() const { return m_dati; }
    // The table did not open: the screen goes at its first activation.
    bool guasto() const { return m_guasto; }

    // Writes the row being typed (an editor still open gives its text
    // first). False when the table refused it, after telling the user.
    bool AggiornaRiga();
    // Deletes the row on file and reads the list again; the row being typed
    // elsewhere is written first.
    void EliminaRiga(int riga);

protected:
    void showEvent(QShowEvent *evento) override;
    void closeEvent(QCloseEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    void larghezzeColonne();
    void rigaCambiata(const QModelIndex &attuale, const QModelIndex &precedente);
    void rifiutata(const QString &testo);
    bool tastoGriglia(int tasto);

    const TabellaRiferimento &m_tabella;
    QTableView *m_grid = nullptr;
    QPushButton *m_command1 = nullptr;
    ModelloTabella *m_dati = nullptr;
    DelegatoTabella *m_delegato = nullptr;
    Schermo *m_schermo = nullptr;
    bool m_guasto = false;
    bool m_attivato = false;
    bool m_ritorno = false; // the cursor is being put back on a refused row
};

// The three screens by their names, in a namespace of their own: the slip
// grids already call one of their columns GesBanca.
namespace riferimento {

class GesSoc : public SchermoTabella
{
    Q_OBJECT
public:
    explicit GesSoc(QWidget *padre = nullptr) : SchermoTabella(TabellaDitte(), padre) {}
};

class GesBanca : public SchermoTabella
{
    Q_OBJECT
public:
    explicit GesBanca(QWidget *padre = nullptr) : SchermoTabella(TabellaBanche(), padre) {}
};

class GesCauDs : public SchermoTabella
{
    Q_OBJECT
public:
    explicit GesCauDs(QWidget *padre = nullptr) : SchermoTabella(TabellaCausali(), padre) {}
};

} // namespace riferimento

} // namespace sorvane
