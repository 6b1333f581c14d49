#include "logic/devices/AutoMixer.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

constexpr auto EXACTLY_AS_PRINTED = 0.00001;

AutoMixerChannel Microphone(float level, float weight = 0) {
    return {.level = level, .weight = weight, .threshold = -50, .hold = 500};
}

AutoMixerChannel WithPriority(AutoMixerChannel channel) {
    channel.hasPriority = true;
    return channel;
}

AutoMixerChannel Muted(AutoMixerChannel channel) {
    channel.isMuted = true;
    return channel;
}

void CheckGains(const std::vector<AutoMixerChannel>& channels, const std::vector<double>& gains) {
    REQUIRE(channels.size() == gains.size());
    for (std::size_t i = 0; i < gains.size(); ++i) {
        INFO("channel ", i + 1);
        CHECK(channels[i].gain == doctest::Approx(gains[i]).epsilon(EXACTLY_AS_PRINTED));
    }
}

} // namespace

TEST_CASE("an automatic mixer shares one gain over those who talk") {
    struct Mix {
        std::vector<AutoMixerChannel> channels;
        std::vector<double> gains;
    };
    const AutoMixerChannel none{.level = std::nullopt, .threshold = -80};
    // Printed by awk, of the powers p = exp(w / 10 * log(10)) of the weighted levels w:
    // 10 * log(p / (p1 + p2 + ...)) / log(10).
    const Mix mixes[] = {
        {{}, {}},
        {{Microphone(-20)}, {0}},
        {{Microphone(-20), Microphone(-20)}, {-3.0103, -3.0103}},
        {{Microphone(-9), Microphone(-9), Microphone(-9), Microphone(-9)},
         {-6.0206, -6.0206, -6.0206, -6.0206}},
        {{Microphone(-20), Microphone(-30), Microphone(-26)}, {-1.30716, -11.3072, -7.30716}},
        {{Microphone(-26, 6), Microphone(-18, -12), Microphone(-27, 1)}, {-1.30716, -11.3072, -7.30716}},
        {{Microphone(-20), none, Muted(Microphone(-3)), Microphone(-24)}, {-1.4554, -80, -80, -5.4554}},
        {{WithPriority(Microphone(-20)), Microphone(-3), WithPriority(Microphone(-24))},
         {-1.4554, -80, -5.4554}},
        {{Muted(WithPriority(Microphone(-3))), Microphone(-20)}, {-80, 0}},
        {{Microphone(18), Microphone(-49, -24)}, {0, -80}},
        {{Microphone(-20, largest), Microphone(-20)}, {-80, -80}},
    };
    for (std::size_t i = 0; i < std::size(mixes); ++i) {
        INFO("row ", i + 1);
        std::vector<AutoMixerChannel> channels = mixes[i].channels;
        AutoMixer().Step(channels, 20);
        CheckGains(channels, mixes[i].gains);
    }
}

TEST_CASE("talkers of an automatic mixer leave after their hold time and come back at once") {
    AutoMixer mixer;
    std::vector<AutoMixerChannel> channels{WithPriority(Microphone(-60)), Microphone(-50)};
    mixer.Step(channels, 499);
    CheckGains(channels, {0, -80});
    mixer.Step(channels, 1);
    CheckGains(channels, {-80, 0}); // at its threshold it is in
    channels[0].level = -50;
    mixer.Step(channels, 0);
    CheckGains(channels, {0, -80});
    channels[0].level = -51;
    channels[1].isFrozen = true;
    mixer.Step(channels, 499); // it begins anew
    CheckGains(channels, {0, -80});
    mixer.Step(channels, 1);
    CheckGains(channels, {-80, -80});
    channels[0] = Microphone(-50);
    mixer.Step(channels, 20); // what is frozen counts for the others
    CheckGains(channels, {-3.0103, -80});
    channels[1].isFrozen = false;
    mixer.Step(channels, 20);
    CheckGains(channels, {-3.0103, -3.0103});
    channels[0].hold = 0;
    channels[0].level = -51;
    channels[1].isFrozen = true;
    mixer.Step(channels, 0);
    CheckGains(channels, {-80, -3.0103});
    channels[1].isMuted = true;
    mixer.Step(channels, 20);
    CheckGains(channels, {-80, -3.0103});
}

TEST_CASE("automatic mixers are declared whole or not at all") {
    const AutoMixerNames names = ParseAutoMixer("auto%02i", " 2 , AMP1*mic%i ").value();
    CHECK(names.channels == std::vector<std::string>{"auto01", "auto02"});
    CHECK(names.sources == std::vector<std::string>{"AMP1*mic1", "AMP1*mic2"});
    const auto parse = [](const std::string& text) { return ParseAutoMixer("a%i", text); };
    CheckTaken(parse, "1,mic", "64,mic%i", "4,mic"); // four can listen to the same
    CheckRefused(parse, "", "4", "4,", "4,mic%i,", "0,mic%i", "65,mic%i", "-1,mic%i", "x,mic%i");
    CHECK_FALSE(ParseAutoMixer("", "1,mic").has_value());
    CHECK_FALSE(ParseAutoMixer("a", "2,mic%i").has_value());
}
