// The list of the viewer's keys in a window of its own.
#pragma once

#include <QDialog>

// Opens beside the viewer, which goes on; F1, ? or Escape close it.
class KeyHelp : public QDialog {
public:
    explicit KeyHelp(QWidget& window);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
