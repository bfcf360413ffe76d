// The radiance file (".rad"): radiance and blackbody emittance of every facet of a body.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "file.h"

// Binary, 32-bit words in little-endian order:
//     bytes 0 … 39    ignored
//           40 … 43   number of facets F, a signed integer
//           44 … 75   ignored
//           76 …      F radiances, single precision, in the order of the geometry file
//           then 8    ignored
//           then      F blackbody emittances, likewise
// Values are in millionths of W/cm²/sr.
class RadFile : public File {
public:
    static constexpr const char* kExtension = "rad"; // which rasters of radiances have too

    // What the header of these first bytes, kHeadBytes or more, announces; nothing of fewer.
    static constexpr std::size_t kHeadBytes = 44;
    static std::optional<std::int32_t> announcedFacets(std::string_view firstBytes);
    static std::optional<std::int32_t> readAnnouncedFacets(const std::string& name);
    // The length of a file of so many facets.
    static constexpr std::int64_t lengthFor(std::int64_t facets) { return 84 + 8 * facets; }
    // Whether a file of these first bytes is exactly as long as its count of facets asks for.
    static bool isWhole(std::string_view firstBytes, std::int64_t fileLength);

    // Becomes the file of so many facets without radiance; false when they don't fit into memory.
    bool makeDark(int facets);

    // Reads the file `name`, which must hold `expectedFacets` facets, and scales its values by a millionth to W/cm²/sr.
    // On failure prints one message, returns false and leaves both arrays null.
    bool Load(const std::string& name, int expectedFacets);

    // Reads the bytes of a radiance file (32-bit words, little-endian); messages and result as Load's.
    bool parse(std::string_view bytes, int expectedFacets);

    void InitializeLimits();
    // Frees both arrays.
    void Cleanup();

    // Writes the limits and the first `count` facets as text to the file `outputName`, for diagnosis; does nothing when
    // it can't be opened.
    void DumpArrays(int count, const std::string& outputName) const;

    // Per facet in file order, W/cm²/sr; null unless loaded.
    const float* rad() const { return rad_.get(); }
    const float* bbe() const { return bbe_.get(); }

    // The extreme values, and the facet where each was found. A value that lowers the minimum is deliberately never
    // tried as the maximum: for a single facet or falling values the maximum keeps its initial value, the smallest
    // normal float, and facet 0.
    float minEmittance() const { return emittance_.minimum; }
    float maxEmittance() const { return emittance_.maximum; }
    float minRadiance() const { return radiance_.minimum; }
    float maxRadiance() const { return radiance_.maximum; }
    int minEmittanceFacet() const { return emittance_.minimumFacet; }
    int maxEmittanceFacet() const { return emittance_.maximumFacet; }
    int minRadianceFacet() const { return radiance_.minimumFacet; }
    int maxRadianceFacet() const { return radiance_.maximumFacet; }

private:
    struct Limits {
        float minimum = std::numeric_limits<float>::max();
        float maximum = std::numeric_limits<float>::min();
        int minimumFacet = 0;
        int maximumFacet = 0;

        void include(float value, int facet);
    };

    bool scale(int facets);

    std::unique_ptr<float[]> rad_;
    std::unique_ptr<float[]> bbe_;
    int facets_ = 0;
    Limits emittance_;
    Limits radiance_;
};
