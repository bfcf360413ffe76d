// Loaders that fail in every way there is.
#include "loaderguard.h"

#include <new>

#include <gtest/gtest.h>

#include "endprocess.h"

using namespace sorvane;

namespace {
TEST(LoaderGuard, KeepsWhatALoaderDoesToItself) {
    LoaderOutcome inner;
    const LoaderOutcome outcome = runLoader([&] {
        printMessage("before");
        inner = runLoader([] {
            printErrorMessage("bad index %d", 3);
            endProcess();
        });
        printErrorMessage("after");
    });
    EXPECT_TRUE(inner.hasEndedProcess);
    ASSERT_EQ(inner.messages.size(), 1U);
    EXPECT_EQ(inner.messages[0].text, "bad index 3");
    EXPECT_TRUE(inner.messages[0].isError);
    EXPECT_TRUE(outcome.hasReturned());
    ASSERT_EQ(outcome.messages.size(), 2U);
    EXPECT_EQ(outcome.messages[1].text, "after");

    const LoaderOutcome thrown = runLoader([] { throw std::bad_alloc(); });
    EXPECT_FALSE(thrown.hasReturned());
    EXPECT_EQ(thrown.exceptionText, "std::bad_alloc");
}

TEST(LoaderGuardDeathTest, LeavesTheProcessEndToOthers) {
    runLoader([] {});
    EXPECT_EXIT(endProcess(), testing::ExitedWithCode(1), "");
}
} // namespace
