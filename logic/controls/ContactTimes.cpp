#include "logic/controls/ContactTimes.h"

#include <algorithm>

namespace logic {

void ContactTimes::Close(std::uint32_t now) {
    isClosed_ = true;
    isAskedToOpen_ = false;
    closedAt_ = now;
}

std::optional<std::uint32_t> ContactTimes::DueIn(std::uint32_t now) const {
    if (!isClosed_ || (!isAskedToOpen_ && maximum <= 0)) {
        return std::nullopt;
    }
    const std::int32_t stays = isAskedToOpen_ ? std::max(minimum, 0) : std::max(minimum, maximum);
    const std::uint32_t passed = now - closedAt_;
    const auto due = static_cast<std::uint32_t>(stays);
    return passed >= due ? 0 : due - passed;
}

} // namespace logic
