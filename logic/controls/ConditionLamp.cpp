#include "logic/controls/ConditionLamp.h"

#include <algorithm>

namespace logic {

void ConditionLamp::Take(std::optional<bool> holds, std::uint32_t now) {
    if (!holds) {
        isUnknown_ = true;
        return;
    }
    if (isUnknown_ || *holds != holds_) {
        since_ = now;
        isSeen_ = isSeen_ && !(*holds && !holds_); // it holds anew
    }
    isUnknown_ = false;
    holds_ = *holds;
    Advance(now);
}

std::optional<std::uint32_t> ConditionLamp::UntilChange(std::uint32_t now) const {
    if (isUnknown_ || holds_ == isLit_ || (isLit_ && latch && !isSeen_)) {
        return std::nullopt;
    }
    const std::uint32_t delay = holds_ ? delayOn : delayOff;
    return delay - std::min(now - since_, delay);
}

void ConditionLamp::Advance(std::uint32_t now) {
    if (UntilChange(now) == 0U) {
        isLit_ = holds_;
        isSeen_ = false;
        litSince_ = now;
    }
}

void ConditionLamp::Acknowledge(std::uint32_t now) {
    isSeen_ = isLit_;
    Advance(now);
}

bool ConditionLamp::IsBright(std::uint32_t now) const {
    return isLit_ && (blink == 0 || (now - litSince_) % blink < blink - blink / 2);
}

std::optional<std::uint32_t> ConditionLamp::DueIn(std::uint32_t now) const {
    auto due = UntilChange(now);
    if (isLit_ && !isUnknown_ && blink > 1) {
        const std::uint32_t phase = (now - litSince_) % blink;
        const std::uint32_t bright = blink - blink / 2;
        const std::uint32_t turn = (phase < bright ? bright : blink) - phase;
        due = std::min(due.value_or(turn), turn);
    }
    return due;
}

} // namespace logic
