// Loads the GL entry points beyond OpenGL 1.1.
#pragma once

// Loads the entry points of the current GL context. Returns whether they are there.
bool loadGlEntryPoints();
