// What is particular to the reverse meter.

#include "logic/drawing/PanelColours.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/PartedImage.h"

TEST_SUITE_BEGIN("ReverseMeter");

namespace {

constexpr COLORREF UNLIT = RGB(0x20, 0x30, 0x40);
constexpr COLORREF LIT = RGB(0xC0, 0x80, 0x40);
// l_SendRequest(REVMETERPROPERTIES*, int, int, long, int*) as compilers of this platform name it
constexpr const char* SEND_REQUEST = "_Z13l_SendRequestP18REVMETERPROPERTIESiilPi";

using SendRequest = int __cdecl(HOSTINFO*, int, int, long, int*);

void Drag(HWND meter, int from, int to) {
    SendMessageA(meter, WM_LBUTTONDOWN, MK_LBUTTON, At(from, 20));
    SendMessageA(meter, WM_MOUSEMOVE, MK_LBUTTON, At(to, 20));
    SendMessageA(meter, WM_LBUTTONUP, 0, At(to, 20));
    SendMessageA(meter, WM_MOUSEMOVE, 0, At(from, 20));
}

} // namespace

TEST_CASE("a reverse meter combines what answers, and keeps its value when nothing does") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*a=float,-100,100,-10.5,\n"
                  "AMP2*device=simulated\nAMP2*b=float,-100,100,-20,\n");
    HWND meter = panel.Create("REVMETER", "Meter");
    Load(meter, "value=-5.5");
    CHECK_FALSE(IsMarked(meter)); // bound to nothing
    CHECK(Text(meter) == "-5.5");
    int whole = 0;
    CHECK(Send(meter, COMMAND_GET, DATATYPE_INTEGER, &whole) == 1);
    CHECK(whole == -5);
    Load(meter, "function=AMP1*a;AMP2*b");
    const struct {
        const char* parameter;
        const char* number;
        const char* combine;
        const char* value;
        bool isMarked;
    } rows[] = {
        {"AMP1*a", "-10.5", "max", "-10.5", false}, {"AMP1*a", "-10.5", "avg", "-15.25", false},
        {"AMP1*a", "-99", "avg", "-40", false}, // never beyond the range
        {"AMP1*online", "0", "max", "-20", true},   {"AMP2*online", "0", "max", "-20", true},
        {"AMP1*online", "1", "max", "-40", true},   {"AMP2*online", "1", "max", "-20", false},
    };
    for (const auto& row : rows) {
        INFO(std::string(row.parameter), " ", std::string(row.number), " ", std::string(row.combine));
        ph_SetParameter(panel.Root(), row.parameter, row.number);
        Load(meter, std::string("combine=") + row.combine);
        CHECK(IsMarked(meter) == row.isMarked);
        CHECK(Text(meter) == row.value);
    }
    CHECK(panel.Parameter("AMP2*b") == "-20"); // a poll sends nothing
    Load(meter, "value=-7");
    CHECK(panel.Parameter("AMP2*b") == "-7");
    Load(meter, "function=AMP9*missing");
    CHECK(IsMarked(meter));
    CHECK(Text(meter) == "-7");
}

TEST_CASE("the bar of a reverse meter hangs from the greater end") {
    const TestPanel panel;
    const TestFolder folder;
    HWND meter = panel.Create("REVMETER", "Meter");
    const std::string image = folder.Write("meter.bmp", PartedImage(21, 100, 0x203040, 0xC08040));
    CHECK(Load(meter, "bitmap=" + image) == 1);
    CHECK(SizeText(meter) == "10 x 100");
    for (const char* properties : {"properties=-40,0,-10", "properties=0,-40,-10", "properties=7,7"}) {
        INFO(std::string(properties));
        Load(meter, properties);
        const int height = properties[11] == '7' ? 0 : 25;
        const Picture picture(meter);
        for (const int y : {0, 24, 25, 99}) {
            CHECK(picture.At(5, y) == (y < height ? LIT : UNLIT));
        }
    }
    LoadLines(meter, "bitmap=|properties=-40,0,-10");
    SetWindowPos(meter, nullptr, 0, 0, 22, 100, SWP_NOMOVE | SWP_NOZORDER);
    CHECK(Picture(meter).At(11, 24) == RGB(234, 184, 3));
    CHECK(Picture(meter).At(11, 25) == logic::PANEL_WELL);
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {4000, 1}, {1, 4000}}) {
        SetWindowPos(meter, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
        const Picture picture(meter);
    }
}

TEST_CASE("only a reverse meter that may be set is dragged and stepped, as a knob is") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*a=float,-100,100,0,\n");
    HWND meter = panel.Create("REVMETER", "Meter");
    for (const bool isSettable : {false, true}) {
        INFO(isSettable);
        LoadLines(meter, isSettable ? "settable=1" : "settable=0");
        LoadLines(meter, "function=AMP1*a|properties=0,-40,-10");
        const auto is = [&](const char* value) {
            const std::string expected = isSettable ? value : "-10";
            CHECK(Text(meter) == expected);
            CHECK(panel.Parameter("AMP1*a") == expected);
        };
        Drag(meter, 20, 13);
        is("-17");
        Drag(meter, 20, 99);
        is("0");
        const std::pair<WPARAM, const char*> keys[] = {
            {VK_RIGHT, "-0.5"}, {VK_NEXT, "-5.5"}, {VK_END, "-40"}, {VK_LEFT, "-39.5"}, {'A', "-39.5"}};
        for (const auto& [key, value] : keys) {
            SendMessageA(meter, WM_KEYDOWN, key, 1);
            is(value);
        }
    }
}

TEST_CASE(
    "a reverse meter sends by its exported function, to targets at their distances when it is relative") {
    const TestPanel panel;
    const auto send = Exported<SendRequest>(CONTROL_LIBRARY, SEND_REQUEST);
    REQUIRE((send != nullptr));
    panel.Declare("AMP1*device=simulated\nAMP1*a=float,-100,100,1,\n");
    HWND left = panel.Create("KNOB", "Left");
    HWND meter = panel.Create("REVMETER", "Meter");
    LoadLines(left, "properties=-100,100,-30");
    LoadLines(meter, "value=-10|connection=Left|relative=1");
    CHECK(Text(meter, "values") == "-20");
    CHECK(Text(meter, "valuescopy") == "-20,");
    HOSTINFO* object = &ObjectOf(meter);
    int whole = -7;
    float number = -3.5F;
    CHECK(send(object, COMMAND_SET, DATATYPE_INTEGER, reinterpret_cast<long>(&whole), nullptr) != 0);
    CHECK(Value(left) == -7.0F); // it only shows, so that nothing is relative
    CHECK(send(object, COMMAND_SET, DATATYPE_FLOAT, reinterpret_cast<long>(&number), nullptr) != 0);
    CHECK(Value(left) == -3.5F);

    LoadLines(meter, "settable=1|value=-12.5");
    CHECK(Value(left) == -32.5F);
    CHECK_FALSE(IsMarked(meter));
    SetValue(left, 5.0F);
    CHECK(IsMarked(meter));
    CHECK(Text(meter) == "-12.5");
    CHECK(send(object, COMMAND_SET, DATATYPE_INTEGER, reinterpret_cast<long>(&whole), nullptr) == 1);
    CHECK(Value(left) == -32.0F);
    Load(meter, "function=AMP1*a");
    Drag(meter, 10, 12);
    CHECK(panel.Parameter("AMP1*a") == "1"); // no device is moved
}

TEST_SUITE_END();
