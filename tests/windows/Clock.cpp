// The clock: its text, its size, its timer and what a click sends.

#include "logic/ClockText.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/ImportHook.h"

#include <algorithm>
#include <thread>

TEST_SUITE_BEGIN("Clock");

namespace {

SIZE SizeOf(HWND control) {
    const RECT& rectangle = ObjectOf(control).rectangle;
    return {rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
}

// What the library takes for the local time, and for the milliseconds since the start.
SYSTEMTIME localTime{2026, 8, 1, 31, 23, 59, 59, 0};
DWORD ticks = 0;

struct OwnTime {
    ImportHook local{CONTROL_LIBRARY, "GetLocalTime",
                     +[](SYSTEMTIME* time) __attribute__((stdcall)){* time = localTime;
}
}; // namespace
ImportHook count{CONTROL_LIBRARY, "GetTickCount", +[]() __attribute__((stdcall)){return ticks;
}
}
;
}
;

std::string TextOf(const SYSTEMTIME& time, logic::ClockLanguage language) {
    return logic::ClockText(
        {time.wYear, time.wMonth, time.wDay, time.wDayOfWeek, time.wHour, time.wMinute, time.wSecond},
        language);
}

// A text drawn by the test itself, centred on a ground of the given colour.
class DrawnText {
public:
    DrawnText(const std::string& text, const char* fontText, COLORREF letters, COLORREF ground, SIZE size)
        : dc_(CreateCompatibleDC(nullptr)), font_(a_GetFont(fontText)) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, size.cx, -size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
        SelectObject(dc_, bitmap_);
        SelectObject(dc_, font_);
        SetDCBrushColor(dc_, ground);
        const RECT all{0, 0, size.cx, size.cy};
        FillRect(dc_, &all, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        SetBkMode(dc_, TRANSPARENT);
        SetTextColor(dc_, letters);
        DrawTextA(dc_, text.c_str(), -1, &extent_, DT_CENTER | DT_NOPREFIX | DT_CALCRECT);
        RECT place = extent_;
        OffsetRect(&place, (size.cx - extent_.right) / 2, (size.cy - extent_.bottom) / 2);
        DrawTextA(dc_, text.c_str(), -1, &place, DT_CENTER | DT_NOPREFIX);
    }
    ~DrawnText() {
        DeleteDC(dc_);
        DeleteObject(bitmap_);
        a_ReleaseFont(font_);
    }
    DrawnText(const DrawnText&) = delete;
    DrawnText& operator=(const DrawnText&) = delete;

    SIZE Extent() const { return {extent_.right, extent_.bottom}; }
    COLORREF At(int x, int y) const { return GetPixel(dc_, x, y); }

private:
    HDC dc_;
    HFONT font_;
    HBITMAP bitmap_ = nullptr;
    RECT extent_{};
};

// Whether the clock, 40 pixels wider and higher than it has to be, shows the time in that language.
void CheckShownTime(logic::ClockLanguage language) {
    const OwnTime time;
    TestPanel panel;
    Load(panel.Window(), "background=0x00204060");
    HWND clock = panel.Create("CLOCK", "Clock");
    const SIZE measured = SizeOf(clock);
    const SIZE size{measured.cx + 40, measured.cy + 40};
    SetWindowPos(clock, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
    const Picture picture(clock);
    const DrawnText expected(TextOf(localTime, language), "Tahoma,20,bold", 0x00E6160B, 0x00204060, size);
    CHECK(measured.cx == std::max(expected.Extent().cx, 100L));
    CHECK(measured.cy == std::max(expected.Extent().cy, 40L));
    int letters = 0;
    int different = 0;
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < size.cx; ++x) {
            letters += expected.At(x, y) != 0x00204060;
            different += picture.At(x, y) != expected.At(x, y);
        }
    }
    CHECK(letters > 500);
    CHECK(different == 0);
}

} // namespace

TEST_CASE("the clock shows the local time in the language of the user") {
    CheckShownTime(logic::ClockLanguageOf(GetUserDefaultLangID()));
}

