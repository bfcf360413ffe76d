// The fields of a trajectory's header under the names by which records show them.
#pragma once

#include <variant>

#include "trajectoryreader.h"

namespace sorvane {
struct TrajectoryHeaderField {
    using Text = QString TrajectoryFileHeader::*;
    using Triple = float (TrajectoryFileHeader::*)[3];
    using Integer = int TrajectoryFileHeader::*;
    using Number = float TrajectoryFileHeader::*;

    const char* name;
    // Where two headers are compared. Two fields are called otherwise there: deliberate, programs read both records.
    const char* comparedName;
    std::variant<Text, Triple, Integer, Number> member;
};

// In the order in which records show them.
inline constexpr TrajectoryHeaderField kTrajectoryHeaderFields[] = {
    {"terrain_topography", "terrain_topography", &TrajectoryFileHeader::terrainTopoPath},
    {"terrain_radiance", "terrain_radiance", &TrajectoryFileHeader::terrainRadPath},
    {"target_signature", "target_signature", &TrajectoryFileHeader::targetSignaturePath},
    {"terrain_triple_a", "terrain_triple_a", &TrajectoryFileHeader::terrainTripleA},
    {"terrain_triple_b", "terrain_triple_b", &TrajectoryFileHeader::terrainTripleB},
    {"target_geometry", "target_geometry", &TrajectoryFileHeader::targetGeometryPath},
    {"target_reflectance", "target_brdf", &TrajectoryFileHeader::targetBrdfPath},
    {"text_9", "text_9", &TrajectoryFileHeader::text9},
    {"integer_10", "int_10", &TrajectoryFileHeader::int10},
    {"threat_id", "threat_id", &TrajectoryFileHeader::threatId},
    {"field_of_view_deg", "field_of_view_deg", &TrajectoryFileHeader::fieldOfView},
};
} // namespace sorvane
