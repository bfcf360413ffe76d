// The rotor file: entries, comments, fatal faults, and the turn about the hub.
#include "rotor.h"

#include <array>

#include "bodyfiles.h"
#include "inputfile.h"
#include "matrix.h"
#include "rows.h"

using namespace sorvane;

namespace {
Rotor rotorOf(std::string text) {
    text += '\0'; // a stream over memory needs a byte
    const FileHandle stream(::fmemopen(text.data(), text.size() - 1, "r"));
    return stream == nullptr ? Rotor("/dev/null") : Rotor(stream.get());
}

std::array<float, 3> turned(const Rotor& rotor, int number, float time, const std::array<float, 3>& point) {
    std::array<float, 16> matrix{};
    rotor.getRotorMatrix(number, time, matrix.data());
    std::array<float, 3> result{};
    mat_vtransform_(matrix.data(), point.data(), result.data());
    return result;
}

void expectNear(const std::array<float, 3>& actual, const std::array<float, 3>& expected) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-5F) << i;
}

std::string lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "1 2 0 0 0 0 0 1 1\n";
    return text;
}
} // namespace

TEST(Rotor, SkipsCommentsAnywhereAndOfAnyLength) {
    const Rotor rotor =
        rotorOf("# main\n#" + std::string(2000, '9') + "\n1 12 0 0 2 0 0 1 0.5\n#tail\n#\n20 25 5 0 1 0 1 0 2.5\n\n");
    ASSERT_EQ(rotor.getRotorCount(), 2);
    EXPECT_EQ(rotor.getRotorEnd(1), 12);
    EXPECT_EQ(rotor.getRotorStart(2), 20);
    for (const char* text : {"# nothing\n# else\n", "# no line feed"})
        EXPECT_EQ(rotorOf(text).getRotorCount(), 0) << text;
    const TemporaryFile empty("");
    EXPECT_EQ(Rotor(empty.path().c_str()).getRotorCount(), 0);
}

TEST(Rotor, TurnsAboutItsHub) {
    const Rotor rotor = rotorOf("1 1 1 2 3 0 0 4 0.5\n1 1 5 0 0 1 0 0 -1\n");
    expectNear(turned(rotor, 1, 0.0F, {7, 8, 9}), {7, 8, 9});
    expectNear(turned(rotor, 1, 0.5F, {2, 2, 3}), {1, 3, 3}); // a quarter turn
    expectNear(turned(rotor, 1, 1.0F, {2, 2, 3}), {0, 2, 3});
    expectNear(turned(rotor, 1, 123.0F, {1, 2, 8}), {1, 2, 8});
    expectNear(turned(rotor, 2, 0.25F, {5, 1, 0}), {5, 0, -1});
}

TEST(Rotor, ANumberOutsideTheRotorsIsReported) {
    const Rotor rotor = rotorOf(lines(1));
    for (const int number : {0, 2, -5}) {
        const std::string report = "Invalid rotor number \"" + std::to_string(number) + "\" (rotorCount = 1).\n";
        EXPECT_EQ(reportOf([&] { EXPECT_EQ(rotor.getRotorStart(number), -1); }), report);
        EXPECT_EQ(reportOf([&] { EXPECT_EQ(rotor.getRotorEnd(number), -1); }), report);
        std::array<float, 16> matrix;
        matrix.fill(9.0F);
        EXPECT_EQ(reportOf([&] { rotor.getRotorMatrix(number, 1.0F, matrix.data()); }), report);
        EXPECT_EQ(matrix[0], 9.0F);
    }
}

TEST(Rotor, FaultsEndTheProcess) {
    const auto exitsWith = testing::ExitedWithCode(1);
    EXPECT_EXIT(
        Rotor("/no/such.rotor"), exitsWith,
        "^Error: Rotor::Rotor: Unable to open rotor file \"/no/such.rotor\" for reading\\.\n$");
    EXPECT_EQ(rotorOf(lines(100)).getRotorCount(), 100);
    EXPECT_EXIT(rotorOf(lines(101)), exitsWith, "^Error: Rotor::Rotor: Too many rotor entries \\(100\\)\\.\n$");
    for (const auto& [text, range] : Rows<const char*, std::string>{
             {"0 4 0 0 0 0 0 1 1\n", "0 to 4 for rotor #1"},
             {"5 4 0 0 0 0 0 1 1\n", "5 to 4 for rotor #1"},
             {"1 4 0 0 0 0 0 1 1\n\n words\n", "0 to 0 for rotor #2"}})
        EXPECT_EXIT(rotorOf(text), exitsWith, "^error: Rotor::Rotor: Invalid facet range " + range + "\\.\n$");
}
