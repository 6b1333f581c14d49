#include "logic/devices/Simulation.h"
#include "logic/devices/Subscription.h"
#include "tests/native/Tables.h"

#include <algorithm>

using namespace logic;

TEST_CASE("parameter declarations are read whole or not at all") {
    using Parts = std::tuple<ParameterType, float, float, std::string, std::string>;
    const auto parts = [](const char* text) {
        const ParameterDeclaration read = ParseParameter(text).value();
        return Parts(read.type, read.minimum, read.maximum, read.value, read.unit);
    };
    using enum ParameterType;
    const Row<Parts, const char*> rows[] = {{"float,-80,18,-20,dB", {Float, -80.0F, 18.0F, "-20", "dB"}},
                                            {" integer , 0 , 1 , 5 ", {Integer, 0.0F, 1.0F, "5", ""}},
                                            {"float,3,3,3,", {Float, 3.0F, 3.0F, "3", ""}},
                                            {"text,,,hello world,", {Text, 0.0F, 0.0F, "hello world", ""}},
                                            {"text,,, a, b ,", {Text, 0.0F, 0.0F, " a, b ", ""}},
                                            {"text,,,", {Text, 0.0F, 0.0F, "", ""}}};
    CheckRows(parts, rows);
    CheckRefused(ParseParameter, "", "float", "float,0,1", "float,0,1,", "float,1,0,0", "float,nan,1,0",
                 "float,0,inf,0", "float,0,1e39,0", "float,0,1,x", "float,0,1,0 dB", "float,0,1,0,dB,more",
                 "integer,0,1,0.5", "integer,0,1.5,1", "Float,0,1,0", "double,0,1,0", "text,0,1,x", "text,,");
}

TEST_CASE("waves and follow rules are read whole or not at all") {
    const auto wave = ParseWave("programme, -40, 0, 6000").value();
    CHECK(wave.shape == WaveShape::Programme);
    CHECK(std::tuple(wave.low, wave.high, wave.periodMilliseconds) == std::tuple(-40.0F, 0.0F, 6000U));
    CheckTaken(ParseWave, "square,1,1,20", "random,0,1,3600000");
    CheckRefused(ParseWave, "", "sine,-40,0", "sine,-40,0,6000,1", "saw,-40,0,6000", "sine,0,-40,6000",
                 "sine,a,0,6000", "sine,0,inf,6000", "sine,-40,0,19", "sine,-40,0,3600001",
                 "sine,-40,0,-6000");

    using Parts = std::tuple<std::string, float, std::uint32_t>; // source, offset, time constant
    const auto parts = [](const char* text) {
        const Follow read = ParseFollow(text).value();
        return Parts(read.source, read.offset, read.timeConstantMilliseconds);
    };
    const Row<Parts, const char*> rows[] = {{"gain1,-3,200", {"gain1", -3.0F, 200}},
                                            {" AMP2*gain 1 ", {"AMP2*gain 1", 0.0F, 0}},
                                            {"gain1,,60000", {"gain1", 0.0F, 60000}},
                                            {"gain1,1.5", {"gain1", 1.5F, 0}}};
    CheckRows(parts, rows);
    CheckRefused(ParseFollow, "", ",1,2", "gain1,x", "gain1,0,-1", "gain1,0,60001", "gain1,0,0,0");
}

TEST_CASE("waves have their shapes") {
    const auto value = [](WaveShape shape, std::uint64_t time) {
        return doctest::Approx(WaveValue({shape, -40.0F, 0.0F, 1000}, time, 0));
    };
    using enum WaveShape;
    const Row<float, WaveShape, std::uint64_t> rows[] = {
        {{Sine, 0U}, -20.0F},     {{Sine, 250U}, 0.0F},     {{Sine, 750U}, -40.0F},
        {{Triangle, 0U}, -40.0F}, {{Triangle, 500U}, 0.0F}, {{Triangle, 1250U}, -20.0F},
        {{Square, 499U}, 0.0F},   {{Square, 500U}, -40.0F}, {{Square, 1000U}, 0.0F}};
    CheckRows(value, rows);
    const Wave random{WaveShape::Random, 0.0F, 1.0F, 1000};
    CHECK(WaveValue(random, 3000, 0) == WaveValue(random, 3999, 0));
    CHECK(WaveValue(random, 3999, 0) != WaveValue(random, 4000, 0));
}

