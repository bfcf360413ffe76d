// The life of the viewer's process, from command line to exit code.
#pragma once

namespace sorvane {
// Creates the application and the window, loads every argument as a trajectory file and runs the event loop.
int runViewer(int argc, char** argv);
} // namespace sorvane
