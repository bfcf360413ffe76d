// The radiances of a tile as a texture that is filled in pieces.
#include "tiletexture.h"

#include <algorithm>
#include <bit>

#include <GL/glew.h>

namespace sorvane {
namespace {
constexpr int kSamplesOfBand = 1 << 20;
constexpr int kAllLevels = 1000; // OpenGL's own last level
} // namespace

TileTexture::TileTexture(int columns, int rows)
    : columns_(columns), rows_(rows), rowsOfBand_(std::clamp(kSamplesOfBand / columns, 1, rows)),
      bands_(static_cast<std::size_t>((rows - 1) / rowsOfBand_ + 1)),
      levels_(
          glGenerateMipmap == nullptr
              ? 0
              : static_cast<std::size_t>(std::bit_width(static_cast<unsigned>(std::max(columns, rows))) - 1)) {
    glGenTextures(1, &name_);
    glBindTexture(GL_TEXTURE_2D, name_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE32F_ARB, columns, rows, 0, GL_LUMINANCE, GL_FLOAT, nullptr);
    glBindTexture(GL_TEXTURE_2D, 0);
}

TileTexture::~TileTexture() {
    glDeleteTextures(1, &name_);
}

void TileTexture::addPiece(const float* radiances) {
    glBindTexture(GL_TEXTURE_2D, name_);
    if (added_ < bands_)
        addBand(radiances);
    else
        makeLevel(static_cast<int>(added_ - bands_ + 1));
    ++added_;
    glBindTexture(GL_TEXTURE_2D, 0);
}

void TileTexture::addBand(const float* radiances) {
    if (levels_ == 0 && added_ + 1 == bands_)
        glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
    const int first = static_cast<int>(added_) * rowsOfBand_;
    glTexSubImage2D(
        GL_TEXTURE_2D, 0, 0, first, columns_, std::min(rowsOfBand_, rows_ - first), GL_LUMINANCE, GL_FLOAT,
        radiances + static_cast<std::size_t>(first) * static_cast<std::size_t>(columns_));
}

// From the level before it alone.
void TileTexture::makeLevel(int level) const {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, level - 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, level);
    glGenerateMipmap(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, kAllLevels);
}
} // namespace sorvane
