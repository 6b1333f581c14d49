// What is particular to the static text, and what it shares with the edit field.

#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("Static");

namespace {

constexpr const char* DEVICES = "AMP1*device=simulated\n"
                                "AMP1*gain=float,-80,18,-20.25,dB\n"
                                "AMP1*name=text,,,Left,\n";
constexpr const char* CLASSES[] = {"BSTATIC", "BEDIT"};
constexpr COLORREF GROUND = RGB(0x80, 0x90, 0xA0);
constexpr COLORREF LETTERS = RGB(0xFF, 0xFF, 0x00);

// First and last column that has a pixel of that colour; {-1, -1} for none.
std::pair<int, int> Columns(HWND control, COLORREF colour) {
    RECT client;
    GetClientRect(control, &client);
    const Picture picture(control);
    std::pair columns(-1, -1);
    for (int x = 0; x < client.right; ++x) {
        for (int y = 0; y < client.bottom; ++y) {
            if (picture.At(x, y) == colour) {
                columns = {columns.first < 0 ? x : columns.first, x};
                break;
            }
        }
    }
    return columns;
}

} // namespace

TEST_CASE("texts and numbers are followed by datatype and format") {
    for (const char* className : CLASSES) {
        CAPTURE(std::string(className));
        TestPanel panel;
        panel.Declare(DEVICES);
        Load(panel.Create("BTRISTATEBUTTON", "Switch"), "offvalue=16777217");
        HWND text = panel.Create(className, "Title");
        CHECK(Text(text, "caption") == "Title");
        const struct {
            const char* line;
            int type;
            const char* shown;
            const char* value;
        } rows[] = {
            {"function=AMP1*name", 11, "Left", "Left"},
            {"function=AMP1*gain", 11, "-20.25", "-20.25"},
            {"datatype=f", 9, "-20.25", "-20.25"},
            {"fmt=%.1f dB", 9, "-20.2 dB", "-20.25"},
            {"datatype=d", 5, "-20.0 dB", "-20"},
            {"fmt=", 5, "-20", "-20"},
            {"function=", 5, "-20", "-20"},
            {"connection=Switch", 5, "16777217", "16777217"}, // which no float holds
            {"datatype=string", 11, "16777217", "16777217"},
        };
        for (const auto& row : rows) {
            CAPTURE(std::string(row.line));
            CHECK(Load(text, row.line) == 1);
            Poll(text);
            CHECK(SendMessageA(text, CWM_GETCONTROLTYPE, 0, 0) == row.type);
            CHECK(TextOf(text) == row.shown);
            CHECK(Text(text) == row.value);
        }
        CHECK(panel.Parameter("AMP1*gain") == "-20.25"); // nothing was sent
        CHECK(Text(text, "caption") == "Title");         // a panel file does not depend on the devices
        Load(text, "datatype=d");
        Load(text, "connection=");
        Load(text, "function=AMP1*gain");
        CHECK(Load(text, "value=6.6") == 1);
        CHECK(panel.Parameter("AMP1*gain") == "7");
    }
}

TEST_CASE("colours, the panel behind, and the place of the text") {
    TestPanel panel;
    Load(panel.Window(), "background=0x00a09080");
    HWND text = panel.Create("BSTATIC", "Text");
    CHECK(Columns(text, RGB(0, 0, 0)).first >= 0); // on a bright ground
    CHECK(Picture(text).At(99, 39) == GROUND);
    Load(text, "textcolor=0x0000ffff");
    const auto left = Columns(text, LETTERS);
    CHECK(left.first <= 4);
    Load(text, "alignment=right");
    const auto right = Columns(text, LETTERS);
    CHECK(right.second >= 95);
    Load(text, "alignment=center");
    const auto center = Columns(text, LETTERS);
    CHECK(std::abs(center.first - (99 - center.second)) <= 3);
    CHECK(center.second - center.first == left.second - left.first);

    CHECK(Load(text, "backgroundcolor=0x00102030") == 1);
    CHECK(Picture(text).At(0, 0) == RGB(0x30, 0x20, 0x10));
    CHECK(Load(text, "textcolor=") == 1);
    CHECK(Columns(text, RGB(255, 255, 255)).first >= 0); // on a dark one
    CHECK(Load(text, "backgroundcolor=") == 1);
    CHECK(Picture(text).At(0, 0) == GROUND);
}

TEST_CASE("a clipped text stands in the tooltip in full") {
    TestPanel panel(TestPanel::Visible);
    HWND text = panel.Create("BSTATIC", "Text");
    const auto hover = [&] { SendMessageA(text, WM_MOUSEMOVE, 0, At(5, 5)); };
    hover();
    CHECK(TipOf(text).empty());
    const std::string caption = "A text that does not fit into a control of this width";
    Load(text, "caption=" + caption);
    hover();
    CHECK(TipOf(text) == caption);
    SetWindowPos(text, nullptr, 0, 0, 600, 40, SWP_NOMOVE | SWP_NOZORDER);
    hover();
    CHECK(TipOf(text).empty());
}

TEST_CASE("long texts and line ends harm nothing") {
    TestPanel panel(TestPanel::Visible);
    for (const char* className : CLASSES) {
        CAPTURE(std::string(className));
        HWND text = panel.Create(className, "Text");
        Load(text, "alignment=center");
        std::string line(TEXT_SIZE - 1, 'w');
        line.replace(10, 2, "\r\n");
        CHECK(Send(text, COMMAND_SET, DATATYPE_TEXT, line.data()) == 1);
        CHECK((Text(text).size() == TEXT_SIZE - 2 && Text(text)[10] == ' '));
        UpdateWindow(text);
        SetWindowPos(text, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER);
        { const Picture picture(text); }
        SetWindowTextA(text, std::string(100000, 'x').c_str());
        CHECK(Text(text) == std::string(TEXT_SIZE - 1, 'x'));
    }
}

TEST_SUITE_END();
