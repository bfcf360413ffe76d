// Samples for measures come out of their packed form to the bit, and stay in little memory while nobody measures.
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <vector>

#include <QBuffer>

#include <gtest/gtest.h>

#include "engagements.h"
#include "identical.h"
#include "keptseries.h"
#include "packedcolumn.h"
#include "trajectoryreader.h"

using namespace sorvane;

namespace {
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Column = std::vector<double>;

std::vector<std::uint64_t> packed(const std::vector<Column>& columns) {
    BitWriter writer;
    ColumnPacker packer(writer);
    for (const Column& column : columns)
        packer.pack(column);
    return writer.take();
}

void expectSame(const std::vector<Column>& columns) {
    const std::vector<std::uint64_t> words = packed(columns);
    BitReader reader(words);
    ColumnUnpacker unpacker(reader);
    for (const Column& column : columns) {
        const std::span<const double> values = unpacker.unpack(column.size());
        ASSERT_EQ(values.size(), column.size());
        for (std::size_t i = 0; i < column.size(); ++i)
            ASSERT_TRUE(identical(values[i], column[i])) << i << ": " << values[i] << " for " << column[i];
    }
}

double bitsPerValue(const Column& column) {
    return 64.0 * static_cast<double>(packed({column}).size()) / static_cast<double>(column.size());
}

template <class Value> Column columnOf(std::size_t count, Value valueOf) {
    Column column;
    for (std::size_t i = 0; i < count; ++i)
        column.push_back(valueOf(static_cast<double>(i)));
    return column;
}

double thousandths(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

SampleSeries seriesOf(const std::string& text) {
    QByteArray bytes = QByteArray::fromStdString(text);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    readTrajectoryHeader(&buffer, false);
    SampleSeries series;
    bool isAllRead = false;
    readRecords(&buffer, false, series, isAllRead);
    return series;
}

SampleSeries someSeries() {
    SampleSeries series;
    for (int i = 0; i < 40; ++i) {
        const double d = i;
        Sample sample{.time = d / 100.0, .flareCount = 3 - i};
        sample.targetPosition = {d, -0.0, 1e300};
        sample.targetAttitude = {kNan, d / 7.0, 0.25};
        sample.threatPosition = {d * d, 1e-9 * d, -d};
        sample.threatAttitude = {kInfinity, 1.0, 2.0};
        sample.gyro = {-179.999 + d, 89.5, 0.001 * d};
        std::vector<Flare> flares;
        // None, one, or some of which two have one identifier.
        for (int flare = 0; flare < i % 4; ++flare)
            flares.push_back(
                {.id = flare == 2 ? 0 : flare * std::numeric_limits<int>::min(),
                 .position = {d + flare, d / 3.0, -d},
                 .brightness = flare == 0 ? -0.0 : d,
                 .halfAxes = {d, 0.5 + flare, 7.0}});
        series.add(sample, flares);
    }
    series.putInOrder();
    return series;
}
} // namespace

TEST(PackedColumn, NumbersComeBackToTheBit) {
    struct Row {
        const char* what;
        Column column;
    };
    const Column ramp = columnOf(100, [](double i) { return thousandths(2900.434 + 0.434 * i); });
    Column odd = ramp;
    odd[17] = -0.0;
    odd[50] = kNan;
    Column wild = ramp;
    wild[0] = 1.0 / 3.0;
    wild[99] = 1e300;
    const Row rows[] = {
        {"none", {}},
        {"one", {12.5}},
        {"one below zero", {-0.001}},
        {"zeros", Column(33, 0.0)},
        {"zeros below zero", Column(33, -0.0)},
        {"as many as a block has", columnOf(16, [](double i) { return i / 10.0; })},
        {"one more", columnOf(17, [](double i) { return i / 10.0; })},
        {"even steps", ramp},
        {"with a negative zero and no number", odd},
        {"with fractions that have no digits", wild},
        {"no digits at all", columnOf(50, [](double i) { return std::sqrt(i); })},
        {"no numbers", {kNan, -kNan, std::bit_cast<double>(0x7ff0000000000001), kInfinity, -kInfinity}},
        {"the ends of the range", {1.7976931348623157e308, -1.7976931348623157e308, 5e-324, -5e-324, 2.2e-308}},
        {"more and more digits", {0.0, 1.0, 1.5, 1.25, 0.1, 0.01, 123.456789, 1e-7, 1.5e-12, 1e-22}},
        {"digits that the greatest one has no room for", {2e15, 0.001, 1e14, 1e-10}},
        {"about the greatest integer", {0x1p51 - 1, 0x1p51, -0x1p51, 0x1p51 + 1, 0x1p53, -0x1p53 - 2, 0x1p63, 0x1p64}},
        {"from end to end", {0x1p51 - 1, 1 - 0x1p51, 0x1p51 - 1, 1 - 0x1p51, 0x1p51 - 1}},
        {"as single precision has them", columnOf(50, [](double i) { return double{static_cast<float>(i / 10.0)}; })},
    };
    std::vector<Column> all;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        expectSame({row.column});
        all.push_back(row.column);
        all.push_back(row.column); // like the one before it
    }
    expectSame(all);
}

