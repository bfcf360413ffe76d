// The one error reporter of the data loaders.
#include "printerror.h"

#include <cstdarg>
#include <string>

#include "formattedtext.h"
#include "messages.h"

using namespace sorvane;

void printError(
    const char* file, const char* function, unsigned int line, const char* format, unsigned int argCount, ...) {
    std::va_list arguments;
    va_start(arguments, argCount);
    const std::string text = formattedText(format, arguments);
    va_end(arguments);
    const std::string head = "Error in function \"" + std::string(function) + "\" of file \"" + file + "\" (line #" +
                             std::to_string(line) + "): ";
    printLine({{true, text}, head});
}
