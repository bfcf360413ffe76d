// The radiance file (".rad"): radiance and blackbody emittance of every facet of a body.
#pragma once

#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "file.h"

class RadFile : public File {
public:
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
