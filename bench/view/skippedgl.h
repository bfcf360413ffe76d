// OpenGL that can be left out, so that what remains of a frame's time is the project's own.
#pragma once

#include <cstdint>

// From now on calls that draw or set state are counted instead of made, or made again. Gives the number of calls since
// the last time. Needs GLEW's entry points.
std::uint64_t skipGl(bool isSkipped);
