// Data records: which word goes where, numbers, ends and truncation. Every row goes through both readers.
#include "trajectoryreader.h"

#include <gtest/gtest.h>

#include <cmath>

#include <QBuffer>

#include "devices.h"
#include "identical.h"
#include "linebylinereader.h"
#include "linereading.h"
#include "rows.h"

using namespace sorvane;

namespace {
using Samples = QMap<double, keyframe>;

Samples read(const QByteArray& bytes, Samples (*reader)(QIODevice*, bool)) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    return reader(&buffer, false);
}

Samples samplesOf(const QByteArray& bytes) {
    const Samples samples = read(bytes, readRecords);
    EXPECT_TRUE(identical(samples, read(bytes, readRecordsLineByLine))) << bytes.left(200).toStdString();
    return samples;
}

// A record whose flares' lines are given.
QByteArray record(const QByteArray& time, const QByteArray& count, const QByteArray& flares = {}) {
    return time + " " + count + " 1 2 3 4 5 6\n7 8 9 10 11 12\n0 0 13 14 15\n" + flares;
}

double timeFrom(const QByteArray& word) {
    const Samples samples = samplesOf(word + " 0 0\n\n\n");
    EXPECT_EQ(samples.size(), 1) << word.constData();
    return samples.isEmpty() ? NAN : samples.firstKey();
}

float floatFrom(const QByteArray& word) {
    const Samples samples = samplesOf("1 0 " + word + "\n\n\n");
    return samples.isEmpty() ? NAN : samples.first().targetPos[0];
}

int intFrom(const QByteArray& word) {
    const Samples samples = samplesOf("1 1\n\n\n" + word + " 5\n");
    return samples.isEmpty() || samples.first().flares.isEmpty() ? -999 : samples.first().flares[0].id;
}
} // namespace

TEST(Records, PutEveryWordInItsPlace) {
    const Samples samples = samplesOf(
        "0.5 1 1.5 2 3 4 5 6 99\n#\n7 8 9 10 11 12\n98 97 13 14 15\n21 22 23 24 25 26 27 28 29 30 31 32 3 96\n");
    ASSERT_EQ(samples.size(), 1);
    keyframe expected{0.5, 1, {1.5F, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}, {13, 14, 15}, {}};
    expected.flares = {{{23, 24, 25}, {27, 28, 29}, {30, 31, 32}, 26, 3, 21, 22}};
    EXPECT_EQ(samples.first(), expected);
    EXPECT_EQ(samples.firstKey(), 0.5);
}

TEST(Records, UseOtherBandsOnlyFromABandCountOfThreeOn) {
    for (const auto& [bandCount, band2, band3] :
         Rows<QByteArray, float, float>{{"2", 30, 30}, {"3", 31, 32}, {"4", 31, 32}, {"x", 30, 30}, {"", 30, 30}}) {
        const Samples samples = samplesOf(record("0", "1", "1 2 3 4 5 6 7 8 9 30 31 32 " + bandCount + "\n"));
        ASSERT_EQ(samples.first().flares.size(), 1);
        EXPECT_EQ(samples.first().flares[0].intensity[0], 30.0F);
        EXPECT_EQ(samples.first().flares[0].intensity[1], band2) << bandCount.constData();
        EXPECT_EQ(samples.first().flares[0].intensity[2], band3) << bandCount.constData();
    }
}

TEST(Records, ReadNumbersAsQStringDoesAndMalformedOnesAsZero) {
    for (const auto& [word, time, value, integer] : Rows<QByteArray, double, float, int>{
             {"+1", 1, 1, 1},
             {"1.", 1, 1, 0},
             {"-.5", -0.5, -0.5F, 0},
             {"00012", 12, 12, 12},
             {"1E+02", 100, 100, 0},
             {"5abc", 0, 0, 0},
             {"0x10", 0, 0, 0},
             {"1,5", 0, 0, 0},
             {"1e", 0, 0, 0},
             {"1.2.3", 0, 0, 0},
             {"-", 0, 0, 0},
             {"-inf", 0, 0, 0},
             {"nan", 0, 0, 0},
             {"1e400", 0, 0, 0},
             {"1e-400", 0, 0, 0},
             {"1e39", 1e39, 0, 0},
             {"3.40282347e38", 3.40282347e38, 0, 0}, // rounds to the largest float, but lies above it
             {"1e-46", 1e-46, 0, 0},
             {"1e-40", 1e-40, 0x1.16c2p-133F, 0},
             {"-2147483648", -2147483648.0, -0x1p31F, -2147483647 - 1},
             {"2147483648", 2147483648.0, 0x1p31F, 0},
             {"9007199254740993", 9007199254740992.0, 0x1p53F, 0},
             {"0.30000000000000004", 0.30000000000000004, 0.3F, 0},
             // Half way between two floats in double, above half way before: rounding by way of double goes to even.
             {"1.00000005960464477540", 0x1.000001p0, 1.0F, 0},
             {QByteArray("7\0\x38", 3), 7, 7, 7}}) {
        EXPECT_EQ(timeFrom(word), time) << word.constData();
        EXPECT_EQ(floatFrom(word), value) << word.constData();
        EXPECT_EQ(intFrom(word), integer) << word.constData();
    }
    EXPECT_TRUE(std::signbit(timeFrom("-0")));
    EXPECT_FALSE(std::signbit(timeFrom("-1e-400"))) << "malformed, so a plain zero";
    EXPECT_FALSE(std::signbit(floatFrom("-1e-46")));
}

