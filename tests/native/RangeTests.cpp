// Places and parts of the range.
#include "logic/controls/RangeLogic.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

constexpr std::int32_t MARGIN = 4;

std::int32_t Place(std::int32_t length, std::int32_t minimum, std::int32_t maximum, float number) {
    return RangeTrack{length, minimum, maximum}.PlaceOf(number);
}
float NumberAt(std::int32_t length, std::int32_t minimum, std::int32_t maximum, std::int32_t pixel) {
    return RangeTrack{length, minimum, maximum}.NumberAt(pixel);
}

} // namespace

TEST_CASE("a number has its pixel and a pixel its number, whatever the range") {
    const Row<std::int32_t, std::int32_t, std::int32_t, std::int32_t, float> places[] = {
        {{109, 0, 100, 0}, MARGIN},
        {{109, 0, 100, 33}, 33 + MARGIN},
        {{109, 100, 0, 33}, 67 + MARGIN},
        {{109, 0, 100, 1e30F}, 100 + MARGIN},
        {{109, 0, 100, -infinity}, MARGIN},
        {{109, 0, 100, notANumber}, MARGIN},
        {{109, 7, 7, 7}, MARGIN},
        {{109, lowest, highest, 0}, 50 + MARGIN},
        {{1, 0, 100, 100}, 0},
        {{0, 0, 100, 100}, 0}};
    CheckRows(Place, places);
    const Row<float, std::int32_t, std::int32_t, std::int32_t, std::int32_t> numbers[] = {
        {{109, 0, 100, MARGIN - 9}, 0.0F},
        {{109, 0, 100, highest}, 100.0F},
        {{109, 100, 0, 33 + MARGIN}, 67.0F},
        {{159, 0, 100, 50 + MARGIN}, 33.3F}, // two thirds a pixel: in tenths
        {{59, 0, 1000, 7 + MARGIN}, 140.0F}, // 20 a pixel: in tens
        {{109, 7, 7, 50}, 7.0F},
        {{109, 0, -80, lowest}, 0.0F},
        {{4, 0, 100, 1}, 0.0F},
        {{0, 5, 100, 99}, 5.0F}};
    CheckRows(NumberAt, numbers);
    for (std::int32_t pixel = MARGIN; pixel < 200 - MARGIN; ++pixel) { // where it is put, it stays
        CHECK(Place(200, -80, 18, NumberAt(200, -80, 18, pixel)) == pixel);
        CHECK(Place(200, 18, -80, NumberAt(200, 18, -80, pixel)) == pixel);
    }
}

TEST_CASE("the ends of what is permitted never cross, and follow the range") {
    PermittedEnds ends;
    ends.SetLow(60.0F);
    ends.SetHigh(20.0F);
    CHECK(ends.high == 60.0F);
    ends.SetHigh(std::nullopt);
    ends.SetLow(150.0F);
    const auto states = [&](std::int32_t minimum, std::int32_t maximum) {
        const Permitted permitted = PermittedIn(ends, minimum, maximum);
        CHECK(permitted.low <= permitted.high);
        std::string text;
        for (const float value : {-50.0F, 0.0F, 100.0F, 150.0F, 200.0F}) {
            text += std::to_string(permitted.StateOf(value)) + " ";
        }
        return text;
    };
    CHECK(states(0, 100) == "-1 -1 0 1 1 ");
    CHECK(states(200, 0) == "-1 -1 -1 0 0 ");
    ends.SetLow(std::nullopt);
    CHECK(states(100, 0) == "-1 0 0 1 1 ");
    CHECK(LimitToRange(notANumber, 9, -9) == -9.0F);
}

TEST_CASE("the mouse takes the nearest part that it may move") {
    constexpr auto part = [](std::int32_t pixel, bool isAtMarker, float low, float high, float value,
                             bool ends, bool marker) {
        return PartAt({pixel + MARGIN, isAtMarker, ends, marker}, {109, 0, 100}, {low, high}, value);
    };
    using enum RangePart;
    const Row<RangePart, std::int32_t, bool, float, float, float, bool, bool> rows[] = {
        {{26, false, 20, 80, 50, true, true}, Low},
        {{27, false, 20, 80, 50, true, true}, None},
        {{79, false, 20, 80, 50, false, true}, None},
        {{79, false, 20, 80, 76, true, true}, High},
        {{78, false, 20, 80, 76, true, true}, High},
        {{78, true, 20, 80, 76, true, true}, Value},
        {{80, true, 20, 80, 80, true, false}, High},
        {{49, false, 50, 50, 90, true, true}, Low}, // one end on the other: towards the mouse
        {{51, false, 50, 50, 90, true, true}, High},
        {{0, false, 0, 0, 90, true, true}, High}, // where only one has room
        {{100, false, 100, 100, 9, true, true}, Low}};
    CheckRows(part, rows);
}
