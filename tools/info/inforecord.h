// What `sorvane info` knows about a file, and how its parts are named and put in.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "measuretext.h"

// A file's description: its members in the order in which they are shown. docs/json.md lists them.
using InfoRecord = nlohmann::ordered_json;

// Why a file could not be described, or not wholly; nothing when it could.
using InfoFault = std::optional<std::string>;

InfoRecord numberList(std::span<const float> values);

// The characters of a field of fixed width up to a zero byte, without blanks at the end.
std::string fixedText(std::span<const char> field);

std::string lengthName(const char* stem, LengthUnit unit); // "range", metres: "range_m"
std::string speedName(const char* stem, LengthUnit unit);
