#pragma once

// The print's launcher. Loading it performs the whole print of the module in
// consegnaStampa().ModuloCorrente from the staged rows:
//
//     Gstampe g;
//     g.Load();
//
// The module's file is ModuloCorrente + ".rpt". When the key "GesStampe" of
// section "PARAMETRI" of the local INI is 1, the second way is tried first:
// ModuloCorrente + ".rep", whose rows come from PlPathDB; when it fails, its
// error text (if any) is told and the ".rpt" way runs after all.

#include <QString>

class QWidget;

namespace sorvane {

class Gstampe
{
public:
    // The database the ".rep" way reads its staged rows from; blank means
    // the work file.
    QString PlPathDB;
    // Parent of the preview and the print dialog.
    QWidget *padre = nullptr;

    void Load();

    // The error text of the ".rep" way in the last Load.
    QString testoErrore() const { return m_errore; }

private:
    bool MostraReportman();
    void MostraStampa();

    QString m_errore;
};

// The renderer's start and stop, once per run, where the main window starts
// and ends. The start fails only when no window system is there to lay out
// and draw pages (the frame then tells "ERRORE NELLA GESTIONE STAMPE").
bool AvviaMotoreStampe();
void FermaMotoreStampe();
bool MotoreStampeAttivo();

} // namespace sorvane
