// When what is due, and how much may be sent.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "logic/devices/DeviceLink.h"

namespace logic {

constexpr Milliseconds NEVER = std::numeric_limits<Milliseconds>::max();

// Things by their numbers, each with the time at which it is due.
class Agenda {
public:
    // A thing has one time: the last that was said.
    void Put(std::size_t thing, Milliseconds due) {
        Drop(thing);
        due_[thing] = due;
        order_.emplace(due, thing);
    }
    void Drop(std::size_t thing) {
        if (const auto found = due_.find(thing); found != due_.end()) {
            order_.erase({found->second, thing});
            due_.erase(found);
        }
    }
    void Clear() {
        due_.clear();
        order_.clear();
    }
    bool Has(std::size_t thing) const { return due_.contains(thing); }
    std::size_t Size() const { return due_.size(); }
    // The first that is due; it stays.
    std::optional<std::size_t> Due(Milliseconds now) const {
        return !order_.empty() && order_.begin()->first <= now ? std::optional(order_.begin()->second)
                                                               : std::nullopt;
    }
    // The same, and it is taken off.
    std::optional<std::size_t> Take(Milliseconds now) {
        const auto thing = Due(now);
        if (thing) {
            Drop(*thing);
        }
        return thing;
    }
    Milliseconds Next() const { return order_.empty() ? NEVER : order_.begin()->first; }

private:
    std::set<std::pair<Milliseconds, std::size_t>> order_;
    std::unordered_map<std::size_t, Milliseconds> due_;
};

// So many a second, and a few at once.
class TokenBucket {
public:
    TokenBucket(std::uint32_t rate, std::uint32_t burst)
        : rate_(rate), most_(std::int64_t{burst} * TOKEN), tokens_(most_) {}

    void Fill(Milliseconds now) {
        if (now > filled_) {
            const auto passed = static_cast<std::int64_t>(std::min<Milliseconds>(now - filled_, TOKEN));
            tokens_ = std::min(most_, tokens_ + passed * rate_);
            filled_ = now;
        }
    }
    bool HasToken() const { return tokens_ >= TOKEN; }
    // Below zero, too: what must go goes, and what follows waits for longer.
    void Take() { tokens_ -= TOKEN; }
    // When there is one, as things are.
    Milliseconds Next() const {
        const std::int64_t missing = TOKEN - tokens_;
        return missing <= 0 ? filled_ : filled_ + static_cast<Milliseconds>((missing + rate_ - 1) / rate_);
    }

private:
    static constexpr std::int64_t TOKEN = 1000; // a second at a rate of one

    std::int64_t rate_;
    std::int64_t most_;
    std::int64_t tokens_;
    Milliseconds filled_ = 0;
};

} // namespace logic
