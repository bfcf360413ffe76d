// The table of runs beside the viewer.
#include "windowfixture.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QMimeData>

#include "encountertrajectory.h"
#include "rundatabase.h"
#include "runlayout.h"
#include "runtablewindow.h"

using namespace sorvane;

namespace {
struct RunTableTest : WindowTest {
    RunTableWindow* runs() { return dynamic_cast<RunTableWindow*>(window.findChild<QWidget*>("runTable")); }
    RunTableView& table() { return runs()->table(); }
    QString status() { return runs()->findChild<QLabel*>("runTableStatus")->text(); }
    QLineEdit& condition() { return *runs()->findChild<QLineEdit*>("runCondition"); }
    QComboBox& box(const char* name) { return *runs()->findChild<QComboBox*>(name); }

    void settle() {
        ASSERT_NE(runs(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(runs()));
        ASSERT_TRUE(QTest::qWaitFor([this] { return runs()->isSettled(); }));
    }
    void openTable() {
        QTest::keyClick(view, Qt::Key_T);
        settle();
    }
    // Each end is another, and so is the miss: of `end` seconds, (10 − end) · 20 units along, 10 above.
    QString loadEncounter(int end) {
        QList<TestSample> samples = encounterSamples();
        samples.resize(end + 1);
        const QString path =
            writeTrajectory(folder.filePath(QString("ETXYZ.OUT.%1").arg(end, 2, 10, QChar('0'))), samples);
        window.loadEtxyzFile(path);
        return path;
    }
    // Writes rows with a miss each into a database and drops it on `onto`.
    void openDatabase(const std::vector<std::pair<QString, RunValue>>& misses) {
        const std::string path = folder.filePath("night.sqlite").toStdString();
        std::vector<RunRow> rows;
        for (const auto& [file, miss] : misses)
            rows.push_back({file.toStdString(), {}, {miss, std::int64_t{0}}});
        ASSERT_FALSE(RunDatabase::open(path, {"closest_approach_m", "decoyed"})->put(rows));
        drop(window, QString::fromStdString(path));
    }
    void drop(QWidget& onto, const QString& path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&onto, &enter);
        QDropEvent dropped({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&onto, &dropped);
        ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::overrideCursor() == nullptr; }));
        settle();
    }
    int columnOf(const char* name) {
        const auto& columns = runs()->model().columns();
        return static_cast<int>(std::ranges::find(columns, name) - columns.begin());
    }
    void clickTitle(const char* name) {
        QHeaderView& titles = *table().horizontalHeader();
        const int column = columnOf(name);
        table().scrollTo(runs()->model().index(0, column));
        QTest::mouseClick(
            titles.viewport(), Qt::LeftButton, {},
            QPoint(titles.sectionViewportPosition(column) + 20, titles.height() / 2));
        settle();
    }
    void type(const char* text) {
        condition().setFocus();
        condition().selectAll();
        QTest::keyClick(&condition(), Qt::Key_Delete);
        QTest::keyClicks(&condition(), text);
        QTest::keyClick(&condition(), Qt::Key_Return);
        settle();
    }
    // What a column's cells show.
    QStringList shown(const char* column = "path") {
        QStringList texts;
        for (int row = 0; row < runs()->model().rowCount(); ++row)
            texts << runs()->model().index(row, columnOf(column)).data().toString();
        return texts;
    }
    QString followed() {
        for (const LoadedEngagement& engagement : engagements())
            if (engagements().selected() == &engagement)
                return engagement.name();
        return {};
    }
};

