// The life of the command's process, from command line to exit code.
#include "sorvaneprocess.h"

#include <exception>
#include <string>
#include <vector>

#include "commandline.h"
#include "standardstreams.h"

namespace sorvane {
int runSorvane(int argc, char** argv) {
    StandardStreams standard;
    Streams streams = standard.streams();
    try {
        return static_cast<int>(runCommandLine(std::vector<std::string>(argv + 1, argv + argc), streams));
    } catch (const std::exception& fault) {
        streams.err << "sorvane: " << fault.what() << std::endl;
        return static_cast<int>(ExitStatus::Failed);
    }
}
} // namespace sorvane
