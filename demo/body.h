// The bodies of the demonstration: what they are, and their files.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "mesh.h"

namespace sorvane {
// Facets that spin.
struct SpinningPart {
    std::size_t firstFacet = 0; // counted from 0
    std::size_t facetCount = 0;
    Vec3d hub;
    Vec3d axis;
    double rate = 0.0; // turns per second
};

struct Body {
    Mesh mesh;
    double stagnationHeating = 0.0; // kelvin by which facets that face forwards are hotter
    std::vector<SpinningPart> spinningParts;
};

Body jet();
Body missile();
Body bullet();
Body helicopter();

// The geometry file (".vnl").
std::string geometryText(const Body& body);
// The reflectance file (".brdf").
std::string reflectanceText(const Body& body);
// The radiance file (".rad"). `gain` is how strongly the band shows what the facets emit: 1 for the mid-wave infrared.
std::string radianceBytes(const Body& body, double gain);
// The rotor file.
std::string rotorText(const Body& body);
} // namespace sorvane
