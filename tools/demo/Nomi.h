#pragma once

// Italian names, places and identity codes for the demo office: what a
// client card holds, plausible in shape (a tax code with its check letter,
// a VAT number and an IBAN with their check digits), never a real person.

#include "tools/demo/Caso.h"

#include <QDate>
#include <QString>

namespace sorvane::demo {

struct Comune
{
    const char *nome;
    const char *provincia;
    const char *cap;
    const char *belfiore; // the town's code inside a tax code
    const char *prefisso; // telephone area code
};

struct Persona
{
    QString cognome;
    QString nome;
    bool donna = false;
    QDate nascita;
    const Comune *natoA = nullptr;
};

// Mostly the towns around the office, now and then a far one.
const Comune &ScegliComune(Caso &caso);
// The provinces of the towns above, code and name by pairs, for the
// province table.
int NumeroProvince();
const char *const *Province();

Persona NuovaPersona(Caso &caso, const QString &cognome = QString());
QString CognomeCaso(Caso &caso);
QString RagioneSociale(Caso &caso, const QString &cognome);
QString Indirizzo(Caso &caso);
QString Telefono(Caso &caso, const Comune &comune);
QString Cellulare(Caso &caso);

QString CodiceFiscale(const Persona &p);
QString PartitaIva(Caso &caso);
QString Iban(Caso &caso);
// An ISIN of the given country ("IT", "LU", ...) with its check digit.
QString Isin(Caso &caso, const char *paese);

} // namespace sorvane::demo
