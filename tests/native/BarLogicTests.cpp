// What a bar shows: places along its travel, colours, and its motion.
#include "logic/controls/BarLogic.h"
#include "tests/native/Tables.h"

#include <algorithm>

using namespace logic;

namespace {

constexpr std::uint32_t GREEN = 0x40C040, AMBER = 0xC0FF, RED = 0xFF;

int EdgeOf(float minimum, float maximum, Law law, float value, int length) {
    return TravelRange{minimum, maximum, law}.Edge(value, length);
}

Span Lit(float minimum, float maximum, float origin, float value, int length, int segment) {
    return LitSpan({minimum, maximum}, origin, value, length, segment);
}

} // namespace

TEST_CASE("a value lies at its pixel edge, whatever the range is like") {
    constexpr Law linear = Law::Linear, log = Law::Logarithmic;
    const Row<int, float, float, Law, float, int> rows[] = {
        {{0, 100, linear, 30, 200}, 60},
        {{100, 0, linear, 30, 200}, 140},
        {{-80, 18, linear, 99, 200}, 200},
        {{0, 3, linear, 1, 10}, 3},
        {{0, 3, linear, 2, 10}, 7},
        {{20, 20000, log, 200, 300}, 100},
        {{20000, 20, log, 200, 300}, 200},
        {{20, 20000, log, 0, 300}, 0},
        {{0, 100, log, 50, 100}, 50},
        {{5, 5, linear, 5, 100}, 0},
        {{5, 5, log, 9, 100}, 0},
        {{0, 100, linear, notANumber, 50}, 0},
        {{0, 100, linear, infinity, 50}, 50},
        {{0, 100, linear, 50, 0}, 0},
        {{0, 100, linear, 50, -4}, 0},
        {{-2147483648.0F, 2147483648.0F, linear, 0, 4000}, 2000}};
    CheckRows(EdgeOf, rows);
}

TEST_CASE("the bar goes from its origin to the value, in whole segments") {
    const Row<Span, float, float, float, float, int, int> rows[] = {
        {{0, 100, 0, 30, 100, 0}, {0, 30}},   {{-50, 50, 0, -20, 100, 0}, {30, 50}},
        {{-50, 50, 0, 20, 100, 0}, {50, 70}}, {{0, 100, 0, 29, 100, 4}, {0, 28}},
        {{0, 100, 0, 30, 100, 4}, {0, 32}},   {{0, 98, 0, 98, 98, 4}, {0, 98}},
        {{100, 0, 0, 30, 100, 0}, {70, 100}}, {{0, 100, 0, 1, 100, 4}, {0, 0}},
        {{0, 100, -500, 10, 100, 0}, {0, 10}}};
    CheckRows(Lit, rows);
    CHECK(PeakSpan({0, 100}, 50, 100, 0) == Span{48, 50});
    CHECK(PeakSpan({0, 100}, 1, 100, 0) == Span{0, 1});
    CHECK(PeakSpan({0, 100}, 50, 100, 8) == Span{40, 48});
    CHECK(PeakSpan({0, 98}, 98, 98, 4) == Span{96, 98});
    CHECK(PeakSpan({0, 100}, 0, 100, 4).IsEmpty());
}

TEST_CASE("what is drawn of one value and not of the other is what has to be painted, each pixel once") {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        const auto any = [&] {
            const int first = Any(random, 0, 12);
            return Span{first, first + Any(random, 0, 6)};
        };
        const BarSpans one{any(), any()}, other{any(), any()};
        const auto pieces = Difference(one, other);
        const auto has = [](const Span& span, int at) { return at >= span.first && at < span.last; };
        for (int at = 0; at < 20; ++at) {
            CAPTURE(at);
            const bool isChanged =
                (has(one.lit, at) || has(one.peak, at)) != (has(other.lit, at) || has(other.peak, at));
            CHECK(std::count_if(pieces.begin(), pieces.end(),
                                [&](const Span& piece) { return has(piece, at); }) == (isChanged ? 1 : 0));
        }
        for (std::size_t i = 1; i < pieces.size(); ++i) {
            CHECK(pieces[i - 1].last < pieces[i].first);
        }
    }
}

TEST_CASE("zones are read in any order and written in one") {
    const auto zones = ParseZones(" 0 = 0x000000ff;-80=40c040; -12.5=0x0000c0ff");
    REQUIRE(zones);
    CHECK(ZonesText(*zones) == "-80=0x0040c040;-12.5=0x0000c0ff;0=0x000000ff");
    CHECK(ParseZones(ZonesText(*zones)) == zones);
    CHECK(ParseZones("")->empty());
    std::string text = "0=0";
    for (int i = 1; i < 64; ++i) {
        text += ";" + std::to_string(i) + "=0";
    }
    CHECK(ParseZones(text));
    CheckRefused(ParseZones, text + ";64=0", "0", "=0xff", "0=", "0=red", "0=0x1000000", "nan=0", "0=1;", ";",
                 "0=1;0.0=2", std::string(4095, '1'));
}

