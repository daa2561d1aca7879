#pragma once

// The staged rows of a print, read back from the work database for the
// renderer: the one row of PrtTesta, the rows of PrtCorpo in the order they
// were written, the one row of PrtPiede.

#include "reports/DatiReport.h"

class QSqlDatabase;

namespace sorvane {

// False with the database's text in errore when a table cannot be read.
// A missing head or foot row leaves that part empty.
bool CaricaDatiReport(const QSqlDatabase &db, DatiReport &dati, QString *errore = nullptr);

} // namespace sorvane
