// Marks on the slider of the time, and a slider that goes where it is clicked.
#pragma once

#include <functional>
#include <vector>

#include <QString>
#include <QWidget>

class QSlider;

namespace sorvane {
struct ClockRange;
struct EngagementFacts;
class Transport;

struct TimeMark {
    enum class Kind { Event, LoopStart, LoopEnd };

    double time = 0.0; // seconds
    Kind kind = Kind::Event;
    QString name; // for the tool tip
};

// The events of an engagement, null for none, and the ends of the loop where there is one or where they were set.
std::vector<TimeMark> timeMarks(const EngagementFacts* facts, const Transport& transport, const ClockRange& range);

// Lies over the slider, which keeps the mouse, and paints a line at each mark. A click on the slider's groove goes
// there; what a page step is stays.
class TimeMarks : public QWidget {
public:
    using Source = std::function<std::vector<TimeMark>()>;

    // `source` gives the marks as they are now.
    TimeMarks(QSlider& slider, Source source);

    // The marks have changed.
    void refresh();

    // The middle of a time's place, in pixels from the slider's left edge.
    int place(double time) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QSlider& slider_;
    Source source_;
    std::vector<TimeMark> marks_;
};
} // namespace sorvane
