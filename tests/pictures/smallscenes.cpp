// The data root of the small scenes.
#include "smallscenes.h"

#include <array>
#include <bit>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "atmosphere.h"
#include "datatree.h"
#include "shadersources.h"
#include "vec3.h"

namespace sorvane {
namespace {
// What the viewer multiplies radiances with to get greys, where 1 is white; files have them in 1e-6 W/cm²/sr.
constexpr double kGreysPerRadiance = 3000.0;
constexpr double kFileUnit = 1e6;

struct Plate {
    std::string name;
    std::array<Vec3d, 4> corners;
    double grey = 0.0; // 0 to 255; of the other side, half of it
};

std::vector<Plate> readPlates(const std::filesystem::path& path) {
    std::vector<Plate> plates;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#'))
            continue;
        std::istringstream words(line);
        Plate plate;
        words >> plate.name >> plate.grey;
        for (Vec3d& corner : plate.corners)
            words >> corner.x >> corner.y >> corner.z;
        if (words)
            plates.push_back(plate);
    }
    return plates;
}

void write(const std::filesystem::path& path, const std::string& contents) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
}

// Four triangles a plate: two of each side.
std::string geometry(const std::vector<Plate>& plates) {
    std::ostringstream vertices;
    std::ostringstream facets;
    std::size_t vertexCount = 0;
    std::size_t facetCount = 0;
    for (const Plate& plate : plates) {
        const Vec3d normal = unit(cross(plate.corners[1] - plate.corners[0], plate.corners[2] - plate.corners[0]));
        for (const double side : {1.0, -1.0}) {
            for (const Vec3d& corner : plate.corners)
                vertices << corner.x << ' ' << corner.y << ' ' << corner.z << ' ' << side * normal.x << ' '
                         << side * normal.y << ' ' << side * normal.z << " v\n";
            const std::array<int, 6> order = side > 0.0 ? std::array{1, 2, 3, 1, 3, 4} : std::array{1, 3, 2, 1, 4, 3};
            for (std::size_t i = 0; i < order.size(); i += 3)
                facets << ++facetCount << ' ' << vertexCount + static_cast<std::size_t>(order.at(i)) << ' '
                       << vertexCount + static_cast<std::size_t>(order.at(i + 1)) << ' '
                       << vertexCount + static_cast<std::size_t>(order.at(i + 2)) << " black\n";
            vertexCount += plate.corners.size();
        }
    }
    return std::to_string(vertexCount) + ' ' + std::to_string(facetCount) + "\n-20 20 -20 20 -20 20\n" +
           vertices.str() + facets.str();
}

void appendWord(std::string& bytes, std::uint32_t word) {
    for (int i = 0; i < 4; ++i, word >>= 8U)
        bytes += static_cast<char>(word & 0xFFU);
}

std::string radiances(const std::vector<Plate>& plates) {
    constexpr std::size_t kHeaderWords = 19;
    constexpr std::size_t kCountWord = 10;
    const std::size_t facets = 4 * plates.size();
    std::string bytes;
    for (std::size_t word = 0; word < kHeaderWords; ++word)
        appendWord(bytes, word == kCountWord ? static_cast<std::uint32_t>(facets) : 0);
    for (const bool isEmittance : {false, true}) {
        for (std::size_t word = 0; isEmittance && word < 2; ++word)
            appendWord(bytes, 0);
        for (std::size_t facet = 0; facet < facets; ++facet) {
            const double grey = facet % 4 < 2 ? plates[facet / 4].grey : plates[facet / 4].grey / 2.0;
            appendWord(
                bytes, std::bit_cast<std::uint32_t>(static_cast<float>(grey / 255.0 / kGreysPerRadiance * kFileUnit)));
        }
    }
    return bytes;
}

// A class that reflects nothing, and for plates named "matt" one that reflects nine tenths, to all sides alike.
std::string reflectances(const std::vector<Plate>& plates) {
    std::string text = "BRDF\n2\n0 1 0 0 0 black\n0.9 0.1 0 0 2 matt\n";
    for (std::size_t i = 0; i < plates.size(); ++i)
        text += std::to_string(4 * i + 1) + ' ' + std::to_string(4 * i + 4) +
                (plates[i].name == "matt" ? " 2 matt\n" : " 1 black\n");
    return text;
}
} // namespace

void writeSmallSceneData(const std::filesystem::path& scenes, const std::filesystem::path& root) {
    const std::vector<Plate> target = readPlates(scenes / "target.plates");
    write(root / kTargetGeometry, geometry(target));
    write(root / kTargetReflectance, reflectances(target));
    write(root / kTargetSignature, radiances(target));
    write(root / kAtmosphere, atmosphereText({}));
    const std::vector<Plate> threat = readPlates(scenes / "threat.plates");
    write(root / "tgt0450/tgt0450.vnl", geometry(threat));
    write(root / "tgt0450/tgt0450_b0001.brdf", reflectances(threat));
    write(root / "tgt0450/tgt0450_b0001.rad", radiances(threat));
    std::filesystem::copy_file(scenes / "threat.sff-txt", root / kMissileFormFactors);
    for (const DemonstrationFile& file : shaderSources())
        write(root / file.name, file.contents);
}
} // namespace sorvane
