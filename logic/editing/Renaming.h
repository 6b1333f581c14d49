// How texts that name objects follow objects that get other names.
#pragma once

#include "logic/text/AddressText.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// Full names. All that is inside an object goes with it.
struct NewName {
    std::string from;
    std::string to;
};

class Renaming {
public:
    // Whether an object has that full name before.
    using Exists = std::function<bool(const std::string& fullName)>;

    Renaming(std::vector<NewName> names, Exists exists)
        : names_(std::move(names)), exists_(std::move(exists)) {}

    // The name that an object has afterwards.
    std::string After(std::string_view fullName) const;

    struct Followed {
        std::string address; // the same where it names nothing that is renamed
        // It names then what it names now. False when it cannot: a pattern of which one name alone changes,
        // or a name that means something else as soon as the new ones are there.
        bool keepsMeaning = true;
    };
    // Where an address stands.
    struct Holder {
        std::string name;      // full name of the control
        bool isInLine = false; // in the value of a property line for later
        int inputs = 0;        // of a pattern
        int outputs = 0;
    };
    // What an address becomes, as FindAddresses finds it.
    Followed Follow(AddressForm form, std::string_view address, const Holder& holder) const;

private:
    // Where a text stands: paths and names now and then.
    struct Place;
    struct Found {
        std::string object;
        std::string rest; // "*keyword", or empty
        bool isRelative = false;
    };

    bool ExistsAfter(const std::string& fullName) const;
    static std::optional<Found> Find(std::string_view name, const std::string& path, const Place& place,
                                     const Exists& exists);
    Followed FollowName(std::string_view name, const Place& place) const;
    Followed FollowPattern(std::string_view pattern, const Holder& holder, const Place& place) const;

    std::vector<NewName> names_;
    Exists exists_;
};

} // namespace logic
