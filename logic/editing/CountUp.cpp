#include "logic/editing/CountUp.h"

#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>

namespace logic {

namespace {

constexpr std::size_t LONGEST_NUMBER = 8; // digits

struct Number {
    std::size_t from;
    std::size_t length;
};

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

std::vector<Number> NumbersIn(std::string_view text) {
    std::vector<Number> numbers;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t from = i;
        while (i < text.size() && IsDigit(text[i])) {
            ++i;
        }
        if (i > from && i - from <= LONGEST_NUMBER) {
            numbers.push_back({from, i - from});
        }
        i += i == from ? 1 : 0;
    }
    return numbers;
}

int ValueOf(std::string_view text, const Number& number) {
    return std::atoi(std::string(text.substr(number.from, number.length)).c_str());
}

std::string Counted(std::string_view text, const Number& number, int by) {
    const std::string value = std::to_string(std::max(0, ValueOf(text, number) + by));
    const bool isPadded = text[number.from] == '0';
    std::string counted(text.substr(0, number.from));
    counted.append(isPadded ? number.length - std::min(number.length, value.size()) : 0, '0');
    return counted + value + std::string(text.substr(number.from + number.length));
}

// Words that stand for the same in names of controls and of parameters, the likeliest first: where there is a
// gain beside it, a level is what is measured.
constexpr std::array<std::array<std::string_view, 5>, 9> ALIKE{{
    {"fader", "gain", "volume", "level", ""},
    {"mute", "muted", "on", "", ""},
    {"solo", "pfl", "", "", ""},
    {"inv", "polarity", "phase", "invert", "inverted"},
    {"stereo", "pan", "balance", "", ""},
    {"label", "name", "caption", "", ""},
    {"meter", "level", "signal", "peak", ""},
    {"led0db", "clip", "peak", "overload", "level"},
    {"ledsig", "signal", "sig", "level", ""},
}};

// The letters of a name in lower case.
std::string LettersOf(std::string_view text) {
    std::string letters = FoldName(text);
    std::erase_if(letters, [](char letter) { return letter < 'a' || letter > 'z'; });
    return letters;
}

// What a keyword of a series is called without its number: "ch%02i.fader" is "fader", "gain%i" "gain".
std::string WordOf(const std::string& pattern) {
    const std::size_t place = pattern.find('%');
    const std::string tail = pattern.substr(pattern.find('i', place) + 1);
    const std::string last = LettersOf(tail.substr(tail.find_last_of("._/") + 1)); // npos + 1: all of it
    return !last.empty() ? last : LettersOf(pattern.substr(0, place));
}

} // namespace

std::string CountedUp(std::string_view text, int by) {
    const std::vector<Number> numbers = NumbersIn(text);
    return numbers.empty() ? std::string(text) : Counted(text, numbers.back(), by);
}

std::string CountedUpAddress(std::string_view address, int by, bool isOfDevice,
                             const std::function<bool(const std::string& address)>& exists) {
    const std::size_t star = address.rfind('*');
    std::vector<Number> behind;
    std::vector<Number> inFront;
    for (const Number& number : NumbersIn(address)) {
        (star == std::string_view::npos || number.from < star ? inFront : behind).push_back(number);
    }
    std::vector<Number> tried = behind;
    tried.insert(tried.end(), inFront.rbegin(), inFront.rend());
    for (const Number& number : tried) {
        if (std::string counted = Counted(address, number, by); exists(counted)) {
            return counted;
        }
    }
    return isOfDevice && !behind.empty() ? Counted(address, behind.front(), by) : std::string(address);
}

std::vector<KeywordSeries> FindSeries(const std::vector<std::string>& keywords) {
    struct Found {
        std::string pattern;
        std::vector<int> numbers;
        std::size_t digits = 0;
    };
    std::vector<Found> found;
    std::map<std::string, std::size_t> places;
    for (const std::string& keyword : keywords) {
        const std::vector<Number> numbers = NumbersIn(keyword);
        if (numbers.empty() || keyword.find('%') != std::string::npos) {
            continue;
        }
        const Number& number = numbers.front();
        const std::string frame =
            keyword.substr(0, number.from) + "%" + keyword.substr(number.from + number.length);
        const auto [place, isNew] = places.try_emplace(frame, found.size());
        if (isNew) {
            found.push_back({frame, {}, 0});
        }
        Found& one = found[place->second];
        one.numbers.push_back(ValueOf(keyword, number));
        if (keyword[number.from] == '0' && number.length > 1) {
            one.digits = number.length;
        }
    }
    std::vector<KeywordSeries> series;
    for (Found& one : found) {
        if (one.numbers.size() < 2) {
            continue;
        }
        const auto [first, last] = std::minmax_element(one.numbers.begin(), one.numbers.end());
        const std::string sign = one.digits > 0 ? "%0" + std::to_string(one.digits) + "i" : "%i";
        one.pattern.replace(one.pattern.find('%'), 1, sign);
        series.push_back({one.pattern, *first, *last});
    }
    return series;
}

int SeriesFor(std::string_view name, const std::vector<KeywordSeries>& series) {
    const std::string letters = LettersOf(name);
    const std::string folded = FoldName(name);
    if (letters.empty()) {
        return -1;
    }
    const auto find = [&](std::string_view word) {
        const auto is = [&](const KeywordSeries& one) { return WordOf(one.pattern) == word; };
        const auto found = std::find_if(series.begin(), series.end(), is);
        return word.empty() || found == series.end() ? -1 : static_cast<int>(found - series.begin());
    };
    if (const int same = find(letters); same >= 0) {
        return same;
    }
    for (const auto& words : ALIKE) {
        if (std::find(words.begin(), words.end(), letters) == words.end() && words.front() != folded) {
            continue;
        }
        for (const std::string_view word : words) {
            if (const int alike = find(word); alike >= 0) {
                return alike;
            }
        }
    }
    return -1;
}

} // namespace logic
