// Form factors between the facets of a body, by ray casting.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "mesh.h"

namespace sorvane {
// What share of the radiation that leaves a facet, as diffusely as Lambert's law has it, goes where.
struct FormFactors {
    struct Visible {
        std::size_t facet; // counted from 0
        double factor;
    };
    double shown = 0.0; // the part of the facet that lies outside the body's other parts
    double earth = 0.0;
    double sky = 0.0;
    std::vector<Visible> visible; // ascending, none of 0
};

// For each facet, from `rays` rays that leave it all over its outer side. What meets no facet goes to the sky when it
// points upwards, else to the earth: the body is level and far from the ground. What meets the back of a facet left a
// place inside another part of the body and doesn't count: the factors are those of the part of the facet that shows,
// all 0 when none does, and add up to 1. Two facets exchange the same whichever way: with the area A that shows
// A_k F_kj = A_j F_jk, but for what adding up to 1 takes. The same mesh always gets the same factors.
std::vector<FormFactors> formFactors(const Mesh& mesh, int rays);

// The form-factor file (".sff-txt").
std::string formFactorText(const std::vector<FormFactors>& factors);
} // namespace sorvane
