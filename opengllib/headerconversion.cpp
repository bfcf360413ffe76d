// Conversions between the two families of raster headers.
#include "headerconversion.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "messages.h"

using namespace sorvane;

namespace {
constexpr std::size_t kAssociatedText = 60;

template <std::size_t N> void fill(char (&field)[N], const char* text) {
    strcpyFillZeros(field, text, int{N});
}

// The integer part, and 0 for what an int can't hold.
int truncated(float value) {
    return value > -2147483648.0F && value < 2147483648.0F ? static_cast<int>(value) : 0;
}
} // namespace

void strcpyFillZeros(char* dest, const char* src, int width) {
    if (width <= 0)
        return;
    const auto size = static_cast<std::size_t>(width);
    const std::size_t length = ::strnlen(src, size);
    std::memcpy(dest, src, length);
    std::memset(dest + length, 0, size - length);
}

void bkg_header2ghead(const BKG_header& bkg, GHead& ghead) {
    ghead = {}; // all that is not named below
    std::memcpy(ghead.headkey, "$$L1", sizeof ghead.headkey);
    ghead.nrows = bkg.sizeY;
    ghead.ncols = bkg.sizeX;
    ghead.xCellSize = bkg.xStepSize;
    ghead.yCellSize = bkg.yStepSize;
    ghead.nbands = ghead.packtype = ghead.cellUnits = 1;
    ghead.zscale = 1.0F;
    std::memcpy(ghead.fileType, bkg.headerSignature, sizeof ghead.fileType);
    ghead.MinVals[0] = bkg.databaseMinimum;
    ghead.MaxVals[0] = bkg.databaseMaximum;
    std::memcpy(ghead.iassocf1, bkg.associatedBlock, kAssociatedText);
    std::memcpy(ghead.iassocf2, bkg.associatedBlock + kAssociatedText, kAssociatedText);
    ghead.lambda1 = ghead.lambda2 = static_cast<float>(bkg.validBand) / 100.0F;
    ghead.mean[0] = bkg.databaseMean;
    ghead.stddev[0] = bkg.databaseStdDev;
    ghead.ambienttemp = bkg.ambientAirTemperature;
}

void ghead2bkg_header(const GHead& ghead, BKG_header& bkg) {
    fill(bkg.headerSignature, ".VARNOBKG");
    fill(bkg.originatingAgency, "TORVALE");
    fill(bkg.geodeticProjection, "UTM");
    fill(bkg.geodeticSpheroid, "WGS-84");
    fill(bkg.geodeticDatum, "WGS-84");
    fill(bkg.hemisphere, "NORTH");
    bkg.geodeticZone = 10;
    bkg.baseX = bkg.baseY = 0;
    std::ranges::copy(
        std::to_array({659083.0, double{ghead.xCellSize}, 0.0, 3986277.0, 0.0, double{ghead.yCellSize}}),
        bkg.transform);
    char dimensions[32];
    std::snprintf(dimensions, sizeof dimensions, "%dx%d", ghead.ncols, ghead.nrows);
    fill(bkg.dimensions, dimensions);
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    ::localtime_r(&now, &today);
    setFileCreationDate(bkg, today);
    bkg.sizeX = ghead.ncols;
    bkg.sizeY = ghead.nrows;
    bkg.xStepSize = ghead.xCellSize;
    bkg.yStepSize = ghead.yCellSize;
    // The ninth byte keeps the "G" from above: deliberate, existing files have it.
    strcpyFillZeros(bkg.headerSignature, ghead.fileType, sizeof ghead.fileType);
    bkg.reserved2 = 0;
    bkg.databaseMinimum = ghead.MinVals[0];
    bkg.databaseMaximum = ghead.MaxVals[0];
    bkg.databaseMean = ghead.mean[0];
    bkg.databaseStdDev = ghead.stddev[0];
    bkg.ambientAirTemperature = ghead.ambienttemp;
    bkg.relativeHumidity = bkg.windSpeed = bkg.windDirection = bkg.barometricPressure = 0.0F;
    bkg.visibility = bkg.pyranometer = bkg.databaseReference = 0.0F;
    bkg.validBand = truncated(ghead.lambda1 * 50.0F + ghead.lambda2 * 50.0F);
    fill(bkg.weatherSetDate, "000000");
    fill(bkg.weatherSetTime, "00:00:00");
    std::memcpy(bkg.associatedBlock, ghead.iassocf1, kAssociatedText);
    std::memcpy(bkg.associatedBlock + kAssociatedText, ghead.iassocf2, kAssociatedText);
}

namespace sorvane {
void setFileCreationDate(BKG_header& bkg, const std::tm& date) {
    int yearsSince2000 = date.tm_year - 100;
    if (yearsSince2000 < 0 || yearsSince2000 > 99) {
        printMessage("yearsSince2000: %d", yearsSince2000);
        yearsSince2000 = 0;
    }
    char text[40];
    std::snprintf(text, sizeof text, "%02d%02d%02d", yearsSince2000, date.tm_mon + 1, date.tm_mday);
    fill(bkg.fileCreationDate, text);
}
} // namespace sorvane
