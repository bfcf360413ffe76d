// Names beside the bodies in the view.
#include "bodynames.h"

#include <QEvent>
#include <QFontInfo>
#include <QLabel>
#include <QPainter>
#include <QTimer>

#include "aircraftwidget.h"
#include "engagementlist.h"

namespace sorvane {
BodyNames::BodyNames(AircraftWidget& view, const EngagementList& engagements)
    : QWidget(&view), view_(view), engagements_(engagements), afterFrame_(new QTimer(this)) {
    setObjectName(QStringLiteral("bodyNames"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    afterFrame_->setSingleShot(true);
    afterFrame_->setInterval(0);
    connect(&view_, &AircraftWidget::cameraMoved, this, &BodyNames::refresh);
    // Frames have other reasons than time and camera: what is hidden, another view, another size.
    connect(afterFrame_, &QTimer::timeout, this, [this] {
        if (content() != painted_)
            update();
    });
}

void BodyNames::refresh() {
    if (isVisible())
        update();
}

bool BodyNames::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        setGeometry(view_.rect());
    else if (event->type() == QEvent::Paint)
        afterFrame_->start();
    return QWidget::eventFilter(watched, event);
}

void BodyNames::paintEvent(QPaintEvent* /*event*/) {
    if (painter_ == nullptr || painterRatio_ != devicePixelRatio()) {
        painterRatio_ = devicePixelRatio();
        painter_ = std::make_unique<LabelPainter>(QFontInfo(font()).pixelSize(), painterRatio_);
    }
    painted_ = content();
    QPainter painter(this);
    painter_->paint(painter, size(), painted_.labels, painted_.occupied);
}

void BodyNames::showEvent(QShowEvent* /*event*/) {
    setGeometry(view_.rect());
    view_.installEventFilter(this);
}

void BodyNames::hideEvent(QHideEvent* /*event*/) {
    view_.removeEventFilter(this);
}

BodyNames::Content BodyNames::content() {
    Content content{view_.bodyLabels([this](const SceneEngagement& shown) { return nameOf(shown.id); }), {}};
    for (const QLabel* const text : view_.findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
        if (text->isVisible())
            content.occupied.emplace_back(text->geometry());
    return content;
}

QString BodyNames::nameOf(EngagementId id) {
    QString& name = names_[id];
    if (name.isEmpty())
        if (const LoadedEngagement* const engagement = engagements_.find(id))
            name = shortEngagementName(engagement->path());
    return name;
}
} // namespace sorvane
