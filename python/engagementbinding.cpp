// sorvane.Engagement and sorvane.Flares: the arrays of a trajectory and its measures.
#include <cmath>
#include <utility>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "arrays.h"
#include "bindings.h"
#include "loadedtrajectory.h"
#include "shortestnumber.h"
#include "trajectoryheaderfields.h"
#include "writtenvalues.h"

namespace py = pybind11;

namespace sorvane {
namespace {
// The rows of an engagement's flares.
struct Flares {
    py::object engagement;

    const LoadedTrajectory& trajectory() const { return engagement.cast<const LoadedTrajectory&>(); }
    const FlareColumns& columns() const { return trajectory().series().flares(); }
};

py::ssize_t sizeOf(std::size_t count) {
    return static_cast<py::ssize_t>(count);
}

constexpr py::ssize_t kNumberBytes = sizeof(double);
constexpr py::ssize_t kTripleBytes = sizeof(Triple);
constexpr py::ssize_t kSampleBytes = sizeof(Sample);

template <Triple Sample::*member> py::array sampleTriples(const py::object& self) {
    const std::span<const Sample> samples = self.cast<const LoadedTrajectory&>().series().samples();
    return viewOf((samples.front().*member).data(), {sizeOf(samples.size()), 3}, {kSampleBytes, kNumberBytes}, self);
}

py::array sampleTimes(const py::object& self) {
    const std::span<const Sample> samples = self.cast<const LoadedTrajectory&>().series().samples();
    return viewOf(&samples.front().time, {sizeOf(samples.size())}, {kSampleBytes}, self);
}

py::array flareTriples(const Flares& flares, const std::vector<Triple>& rows) {
    const double* const first = rows.empty() ? nullptr : rows.front().data();
    return viewOf(first, {sizeOf(rows.size()), 3}, {kTripleBytes, kNumberBytes}, flares.engagement);
}

template <class Number> py::array flareNumbers(const Flares& flares, const std::vector<Number>& rows) {
    return viewOf(rows.data(), {sizeOf(rows.size())}, {sizeof(Number)}, flares.engagement);
}

// What `of` says of each row's sample.
template <class Number, class Of> py::array bySample(const Flares& flares, Of of) {
    const LoadedTrajectory& trajectory = flares.trajectory();
    std::vector<Number> numbers;
    {
        const py::gil_scoped_release unlocked;
        const FlareTracks& tracks = trajectory.measured().tracks();
        numbers.reserve(tracks.rowCount());
        for (std::size_t row = 0; row < tracks.rowCount(); ++row)
            numbers.push_back(of(trajectory, tracks.sampleOf(row)));
    }
    return arrayOf(std::move(numbers));
}

struct ToPython {
    py::object operator()(const QString& text) const { return shownText(text.toStdString()); }
    py::object operator()(const float (&triple)[3]) const {
        return py::make_tuple(shortestDouble(triple[0]), shortestDouble(triple[1]), shortestDouble(triple[2]));
    }
    py::object operator()(int number) const { return py::int_(number); }
    py::object operator()(float number) const { return py::float_(shortestDouble(number)); }
};

py::dict headerOf(const LoadedTrajectory& trajectory) {
    py::dict header;
    for (const TrajectoryHeaderField& field : kTrajectoryHeaderFields)
        header[field.name] =
            std::visit([&](auto member) { return ToPython()(trajectory.header().*member); }, field.member);
    return header;
}

py::object unitOf(const LoadedTrajectory& trajectory) {
    if (trajectory.unit() == LengthUnit::Unstated)
        return py::none();
    return py::str(unitSymbol(trajectory.unit()).toStdString());
}

const EngagementResults& resultsUnlocked(const LoadedTrajectory& trajectory) {
    const py::gil_scoped_release unlocked;
    return trajectory.results();
}

const EngagementResults& resultsUnlocked(const LoadedTrajectory& trajectory, const Measure& measure) {
    const py::gil_scoped_release unlocked;
    return trajectory.resultsFor(measure);
}

const MeasuredEngagement& measuredUnlocked(const LoadedTrajectory& trajectory) {
    const py::gil_scoped_release unlocked;
    return trajectory.measured();
}

py::object closestApproachOf(const LoadedTrajectory& trajectory) {
    const ClosestApproach closest = resultsUnlocked(trajectory).closest;
    if (std::isnan(closest.range))
        return py::none();
    return recordClass("ClosestApproach")(closest.time, closest.range);
}

py::array flareIdsOf(const LoadedTrajectory& trajectory) {
    const FlareTracks& tracks = measuredUnlocked(trajectory).tracks();
    std::vector<int> ids(tracks.size());
    for (std::size_t track = 0; track < ids.size(); ++track)
        ids[track] = tracks.id(track);
    return arrayOf(std::move(ids));
}

const Measure& measureNamed(const std::string& name) {
    const Measure* const measure = findMeasure(name);
    if (measure == nullptr)
        throw py::value_error("there is no measure " + name + ": see sorvane.measures()");
    return *measure;
}

py::object ownMeasure(const LoadedTrajectory& trajectory, const Measure& measure) {
    if (measure.isOfEngagement())
        return py::float_(writtenOf(resultsUnlocked(trajectory, measure), measure));
    if (measure.isOfFlares())
        return arrayOf(writtenOfFlares(resultsUnlocked(trajectory, measure), measure));
    std::vector<double> values;
    {
        const py::gil_scoped_release unlocked;
        const MeasuredEngagement& engagement = trajectory.measuredFor(measure);
        values = measure.isOfMoments() ? writtenOnSamples(engagement, measure) : writtenOnAllRows(engagement, measure);
    }
    return arrayOf(std::move(values));
}

// Of flares the tracks come before the dimensions of the times.
py::object measureAt(const LoadedTrajectory& trajectory, const Measure& measure, const py::object& givenTimes) {
    using Times = py::array_t<double, py::array::c_style | py::array::forcecast>;
    const Times times(givenTimes);
    const std::span<const double> span(times.data(), static_cast<std::size_t>(times.size()));
    Shape shape(times.shape(), times.shape() + times.ndim());
    std::vector<double> values;
    {
        const py::gil_scoped_release unlocked;
        const MeasuredEngagement& engagement = trajectory.measuredFor(measure);
        if (measure.isOfFlareMoments())
            shape.insert(shape.begin(), sizeOf(engagement.tracks().size()));
        values =
            measure.isOfMoments() ? writtenAt(engagement, measure, span) : writtenOfFlaresAt(engagement, measure, span);
    }
    if (shape.empty())
        return py::float_(values.front());
    return arrayOf(std::move(values), shape);
}

py::object measureOf(const LoadedTrajectory& trajectory, const std::string& name, const py::object& times) {
    const Measure& measure = measureNamed(name);
    if (!times.is_none() && !measure.isOfMoments() && !measure.isOfFlareMoments())
        throw py::value_error(name + " takes no times: the whole engagement has one");
    py::object values = times.is_none() ? ownMeasure(trajectory, measure) : measureAt(trajectory, measure, times);
    if (measure.needsRadiometry() && trajectory.lackOfRadiation() &&
        PyErr_WarnEx(PyExc_UserWarning, trajectory.lackOfRadiation()->text.c_str(), 1) != 0)
        throw py::error_already_set();
    return values;
}

py::object objectNamed(const LoadedTrajectory& trajectory, double number) {
    const QString name = objectName(measuredUnlocked(trajectory).tracks(), number);
    if (name.isEmpty())
        return py::none();
    return py::str(name.toStdString());
}

std::string shown(const py::object& self) {
    const LoadedTrajectory& trajectory = self.cast<const LoadedTrajectory&>();
    const std::span<const Sample> samples = trajectory.series().samples();
    return "<sorvane.Engagement " + py::repr(self.attr("path")).cast<std::string>() + ", " +
           std::to_string(samples.size()) + " samples, " + shortestText(samples.front().time) + " to " +
           shortestText(samples.back().time) + " s>";
}

std::shared_ptr<LoadedTrajectory> load(
    const py::object& path, const std::optional<std::string>& unitSymbol, bool isStrict, double signatureStep,
    std::optional<double> background, double flareScale, const py::object& rotors) {
    const auto isFinite = [](double number, bool isAbove) {
        return isAbove && std::isfinite(number);
    };
    if (!isFinite(signatureStep, signatureStep > 0.0) || !isFinite(flareScale, flareScale > 0.0) ||
        (background && !isFinite(*background, *background >= 0.0)))
        throw py::value_error("signature_step and flare_scale are above 0, background is 0 or more, all finite");
    const std::string name = pathOf(path);
    const LengthUnit unit = lengthUnitOf(unitSymbol);
    const RadiometryOptions radiometry{
        signatureStep, background, flareScale, rotors.is_none() ? std::string() : pathOf(rotors)};
    const py::gil_scoped_release unlocked;
    return loadTrajectory(name, unit, isStrict, radiometry);
}

void bindFlares(py::module_& module) {
    py::class_<Flares> flares(module, "Flares", "The flares of all samples: a row for each flare of each sample (m).");
    flares.attr("__module__") = "sorvane";
    flares.def("__len__", [](const Flares& self) { return self.columns().size(); });
    const auto add = [&flares](const char* name, auto get, const char* description) {
        flares.def_property_readonly(name, get, description);
    };
    add(
        "id", [](const Flares& self) { return flareNumbers(self, self.columns().ids); },
        "(m,) int32: what identifies a flare from sample to sample.");
    add(
        "position", [](const Flares& self) { return flareTriples(self, self.columns().positions); },
        "(m, 3): x, y, z in the trajectory's unit of length; z points down.");
    add(
        "brightness", [](const Flares& self) { return flareNumbers(self, self.columns().brightnesses); },
        "(m,): the brightness by which the flare is drawn.");
    add(
        "bands", [](const Flares& self) { return flareTriples(self, self.columns().bands); },
        "(m, 3): intensities in bands 1 to 3; where there are fewer than three, all are that of band 1.");
    add(
        "sample",
        [](const Flares& self) {
            return bySample<std::int64_t>(self, [](const LoadedTrajectory& /*trajectory*/, std::size_t sample) {
                return static_cast<std::int64_t>(sample);
            });
        },
        "(m,) int64: the row's sample, an index into the engagement's arrays. A copy.");
    add(
        "time",
        [](const Flares& self) {
            return bySample<double>(self, [](const LoadedTrajectory& trajectory, std::size_t sample) {
                return trajectory.series().samples()[sample].time;
            });
        },
        "(m,): the time of the row's sample in seconds. A copy.");
}
} // namespace

void bindEngagement(py::module_& module) {
    bindFlares(module);
    py::class_<LoadedTrajectory, std::shared_ptr<LoadedTrajectory>> engagement(
        module, "Engagement",
        "A trajectory: its samples by ascending time (n), of those of one time the last one, and its flares.\n\n"
        "The arrays are double precision, with all digits of the file, and read-only: they are the engagement's own "
        "memory, which lives as long as one of them does.");
    engagement.attr("__module__") = "sorvane";
    engagement.def("__len__", [](const LoadedTrajectory& self) { return self.series().samples().size(); });
    engagement.def("__repr__", shown);
    const auto add = [&engagement](const char* name, auto get, const char* description) {
        engagement.def_property_readonly(name, get, description);
    };
    add(
        "path", [](const LoadedTrajectory& self) { return fileName(self.path()); }, "The file that was read.");
    add("unit", unitOf, "What one of the trajectory's units of length is: \"m\", \"ft\" or None.");
    add("header", headerOf, "The lines of the header as a dict: names of files, integers, angles in degrees.");
    add("time", sampleTimes, "(n,): seconds, ascending.");
    add("target_position", sampleTriples<&Sample::targetPosition>, "(n, 3): x, y, z of the target; z points down.");
    add("target_attitude", sampleTriples<&Sample::targetAttitude>, "(n, 3): roll, pitch, yaw of the target, degrees.");
    add("threat_position", sampleTriples<&Sample::threatPosition>, "(n, 3): x, y, z of the threat; z points down.");
    add("threat_attitude", sampleTriples<&Sample::threatAttitude>, "(n, 3): roll, pitch, yaw of the threat, degrees.");
    add("gyro", sampleTriples<&Sample::gyro>, "(n, 3): roll, pitch, yaw of the seeker's gyro, degrees.");
    add(
        "flares", [](const py::object& self) { return Flares{self}; }, "The flares of all samples.");
    add("flare_ids", flareIdsOf,
        "(k,) int32: the identifiers of the flares in the order in which they appear. A copy.");
    add("closest_approach", closestApproachOf,
        "Where target and threat come closest, solved between the samples: time in seconds and range; None where no "
        "sample has finite positions.");
    engagement.def(
        "measure", measureOf, py::arg("name"), py::arg("times") = py::none(),
        "The values of a measure of sorvane.measures(), with the digits that sorvane export and sorvane info write; "
        "NaN where it is undefined.\n\n"
        "Without times: (n,) on the samples for a measure of a \"moment\", (m,) on the rows of the flares for one of a "
        "\"flare moment\", a float for one of the \"engagement\", (k,) in the order of flare_ids for one of a "
        "\"flare\".\n"
        "With times, in seconds and of any shape: positions are linear between samples. A measure of a \"moment\" "
        "has their shape, one of a \"flare moment\" a dimension for the flares before it.\n\n"
        "Truths are 1 and 0, objects 0 for the target and i for flare_ids[i - 1]; object_name names them.");
    engagement.def(
        "object_name", objectNamed, py::arg("number"),
        "\"target\" or \"flare ID\" for a value of a measure of objects such as \"nearest\"; None for NaN.");
    module.def(
        "load", load, py::arg("path"), py::kw_only(), py::arg("unit") = py::none(), py::arg("strict") = true,
        py::arg("signature_step") = RadiometryWork::kUsualStep, py::arg("background") = py::none(),
        py::arg("flare_scale") = 1.0, py::arg("rotors") = py::none(),
        "Reads a trajectory, plain or \".Z\", into an Engagement.\n\n"
        "unit says what one of its units of length is, \"m\" or \"ft\": load factors need it, nothing is converted.\n"
        "Raises Error, with file, line and column, when the file can't be read, holds no samples, or a word of it is "
        "missing or no finite number. With strict=False such a word counts as the viewer has it: 0, as a field of view "
        "1.5.\n\n"
        "The rest is for measures that need the target's signature: seconds between the times at which its radiation "
        "is "
        "worked out, the radiance behind it in W/cm2/sr (that of the sky without it), the intensity in W/sr of a flare "
        "of brightness 1, and the file of its rotors.");
}
} // namespace sorvane
