#pragma once

#include "distinte/ControllaCampo.h"

#include <QList>

class QLineEdit;
class QWidget;

namespace sorvane {

// The screen's QLineEdits seen by index (1 to 20) by the field checks.
class CampiInsDist : public CampiMaschera
{
public:
    explicit CampiInsDist(const QList<QLineEdit *> &txt, QWidget *schermo)
        : m_txt(txt), m_schermo(schermo) {}
    QString testo(int indice) const override;
    void imposta(int indice, const QString &testo) override;
    PosizioneCampo posizione(int indice) const override;

private:
    QList<QLineEdit *> m_txt; // [0] unused
    QWidget *m_schermo;
};

} // namespace sorvane
