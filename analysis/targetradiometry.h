// What a target radiates towards the threat over time: known at some times, interpolated between them.
#pragma once

#include <utility>
#include <vector>

namespace sorvane {
// Of the target's own length unit: multiplied by the square of the centimetres in it, emissions are W/sr and areas cm².
class TargetRadiometry {
public:
    struct Band {
        char digit = 0;                  // of its files' names
        std::vector<double> emissions{}; // by time: Σ radiance times visible projected area, W/cm²/sr times units²
    };
    struct Series {
        std::vector<double> times{}; // seconds, ascending
        std::vector<double> areas{}; // projected, of what can be seen; units²
        std::vector<Band> bands{};   // the first is that of the files that the trajectory names
        double background = 0.0;     // radiance behind the target, W/cm²/sr
        double flareScale = 1.0;     // W/sr of a flare of brightness 1
    };

    // Needs at least one band. NaN is what is undefined.
    explicit TargetRadiometry(Series series) : series_(std::move(series)) {}

    // Evenly in the logarithm between two times, or in the value itself where one of the two isn't above 0; on a time
    // exactly its value. NaN outside the times and beside an undefined value.
    double emissionAt(double time) const { return valueAt(series_.bands.front().emissions, time); }
    double areaAt(double time) const { return valueAt(series_.areas, time); }
    // NaN, too, without files of that band.
    double emissionAt(double time, char bandDigit) const;

    double background() const { return series_.background; }
    double flareScale() const { return series_.flareScale; }
    const Series& series() const { return series_; }

    // The same with flares of another intensity.
    TargetRadiometry withFlareScale(double scale) const {
        TargetRadiometry result = *this;
        result.series_.flareScale = scale;
        return result;
    }

private:
    double valueAt(const std::vector<double>& values, double time) const;

    Series series_;
};
} // namespace sorvane
