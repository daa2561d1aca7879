#pragma once

// InsSald4, the yearly balance rows of the 04 ledger, typed client by
// client: the year gives the row's date and the description, a payment and
// then a withdrawal are confirmed, and the next client starts over. The
// list below shows what the client already has.

#include "distinte/SchermoDistinta.h"
#include "ledger04/Saldi04.h"

class QRadioButton;

namespace sorvane {

class ModelloDistinte04;

// Command1: 0 exit, 1 confirm. txt(1) to txt(5).
class InsSald4 : public SchermoDistinta
{
    Q_OBJECT

public:
    explicit InsSald4(QWidget *padre = nullptr);
    ~InsSald4() override;

    QComboBox *cmbSoc() const { return m_cmbSoc; }
    QRadioButton *Option1(int indice) const { return m_option1.value(indice); }
    QPushButton *Command2() const { return m_command2; }
    ModelloDistinte04 *Data1() const { return m_data1; }

    void ListaSaldi();
    void Imposta();  // Command2
    void Conferma(); // Command1(1)

protected:
    void closeEvent(QCloseEvent *evento) override;
    void showEvent(QShowEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void costruisci();
    void fuocoUscito(int indice);
    // Once the present focus change is over.
    void vaiA(int indice) { m_fuoco.tornaA(indice); }

    QList<QRadioButton *> m_option1;
    QPushButton *m_command2 = nullptr;
    QComboBox *m_cmbSoc = nullptr;
    ModelloDistinte04 *m_data1 = nullptr;
    ControlloSaldi *m_controllo = nullptr;
    RitornoCampo m_fuoco{this, m_txt};
    bool m_occupato = false; // a routine holds the focus
};

} // namespace sorvane
