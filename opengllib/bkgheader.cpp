// The header of a BKG raster file.
#include "bkgheader.h"

#include <cstddef>
#include <cstdio>
#include <cstring>

#include "cnumericlocale.h"

using namespace sorvane;

namespace {
constexpr std::size_t kHeaderBytes = 512;
constexpr std::size_t kSignatureLength = sizeof BKG_HEADER_SIGNATURE - 1;

constexpr std::size_t bytesOfFields() {
    constexpr BKG_header header{};
    std::size_t bytes = 0;
    sorvane::visitFields(header, [&bytes](const char*, const auto& field) { bytes += sizeof field; });
    return bytes;
}
static_assert(bytesOfFields() == kHeaderBytes);

template <std::size_t N> void printText(const char* label, const char (&text)[N]) {
    std::fputs(label, stdout);
    printCharArray(text, int{N}, true);
}
} // namespace

FileHandle ReadHeader(const std::string& path, BKG_header& header) {
    FileHandle stream = openInputFile(path);
    if (stream == nullptr)
        return nullptr;
    std::byte bytes[kHeaderBytes]{};
    [[maybe_unused]] const std::size_t got = std::fread(bytes, 1, sizeof bytes, stream.get());
    const std::byte* at = bytes;
    sorvane::visitFields(header, [&at](const char*, auto& field) {
        std::memcpy(&field, at, sizeof field);
        at += sizeof field;
    });
    return stream;
}

void ReadHeaderOnly(const std::string& path, BKG_header& header) {
    ReadHeader(path, header);
}

bool CheckMORLAN(const std::string& path) {
    const FileHandle stream = openInputFile(path);
    char start[kSignatureLength];
    return stream != nullptr && std::fread(start, sizeof start, 1, stream.get()) == 1 &&
           std::memcmp(start, BKG_HEADER_SIGNATURE, sizeof start) == 0;
}

FileHandle BeginBKGFile(const std::string& path, BKG_header& header) {
    FileHandle stream(std::fopen(path.c_str(), "wb"));
    if (stream == nullptr)
        return nullptr;
    std::memcpy(header.fileId, BKG_HEADER_SIGNATURE, kSignatureLength);
    sorvane::visitFields(
        header, [&stream](const char*, const auto& field) { std::fwrite(&field, sizeof field, 1, stream.get()); });
    return stream;
}

void PrintHeader(const BKG_header& header) {
    const CNumericLocale decimalPoint;
    printText("ORIGINATING AGENCY: ", header.originatingAgency);
    printText("FILE CREATION DATE: ", header.fileCreationDate);
    std::printf("VALID BAND: %d\n", header.validBand);
    printText("WEATHER SET DATE: ", header.weatherSetDate);
    printText("WEATHER SET TIME: ", header.weatherSetTime);
    std::printf("RELATIVE HUMIDITY: %f\n", double{header.relativeHumidity});
    std::printf("WIND SPEED: %f\n", double{header.windSpeed});
    std::printf("WIND DIRECTION: %f\n", double{header.windDirection});
    std::printf("AMBIENT AIR TEMPERATURE: %f\n", double{header.ambientAirTemperature});
    std::printf("BAROMETRIC PRESSURE: %f\n", double{header.barometricPressure});
    std::printf("VISIBILITY: %f\n", double{header.visibility});
    std::printf("PYRANOMETER: %f\n", double{header.pyranometer});
    std::printf("SIZE X: %d\n", header.sizeX);
    std::printf("SIZE Y: %d\n", header.sizeY);
    std::printf("X STEP SIZE: %f\n", double{header.xStepSize});
    std::printf("Y STEP SIZE: %f\n", double{header.yStepSize});
    std::printf("BASE: X COORDINATE: %d\n", header.baseX);
    std::printf("BASE: Y COORDINATE: %d\n", header.baseY);
    const auto& t = header.transform;
    // Two digits for the cell sizes: deliberate, scripts compare the print-outs.
    std::printf(
        "Transform Matrix:\n[ %.2g\t%.2g\t%.2f\n %.2g\t%.2g\t%.2f\n 0\t0\t1]\n", t[1], t[2], t[0], t[4], t[5], t[3]);
    std::printf("DATABASE REFERENCE: %g\n", double{header.databaseReference});
    std::printf("DATABASE MEAN: %g\n", double{header.databaseMean});
    std::printf("DATABASE STANDARD DEVIATION: %g\n", double{header.databaseStdDev});
    std::printf("DATABASE MINIMUM: %g\n", double{header.databaseMinimum});
    std::printf("DATABASE MAXIMUM: %g\n", double{header.databaseMaximum});
    printText("HEADER SIGNATURE: ", header.headerSignature);
    printText("GEODETIC PROJECTION: ", header.geodeticProjection);
    printText("GEODETIC SPHEROID: ", header.geodeticSpheroid);
    printText("GEODETIC DATUM: ", header.geodeticDatum);
    std::printf("GEODETIC ZONE: %d\n", header.geodeticZone);
    printText("HEMISPHERE: ", header.hemisphere);
}

void printCharArray(const char* chars, int count, bool newline) {
    for (int i = 0; i < count; ++i)
        std::putchar(static_cast<unsigned char>(chars[i]));
    if (newline)
        std::putchar('\n');
}
