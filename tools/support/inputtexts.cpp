// What messages say about the files that a command line names.
#include "inputtexts.h"

namespace sorvane {
std::string inputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}
} // namespace sorvane
