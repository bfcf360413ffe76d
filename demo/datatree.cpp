// The data tree that the engagements use.
#include "datatree.h"

#include <utility>

#include "bodyfolders.h"

std::vector<DemonstrationFile> dataTreeFiles() {
    std::vector<DemonstrationFile> files = bodyFiles();
    for (DemonstrationFile& file : files)
        file.name.insert(0, "data/");
    return files;
}
