// What is particular to the combo box.

#include "tests/windows/Buttons.h"

#include <olectl.h>

TEST_SUITE_BEGIN("ComboBox");

namespace {

constexpr DWORD EDITABLE = CBS_DROPDOWN;

HWND CreateCombo(const TestPanel& panel, DWORD style) {
    return CreateWindowExA(0, "BCOMBOBOX", "Combo", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 10, 20, 120,
                           120, panel.Window(), nullptr, nullptr, panel.Root());
}

// A list of three, bound to a device, and its field where it has one.
struct Fixture {
    explicit Fixture(DWORD style = CBS_DROPDOWNLIST) : combo(CreateCombo(panel, style)) {
        panel.Declare("DSP1*device=simulated\nDSP1*preset=text,,,b,\nDSP1*presets=text,,,Speech=b;Live,\n");
        CHECK(LoadLines(combo, "items=Zero=a;One=b;Two=c|function=DSP1*preset"));
        Poll(combo);
        SetFocus(combo);
        MoveCursor(panel, 400, 5); // a list that drops down below it would follow it
    }
    std::string Preset() const { return panel.Parameter("DSP1*preset"); }
    HWND Field() const { return FindWindowExA(combo, nullptr, "EDIT", nullptr); }
    void Press(WPARAM key) const {
        SendMessageA(GetFocus(), WM_KEYDOWN, key, 1);
        PumpAll();
    }
    void Set(const char* preset) const {
        ph_SetParameter(panel.Root(), "DSP1*preset", preset);
        Poll(combo);
    }
    void Drop() const { SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0); }
    bool IsDropped() const { return SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0) != 0; }
    // A click on a line of the list that is dropped down.
    void Click(int line) const {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(combo, &info);
        const LRESULT height = SendMessageA(combo, CB_GETITEMHEIGHT, 0, 0);
        const LPARAM place = At(10, static_cast<int>(height) * line + 3);
        SendMessageA(info.hwndList, WM_LBUTTONDOWN, MK_LBUTTON, place);
        SendMessageA(info.hwndList, WM_LBUTTONUP, 0, place);
        PumpAll();
    }

    TestPanel panel{TestPanel::Visible};
    HWND combo;
};

struct EditableFixture : Fixture {
    EditableFixture() : Fixture(EDITABLE) {}
    void Type(const char* text) const {
        SendMessageA(Field(), EM_SETSEL, 0, -1);
        for (; *text != '\0'; ++text) {
            SendMessageA(Field(), WM_CHAR, static_cast<unsigned char>(*text), 1);
        }
    }
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "a choice is sent when it is made, and not before") {
    CHECK(TextOf(combo) == "One");
    Press(VK_DOWN); // the closed list
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 2);
    CHECK(Preset() == "b");
    Press(VK_RETURN);
    CHECK(Preset() == "c");
    Press(VK_UP);
    Press(VK_ESCAPE);
    CHECK(TextOf(combo) == "Two");
    SendMessageA(combo, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    CHECK(Preset() == "c");
    SetFocus(panel.Window());
    PumpAll();
    CHECK(Preset() == "b");
    SendMessageA(combo, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0); // the mouse merely is over it
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 1);

    SetFocus(combo);
    for (const bool isChosen : {false, true}) {
        Drop();
        Press(VK_DOWN);
        CHECK(Preset() == "b");
        CHECK(IsDropped());
        Press(isChosen ? VK_RETURN : VK_ESCAPE);
        CHECK_FALSE(IsDropped());
        CHECK(Preset() == (isChosen ? "c" : "b"));
        CHECK(TextOf(combo) == (isChosen ? "Two" : "One"));
    }
    Drop();
    Click(0);
    CHECK_FALSE(IsDropped());
    CHECK(Preset() == "a");
    ph_SetParameter(panel.Root(), "DSP1*preset", "c");
    Drop();
    Click(0); // what is shown already can be chosen
    CHECK(Preset() == "a");
    Drop();
    Press(VK_DOWN);
    SetFocus(panel.Window());
    PumpAll();
    CHECK(Preset() == "a");
    CHECK(TextOf(combo) == "Zero");
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 0);
}

TEST_CASE_FIXTURE(Fixture, "polls show in the list, except while somebody chooses") {
    Drop();
    Set("c");
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 1);
    Press(VK_ESCAPE);
    Poll(combo);
    CHECK(TextOf(combo) == "Two");
    Press(VK_UP);
    Set("a");
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 1);
    Press(VK_ESCAPE);
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 0);
    Press(VK_DOWN);
    ph_SetMode(panel.Root(), 1);
    SetFocus(combo);
    Press(VK_DOWN); // the panel's
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 1);
}

TEST_CASE_FIXTURE(Fixture,
                  "the list drops down with the lines it is to have, whatever size the control gets") {
    const auto dropped = [&] {
        Drop();
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(combo, &info);
        RECT area;
        GetWindowRect(info.hwndList, &area);
        Press(VK_ESCAPE);
        return (area.bottom - area.top) / static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, 0, 0));
    };
    CHECK(dropped() == 3);
    Load(combo, "lines=2");
    for (const int height : {20, 33, 400}) {
        SetWindowPos(combo, nullptr, 0, 0, 130, height, SWP_NOMOVE | SWP_NOZORDER);
        CHECK(dropped() == 2);
    }
    const RECT known = ObjectOf(combo).rectangle;
    Load(combo, "lines=50");
    CHECK(dropped() == 3);
    CHECK(EqualRect(&known, &ObjectOf(combo).rectangle));
}

