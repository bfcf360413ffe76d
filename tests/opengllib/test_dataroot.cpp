// Where the data tree is looked for.
#include <optional>

#include <gtest/gtest.h>

#include "dataroot.h"
#include "environmentvariable.h"

TEST(DataRoot, ComesFromTheEnvironmentOrIsTheCompiledInOne) {
    struct Row {
        std::optional<std::string> variable;
        std::string root;
    };
    const Row rows[] = {
        {std::nullopt, SORVANE_DATA_ROOT}, {"", SORVANE_DATA_ROOT},   {"/srv/data/", "/srv/data/"},
        {"/srv/my data", "/srv/my data/"}, {"relative", "relative/"}, {"/", "/"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.variable.value_or("unset"));
        const EnvironmentVariable variable("PELSAR_DATA", row.variable);
        EXPECT_EQ(dataRoot(), row.root);
        EXPECT_EQ(dataPath("openglshaders/"), row.root + "openglshaders/");
        EXPECT_EQ(dataPath(""), row.root);
    }
}
