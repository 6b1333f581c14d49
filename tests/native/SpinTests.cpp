// The spin edit: numbers as they are typed, steps, and what the drag of an arrow does.
#include "logic/controls/SpinLogic.h"
#include "logic/text/Numbers.h"
#include "logic/text/TypedNumber.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("numbers are typed with a point or a comma, a multiplier and the unit") {
    const Row<std::optional<float>, const char*, const char*> rows[] = {{{"-3,5", ""}, -3.5F},
                                                                        {{" +.5 ", ""}, 0.5F},
                                                                        {{"7,", ""}, 7.0F},
                                                                        {{"1k5", ""}, 1500.0F},
                                                                        {{"-1K25", ""}, -1250.0F},
                                                                        {{"1.5k", ""}, 1500.0F},
                                                                        {{"2M", ""}, 2e6F},
                                                                        {{"2 k", ""}, 2000.0F},
                                                                        {{"0M001", ""}, 1000.0F},
                                                                        {{"1,5e3", ""}, 1500.0F},
                                                                        {{"12 dB", "dB"}, 12.0F},
                                                                        {{"12DB ", "dB"}, 12.0F},
                                                                        {{"12", "dB"}, 12.0F},
                                                                        {{"2 kHz", "Hz"}, 2000.0F},
                                                                        {{"1k5 hz", "Hz"}, 1500.0F},
                                                                        {{"50%", "%"}, 50.0F},
                                                                        {{"5 m2", "m2"}, 5.0F},
                                                                        {{"2M", "m"}, 2e6F},
                                                                        {{"2 m", "m"}, 2.0F},
                                                                        {{"2k", "k"}, 2.0F},
                                                                        {{"2kk", "k"}, 2000.0F},
                                                                        {{"3 e", "e"}, 3.0F},
                                                                        {{"16777217", ""}, 16777216.0F}};
    CheckRows([](const char* text, const char* unit) { return ParseTypedNumber(text, unit); }, rows);
    const auto refused = [](const std::string& text) { return ParseTypedNumber(text, "dB"); };
    CheckRefused(refused, "", "dB", "k", "-k5", "loud", "12 ms", "12 dB dB", "1,000.5", "1.000,5", "1 000",
                 "1.5k5", "1k5k", "1k5M", "1kM", "1 k5", "1k 5", "1k-5", "1,5e3k", "1e3,5", "1e39", "1e38k",
                 "nan", "inf", "0x10", "--1", "1-", "1\n2", "12 \xE9");
    // What a format adds may be left where it is.
    const auto inFormat = [](const std::string& text) { return ParseTypedNumber(text, "s", "T %.1f%% x"); };
    CheckTaken([&](const std::string& text) { return inFormat(text) == 1500.0F; }, "1k5", "T 1500% x",
               "1.5k% x s", "T 1k5 s");
    CheckRefused(inFormat, "T", "U 1", "");
}

TEST_CASE("steps keep to the multiples of the step, and to the range") {
    const auto step = [](float value, int steps, float size, float minimum, float maximum) {
        return StepSpin(value, steps, size, {minimum, maximum});
    };
    const Row<float, float, int, float, float, float> rows[] = {
        {{1, 1, 0.5F, 0, 10}, 1.5F},
        {{1.25F, -2, 0.5F, 0, 10}, 0.25F},
        {{0.3F, 1, 0.1F, 0, 10}, 0.4F},
        {{9.7F, 1, 0.5F, 0, 10}, 10.0F},
        {{0.2F, -1, 0.5F, 0, 10}, 0.0F},
        {{1, 1, -0.5F, 0, 10}, 1.5F},
        {{1, 5, 0, 0, 10}, 1.0F},
        {{5, 1, 1, 10, 0}, 6.0F},
        {{5, 1, 1, 5, 5}, 5.0F},
        {{1, lowest, largest, -7, 7}, -7},
        {{largest, 1, largest, -largest, largest}, largest},
        {{notANumber, 1, 1, 3, 0}, 0.0F},
        {{1, 1, 1e-40F, 0, 10}, 1.0F}};
    CheckRows(step, rows);
    float value = 0;
    for (int i = 0; i < 5000; ++i) {
        value = StepSpin(value, 1, 0.1F, {0, 1000});
    }
    CHECK(value == 500.0F);
    CHECK(!std::signbit(StepSpin(0.5F, -1, 0.5F, {-1, 1})));
    CHECK(SpinRange{5, -5}.Contains(-5));
    CHECK_FALSE(SpinRange{5, -5}.Contains(5.5F));
}

TEST_CASE("a drag turns by one step each two pixels") {
    SpinDrag drag;
    drag.Press(100);
    CHECK_FALSE(drag.IsMeant(97));
    CHECK(drag.IsMeant(96));
    const Row<int, int> moves[] = {{95, 2}, {94, 1}, {95, 0}, {101, -3}, {100, 0}, {-900, 500}};
    CheckRows([&](int y) { return drag.StepsTo(y); }, moves);
}

TEST_CASE("a range with fractions is written so that it is read as the same numbers") {
    const auto again = [](const char* text) {
        const auto read = ParseSpinProperties(text).value();
        return SpinPropertiesText({read.minimum, read.maximum.value_or(-1)}, read.value.value_or(-2));
    };
    const Row<std::string, const char*> rows[] = {
        {"0.1", "0.1,-1,-2"},
        {" -2.5 , 3", "-2.5,3,-2"},
        {"0,16777215,1234567.9", "0,16777215,1234567.9"},
        {"1e-20,3.4028235e+38,0.333333343", "1e-20,3.4028235e+38,0.33333334"}};
    CheckRows(again, rows);
    CheckRefused(ParseSpinProperties, "", "1,", "1,x", "1,2,3,4", "1,2,1e99");
}
