// `sorvane measures`.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "commandrun.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;

TEST(MeasuresCommand, ListsTheTable) {
    const std::string text = runCommand({"measures", "--unit", "ft"}).out;
    EXPECT_THAT(
        text, testing::StartsWith("Of an engagement at a time\n  range [ft]\n      Distance of target and threat"));
    EXPECT_THAT(text, HasSubstr("\n\nOf a flare at a time\n  flare-age [s]\n"));
    EXPECT_THAT(text, HasSubstr("\n  flares-burning\n"));
    const auto json = nlohmann::json::parse(runCommand({"measures", "--json"}).out);
    EXPECT_EQ(json["layout"], 1);
    ASSERT_EQ(json["measures"].size(), 53U);
    EXPECT_EQ(json["measures"][1]["name"], "closing-speed");
    EXPECT_EQ(json["measures"][1]["of"], "moment");
    EXPECT_EQ(json["measures"][1]["unit"], "units/s");
    EXPECT_EQ(json["measures"][1]["column"], "closing_speed_units_per_s");
    EXPECT_EQ(json["measures"][1]["formula"], "-r·v/|r|");
    EXPECT_EQ(json["measures"][52]["of"], "flare");
    for (const auto& measure : json["measures"]) {
        EXPECT_FALSE(measure["definition"].get<std::string>().ends_with('.'));
        const bool isOfFlares = measure["of"] == "flare" || measure["of"] == "flare moment";
        EXPECT_EQ(measure["name"].get<std::string>().starts_with("flare-"), isOfFlares) << measure["name"];
    }
}
} // namespace
