// Describes a sample of a spectral library, and what the classes of a terrain set reflect.
#pragma once

#include "inforecord.h"
#include "terrainreflectance.h"

namespace sorvane {
// In the unit of the samples' wavelengths.
struct WavelengthBand {
    float lower = 0.0F;
    float upper = 0.0F;
};

// "3-5"; nothing when it is no band.
std::optional<WavelengthBand> parseBand(std::string_view text);

// Its mean is given for a band alone.
std::optional<Problem>
describeSpectrum(const std::string& path, const std::optional<WavelengthBand>& band, InfoRecord& record);

// A row for each class of the table that the set goes by: its reflectance in the set's band.
InfoRecord classReflectances(const ReflectanceFiles& files);
} // namespace sorvane
