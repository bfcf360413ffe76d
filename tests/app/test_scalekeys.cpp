// The scale of radiance in the window: by its keys, in what is shown and what is grabbed, and in the read-out.
#include "windowfixture.h"

#include "environmentvariable.h"
#include "framegrab.h"
#include "makedemonstration.h"
#include "sideview.h"

using namespace sorvane;

namespace {
struct ScaleKeysTest : WindowTest {
    QString demo = folder.filePath("demo");
    EnvironmentVariable dataRoot{"PELSAR_DATA", (demo + "/data/").toStdString()};

    void start() {
        ASSERT_EQ(makeDemonstration(demo.toStdString()), std::nullopt);
        showWindow();
        testing::internal::CaptureStdout();
        window.loadEtxyzFile(demo + "/ETXYZ.OUT.turn");
        testing::internal::GetCapturedStdout();
        press(Qt::Key_3);
    }
    QString readout() { return window.findChild<QLabel*>("viewReadout")->text(); }
    void pointAt(const QPoint& place) {
        QTest::mouseMove(view, place + QPoint(3, 3));
        QTest::mouseMove(view, place);
        QTest::qWait(50);
    }
};

TEST_F(ScaleKeysTest, OffItIsTheSameToTheByte) {
    start();
    const QImage ever = grabFrame(*view);
    press(Qt::Key_B);
    EXPECT_EQ(notice->text(), "Scale: up to 1/3000 W/cm²/sr, grey");
    const QImage barred = grabFrame(*view);
    EXPECT_NE(barred, ever);
    // All but the bar is as ever.
    const QRect left(0, 0, ever.width() / 2, ever.height());
    EXPECT_EQ(barred.copy(left), ever.copy(left));
    hideTexts();
    EXPECT_EQ(onScreen(*view), grabFrame(*view).convertToFormat(QImage::Format_RGB32));
    press(Qt::Key_B);
    EXPECT_EQ(notice->text(), "Scale: automatic, grey");
    EXPECT_NE(grabFrame(*view).copy(left), ever.copy(left));
    press(Qt::Key_B);
    EXPECT_EQ(notice->text(), "Scale off: white is 1/3000 W/cm²/sr");
    EXPECT_EQ(grabFrame(*view), ever);
}

TEST_F(ScaleKeysTest, PalettesAndTheEndAreChosen) {
    start();
    for (const char* const name : {"inverted grey", "viridis", "inferno", "grey"}) {
        press(Qt::Key_B, Qt::ShiftModifier);
        EXPECT_EQ(notice->text(), QStringLiteral("Scale: up to 1/3000 W/cm²/sr, %1").arg(name));
    }
    press(Qt::Key_Down, Qt::ControlModifier);
    press(Qt::Key_Down, Qt::ControlModifier);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(notice->text(), "Scale: up to 1.7e-04 W/cm²/sr, grey") << "1/3000 / 10^0.3";
    press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(notice->text(), "Scale: up to 2.1e-04 W/cm²/sr, grey");
    grabFrame(*view);
    EXPECT_NEAR(view->scaleEnds().white, 2.1032e-4, 1e-8);
}

TEST_F(ScaleKeysTest, TheReadoutTellsWhatIsUnderThePointer) {
    start();
    press(Qt::Key_H);
    pointAt(view->rect().center());
    EXPECT_FALSE(readout().contains("Under pointer")) << "without a scale";
    press(Qt::Key_B);
    // The camera looks at the target's middle.
    EXPECT_TRUE(readout().contains(QRegularExpression("Under pointer +target facet \\d+, class \\d+")))
        << readout().toStdString();
    EXPECT_TRUE(readout().contains(QRegularExpression("Radiance +\\d\\.\\d\\de-0\\d W/cm²/sr")));
    for (const char* const part : {"own", "sun", "sky and earth", "other facets"})
        EXPECT_TRUE(readout().contains(QRegularExpression(QStringLiteral("  %1 +-?\\d").arg(part)))) << part;
    pointAt({5, 5});
    EXPECT_TRUE(readout().contains(QRegularExpression("Under pointer +sky")));
    EXPECT_FALSE(readout().contains("other facets"));
    press(Qt::Key_B);
    press(Qt::Key_B);
    EXPECT_FALSE(readout().contains("Under pointer"));
}
} // namespace
