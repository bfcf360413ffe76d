// The engagement that keys and read-out go by.
#include "currentengagement.h"

const LoadedEngagement* CurrentEngagement::get() const {
    const LoadedEngagement* const selected = engagements_.selected();
    return selected != nullptr ? selected : engagements_.find(last_);
}
