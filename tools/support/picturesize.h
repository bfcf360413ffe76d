// Sizes of pictures and movies, as the command line writes them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <QSize>

#include "problem.h"

namespace sorvane {
// "640x480"; nothing for what is no such text, and for sides below 1.
std::optional<QSize> pictureSizeOf(std::string_view text);
std::string sizeText(const QSize& size);

// Why no movie can have the size; nothing when one can.
std::optional<sorvane::Problem> movieSizeProblem(const QSize& size);
} // namespace sorvane
