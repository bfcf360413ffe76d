// The files of a body.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "body.h"
#include "numbertext.h"

namespace sorvane {
namespace {
constexpr int kMetreDecimals = 5;

// Parameters of the Sandford-Robertson model. Diffuse reflectance and emissivity stay together below what the
// directional parameter leaves, so that something is reflected specularly.
struct Reflectance {
    const char* name;
    double diffuse;
    double emissivity;
    double directional;
    double lobeWidth;
};
constexpr std::array<Reflectance, kMaterials> kReflectances = {{
    {"paint", 0.10, 0.78, 0.15, 0.30},
    {"metal", 0.10, 0.45, 0.00, 0.25},
    {"canopy", 0.02, 0.82, 0.10, 0.12},
    {"nozzle", 0.08, 0.86, 0.00, 0.50},
    {"radome", 0.14, 0.76, 0.10, 0.40},
    {"duct", 0.04, 0.92, 0.00, 0.60},
}};

const Reflectance& reflectanceOf(const MeshFacet& facet) {
    return kReflectances[static_cast<std::size_t>(facet.part.material)];
}

// Planck's law integrated from 3 to 5 micrometres by Simpson's rule, W/cm²/sr.
double blackbodyRadiance(double kelvin) {
    constexpr double kFirst = 1.191042e4;  // W µm⁴ per cm² and sr
    constexpr double kSecond = 1.438777e4; // µm K
    constexpr int kSteps = 32;
    constexpr double kStep = 2.0 / kSteps; // micrometres
    double sum = 0.0;
    for (int i = 0; i <= kSteps; ++i) {
        const double wavelength = 3.0 + i * kStep;
        const double weight = i == 0 || i == kSteps ? 1.0 : (i % 2 == 1 ? 4.0 : 2.0);
        sum += weight * kFirst / (std::pow(wavelength, 5) * std::expm1(kSecond / (wavelength * kelvin)));
    }
    return sum * kStep / 3.0;
}

struct Vertex {
    std::size_t point;
    Vec3d normal;
};

// The points of a mesh once for each different normal.
struct Vertices {
    std::vector<Vertex> vertices;
    std::vector<std::array<std::size_t, 3>> facets; // corners

