// Raster headers of both families: layout in the file, print-outs, and the conversions.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <string>

#include <gmock/gmock.h>

#include "bkgraster.h"
#include "decimalcommalocale.h"
#include "headerconversion.h"
#include "rasterfamily.h"
#include "rasterfiles.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "torvaleraster.h"

using namespace sorvane;

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {
template <std::size_t N> std::string text(const char (&field)[N]) {
    return {field, N};
}
template <std::size_t N> void put(char (&field)[N], std::string value) {
    value.resize(N);
    std::memcpy(field, value.data(), N);
}

// Every field different from zero and from its neighbours.
BKG_header fullBkgHeader() {
    BKG_header b{};
    put(b.headerSignature, "SIGNATUR_ABC");
    put(b.geodeticProjection, "PROJECTION");
    put(b.geodeticSpheroid, "SPHEROID");
    put(b.geodeticDatum, "DATUM");
    put(b.hemisphere, "SOUTHERN");
    b.geodeticZone = 33;
    for (int i = 0; i < 6; ++i)
        b.transform[i] = 100.125 + i;
    put(b.dimensions, "3x2");
    put(b.originatingAgency, "AGENCY");
    put(b.fileCreationDate, "991231");
    b.validBand = 425;
    put(b.weatherSetDate, "010203");
    put(b.weatherSetTime, "12:34:56");
    float* const weather[] = {&b.relativeHumidity,   &b.windSpeed,  &b.windDirection, &b.ambientAirTemperature,
                              &b.barometricPressure, &b.visibility, &b.pyranometer};
    for (int i = 0; i < 7; ++i)
        *weather[i] = 0.5F + static_cast<float>(i);
    b.sizeX = 3;
    b.sizeY = 2;
    b.xStepSize = 6.5F;
    b.yStepSize = 7.5F;
    b.baseX = -11;
    b.baseY = 12;
    b.databaseReference = 1.25F;
    b.reserved2 = 99;
    b.databaseMean = 2.25F;
    b.databaseStdDev = 3.25F;
    b.databaseMinimum = 4.25F;
    b.databaseMaximum = 5.25F;
    put(b.associatedBlock, std::string(60, 'a') + std::string(60, 'b') + std::string(16, 'c'));
    return b;
}

template <class T> void expectAt(const std::string& file, std::size_t offset, const T& value, const char* what) {
    EXPECT_EQ(file.substr(offset, sizeof value), bytesOf(value)) << what;
}
} // namespace

TEST(BkgHeader, LiesInTheFileWithoutGaps) {
    const TemporaryDirectory directory;
    BKG_header header = fullBkgHeader();
    writeBkg(directory.file("a.rad"), header, "samples");
    const std::string file = readWholeFile(directory.file("a.rad"));
    ASSERT_EQ(file.size(), 512U + 7U);
    EXPECT_EQ(file.substr(0, 8), std::string("MORLAN\0\0", 8));
    EXPECT_EQ(file.substr(68, 12), "SIGNATUR_ABC");
    EXPECT_EQ(file.substr(180, 8), "SOUTHERN");
    expectAt(file, 192, 100.125, "t0");
    expectAt(file, 282, std::int32_t{425}, "band"); // not aligned
    EXPECT_EQ(file.substr(286, 14), "01020312:34:56");
    expectAt(file, 324, 6.5F, "pyranometer");
    expectAt(file, 328, std::int32_t{3}, "columns");
    expectAt(file, 372, 5.25F, "maximum");
    EXPECT_EQ(file.substr(490, 22 + 7), std::string(6, 'b') + std::string(16, 'c') + "samples");
}

