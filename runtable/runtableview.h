// The table of runs on the screen, and its keys.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QTableView>

namespace sorvane {
// Takes the keys that move through a table, and those below; all others are left to the window.
class RunTableView : public QTableView {
public:
    struct Actions {
        std::function<void(int row)> follow; // Return, or a double click
        std::function<void()> toggleGhosts;  // Space
        std::function<void()> endBrushing;   // Escape
    };

    RunTableView(QWidget* parent, Actions actions);

    // What a user looks for first stands first: the path and its fields, then the measures. Of the header only what
    // differs is shown. To be called when the columns are others.
    void arrange(const std::vector<std::string>& columns);
    // As wide as their titles and what is on show need, within limits.
    void fitColumns();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Lets the user choose which columns are shown.
    void openColumnMenu(const QPoint& place);

    Actions actions_;
};
} // namespace sorvane
