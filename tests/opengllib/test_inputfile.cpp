// Opening input files: regular files only, and never more of them than asked for. Where the data tree is looked for.
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "dataroot.h"
#include "environmentvariable.h"
#include "inputfile.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

TEST(InputFile, RefusesWhatIsNotARegularFileWithoutBlocking) {
    const TemporaryDirectory directory;
    const std::string fifo = directory.file("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", directory.path() / "dangling");
    for (const std::string& path :
         {directory.file("missing"), directory.path().string(), fifo, directory.file("dangling"),
          directory.file("missing/file"), std::string("/dev/zero"), std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(openRegularFile(path), -1);
        EXPECT_EQ(openInputFile(path), nullptr);
        EXPECT_EQ(readInputFile(path, 10), std::nullopt);
    }
}

TEST(InputFile, ReadsUpToTheLimit) {
    const TemporaryDirectory directory;
    const std::string small("line\n\0\xFF", 7);
    std::string large(3'000'001, 'a');
    large.back() = 'z';
    for (const auto& [contents, limit, expected] : Rows<std::string, std::size_t, std::string>{
             {"", 100, ""},
             {small, 100, small},
             {small, small.size(), small},
             {small, 4, "line"},
             {large, 4'000'000, large},
             {large, large.size(), large},
             {large, 2'000'000, large.substr(0, 2'000'000)}})
        EXPECT_EQ(readInputFile(directory.write("file", contents), limit), expected) << limit;
}

TEST(InputFile, FollowsLinksAndTakesAnyName) {
    const TemporaryDirectory directory;
    directory.write("-ä 'quoted' \"name\"", "contents");
    std::filesystem::create_symlink("-ä 'quoted' \"name\"", directory.path() / "link");
    EXPECT_EQ(readInputFile(directory.file("link"), 100), "contents");
}

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
