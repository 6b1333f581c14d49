#include "logic/devices/OpeningValues.h"

#include <utility>

namespace logic {

void OpeningValues::Keep(Value value) {
    Drop(value.address);
    const std::string key = FoldAddress(value.address);
    byAddress_[key] = values_.insert(values_.end(), std::move(value));
}

void OpeningValues::Drop(const std::string& address) {
    if (const auto found = byAddress_.find(FoldAddress(address)); found != byAddress_.end()) {
        values_.erase(found->second);
        byAddress_.erase(found);
    }
}

void OpeningValues::Add(OpeningValues other) {
    for (Value& value : other.values_) {
        Keep(std::move(value));
    }
}

std::vector<OpeningValues::Value> OpeningValues::Expire(std::uint64_t now) {
    if (now < end_) {
        return {};
    }
    byAddress_.clear();
    const std::list<Value> expired = std::exchange(values_, {});
    return {expired.begin(), expired.end()};
}

} // namespace logic
