// Describes any file that the viewer reads.
#pragma once

#include "inforecord.h"

namespace sorvane {
// The description of the file at `path`, or of the trajectory on standard input when it is "-". Members "path" and
// "kind" are always there; "error" says what is wrong with the file, and "messages" holds the loaders' own lines.
InfoRecord describeFile(const std::string& path, LengthUnit unit);
} // namespace sorvane
