// OpenGL, GLEW and GLU in the order in which their headers must come: GLEW before any other GL header, Qt's included.
#pragma once

#include <GL/glew.h>

#include <GL/glu.h>
