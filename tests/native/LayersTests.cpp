#include "logic/Layers.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("layer lists are read and written") {
    CHECK(ParseLayers("u1,u5") == 0x11U);
    CHECK(ParseLayers(" U64 ,, u1,u1") == 0x8000000000000001U);
    CHECK(ParseLayers("") == 0U);
    CHECK(ParseLayers(" , ") == 0U);
    CheckRefused(ParseLayers, "u", "u0", "u65", "u01", "u+1", "u-1", "v1", "1", "u1 u2", "u1;u2",
                 "u99999999999");
    CHECK(LayersText(0).empty());
    CHECK(LayersText(0x8000000000000010U) == "u5,u64");
}

TEST_CASE("a control is shown when one of its layers is active") {
    CHECK(LayerShown(0, 0b100));
    CHECK(LayerShown(0b110, 0));
    CHECK(LayerShown(0b110, 0b100));
    CHECK(!LayerShown(0b110, 0b001));
}
