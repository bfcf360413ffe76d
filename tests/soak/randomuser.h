// Somebody who uses the main window in every way, at random.
#pragma once

#include <random>

#include <QString>
#include <QStringList>

class AircraftWidget;
class QAction;
class QMenu;
class new_sorvane;

class RandomUser {
public:
    // The same seed does the same things, as far as the clock lets it. `trajectories` may be rewritten; movies and
    // pictures go to `folder`.
    RandomUser(new_sorvane& window, QStringList trajectories, QString folder, unsigned seed);

    // Does one thing and gives the window a moment for it.
    void act();

private:
    void pressKey();
    void scrub();
    void toggle();
    void choose();
    void useMouse();
    void useSideView();
    void resizeWindow();
    void rewriteFile();
    void record();
    void openMenu();
    void dropFiles();
    // Answers the dialog that the next action opens: a name, or Escape.
    void answerDialogs();

    int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }

    new_sorvane& window_;
    AircraftWidget* view_;
    QMenu* filesMenu_;
    QStringList trajectories_;
    QString folder_;
    std::mt19937 random_;
    int drops_ = 0;
};
