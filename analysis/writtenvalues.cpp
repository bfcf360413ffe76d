// The values of measures as tables and records write them: without the digits that arithmetic has made up.
#include "writtenvalues.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "withoutnoise.h"

namespace sorvane {
namespace {
std::vector<double> written(std::vector<double> values) {
    std::ranges::transform(values, values.begin(), writtenValue);
    return values;
}

// The columns that every table of samples has go by the digits of the coordinates.
struct EncounterColumn {
    std::string_view name;
    double Encounter::*member;
};
constexpr EncounterColumn kEncounterColumns[] = {
    {"range", &Encounter::range},
    {"closing-speed", &Encounter::closingSpeed},
    {"aspect", &Encounter::aspectDegrees},
};

double Encounter::*encounterMember(const Measure& measure) {
    const auto* const found = std::ranges::find(kEncounterColumns, measure.name, &EncounterColumn::name);
    return found == std::end(kEncounterColumns) ? nullptr : found->member;
}

// Puts in what `encounterOf` says for the number of a value, where there is one.
template <class EncounterOf>
std::vector<double> withEncounters(std::vector<double> values, double Encounter::*member, EncounterOf encounterOf) {
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!std::isnan(values[i]))
            values[i] = encounterOf(i).*member;
    return values;
}
} // namespace

std::vector<double> writtenOnSamples(const MeasuredEngagement& engagement, const Measure& measure) {
    std::vector<double> values = valuesOnSamples(engagement, measure);
    if (double Encounter::*const member = encounterMember(measure))
        return withEncounters(
            std::move(values), member, [&](std::size_t i) { return writtenEncounterOn(engagement.samples(), i); });
    return written(std::move(values));
}

std::vector<double>
writtenAt(const MeasuredEngagement& engagement, const Measure& measure, std::span<const double> times) {
    std::vector<double> values = valuesAt(engagement, measure, times);
    if (double Encounter::*const member = encounterMember(measure))
        return withEncounters(std::move(values), member, [&](std::size_t i) {
            const Moment moment = engagement.at(times[i]).value();
            return moment.isOnSample ? writtenEncounterOn(engagement.samples(), moment.sample)
                                     : writtenEncounter(moment);
        });
    return written(std::move(values));
}

std::vector<double> writtenOnAllRows(const MeasuredEngagement& engagement, const Measure& measure) {
    return written(valuesOnAllRows(engagement, measure));
}

std::vector<double>
writtenOfFlaresAt(const MeasuredEngagement& engagement, const Measure& measure, std::span<const double> times) {
    std::vector<double> values;
    values.reserve(engagement.tracks().size() * times.size());
    for (std::size_t track = 0; track < engagement.tracks().size(); ++track)
        std::ranges::copy(flareValuesAt(engagement, measure, track, times), std::back_inserter(values));
    return written(std::move(values));
}

double writtenOf(const EngagementResults& results, const Measure& measure) {
    return writtenValue(valueOf(results, measure));
}

std::vector<double> writtenOfFlares(const EngagementResults& results, const Measure& measure) {
    std::vector<double> values(results.field.flares.size());
    for (std::size_t track = 0; track < values.size(); ++track)
        values[track] = writtenValue(flareValueOf(results, measure, track));
    return values;
}
} // namespace sorvane