TEST_CASE("waves stay within their range, repeat exactly and differ by seed") {
    for (const WaveShape shape :
         {WaveShape::Sine, WaveShape::Triangle, WaveShape::Square, WaveShape::Random, WaveShape::Programme}) {
        CAPTURE(static_cast<int>(shape));
        const Wave wave{shape, -40.0F, 0.1F, 6000};
        int same = 0;
        for (std::uint64_t step = 0; step < 3000; ++step) {
            const std::uint64_t time = step < 2900 ? step * 37 : ~std::uint64_t{0} - step;
            const float value = WaveValue(wave, time, 1);
            CHECK((value >= -40.0F && value <= 0.1F));
            CHECK(value == WaveValue(wave, time, 1));
            same += value == WaveValue(wave, time, 2) ? 1 : 0;
            CHECK(std::isfinite(WaveValue({shape, -largest, largest, 20}, time, 3)));
        }
        CHECK(same < (shape == WaveShape::Square ? 2500 : 300));
        for (const auto& [high, value] : {std::pair(5.0F, 5.0F), {1.0F, 5.0F}, {infinity, 5.0F}}) {
            CHECK(WaveValue({shape, 5.0F, high, 1000}, 10, 0) == value);
        }
    }
}

TEST_CASE("a follower approaches its source without passing it and arrives") {
    CHECK(FollowStep(0.0F, 10.0F, 200, 200) == doctest::Approx(6.3212F));
    const Row<float, float, float, std::uint32_t, std::uint32_t> rows[] = {
        {{0.0F, 10.0F, 0U, 0U}, 10.0F},
        {{0.0F, 10.0F, 0U, 200U}, 0.0F},
        {{3.0F, infinity, 20U, 200U}, 3.0F},
        {{infinity, 3.0F, 20U, 200U}, 3.0F},
        {{-largest, largest, 0xFFFFFFFFU, 1U}, largest}};
    CheckRows(FollowStep, rows);
    for (const float target : {-20.0F, 18.0F, 0.0F}) {
        float current = -80.0F;
        int steps = 0;
        while (current != target && steps < 200'000) {
            const float next = FollowStep(current, target, 20, MAXIMUM_TIME_CONSTANT);
            REQUIRE(std::fabs(target - next) < std::fabs(target - current));
            current = next;
            ++steps;
        }
        CHECK(current == target);
    }
}

TEST_CASE("a subscription is resolving for its time, and is there then if it is offered") {
    CheckRefused([](const std::string& text) { return Subscription::Parse(text); }, "", "x", ",01@Stage",
                 "-1,a@b", "60001,a@b", "2000.5,a@b");
    CHECK(Subscription::Parse("0").value().Offered().empty());
    Subscription channel = Subscription::Parse(" 2000 , 01@Stage;Talk=02@Stage ").value();
    std::string offered = channel.Offered();
    CHECK(offered == "01@Stage;Talk=02@Stage");
    using enum SubscriptionState;
    const struct {
        const char* subscribed;
        std::uint32_t elapsed;
        SubscriptionState state;
    } steps[] = {{"", 50, None},
                 {"02@Stage", 5000, Resolving}, // from now on
                 {"02@Stage", 1999, Resolving},
                 {"02@Stage", 1, Subscribed},
                 {"02@Stage", 0xFFFFFFFF, Subscribed},
                 {"03@Stage", 20, Resolving},
                 {"03@Stage", 2000, Unresolved},
                 {"Talk", 20, WrongFormat},
                 {"@Stage", 20, WrongFormat},
                 {"01@Stage@x", 20, WrongFormat},
                 {" ", 20, None}};
    for (const auto& step : steps) {
        CAPTURE(step.subscribed);
        CHECK(channel.Step(step.subscribed, offered, step.elapsed) == step.state);
    }
    channel.Step("03@Stage", offered, 0);
    channel.Step("03@Stage", offered, 2000);
    CHECK(channel.Step("03@Stage", offered + ";03@Stage", 20) == Subscribed); // it came later
}
