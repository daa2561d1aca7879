#pragma once

// What a report prints: the staged rows as plain values. The screens fill the
// staging tables; a loader turns them into this, and the renderer never reads
// a table itself.

#include <QList>
#include <QString>
#include <QVariantMap>

namespace sorvane {

struct DatiReport
{
    QVariantMap testa;          // the head row, field name -> value
    QList<QVariantMap> corpo;   // the body rows, in staging order
    QVariantMap piede;          // the foot row
    // Values of the run, offered to the template beside the rows; "oggi" and
    // "operatore" are filled from the session when absent.
    QVariantMap esecuzione;
};

} // namespace sorvane
