// The existence check of the terrain code. It forwards to File::Exists like the one in filechecks.h; the two take their
// name differently, so a call would be ambiguous where both are declared: include one of the two headers, never both.
#pragma once

#include <string>

bool FileExists(const std::string& name);
