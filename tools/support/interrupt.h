// Lets long work end in order when the process is asked to stop.
#pragma once

#include <array>
#include <csignal>

namespace sorvane {
// While one lives, SIGINT, SIGTERM and SIGHUP do not end the process but are remembered, and a file that grows past the
// process's limit is an error of the write. Signals that the process was started to ignore stay ignored. One at a time.
class Interrupt {
public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    // The signal that has asked the process to stop since construction, 0 when none has. Any thread may ask.
    static int requested();

private:
    std::array<struct sigaction, 4> before_{};
};
} // namespace sorvane
