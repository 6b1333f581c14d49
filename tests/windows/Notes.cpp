// What is particular to the field of several lines.

#include "tests/windows/Buttons.h"
#include "tests/windows/HeldKeys.h"

TEST_SUITE_BEGIN("Notes");

namespace {

struct Fixture {
    Fixture() {
        panel.Declare("DSP1*device=simulated\nDSP1*note=text,,,a\\nb,\n");
        SetWindowPos(notes, nullptr, 0, 0, 140, 60, SWP_NOMOVE | SWP_NOZORDER);
    }
    std::string Note() const { return panel.Parameter("DSP1*note"); }
    void Type(const char* text) const {
        SetFocus(notes);
        for (; *text != '\0'; ++text) {
            SendMessageA(notes, WM_CHAR, static_cast<unsigned char>(*text), 1);
        }
    }
    void Press(WPARAM key, const char* held = "") const {
        const HeldKeys keys(held);
        SendMessageA(notes, WM_KEYDOWN, key, 1);
        SendMessageA(notes, WM_CHAR, key == VK_RETURN && *held != '\0' ? '\n' : key, 1);
    }
    LRESULT First() const { return SendMessageA(notes, EM_GETFIRSTVISIBLELINE, 0, 0); }
    LRESULT Lines() const { return SendMessageA(notes, EM_GETLINECOUNT, 0, 0); }

    TestPanel panel{TestPanel::Visible};
    HWND notes = panel.Create("BEDIT2", "Notes");
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "Enter begins a line, Ctrl+Enter and leaving send, Escape puts back") {
    CHECK(Text(notes, "caption") == "Notes");
    Load(notes, "function=DSP1*note");
    Poll(notes);
    CHECK(TextOf(notes) == "a\r\nb");
    SendMessageA(notes, EM_SETSEL, 9, 9);
    Type("c\\");
    Press(VK_RETURN);
    Type("d");
    ph_SetParameter(panel.Root(), "DSP1*note", "new");
    Poll(notes);
    CHECK(TextOf(notes) == "a\r\nbc\\\r\nd");
    CHECK(Note() == "new");
    Press(VK_RETURN, "Ctrl");
    CHECK(TextOf(notes) == "a\r\nbc\\\r\nd");
    CHECK(Note() == "a\\nbc\\\\\\nd");
    CHECK(Text(notes) == Note());
    Type("x");
    Press(VK_ESCAPE);
    CHECK(TextOf(notes) == "a\r\nbc\\\r\nd");
    Type("y");
    SetFocus(panel.Window());
    CHECK(Note().find('y') != std::string::npos);
    // In a dialog Enter is the field's, Tab is not.
    SetFocus(notes);
    for (const auto& [key, isWanted] : {std::pair(VK_RETURN, true), {VK_TAB, false}, {VK_ESCAPE, false}}) {
        MSG message{notes, WM_KEYDOWN, static_cast<WPARAM>(key), 1, 0, {}};
        const LRESULT wanted =
            SendMessageA(notes, WM_GETDLGCODE, static_cast<WPARAM>(key), reinterpret_cast<LPARAM>(&message));
        CHECK(((wanted & (DLGC_WANTMESSAGE | DLGC_WANTTAB)) != 0) == isWanted);
    }
    Load(notes, "readonly=1");
    const std::string before = TextOf(notes);
    Type("z");
    CHECK(TextOf(notes) == before);
}

TEST_CASE_FIXTURE(Fixture,
                  "a log keeps the newest lines, and scrolls down unless somebody reads further up") {
    LoadLines(notes, "caption=|maximum=100");
    for (int line = 0; line < 30; ++line) {
        Load(notes, "append=line " + std::to_string(line));
        CHECK(SendMessageA(notes, WM_GETTEXTLENGTH, 0, 0) <=
              100 + 10); // a line end is one character of a text
    }
    CHECK(Text(notes, "caption").ends_with("line 28\\nline 29"));
    CHECK_FALSE(Text(notes, "caption").starts_with("line 0"));
    const LRESULT end = First();
    CHECK(end > 0);
    CHECK(end + 5 >= Lines());
    SendMessageA(notes, EM_LINESCROLL, 0, -4);
    const auto shown = [&] {
        char text[40] = "";
        *reinterpret_cast<WORD*>(text) = sizeof text;
        text[SendMessageA(notes, EM_GETLINE, static_cast<WPARAM>(First()), reinterpret_cast<LPARAM>(text))] =
            '\0';
        return std::string(text);
    };
    const std::string read = shown();
    Load(notes, "append=line 30");
    CHECK(shown() == read);
    SendMessageA(notes, EM_LINESCROLL, 0, 100);
    Load(notes, "append=line 31\\nand more");
    CHECK(Text(notes, "caption").ends_with("line 31\\nand more"));
    CHECK(First() + 5 >= Lines());
    CHECK(Text(notes, "append").empty());
    Load(notes, "append=" + std::string(200, 'x'));
    CHECK(Text(notes, "caption") == std::string(100, 'x'));
}

TEST_CASE_FIXTURE(Fixture, "what the style holds is saved in it, and acts when the panel is opened again") {
    LoadLines(notes, "wrap=0|alignment=right|caption=a\\nb\\\\");
    CHECK((GetWindowLongA(notes, GWL_STYLE) & (ES_AUTOHSCROLL | ES_RIGHT)) == 0);
    const TestPanel again;
    CHECK(again.Open(panel.Saved()) == 1);
    HWND opened = again.Find("Notes");
    const LONG style = GetWindowLongA(opened, GWL_STYLE);
    CHECK((style & (ES_AUTOHSCROLL | ES_RIGHT | ES_CENTER)) == (ES_AUTOHSCROLL | ES_RIGHT));
    CHECK((style & (WS_HSCROLL | WS_VSCROLL | ES_MULTILINE)) == (WS_HSCROLL | WS_VSCROLL | ES_MULTILINE));
    CHECK(TextOf(opened) == "a\r\nb\\");
    CHECK(again.Saved() == panel.Saved());
}

TEST_CASE_FIXTURE(Fixture, "a text that came with other line ends and signs is one of lines") {
    SetWindowTextA(notes, "a\r\nb\tc\\");
    CHECK(Text(notes) == "a\\nb c\\\\");
    CHECK(TextOf(notes) == "a\r\nb c\\");
    Load(notes, "function=DSP1*note");
    ph_SetParameter(panel.Root(), "DSP1*online", "0");
    CHECK(IsMarked(notes));
    const Picture picture(notes);
    bool hasSign = false;
    for (int y = 0; y < 60; ++y) {
        hasSign = hasSign || picture.At(7, y) == RGB(255, 176, 0);
    }
    CHECK(hasSign);
    // What cannot be written in a property line is cut.
    SetWindowTextA(notes, std::string(TEXT_SIZE - 1, '\\').c_str());
    CHECK(Text(notes).size() <= TEXT_SIZE - 1);
    CHECK(Load(notes, "value=" + Text(notes)) == 1);
}

TEST_SUITE_END();
