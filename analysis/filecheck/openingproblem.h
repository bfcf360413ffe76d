// Why a file can't be opened, or can't be read as it is.
#pragma once

#include <optional>
#include <string>

#include "problem.h"

namespace sorvane {
struct TrajectoryInput;

// Why `path` can't be opened, such as "there is no such file".
Problem problemOfOpening(const std::string& path);

// What keeps an open input from being read: data that are compressed where the viewer does not expect it.
std::optional<Problem> problemOfInput(const TrajectoryInput& input, const std::string& path);
} // namespace sorvane
