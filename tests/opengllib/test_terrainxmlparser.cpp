// The XML description of a terrain: good and bad documents, messages.
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "decimalcommalocale.h"
#include "rows.h"
#include "subterrain.h"
#include "temporarydirectory.h"
#include "terrainxmlparser.h"

using namespace sorvane;

namespace {
struct Tiles {
    Tiles(const std::string& path, const std::string& dir, const std::string& cls2Aster = "")
        : list(readTerrainXML(path, dir, count, description, cls2Aster)) {}
    ~Tiles() { cleanUpSubTerrainList(list, count); }
    Tiles(const Tiles&) = delete;
    Tiles& operator=(const Tiles&) = delete;

    int count = -1;
    TerrainDescription description;
    SubTerrain** list;
};

// Standard output only: the library itself says on standard error where a document breaks.
template <class Call> std::string printedBy(Call call) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    call();
    testing::internal::GetCapturedStderr();
    return testing::internal::GetCapturedStdout();
}

std::string printedTile(const SubTerrain& tile) {
    return outputOf([&] { tile.print(); });
}
} // namespace

TEST(TerrainXml, PlacesTilesAndNamesTheirFiles) {
    const DecimalCommaLocale locale;
    const TemporaryDirectory directory;
    const std::string path = directory.write(
        "set.xml",
        "<?xml version=\"1.0\"?>\n<!-- c -->\n<terrain>\n <base>tile</base>\n <radbase>radiance</radbase>\n"
        " <datadir>/described</datadir>\n <asterdb>/aster</asterdb>\n <subs>\n"
        "  <subterrain n=\"7\">\n   <origin_x>1.5</origin_x>\n   <origin_y>-2.5</origin_y>\n   <width> 30 </width>\n"
        "   <height>20</height>\n   <minZ>-1e1</minZ>\n   <maxZ>99.5</maxZ>\n"
        "   <vec dir=\"x\">\n <i>4.5</i>\n <j>0.5</j>\n </vec>\n   <vec dir=\"y\">\n <i>-0.5</i>\n <j>6.5</j>\n "
        "</vec>\n"
        "  </subterrain>\n  <subterrain n=\"12345\"/>\n </subs>\n</terrain>\n");
    for (const auto& [dir, cls2Aster, stem, radiance, classToAster] :
         Rows<const char*, const char*, std::string, std::string, std::string>{
             {"/data", "", "/data/tile_n0007", "/data/radiance_n0007.rad", "/data/tile.cls2aster"},
             {"/data/", "", "/data/tile_n0007", "/data/radiance_n0007.rad", "/data/tile.cls2aster"},
             {"", "/own/table", "/described/tile_n0007", "/described/radiance_n0007.rad", "/own/table"}}) {
        const Tiles tiles(path, dir, cls2Aster);
        ASSERT_EQ(tiles.count, 2);
        const SubTerrain& tile = *tiles.list[0];
        EXPECT_EQ(tile.getTopoFilePath(), stem + ".le-ftop");
        EXPECT_EQ(tile.getNormFilePath(), stem + ".norm");
        EXPECT_EQ(tile.getClassFilePath(), stem + ".cls");
        EXPECT_EQ(tile.getRadFilePath(), radiance);
        EXPECT_EQ(tile.getCls2AsterFilePath(), classToAster);
        EXPECT_EQ(tile.getAsterDbFilePath(), "/aster");
        EXPECT_TRUE(tiles.list[1]->getTopoFilePath().ends_with("/tile_n12345.le-ftop"));
        EXPECT_EQ(
            printedTile(tile), "Subterrain:\n\tOrigin: (1.500000, -2.500000)\n"
                               "\tx-vec: 1.000000 x (4.500000, 0.500000)\n\ty-vec: 1.000000 x (-0.500000, 6.500000)\n"
                               "\twidth (x-size): 30\n\theight (y-size): 20\n"
                               "\tmin/max Z: 1.000000 x [-10.000000, 99.500000]\n");
    }
}

TEST(TerrainXml, TheBaseNamesRadianceFilesTooAndWhatFollowsTheListIsNoHeader) {
    const TemporaryDirectory directory;
    for (const auto& [head, radiance] : Rows<const char*, const char*>{
             {"<t><base>b</base>", "/d/b_n0001.rad"},
             {"<t><radbase>r</radbase><base>b</base>", "/d/r_n0001.rad"},
             {"<t><base>b</base><base>c</base>", "/d/b_n0001.rad"},
             {"<t><base>b</base><subs/><base>late</base>", "/d/b_n0001.rad"},
             {"<t>", "/d/_n0001.rad"}}) {
        const std::string tail = "<subs><subterrain n='1'/></subs><base>late</base><asterdb>late</asterdb></t>";
        const Tiles tiles(directory.write("a.xml", head + tail), "/d");
        ASSERT_GT(tiles.count, 0);
        EXPECT_EQ(tiles.list[0]->getRadFilePath(), radiance);
        EXPECT_EQ(tiles.description.asterdb, "");
    }
}

