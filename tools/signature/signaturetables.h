// Writes signatures: for people, as CSV and as JSON.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "litbody.h"
#include "signaturemap.h"

namespace sorvane {
struct NamedSignature {
    std::string name;
    std::size_t facets = 0;
    SignatureLight light;
    double time = 0.0; // seconds
    SignatureMap map;
};

// All maps are of one grid.
void writeSummary(std::ostream& out, const std::vector<NamedSignature>& signatures);
// A row for each body and direction.
void writeCsv(std::ostream& out, const std::vector<NamedSignature>& signatures);
void writeJson(std::ostream& out, const std::vector<NamedSignature>& signatures);
} // namespace sorvane
