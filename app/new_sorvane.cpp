// The main window: joins the form, the playback clock, the view and the list of engagements.
#include "new_sorvane.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QDebug>
#include <QFileDialog>
#include <QMenu>
#include <QTimer>

#include "aircraftwidget.h"
#include "clocknumbers.h"
#include "etxyz.h"
#include "filedrop.h"
#include "fileloading.h"
#include "framegrab.h"
#include "imageexport.h"
#include "moviesettings.h"
#include "playbackclock.h"
#include "qvideoencoder.h"
#include "recordingnotice.h"
#include "recordingtexts.h"
#include "runtables.h"
#include "terrainnotice.h"
#include "timeentry.h"
#include "ui_new_sorvane.h"
#include "viewnotice.h"
#include "viewsizesteps.h"
#include "windowfeatures.h"

using namespace sorvane;

new_sorvane::new_sorvane(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::new_sorvane>()),
      engagements([this](std::unique_ptr<etxyz> ended) { ui->glWidget->endEtxyz(std::move(ended)); }, this) {
    Q_INIT_RESOURCE(resources);
    ui->setupUi(this);
    const auto warn = [](const QString& message) {
        qWarning("%s", qUtf8Printable(message));
    };
    connect(ui->glWidget, &AircraftWidget::reportError, this, warn);
    connect(ui->glWidget, &AircraftWidget::reportFatalError, this, warn);
    ui->glWidget->init(15.0F, 15.0F, ViewThreat, ui.get());
    timer = new QTimer(this);
    timer->setTimerType(Qt::PreciseTimer); // others round the interval, and real time would run fast
    connect(timer, &QTimer::timeout, this, &new_sorvane::incrementTime);

    notice_ = new ViewNotice(*ui->glWidget);
    recordingNotice_ = std::make_unique<RecordingNotice>(*notice_);
    new TerrainNotice(*ui->glWidget);
    new ViewSizeSteps(*this, *ui->glWidget, *ui->recordButton);
    TimeEntry::installOn(*ui->doubleSpinBox, *ui->glWidget);
    clock_ = std::make_unique<PlaybackClock>(
        ClockControls{*timer, *ui->playButton, *ui->horizontalSlider, *ui->doubleSpinBox});
    joinEngagements();
    const auto open = [this](const QStringList& paths) {
        loadFiles(*this, paths);
    };
    features_ = std::make_unique<WindowFeatures>(
        WindowParts{*this, *ui, engagements, *clock_, *notice_, [this] { toggleRecording(); }, open});
    new FileDrop(*this, open);
    ui->glWidget->setFocus();
}

new_sorvane::~new_sorvane() {
    // A movie without its trailer can't be played.
    if (encoder != nullptr) {
        encoder->close();
        if (encoder->hasWriteError()) // there is no view any more that could say so
            qWarning("%s", qUtf8Printable(damageText(*encoder)));
    }
    engagements.clear(); // as long as there is a view to end them in
}

void new_sorvane::joinEngagements() {
    connect(&engagements, &EngagementList::added, this, &new_sorvane::showAdded);
    connect(&engagements, &EngagementList::settled, this, [this](bool hasNew) {
        if (!hasNew)
            return;
        ui->glWidget->setKeyframe(ui->doubleSpinBox->value());
        ui->glWidget->reset();
        ui->glWidget->update();
    });
    connect(&engagements, &EngagementList::replaced, this, [this](const LoadedEngagement& engagement) {
        growSlider(engagement);
        ui->glWidget->replaceEtxyz(engagement.id(), engagement.data());
    });
    connect(&engagements, &EngagementList::aboutToBeRemoved, this, [this](const LoadedEngagement& engagement) {
        QMenu* const menu = engagement.data().menu;
        ui->menuETXYZ_Files->removeAction(menu->menuAction());
        menu->deleteLater(); // one of its own actions may be what removes the engagement
        ui->glWidget->removeEtxyz(engagement.id());
    });
}

void new_sorvane::openFile(const QString& path) {
    if (RunTables::isDatabase(path))
        features_->showRuns(path);
    else
        loadEtxyzFile(path);
}

void new_sorvane::loadEtxyzFile(const QString& path) {
    takeReading(path, readEngagement(path));
}

void new_sorvane::takeReading(const QString& path, EngagementReading reading) {
    const etxyz* const loaded = reading.data.get();
    if (loaded != nullptr)
        engagements.add(path, std::move(reading));
    features_->fileLoaded(path, loaded);
}

LoadNotice& new_sorvane::loadNotice() {
    return features_->loadNotice();
}

void new_sorvane::showAdded(const LoadedEngagement& added) {
    ui->glWidget->addEtxyz(&added.data(), added.id());
    growSlider(added);
    addMenu(added);
    ui->glWidget->initHardbodiesIfReady(added.data());
}

