// The geometry file (".vnl"): the facets of a body, spread out into the arrays that are drawn.
#include "vnlfile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <memory>
#include <new>

#include "brdffile.h"
#include "cnumericlocale.h"
#include "endprocess.h"
#include "facetarrays.h"
#include "fail.h"
#include "inputfile.h"
#include "messages.h"
#include "plainfields.h"
#include "radfile.h"
#include "texthead.h"
#include "trackedline.h"

using namespace sorvane;

namespace {
constexpr float kThird = 0.3333333F; // bit pattern 0x3EAAAAAA, the float below the one nearest to 1/3

using Word = char[TrackedLine::kLineLength];
using Triple = Tuple3<float>;

bool readVertex(TrackedLine& line, Triple& position, Triple& normal) {
    PlainFields fields(line.view());
    if (fields.readFloat(position.x) && fields.readFloat(position.y) && fields.readFloat(position.z) &&
        fields.readFloat(normal.x) && fields.readFloat(normal.y) && fields.readFloat(normal.z) && fields.skipWord())
        return true;
    Word word;
    return std::sscanf(
               line.text(), "%f %f %f %f %f %f %255s", &position.x, &position.y, &position.z, &normal.x, &normal.y,
               &normal.z, word) == 7;
}

bool readFacet(TrackedLine& line, std::array<int, 3>& vertices) {
    int number = 0;
    PlainFields fields(line.view());
    if (fields.readInt(number) && fields.readInt(vertices[0]) && fields.readInt(vertices[1]) &&
        fields.readInt(vertices[2]) && fields.skipWord())
        return true;
    Word word;
    return std::sscanf(line.text(), "%d %d %d %d %255s", &number, &vertices[0], &vertices[1], &vertices[2], word) == 5;
}

// The 0-based index of the 1-based vertex that is a facet's corner 0, 1 or 2. Truncating to 16 bits is deliberate where
// they number all vertices: vertex 0 is then reported as 65535.
int vertexIndex(int oneBased, int corner, int numVerts) {
    const unsigned int whole = static_cast<unsigned int>(oneBased) - 1U;
    const int index =
        numVerts > VnlFile::kMost16BitVertices ? static_cast<int>(whole) : static_cast<unsigned short>(whole);
    if (index < 0 || index >= numVerts) {
        fail("Load", "us%d should be less than numVerts = %d, but is %d.", corner, numVerts, index);
        endProcess();
    }
    return index;
}

Triple operator-(const Triple& a, const Triple& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Vector<float> centroid(const Triple& p0, const Triple& p1, const Triple& p2) {
    return {(p0.x + p1.x + p2.x) * kThird, (p0.y + p1.y + p2.y) * kThird, (p0.z + p1.z + p2.z) * kThird, 1.0F};
}

// Divides by the length itself, and not with Vector's operator/, which would hide that a facet has no area.
Vector<float> unitNormal(const Triple& p0, const Triple& p1, const Triple& p2) {
    const Triple u = p1 - p0;
    const Triple v = p2 - p0;
    const Triple n{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    const float length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    return {n.x / length, n.y / length, n.z / length, 0.0F};
}

std::array<Vector<float>, 8> boxCorners(const std::array<float, 6>& box) {
    const auto [x1, x2, y1, y2, z1, z2] = box;
    return {
        {{x1, y1, z1, 1.0F},
         {x2, y1, z1, 1.0F},
         {x2, y2, z1, 1.0F},
         {x1, y2, z1, 1.0F},
         {x1, y1, z2, 1.0F},
         {x2, y1, z2, 1.0F},
         {x2, y2, z2, 1.0F},
         {x1, y2, z2, 1.0F}}};
}

struct VertexTable {
    int count = 0;
    std::unique_ptr<Triple[]> positions;
    std::unique_ptr<Triple[]> normals;

    bool read(FileTracker& lines, int numVerts);
};

bool VertexTable::read(FileTracker& lines, int numVerts) {
    count = numVerts;
    // Every vertex has a line of its own: more of them than lines left can't all be read, whatever line 1 says.
    const auto readable = static_cast<std::size_t>(std::clamp<std::int64_t>(numVerts, 0, lines.remaining()));
    positions.reset(numVerts < 0 ? nullptr : new (std::nothrow) Triple[readable]);
    if (positions == nullptr)
        return fail("Load", "Could not allocate %d Vertex objects for array vnlVertex.", numVerts);
    normals.reset(new (std::nothrow) Triple[readable]);
    if (normals == nullptr)
        return fail("Load", "Could not allocate %d Vertex objects for array vnlNormals.", numVerts);
    TrackedLine line;
    for (int i = 0; i < numVerts; ++i) {
        if (!line.next(lines))
            return fail("Load", "Unexpected EOF when reading vertex %d.", i + 1);
        const auto vertex = static_cast<std::size_t>(i);
        if (!readVertex(line, positions[vertex], normals[vertex]))
            return fail("Load", "Malformed line %d. Received \"%s\".", i + 3, line.text());
    }
    return true;
}

bool readFacets(
    FileTracker& lines, int numFacets, const VertexTable& vertices, BrdfFile& brdf, const RadFile& rad,
    const VnlArrays& arrays, std::vector<VnlFile::WrappedFacet>& wrapped) {
    TrackedLine line;
    for (int k = 0; k < numFacets; ++k) {
        if (!line.next(lines))
            return fail("Load", "Unexpected EOF when trying to read facet %d.", k + 1);
        const int lineNumber = vertices.count + k + 3;
        std::array<int, 3> named{};
        if (!readFacet(line, named))
            return fail(
                "Load", "Malformed line %d when reading facet %d. Received \"%s\".", lineNumber, k + 1, line.text());
        std::array<std::size_t, 3> indices{};
        for (std::size_t c = 0; c < 3; ++c)
            indices[c] = static_cast<std::size_t>(vertexIndex(named[c], static_cast<int>(c), vertices.count));
        for (std::size_t c = 0; c < 3; ++c)
            if (const int taken = static_cast<int>(indices[c]) + 1; taken != named[c]) {
                wrapped.push_back({lineNumber, k, named[c], taken});
                break;
            }

        const int slot = brdf.SortedFacetIndex(k);
        if (slot < 0)
            return false; // reported
        const auto s = static_cast<std::size_t>(slot);
        const auto file = static_cast<std::size_t>(k);
        const std::size_t corner = 3 * s; // its 16 bits wrap in bodies too large to be drawn by index
        arrays.facets[s] = {
            static_cast<unsigned short>(corner), static_cast<unsigned short>(corner + 1),
            static_cast<unsigned short>(corner + 2)};
        const float radiance = rad.rad()[file];
        const float emittance = rad.bbe()[file];
        for (std::size_t c = 0; c < 3; ++c) {
            arrays.cornerPositions[corner + c] = vertices.positions[indices[c]];
            arrays.cornerNormals[corner + c] = vertices.normals[indices[c]];
            arrays.cornerRadiance[corner + c] = {radiance, radiance, radiance};
            arrays.cornerEmittance[corner + c] = {emittance, emittance, emittance};
        }
        const Triple& p0 = vertices.positions[indices[0]];
        const Triple& p1 = vertices.positions[indices[1]];
        const Triple& p2 = vertices.positions[indices[2]];
        arrays.facetCentroids[file] = centroid(p0, p1, p2);
        arrays.facetNormals[file] = unitNormal(p0, p1, p2);
        arrays.sortedIndex[file] = slot;
    }
    return true;
}
} // namespace

bool VnlFile::looksLike(const sorvane::TextHead& head) {
    return head.integers(0) == 2 && head.words(0) == 2 && head.numbers(1) == 6 && head.words(2) == 7;
}

std::optional<VnlFile::Counts> VnlFile::announcedCounts(std::string_view text) {
    const std::string head(text.substr(0, TrackedLine::kLineLength - 1));
    Counts counts;
    if (std::sscanf(head.c_str(), "%d %d", &counts.vertices, &counts.facets) < 2)
        return std::nullopt;
    return counts;
}

std::optional<VnlFile::Counts> VnlFile::readAnnouncedCounts(const std::string& name) {
    return announcedCounts(readInputFile(name, TrackedLine::kLineLength).value_or(""));
}

bool VnlFile::LoadAlone(const std::string& name, int facets, FacetArrays& arrays) {
    BrdfFile brdf;
    RadFile rad;
    brdf.makeUniform(facets);
    return rad.makeDark(facets) && arrays.allocate(facets) &&
           Load(
               name, brdf, rad, arrays.indices_.get(), arrays.vertices_.get(), arrays.normals_.get(),
               arrays.primaryColors_.get(), arrays.secondaryColors_.get(), arrays.facetCentroids_.get(),
               arrays.facetNormals_.get(), arrays.facetMap_.get());
}

bool VnlFile::Load(
    const std::string& name, BrdfFile& brdf, RadFile& rad, Tuple3<unsigned short>* facets,
    Tuple3<float>* cornerPositions, Tuple3<float>* cornerNormals, Tuple3<float>* cornerRadiance,
    Tuple3<float>* cornerEmittance, Vector<float>* facetCentroids, Vector<float>* facetNormals, int* sortedIndex) {
    setName(name);
    const FileTrackerHandle lines(fTrackerOpen(name.c_str(), "r", TrackedLine::kLineLength));
    if (lines == nullptr)
        return fail("Load", "Unable to open \"%s\" for reading.", name.c_str());
    return parse(
        *lines, brdf, rad,
        {facets, cornerPositions, cornerNormals, cornerRadiance, cornerEmittance, facetCentroids, facetNormals,
         sortedIndex});
}

bool VnlFile::parse(FileTracker& lines, BrdfFile& brdf, const RadFile& rad, const VnlArrays& arrays) {
    const CNumericLocale decimalPoint;
    TrackedLine line;

    if (!line.next(lines)) {
        fail("Load", "Unexpected EOF when trying to read number of vertices and subfacets.");
        printMessage("VnlFile::Load: unexpected EOF found.");
        return false;
    }
    int numVerts = 0;
    int numFacets = 0;
    if (std::sscanf(line.text(), "%d %d", &numVerts, &numFacets) < 2)
        return fail("Load", "Malformed line 1. Expected 2 ints, but received \"%s\".", line.text());
    if (numFacets != brdf.numFacets())
        return fail(
            "Load", "Number of facets in VNL file, %d, does not match the number of facets in the BRDF file, %d.",
            numFacets, brdf.numFacets());

    if (!line.next(lines))
        return fail("Load", "Unexpected EOF when trying to read bounding box.");
    std::array<float, 6> box{}; // x1 x2 y1 y2 z1 z2
    if (std::sscanf(line.text(), "%f %f %f %f %f %f", &box[0], &box[1], &box[2], &box[3], &box[4], &box[5]) < 6) {
        // No comma after "floats": the texts of the two lines differ.
        return fail("Load", "Malformed line 2. Expected 6 floats but received \"%s\".", line.text());
    }
    boundingBox_ = boxCorners(box);

    VertexTable vertices;
    wrappedFacets_.clear();
    return vertices.read(lines, numVerts) && readFacets(lines, numFacets, vertices, brdf, rad, arrays, wrappedFacets_);
}
