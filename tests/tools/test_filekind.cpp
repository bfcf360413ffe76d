// What files are told to be.
#include "filekind.h"

#include <array>
#include <cstring>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "temporarydirectory.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
// The first 512 bytes of a raster of 2 rows and 3 columns.
std::string torvaleHeader() {
    const std::array<std::int32_t, 4> sizes{2, 3, 1, 2};
    std::string header(512, '\0');
    std::memcpy(header.data() + 4, sizes.data(), sizeof sizes);
    return header;
}

std::string bodyRadiance(std::int32_t facets, std::size_t bytes) {
    std::string contents(bytes, '\0');
    std::memcpy(contents.data() + 40, &facets, sizeof facets);
    return contents;
}

TEST(FileKind, FollowsFromNameAndContents) {
    const std::string trajectory = (trajectoryHeader() + trajectoryRecord(TestSample{})).toStdString();
    const std::string sample = "Name: soil\n" + std::string(25, '\n') + "3.0 10.5\n";
    const struct {
        const char* name;
        std::string contents;
        FileKind kind;
    } rows[] = {
        {"ETXYZ.OUT.1", "broken", FileKind::Trajectory},
        {"run.Z", "broken", FileKind::Trajectory},
        {"run.z", trajectory, FileKind::Trajectory},
        {"any.txt", "# by hand\n" + trajectory, FileKind::Trajectory},
        {"headeronly", trajectoryHeader().toStdString(), FileKind::Trajectory},
        {"soil.txt", sample, FileKind::SpectralSample},
        {"soil.dat", sample, FileKind::Unknown},
        {"ETXYZ.OUT.atm", "", FileKind::Atmosphere},
        {"a.vnl", "", FileKind::Geometry},
        {"geometry", "4 4\n0 1 0 1 0 1\n0 0 0 0 0 1 v\n", FileKind::Geometry},
        {"a.brdf", "", FileKind::Reflectance},
        {"classes", "BRDF\n1\n", FileKind::Reflectance},
        {"sky", "3 5 23\n172 14 30 2 1 0 45 3000 50 235\n1 2 3 0\n", FileKind::Atmosphere},
        {"parts", "# first, last\n1 2 0 0 0 0 0 1 4.9\n", FileKind::Rotor},
        {"signs", "+1 2 -.5 0 0 0 0 1 +4e1\n", FileKind::Rotor},
        {"words", "1 2 0 0 0 0 0 1 4.9 turns\n", FileKind::Unknown},
        {"infinite", "1 2 0 0 0 0 0 1 inf\n", FileKind::Unknown},
        {"b.rad", bodyRadiance(3, 84 + 3 * 8), FileKind::BodyRadiance},
        {"short.rad", bodyRadiance(3, 84 + 2 * 8), FileKind::BodyRadiance},
        {"t.rad", torvaleHeader(), FileKind::Raster},
        {"m.rad", "MORLAN" + bodyRadiance(3, 84 + 3 * 8 - 6), FileKind::Raster},
        {"t.top", "", FileKind::Raster},
        {"t.le-ftop", "", FileKind::Raster},
        {"t.norm", "", FileKind::Raster},
        {"t.cls", "", FileKind::Raster},
        {"raster", std::string("MORLAN\0", 7), FileKind::Raster},
        {"t.cls2mat", "", FileKind::ClassToMaterial},
        {"t.cls2aster", "", FileKind::ClassToAster},
        {"t.temp", "", FileKind::Temperature},
        {"t.band", "", FileKind::Band},
        {"t.xml", "", FileKind::TerrainDescription},
        {"set", "<terrain><subs><subterrain n='1'/></subs></terrain>", FileKind::TerrainDescription},
        {"a.sff-txt", "", FileKind::FormFactors},
        {"notes.txt", "nothing of this\n", FileKind::Unknown},
        {"core", std::string("\0\0\1", 3), FileKind::Unknown},
        {"nothing", "", FileKind::Unknown},
    };
    const TemporaryDirectory directory;
    for (const auto& row : rows)
        EXPECT_EQ(fileKindOf(directory.write(row.name, row.contents)), row.kind)
            << row.name << " is told to be: " << nameOf(fileKindOf(directory.file(row.name)));
}

TEST(FileKind, IsUnknownForWhatIsNoRegularFile) {
    const TemporaryDirectory directory;
    ASSERT_EQ(::mkfifo(directory.file("fifo.vnl").c_str(), 0600), 0);
    EXPECT_EQ(fileKindOf(directory.file("fifo.vnl")), FileKind::Unknown);
    EXPECT_EQ(fileKindOf(directory.file("missing.vnl")), FileKind::Unknown);
    EXPECT_EQ(fileKindOf(directory.path().string()), FileKind::Unknown);
}
} // namespace
