// What is particular to the edit field.

#include "tests/windows/Buttons.h"

#include <olectl.h>

TEST_SUITE_BEGIN("Edit");

namespace {

constexpr const char* DEVICES =
    "AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\nAMP1*name=text,,,Left,\n";

// Types over everything in the field.
void Type(HWND edit, const char* text) {
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SendMessageA(edit, WM_CHAR, VK_BACK, 1);
    for (; *text != '\0'; ++text) {
        SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(*text), 1);
    }
}

void Press(HWND edit, WPARAM key) {
    SendMessageA(edit, WM_KEYDOWN, key, 1);
    SendMessageA(edit, WM_CHAR, key, 1);
}

// Column of the character in the field; the first one at the left end of the text.
int ColumnOf(HWND edit, int character) {
    return LOWORD(SendMessageA(edit, EM_POSFROMCHAR, static_cast<WPARAM>(character), 0));
}

// A field for a number of a device.
struct Fixture {
    Fixture() {
        panel.Declare(DEVICES);
        CHECK(LoadLines(edit, "datatype=f|fmt=%.1f|limits=-60,12|function=AMP1*gain"));
        Poll(edit);
    }
    std::string Gain() const { return panel.Parameter("AMP1*gain"); }

    TestPanel panel{TestPanel::Visible};
    HWND edit = panel.Create("BEDIT", "Edit");
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "Enter takes, Escape restores, leaving takes what was changed") {
    Load(edit, "fmt=%.1f dB");
    CHECK(TextOf(edit) == "-20.0 dB");
    const struct {
        const char* typed;
        const char* shown;
        const char* gain;
    } rows[] = {{"-6.25", "-6.2 dB", "-6.25"}, {"-3 dB", "-3.0 dB", "-3"}, {"99", "12.0 dB", "12"},
                {"loud", "12.0 dB", "12"},     {"", "12.0 dB", "12"},      {"0", "0.0 dB", "0"}};
    for (const auto& row : rows) {
        CAPTURE(row.typed);
        Type(edit, row.typed);
        Press(edit, VK_RETURN);
        CHECK(TextOf(edit) == row.shown);
        CHECK(Gain() == row.gain);
    }
    Type(edit, "5");
    Press(edit, VK_ESCAPE);
    CHECK(TextOf(edit) == "0.0 dB");
    CHECK(Gain() == "0");
    DWORD end = 0;
    SendMessageA(edit, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
    CHECK(end == 6); // the next value is typed over it
    Type(edit, "5");
    SetFocus(panel.Window());
    CHECK(Gain() == "5");

    // Nothing typed, nothing sent.
    ph_SetParameter(panel.Root(), "AMP1*gain", "7");
    SetFocus(edit);
    Press(edit, VK_RETURN);
    SetFocus(panel.Window());
    CHECK(Gain() == "7");
    // What was typed is sent even when it is the old value: what it is bound to may hold another.
    Type(edit, "5");
    Press(edit, VK_RETURN);
    CHECK(Gain() == "5");
}

TEST_CASE_FIXTURE(Fixture, "polls show in the field, except while it is being typed into") {
    SetFocus(edit);
    Poll(edit);
    CHECK(TextOf(edit) == "-20.0"); // the focus alone does not matter
    Type(edit, "-1");
    ph_SetParameter(panel.Root(), "AMP1*gain", "3");
    Poll(edit);
    CHECK(TextOf(edit) == "-1");
    Press(edit, VK_ESCAPE);
    CHECK(TextOf(edit) == "3.0"); // the value of now, not that of the start
    SetCapture(edit);             // the mouse selects in it
    ph_SetParameter(panel.Root(), "AMP1*gain", "3.5");
    Poll(edit);
    CHECK(TextOf(edit) == "3.0");
    ReleaseCapture();
    CHECK(TextOf(edit) == "3.5");
    SendMessageA(edit, EM_SETSEL, 1, 2);
    ph_SetParameter(panel.Root(), "AMP1*gain", "4");
    Poll(edit);
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    CHECK(TextOf(edit) == "4.0");
    CHECK(start == 1);
    CHECK(end == 2);
}

TEST_CASE("a field inside a strip shows a fader and sets it, and is asked for its colours") {
    TestPanel panel(TestPanel::Visible);
    HWND strip = panel.Create("MIXER", "Strip");
    HWND fader = panel.Find("Strip*Fader");
    HWND edit = panel.Find("Strip*Value");
    Load(fader, "properties=-80,0,-30");
    SetValue(fader, -12.5F);
    Poll(edit);
    CHECK(TextOf(edit) == "-12.5");
    Type(edit, "-40");
    Press(edit, VK_RETURN);
    CHECK(Value(fader) == -40.0F);
    HWND plain = panel.Find("Strip*Edit");
    CHECK(TextOf(plain).empty());
    const HDC dc = CreateCompatibleDC(nullptr);
    const auto ask = [&](HWND field, UINT message) { // as the field asks its parent
        const auto brush = reinterpret_cast<HBRUSH>(
            SendMessageA(strip, message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(field)));
        LOGBRUSH described{};
        CHECK(GetObjectA(brush, sizeof described, &described) != 0);
        CHECK(GetBkColor(dc) == described.lbColor);
        return std::pair(described.lbColor, GetTextColor(dc));
    };
    CHECK(ask(edit, WM_CTLCOLOREDIT) == std::pair<COLORREF, COLORREF>(0x000000, 0x00CCFF));
    CHECK(ask(plain, WM_CTLCOLORSTATIC) == std::pair<COLORREF, COLORREF>(0x4C4C4C, 0xFFFFFF));
    DeleteDC(dc);
}

TEST_CASE("the text is aligned while it is shown and while it is typed") {
    TestPanel panel(TestPanel::Visible);
    HWND edit = panel.Create("BEDIT", "Edit"); // 100 wide
    RECT client;
    GetClientRect(edit, &client);
    Load(edit, "caption=ab");
    const int left = ColumnOf(edit, 0);
    CHECK(left <= 3);
    const int letter = ColumnOf(edit, 1) - left; // its width
    Load(edit, "alignment=right");
    const int right = ColumnOf(edit, 0);
    CHECK(right >= client.right - 3 * letter);
    CHECK(right < client.right - letter);
    Load(edit, "alignment=center");
    CHECK(std::abs(ColumnOf(edit, 0) - (left + right) / 2) <= 2);

    Load(edit, "alignment=right");
    Type(edit, "aa");
    const int two = ColumnOf(edit, 0);
    SendMessageA(edit, WM_CHAR, 'a', 1);
    CHECK(two - ColumnOf(edit, 0) == letter);
    // More than fits is typed all the same.
    Type(edit, "0123456789012345678901234567890123456789");
    CHECK(TextOf(edit).size() == 40);
    Type(edit, "aa");
    Press(edit, VK_RETURN);
    SetWindowPos(edit, nullptr, 0, 0, 200, 40, SWP_NOMOVE | SWP_NOZORDER);
    CHECK(ColumnOf(edit, 0) == two + 100);
    Load(edit, "alignment=left");
    CHECK(ColumnOf(edit, 0) == left);
}

TEST_CASE("keys in a dialog, presses in an edited panel, and a field that is read-only") {
    TestPanel panel(TestPanel::Visible);
    HWND edit = panel.Create("BEDIT", "Edit");
    SetFocus(edit);
    const auto wants = [edit](WPARAM key) {
        MSG message{edit, WM_KEYDOWN, key, 1, 0, {}};
        return (SendMessageA(edit, WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message)) &
                DLGC_WANTMESSAGE) != 0;
    };
    CHECK(wants(VK_RETURN));
    CHECK_FALSE(wants(VK_TAB));
    CHECK_FALSE(wants(VK_ESCAPE)); // closes the dialog
    SendMessageA(edit, WM_CHAR, 'x', 1);
    CHECK(wants(VK_ESCAPE));

    CHECK(Load(edit, "readonly=1") == 1);
    const std::string before = TextOf(edit);
    SendMessageA(edit, WM_CHAR, 'y', 1);
    CHECK(TextOf(edit) == before);

    SendMessageA(edit, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(edit), At(5, 5)); // no menu of the system's
    ph_SetMode(panel.Root(), 1);
    SendMessageA(edit, EM_SETSEL, 0, 0);
    SendMessageA(edit, WM_LBUTTONDBLCLK, MK_LBUTTON, At(5, 5));
    CHECK(SendMessageA(edit, EM_GETSEL, 0, 0) == 0); // nothing was selected
}

TEST_CASE_FIXTURE(Fixture, "a field whose device is gone shows the sign beside its text") {
    const int left = ColumnOf(edit, 0);
    ph_SetParameter(panel.Root(), "AMP1*online", "0");
    CHECK(IsMarked(edit));
    CHECK(ColumnOf(edit, 0) == left + 14);
    CHECK(Picture(edit).At(7, (40 - 11) / 2) == RGB(255, 176, 0));
    ph_SetParameter(panel.Root(), "AMP1*online", "1");
    CHECK_FALSE(IsMarked(edit));
    CHECK(ColumnOf(edit, 0) == left);
}

TEST_SUITE_END();
