// What bodies made of the same files have in common, and how they are drawn in turn.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "bodylight.h"
#include "bodyshader.h"
#include "brdffile.h"
#include "contentcache.h"
#include "facetarrays.h"
#include "facetbuffers.h"
#include "multifacet.h"
#include "rotor.h"
#include "shape.h"

struct Dynamic_Data;

namespace sorvane {
// What loading a body gives.
struct BodyParts {
    int facets = 0;
    int vertexCount = 0;
    BoxCorners box{};
    BrdfFile brdf;
    FacetArrays arrays;
    std::optional<MultiFacet> multiFacet; // nothing when facets don't reflect each other
    bool hasFormFactorFault = false;
    std::unique_ptr<Rotor> rotor;
    bool isUploadedEachFrame = false;   // vertices, with the rotors turned
    std::unique_ptr<BodyShader> shader; // null when they are
    BodyLight light;
    float grey = 0.0F; // of the whole body from afar
    FacetBuffers buffers;
};

// The mean over the facets by their areas of what they radiate, and reflect of earth and sky, all three in the same
// unit. Only the files' contents are looked at.
float meanRadiance(const BodyParts& parts, float earthRadiance, float skyRadiance);

// The parts, and what a body needs of memory while it is drawn: the next body that is drawn takes it over.
class BodyModel : public SharedContent {
public:
    explicit BodyModel(std::unique_ptr<BodyParts> parts);

    // Those that are shared.
    static ContentCache<BodyModel>& cache();

    const BodyParts& parts() const { return *parts_; }
    // No point is farther than this from the origin, however the rotors turn; infinite when some vertex is nowhere.
    float reach() const { return reach_; }

    // What the facets reflect of each other towards an eye in model coordinates, and nothing without one: per facet in
    // file order, W/cm²/sr. Worked out unless the last call was for the same eye. Valid until the next call.
    std::span<const float> reflectedTowards(const std::optional<Vector<float>>& eye);

    // Draws the body as the eye sees it, posed by the current model-view matrix. Leaves other vertex arrays current.
    void draw(const std::optional<Vector<float>>& eye, const Dynamic_Data& data);

private:
    void turnRotors(float time);
    void drawBlocks() const;

    std::unique_ptr<BodyParts> parts_;
    float reach_ = 0.0F;
    std::vector<Tuple3<float>> turnedVertices_; // empty without rotors
    std::optional<Vector<float>> reflectedEye_; // which the radiances in the arrays are for
    bool areReflectedUploaded_ = true;          // so they are by FacetBuffers::create
};
} // namespace sorvane
