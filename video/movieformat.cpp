// The containers that ask for more than a size, a rate and a bit rate.
#include "movieformat.h"

#include <algorithm>
#include <iterator>
#include <string_view>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

namespace sorvane {
namespace {
constexpr MovieFormat kFormats[] = {
    // With its index in front a movie starts to play before all of it is there.
    {"mp4", "", "movflags=+faststart"},
    {"mov", "", "movflags=+faststart"},
    {"matroska", "", ""},
    // The encoder's best takes seconds for a picture; this keeps up with a recording.
    {"webm", "deadline=realtime:cpu-used=6", ""},
};
} // namespace

const MovieFormat* movieFormatOf(const AVOutputFormat& container) {
    const auto found = std::ranges::find_if(
        kFormats, [&](const MovieFormat& format) { return std::string_view(format.container) == container.name; });
    return found == std::end(kFormats) ? nullptr : found;
}

CodingOptions::CodingOptions(const char* text) {
    av_dict_parse_string(&options_, text, "=", ":", 0);
}

CodingOptions::~CodingOptions() {
    av_dict_free(&options_);
}
} // namespace sorvane
