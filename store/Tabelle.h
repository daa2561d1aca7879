#pragma once

// The shared recordsets, their flags, and the openers that every screen
// uses. A recordset here is open while its flag says so; a screen that
// opens one closes it (or leaves it to the closer named below).
//
// The openers tell a failure to the user themselves, with Retry and
// Cancel under "ERRORE APERTURA TABELLA"; Retry tries again for as long as
// it is pressed, and only then: Cancel is the default, and with the
// databases released (the program ending) nothing is asked at all.
// Afterwards the caller looks at the flag.

#include "store/Recordset.h"

#include <QString>
#include <QVariantList>

#include <cstdint>

namespace sorvane {

// ModoTabella: what RsTabella holds.
enum : std::uint8_t {
    TabellaChiusa = 0,
    TabellaPerNome = 1,     // NomeTabella, opened as a table
    TabellaDaSql = 2,       // StringaSql, a snapshot
    TabellaDaRiaprire = 9,  // open, but the next ApriTabella reopens it
    TabellaTrattenuta = 99, // 99 and above: ApriTabella never closes it
};

// RsIndici and IndiciAperto live with the connection (archivi() in
// store/Connessione.h), which opens them at start.
struct TabelleCondivise
{
    Recordset RsClienti; // Clienti, closed by ChiudiClienti
    bool ClientiAperto = false;
    Recordset RsColori; // Colori, closed by the routine that opened it
    bool ColoriAperto = false;
    Recordset RsColoriGrp; // ColoriGrp, closed by the screen that opened it
    bool ColoriGrpAperto = false;
    // Distinte and Distinte04: open when sessione().CodiceStop is 0 after
    // their opener; closed by the screen's unload.
    Recordset RsDistinte;
    Recordset RsDistinte04;
    Recordset RsArchivio; // any table by name, closed by the caller
    bool ArchivioAperto = false;
    Recordset RsTabella; // see ApriTabella
    std::uint8_t ModoTabella = TabellaChiusa;

    QString NomeTabella;     // table of ApriTabella(1) and DescrizioneDaCodice
    QString StringaSql;      // query of ApriTabella(2) and of many screens
    QVariantList ParametriSql; // values for the "?" of StringaSql; ApriTabella(2) uses them up
    QString CodiceCercato;      // answers of DescrizioneDaCodice
    QString DescrizioneCercata;
};

TabelleCondivise &tabelle();

// Clienti, index "primaria"; ClientiAperto.
void ApriClienti();
void ChiudiClienti();
// Colori, ColoriGrp, index "primaria"; ColoriAperto, ColoriGrpAperto.
void ApriColori();
void ApriColoriGrp();
// Distinte, Distinte04, index "primaria"; sessione().CodiceStop 0, or 9
// after Cancel, which stops the screen from being shown.
void ApriDistinte();
void ApriDistinte04();
// The named table into RsArchivio, no index set; ArchivioAperto. The failure
// text is "ERRORE IN APERTURA ARCHIVIO " + testoErrore.
void ApriArchivio(const QString &nome, const QString &testoErrore);

// One shared recordset for one kind of use at a time. The same mode again
// returns at once, the table open and positioned as it was: callers change
// NomeTabella only after ChiudiTabella. A mode from 1 to 98 in hand is
// closed first; 99 and above is left alone (whoever holds a copy of
// RsTabella keeps it). Mode 1 opens NomeTabella, mode 2 the snapshot of
// StringaSql, any other mode opens nothing. A failure leaves ModoTabella 0.
void ApriTabella(std::uint8_t modo);
// Closes RsTabella if open; ModoTabella 0.
void ChiudiTabella();

// The shape of every opener: opens the table into rs (index "primaria"
// when primaria), and on failure composes sessione().TestoErrore from
// testoErrore, a line break, the error's number, ": " and its words, and
// asks Retry or Cancel. True once open; false after Cancel.
bool ApriConRiprova(Recordset &rs, const QString &tabella, const QString &testoErrore,
                    bool primaria);

// Every shared recordset closed and every flag down, for the closing of
// the databases.
void ChiudiTutteLeTabelle();

} // namespace sorvane
