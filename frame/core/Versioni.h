#pragma once

// Versions as the update check compares them, and the reading of the page
// of published versions. A version a.b.c counts as a*10000 + b*100 + c, so
// 8.6.22 (80622) is newer than 8.5.99 (80599).
//
// The page holds a block per program: its name and ":", then its entries,
// newest first, each "=" version "#" and a paragraph of news ended by
// "</p>". A program's block ends where another name and ":" begins:
//
//     SORVANE:
//     =8.6.22#<p>Nuova stampa delle distinte</p>
//     =8.6.10#<p>Correzioni</p>
//     ALTRO:
//     =2.0.1#<p>...</p>

#include <QList>
#include <QString>
#include <QStringList>

namespace sorvane {

int NumeroVersione(int maggiore, int minore, int revisione);
// "a.b.c"; a part missing or not a number counts 0.
int NumeroVersione(const QString &testo);
// The number back as "a.b.c".
QString TestoVersione(int numero);

// The running program's own version, "a.b.c", and its number.
QString VersioneProgramma();
int NumeroVersioneProgramma();

struct VoceVersione
{
    int numero = 0;
    QString testo; // the paragraph, tags left out, blanks collapsed
};

// The program's entries in page order; empty when the page does not name it
// (the name is matched without case, as a whole word).
QList<VoceVersione> VociProgramma(const QString &pagina, const QString &nome);

// The first entry's version; inUso when the page has none for the program,
// which so counts as up to date.
int VersionePubblicata(const QString &pagina, const QString &nome, int inUso);

// The news of the entries newer than inUso, in page order.
QStringList NovitaDopo(const QString &pagina, const QString &nome, int inUso);

} // namespace sorvane
