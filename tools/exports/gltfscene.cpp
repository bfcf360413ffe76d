// Makes an engagement a glTF 2.0 scene that moves.
#include "gltfscene.h"

#include <algorithm>
#include <cmath>

#include "attitude.h"
#include "flareburns.h"
#include "glbdocument.h"
#include "placedengagement.h"
#include "radiancegrey.h"
#include "spheremesh.h"
#include "triples.h"

namespace sorvane {
namespace {
using Json = GlbDocument::Json;
using Element = GlbDocument::Element;

constexpr double kFarthest = 1e12; // units
constexpr double kLongest = 1e12;  // seconds

bool isNear(const Triple& position) {
    return std::ranges::all_of(position, [](double coordinate) { return std::abs(coordinate) <= kFarthest; });
}

// What a node does over time: where it is, and how it is turned or how large it is.
struct Motion {
    std::vector<float> times;
    std::vector<float> places;
    std::vector<float> shapes;

    // In the order of time. What is no later in single precision takes the place of what was before.
    template <class Shape> void add(double seconds, const Triple& place, const Shape& shape) {
        if (!times.empty() && static_cast<float>(seconds) <= times.back()) {
            places.resize(places.size() - place.size());
            shapes.resize(shapes.size() - shape.size());
        } else {
            times.push_back(static_cast<float>(seconds));
        }
        for (const double coordinate : place)
            places.push_back(static_cast<float>(coordinate));
        for (const double number : shape)
            shapes.push_back(static_cast<float>(number));
    }
};

// The grey that the viewer shows, as the linear colour that shows as that grey.
float linearColour(float radiance) {
    const double grey = std::clamp(double{radiance} * kGreysPerRadiance, 0.0, 1.0);
    return static_cast<float>(grey <= 0.04045 ? grey / 12.92 : std::pow((grey + 0.055) / 1.055, 2.4));
}

class SceneMaker {
public:
    explicit SceneMaker(const GltfEngagement& engagement)
        : engagement_(engagement), samples_(engagement.flight.samples()),
          origin_(isNear(samples_.front().targetPosition) ? samples_.front().targetPosition : Triple{}) {}

    Outcome<GlbDocument> make() {
        if (!(secondsOn(samples_.size() - 1) <= kLongest))
            return Problem("its times span more than a scene can");
        material_ = glb_.addMaterial(
            {{"name", "Radiance"},
             {"pbrMetallicRoughness", {{"metallicFactor", 0}, {"roughnessFactor", 1}}},
             {"extensions", {{"KHR_materials_unlit", Json::object()}}}});
        for (std::size_t body = 0; body < kMapBodies.size(); ++body)
            addBody(kMapBodies[body], engagement_.meshes[body]);
        if (engagement_.flight.tracks().size() > 0)
            addFlares();
        if (children_.empty())
            return Problem("has nothing nearer than 10^12 units");
        if (!glb_.finish(asset(), addRoot()))
            return Problem("is too long for a GLB file");
        return std::move(glb_);
    }

private:
    double secondsOn(std::size_t sample) const { return samples_[sample].time - samples_.front().time; }

    void addBody(const MapBody& body, const std::optional<BodyMesh>& mesh) {
        Motion motion;
        Quaternion turn{};
        for (std::size_t i = 0; i < samples_.size(); ++i) {
            const Triple place = difference(samples_[i].*body.position, origin_);
            if (!isNear(place))
                continue;
            turn = nearerTo(turn, quaternionOf(modelAxes(samples_[i].*body.attitude)));
            motion.add(secondsOn(i), place, turn);
        }
        Json node = {{"name", body.name}};
        if (mesh && !mesh->positions.empty())
            node["mesh"] = addMesh(body.name, *mesh);
        addNode(node, motion, "rotation", Element::Vec4, "LINEAR");
    }

    GlbDocument::Index addMesh(const char* name, const BodyMesh& mesh) {
        std::vector<float> colours;
        colours.reserve(mesh.positions.size());
        for (const float radiance : mesh.radiances)
            colours.insert(colours.end(), 3, linearColour(radiance));
        const Json attributes = {
            {"POSITION", glb_.addVertices(Element::Vec3, mesh.positions, true)},
            {"COLOR_0", glb_.addVertices(Element::Vec3, colours, false)},
            {"_RADIANCE", glb_.addVertices(Element::Scalar, mesh.radiances, false)}};
        return glb_.addMesh(name, attributes, material_);
    }

