#pragma once

// A client field's search by name, as every work screen runs it: a blank
// name does nothing; one match fills the code and name fields at once;
// several open the client popup, modally, for the user to choose; a popup
// left without a choice empties the code field and gives it the focus.
// The client in hand is then in Cli().

#include <QString>
#include <cstdint>

class QLineEdit;
class QWidget;

namespace sorvane {

// schermo is the calling screen (its window, or MDI child, gives the
// popup's intended place); ancheChiusi is the popup's "Anche chiusi" for
// this search, off unless the screen keeps a choice of its own. Returns
// the number of clients that matched: on 0 the fields stay as they are and
// the screen decides what to say.
std::int16_t SceltaCliente(QWidget *schermo, QLineEdit *codice, QLineEdit *nome,
                           bool ancheChiusi = false);

// The same routine in two steps, for screens whose field checks run the
// search themselves. CercaClienti makes the popup ready (shared code
// cleared, closed clients left out unless ancheChiusi) and searches unseen;
// it answers how many clients match, with one that client in Cli().
std::int16_t CercaClienti(const QString &nome, bool ancheChiusi = false);
// Shows the popup modally for a choice among several, at left and top in
// twips; answers the chosen client's code, below 1 when none was chosen.
std::int32_t MostraClienti(int sinistra, int alto);

} // namespace sorvane
