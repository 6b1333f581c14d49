#include "logic/devices/MonitorOutput.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("a loudspeaker plays its channel when its set is on") {
    struct Row {
        MonitorSettings settings;
        int set;
        double level;
    };
    // Left -10 dB, right -20 dB; their power sum is -9.586 dB.
    const Row rows[] = {
        {{.speaker = 1, .level = -5}, 1, -15},
        {{.speaker = 1, .level = -5}, 2, -80},
        {{.speaker = 0, .level = -5}, 1, -80},
        {{.speaker = 2, .level = -5, .isDim = true}, 2, -35},
        {{.speaker = 2, .level = -5, .isMute = true}, 2, -80},
        {{.speaker = 1, .level = 0, .isMono = true}, 1, -12.5964},
        {{.speaker = 1, .level = -75}, 1, -80},
    };
    for (const Row& row : rows) {
        CHECK(MonitorLevel(row.settings, row.set, -10, -20) == doctest::Approx(row.level).epsilon(0.00001));
    }
}

TEST_CASE("monitor outputs are read from their lines") {
    const auto names = ParseMonitor("3, left ,AMP1*right");
    REQUIRE(names);
    CHECK(names->sets == 3);
    CHECK(names->left == "left");
    CHECK(names->right == "AMP1*right");
    CHECK(MonitorParameters(3).size() == 12);
    CHECK(MonitorParameters(3).back().first == ".right3");
    for (const char* text : {"", "3", "3,left", "0,left,right", "9,left,right", "x,left,right", "3,,right",
                             "3,left,right,more"}) {
        CHECK_FALSE(ParseMonitor(text));
    }
}