TEST_F(RunTableTest, ShowsWhatIsLoadedWithEveryMeasureAndFollowsARow) {
    showWindow();
    loadEncounter(10);
    loadEncounter(3);
    openTable();
    EXPECT_EQ(shown(), (QStringList{"ETXYZ.OUT.03", "ETXYZ.OUT.10"})) << "without the folder that they share";
    EXPECT_EQ(shown("closest_approach_units"), (QStringList{"41.23", "10.00"}));
    EXPECT_EQ(
        runs()->model().headerData(columnOf("closest_approach_units"), Qt::Horizontal), "closest approach\nunits");
    EXPECT_EQ(shown("end_s"), (QStringList{"3.000", "10.000"}));
    EXPECT_EQ(status(), "2 runs");
    EXPECT_TRUE(table().isColumnHidden(columnOf("terrain_topography")));
    // Return follows the current row; the row of what is followed is bold.
    table().setCurrentIndex(runs()->model().index(0, 0));
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(followed(), "ETXYZ.OUT.03");
    const auto isBold = [this](int row) {
        return runs()->model().index(row, 0).data(Qt::FontRole).value<QFont>().bold();
    };
    EXPECT_TRUE(isBold(0));
    EXPECT_FALSE(isBold(1));
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(followed(), "ETXYZ.OUT.10");
    // What comes, goes, or is told in another unit is in the table.
    loadEncounter(5);
    QTest::keyClick(&table(), Qt::Key_U);
    settle();
    EXPECT_EQ(shown("closest_approach_ft").size(), 3);
    engagements().clear();
    settle();
    EXPECT_EQ(status(), "0 runs");
    // The viewer's keys work here; T closes it.
    QTest::keyClick(&table(), Qt::Key_T);
    EXPECT_FALSE(runs()->isVisible());
}

TEST_F(RunTableTest, SortsByTitleAndChoosesByCondition) {
    showWindow();
    openDatabase({{"c", 3.0}, {"a", 12.25}, {"b", RunValue()}, {"d", 4.0}});
    EXPECT_EQ(runs()->windowTitle(), "Runs: night.sqlite");
    EXPECT_EQ(shown(), (QStringList{"a", "b", "c", "d"}));
    clickTitle("closest_approach_m");
    EXPECT_EQ(shown("closest_approach_m"), (QStringList{"3.00", "4.00", "12.25", ""}));
    clickTitle("closest_approach_m");
    EXPECT_EQ(shown("closest_approach_m"), (QStringList{"12.25", "4.00", "3.00", ""})) << "nothing is always last";
    type("miss_distance < 5");
    EXPECT_EQ(shown(), (QStringList{"d", "c"}));
    EXPECT_EQ(status(), "2 of 4 runs");
    type("miss < 5");
    EXPECT_EQ(status(), "no such column: miss");
    EXPECT_EQ(shown(), (QStringList{"d", "c"})) << "what was chosen stays";
    type("miss_distance > 100");
    EXPECT_EQ(status(), "0 of 4 runs");
    type("");
    EXPECT_EQ(status(), "4 runs");
}

// Rows are read in pages.
TEST_F(RunTableTest, ALongTableHasItsOwnValuesInEachRow) {
    showWindow();
    std::vector<std::pair<QString, RunValue>> misses;
    QStringList texts;
    for (int number = 100; number < 300; ++number) {
        misses.emplace_back(QString::number(number), double(number));
        texts << QString::number(number) + ".00";
    }
    openDatabase(misses);
    EXPECT_EQ(shown("closest_approach_m"), texts);
}

