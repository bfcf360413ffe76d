// Loads files that are dropped onto the window.
#pragma once

#include <functional>

#include <QObject>
#include <QStringList>

class QMimeData;
class QTimer;
class QWidget;

namespace sorvane {
// Files dropped together are loaded in the order of their names, after the drop has been answered: whoever drags them
// waits for that. The wait cursor shows until they are loaded.
class FileDrop : public QObject {
public:
    using Load = std::function<void(const QStringList& paths)>;

    // Lets `window` take files anywhere: its boxes' fields leave to it what is dropped.
    FileDrop(QWidget& window, Load load);
    ~FileDrop() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void enqueue(const QMimeData& files);
    void loadWaiting();

    Load load_;
    QTimer* turn_; // runs while files are waiting
    QStringList waiting_;
};
} // namespace sorvane
