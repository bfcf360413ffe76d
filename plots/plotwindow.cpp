// The window of curves over time beside the viewer.
#include "plotwindow.h"

#include <algorithm>

#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QSaveFile>
#include <QShortcut>
#include <QVBoxLayout>

#include "plotfile.h"
#include "plotmouse.h"
#include "stripplot.h"

namespace sorvane {
PlotWindow::PlotWindow(QWidget* viewer, PlotSource source)
    : QWidget(viewer, Qt::Window), source_(std::move(source)), plot_(new StripPlot(this)), overlay_(*plot_) {
    setObjectName(QStringLiteral("plotWindow"));
    setWindowTitle(QStringLiteral("Plots"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);
    mouse_ = std::make_unique<PlotMouse>(
        *plot_, overlay_,
        PlotMouse::Actions{
            [this](double time) { source_.goTo(time + zero_); },
            [this](std::size_t from, std::size_t to) { moveStrip(from, to); },
            [this](const QPoint& place, std::optional<std::size_t> strip) {
                QMenu menu(this);
                fillMenu(menu, strip);
                menu.exec(place);
            }});
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this, [this] { saveAs(); });
    useTheme();
}

PlotWindow::~PlotWindow() = default;

void PlotWindow::refresh() {
    isStale_ = true;
    if (!isVisible())
        return;
    isStale_ = false;
    std::vector<PlottedEngagement> plotted;
    const std::optional<std::uint32_t> followed = source_.followed();
    const std::vector<PlotCandidate> candidates = source_.candidates();
    if (followed)
        plotted.push_back(source_.engagement(*followed));
    std::erase_if(overlaid_, [&](std::uint32_t number) {
        return std::ranges::find(candidates, number, &PlotCandidate::number) == candidates.end();
    });
    for (const std::uint32_t number : overlaid_)
        if (number != followed)
            plotted.push_back(source_.engagement(number));
    zero_ = plotted.empty() ? 0.0 : alignedTime(*plotted.front().measured, alignment_);
    const TimeRange before = plot_->times();
    const TimeRange allBefore = plot_->document().times;
    plot_->setDocument(plotOf(plotted, measures_, alignment_));
    const TimeRange& all = plot_->document().times;
    if (all.begin == allBefore.begin && all.end == allBefore.end)
        plot_->setTimes(before); // it was zoomed, perhaps
    setWindowTitle(plotted.empty() ? QStringLiteral("Plots") : QStringLiteral("Plots: %1").arg(plotted.front().name));
    placeOverlay();
}

void PlotWindow::setNow(double time) {
    now_ = time;
    if (isVisible() && !isStale_)
        overlay_.setNow(now_ - zero_);
}

void PlotWindow::setLoop(std::optional<TimeRange> range) {
    loop_ = range;
    if (isVisible() && !isStale_)
        placeOverlay();
}

void PlotWindow::placeOverlay() {
    overlay_.setNow(now_ - zero_);
    overlay_.setLoop(loop_ ? std::optional(TimeRange{loop_->begin - zero_, loop_->end - zero_}) : std::nullopt);
}

void PlotWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (isStale_)
        refresh();
}

void PlotWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        useTheme();
}

void PlotWindow::useTheme() {
    const bool isDark = isDark_.value_or(palette().color(QPalette::Window).lightness() < 128);
    const PlotTheme& theme = isDark ? darkPlotTheme() : lightPlotTheme();
    if (theme.background != plot_->theme().background)
        plot_->setTheme(theme);
}

void PlotWindow::setMeasures(std::vector<const Measure*> measures) {
    measures_ = std::move(measures);
    refresh();
}

void PlotWindow::moveStrip(std::size_t from, std::size_t to) {
    std::vector<const Measure*> measures = measures_;
    const Measure* const moved = measures[from];
    measures.erase(measures.begin() + static_cast<std::ptrdiff_t>(from));
    measures.insert(measures.begin() + static_cast<std::ptrdiff_t>(to), moved);
    setMeasures(std::move(measures));
}

