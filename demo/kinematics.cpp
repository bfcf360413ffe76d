// A small kinematic model of an engagement.
#include "kinematics.h"

#include <algorithm>
#include <numbers>

#include "seeker.h"

namespace sorvane {
namespace {
constexpr double kStep = 0.001; // seconds
constexpr double kGravity = 9.81;
constexpr double kFuzeRange = 12.0;
constexpr double kPassingRange = 100.0; // below it, a range that grows means that the threat has passed
constexpr double kNavigationConstant = 3.5;
constexpr double kMaximumAcceleration = 35.0 * kGravity;
constexpr double kThreatRollRate = 25.0; // degrees per second

constexpr double kFlareBurnTime = 4.0;
constexpr double kFlareDrag = 0.006; // per metre: deceleration over the square of the speed
constexpr double kFlareEjectionSpeed = 30.0;
constexpr double kTargetShare = 0.12;            // of a flare's brightness: what a seeker sees of the target
constexpr Vec3d kFlareSpin = {80.0, 50.0, 65.0}; // degrees per second

double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}
double degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

// The unit vector of a heading and a climb angle.
Vec3d direction(double headingDegrees, double climbDegrees) {
    const double heading = radians(headingDegrees);
    const double climb = radians(climbDegrees);
    return {std::cos(climb) * std::cos(heading), std::cos(climb) * std::sin(heading), -std::sin(climb)};
}
double headingOf(const Vec3d& v) {
    return degrees(std::atan2(v.y, v.x));
}
double climbOf(const Vec3d& v) {
    return degrees(std::atan2(-v.z, std::hypot(v.x, v.y)));
}

// The angle equal to `angle` up to full turns that is nearest to `before`.
double unwrapped(double angle, double before) {
    return angle + 360.0 * std::round((before - angle) / 360.0);
}

struct Target {
    Vec3d position;
    Vec3d velocity;
    double heading; // degrees
    double climb = 0.0;
    double bank = 0.0;

    explicit Target(const EngagementPlan& plan) : position(plan.targetStart), heading(plan.targetHeading) {
        steer(plan, 0.0);
    }

    void steer(const EngagementPlan& plan, double time) {
        bank = plan.targetBank(time);
        climb = plan.targetClimb(time);
        velocity = plan.targetSpeed * direction(heading, climb);
    }
    void advance(const EngagementPlan& plan, double time) {
        const double turnRate =
            kGravity * std::tan(radians(bank)) / (plan.targetSpeed * std::cos(radians(climb))); // radians per second
        position = position + kStep * velocity;
        heading += degrees(turnRate * kStep);
        steer(plan, time);
    }
};

// Guided by proportional navigation: it turns as fast as the line of sight to what its seeker follows, times a
// constant.
struct Threat {
    Vec3d position;
    Vec3d velocity;
    double heading; // of the velocity and of the gyro, both unwrapped
    double gyroHeading;
    double gyroClimb = 0.0;

    Threat(const EngagementPlan& plan, const Target& target) : position(plan.threatStart) {
        const Vec3d sight = target.position - position;
        gyroHeading = headingOf(sight);
        heading = gyroHeading + plan.launchOffset;
        velocity = plan.threatSpeed(0.0) * direction(heading, climbOf(sight) + plan.launchLoft);
    }
    // With nothing to follow it flies straight on.
    void advance(const EngagementPlan& plan, const std::optional<HeatSource>& followed, double time) {
        Vec3d acceleration;
        if (followed) {
            const Vec3d sight = followed->position - position;
            const Vec3d sightRate = 1.0 / dot(sight, sight) * cross(sight, followed->velocity - velocity);
            acceleration = kNavigationConstant * cross(sightRate, velocity);
        }
        if (const double size = length(acceleration); size > kMaximumAcceleration)
            acceleration = kMaximumAcceleration / size * acceleration;
        position = position + kStep * velocity;
        velocity = plan.threatSpeed(time) * unit(velocity + kStep * acceleration);
        heading = unwrapped(headingOf(velocity), heading);
    }
    // Points the gyro. Call once per step, after all have moved.
    void lookAlong(const Vec3d& direction) {
        gyroHeading = unwrapped(headingOf(direction), gyroHeading);
        gyroClimb = climbOf(direction);
    }
};

struct Flare {
    int id;
    FlareRelease release;
    double greatestBrightness;
    Vec3d position;
    Vec3d velocity;
    double age = 0.0;

