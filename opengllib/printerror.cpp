// The one error reporter of the data loaders.
#include "printerror.h"

#include <cstdarg>
#include <cstdio>

void printError(
    const char* file, const char* function, unsigned int line, const char* format, unsigned int argCount, ...) {
    std::fprintf(stderr, "Error in function \"%s\" of file \"%s\" (line #%u): ", function, file, line);
    std::va_list arguments;
    va_start(arguments, argCount);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
    std::fflush(stderr);
}
