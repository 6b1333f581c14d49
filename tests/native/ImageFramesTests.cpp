#include "logic/ImageFrames.h"

#include <doctest/doctest.h>

using logic::ButtonFrameCount;

TEST_CASE("an image has three frames when its name and its size say so") {
    CHECK(ButtonFrameCount(".\\Controls\\SWITCH_26x16.bmp", 78, 16) == 3);
    CHECK(ButtonFrameCount("SWITCH_26x16", 78, 16) == 3);
    CHECK(ButtonFrameCount("SWITCH_26x16.bmp", 52, 16) == 2);
    CHECK(ButtonFrameCount("SWITCH_26x16.bmp", 78, 17) == 2);
    CHECK(ButtonFrameCount("SWITCH_26x16.bmp", 79, 16) == 2);
    CHECK(ButtonFrameCount("SWITCH_126x16.bmp", 78, 16) == 2);
    CHECK(ButtonFrameCount("SWITCH.bmp", 78, 16) == 2);
    CHECK(ButtonFrameCount("", 0, 0) == 2);
}
