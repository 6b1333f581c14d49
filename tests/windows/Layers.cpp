// Which controls a panel shows.

#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("Layers");

TEST_CASE("controls are shown when one of their layers is active, and all while the panel is edited") {
    const TestPanel panel(TestPanel::Visible);
    const char* const layers[] = {"", "u1", "u2", "u1,u2", "u64"};
    HWND controls[5];
    for (int i = 0; i < 5; ++i) {
        controls[i] = panel.Create("LED", layers[i]);
        CHECK(Load(controls[i], std::string("layer=") + layers[i]) == 1);
        CHECK(Text(controls[i], "layer") == layers[i]);
    }
    const struct {
        const char* active;
        bool shown[5];
    } rows[] = {
        {"", {true, true, true, true, true}},       {"u1", {true, true, false, true, false}},
        {"u2", {true, false, true, true, false}},   {"u64", {true, false, false, false, true}},
        {"U3", {true, false, false, false, false}}, {" u2 , u64 ", {true, false, true, true, true}},
    };
    const auto check = [&](const bool(&shown)[5]) {
        for (int i = 0; i < 5; ++i) {
            CHECK(IsShown(controls[i]) == shown[i]);
        }
    };
    for (const auto& row : rows) {
        INFO("active: ", std::string(row.active));
        CHECK(Load(panel.Window(), std::string("layer=") + row.active) == 1);
        check(row.shown);
        ph_SetMode(panel.Root(), 1);
        check({true, true, true, true, true});
        ph_SetMode(panel.Root(), 0);
        check(row.shown);
    }
}

TEST_CASE("a control moves to another layer, and unreadable layers are refused") {
    const TestPanel panel(TestPanel::Visible);
    Load(panel.Window(), "layer=u2");
    HWND lamp = panel.Create("LED", "Lamp");
    CHECK(IsShown(lamp));
    Load(lamp, "layer=u1");
    CHECK_FALSE(IsShown(lamp));
    CHECK(Load(lamp, "layer=u1,x") == 0);
    CHECK(Text(lamp, "layer") == "u1");
    CHECK(Load(panel.Window(), "layer=u1,x") == 0);
    CHECK_FALSE(IsShown(lamp));
    for (const auto& [layers, isShown] : {std::pair{"u1,u2", true}, {"u3", false}, {"", true}}) {
        Load(lamp, std::string("layer=") + layers);
        CHECK(IsShown(lamp) == isShown);
    }
}

TEST_CASE("a panel is saved the same whatever it shows just now") {
    const TestPanel panel(TestPanel::Visible);
    Load(panel.Create("LED", "Lamp"), "layer=u1");
    panel.Create("IMIDI", "Midi"); // shown while the panel is edited
    const std::string operated = panel.Saved();
    CHECK(operated.find("LED \"Lamp\" 0x50000000") != std::string::npos);
    CHECK(operated.find("IMIDI \"Midi\" 0x40000000") != std::string::npos);
    ph_SetMode(panel.Root(), 1);
    CHECK(panel.Saved() == operated);
    ph_SetMode(panel.Root(), 0);
    Load(panel.Window(), "layer=u2");
    CHECK_FALSE(IsShown(panel.Find("Lamp")));
    CHECK(panel.Saved() == "layer=u2\r\n" + operated);
}

TEST_SUITE_END();
