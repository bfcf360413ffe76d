// The list of the viewer's keys and of what the mouse does, in a window of its own.
#pragma once

#include <QDialog>

namespace sorvane {
// Stands beside the viewer, which keeps the keyboard: what is pressed here goes there. F1 and ? open and close it,
// Escape closes it. The next session has it where and as large as it was last.
class KeyHelp : public QDialog {
public:
    explicit KeyHelp(QWidget& window);
    ~KeyHelp() override;

    void toggle();

protected:
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
} // namespace sorvane