    explicit Vertices(const Mesh& mesh) : facets(mesh.facets.size()) {
        constexpr double kSameNormal = 1.0 - 1e-9;
        const auto normals = cornerNormals(mesh);
        std::vector<std::vector<std::size_t>> verticesAt(mesh.points.size());
        for (std::size_t i = 0; i < facets.size(); ++i)
            for (std::size_t corner = 0; corner < 3; ++corner) {
                const std::size_t point = mesh.facets[i].corners[corner];
                std::vector<std::size_t>& known = verticesAt[point];
                const auto same = std::find_if(known.begin(), known.end(), [&](std::size_t vertex) {
                    return dot(vertices[vertex].normal, normals[i][corner]) > kSameNormal;
                });
                facets[i][corner] = same != known.end() ? *same : vertices.size();
                if (same == known.end()) {
                    known.push_back(vertices.size());
                    vertices.push_back({point, normals[i][corner]});
                }
            }
    }
};

void appendPoint(std::string& text, const Vec3d& point) {
    for (const double value : {point.x, point.y, point.z}) {
        appendFixed(text, value, kMetreDecimals);
        text += ' ';
    }
}

void appendBox(std::string& text, const std::vector<Vec3d>& points) {
    const char* separator = "";
    for (double Vec3d::*const value : {&Vec3d::x, &Vec3d::y, &Vec3d::z}) {
        const auto [least, greatest] = std::minmax_element(
            points.begin(), points.end(), [value](auto& a, auto& b) { return a.*value < b.*value; });
        for (const Vec3d* const point : {&*least, &*greatest}) {
            text += separator;
            appendFixed(text, point->*value, kMetreDecimals);
            separator = " ";
        }
    }
    text += '\n';
}

// 32 bits, low byte first.
void appendWord(std::string& bytes, std::uint32_t word) {
    for (int i = 0; i < 4; ++i, word >>= 8U)
        bytes += static_cast<char>(word & 0xFFU);
}
void appendWords(std::string& bytes, const std::vector<float>& values) {
    for (const float value : values)
        appendWord(bytes, std::bit_cast<std::uint32_t>(value));
}
} // namespace

std::string geometryText(const Body& body) {
    const Vertices vertices(body.mesh);
    std::string text = std::to_string(vertices.vertices.size()) + ' ' + std::to_string(body.mesh.facets.size()) + '\n';
    appendBox(text, body.mesh.points);
    for (const Vertex& vertex : vertices.vertices) {
        appendPoint(text, body.mesh.points[vertex.point]);
        appendPoint(text, vertex.normal);
        text += "v\n";
    }
    for (std::size_t i = 0; i < body.mesh.facets.size(); ++i) {
        text += std::to_string(i + 1);
        for (const std::size_t vertex : vertices.facets[i])
            text += ' ' + std::to_string(vertex + 1);
        text.append(" ").append(reflectanceOf(body.mesh.facets[i]).name) += '\n';
    }
    return text;
}

std::string reflectanceText(const Body& body) {
    std::string text = "BRDF\n" + std::to_string(kReflectances.size()) + '\n';
    for (const Reflectance& reflectance : kReflectances) {
        for (const double value :
             {reflectance.diffuse, reflectance.emissivity, reflectance.directional, reflectance.lobeWidth}) {
            appendFixed(text, value);
            text += ' ';
        }
        text.append("0 ").append(reflectance.name) += '\n';
    }
    const std::vector<MeshFacet>& facets = body.mesh.facets;
    std::size_t end = 0;
    for (std::size_t start = 0; start < facets.size(); start = end) {
        const Material material = facets[start].part.material;
        for (end = start; end < facets.size() && facets[end].part.material == material;)
            ++end;
        text += std::to_string(start + 1) + ' ' + std::to_string(end) + ' ' +
                std::to_string(static_cast<int>(material) + 1) + ' ' + reflectanceOf(facets[start]).name + '\n';
    }
    return text;
}

std::string radianceBytes(const Body& body, double gain) {
    constexpr double kUnit = 1e6; // the file's units in one W/cm²/sr
    constexpr std::size_t kHeaderWords = 19;
    constexpr std::size_t kCountWord = 10;
    std::vector<float> radiances;
    std::vector<float> emittances;
    for (const MeshFacet& facet : body.mesh.facets) {
        const double forwards = std::max(0.0, unit(areaVector(body.mesh, facet)).x);
        const double kelvin = facet.part.temperature + body.stagnationHeating * forwards * forwards;
        const double emittance = kUnit * gain * blackbodyRadiance(kelvin);
        radiances.push_back(static_cast<float>(reflectanceOf(facet).emissivity * emittance));
        emittances.push_back(static_cast<float>(emittance));
    }
    std::string bytes;
    for (std::size_t word = 0; word < kHeaderWords; ++word)
        appendWord(bytes, word == kCountWord ? static_cast<std::uint32_t>(radiances.size()) : 0);
    appendWords(bytes, radiances);
    appendWord(bytes, 0);
    appendWord(bytes, 0);
    appendWords(bytes, emittances);
    return bytes;
}

std::string rotorText(const Body& body) {
    std::string text = "# first facet, last facet, hub x y z, axis x y z, turns per second\n";
    for (const SpinningPart& part : body.spinningParts) {
        text += std::to_string(part.firstFacet + 1) + ' ' + std::to_string(part.firstFacet + part.facetCount) + ' ';
        appendPoint(text, part.hub);
        appendPoint(text, part.axis);
        appendFixed(text, part.rate);
        text += '\n';
    }
    return text;
}
} // namespace sorvane
