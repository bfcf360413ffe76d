// The engagement that keys and read-out go by.
#include "currentengagement.h"

#include <algorithm>

#include "etxyz.h"
#include "selection.h"

etxyz* CurrentEngagement::get() const {
    if (etxyz* const selected = selectedEngagement(engagements_))
        return selected;
    const auto found =
        std::ranges::find_if(engagements_, [this](const etxyz* engagement) { return engagement->menu == lastMenu_; });
    return found == engagements_.end() ? nullptr : *found;
}
