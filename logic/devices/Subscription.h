// What a simulated receive channel of an audio network does with the transmit channel it is subscribed to.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "logic/text/Items.h"

namespace logic {

enum class SubscriptionState { None, Subscribed, Resolving, Unresolved, WrongFormat };

class Subscription {
public:
    // "time,items" as it stands behind the word `subscription`: the milliseconds that a subscription is being
    // resolved, up to MAXIMUM_TIME_CONSTANT, and the channels that are offered. Nothing when the time is
    // unreadable.
    static std::optional<Subscription> Parse(std::string_view text);

    const std::string& Offered() const { return offered_; }

    // One step. A subscription "channel@device" is resolved for its time whenever it is another one, and is
    // there then if it is among what is offered; one of another form never is.
    SubscriptionState Step(std::string_view subscribed, std::string_view offered,
                           std::uint32_t elapsedMilliseconds);

private:
    std::uint32_t resolving_ = 0;
    std::uint32_t waited_ = 0;
    std::string subscribed_;
    std::string offered_; // what isOffered_ is of
    bool isOffered_ = false;
};

} // namespace logic
