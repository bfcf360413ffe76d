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
thread_local MessageRecord* recording = nullptr;
} // namespace

void printLine(const PrintedLine& line) {
    MessageRecord::note(line);
    if (MessageCollection::collect(line.message))
        return;
    const std::string text = line.head + line.message.text + '\n';
    std::FILE* const stream = line.message.isError ? stderr : stdout;
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

void printMessage(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    printLine({{false, formattedText(format, arguments)}, {}});
    va_end(arguments);
}

void printErrorMessage(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    printLine({{true, formattedText(format, arguments)}, {}});
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

bool MessageCollection::collect(const Message& message) {
    if (collecting == nullptr)
        return false;
    collecting->messages_.push_back(message);
    return true;
}

MessageRecord::MessageRecord() : outer_(std::exchange(recording, this)) {}

MessageRecord::~MessageRecord() {
    recording = outer_;
}

std::vector<PrintedLine> MessageRecord::take() {
    return std::exchange(lines_, {});
}

void MessageRecord::note(const PrintedLine& line) {
    for (MessageRecord* record = recording; record != nullptr; record = record->outer_)
        record->lines_.push_back(line);
}
} // namespace sorvane
