#pragma once

// The yearly balance rows of the 04 ledger, typed client by client: a
// payment ("007") and a withdrawal ("008") in lire dated the first of
// January of the year, with a description made of two remembered halves
// around the year ("al 31/12/" 2001 " Movimenti vari"). The halves are
// learned from a description the user has written around "31/12/" and kept
// in the local INI, section DIST04.

#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"

#include <QString>
#include <cstdint>
#include <optional>

namespace sorvane {

inline const QString CausaleVersamento = QStringLiteral("007");
inline const QString CausalePrelievo = QStringLiteral("008");

struct DescrizioneSaldo
{
    QString sx; // up to the year
    QString dx; // after it
};

// The halves as remembered; a blank half is its default ("al 31/12/",
// " Movimenti vari").
DescrizioneSaldo LeggiDescrizioneSaldo();
bool ScriviDescrizioneSaldo(const DescrizioneSaldo &d);
// The halves around the year of a description holding "31/12/": the left
// one ends with that date's "/", the right one starts at the first blank
// after it (nothing when there is none). Nothing without "31/12/".
std::optional<DescrizioneSaldo> ImparaDescrizione(const QString &testo);
QString DescrizioneAnno(const DescrizioneSaldo &d, int anno);

// A balance row as the balances screen writes it; the number comes at the
// save (AggiungiRiga04). The currency is "LIT" whatever the settings say:
// these balances are the lire years.
RigaDistinta04 RigaSaldo(const QString &ditta, std::int32_t giorno, std::int32_t cliente,
                         bool versamento, double importo, const QString &descrizione);

// Fields of the balances screen.
enum CampoSaldo : int {
    CampoSaldoCodice = 1,
    CampoSaldoNome = 2,
    CampoSaldoAnno = 3,
    CampoSaldoDescrizione = 4,
    CampoSaldoImporto = 5,
};

// The checks of the balances screen's fields as they are left.
struct ControlloSaldi
{
    explicit ControlloSaldi(CampiMaschera &campi);

    CampiMaschera &txt;
    CampiRinumerati vista; // the client fields as the slip checks' 4 and 5
    ControlloCampi clienti; // the client checks, on `vista`
    DescrizioneSaldo descrizione;

    // Left by the checks.
    std::int32_t DataSaldo = 0; // 01/01 of the year, kept until a new year
    double ImportoSaldo = 0;
    int CampoFuoco = 0;

    std::int32_t ClienteCorrente() const { return clienti.ClienteCorrente; }
    // Fields 1, 2, 3 and 5; answers (and leaves) sessione().CodiceStop.
    int ControllaSaldo(int indice);
};

QString TestoErroreSaldo(int codice);
// The stop box of sessione().CodiceStop; answers the field for the focus.
int MostraErroreSaldo();

} // namespace sorvane
