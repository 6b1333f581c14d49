// Another address for those that have a certain form: find and replace in bindings.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// What is looked for is an object (AMP1) or an address (AMP1*gain), from the front of an address up to a "*"
// or its end. `%i` and `%o` in it stand for a number, or for the place of a number in a pattern (`%i`,
// `%02i`), and put it into what comes instead: AMP1*gain%i by FOH*ch%02i.fader makes FOH*ch07.fader of
// AMP1*gain7. Objects are compared without regard to case, keywords are not.
class AddressReplacement {
public:
    // Nothing when that cannot be done; why receives the reason in words, empty while one of them is empty.
    static std::optional<AddressReplacement> Parse(std::string_view find, std::string_view replacement,
                                                   std::string& why);

    // The other address; nothing for one that is not what is looked for, or is the same with it.
    std::optional<std::string> Apply(std::string_view address) const;

private:
    struct Token {
        char number = '\0';     // 'i' or 'o'; 0: the text
        std::size_t digits = 1; // at least
        std::size_t length = 0; // as it is written
        std::string text{};
    };
    static std::vector<Token> Split(std::string_view text);

    // What stands for the numbers: digits without leading zeros, or the place of a number as it is written.
    struct Found {
        std::string numbers[2];
    };
    std::optional<Found> Match(std::string_view part, bool isWhole) const;
    std::string Made(const Found& found) const;

    std::vector<Token> find_;
    std::vector<Token> replacement_;
    std::size_t keyword_ = 0; // where the keyword begins in what is looked for; its length without one
};

} // namespace logic
