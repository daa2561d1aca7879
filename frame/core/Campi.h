#pragma once

// Small routines that every screen shares to read a value from a file or a
// table, filter a key press, or lay out a value as text.

#include <QString>
#include <QVariant>

#include <optional>

namespace sorvane {

// Null and blank text become Empty; a text with a "/" and a second "/" after
// it is read as a date and gives its day number (a double); a number stands
// as it is; anything else is Empty. Empty reads as 0 wherever a number is
// expected (CDbl).
QVariant DataDaCampo(const QVariant &valore);

// Null, blank text and text starting with NUL give the default (a missing or
// blank default is one blank); any other value gives its text, untrimmed.
QString TestoDaCampo(const QVariant &valore, const QString &predefinito = QString());

// Key codes of the classic keyboard, as the screens' key routines see them.
namespace tasti {
constexpr int Invio = 13;
constexpr int Home = 36;
constexpr int Su = 38;
constexpr int Giu = 40;
constexpr int F2 = 113;
constexpr int F4 = 115;
constexpr int F8 = 119;
} // namespace tasti

// A character that a key press types into a field. Delete (127), Escape,
// Backspace and the Ctrl+letter keys come with a control character as well,
// but they edit or command: the key filters below are for typed characters
// only, and a screen hands the others to the field untouched.
bool CarattereDigitato(int tasto);

// Key filters: take the character code and change it to 0 to drop the key.
// Digits, backspace and Ctrl+C/R/V.
void SoloCifre(int &tasto);
// As SoloCifre, plus minus and the decimal separator of the program's locale;
// "." or "," typed where the locale uses the other becomes the locale's one.
void SoloImporto(int &tasto);
// a-z to upper case; anything else, accented letters too, stays as typed.
int Maiuscolo(int &tasto);

// The largest of two to four values, compared as values: numbers, dates and
// texts that read as a number or a date compare by their number; otherwise
// both compare as texts. Empty and Null are left out (Empty if nothing is
// left); on a tie the earlier value wins.
QVariant MaggioreDi(const QVariant &a, const QVariant &b, const QVariant &c = QVariant(),
                    const QVariant &d = QVariant());

// Right-aligns the trimmed value in lunghezza characters; an empty value, or
// one not shorter than lunghezza, comes back as given (untrimmed).
QString AllineaTesto(const QString &valore, int lunghezza);
// Trims; a numeric value (IsNumeric: "12", "-7", "1,5") shorter than
// lunghezza gets zeros on the left, before its sign too ("000-7").
QString AllineaCodice(const QString &valore, int lunghezza);
// A non-blank text in double quotes, for a command line; a blank one as given.
QString Virgolettato(const QString &testo);

// The number an amount field holds, the one reading of the amount and the
// expenses alike: blank is 0; a number as LeggiNumero reads it, so the
// locale's groups where they belong ("2.500,5", as FormatoImporto writes
// it) or none ("2500,5"); anything else is no amount, nothing: "2,500,50"
// (an Italian "2.500,50" through SoloImporto), a date, a letter.
std::optional<double> LeggiImporto(const QString &testo);

// "#,###,###,###,###" for the lira code, else "##,###,###,###.##"; a final
// separator goes; a blank result is "0" unless vuotoSeZero.
QString FormatoImporto(const QString &codiceMoneta, double valore, bool vuotoSeZero = false);
QString GiornoTesto(int giorno);
QString MeseTesto(int mese);
QString AnnoTesto(int anno);

} // namespace sorvane
