// What a clock shows: local time, weekday and date as three lines.
#pragma once

#include <cstdint>
#include <string>

namespace logic {

struct CalendarTime {
    int year;
    int month;   // 1 to 12
    int day;     // of the month, from 1
    int weekday; // 0 to 6, Sunday first
    int hour;    // 0 to 23
    int minute;
    int second;

    bool operator==(const CalendarTime&) const = default;
};

enum class ClockLanguage { English, German };

// German for every language identifier whose primary language (the low ten bits) is German, English for all
// others.
ClockLanguage ClockLanguageOf(std::uint16_t languageIdentifier);

// "9:05:07\nMonday\n3. March 2025" in Windows-1252; the date has the same shape in both languages. A month or
// weekday that does not exist has no name.
std::string ClockText(const CalendarTime& time, ClockLanguage language);

} // namespace logic