TEST(BkgHeader, IsReadBackAsItWasWrittenAndAsFarAsAShortFileGoes) {
    const TemporaryDirectory directory;
    BKG_header header = fullBkgHeader();
    BeginBKGFile(directory.file("a.rad"), header);
    EXPECT_EQ(text(header.fileId).substr(0, 6), "MORLAN") << "the caller's record is signed as well";
    const std::string whole = readWholeFile(directory.file("a.rad"));
    BKG_header read{};
    const FileHandle stream = ReadHeader(directory.file("a.rad"), read);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::ftell(stream.get()), 512);
    BeginBKGFile(directory.file("b.rad"), read);
    EXPECT_EQ(readWholeFile(directory.file("b.rad")), whole);

    EXPECT_NE(ReadHeader(directory.write("short.rad", whole.substr(0, 332)), read), nullptr);
    EXPECT_EQ(read.sizeX, 3);
    EXPECT_EQ(read.sizeY, 0);
    EXPECT_EQ(read.associatedBlock[0], 0);
}

TEST(RasterHeaders, OfAFileThatIsNoneAreNullAndTheFirstSixBytesTellThemApart) {
    const TemporaryDirectory directory;
    for (const auto& [contents, isBkg] :
         Rows<const char*, bool>{{"MORLANxyz", true}, {"MORLA", false}, {"morlan", false}, {"XMORLAN", false}})
        EXPECT_EQ(CheckMORLAN(directory.write("file", contents)), isBkg) << contents;
    const std::string short511 = directory.write("short", std::string(511, 'x'));
    const std::string whole = directory.write("whole", std::string(512, 'x'));
    GHead ghead{};
    BKG_header bkg{};
    CaptureStdout();
    EXPECT_EQ(ReadHeader(short511, ghead), nullptr);
    EXPECT_NE(ReadHeader(whole, ghead), nullptr);
    for (const std::string& path : {directory.file("missing"), directory.path().string()}) {
        EXPECT_EQ(ReadHeader(path, ghead), nullptr);
        EXPECT_EQ(ReadHeader(path, bkg), nullptr);
        ReadHeaderOnly(path, ghead);
        ReadHeaderOnly(path, bkg);
        EXPECT_FALSE(CheckMORLAN(path));
    }
    EXPECT_EQ(BeginBKGFile(directory.file("no/such/folder"), bkg), nullptr);
    EXPECT_EQ(GetCapturedStdout(), "");
}

TEST(TorvaleHeader, PrintsItsFields) {
    const DecimalCommaLocale locale;
    GHead g;
    std::memset(&g, 0x55, sizeof g); // the conversion clears what it doesn't know
    bkg_header2ghead(fullBkgHeader(), g);
    g.airrad = 0.125F;
    g.xStart = 1;
    g.yorg = 4;
    g.nsources = 6;
    g.source[1] = 1.5F;
    g.intens[2] = 2.5F;
    g.world[0] = 3.5F;
    put(g.idescript, "0123456789not printed");
    g.trailer = 9;
    put(g.filler, std::string(24, 'f'));
    const std::string nineZeros = "0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 ";
    CaptureStdout();
    PrintHeader(g);
    EXPECT_EQ(
        GetCapturedStdout(),
        "headkey $$L1\nnrows: 2, ncols: 3\nnbands 1\npacktype: 1\ncell units: 1\n"
        "xCellSize: 6.500000\tyCellSize: 7.500000\tzscale: 1.000000\nfileType: SIGNATUR\nMinVals: 4.250000 " +
            nineZeros + "\nMaxVals: 5.250000 " + nineZeros + "\niassocf1: " + std::string(60, 'a') +
            "\niassocf2: " + std::string(60, 'b') +
            "\nairrad: 0.125000\nlambda1: 4.250000\tlambda2: 4.250000\n"
            "xStart: 1\tyStart: 0\nxorg: 0\tyorg: 4\nnsources: 6\n"
            "source\tx: 0.000000\ty: 1.500000\tz: 0.000000\nintens: 0.000000 0.000000 2.500000\nwld units 0\n"
            "world x: 3.500000\ty: 0.000000\tz: 0.000000\nmean: 2.250000 " +
            nineZeros + "\nstddev: 3.250000 " + nineZeros +
            "\nidescript: 0123456789\ntrailer: 9\nambienttemp: 3.500000\nfiller: " + std::string(24, 'f') + "\n");
}

