// Form-factor files: any text, matched with a body of as many facets as it announces.
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "filetracker.h"
#include "subfacetfile.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FileTracker lines;
    lines.addText(std::string(reinterpret_cast<const char*>(data), size));
    SubfacetFile file;
    if (!file.parse(lines))
        return 0;
    std::vector<Vector<float>> normals(file.facetCount(), {0.0F, 0.0F, 1.0F, 0.0F});
    if (!normals.empty())
        normals[size % normals.size()].ElementAt(0) = std::numeric_limits<float>::infinity();
    file.Init(normals);
    float sum = 0.0F;
    for (std::size_t facet = 0; facet < file.facetCount(); ++facet)
        for (const SubfacetFile::Visible& visible : file.visibleFrom(facet))
            sum += visible.formFactor + file.skyFormFactor(static_cast<std::size_t>(visible.facet));
    return sum < 0.0F ? 1 : 0;
}
