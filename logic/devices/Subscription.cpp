#include "logic/devices/Subscription.h"

#include "logic/devices/Simulation.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

namespace {

bool IsChannelAtDevice(std::string_view text) {
    const std::size_t at = text.find('@');
    return at != std::string_view::npos && !TrimBlanks(text.substr(0, at)).empty() &&
           !TrimBlanks(text.substr(at + 1)).empty() && text.find('@', at + 1) == std::string_view::npos;
}

} // namespace

std::optional<Subscription> Subscription::Parse(std::string_view text) {
    const std::size_t comma = std::min(text.find(','), text.size());
    const auto time = ParseWholeInteger(text.substr(0, comma));
    if (!time || *time < 0 || *time > static_cast<std::int32_t>(MAXIMUM_TIME_CONSTANT)) {
        return std::nullopt;
    }
    Subscription subscription;
    subscription.resolving_ = static_cast<std::uint32_t>(*time);
    subscription.offered_ = TrimBlanks(text.substr(std::min(comma + 1, text.size())));
    return subscription;
}

SubscriptionState Subscription::Step(std::string_view subscribed, std::string_view offered,
                                     std::uint32_t elapsedMilliseconds) {
    const bool isOther = subscribed != subscribed_;
    if (isOther || offered != offered_) {
        subscribed_ = subscribed;
        offered_ = offered;
        isOffered_ = Items::OfList(offered_).IndexOfValue(subscribed_).has_value();
    }
    waited_ = isOther ? 0 : waited_ + std::min(elapsedMilliseconds, MAXIMUM_TIME_CONSTANT - waited_);
    if (TrimBlanks(subscribed_).empty()) {
        return SubscriptionState::None;
    }
    if (!IsChannelAtDevice(subscribed_)) {
        return SubscriptionState::WrongFormat;
    }
    if (waited_ < resolving_) {
        return SubscriptionState::Resolving;
    }
    return isOffered_ ? SubscriptionState::Subscribed : SubscriptionState::Unresolved;
}

} // namespace logic
