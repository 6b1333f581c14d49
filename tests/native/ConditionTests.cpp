// Conditions over values, and the lamp that follows one.
#include "logic/controls/Condition.h"
#include "logic/controls/ConditionLamp.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

constexpr float VALUES[] = {-5, 1, 0, 3e38F, 0.1F, notANumber};

std::string Result(const std::string& text) {
    Condition condition;
    if (const auto fault = condition.Read(text)) {
        return FaultText(*fault);
    }
    const auto number = condition.Evaluate(VALUES);
    return number ? std::to_string(*number).substr(0, 6) : "unknown";
}

std::string Nested(int depth, const std::string& open, const std::string& inside, const std::string& close) {
    std::string text = inside;
    for (int i = 0; i < depth; ++i) {
        text = open + text + close;
    }
    return text;
}

} // namespace

TEST_CASE("a condition is reckoned as it is written") {
    const Row<std::string, const char*> rows[] = {
        {"a", "-5.000"},
        {" .5e1 ", "5.0000"},
        {"a > -6 and b = 1", "1.0000"},
        {"a > -6 AND NOT B = 1", "0.0000"},
        {"not a > 0", "1.0000"}, // not (a > 0)
        {"not not a", "1.0000"},
        {"b or c and c", "1.0000"},
        {"1 + 2 * 3 - 4 / 2", "5.0000"},
        {"(1 + 2) * -3", "-9.000"},
        {"2 - 3 - 4", "-5.000"},
        {"--a", "-5.000"},
        {"- + -a", "-5.000"},
        {"a-1", "-6.000"},
        {"min(a, b, c) + max(1, 7, -1) + abs(a)", "7.0000"},
        {"abs(c or b)", "1.0000"},
        {"1 < 2", "1.0000"},
        {"2 <= 2", "1.0000"},
        {"2 < 2.000001", "0.0000"}, // equal
        {"2 >= 2.000001", "1.0000"},
        {"2 <> 2.00001", "1.0000"},
        {"0 = 1e-9", "0.0000"},
        {"e = 0.1", "1.0000"},
        {"e * 3 == 0.3", "1.0000"},
        {"d > 1e38", "1.0000"},
        {"d * d > 0", "1.0000"}, // not beyond what can be reckoned
        {"b / c", "unknown"},
        {"not (b / c)", "unknown"},
        {"b / c > 1 or c", "unknown"},
        {"b or b / c > 1", "1.0000"},
        {"c <> 0 and b / c > 1", "0.0000"},
        {"max(1, f)", "unknown"},
        {"b or z", "unknown"}, // there is no value for it
        {"", "at 1: a value is missing"},
        {"a > ", "at 5: a value is missing"},
        {"a >> 1", "at 4: a value is missing"},
        {"1 < a < 3", "at 7: a second comparison needs brackets, or an and between"},
        {"a b", "at 3: this does not belong here"},
        {"2a", "at 2: this does not belong here"},
        {"ab", "at 1: this is no word of a condition, and no letter"},
        {"a + not b", "at 5: this is no word of a condition, and no letter"},
        {"a and", "at 6: a value is missing"},
        {"(a", "at 3: a bracket is missing"},
        {"min a", "at 5: a bracket is missing"},
        {"abs(a, b)", "at 6: a bracket is missing"},
        {"max()", "at 5: a value is missing"},
        {"1e99", "at 1: this is no number"},
        {"a ! b", "at 3: this does not belong here"},
        {"a;b", "at 2: this does not belong here"}};
    CheckRows(Result, rows);
    CHECK(Result(Nested(60, "(", "a", ")")) == "-5.000");
    CHECK(Result(Nested(65, "(", "a", ")")) == "at 66: this is nested too deep");
    CHECK(Result(Nested(60, "1+(", "a", ")")) == "55.000");
    CHECK(Result(Nested(40, "0 or 1 and (", "a", ")")).ends_with("nested too deep"));
    CHECK(Result(std::string(4000, '-') + "a") == "-5.000");
    Condition kept;
    REQUIRE(!kept.Read("b + 1"));
    REQUIRE(kept.Read("b +"));
    CHECK(kept.Evaluate(VALUES) == 2.0);
}

