// Lists of which some rows are shown.
#include "logic/controls/ListLogic.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("entries are found by their number, the first of several") {
    const NumberedItems items(Items::OfList("c=30;b=-7;a;other=30;x=text"));
    const Row<std::optional<std::int32_t>, std::int32_t> rows[] = {{30, 0}, {-7, 1}, {3, 2}, {5, 4}, {4, {}}};
    CheckRows([&](std::int32_t number) { return items.IndexOf(number); }, rows);
    CHECK(items.LongestNumber() == 2);
    CHECK(NumberedItems().LongestNumber() == 0);
    CHECK_FALSE(NumberedItems().IndexOf(0));
    CHECK(NumberedItems(Items::OfList("a=-2147483648")).LongestNumber() == 11);
    CheckRefused(IsBinary, "", "a\tb\r\n\f\x1A", "\xE4\xFF", "a\x7F");
    CheckTaken(IsBinary, std::string("a\0b", 3),
               std::string("\xFF\xFE"
                           "a\0",
                           4),
               std::string("\x89PNG\r\n\x1B"));
}

TEST_CASE("a list scrolls as little as it must, and never beyond its ends") {
    constexpr auto top = [](std::int32_t entries, std::int32_t rows, std::int32_t entry, std::int32_t from) {
        return ListScroll{entries, rows}.TopShowing(entry, from);
    };
    const Row<std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t> tops[] = {
        {{100, 10, 5, 0}, 0},   {{100, 10, 10, 0}, 1},    {{100, 10, 5, 20}, 5},
        {{100, 10, 99, 0}, 90}, {{100, 10, 95, 200}, 90}, {{5, 10, 4, 3}, 0},
        {{100, 0, 7, 0}, 7},    {{0, 10, 0, 5}, 0},       {{highest, 1, highest - 1, 0}, highest - 1}};
    CheckRows(top, tops);
    using enum ListKey;
    using Mark = std::optional<std::int32_t>;
    constexpr auto mark = [](Mark from, ListKey key) { return ListScroll{100, 10}.MoveMark(from, 30, key); };
    const Row<Mark, Mark, ListKey> marks[] = {{{{}, Down}, 30},    {{{}, End}, 99},      {{5, Up}, 4},
                                              {{0, Up}, 0},        {{99, Down}, 99},     {{5, PageUp}, 0},
                                              {{5, PageDown}, 14}, {{95, PageDown}, 99}, {{50, Home}, 0},
                                              {{5, Left}, {}},     {{highest, Down}, 99}};
    CheckRows(mark, marks);
    CHECK_FALSE(ListScroll{0, 10}.MoveMark(3, 0, Down));
}

TEST_CASE("the thumb of a bar shows what part of a list is seen, and where it is put it stays") {
    constexpr auto thumb = [](std::int32_t entries, std::int32_t rows, std::int32_t top, std::int32_t track) {
        const ListScroll::Thumb at = ListScroll{entries, rows}.ThumbAt(top, track);
        return std::pair(at.start, at.length);
    };
    using Place = std::pair<std::int32_t, std::int32_t>;
    const Row<Place, std::int32_t, std::int32_t, std::int32_t, std::int32_t> places[] = {
        {{100, 25, 0, 200}, {0, 50}},
        {{100, 25, 75, 200}, {150, 50}},
        {{100, 25, highest, 200}, {150, 50}},
        {{5, 10, 0, 200}, {0, 200}},
        {{100'000, 10, 0, 200}, {0, 16}},
        {{100'000, 10, 99'990, 200}, {184, 16}},
        {{100, 10, 50, 8}, {0, 8}},
        {{100, 10, 0, 0}, {0, 0}},
        {{highest, 1, highest, highest}, {highest - 16, 16}}};
    CheckRows(thumb, places);
    for (const std::int32_t entries : {41, 100, 100'000}) {
        const ListScroll scroll{entries, 10};
        const std::int32_t travel = 200 - scroll.ThumbAt(0, 200).length;
        CHECK(scroll.TopOfThumb(-50, 200) == 0);
        CHECK(scroll.TopOfThumb(travel, 200) == entries - 10);
        CHECK(scroll.TopOfThumb(highest, 200) == entries - 10);
        std::int32_t before = 0;
        for (std::int32_t pixel = 0; pixel <= travel; ++pixel) {
            const std::int32_t at = scroll.TopOfThumb(pixel, 200);
            CHECK(at >= before);
            CHECK(std::abs(scroll.ThumbAt(at, 200).start - pixel) <= std::max(travel / (entries - 10), 1));
            before = at;
        }
    }
    CHECK(ListScroll{100, 10}.TopOfThumb(5, 8) == 0);
}
