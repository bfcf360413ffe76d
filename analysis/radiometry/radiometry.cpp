// What the target of an engagement radiates towards the threat, over time.
#include "radiometry.h"

#include <cmath>

#include "attitudelight.h"
#include "encounter.h"

namespace sorvane {
namespace {
constexpr double kMostSteps = 100'000.0;

std::vector<double> timesOf(std::span<const Sample> samples, double step) {
    const double begin = samples.front().time;
    const double end = samples.back().time;
    const double seconds = end - begin;
    std::vector<double> times;
    if (std::isfinite(seconds)) {
        const double wide = std::max(step, seconds / kMostSteps);
        for (std::size_t i = 0; static_cast<double>(i) * wide < seconds; ++i)
            times.push_back(begin + static_cast<double>(i) * wide);
    } else {
        times.push_back(begin);
    }
    while (!times.empty() && !(times.back() < end))
        times.pop_back();
    times.push_back(end);
    return times;
}

// The unit direction to the threat in the model's axes, which has y to the left and z up.
std::optional<Vec3d> towardsThreat(const Moment& moment) {
    const Triple direction = inTargetAxes(moment, directionToThreat(moment));
    const double norm = length(direction);
    if (!(norm > 0.0) || !std::isfinite(norm))
        return std::nullopt;
    return Vec3d{direction[0] / norm, -direction[1] / norm, -direction[2] / norm};
}

// Goes through the times with copies of the bodies, whose rotors turn.
class Radiation {
public:
    Radiation(const TargetModel& model, int pixels) : bands_(model.bands), visibility_(pixels) {}

    struct Point {
        double area = std::nan("");
        std::vector<double> emissions; // by band
    };
    // Undefined without a moment.
    Point at(const std::optional<Moment>& moment) {
        Point point{std::nan(""), std::vector<double>(bands_.size(), std::nan(""))};
        const std::optional<Vec3d> towards = moment ? towardsThreat(*moment) : std::nullopt;
        if (!towards)
            return point;
        const Triple attitude = blended(*moment, &Sample::targetAttitude);
        if (!std::isfinite(attitude[0] + attitude[1] + attitude[2]))
            return point;
        for (TargetModel::Band& band : bands_)
            band.body.turnRotors(static_cast<float>(moment->time()));
        visibility_.look(bands_.front().body, {*towards}, shares_);
        point.area = 0.0;
        for (std::size_t k = 0; k < shares_.size(); ++k)
            point.area += areaOf(bands_.front().body.facets()[k], k, *towards);
        for (std::size_t i = 0; i < bands_.size(); ++i)
            point.emissions[i] = emission(bands_[i], attitude, *towards);
        return point;
    }

private:
    double areaOf(const SignatureBody::Facet& facet, std::size_t k, const Vec3d& towards) const {
        return shares_[k] == 0.0F ? 0.0 : double{shares_[k]} * dot(facet.area, towards);
    }

    double emission(const TargetModel::Band& band, const Triple& attitude, const Vec3d& towards) const {
        const FacetShading shading(band.body, lightAt(band.atmosphere, attitude));
        const Vec3f viewer{static_cast<float>(towards.x), static_cast<float>(towards.y), static_cast<float>(towards.z)};
        double sum = 0.0;
        for (std::size_t k = 0; k < shares_.size(); ++k)
            if (const double area = areaOf(band.body.facets()[k], k, towards); area > 0.0)
                sum += area * shading.towards(k, viewer).total();
        return sum;
    }

    std::vector<TargetModel::Band> bands_;
    FacetVisibility visibility_;
    std::vector<float> shares_; // of the facets, that can be seen; those of all bands are the same
};
} // namespace

std::shared_ptr<const TargetRadiometry>
radiometryOf(std::span<const Sample> samples, const TargetModel& model, const RadiometryWork& work) {
    if (samples.empty())
        return nullptr;
    const double sky = double{model.bands.front().atmosphere.diffuseSkyRadiance()};
    TargetRadiometry::Series series{
        .times = timesOf(samples, work.step),
        .background = work.background.value_or(sky),
        .flareScale = work.flareScale};
    for (const TargetModel::Band& band : model.bands)
        series.bands.push_back({band.digit});
    Radiation radiation(model, work.pixels);
    for (std::size_t i = 0; i < series.times.size(); ++i) {
        if (work.progress && !work.progress(static_cast<double>(i) / static_cast<double>(series.times.size())))
            return nullptr;
        const Radiation::Point point = radiation.at(momentAt(samples, series.times[i]));
        series.areas.push_back(point.area);
        for (std::size_t band = 0; band < series.bands.size(); ++band)
            series.bands[band].emissions.push_back(point.emissions[band]);
    }
    return std::make_shared<const TargetRadiometry>(std::move(series));
}
} // namespace sorvane
