#include "logic/controls/ClockText.h"

#include <cstdio>

namespace logic {

namespace {

struct Names {
    const char* months[12];
    const char* weekdays[7];
};

constexpr Names ENGLISH = {
    {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
     "November", "December"},
    {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"},
};
// The umlaut is written as its Windows-1252 byte, which does not depend on the character set of the compiler.
constexpr Names GERMAN = {
    {"Januar", "Februar", "M\xE4rz", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober",
     "November", "Dezember"},
    {"Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag"},
};

template <int Count>
const char* NameAt(const char* const (&names)[Count], int index) {
    return index >= 0 && index < Count ? names[index] : "";
}

} // namespace

ClockLanguage ClockLanguageOf(std::uint16_t languageIdentifier) {
    constexpr int primaryMask = 0x3FF;
    constexpr int german = 7;
    return (languageIdentifier & primaryMask) == german ? ClockLanguage::German : ClockLanguage::English;
}

std::string ClockText(const CalendarTime& time, ClockLanguage language) {
    const Names& names = language == ClockLanguage::German ? GERMAN : ENGLISH;
    char text[128];
    std::snprintf(text, sizeof text, "%d:%02d:%02d\n%s\n%d. %s %d", time.hour, time.minute, time.second,
                  NameAt(names.weekdays, time.weekday), time.day,
                  NameAt(names.months, static_cast<int>(static_cast<std::int64_t>(time.month) - 1)),
                  time.year);
    return text;
}

} // namespace logic
