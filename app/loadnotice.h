// What the view says about the loading of files.
#pragma once

#include <functional>

#include <QStringList>

#include "viewlabel.h"

class QTimer;

namespace sorvane {
// A label below the notices of the view. Its lines stay until they are clicked away or
// a minute has passed since the last one; how far a loading has come shows above them for as long as it lasts.
class LoadNotice : public ViewLabel {
public:
    explicit LoadNotice(QWidget& view);

    // One line for each file or reason; those that there is no room for are counted.
    void setLines(const QStringList& lines);
    // What is said after them, or nothing.
    void setLast(const QString& line);
    void setProgress(const QString& text);
    // Called when the lines have been clicked away, or have passed.
    void onCleared(std::function<void()> act) { cleared_ = std::move(act); }

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void clearLines();
    void arrange();

    QTimer* passing_;
    QString progress_;
    QStringList lines_;
    QString last_;
    std::function<void()> cleared_;
};
} // namespace sorvane
