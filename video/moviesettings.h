// How the movies of engagements are encoded, whoever makes them.
#pragma once

#include <array>
#include <string_view>

#include "qvideoencoder.h"

namespace sorvane {
constexpr unsigned kMovieBitsPerSecond = 10000000;
constexpr unsigned kMovieFramesPerKeyFrame = 20;
constexpr unsigned kMovieFramesPerSecond = 30;

// The endings of the movies that are made on demand.
constexpr std::array<std::string_view, 4> kMovieEndings = {"avi", "mpg", "mp4", "webm"};

// The side nearest to `side` pixels that a movie can have.
constexpr int nearestMovieSide(int side) {
    constexpr int kStep = QVideoEncoder::kSizeStep;
    const int nearest = side / kStep + (side % kStep >= kStep / 2 ? 1 : 0);
    return (nearest < 1 ? 1 : nearest) * kStep;
}
} // namespace sorvane