void new_sorvane::addMenu(const LoadedEngagement& added) {
    auto* const menu = new QMenu(added.path(), this);
    // The texts are compared in code and therefore not translated.
    connect(menu->addAction(QStringLiteral("Disable")), &QAction::triggered, this, &new_sorvane::etxyz_toggled);
    const bool isFirst = engagements.size() == 1;
    for (const ViewModeName& view : kViewModes) {
        QAction* const action = menu->addAction(QString::fromLatin1(view.menuText));
        action->setCheckable(true);
        action->setChecked(isFirst && view.mode == ViewThreat);
        connect(action, &QAction::triggered, this, &new_sorvane::etxyz_set_view);
    }
    added.data().menu = menu;
    ui->menuETXYZ_Files->addMenu(menu);
}

void new_sorvane::growSlider(const LoadedEngagement& loaded) {
    ui->horizontalSlider->setMaximum(std::max(ui->horizontalSlider->maximum(), endOnSlider(loaded.data())));
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
    const QObject* const menu = chosen->parent();
    EngagementId engagementOfMenu{};
    for (const LoadedEngagement& engagement : engagements) {
        if (engagement.data().menu == menu)
            engagementOfMenu = engagement.id();
        for (QAction* const action : engagement.data().menu->actions())
            if (action->isCheckable() && action != chosen)
                action->setChecked(false);
    }
    AircraftWidget& view = *ui->glWidget;
    view.setViewMode(viewModeOf(chosen->text().toStdString()));
    view.reset();
    view.setKeyframe(ui->doubleSpinBox->value());
    features_->viewChosen(engagementOfMenu);
}

void new_sorvane::on_actionAdd_triggered() {
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open ETXYZ File"), QString(),
        tr("ETXYZ Files (ETXYZ.OUT.*);;Compressed ETXYZ Files (ETXYZ.OUT.*.Z);;All Files (*.*)"));
    if (!path.isEmpty())
        loadEtxyzFile(path);
}

void new_sorvane::on_playButton_clicked() {
    clock_->playOrStop();
}

void new_sorvane::incrementTime() {
    features_->beforeTick();
    // Before the time moves: a movie starts with the frame that was on show.
    if (encoder != nullptr)
        recordFrame();
    const ClockTick tick = clock_->transport().next(clock_->time(), speed, clock_->range());
    if (tick.isAtEnd || tick.isAtStart)
        clock_->stop();
    if (tick.isAtEnd)
        finishRecording();
    ui->doubleSpinBox->setValue(tick.time);
    ui->horizontalSlider->setValue(sliderValue(tick.time));
    // The slider, at its maximum, has set the box back to its own time: the box shows the end of the clock.
    if (tick.isAtEnd)
        ui->doubleSpinBox->setValue(tick.time);
    clock_->arrivedAt(tick.time);
    features_->afterTick(speed);
}

// Box and slider set each other. The exchange ends by itself, since a value that does not change fires no signal.
void new_sorvane::on_horizontalSlider_valueChanged(int value) {
    const double time = value * kSecondsPerSliderStep;
    // Setting the box to the value that it has would rewrite a number that is being typed.
    constexpr double kHalfOfLastDecimal = 0.5e-4;
    if (std::abs(ui->doubleSpinBox->value() - time) > kHalfOfLastDecimal)
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
    setSpeed(1.0);
}

void new_sorvane::on_actionX2_triggered() {
    setSpeed(speed * 2.0);
}

void new_sorvane::on_actionX0_5_triggered() {
    setSpeed(speed * 0.5);
}

void new_sorvane::on_actionX10_triggered() {
    setSpeed(speed * 10.0);
}

void new_sorvane::on_actionX0_1_triggered() {
    setSpeed(speed * 0.1);
}

void new_sorvane::setSpeed(double newSpeed) {
    speed = newSpeed;
    features_->speedChosen(speed);
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
    // A refused movie leaves a closed encoder, which ignores every frame; the clock runs all the same.
    encoder->createFile(
        path, static_cast<unsigned>(ui->glWidget->width()), static_cast<unsigned>(ui->glWidget->height()),
        kMovieBitsPerSecond, kMovieFramesPerKeyFrame, kMovieFramesPerSecond);
    recordingNotice_->begin(*encoder, ui->glWidget->size());
    clock_->play();
}

void new_sorvane::recordFrame() {
    const QImage picture = grabFrame(*ui->glWidget);
    encoder->encodeImage(picture);
    recordingNotice_->frame(*encoder, picture.size());
}

void new_sorvane::finishRecording() {
    if (encoder == nullptr)
        return;
    encoder->close();
    recordingNotice_->end(*encoder);
    encoder.reset();
}

void new_sorvane::toggleRecording() {
    if (encoder == nullptr || !encoder->isOk()) // a refused one is still there
        return on_recordButton_clicked();
    notice_->notify(recordedText(*encoder)); // closing may yet find that it is damaged
    finishRecording();
}
