// The lines that the movie writer prints.
#pragma once

namespace sorvane {
// Writes one line, without its closing newline in `format`, to standard output.
[[gnu::format(printf, 1, 2)]] void printVideoLine(const char* format, ...);

// While one lives, neither the movie writer nor the FFmpeg libraries print anything, on whatever thread.
class QuietVideoLog {
public:
    QuietVideoLog();
    ~QuietVideoLog();
    QuietVideoLog(const QuietVideoLog&) = delete;
    QuietVideoLog& operator=(const QuietVideoLog&) = delete;

private:
    int levelBefore_;
};
} // namespace sorvane
