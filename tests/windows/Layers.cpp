// Which controls a panel shows.

#include "Panelhost/Root.h"
#include "logic/controls/Layers.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/ControlClasses.h"

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

TEST_CASE("a file puts a control of any class on layers") {
    std::string lines = "layer=u1\r\n";
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        const std::string name = expected.name;
        lines += "control=0x00000000 " + name + " \"" + name + "\" 0x50010000 5,5,65,45\r\n" + name +
                 "*layer=U2\r\n";
    }
    const TestPanel panel(TestPanel::Visible);
    CHECK(panel.Open(lines) == static_cast<int>(std::size(EXPECTED_CLASSES)));
    CHECK(a_LoadErrorCount(panel.Root()) == 0);
    const std::string saved = panel.Saved();
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        INFO(std::string(expected.name));
        const std::string name = expected.name;
        CHECK_FALSE(IsShown(panel.Find(expected.name)));
        CHECK(saved.find(name + "*layer=u2\r\n") != std::string::npos);
    }
    CHECK(panel.Open("KNOB*layer=u65\r\n") == 0);
    CHECK(a_LoadErrorCount(panel.Root()) == 1);
    CHECK(panel.Open("KNOB*layer=\r\n") == 0);
    CHECK(IsShown(panel.Find("KNOB")));
}

TEST_CASE("buttons switch the layers of their panel") {
    const TestPanel panel(TestPanel::Visible);
    HWND lamps[2];
    HWND radios[3];
    for (int i = 0; i < 3; ++i) {
        radios[i] = panel.Create("BRADIOBUTTON", "Radio");
        LoadLines(radios[i],
                  "onvalue=" + std::to_string(i) + "|connection=" + (i == 1 ? "%n*page" : "*page"));
    }
    for (int i = 0; i < 2; ++i) {
        lamps[i] = panel.Create("LED", "Lamp");
        Load(lamps[i], "layer=u" + std::to_string(i + 1));
    }
    HWND push = panel.Create("BBUTTON", "Push");
    const auto click = [](HWND button) {
        SendMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, At(3, 3));
        SendMessageA(button, WM_LBUTTONUP, 0, At(3, 3));
    };
    const auto check = [&](const char* layers, int page) {
        INFO(std::string(layers));
        CHECK(Text(panel.Window(), "layer") == layers);
        CHECK(Text(panel.Window(), "page") == std::to_string(page));
        const std::string_view active = layers;
        CHECK(IsShown(lamps[0]) == (active.empty() || active.find("u1") != active.npos));
        CHECK(IsShown(lamps[1]) == (active.empty() || active.find("u2") != active.npos));
        for (HWND radio : radios) {
            Poll(radio);
            CHECK(Text(radio) == std::to_string(page));
        }
    };
    check("", 0);
    click(radios[2]);
    check("u2", 2);
    for (const auto& [line, layers, page] : {std::tuple{"layer=u1", "u1", 1},
                                             {"layer=u1,u2", "u1,u2", 0},
                                             {"page=2", "u2", 2},
                                             {"page=0", "", 0}}) {
        Load(push, std::string("click=") + line);
        click(push);
        check(layers, page);
    }
    click(radios[1]);
    check("u1", 1);
    for (const char* page : {"65", "-1", "x", ""}) {
        CHECK(Load(panel.Window(), std::string("page=") + page) == 0);
    }
    check("u1", 1);
    panel.Create("LED", "page"); // is what is called so from now on
    Load(radios[2], "connection=*page");
    click(radios[2]);
    CHECK(Text(panel.Window(), "layer") == "u1");
}

TEST_CASE("layers can be hidden while the panel is edited, and only then") {
    const TestPanel panel(TestPanel::Visible);
    HWND lamps[3];
    for (int i = 0; i < 3; ++i) {
        lamps[i] = panel.Create("LED", "Lamp");
        Load(lamps[i], i == 0 ? "layer=" : "layer=u" + std::to_string(i));
    }
    Load(panel.Window(), "layer=u1");
    const auto shown = [&] {
        std::string all;
        for (HWND lamp : lamps) {
            all += IsShown(lamp) ? '1' : '0';
        }
        return all;
    };
    a_SetEditedLayers(panel.Root(), logic::LayerBit(2));
    CHECK(shown() == "110");
    ph_SetMode(panel.Root(), 1);
    CHECK(shown() == "101");
    CHECK(a_GetEditedLayers(panel.Root()) == 2);
    a_SetEditedLayers(panel.Root(), 0);
    CHECK(shown() == "111");
    a_SetEditedLayers(panel.Root(), logic::LayerBit(64));
    CHECK(shown() == "100");
    ph_SetMode(panel.Root(), 0);
    CHECK(shown() == "110");
    a_SetEditedLayers(nullptr, 1);
    CHECK(a_GetEditedLayers(nullptr) == 0);
}

TEST_CASE("the panel of layers switches them") {
    const TestPanel panel(TestPanel::Visible);
    REQUIRE(ph_LoadDevices(panel.Root(), (ProgramFolder() + "Layers.devices").c_str()) == 1);
    REQUIRE(ph_LoadPanel(panel.Root(), (ProgramFolder() + "Layers.panel").c_str()) > 0);
    CHECK(a_LoadErrorCount(panel.Root()) == 0);
    CHECK(IsShown(panel.Find("Fader 1")));
    CHECK_FALSE(IsShown(panel.Find("Treble 1")));
    for (const auto& [button, page] : {std::pair{"To equalisers", 2}, {"Page Mix", 1}, {"Page All", 0}}) {
        SendMessageA(panel.Find(button), WM_LBUTTONDOWN, MK_LBUTTON, At(3, 3));
        SendMessageA(panel.Find(button), WM_LBUTTONUP, 0, At(3, 3));
        CHECK(IsShown(panel.Find("Fader 1")) == (page != 2));
        CHECK(IsShown(panel.Find("Treble 1")) == (page != 1));
    }
}

TEST_SUITE_END();
