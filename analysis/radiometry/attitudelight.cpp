// The light in which a body stands in the world.
#include "attitudelight.h"

#include "atmfile.h"
#include "matrix.h"

namespace sorvane {
namespace {
// The sun of the world in the axes of a body at the attitude, both as the viewer takes them: models have z up, the
// world has it down, and the sun's direction is used as it stands.
Vec3d sunInModel(const AtmFile& atmosphere, const Triple& attitudeDegrees) {
    const auto angle = [&](std::size_t i) {
        return static_cast<float>(attitudeDegrees[i]);
    };
    const Matrix<float> turn =
        BuildTransform(1.0F, 1.0F, 1.0F, angle(0) + 180.0F, angle(1), angle(2), 0.0F, 0.0F, 0.0F);
    const Vector<float> sun = atmosphere.SolarDirWorld();
    const auto along = [&](int axis) { // the inverse of a turn is its transpose
        double sum = 0.0;
        for (int row = 0; row < 3; ++row)
            sum += double{turn(row, axis)} * double{sun.ElementAt(row)};
        return sum;
    };
    return unit(Vec3d{along(0), along(1), along(2)});
}
} // namespace

SignatureLight lightAt(const AtmFile& atmosphere, const Triple& attitudeDegrees) {
    return {
        atmosphere.diffuseEarthRadiance(), atmosphere.diffuseSkyRadiance(), atmosphere.directSolarRadiance(),
        sunInModel(atmosphere, attitudeDegrees)};
}
} // namespace sorvane
