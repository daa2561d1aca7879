#pragma once

// A realistic office for trying the program out: clients, teams, firms,
// banks, products, exchange rates, visits and years of movements, written
// into an open connection (the working file with the data, visits and index
// files attached, the schema created, the default rows present).

#include <QDate>
#include <QSqlDatabase>
#include <QString>
#include <QtGlobal>

namespace sorvane {

struct OpzioniDemo
{
    qint64 movimenti = 0; // 0: the normal demo
    quint32 seme = 1;     // the same seed gives the same office
    QDate oggi;           // the last day of the movements; invalid: the run date
};

// Fills the office in one transaction: all of it or, with false and the
// reason in *errore, nothing.
bool GeneraDatiDemo(QSqlDatabase &db, const OpzioniDemo &opzioni, QString *errore);

} // namespace sorvane
