// sorvane.render: pictures of engagements, drawn without a window.
#include "bindings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ranges>
#include <thread>
#include <utility>
#include <vector>

#include <pybind11/stl.h>

#include "arrays.h"
#include "fileerror.h"
#include "renderedscene.h"
#include "scaleoptions.h"
#include "textapplication.h"

namespace py = pybind11;

namespace sorvane {
namespace {
using Point = std::array<float, 3>;

struct Pictures {
    std::vector<std::uint8_t> pixels; // red, green, blue; rows from the top; one picture after the other
    std::vector<std::string> remarks; // what the pictures lack
};

// The request's rules name options of the command: "--look-at" is the argument look_at here.
std::string withArguments(std::string text) {
    for (std::size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at)) {
        text.erase(at, 2);
        for (; at < text.size() && (std::islower(static_cast<unsigned char>(text[at])) != 0 || text[at] == '-'); ++at)
            text[at] = text[at] == '-' ? '_' : text[at];
    }
    return text;
}

void takeView(const std::string& name, RenderRequest& request) {
    request.isOverview = name == kOverview;
    const auto* const mode = std::ranges::find(kViewModes, name, &ViewModeName::option);
    if (mode == kViewModes.end() && !request.isOverview)
        throw py::value_error("view is \"threat\", \"target\", \"gyro\", \"free\" or \"overview\"");
    request.view = request.isOverview ? ViewFree : mode->mode;
}

// What OpenGL, the fonts and the loaders keep belongs to a thread.
void stayOnOneThread() {
    static const std::thread::id first = std::this_thread::get_id();
    if (std::this_thread::get_id() != first)
        throw std::runtime_error("sorvane.render draws on one thread: the first that has drawn");
}

void append(const QImage& picture, std::vector<std::uint8_t>& pixels) {
    constexpr std::ptrdiff_t kColours = 3;
    const QImage colours = picture.convertToFormat(QImage::Format_RGB888);
    for (int y = 0; y < colours.height(); ++y)
        pixels.insert(pixels.end(), colours.constScanLine(y), colours.constScanLine(y) + kColours * colours.width());
}

// One for the process, on the thread that draws. It stays when the interpreter ends, whose order of things Qt doesn't
// know.
void keepTextApplication() {
    static const auto* const application = new TextApplication;
    static_cast<void>(application);
}

Pictures draw(const RenderRequest& request, const std::vector<double>& times) {
    if (request.texts.isAny() || request.scale.hasColourBar)
        keepTextApplication();
    Pictures pictures;
    RenderedScene scene(request, [&](const std::string& remark) { pictures.remarks.push_back(remark); });
    const std::string file = request.files.size() == 1 ? request.files.front() : std::string();
    if (const auto problem = scene.load()) {
        std::string text = withArguments(problem->text);
        if (scene.hasUnusableFile())
            for (const std::string& remark : pictures.remarks)
                text += "; " + remark;
        throw FileError(text, file);
    }
    RenderPlan plan = planRendering(request, scene.endSeconds()).plan;
    if (request.isOverview)
        plan.cameras = {scene.overview()};
    for (const double time : times) {
        plan.scene.time = time;
        const QImage picture = scene.draw(plan.scene, plan.cameras);
        if (picture.isNull())
            throw FileError("the scene could not be drawn", file);
        append(picture, pictures.pixels);
    }
    return pictures;
}

// The options have the names of the command's.
RenderRequest
requestOf(const py::list& paths, const std::vector<double>& times, std::pair<int, int> size, const py::dict& options) {
    RenderRequest request;
    request.output = "picture.png"; // by whose rules the rest goes; nothing is written
    for (const py::handle path : paths)
        request.files.push_back(pathOf(py::reinterpret_borrow<py::object>(path)));
    request.size = QSize(size.first, size.second);
    request.atSeconds = times.empty() ? 0.0 : times.front();
    if (const auto view = options["view"].cast<std::optional<std::string>>())
        takeView(*view, request);
    request.eye = options["eye"].cast<std::optional<Point>>();
    request.lookAt = options["look_at"].cast<std::optional<Point>>();
    request.followedFile = options["follow"].cast<std::optional<std::size_t>>();
    request.scene.showTerrain = options["terrain"].cast<bool>();
    request.scene.showGrid = options["grid"].cast<bool>();
    request.scene.showHistoryLines = options["history"].cast<bool>();
    request.scene.showDropLines = options["drop_lines"].cast<bool>();
    request.scene.lineStyles = options["line_styles"].cast<bool>();
    request.scene.samples = options["antialias"].cast<int>();
    if (const auto problem = takeScale(options["scale"].cast<std::string>(), request.scale))
        throw py::value_error(withArguments(problem->text));
    if (const auto problem = takePalette(options["palette"].cast<std::string>(), request.scale))
        throw py::value_error(withArguments(problem->text));
    request.scale.hasColourBar = options["colour_bar"].cast<bool>();
    request.radiance.flareScale = options["flare_scale"].cast<double>();
    if (!(request.radiance.flareScale > 0.0) || !std::isfinite(request.radiance.flareScale))
        throw py::value_error("flare_scale is a finite intensity above 0");
    request.texts.title = options["title"].cast<std::string>();
    request.texts.hasLabels = options["labels"].cast<bool>();
    request.texts.hasReadout = options["readout"].cast<bool>();
    request.texts.unit = lengthUnitOf(options["unit"].cast<std::optional<std::string>>());
    return request;
}

py::tuple
render(const py::list& paths, const std::vector<double>& times, std::pair<int, int> size, const py::dict& options) {
    const RenderRequest request = requestOf(paths, times, size, options);
    if (size.first < 1 || size.second < 1)
        throw py::value_error("size is width and height in pixels, of at least 1");
    if (const auto problem = problemOf(request))
        throw py::value_error(withArguments(problem->text));
    stayOnOneThread();
    Pictures pictures;
    {
        const py::gil_scoped_release unlocked;
        const std::lock_guard alone(loadersMutex());
        pictures = draw(request, times);
    }
    py::list remarks;
    for (const std::string& remark : pictures.remarks)
        remarks.append(shownText(remark));
    const Shape shape{static_cast<py::ssize_t>(times.size()), size.second, size.first, 3};
    return py::make_tuple(arrayOf(std::move(pictures.pixels), shape), remarks);
}
} // namespace

void bindRender(py::module_& module) {
    module.def("render", render, py::arg("paths"), py::arg("times"), py::arg("size"), py::arg("options"));
}
} // namespace sorvane
