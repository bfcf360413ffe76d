// The data tree that the engagements use.
#include "datatree.h"

#include <algorithm>
#include <iterator>

#include "bodyfolders.h"
#include "shadersources.h"

std::vector<DemonstrationFile> dataTreeFiles() {
    std::vector<DemonstrationFile> files = bodyFiles();
    std::vector<DemonstrationFile> shaders = shaderSources();
    std::move(shaders.begin(), shaders.end(), std::back_inserter(files));
    for (DemonstrationFile& file : files)
        file.name.insert(0, "data/");
    return files;
}