void PlotWindow::fillMenu(QMenu& menu, std::optional<std::size_t> strip) {
    addMeasureMenu(*menu.addMenu(QStringLiteral("Add")));
    if (strip && *strip < measures_.size()) {
        const std::size_t number = *strip;
        const QString name = QString::fromLatin1(measures_[number]->name);
        QAction* const up = menu.addAction(
            QStringLiteral("Move %1 up").arg(name), this, [this, number] { moveStrip(number, number - 1); });
        up->setEnabled(number > 0);
        QAction* const down = menu.addAction(
            QStringLiteral("Move %1 down").arg(name), this, [this, number] { moveStrip(number, number + 1); });
        down->setEnabled(number + 1 < measures_.size());
        menu.addAction(QStringLiteral("Remove %1").arg(name), this, [this, number] {
            std::vector<const Measure*> measures = measures_;
            measures.erase(measures.begin() + static_cast<std::ptrdiff_t>(number));
            setMeasures(std::move(measures));
        });
    }
    menu.addAction(QStringLiteral("Usual measures"), this, [this] { setMeasures(usualPlotMeasures()); });
    menu.addSeparator();
    addOverlayMenu(*menu.addMenu(QStringLiteral("Overlay")));
    addAlignmentMenu(*menu.addMenu(QStringLiteral("Time 0 is")));
    menu.addSeparator();
    menu.addAction(QStringLiteral("All times"), this, [this] { plot_->setTimes(plot_->document().times); });
    menu.addAction(QStringLiteral("Remove cursors"), this, [this] {
        overlay_.setCursor(PlotOverlay::A, std::nullopt);
        overlay_.setCursor(PlotOverlay::B, std::nullopt);
    });
    QAction* const dark = menu.addAction(QStringLiteral("Dark"));
    dark->setCheckable(true);
    dark->setChecked(plot_->theme().background == darkPlotTheme().background);
    connect(dark, &QAction::toggled, this, [this](bool isDark) {
        isDark_ = isDark;
        useTheme();
    });
    menu.addAction(QStringLiteral("Save as…"), this, [this] { saveAs(); });
}

void PlotWindow::addMeasureMenu(QMenu& menu) {
    for (const Measure& measure : allMeasures()) {
        if (!isPlottable(measure) || std::ranges::find(measures_, &measure) != measures_.end())
            continue;
        QAction* const entry = menu.addAction(QString::fromLatin1(measure.name), this, [this, &measure] {
            std::vector<const Measure*> measures = measures_;
            measures.push_back(&measure);
            setMeasures(std::move(measures));
        });
        entry->setToolTip(QString::fromUtf8(measure.definition));
    }
    menu.setToolTipsVisible(true);
}

void PlotWindow::addOverlayMenu(QMenu& menu) {
    menu.setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
    const std::optional<std::uint32_t> followed = source_.followed();
    for (const PlotCandidate& candidate : source_.candidates()) {
        if (candidate.number == followed)
            continue;
        QAction* const entry = menu.addAction(candidate.name);
        entry->setCheckable(true);
        entry->setChecked(overlaid_.contains(candidate.number));
        connect(entry, &QAction::toggled, this, [this, number = candidate.number](bool isOverlaid) {
            if (isOverlaid)
                overlaid_.insert(number);
            else
                overlaid_.erase(number);
            refresh();
        });
    }
    menu.menuAction()->setEnabled(!menu.isEmpty());
}

void PlotWindow::addAlignmentMenu(QMenu& menu) {
    constexpr std::pair<PlotAlignment, const char*> kNames[] = {
        {PlotAlignment::Start, "the clock's 0"},
        {PlotAlignment::FirstFlare, "the first flare"},
        {PlotAlignment::ClosestApproach, "the closest approach"}};
    for (const auto& [alignment, name] : kNames) {
        QAction* const entry = menu.addAction(QString::fromLatin1(name), this, [this, chosen = alignment] {
            alignment_ = chosen;
            refresh();
        });
        entry->setCheckable(true);
        entry->setChecked(alignment == alignment_);
    }
}

void PlotWindow::saveAs() {
    const QString path = QFileDialog::getSaveFileName(
        this, QStringLiteral("Save plots"), {}, QStringLiteral("Pictures and tables (*.png *.svg *.pdf *.csv)"));
    if (path.isEmpty())
        return;
    const std::optional<PlotFormat> format = plotFormatOf(path);
    if (!format) {
        QMessageBox::warning(
            this, QStringLiteral("Save plots"), QStringLiteral("The name ends in none of .png, .svg, .pdf and .csv"));
        return;
    }
    const QByteArray bytes = plotFile(*plot_, *format, plot_->size());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        QMessageBox::warning(
            this, QStringLiteral("Save plots"),
            QStringLiteral("%1 could not be written: %2").arg(path, file.errorString()));
}
} // namespace sorvane
