// Writes what a sub-command makes to the file that it was asked for, or to standard output.
#include "resultfile.h"

#include <fstream>

#include "atomicfile.h"
#include "interrupt.h"

namespace sorvane {
std::optional<sorvane::Problem>
writeResult(const std::string& output, Streams& streams, const std::function<void(std::ostream&)>& write) {
    if (output == "-" || output == "/dev/stdout") {
        write(streams.out);
        return std::nullopt;
    }
    const Interrupt interrupt;
    AtomicFile file(output);
    if (file.problem())
        return file.problem();
    std::ofstream stream(file.temporaryPath(), std::ios::binary);
    write(stream);
    stream.close();
    if (!stream)
        return sorvane::Problem(output + ": could not be written");
    if (Interrupt::requested() != 0)
        return sorvane::Problem(output + ": not written, since the command was interrupted");
    return file.commit() ? std::nullopt : file.problem();
}
} // namespace sorvane
