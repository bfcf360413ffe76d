// Writes a description as text for people.
#pragma once

#include <ostream>
#include <string>

#include "inforecord.h"

namespace sorvane {
// One member a line, the members of members indented; lists of records become tables. Names lose the ending that tells
// their unit, values get it.
void writeInfoText(const InfoRecord& record, std::ostream& out);

// The text on one line, with ? for the characters that a terminal would obey.
std::string harmless(std::string text);
} // namespace sorvane
