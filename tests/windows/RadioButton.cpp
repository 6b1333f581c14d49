#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("RadioButton");

namespace {

struct Fixture {
    explicit Fixture(TestPanel::Visibility visibility = TestPanel::Visible) : panel(visibility) {
        for (int number = 1; number <= 4; ++number) {
            const std::string name = "R" + std::to_string(number);
            buttons.push_back(panel.Create("BRADIOBUTTON", name.c_str()));
            LoadLines(buttons.back(), "onvalue=" + std::to_string(number) + "|interval=100000");
        }
    }
    // "1 0 0 3": the values of all.
    std::string Values() const {
        std::string all;
        for (HWND button : buttons) {
            all += (all.empty() ? "" : " ") + Text(button);
        }
        return all;
    }
    static void Key(WPARAM key) { SendMessageA(GetFocus(), WM_KEYDOWN, key, 0); }
    TestPanel panel;
    std::vector<HWND> buttons;
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "those of one group that are bound to nothing exclude each other") {
    Load(buttons[3], "group=other");
    Click(buttons[1]);
    CHECK(Values() == "2 2 2 0");
    Click(buttons[3]);
    Load(buttons[0], "value=3");
    CHECK(Values() == "3 3 3 4");
    Load(buttons[0], "group=other"); // takes the value of its new group
    CHECK(Values() == "4 3 3 4");
    HWND late = panel.Create("BRADIOBUTTON", "Late");
    CHECK(Text(late) == "3");
    HWND strip = panel.Create("MIXER", "Strip");
    CHECK(Text(CreateControl("BRADIOBUTTON", "Inner", strip, &ObjectOf(strip))) == "0"); // another parent

    const std::string saved = panel.Saved();
    CHECK(saved.find("R1*value=4") != std::string::npos);
    const TestPanel second;
    second.Open(saved);
    CHECK(Text(second.Find("R1")) + Text(second.Find("R2")) == "43");
    CHECK(second.Saved() == saved);
}

TEST_CASE_FIXTURE(Fixture, "a bound one sends its number and follows what it is bound to") {
    Recorder target(panel, "Target");
    for (const int number : {0, 1}) {
        Load(buttons[number], "connection=Target");
    }
    Click(buttons[1]);
    CHECK(target.Take() == "2");
    CHECK(Values() == "0 2 0 0");
    CHECK(ObjectOf(buttons[0]).DueIn(GetTickCount()) == 0); // it asks at the next tick
    ph_Tick(panel.Root());
    CHECK(Values() == "2 2 0 0");
    Click(buttons[1]); // once more
    CHECK(target.Take() == "2");
    target.value = 9;
    CHECK_FALSE(IsMarked(buttons[0]));
    CHECK(Text(buttons[0]) == "9");
    target.reachable = false;
    CHECK(IsMarked(buttons[0]));
    CHECK(panel.Saved().find("R1*value=") == std::string::npos);
    CHECK(panel.Saved().find("R3*value=0") != std::string::npos);
    Load(buttons[0], "connection=");
    CHECK(Text(buttons[0]) == "0"); // with the others again
}

TEST_CASE_FIXTURE(Fixture, "arrow keys move and choose, or only move to one that asks") {
    LoadLines(buttons[2], "confirm=Really?|caption=Radio");
    ShowWindow(buttons[3], SW_HIDE);
    SetFocus(buttons[0]);
    const struct {
        WPARAM key;
        int focus;
        const char* value;
    } rows[] = {{VK_RIGHT, 1, "2"}, {VK_DOWN, 2, "2"}, {VK_RIGHT, 0, "1"},
                {VK_UP, 2, "1"},    {VK_LEFT, 1, "2"}, {VK_LEFT, 0, "1"}};
    for (const auto& row : rows) {
        Key(row.key);
        CHECK(GetFocus() == buttons[static_cast<std::size_t>(row.focus)]);
        CHECK(Text(buttons[0]) == row.value);
    }
    for (const int answer : {IDNO, IDYES}) {
        Answer asked("Radio", answer);
        Click(buttons[2]);
        CHECK(asked.Question() == "Really?");
        CHECK(Text(buttons[0]) == (answer == IDYES ? "3" : "1"));
    }
    ph_SetMode(panel.Root(), 1);
    SetFocus(buttons[0]);
    Key(VK_RIGHT); // the panel's
    CHECK(GetFocus() == buttons[0]);
}

TEST_CASE_FIXTURE(Fixture, "whatever the choice leads to") {
    Recorder target(panel, "Target");
    Load(buttons[1], "connection=Target");
    Load(buttons[0], "connection=Target");
    SetFocus(buttons[0]);
    target.onSet = [this] {
        for (HWND button : {buttons[1], buttons[0], buttons[2]}) {
            DestroyWindow(button);
        }
    };
    SUBCASE("by key") {
        Key(VK_RIGHT);
    }
    SUBCASE("by mouse") {
        Click(buttons[1]);
    }
    CHECK(target.Take() == "2");
    target.onSet = nullptr;
}

TEST_CASE_FIXTURE(Fixture, "the mark is lit where the value is its number") {
    LoadLines(buttons[0], "caption=|value=1");
    const auto colour = [this](int x, int y) {
        ObjectOf(buttons[0]).flags = 0; // no focus frame
        return Picture(buttons[0]).At(x, y);
    };
    const COLORREF lit = colour(10, 20);
    Load(buttons[0], "value=2");
    CHECK(colour(10, 20) != lit);
    const COLORREF panelColour = colour(60, 20);
    Load(buttons[0], "style=button");
    CHECK(colour(60, 20) != panelColour);
    REQUIRE(Load(buttons[0], "bitmap=.\\Controls\\SWITCHBUTTON_lamp_red_32x28.bmp") == 1);
    CHECK(SizeText(buttons[0]) == "32 x 28");
}

TEST_SUITE_END();
