// Asks measures for their values: over samples, flares and times, in pieces that stay in the processor's caches.
#include <algorithm>
#include <array>
#include <cmath>

#include "measure.h"

namespace sorvane {
namespace {
constexpr std::size_t kPiece = 256;

// `count` values by `formula`, of what `stateOf` says of the numbers 0 to count − 1.
template <class State, class Formula, class StateOf>
std::vector<double>
inPieces(const MeasuredEngagement& engagement, Formula formula, std::size_t count, StateOf stateOf) {
    std::vector<double> values(count);
    std::array<State, kPiece> states;
    for (std::size_t begin = 0; begin < count; begin += kPiece) {
        const std::size_t size = std::min(kPiece, count - begin);
        for (std::size_t i = 0; i < size; ++i)
            states[i] = stateOf(begin + i);
        formula(engagement, std::span(states).first(size), std::span(values).subspan(begin, size));
    }
    return values;
}

// The values at those times for which there is a state, NaN at the others.
template <class State, class Formula, class StateAt>
std::vector<double>
whereDefined(const MeasuredEngagement& engagement, Formula formula, std::span<const double> times, StateAt stateAt) {
    std::vector<double> values(times.size(), std::nan(""));
    std::vector<std::size_t> places;
    std::vector<State> states;
    for (std::size_t i = 0; i < times.size(); ++i)
        if (const std::optional<State> state = stateAt(times[i])) {
            places.push_back(i);
            states.push_back(*state);
        }
    const auto stateOf = [&](std::size_t i) {
        return states[i];
    };
    const std::vector<double> found = inPieces<State>(engagement, formula, states.size(), stateOf);
    for (std::size_t i = 0; i < places.size(); ++i)
        values[places[i]] = found[i];
    return values;
}

// A row that a later one of its sample replaces has no value.
std::vector<double> onRows(const MeasuredEngagement& engagement, FlareFormula formula, std::size_t count, auto rowOf) {
    std::vector<double> values =
        inPieces<FlareMoment>(engagement, formula, count, [&](std::size_t i) { return engagement.onRow(rowOf(i)); });
    for (std::size_t i = 0; i < count; ++i)
        if (engagement.tracks().trackOf(rowOf(i)) == FlareTracks::kNone)
            values[i] = std::nan("");
    return values;
}
} // namespace

std::vector<double> valuesOnSamples(const MeasuredEngagement& engagement, const Measure& measure) {
    const auto formula = std::get<MomentFormula>(measure.evaluate);
    return inPieces<Moment>(
        engagement, formula, engagement.samples().size(), [&](std::size_t i) { return engagement.on(i); });
}

std::vector<double>
valuesAt(const MeasuredEngagement& engagement, const Measure& measure, std::span<const double> times) {
    const auto formula = std::get<MomentFormula>(measure.evaluate);
    return whereDefined<Moment>(engagement, formula, times, [&](double time) { return engagement.at(time); });
}

double valueAt(const MeasuredEngagement& engagement, const Measure& measure, double time) {
    return valuesAt(engagement, measure, std::span(&time, 1)).front();
}

std::vector<double>
valuesOnRows(const MeasuredEngagement& engagement, const Measure& measure, std::span<const FlareTracks::Number> rows) {
    const auto formula = std::get<FlareFormula>(measure.evaluate);
    return onRows(engagement, formula, rows.size(), [&](std::size_t i) { return rows[i]; });
}

std::vector<double> valuesOnAllRows(const MeasuredEngagement& engagement, const Measure& measure) {
    const auto formula = std::get<FlareFormula>(measure.evaluate);
    return onRows(engagement, formula, engagement.tracks().rowCount(), [](std::size_t i) { return i; });
}

std::vector<double> flareValuesAt(
    const MeasuredEngagement& engagement, const Measure& measure, std::size_t track, std::span<const double> times) {
    const auto formula = std::get<FlareFormula>(measure.evaluate);
    return whereDefined<FlareMoment>(engagement, formula, times, [&](double time) -> std::optional<FlareMoment> {
        const std::optional<Moment> moment = engagement.at(time);
        return moment ? engagement.flareAt(track, *moment) : std::nullopt;
    });
}

double valueOf(const EngagementResults& results, const Measure& measure) {
    return std::get<ResultFormula>(measure.evaluate)(results);
}

double flareValueOf(const EngagementResults& results, const Measure& measure, std::size_t track) {
    return std::get<FlareResultFormula>(measure.evaluate)(results, track);
}
} // namespace sorvane
