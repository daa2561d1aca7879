#pragma once

// F4 on a client field of a work screen: the full client search, modal,
// started from what the field holds (the name field's text when the code
// field holds a number). A client chosen there fills the code and name
// fields and is in Cli(); the screen then moves the focus on.

#include <cstdint>

class QLineEdit;

namespace sorvane {

// Answers the chosen client's code, 0 when none was chosen (the fields are
// left as they were) or the field is disabled (nothing opens).
std::int32_t CercaClienteDelCampo(QLineEdit *codice, QLineEdit *nome);

} // namespace sorvane
