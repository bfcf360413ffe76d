// A glTF 2.0 scene with one animation, in its binary form: a chunk of JSON, a chunk of numbers.
#include "glbdocument.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <tuple>
#include <utility>

namespace sorvane {
namespace {
using Json = GlbDocument::Json;

constexpr int kFloat = 5126;
constexpr int kArrayBuffer = 34962;
constexpr std::size_t kAlignment = 4;

static_assert(std::endian::native == std::endian::little, "numbers are written as they are in memory");

void append(std::string& bytes, std::span<const float> numbers) {
    const auto whole = std::as_bytes(numbers);
    bytes.append(reinterpret_cast<const char*>(whole.data()), whole.size());
}

void appendWord(std::string& bytes, std::uint64_t word) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(word >> shift & 0xFFU);
}

std::string chunkHead(std::size_t length, const char (&kind)[5]) {
    std::string head;
    appendWord(head, length);
    return head.append(kind, 4);
}

const char* typeName(GlbDocument::Element element) {
    switch (element) {
    case GlbDocument::Element::Scalar:
        return "SCALAR";
    case GlbDocument::Element::Vec3:
        return "VEC3";
    case GlbDocument::Element::Vec4:
        break;
    }
    return "VEC4";
}

// The least and the greatest number of each place within the elements.
std::pair<Json, Json> boundsOf(std::span<const float> numbers, std::size_t size) {
    Json least = Json::array();
    Json greatest = Json::array();
    for (std::size_t place = 0; place < size; ++place) {
        float low = numbers[place];
        float high = low;
        for (std::size_t i = place; i < numbers.size(); i += size) {
            low = std::min(low, numbers[i]);
            high = std::max(high, numbers[i]);
        }
        least.push_back(low);
        greatest.push_back(high);
    }
    return {least, greatest};
}
} // namespace

GlbDocument::Index GlbDocument::List::add(const Json& value) {
    if (count_ > 0)
        items_ += ',';
    items_ += value.dump();
    return count_++;
}

GlbDocument::Index GlbDocument::addAccessor(
    Index view, std::size_t offset, Element element, std::span<const float> numbers, bool hasBounds) {
    const auto size = static_cast<std::size_t>(element);
    Json accessor = {{"bufferView", view}};
    if (offset > 0)
        accessor["byteOffset"] = offset;
    accessor["componentType"] = kFloat;
    accessor["count"] = numbers.size() / size;
    accessor["type"] = typeName(element);
    if (hasBounds)
        std::tie(accessor["min"], accessor["max"]) = boundsOf(numbers, size);
    return accessors_.add(accessor);
}

// The first view is the animation's, whose place is known at the end; the vertices have one for each attribute.
GlbDocument::Index GlbDocument::addVertices(Element element, std::span<const float> numbers, bool hasBounds) {
    const Index view = 1 + views_.add(
                               {{"buffer", 0},
                                {"byteOffset", vertices_.size()},
                                {"byteLength", numbers.size_bytes()},
                                {"target", kArrayBuffer}});
    append(vertices_, numbers);
    return addAccessor(view, 0, element, numbers, hasBounds);
}

GlbDocument::Index GlbDocument::addMesh(const std::string& name, const Json& attributes, Index material) {
    return meshes_.add(
        {{"name", name}, {"primitives", Json::array({Json{{"attributes", attributes}, {"material", material}}})}});
}

GlbDocument::Index GlbDocument::addTimes(std::span<const float> times) {
    const std::size_t offset = motion_.size();
    append(motion_, times);
    return addAccessor(0, offset, Element::Scalar, times, true);
}

void GlbDocument::animate(
    Index node, const char* path, Index times, Element element, std::span<const float> numbers,
    const char* interpolation) {
    const std::size_t offset = motion_.size();
    append(motion_, numbers);
    const Index values = addAccessor(0, offset, element, numbers, false);
    const Index sampler = samplers_.add({{"input", times}, {"interpolation", interpolation}, {"output", values}});
    channels_.add({{"sampler", sampler}, {"target", {{"node", node}, {"path", path}}}});
}

std::string GlbDocument::jsonText(Json asset, Index root) const {
    asset["version"] = "2.0";
    const Json motionView = {{"buffer", 0}, {"byteOffset", vertices_.size()}, {"byteLength", motion_.size()}};
    const Json scene = {{"nodes", {root}}};
    std::string text = R"({"asset":)" + asset.dump();
    text += R"(,"extensionsUsed":["KHR_materials_unlit"],"scene":0,"scenes":[)" + scene.dump() + "]";
    const auto addList = [&](const char* name, const List& list) {
        if (!list.isEmpty())
            text.append(",\"").append(name).append("\":[").append(list.items()).append("]");
    };
    addList("nodes", nodes_);
    addList("meshes", meshes_);
    addList("materials", materials_);
    addList("accessors", accessors_);
    text += R"(,"bufferViews":[)" + motionView.dump() + (views_.isEmpty() ? "" : ",") + views_.items() + "]";
    text += R"(,"buffers":[{"byteLength":)" + std::to_string(vertices_.size() + motion_.size()) + "}]";
    text += R"(,"animations":[{"channels":[)" + channels_.items() + R"(],"samplers":[)" + samplers_.items() + "]}]}";
    return text.append((kAlignment - text.size() % kAlignment) % kAlignment, ' ');
}

std::size_t GlbDocument::length() const {
    constexpr std::size_t kHeadLength = 12;
    constexpr std::size_t kChunkHeadLength = 8;
    return kHeadLength + kChunkHeadLength + json_.size() + kChunkHeadLength + vertices_.size() + motion_.size();
}

bool GlbDocument::finish(Json asset, Index root) {
    json_ = jsonText(std::move(asset), root);
    return length() <= std::numeric_limits<std::uint32_t>::max();
}

void GlbDocument::write(std::ostream& out) const {
    std::string head = "glTF";
    appendWord(head, 2);
    appendWord(head, length());
    out << head << chunkHead(json_.size(), "JSON") << json_;
    out << chunkHead(vertices_.size() + motion_.size(), {'B', 'I', 'N', '\0', '\0'}) << vertices_ << motion_;
}
} // namespace sorvane
