// Ends the program in order when the system asks for it.
#pragma once

#include <QObject>
#include <array>
#include <csignal>

namespace sorvane {
// While one lives, SIGINT, SIGTERM and SIGHUP end the application's event loop instead of the process, so that a movie
// still gets its end. Signals that the process was started to ignore stay ignored. One at a time, after the
// application.
class EndSignals : public QObject {
public:
    EndSignals();
    ~EndSignals() override;

    // Whether one has come, which an event loop that is to run later would not hear of.
    static bool hasCome();
    // Ends the process by the signal that has come, as it would have without this; returns where none has.
    static void endBySignal();

private:
    static constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};
    std::array<struct sigaction, kSignals.size()> before_{};
};
} // namespace sorvane
