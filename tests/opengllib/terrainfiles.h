// Hand-made terrain sets for tests.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "asterfiles.h"
#include "rasterfiles.h"
#include "temporarydirectory.h"

namespace sorvane {
// A described set "set" of one tile of 3 × 2 posts, number 1, in `directory`.
class TerrainFiles {
public:
    static constexpr int kColumns = 3;
    static constexpr int kRows = 2;

    explicit TerrainFiles(const TemporaryDirectory& directory) : directory_(directory) {}

    std::string folder() const { return directory_.path().string(); }
    std::string file(const std::string& name) const { return directory_.file(name); }

    // The two rasters that a tile needs. Heights 10 to 60, radiances 1 to 6.
    void writeRequired() const {
        writeBkg(file("set_n0001.le-ftop"), header(), bytesOf(std::vector<float>{10, 20, 30, 40, 50, 60}));
        writeBkg(file("set_n0001.rad"), header(), bytesOf(std::vector<float>{1, 2, 3, 4, 5, 6}));
    }
    // Classes 1, 2, 3 in each row.
    void writeClasses() const { writeBkg(file("set_n0001.cls"), header(), "\1\2\3\1\2\3"); }
    void writeNormals() const {
        std::vector<float> normals;
        for (int i = 0; i < kColumns * kRows; ++i)
            normals.insert(normals.end(), {0.0F, 0.0F, 1.0F});
        writeBkg(file("set_n0001.norm"), header("NORM"), bytesOf(normals));
    }
    // The required rasters and those that light needs.
    void writeRasters() const {
        writeRequired();
        writeClasses();
        writeNormals();
    }
    // The sun in the zenith; beam 0.5, sky 0.25 W/cm²/sr.
    void writeAtmosphere() const { directory_.write("set.atm", "1 2 3\n1 2 3 4 5 6 7 8 180 0\n1 2500 5000 0\n"); }
    // Class 1 reflects 0.25, class 2 has material 0, class 3 has no pair.
    void writeMaterialRoute() const {
        directory_.write("set.cls2mat", "1 2\n2 0\n1 1\n");
        directory_.write("set.temp", "290 0.5\n300 0.75\n");
    }
    // Class 1 reflects 0.4, class 2 has no material, class 3 has no entry.
    void writeAsterRoute() const {
        directory_.write("aster/grass.txt", asterText(kRisingPoints));
        directory_.write("set.cls2aster", "1 grass\n2 aster::alpha\n");
        directory_.write("set.band", "band\n8 9\n");
    }
    std::string writeDescription(const std::string& name = "set.xml") const {
        return directory_.write(
            name, "<terrain><base>set</base><asterdb>" + file("aster") +
                      "</asterdb><subs><subterrain n=\"1\"><origin_x>100</origin_x><origin_y>200</origin_y>"
                      "<width>3</width><height>2</height><minZ>10</minZ><maxZ>60</maxZ>"
                      "<vec dir=\"x\"><i>5</i><j>0</j></vec><vec dir=\"y\"><i>0</i><j>7</j></vec>"
                      "</subterrain></subs></terrain>\n");
    }

    static BKG_header header(const char* signature = "") { return bkgHeader(kColumns, kRows, signature); }

private:
    const TemporaryDirectory& directory_;
};
} // namespace sorvane
