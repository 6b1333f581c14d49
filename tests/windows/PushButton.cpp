#include "tests/windows/Buttons.h"
#include "tests/windows/ImportHook.h"

#include <utility>

TEST_SUITE_BEGIN("PushButton");

namespace {

// The milliseconds since the start, as the library is told them.
DWORD ticks = 1000;
DWORD WINAPI OwnTicks() {
    return ticks;
}

struct Fixture {
    explicit Fixture(TestPanel::Visibility visibility = TestPanel::Hidden) : panel(visibility) {
        button = panel.Create("BBUTTON", "Button");
        LoadLines(button, "connection=Target|interval=100000"); // nothing but what the test does itself
    }
    TestPanel panel;
    Recorder target{panel, "Target"};
    HWND button = nullptr;
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "a press sends the on value, the release the off value") {
    LoadLines(button, "captureperiod=0|onvalue=1");
    PressButton(button);
    CHECK(target.Take() == "1");
    CHECK(Text(button, "ispressed") + Text(button, "isnotpressed") == "10");
    CHECK(GetCapture() == button);
    ReleaseButton(button);
    CHECK(target.Take() == "0");
    CHECK(Text(button, "ispressed") + Text(button, "isnotpressed") == "01");
    CHECK(GetCapture() == nullptr);

    ReleaseButton(button); // without a press
    PressButton(button, 0);
    CHECK(target.Take().empty());
    CHECK(Text(button, "ispressed") == "0");
    Load(button, "properties=4,4");
    Click(button);
    CHECK(target.Take() == "4");                           // equal values: the press sends nothing
    LoadLines(button, "properties=1,3|captureperiod=100"); // nor with a period
    PressButton(button);
    CHECK(target.Take().empty());
    ReleaseButton(button);
    CHECK(target.Take() == "3");
}

TEST_CASE_FIXTURE(Fixture, "a held button steps at a growing rate") {
    const ImportHook hook(CONTROL_LIBRARY, "GetTickCount", OwnTicks);
    const struct {
        const char* mode;
        const char* period;
        const char* acceleration;
        UINT_PTR timer;
        std::vector<DWORD> after; // milliseconds, of each timer message
        const char* sent;         // from 100; the last one by the release
    } rows[] = {
        {"increment", "100", "1", 11, {99, 1, 100, 100}, "101 103 106 107"},
        {"decrement", "50", "4", 11, {50, 50}, "96 88 87"},
        {"decrement", "50", "4", 0, {21, 20, 10, 20}, "96 95"}, // by the host's, at most each interval
        {"absolute", "50", "1", 11, {50, 50}, "100"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.sent);
        LoadLines(button, std::string("properties=100,100|interval=20|captureperiod=") + row.period +
                              "|captureaccel=" + row.acceleration + "|mode=" + row.mode);
        target.value = 100;
        SendMessageA(button, WM_TIMER, 11, 0);
        target.sets.clear();
        PressButton(button);
        for (const DWORD milliseconds : row.after) {
            ticks += milliseconds;
            SendMessageA(button, WM_TIMER, row.timer, 0);
        }
        ReleaseButton(button);
        CHECK(target.Take() == row.sent);
        ticks += 1000;
        SendMessageA(button, WM_TIMER, row.timer, 0);
        CHECK(target.Take().empty()); // nobody holds it
    }
    // Its own timer, which ends with the press.
    LoadLines(button, "mode=increment|captureperiod=20");
    PressButton(button);
    ticks += 20;
    CHECK(Await([this] { return !target.sets.empty(); }));
    ReleaseButton(button);
    for (MSG message; PeekMessageA(&message, button, WM_TIMER, WM_TIMER, PM_REMOVE);) {
    }
    Sleep(60);
    MSG late;
    CHECK_FALSE(PeekMessageA(&late, button, WM_TIMER, WM_TIMER, PM_REMOVE));
}

TEST_CASE_FIXTURE(Fixture, "a step goes to all, from the first that answers or else from what is held") {
    Recorder second(panel, "Second");
    LoadLines(button, "connection=Target;Second|mode=increment");
    const struct {
        bool reachable[2];
        int held[2];
        const char* sent;
    } rows[] = {{{true, true}, {10, 20}, "11"},  // they differ
                {{false, true}, {10, 20}, "21"}, // one does not answer
                {{false, false}, {10, 20}, "22"},
                {{true, false}, {-5, 20}, "-4"}};
    for (const auto& row : rows) {
        INFO(std::string(row.sent));
        target.reachable = row.reachable[0];
        second.reachable = row.reachable[1];
        target.value = row.held[0];
        second.value = row.held[1];
        Click(button);
        CHECK(target.Take() == row.sent);
        CHECK(second.Take() == row.sent);
        CHECK(IsMarked(button) == (!target.reachable && !second.reachable));
    }
    PressButton(button);
    target.reachable = second.reachable = false;
    CHECK_FALSE(IsMarked(button)); // while it is held it asks when it steps
    ReleaseCapture();
    target.Take();
    Load(button, "connection=");
    Click(button);
    CHECK_FALSE(IsMarked(button)); // bound to nothing, it misses nobody
}

TEST_CASE_FIXTURE(Fixture, "a lost capture ends the hold and sends nothing") {
    Load(button, "mode=increment");
    PressButton(button);
    SetCapture(panel.Window());
    CHECK(Text(button, "ispressed") == "0");
    ReleaseButton(button);
    ReleaseCapture();
    PressButton(button);
    ph_SetMode(panel.Root(), 1); // edited while it is held
    ReleaseButton(button);
    MSG posted;
    CHECK(TakePosted(panel.Window(), WM_LBUTTONUP, posted));
    CHECK(GetCapture() == nullptr);
    CHECK(target.Take().empty());
    ph_SetMode(panel.Root(), 0);
    PressButton(button);
    panel.Close();
    CHECK(GetCapture() == nullptr);
}

TEST_CASE("a button that is left while it is held is drawn released and still acts") {
    Fixture fixture(TestPanel::Visible);
    MoveCursor(fixture.panel, 30, 30);
    LoadLines(fixture.button, "captureperiod=0|properties=1,0");
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    Pump(50);
    CHECK(fixture.target.Take() == "1");
    CHECK(Text(fixture.button, "ispressed") == "1");
    MoveCursor(fixture.panel, 300, 300);
    CHECK(Text(fixture.button, "ispressed") == "0");
    CHECK(fixture.target.Take().empty());
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    Pump(50);
    CHECK(fixture.target.Take() == "0");
}

TEST_CASE_FIXTURE(Fixture, "a question stands before the release") {
    LoadLines(button, "caption=Amplifier|confirm=Off?\\nReally\\toff?|properties=1,5|click=Target*note=x");
    {
        Answer no("Amplifier", IDNO);
        Click(button);
        CHECK(no.Question() == "Off?\nReally\toff?");
    }
    CHECK(target.sets.empty());
    CHECK(Text(button, "ispressed") == "0");
    {
        Answer yes("Amplifier", IDYES);
        Click(button);
    }
    REQUIRE(target.sets.size() == 2);
    CHECK(target.sets[0].text == "x");
    CHECK(target.sets[1].value == 5);
    target.sets.clear();

    HWND gone = button;
    SUBCASE("the button goes while it is asked") {}
    SUBCASE("the panel goes while it is asked") {
        gone = panel.Window();
    }
    Answer yes("Amplifier", IDYES, [gone] { SendMessageA(gone, WM_CLOSE, 0, 0); });
    Click(button);
    CHECK(yes.Question() != "(none)");
    CHECK(!IsWindow(gone));
    CHECK(target.sets.empty());
}

TEST_CASE_FIXTURE(Fixture, "a click sets any keyword of any object") {
    const HWND other = panel.Create("BBUTTON", "Other");
    panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,100,50,\n");
    Load(button, "caption=100%n");
    const auto click = [this](const std::string& line) {
        CHECK(Load(button, "click=" + line) == 1);
        target.sets.clear();
        Click(button);
    };
    click("other*caption=<%l|%c|%%n|%x|%>"); // each once
    constexpr const char* EXPANDED = "<100%n|Target|%Button|%x|%>";
    CHECK(Text(other, "caption") == EXPANDED);
    click("AMP1*gain=33");
    CHECK(panel.Parameter("AMP1*gain") == "33");
    click("title=Scene %n");
    CHECK(Text(panel.Window(), "title") == "Scene Button");
    click("note=for all"); // the root does not know it
    REQUIRE(target.sets.size() == 2);
    CHECK(target.sets[0].text == "for all");
    for (const char* nothing : {"Nobody*caption=x", "Other*nokeyword=x", "Other*", "*", "%", "="}) {
        CAPTURE(nothing);
        click(nothing);
        CHECK(Text(other, "caption") == EXPANDED);
    }
    LoadLines(button, "connection=|caption=" + std::string(500, 'c'));
    click("Other*caption=%l%l%l%l%l%l%l%l%l%l"); // more than a line holds
    CHECK(Text(other, "caption") == EXPANDED);
}

TEST_CASE_FIXTURE(Fixture, "an idle button marks a value that is neither of its two") {
    LoadLines(button, "captureperiod=0|properties=1,0");
    for (const int value : {1, 7, 0}) {
        target.value = value;
        CHECK(IsMarked(button) == (value == 7));
        CHECK((Picture(button).At(7, 4) == RGB(255, 176, 0)) == (value == 7));
    }
    target.reachable = false;
    CHECK(IsMarked(button));
    CHECK(target.sets.empty());
}

TEST_CASE_FIXTURE(Fixture, "drawing") {
    Load(button, "caption=");
    for (const bool isPressed : {false, true}) {
        if (isPressed) {
            PressButton(button);
            ObjectOf(button).flags = 0; // no focus frame
        }
        const Picture picture(button);
        CHECK(picture.At(0, 0) == RGB(0, 0, 0));
        CHECK(picture.At(50, 20) == (isPressed ? RGB(234, 224, 3) : RGB(234, 184, 3)));
        CHECK(picture.At(50, 1) ==
              (isPressed ? RGB(234, 224, 3) : RGB(234, 144, 3))); // shaded in rows, in columns
    }
    const TestFolder folder;
    CHECK(Load(button, "bitmap=" + folder.Write("button.bmp", BitmapFile(60, 20, 0x112233))) == 1);
    CHECK(SizeText(button) == "30 x 20");
    CHECK(Picture(button).At(29, 19) == RGB(0x11, 0x22, 0x33));
    ReleaseButton(button);
}

TEST_SUITE_END();
