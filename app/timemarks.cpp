// Marks on the slider of the time, and a slider that goes where it is clicked.
#include "timemarks.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QHelpEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QSlider>
#include <QStringList>
#include <QStyleOptionSlider>
#include <QToolTip>

#include "engagementfacts.h"
#include "measuretext.h"
#include "playbackclock.h"

namespace sorvane {
namespace {
constexpr int kReach = 4;   // pixels from a mark within which its name shows
constexpr int kBracket = 4; // pixels that a loop's end reaches into the loop

class ClickedPlaceStyle : public QProxyStyle {
public:
    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* result) const override {
        if (hint == SH_Slider_AbsoluteSetButtons)
            return Qt::LeftButton;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
};
} // namespace

std::vector<TimeMark> timeMarks(const EngagementFacts* facts, const Transport& transport, const ClockRange& range) {
    std::vector<TimeMark> marks;
    const auto add = [&marks](double time, TimeMark::Kind kind, const QString& name) {
        marks.push_back({time, kind, QStringLiteral("%1: %2").arg(name, timeText(time))});
    };
    if (facts != nullptr)
        for (const EngagementEvent& event : facts->events)
            add(event.time, TimeMark::Kind::Event, event.name);
    const double out = transport.outPoint(range);
    if (transport.isLooping() || transport.inPoint() > 0.0)
        add(transport.inPoint(), TimeMark::Kind::LoopStart, QStringLiteral("In point"));
    if (transport.isLooping() || out < range.end)
        add(out, TimeMark::Kind::LoopEnd, QStringLiteral("Out point"));
    return marks;
}

TimeMarks::TimeMarks(QSlider& slider, Source source) : QWidget(&slider), slider_(slider), source_(std::move(source)) {
    setObjectName(QStringLiteral("timeMarks"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* const style = new ClickedPlaceStyle;
    style->setParent(&slider_);
    slider_.setStyle(style);
    slider_.installEventFilter(this);
    connect(&slider_, &QSlider::rangeChanged, this, &TimeMarks::refresh);
    setGeometry(slider_.rect());
}

void TimeMarks::refresh() {
    marks_ = source_();
    update();
}

int TimeMarks::place(double time) const {
    QStyleOptionSlider option;
    option.initFrom(&slider_);
    option.orientation = slider_.orientation();
    option.minimum = slider_.minimum();
    option.maximum = slider_.maximum();
    option.sliderPosition = std::clamp(sliderValue(time), option.minimum, option.maximum);
    option.sliderValue = option.sliderPosition;
    return slider_.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider_).center().x();
}

bool TimeMarks::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        setGeometry(slider_.rect());
    if (event->type() != QEvent::ToolTip)
        return QWidget::eventFilter(watched, event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    QStringList names;
    for (const TimeMark& mark : marks_)
        if (std::abs(place(mark.time) - help.pos().x()) <= kReach)
            names << mark.name;
    if (names.isEmpty())
        return false; // the slider's own then
    QToolTip::showText(help.globalPos(), names.join(u'\n'), &slider_);
    return true;
}

void TimeMarks::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    for (const TimeMark& mark : marks_) {
        const int x = place(mark.time);
        if (mark.kind == TimeMark::Kind::Event) {
            painter.setPen(palette().color(QPalette::WindowText));
            painter.drawLine(x, 0, x, height() / 3 - 1);
            continue;
        }
        const int inwards = mark.kind == TimeMark::Kind::LoopStart ? kBracket : -kBracket;
        painter.setPen(palette().color(QPalette::Link));
        painter.drawLine(x, 0, x, height() - 1);
        painter.drawLine(x, 0, x + inwards, 0);
        painter.drawLine(x, height() - 1, x + inwards, height() - 1);
    }
}
} // namespace sorvane
