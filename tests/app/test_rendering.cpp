// The companion command draws what the viewer shows.
#include "windowfixture.h"

#include <QProcess>

#include "environmentvariable.h"
#include "framegrab.h"
#include "makedemonstration.h"

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

    // The command's picture of the first engagement at the size of the view.
    void render(const QString& path, const QStringList& options) {
        const QStringList arguments = {"render", demo + "/ETXYZ.OUT.turn",
                                       "-o",     path,
                                       "--size", QString("%1x%2").arg(view->width()).arg(view->height())};
        expectSuccess(arguments + options);
    }
};

TEST_F(RenderingTest, TheCommandDrawsWhatTheViewerShows) {
    ASSERT_EQ(sorvane::makeDemonstration(demo.toStdString()), std::nullopt);
    showWindow();
    window.loadEtxyzFile(demo + "/ETXYZ.OUT.turn");
    struct Row {
        int entry; // of the engagement's sub-menu
        double seconds;
        const char* name;
        bool hasTerrain;
        int samples;
    };
    for (const Row& row :
         {Row{1, 9.0, "threat", false, 0}, Row{2, 8.2, "gyro", false, 2}, Row{3, 9.0, "target", true, 4}}) {
        action("actionShow_Terrain")->setChecked(row.hasTerrain);
        box->setValue(row.seconds);
        if (!entry(0, row.entry)->isChecked())
            entry(0, row.entry)->trigger();
        QTest::qWait(50);
        if (row.samples != 0)
            QTest::keyClick(view, Qt::Key_A); // one further each time
        EXPECT_EQ(view->samples(), row.samples);
        const QImage shown = grabFrame(*view);
        QStringList options = {
            "--view", row.name, "--at", QString::number(row.seconds), "--antialias", QString::number(row.samples)};
        if (row.hasTerrain)
            options << "--terrain";
        const QString byViewer = QString("viewer-%1.png").arg(row.name);
        const QString byCommand = QString("command-%1.png").arg(row.name);
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
} // namespace
