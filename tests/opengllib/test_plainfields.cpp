// The quick reader of number fields against the scanf conversions that it stands for.
#include "plainfields.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

#include <gtest/gtest.h>

using namespace sorvane;

namespace {
// Whatever is read quickly must be what sscanf reads, to the bit. Returns whether it was read quickly.
bool floatAgrees(const std::string& text) {
    float quick = 0.0F;
    if (!PlainFields(text).readFloat(quick))
        return false;
    float slow = 0.0F;
    EXPECT_EQ(std::sscanf(text.c_str(), "%f", &slow), 1) << text;
    EXPECT_EQ(std::bit_cast<std::uint32_t>(quick), std::bit_cast<std::uint32_t>(slow)) << text;
    return true;
}

bool intAgrees(const std::string& text) {
    int quick = 0;
    if (!PlainFields(text).readInt(quick))
        return false;
    int slow = 0;
    EXPECT_EQ(std::sscanf(text.c_str(), "%d", &slow), 1) << text;
    EXPECT_EQ(quick, slow) << text;
    return true;
}
} // namespace

TEST(PlainFields, ReadPlainFloatsAsScanfDoes) {
    for (const char* text :
         {"0", "-0", "1.5", " \t12", "-3.25e2 x", "5.", ".5", "1e-45", "1.17549435e-38", "3.4028235e38", "1e-60",
          "1e60", "16777217", "0.3333333432674407958984375", "8388609.5", "0000000000000000000000000000000000001.0",
          "7.006492321624085e-46", "123456789012345678901234567890",
          // As doubles half way between two floats, as written above or below it.
          "8.00000810623169", "8.00000524520874",
          // Of a digit more than a double holds.
          "941.6906433105469", "97.48313522338867"})
        EXPECT_TRUE(floatAgrees(text)) << text;
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        char text[64];
        std::snprintf(text, sizeof text, i % 2 == 0 ? "%.7g" : "%.12e", static_cast<double>(value));
        EXPECT_TRUE(floatAgrees(text) || !std::isfinite(value)) << text;
    }
}

TEST(PlainFields, LeaveUnusualNumbersToScanf) {
    for (const char* text : {"", " ", "+1", "0x10", "nan", "-inf", "1e", "1e+", "1.5f", "-", ".", "-.", "1,5"})
        EXPECT_FALSE(floatAgrees(text)) << text;
    for (const char* text : {"", "+1", "1.0", "12x", "-", "2147483648", "1234567890", "1e3"})
        EXPECT_FALSE(intAgrees(text)) << text;
    for (const char* text : {"0", "-7", " \n 12 13", "999999999", "-999999999", "007"})
        EXPECT_TRUE(intAgrees(text)) << text;
}

TEST(PlainFields, WalkALine) {
    PlainFields fields(" 3\t-1.5\tword 9\n");
    int number = 0;
    float real = 0.0F;
    EXPECT_TRUE(fields.readInt(number) && fields.readFloat(real) && fields.skipWord() && fields.readInt(number));
    EXPECT_EQ(number, 9);
    EXPECT_EQ(real, -1.5F);
    EXPECT_FALSE(fields.skipWord());
}
