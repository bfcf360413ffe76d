// What targets radiate towards their threats, for the plots.
#include "targetradiation.h"

#include <algorithm>

#include <QTimer>

#include "loadedengagement.h"
#include "messages.h"

namespace sorvane {
namespace {
constexpr int kLookMilliseconds = 50;
} // namespace

TargetRadiation::TargetRadiation(QObject* parent) : QObject(parent), timer_(new QTimer(this)) {
    timer_->setInterval(kLookMilliseconds);
    connect(timer_, &QTimer::timeout, this, [this] { look(); });
}

TargetRadiation::~TargetRadiation() = default;

TargetRadiation::Origin TargetRadiation::originOf(const LoadedEngagement& engagement) {
    return {engagement.path(), engagement.stamp(), engagement.modelFiles().target};
}

std::vector<PlotRadiation> TargetRadiation::of(const std::vector<const LoadedEngagement*>& engagements) {
    const auto isRunning = [this](const LoadedEngagement* engagement) {
        return originOf(*engagement) == running_->origin;
    };
    if (running_ && std::ranges::none_of(engagements, isRunning)) {
        timer_->stop();
        work_.abandon();
        running_.reset();
    }
    std::vector<PlotRadiation> radiations;
    radiations.reserve(engagements.size());
    for (const LoadedEngagement* const engagement : engagements)
        radiations.push_back(answerFor(*engagement));
    return radiations;
}

PlotRadiation TargetRadiation::answerFor(const LoadedEngagement& engagement) {
    const auto entry = known_.find(engagement.path());
    if (entry != known_.end() && entry->second.origin == originOf(engagement)) {
        if (entry->second.radiometry != nullptr)
            return {entry->second.radiometry, {}};
        return {nullptr, QStringLiteral("%1: the files of the target can't be used").arg(engagement.name())};
    }
    if (!running_) {
        if (std::shared_ptr<const TargetModel> model = modelOf(engagement)) {
            start(engagement, std::move(model));
        } else {
            known_[engagement.path()] = {originOf(engagement), nullptr};
            return answerFor(engagement);
        }
    }
    return {nullptr, text()};
}

// What the loaders say has been said, or will be, when the body is drawn.
std::shared_ptr<const TargetModel> TargetRadiation::modelOf(const LoadedEngagement& engagement) {
    if (model_ == nullptr || modelFiles_ != engagement.modelFiles().target) {
        const MessageCollection quiet;
        model_ = loadTargetModel(targetFilesOf(engagement.header(), BandChoice::All));
        modelFiles_ = engagement.modelFiles().target;
    }
    return model_;
}

void TargetRadiation::start(const LoadedEngagement& engagement, std::shared_ptr<const TargetModel> model) {
    running_ = Running{originOf(engagement), engagement.name()};
    share_ = std::make_shared<std::atomic<double>>(0.0);
    work_.start(
        [series = engagement.data().samples.series(), model = std::move(model),
         share = share_](const std::atomic<bool>& isUnwanted) {
            const RadiometryWork work{.progress = [&](double done) {
                *share = done;
                return !isUnwanted;
            }};
            return radiometryOf(series->samples(), *model, work);
        },
        true);
    timer_->start();
}

void TargetRadiation::look() {
    if (!work_.isReady()) {
        emit advanced(text());
        return;
    }
    timer_->stop();
    const std::optional<std::shared_ptr<const TargetRadiometry>> result = work_.take();
    known_[running_->origin.path] = {running_->origin, result.value_or(nullptr)};
    running_.reset();
    emit changed();
}

QString TargetRadiation::text() const {
    return QStringLiteral("Radiation of %1: %2 %").arg(running_->name).arg(static_cast<int>(100.0 * *share_));
}
} // namespace sorvane
