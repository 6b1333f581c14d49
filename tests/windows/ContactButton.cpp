#include "tests/windows/Buttons.h"
#include "tests/windows/ImportHook.h"

TEST_SUITE_BEGIN("ContactButton");

namespace {

// The milliseconds since the start, as the library is told them.
DWORD ticks = 1000;
DWORD WINAPI OwnTicks() {
    return ticks;
}

// A contact in a strip, which reaches its target through a lamp that was there before it.
struct Fixture {
    Fixture() {
        strip = panel.Create("MIXER", "Strip");
        lamp = panel.Create("LED", "Lamp");
        contact = CreateControl("CONTACTBUTTON", "Contact", strip, &ObjectOf(strip));
        LoadLines(lamp, "connection=Target|interval=100000");
        LoadLines(contact, "connection=Lamp|interval=100000|layer=u1");
        Load(panel.Window(), "layer=u1");
        SetFocus(contact);
    }
    void Key(UINT message, WPARAM key, LPARAM lParam = 0) const {
        SendMessageA(contact, message, key, lParam);
    }
    // What arrives after a while of ticks.
    std::string Arrives() {
        Await(
            [this] {
                ph_Tick(panel.Root());
                return !target.sets.empty();
            },
            500);
        return target.Take();
    }
    TestPanel panel{TestPanel::Visible};
    Recorder target{panel, "Target"};
    HWND strip, lamp, contact;
};

struct WayOut {
    const char* name;
    std::function<void(Fixture&)> go;
    bool opensToggled; // one that stays closed until a second press
};

const WayOut WAYS_OUT[] = {
    {"release", [](Fixture& f) { ReleaseButton(f.contact); }, false},
    {"capture lost", [](Fixture& f) { SetCapture(f.panel.Window()); }, false},
    {"cancelled mode", [](Fixture& f) { SendMessageA(f.contact, WM_CANCELMODE, 0, 0); }, false},
    {"hidden", [](Fixture& f) { ShowWindow(f.contact, SW_HIDE); }, true},
    {"hidden by its place",
     [](Fixture& f) { SetWindowPos(f.contact, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE); }, true},
    {"strip hidden", [](Fixture& f) { ShowWindow(f.strip, SW_HIDE); }, true},
    {"panel hidden", [](Fixture& f) { ShowWindow(f.panel.Window(), SW_HIDE); }, true},
    {"layer gone", [](Fixture& f) { Load(f.panel.Window(), "layer=u2"); }, true},
    {"layer changed", [](Fixture& f) { Load(f.contact, "layer=u3"); }, true},
    {"edit mode", [](Fixture& f) { ph_SetMode(f.panel.Root(), 1); }, true},
    {"panel closed", [](Fixture& f) { f.panel.Close(); }, true},
    {"panel window closed", [](Fixture& f) { DestroyWindow(f.panel.Window()); }, true},
    {"strip deleted", [](Fixture& f) { DestroyWindow(f.strip); }, true},
    {"deleted", [](Fixture& f) { DestroyWindow(f.contact); }, true},
    {"set", [](Fixture& f) { Load(f.contact, "value=0"); }, true},
    {"maximum", [](Fixture& f) { Load(f.contact, "maximum=1"); }, true},
};

} // namespace

TEST_CASE("a held contact opens by each way out, and one that stays by all but the hand") {
    for (const WayOut& way : WAYS_OUT) {
        for (const WPARAM key : {0, VK_SPACE, VK_RETURN}) {
            for (const bool isToggled : {false, true}) {
                INFO(way.name, " ", key, " ", isToggled);
                Fixture f;
                Load(f.contact, isToggled ? "toggle=1" : "toggle=0");
                if (key == 0) {
                    PressButton(f.contact);
                } else {
                    f.Key(WM_KEYDOWN, key);
                    f.Key(WM_KEYDOWN, key, 1 << 30); // repeated
                }
                CHECK(f.target.Take() == "1");
                CHECK(Text(f.contact) == "1");
                if (key != 0 && way.name == std::string("release")) {
                    f.Key(WM_KEYUP, key);
                } else {
                    way.go(f);
                }
                if (isToggled && !way.opensToggled) {
                    ph_Tick(f.panel.Root());
                    CHECK(f.target.Take().empty());
                    ReleaseButton(f.contact);
                    PressButton(f.contact); // the second time
                }
                CHECK(f.Arrives() == "0");
            }
        }
    }
}

TEST_CASE_FIXTURE(Fixture, "the focus opens what a key holds, and the mouse may leave") {
    for (const WPARAM key : {VK_SPACE, VK_RETURN}) {
        SetFocus(contact);
        Key(WM_KEYDOWN, key);
        SetFocus(panel.Window());
        CHECK(target.Take() == "1 0");
        Key(WM_KEYUP, key);
        Key(WM_KEYDOWN, key, 1 << 30);
        CHECK(target.Take().empty());
    }
    PressButton(contact);
    MoveCursor(panel, 500, 300);
    SendMessageA(contact, WM_MOUSEMOVE, MK_LBUTTON, At(400, 300));
    CHECK(target.Take() == "1");
    ReleaseButton(contact);
    CHECK(target.Take() == "0");
}

