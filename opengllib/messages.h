// Where the library's messages go: to the standard streams, or to whoever collects them.
#pragma once

#include <string>
#include <vector>

namespace sorvane {
// Write one line, without its closing newline in `format`, to standard output or to standard error. The first serves
// the terrain code and others whose messages belong on standard output.
[[gnu::format(printf, 1, 2)]] void printMessage(const char* format, ...);
[[gnu::format(printf, 1, 2)]] void printErrorMessage(const char* format, ...);

// Writes lines to standard error where the environment variable SORVANE_DEBUG is set: what only someone who looks into
// a fault wants to read.
void printDebugText(const char* what, const std::string& text);

struct Message {
    bool isError = false; // would have gone to standard error
    std::string text;     // without a newline; of printError's lines only what follows function, file and line
};

// A line as it was printed, or would have been if nobody had collected it.
struct PrintedLine {
    Message message;
    std::string head; // what printError puts before the text
};

// Prints a line, or hands it to whoever collects.
void printLine(const PrintedLine& line);

// While one lives, this thread's messages are noted in it, too, wherever they go, to be told once more later. They
// nest, and each notes.
class MessageRecord {
public:
    MessageRecord();
    ~MessageRecord();
    MessageRecord(const MessageRecord&) = delete;
    MessageRecord& operator=(const MessageRecord&) = delete;

    std::vector<PrintedLine> take();

    // Notes a line in all of this thread's records.
    static void note(const PrintedLine& line);

private:
    std::vector<PrintedLine> lines_;
    MessageRecord* outer_;
};

// While one lives, this thread's messages are kept in it and nothing is printed. They nest: the latest one collects.
class MessageCollection {
public:
    MessageCollection();
    ~MessageCollection();
    MessageCollection(const MessageCollection&) = delete;
    MessageCollection& operator=(const MessageCollection&) = delete;

    const std::vector<Message>& messages() const { return messages_; }
    std::vector<Message> take();

    // Hands a message to this thread's collection; false when nobody collects and the caller has to print it.
    static bool collect(const Message& message);

private:
    std::vector<Message> messages_;
    MessageCollection* outer_;
};
} // namespace sorvane
