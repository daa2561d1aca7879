#pragma once

// The end of the program, reachable from every screen: the main window
// installs its closing routine at start; until then FineProgramma does
// nothing, so that a screen tested on its own never ends the test.

#include <functional>

namespace sorvane {

void FineProgramma();
// An empty routine puts the do-nothing one back.
void installaFineProgramma(std::function<void()> routine);

} // namespace sorvane
