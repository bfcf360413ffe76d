// The radiances of a tile as a texture that is filled in pieces.
#pragma once

#include <cstddef>

namespace sorvane {
// Needs a context throughout.
class TileTexture {
public:
    // Room for a texture of this size, which must be one that the context has.
    TileTexture(int columns, int rows);
    ~TileTexture();
    TileTexture(const TileTexture&) = delete;
    TileTexture& operator=(const TileTexture&) = delete;

    // Copies the next rows of `radiances`, row by row and the same ones each time, or makes the next coarser level of
    // them.
    void addPiece(const float* radiances);
    std::size_t pieceCount() const { return bands_ + levels_; }
    std::size_t addedCount() const { return added_; }
    bool isWhole() const { return added_ == pieceCount(); }

    unsigned name() const { return name_; }

private:
    void addBand(const float* radiances);
    void makeLevel(int level) const;

    unsigned name_ = 0;
    int columns_;
    int rows_;
    int rowsOfBand_;
    std::size_t bands_;
    std::size_t levels_; // beside the first; none where the driver makes them with the last band
    std::size_t added_ = 0;
};
} // namespace sorvane
