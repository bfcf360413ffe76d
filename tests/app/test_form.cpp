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

TEST_F(FormTest, HasItsObjectsEachOnceInItsPlaceAndItsActionsInOrder) {
    QStringList actionsInOrder;
    for (const auto& [name, type, parent, properties] : Rows<QString, const char*, QString, QString>{
             {"centralWidget", "QWidget", "new_sorvane", ""},
             {"verticalLayout", "QVBoxLayout", "centralWidget", "spacing=6"},
             {"horizontalLayout", "QHBoxLayout", "verticalLayout", "spacing=6"},
             {"glWidget", "AircraftWidget", "centralWidget", ""},
             {"doubleSpinBox", "QDoubleSpinBox", "centralWidget",
              "toolTip=Time;decimals=4;minimum=0;maximum=29.999;singleStep=0.01"},
             {"playButton", "QPushButton", "centralWidget", "toolTip=Play/Pause;text=;checkable=false"},
             {"recordButton", "QPushButton", "centralWidget", "toolTip=Record;text=Record;checkable=false"},
             {"horizontalSlider", "QSlider", "centralWidget",
              "toolTip=Time;minimum=0;maximum=1;pageStep=10;singleStep=1"},
             {"menuBar", "QMenuBar", "new_sorvane", ""},
             {"menuFile", "QMenu", "menuBar", "title=File"},
             {"menuETXYZ_Files", "QMenu", "menuBar", "title=ETXYZ Files"},
             {"menuPlayback_Speed", "QMenu", "menuBar", "title=Playback Speed"},
             {"menuView", "QMenu", "menuBar", "title=View"},
             {"mainToolBar", "QToolBar", "new_sorvane", ""},
             {"actionExit", "QAction", "new_sorvane", "text=Exit;checkable=false;shortcut=Ctrl+C"},
             {"actionThreat", "QAction", "new_sorvane", "text=Threat;checkable=true;checked=true"},
             {"actionThreat_Gyro", "QAction", "new_sorvane", "text=Threat Gyro;checkable=true;checked=false"},
             {"actionTarget", "QAction", "new_sorvane", "text=Target;checkable=true;checked=false"},
             {"actionAdd", "QAction", "new_sorvane", "text=Add;checkable=false"},
             {"actionClear_All", "QAction", "new_sorvane", "text=Clear All;checkable=false"},
             {"action1_0", "QAction", "new_sorvane", "text=1.0;checkable=false"},
             {"actionX2", "QAction", "new_sorvane", "text=x2;checkable=false"},
             {"actionX0_5", "QAction", "new_sorvane", "text=x0.5;checkable=false"},
             {"actionX10", "QAction", "new_sorvane", "text=x10;checkable=false"},
             {"actionX0_1", "QAction", "new_sorvane", "text=x0.1;checkable=false"},
             {"actionScreenshot", "QAction", "new_sorvane", "text=Screenshot;checkable=false"},
             {"actionShow_Drop_Lines", "QAction", "new_sorvane", "text=Show Drop Lines;checkable=true;checked=true"},
             {"actionShow_History_Lines", "QAction", "new_sorvane",
              "text=Show History Lines;checkable=true;checked=true"},
             {"actionShow_Terrain", "QAction", "new_sorvane", "text=Show Terrain;checkable=true;checked=false"},
             {"actionShow_Grid", "QAction", "new_sorvane", "text=Show Grid;checkable=true;checked=true"}}) {
        SCOPED_TRACE(name.toStdString());
        const QList<QObject*> found = window.findChildren<QObject*>(name);
        ASSERT_EQ(found.size(), 1);
        EXPECT_STREQ(found.first()->metaObject()->className(), type);
        EXPECT_EQ(found.first()->parent()->objectName(), parent);
        for (const QString& property : properties.split(';', Qt::SkipEmptyParts))
            EXPECT_EQ(
                found.first()->property(property.section('=', 0, 0).toUtf8()).toString(), property.section('=', 1));
        if (const auto* const action = qobject_cast<const QAction*>(found.first())) {
            EXPECT_TRUE(action->toolTip() == action->text() && action->isEnabled() && action->isVisible());
            EXPECT_EQ(action->shortcut().isEmpty(), name != "actionExit");
            actionsInOrder << name;
        }
    }
    QStringList order;
    for (const QObject* const child : window.children())
        if (qobject_cast<const QAction*>(child) != nullptr && !child->objectName().isEmpty())
            order << child->objectName();
    EXPECT_EQ(order, actionsInOrder);
}

