// How often the replaced GL entry points have been called.
#pragma once

#include <cstdint>

extern std::uint64_t glCalls;

// Makes GLEW's buffer entry points counters as well, as loading them from a context would fill them.
void installCountedGl();
