// The header of a TORVALE raster file.
#include "ghead.h"

#include <cstdio>
#include <span>

#include "bkgheader.h"
#include "cnumericlocale.h"

using namespace sorvane;

namespace {
void printFloats(const char* label, std::span<const float> values) {
    std::fputs(label, stdout);
    for (const float value : values)
        std::printf("%f ", double{value});
    std::putchar('\n');
}

template <std::size_t N> void printText(const char* label, const char (&text)[N], int count = int{N}) {
    std::fputs(label, stdout);
    printCharArray(text, count, true);
}
} // namespace

FileHandle ReadHeader(const std::string& path, GHead& header) {
    FileHandle stream = openInputFile(path);
    if (stream != nullptr && std::fread(&header, sizeof header, 1, stream.get()) != 1)
        stream.reset();
    return stream;
}

void ReadHeaderOnly(const std::string& path, GHead& header) {
    ReadHeader(path, header);
}

void PrintHeader(const GHead& header) {
    const CNumericLocale decimalPoint;
    printText("headkey ", header.headkey);
    std::printf("nrows: %d, ncols: %d\n", header.nrows, header.ncols);
    std::printf("nbands %d\n", header.nbands);
    std::printf("packtype: %d\n", header.packtype);
    std::printf("cell units: %d\n", header.cellUnits);
    std::printf(
        "xCellSize: %f\tyCellSize: %f\tzscale: %f\n", double{header.xCellSize}, double{header.yCellSize},
        double{header.zscale});
    printText("fileType: ", header.fileType);
    printFloats("MinVals: ", header.MinVals);
    printFloats("MaxVals: ", header.MaxVals);
    printText("iassocf1: ", header.iassocf1);
    printText("iassocf2: ", header.iassocf2);
    std::printf("airrad: %f\n", double{header.airrad});
    std::printf("lambda1: %f\tlambda2: %f\n", double{header.lambda1}, double{header.lambda2});
    std::printf("xStart: %d\tyStart: %d\n", header.xStart, header.yStart);
    std::printf("xorg: %d\tyorg: %d\n", header.xorg, header.yorg);
    std::printf("nsources: %d\n", header.nsources);
    std::printf(
        "source\tx: %f\ty: %f\tz: %f\n", double{header.source[0]}, double{header.source[1]}, double{header.source[2]});
    std::printf("intens: %f %f %f\n", double{header.intens[0]}, double{header.intens[1]}, double{header.intens[2]});
    std::printf("wld units %d\n", header.wldUnits);
    std::printf(
        "world x: %f\ty: %f\tz: %f\n", double{header.world[0]}, double{header.world[1]}, double{header.world[2]});
    printFloats("mean: ", header.mean);
    printFloats("stddev: ", header.stddev);
    // Ten of the 80 bytes: deliberate, scripts compare the print-outs.
    printText("idescript: ", header.idescript, 10);
    std::printf("trailer: %d\n", header.trailer);
    std::printf("ambienttemp: %f\n", double{header.ambienttemp});
    printText("filler: ", header.filler);
}

namespace sorvane {
int sampleSizeOf(const GHead& header) {
    switch (header.packtype) {
    case 0:
        return 1;
    case 1:
        return 2;
    case 2:
        return 4;
    default:
        return 0;
    }
}
} // namespace sorvane
