// Runs a loader so that neither its messages nor its faults reach anyone but the caller.
#include "loaderguard.h"

#include <exception>
#include <mutex>

#include <libxml/xmlerror.h>

#include "endprocess.h"

namespace sorvane {
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

void ignoreXmlMessage(void*, const char*, ...) {}

// While one lives, libxml2 prints nothing of what it finds in this thread: the loader says that there was something.
class QuietXml {
public:
    QuietXml() { xmlSetGenericErrorFunc(nullptr, ignoreXmlMessage); }
    ~QuietXml() { xmlSetGenericErrorFunc(context_, function_); }
    QuietXml(const QuietXml&) = delete;
    QuietXml& operator=(const QuietXml&) = delete;

private:
    void* context_ = xmlGenericErrorContext;
    xmlGenericErrorFunc function_ = xmlGenericError;
};

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
    const QuietXml quietXml;
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
} // namespace sorvane
