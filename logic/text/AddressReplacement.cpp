#include "logic/text/AddressReplacement.h"

#include "logic/text/NamePattern.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

namespace {

constexpr std::size_t LONGEST_NUMBER = 9;

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

std::size_t IndexOf(char number) {
    return number == 'i' ? 0 : 1;
}

bool HasNumber(const std::string& numbers, char number) {
    return numbers.find(number) != std::string::npos;
}

} // namespace

std::vector<AddressReplacement::Token> AddressReplacement::Split(std::string_view text) {
    std::vector<Token> tokens;
    while (!text.empty()) {
        if (const auto place = NumberPlaceAt(text)) {
            tokens.push_back({place->letter, place->digits, place->length, {}});
            text.remove_prefix(place->length);
            continue;
        }
        if (tokens.empty() || tokens.back().number != '\0') {
            tokens.emplace_back();
        }
        tokens.back().text += text.front();
        text.remove_prefix(1);
    }
    return tokens;
}

std::optional<AddressReplacement> AddressReplacement::Parse(std::string_view find,
                                                            std::string_view replacement, std::string& why) {
    why.clear();
    find = TrimBlanks(find);
    replacement = TrimBlanks(replacement);
    if (find.empty() || replacement.empty()) {
        return std::nullopt;
    }
    if (replacement.find_first_of(";=") != std::string_view::npos ||
        std::any_of(replacement.begin(), replacement.end(), IsControl)) {
        why = "An address holds neither ; nor =";
        return std::nullopt;
    }
    AddressReplacement made;
    made.find_ = Split(find);
    made.replacement_ = Split(replacement);
    const auto star = find.rfind('*');
    made.keyword_ = star == std::string_view::npos ? find.size() : star + 1;
    std::string found;
    for (const Token& token : made.find_) {
        if (token.number != '\0') {
            found += token.number;
        }
    }
    for (const Token& token : made.replacement_) {
        if (token.number != '\0' && !HasNumber(found, token.number)) {
            why = std::string("There is no %") + token.number + " in what is looked for";
            return std::nullopt;
        }
    }
    return made;
}

// Whether the part is what is looked for. The whole of an address ends with a keyword, parts of it do not.
std::optional<AddressReplacement::Found> AddressReplacement::Match(std::string_view part,
                                                                   bool isWhole) const {
    Found found;
    std::size_t looked = 0; // letters of what is looked for
    for (const Token& token : find_) {
        if (token.number == '\0') {
            const std::string_view piece = part.substr(0, token.text.size());
            const std::size_t ofObject = isWhole ? std::max(keyword_, looked) - looked : piece.size();
            const std::size_t folded = std::min(ofObject, token.text.size());
            if (piece.size() != token.text.size() ||
                FoldName(piece.substr(0, folded)) != FoldName(token.text.substr(0, folded)) ||
                piece.substr(folded) != std::string_view(token.text).substr(folded)) {
                return std::nullopt;
            }
            part.remove_prefix(piece.size());
            looked += piece.size();
            continue;
        }
        std::string number;
        if (const auto place = NumberPlaceAt(part)) {
            number = part.substr(0, place->length);
            part.remove_prefix(place->length);
        } else {
            std::size_t digits = 0;
            while (digits < part.size() && digits < LONGEST_NUMBER && IsDigit(part[digits])) {
                ++digits;
            }
            if (digits == 0) {
                return std::nullopt;
            }
            number = std::to_string(std::stoul(std::string(part.substr(0, digits))));
            part.remove_prefix(digits);
        }
        std::string& known = found.numbers[IndexOf(token.number)];
        if (!known.empty() && known != number) {
            return std::nullopt;
        }
        known = number;
        looked += token.length;
    }
    return part.empty() ? std::optional(found) : std::nullopt;
}

std::string AddressReplacement::Made(const Found& found) const {
    std::string made;
    for (const Token& token : replacement_) {
        if (token.number == '\0') {
            made += token.text;
            continue;
        }
        const std::string& number = found.numbers[IndexOf(token.number)];
        if (!IsDigit(number.front())) { // the place of one in a pattern
            made += token.digits > 1 ? "%0" + std::to_string(token.digits) : "%";
            made += number.back();
        } else {
            made.append(token.digits - std::min(token.digits, number.size()), '0');
            made += number;
        }
    }
    return made;
}

std::optional<std::string> AddressReplacement::Apply(std::string_view address) const {
    for (std::size_t end = 0; end <= address.size(); ++end) {
        if (end < address.size() && address[end] != '*') {
            continue;
        }
        if (const auto found = Match(address.substr(0, end), end == address.size())) {
            const std::string made = Made(*found) + std::string(address.substr(end));
            return made == address ? std::nullopt : std::optional(made);
        }
    }
    return std::nullopt;
}

} // namespace logic
