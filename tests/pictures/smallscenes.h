// The data root of the small scenes: bodies of a few plates, each of one grey, without sun, sky and earth.
#pragma once

#include <filesystem>

namespace sorvane {
// Writes the stock target and threat, made of the plates in `scenes`/target.plates and threat.plates, an atmosphere
// that shines nowhere, and the shaders into the folder `root`.
void writeSmallSceneData(const std::filesystem::path& scenes, const std::filesystem::path& root);
} // namespace sorvane