TEST_CASE_FIXTURE(Fixture, "a value that the list does not have is shown as it is, with the sign") {
    constexpr COLORREF SIGN = RGB(255, 176, 0);
    const auto hasSign = [&] {
        const Picture picture(combo);
        for (int x = 0; x < 20; ++x) {
            for (int y = 0; y < 20; ++y) {
                if (picture.At(x, y) == SIGN) {
                    return true;
                }
            }
        }
        return false;
    };
    CHECK_FALSE(hasSign());
    Set("x & y");
    CHECK(TextOf(combo) == "x & y");
    CHECK(Text(combo) == "x & y");
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == CB_ERR);
    CHECK(hasSign());
    Set("");
    CHECK_FALSE(hasSign());
    Set("a");
    ph_SetParameter(panel.Root(), "DSP1*online", "0");
    CHECK(IsMarked(combo));
    CHECK(hasSign());
    CHECK(TextOf(combo) == "Zero");
    ph_SetParameter(panel.Root(), "DSP1*online", "1");
    CHECK_FALSE(IsMarked(combo));
    CHECK_FALSE(hasSign());
}

TEST_CASE_FIXTURE(Fixture, "a device can have the list, and the control sorts it") {
    const auto lines = [&] {
        std::string all;
        for (LRESULT line = 0; line < SendMessageA(combo, CB_GETCOUNT, 0, 0); ++line) {
            char text[100] = "";
            SendMessageA(combo, CB_GETLBTEXT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text));
            all += std::string(text) + ";";
        }
        return all;
    };
    CHECK(LoadLines(combo, "sort=1|items=b\\;c=1;\xC4;a=2"));
    CHECK(lines() == "a;\xC4;b;c;");
    Load(combo, "value=1");
    CHECK(SendMessageA(combo, CB_GETCURSEL, 0, 0) == 2);
    Press(VK_UP);
    Press(VK_RETURN);
    CHECK(Preset() == "\xC4"); // without a value it stands for itself
    Load(combo, "itemsfunction=DSP1*presets");
    Poll(combo);
    CHECK(lines() == "Live;Speech;");
    ph_SetParameter(panel.Root(), "DSP1*presets", "New");
    Drop();
    Poll(combo);
    CHECK(lines() == "Live;Speech;");
    Press(VK_ESCAPE);
    Poll(combo);
    CHECK(lines() == "New;");
    CHECK(Load(combo, "items=Own") == 1);
    CHECK(lines() == "New;");
    Load(combo, "itemsfunction=DSP9*gone");
    CHECK(lines() == "Own;");
    CHECK(IsMarked(combo));
}

TEST_CASE_FIXTURE(Fixture,
                  "what is editable says the style, and a list that is walked does not end in the middle") {
    const auto style = [&] {
        const std::string saved = panel.Saved();
        return saved.substr(saved.find("\"Combo\" ") + 8, 10);
    };
    CHECK(style() == "0x50010003");
    CHECK(Load(combo, "editable=1") == 1);
    CHECK(style() == "0x50010042");
    CHECK(Field() == nullptr);
    const TestPanel again;
    CHECK(again.Open(panel.Saved()) == 1);
    CHECK(FindWindowExA(again.Find("Combo"), nullptr, "EDIT", nullptr) != nullptr);
    CHECK(again.Saved() == panel.Saved());

    for (int way = 0; way < 4; ++way) {
        CAPTURE(way);
        Recorder recorder(panel, "Recorder");
        HWND ending = CreateCombo(panel, way % 2 == 0 ? CBS_DROPDOWNLIST : EDITABLE);
        LoadLines(ending, "items=1;2;3|connection=Recorder");
        recorder.onSet = [&] { DestroyWindow(ending); };
        SetFocus(ending);
        if (way < 2) {
            SendMessageA(ending, CB_SHOWDROPDOWN, TRUE, 0);
        }
        Press(VK_DOWN);
        Press(VK_RETURN);
        CHECK_FALSE(IsWindow(ending));
    }
}

TEST_CASE_FIXTURE(EditableFixture, "an editable list takes what is typed, by its caption or as it is") {
    REQUIRE(Field() != nullptr);
    CHECK(GetFocus() == Field());
    CHECK(TextOf(Field()) == "One");
    Type("Two");
    Set("a");
    CHECK(TextOf(Field()) == "Two");
    Press(VK_RETURN);
    CHECK(Preset() == "c");
    Type("free text");
    CHECK(Preset() == "c");
    Press(VK_ESCAPE);
    CHECK(TextOf(Field()) == "Two");
    Type("free text");
    SetFocus(panel.Window());
    PumpAll();
    CHECK(Preset() == "free text");
    CHECK(TextOf(Field()) == "free text");
    CHECK_FALSE(IsMarked(combo));
    SetFocus(combo);
    Drop();
    Click(0);
    CHECK(Preset() == "a");
    CHECK(TextOf(Field()) == "Zero");
    Press(VK_DOWN);
    CHECK(TextOf(Field()) == "One");
    CHECK(Preset() == "a");
    Press(VK_ESCAPE);
    CHECK(TextOf(Field()) == "Zero");
    Press(VK_DOWN);
    SetFocus(panel.Window());
    PumpAll();
    CHECK(Preset() == "b");
}

TEST_SUITE_END();
