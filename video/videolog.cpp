// The lines that the movie writer prints.
#include "videolog.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>

using namespace sorvane;

extern "C" {
#include <libavutil/log.h>
}

namespace {
std::atomic<int> quietLogs = 0;
}

namespace sorvane {
void printVideoLine(const char* format, ...) {
    if (quietLogs > 0)
        return;
    std::va_list values;
    va_start(values, format);
    std::vprintf(format, values);
    va_end(values);
    std::putchar('\n');
    std::fflush(stdout); // a log that is followed, or whose process dies, shows how far it came
}
} // namespace sorvane

QuietVideoLog::QuietVideoLog() : levelBefore_(av_log_get_level()) {
    ++quietLogs;
    av_log_set_level(AV_LOG_QUIET);
}

QuietVideoLog::~QuietVideoLog() {
    av_log_set_level(levelBefore_);
    --quietLogs;
}
