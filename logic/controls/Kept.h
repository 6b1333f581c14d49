// A value that is made once for what it depends on.
#pragma once

#include <optional>
#include <utility>

namespace logic {

template <class Key, class Value>
class Kept {
public:
    // make: answers the value for that key.
    template <class Make>
    const Value& Get(const Key& key, Make make) {
        if (key_ != key) {
            value_ = make();
            key_ = key;
        }
        return value_;
    }

private:
    std::optional<Key> key_;
    Value value_{};
};

} // namespace logic
