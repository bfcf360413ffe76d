// What moves over a plot: now, the loop, two cursors and what lies under the mouse.
#include "plotoverlay.h"

#include <QStringList>

#include "curvevalue.h"
#include "measuretext.h"
#include "stripplot.h"

namespace sorvane {
namespace {
constexpr QLatin1String kLayer("sorvane overlay");
constexpr std::size_t kMostValues = 8; // of curves, named in a strip

// "1917.1 units", "5.365°".
QString numberText(double value, const QString& unit) {
    const QString number = QString::number(value, 'g', 5);
    return unit.isEmpty() || unit.startsWith(u'°') ? number + unit : number + u' ' + unit;
}

void placeLine(QCPItemLine& line, std::optional<double> time) {
    line.setVisible(time.has_value());
    line.start->setCoords(time.value_or(0.0), 0.0);
    line.end->setCoords(time.value_or(0.0), 1.0);
}

QString listed(const PlotStrip& strip, const std::function<std::optional<double>(const PlotCurve&)>& valueIn) {
    QStringList texts;
    for (const PlotCurve& curve : strip.curves) {
        const std::optional<double> value = valueIn(curve);
        if (!value)
            continue;
        if (static_cast<std::size_t>(texts.size()) == kMostValues) {
            texts << QStringLiteral("…");
            break;
        }
        const QString number = numberText(*value, strip.unit);
        texts << (strip.curves.size() == 1 ? number : QStringLiteral("%1 %2").arg(curve.name, number));
    }
    return texts.join(QStringLiteral(", "));
}
} // namespace

PlotOverlay::PlotOverlay(StripPlot& plot) : plot_(plot) {
    plot_.addLayer(kLayer);
    plot_.layer(kLayer)->setMode(QCPLayer::lmBuffered);
    plot_.onStripsMade([this] { makeAll(); });
    makeAll();
}

PlotOverlay::~PlotOverlay() {
    plot_.onStripsMade({});
}

void PlotOverlay::setNow(std::optional<double> time) {
    if (now_ == time)
        return;
    now_ = time;
    placeNow();
    draw();
}

void PlotOverlay::setLoop(std::optional<TimeRange> range) {
    if (loop_ == range)
        return;
    loop_ = range;
    placeLoop();
    draw();
}

void PlotOverlay::setPointer(std::optional<double> time) {
    pointer_ = time;
    placePointer();
    writeValues();
    draw();
}

void PlotOverlay::setCursor(Cursor cursor, std::optional<double> time) {
    cursors_[cursor] = time;
    placeCursors();
    writeValues();
    draw();
}

QString PlotOverlay::valuesAt(std::size_t strip, double time) const {
    return listed(plot_.document().strips[strip], [time](const PlotCurve& curve) { return valueOf(curve, time); });
}

QString PlotOverlay::differences(std::size_t strip) const {
    if (!cursors_[A] || !cursors_[B])
        return {};
    return listed(plot_.document().strips[strip], [this](const PlotCurve& curve) -> std::optional<double> {
        const std::optional<double> atA = valueOf(curve, *cursors_[A]);
        const std::optional<double> atB = valueOf(curve, *cursors_[B]);
        return atA && atB ? std::optional(*atB - *atA) : std::nullopt;
    });
}

QCPItemLine* PlotOverlay::makeLine(std::size_t strip) {
    auto* const line = new QCPItemLine(&plot_);
    line->setLayer(kLayer);
    line->setSelectable(false);
    plot_.attach(*line, *line->start, strip);
    plot_.attach(*line, *line->end, strip);
    return line;
}

QCPItemText* PlotOverlay::makeText(std::size_t strip) {
    auto* const text = new QCPItemText(&plot_);
    text->setLayer(kLayer);
    text->setSelectable(false);
    text->setFont(plot_.textFont(0.85));
    text->setColor(plot_.theme().text);
    QColor behind = plot_.theme().background;
    behind.setAlpha(215);
    text->setBrush(behind);
    text->setPadding(QMargins(3, 1, 3, 1));
    plot_.attach(*text, *text->position, strip);
    return text;
}

PlotOverlay::StripItems PlotOverlay::makeItems(std::size_t strip) {
    StripItems items;
    items.loop = new QCPItemRect(&plot_);
    items.loop->setLayer(kLayer);
    items.loop->setSelectable(false);
    items.loop->setPen(Qt::NoPen);
    items.loop->setBrush(plot_.theme().loop);
    plot_.attach(*items.loop, *items.loop->topLeft, strip);
    plot_.attach(*items.loop, *items.loop->bottomRight, strip);
    items.now = makeLine(strip);
    items.now->setPen(QPen(plot_.theme().now, 1.5));
    items.pointer = makeLine(strip);
    items.pointer->setPen(QPen(plot_.theme().mark, 1.0));
    for (const Cursor cursor : {A, B}) {
        items.cursors[cursor] = makeLine(strip);
        items.cursors[cursor]->setPen(QPen(plot_.theme().cursor, 1.2));
        items.cursorNames[cursor] = makeText(strip);
        items.cursorNames[cursor]->setText(cursor == A ? QStringLiteral("A") : QStringLiteral("B"));
        items.cursorNames[cursor]->setColor(plot_.theme().cursor);
        items.cursorNames[cursor]->setPositionAlignment(Qt::AlignHCenter | Qt::AlignTop);
    }
    items.values = makeText(strip);
    items.values->position->setTypeX(QCPItemPosition::ptAxisRectRatio);
    items.values->position->setCoords(0.0, 0.0);
    items.values->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
    return items;
}

void PlotOverlay::makeAll() {
    items_.clear();
    for (std::size_t strip = 0; strip < plot_.stripCount(); ++strip)
        items_.push_back(makeItems(strip));
    placeNow();
    placeLoop();
    placePointer();
    placeCursors();
    writeValues();
    draw();
}

void PlotOverlay::placeNow() {
    for (const StripItems& items : items_)
        placeLine(*items.now, now_);
}

void PlotOverlay::placeLoop() {
    for (const StripItems& items : items_) {
        items.loop->setVisible(loop_.has_value());
        if (!loop_)
            continue;
        items.loop->topLeft->setCoords(loop_->begin, 0.0);
        items.loop->bottomRight->setCoords(loop_->end, 1.0);
    }
}

void PlotOverlay::placePointer() {
    for (const StripItems& items : items_)
        placeLine(*items.pointer, pointer_);
}

void PlotOverlay::placeCursors() {
    for (const StripItems& items : items_)
        for (const Cursor cursor : {A, B}) {
            placeLine(*items.cursors[cursor], cursors_[cursor]);
            items.cursorNames[cursor]->setVisible(&items == &items_.front() && cursors_[cursor]);
            items.cursorNames[cursor]->position->setCoords(cursors_[cursor].value_or(0.0), 0.0);
        }
}

// The strip's part of what the pointer or the cursors say.
QString PlotOverlay::textOf(std::size_t strip) const {
    if (pointer_) {
        const QString values = valuesAt(strip, *pointer_);
        const QString time = strip == 0 ? timeText(*pointer_) + QStringLiteral(": ") : QString();
        return values.isEmpty() ? QString() : time + values;
    }
    const QString values = differences(strip);
    if (values.isEmpty())
        return {};
    const QString seconds = strip == 0 ? timeText(*cursors_[B] - *cursors_[A]) + QStringLiteral(": ") : QString();
    return QStringLiteral("B − A: %1%2").arg(seconds, values);
}

void PlotOverlay::writeValues() {
    for (std::size_t strip = 0; strip < items_.size(); ++strip) {
        const QString text = textOf(strip);
        items_[strip].values->setVisible(!text.isEmpty());
        items_[strip].values->setText(text);
    }
}

void PlotOverlay::draw() {
    plot_.layer(kLayer)->replot();
}
} // namespace sorvane
