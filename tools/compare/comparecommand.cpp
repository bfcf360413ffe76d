// `sorvane compare`: tells how two pictures, trajectories or bodies differ.
#include "comparecommand.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>

#include <QFile>
#include <QImageReader>

#include <CLI/CLI.hpp>

#include "bodycomparison.h"
#include "comparisonreport.h"
#include "filekind.h"
#include "inputfile.h"
#include "inputtexts.h"
#include "interrupt.h"
#include "openingproblem.h"
#include "picturefile.h"

namespace sorvane {
namespace {
struct CompareOptions {
    std::string a;
    std::string b;
    double tolerance = 0.0;
    double allowed = 0.0;
    std::string difference; // empty: no difference picture
    std::size_t listed = 100;
    BodyComparisonChoice bodies; // but its tolerance
    bool isJson = false;
};

// What keeps the comparison from being done.
struct CannotCompare : std::runtime_error {
    using runtime_error::runtime_error;
};

// Unlike the parser's own ranges, this one holds no NaN.
CLI::Validator numberBetween(double least, double greatest, const std::string& words) {
    const auto fault = [=](const std::string& text) {
        double number = 0.0;
        const bool isFit = CLI::detail::lexical_cast(text, number) && number >= least && number <= greatest;
        return isFit ? std::string() : text + " is not a number of " + words;
    };
    return {fault, ""};
}

bool isPicture(const std::string& path) {
    QImageReader reader(QFile::decodeName(path.c_str()));
    reader.setDecideFormatFromContent(true);
    return path != "-" && reader.canRead();
}

QImage readPicture(const std::string& path) {
    QImageReader reader(QFile::decodeName(path.c_str()));
    reader.setDecideFormatFromContent(true);
    QImage picture = reader.read();
    if (picture.isNull())
        throw CannotCompare(path + ": " + reader.errorString().toStdString());
    return picture;
}

bool comparePictureFiles(const CompareOptions& options, Streams& streams) {
    const QImage a = readPicture(options.a);
    const QImage b = readPicture(options.b);
    const int tolerance = static_cast<int>(std::min(255.0, options.tolerance));
    const PictureComparison comparison = comparePictures(a, b, tolerance);
    if (!options.difference.empty() && comparison.isSameSize()) {
        const Interrupt interrupt;
        if (const auto problem = writePicture(differencePicture(a, b, tolerance), options.difference))
            throw CannotCompare(problem->text);
    }
    const PictureReport report{options.a, options.b, comparison, tolerance, options.allowed};
    options.isJson ? writeJson(streams.out, report) : writeText(streams.out, report);
    return comparison.agrees(options.allowed);
}

TrajectoryFile readTrajectory(const std::string& path) {
    sorvane::Outcome<TrajectoryFile> trajectory = readTrajectoryFile(path);
    if (!trajectory)
        throw CannotCompare(trajectory.problem().text);
    return *std::move(trajectory);
}

bool compareTrajectoryFiles(const CompareOptions& options, Streams& streams) {
    if (!options.difference.empty() || options.allowed > 0.0)
        throw CannotCompare("--difference and --allowed are for pictures");
    if (options.a == "-" && options.b == "-")
        throw CannotCompare("only one of the two can be standard input");
    const TrajectoryFile a = readTrajectory(options.a);
    const TrajectoryFile b = readTrajectory(options.b);
    TrajectoryReport report;
    report.a = inputName(options.a);
    report.b = inputName(options.b);
    report.tolerance = options.tolerance;
    report.listed = options.listed;
    report.comparison = compareTrajectories(a, b, options.tolerance, [&](const SampleDifference& difference) {
        ++report.found;
        if (report.differences.size() < options.listed)
            report.differences.push_back(difference);
    });
    options.isJson ? writeJson(streams.out, report) : writeText(streams.out, report);
    return report.comparison.agrees();
}

bool isGeometry(const std::string& path) {
    return path != "-" && fileKindOf(path) == FileKind::Geometry;
}

bool compareBodyFiles(const CompareOptions& options, Streams& streams) {
    if (!options.difference.empty() || options.allowed > 0.0)
        throw CannotCompare("--difference and --allowed are for pictures");
    BodyComparisonChoice choice = options.bodies;
    choice.toleranceDecibels = options.tolerance;
    const Outcome<BodyComparison> comparison = compareBodies(options.a, options.b, choice, streams);
    if (!comparison)
        throw CannotCompare(comparison.problem().text);
    options.isJson ? writeJson(streams.out, *comparison) : writeText(streams.out, *comparison);
    return comparison->differences.agrees(options.tolerance);
}

bool compareFiles(const CompareOptions& options, Streams& streams) {
    for (const std::string& path : {options.a, options.b})
        if (path != "-" && openInputFile(path) == nullptr)
            throw CannotCompare(path + ": " + problemOfOpening(path).text);
    const bool isPictureA = isPicture(options.a);
    const bool isPictureB = isPicture(options.b);
    if (isPictureA && isPictureB)
        return comparePictureFiles(options, streams);
    if (isPictureA || isPictureB)
        throw CannotCompare(
            inputName(isPictureA ? options.a : options.b) + " is a picture, " +
            inputName(isPictureA ? options.b : options.a) + " is not");
    const bool isBodyA = isGeometry(options.a);
    const bool isBodyB = isGeometry(options.b);
    if (isBodyA && isBodyB)
        return compareBodyFiles(options, streams);
    if (isBodyA || isBodyB)
        throw CannotCompare(
            inputName(isBodyA ? options.a : options.b) + " is a body's geometry, " +
            inputName(isBodyA ? options.b : options.a) + " is not");
    if (!options.bodies.plot.empty() || !options.bodies.band.empty() || !options.bodies.atmosphere.empty())
        throw CannotCompare("--plot, --band and --atm are for bodies");
    return compareTrajectoryFiles(options, streams);
}

void addBodyOptions(CLI::App& parser, BodyComparisonChoice& bodies) {
    parser
        .add_option(
            "--plot", bodies.plot,
            "Of bodies, where their signatures differ: a polar plot (.svg, .pdf, .png) or a table of all directions "
            "(.csv)")
        ->type_name("OUT");
    parser.add_option("--step", bodies.step, "Of bodies, between directions, in degrees: a part of 90")
        ->type_name("DEGREES")
        ->capture_default_str();
    parser
        .add_option(
            "--band", bodies.band,
            "Of several files beside a body's geometry those that have _b000 and this digit in their name")
        ->type_name("DIGIT");
    parser.add_option("--atm", bodies.atmosphere, "Atmosphere file for bodies; without it they stand in the dark")
        ->type_name("FILE");
}
} // namespace

SubCommand addCompareCommand(CLI::App& parent) {
    const auto options = std::make_shared<CompareOptions>();
    CLI::App* const parser = parent.add_subcommand(
        "compare", "Compare two pictures, two trajectories or two bodies; the exit status is 1 when they differ.");
    parser->add_option("A", options->a, "Picture, trajectory or body's geometry; - is a trajectory on standard input")
        ->required();
    parser->add_option("B", options->b, "What to compare A with, of the same kind")->required();
    parser
        ->add_option(
            "--tolerance", options->tolerance,
            "Largest difference that counts as none: of a colour channel (0 to 255) in pictures, of any number in "
            "trajectories, of the radiant intensity of bodies in dB")
        ->type_name("NUMBER")
        ->check(numberBetween(0.0, std::numeric_limits<double>::max(), "0 or more"))
        ->capture_default_str();
    parser
        ->add_option(
            "--allowed", options->allowed, "Share of a picture's pixels, 0 to 1, that may differ by more than that")
        ->type_name("SHARE")
        ->check(numberBetween(0.0, 1.0, "0 to 1"))
        ->capture_default_str();
    parser
        ->add_option(
            "--difference", options->difference,
            "Picture to write: A in dim grey, with the pixels that differ in red, the brighter the more")
        ->type_name("OUT");
    parser
        ->add_option(
            "--list", options->listed, "How many differences between trajectories to list; the summary counts all")
        ->type_name("COUNT")
        ->capture_default_str();
    addBodyOptions(*parser, options->bodies);
    parser->add_flag("--json", options->isJson, "Write the result as JSON");
    return {parser, [options](Streams& streams) {
                try {
                    return compareFiles(*options, streams) ? ExitStatus::Success : ExitStatus::ProblemsFound;
                } catch (const CannotCompare& reason) {
                    streams.err << "sorvane compare: " << reason.what() << std::endl;
                    return ExitStatus::Failed;
                }
            }};
}
} // namespace sorvane
