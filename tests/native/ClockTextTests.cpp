#include "logic/ClockText.h"

#include <limits>

#include <doctest/doctest.h>

using namespace logic;

TEST_CASE("a clock names the time in English and German") {
    struct Row {
        CalendarTime time;
        const char* english;
        const char* german;
    };
    const Row rows[] = {
        {{2025, 3, 3, 1, 9, 5, 7}, "9:05:07\nMonday\n3. March 2025", "9:05:07\nMontag\n3. M\xE4rz 2025"},
        {{2026, 11, 14, 6, 0, 0, 0},
         "0:00:00\nSaturday\n14. November 2026",
         "0:00:00\nSamstag\n14. November 2026"},
        {{2024, 2, 29, 4, 23, 59, 59},
         "23:59:59\nThursday\n29. February 2024",
         "23:59:59\nDonnerstag\n29. Februar 2024"},
        {{2023, 1, 1, 0, 10, 10, 10},
         "10:10:10\nSunday\n1. January 2023",
         "10:10:10\nSonntag\n1. Januar 2023"},
        {{2030, 12, 31, 2, 1, 2, 3},
         "1:02:03\nTuesday\n31. December 2030",
         "1:02:03\nDienstag\n31. Dezember 2030"},
        {{2031, 10, 1, 3, 1, 2, 3},
         "1:02:03\nWednesday\n1. October 2031",
         "1:02:03\nMittwoch\n1. Oktober 2031"},
        {{2031, 5, 2, 5, 1, 2, 3}, "1:02:03\nFriday\n2. May 2031", "1:02:03\nFreitag\n2. Mai 2031"},
        // What does not exist has no name.
        {{2031, 13, 2, 7, 1, 2, 3}, "1:02:03\n\n2.  2031", "1:02:03\n\n2.  2031"},
        {{2031, std::numeric_limits<int>::min(), 2, -1, 1, 2, 3},
         "1:02:03\n\n2.  2031",
         "1:02:03\n\n2.  2031"},
    };
    for (const Row& row : rows) {
        CHECK(ClockText(row.time, ClockLanguage::English) == row.english);
        CHECK(ClockText(row.time, ClockLanguage::German) == row.german);
    }
    const char* const germanMonths[] = {"Januar", "Februar", "M\xE4rz",   "April",   "Mai",      "Juni",
                                        "Juli",   "August",  "September", "Oktober", "November", "Dezember"};
    const char* const englishMonths[] = {"January",   "February", "March",    "April",
                                         "May",       "June",     "July",     "August",
                                         "September", "October",  "November", "December"};
    for (int month = 1; month <= 12; ++month) {
        const CalendarTime time{2025, month, 1, 0, 0, 0, 0};
        CHECK(ClockText(time, ClockLanguage::German) ==
              std::string("0:00:00\nSonntag\n1. ") + germanMonths[month - 1] + " 2025");
        CHECK(ClockText(time, ClockLanguage::English) ==
              std::string("0:00:00\nSunday\n1. ") + englishMonths[month - 1] + " 2025");
    }
}

TEST_CASE("German is spoken in every German-speaking country") {
    for (const std::uint16_t german : {0x0407, 0x0807, 0x0C07, 0x1007, 0x1407, 0x0007}) {
        CHECK(ClockLanguageOf(german) == ClockLanguage::German);
    }
    for (const std::uint16_t other : {0x0409, 0x040C, 0x0000, 0x0417, 0x0413}) {
        CHECK(ClockLanguageOf(other) == ClockLanguage::English);
    }
}
