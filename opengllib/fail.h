// How a loader of this library reports a fault: printError with the file and line of the call.
#pragma once

namespace sorvane {
// The function that the error line names, and the place of the call that mentions it. The compiler's builtins rather
// than std::source_location, which clang 14 does not have.
struct FailingFunction {
    // Implicit, so that the name of the function becomes one at the call of fail.
    FailingFunction(
        const char* functionName, const char* callingFile = __builtin_FILE(), unsigned callingLine = __builtin_LINE())
        : name(functionName), file(callingFile), line(callingLine) {}

    const char* name;
    const char* file;
    unsigned line;
};

// Prints one error line through printError; `format` is a printf format without a closing newline. Returns false, which
// is what most loaders give back after it.
[[gnu::format(printf, 2, 3)]] bool fail(FailingFunction function, const char* format, ...);
} // namespace sorvane
