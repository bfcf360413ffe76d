// The main window: joins the form, the playback clock, the view and the list of engagements.
#pragma once

#include <memory>

#include <QMainWindow>
#include <QString>

#include "engagementlist.h"

class QTimer;
class QVideoEncoder;
namespace Ui {
class new_sorvane;
}

namespace sorvane {
class LoadNotice;
class WindowFeatures;
class PlaybackClock;
class RecordingNotice;
class ViewNotice;
} // namespace sorvane

class new_sorvane : public QMainWindow {
    Q_OBJECT

public:
    explicit new_sorvane(QWidget* parent = nullptr);
    ~new_sorvane() override;

    // Loads an engagement as below, or shows a database of runs in their table.
    void openFile(const QString& path);

    // Loads one engagement into the list. A file that yields no keyframes is named in the view and changes nothing.
    void loadEtxyzFile(const QString& path);
    // The same with what the file has given.
    void takeReading(const QString& path, sorvane::EngagementReading reading);

    // As long as it goes on, what goes through all engagements waits.
    sorvane::EngagementList::Series loadSeries() { return sorvane::EngagementList::Series(engagements); }

    // What the view says about the loading of files.
    sorvane::LoadNotice& loadNotice();

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
    void showAdded(const sorvane::LoadedEngagement& added);
    void addMenu(const sorvane::LoadedEngagement& added);
    void growSlider(const sorvane::LoadedEngagement& loaded);
    void setSpeed(double newSpeed);
    void recordFrame();
    void finishRecording();
    // Ends the recording that runs, or asks for the name of one as the button does.
    void toggleRecording();

    std::unique_ptr<Ui::new_sorvane> ui;
    sorvane::EngagementList engagements;
    QTimer* timer = nullptr;
    double speed = 1.0;                     // engagement seconds per second; no bounds
    std::unique_ptr<QVideoEncoder> encoder; // while a movie is being recorded, else null
    sorvane::ViewNotice* notice_ = nullptr;
    std::unique_ptr<sorvane::RecordingNotice> recordingNotice_;
    std::unique_ptr<sorvane::PlaybackClock> clock_;
    std::unique_ptr<sorvane::WindowFeatures> features_;
};
