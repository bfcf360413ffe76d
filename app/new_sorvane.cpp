// The main window: the form, the playback clock and the list of engagements.
#include "new_sorvane.h"

#include <algorithm>
#include <vector>

#include <QDebug>
#include <QFileDialog>
#include <QMenu>
#include <QTimer>

#include "aircraftwidget.h"
#include "copykeyfilter.h"
#include "etxyz.h"
#include "framegrab.h"
#include "imageexport.h"
#include "moviesettings.h"
#include "qvideoencoder.h"
#include "recordingtexts.h"
#include "ui_new_sorvane.h"
#include "viewnotice.h"
#include "viewsizesteps.h"

namespace {
constexpr int kTickMilliseconds = 33;
constexpr double kTickSeconds = 0.033;
constexpr double kEndOfTime = 1.0e9; // later than any sample

// Milliseconds as the slider counts them, truncated. Times that no int holds end at its limits.
int sliderValue(double seconds) {
    return static_cast<int>(std::clamp(seconds * 1000.0, -2147483648.0, 2147483647.0));
}

// Registered engagements live until the process ends and stay reachable from here, so that nothing that they own has to
// be ended without a GL context.
void keepUntilExit(std::unique_ptr<etxyz> engagement) {
    static auto* const kept = new std::vector<std::unique_ptr<etxyz>>;
    kept->push_back(std::move(engagement));
}
} // namespace

new_sorvane::new_sorvane(QWidget* parent) : QMainWindow(parent), ui(std::make_unique<Ui::new_sorvane>()) {
    Q_INIT_RESOURCE(resources);
    ui->setupUi(this);
    const auto warn = [](const QString& message) {
        qWarning("%s", qUtf8Printable(message));
    };
    connect(ui->glWidget, &AircraftWidget::reportError, this, warn);
    connect(ui->glWidget, &AircraftWidget::reportFatalError, this, warn);
    ui->glWidget->init(15.0F, 15.0F, ViewThreat, ui.get());
    timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &new_sorvane::incrementTime);

    notice_ = new ViewNotice(*ui->glWidget);
    new ViewSizeSteps(*this, *ui->glWidget, *ui->recordButton);
    CopyKeyFilter::installOn(*ui->doubleSpinBox);
    ui->glWidget->setFocus();
}

new_sorvane::~new_sorvane() {
    // A movie without its trailer can't be played.
    if (encoder != nullptr)
        encoder->close();
}

void new_sorvane::loadEtxyzFile(const QString& path) {
    auto loaded = std::make_unique<etxyz>();
    loaded->LoadETXYZ(path);
    if (loaded->keyframes.isEmpty())
        return;
    etxyz* const engagement = loaded.get();
    keepUntilExit(std::move(loaded));

    ui->glWidget->addEtxyz(engagement);
    const int end = sliderValue(engagement->NearestKeyframe(kEndOfTime).time);
    if (end > ui->horizontalSlider->maximum())
        ui->horizontalSlider->setMaximum(end);
    addMenu(*engagement, path);
    ui->glWidget->initHardbodiesIfReady(*engagement);
    ui->menuETXYZ_Files->addMenu(engagement->menu);
    engagements.append(engagement);

    ui->glWidget->setKeyframe(ui->doubleSpinBox->value());
    ui->glWidget->reset();
    ui->glWidget->update();
}

void new_sorvane::addMenu(etxyz& engagement, const QString& path) {
    auto* const menu = new QMenu(path, this);
    // The texts are compared in code and therefore not translated.
    connect(menu->addAction(QStringLiteral("Disable")), &QAction::triggered, this, &new_sorvane::etxyz_toggled);
    const bool isFirst = engagements.isEmpty();
    for (const char* const text : {"View Threat", "View Gyro", "View Target", "View Free"}) {
        QAction* const view = menu->addAction(QString::fromLatin1(text));
        view->setCheckable(true);
        view->setChecked(isFirst && view->text() == QLatin1String("View Threat"));
        connect(view, &QAction::triggered, this, &new_sorvane::etxyz_set_view);
    }
    engagement.menu = menu;
}

void new_sorvane::etxyz_toggled() {
    auto* const action = qobject_cast<QAction*>(sender());
    if (action == nullptr)
        return;
    const bool isShown = action->text() == QLatin1String("Disable");
    action->setText(isShown ? QStringLiteral("Enable") : QStringLiteral("Disable"));
    ui->glWidget->update();
    update();
}

void new_sorvane::etxyz_set_view() {
    const auto* const chosen = qobject_cast<QAction*>(sender());
    if (chosen == nullptr)
        return;
    for (const etxyz* const engagement : std::as_const(engagements))
        for (QAction* const action : engagement->menu->actions())
            if (action->isCheckable() && action != chosen)
                action->setChecked(false);

    ViewMode mode = ViewFree;
    if (chosen->text() == QLatin1String("View Threat"))
        mode = ViewThreat;
    else if (chosen->text() == QLatin1String("View Gyro"))
        mode = ViewGyro;
    else if (chosen->text() == QLatin1String("View Target"))
        mode = ViewTarget;
    ui->glWidget->setViewMode(mode);
    ui->glWidget->reset();
    ui->glWidget->setKeyframe(ui->doubleSpinBox->value());
}

