// Where the data tree is looked for.
#include <optional>

#include <gtest/gtest.h>

#include "dataroot.h"
#include "environmentvariable.h"
#include "rows.h"

using namespace sorvane;

TEST(DataRoot, ComesFromTheEnvironmentOrIsTheCompiledInOne) {
    for (const auto& [value, root] : Rows<std::optional<std::string>, std::string>{
             {std::nullopt, SORVANE_DATA_ROOT},
             {"", SORVANE_DATA_ROOT},
             {"/srv/data/", "/srv/data/"},
             {"/srv/my data", "/srv/my data/"},
             {"/", "/"}}) {
        SCOPED_TRACE(value.value_or("unset"));
        const EnvironmentVariable variable("PELSAR_DATA", value);
        EXPECT_EQ(dataRoot(), root);
        EXPECT_EQ(dataPath("openglshaders/"), root + "openglshaders/");
        EXPECT_EQ(dataPath(""), root);
    }
}
