// A glTF 2.0 scene with one animation, in its binary form: a chunk of JSON, a chunk of numbers.
#pragma once

#include <cstdint>
#include <ostream>
#include <span>
#include <string>

#include <nlohmann/json.hpp>

namespace sorvane {
class GlbDocument {
public:
    using Json = nlohmann::ordered_json;
    using Index = std::size_t; // in the list of its kind

    // How an accessor's numbers are grouped; the value is how many make one element.
    enum class Element { Scalar = 1, Vec3 = 3, Vec4 = 4 };

    // An attribute of vertices. Those of positions have to say their bounds. Numbers are finite.
    Index addVertices(Element element, std::span<const float> numbers, bool hasBounds);
    // What a mesh of triangles is made of: its attributes by name.
    Index addMesh(const std::string& name, const Json& attributes, Index material);
    Index addMaterial(const Json& material) { return materials_.add(material); }
    Index addNode(const Json& node) { return nodes_.add(node); }

    // Times of an animation, in seconds, ascending and not negative; they begin the accessors of one of its parts.
    Index addTimes(std::span<const float> times);
    // What a node's `path` ("translation", "rotation", "scale") is at these times.
    void animate(
        Index node, const char* path, Index times, Element element, std::span<const float> numbers,
        const char* interpolation);

    // To be called at the end. The scene holds the node `root` and what is below it. `asset` gets the version. False
    // when it is longer than a binary file can be, 4 GiB.
    bool finish(Json asset, Index root);
    void write(std::ostream& out) const;

private:
    // A list of JSON values, kept as text: there may be a million.
    class List {
    public:
        Index add(const Json& value);
        bool isEmpty() const { return count_ == 0; }
        const std::string& items() const { return items_; }

    private:
        std::string items_;
        Index count_ = 0;
    };

    Index addAccessor(Index view, std::size_t offset, Element element, std::span<const float> numbers, bool hasBounds);
    std::string jsonText(Json asset, Index root) const;
    std::size_t length() const;

    List nodes_;
    List meshes_;
    List materials_;
    List accessors_;
    List views_; // of vertices; that of the animation stands before them
    List samplers_;
    List channels_;
    std::string vertices_;
    std::string motion_;
    std::string json_; // once it is finished
};
} // namespace sorvane
