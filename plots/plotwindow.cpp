// The window of curves over time beside the viewer.
#include "plotwindow.h"

#include <algorithm>
#include <cmath>

#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QSaveFile>
#include <QShortcut>
#include <QVBoxLayout>

#include "plotmouse.h"
#include "stripplot.h"

namespace sorvane {
PlotWindow::PlotWindow(QWidget* viewer, PlotSource source)
    : QWidget(viewer, Qt::Window), source_(std::move(source)), plot_(new StripPlot(this)), notice_(new QLabel(plot_)),
      overlay_(*plot_) {
    setObjectName(QStringLiteral("plotWindow"));
    setWindowTitle(QStringLiteral("Plots"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);
    notice_->setObjectName(QStringLiteral("plotNotice"));
    notice_->setAutoFillBackground(true);
    notice_->setAttribute(Qt::WA_TransparentForMouseEvents);
    notice_->hide();
    mouse_ = std::make_unique<PlotMouse>(
        *plot_, overlay_,
        PlotMouse::Actions{
            [this](double time) { source_.goTo(time + plot_->document().zero); },
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

std::vector<EngagementId> PlotWindow::chosen() const {
    std::vector<EngagementId> ids;
    const std::optional<EngagementId> followed = source_.followed();
    if (followed)
        ids.push_back(*followed);
    for (const PlotCandidate& candidate : source_.candidates())
        if (candidate.id != followed && overlaid_.contains(candidate.id))
            ids.push_back(candidate.id);
    return ids;
}

void PlotWindow::refresh() {
    if (chosen() != plotted_)
        isStale_ = true;
    if (isStale_ && isVisible())
        plotAnew();
}

PlotWindow::Content PlotWindow::contentOf(const std::vector<EngagementId>& ids, CurveDigits digits) const {
    QString lacking;
    const bool needsRadiometry = std::ranges::any_of(measures_, &Measure::needsRadiometry);
    std::vector<PlottedEngagement> plotted;
    plotted.reserve(ids.size());
    for (const EngagementId id : ids)
        plotted.push_back(source_.engagement(id));
    const std::vector<PlotRadiation> radiations =
        source_.radiations(needsRadiometry ? ids : std::vector<EngagementId>());
    for (std::size_t i = 0; i < radiations.size(); ++i) {
        if (lacking.isEmpty())
            lacking = radiations[i].text;
        if (radiations[i].radiometry != nullptr) {
            const auto radiating = std::make_shared<MeasuredEngagement>(*plotted[i].measured);
            radiating->setRadiometry(radiations[i].radiometry);
            plotted[i].measured = radiating.get();
            plotted[i].holder = radiating;
        }
    }
    const Measure* const without = plotted.empty() ? nullptr : withoutUnit(measures_, plotted.front().measured->unit());
    if (lacking.isEmpty() && without != nullptr)
        lacking = QStringLiteral("%1 needs the unit of length: press U").arg(QLatin1String(without->name));
    return {plotOf(plotted, measures_, alignment_, digits), lacking};
}

void PlotWindow::plotAnew() {
    isStale_ = false;
    plotted_ = chosen();
    const TimeRange before = plot_->times();
    const TimeRange allBefore = plot_->document().times;
    Content content = contentOf(plotted_, CurveDigits::All);
    plot_->setDocument(std::move(content.document));
    lacking_ = content.lacking;
    setNotice(lacking_);
    if (plot_->document().times == allBefore)
        plot_->setTimes(before); // it was zoomed, perhaps
    const QString& name = plot_->document().title;
    setWindowTitle(name.isEmpty() ? QStringLiteral("Plots") : QStringLiteral("Plots: %1").arg(name));
    placeOverlay();
}

void PlotWindow::setNow(double time) {
    now_ = time;
    if (isVisible() && !isStale_)
        overlay_.setNow(now_ - plot_->document().zero);
}

void PlotWindow::setLoop(std::optional<TimeRange> range) {
    loop_ = range;
    if (isVisible() && !isStale_)
        placeOverlay();
}

void PlotWindow::setNotice(const QString& text) {
    notice_->setVisible(!text.isEmpty());
    notice_->setText(text);
    notice_->adjustSize();
}

void PlotWindow::placeOverlay() {
    const double zero = plot_->document().zero;
    overlay_.setNow(now_ - zero);
    overlay_.setLoop(loop_ ? std::optional(TimeRange{loop_->begin - zero, loop_->end - zero}) : std::nullopt);
}

void PlotWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
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
    if (&theme != &plot_->theme())
        plot_->setTheme(theme);
}

void PlotWindow::moveStrip(std::size_t from, std::size_t to) {
    const auto first = measures_.begin() + static_cast<std::ptrdiff_t>(from);
    const auto last = measures_.begin() + static_cast<std::ptrdiff_t>(to);
    if (from < to)
        std::rotate(first, first + 1, last + 1);
    else
        std::rotate(last, first, first + 1);
    plotAnew();
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
            measures_.erase(measures_.begin() + static_cast<std::ptrdiff_t>(number));
            plotAnew();
        });
    }
    menu.addAction(QStringLiteral("Usual measures"), this, [this] {
        measures_ = usualPlotMeasures();
        plotAnew();
    });
    menu.addSeparator();
    addOverlayMenu(*menu.addMenu(QStringLiteral("Overlay")));
    addAlignmentMenu(*menu.addMenu(QStringLiteral("Time 0 is")));
    menu.addAction(QStringLiteral("Intensity of flares…"), this, [this] { askFlareIntensity(); });
    menu.addSeparator();
    menu.addAction(QStringLiteral("All times"), this, [this] { plot_->showAllTimes(); });
    menu.addAction(QStringLiteral("Remove cursors"), this, [this] {
        overlay_.setCursor(PlotOverlay::A, std::nullopt);
        overlay_.setCursor(PlotOverlay::B, std::nullopt);
    });
    QAction* const dark = menu.addAction(QStringLiteral("Dark"));
    dark->setCheckable(true);
    dark->setChecked(&plot_->theme() == &darkPlotTheme());
    connect(dark, &QAction::toggled, this, [this](bool isDark) {
        isDark_ = isDark;
        useTheme();
    });
    menu.addAction(QStringLiteral("Save as…"), this, [this] { saveAs(); });
}

void PlotWindow::askFlareIntensity() {
    auto* const dialog = new QInputDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral("Intensity of flares"));
    dialog->setLabelText(QStringLiteral("What a flare of brightness 1 radiates, in W/sr:"));
    dialog->setTextValue(QLocale::c().toString(source_.flareIntensity(), 'g', QLocale::FloatingPointShortest));
    connect(dialog, &QInputDialog::textValueSelected, this, [this](const QString& text) {
        bool isNumber = false;
        const double intensity = QLocale::c().toDouble(text, &isNumber);
        if (isNumber && intensity > 0.0 && std::isfinite(intensity))
            source_.setFlareIntensity(intensity);
        else
            setNotice(QStringLiteral("\"%1\" is not an intensity above 0").arg(text));
    });
    dialog->open();
}

