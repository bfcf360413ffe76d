// The engagement that keys and read-out go by.
#include "currentengagement.h"

namespace sorvane {
const LoadedEngagement* CurrentEngagement::get() const {
    const LoadedEngagement* const selected = engagements_.selected();
    return selected != nullptr ? selected : engagements_.find(last_);
}
} // namespace sorvane
