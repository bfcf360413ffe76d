// Finds the files that a command line names, those below its directories among them.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "filekind.h"

namespace sorvane {
struct FoundFile {
    std::string path;
    FileKind kind = FileKind::Unknown;
};

struct FoundFiles {
    std::vector<FoundFile> files;
    bool isComplete = true; // every path could be read
};

// In the order of `paths`, below a directory in the order of their names; "-" is a trajectory. Below a directory, files
// that the viewer doesn't read are left out, and links to directories are not followed. What can't be read gets a line
// on `err`, which begins with `command`.
FoundFiles findFiles(const std::vector<std::string>& paths, const char* command, std::ostream& err);
} // namespace sorvane
