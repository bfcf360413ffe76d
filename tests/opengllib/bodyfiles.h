// Small files of a body, made in memory or on disk, and what the loaders print about them.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "radbytes.h"
#include "temporarydirectory.h"

namespace sorvane {
// What `action` reports through printError, as "file function: message"; anything else on standard error as it stands.
template <class Action> std::string reportOf(Action&& action) {
    testing::internal::CaptureStderr();
    action();
    const std::string printed = testing::internal::GetCapturedStderr();
    char function[64];
    char file[64];
    int length = 0;
    if (std::sscanf(
            printed.c_str(), "Error in function \"%63[^\"]\" of file \"opengllib/%63[^\".].cpp\" (line #%*u): %n",
            function, file, &length) < 2 ||
        length == 0 || !printed.ends_with('\n'))
        return printed;
    // The blank before the message takes white space that belongs to it along; none of the messages begins with any.
    const auto start = static_cast<std::size_t>(length);
    return std::string(file) + " " + function + ": " + printed.substr(start, printed.size() - start - 1);
}

// A file that exists as long as this does.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view contents) : path_(directory_.write("file", contents)) {}

    void write(std::string_view contents) const { directory_.write("file", contents); }
    const std::string& path() const { return path_; }

private:
    TemporaryDirectory directory_;
    std::string path_;
};

// The text of a geometry file, made up piece by piece; a rectangle is two triangles that face +z.
struct Geometry {
    std::string vertices;
    std::string facets;
    int vertexCount = 0;
    int facetCount = 0;

    void addVertex(float x, float y, float z, const char* normal = "0 0 1") {
        vertices += std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(z) + " " + normal + " v\n";
        ++vertexCount;
    }
    void addFacet(int a, int b, int c) {
        facets += std::to_string(++facetCount) + " " + std::to_string(a) + " " + std::to_string(b) + " " +
                  std::to_string(c) + " f\n";
    }
    void addRectangle(float left, float right, float bottom, float top, float z = 0.0F) {
        const int first = vertexCount + 1;
        addVertex(left, bottom, z);
        addVertex(right, bottom, z);
        addVertex(right, top, z);
        addVertex(left, top, z);
        addFacet(first, first + 1, first + 2);
        addFacet(first, first + 2, first + 3);
    }
    std::string text() const {
        return std::to_string(vertexCount) + " " + std::to_string(facetCount) + "\n-1 1 -1 1 -1 1\n" + vertices +
               facets;
    }
};

// A floor of two facets in z = 0 and, over its middle, a wall that faces -x and lights the floor's left half.
inline Geometry floorAndWall() {
    Geometry geometry;
    geometry.addRectangle(-1, 1, -1, 1);
    geometry.addVertex(0, -1, 0);
    geometry.addVertex(0, -1, 0.5F);
    geometry.addVertex(0, 1, 0.25F);
    geometry.addFacet(5, 6, 7);
    return geometry;
}
} // namespace sorvane
