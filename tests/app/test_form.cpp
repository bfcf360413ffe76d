// The fixed form of the window: objects, order, texts, check states.
#include "windowfixture.h"

#include <QLayout>
#include <QMenuBar>
#include <QMetaMethod>
#include <QToolBar>

#include "rows.h"

using namespace sorvane;

namespace {
struct FormTest : WindowTest {};

QStringList namesOf(const QList<QAction*>& actions) {
    QStringList names;
    for (const QAction* const action : actions)
        names << (action->menu() != nullptr ? action->menu()->objectName() : action->objectName());
    return names;
}

TEST_F(FormTest, HasItsActionsInOrder) {
    QStringList expectedOrder;
    for (const auto& [name, text, isCheckable, isChecked] : Rows<const char*, QString, bool, bool>{
             {"actionExit", "Exit", false, false},
             {"actionThreat", "Threat", true, true},
             {"actionThreat_Gyro", "Threat Gyro", true, false},
             {"actionTarget", "Target", true, false},
             {"actionAdd", "Add", false, false},
             {"actionClear_All", "Clear All", false, false},
             {"action1_0", "1.0", false, false},
             {"actionX2", "x2", false, false},
             {"actionX0_5", "x0.5", false, false},
             {"actionX10", "x10", false, false},
             {"actionX0_1", "x0.1", false, false},
             {"actionScreenshot", "Screenshot", false, false},
             {"actionShow_Drop_Lines", "Show Drop Lines", true, true},
             {"actionShow_History_Lines", "Show History Lines", true, true},
             {"actionShow_Terrain", "Show Terrain", true, false},
             {"actionShow_Grid", "Show Grid", true, true}}) {
        SCOPED_TRACE(name);
        expectedOrder << name;
        const QAction* const found = action(name);
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->text(), text);
        EXPECT_EQ(found->toolTip(), text);
        EXPECT_EQ(found->isCheckable(), isCheckable);
        EXPECT_EQ(found->isChecked(), isChecked);
        EXPECT_TRUE(found->isEnabled() && found->isVisible());
        EXPECT_EQ(found->shortcut().toString(), text == "Exit" ? "Ctrl+C" : "");
    }
    QStringList order;
    for (const QObject* const child : window.children())
        if (qobject_cast<const QAction*>(child) != nullptr && !child->objectName().isEmpty())
            order << child->objectName();
    EXPECT_EQ(order, expectedOrder);
}

TEST_F(FormTest, HasItsObjectsEachOnceInItsPlace) {
    for (const auto& [name, type, parent] : Rows<const char*, const char*, const char*>{
             {"centralWidget", "QWidget", "new_sorvane"},
             {"verticalLayout", "QVBoxLayout", "centralWidget"},
             {"horizontalLayout", "QHBoxLayout", "verticalLayout"},
             {"glWidget", "AircraftWidget", "centralWidget"},
             {"doubleSpinBox", "QDoubleSpinBox", "centralWidget"},
             {"playButton", "QPushButton", "centralWidget"},
             {"recordButton", "QPushButton", "centralWidget"},
             {"horizontalSlider", "QSlider", "centralWidget"},
             {"menuBar", "QMenuBar", "new_sorvane"},
             {"menuFile", "QMenu", "menuBar"},
             {"menuETXYZ_Files", "QMenu", "menuBar"},
             {"menuPlayback_Speed", "QMenu", "menuBar"},
             {"menuView", "QMenu", "menuBar"},
             {"mainToolBar", "QToolBar", "new_sorvane"}}) {
        SCOPED_TRACE(name);
        const QList<QObject*> found = window.findChildren<QObject*>(name);
        ASSERT_EQ(found.size(), 1);
        EXPECT_STREQ(found.first()->metaObject()->className(), type);
        EXPECT_EQ(found.first()->parent()->objectName(), parent);
    }
}

