// Files of pictures of radiances.
#include "radiancefile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "atomicfile.h"
#include "picturefile.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
struct Format {
    const char* extension;
    std::string (*bytes)(const RadianceImage&);
    bool holdsFacts;
};
constexpr std::array<Format, 4> kFormats = {
    {{"exr", exrBytes, true}, {"tif", tiffBytes, true}, {"tiff", tiffBytes, true}, {"npy", npyBytes, false}}};

const Format* formatOf(const std::string& path) {
    const auto found = std::ranges::find(kFormats, extensionOf(path).toStdString(), &Format::extension);
    return found == kFormats.end() ? nullptr : found;
}

std::optional<Problem> writeBytes(const std::string& bytes, const std::string& path) {
    AtomicFile file(path);
    if (file.problem())
        return file.problem();
    const std::unique_ptr<FILE, int (*)(FILE*)> stream(std::fopen(file.temporaryPath().c_str(), "wb"), std::fclose);
    if (stream == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size() ||
        std::fflush(stream.get()) != 0)
        return path + ": " + std::strerror(errno);
    return file.commit() ? std::nullopt : file.problem();
}

std::string listText(std::span<const double> values) {
    std::string text = "[";
    for (const double value : values)
        text.append(text.size() > 1 ? ", " : "").append(shortestText(value));
    return text + "]";
}
} // namespace

std::string radianceFormats() {
    std::string text;
    for (const Format& format : kFormats)
        text.append(text.empty() ? "" : ", ").append(format.extension);
    return text;
}

bool isRadiancePath(const std::string& path) {
    return formatOf(path) != nullptr;
}

std::string factsText(const RadianceFacts& facts) {
    const auto entry = [](const char* name, const std::string& value) {
        return "  \"" + std::string(name) + "\": " + value;
    };
    return "{\n" + entry("unit", "\"" + std::string(kRadianceUnit) + "\"") + ",\n" +
           entry("time_s", shortestText(facts.time)) + ",\n" + entry("eye", listText(facts.eye)) + ",\n" +
           entry("axis", listText(facts.axis)) + ",\n" +
           entry("vertical_field_of_view_deg", shortestText(facts.fieldOfViewDegrees)) + ",\n" +
           entry("pixel_solid_angle_sr", shortestText(facts.pixelSolidAngle)) + ",\n" +
           entry("background", shortestText(facts.background)) + "\n}\n";
}

std::optional<Problem> writeRadiance(const RadianceImage& image, const std::string& path) {
    const Format* const format = formatOf(path);
    if (format == nullptr)
        return path + ": a radiance picture is one of " + radianceFormats();
    const std::string bytes = format->bytes(image);
    if (bytes.empty())
        return path + ": the picture could not be written";
    if (!format->holdsFacts)
        if (auto problem = writeBytes(factsText(image.facts), path + ".json"))
            return problem;
    return writeBytes(bytes, path);
}
} // namespace sorvane
