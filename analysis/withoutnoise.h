// Takes from worked-out numbers the digits that arithmetic has left of its inputs' last ones, for writing them.
#pragma once

#include "encounter.h"

namespace sorvane {
// What arithmetic has left of a number: its 15th and later digits, counted from the first one of the greatest number
// that went in, are noise and go. 12.344999999739, the difference of 4321012.345 and 4321000, becomes 12.345.
double withoutNoise(double result, double greatest);

// A value that is worked out, as it is written: with the digits that arithmetic can be trusted for.
double writtenValue(double value);

// The greatest of a sample's coordinates, without its sign.
double greatestCoordinate(const Sample& sample);

// The encounter at a moment and on a sample, to be written.
Encounter writtenEncounter(const Moment& moment);
Encounter writtenEncounterOn(std::span<const Sample> samples, std::size_t index);
} // namespace sorvane