TEST(PackedColumn, AnyNumbersComeBackToTheBit) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        std::vector<Column> columns;
        for (int column = 0; column < 3; ++column) {
            const double power = std::pow(10.0, static_cast<double>(random() % 12));
            const std::uint64_t range = std::uint64_t{1} << random() % 62;
            const std::uint64_t odd = random() % 3 == 0 ? 0 : 2 + random() % 60; // one in so many is of any bits
            double walk = 0.0;
            columns.push_back(columnOf(random() % 200, [&](double) {
                walk += static_cast<double>(random() % range) - static_cast<double>(range) / 2.0;
                return odd != 0 && random() % odd == 0 ? std::bit_cast<double>(random()) : std::round(walk) / power;
            }));
        }
        expectSame(columns);
    }
}

TEST(PackedColumn, SmoothOnesTakeFewBits) {
    struct Row {
        const char* what;
        Column column;
        double mostBits; // a value
    };
    const auto turn = [](double i) {
        return thousandths(5000.0 * std::sin(i / 500.0));
    };
    Column withZero = columnOf(1600, turn);
    withZero[800] = -0.0;
    Column withDigits = columnOf(1600, turn);
    withDigits[3] = 1e-13;
    Column withJump = columnOf(1600, turn);
    for (std::size_t i = 800; i < 1600; ++i)
        withJump[i] += 1e6;
    const Row rows[] = {
        {"even steps", columnOf(1600, [](double i) { return i / 100.0; }), 1.0},
        {"constant", Column(1600, -179.125), 1.0},
        {"noise of ±8, which differences only widen",
         columnOf(1600, [](double i) { return std::fmod(i * 7.0, 17.0) - 8.0; }), 6.0},
        {"a turn", columnOf(1600, turn), 6.0},
        {"with a negative zero", withZero, 6.5},
        {"with one of many digits", withDigits, 6.5},
        {"with a jump", withJump, 7.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_LE(bitsPerValue(row.column), row.mostBits);
    }
    const Column noDigits = columnOf(1600, [](double i) { return std::sqrt(i); });
    EXPECT_LE(bitsPerValue(noDigits), 65.0) << "hardly more than it had";
    EXPECT_LE(packed({noDigits, noDigits, noDigits}).size(), packed({noDigits}).size() + 1) << "kept once";
}

TEST(PackedSeriesTest, SamplesAndFlaresComeBackToTheBit) {
    const SampleSeries series = someSeries();
    EXPECT_TRUE(identical(PackedSeries(series).unpacked(), series));
    SampleSeries flareless;
    flareless.add({.time = 1.5, .flareCount = 7}, {});
    flareless.putInOrder();
    EXPECT_TRUE(identical(PackedSeries(flareless).unpacked(), flareless));
    EXPECT_TRUE(PackedSeries(SampleSeries()).unpacked().isEmpty());
}

TEST(PackedSeriesTest, TheDemonstrationTakesAnEighthOfItsMemory) {
    for (const DemonstrationFile& file : engagementFiles("/somewhere")) {
        if (file.name.ends_with(".Z"))
            continue;
        SCOPED_TRACE(file.name);
        const SampleSeries series = seriesOf(file.contents);
        const PackedSeries packed(series);
        EXPECT_TRUE(identical(packed.unpacked(), series));
        const std::size_t plain = 152 * series.samples().size() + 60 * series.flares().size();
        EXPECT_LE(packed.bytes(), plain / (series.samples().size() < 100 ? 3 : 8));
    }
}

TEST(KeptSeriesTest, IsUnpackedForThoseWhoHoldIt) {
    KeptSeries kept(someSeries());
    const std::weak_ptr<const SampleSeries> plain = kept.series();
    EXPECT_EQ(kept.series(), plain.lock()) << "before it is packed";
    kept.pack();
    EXPECT_TRUE(plain.expired()) << "nobody held it";
    EXPECT_FALSE(kept.isEmpty());

    auto held = kept.series();
    EXPECT_TRUE(identical(*held, someSeries()));
    EXPECT_EQ(kept.series(), held) << "both users have one";
    const std::weak_ptr<const SampleSeries> first = held;
    kept.pack();
    EXPECT_EQ(kept.series(), held) << "packing again changes nothing";
    held.reset();
    EXPECT_TRUE(first.expired());
    EXPECT_TRUE(identical(*kept.series(), someSeries())) << "the next one";
}

TEST(KeptSeriesTest, WhoHoldsItWhileItIsPackedSharesIt) {
    KeptSeries kept(someSeries());
    const auto held = kept.series();
    kept.pack();
    EXPECT_EQ(kept.series(), held);
    kept = {};
    EXPECT_TRUE(kept.isEmpty());
    EXPECT_TRUE(kept.series()->isEmpty());
    EXPECT_TRUE(identical(*held, someSeries())) << "what is held stays";
}