TEST_CASE("a lamp waits, latches and blinks by the clock alone") {
    // At each time what the condition is (1, 0, ? unknown, . only time passes, ! seen), and what is shown:
    // * bright, - lit and not bright, o dark.
    struct Moment {
        std::uint32_t time;
        char input, shown;
    };
    const auto run = [](ConditionLamp lamp, const std::vector<Moment>& moments) {
        for (const std::uint32_t start : {0U, 0xFFFFFF00U}) {
            ConditionLamp tested = lamp;
            for (const Moment& moment : moments) {
                const auto [time, input, shown] = moment;
                INFO("at ", moment.time);
                const std::uint32_t now = start + time;
                if (input == '.') {
                    tested.Advance(now);
                } else if (input == '!') {
                    tested.Acknowledge(now);
                } else {
                    tested.Take(input == '?' ? std::nullopt : std::optional(input == '1'), now);
                }
                CHECK(tested.IsUnknown() == (input == '?'));
                CHECK((tested.IsBright(now) ? '*' : tested.IsLit() ? '-' : 'o') == shown);
            }
        }
    };
    ConditionLamp plain;
    run(plain, {{0, '0', 'o'}, {1, '1', '*'}, {2, '?', '*'}, {3, '0', 'o'}, {4, '!', 'o'}});
    ConditionLamp delayed;
    delayed.delayOn = 500;
    delayed.delayOff = 200;
    run(delayed, {{0, '1', 'o'},
                  {499, '1', 'o'},
                  {500, '.', '*'},
                  {600, '0', '*'},
                  {700, '1', '*'},
                  {800, '0', '*'},
                  {999, '.', '*'},
                  {1000, '.', 'o'},
                  {1100, '1', 'o'},
                  {1500, '?', 'o'},
                  {1700, '1', 'o'},
                  {2199, '1', 'o'},
                  {2200, '1', '*'},
                  {2300, '0', '*'},
                  {9999, '0', 'o'}});
    ConditionLamp latched;
    latched.latch = true;
    run(latched, {{0, '!', 'o'},
                  {1, '1', '*'},
                  {2, '0', '*'},
                  {3, '!', 'o'},
                  {4, '1', '*'},
                  {5, '!', '*'},
                  {6, '0', 'o'},
                  {7, '1', '*'},
                  {8, '0', '*'}});
    latched.delayOff = 100; // what holds anew has not been seen
    run(latched, {{0, '1', '*'},
                  {1, '!', '*'},
                  {2, '0', '*'},
                  {3, '1', '*'},
                  {4, '0', '*'},
                  {999, '0', '*'},
                  {1000, '!', 'o'}});
    ConditionLamp blinking;
    blinking.blink = 501;
    run(blinking, {{100, '1', '*'}, {350, '.', '*'}, {351, '.', '-'}, {600, '1', '-'}, {601, '.', '*'}});
    blinking.blink = 1;
    run(blinking, {{0, '1', '*'}, {1, '.', '*'}});
}

TEST_CASE("a lamp says when it has something to do") {
    ConditionLamp lamp;
    lamp.delayOn = 500;
    lamp.blink = 300;
    const auto due = [&](std::uint32_t now) { return lamp.DueIn(now).value_or(7777); };
    CHECK(due(0) == 7777);
    lamp.Take(true, 1000);
    CHECK(due(1000) == 500);
    CHECK(due(1499) == 1);
    CHECK(due(4000) == 0);
    lamp.Advance(1500);
    CHECK(due(1500) == 150);
    CHECK(due(1649) == 1);
    CHECK(due(1650) == 150);
    lamp.Take(std::nullopt, 1700);
    CHECK(due(1700) == 7777);
    lamp.Take(false, 1800);
    CHECK(!lamp.IsLit());
    CHECK(due(1800) == 7777);
}
