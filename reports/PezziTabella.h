#pragma once

// A long list is one table of thousands of rows, and Qt's text layout pays
// for a table by its size on every page it lays out or draws. The body's
// longest top-level table is found here in the filled HTML, so that the
// renderer can lay it out in pieces of some hundred rows, each a table of
// its own with the same headings, starting at the top of a page.

#include <QList>
#include <QString>

#include <optional>

namespace sorvane {

struct TabellaLunga
{
    int inizioCorpo = 0;   // just after <body ...>, 0 without one
    int inizio = 0;        // the table's "<table"
    QList<int> righe;      // where each body row's "<tr" starts, then where they end
    int indice = 0;        // top-level tables before it in the body

    int conteggio() const { return int(righe.size()) - 1; }
};

// The top-level table with the most body rows (those outside <thead>),
// when it has at least `minimo`; none when the markup holds something the
// pieces could not repeat (a <tfoot>, an unclosed table or comment).
std::optional<TabellaLunga> TrovaTabellaLunga(const QString &html, int minimo);

// The HTML of a piece: rows [da, a) of the table, after the page's head and
// the table's opening with its headings. The first piece keeps whatever
// comes before the table, the last whatever follows it.
QString PezzoTabella(const QString &html, const TabellaLunga &tabella, int da, int a);

} // namespace sorvane
