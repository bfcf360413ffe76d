// `sorvane export`: writes a trajectory as a table, for a map or as a scene.
#include "exportcommand.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <QFile>
#include <QStringList>

#include <CLI/CLI.hpp>

#include "bodymesh.h"
#include "czmlwriter.h"
#include "engagementfiles.h"
#include "gltfscene.h"
#include "inputtexts.h"
#include "kmlwriter.h"
#include "measurecolumns.h"
#include "measurelist.h"
#include "radiometryoptions.h"
#include "resultfile.h"
#include "samplecsv.h"
#include "trajectoryfile.h"
#include "unitoption.h"

namespace sorvane {
namespace {
constexpr const char* kFormats[] = {"csv", "kml", "czml", "glb"};

struct ExportOptions {
    std::string file;
    std::string output = "-";
    std::string format; // empty: by the output's extension
    LengthUnit unit = LengthUnit::Unstated;
    std::string origin;
    std::string epoch = "2000-01-01T00:00:00Z";
    double xBearingDegrees = 90.0;
    std::string measures;
    bool isOfFlares = false;
    RadiometryOptions radiometry;
};

// What is wrong, for people; nothing when all is well.
using Complaint = std::optional<sorvane::Problem>;

// Of which a table of flares is made when nothing else is asked for.
std::vector<const Measure*> flareMeasures() {
    std::vector<const Measure*> measures;
    for (const Measure& measure : allMeasures())
        if (measure.isOfFlareMoments() && !measure.needsRadiometry())
            measures.push_back(&measure);
    return measures;
}

std::string formatOf(const ExportOptions& options) {
    if (!options.format.empty())
        return options.format;
    const std::string extension = std::filesystem::path(options.output).extension().string();
    return extension.empty() ? "csv" : CLI::detail::to_lower(extension.substr(1));
}

std::optional<GeodeticPosition> parseOrigin(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split(u',');
    if (parts.size() != 2 && parts.size() != 3)
        return std::nullopt;
    double values[3] = {};
    for (int i = 0; i < parts.size(); ++i) {
        bool isNumber = false;
        values[i] = parts[i].toDouble(&isNumber);
        if (!isNumber)
            return std::nullopt;
    }
    const GeodeticPosition origin{values[0], values[1], values[2]};
    const bool isOnEarth = std::abs(origin.latitudeDegrees) <= 90.0 && std::abs(origin.longitudeDegrees) <= 360.0 &&
                           std::isfinite(origin.height);
    return isOnEarth ? std::optional(origin) : std::nullopt;
}

// A run of the sub-command.
class Export {
public:
    Export(const ExportOptions& options, Streams& streams)
        : options_(options), format_(formatOf(options)), streams_(streams) {}

    Complaint run() {
        if (std::ranges::find(kFormats, format_) == std::end(kFormats))
            return options_.output + ": its name tells no format; give --format";
        if (format_ != "csv" && (!options_.measures.empty() || options_.isOfFlares))
            return format_ + " is no table: it takes neither --measures nor --flares";
        if (Complaint complaint = format_ == "csv" ? takeMeasures() : isMap() ? takePlace() : std::nullopt)
            return complaint;
        const sorvane::Outcome<TrajectorySamples> trajectory = readTrajectorySamples(options_.file);
        if (!trajectory)
            return trajectory.problem();
        const std::span<const Sample> samples = trajectory->series.samples();
        if (isMap() && !(worldTimeAfter(epoch_, samples.front().time) && worldTimeAfter(epoch_, samples.back().time)))
            return inputName(options_.file) + ": its times lie outside the years 1 to 9999";
        MeasuredEngagement engagement(trajectory->series, trajectory->header.fieldOfView, options_.unit);
        if (const std::optional<BandChoice> bands = neededBands(measures_))
            if (const Complaint missing =
                    Radiometer(options_.radiometry, *bands).measure(trajectory->header, engagement))
                tell(missing->text);
        if (format_ == "glb")
            return writeScene(engagement, trajectory->header);
        return writeResult(options_.output, streams_, [&](std::ostream& out) {
            format_ == "csv" ? writeTable(out, engagement) : writeMap(out, engagement);
        });
    }

    // Whether nothing is missing in what was written.
    bool isComplete() const { return isComplete_; }

private:
    // What only tables have.
    Complaint takeMeasures() {
        if (options_.measures.empty()) {
            measures_ = options_.isOfFlares ? flareMeasures() : measures_;
            return std::nullopt;
        }
        const Outcome<std::vector<const Measure*>> chosen = chooseMeasures(options_.measures, options_.isOfFlares);
        if (!chosen)
            return chosen.problem();
        measures_ = *chosen;
        if (options_.measures != "all")
            if (const Measure* const without = withoutUnit(measures_, options_.unit))
                tell(std::string(without->name) + " stays empty without --unit");
        return std::nullopt;
    }

