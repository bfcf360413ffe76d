// The one error reporter of the data loaders.
#pragma once

// Writes one line to standard error:
//     Error in function "<function>" of file "<file>" (line #<line>): <message>
// and flushes it. `file`, `function` and `line` are the caller's (__FILE__, __func__, __LINE__); the line names the
// function first. `format` is a printf format without a closing newline, followed by `argCount`, the number of its
// arguments, and the arguments themselves. argCount serves readers of the call only; it is not used.
[[gnu::format(printf, 4, 6)]] void
printError(const char* file, const char* function, unsigned int line, const char* format, unsigned int argCount, ...);
