// The clock: its text, its size, its timer and what a click sends.

#include "logic/controls/ClockText.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/ImportHook.h"

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

void WINAPI GiveLocalTime(SYSTEMTIME* time) {
    *time = localTime;
}
DWORD WINAPI GiveTicks() {
    return ticks;
}

struct OwnTime {
    ImportHook local{CONTROL_LIBRARY, "GetLocalTime", GiveLocalTime};
    ImportHook count{CONTROL_LIBRARY, "GetTickCount", GiveTicks};
};

std::string TextOf(const SYSTEMTIME& time, logic::ClockLanguage language) {
    return logic::ClockText(
        {time.wYear, time.wMonth, time.wDay, time.wDayOfWeek, time.wHour, time.wMinute, time.wSecond},
        language);
}

// The text that the library drew last.
std::string drawn;

int WINAPI KeepText(HDC dc, const char* text, int length, RECT* place, UINT format) {
    drawn = text;
    return DrawTextA(dc, text, length, place, format);
}

void CheckShownTime(logic::ClockLanguage language) {
    const OwnTime time;
    const ImportHook text(CONTROL_LIBRARY, "DrawTextA", KeepText);
    TestPanel panel;
    Load(panel.Window(), "background=0x00204060");
    HWND clock = panel.Create("CLOCK", "Clock");
    const SIZE size = SizeOf(clock);
    const Picture picture(clock);
    CHECK(drawn == TextOf(localTime, language));
    int letters = 0;
    int ground = 0;
    for (int at = 0; at < size.cx * size.cy; ++at) {
        const COLORREF pixel = picture.At(at % size.cx, at / size.cx);
        letters += pixel == 0x00E6160B ? 1 : 0;
        ground += pixel == 0x00204060 ? 1 : 0;
    }
    CHECK(letters > 500);
    CHECK(ground > letters);
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

TEST_CASE("the text widens the clock and never narrows it, an image gives it its size") {
    TestPanel panel;
    const TestFolder folder;
    const std::string face = folder.Write("face.bmp", BitmapFile(30, 20, 0x0000FF));
    HWND clock = panel.Create("CLOCK", "Clock");
    const SIZE before = SizeOf(clock);
    CHECK(Load(clock, "font=Tahoma,40,bold") == 1);
    CHECK((SizeOf(clock).cx > before.cx && SizeOf(clock).cy > before.cy));
    for (const std::string& line : {"bitmap=" + face, std::string("font=Tahoma,20")}) {
        CHECK(Load(clock, line) == 1);
        CHECK(SizeText(clock) == "30 x 20");
    }
    CHECK(Picture(clock).At(15, 10) == RGB(0, 0, 255)); // on top of the text
    CHECK(Load(clock, "bitmap=nosuch.bmp") == 0);
    CHECK(Text(clock, "bitmap") == "nosuch.bmp");
    CHECK(Picture(clock).At(0, 0) != RGB(0, 0, 255));
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
    const LONG before = SizeOf(clock).cx;
    localTime = {2026, 9, 2, 1, 0, 0, 0, 0}; // September is wide
    CHECK(isRedrawnAfter(501));
    const LONG wide = SizeOf(clock).cx;
    CHECK(wide > before);
    localTime = {2026, 5, 6, 2, 0, 0, 0, 0};
    CHECK(isRedrawnAfter(501));
    CHECK(SizeOf(clock).cx == wide);
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
    clickOn(inner, "B*interval=8");
    CHECK(intervals() == std::pair(7, 8));
    CHECK(Load(clock, "connection=B;S*B;%n*nobody") == 1);
    clickOn(inner, "title=%n %l"); // it has no caption
    CHECK(title() == "S*Clock %l");
    clickOn(clock, "interval=9"); // the root does not know it
    CHECK(intervals() == std::pair(9, 9));
    // A click that is the panel's sends nothing.
    Load(clock, "click=title=no");
    SendMessageA(clock, WM_LBUTTONUP, MK_CONTROL, At(5, 5));
    ph_SetMode(panel.Root(), 1);
    Click(clock);
    CHECK(title() == "S*Clock %l");
}

TEST_CASE("the host deletes a clock from another thread") {
    const TestPanel panel;
    const int objects = a_HostinfoCount();
    HWND second = panel.Create("CLOCK", "Clock");
    std::thread deleting([object = &ObjectOf(second)] { object->OnDelete(0, 0); });
    CHECK(Await([&] { return !IsWindow(second); }));
    deleting.join();
    CHECK(a_HostinfoCount() == objects);
}
