#pragma once

// The about panel: who makes the program, where to write for help, and the
// system's information tool. A command for that tool may be named in the
// local INI (MSINFO/PATH, or a folder in "Shared Tools Location"/MSINFO);
// without one the panel shows what Qt knows of the system.

#include <QDialog>

class QLabel;
class QPushButton;
class QGroupBox;

namespace sorvane {

class InfZerlo : public QDialog
{
    Q_OBJECT

public:
    explicit InfZerlo(QWidget *parent = nullptr);

    void cmdInfoSys_Click();

    QPushButton *cmdInfoSys = nullptr;
    QPushButton *Command1 = nullptr;
    QGroupBox *Frame1 = nullptr;
    QLabel *Lb_dati = nullptr;
    QLabel *Lb_cr = nullptr;
    QLabel *lbMail = nullptr;
    QLabel *lbSito = nullptr;
};

// The configured system information tool; empty when none is named.
QString StrumentoInfoSistema();
// What Qt knows of the system, one fact a line.
QString InformazioniSistema();

} // namespace sorvane
