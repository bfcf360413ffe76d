// Dates and times of day for the times of a trajectory, all in UTC.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace sorvane {
// Microseconds since 1970.
using WorldTime = std::int64_t;

// An ISO 8601 date, with or without time of day and zone; UTC when it has no zone. Nothing when it is none.
std::optional<WorldTime> parseWorldTime(const std::string& text);

// `seconds` after `epoch`, rounded; nothing outside the years 1 to 9999.
std::optional<WorldTime> worldTimeAfter(WorldTime epoch, double seconds);

// "2000-01-01T00:00:12.345000Z"
std::string worldTimeText(WorldTime time);
} // namespace sorvane
