// What the tests of the window-free logic share: odd numbers, and tables of what a function has to give.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include <doctest/doctest.h>

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float largest = std::numeric_limits<float>::max();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

template <class Result, class... Arguments>
struct Row {
    std::tuple<Arguments...> arguments;
    Result result;
};

// Calls the function with the arguments of each row.
template <class Result, class... Arguments, std::size_t count, class Function>
void CheckRows(Function function, const Row<Result, Arguments...> (&rows)[count]) {
    for (std::size_t i = 0; i < count; ++i) {
        INFO("row ", i + 1, " of the table");
        CHECK(std::apply(function, rows[i].arguments) == rows[i].result);
    }
}

// Each of the texts is taken by the function, or refused.
template <class Function>
void CheckText(Function function, const std::string& text, bool isTaken) {
    CAPTURE(text);
    CHECK(static_cast<bool>(function(text)) == isTaken);
}
template <class Function, class... Texts>
void CheckTaken(Function function, const Texts&... texts) {
    (CheckText(function, texts, true), ...);
}
template <class Function, class... Texts>
void CheckRefused(Function function, const Texts&... texts) {
    (CheckText(function, texts, false), ...);
}

inline std::int32_t Any(std::mt19937& random, std::int32_t from, std::int32_t to) {
    return std::uniform_int_distribution(from, to)(random);
}
