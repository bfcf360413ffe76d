// The life of the command's process, from command line to exit code.
#pragma once

namespace sorvane {
// Runs the sub-command that the arguments name and returns the process's exit status. Results go to standard output;
// whatever the libraries print there goes to standard error instead.
int runSorvane(int argc, char** argv);
} // namespace sorvane
