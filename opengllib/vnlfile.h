// The geometry file (".vnl"): the facets of a body, spread out into the arrays that are drawn.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "file.h"
#include "tuple3.h"
#include "vector.h"

class BrdfFile;
class FileTracker;
class RadFile;

namespace sorvane {
struct FacetArrays;
class TextHead;
} // namespace sorvane

// Text, lines of at most 255 characters:
//     number of vertices V, number of facets F
//     bounding box: x1 x2 y1 y2 z1 z2
//     V lines: position x y z, vertex normal x y z, one word
//     F lines: facet number, three vertex numbers, one word
// Vertices count from 1, facets by their lines. The words must be there; they and the facet numbers are ignored.
// With V up to 65,536 only the low 16 bits of a vertex number less 1 count, with more vertices all of it does.

namespace sorvane {
// Where the facets go: arrays of F facets, the corner arrays of 3 · F corners, all supplied by the caller.
// There are two index spaces, and that is deliberate. k numbers facets as the file does; the slot s, given by
// BrdfFile::SortedFacetIndex, brings the facets of one reflectance class together, so that a class is one draw call.
struct VnlArrays {
    Tuple3<unsigned short>* facets; // [s]: the numbers of the facet's three corners
    Tuple3<float>* cornerPositions; // [3s + 0, 1, 2]
    Tuple3<float>* cornerNormals;   // [3s + 0, 1, 2], as the file gives them
    Tuple3<float>* cornerRadiance;  // [3s + 0, 1, 2], W/cm²/sr, three times the same
    Tuple3<float>* cornerEmittance; // [3s + 0, 1, 2], W/cm²/sr, three times the same
    Vector<float>* facetCentroids;  // [k]
    Vector<float>* facetNormals;    // [k], unit length, w = 0; not finite for a facet without area
    int* sortedIndex;               // [k]: s
};
} // namespace sorvane

class VnlFile : public File {
public:
    static constexpr const char* kExtension = "vnl";

    // Whether a text of any name begins like a geometry file.
    static bool looksLike(const sorvane::TextHead& head);

    // What line 1 announces; nothing where two numbers are not there.
    struct Counts {
        int vertices = 0;
        int facets = 0;
    };
    static std::optional<Counts> announcedCounts(std::string_view text);
    static std::optional<Counts> readAnnouncedCounts(const std::string& name);

    // No file of fewer bytes holds so many facets.
    static constexpr std::uintmax_t leastBytesOf(int facets) {
        return std::uintmax_t{9} * static_cast<unsigned>(facets);
    }

    // A facet, counted from 0, of which 16 bits make another vertex of one that it names.
    struct WrappedFacet {
        int line; // of the file, from 1
        int facet;
        int named; // as the file has it, from 1
        int taken; // likewise
    };
    static constexpr int kMost16BitVertices = 65536;

    // Reads the file `name` into the arrays. `brdf` must be loaded and not have been asked for slots, `rad` must hold
    // as many facets as `brdf`. On failure prints a message and returns false; the arrays may then be partly filled. A
    // facet that names a vertex that isn't there ends the process: deliberate, unlike every other fault.
    bool Load(
        const std::string& name, BrdfFile& brdf, RadFile& rad, Tuple3<unsigned short>* facets,
        Tuple3<float>* cornerPositions, Tuple3<float>* cornerNormals, Tuple3<float>* cornerRadiance,
        Tuple3<float>* cornerEmittance, Vector<float>* facetCentroids, Vector<float>* facetNormals, int* sortedIndex);

    // Reads a geometry file without the body's others, as a body of `facets` facets of one class that radiate nothing,
    // into `arrays`, which it allocates. False after a message on failure; the rest as Load.
    bool LoadAlone(const std::string& name, int facets, sorvane::FacetArrays& arrays);

    // Reads the lines of a geometry file; otherwise as Load.
    bool parse(FileTracker& lines, BrdfFile& brdf, const RadFile& rad, const sorvane::VnlArrays& arrays);

    // The corners of the bounding box, w = 1: around the low-z face, then in the same order around the high-z face.
    const std::array<Vector<float>, 8>& boundingBox() const { return boundingBox_; }

    // Those of the last load, in the order of the file.
    const std::vector<WrappedFacet>& wrappedFacets() const { return wrappedFacets_; }

private:
    std::vector<WrappedFacet> wrappedFacets_;
    std::array<Vector<float>, 8> boundingBox_ = [] {
        std::array<Vector<float>, 8> corners;
        corners.fill({0.0F, 0.0F, 0.0F, 1.0F});
        return corners;
    }();
};
