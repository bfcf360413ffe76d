// A line of text, or some, over the view.
#pragma once

#include <QLabel>

namespace sorvane {
inline constexpr int kViewMargin = 8; // pixels between the view's edge and what stands over it

// A label that lies on a widget. Grabbed frames hold only what the widget itself draws, so the label stays out of them.
class ViewLabel : public QLabel {
public:
    ViewLabel(QWidget& view, const QString& name);

protected:
    void setColour(QLatin1String colour);
    // Shows the text in lines as long as they are, wrapped only where the view is too narrow; hides when it is empty.
    void showText(const QString& text);

private:
    QLatin1String colour_;
};
} // namespace sorvane
