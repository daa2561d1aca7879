#pragma once

// The widgets the slip screens and the 04 ledger's hold alike, by the names
// the screens give them: the fields `txt` by index ([0] unused), the row of
// buttons Command1, the grid, the key rules and the checks' view of the
// fields. A management screen (SchermoGestione) adds its change form over
// the list: the movement's firm and the filter's, the period's arrows, the
// form's title, reason caption and buttons, the movement in the form and
// the field the focus is sent back to. Each screen builds them and says
// what its indices mean.

#include "distinte/SchermiDistinte.h"

#include <QList>
#include <QWidget>
#include <cstdint>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace sorvane {

class CampiInsDist;
class PulsanteSpin;
class Schermo;

class SchermoDistinta : public QWidget
{
public:
    QLineEdit *txt(int indice) const { return m_txt.value(indice); }
    QPushButton *Command1(int indice) const { return m_command1.value(indice); }
    QTableView *TDBGrid1() const { return m_grid; }

protected:
    explicit SchermoDistinta(QWidget *padre) : QWidget(padre) {}

    QList<QLineEdit *> m_txt; // [0] unused
    QList<QPushButton *> m_command1;
    QTableView *m_grid = nullptr;
    Schermo *m_schermo = nullptr;
    CampiInsDist *m_campi = nullptr; // made and deleted by the screen
    bool m_attivato = false;         // shown once (PrimaVista)
};

class SchermoGestione : public SchermoDistinta
{
public:
    // The from date's arrows and the to date's.
    PulsanteSpin *SpinButton1() const { return m_spin1; }
    PulsanteSpin *SpinButton2() const { return m_spin2; }
    // 0 the movement's firm, 1 the filter's.
    QComboBox *cmbSoc(int indice) const { return indice == 0 ? m_cmbSoc0 : m_cmbSoc1; }
    QLabel *Label2() const { return m_label2; }
    QLabel *CauDes() const { return m_cauDes; }
    QPushButton *cmdMOD() const { return m_cmdMOD; }
    QPushButton *cmdDEL() const { return m_cmdDEL; }
    QWidget *pctLista() const { return m_pctLista; }
    QWidget *pctMod() const { return m_pctMod; }
    std::int32_t CodiceMovimento() const { return m_codiceMovimento; }

protected:
    using SchermoDistinta::SchermoDistinta;

    void vaiA(int indice) { m_fuoco.vaiA(indice); }

    PulsanteSpin *m_spin1 = nullptr;
    PulsanteSpin *m_spin2 = nullptr;
    QComboBox *m_cmbSoc0 = nullptr;
    QComboBox *m_cmbSoc1 = nullptr;
    QLabel *m_label2 = nullptr;
    QLabel *m_cauDes = nullptr;
    QPushButton *m_cmdMOD = nullptr;
    QPushButton *m_cmdDEL = nullptr;
    QWidget *m_pctLista = nullptr;
    QWidget *m_pctMod = nullptr;
    std::int32_t m_codiceMovimento = 0; // the movement in the form, 0 none
    RitornoCampo m_fuoco{this, m_txt};
    bool m_errore = false; // a field's message is being shown
};

} // namespace sorvane
