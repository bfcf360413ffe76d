// The radiances of a tile as a texture that is filled in pieces.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "radiancelevels.h"

namespace sorvane {
// Needs a context throughout.
class TileTexture {
public:
    // Room for the given levels, the finest one first, which must be of a size that the context has.
    explicit TileTexture(std::span<const RadianceLevel> given);
    ~TileTexture();
    TileTexture(const TileTexture&) = delete;
    TileTexture& operator=(const TileTexture&) = delete;

    // Copies the next rows of the given levels, which are the same ones each time, or makes the next coarser level.
    void addPiece(std::span<const RadianceLevel> given);
    std::size_t pieceCount() const { return bands_.size() + levels_; }
    std::size_t addedCount() const { return added_; }
    bool isWhole() const { return added_ == pieceCount(); }

    unsigned name() const { return name_; }

private:
    // Rows of a level.
    struct Band {
        std::size_t level = 0;
        int first = 0;
        int rows = 0;
    };

    void addBand(const Band& band, const RadianceLevel& level) const;
    static void makeLevel(int level);

    unsigned name_ = 0;
    std::vector<Band> bands_;
    std::size_t givenLevels_ = 1;
    std::size_t levels_ = 0; // beside those; none where the driver makes all with the last band
    std::size_t added_ = 0;
};
} // namespace sorvane
