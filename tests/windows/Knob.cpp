// What is particular to the knob.

#include "Panelhost/Trace.h"
#include "tests/windows/Buttons.h"

#include <initializer_list>
#include <utility>

TEST_SUITE_BEGIN("Knob");

namespace {

constexpr COLORREF DOT = RGB(192, 0, 0);
constexpr COLORREF FOCUSED_DOT = RGB(255, 0, 0);
constexpr POINT DOT_AT_MAXIMUM{33, 33}; // middle of the dot
constexpr POINT DOT_AT_MINIMUM{13, 33};
constexpr POINT DOT_HALFWAY{23, 9};

class TestKnob {
public:
    explicit TestKnob(TestPanel::Visibility visibility = TestPanel::Hidden)
        : panel(visibility), knob(panel.Create("KNOB", "Knob")), target(panel.Create("KNOB", "Target")) {
        Load(target, "properties=-100000,100000,-99999");
        Load(knob, "connection=Target");
    }

    void Drag(std::initializer_list<int> stops) const {
        SendMessageA(knob, WM_LBUTTONDOWN, MK_LBUTTON, At(20, 20));
        for (const int x : stops) {
            SendMessageA(knob, WM_MOUSEMOVE, MK_LBUTTON, At(x, 20));
        }
    }
    void Release() const { SendMessageA(knob, WM_LBUTTONUP, 0, At(0, 0)); }
    LRESULT Press(WPARAM key) const { return SendMessageA(knob, WM_KEYDOWN, key, 1); }

    TestPanel panel;
    HWND knob;
    HWND target;
};

// What the target holds when nothing was sent.
constexpr float NOTHING_SENT = -99999.0F;

COLORREF PixelOf(HWND knob, POINT point) {
    return Picture(knob).At(point.x, point.y);
}

using SendRequest = int __cdecl(HOSTINFO*, int, int, long, int*);

int Request(HWND knob, int command, int& result) {
    float value = 0;
    return Exported<SendRequest>(CONTROL_LIBRARY, "l_SendRequest")(&ObjectOf(knob), command, DATATYPE_FLOAT,
                                                                   reinterpret_cast<long>(&value), &result);
}

} // namespace

TEST_CASE("the request helpers are found by any host and refuse what is no such control") {
    // l_SendRequest(KNOBPROPERTIES*, int, int, long, int*) as compilers of this platform name it
    CHECK((Exported<SendRequest>(CONTROL_LIBRARY, "_Z13l_SendRequestP14KNOBPROPERTIESiilPi") != nullptr));
    for (const auto& [className, function] :
         {std::pair("KNOB", "l_SendRequest"), {"REVMETER", "l_SendRequestReverseMeter"}}) {
        INFO(std::string(function));
        const TestPanel panel;
        const auto send = Exported<SendRequest>(CONTROL_LIBRARY, function);
        REQUIRE((send != nullptr));
        HWND target = panel.Create("BRANGE", "Target");
        HWND control = panel.Create(className, "Control");
        REQUIRE(Load(control, "connection=Target") == 1);
        HOSTINFO* object = &ObjectOf(control);
        float value = 7;
        const auto address = reinterpret_cast<long>(&value);
        int result = 0;
        CHECK(send(object, COMMAND_SET, DATATYPE_FLOAT, address, nullptr) != 0);
        CHECK(Value(target) == 7.0F);
        value = 5;
        CHECK(send(object, COMMAND_SET, DATATYPE_FLOAT, 0, &result) == 0);
        DestroyWindow(control);
        for (HOSTINFO* wrong : {object, static_cast<HOSTINFO*>(nullptr), &ObjectOf(target), panel.Root()}) {
            CHECK(send(wrong, COMMAND_SET, DATATYPE_FLOAT, address, &result) == 0);
        }
        CHECK(Value(target) == 7.0F);
    }
}

TEST_CASE("dragging moves the value, rounds it, stops at the ends and sends it") {
    const struct {
        const char* properties;
        const char* resolution;
        std::initializer_list<int> stops; // the press is at 20
        float value;
    } rows[] = {
        {"0,100,50", "0.5", {25, 15}, 45.0F},
        {"0,100,95", "7", {120}, 100.0F},     // the end is not rounded
        {"-100,100,0", "0.5", {-30}, -50.0F}, // outside of the window
    };
    for (const auto& row : rows) {
        INFO(std::string(row.properties), " by ", std::string(row.resolution));
        const TestKnob test;
        Load(test.knob, std::string("resolution=") + row.resolution);
        Load(test.knob, std::string("properties=") + row.properties);
        test.Drag(row.stops);
        CHECK(GetCapture() == test.knob);
        CHECK(Value(test.knob) == row.value);
        CHECK(Value(test.target) == row.value);
        test.Release();
        CHECK(GetCapture() == nullptr);
        test.Drag({20}); // no distance: nothing happens
        test.Release();
        SendMessageA(test.knob, WM_MOUSEMOVE, 0, At(90, 20)); // nor without the press
        CHECK(Value(test.knob) == row.value);
    }
}

