// The companion command draws what the viewer shows.
#include "windowfixture.h"

#include <QProcess>

#include "environmentvariable.h"
#include "framegrab.h"
#include "makedemonstration.h"
#include "rows.h"

using namespace sorvane;

namespace {
struct RenderingTest : WindowTest {
    QString demo = folder.filePath("demo");
    EnvironmentVariable dataRoot{"PELSAR_DATA", (demo + "/data/").toStdString()};

    static void expectSuccess(const QStringList& arguments) {
        QProcess command;
        command.start(QStringLiteral(SORVANE_COMMAND), arguments);
        EXPECT_TRUE(command.waitForFinished(60000));
        EXPECT_EQ(command.exitCode(), 0) << command.readAll().toStdString()
                                         << command.readAllStandardError().toStdString();
    }

    void load() {
        ASSERT_EQ(sorvane::makeDemonstration(demo.toStdString()), std::nullopt);
        showWindow();
        window.loadEtxyzFile(demo + "/ETXYZ.OUT.turn");
    }

    // The command's picture of the first engagement at the size of the view.
    void render(const QString& path, const QStringList& options) {
        const QStringList arguments = {"render", demo + "/ETXYZ.OUT.turn",
                                       "-o",     path,
                                       "--size", QString("%1x%2").arg(view->width()).arg(view->height())};
        expectSuccess(arguments + options);
    }
};

TEST_F(RenderingTest, TheCommandDrawsWhatTheViewerShows) {
    load();
    for (const auto& [key, name, seconds, hasTerrain, samples] : Rows<Qt::Key, const char*, double, bool, int>{
             {Qt::Key_1, "threat", 9.0, false, 0},
             {Qt::Key_2, "gyro", 8.2, false, 2},
             {Qt::Key_3, "target", 9.0, true, 4}}) {
        action("actionShow_Terrain")->setChecked(hasTerrain);
        box->setValue(seconds);
        press(key);
        QTest::qWait(50);
        if (samples != 0)
            press(Qt::Key_A); // one further each time
        EXPECT_EQ(view->samples(), samples);
        const QImage shown = grabFrame(*view);
        QStringList options = {
            "--view", name, "--at", QString::number(seconds), "--antialias", QString::number(samples)};
        if (hasTerrain)
            options << "--terrain";
        const QString byViewer = QString("viewer-%1.png").arg(name);
        const QString byCommand = QString("command-%1.png").arg(name);
        ASSERT_TRUE(shown.save(byViewer));
        render(byCommand, options);
        // Threads of edges may fall a pixel aside: the viewer's camera has come there in steps.
        expectSuccess({"compare", byViewer, byCommand, "--tolerance", "32", "--allowed", "0.001"});
        if (!HasFailure()) {
            QFile::remove(byViewer);
            QFile::remove(byCommand);
        }
    }
}

TEST_F(RenderingTest, TheCommandDrawsTheScalesOfTheViewer) {
    load();
    action("actionShow_Terrain")->setChecked(true);
    box->setValue(9.0);
    press(Qt::Key_5); // the command finds the overview's place by the same numbers
    QTest::qWait(50);
    const QString path = "command-scale.png";
    for (const auto& [keys, option] : Rows<std::vector<QKeyCombination>, QString>{
             {{Qt::Key_B}, ""}, // with its bar
             {{Qt::SHIFT | Qt::Key_B, Qt::SHIFT | Qt::Key_B, Qt::SHIFT | Qt::Key_B}, "--palette inferno"},
             {{Qt::Key_B}, "--scale auto --palette inferno"},
             {{Qt::CTRL | Qt::Key_Down, Qt::SHIFT | Qt::Key_B}, "--scale %1"}}) {
        for (const QKeyCombination& key : keys)
            press(key.key(), key.keyboardModifiers());
        const QImage shown = grabFrame(*view);
        QStringList options = {"--view", "overview", "--at", "9", "--terrain", "--colour-bar"};
        options << option.arg(view->scale().white, 0, 'g', 17).split(' ', Qt::SkipEmptyParts);
        render(path, options);
        EXPECT_TRUE(QImage(path).convertToFormat(QImage::Format_RGB32) == shown) << option.toStdString();
    }
    QFile::remove(path);
}
} // namespace