    // What only the formats for maps need.
    Complaint takePlace() {
        if (options_.origin.empty() || options_.unit == LengthUnit::Unstated)
            return format_ + " needs --origin and --unit";
        const std::optional<GeodeticPosition> origin = parseOrigin(options_.origin);
        if (!origin)
            return "--origin is not LAT,LON or LAT,LON,ALT: " + options_.origin;
        if (!std::isfinite(options_.xBearingDegrees))
            return "--x-bearing is no finite number";
        const std::optional<WorldTime> epoch = parseWorldTime(options_.epoch);
        if (!epoch)
            return "--epoch is no date of ISO 8601: " + options_.epoch;
        origin_ = *origin;
        epoch_ = *epoch;
        return std::nullopt;
    }

    void writeTable(std::ostream& out, const MeasuredEngagement& engagement) const {
        options_.isOfFlares ? writeFlareCsv(out, engagement, measures_) : writeSampleCsv(out, engagement, measures_);
    }

    void writeMap(std::ostream& out, const MeasuredEngagement& flight) const {
        const PlacedEngagement engagement{
            name(), flight, LocalFrame(origin_, options_.xBearingDegrees, metresPer(options_.unit)), epoch_};
        format_ == "kml" ? writeKml(out, engagement) : writeCzml(out, engagement);
    }

    Complaint writeScene(const MeasuredEngagement& flight, const TrajectoryFileHeader& header) {
        const EngagementFiles files = chooseFiles(header);
        if (files.isStockTarget)
            miss("target", "a file that the trajectory names does not exist: the stock target takes its place");
        const GltfEngagement engagement{
            name(),
            flight,
            {meshOf("target", files.targetBrdfPath, files.targetGeometryPath(), files.targetRadiancePath()),
             meshOf("threat", files.threatBrdfPath(), files.threatGeometryPath(), files.threatRadiancePath())}};
        const Outcome<GlbDocument> scene = sceneOf(engagement);
        if (!scene)
            return inputName(options_.file) + ": " + scene.problem().text;
        return writeResult(options_.output, streams_, [&](std::ostream& out) { scene->write(out); });
    }

    std::optional<BodyMesh>
    meshOf(const char* body, const QString& reflectance, const QString& geometry, const QString& radiance) {
        const auto bytes = [](const QString& path) {
            return QFile::encodeName(path).toStdString();
        };
        Outcome<BodyMesh> mesh = loadBodyMesh({bytes(reflectance), bytes(geometry), bytes(radiance)});
        if (mesh)
            return *std::move(mesh);
        miss(body, mesh.problem().text + " It moves without a mesh.");
        return std::nullopt;
    }

    void miss(const char* body, const std::string& what) { tell(std::string(body) + ": " + what); }

    void tell(const std::string& what) {
        streams_.err << inputName(options_.file) << ": " << what << std::endl;
        isComplete_ = false;
    }

    std::string name() const { return std::filesystem::path(inputName(options_.file)).filename().string(); }
    bool isMap() const { return format_ == "kml" || format_ == "czml"; }

    const ExportOptions& options_;
    std::string format_;
    Streams& streams_;
    GeodeticPosition origin_;
    WorldTime epoch_ = 0;
    std::vector<const Measure*> measures_;
    bool isComplete_ = true;
};
} // namespace

SubCommand addExportCommand(CLI::App& parent) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App* const parser = parent.add_subcommand(
        "export", "Write a trajectory as a table (CSV), for a map (KML, CZML) or as a moving scene (GLB).");
    parser->add_option("FILE", options->file, "Trajectory to read; - is standard input")->required();
    parser->add_option("-o,--output", options->output, "File to write; standard output without it")->type_name("OUT");
    parser->add_option("--format", options->format, "What to write; without it OUT's extension decides, or CSV")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(kFormats), std::end(kFormats))));
    addUnitOption(
        *parser, options->unit,
        "What one of the trajectory's units of length is; needed for maps, in a scene a metre without it");
    parser
        ->add_option(
            "--origin", options->origin,
            "Where the trajectory's origin lies: degrees north, degrees east, metres above the WGS-84 ellipsoid (CZML) "
            "or above sea level (KML); needed for maps")
        ->type_name("LAT,LON[,ALT]");
    parser
        ->add_option(
            "--x-bearing", options->xBearingDegrees,
            "Where x points, in degrees from north towards east; y points 90 degrees to the right of it and z down. "
            "Without it x is east and y south, as the viewer lays the terrain")
        ->type_name("DEGREES")
        ->capture_default_str();
    parser->add_option("--epoch", options->epoch, "Date and time of the trajectory's time 0 on maps, in ISO 8601")
        ->type_name("DATE")
        ->capture_default_str();
    parser
        ->add_option(
            "--measures", options->measures,
            "Columns of measures beside those that every table has: their names with commas between them, or all "
            "but those of radiation, which take longer; sorvane measures lists them")
        ->type_name("LIST");
    parser->add_flag(
        "--flares", options->isOfFlares,
        "Write a row for each flare of each sample, with the measures of flares unless --measures says otherwise");
    addRadiometryOptions(*parser, options->radiometry);
    return {parser, [options](Streams& streams) {
                Export run(*options, streams);
                if (const Complaint complaint = run.run()) {
                    streams.err << "sorvane export: " << complaint->text << std::endl;
                    return ExitStatus::Failed;
                }
                return run.isComplete() ? ExitStatus::Success : ExitStatus::ProblemsFound;
            }};
}
} // namespace sorvane
