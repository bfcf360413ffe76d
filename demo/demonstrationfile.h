// One file of the demonstration data.
#pragma once

#include <string>

namespace sorvane {
struct DemonstrationFile {
    std::string name; // below the demonstration's directory
    std::string contents;
};
} // namespace sorvane
