// How radiances become greys.
#pragma once

namespace sorvane {
inline constexpr float kGreysPerRadiance = 3000.0F; // makes visible greys of radiances in W/cm²/sr
} // namespace sorvane