TEST_F(FormTest, HasItsMenusInOrder) {
    const auto* const bar = window.findChild<QMenuBar*>("menuBar");
    EXPECT_EQ(bar->geometry(), QRect(0, 0, 846, 23));
    EXPECT_EQ(namesOf(bar->actions()), (QStringList{"menuFile", "menuETXYZ_Files", "menuPlayback_Speed", "menuView"}));
    for (const auto& [name, title, actions] : Rows<const char*, const char*, const char*>{
             {"menuFile", "File", "actionScreenshot actionExit"},
             {"menuETXYZ_Files", "ETXYZ Files", "actionAdd"},
             {"menuPlayback_Speed", "Playback Speed", "action1_0 actionX10 actionX2 actionX0_5 actionX0_1"},
             {"menuView", "View",
              "actionShow_Drop_Lines actionShow_History_Lines actionShow_Terrain actionShow_Grid"}}) {
        const auto* const menu = window.findChild<QMenu*>(name);
        EXPECT_EQ(menu->title(), title);
        EXPECT_EQ(namesOf(menu->actions()).join(' '), actions);
    }
}

TEST_F(FormTest, HasItsControlsInOrder) {
    EXPECT_EQ(window.objectName(), "new_sorvane");
    EXPECT_EQ(window.windowTitle(), "new_sorvane");
    EXPECT_EQ(window.size(), QSize(846, 586));
    const QLayout* const outer = window.findChild<QWidget*>("centralWidget")->layout();
    ASSERT_EQ(outer->objectName(), "verticalLayout");
    EXPECT_EQ(outer->spacing(), 6);
    EXPECT_EQ(outer->contentsMargins(), QMargins(11, 11, 11, 11));
    ASSERT_EQ(outer->count(), 2);
    EXPECT_EQ(outer->itemAt(0)->widget(), view);
    const QLayout* const row = outer->itemAt(1)->layout();
    EXPECT_EQ(row->objectName(), "horizontalLayout");
    EXPECT_EQ(row->spacing(), 6);
    EXPECT_EQ(row->sizeConstraint(), QLayout::SetNoConstraint);
    QStringList order;
    for (int i = 0; i < row->count(); ++i)
        order << row->itemAt(i)->widget()->objectName();
    EXPECT_EQ(order, (QStringList{"doubleSpinBox", "playButton", "recordButton", "horizontalSlider"}));

    EXPECT_EQ(box->decimals(), 4);
    EXPECT_EQ(box->minimum(), 0.0);
    EXPECT_EQ(box->maximum(), 29.999);
    EXPECT_EQ(box->singleStep(), 0.01);
    EXPECT_EQ(box->toolTip(), "Time");
    EXPECT_EQ(playButton->toolTip(), "Play/Pause");
    EXPECT_EQ(playButton->text(), "");
    const auto* const record = window.findChild<QPushButton*>("recordButton");
    EXPECT_EQ(record->toolTip(), "Record");
    EXPECT_EQ(record->text(), "Record");
    for (const QPushButton* const button : {std::as_const(playButton), record})
        EXPECT_TRUE(!button->isCheckable() && !button->icon().pixmap(16).isNull());
    EXPECT_EQ(slider->minimum(), 0);
    EXPECT_EQ(slider->maximum(), 1);
    EXPECT_EQ(slider->pageStep(), 10);
    EXPECT_EQ(slider->singleStep(), 1);
    EXPECT_EQ(slider->orientation(), Qt::Horizontal);
    EXPECT_EQ(slider->toolTip(), "Time");
    const auto* const toolBar = window.findChild<QToolBar*>("mainToolBar");
    EXPECT_EQ(window.toolBarArea(toolBar), Qt::TopToolBarArea);
    EXPECT_TRUE(toolBar->actions().isEmpty());
}

TEST_F(FormTest, DeclaresItsSlotsInOrder) {
    const QStringList expected = {
        "on_actionScreenshot_triggered()",
        "on_recordButton_clicked()",
        "on_actionX0_1_triggered()",
        "on_actionX10_triggered()",
        "on_actionX0_5_triggered()",
        "on_actionX2_triggered()",
        "on_action1_0_triggered()",
        "on_playButton_clicked()",
        "on_actionAdd_triggered()",
        "on_horizontalSlider_valueChanged(int)",
        "on_doubleSpinBox_valueChanged(double)",
        "etxyz_toggled()",
        "etxyz_set_view()",
        "incrementTime()"};
    const QMetaObject* const meta = window.metaObject();
    QStringList declared;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        declared << QString::fromLatin1(meta->method(i).methodSignature());
    EXPECT_EQ(declared, expected);
}
} // namespace
