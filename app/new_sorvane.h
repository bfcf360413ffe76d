// The main window: joins the form, the playback clock, the view and the list of engagements.
#pragma once

#include <memory>

#include <QMainWindow>
#include <QString>

#include "engagementlist.h"

class WindowFeatures;
class PlaybackClock;
class QTimer;
class QVideoEncoder;
class ViewNotice;
namespace Ui {
class new_sorvane;
}

class new_sorvane : public QMainWindow {
    Q_OBJECT

public:
    explicit new_sorvane(QWidget* parent = nullptr);
    ~new_sorvane() override;

    // Loads one engagement into the list. A file that yields no keyframes changes nothing and is not reported.
    void loadEtxyzFile(const QString& path);

    // Saves the view as a picture; the name's ending is its format. Problems are message boxes.
    void saveImage(const QString& path);

public slots:
    // Bound by name to the form's objects and actions; the order is part of the class's meta-object.
    void on_actionScreenshot_triggered();
    void on_recordButton_clicked();
    void on_actionX0_1_triggered();
    void on_actionX10_triggered();
    void on_actionX0_5_triggered();
    void on_actionX2_triggered();
    void on_action1_0_triggered();
    void on_playButton_clicked();
    void on_actionAdd_triggered();
    void on_horizontalSlider_valueChanged(int value);
    void on_doubleSpinBox_valueChanged(double value);
    void etxyz_toggled();
    void etxyz_set_view();
    // One tick of the clock.
    void incrementTime();

private:
    void joinEngagements();
    void showAdded(const LoadedEngagement& added);
    void addMenu(const LoadedEngagement& added);
    void growSlider(const LoadedEngagement& loaded);
    void recordFrame();
    void finishRecording();
    void tellWriteError();

    std::unique_ptr<Ui::new_sorvane> ui;
    EngagementList engagements;
    QTimer* timer = nullptr;
    double speed = 1.0;                     // engagement seconds per second; no bounds
    std::unique_ptr<QVideoEncoder> encoder; // while a movie is being recorded, else null
    ViewNotice* notice_ = nullptr;
    std::unique_ptr<PlaybackClock> clock_;
    std::unique_ptr<WindowFeatures> features_;
    bool isWriteErrorTold_ = false; // of the current recording
};
