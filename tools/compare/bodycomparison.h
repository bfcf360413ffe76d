// Holds the signatures of two bodies beside each other.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "namedbody.h"
#include "problem.h"
#include "signaturecomparison.h"
#include "standardstreams.h"

namespace sorvane {
struct BodyComparisonChoice {
    std::string atmosphere{}; // empty: in the dark
    std::string band{};       // empty: of the only files beside the geometry
    double step = SignatureGrid::kUsualStep;
    double toleranceDecibels = 0.0;
    std::string plot{}; // empty: none
};

struct BodyComparison {
    std::string a; // names
    std::string b;
    SignatureMap mapA;
    SignatureMap mapB;
    SignatureComparison differences;
    double toleranceDecibels = 0.0;
};

// Of the bodies of two geometry files, and written to the choice's plot or table, if any.
Outcome<BodyComparison>
compareBodies(const std::string& a, const std::string& b, const BodyComparisonChoice& choice, Streams& streams);

void writeText(std::ostream& out, const BodyComparison& comparison);
void writeJson(std::ostream& out, const BodyComparison& comparison);
// A row for each direction; an infinite difference is "inf" or "-inf".
void writeCsv(std::ostream& out, const BodyComparison& comparison);
} // namespace sorvane
