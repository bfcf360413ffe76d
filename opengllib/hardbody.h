// A faceted body shaded from infrared signature data: target or threat.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "bodymodel.h"
#include "contentkey.h"
#include "radfile.h"
#include "shape.h"

// Bodies of the same files and values share all but their pose, as long as one of them is there.
//
// Construction needs no GL context. Init, Render and the destructor of an initialised body need the same one current,
// or one that shares with it.
class Hardbody : public Shape {
public:
    // Loads the reflectance, geometry and radiance files, the form factors beside the geometry file (its name with
    // "sff-txt" for the last three letters) if there are any, and the rotors if asked for and `rotorPath` isn't empty;
    // builds the shader program from `shaderDir`, a path with its closing slash; fills the vertex buffers.
    //   doBrdf, antialias          kept
    //   multiFacet                 whether facets reflect each other; without form factors they don't
    //   rotors                     whether to read `rotorPath`
    //   perFrameUpload             vertices are sent every frame, with the rotors turned, and drawn without a program
    //   p0 … p5                    kept
    //   range                      the factor that makes greys of radiances
    //   earthRadiance, skyRadiance, solarBeam    of the atmosphere, W/cm²/sr
    // On failure the loader that failed prints a message, Init returns false, and the body is unusable: drawing it and
    // asking for its boxes does nothing.
    bool Init(
        const std::string& brdfPath, const std::string& vnlPath, const std::string& radPath,
        const std::string& shaderDir, const std::string& rotorPath, bool doBrdf, bool antialias, bool multiFacet,
        bool rotors, bool perFrameUpload, float p0, float p1, float p2, float p3, float p4, float p5, float range,
        const float& earthRadiance, const float& skyRadiance, const float& solarBeam);
    bool isUsable() const { return model_ != nullptr; }
    // Usable, and not without form factors that could not be read.
    bool isWhole() const { return isUsable() && !model_->parts().hasFormFactorFault; }
    // No point of the body is farther from where it is posed than this, however its rotors turn; 0 for an unusable one.
    float reach() const { return isUsable() ? model_->reach() : 0.0F; }

    // What a picture shows of it from so far away that it is a point: its facets' mean, with what they reflect of sky
    // and earth.
    float grey() const { return isUsable() ? model_->parts().grey : 0.0F; }
    // What it is drawn with where nothing else is asked for.
    sorvane::BodyLight light() const { return isUsable() ? model_->parts().light : sorvane::BodyLight(); }
    // What it shares; null for an unusable body.
    const sorvane::BodyModel* model() const { return model_.get(); }

    sorvane::ShapeKind ShapeType() const override { return sorvane::ShapeKind::Hardbody; }
    bool DoBRDF() const override { return true; }
    bool DoAntialias() const override { return true; }
    bool DoHardbody() const override { return true; }
    bool DoPlume() const override { return false; }

    void SetWorldPos(float x, float y, float z) override;
    void SetOrientation(float a, float b, float c) override;
    void SetWorldPosAndOrientation(float x, float y, float z, float a, float b, float c) override;
    const Matrix<float>& modelMatrix() const { return modelMatrix_; }

    // Works out what the facets reflect of each other towards an eye in world coordinates, for the next Render. Does
    // nothing when neither the eye nor the pose changed.
    void UpdateMultiFacet(const Vector<float>& eye);
    // Per facet in file order, W/cm²/sr; null for an unusable body. Valid until one of those that it shares with is
    // asked or drawn.
    const float* multiFacetRadiances() const {
        return isUsable() ? model_->reflectedTowards(multiFacetEye_).data() : nullptr;
    }

    void Render(Dynamic_Data* data) override;

    // For an unusable body all corners are the origin.
    sorvane::BoxCorners BBox() const override { return isUsable() ? model_->parts().box : emptyBox(); }
    sorvane::BoxCorners GetTransformedBBox() const override;
    Vector<float> Centroid(const Matrix<float>& view) const override;
    bool NearPlaneProjection(Rect<float>& rect, const Matrix<float>& view, const float& near) const override;

private:
    struct Flags {
        bool doBrdf = false;
        bool antialias = false;
        bool multiFacet = false;
        bool rotors = false;
        bool perFrameUpload = false;
    };
    // Files and values that a body is made of.
    struct Origin {
        const std::string& brdfPath;
        const std::string& vnlPath;
        const std::string& radPath;
        const std::string& shaderDir;
        std::string rotorPath; // empty when no rotors are asked for
        float earthRadiance;
        float skyRadiance;
        float solarBeam;
    };

    sorvane::ContentKey keyOf(const Origin& origin) const;
    std::unique_ptr<sorvane::BodyParts> load(const Origin& origin) const;
    static bool loadFiles(const Origin& origin, sorvane::BodyParts& parts, RadFile& rad);
    static bool AllocateBuffers(sorvane::BodyParts& parts);
    bool loadSubfacets(const std::string& vnlPath, const RadFile& rad, sorvane::BodyParts& parts) const;
    void ComputeTransforms();

    static sorvane::BoxCorners emptyBox();

    Flags flags_;
    std::array<float, 6> parameters_{};
    float range_ = 0.0F;
    std::shared_ptr<sorvane::BodyModel> model_; // shared with the bodies of the same origin; null when unusable

    std::array<float, 3> position_{};    // world
    std::array<float, 3> orientation_{}; // degrees
    Matrix<float> modelMatrix_ = Matrix<float>::identity();
    std::optional<Vector<float>> multiFacetEye_; // in model coordinates, which facets reflect towards
};
