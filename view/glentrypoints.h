// Loads the GL entry points beyond OpenGL 1.1.
#pragma once

namespace sorvane {
// Loads the entry points of the current GL context. Returns whether they are there.
bool loadGlEntryPoints();
} // namespace sorvane
