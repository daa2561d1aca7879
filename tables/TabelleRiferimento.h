#pragma once

// The three reference lists every movement points to, as their maintenance
// screens show them: the firms, the banks and the reasons. Each is one table
// in the data file, shown whole in one order, a few of its columns in a
// grid; a column's width is the number of characters a cell accepts.
//
// Nothing here looks at the movements: a firm, bank or reason in use may be
// changed or deleted, and the movements keep the text they hold (the lists
// join reasons with inner joins, so a movement whose reason is gone drops
// out of them until the code is typed again).

#include <QList>
#include <QString>

namespace sorvane {

struct ColonnaRiferimento
{
    QString intestazione; // the grid's heading
    QString campo;
    int larghezza = 0; // characters a cell takes
    // A column of signs: a blank reads as "+", as the list of value items
    // of the sign column shows it.
    bool segno = false;
};

struct TabellaRiferimento
{
    QString schermo;  // the screen's name: "GesSoc"
    QString titolo;   // "GESTIONE DITTE PER LE DISTINTE"
    QString tabella;  // "Societa"
    QString ordine;   // the field the rows are read in order of
    QString sorgente; // "SELECT * FROM Societa ORDER BY SocNome"
    QString guasto;   // the message of a table that does not open
    QString sorgenteDati; // the name of the grid's data source
    QList<ColonnaRiferimento> colonne;
    // Tab moves from cell to cell inside the grid; otherwise it leaves it.
    bool tabNellaGriglia = false;
};

const TabellaRiferimento &TabellaDitte();
const TabellaRiferimento &TabellaBanche();
const TabellaRiferimento &TabellaCausali();

// What a sign cell shows for a stored sign: "+" for a blank (or nothing).
QString SegnoMostrato(const QString &valore);

} // namespace sorvane
