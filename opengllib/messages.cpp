// Where the library's messages go: to the standard streams, or to whoever collects them.
#include "messages.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "formattedtext.h"

namespace sorvane {
namespace {
thread_local MessageCollection* collecting = nullptr;

void deliver(bool isError, std::string text) {
    if (MessageCollection::collect(isError, text))
        return;
    text += '\n';
    std::FILE* const stream = isError ? stderr : stdout;
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}
} // namespace

void printMessage(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    deliver(false, formattedText(format, arguments));
    va_end(arguments);
}

void printErrorMessage(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    deliver(true, formattedText(format, arguments));
    va_end(arguments);
}

void printDebugText(const char* what, const std::string& text) {
    const char* const wish = std::getenv("SORVANE_DEBUG");
    if (wish != nullptr && *wish != '\0')
        std::fprintf(stderr, "%s:\n%s\n", what, text.c_str());
}

MessageCollection::MessageCollection() : outer_(std::exchange(collecting, this)) {}

MessageCollection::~MessageCollection() {
    collecting = outer_;
}

std::vector<Message> MessageCollection::take() {
    return std::exchange(messages_, {});
}

bool MessageCollection::collect(bool isError, const std::string& text) {
    if (collecting == nullptr)
        return false;
    collecting->messages_.push_back({isError, text});
    return true;
}
} // namespace sorvane
