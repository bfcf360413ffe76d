// The radiances of a tile as a texture that is filled in pieces.
#include "tiletexture.h"

#include <algorithm>
#include <bit>

#include <GL/glew.h>

namespace sorvane {
namespace {
constexpr int kAllLevels = 1000; // OpenGL's own last level
} // namespace

TileTexture::TileTexture(std::span<const RadianceLevel> given) {
    const bool canMakeLevels = glGenerateMipmap != nullptr;
    const RadianceLevel& finest = given.front();
    if (canMakeLevels) {
        const auto side = static_cast<unsigned>(std::max(finest.columns, finest.rows));
        givenLevels_ = given.size();
        levels_ = static_cast<std::size_t>(std::bit_width(side)) - givenLevels_;
    }
    glGenTextures(1, &name_);
    glBindTexture(GL_TEXTURE_2D, name_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, 0);
    for (std::size_t number = 0; number < givenLevels_; ++number) {
        const RadianceLevel& level = given[number];
        glTexImage2D(
            GL_TEXTURE_2D, static_cast<GLint>(number), GL_LUMINANCE32F_ARB, level.columns, level.rows, 0, GL_LUMINANCE,
            GL_FLOAT, nullptr);
        const int rows = std::clamp(kRadiancesOfPiece / level.columns, 1, level.rows);
        for (int first = 0; first < level.rows; first += rows)
            bands_.push_back({number, first, std::min(rows, level.rows - first)});
    }
    glBindTexture(GL_TEXTURE_2D, 0);
}

TileTexture::~TileTexture() {
    glDeleteTextures(1, &name_);
}

void TileTexture::addPiece(std::span<const RadianceLevel> given) {
    glBindTexture(GL_TEXTURE_2D, name_);
    if (added_ < bands_.size())
        addBand(bands_[added_], given[bands_[added_].level]);
    else
        makeLevel(static_cast<int>(givenLevels_ + added_ - bands_.size()));
    ++added_;
    glBindTexture(GL_TEXTURE_2D, 0);
}

void TileTexture::addBand(const Band& band, const RadianceLevel& level) const {
    if (givenLevels_ == 1 && levels_ == 0 && added_ + 1 == bands_.size())
        glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
    glTexSubImage2D(
        GL_TEXTURE_2D, static_cast<GLint>(band.level), 0, band.first, level.columns, band.rows, GL_LUMINANCE, GL_FLOAT,
        level.radiances.get() + static_cast<std::size_t>(band.first) * static_cast<std::size_t>(level.columns));
}

// From the level before it alone.
void TileTexture::makeLevel(int level) {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, level - 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, level);
    glGenerateMipmap(GL_TEXTURE_2D);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, kAllLevels);
}
} // namespace sorvane
