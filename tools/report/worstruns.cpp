// The worst runs of a set: pictures of their scenes and plots of their measures.
#include "worstruns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include <QApplication>
#include <QBuffer>

#include "measurecurves.h"
#include "picturesize.h"
#include "plotfile.h"
#include "renderedscene.h"
#include "shellquote.h"
#include "shortestnumber.h"
#include "stripplot.h"
#include "textapplication.h"
#include "trajectoryfile.h"

namespace sorvane {
namespace {
constexpr QSize kPictureSize(720, 540);
constexpr QSize kPlotSize(720, 540);
constexpr int kSamples = 4; // a pixel

std::string unitWords(LengthUnit unit) {
    return unit == LengthUnit::Feet ? "ft" : "m";
}

// The moment that the picture shows.
double pictureTime(const ReportRun& run) {
    return std::isnan(run.timeSeconds) ? 0.0 : run.timeSeconds;
}

std::string renderCommandOf(const ReportRun& run, const WorstRequest& request) {
    std::vector<std::string> words{
        "sorvane",
        "render",
        run.path,
        "-o",
        "run.png",
        "--view",
        kOverview,
        "--at",
        shortestText(pictureTime(run)),
        "--size",
        sizeText(kPictureSize),
        "--antialias",
        std::to_string(kSamples),
        "--labels"};
    if (request.hasTerrain)
        words.emplace_back("--terrain");
    return shellCommand(words);
}

std::string plotCommandOf(const ReportRun& run, const WorstRequest& request) {
    std::vector<std::string> words{"sorvane", "plot", run.path, "-o", "run.svg", "--size", sizeText(kPlotSize)};
    if (request.unit != LengthUnit::Unstated)
        words.insert(words.end(), {"--unit", unitWords(request.unit)});
    return shellCommand(words);
}

QByteArray pngOf(const QImage& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return picture.save(&buffer, "PNG") ? bytes : QByteArray();
}

// Leaves out what lies beyond the ends of strips, up to a point on them: Qt's SVG is not clipped.
void cutAtStripEnds(PlotDocument& document) {
    for (PlotStrip& strip : document.strips)
        for (PlotCurve& curve : strip.curves)
            for (std::size_t i = 0; i < curve.points.size(); ++i)
                if (PlotPoint& point = curve.points[i]; point.value > strip.greatest) {
                    const bool isFirstBeyond = i > 0 && curve.points[i - 1].value < strip.greatest;
                    const bool isLastBeyond = i + 1 < curve.points.size() && curve.points[i + 1].value < strip.greatest;
                    point.value = isFirstBeyond || isLastBeyond ? strip.greatest : std::nan("");
                }
}

// Draws one run.
class RunDrawing {
public:
    RunDrawing(
        WorstRun& run, const WorstRequest& request, WorstRuns& all, const std::function<void(const std::string&)>& say)
        : run_(run), request_(request), all_(all), say_(say) {}

    void draw() {
        const std::string& path = run_.run.path;
        if (runStamp(path) == RunStamp())
            return miss("there is no such file");
        if (runStamp(path) != run_.run.stamp)
            return miss("has changed since its row was made");
        drawScene();
        drawPlot();
    }

private:
    void miss(const std::string& reason) {
        run_.problem += (run_.problem.empty() ? "" : "; ") + reason;
        say_(run_.run.path + ": " + reason);
        all_.isWhole = false;
    }

    void drawScene() {
        RenderRequest request;
        request.files = {run_.run.path};
        request.isOverview = true;
        request.atSeconds = pictureTime(run_.run);
        request.size = kPictureSize;
        request.scene.samples = kSamples;
        request.scene.showTerrain = request_.hasTerrain;
        request.scene.time = *request.atSeconds;
        request.texts.hasLabels = true;
        RenderedScene scene(request, say_);
        if (const auto problem = scene.load())
            return miss("no picture: " + problem->text);
        run_.picture = pngOf(scene.draw(request.scene, std::array{scene.overview()}));
        if (run_.picture.isEmpty())
            miss("no picture: the scene could not be drawn");
        all_.isComplete = all_.isComplete && scene.isComplete();
    }

    void drawPlot() {
        const Outcome<TrajectorySamples> trajectory = readTrajectorySamples(run_.run.path);
        if (!trajectory)
            return miss("no plot: " + trajectory.problem().text);
        const MeasuredEngagement measured(trajectory->series, trajectory->header.fieldOfView, request_.unit);
        const PlottedEngagement plotted{
            QString::fromStdString(std::filesystem::path(run_.run.path).filename().string()), &measured,
            factsOf(trajectory->series).events};
        const std::vector<const Measure*> measures = usualPlotMeasures();
        const auto drawn = [&](const PlotTheme& theme) {
            PlotDocument document = plotOf({&plotted, 1}, measures);
            cutAtStripEnds(document);
            StripPlot plot;
            plot.setTheme(theme);
            plot.setDocument(std::move(document));
            return plotPicture(plot, PlotFormat::Svg, kPlotSize);
        };
        run_.plot = drawn(lightPlotTheme());
        run_.darkPlot = drawn(darkPlotTheme());
    }

    WorstRun& run_;
    const WorstRequest& request_;
    WorstRuns& all_;
    const std::function<void(const std::string&)>& say_;
};
} // namespace

WorstRuns
worstRunsOf(const ReportSet& set, const WorstRequest& request, const std::function<void(const std::string&)>& say) {
    std::vector<const ReportRun*> order;
    for (const ReportRun& run : set.runs)
        order.push_back(&run);
    const std::size_t count = std::min(request.count, order.size());
    const auto isWorse = [&request](const ReportRun* a, const ReportRun* b) {
        if (a->value != b->value)
            return request.isGreatest ? a->value > b->value : a->value < b->value;
        return a->path < b->path;
    };
    std::ranges::partial_sort(order, order.begin() + static_cast<std::ptrdiff_t>(count), isWorse);
    WorstRuns worst;
    const TextApplication application(makeApplication<QApplication>);
    for (std::size_t i = 0; i < count; ++i) {
        WorstRun& run = worst.runs.emplace_back(WorstRun{*order[i], {}, {}, {}});
        run.renderCommand = renderCommandOf(run.run, request);
        run.plotCommand = plotCommandOf(run.run, request);
        if (!application.problem()) {
            RunDrawing(run, request, worst, say).draw();
            continue;
        }
        run.problem = application.problem()->text;
        worst.isWhole = false;
    }
    if (application.problem() && count > 0)
        say(application.problem()->text);
    return worst;
}
} // namespace sorvane
