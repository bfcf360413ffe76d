// What the library remembers of files, as a whole.
#pragma once

#include <string>

namespace sorvane {
// Takes a file that has changed out of every cache of the library, whatever it holds: the next loader reads it anew,
// and bodies and tiles that are made of it are no longer shared. A sample of a spectral library leaves the tables that
// name it alone, which look it up again.
void forgetFile(const std::string& path);
} // namespace sorvane
