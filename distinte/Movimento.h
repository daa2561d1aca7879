#pragma once

// The movement of a slip: one row "0", and a row "1" for a switch between
// products, both under one dstCodice. A product slice of `Distinte` that
// ends in MarcaAperta has not been confirmed yet; dstChiusa is "S" when no
// slice of the movement holds the mark. The working table `BkDistinte` has
// the same rows without marks.

#include "store/Recordset.h"

#include <QString>
#include <array>
#include <cstdint>
#include <optional>

namespace sorvane {

class CampiMaschera;
struct ControlloCampi;

inline constexpr QChar MarcaAperta = QChar(10);
inline constexpr int FetteProdotto = 5;
inline const QString RigaPrincipale = QStringLiteral("0");
inline const QString RigaGiro = QStringLiteral("1");
inline const QString MovimentoChiuso = QStringLiteral("S");

// Blanks off both ends and nothing else: the open mark at the end of a
// slice stays where it is.
QString TogliSpazi(const QString &testo);
// The bare code: the slice cut at its first mark.
QString TagliaMarca(const QString &fetta);
bool HaMarca(const QString &fetta);
// How a slice goes into `Distinte` at the save: a blank one as one blank,
// any other trimmed and marked open.
QString FettaAperta(const QString &fetta);
// A slice as stored: trimmed, one blank for none.
QString FettaSalvata(const QString &fetta);

// One row of `Distinte` or `BkDistinte`.
struct RigaDistinta
{
    std::int32_t dstCodice = 0;
    QString dstPrg = RigaPrincipale;
    QString dstDitta = QStringLiteral(" ");
    std::int32_t dstData = 0;
    std::int32_t dstCliente = 0;
    QString dstCausale = QStringLiteral(" ");
    QString dstMoneta = QStringLiteral(" ");
    double dstImporto = 0;
    QString dstAssegno = QStringLiteral(" ");
    QString dstBanca = QStringLiteral(" ");
    double dstSpeseUT = 0;
    std::array<QString, FetteProdotto> dstCodP{" ", " ", " ", " ", " "};
    QString dstChiusa = QStringLiteral(" ");

    bool fetteVuote() const;
};

struct Movimento
{
    RigaDistinta principale;
    std::optional<RigaDistinta> giro; // row "1", only for a switch
};

// The current row of a slip table, every value through DataDaCampo or
// TestoDaCampo.
RigaDistinta LeggiRiga(const Recordset &rs);
// Sets every column of the row on a recordset between AddNew/Edit and
// Update.
void ScriviRiga(Recordset &rs, const RigaDistinta &riga);

// The row (codice, prg) of a table on "primaria"; nothing when absent.
std::optional<RigaDistinta> CercaRiga(Recordset &rs, std::int32_t codice, const QString &prg);
// Both rows; nothing when there is no row "0".
std::optional<Movimento> LeggiMovimento(Recordset &rs, std::int32_t codice);

// The `Distinte04` product text: the non-blank slices, trimmed, in their
// order, joined with ",".
QString CodiciDistinte04(const RigaDistinta &riga);

// The entry screen's add button shows when the client code (4) and the
// reason (6) are filled and at least one product slice (7 to 16) is.
bool AggiungiVisibile(const CampiMaschera &txt);

// The movement on the entry screen's fields, as the add button writes it:
// date, client and firm from the caller, fields 6 and 17 to 20, slices 7 to
// 11 into row "0" and 12 to 16 into row "1" (present when any is filled).
Movimento MovimentoDaCampi(const CampiMaschera &txt, const QString &ditta,
                           const QString &banca, std::int32_t giorno,
                           std::int32_t cliente);

// A movement brought back onto a screen's fields 1 to 20 for a change: the
// date, the client (loaded, its code the current one), the reason checked
// so that its words stand in controllo.CauDes, the codes without their
// marks, the amounts as the currency lays them out. CodiceStop is 0 after.
void MovimentoNeiCampi(ControlloCampi &controllo, const Movimento &movimento);

// Writes a movement to `BkDistinte` (table on "primaria"): code 0 takes the
// next provisional number; row "0" is added or changed; row "1" is added or
// changed, or deleted when the movement no longer has one. Answers the
// movement's number, 0 on a failure (the recordset's error stands).
std::int32_t ScriviInLavoro(Recordset &bk, Movimento movimento);
// Deletes both rows of a movement from a table on "primaria".
bool CancellaMovimento(Recordset &rs, std::int32_t codice);

struct EsitoChiusa
{
    QString vecchio = QStringLiteral(" ");
    QString nuovo = QStringLiteral(" ");
    QString errore; // the engine's words when a row could not be written
    bool cambiato() const { return vecchio != nuovo; }
};

// Recomputes dstChiusa of the movement on `Distinte` (table on "primaria")
// and writes it to both rows. Without a row "0" nothing is written and both
// values are " ". The caller refreshes its list when the value changed.
EsitoChiusa AggiornaChiusa(Recordset &distinte, std::int32_t codice);

} // namespace sorvane
