// The companion command draws what the viewer shows.
#include "windowfixture.h"

#include <QProcess>

#include "environmentvariable.h"
#include "framegrab.h"
#include "makedemonstration.h"

namespace {
struct RenderingTest : WindowTest {
    QString demo = folder.filePath("demo");
    EnvironmentVariable dataRoot{"PELSAR_DATA", (demo + "/data/").toStdString()};

    // The command's picture of the first engagement at the size of the view.
    QImage rendered(const QStringList& options) {
        const QString path = folder.filePath("rendered.png");
        QStringList arguments = {"render", demo + "/ETXYZ.OUT.turn",
                                 "-o",     path,
                                 "--size", QString("%1x%2").arg(view->width()).arg(view->height())};
        QProcess command;
        command.start(QStringLiteral(SORVANE_COMMAND), arguments + options);
        EXPECT_TRUE(command.waitForFinished(60000));
        EXPECT_EQ(command.exitCode(), 0) << command.readAllStandardError().toStdString();
        return QImage(path).convertToFormat(QImage::Format_RGB32);
    }
};

// Pixels of which a colour differs by more than an eighth.
int differingPixels(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int difference =
                std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
            count += difference > 32 ? 1 : 0;
        }
    return count;
}

TEST_F(RenderingTest, TheCommandDrawsWhatTheViewerShows) {
    ASSERT_EQ(makeDemonstration(demo.toStdString()), std::nullopt);
    showWindow();
    window.loadEtxyzFile(demo + "/ETXYZ.OUT.turn");
    struct Row {
        int entry; // of the engagement's sub-menu
        double seconds;
        const char* name;
        bool hasTerrain;
    };
    for (const Row& row : {Row{1, 9.0, "threat", false}, Row{2, 8.2, "gyro", false}, Row{3, 9.0, "target", true}}) {
        action("actionShow_Terrain")->setChecked(row.hasTerrain);
        box->setValue(row.seconds);
        if (!entry(0, row.entry)->isChecked())
            entry(0, row.entry)->trigger();
        QTest::qWait(50);
        const QImage shown = grabFrame(*view);
        QStringList options = {"--view", row.name, "--at", QString::number(row.seconds)};
        if (row.hasTerrain)
            options << "--terrain";
        const QImage picture = rendered(options);
        ASSERT_EQ(picture.size(), shown.size());
        // Threads of edges may fall a pixel aside: the viewer's camera has come there in steps.
        const int differing = differingPixels(picture, shown);
        EXPECT_LE(differing, picture.width() * picture.height() / 1000) << row.name;
        if (differing > 0) {
            shown.save(QString("viewer-%1.png").arg(row.name));
            picture.save(QString("command-%1.png").arg(row.name));
        }
        RecordProperty(row.name, differing);
    }
}
} // namespace
