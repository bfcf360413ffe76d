// The list of the viewer's keys in a window of its own.
#pragma once

#include <QDialog>

namespace sorvane {
// Stands beside the viewer, which goes on; F1 and ? open and close it.
class KeyHelp : public QDialog {
public:
    explicit KeyHelp(QWidget& window);

    void toggle();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
} // namespace sorvane
