// Where a sub-command writes, and the standard streams of the process as such.
#pragma once

#include <memory>
#include <ostream>

namespace sorvane {
// What a sub-command gets. Tests hand it string streams.
struct Streams {
    std::ostream& out; // results, nothing else
    std::ostream& err; // messages and progress
    bool isErrTerminal = false;
};

// Keeps the process's standard output for results: from construction on, what the libraries print to standard output
// goes to standard error, and only streams().out reaches the real one. Ends with the old state.
class StandardStreams {
public:
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;

    Streams streams();

private:
    struct Output;
    std::unique_ptr<Output> output_;
};
} // namespace sorvane
