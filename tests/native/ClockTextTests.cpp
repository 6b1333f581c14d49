#include "logic/ClockText.h"

#include <limits>

#include <doctest/doctest.h>

using namespace logic;

TEST_CASE("a clock names the time in English and German") {
    const CalendarTime time{2025, 3, 3, 1, 9, 5, 7};
    CHECK(ClockText(time, ClockLanguage::English) == "9:05:07\nMonday\n3. March 2025");
    CHECK(ClockText(time, ClockLanguage::German) == "9:05:07\nMontag\n3. M\xE4rz 2025");
    const char* const days[] = {
        "Sunday/Sonntag",      "Monday/Montag",  "Tuesday/Dienstag", "Wednesday/Mittwoch",
        "Thursday/Donnerstag", "Friday/Freitag", "Saturday/Samstag", "/"}; // what does not exist has no name
    const char* const months[] = {"January/Januar",
                                  "February/Februar",
                                  "March/M\xE4rz",
                                  "April/April",
                                  "May/Mai",
                                  "June/Juni",
                                  "July/Juli",
                                  "August/August",
                                  "September/September",
                                  "October/Oktober",
                                  "November/November",
                                  "December/Dezember",
                                  "/"};
    for (int month = 1; month <= 13; ++month) {
        const int weekday = (month - 1) % 8;
        const CalendarTime row{2024, month, 31, weekday, 23, 0, 59};
        const std::string day = days[weekday];
        const std::string name = months[month - 1];
        const auto text = [](const std::string& dayName, const std::string& monthName) {
            return "23:00:59\n" + dayName + "\n31. " + monthName + " 2024";
        };
        CHECK(ClockText(row, ClockLanguage::English) ==
              text(day.substr(0, day.find('/')), name.substr(0, name.find('/'))));
        CHECK(ClockText(row, ClockLanguage::German) ==
              text(day.substr(day.find('/') + 1), name.substr(name.find('/') + 1)));
    }
    const int lowest = std::numeric_limits<int>::min();
    CHECK(ClockText({1, lowest, 2, -1, 0, 0, 0}, ClockLanguage::German) == "0:00:00\n\n2.  1");
}

TEST_CASE("German is spoken in every German-speaking country") {
    for (const std::uint16_t german : {0x0407, 0x0807, 0x0C07, 0x1007, 0x1407, 0x0007}) {
        CHECK(ClockLanguageOf(german) == ClockLanguage::German);
    }
    for (const std::uint16_t other : {0x0409, 0x040C, 0x0000, 0x0417, 0x0413}) {
        CHECK(ClockLanguageOf(other) == ClockLanguage::English);
    }
}