TEST(TerrainXml, VectorsTakeWhatThereIs) {
    const TemporaryDirectory directory;
    const std::string unknown = "terrainXmlParser::processVecNode: don't know what's going on here\n";
    for (const auto& [vec, line, message] : Rows<std::string, std::string, std::string>{
             {"<vec dir='x'><j>3</j></vec>", "\tx-vec: 1.000000 x (0.000000, 3.000000)\n", ""},
             {"<vec dir='Y'><i>2</i></vec>", "\tx-vec: 1.000000 x (2.000000, 0.000000)\n", ""},
             {"<vec dir='y'><i/><j>3</j></vec>", "\ty-vec: 1.000000 x (0.000000, 3.000000)\n", ""},
             {"<vec dir='y'/>", "\ty-vec: 1.000000 x (0.000000, 0.000000)\n", ""},
             {"<vec dir='y'><i>2</i><k>9</k></vec>", "\ty-vec: 1.000000 x (2.000000, 0.000000)\n", unknown},
             {"<vec><i>2</i></vec><width>9</width>", "\twidth (x-size): 9\n", ""},
             {"<width>99999999999</width>", "\twidth (x-size): 2147483647\n", ""}}) {
        const std::string path =
            directory.write("a.xml", "<t><subs><subterrain n='1'>" + vec + "</subterrain></subs></t>");
        const std::string output = outputOf([&] {
            const Tiles tiles(path, "/d");
            ASSERT_EQ(tiles.count, 1);
            tiles.list[0]->print();
        });
        EXPECT_THAT(output, testing::StartsWith("total of 1 subterrains\n" + message + "Subterrain:\n")) << vec;
        EXPECT_THAT(output, testing::HasSubstr(line)) << vec;
    }
}

TEST(TerrainXml, OddDocumentsAreHarmless) {
    const TemporaryDirectory directory;
    const auto nested = [](const std::string& inside) {
        return "<t><subs><subterrain n='1'>" + inside + "</subterrain></subs></t>";
    };
    const std::string nestedList = "terrainXmlParser::processNode: shouldn't have found a <subs>\n";
    for (const auto& [document, counted, tiles, message] : Rows<std::string, int, int, std::string>{
             {"<t/>", 0, 0, ""},
             {"<t><subs/><subterrain n='1'/></t>", 1, 0, ""},
             {"<t><subs><subs><subterrain n='1'/></subs><subterrain n='2'/></subs></t>", 2, 1, nestedList},
             {"<t><subs><subterrain/><subterrain n='x'/></subs></t>", 2, 2, ""},
             {nested("<subterrain n='2'><width>5</width></subterrain>"), 2, 1, ""},
             {"<t><subs><width>5</width><vec><i>1</i></vec><subterrain n='1'/><minZ>5</minZ></subs></t>", 1, 1, ""},
             {nested("<width/><height>abc</height><maxZ>1<!-- 2 -->3</maxZ>"), 1, 1, ""},
             {"<t><subs><subterrain n='99999999999999999999'><width>99999999999</width></subterrain></subs></t>", 1, 1,
              ""},
             {"<t><SUBS><subterrain n='1'/></SUBS></t>", 1, 0, ""}}) {
        const std::string path = directory.write("a.xml", document);
        int read = -1;
        EXPECT_EQ(
            outputOf([&] { read = Tiles(path, "/d").count; }),
            "total of " + std::to_string(counted) + " subterrains\n" + message)
            << document;
        EXPECT_EQ(read, tiles) << document;
    }
}

TEST(TerrainXml, ADocumentThatBreaksOrCanNotBeOpenedHasNoTiles) {
    const TemporaryDirectory directory;
    std::string bomb = "<?xml version='1.0'?><!DOCTYPE t [<!ENTITY a0 'xxxxxxxxxx'>";
    std::string deep;
    for (int i = 1; i < 40; ++i) {
        const std::string before = "&a" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY a" + std::to_string(i) + " '" + before + before + "'>";
        deep += "<t><t><t><t><t><t><t><t>";
    }
    bomb += "]><t><base>&a39;</base><subs>";
    for (const std::string& document :
         {std::string(), std::string("no xml"), std::string("<t><subs><subterrain n='1'/>"),
          std::string("<t><subs><subterrain n='1'/></wrong></t>"), deep, bomb}) {
        const std::string path = directory.write("bad.xml", document);
        EXPECT_EQ(
            printedBy([&] { EXPECT_EQ(Tiles(path, "/d").count, 0); }),
            path + " : failed to parse\nterrainXmlParser::readTerrainXML: " + path + " : failed to parse\n");
    }
    for (const std::string& path : {directory.file("missing.xml"), directory.path().string()})
        EXPECT_EQ(
            outputOf([&] { EXPECT_EQ(Tiles(path, "/d").count, 0); }),
            "Unable to open " + path + "\nterrainXmlParser::readTerrainXML: Unable to open " + path + "\n");
}

TEST(TerrainXml, ReadsNoOtherFile) {
    const TemporaryDirectory directory;
    const std::string secret = directory.write("secret", "secret");
    const std::string path = directory.write(
        "a.xml", "<?xml version='1.0'?><!DOCTYPE t [<!ENTITY e SYSTEM '" + secret +
                     "'>]><t><base>b&e;</base><subs><subterrain n='1'/></subs></t>");
    const Tiles tiles(path, "/d");
    ASSERT_EQ(tiles.count, 1);
    EXPECT_EQ(tiles.list[0]->getNormFilePath(), "/d/b_n0001.norm");
}
