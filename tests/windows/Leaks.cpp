// What controls take, they give back.

#include "Panelhost/Editing.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <thread>

TEST_SUITE_BEGIN("Leaks");

TEST_CASE("the counters see what is kept") {
    const TestPanel panel;
    const Resources before = CountResources();
    const auto check = [&before](int Resources::*counter, int kept) {
        Resources expected = before;
        expected.*counter += kept;
        CHECK(CountResources() == expected);
    };
    check(&Resources::windows, 0);

    const int blocks = CountHeapBlocks();
    {
        const std::vector<std::string> kept(100, std::string(100, 'x'));
        CHECK(CountHeapBlocks() > blocks + 90);
    }
    CHECK(CountHeapBlocks() < blocks + 10);

    HBRUSH brushes[50];
    for (HBRUSH& brush : brushes) {
        brush = CreateSolidBrush(RGB(1, 2, 3));
    }
    check(&Resources::gdi, 50);
    for (HBRUSH brush : brushes) {
        DeleteObject(brush);
    }

    HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    check(&Resources::handles, 1);
    CloseHandle(event);

    for (HWND parent : {panel.Window(), HWND_MESSAGE}) {
        HWND window =
            CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 1, 1, parent, nullptr, nullptr, nullptr);
        check(&Resources::windows, 1);
        DestroyWindow(window);
    }
    HWND control = panel.Create("LED", "Led");
    Resources expected = before;
    ++expected.windows;
    ++expected.objects;
    CHECK(CountResources() == expected);
    DestroyWindow(control);

    const TestFolder folder;
    const std::string picture = folder.Write("small.bmp", BitmapFile(2, 2, 0));
    a_GetBitmap3(picture.c_str());
    CHECK(CountResources().bitmaps == before.bitmaps + 1);
    a_UnregisterBitmap3(picture.c_str());
    HFONT font = a_GetFont("tahoma,31");
    CHECK(CountResources().fonts == before.fonts + 1);
    a_ReleaseFont(font);

    HANDLE stop = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::thread thread([stop] { WaitForSingleObject(stop, INFINITE); });
    CHECK(CountResources().threads == before.threads + 1);
    SetEvent(stop);
    thread.join();
    CloseHandle(stop);
}

TEST_CASE("controls of every class leave nothing behind") {
    const TestPanel panel;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        INFO(std::string(expected.name));
        const std::string_view name = expected.name;
        const bool isMany = name == "EQ" || name == "XOVER" || name == "MIXER"; // ten windows or more
        const int count = isMany ? 100 : 500;
        const auto live = [&](bool isUsed) {
            HWND control = panel.Create(expected.name, "Control");
            REQUIRE(control != nullptr);
            if (isUsed) {
                const Picture painted(control);
                SendMessageA(control, WM_TIMER, 0, 0);
                Load(control, "function=AMP1*gain");
            }
            DestroyWindow(control);
        };
        live(true);
        const Resources before = CountResources();
        const int blocks = CountHeapBlocks();
        for (int i = 0; i < count; ++i) {
            live(i % 20 == 0);
        }
        CHECK(CountResources().Settled(before) == before);
        CHECK(CountHeapBlocks() < blocks + count / 20); // not one for each that was used
    }
}

TEST_CASE("panels with bound controls, dialogs and devices leave nothing behind") {
    const TestFolder folder;
    const std::string file =
        folder.Write("test.panel", "background=.\\Controls\\Panel_dark.png\r\n"
                                   "control=0x00000000 KNOB \"A\" 0x40000000 0,0,47,47\r\n"
                                   "control=0x00000000 KNOB \"B\" 0x40000000 0,0,47,47\r\n"
                                   "A*bitmap=.\\Controls\\KNOB_blue.bmp\r\n"
                                   "A*function=AMP1*gain;AMP2*gain\r\n"
                                   "A*connection=B;C\r\n");
    const auto live = [&] {
        TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,100,50,\n");
        REQUIRE(ph_LoadPanel(panel.Root(), file.c_str()) == 2);
        HWND knob = panel.Find("A");
        SetValue(knob, 20.0F);
        ph_Tick(panel.Root());
        SendMessageA(knob, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT | MK_CONTROL, 0);
        REQUIRE(ObjectOf(knob).dialog != nullptr);
        SendMessageA(panel.Find("B"), CWM_PARAMETERDLG, 0, 0);
        std::string text;
        REQUIRE(a_PanelText(panel.Root(), 0, 3, &text) == 3);
        REQUIRE(ph_SavePanel(panel.Root(), folder.Path("saved.panel").c_str()) == 1);
    };
    live();
    live();
    const Resources before = CountResources();
    const int blocks = CountHeapBlocks();
    CHECK(before.objects == 0);
    CHECK(before.bitmaps == 0);
    for (int i = 0; i < 20; ++i) {
        live();
    }
    CHECK(CountResources().Settled(before) == before);
    CHECK(CountHeapBlocks() < blocks + 20);
}

TEST_SUITE_END();
