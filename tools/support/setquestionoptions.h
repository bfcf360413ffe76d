// The options that say what is asked of a set of engagements.
#pragma once

#include "setsummary.h"

namespace CLI {
class App;
}

namespace sorvane {
// Adds --where, --by, --column, --miss and --with-faults. `question` must outlive the parser.
void addSetQuestionOptions(CLI::App& parser, SetQuestion& question);
} // namespace sorvane
