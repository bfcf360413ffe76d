// Counts the frames of a movie file.
#pragma once

#include <QString>
#include <cstdint>

namespace sorvane {
// The frames that lie whole in a movie file, which may end anywhere; 0 for one that no player could open. Reads the
// file once, without decoding.
std::int64_t countMovieFrames(const QString& fileName);
} // namespace sorvane
