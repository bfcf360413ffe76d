// The one way in which the library ends the process.
#pragma once

namespace sorvane {
// Flushes the standard streams and ends the process at once with status 1. Used for faults that have no recovery
// (programming errors such as an index out of range).
[[noreturn]] void endProcess();

// Replaces what endProcess does after the flush. Tests and fuzz targets install a handler that throws, so that a fatal
// fault can be caught; a handler that returns still ends the process. Null restores the default. Returns the old one.
using EndProcessHandler = void (*)();
EndProcessHandler setEndProcessHandler(EndProcessHandler handler);
} // namespace sorvane
