// `sorvane plot`: draws curves over time into a file.
#include "plotcommand.h"

#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>

#include <CLI/CLI.hpp>

#include "engagementfacts.h"
#include "inputtexts.h"
#include "measurecurves.h"
#include "measurelist.h"
#include "picturesize.h"
#include "plotfile.h"
#include "radiometryoptions.h"
#include "resultfile.h"
#include "stripplot.h"
#include "textapplication.h"
#include "trajectoryfile.h"
#include "unitoption.h"

namespace sorvane {
namespace {
struct PlotOptions {
    std::vector<std::string> files;
    std::string output;
    std::string measures; // the usual ones when empty
    LengthUnit unit = LengthUnit::Unstated;
    PlotAlignment alignment = PlotAlignment::Start;
    std::optional<double> from;
    std::optional<double> to;
    std::string size = "1200x800";
    std::string title;
    bool isDark = false;
    RadiometryOptions radiometry;
};

// What is wrong, for people; nothing when all is well.
using Complaint = std::optional<sorvane::Problem>;

const std::map<std::string, PlotAlignment>& alignments() {
    static const std::map<std::string, PlotAlignment> names = {
        {"start", PlotAlignment::Start},
        {"first-flare", PlotAlignment::FirstFlare},
        {"closest-approach", PlotAlignment::ClosestApproach}};
    return names;
}

// The trajectories that a plot shows; they stay where they are.
class PlottedFiles {
public:
    // With a radiometer the engagements have their radiometry.
    PlottedFiles(LengthUnit unit, Radiometer* radiometer) : unit_(unit), radiometer_(radiometer) {}

    Complaint add(const std::string& path) {
        Outcome<TrajectorySamples> trajectory = readTrajectorySamples(path);
        if (!trajectory)
            return trajectory.problem();
        const TrajectorySamples& kept = trajectories_.emplace_back(std::move(*trajectory));
        MeasuredEngagement& measured = measured_.emplace_back(kept.series, kept.header.fieldOfView, unit_);
        if (radiometer_ != nullptr)
            if (const Complaint missing = radiometer_->measure(kept.header, measured))
                missing_.push_back(inputName(path) + ": " + missing->text);
        plotted_.push_back(
            {QString::fromStdString(std::filesystem::path(inputName(path)).filename().string()), &measured,
             factsOf(kept.series).events});
        return std::nullopt;
    }
    std::span<const PlottedEngagement> plotted() const { return plotted_; }
    // What stays empty, and why.
    const std::vector<std::string>& missing() const { return missing_; }

private:
    LengthUnit unit_;
    Radiometer* radiometer_;
    std::vector<std::string> missing_;
    std::deque<TrajectorySamples> trajectories_;
    std::deque<MeasuredEngagement> measured_;
    std::vector<PlottedEngagement> plotted_;
};

Complaint plot(const PlotOptions& options, Streams& streams, bool& isComplete) {
    const std::optional<PlotFormat> format = plotFormatOf(QString::fromStdString(options.output));
    if (!format)
        return options.output + ": its name ends in none of .png, .svg, .pdf and .csv";
    const std::optional<QSize> size = pictureSizeOf(options.size);
    if (!size)
        return "--size is not WIDTHxHEIGHT: " + options.size;
    const Outcome<std::vector<const Measure*>> measures =
        options.measures.empty() ? usualPlotMeasures() : chooseMeasures(options.measures, true);
    if (!measures)
        return measures.problem();
    const std::optional<BandChoice> bands = neededBands(*measures);
    std::optional<Radiometer> radiometer;
    if (bands)
        radiometer.emplace(options.radiometry, *bands);
    PlottedFiles files(options.unit, radiometer ? &*radiometer : nullptr);
    for (const std::string& file : options.files)
        if (Complaint complaint = files.add(file))
            return complaint;
    for (const std::string& what : files.missing())
        streams.err << what << std::endl;
    const Measure* const without = withoutUnit(*measures, options.unit);
    if (without != nullptr)
        streams.err << without->name << " stays empty without --unit" << std::endl;
    isComplete = files.missing().empty() && without == nullptr;
    const CurveDigits digits = *format == PlotFormat::Csv ? CurveDigits::Written : CurveDigits::All;
    PlotDocument document = plotOf(files.plotted(), *measures, options.alignment, digits);
    if (!options.title.empty())
        document.title = QString::fromStdString(options.title);
    const TimeRange times{options.from.value_or(document.times.begin), options.to.value_or(document.times.end)};
    if (!(times.begin < times.end))
        return "--from is not before --to";
    QByteArray bytes;
    if (*format == PlotFormat::Csv) {
        bytes = plotTable(document, times);
    } else {
        const TextApplication application(makeApplication<QApplication>);
        if (application.problem())
            return application.problem();
        StripPlot drawn;
        drawn.setTheme(options.isDark ? darkPlotTheme() : lightPlotTheme());
        drawn.setDocument(std::move(document));
        drawn.setTimes(times);
        bytes = plotPicture(drawn, *format, *size);
    }
    if (bytes.isEmpty())
        return "a plot of " + options.size + " can't be drawn";
    return writeResult(options.output, streams, [&bytes](std::ostream& out) { out.write(bytes.data(), bytes.size()); });
}
} // namespace

SubCommand addPlotCommand(CLI::App& parent) {
    const auto options = std::make_shared<PlotOptions>();
    CLI::App* const parser = parent.add_subcommand("plot", "Draw curves over time into a picture or a table.");
    parser
        ->add_option(
            "FILE", options->files,
            "Trajectories: the lines of the first are solid, those of the others dashed; - is standard input")
        ->required();
    parser->add_option("-o,--output", options->output, "File to write: .png, .svg, .pdf, or .csv for the numbers")
        ->type_name("OUT")
        ->required();
    parser
        ->add_option(
            "--measure", options->measures,
            "Names of measures with commas between them, each for a strip; sorvane measures lists them. Without it "
            "range, closing-speed, off-boresight, flare-band-1")
        ->type_name("LIST");
    addUnitOption(*parser, options->unit, "What one of the trajectory's units of length is");
    parser->add_option("--align", options->alignment, "What becomes time 0: start, first-flare or closest-approach")
        ->type_name("EVENT")
        ->transform(CLI::CheckedTransformer(alignments()));
    parser->add_option("--from", options->from, "Time to begin at")->type_name("SECONDS");
    parser->add_option("--to", options->to, "Time to end at")->type_name("SECONDS");
    parser->add_option("--size", options->size, "Size in pixels; on a page of PDF there are 96 to the inch")
        ->type_name("WIDTHxHEIGHT")
        ->capture_default_str();
    parser->add_option("--title", options->title, "Title; without it the first file's name")->type_name("TEXT");
    parser
        ->add_option_function<std::string>(
            "--theme", [options](const std::string& name) { options->isDark = name == "dark"; }, "light or dark")
        ->type_name("THEME")
        ->default_str("light")
        ->check(CLI::IsMember({"light", "dark"}));
    addRadiometryOptions(*parser, options->radiometry);
    return {parser, [options](Streams& streams) {
                bool isComplete = true;
                if (const Complaint complaint = plot(*options, streams, isComplete)) {
                    streams.err << "sorvane plot: " << complaint->text << std::endl;
                    return ExitStatus::Failed;
                }
                return isComplete ? ExitStatus::Success : ExitStatus::ProblemsFound;
            }};
}
} // namespace sorvane
