// Geometry files: any text, for bodies of three facets in two classes. A bad vertex ends the process, which is caught.
#include <cstdint>
#include <string>
#include <vector>

#include "brdffile.h"
#include "endprocess.h"
#include "filetracker.h"
#include "radfile.h"
#include "vnlfile.h"

using namespace sorvane;

namespace {
struct ProcessEnded {};

constexpr std::size_t kFacets = 3;

std::string radiances() {
    std::string bytes(19 * 4 + 2 * 4 + 2 * 4 * kFacets, '\0');
    bytes[40] = static_cast<char>(kFacets);
    return bytes;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const EndProcessHandler previous = setEndProcessHandler([] { throw ProcessEnded(); });
    static_cast<void>(previous);
    BrdfFile brdf;
    brdf.parse("BRDF\n2\n.1 .2 .3 .4 0 x\n.1 .2 .3 .4 0 x\n1 1 2 x\n2 3 1 x\n");
    RadFile rad;
    rad.parse(radiances(), kFacets);
    std::vector<Tuple3<unsigned short>> facets(kFacets);
    std::vector<Tuple3<float>> positions(3 * kFacets);
    std::vector<Tuple3<float>> normals(3 * kFacets);
    std::vector<Tuple3<float>> radiance(3 * kFacets);
    std::vector<Tuple3<float>> emittance(3 * kFacets);
    std::vector<Vector<float>> centroids(kFacets);
    std::vector<Vector<float>> facetNormals(kFacets);
    std::vector<int> sorted(kFacets);
    FileTracker lines;
    lines.addText(std::string(reinterpret_cast<const char*>(data), size));
    try {
        VnlFile().parse(
            lines, brdf, rad,
            {facets.data(), positions.data(), normals.data(), radiance.data(), emittance.data(), centroids.data(),
             facetNormals.data(), sorted.data()});
    } catch (const ProcessEnded&) {
        return 0;
    }
    return 0;
}
