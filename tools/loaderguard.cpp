// Runs a loader so that neither its messages nor its faults reach anyone but the caller.
#include "loaderguard.h"

#include <exception>
#include <mutex>

#include "endprocess.h"

namespace {
struct ProcessEnd {};

thread_local int runningLoaders = 0;

// Whoever asks for the end outside of a loader gets it: the handler returns then.
void leaveLoader() {
    if (runningLoaders > 0)
        throw ProcessEnd();
}

// Installed once and for good: threads that run loaders side by side then can't take it from each other.
void installHandler() {
    static std::once_flag once;
    std::call_once(once, [] { setEndProcessHandler(leaveLoader); });
}

struct RunningLoader {
    RunningLoader() { ++runningLoaders; }
    ~RunningLoader() { --runningLoaders; }
    RunningLoader(const RunningLoader&) = delete;
    RunningLoader& operator=(const RunningLoader&) = delete;
};
} // namespace

LoaderOutcome runLoader(const std::function<void()>& load) {
    installHandler();
    LoaderOutcome outcome;
    MessageCollection collection;
    try {
        const RunningLoader running;
        load();
    } catch (const ProcessEnd&) {
        outcome.hasEndedProcess = true;
    } catch (const std::exception& fault) {
        outcome.exceptionText = fault.what();
    }
    outcome.messages = collection.take();
    return outcome;
}
