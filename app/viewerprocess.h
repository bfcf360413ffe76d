// The life of the viewer's process, from command line to exit code.
#pragma once

namespace sorvane {
// Creates the application and the window, loads every argument as a trajectory file and runs the event loop. --help and
// --version print and end; without a display it ends with status 1.
int runViewer(int argc, char** argv);
} // namespace sorvane