TEST_CASE("German: the clock speaks it" * doctest::skip()) { // run by itself, on a German system
    if (GetUserDefaultLangID() != 0x0407) {
        MESSAGE("skipped: this is no German system");
        return;
    }
    CheckShownTime(logic::ClockLanguage::German);
}

TEST_CASE("the keywords of a clock take texts only, and it has no value") {
    TestPanel panel;
    HWND clock = panel.Create("CLOCK", "Clock");
    int number = 7;
    for (const KEYWORDROW* row = ObjectOf(clock).GetHostinfoTable(); row->keyword != nullptr; ++row) {
        CAPTURE(row->keyword);
        CHECK(Send(clock, COMMAND_SET, DATATYPE_INTEGER, &number, row->keyword) == 0);
        CHECK(Send(clock, COMMAND_GET, DATATYPE_INTEGER, &number, row->keyword) == 0);
        CHECK(number == 7);
    }
    const TraceCapture trace;
    for (const char* keyword : {"value", " ", "nosuch"}) {
        CHECK(Load(clock, std::string(keyword) + "=1") == 0);
        CHECK(Text(clock, keyword).empty());
    }
    CHECK(trace.Count(TRACE_DEBUG, "Clock Keyword not found: nosuch\n") == 1);
}

TEST_CASE("the text widens the clock and never narrows it, an image gives it its size") {
    TestPanel panel;
    const TestFolder folder;
    const std::string face = folder.Write("face.bmp", BitmapFile(30, 20, 0x0000FF));
    HWND clock = panel.Create("CLOCK", "Clock");
    const std::string initial = SizeText(clock);
    CHECK(Load(clock, "font=Tahoma,8") == 1);
    CHECK(SizeText(clock) == initial);
    const SIZE before = SizeOf(clock);
    CHECK(Load(clock, "font=Tahoma,40,bold") == 1);
    CHECK((SizeOf(clock).cx > before.cx && SizeOf(clock).cy > before.cy));
    for (const std::string& line : {"bitmap=" + face, std::string("font=Tahoma,20")}) {
        CHECK(Load(clock, line) == 1);
        CHECK(SizeText(clock) == "30 x 20");
    }
    CHECK(Picture(clock).At(15, 10) == RGB(0, 0, 255)); // on top of the text
    const int bitmaps = a_BitmapCount();
    CHECK(Load(clock, "bitmap=nosuch.bmp") == 0);
    CHECK(Text(clock, "bitmap") == "nosuch.bmp");
    CHECK(a_BitmapCount() == bitmaps - 1);
    CHECK(Picture(clock).At(0, 0) != RGB(0, 0, 255));
    CHECK(Load(clock, "bitmap=") == 1);
    CHECK(SizeText(clock) == "30 x 20");
}

TEST_CASE("the timer redraws about twice a second, and measures the text of each new day") {
    const OwnTime time;
    TestPanel panel(TestPanel::Visible);
    HWND clock = panel.Create("CLOCK", "Clock");
    Load(clock, "font=Tahoma,30,bold");
    const auto isRedrawnAfter = [clock](DWORD milliseconds) {
        UpdateWindow(clock);
        ticks += milliseconds;
        SendMessageA(clock, WM_TIMER, 0, 0);
        return GetUpdateRect(clock, nullptr, FALSE) != 0;
    };
    CHECK(isRedrawnAfter(501));
    CHECK_FALSE(isRedrawnAfter(500));
    CHECK(isRedrawnAfter(1));
    SetCapture(clock);
    CHECK_FALSE(isRedrawnAfter(501));
    ReleaseCapture();
    CHECK(isRedrawnAfter(0));
    const SYSTEMTIME days[] = {{2026, 9, 2, 1, 0, 0, 0, 0}, {2026, 5, 6, 2, 0, 0, 0, 0}}; // September is wide
    LONG width = SizeOf(clock).cx;
    for (const SYSTEMTIME& day : days) {
        localTime = day;
        CHECK(isRedrawnAfter(501));
        const std::string text = TextOf(day, logic::ClockLanguageOf(GetUserDefaultLangID()));
        const LONG needed = DrawnText(text, "Tahoma,30,bold", 0, 0, {1, 1}).Extent().cx;
        CHECK((needed > width) == (day.wMonth == 9));
        width = std::max(width, needed);
        CHECK(SizeOf(clock).cx == width);
    }
}

