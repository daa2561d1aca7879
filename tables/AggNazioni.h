#pragma once

// AggNazioni, the editor of the currencies (`TabNazioni`) that the exchange
// screen opens from "&MONETE": code, name, ISO and ISTAT codes, 'S' for the
// euro area or 'N', and the place on the exchange screen (0 keeps a
// currency off it). It is the reference grid of the small tables, shown
// modally: a row is written as the user leaves it, a row chosen on its
// selector goes with Delete, and leaving writes the row in hand first.

#include <QDialog>

class QTableView;

namespace sorvane {

struct TabellaRiferimento;
class SchermoTabella;

const TabellaRiferimento &TabellaNazioni();

class AggNazioni : public QDialog
{
    Q_OBJECT

public:
    explicit AggNazioni(QWidget *padre = nullptr);

    SchermoTabella *tabella() const { return m_tabella; }
    QTableView *griglia() const;

    // The table did not open: the editor is not shown.
    bool guasto() const;

protected:
    void done(int esito) override;

private:
    SchermoTabella *m_tabella = nullptr;
};

// Shows the editor modally (through EseguiModale); 0 when it could not open.
int MostraAggNazioni(QWidget *padre = nullptr);

} // namespace sorvane
