// Takes from worked-out numbers the digits that arithmetic has left of its inputs' last ones.
#include "withoutnoise.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
double withoutNoise(double result, double greatest) {
    constexpr int kDigits = 15;
    constexpr int kExactPower = 22; // the last power of ten that a double holds exactly
    if (!(greatest > 0.0) || !std::isfinite(greatest))
        return result;
    const int decimals = kDigits - 1 - static_cast<int>(std::floor(std::log10(greatest)));
    if (decimals < 0 || decimals > kExactPower)
        return result;
    const double power = std::pow(10.0, decimals);
    return std::round(result * power) / power + 0.0; // no -0
}

double writtenValue(double value) {
    return withoutNoise(value, std::abs(value));
}

double greatestCoordinate(const Sample& sample) {
    double greatest = 0.0;
    for (const Triple* const position : {&sample.targetPosition, &sample.threatPosition})
        for (const double coordinate : *position)
            greatest = std::max(greatest, std::abs(coordinate));
    return greatest;
}

namespace {
// `greatest` is that of the coordinates.
Encounter written(const Encounter& encounter, double greatest, double seconds) {
    constexpr double kHalfTurn = 180.0;
    return {
        withoutNoise(encounter.range, greatest),
        withoutNoise(encounter.closingSpeed, greatest / seconds),
        withoutNoise(encounter.aspectDegrees, kHalfTurn * std::max(1.0, greatest / encounter.range)),
    };
}
} // namespace

Encounter writtenEncounter(const Moment& moment) {
    const double greatest = std::max(greatestCoordinate(*moment.earlier), greatestCoordinate(*moment.later));
    return written(encounterAt(moment), greatest, moment.seconds());
}

Encounter writtenEncounterOn(std::span<const Sample> samples, std::size_t index) {
    const Sample& next = samples[std::min(index + 1, samples.size() - 1)];
    const Sample& previous = samples[index > 0 ? index - 1 : 0];
    const double seconds = (next.time - previous.time) / 2.0;
    return written(encounterOn(samples, index), greatestCoordinate(samples[index]), seconds);
}
} // namespace sorvane