TEST_CASE("a click sends the click template, looked for among siblings first") {
    TestPanel panel;
    HWND other = panel.Create("BSTATIC", "B");
    HWND strip = panel.Create("MIXER", "S");
    HWND child = CreateControl("BSTATIC", "B", strip, &ObjectOf(strip));
    HWND clock = panel.Create("CLOCK", "Clock");
    HWND inner = CreateControl("CLOCK", "Clock", strip, &ObjectOf(strip));
    const auto clickOn = [](HWND control, const char* text) {
        CHECK(Load(control, std::string("click=") + text) == 1);
        Click(control);
    };
    const auto title = [&panel] { return Text(panel.Window(), "title"); };
    const auto intervals = [&] { return std::pair(ObjectOf(other).interval, ObjectOf(child).interval); };
    clickOn(clock, "B*interval=7");
    CHECK(intervals() == std::pair(7, 1000));
    clickOn(inner, "B*interval=8");
    CHECK(intervals() == std::pair(7, 8));
    clickOn(inner, "title=%n");
    CHECK(title() == "S*Clock");
    clickOn(clock, "title=%l 100%"); // it has no caption
    CHECK(title() == "%l 100%");
    CHECK(Load(clock, "connection=B;S*B;%n*nobody") == 1);
    clickOn(clock, "title=%c");
    CHECK(title() == "B;S*B;%n*nobody");
    clickOn(clock, "interval=9"); // the root does not know it
    CHECK(intervals() == std::pair(9, 9));
    DestroyWindow(child);
    clickOn(clock, "interval=10"); // one of the connected is gone
    CHECK(ObjectOf(other).interval == 10);
    clickOn(clock, "%n*click=!");
    CHECK(Text(clock, "click") == "!");

    // A click that is the panel's sends nothing.
    Load(clock, "click=title=no");
    SendMessageA(clock, WM_LBUTTONUP, MK_CONTROL, At(5, 5));
    ph_SetMode(panel.Root(), 1);
    Click(clock);
    CHECK(title() == "B;S*B;%n*nobody");
}

TEST_CASE("a clock has no dialog and colours its children") {
    TestPanel panel(TestPanel::Visible);
    HWND clock = panel.Create("CLOCK", "Clock");
    HWND dialog = panel.Window();
    CHECK(SendMessageA(clock, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog)) == 0);
    CHECK((dialog == panel.Window() && ObjectOf(clock).dialog == nullptr));
    const HDC dc = CreateCompatibleDC(nullptr);
    for (const auto& [line, colour] :
         {std::pair("backgroundcolor=0x00000000", 0), {"backgroundcolor=0x00030201", 0x030201}}) {
        Load(clock, line);
        const auto brush =
            reinterpret_cast<HBRUSH>(SendMessageA(clock, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), 0));
        LOGBRUSH described{};
        CHECK(GetObjectA(brush, sizeof described, &described) != 0);
        CHECK((described.lbColor == static_cast<COLORREF>(colour) && GetBkColor(dc) == described.lbColor));
        CHECK((GetTextColor(dc) == 0x00E6160B && GetBkMode(dc) == TRANSPARENT));
    }
    DeleteDC(dc);
}

TEST_CASE("the host deletes a clock, also from another thread, and once only") {
    const TestPanel panel;
    const int objects = a_HostinfoCount();
    HWND clock = panel.Create("CLOCK", "Clock");
    CHECK(ObjectOf(clock).OnDelete(0, 0) == 1);
    CHECK_FALSE(IsWindow(clock));
    CHECK(panel.Find("Clock") == nullptr);
    CHECK(a_HostinfoCount() == objects);

    HWND second = panel.Create("CLOCK", "Clock");
    std::thread deleting([object = &ObjectOf(second)] { object->OnDelete(0, 0); });
    CHECK(Await([&] { return !IsWindow(second); }));
    deleting.join();
    CHECK(a_HostinfoCount() == objects);
}
