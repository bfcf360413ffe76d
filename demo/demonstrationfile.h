// One file of the demonstration data.
#pragma once

#include <string>

struct DemonstrationFile {
    std::string name; // below the demonstration's directory
    std::string contents;
};
