// The demonstration's country: a river valley between a ridge in the west, a hill and a range in the east, and uplands
// around them.
#pragma once

#include "groundclass.h"
#include "vec3.h"

namespace sorvane {
// x runs east and y north in metres from the south-west corner of a square of 6.5 km, where the roads, the village and
// the tops are; the land goes on around it. Everything is a smooth or hashed function of the place, so that a map can
// sample it with any cell size.
class Landscape {
public:
    // `reliefMetres`: the tops above the valley floor.
    explicit Landscape(double reliefMetres) : reliefMetres_(reliefMetres) {}

    // Above the valley floor. The tops, from which the threats are launched, are at (600, 600), (520, 3600) and
    // (3900, 4300).
    double elevation(double x, double y) const;

    // What covers the ground where its upward normal is `normal`. Roads and the river are at least about one cell of
    // `cellMetres` wide, so that they stay unbroken on a coarse map.
    GroundClass groundClass(double x, double y, const Vec3d& normal, double cellMetres) const;

    // In-band radiance in W/cm²/sr: what the class emits, more where the ground leans to the sun.
    double radiance(double x, double y, GroundClass ground, const Vec3d& normal, const Vec3d& towardsSun) const;

private:
    double reliefMetres_;
};
} // namespace sorvane