void PlotWindow::addMeasureMenu(QMenu& menu) {
    for (const Measure& measure : allMeasures()) {
        if (!isPlottable(measure) || std::ranges::find(measures_, &measure) != measures_.end())
            continue;
        QAction* const entry = menu.addAction(QString::fromLatin1(measure.name), this, [this, &measure] {
            measures_.push_back(&measure);
            plotAnew();
        });
        entry->setToolTip(QString::fromUtf8(measure.definition));
    }
    menu.setToolTipsVisible(true);
}

void PlotWindow::addOverlayMenu(QMenu& menu) {
    menu.setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
    const std::optional<EngagementId> followed = source_.followed();
    for (const PlotCandidate& candidate : source_.candidates()) {
        if (candidate.id == followed)
            continue;
        QAction* const entry = menu.addAction(candidate.name);
        entry->setCheckable(true);
        entry->setChecked(overlaid_.contains(candidate.id));
        connect(entry, &QAction::toggled, this, [this, id = candidate.id](bool isOverlaid) {
            if (isOverlaid)
                overlaid_.insert(id);
            else
                overlaid_.erase(id);
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
            plotAnew();
        });
        entry->setCheckable(true);
        entry->setChecked(alignment == alignment_);
    }
}

PlotWindow::Saved PlotWindow::saved(PlotFormat format) {
    if (format != PlotFormat::Csv)
        return {plotPicture(*plot_, format, plot_->size()), lacking_};
    const Content written = contentOf(plotted_, CurveDigits::Written);
    const bool isAllInView = plot_->times() == plot_->document().times;
    return {plotTable(written.document, isAllInView ? written.document.times : plot_->times()), written.lacking};
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
    const auto [bytes, lacking] = saved(*format);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        QMessageBox::warning(
            this, QStringLiteral("Save plots"),
            QStringLiteral("%1 could not be written: %2").arg(path, file.errorString()));
    else if (!lacking.isEmpty())
        QMessageBox::warning(
            this, QStringLiteral("Save plots"), QStringLiteral("Saved without what is not at hand. %1").arg(lacking));
}
} // namespace sorvane
