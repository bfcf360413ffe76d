// Going through what is loaded by keys, and how the menu of the engagements shows it.
#include "windowfixture.h"

#include <QCheckBox>
#include <QMessageBox>

using namespace sorvane;

namespace {
struct EngagementKeysTest : WindowTest {
    void loadThree() {
        showWindow();
        for (const char* const name : {"one", "two", "three"})
            loadUntil(10.0, QString("ETXYZ.OUT.") + name);
        view->setFocus();
    }
    // What shows and what is followed, as the menu says: "one*" is followed, "(two)" is hidden.
    QString state() {
        QStringList states;
        for (const LoadedEngagement& engagement : engagements()) {
            const QMenu& menu = *engagement.data().menu;
            QString name = engagement.path().section('.', -1);
            if (menu.menuAction()->font().bold())
                name += '*';
            states << (menu.actions().first()->text() == "Enable" ? '(' + name + ')' : name);
        }
        return states.join(' ');
    }
    int asked = 0;
    void answer(QMessageBox::StandardButton button, bool isForAll) {
        answerModal<QMessageBox>([=, this](QMessageBox& question) {
            ++asked;
            question.checkBox()->setChecked(isForAll);
            QTest::mouseClick(question.button(button), Qt::LeftButton);
        });
    }
    // The contrast of an entry of the open menu: its darkest against its brightest point.
    int contrastOf(QAction* entry) {
        const QImage shown = onScreen(*filesMenu).copy(filesMenu->actionGeometry(entry).adjusted(4, 2, -4, -2));
        int darkest = 255;
        int brightest = 0;
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x) {
                darkest = std::min(darkest, qGray(shown.pixel(x, y)));
                brightest = std::max(brightest, qGray(shown.pixel(x, y)));
            }
        return brightest - darkest;
    }
};

TEST_F(EngagementKeysTest, PageKeysFollowTheNeighboursInTheSameView) {
    press(Qt::Key_PageDown); // nothing is there
    loadThree();
    entry(0, 3)->trigger();
    EXPECT_EQ(state(), "one* two three");
    press(Qt::Key_PageDown);
    EXPECT_EQ(state(), "one two* three");
    EXPECT_EQ(notice->text(), "ETXYZ.OUT.two (2 of 3)");
    EXPECT_EQ(view->viewMode(), ViewTarget);
    EXPECT_TRUE(entry(1, 3)->isChecked());
    entry(2, 0)->trigger();
    press(Qt::Key_PageDown);
    EXPECT_EQ(state(), "one two three*") << "what is followed shows";
    press(Qt::Key_PageDown);
    EXPECT_EQ(notice->text(), "No engagement after ETXYZ.OUT.three");
    press(Qt::Key_PageUp);
    press(Qt::Key_PageUp);
    press(Qt::Key_PageUp);
    EXPECT_EQ(state(), "one* two three");
    EXPECT_EQ(notice->text(), "No engagement before ETXYZ.OUT.one");
}

TEST_F(EngagementKeysTest, TheOthersHideAndShowAgainAndOneByOneIsLookedAtAlone) {
    loadThree();
    press(Qt::Key_X);
    EXPECT_EQ(state(), "one* (two) (three)");
    press(Qt::Key_PageDown);
    EXPECT_EQ(state(), "(one) two* (three)");
    press(Qt::Key_X);
    EXPECT_EQ(state(), "one two* three");
    EXPECT_EQ(notice->text(), "No engagement is hidden");
}

TEST_F(EngagementKeysTest, DeleteTakesOutWhatIsFollowedOnceThatIsAgreed) {
    loadThree();
    const QString path = engagements().begin()->path();
    press(Qt::Key_PageDown);
    answer(QMessageBox::No, true);
    press(Qt::Key_Delete);
    EXPECT_EQ(state(), "one two* three") << "a No is not for the rest of the session";
    answer(QMessageBox::Yes, true);
    press(Qt::Key_Delete);
    EXPECT_EQ(state(), "one three*");
    EXPECT_EQ(notice->text(), "ETXYZ.OUT.two is taken out");
    press(Qt::Key_Delete);
    EXPECT_EQ(state(), "one*");
    EXPECT_EQ(asked, 2);
    press(Qt::Key_Delete);
    press(Qt::Key_Delete);
    EXPECT_EQ(state(), "");
    EXPECT_TRUE(QFile::exists(path));
    box->setFocus();
    box->selectAll();
    loadUntil(10.0);
    QTest::keyClick(box, Qt::Key_Delete);
    EXPECT_EQ(state(), "1*") << "in the box the key deletes digits";
}

TEST_F(EngagementKeysTest, HiddenEngagementsAreGreyInTheMenuWhichScrollsWhenItIsLong) {
    loadThree();
    entry(1, 0)->trigger();
    filesMenu->popup(window.mapToGlobal(QPoint(40, 40)));
    EXPECT_LT(contrastOf(filesMenu->actions().at(2)), contrastOf(filesMenu->actions().at(3)) - 40);
    filesMenu->hide();

    for (int i = 0; i < 100; ++i)
        loadUntil(10.0, QString("ETXYZ.OUT.%1").arg(i));
    filesMenu->popup(window.mapToGlobal(QPoint(40, 40)));
    QTest::qWait(100);
    EXPECT_LE(filesMenu->height(), window.screen()->geometry().height());
    const QRect first = filesMenu->actionGeometry(filesMenu->actions().first());
    const QRect last = filesMenu->actionGeometry(filesMenu->actions().last());
    EXPECT_EQ(first.x(), last.x()) << "one column";
    QTest::keyClick(filesMenu, Qt::Key_End);
    EXPECT_TRUE(filesMenu->rect().contains(filesMenu->actionGeometry(filesMenu->actions().last())));
    filesMenu->hide();
}
} // namespace
