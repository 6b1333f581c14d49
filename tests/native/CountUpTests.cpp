// Numbers that are counted on from copy to copy, and the keywords of a device that differ in one.
#include "logic/editing/CountUp.h"
#include "tests/native/Tables.h"

#include <algorithm>
#include <set>

using namespace logic;

TEST_CASE("the last number of a text is counted on") {
    const Row<std::string, std::string, int> rows[] = {
        {{"Mic 1", 2}, "Mic 3"},
        {{"ch09", 1}, "ch10"},
        {{"ch099", 1}, "ch100"},
        {{"Mic", 3}, "Mic"},
        {{"Room 2 Mic 7", 1}, "Room 2 Mic 8"},
        {{"0", 1}, "1"},
        {{"00", 1}, "01"},
        {{"", 1}, ""},
        {{"3 left", 10}, "13 left"},
        {{"123456789", 1}, "123456789"}, // no number that anybody counts
    };
    CheckRows([](const std::string& text, int by) { return CountedUp(text, by); }, rows);
}

TEST_CASE("of the numbers in an address the one is counted on that leads to something") {
    const std::set<std::string> there{"AMP1*gain2", "FOH*ch02.eq1.gain", "FOH*ch01.eq2.gain", "AMP2*on",
                                      "Mic 2",      "Mic 2*value",       "DSP1*ch9eq4"};
    const auto counted = [&](const std::string& address, int by, bool isOfDevice) {
        return CountedUpAddress(address, by, isOfDevice,
                                [&](const std::string& other) { return there.contains(other); });
    };
    const Row<std::string, std::string, int, bool> rows[] = {
        {{"AMP1*gain1", 1, true}, "AMP1*gain2"},
        {{"FOH*ch01.eq1.gain", 1, true}, "FOH*ch02.eq1.gain"}, // the channel before the band
        {{"DSP1*ch9eq3", 1, true}, "DSP1*ch9eq4"},             // the only one there is
        {{"AMP1*on", 1, true}, "AMP2*on"},                     // the number of the device
        {{"AMP1*off", 1, true}, "AMP1*off"},
        {{"AMP1*gain7", 1, true}, "AMP1*gain8"}, // the device may not be there yet
        {{"Mic 1*value", 1, false}, "Mic 2*value"},
        {{"Mic 1", 1, false}, "Mic 2"},
        {{"Mic 2", 1, false}, "Mic 2"}, // all control the same
    };
    CheckRows(counted, rows);
}

TEST_CASE("series among keywords, and the one for a control") {
    const std::vector<std::string> keywords{
        "name",       "gain1",      "gain2",      "gain3",         "mute1",         "mute2",
        "ch01.fader", "ch02.fader", "ch10.fader", "ch01.eq1.gain", "ch02.eq1.gain", "ch01.eq2.gain",
        "single4",    "level1",     "level2",     "100%1",         "100%2"};
    const std::vector<KeywordSeries> series = FindSeries(keywords);
    std::string found;
    for (const KeywordSeries& one : series) {
        found += one.pattern + " " + std::to_string(one.first) + "-" + std::to_string(one.last) + "; ";
    }
    CHECK(found == "gain%i 1-3; mute%i 1-2; ch%02i.fader 1-10; ch%02i.eq1.gain 1-2; level%i 1-2; ");
    const auto patternFor = [&](const std::string& name) {
        const int place = SeriesFor(name, series);
        return place < 0 ? "" : series[static_cast<std::size_t>(place)].pattern;
    };
    const Row<std::string, std::string> rows[] = {
        {{"Fader"}, "ch%02i.fader"},
        {{"MUTE"}, "mute%i"},
        {{"Gain 3"}, "gain%i"},
        {{"Volume"}, "ch%02i.fader"},
        {{"SOLO"}, ""},
        {{"Meter"}, "level%i"},
        {{"Label"}, ""},
        {{"LedSig"}, "level%i"},
        {{""}, ""},
    };
    CheckRows(patternFor, rows);
    CHECK(SeriesFor("Fader", {}) == -1);
    CHECK(SeriesFor("Fader", FindSeries({"level1", "level2", "gain1", "gain2"})) ==
          1); // not what is measured
    CHECK(FindSeries({}).empty());
}
