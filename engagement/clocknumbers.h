// The numbers of the playback clock, which the window, the read-outs and the companion command share.
#pragma once

namespace sorvane {
constexpr int kTickMilliseconds = 33;
constexpr double kTickSeconds = 0.033;          // what a tick adds to the time at speed 1.0
constexpr double kTimeBoxEnd = 29.999;          // seconds; the box of the time goes from 0 to here
constexpr double kEndOfTime = 1.0e9;            // seconds; later than any sample
constexpr double kSecondsPerSliderStep = 0.001; // the slider counts whole milliseconds
constexpr double kSliderStepsPerSecond = 1000.0;
} // namespace sorvane