TEST_CASE("each pixel has the colour of its value, and a segment one colour") {
    const std::vector<Zone> zones{{50, AMBER}, {90, RED}, {200, 0}};
    using Runs = std::vector<ColourRun>;
    CHECK(ZoneRuns({0, 100}, zones, GREEN, 200) ==
          Runs{{{0, 100}, GREEN}, {{100, 180}, AMBER}, {{180, 200}, RED}});
    CHECK(ZoneRuns({100, 0}, zones, GREEN, 200) ==
          Runs{{{0, 20}, RED}, {{20, 100}, AMBER}, {{100, 200}, GREEN}});
    CHECK(ZoneRuns({60, 100}, zones, GREEN, 40) == Runs{{{0, 30}, AMBER}, {{30, 40}, RED}});
    CHECK(ZoneRuns({0, 100}, zones, GREEN, 0).empty());
    const Runs runs{{{0, 10}, GREEN}, {{10, 20}, RED}};
    CHECK(DrawnRuns(runs, {5, 15}, 0) == Runs{{{5, 10}, GREEN}, {{10, 15}, RED}});
    CHECK(DrawnRuns(runs, {4, 16}, 4) == Runs{{{4, 7}, GREEN}, {{8, 11}, GREEN}, {{12, 15}, RED}});
    CHECK(DrawnRuns(runs, {0, 30}, 0).back().span == Span{10, 20}); // no colour, no drawing
}

TEST_CASE("a gradient begins with each zone's colour and covers the travel without a gap") {
    const std::vector<Zone> zones{{0, 0x000000}, {100, 0xFFFFFF}};
    for (const bool isReversed : {false, true}) {
        const auto runs = isReversed ? GradientRuns({200, 0}, zones, GREEN, 4000)
                                     : GradientRuns({0, 200}, zones, GREEN, 4000);
        int at = 0;
        for (const ColourRun& run : runs) {
            CHECK(run.span.first == at);
            at = run.span.last;
        }
        CHECK(at == 4000);
        CHECK(runs.front().colour == (isReversed ? 0xFFFFFFU : 0x000000U));
        CHECK(runs.back().colour == (isReversed ? 0x000000U : 0xFFFFFFU));
    }
    CHECK(GradientRuns({0, 100}, {}, 0x6480C8, 1000).front().colour == Blend(0, 0x6480C8, 0.5));
    CHECK(GradientRuns({0, 100}, {}, 0x6480C8, 1000).back().colour == 0x6480C8);
}

TEST_CASE("a bar sinks and a peak stays in real time, whatever the ticks do") {
    for (const std::uint32_t start : {0U, 0xFFFFFF00U}) { // the tick count wraps
        for (const std::uint32_t tick : {1U, 20U, 250U, 1000U}) {
            CAPTURE(tick);
            BarMotion bar;
            bar.fall = 10;
            bar.hold = 3000;
            bar.Reset(0, start);
            CHECK_FALSE(bar.DueIn(start));
            bar.Take(80, start);
            CHECK(bar.Shown() == 80);
            CHECK_FALSE(bar.Peak());
            bar.Take(20, start);
            for (std::uint32_t now = tick; now <= 2000; now += tick) {
                bar.Advance(start + now);
            }
            CHECK(bar.Shown() == doctest::Approx(60));
            CHECK(bar.Peak() == 80.0F);
            bar.Advance(start + 3000);
            CHECK_FALSE(bar.Peak());
            bar.Advance(start + 60000);
            CHECK(bar.Shown() == 20);
            bar.Take(30, start + 60000);
            CHECK(bar.Shown() == 30); // it rises at once
        }
    }
    BarMotion bar;
    bar.Reset(5, 0);
    bar.Take(90, 10);
    bar.Take(10, 11);
    CHECK(bar.Shown() == 10);
    CHECK_FALSE(bar.Peak());
    bar.hold = 100;
    bar.Take(90, 20);
    bar.Take(10, 30);
    CHECK(bar.DueIn(50) == 80); // since it left
    CHECK(bar.Peak() == 90.0F);
    bar.ClearPeak();
    CHECK_FALSE(bar.Peak());
    CHECK_FALSE(bar.DueIn(50));
}
