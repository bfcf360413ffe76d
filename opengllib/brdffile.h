// The reflectance file (".brdf"): the reflectance classes of a body and which facets belong to which class.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "file.h"

namespace sorvane {
class TextHead;
} // namespace sorvane

// Text, lines of at most 255 characters:
//     BRDF
//     number of classes N, at least 1
//     N lines: diffuse reflectance, emissivity, b, e, mode, one word
//     to the end: first facet, last facet, class, one word
// Facets and classes count from 1, the last facet of a range belongs to it. The words are ignored and may be missing.

// The parameters of one class for sr_brdf_internal.
struct BrdfClass {
    float rho_d;   // diffuse reflectance
    float epsilon; // emissivity
    float b;       // directional parameter of the diffuse and emissive terms, not negative
    float e;       // width of the specular lobe
    float G;       // normalisation that belongs to b
    int mode;      // 2: diffuse term only, 3: directional-hemispherical specular reflectance only, else all
};

// One range of facets, all in one class. Everything counts from 0; `end` is inclusive.
struct BrdfElement {
    int start;
    int end;
    int brdfClass;
};

// The slots of one class: [startIndex_, startIndex_ + facetCount_).
struct FacetBlock {
    int startIndex_ = 0;
    int facetCount_ = 0;
    int next = 0; // the next slot to hand out
};

class BrdfFile : public File {
public:
    static constexpr const char* kExtension = "brdf";

    // Whether a text of any name begins like a reflectance file.
    static bool looksLike(const sorvane::TextHead& head);

    // Becomes the file of a body of so many facets, not negative, in one class that reflects nothing.
    void makeUniform(int facets);

    // Reads the file `name`, or takes it from the process-wide cache. On failure prints one message, returns false and
    // leaves the object without classes and facets.
    bool Load(const std::string& name);

    // Reads the text of a reflectance file; messages and result as Load's. Touches neither disk nor cache.
    bool parse(std::string_view text);

    // Looks `name` up in the cache; on a hit copies the whole object, with no slot handed out yet, and returns true.
    bool InCache(const std::string& name);
    // Takes the file `name` out of the cache.
    static void forget(const std::string& name);

    // The class of a facet, both counted from 0, or -1. The ranges are searched as the file orders them, and nothing
    // sorts them; a single range answers for every facet, even outside it.
    int FacetIndxToBrdfClass(int facet) const;

    // The slot of a facet: each class has its block of slots and hands them out in the order of the calls. Asking once
    // for each facet in file order thus sorts the facets by class; asking twice uses up two slots. -1 after a message
    // when the facet has no class or the block is used up; the block's counter advances all the same.
    int SortedFacetIndex(int facet);

    // The cache key.
    const std::string& fileName() const { return fileName_; }
    // Over all classes.
    int numFacets() const { return numFacets_; }
    // Three corners for each facet.
    int numVertices() const { return numVertices_; }
    int numBrdfClasses() const { return static_cast<int>(classes_.size()); }
    const std::vector<BrdfClass>& classes() const { return classes_; }
    const std::vector<BrdfElement>& elements() const { return elements_; }
    const std::vector<FacetBlock>& blocks() const { return blocks_; }

private:
    class Parser;

    void clear();
    void placeBlocks();
    // The index of the range that FacetIndxToBrdfClass finds, or -1.
    int findRange(int facet) const;

    std::string fileName_ = "brdf::filename";
    int numFacets_ = 0;
    int numVertices_ = 0;
    std::vector<BrdfClass> classes_;
    std::vector<BrdfElement> elements_;
    std::vector<FacetBlock> blocks_; // one for each class
    bool isAscending_ = true;        // whether the ranges ascend without overlap, as they should
    int lastRange_ = -1;             // where SortedFacetIndex found the last facet, or -1
};
