// Checks numbers of models that the viewer takes as they are though they can't be meant.
#pragma once

#include <span>

#include "brdffile.h"
#include "finding.h"
#include "subfacetfile.h"

namespace sorvane {
// Reflectances above 1, and normalisations that are off.
void checkClassValues(const BrdfFile& brdf, FindingList& findings);
// Form factors and sums of them above 1.
void checkFormFactorValues(const SubfacetFile& file, FindingList& findings);
// `values` are one for each `thing` ("facet"), counted from 1; `what` is "radiance".
void checkNotNegative(std::span<const float> values, const char* thing, const char* what, FindingList& findings);
} // namespace sorvane
