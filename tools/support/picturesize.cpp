// Sizes of pictures and movies, as the command line writes them.
#include "picturesize.h"

#include <charconv>

#include "moviesettings.h"

namespace sorvane {
namespace {
std::optional<int> sideOf(std::string_view text) {
    int side = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
    const bool isSide = error == std::errc() && end == text.data() + text.size() && side > 0;
    return isSide ? std::optional(side) : std::nullopt;
}
} // namespace

std::optional<QSize> pictureSizeOf(std::string_view text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos)
        return std::nullopt;
    const std::optional<int> width = sideOf(text.substr(0, cross));
    const std::optional<int> height = sideOf(text.substr(cross + 1));
    return width && height ? std::optional(QSize(*width, *height)) : std::nullopt;
}

std::string sizeText(const QSize& size) {
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

std::optional<sorvane::Problem> movieSizeProblem(const QSize& size) {
    const QSize valid(nearestMovieSide(size.width()), nearestMovieSide(size.height()));
    if (size == valid)
        return std::nullopt;
    return "the sides of a movie are multiples of " + std::to_string(QVideoEncoder::kSizeStep) + ": not " +
           sizeText(size) + ", but for example " + sizeText(valid);
}
} // namespace sorvane
