// Where the frames of a rendering go.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <QImage>

#include "problem.h"

namespace sorvane {
// Takes frames on the thread that draws them, writes them on threads of its own, and keeps as many waiting as keep both
// busy. No file has its final name before it is whole; what is not finished is removed with the object.
class FrameOutput {
public:
    virtual ~FrameOutput() = default;

    // Takes the frames in order, from number 0; waits while enough of them are waiting. False when nothing more can be
    // written.
    virtual bool add(std::int64_t number, QImage picture) = 0;

    // Waits until all is written and under its final name; false when that failed.
    virtual bool finish() = 0;

    // What went wrong, to be asked for after add or finish said so.
    virtual std::optional<sorvane::Problem> problem() const = 0;
};
} // namespace sorvane
