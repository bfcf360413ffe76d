// A sample of a spectral library in ASTER format.
#pragma once

#include <string>

#include "groundclass.h"

namespace sorvane {
// 26 header lines, then wavelengths in micrometres, from 2 to 14, with reflectances in percent whose mean from 3 to 5
// is the cover's. Samples of rock and soil run downwards, as laboratories often measure.
std::string spectrumText(const GroundCover& cover);
} // namespace sorvane
