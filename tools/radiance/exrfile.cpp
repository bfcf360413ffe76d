// Pictures of radiances as OpenEXR: one channel of floats, "Y", which viewers show as a grey.
#include <cstring>
#include <exception>

#include <ImfChannelList.h>
#include <ImfDoubleAttribute.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfIO.h>
#include <ImfOutputFile.h>
#include <ImfStringAttribute.h>
#include <ImfVecAttribute.h>

#include "radiancefile.h"

namespace sorvane {
namespace {
// A file in memory.
class Bytes : public Imf::OStream {
public:
    Bytes() : OStream("radiance") {}

    void write(const char* from, int count) override {
        const auto size = static_cast<std::size_t>(count);
        if (bytes_.size() < place_ + size)
            bytes_.resize(place_ + size);
        std::memcpy(bytes_.data() + place_, from, size);
        place_ += size;
    }
    uint64_t tellp() override { return place_; }
    void seekp(uint64_t place) override { place_ = place; }

    std::string take() { return std::move(bytes_); }

private:
    std::string bytes_;
    std::size_t place_ = 0;
};

Imath::V3d vectorOf(const std::array<double, 3>& from) {
    return {from[0], from[1], from[2]};
}
} // namespace

std::string exrBytes(const RadianceImage& image) {
    try {
        Imf::Header header(image.width, image.height);
        header.compression() = Imf::ZIP_COMPRESSION;
        header.channels().insert("Y", Imf::Channel(Imf::FLOAT));
        const RadianceFacts& facts = image.facts;
        header.insert("unit", Imf::StringAttribute(kRadianceUnit));
        header.insert("time", Imf::DoubleAttribute(facts.time));
        header.insert("eye", Imf::V3dAttribute(vectorOf(facts.eye)));
        header.insert("axis", Imf::V3dAttribute(vectorOf(facts.axis)));
        header.insert("verticalFieldOfView", Imf::DoubleAttribute(facts.fieldOfViewDegrees));
        header.insert("pixelSolidAngle", Imf::DoubleAttribute(facts.pixelSolidAngle));
        header.insert("background", Imf::DoubleAttribute(facts.background));

        Bytes bytes;
        {
            Imf::OutputFile file(bytes, header, 0);
            Imf::FrameBuffer pixels;
            // The library takes what it reads as not constant.
            auto* const first = reinterpret_cast<char*>(const_cast<float*>(image.radiances.data()));
            pixels.insert(
                "Y",
                Imf::Slice(Imf::FLOAT, first, sizeof(float), sizeof(float) * static_cast<std::size_t>(image.width)));
            file.setFrameBuffer(pixels);
            file.writePixels(image.height);
        }
        return bytes.take();
    } catch (const std::exception&) {
        return {};
    }
}
} // namespace sorvane
