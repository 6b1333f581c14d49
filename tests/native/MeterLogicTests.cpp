#include "logic/MeterLogic.h"

#include <limits>
#include <optional>
#include <vector>

#include <doctest/doctest.h>

using namespace logic;

namespace {

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

// No answer is nothing.
std::int32_t Combine(MeterCombination combination, std::int32_t minimum, std::int32_t maximum,
                     const std::vector<std::optional<std::int32_t>>& answers) {
    MeterAnswers round(combination, minimum, maximum);
    for (const auto& answer : answers) {
        if (answer)
            round.Cell() = *answer;
        round.Take();
    }
    return round.Result();
}

} // namespace

TEST_CASE("answers combine by maximum or average, and a silent target repeats the one before") {
    constexpr auto maximum = MeterCombination::Maximum;
    constexpr auto average = MeterCombination::Average;
    CHECK(Combine(average, 0, 100, {10, 20, {}}) == 16);
    CHECK(Combine(average, 0, 100, {{}, 20}) == 10);
    CHECK(Combine(average, -80, 0, {-3, -4}) == -3); // towards zero
    CHECK(Combine(average, 0, 100, {highest, highest, highest}) == highest);
    CHECK(Combine(average, 0, 100, {lowest, lowest}) == lowest);
    CHECK(Combine(maximum, 0, 100, {10, 30, {}, 20}) == 30);
    CHECK(Combine(maximum, -20, -80, {-90}) == -80);
    for (const MeterCombination combination : {maximum, average}) {
        CHECK(Combine(combination, -80, 0, {}) == -80);
        CHECK(Combine(combination, 0, -80, {}) == -80);
        CHECK(Combine(combination, -80, 0, {std::nullopt}) == -80);
    }
}

TEST_CASE("the bar is filled in proportion") {
    CHECK(FillHeight(50, 0, 100, 100) == 50);
    CHECK(FillHeight(50, 100, 0, 100) == 50);
    CHECK(FillHeight(-1, 0, 100, 100) == 0);
    CHECK(FillHeight(0, 0, 100, 100) == 0);
    CHECK(FillHeight(100, 0, 100, 80) == 80);
    CHECK(FillHeight(101, 0, 100, 80) == 80);
    CHECK(FillHeight(1, 0, 3, 100) == 33);
    CHECK(FillHeight(0, 0, 0, 100) == 0);
    CHECK(FillHeight(1, 0, 0, 100) == 100);
    CHECK(FillHeight(0, lowest, highest, 100) == 50);
    CHECK(FillHeight(highest - 1, lowest, highest, 32767) == 32766);
}
