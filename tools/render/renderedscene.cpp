// The scene of a rendering: its engagements in a view, what they lack, and pictures of them.
#include "renderedscene.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include <QFile>

#include "antialiasing.h"
#include "dataroot.h"
#include "engagementfiles.h"
#include "inputtexts.h"
#include "interrupt.h"
#include "measuretext.h"
#include "shortestnumber.h"
#include "terrain.h"
#include "trajectoryfile.h"

namespace sorvane {
namespace {
// Whether a loader's message is worth a line. The terrain's faults are among its reports on standard output.
bool isFault(const Message& message) {
    return message.isError || !isTerrainNews(message.text);
}

std::optional<QString> firstMissing(std::initializer_list<QString> paths) {
    for (const QString& path : paths)
        if (!QFile::exists(path))
            return path;
    return std::nullopt;
}

FlareUnits flareUnits(const RenderRequest& request) {
    const bool isInFeet = request.texts.unit == LengthUnit::Feet;
    return {isInFeet ? kCentimetresPerFoot : kCentimetresPerMetre, request.radiance.flareScale};
}

TextRequest textsOf(const RenderRequest& request) {
    TextRequest texts = request.texts;
    texts.hasColourBar = request.scale.hasColourBar;
    return texts;
}
} // namespace

RenderedScene::RenderedScene(const RenderRequest& request, Say say)
    : request_(request), say_(std::move(say)), layout_(request.size, request.panes.size()), view_(layout_.paneSize()),
      texts_(textsOf(request), layout_.paneSize()) {}

std::optional<sorvane::Problem> RenderedScene::problem() const {
    for (const auto& problem : {view_.problem(), texts_.problem()})
        if (problem)
            return problem;
    if (const int most = sampleChoices().back(); request_.scene.samples > most)
        return "--antialias: this OpenGL has at most " + std::to_string(most) + " samples a pixel";
    return std::nullopt;
}

std::optional<sorvane::Problem> RenderedScene::load() {
    if (auto problem = this->problem())
        return problem;
    std::error_code ignored;
    if (!std::filesystem::is_directory(sorvane::dataRoot(), ignored))
        miss("there is no data tree \"" + sorvane::dataRoot() + "\"; PELSAR_DATA says where it is");
    for (std::size_t i = 0; i < request_.files.size(); ++i) {
        if (Interrupt::requested() != 0)
            return "stopped; nothing was written";
        if (loadFile(request_.files[i])) {
            if (isFollowedFile(i))
                followed_ = view_.engagementCount() - 1;
            continue;
        }
        hasUnusableFile_ = true;
        if (isFollowedFile(i))
            return "there is no engagement for the camera to follow";
    }
    if (view_.engagementCount() == 0)
        return "there is nothing to draw";
    return std::nullopt;
}

QImage RenderedScene::draw(const SceneOptions& scene, std::span<const CameraChoice> cameras) {
    const bool isOne = cameras.size() == 1;
    QImage picture = isOne ? QImage() : layout_.emptyPicture();
    for (std::size_t i = 0; i < cameras.size(); ++i) {
        QImage pane = drawView(scene, cameras[i], scaleOf(i));
        if (pane.isNull() || (!isOne && picture.isNull()))
            return {};
        const PictureSubject subject{view_, cameras[i], followed_, scene.time};
        texts_.paintLabels(pane, subject);
        if (i == layout_.lowerLeft())
            texts_.paintReadout(pane, subject, cameras);
        if (isOne)
            picture = std::move(pane);
        else
            layout_.put(pane, i, picture);
    }
    texts_.paintTitle(picture);
    return picture;
}

PictureScale RenderedScene::scaleOf(std::size_t pane) const {
    PictureScale scale = request_.scale;
    if (pane < request_.panes.size() && request_.panes[pane].isSeeker && scale.range == PictureScale::Range::Fixed)
        scale.range = PictureScale::Range::Automatic;
    return scale;
}

QImage RenderedScene::drawView(const SceneOptions& scene, const CameraChoice& camera, const PictureScale& scale) {
    QImage picture;
    const LoaderOutcome drawn =
        runLoader([&] { picture = view_.draw(scene, camera, followed_, scale, flareUnits(request_)); });
    return drawn.hasReturned() ? picture : QImage();
}

std::optional<RadianceImage>
RenderedScene::drawRadiance(const SceneOptions& scene, const CameraChoice& camera, std::int64_t frame) {
    const RadianceOptions& options = request_.radiance;
    const double background = options.background.value_or(view_.skyRadiance(followed_));
    const FlareUnits units = flareUnits(request_);
    std::optional<RadiancePicture> drawn;
    const LoaderOutcome outcome =
        runLoader([&] { drawn = view_.drawRadiance(scene, camera, followed_, static_cast<float>(background), units); });
    if (!outcome.hasReturned() || !drawn)
        return std::nullopt;
    SensorPicture sensed{drawn->width, drawn->height, std::move(drawn->radiances)};
    applySensor(options.sensor, static_cast<std::uint64_t>(frame), sensed);

    RadianceImage image{sensed.width, sensed.height, std::move(sensed.values), {}};
    const Camera eye = view_.cameraAt(scene.time, camera, followed_);
    const double length = Length(eye.look());
    image.facts.time = scene.time;
    for (int i = 0; i < 3; ++i) {
        image.facts.eye[static_cast<std::size_t>(i)] = shortestDouble(eye.eye().ElementAt(i));
        image.facts.axis[static_cast<std::size_t>(i)] = double{eye.look().ElementAt(i)} / length;
    }
    image.facts.fieldOfViewDegrees = view_.fieldOfViewDegrees(camera, followed_);
    image.facts.pixelSolidAngle =
        PixelPlane(image.facts.fieldOfViewDegrees, image.width, image.height).centreSolidAngle();
    image.facts.background = options.background.value_or(shortestDouble(view_.skyRadiance(followed_)));
    return image;
}

// Says what is wrong with a file that can't be used, and what one that can lacks.
bool RenderedScene::loadFile(const std::string& path) {
    const std::optional<std::string> fault = addEngagement(path);
    if (fault)
        say_(*fault);
    return !fault;
}

std::optional<std::string> RenderedScene::addEngagement(const std::string& path) {
    const std::string name = inputName(path);
    const std::string broken = name + ": its files are too broken to be used";
    const Outcome<TrajectoryInput> input = openTrajectoryFile(path);
    if (!input)
        return input.problem().text;
    auto engagement = std::make_unique<etxyz>();
    TrajectoryFileHeader header;
    const LoaderOutcome read = runLoader([&] { header = engagement->load(*input); });
    if (!read.hasReturned())
        return broken;
    if (const auto problem = problemOfReading(*input, !engagement->samples.isEmpty(), path))
        return problem->text;
    const std::shared_ptr<const SampleSeries> series = engagement->samples.series();
    const double first = series->samples().front().time;
    const double last = series->samples().back().time;
    reportStockFiles(name, header);
    for (const Message& message : read.messages)
        miss(name + ": atmosphere: " + message.text);
    if (!reportParts(name, view_.add(std::move(engagement), request_.scene.showTerrain)))
        return broken;
    texts_.name(view_.engagements().back().id, name);
    reportTimes(name, first, last);
    endSeconds_ = std::max(endSeconds_, last);
    return std::nullopt;
}

// One missing file has all stock files take the places of those named.
void RenderedScene::reportStockFiles(const std::string& name, const TrajectoryFileHeader& header) {
    const EngagementFiles named = namedFiles(header);
    const auto report = [&](const char* part, std::optional<QString> missing) {
        if (missing)
            miss(
                name + ": " + part + ": \"" + missing->toStdString() + "\" does not exist: the stock " + part +
                " takes its place");
    };
    report(
        "target",
        firstMissing(
            {named.targetGeometryPath(), named.targetBrdfPath, named.targetRadiancePath(), named.atmospherePath()}));
    if (request_.scene.showTerrain)
        report("terrain", firstMissing({named.terrainTopoPath, named.terrainRadPath}));
}

// False when the engagement was not taken.
bool RenderedScene::reportParts(const std::string& name, const std::vector<LoadedPart>& parts) {
    for (const LoadedPart& part : parts) {
        const std::string who = name + ": " + part.name + ": ";
        bool isTold = part.isUsable;
        for (const Message& message : part.outcome.messages)
            if (isFault(message)) {
                say_(who + message.text);
                isTold = true;
                isComplete_ = false;
            }
        if (!isTold)
            say_(who + (part.outcome.messages.empty() ? "can't be used" : part.outcome.messages.back().text));
        isComplete_ = isComplete_ && part.isUsable;
    }
    return parts.back().outcome.hasReturned();
}

// Outside its samples an engagement stays as its first or last one is.
void RenderedScene::reportTimes(const std::string& name, double first, double last) {
    const double time = request_.atSeconds.value_or(0.0);
    if (!request_.atSeconds || (time >= first && time <= last))
        return;
    say_(
        name + ": has no samples at " + shortestText(time) + " s: it " +
        (time < first ? "begins at " + timeText(first).toStdString() : "ended at " + timeText(last).toStdString()));
}
} // namespace sorvane
