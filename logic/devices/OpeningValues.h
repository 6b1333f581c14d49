// What a panel that is opened asks of its devices, kept until they can be reached.
#pragma once

#include "logic/text/PropertyLine.h"

#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

namespace logic {

class OpeningValues {
public:
    struct Value {
        std::string address; // OBJECT*keyword
        int datatype = 0;
        std::string bytes;
    };

    static constexpr std::uint64_t patience = 10000; // milliseconds that a device has to appear

    bool IsEmpty() const { return values_.empty(); }
    bool Has(const std::string& address) const { return byAddress_.contains(FoldAddress(address)); }
    // Of several values for one address the last one counts, and its place in the order.
    void Keep(Value value);
    void Drop(const std::string& address);
    // Takes over what another one keeps.
    void Add(OpeningValues other);
    // All values, in order.
    std::vector<Value> All() const { return {values_.begin(), values_.end()}; }
    // The values have until "patience" after this moment.
    void Start(std::uint64_t now) { end_ = now + patience; }
    // When that time is over: takes all values out and returns them.
    std::vector<Value> Expire(std::uint64_t now);

private:
    std::list<Value> values_;
    std::unordered_map<std::string, std::list<Value>::iterator> byAddress_;
    std::uint64_t end_ = 0;
};

} // namespace logic
