// What `sorvane info` knows about a file, and how its parts are named and put in.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "measuretext.h"
#include "problem.h"

namespace sorvane {
// A file's description: its members in the order in which they are shown. docs/json.md lists them. What describes a
// file puts in what it can and answers why it could not describe it, or not wholly.
using InfoRecord = nlohmann::ordered_json;

InfoRecord numberList(std::span<const float> values);
InfoRecord numberList(std::span<const double> values);

std::string lengthName(const char* stem, LengthUnit unit); // "range", metres: "range_m"
std::string speedName(const char* stem, LengthUnit unit);
} // namespace sorvane