TEST(BkgHeader, PrintsItsFields) {
    const DecimalCommaLocale locale;
    CaptureStdout();
    PrintHeader(fullBkgHeader());
    const auto padded = [](std::string value, std::size_t width) {
        value.resize(width);
        return value + "\n";
    };
    EXPECT_EQ(
        GetCapturedStdout(),
        "ORIGINATING AGENCY: " + padded("AGENCY", 20) +
            "FILE CREATION DATE: 991231\nVALID BAND: 425\nWEATHER SET DATE: 010203\nWEATHER SET TIME: 12:34:56\n"
            "RELATIVE HUMIDITY: 0.500000\nWIND SPEED: 1.500000\nWIND DIRECTION: 2.500000\n"
            "AMBIENT AIR TEMPERATURE: 3.500000\nBAROMETRIC PRESSURE: 4.500000\nVISIBILITY: 5.500000\n"
            "PYRANOMETER: 6.500000\nSIZE X: 3\nSIZE Y: 2\nX STEP SIZE: 6.500000\nY STEP SIZE: 7.500000\n"
            "BASE: X COORDINATE: -11\nBASE: Y COORDINATE: 12\n"
            "Transform Matrix:\n[ 1e+02\t1e+02\t100.12\n 1e+02\t1.1e+02\t103.12\n 0\t0\t1]\n"
            "DATABASE REFERENCE: 1.25\nDATABASE MEAN: 2.25\nDATABASE STANDARD DEVIATION: 3.25\n"
            "DATABASE MINIMUM: 4.25\nDATABASE MAXIMUM: 5.25\nHEADER SIGNATURE: SIGNATUR_ABC\n"
            "GEODETIC PROJECTION: " +
            padded("PROJECTION", 40) + "GEODETIC SPHEROID: " + padded("SPHEROID", 40) +
            "GEODETIC DATUM: " + padded("DATUM", 20) + "GEODETIC ZONE: 33\nHEMISPHERE: SOUTHERN\n");
}

TEST(HeaderConversion, ThereAndBackKeepsSizesValuesAndTextsButReplacesTheGeodesy) {
    const BKG_header before = fullBkgHeader();
    GHead g{};
    bkg_header2ghead(before, g);
    BKG_header after = before;
    put(after.fileId, "kept");
    ghead2bkg_header(g, after);

    BKG_header expected = before; // the last 16 bytes of its text are left alone
    put(expected.fileId, "kept");
    put(expected.headerSignature, "SIGNATURG");
    put(expected.originatingAgency, "TORVALE");
    put(expected.geodeticProjection, "UTM");
    put(expected.geodeticSpheroid, "WGS-84");
    put(expected.geodeticDatum, "WGS-84");
    put(expected.hemisphere, "NORTH");
    expected.geodeticZone = 10;
    std::ranges::copy(std::to_array({659083.0, 6.5, 0.0, 3986277.0, 0.0, 7.5}), expected.transform);
    std::ranges::copy(after.fileCreationDate, expected.fileCreationDate); // today
    put(expected.weatherSetDate, "000000");
    put(expected.weatherSetTime, "00:00:00");
    expected.baseX = expected.baseY = expected.reserved2 = 0;
    expected.relativeHumidity = expected.windSpeed = expected.windDirection = expected.barometricPressure = 0.0F;
    expected.visibility = expected.pyranometer = expected.databaseReference = 0.0F;
    const TemporaryDirectory directory;
    EXPECT_EQ(
        readWholeFile(writeBkg(directory.file("after"), after, "")),
        readWholeFile(writeBkg(directory.file("expected"), expected, "")));
    EXPECT_EQ(text(after.fileId).substr(0, 4), "kept");
}

