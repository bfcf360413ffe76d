// Other axes for a trajectory: where x, y and z come from, and what becomes of the angles.
#include "axes.h"

#include <cmath>
#include <numbers>
#include <string_view>

#include "withoutnoise.h"

namespace sorvane {
namespace {
using Rows = std::array<Triple, 3>;

constexpr double kFullTurn = 360.0;
constexpr double kHalfTurn = 180.0;

double radians(double degrees) {
    return degrees * std::numbers::pi / kHalfTurn;
}
double degrees(double radians) {
    return radians * kHalfTurn / std::numbers::pi;
}

Rows product(const Rows& a, const Rows& b) {
    Rows result{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            for (std::size_t i = 0; i < 3; ++i)
                result[row][column] += a[row][i] * b[i][column];
    return result;
}

// Rz(yaw) · Ry(pitch) · Rx(roll), as a body is turned.
Rows rotation(const Triple& anglesDegrees) {
    const double a = radians(anglesDegrees[0]);
    const double b = radians(anglesDegrees[1]);
    const double c = radians(anglesDegrees[2]);
    const Rows x = {{{1, 0, 0}, {0, std::cos(a), -std::sin(a)}, {0, std::sin(a), std::cos(a)}}};
    const Rows y = {{{std::cos(b), 0, std::sin(b)}, {0, 1, 0}, {-std::sin(b), 0, std::cos(b)}}};
    const Rows z = {{{std::cos(c), -std::sin(c), 0}, {std::sin(c), std::cos(c), 0}, {0, 0, 1}}};
    return product(product(z, y), x);
}

// Roll, pitch and yaw of a rotation. Straight up or down only roll and yaw together are settled: roll is then `roll`.
Triple anglesOf(const Rows& turn, double roll) {
    constexpr double kStraight = 1e-9;
    const double level = std::hypot(turn[0][0], turn[1][0]);
    const double pitch = degrees(std::atan2(-turn[2][0], level));
    if (level > kStraight)
        return {degrees(std::atan2(turn[2][1], turn[2][2])), pitch, degrees(std::atan2(turn[1][0], turn[0][0]))};
    const double yaw = pitch > 0.0 ? roll - degrees(std::atan2(turn[0][1], turn[1][1]))
                                   : degrees(std::atan2(-turn[0][1], turn[1][1])) - roll;
    return {roll, pitch, yaw};
}

// Each angle by full turns as near to the one before as it gets.
Triple near(Triple angles, const Triple& before) {
    for (std::size_t i = 0; i < 3; ++i)
        angles[i] += kFullTurn * std::round((before[i] - angles[i]) / kFullTurn);
    return angles;
}

double squaredDistance(const Triple& a, const Triple& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return sum;
}
} // namespace

std::optional<Axes> Axes::parse(const std::string& text) {
    Axes axes;
    std::array<bool, 3> isTaken{};
    std::string_view rest = text;
    for (std::size_t i = 0; i < 3; ++i) {
        if (i > 0 && !rest.starts_with(','))
            return std::nullopt;
        rest.remove_prefix(i > 0 ? 1 : 0);
        axes.sign_[i] = rest.starts_with('-') ? -1.0 : 1.0;
        if (rest.starts_with('-') || rest.starts_with('+'))
            rest.remove_prefix(1);
        const std::size_t axis = rest.empty() ? std::string_view::npos : std::string_view("xyz").find(rest.front());
        if (axis == std::string_view::npos || isTaken[axis])
            return std::nullopt;
        isTaken[axis] = true;
        axes.from_[i] = axis;
        rest.remove_prefix(1);
    }
    return rest.empty() ? std::optional(axes) : std::nullopt;
}

Triple Axes::turned(const Triple& vector) const {
    Triple result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = sign_[i] * vector[from_[i]] + 0.0; // no -0
    return result;
}

double Axes::handedness() const {
    const bool isCyclic = (from_[0] + 1) % 3 == from_[1];
    return (isCyclic ? 1.0 : -1.0) * sign_[0] * sign_[1] * sign_[2];
}

Triple Axes::turnedAttitude(const Triple& degrees, const Triple& before) const {
    return keepsVertical() ? turnedAboutVertical(degrees) : turnedBy(bodyAxes(), degrees, before);
}

Triple Axes::turnedEllipsoid(const Triple& degrees, const Triple& before) const {
    return keepsVertical() ? turnedAboutVertical(degrees)
                           : turnedBy({{{1, 0, 0}, {0, 1, 0}, {0, 0, handedness()}}}, degrees, before);
}

// The new axes are the file's, turned over by D = diag(1, s, t) and then turned about z. D Rz(c) D = Rz(s c),
// D Ry(b) D = Ry(t b) and D Rx(a) D = Rx(s t a), and D is what becomes of a body's own axes, too.
Triple Axes::turnedAboutVertical(const Triple& degrees) const {
    const Triple x = turned({1, 0, 0});
    const double quarterTurns = x[0] != 0.0 ? 1.0 - x[0] : x[1]; // where the file's x lies, from the new x to the new y
    const double t = sign_[2];
    const double s = handedness() * t;
    return {s * t * degrees[0] + 0.0, t * degrees[1] + 0.0, s * degrees[2] + kFullTurn / 4.0 * quarterTurns + 0.0};
}

// Columns: a body's forward, right and down at the angles 0 0 0, in the file's axes. Its nose is x; down is where down
// is, unless that is x as well.
Axes::Rows Axes::bodyAxes() const {
    const std::size_t vertical = from_[2];
    const Triple forward = {1, 0, 0};
    Triple down{};
    down[vertical == 0 ? 2 : vertical] = vertical == 0 ? 1.0 : sign_[2];
    // A mirror makes a right-handed body left-handed.
    const double h = handedness();
    const Triple right = {0, h * down[2], -h * down[1]};
    Rows body{};
    for (std::size_t row = 0; row < 3; ++row)
        body[row] = {forward[row], right[row], down[row]};
    return body;
}

Triple Axes::turnedBy(const Rows& body, const Triple& degrees, const Triple& before) const {
    Rows axes{};
    for (std::size_t row = 0; row < 3; ++row)
        axes[row][from_[row]] = sign_[row];
    const Triple one = anglesOf(product(product(axes, rotation(degrees)), body), before[0]);
    const Triple other = {one[0] + kHalfTurn, kHalfTurn - one[1], one[2] + kHalfTurn};
    const Triple nearOne = near(one, before);
    const Triple nearOther = near(other, before);
    Triple chosen = squaredDistance(nearOther, before) < squaredDistance(nearOne, before) ? nearOther : nearOne;
    for (double& angle : chosen)
        angle = withoutNoise(angle, kFullTurn);
    return chosen;
}
} // namespace sorvane