TEST_CASE_FIXTURE(Fixture, "times: closed at least, closed at most") {
    const ImportHook hook(CONTROL_LIBRARY, "GetTickCount", OwnTicks);
    const struct {
        const char* lines;
        bool isHeld;
        DWORD opensAfter; // milliseconds from the press; 0: not by itself
    } rows[] = {{"minimum=0|maximum=0", true, 0},
                {"minimum=500|maximum=0", false, 500},
                {"minimum=0|maximum=300", true, 300},
                {"minimum=500|maximum=300", true, 500},
                {"minimum=500|maximum=700", false, 500}};
    for (const auto& row : rows) {
        INFO(row.lines);
        REQUIRE(LoadLines(contact, row.lines));
        PressButton(contact);
        const DWORD start = ticks;
        if (!row.isHeld) {
            ReleaseButton(contact);
        }
        for (ticks += 99; ticks < start + 999; ticks += 100) {
            ph_Tick(panel.Root());
            const bool isOver = row.opensAfter != 0 && ticks >= start + row.opensAfter;
            CHECK(Text(contact) == (isOver ? "0" : "1"));
        }
        ReleaseButton(contact);
        CHECK(target.Take() == "1 0");
    }
    // A second press before the minimum is over goes on from the first one.
    REQUIRE(LoadLines(contact, "minimum=500|maximum=0"));
    PressButton(contact);
    ReleaseButton(contact);
    ticks += 400;
    PressButton(contact);
    ticks += 400;
    ph_Tick(panel.Root());
    CHECK(target.Take() == "1"); // the lamp has the second one already
    ReleaseButton(contact);
    DestroyWindow(panel.Find("Strip*Contact")); // at once
    CHECK(target.Take() == "0");
}

TEST_CASE("a release that reaches nobody is sent when the target answers again, unless the contact is held") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*talk=integer,0,9,0,\nAMP1*other=integer,0,9,0,\n");
    HWND contact = panel.Create("CONTACTBUTTON", "Contact");
    LoadLines(contact, "function=AMP1*talk|onvalue=5|offvalue=2|interval=100000");
    const auto online = [&](const char* state) { ph_SetParameter(panel.Root(), "AMP1*online", state); };
    const auto ticked = [&](const char* expected) {
        return Await([&] {
            ph_Tick(panel.Root());
            return panel.Parameter("AMP1*talk") == expected;
        });
    };
    PressButton(contact);
    CHECK(panel.Parameter("AMP1*talk") == "5");
    online("0");
    ReleaseButton(contact);
    CHECK(Text(contact) == "2");
    SUBCASE("it answers") {
        online("1");
        CHECK(panel.Parameter("AMP1*talk") == "5");
    }
    SUBCASE("it is bound to something else meanwhile") {
        Load(contact, "function=AMP1*other");
        online("1");
    }
    SUBCASE("it is pressed again before") {
        PressButton(contact);
        online("1");
        CHECK_FALSE(Await(
            [&] {
                ph_Tick(panel.Root());
                return panel.Parameter("AMP1*talk") != "5";
            },
            400));
        ReleaseButton(contact);
    }
    CHECK(ticked("2"));
    // Once it is delivered, it is not sent again.
    ph_SetParameter(panel.Root(), "AMP1*talk", "7");
    CHECK_FALSE(Await(
        [&] {
            ph_Tick(panel.Root());
            return panel.Parameter("AMP1*talk") != "7";
        },
        300));
}

TEST_CASE_FIXTURE(Fixture, "whatever the press leads to, the last that each target gets is the release") {
    Recorder second(panel, "Second");
    LoadLines(contact, "connection=Target;Second");
    target.onSet = [this] {
        if (target.sets.size() == 1) {
            SUBCASE("the contact goes") {
                DestroyWindow(contact);
            }
            SUBCASE("it is opened") {
                Load(contact, "value=0");
            }
            SUBCASE("it is bound to others") {
                Load(contact, "connection=Lamp");
                ReleaseButton(contact);
            }
            SUBCASE("the panel is edited") {
                ph_SetMode(panel.Root(), 1);
            }
        }
    };
    PressButton(contact);
    CHECK(target.Take() == "1 0");
    CHECK(second.Take() == "0");
    target.onSet = nullptr;
}

TEST_CASE_FIXTURE(Fixture, "a value closes and opens it, a poll shows one that is closed elsewhere") {
    LoadLines(contact, "connection=Target|onvalue=5|offvalue=3");
    for (const auto& [set, sent] : {std::pair("5", "5"),
                                    {"5", ""},
                                    {"0", "0"},
                                    {"3", ""},
                                    {"-2", "-2"},
                                    {"7", "7"},
                                    {"3", "3"},
                                    {"x", ""}}) {
        INFO(set, " ", sent);
        Load(contact, std::string("value=") + set);
        CHECK(target.Take() == sent);
    }
    CHECK(Text(contact) == "3");
    CHECK(panel.Open("Strip*Contact*value=5\r\n") == 0); // devices would not be told
    CHECK(Text(contact) == "3");

    Load(contact, "caption=");
    const auto isLit = [this] { return Picture(contact).At(50, 1) != Picture(contact).At(50, 20); };
    SetFocus(panel.Window());
    for (const int held : {3, 5, 7, 3}) {
        target.value = held;
        CHECK(IsMarked(contact) == (held == 7));
        CHECK(isLit() != (held == 5)); // columns are the same from row to row
        CHECK(Text(contact) == "3");   // what was sent
    }
    // One that stays is opened by the next press, wherever it was closed.
    Load(contact, "toggle=1");
    target.value = 5;
    Poll(contact);
    PressButton(contact);
    ReleaseButton(contact);
    CHECK(target.Take() == "3");
    PressButton(contact);
    ReleaseButton(contact);
    CHECK(target.Take() == "5");
    target.value = 3;
    CHECK(IsMarked(contact));
    Load(contact, "toggle=0"); // nobody would open it
    CHECK(target.Take() == "3");
}

TEST_SUITE_END();
