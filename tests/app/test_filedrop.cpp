// Files dropped onto the window.
#include "windowfixture.h"

#include <QDragEnterEvent>
#include <QMimeData>

using namespace sorvane;

namespace {
struct FileDropTest : WindowTest {
    static bool drop(QWidget& onto, const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        data.setText("text, as file managers add it");
        const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter({5, 5}, actions, &data, Qt::LeftButton, Qt::ShiftModifier); // which proposes moving
        QApplication::sendEvent(&onto, &enter);
        QDropEvent dropped({5, 5}, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&onto, &dropped);
        EXPECT_EQ(enter.isAccepted(), dropped.isAccepted());
        // The files stay where they are.
        return dropped.isAccepted() && dropped.dropAction() == Qt::CopyAction;
    }
    QUrl file(const QString& name) { return QUrl::fromLocalFile(writeTrajectoryUntil(folder.filePath(name), 5.0)); }
    QStringList loaded() const {
        QStringList names;
        for (const QAction* const entry : filesMenu->actions().mid(1))
            names << QFileInfo(entry->menu()->title()).fileName();
        return names;
    }
};

TEST_F(FileDropTest, LoadsInNameOrderAfterTheDropUnderAWaitCursor) {
    EXPECT_TRUE(window.acceptDrops());
    ASSERT_TRUE(drop(
        *view,
        {file("ETXYZ.OUT.c"), file("ETXYZ.OUT.a"), QUrl::fromLocalFile("/nowhere/ETXYZ.OUT.b"), file("ETXYZ.OUT.d")}));
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_EQ(loaded(), QStringList());
    QString progress;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (progress.isEmpty())
            progress = loads->text().section('\n', 0, 0);
    });
    look.start(0);
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::overrideCursor() == nullptr; }));
    EXPECT_EQ(progress, "1 of 4: ETXYZ.OUT.a, Esc stops") << "the window lives meanwhile";
    EXPECT_EQ(loaded(), (QStringList{"ETXYZ.OUT.a", "ETXYZ.OUT.c", "ETXYZ.OUT.d"}));
    EXPECT_TRUE(entry(0, 1)->isChecked()) << "the first one starts in threat view";
}

TEST_F(FileDropTest, TakesFilesOverTheTimeBoxAndLeavesEverythingElse) {
    auto* const field = box->findChild<QLineEdit*>();
    EXPECT_TRUE(drop(*field, {file("ETXYZ.OUT.1")}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return loaded().size() == 1; }));
    EXPECT_EQ(box->value(), 0.0);
    EXPECT_FALSE(drop(window, {QUrl("https://example.invalid/ETXYZ.OUT.1")}));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(FileDropEndTest, AWindowThatClosesWithFilesWaitingRestoresTheCursor) {
    {
        new_sorvane window;
        FileDropTest::drop(window, {QUrl::fromLocalFile("/nowhere/a"), QUrl::fromLocalFile("/nowhere/b")});
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
    }
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}
} // namespace
