// Writes pictures into files.
#pragma once

#include <optional>
#include <string>

#include <QByteArray>
#include <QImage>

#include "problem.h"

namespace sorvane {
// What follows the last dot of the path's last component, in lower case: the name of a format. Empty without one.
QByteArray extensionOf(const std::string& path);

// Writes the picture in the format of the path's extension; the file has its name only once it is whole. Answers what
// went wrong, with the path before it.
std::optional<sorvane::Problem> writePicture(const QImage& picture, const std::string& path);
} // namespace sorvane