TEST_CASE("a drag holds up polls, and ends where it is when it loses the capture") {
    const TestKnob test;
    test.panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,100,0,\n");
    LoadLines(test.knob, "connection=|function=AMP1*gain");
    test.Drag({30});
    CHECK(test.panel.Parameter("AMP1*gain") == "10");
    ph_SetParameter(test.panel.Root(), "AMP1*gain", "70");
    Poll(test.knob);
    CHECK(Value(test.knob) == 10.0F);
    SetCapture(test.target);
    SendMessageA(test.knob, WM_MOUSEMOVE, MK_LBUTTON, At(60, 20));
    CHECK(Value(test.knob) == 10.0F);
    test.Release(); // comes late and takes nobody's capture
    CHECK(GetCapture() == test.target);
    ReleaseCapture();
    Poll(test.knob);
    CHECK(Value(test.knob) == 70.0F);
}

TEST_CASE("keys step the value, are painted at once and go no further") {
    const struct {
        WPARAM key;
        float from, to;
    } rows[] = {{VK_PRIOR, 10.0F, 15.0F}, {VK_NEXT, 10.0F, 5.0F},  {VK_LEFT, 10.0F, 10.5F},
                {VK_RIGHT, 10.0F, 9.5F},  {VK_END, 10.0F, -20.0F}, {VK_HOME, 10.0F, 80.0F},
                {'A', 10.0F, 10.0F},      {VK_PRIOR, 78.0F, 80.0F}};
    const TestKnob test(TestPanel::Visible);
    Load(test.knob, "properties=-20,80,0");
    for (const auto& row : rows) {
        INFO(row.key, " from ", row.from);
        SetValue(test.knob, row.from);
        SetValue(test.target, NOTHING_SENT);
        InvalidateRect(test.knob, nullptr, FALSE);
        REQUIRE(GetUpdateRect(test.knob, nullptr, FALSE));
        CHECK(test.Press(row.key) == 0);
        CHECK_FALSE(GetUpdateRect(test.knob, nullptr, FALSE));
        CHECK(Value(test.knob) == row.to);
        CHECK(Value(test.target) == (row.to != row.from ? row.to : NOTHING_SENT));
    }
    SetValue(test.knob, 10.0F);
    const std::pair<WORD, float> turns[] = {{0, 10.5F}, {MK_SHIFT, 10.55F}};
    const auto turn = [&](WORD keys, int by) {
        SendMessageA(test.knob, WM_MOUSEWHEEL, MAKEWPARAM(keys, static_cast<WORD>(by)), 0);
    };
    for (const auto& [keys, to] : turns) {
        turn(keys, WHEEL_DELTA);
        CHECK(Value(test.knob) == to);
        CHECK(Value(test.target) == to);
    }
    turn(0, -WHEEL_DELTA);
    CHECK(Value(test.knob) == doctest::Approx(10.05F));
    LoadLines(test.knob, "resolution=0|value=10");
    for (const WPARAM key : {VK_PRIOR, VK_NEXT, VK_LEFT, VK_RIGHT}) {
        test.Press(key);
        turn(MK_SHIFT, WHEEL_DELTA);
        CHECK(Value(test.knob) == 10.0F); // continuous
    }
}

TEST_CASE("a value is limited, given back limited, and sent only when it is new") {
    const TestKnob test;
    Load(test.knob, "properties=-10,10,0");
    const struct {
        float value, limited;
    } rows[] = {{5.3F, 5.3F}, {11.0F, 10.0F}, {-3e38F, -10.0F}, {0.0F, 0.0F}};
    for (const auto& row : rows) {
        float value = row.value;
        CHECK(Send(test.knob, COMMAND_SET, DATATYPE_FLOAT, &value) == 1);
        CHECK(value == row.limited);
        CHECK(Value(test.target) == row.limited);
        SetValue(test.target, NOTHING_SENT);
        CHECK(SetValue(test.knob, row.value) == 0);
        CHECK(Value(test.target) == NOTHING_SENT);
    }
    int whole = 7;
    CHECK(Send(test.knob, COMMAND_SET, DATATYPE_INTEGER, &whole, "value") == 1);
    CHECK(Text(test.knob, "value") == "7");
}

