// Compressed bytes are what the system's own programs turn back into the original.
#include <algorithm>
#include <cctype>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "lzw.h"
#include "temporarydirectory.h"
#include "uncompressed.h"

using namespace sorvane;

namespace {
std::string noise(std::size_t size, unsigned symbols) {
    std::mt19937 generator(static_cast<unsigned>(size));
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() % symbols);
    return bytes;
}

std::string text(int lines) {
    std::string result;
    for (int i = 0; i < lines; ++i)
        result += "line " + std::to_string(i) + " of " + std::to_string(i * 37 % 1009) + '\n';
    return result;
}

// gzip's program and ncompress's; both are called uncompress where one is installed alone.
class Lzw : public testing::TestWithParam<const char*> {
protected:
    void expectRoundTrip(const std::string& bytes) const {
        const std::string path = directory_.write("bytes.Z", lzwCompressed(bytes));
        EXPECT_TRUE(uncompressed(GetParam(), path) == bytes) << bytes.size() << " bytes";
    }

    TemporaryDirectory directory_;
};
INSTANTIATE_TEST_SUITE_P(
    Programs, Lzw, testing::Values("gzip -d", "uncompress", "uncompress.real"), [](const auto& program) {
        std::string name = program.param;
        std::erase_if(name, [](char character) { return std::isalnum(static_cast<unsigned char>(character)) == 0; });
        return name;
    });
} // namespace

TEST_P(Lzw, ComesBackWhole) {
    for (const std::string& bytes :
         {std::string(), std::string("a"), std::string("aa"), std::string("aaa"), std::string(1, '\0'),
          std::string("abababab"), std::string(100'000, 'x'), text(60'000)})
        expectRoundTrip(bytes);
    // Noise takes about a code per byte: the table outgrows 9 bits after 255 codes and 10 bits after 767.
    for (std::size_t size = 250; size <= 268; ++size)
        expectRoundTrip(noise(size, 256));
    for (std::size_t size = 764; size <= 782; size += 3)
        expectRoundTrip(noise(size, 256));
    // 65,279 codes fill the table, which is then emptied.
    for (const std::size_t size : {65'530U, 66'000U, 1'000'000U})
        expectRoundTrip(noise(size, 256));
    expectRoundTrip(noise(3'000'000, 4));
}

TEST(LzwSize, IsThatOfASensibleCompressor) {
    const std::string original = text(60'000);
    EXPECT_LT(lzwCompressed(original).size(), original.size() * 2 / 5);
    EXPECT_EQ(lzwCompressed(""), "\x1F\x9D\x90");
}
