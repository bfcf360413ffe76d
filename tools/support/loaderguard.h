// Runs a loader so that neither its messages nor its faults reach anyone but the caller.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "messages.h"

namespace sorvane {
struct LoaderOutcome {
    std::vector<Message> messages; // what it would have printed, in order
    bool hasEndedProcess = false;  // it would have ended the process; the last message says why
    std::string exceptionText;     // of an exception that it threw; empty without one

    bool hasReturned() const { return !hasEndedProcess && exceptionText.empty(); }
};

// Runs `load` and collects its messages. The end of the process that a fatal fault asks for only ends `load`. May be
// called from several threads at once, and within itself.
LoaderOutcome runLoader(const std::function<void()>& load);
} // namespace sorvane
