// Describes any file that the viewer reads.
#pragma once

#include "inforecord.h"
#include "spectruminfo.h"

namespace sorvane {
struct InfoChoices {
    LengthUnit unit = LengthUnit::Unstated;
    std::optional<WavelengthBand> band; // of the means of spectra
};

// The description of the file at `path`, or of the trajectory on standard input when it is "-". Members "path" and
// "kind" are always there; "error" says what is wrong with the file, and "messages" holds the loaders' own lines.
InfoRecord describeFile(const std::string& path, const InfoChoices& choices);
} // namespace sorvane
