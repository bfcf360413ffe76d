// Loads terrain beside the window's work, and says over the view how far it has come.
#include "terrainnotice.h"

#include <QTimer>

#include "aircraftwidget.h"

namespace sorvane {
namespace {
constexpr int kPauseMilliseconds = 10; // for the window's other work
constexpr std::chrono::milliseconds kPiece(20);
} // namespace

TerrainNotice::TerrainNotice(AircraftWidget& view)
    : ViewLabel(view, QStringLiteral("terrainNotice")), view_(view), next_(new QTimer(this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setColour(QLatin1String("#ffd54f"));
    next_->setSingleShot(true);
    connect(next_, &QTimer::timeout, this, [this] { goOn(); });
    connect(&view, &AircraftWidget::terrainWanted, this, [this] {
        if (!next_->isActive())
            next_->start(0);
    });
    view.setTerrainComesLater(true);
}

void TerrainNotice::goOn() {
    const TerrainProgress progress = view_.loadTerrain(kPiece);
    if (progress.isThrough) {
        showText(QString());
        if (progress.hasLoaded)
            view_.update();
        return;
    }
    next_->start(kPauseMilliseconds);
    if (progress.isRetry)
        return;
    const int percent = static_cast<int>(100.0 * progress.share);
    showText(percent == 0 ? QStringLiteral("Terrain: reading…") : QStringLiteral("Terrain: %1 %").arg(percent));
}

void TerrainNotice::layOut() {
    ViewLabel::layOut();
    move(parentWidget()->width() - width() - kViewMargin, kViewMargin);
}
} // namespace sorvane
