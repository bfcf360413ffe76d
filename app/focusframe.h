// Shows that the view has the keyboard.
#pragma once

#include <QWidget>

namespace sorvane {
// A frame over the edge of a widget, for as long as the widget has the focus by the keyboard. Who clicks knows where.
class FocusFrame : public QWidget {
public:
    explicit FocusFrame(QWidget& framed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget& framed_;
};
} // namespace sorvane
