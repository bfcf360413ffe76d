// The window of a set's runs: their table, a condition, and plots that select rows.
#pragma once

#include <functional>
#include <optional>

#include <QWidget>

#include "runasking.h"
#include "runbrush.h"
#include "runtablemodel.h"
#include "runtableview.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace sorvane {
// What the window asks for.
struct RunTableSource {
    // The database of what is loaded, as RunQuery opens it. To be told of changes by loadedHaveChanged().
    std::function<Outcome<std::string>()> loaded;
    std::function<bool(const std::string& path)> isFollowed;
    // Takes the viewer to a run of the database, of which the path may be relative; "" stands for what is loaded.
    // Returns what kept it from that.
    std::function<std::optional<Problem>(const std::string& path, const QString& database)> follow;
    std::function<void()> toggleGhosts;
};

class RunTableWindow : public QWidget {
public:
    RunTableWindow(QWidget* viewer, RunTableSource source);
    ~RunTableWindow() override;

    void showLoaded();
    void showDatabase(const QString& path);
    void loadedHaveChanged();
    // Another engagement may be followed.
    void showFollowed() { model_->showFollowed(); }

    // Whether all that was asked for is on show.
    bool isSettled() const;
    RunTableModel& model() { return *model_; }
    RunTableView& table() { return *table_; }
    HistogramPlot& histogram() { return *histogram_; }
    ScatterPlot& scatter() { return *scatter_; }

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeTop();
    QWidget* makePlots();
    QComboBox* makeColumnBox(const char* name);
    void openSet();
    void listColumns();
    void ask();
    void take(Outcome<RunAnswer> answer);
    void showPlots(const std::vector<RunColumn>& columns);
    void follow(int row);
    void brush(std::optional<RunBrush> brush);
    void showMarks();
    void filterToBrush();
    void chooseAnotherDatabase();
    void tell();
    void useTheme();

    RunTableSource source_;
    RunTableModel* model_; // all of the window's children
    RunTableView* table_;
    HistogramPlot* histogram_ = nullptr;
    ScatterPlot* scatter_ = nullptr;
    QComboBox* sets_ = nullptr;
    QLineEdit* condition_ = nullptr;
    QPushButton* toCondition_ = nullptr;
    QComboBox* counted_ = nullptr;
    QComboBox* across_ = nullptr;
    QComboBox* up_ = nullptr;
    QLabel* status_ = nullptr;
    QTimer* typing_;
    QTimer* changing_;
    QString database_; // the path; empty while what is loaded is shown
    std::string name_; // of the same, for connections
    bool isStale_ = true;
    bool areColumnsNew_ = true;
    std::string current_; // the path of the current row, while there are no rows
    RunQuestion question_;
    std::size_t all_ = 0;
    std::optional<RunBrush> brush_;
    QString problem_;
    RunAsking asking_;
};
} // namespace sorvane
