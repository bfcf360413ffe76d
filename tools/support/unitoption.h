// The option that says what a trajectory's lengths are in.
#pragma once

#include "measuretext.h"

namespace CLI {
class App;
}

namespace sorvane {
// Adds --unit. `unit` must outlive the parser; it stays as it is when the option is not given.
void addUnitOption(CLI::App& parser, LengthUnit& unit, const char* description);
} // namespace sorvane
