#pragma once

// The client record buffer: the client in hand, filled from `Clienti` by
// CaricaCliente and read by every screen that shows a client. Fixed-width
// texts are always exactly their width, padded with blanks on the right
// and cut there; the two names are kept trimmed, and Nominativo is the name
// the lists show.

#include <QString>

#include <cstdint>

namespace sorvane {

struct BufferCliente
{
    std::int32_t Codice = 0; // 0: no client loaded
    QString Ragsoc;          // trimmed, at most 35
    QString RagsocEstesa;    // trimmed, at most 35; a team number for a team's client
    QString Nominativo;      // Ragsoc, then " >" and RagsocEstesa when that isn't blank
    QString Indirizzo;       // 35
    QString Localita;        // 35
    QString Cap;             // 5
    QString Provincia;       // 3
    QString Nazione;         // 3
    QString Telefono;        // 14
    QString Telefono1;       // 15
    QString Telefono2;       // 15
    QString Telefono3;       // 15
    QString PartitaIva;      // 11
    QString CodiceFiscale;   // 16
    QString Categoria;       // 5; "ZZZZZ" for a closed client
    QString Agevolazione;    // 5
    QString Sesso;           // 1
    QString NatoA;           // 35
    double NatoIl = 0;       // day number
    QString DocumTipo;       // 1
    QString Documento;       // 20
    QString DocRilascA;      // 35
    QString DocRilascIl;     // 10
    QString ContoCo;         // 30
    QString Visite;          // 13
    std::int32_t Abbinamento = 0;
    std::int32_t UltimaVisita = 0; // day number
    QString OraVisita;       // 5
    QString Note;            // free text
    std::uint8_t Eta = 0;
    QString Rischio;         // 1
    double RischioData = 0;  // day number
    QString Relazione;       // 3
    QString Riconosci;       // 3
    QString Referenze;       // 3
    QString Attivita;        // 3
};

// The buffer. It starts cleared, as PulisciCliente leaves it.
BufferCliente &Cli();

// Fills Cli() with the client of that code from `Clienti` (opened for the
// call if RsClienti isn't open, and closed again). A code without a row
// clears the buffer, so Cli().Codice stays 0. The client's newest visit
// corrects CliUltimaVisita, in the table and in the buffer, when they
// differ. A failure of the table shows "ERRORE NELLA TABELLA CLIENTI".
void CaricaCliente(std::int32_t codice);

// Code 0, fixed-width texts all blanks (OraVisita "0"), names, Nominativo
// and Note empty, dates and numbers 0.
void PulisciCliente();

// The day of Cli().Codice's newest visit in `VisiteN`; 0 when there is none
// or the visits can't be read.
std::int32_t UltimaVisita();

} // namespace sorvane
