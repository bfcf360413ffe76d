// Keeps the view at sizes that a movie can have.
#pragma once

#include <QMargins>
#include <QObject>
#include <QSize>

class QMainWindow;

namespace sorvane {
// The sides of a movie are multiples of 8. When the window is first shown, its control row grows by the few pixels that
// leave the view such a height, and the window tells the window manager to resize it in steps of 8. A window that fills
// the screen has no choice of its size: its margins grow by what the view has to give up.
class ViewSizeSteps : public QObject {
public:
    // `controlRow` is any widget of the row below the view whose height makes the row's.
    ViewSizeSteps(QMainWindow& window, QWidget& view, QWidget& controlRow);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void arrange();
    void fitMargins();

    QMainWindow& window_;
    QWidget& view_;
    QWidget& controlRow_;
    const QObject* centre_ = nullptr; // of the window, once that has been shown; only compared with
    QMargins margins_;                // of the form
    QSize aroundView_;                // what they, the row and the space between take
};
} // namespace sorvane