void new_sorvane::on_actionAdd_triggered() {
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open ETXYZ File"), QString(),
        tr("ETXYZ Files (ETXYZ.OUT.*);;Compressed ETXYZ Files (ETXYZ.OUT.*.Z);;All Files (*.*)"));
    if (!path.isEmpty())
        loadEtxyzFile(path);
}

void new_sorvane::on_playButton_clicked() {
    if (timer->isActive()) {
        stopClock();
        return;
    }
    startClock();
}

void new_sorvane::startClock() {
    timer->start(kTickMilliseconds);
    ui->playButton->setIcon(QIcon(QStringLiteral(":/images/pause.svg")));
}

void new_sorvane::stopClock() {
    timer->stop();
    ui->playButton->setIcon(QIcon(QStringLiteral(":/images/play.svg")));
}

void new_sorvane::incrementTime() {
    const double now = ui->doubleSpinBox->value();
    // Before the time moves: a movie starts with the frame that was on show.
    if (encoder != nullptr)
        recordFrame();
    const double next = now + speed * kTickSeconds;
    const bool isAtEnd = next > ui->horizontalSlider->maximum() * 0.001;
    // The end of the clock is the box's own maximum, not the end of the engagement.
    const double time = isAtEnd ? ui->doubleSpinBox->maximum() : next;
    if (isAtEnd) {
        stopClock();
        finishRecording();
    }
    ui->doubleSpinBox->setValue(time);
    ui->horizontalSlider->setValue(sliderValue(time));
    // The slider, at its maximum, has set the box back to its own time: the box shows the end of the clock.
    if (isAtEnd)
        ui->doubleSpinBox->setValue(time);
}

// Box and slider set each other. The exchange ends by itself, since a value that does not change fires no signal.
void new_sorvane::on_horizontalSlider_valueChanged(int value) {
    const double time = value * 0.001;
    ui->doubleSpinBox->setValue(time);
    ui->glWidget->setKeyframe(time);
    update();
}

void new_sorvane::on_doubleSpinBox_valueChanged(double value) {
    ui->horizontalSlider->setValue(sliderValue(value));
    ui->glWidget->setKeyframe(value);
    update();
}

// The four factors compound, deliberately without bound; only "1.0" sets a speed.
void new_sorvane::on_action1_0_triggered() {
    speed = 1.0;
}

void new_sorvane::on_actionX2_triggered() {
    speed *= 2.0;
}

void new_sorvane::on_actionX0_5_triggered() {
    speed *= 0.5;
}

void new_sorvane::on_actionX10_triggered() {
    speed *= 10.0;
}

void new_sorvane::on_actionX0_1_triggered() {
    speed *= 0.1;
}

void new_sorvane::on_actionScreenshot_triggered() {
    QString filter;
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Save Image File"), QString(),
        tr("PNG Files (*.png);;PPM Files (*.ppm);;BMP Files (*.bmp);;All Files (*.*)"), &filter,
        QFileDialog::DontResolveSymlinks);
    if (!path.isEmpty())
        saveImage(path);
}

void new_sorvane::saveImage(const QString& path) {
    qDebug() << path;
    exportImage(*this, grabFrame(*ui->glWidget), path);
}

void new_sorvane::on_recordButton_clicked() {
    QString filter;
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Save Movie File"), QString(), tr("AVI Files (*.avi);;MPEG Files (*.mpg);;All Files (*.*)"), &filter,
        QFileDialog::DontResolveSymlinks);
    if (path.isEmpty())
        return;
    finishRecording();
    encoder = std::make_unique<QVideoEncoder>();
    isWriteErrorTold_ = false;
    // A refused movie leaves a closed encoder, which ignores every frame; the clock runs all the same.
    if (encoder->createFile(
            path, static_cast<unsigned>(ui->glWidget->width()), static_cast<unsigned>(ui->glWidget->height()),
            kMovieBitsPerSecond, kMovieFramesPerKeyFrame, kMovieFramesPerSecond))
        notice_->mark(recordingMark(*encoder));
    else
        notice_->notify(refusalText(*encoder, ui->glWidget->size()));
    startClock();
}

void new_sorvane::recordFrame() {
    encoder->encodeImage(grabFrame(*ui->glWidget));
    if (!encoder->isOk())
        return;
    notice_->mark(recordingMark(*encoder));
    if (encoder->hasWriteError() && !isWriteErrorTold_) {
        isWriteErrorTold_ = true;
        notice_->notify(writeErrorText(*encoder));
    }
}

void new_sorvane::finishRecording() {
    if (encoder == nullptr)
        return;
    encoder->close();
    notice_->clearMark();
    // Closing writes too.
    if (encoder->hasWriteError() && !isWriteErrorTold_)
        notice_->notify(writeErrorText(*encoder));
    encoder.reset();
}
