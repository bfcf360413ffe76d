// The header of a TORVALE raster file: 512 bytes, identical in the file and in memory, in little-endian order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "inputfile.h"

// Character fields have a fixed width and need no closing zero.
struct GHead {
    char headkey[4];
    std::int32_t nrows;
    std::int32_t ncols; // samples per row
    std::int32_t nbands;
    std::int32_t packtype; // see sampleSizeOf
    std::int32_t cellUnits;
    float xCellSize;
    float yCellSize;
    float zscale; // factor on the stored samples of a topography
    char fileType[8];
    float MinVals[10]; // per band, as MaxVals, mean and stddev
    float MaxVals[10];
    char iassocf1[60];
    char iassocf2[60];
    float airrad;
    std::int32_t reserved1; // not interpreted
    float lambda1;          // band edges
    float lambda2;
    std::int32_t xStart;
    std::int32_t yStart;
    std::int32_t xorg;
    std::int32_t yorg;
    std::int32_t nsources;
    float source[3];
    float intens[3];
    std::int32_t wldUnits;
    float world[3];
    float mean[10];
    float stddev[10];
    char idescript[80];
    std::int32_t trailer;
    float ambienttemp;
    char filler[24];
};
namespace sorvane {
static_assert(sizeof(GHead) == 512 && offsetof(GHead, fileType) == 36 && offsetof(GHead, iassocf1) == 124);
static_assert(offsetof(GHead, airrad) == 244 && offsetof(GHead, wldUnits) == 304 && offsetof(GHead, idescript) == 400);
static_assert(offsetof(GHead, trailer) == 480 && offsetof(GHead, filler) == 488);

// Hands every field to `visit` with its name, in the order of the file; without one what is not interpreted.
template <class Visitor> void visitFields(const GHead& h, Visitor visit) {
    visit("headkey", h.headkey);
    visit("nrows", h.nrows);
    visit("ncols", h.ncols);
    visit("nbands", h.nbands);
    visit("packtype", h.packtype);
    visit("cellUnits", h.cellUnits);
    visit("xCellSize", h.xCellSize);
    visit("yCellSize", h.yCellSize);
    visit("zscale", h.zscale);
    visit("fileType", h.fileType);
    visit("MinVals", h.MinVals);
    visit("MaxVals", h.MaxVals);
    visit("iassocf1", h.iassocf1);
    visit("iassocf2", h.iassocf2);
    visit("airrad", h.airrad);
    visit(nullptr, h.reserved1);
    visit("lambda1", h.lambda1);
    visit("lambda2", h.lambda2);
    visit("xStart", h.xStart);
    visit("yStart", h.yStart);
    visit("xorg", h.xorg);
    visit("yorg", h.yorg);
    visit("nsources", h.nsources);
    visit("source", h.source);
    visit("intens", h.intens);
    visit("wldUnits", h.wldUnits);
    visit("world", h.world);
    visit("mean", h.mean);
    visit("stddev", h.stddev);
    visit("idescript", h.idescript);
    visit("trailer", h.trailer);
    visit("ambienttemp", h.ambienttemp);
    visit(nullptr, h.filler);
}
} // namespace sorvane

// Opens a file and reads its header. The stream is at the first sample, offset 512, and belongs to the caller. Null,
// with no message and with `header` in an unknown state, when the file can't be opened or is shorter than a header.
sorvane::FileHandle ReadHeader(const std::string& path, GHead& header);
void ReadHeaderOnly(const std::string& path, GHead& header);

// Writes every field to standard output.
void PrintHeader(const GHead& header);

namespace sorvane {
// Bytes of a stored sample: 1, 2 or 4 for a packtype of 0, 1 or 2, and 0 for any other, which the loaders refuse.
int sampleSizeOf(const GHead& header);
} // namespace sorvane
