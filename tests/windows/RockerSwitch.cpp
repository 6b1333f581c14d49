#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("RockerSwitch");

namespace {

// 100 wide and 40 high: it lies, with its lower end on the left.
struct Fixture {
    Fixture() {
        rocker = panel.Create("SWITCH", "Rocker");
        LoadLines(rocker, "connection=Target|interval=100000");
        SetFocus(rocker);
    }
    void Press(int x, int y = 20) const { SendMessageA(rocker, WM_LBUTTONDOWN, MK_LBUTTON, At(x, y)); }
    void ClickAt(int x, int y = 20) const {
        Press(x, y);
        ReleaseButton(rocker);
    }
    void Key(WPARAM key) const {
        SendMessageA(rocker, WM_KEYDOWN, key, 0);
        SendMessageA(rocker, WM_KEYUP, key, 0);
    }
    void Wheel(short distance) const {
        SendMessageA(rocker, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(distance)), 0);
    }
    TestPanel panel{TestPanel::Visible};
    Recorder target{panel, "Target"};
    HWND rocker;
};

constexpr int LOWER = 10, UPPER = 90;

} // namespace

TEST_CASE_FIXTURE(Fixture, "a click on a half moves it there by one position, keys and wheel too") {
    Load(rocker, "positions=-1,0,1");
    Press(UPPER);
    CHECK(target.Take().empty()); // the release acts
    ReleaseButton(rocker);
    CHECK(target.Take() == "1");
    ClickAt(UPPER);
    CHECK(target.Take().empty()); // it is there
    ClickAt(LOWER);
    ClickAt(LOWER);
    CHECK(target.Take() == "0 -1");
    for (const WPARAM key :
         {VK_UP, VK_RIGHT, VK_RIGHT, VK_LEFT, VK_DOWN, VK_DOWN, VK_SPACE, VK_RETURN, VK_SPACE}) {
        Key(key);
    }
    CHECK(target.Take() == "0 1 0 -1 0 1 -1");
    for (const short distance : {120, 120, 120, -120}) {
        Wheel(distance);
    }
    CHECK(target.Take() == "0 1 0");
    SetWindowPos(rocker, nullptr, 0, 0, 40, 100, SWP_NOMOVE | SWP_NOZORDER); // upright
    ClickAt(20, 10);
    ClickAt(20, 90);
    CHECK(target.Take() == "1 0");
    Press(20, 10);
    SetCapture(panel.Window()); // taken away
    ReleaseButton(rocker);
    ReleaseCapture();
    CHECK(target.Take().empty());
    ph_SetMode(panel.Root(), 1);
    Key(VK_UP);
    Wheel(120);
    ClickAt(20, 10);
    CHECK(target.Take().empty());
}

TEST_CASE_FIXTURE(Fixture, "a momentary one springs back however the hold ends") {
    const std::pair<const char*, const char*> kinds[] = {{"positions=3,7", "7 3"},
                                                         {"positions=-1,0,1", "1 0"}};
    const std::function<void()> ends[] = {
        [this] { ReleaseButton(rocker); },         [this] { SetCapture(panel.Window()); },
        [this] { ShowWindow(rocker, SW_HIDE); },   [this] { ph_SetMode(panel.Root(), 1); },
        [this] { Load(rocker, "positions=8,9"); },
    };
    for (const auto& [positions, sent] : kinds) {
        for (const auto& end : ends) {
            LoadLines(rocker, std::string("momentary=1|") + positions);
            Press(UPPER);
            end();
            CHECK(target.Take() == sent);
            ShowWindow(rocker, SW_SHOW);
            ph_SetMode(panel.Root(), 0);
        }
        Load(rocker, positions);
        for (const WPARAM key : {VK_SPACE, VK_RIGHT, VK_RETURN}) {
            SetFocus(rocker);
            Key(key);
            CHECK(target.Take() == sent);
            SendMessageA(rocker, WM_KEYDOWN, key, 0);
            SetFocus(panel.Window());
            CHECK(target.Take() == sent);
        }
        Wheel(120); // nothing that could be held
        CHECK(target.Take().empty());
    }
    Press(LOWER);
    SUBCASE("deleted") {
        DestroyWindow(rocker);
    }
    SUBCASE("closed") {
        panel.Close();
    }
    CHECK(target.Take() == "-1 0");
    target.onSet = nullptr;
}

TEST_CASE_FIXTURE(Fixture, "the last that each target gets of a momentary one is where it springs back to") {
    Recorder second(panel, "Second");
    LoadLines(rocker, "momentary=1|connection=Target;Second");
    target.onSet = [this] { DestroyWindow(rocker); };
    Press(UPPER);
    CHECK(target.Take() == "1 0");
    CHECK(second.Take() == "0");
    target.onSet = nullptr;
}

TEST_CASE_FIXTURE(Fixture, "a question stands before a move, with the text of the position as its title") {
    LoadLines(rocker, "confirm=Move?|caption=DOWN;Rocker up");
    for (const int answer : {IDNO, IDYES}) {
        Answer asked("Rocker up", answer);
        Key(VK_UP);
        CHECK(asked.Question() == "Move?");
        CHECK(target.Take() == (answer == IDYES ? "1" : ""));
    }
}

TEST_CASE_FIXTURE(Fixture, "a value that is no position is shown as such") {
    LoadLines(rocker, "positions=4,5,6");
    CHECK(Text(rocker) == "5"); // it rests
    const auto shade = [this](int x) {
        ObjectOf(rocker).flags = 0;
        return GetGValue(Picture(rocker).At(x, 30));
    };
    // What is down is dark.
    for (const auto& [value, slope] : {std::pair(4, 1), {5, 0}, {6, -1}, {9, 0}, {5, 0}}) {
        CAPTURE(value);
        target.value = value;
        CHECK(IsMarked(rocker) == (value == 9));
        const int difference = shade(92) - shade(8);
        CHECK((difference > 30 ? 1 : (difference < -30 ? -1 : 0)) == slope);
        CHECK((slope != 0 || std::abs(difference) < 10));
    }
    Load(rocker, "connection=");
    Load(rocker, "value=1");
    CHECK(IsMarked(rocker)); // at once, and after a poll
    ClickAt(LOWER);
    CHECK(Text(rocker) == "4");
    CHECK_FALSE(IsMarked(rocker));
    const TestFolder folder;
    REQUIRE(Load(rocker, "bitmap=" + folder.Write("rocker.bmp", BitmapFile(60, 20, 0x112233))) == 1);
    CHECK(SizeText(rocker) == "20 x 20"); // one frame a position
    Load(rocker, "positions=0,1");
    CHECK(SizeText(rocker) == "30 x 20");
}

TEST_SUITE_END();