TEST_F(RunTableTest, BrushingMarksRowsAndBecomesACondition) {
    showWindow();
    std::vector<std::pair<QString, RunValue>> misses;
    for (int i = 0; i < 200; ++i)
        misses.emplace_back(QString("run%1").arg(i, 3, 10, QChar('0')), 0.25 + i * 0.5);
    openDatabase(misses);
    HistogramPlot& histogram = runs()->histogram();
    EXPECT_EQ(histogram.xAxis->label(), "closest approach (m)");
    const auto at = [&](double value) {
        return QPoint(static_cast<int>(histogram.xAxis->coordToPixel(value)), histogram.axisRect()->center().y());
    };
    const auto drag = [&](double from, double to) {
        QTest::mousePress(&histogram, Qt::LeftButton, {}, at(from));
        QMouseEvent move(
            QEvent::MouseMove, at(to), histogram.mapToGlobal(at(to)), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&histogram, &move);
        QTest::mouseRelease(&histogram, Qt::LeftButton, {}, at(to));
    };
    drag(70.0, 80.0);
    const auto marked = std::ranges::count(runs()->model().marks(), std::uint8_t{1});
    EXPECT_NEAR(static_cast<double>(marked), 20.0, 2.0);
    EXPECT_EQ(status(), QString("200 runs, %1 brushed").arg(marked));
    const auto first =
        static_cast<int>(std::ranges::find(runs()->model().marks(), std::uint8_t{1}) - runs()->model().marks().begin());
    EXPECT_TRUE(runs()->model().index(150, 0).data(Qt::BackgroundRole).isValid());
    EXPECT_FALSE(runs()->model().index(10, 0).data(Qt::BackgroundRole).isValid());
    EXPECT_TRUE(table().viewport()->rect().contains(table().visualRect(runs()->model().index(first, 0)).center()))
        << "they are scrolled into view";
    // It holds when the rows are in another order.
    clickTitle("closest_approach_m");
    clickTitle("closest_approach_m");
    EXPECT_EQ(std::ranges::count(runs()->model().marks(), std::uint8_t{1}), marked);
    EXPECT_FALSE(runs()->model().index(150, 0).data(Qt::BackgroundRole).isValid());
    // Escape ends it, and so does making it a condition.
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_EQ(status(), "200 runs");
    drag(70.0, 80.0);
    runs()->findChild<QPushButton*>("runOnlyBrushed")->click();
    settle();
    EXPECT_EQ(status(), QString("%1 of 200 runs").arg(marked));
    EXPECT_TRUE(condition().text().startsWith("closest_approach_m BETWEEN "));
}

TEST_F(RunTableTest, ARowOfADatabaseIsLoadedWhenItIsFollowed) {
    showWindow();
    writeTrajectory(folder.filePath("ETXYZ.OUT.late"), encounterSamples());
    openDatabase({{"ETXYZ.OUT.late", 10.0}, {folder.filePath("ETXYZ.OUT.gone"), 1.0}});
    EXPECT_TRUE(engagements().isEmpty());
    const int late = static_cast<int>(shown().indexOf("ETXYZ.OUT.late"));
    table().setCurrentIndex(runs()->model().index(late, 0));
    QTest::keyClick(&table(), Qt::Key_Return);
    ASSERT_EQ(engagements().size(), 1U) << "beside the database, to which its path is relative";
    EXPECT_EQ(followed(), "ETXYZ.OUT.late");
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(engagements().size(), 1U) << "it is there already";
    table().setCurrentIndex(runs()->model().index(1 - late, 0));
    QTest::keyClick(&table(), Qt::Key_Return);
    EXPECT_EQ(status(), folder.filePath("ETXYZ.OUT.gone") + ": there is no such file");
    EXPECT_EQ(followed(), "ETXYZ.OUT.late");
    // Back to what is loaded, by the box.
    box("runSets").setCurrentIndex(0);
    emit box("runSets").activated(0);
    settle();
    EXPECT_EQ(status(), "1 run");
}

TEST_F(RunTableTest, SaysWhatIsNoDatabaseAndShowsAnEmptyOne) {
    showWindow();
    openDatabase({});
    EXPECT_EQ(status(), "0 runs");
    QTest::keyClick(&table(), Qt::Key_Return); // of no row
    QFile text(folder.filePath("text.sqlite"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(2000, 'x'));
    text.close();
    drop(*runs(), text.fileName());
    EXPECT_EQ(status(), text.fileName() + ": file is not a database");
    EXPECT_EQ(runs()->model().columnCount(), 0);
    QTest::keyClick(&table(), Qt::Key_T);
    openTable();
    EXPECT_EQ(status(), text.fileName() + ": file is not a database");
}
} // namespace
