// A line of text, or some, over the view.
#pragma once

#include <QLabel>

namespace sorvane {
// Pixels between the view's edge and what stands over it: on all sides, and at the top where notices of a line are.
inline constexpr int kViewMargin = 8;
inline constexpr int kBelowNotice = 44;

// A label that lies on a widget. Grabbed frames hold only what the widget itself draws, so the label stays out of them.
class ViewLabel : public QLabel {
public:
    ViewLabel(QWidget& view, const QString& name);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void setColour(QLatin1String colour);
    // Shows the text in lines as long as they are, wrapped only where the view is too narrow; hides when it is empty.
    void showText(const QString& text);
    // Takes its size and place anew, as after the view has got another size.
    virtual void layOut();

private:
    QLatin1String colour_;
};
} // namespace sorvane
