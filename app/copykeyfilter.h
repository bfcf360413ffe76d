// Keeps the time box from taking Ctrl+C, which closes the window.
#pragma once

#include <QObject>

class QAbstractSpinBox;

namespace sorvane {
// A focused box claims Ctrl+C as its line edit's "copy" before the window's shortcuts see it. The filter turns that
// claim down.
class CopyKeyFilter : public QObject {
public:
    // For as long as the box lives.
    static void installOn(QAbstractSpinBox& box);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using QObject::QObject;
};
} // namespace sorvane
