// The data tree that the engagements use.
#include "datatree.h"

#include <utility>

#include "bodyfolders.h"
#include "shadersources.h"

namespace sorvane {
std::vector<DemonstrationFile> dataTreeFiles() {
    std::vector<DemonstrationFile> files;
    for (auto makeFiles : {bodyFiles, formFactorFiles, shaderSources})
        for (DemonstrationFile& file : makeFiles())
            files.push_back({"data/" + file.name, std::move(file.contents)});
    return files;
}
} // namespace sorvane