    void addFlares() {
        const Json attributes = {{"POSITION", glb_.addVertices(Element::Vec3, unitSphereMesh(), true)}};
        const GlbDocument::Index mesh = glb_.addMesh("Flare", attributes, material_);
        for (std::size_t track = 0; track < engagement_.flight.tracks().size(); ++track)
            addNode(
                {{"name", flareName(engagement_.flight, track)}, {"mesh", mesh}}, flareMotion(track), "scale",
                Element::Vec3, "STEP");
    }

    Motion flareMotion(std::size_t track) const {
        const FlareColumns& flares = engagement_.flight.flares();
        Motion motion;
        const auto add = [&](std::size_t sample, const Triple& place, double size) {
            motion.add(secondsOn(sample), place, Triple{size, size, size});
        };
        for (const FlareBurn& burn : burnsOf(engagement_.flight, track)) {
            std::optional<Triple> place;
            for (const FlareTracks::Number row : burn.rows) {
                const Triple next = difference(flares.positions[row], origin_);
                if (!isNear(next))
                    continue;
                if (motion.times.empty() && burn.firstSample > 0)
                    add(0, next, 0.0);
                place = next;
                add(engagement_.flight.tracks().sampleOf(row), next, sizeOf(flares.bands[row]));
            }
            if (place && burn.outSample != engagement_.flight.tracks().sampleOf(burn.rows.back()))
                add(burn.outSample, *place, 0.0);
        }
        return motion;
    }

    static double sizeOf(const Triple& halfAxes) {
        double size = 0.0;
        for (const double halfAxis : halfAxes)
            size = std::max(size, std::abs(halfAxis));
        return std::min(size, kFarthest);
    }

    // A node that is nowhere is left out.
    void addNode(Json node, const Motion& motion, const char* shape, Element element, const char* interpolation) {
        if (motion.times.empty())
            return;
        const auto size = static_cast<std::ptrdiff_t>(element);
        node["translation"] = std::vector<float>(motion.places.begin(), motion.places.begin() + 3);
        node[shape] = std::vector<float>(motion.shapes.begin(), motion.shapes.begin() + size);
        const GlbDocument::Index index = glb_.addNode(node);
        const GlbDocument::Index times = glb_.addTimes(motion.times);
        glb_.animate(index, "translation", times, Element::Vec3, motion.places, "LINEAR");
        glb_.animate(index, shape, times, element, motion.shapes, interpolation);
        children_.push_back(index);
    }

    // Columns: x stays, y becomes z and z, which points down, -y.
    GlbDocument::Index addRoot() {
        const double metres = metresPer(engagement_.flight.unit());
        const Json root = {
            {"name", engagement_.name},
            {"matrix",
             {metres, 0, 0, 0, 0, 0, metres, 0, 0, -metres, 0, 0, metres * origin_[0], -metres * origin_[2],
              metres * origin_[1], 1}},
            {"children", children_}};
        return glb_.addNode(root);
    }

    Json asset() const {
        return {
            {"generator", "sorvane"},
            {"extras",
             {{"axes", "x, -z and y of the trajectory are x, y and z of the scene, in metres"},
              {"unit", unitSymbol(engagement_.flight.unit()).toStdString()},
              {"metres_per_unit", metresPer(engagement_.flight.unit())},
              {"origin", origin_},
              {"first_time_s", samples_.front().time},
              {"grey_per_W_per_cm2_sr", kGreysPerRadiance}}}};
    }

    const GltfEngagement& engagement_;
    std::span<const Sample> samples_;
    Triple origin_; // of what is below the root, in the trajectory's units
    GlbDocument glb_;
    GlbDocument::Index material_ = 0;
    std::vector<GlbDocument::Index> children_;
};
} // namespace

Outcome<GlbDocument> sceneOf(const GltfEngagement& engagement) {
    return SceneMaker(engagement).make();
}
} // namespace sorvane
