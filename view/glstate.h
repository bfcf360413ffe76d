// Scoped pushes of GL state, so that pushes and pops balance on every path.
#pragma once

#include "glapi.h"

namespace sorvane {
class PushedMatrix {
public:
    PushedMatrix() { glPushMatrix(); }
    ~PushedMatrix() { glPopMatrix(); }
    PushedMatrix(const PushedMatrix&) = delete;
    PushedMatrix& operator=(const PushedMatrix&) = delete;
};

class PushedAttributes {
public:
    explicit PushedAttributes(GLbitfield mask) { glPushAttrib(mask); }
    ~PushedAttributes() { glPopAttrib(); }
    PushedAttributes(const PushedAttributes&) = delete;
    PushedAttributes& operator=(const PushedAttributes&) = delete;
};
} // namespace sorvane