    // Ejected downwards, to either side in turn.
    Flare(int number, const FlareRelease& itsRelease, double brightness, const Target& target)
        : id(number), release(itsRelease), greatestBrightness(brightness), position(target.position) {
        const double side = number % 2 == 0 ? 1.0 : -1.0;
        const Vec3d sideways = direction(target.heading + side * 90.0, 0.0);
        velocity = target.velocity + kFlareEjectionSpeed * unit(sideways + Vec3d{0.0, 0.0, 1.0});
    }
    void advance() {
        position = position + kStep * velocity;
        const Vec3d acceleration = Vec3d{0.0, 0.0, kGravity} - kFlareDrag * length(velocity) * velocity;
        velocity = velocity + kStep * acceleration;
        age += kStep;
    }
    bool isBurntOut() const { return age >= kFlareBurnTime; }

    double burnt() const { return age / kFlareBurnTime; }
    double brightness() const {
        return greatestBrightness * (1.0 - std::exp(-12.0 * burnt())) * (1.0 - burnt() * burnt());
    }
    FlareSample sample() const {
        const double size = 1.0 + 5.0 * std::sin(std::numbers::pi * burnt());
        return {id,
                release.kind,
                position,
                brightness(),
                age * kFlareSpin,
                {size, 0.8 * size, 0.6 * size},
                release.bandCount};
    }
};

class Flight {
public:
    explicit Flight(const EngagementPlan& plan) : plan_(plan), target_(plan), threat_(plan, target_) {
        if (plan.seekerFieldOfView)
            seeker_.emplace(*plan.seekerFieldOfView, sight());
        seek();
    }

    std::vector<TrajectorySample> fly() {
        std::vector<TrajectorySample> samples;
        for (int step = 0;; ++step) {
            time_ = step * kStep;
            if (step > 0)
                advance();
            releaseFlares();
            const bool hasPassed = range() < kPassingRange && closingSpeed() <= 0.0;
            const bool isOver = range() < kFuzeRange || hasPassed || time_ >= plan_.lastTime;
            if (isOver || step % plan_.sampleMilliseconds == 0)
                samples.push_back(sample());
            if (isOver)
                return samples;
        }
    }

private:
    void advance() {
        threat_.advance(plan_, followed_, time_);
        target_.advance(plan_, time_);
        for (Flare& flare : flares_)
            flare.advance();
        std::erase_if(flares_, [](const Flare& flare) { return flare.isBurntOut(); });
        seek();
    }
    void seek() {
        const HeatSource target{target_.position, target_.velocity, kTargetShare * plan_.flareBrightness};
        if (!seeker_) {
            followed_ = target;
            threat_.lookAlong(sight());
            return;
        }
        std::vector<HeatSource> sources = {target};
        for (const Flare& flare : flares_)
            sources.push_back({flare.position, flare.velocity, flare.brightness()});
        followed_ = seeker_->follow(threat_.position, sources, kStep);
        threat_.lookAlong(seeker_->axis());
    }
    void releaseFlares() {
        for (; released_ < plan_.flares.size() && plan_.flares[released_].time <= time_; ++released_)
            flares_.emplace_back(
                static_cast<int>(released_) + 1, plan_.flares[released_], plan_.flareBrightness, target_);
    }
    Vec3d sight() const { return target_.position - threat_.position; }
    double range() const { return length(sight()); }
    double closingSpeed() const { return dot(sight(), threat_.velocity - target_.velocity) / range(); }

    TrajectorySample sample() const {
        TrajectorySample sample;
        sample.time = time_;
        sample.targetPosition = target_.position;
        sample.targetAttitude = {target_.bank, target_.climb, target_.heading};
        sample.threatPosition = threat_.position;
        sample.threatAttitude = {kThreatRollRate * time_, climbOf(threat_.velocity), threat_.heading};
        sample.range = range();
        sample.closingSpeed = closingSpeed();
        sample.gyro = {0.0, threat_.gyroClimb, threat_.gyroHeading};
        for (const Flare& flare : flares_)
            sample.flares.push_back(flare.sample());
        return sample;
    }

    const EngagementPlan& plan_;
    double time_ = 0.0;
    Target target_;
    Threat threat_;
    std::optional<Seeker> seeker_;
    std::optional<HeatSource> followed_;
    std::vector<Flare> flares_;
    std::size_t released_ = 0;
};
} // namespace

std::vector<TrajectorySample> fly(const EngagementPlan& plan) {
    return Flight(plan).fly();
}
} // namespace sorvane
