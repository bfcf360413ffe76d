// Loads the GL entry points beyond OpenGL 1.1.
#include "glentrypoints.h"

#include "glapi.h"

namespace sorvane {
bool loadGlEntryPoints() {
    const GLenum code = glewInit();
    // GLEW asks GLX for its display and finds none under EGL and Wayland, after it has loaded the entry points.
    return code == GLEW_OK || (code == GLEW_ERROR_NO_GLX_DISPLAY && glGenBuffers != nullptr);
}
} // namespace sorvane
