// Loading engagements into the window, hiding them and choosing the view.
#include "windowfixture.h"

#include <sys/stat.h>

using namespace sorvane;

namespace {
struct EngagementListTest : WindowTest {
    int fileCount() const { return static_cast<int>(filesMenu->actions().size()) - 1; }
    QStringList checkedEntries() const {
        QStringList checked;
        for (int i = 0; i < fileCount(); ++i)
            for (const QAction* const action : filesMenu->actions().at(i + 1)->menu()->actions())
                if (action->isChecked())
                    checked << QString::number(i) + ' ' + action->text();
        return checked;
    }
};

TEST_F(EngagementListTest, EachFileGetsASubMenuTitledWithItsPath) {
    const QString path = loadUntil(10.0, "ETXYZ.OUT.a b");
    ASSERT_EQ(fileCount(), 1);
    QMenu* const menu = filesMenu->actions().at(1)->menu();
    EXPECT_EQ(menu->title(), path);
    EXPECT_EQ(menu->parentWidget(), &window);
    QStringList texts;
    for (const QAction* const action : menu->actions())
        texts << action->text();
    EXPECT_EQ(texts, (QStringList{"Disable", "View Threat", "View Gyro", "View Target", "View Free"}));
    window.loadEtxyzFile(path);
    EXPECT_EQ(fileCount(), 2) << "the same file twice is two engagements";
    EXPECT_EQ(checkedEntries(), QStringList{"0 View Threat"}) << "only the first one starts in it";
}

TEST_F(EngagementListTest, TheSlidersMaximumOnlyGrows) {
    loadUntil(20.0);
    EXPECT_EQ(slider->maximum(), 20000);
    loadUntil(10.0);
    EXPECT_EQ(slider->maximum(), 20000);
    loadUntil(1.0e8);
    EXPECT_EQ(slider->maximum(), 2147483647) << "a time that no int holds in milliseconds ends at its limit";
    EXPECT_EQ(box->maximum(), 29.999);
}

TEST_F(EngagementListTest, BadFilesChangeNothing) {
    loadUntil(10.0);
    writeFile(folder.filePath("empty"), "");
    writeFile(folder.filePath("header"), trajectoryHeader() + "\n");
    writeFile(folder.filePath("zeros"), QByteArray(1 << 16, '\0'));
    ASSERT_EQ(::mkfifo(qPrintable(folder.filePath("fifo")), 0600), 0);
    for (const char* const name : {"missing", "empty", "header", "zeros", "fifo", ".", "missing.Z", "empty.Z"})
        window.loadEtxyzFile(folder.filePath(name));
    EXPECT_EQ(fileCount(), 1);
    EXPECT_EQ(slider->maximum(), 10000);
    EXPECT_EQ(checkedEntries(), QStringList{"0 View Threat"});
}

TEST_F(EngagementListTest, ChoosingAViewUnchecksAllOthersOfAllFiles) {
    loadUntil(10.0);
    loadUntil(10.0);
    entry(1, 3)->trigger();
    EXPECT_EQ(checkedEntries(), QStringList{"1 View Target"});
    EXPECT_EQ(view->viewMode(), ViewTarget);
    entry(0, 2)->trigger();
    EXPECT_EQ(checkedEntries(), QStringList{"0 View Gyro"});
    EXPECT_EQ(view->viewMode(), ViewGyro);
    entry(0, 4)->trigger();
    EXPECT_EQ(view->viewMode(), ViewFree);
    entry(0, 4)->trigger();
    EXPECT_EQ(checkedEntries(), QStringList{}) << "chosen again it is unchecked, and";
    EXPECT_EQ(view->viewMode(), ViewFree) << "stays";
    entry(0, 1)->trigger();
    EXPECT_EQ(view->viewMode(), ViewThreat);
}

TEST_F(EngagementListTest, LoadingTakesTheViewToTheBoxsTimeAndTheCameraToItsStart) {
    slider->setValue(1); // its end; then it lets the box go on
    box->setValue(4.0);
    loadUntil(10.0); // where the threat goes from 0 to 50 along x
    EXPECT_EQ(view->currentTime(), 4.0);
    EXPECT_FLOAT_EQ(view->camera().centre().ElementAt(0), 20.0F);
    EXPECT_FLOAT_EQ(view->camera().eye().ElementAt(0), 30.0F);
    entry(0, 1)->trigger(); // unchecked: the view follows nothing
    box->setValue(6.0);
    EXPECT_EQ(view->currentTime(), 4.0);
    entry(0, 1)->trigger();
    EXPECT_EQ(view->currentTime(), 6.0);
    EXPECT_FLOAT_EQ(view->camera().eye().ElementAt(0), 40.0F);
}

TEST_F(EngagementListTest, TheScreenFollowsWhatIsLoadedHiddenSteppedAndTakenOut) {
    showWindow();
    action("actionShow_Grid")->setChecked(false);
    hideTexts();
    const QImage empty = onScreen(*view);
    // At its end the threat has left a path behind on one side of the view.
    window.loadEtxyzFile(
        writeTrajectory(folder.filePath("t"), {TestSample{}, {.time = 10.0, .threat = {0.0, 20.0, -500.0}}}));
    hideTexts();
    const QImage atStart = onScreen(*view);
    box->setValue(10.0);
    const QImage atEnd = onScreen(*view);
    EXPECT_NE(atEnd, atStart);
    EXPECT_NE(atEnd, empty);
    entry(0, 0)->trigger();
    EXPECT_EQ(onScreen(*view), empty);
    entry(0, 0)->trigger();
    EXPECT_EQ(onScreen(*view), atEnd);
    QTest::keyClick(view, Qt::Key_S);
    EXPECT_NE(onScreen(*view), atEnd);
    QTest::keyClick(view, Qt::Key_S);
    EXPECT_EQ(onScreen(*view), atEnd);

    engagements().remove(engagements().begin()->id());
    hideTexts();
    EXPECT_EQ(onScreen(*view), empty);
    EXPECT_EQ(fileCount(), 0);
    EXPECT_TRUE(engagements().isEmpty());
}

TEST_F(EngagementListTest, WhatIsTakenOutLeavesTheOthersAlone) {
    showWindow();
    loadUntil(10.0, "ETXYZ.OUT.1");
    loadUntil(10.0, "ETXYZ.OUT.2");
    entry(0, 2)->trigger();
    const LoadedEngagement& second = *std::next(engagements().begin());
    const EngagementId first = engagements().begin()->id();
    engagements().remove(first);
    EXPECT_EQ(engagements().find(first), nullptr);
    ASSERT_EQ(engagements().size(), 1U);
    EXPECT_EQ(&*engagements().begin(), &second);
    EXPECT_EQ(checkedEntries(), QStringList{});
    EXPECT_EQ(slider->maximum(), 10000);
    box->setValue(5.0);
    EXPECT_EQ(view->currentTime(), 0.0) << "nothing is selected";
    QTest::keyClick(view, Qt::Key_C); // nor remembered
    EXPECT_EQ(box->value(), 5.0);
    entry(0, 3)->trigger();
    EXPECT_EQ(engagements().selected(), &second);
    EXPECT_EQ(view->currentTime(), 5.0);
    engagements().remove(first); // a second time: nothing
    engagements().clear();
    EXPECT_EQ(fileCount(), 0);
    EXPECT_FALSE(view->grabFramebuffer().isNull());
    // The next one is a first one again.
    loadUntil(3.0);
    EXPECT_EQ(checkedEntries(), QStringList{"0 View Threat"});
}

TEST_F(EngagementListTest, AddAsksForAFileAndLoadsIt) {
    showWindow();
    answerDialog([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    action("actionAdd")->trigger();
    EXPECT_EQ(fileCount(), 0);
    const QString path = writeTrajectoryUntil(folder.filePath("ETXYZ.OUT.1"), 3.0);
    answerDialog([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Open ETXYZ File");
        EXPECT_EQ(
            dialog.nameFilters(),
            (QStringList{"ETXYZ Files (ETXYZ.OUT.*)", "Compressed ETXYZ Files (ETXYZ.OUT.*.Z)", "All Files (*.*)"}));
        enterName(dialog, path);
    });
    action("actionAdd")->trigger();
    EXPECT_EQ(fileCount(), 1);
    EXPECT_EQ(slider->maximum(), 3000);
}
} // namespace
