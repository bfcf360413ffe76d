// The form-factor file (".sff-txt"): how much earth and sky each facet of a body sees, and which other facets.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "file.h"
#include "vector.h"

class FileTracker;

// Text, lines of at most 255 characters. Line 1 gives the number of facets; then follow the facets in the order of the
// geometry file, each with a line
//     facet number, form factor to the earth, form factor to the sky, number n of visible facets
// and n lines
//     number of the visible facet, form factor to it
// Facets count from 1. Words behind the fields are ignored. Form factors are finite and not negative.
class SubfacetFile : public File {
public:
    static constexpr const char* kExtension = "sff-txt";

    // The form-factor file beside a geometry file: its name with the extension in place of the last three letters.
    static std::string pathBeside(const std::string& geometryPath);

    // The facet that another one sees, counted from 0.
    struct Visible {
        int facet;
        float formFactor;
    };

    // Reads the file `name`; copies the form factors to the earth and the sky to the two arrays of a body's facets if
    // they are as many as the file's. False when the file can't be loaded: without a message when it can't be opened,
    // which is usual, else after one message.
    bool Load(const std::string& name, std::span<float> earthFormFactors, std::span<float> skyFormFactors);

    // Reads the lines of a form-factor file; messages and result as Load's. Empty on failure.
    bool parse(FileTracker& lines);

    // Matches the file with a body: false when the body doesn't have as many facets. Facets whose normal isn't finite
    // have no area: from now on they see nothing and nothing sees them.
    bool Init(std::span<const Vector<float>> facetNormals);

    std::size_t facetCount() const { return earth_.size(); }
    float earthFormFactor(std::size_t facet) const { return earth_[facet]; }
    float skyFormFactor(std::size_t facet) const { return sky_[facet]; }
    std::span<const Visible> visibleFrom(std::size_t facet) const {
        return std::span(visible_).subspan(starts_[facet], starts_[facet + 1] - starts_[facet]);
    }

private:
    class Parser;

    void clear();

    std::vector<float> earth_;
    std::vector<float> sky_;
    std::vector<Visible> visible_;    // facet after facet
    std::vector<std::size_t> starts_; // where each facet's begin, and the end
};
