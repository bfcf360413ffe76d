// The containers that ask for more than a size, a rate and a bit rate.
#pragma once

struct AVDictionary;
struct AVOutputFormat;

namespace sorvane {
// A movie for today's players and browsers. Its codec looks far ahead, so that what it holds back is written at the
// end.
struct MovieFormat {
    const char* container = "";        // the FFmpeg libraries' name
    const char* codecOptions = "";     // as "key=value:key=value"
    const char* containerOptions = ""; // likewise
};

// Null for a container that the plain settings do for.
const MovieFormat* movieFormatOf(const AVOutputFormat& container);

// Options for the FFmpeg libraries, which take out those that they know.
class CodingOptions {
public:
    explicit CodingOptions(const char* text);
    ~CodingOptions();
    CodingOptions(const CodingOptions&) = delete;
    CodingOptions& operator=(const CodingOptions&) = delete;

    AVDictionary** get() { return &options_; }

private:
    AVDictionary* options_ = nullptr;
};
} // namespace sorvane
