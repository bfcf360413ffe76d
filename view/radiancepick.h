// What shows at a place of a picture: a facet, a flare, ground or the sky.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "camera.h"
#include "pixelplane.h"
#include "scene.h"

namespace sorvane {
struct Picked {
    enum class Thing { Sky, Target, Threat, Flare, Ground };

    Thing thing = Thing::Sky;
    EngagementId engagement{}; // whose body, flare or ground
    int number = 0;            // of the facet, from 1 in file order, or of the flare, as the file has it
    // Of the facet, from 0 in the order of the reflectance file, or of the ground; nothing where none is known.
    std::optional<int> surfaceClass{};
    float ownRadiance = 0.0F; // of the facet, W/cm²/sr
};

// From the eye, in world coordinates.
struct ViewRay {
    std::array<double, 3> eye{};
    std::array<double, 3> direction{}; // one unit along the line of sight long

    std::array<double, 3> at(double depth) const {
        return {eye[0] + depth * direction[0], eye[1] + depth * direction[1], eye[2] + depth * direction[2]};
    }
};
ViewRay rayThrough(const LookAt& lookAt, const Tangents& at);

// Looks along rays for what a frame draws there. Rotors count as they stand at rest, in which
// engagements' bodies are drawn.
class RadiancePick {
public:
    // Hidden engagements don't count.
    Picked along(
        const ViewRay& ray, const std::vector<SceneEngagement>& engagements, ViewMode mode,
        const SceneOptions& options);

    // The nearest thing so far.
    struct Nearest;

private:
    void lookForGround(
        const ViewRay& ray, const SubTerrain& tile, float firstThreatHeight, EngagementId engagement, Nearest& nearest);
    // The classes of a tile's posts; null where there are none.
    const unsigned char* classesOf(const SubTerrain& tile);

    struct ClassRaster {
        std::unique_ptr<unsigned char[]> classes; // null where the file has none for the tile
        std::filesystem::file_time_type written;
    };
    std::map<std::string, ClassRaster> classes_; // by path
};
} // namespace sorvane
