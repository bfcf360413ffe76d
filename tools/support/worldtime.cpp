// Dates and times of day for the times of a trajectory, all in UTC.
#include "worldtime.h"

#include <chrono>
#include <cmath>
#include <cstdio>

#include <QDateTime>

namespace sorvane {
namespace {
using Microseconds = std::chrono::microseconds;

constexpr WorldTime kPerMillisecond = 1000;
constexpr double kPerSecond = 1e6;

WorldTime startOfYear(int year) {
    const std::chrono::sys_days day = std::chrono::year(year) / std::chrono::January / 1;
    return std::chrono::duration_cast<Microseconds>(day.time_since_epoch()).count();
}

bool hasFourDigitYear(double time) {
    return time >= static_cast<double>(startOfYear(1)) && time < static_cast<double>(startOfYear(10000));
}
} // namespace

std::optional<WorldTime> parseWorldTime(const std::string& text) {
    QDateTime parsed = QDateTime::fromString(QString::fromStdString(text), Qt::ISODateWithMs);
    if (!parsed.isValid())
        return std::nullopt;
    if (parsed.timeSpec() == Qt::LocalTime)
        parsed.setTimeSpec(Qt::UTC);
    const WorldTime time = parsed.toMSecsSinceEpoch() * kPerMillisecond;
    return hasFourDigitYear(static_cast<double>(time)) ? std::optional(time) : std::nullopt;
}

std::optional<WorldTime> worldTimeAfter(WorldTime epoch, double seconds) {
    const double microseconds = seconds * kPerSecond;
    if (!hasFourDigitYear(static_cast<double>(epoch) + microseconds))
        return std::nullopt;
    return epoch + std::llround(microseconds);
}

std::string worldTimeText(WorldTime time) {
    const std::chrono::sys_time<Microseconds> point{Microseconds(time)};
    const auto day = std::chrono::floor<std::chrono::days>(point);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss timeOfDay(point - day);
    char text[64];
    std::snprintf(
        text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%06dZ", int{date.year()}, unsigned{date.month()},
        unsigned{date.day()}, static_cast<int>(timeOfDay.hours().count()),
        static_cast<int>(timeOfDay.minutes().count()), static_cast<int>(timeOfDay.seconds().count()),
        static_cast<int>(timeOfDay.subseconds().count()));
    return text;
}
} // namespace sorvane
