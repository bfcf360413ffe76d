// Owns the registered engagements.
#include "keptengagements.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "etxyz.h"

namespace {
std::vector<std::unique_ptr<etxyz>>& keptEngagements() {
    static auto* const kept = new std::vector<std::unique_ptr<etxyz>>;
    return *kept;
}
} // namespace

void keepUntilExit(std::unique_ptr<etxyz> engagement) {
    keptEngagements().push_back(std::move(engagement));
}

std::unique_ptr<etxyz> exchangeKept(const etxyz& old, std::unique_ptr<etxyz> fresh) {
    const auto place = std::ranges::find(keptEngagements(), &old, &std::unique_ptr<etxyz>::get);
    return std::exchange(*place, std::move(fresh));
}
