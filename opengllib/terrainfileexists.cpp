// The existence check of the terrain code.
#include "terrainfileexists.h"

#include "file.h"

bool FileExists(const std::string& name) {
    return File::Exists(name);
}
