// Runs the command in the test's own process.
#include "commandrun.h"

#include <sstream>

#include "commandline.h"

namespace sorvane {

CommandRun runCommand(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    Streams streams{out, err, false};
    const ExitStatus status = runCommandLine(arguments, streams);
    return {status, out.str(), err.str()};
}
} // namespace sorvane
