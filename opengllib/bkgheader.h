// The header of a BKG raster file: 512 bytes without gaps in the file, in little-endian order.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <type_traits>

#include "inputfile.h"

// What the first six bytes of every BKG file hold.
inline constexpr char BKG_HEADER_SIGNATURE[] = "MORLAN";

// The fields in the file's order; members are aligned here, the file has no padding. Character fields have a fixed
// width and need no closing zero.
struct BKG_header {
    char fileId[68]; // begins with BKG_HEADER_SIGNATURE
    char headerSignature[12];
    char geodeticProjection[40];
    char geodeticSpheroid[40];
    char geodeticDatum[20];
    char hemisphere[8];
    std::int32_t geodeticZone;
    double transform[6]; // t0, t3: world x, y of the origin; t1, t5: cell sizes; t2, t4: rotation terms
    char dimensions[16]; // columns and rows as text, "640x480"
    char originatingAgency[20];
    char fileCreationDate[6]; // YYMMDD
    std::int32_t validBand;   // centre of the band, in hundredths of the wavelength unit
    char weatherSetDate[6];
    char weatherSetTime[8];
    float relativeHumidity;
    float windSpeed;
    float windDirection;
    float ambientAirTemperature;
    float barometricPressure;
    float visibility;
    float pyranometer;
    std::int32_t sizeX; // columns
    std::int32_t sizeY; // rows
    float xStepSize;
    float yStepSize;
    std::int32_t baseX;
    std::int32_t baseY;
    float databaseReference;
    std::int32_t reserved2;
    float databaseMean;
    float databaseStdDev;
    float databaseMinimum;
    float databaseMaximum;
    char associatedBlock[136]; // two names of 60 bytes each, the rest is free
};

namespace sorvane {
// Hands every field to `visit` with its name, in the order of the file, in which they lie without gaps; without a name
// what is not interpreted, or not as it stands.
template <class Header, class Visitor>
requires std::same_as<std::remove_const_t<Header>, BKG_header>
constexpr void visitFields(Header& h, Visitor visit) {
    visit(nullptr, h.fileId);
    visit("headerSignature", h.headerSignature);
    visit("geodeticProjection", h.geodeticProjection);
    visit("geodeticSpheroid", h.geodeticSpheroid);
    visit("geodeticDatum", h.geodeticDatum);
    visit("hemisphere", h.hemisphere);
    visit("geodeticZone", h.geodeticZone);
    visit("transform", h.transform);
    visit("dimensions", h.dimensions);
    visit("originatingAgency", h.originatingAgency);
    visit("fileCreationDate", h.fileCreationDate);
    visit("validBand", h.validBand);
    visit("weatherSetDate", h.weatherSetDate);
    visit("weatherSetTime", h.weatherSetTime);
    visit("relativeHumidity", h.relativeHumidity);
    visit("windSpeed", h.windSpeed);
    visit("windDirection", h.windDirection);
    visit("ambientAirTemperature", h.ambientAirTemperature);
    visit("barometricPressure", h.barometricPressure);
    visit("visibility", h.visibility);
    visit("pyranometer", h.pyranometer);
    visit("sizeX", h.sizeX);
    visit("sizeY", h.sizeY);
    visit("xStepSize", h.xStepSize);
    visit("yStepSize", h.yStepSize);
    visit("baseX", h.baseX);
    visit("baseY", h.baseY);
    visit("databaseReference", h.databaseReference);
    visit(nullptr, h.reserved2);
    visit("databaseMean", h.databaseMean);
    visit("databaseStdDev", h.databaseStdDev);
    visit("databaseMinimum", h.databaseMinimum);
    visit("databaseMaximum", h.databaseMaximum);
    visit(nullptr, h.associatedBlock);
}
} // namespace sorvane

// Opens a file and reads its header. The stream is at the first sample, offset 512, and belongs to the caller. Null,
// with no message, when the file can't be opened. A file that is too short leaves the missing fields zero and the
// stream at its end: deliberate, the readers of the samples find out.
sorvane::FileHandle ReadHeader(const std::string& path, BKG_header& header);
void ReadHeaderOnly(const std::string& path, BKG_header& header);

// Whether a file is of this family; false for one that can't be opened.
bool CheckMORLAN(const std::string& path);

// Creates a file and writes the header, into whose fileId it first puts BKG_HEADER_SIGNATURE. The stream is where the
// samples go, offset 512, and belongs to the caller. Null when the file can't be created.
sorvane::FileHandle BeginBKGFile(const std::string& path, BKG_header& header);

// Writes most fields to standard output.
void PrintHeader(const BKG_header& header);

// Writes exactly `count` bytes to standard output, zeros too, and a newline when asked for.
void printCharArray(const char* chars, int count, bool newline);
