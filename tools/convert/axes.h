// Other axes for a trajectory: where x, y and z come from, and what becomes of the angles.
#pragma once

#include <optional>
#include <string>

#include "exactsample.h"

namespace sorvane {
// Axes of which each is one of the file's, or points against it.
class Axes {
public:
    // Of "x,-z,y": the new x, y and z by the file's. Each of these must come once; nothing when they don't.
    static std::optional<Axes> parse(const std::string& text);

    Triple turned(const Triple& vector) const;

    // Roll, pitch and yaw in the new axes of a body whose angles turn it about the file's x, y and z as the viewer's
    // turn it about its own: at 0 0 0 its nose points along x, and its top to where up is. When up lies along the
    // file's z, that is a sign and a quarter turn for each angle. Otherwise the angles are worked out anew, and of all
    // that mean the same those are given that are nearest to `before`.
    Triple turnedAttitude(const Triple& degrees, const Triple& before) const;
    // The same for an ellipsoid, for which either end of an axis will do: its half axes stay as they are.
    Triple turnedEllipsoid(const Triple& degrees, const Triple& before) const;

private:
    using Rows = std::array<Triple, 3>;

    bool keepsVertical() const { return from_[2] == 2; }
    double handedness() const; // -1 when the new axes are the file's in a mirror
    Triple turnedAboutVertical(const Triple& degrees) const;
    Rows bodyAxes() const;
    Triple turnedBy(const Rows& body, const Triple& degrees, const Triple& before) const;

    std::array<std::size_t, 3> from_ = {0, 1, 2}; // the file's axis, for each new one
    Triple sign_ = {1.0, 1.0, 1.0};
};
} // namespace sorvane