TEST_F(FormTest, HasItsMenusInOrder) {
    const auto* const bar = window.findChild<QMenuBar*>("menuBar");
    EXPECT_EQ(bar->geometry(), QRect(0, 0, 846, 23));
    EXPECT_EQ(namesOf(bar->actions()), (QStringList{"menuFile", "menuETXYZ_Files", "menuPlayback_Speed", "menuView"}));
    for (const auto& [name, actions] : Rows<const char*, const char*>{
             {"menuFile", "actionScreenshot actionExit"},
             {"menuETXYZ_Files", "actionAdd"},
             {"menuPlayback_Speed", "action1_0 actionX10 actionX2 actionX0_5 actionX0_1"},
             {"menuView", "actionShow_Drop_Lines actionShow_History_Lines actionShow_Terrain actionShow_Grid"}})
        EXPECT_EQ(namesOf(window.findChild<QMenu*>(name)->actions()).join(' '), actions);
}

TEST_F(FormTest, HasItsControlsInOrder) {
    EXPECT_EQ(window.objectName(), "new_sorvane");
    EXPECT_EQ(window.windowTitle(), "new_sorvane");
    EXPECT_EQ(window.size(), QSize(846, 586));
    const QLayout* const outer = window.findChild<QWidget*>("centralWidget")->layout();
    ASSERT_EQ(outer->objectName(), "verticalLayout");
    EXPECT_EQ(outer->contentsMargins(), QMargins(11, 11, 11, 11));
    ASSERT_EQ(outer->count(), 2);
    EXPECT_EQ(outer->itemAt(0)->widget(), view);
    const QLayout* const row = outer->itemAt(1)->layout();
    EXPECT_EQ(row->objectName(), "horizontalLayout");
    EXPECT_EQ(row->sizeConstraint(), QLayout::SetNoConstraint);
    QStringList order;
    for (int i = 0; i < row->count(); ++i)
        order << row->itemAt(i)->widget()->objectName();
    EXPECT_EQ(order, (QStringList{"doubleSpinBox", "playButton", "recordButton", "horizontalSlider"}));

    for (const char* const button : {"playButton", "recordButton"})
        EXPECT_FALSE(window.findChild<QPushButton*>(button)->icon().pixmap(16).isNull());
    EXPECT_EQ(slider->orientation(), Qt::Horizontal);
    const auto* const toolBar = window.findChild<QToolBar*>("mainToolBar");
    EXPECT_EQ(window.toolBarArea(toolBar), Qt::TopToolBarArea);
    EXPECT_TRUE(toolBar->actions().isEmpty());
}

TEST_F(FormTest, DeclaresItsSlotsInOrder) {
    const QMetaObject* const meta = window.metaObject();
    QStringList declared;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        declared << QString::fromLatin1(meta->method(i).methodSignature());
    EXPECT_EQ(
        declared.join(' '),
        "on_actionScreenshot_triggered() on_recordButton_clicked() on_actionX0_1_triggered() on_actionX10_triggered() "
        "on_actionX0_5_triggered() on_actionX2_triggered() on_action1_0_triggered() on_playButton_clicked() "
        "on_actionAdd_triggered() on_horizontalSlider_valueChanged(int) on_doubleSpinBox_valueChanged(double) "
        "etxyz_toggled() etxyz_set_view() incrementTime()");
}
} // namespace
