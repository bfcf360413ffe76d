// Files of the command line, loaded into a window that lives meanwhile.
#include "windowfixture.h"

#include <QWindow>

#include "environmentvariable.h"
#include "fileloading.h"
#include "loadedengagement.h"
#include "lzw.h"

using namespace sorvane;

namespace {
struct CommandLineFilesTest : WindowTest {
    QStringList files(int count) {
        QStringList paths;
        for (int i = 0; i < count; ++i)
            paths << writeTrajectoryUntil(folder.filePath(QString("ETXYZ.OUT.%1").arg(i)), 5.0);
        return paths;
    }
    // Runs in the loading's first turn of the event loop.
    template <class Act> void meanwhile(const Act& act) { QTimer::singleShot(0, &window, act); }
};

TEST_F(CommandLineFilesTest, TheWindowShowsHowFarItIsAndTakesNoInput) {
    window.show();
    const QStringList paths = files(3);
    QString progress;
    meanwhile([&] {
        progress = loads->text().section('\n', 0, 0);
        EXPECT_TRUE(loads->isVisible());
        ASSERT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BusyCursor);
        QTest::mouseClick(playButton, Qt::LeftButton);
        QTest::keyClick(view, Qt::Key_End);
    });
    bool wasShown = false;
    QObject::connect(&engagements(), &EngagementList::added, &window, [&] {
        wasShown = wasShown || (engagements().size() == 1 && window.windowHandle()->isExposed());
    });
    loadFiles(window, paths);
    EXPECT_TRUE(wasShown) << "before the first file";
    EXPECT_EQ(progress, "1 of 3: ETXYZ.OUT.0, Esc stops");
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(box->value(), 0.0);
    EXPECT_EQ(engagements().size(), 3U);
    EXPECT_TRUE(entry(0, 1)->isChecked()) << "in the order of the command line";
    EXPECT_FALSE(loads->text().contains("Esc stops"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    QTest::mouseClick(playButton, Qt::LeftButton);
    EXPECT_TRUE(timer->isActive());
}

TEST_F(CommandLineFilesTest, ALargeFileCanBeStopped) {
    QList<TestSample> samples;
    for (int i = 0; i < 40000; ++i)
        samples << TestSample{.time = 0.001 * i};
    const QString plain = writeTrajectory(folder.filePath("ETXYZ.OUT.large"), samples);
    writeFile(plain + ".Z", QByteArray::fromStdString(lzwCompressed(contentsOf(plain).toStdString())));
    for (const QString& path : {plain, plain + ".Z"}) {
        SCOPED_TRACE(path.toStdString());
        int turns = 0;
        EXPECT_EQ(readEngagement(path, [&] { return ++turns < 2; }).data, nullptr);
        EXPECT_EQ(turns, 2);
        const EngagementReading whole = readEngagement(path, [&] { return ++turns > 0; });
        EXPECT_GE(turns, path == plain ? 10 : 2) << "each piece; of the decompressor's some are taken in together";
        ASSERT_NE(whole.data, nullptr);
        EXPECT_EQ(whole.data->samples.series()->samples().size(), 40000U);
    }
}

// A decompressor that takes until the test says so, or else half a minute, for the first of three files.
struct SlowFileTest : CommandLineFilesTest {
    SlowFileTest() {
        const QString program = folder.filePath("uncompress");
        writeFile(
            program, "#!/bin/sh\nfor turn in $(seq 1500); do\n[ -e '" + go.toUtf8() + "' ] && exec cat '" +
                         paths[1].toUtf8() + "'\nsleep 0.02\ndone\n: > '" + late.toUtf8() + "'\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        writeFile(slow, "x");
        paths.prepend(slow);
        showWindow();
    }

    QString go = folder.filePath("go");
    QString late = folder.filePath("late");
    QString slow = folder.filePath("ETXYZ.OUT.slow.Z");
    QStringList paths = files(2);
    EnvironmentVariable path{"PATH", folder.path().toStdString() + ":" + qgetenv("PATH").toStdString()};
};

TEST_F(SlowFileTest, TheWindowLivesMeanwhileAndKeepsTheOrder) {
    QTimer::singleShot(300, &window, [this] { writeFile(go, "x"); });
    loadFiles(window, paths);
    QStringList loaded;
    for (const LoadedEngagement& engagement : engagements())
        loaded << engagement.path();
    EXPECT_EQ(loaded, paths);
    EXPECT_FALSE(QFile::exists(late)) << "the window did not live";
}

TEST_F(SlowFileTest, EscapeEndsItsReading) {
    QTimer::singleShot(300, &window, [this] { QTest::keyClick(view, Qt::Key_Escape); });
    loadFiles(window, paths);
    EXPECT_FALSE(QFile::exists(late)) << "it was waited for";
    EXPECT_EQ(engagements().size(), 0U);
    EXPECT_TRUE(loads->text().startsWith("Stopped: 0 of 3 files are loaded")) << loads->text().toStdString();
}

TEST_F(CommandLineFilesTest, EscapeStopsAndCtrlCCloses) {
    showWindow();
    meanwhile([&] { QTest::keyClick(view, Qt::Key_Escape); });
    loadFiles(window, files(5));
    EXPECT_EQ(engagements().size(), 0U);
    EXPECT_TRUE(loads->text().startsWith("Stopped: 0 of 5 files are loaded")) << loads->text().toStdString();
    meanwhile([&] { QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier); });
    loadFiles(window, files(5));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(engagements().size(), 0U);
}
} // namespace
