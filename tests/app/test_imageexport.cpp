// The screenshot: dialog, picture, refusals.
#include "windowfixture.h"

#include <QMessageBox>

#include "imageexport.h"
#include "rows.h"

using namespace sorvane;

namespace {
struct ImageExportTest : WindowTest {
    // Saves the view while answering the boxes that are expected, in order; returns the texts that were shown.
    QStringList savedWithBoxes(const QString& path, int boxes) {
        QStringList texts;
        answerBoxes(texts, boxes);
        window.saveImage(path);
        return texts;
    }

private:
    void answerBoxes(QStringList& texts, int boxes) {
        if (boxes == 0)
            return;
        answerModal<QMessageBox>([this, &texts, boxes](QMessageBox& shown) {
            EXPECT_EQ(shown.windowTitle(), "Error");
            EXPECT_EQ(shown.icon(), QMessageBox::Critical);
            texts << shown.text();
            answerBoxes(texts, boxes - 1);
            shown.accept();
        });
    }
};

TEST_F(ImageExportTest, TheFormatIsWhatFollowsTheLastDot) {
    for (const auto& [name, format] : Rows<const char*, const char*>{
             {"a.tar.Bmp", "bmp"},
             {"/a.b/c", "b/c"},
             {"noending", "noending"},
             {"a.png.", "png."}, // the dot is sought from the second-last character
             {".png", "png"},
             {"", ""}})
        EXPECT_EQ(imageFormatOf(name).toStdString(), format) << name;
}

TEST_F(ImageExportTest, PicturesAre640By480InTheFormatOfTheirName) {
    window.resize(1100, 400);
    showWindow();
    for (const char* const name : {"a.png", "b.PNG", "c.ppm", "d.bmp"}) {
        const QString path = folder.filePath(name);
        EXPECT_EQ(savedWithBoxes(path, 0), QStringList{});
        const QImage saved(path);
        EXPECT_EQ(saved.size(), QSize(640, 480)) << name;
        // The grid's horizon crosses the middle; what lies above it is black.
        EXPECT_EQ(saved.pixel(5, 5) & 0xFFFFFFU, 0U) << name;
    }
    EXPECT_TRUE(contentsOf(folder.filePath("c.ppm")).startsWith("P6"));
}

TEST_F(ImageExportTest, PicturesAreStretchedAndKeepTheirColours) {
    QImage quarters(2, 2, QImage::Format_RGB32);
    const QRgb colours[2][2] = {{0xFF102030U, 0xFFF08040U}, {0xFF00C0FFU, 0xFFFFFFFFU}};
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 2; ++x)
            quarters.setPixel(x, y, colours[y][x]);
    const QString path = folder.filePath("a.png");
    exportImage(window, quarters, path);
    const QImage saved = QImage(path).convertToFormat(QImage::Format_RGB32);
    for (const int y : {0, 230, 250, 479})
        for (const int x : {0, 310, 330, 639})
            EXPECT_EQ(saved.pixel(x, y), colours[y / 240][x / 320]) << x << ' ' << y;
}

TEST_F(ImageExportTest, RefusedNamesAreTold) {
    showWindow();
    const QString noFolder = folder.filePath("missing/a.png");
    EXPECT_EQ(savedWithBoxes("noending", 2), (QStringList{"No File Type Specified", "Unknown Export File Type"}));
    EXPECT_EQ(savedWithBoxes(folder.filePath("a.xyz"), 1), QStringList{"Unknown Export File Type"});
    EXPECT_EQ(savedWithBoxes(noFolder, 1), QStringList{"Could not create file"});
    EXPECT_FALSE(QFile::exists(folder.filePath("a.xyz")));
}

TEST_F(ImageExportTest, AFullDiskIsToldWhateverTheFormat) {
    for (const char* const name : {"full.png", "full.jpg", "full.bmp", "full.ppm"}) {
        ASSERT_TRUE(QFile::link("/dev/full", folder.filePath(name)));
        EXPECT_EQ(savedWithBoxes(folder.filePath(name), 1), QStringList{"Could not create file"}) << name;
    }
}

TEST_F(ImageExportTest, TheScreenshotActionAsksForAName) {
    showWindow();
    const QString path = folder.filePath("shot.png");
    answerDialog([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Save Image File");
        EXPECT_EQ(
            dialog.nameFilters(),
            (QStringList{"PNG Files (*.png)", "PPM Files (*.ppm)", "BMP Files (*.bmp)", "All Files (*.*)"}));
        EXPECT_TRUE(dialog.testOption(QFileDialog::DontResolveSymlinks));
        enterName(dialog, path);
    });
    action("actionScreenshot")->trigger();
    EXPECT_EQ(QImage(path).size(), QSize(640, 480));
    answerDialog([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    action("actionScreenshot")->trigger();
}
} // namespace