TEST(HeaderConversion, TruncatesTheBandAndPadsAShortFileType) {
    GHead g = torvaleHeader(1, 1, 0);
    put(g.fileType, "ABC");
    // 2.3 and 4.579 in single precision: 115 + 228.95001 = 343.95001
    for (const auto& [lambda1, lambda2, validBand] : Rows<float, float, int>{
             {2.3F, 4.579F, 343}, {-2.3F, -4.579F, -343}, {1e30F, 1e30F, 0}, {-1e30F, 0, 0}, {NAN, 1, 0}}) {
        g.lambda1 = lambda1;
        g.lambda2 = lambda2;
        BKG_header b{};
        ghead2bkg_header(g, b);
        EXPECT_EQ(b.validBand, validBand);
        EXPECT_EQ(text(b.headerSignature), std::string("ABC\0\0\0\0\0G\0\0\0", 12));
    }
}

TEST(HeaderConversion, DatesAFileInThisCentury) {
    for (const auto& [year, month, day, text, printed] : Rows<int, int, int, std::string, std::string>{
             {2026, 3, 9, "260309", ""},
             {2099, 12, 31, "991231", ""},
             {2100, 1, 2, "000102", "yearsSince2000: 100\n"},
             {1999, 12, 31, "001231", "yearsSince2000: -1\n"}}) {
        std::tm date{};
        date.tm_year = year - 1900;
        date.tm_mon = month - 1;
        date.tm_mday = day;
        BKG_header b{};
        CaptureStdout();
        setFileCreationDate(b, date);
        EXPECT_EQ(GetCapturedStdout(), printed);
        EXPECT_EQ(std::string(b.fileCreationDate, 6), text);
    }
}

TEST(RasterHeaders, TellTheSizeByTheFamilyThatTheLoaderTakes) {
    const TemporaryDirectory directory;
    const std::string torvale = bytesOf(torvaleHeader(5, 4, 1));
    writeBkg(directory.file("bkg.rad"), bkgHeader(7, 6), "");
    const std::string bkg = readWholeFile(directory.file("bkg.rad"));
    const std::string misnamed = directory.write("bkg.top", bkg);
    EXPECT_EQ(&rasterFamilyOf(misnamed), topographyFamilyOf("x.top")) << "a topography goes by its ending";
    EXPECT_EQ(readRasterSize(misnamed), (RasterSize{7, 6})) << "all others by their first bytes";
    EXPECT_EQ(readTopographySize(directory.write("a.top", torvale)), (RasterSize{5, 4}));
    EXPECT_EQ(readRasterSize(directory.write("a.cls", torvale)), (RasterSize{5, 4}));
    EXPECT_EQ(readTopographySize(directory.write("a.xyz", torvale)), std::nullopt);
    EXPECT_EQ(readTopographySize(directory.write("cut.top", torvale.substr(0, 511))), std::nullopt);
}

TEST(RasterHeaders, TellHowRowsLieInTheFile) {
    const auto row = [](std::optional<RowLayout> layout) {
        return std::pair(layout->itemBytes, layout->skippedBytes);
    };
    using Content = RasterContent;
    // Rows of five samples; the records of the one family have 512 bytes.
    for (const auto& [content, torvale, bkg] :
         Rows<Content, std::pair<std::int64_t, std::int64_t>, std::pair<std::int64_t, std::int64_t>>{
             {Content::Topography, {2, 502}, {4, 0}},
             {Content::Radiance, {4, 502}, {4, 0}},
             {Content::Normals, {12, 0}, {12, 0}},
             {Content::Classes, {2, 502}, {1, 0}}}) {
        SCOPED_TRACE(static_cast<int>(content));
        EXPECT_EQ(row(rowLayout(torvaleHeader(5, 4, 1), content)), torvale);
        EXPECT_EQ(row(rowLayout(bkgHeader(5, 4), content)), bkg);
    }
    EXPECT_EQ(rowLayout(bkgHeader(5, 4), Content::Unknown), std::nullopt);
}
