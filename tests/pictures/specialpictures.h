// The reference pictures that no options of the command make.
#pragma once

#include <filesystem>

#include <QImage>

namespace sorvane {
// Two engagements of the demonstration of which the second one, weave, is hidden.
QImage hiddenEngagementPicture(const std::filesystem::path& demonstration);

// The demonstration's helicopter with its rotors turned to 0.02 s, level at (0, 0, -100).
QImage rotorPicture(const std::filesystem::path& demonstration);
} // namespace sorvane
