// Checks numbers of models that the viewer takes as they are though they can't be meant.
#include "valuecheck.h"

#include <algorithm>
#include <cmath>

#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr const char* kReflectances = "impossible reflectances";
constexpr const char* kFormFactors = "impossible form factors";
constexpr float kRounding = 1e-4F; // of numbers that are written with a few digits

bool isAboveOne(float value) {
    return value > 1.0F + kRounding;
}
} // namespace

void checkClassValues(const BrdfFile& brdf, FindingList& findings) {
    constexpr std::int64_t kFirstClassLine = 3;
    constexpr float kNearOne = 1e-3F; // the terms of G, in single precision, cancel each other
    for (std::size_t i = 0; i < brdf.classes().size(); ++i) {
        const BrdfClass& c = brdf.classes()[i];
        const FindingPlace place{static_cast<std::int64_t>(i) + kFirstClassLine};
        if (isAboveOne(c.rho_d))
            findings.warning(
                place, kReflectances,
                "the class reflects more than it gets: its diffuse reflectance is " + shortestText(c.rho_d));
        else if (isAboveOne(c.rho_d + c.epsilon))
            findings.warning(
                place, kReflectances,
                "diffuse reflectance and emissivity of the class add up to " + shortestText(c.rho_d + c.epsilon) +
                    ", more than 1");
        if (c.b != 1.0F && std::abs(c.b - 1.0F) < kNearOne)
            findings.warning(
                place, kReflectances,
                "b is " + shortestText(c.b) +
                    ": so near to 1 the normalisation is inexact, at 0.99999 it is off by half");
    }
}

void checkFormFactorValues(const SubfacetFile& file, FindingList& findings) {
    const auto warn = [&](std::size_t facet, const std::string& what, float value) {
        findings.warning(
            {}, kFormFactors,
            what + " of facet " + std::to_string(facet + 1) + " is " + shortestText(value) + ", more than 1");
    };
    for (std::size_t facet = 0; facet < file.facetCount(); ++facet) {
        float sum = 0.0F;
        float greatest = 0.0F;
        for (const SubfacetFile::Visible& visible : file.visibleFrom(facet)) {
            sum += visible.formFactor;
            greatest = std::max(greatest, visible.formFactor);
        }
        if (isAboveOne(file.earthFormFactor(facet)))
            warn(facet, "the form factor to the earth", file.earthFormFactor(facet));
        if (isAboveOne(file.skyFormFactor(facet)))
            warn(facet, "the form factor to the sky", file.skyFormFactor(facet));
        if (isAboveOne(greatest))
            warn(facet, "the greatest form factor to another facet", greatest);
        else if (isAboveOne(sum))
            warn(facet, "the sum of the form factors to other facets", sum);
    }
}

void checkNotNegative(std::span<const float> values, const char* thing, const char* what, FindingList& findings) {
    const auto isNegative = [](float value) {
        return value < 0.0F && std::isfinite(value);
    };
    const auto first = std::ranges::find_if(values, isNegative);
    if (first == values.end())
        return;
    const auto count = std::count_if(first, values.end(), isNegative);
    findings.warning(
        {}, "negative values",
        std::to_string(count) + " " + what + (count == 1 ? " is" : "s are") + " negative, the first that of " + thing +
            " " + std::to_string(first - values.begin() + 1));
}
} // namespace sorvane
