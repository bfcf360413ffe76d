// The one error reporter of the data loaders.
#include "printerror.h"

#include <cstdarg>
#include <cstdio>

#include "formattedtext.h"
#include "messages.h"

using namespace sorvane;

void printError(
    const char* file, const char* function, unsigned int line, const char* format, unsigned int argCount, ...) {
    std::va_list arguments;
    va_start(arguments, argCount);
    const std::string text = formattedText(format, arguments);
    va_end(arguments);
    if (MessageCollection::collect(true, text))
        return;
    std::fprintf(stderr, "Error in function \"%s\" of file \"%s\" (line #%u): ", function, file, line);
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fputc('\n', stderr);
    std::fflush(stderr);
}
