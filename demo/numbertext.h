// Numbers as text, the same whatever the locale.
#pragma once

#include <string>

#include "vec3.h"

namespace sorvane {
// Appends `value` with a fixed number of decimals, as "%.3f" does with three. The value must be below 1e15 or so.
void appendFixed(std::string& text, double value, int decimals = 3);

// The three numbers with three decimals, separated by blanks.
void appendFixed(std::string& text, const Vec3d& values);
} // namespace sorvane