TEST_CASE("a relative knob moves its targets at their distances") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-100,100,1,\n");
    HWND left = panel.Create("KNOB", "Left");
    HWND right = panel.Create("KNOB", "Right");
    HWND group = panel.Create("KNOB", "Group");
    Load(left, "properties=-80,18,-30");
    Load(right, "properties=-80,18,-15");
    LoadLines(group, "properties=-80,18,-20|connection=Left;Right|relative=1");
    CHECK(Text(group, "values") == "-10,5");
    CHECK(Text(group, "valuescopy") == "-10,5,");
    SetValue(group, -25.0F);
    CHECK((Value(left) == -35.0F && Value(right) == -20.0F));

    int result = 0;
    CHECK(Request(group, COMMAND_GET, result) == 1); // the targets are where they should be
    CHECK(result == 0);
    SetValue(left, -40.0F);
    CHECK(Request(group, COMMAND_GET, result) == 1);
    CHECK(result == 2);
    CHECK(Request(group, COMMAND_SET, result) == 1);
    CHECK(Value(left) == -35.0F);

    LoadLines(group,
              "values=1,2|function=AMP1*gain"); // functions come first in the list, and no device is moved
    CHECK(Text(group, "values").substr(0, 2) == "0,");
    SetValue(group, -24.0F);
    CHECK(panel.Parameter("AMP1*gain") == "1");
    LoadLines(group, "function=|connection=|relative=1");
    result = 0;
    CHECK(Request(group, COMMAND_SET, result) == 1); // nobody to send to
    CHECK(Request(group, COMMAND_GET, result) == 1);
    CHECK(result == 0);
}

TEST_CASE("offsets that a file gives before the connections are kept, also for a target that comes late") {
    const TestPanel panel;
    HWND group = panel.Create("KNOB", "Group");
    LoadLines(group, "relative=1|values=-10,5|valuescopy=-10,5,|connection=Left;Right", LOAD_FROM_FILE);
    HWND left = panel.Create("KNOB", "Left");
    CHECK(Text(group, "values") == "-10,5");
    SetValue(group, 50.0F);
    CHECK(Value(left) == 40.0F);
    // In another number than the connections they stay all the same, until anyone but a file says otherwise.
    LoadLines(group, "values=-10,5,7|connection=Left", LOAD_FROM_FILE);
    CHECK(Text(group, "values") == "-10,5,7");
    Load(group, "connection=Left");
    CHECK(Text(group, "values") == "-10");
}

TEST_CASE("the dot turns with the value and brightens with the focus") {
    const TestKnob test;
    constexpr POINT DOTS[] = {DOT_AT_MINIMUM, DOT_HALFWAY, DOT_AT_MAXIMUM};
    Load(test.knob, "properties=-20,80,-20");
    for (int shown = 0; shown < 3; ++shown) {
        SetValue(test.knob, -20.0F + 50.0F * static_cast<float>(shown));
        for (int place = 0; place < 3; ++place) {
            CHECK((PixelOf(test.knob, DOTS[place]) == DOT) == (place == shown));
        }
    }
    SendMessageA(test.knob, WM_SETFOCUS, 0, 0);
    CHECK(PixelOf(test.knob, DOT_AT_MAXIMUM) == FOCUSED_DOT);
    Load(test.knob, "bitmap=");
    CHECK(PixelOf(test.knob, DOT_AT_MAXIMUM) != FOCUSED_DOT); // without a face there is no dot
}

TEST_CASE("a face sets the size, and only an image is taken as one") {
    const TestKnob test;
    const TestFolder folder;
    TraceCapture trace;
    const std::string small = folder.Write("small.bmp", BitmapFile(30, 20, 0x204060));
    const std::string noImage = folder.Write("text.bmp", "BM this is no image");
    const auto isFace = [&] { return PixelOf(test.knob, {1, 1}) == RGB(0x20, 0x40, 0x60); };
    CHECK(SizeText(test.knob) == "47 x 47");
    CHECK(Load(test.knob, "bitmap=" + small) == 1);
    CHECK(SizeText(test.knob) == "30 x 20");
    CHECK(isFace());
    for (const std::string& bad :
         {noImage, folder.Path("missing.bmp"), folder.Path(""), std::string(300, 'x')}) {
        INFO(bad);
        CHECK(Load(test.knob, "bitmap=" + bad) == 0);
        CHECK(trace.Count(TRACE_EDIT, "Error reading line bitmap=" + bad) == 1);
        CHECK(Text(test.knob, "bitmap") == small);
        CHECK(isFace());
    }
    CHECK(Load(test.knob, "bitmap=") == 1);
    CHECK(SizeText(test.knob) == "30 x 20"); // without a face it stays as large as it is
    CHECK_FALSE(isFace());
    CHECK(Load(test.knob, "bitmap=.\\Controls\\Knob.bmp") == 1);
    CHECK(SizeText(test.knob) == "47 x 47");
}

TEST_SUITE_END();
