// The text of shader sources and its cache.
#include "shaderfile.h"

#include "bodyfiles.h"

using namespace sorvane;

TEST(ShaderFile, LoadsAndCopiesTheText) {
    const TemporaryFile source("void main() {}\n");
    ShaderFile file;
    ASSERT_TRUE(file.Load(source.path()));
    EXPECT_STREQ(file.text(), "void main() {}\n");
    EXPECT_EQ(file.size(), 15);

    ShaderFile copy(file);
    EXPECT_NE(copy.text(), file.text());
    EXPECT_EQ(copy.Name(), source.path());
    copy = *&copy;
    EXPECT_STREQ(copy.text(), file.text());
}

TEST(ShaderFile, ASecondLoadComesFromTheCacheOf257Rows) {
    shaderCache.clear();
    const TemporaryFile source("first");
    ASSERT_TRUE(ShaderFile().Load(source.path()));
    source.write("other");
    ShaderFile again;
    ASSERT_TRUE(again.Load(source.path()));
    EXPECT_STREQ(again.text(), "first");

    const TemporaryFile last("last");
    shaderCache.resize(257);
    ASSERT_TRUE(ShaderFile().Load(last.path()));
    EXPECT_EQ(shaderCache.size(), 1U);
    EXPECT_EQ(inCache(last.path()), 0);
    EXPECT_EQ(inCache(source.path()), -1);
    shaderCache.clear();
}

TEST(ShaderFile, ReportsEachFault) {
    shaderCache.clear();
    seen.clear();
    ShaderFile file;
    const auto reportOfLoad = [&file](const std::string& path) {
        return reportOf([&] { EXPECT_FALSE(file.Load(path)); });
    };
    const TemporaryFile empty("");
    for (const std::string& path : {std::string("/no/such.vert"), empty.path(), testing::TempDir()})
        EXPECT_EQ(reportOfLoad(path), "shaderfile Load: No source code found for shader " + path + ".");

    // The table of file sizes is asked once; the file may have changed since.
    const TemporaryFile source("0123456789");
    ASSERT_EQ(File::Size(source.path(), true), 10);
    source.write("0123");
    EXPECT_EQ(
        reportOfLoad(source.path()), "shaderfile Load: Unexpected EOF when reading file (expected 4 bytes, read 10).");
    EXPECT_EQ(file.text(), nullptr);
    std::filesystem::remove(source.path());
    EXPECT_EQ(reportOfLoad(source.path()), "shaderfile Load: Unable to open \"" + source.path() + "\" for reading.");

    const TemporaryFile huge("x");
    std::filesystem::resize_file(huge.path(), (256U << 20) + 1);
    EXPECT_EQ(
        reportOfLoad(huge.path()),
        "shaderfile Load: Unable to allocate 268435458 GLchars (268435458 bytes) for array buf_.");
    EXPECT_TRUE(shaderCache.empty());
}
