// Counting on the numbers in names, captions and addresses, for one copy after the other.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// The text with its last number counted on: "Mic 1" by 2 is "Mic 3", "ch09" by 1 "ch10". Digits in front of a
// shorter number stay as many. A text without a number stays as it is.
std::string CountedUp(std::string_view text, int by);

// The address with the one of its numbers counted on that leads to something: those behind the last "*" are
// tried first, the first of them first, then those in front, the last of them first. Where no number does,
// what names a parameter of a device counts the first number of its keyword on, and anything else stays.
std::string CountedUpAddress(std::string_view address, int by, bool isOfDevice,
                             const std::function<bool(const std::string& address)>& exists);

// A series of keywords that differ in one number: "%i" stands for it, "%02i" for one of at least two digits,
// as in logic::ExpandPattern.
struct KeywordSeries {
    std::string pattern; // "gain%i", "ch%02i.fader"
    int first = 0;
    int last = 0;
};
// The series of two and more among some keywords, in the order in which they begin.
std::vector<KeywordSeries> FindSeries(const std::vector<std::string>& keywords);
// The series that a control of that name and class is most likely for: "Fader" for "ch%02i.fader" or
// "gain%i", "MUTE" for "mute%i". Its place, or -1.
int SeriesFor(std::string_view name, const std::vector<KeywordSeries>& series);

} // namespace logic