TEST(Records, SeparateWordsByAnyWhiteSpace) {
    const Samples expected = samplesOf("1 0 2 3 4\n5 6\n");
    for (const char* blank : {"\t", "\v", "\f", "\r", " \t ", "\xC2\xA0", "\xE2\x80\x83"})
        EXPECT_TRUE(identical(samplesOf(QByteArray("1 0 2 3 4\n5 6\n").replace(" ", blank)), expected)) << blank;
}

TEST(Records, EndAtABlankFirstLineOrTheEndOfTheData) {
    for (const auto& [bytes, count] : Rows<QByteArray, qsizetype>{
             {"", 0},
             {"\n" + record("1", "0"), 0},
             {record("1", "0") + " \t\n" + record("2", "0"), 1},
             {record("1", "0") + QByteArray("\0x\n", 3) + record("2", "0"), 1},
             {record("1", "0") + "#\n" + record("2", "0") + "#", 2},
             {record("1", "0") + " #\n", 2}, // data, with a malformed time
             {"1 0\n\n\n2 0\n\n\n", 2}})     // blank lines elsewhere are lines of zeros
        EXPECT_EQ(samplesOf(bytes).size(), count) << bytes.constData();
}

TEST(Records, KeepATruncatedLastRecordWithZerosForTheRest) {
    const QByteArray whole = record("1", "3", "1 2 3 4 5 6 7 8 9 30 31 32 3\n2 2 3.25 4");
    const Samples samples = samplesOf(whole);
    ASSERT_EQ(samples.first().flares.size(), 2) << "the count is not to be trusted";
    EXPECT_EQ(samples.first().flareCount, 3);
    EXPECT_EQ(samples.first().flares[1].pos[0], 3.25F);
    EXPECT_EQ(samples.first().flares[1].intensity[2], 0.0F);

    const Samples head = samplesOf(whole.left(6));
    EXPECT_EQ(head.first().flareCount, 3);
    EXPECT_EQ(head.first().targetPos[0], 1.0F);
    EXPECT_EQ(head.first().threatPos[0], 0.0F);

    for (const char* comment : {"", "#", "#\n#\n"})
        EXPECT_EQ(samplesOf(record("1", "1000000000") + comment).first().flares.size(), 0) << comment;
}

TEST(Records, TakeNoFlaresForACountOfZeroOrLess) {
    for (const char* count : {"0", "-1", "x", "99999999999"})
        EXPECT_EQ(samplesOf(record("1", count) + record("2", "0")).size(), 2) << count;
}

TEST(Records, OfOneTimeReplaceEachOtherWhole) {
    const QByteArray flare = "1 2 3 4 5 6 7 8 9 30 31 32 3\n";
    const Samples samples =
        samplesOf(record("2", "1", flare) + record("1", "0") + record("2", "0") + record("nan", "0"));
    EXPECT_EQ(samples.keys(), QList<double>({0, 1, 2}));
    EXPECT_TRUE(samples[2].flares.isEmpty());
    EXPECT_EQ(samples[2].flareCount, 0);
}

TEST(Records, OfAProcessAreCompleteHoweverItsOutputIsCut) {
    const QByteArray text = record("1", "1", "7 2 3 4 5 6 7 8 9 30 31 32 3\n") + "#\n" + record("2", "0");
    const Samples expected = samplesOf(text);
    ASSERT_EQ(expected.size(), 2);
    for (qsizetype size = 1; size < 12; ++size)
        for (auto* reader : {readRecords, readRecordsLineByLine}) {
            QList<QByteArray> pieces;
            for (qsizetype at = 0; at < text.size(); at += size)
                pieces.append(text.mid(at, size));
            PieceDevice device(pieces);
            device.waitForReadyRead(0);
            EXPECT_TRUE(identical(reader(&device, true), expected)) << size;
        }
}

TEST(Records, WithLinesBeyondTheBoundLoseOnlyTheirRest) {
    const QByteArray blanks(kMaximumLineBytes, ' ');
    // Cut within the last word of the first line: "12" is left of 123.
    const QByteArray text =
        "1 0" + blanks.left(kMaximumLineBytes - 5) + "123 4\n" + blanks + "5\n0 0 6\n" + record("2", "0");
    const Samples samples = samplesOf(text);
    ASSERT_EQ(samples.size(), 2);
    EXPECT_EQ(samples.first().targetPos[0], 12.0F);
    EXPECT_EQ(samples.first().targetPos[1], 0.0F);
    EXPECT_EQ(samples.first().threatPos[0], 0.0F);
    EXPECT_EQ(samples.first().gyro[0], 6.0F);
    TrickleDevice device(text, 4096);
    EXPECT_TRUE(identical(readRecords(&device, false), samples));
}
