// Engagements with bodies of a few facets, to be drawn as radiances.
#pragma once

#include <gtest/gtest.h>

#include "glapi.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "nestedbody.h"
#include "pixelplane.h"
#include "radbytes.h"
#include "radianceframe.h"
#include "scenepicture.h"
#include "temporarydirectory.h"

namespace sorvane {
// The facets of a body in one reflectance class, all of one radiance, in flat facets.
struct PlainBody {
    Mesh mesh;
    double radiance = 0.0;                         // W/cm²/sr
    std::string reflectance = "0.2 0.5 0 0.3 0 x"; // as the file has it
    BodyLight light{};
};

inline std::unique_ptr<Hardbody> bodyOf(const PlainBody& plain, const TemporaryDirectory& folder) {
    static int made = 0; // one folder holds the files of all
    const std::string stem = "plain" + std::to_string(++made);
    const auto facets = static_cast<int>(plain.mesh.facets.size());
    std::string vertices;
    std::string corners;
    int count = 0;
    for (const MeshFacet& facet : plain.mesh.facets) {
        const Vec3d normal = unit(areaVector(plain.mesh, facet));
        corners += std::to_string(count / 3 + 1);
        for (const std::size_t corner : facet.corners) {
            const Vec3d& at = plain.mesh.points[corner];
            for (const double value : {at.x, at.y, at.z, normal.x, normal.y, normal.z})
                vertices += std::to_string(value) + ' ';
            vertices += "v\n";
            corners += ' ' + std::to_string(++count);
        }
        corners += " f\n";
    }
    const std::string number = std::to_string(facets);
    const std::string geometry = folder.write(
        stem + ".vnl", std::to_string(3 * facets) + ' ' + number + "\n-1 1 -1 1 -1 1\n" + vertices + corners);
    const std::string reflectance =
        folder.write(stem + ".brdf", "BRDF\n1\n" + plain.reflectance + "\n1 " + number + " 1 x\n");
    const std::vector<float> radiances(plain.mesh.facets.size(), static_cast<float>(1e6 * plain.radiance));
    const std::string signature = folder.write(stem + ".rad", radBytes(radiances, radiances));
    auto body = std::make_unique<Hardbody>();
    EXPECT_TRUE(body->Init(
        reflectance, geometry, signature, SORVANE_SHADERS, "", true, true, false, false, false, 0.0F, 0.0F, 0.0F, 0.0F,
        0.0F, 0.0F, 3000.0F, plain.light.earthRadiance, plain.light.skyRadiance, plain.light.solarBeam));
    return body;
}

// A rectangle in the plane of model y and z that faces +x.
inline Mesh plate(double width, double height) {
    const double y = width / 2.0;
    const double z = height / 2.0;
    return {{{0.0, -y, -z}, {0.0, y, -z}, {0.0, y, z}, {0.0, -y, z}}, {{{0, 1, 2}, {}}, {{0, 2, 3}, {}}}};
}

// A box about the origin that shows its inner or its outer sides.
inline Mesh box(double half, bool isSeenFromInside) {
    Mesh mesh;
    for (int corner = 0; corner < 8; ++corner)
        mesh.points.push_back(
            {(corner & 1) != 0 ? half : -half, (corner & 2) != 0 ? half : -half, (corner & 4) != 0 ? half : -half});
    constexpr std::array<std::array<std::size_t, 4>, 6> kSides = {
        {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}}};
    for (const auto& [a, b, c, d] : kSides) {
        const std::size_t second = isSeenFromInside ? d : b;
        const std::size_t fourth = isSeenFromInside ? b : d;
        mesh.facets.push_back({{a, second, c}, {}});
        mesh.facets.push_back({{a, c, fourth}, {}});
    }
    return mesh;
}

// Engagements with given bodies, drawn as radiances.
struct RadianceFrameTest : testing::Test {
    TemporaryDirectory folder;
    OffscreenScene scene;
    RadianceFrame frame;
    std::array<etxyz, 2> engagements;
    RadianceRequest request{.width = 64, .height = 64};

    // A target that is posed so that its model's axes are the world's, but turned about z.
    void place(std::size_t number, const PlainBody& plain, const Vertex& at, float turn = 0.0F) {
        keyframe sample;
        std::ranges::copy(at, sample.targetPos);
        sample.targetAtt[0] = -180.0F; // takes back what the view adds
        sample.targetAtt[2] = turn;
        etxyz& engagement = engagements[number];
        engagement.keyframes.insert(0.0, sample);
        engagement.hardbodiesInitialized = true; // given, not named by a file
        engagement.target = bodyOf(plain, folder);
        engagement.threat.reset();
    }
    void placeFlare(const Vertex& at, float intensity, std::array<float, 3> halfAxes) {
        keyframe sample;
        flareKeyframe flare;
        std::ranges::copy(at, flare.pos);
        std::ranges::copy(halfAxes, flare.intensity);
        flare.values[1] = 30.0F;
        flare.scalar = intensity;
        sample.flares.append(flare);
        engagements[1].keyframes.insert(0.0, sample);
    }
    RadiancePicture draw(const Camera& camera) {
        std::vector<SceneEngagement> shown;
        for (std::size_t i = 0; i < engagements.size(); ++i)
            shown.push_back({EngagementId{static_cast<std::uint32_t>(i) + 1}, &engagements[i]});
        const auto picture = frame.draw(shown, camera, request);
        EXPECT_TRUE(picture.has_value());
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return picture.value_or(RadiancePicture{});
    }
    // The sum over the picture of radiance × solid angle, above the background's, times a squared distance: W/sr.
    double intensityAt(double distance, const RadiancePicture& picture) const {
        const PixelPlane plane(request.fieldOfViewDegrees, request.width, request.height);
        const double centimetres = distance * request.flareUnits.centimetres;
        double sum = 0.0;
        for (int row = 0; row < picture.height; ++row)
            for (int column = 0; column < picture.width; ++column)
                sum += (double{picture.radiances[static_cast<std::size_t>(row * picture.width + column)]} -
                        double{request.background}) *
                       plane.solidAngleOf(column, row);
        return sum * centimetres * centimetres;
    }
};

inline const Vertex kPlace = {1234.5F, -876.3F, -345.7F};

// A camera `distance` along +x from the place that looks past it: `right` and `down` in parts of half the picture's
// height at 30 degrees.
inline Camera cameraBeside(double distance, double right, double down) {
    const double half = std::tan(std::numbers::pi / 12.0);
    const auto eyeX = static_cast<float>(kPlace[0] + distance);
    const Vector<float> eye(eyeX, kPlace[1], kPlace[2], 1.0F);
    const Vector<float> look(
        -100.0F, static_cast<float>(100.0 * half * right), static_cast<float>(100.0 * half * down), 0.0F);
    return cameraAt(eye, eye + look);
}
} // namespace sorvane
