// The ground under the engagements.
#include "terrains.h"

#include "glapi.h"
#include "glstate.h"

namespace sorvane {
namespace {
// The box of a tile in the world, whose y and z run the other way.
Box worldBox(const TileBounds& tile, float firstThreatHeight) {
    return {
        {tile.minimum[0], -tile.maximum[1], firstThreatHeight - tile.maximum[2]},
        {tile.maximum[0], -tile.minimum[1], firstThreatHeight - tile.minimum[2]}};
}
} // namespace

void SliceOfTerrains::draw(etxyz& engagement) {
    const PushedMatrix matrix;
    const float firstThreatHeight = engagement.keyframeAtZero().threatPos[2];
    glRotatef(180.0F, 1.0F, 0.0F, 0.0F);
    glTranslatef(0.0F, 0.0F, -firstThreatHeight);
    if (engagement.terrain == nullptr)
        return;
    const auto isPartWanted = [&](const TileBounds& part) {
        return isInSight(part, firstThreatHeight);
    };
    const auto isTileWanted = [&](const SubTerrain& tile) {
        return isPartWanted(tile.meshBounds()) && drawn_.emplace(tile.content(), firstThreatHeight).second;
    };
    engagement.terrain->Render(Lights(), {isTileWanted, isPartWanted, loads_, brightness_});
}

bool SliceOfTerrains::isInSight(const TileBounds& bounds, float firstThreatHeight) const {
    constexpr float kOrigin[3] = {};
    const Box box = worldBox(bounds, firstThreatHeight);
    return slice_.reaches(lookAt_.depthsOf(box, kOrigin)) && sight_.reaches(box, kOrigin);
}
} // namespace sorvane
