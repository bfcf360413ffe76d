// The one way in which the library ends the process.
#include "endprocess.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace sorvane {
namespace {
EndProcessHandler currentHandler = nullptr;
}

void endProcess() {
    std::cout.flush();
    std::fflush(nullptr);
    if (currentHandler != nullptr)
        currentHandler();
    std::_Exit(EXIT_FAILURE);
}

EndProcessHandler setEndProcessHandler(EndProcessHandler handler) {
    return std::exchange(currentHandler, handler);
}
} // namespace sorvane
