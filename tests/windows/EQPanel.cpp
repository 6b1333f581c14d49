// The editor of an equaliser band among other controls: keyboard, edit mode, clipboard, its end.

#include "Panelhost/Clipboard.h"
#include "tests/windows/EqFixture.h"

TEST_SUITE_BEGIN("EQPanel");

TEST_CASE("Tab goes through the children and leaves at the ends") {
    EqFixture fixture(TestPanel::Visible);
    const HWND eq = fixture.eq;
    const HWND after = fixture.panel.Create("BBUTTON", "After");
    SetWindowLongA(after, GWL_STYLE, GetWindowLongA(after, GWL_STYLE) | WS_TABSTOP);
    const auto walk = [&](bool shift) {
        std::string ids;
        for (int i = 0; i < 8 && GetParent(GetFocus()) == eq; ++i) {
            ids += std::to_string(GetDlgCtrlID(GetFocus())) + " ";
            PressKey(VK_TAB, shift);
        }
        return ids;
    };
    SetFocus(eq);
    SendMessageA(eq, WM_KEYUP, VK_TAB, 0);
    CHECK(walk(false) == "100 101 102 103 105 ");
    CHECK(GetFocus() == after);
    SetFocus(Item(eq, BYPASS));
    CHECK(walk(true) == "105 103 102 101 100 ");
    Load(eq, "properties=1,Hipass,12");
    Load(eq, "disableitems=0x8"); // the frequency
    SetFocus(eq);
    SendMessageA(eq, WM_KEYUP, VK_TAB, 0);
    CHECK(GetFocus() == Item(eq, BYPASS)); // it is bypassed
    SetFocus(Item(eq, TYPES));
    CHECK(walk(false) == "100 103 104 105 ");
    Load(eq, "properties=0,PEQ");
    SetFocus(Item(eq, Q));
    Load(eq, "properties=0,Loshelv"); // the field goes
    CHECK(GetFocus() == eq);
}

TEST_CASE("an edited panel gets the presses, and its children do not react") {
    EqFixture fixture(TestPanel::Visible);
    const HWND eq = fixture.eq;
    MoveCursor(fixture.panel, 60, 70);
    ph_SetMode(fixture.panel.Root(), 1);
    MSG posted;
    for (const int id : {TYPES, GAIN, GAIN_SPIN, BYPASS}) {
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_MOUSEMOVE}) {
            SendMessageA(Item(eq, id), message, MK_LBUTTON, At(3, 3));
            const UINT expected = message == WM_MOUSEMOVE ? WM_MOUSEMOVE : WM_LBUTTONDOWN;
            REQUIRE(TakePosted(fixture.panel.Window(), expected, posted));
            CHECK(posted.lParam == At(60, 70));
        }
        SendMessageA(Item(eq, id), WM_LBUTTONUP, 0, At(3, 3));
        SendMessageA(Item(eq, id), WM_KEYDOWN, VK_SPACE, 0);
        SendMessageA(Item(eq, id), WM_KEYUP, VK_SPACE, 0);
    }
    SendMessageA(Item(eq, TYPES), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    CHECK(TextOf(Item(eq, TYPES)) == "PEQ");
    StepSpin(eq, GAIN_SPIN, -1);
    ChooseItem(eq, TYPES, 1);
    CHECK(fixture.Band() == BAND);
    CHECK(fixture.Sent().empty());
    ph_SetMode(fixture.panel.Root(), 0);
    SendMessageA(Item(eq, BYPASS), WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, At(3, 3));
    CHECK(TakePosted(fixture.panel.Window(), WM_LBUTTONDOWN, posted));
    SendMessageA(Item(eq, TYPES), WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT | MK_CONTROL, At(3, 3));
    CHECK(IsWindow(ObjectOf(eq).dialog));
}

TEST_CASE_FIXTURE(EqFixture, "disabled children and the focus colour") {
    for (const auto& [line, id] : {std::pair("disableitems=1", BYPASS),
                                   {"disableitems=2", TYPES},
                                   {"disableitems=4", SLOPES},
                                   {"disableitems=8", FREQUENCY_SPIN},
                                   {"disableitems=10", GAIN_SPIN},
                                   {"disableitems=20", Q_SPIN}}) {
        CHECK(Load(eq, line) == 1);
        for (const int other : {BYPASS, TYPES, SLOPES, FREQUENCY_SPIN, GAIN_SPIN, Q_SPIN}) {
            CHECK((IsWindowEnabled(Item(eq, other)) == FALSE) == (other == id));
        }
    }

    const HWND caption = FindWindowExA(eq, nullptr, "STATIC", "Band 1");
    const auto ground = [caption] { return Picture(caption).At(1, 1); };
    CHECK(ground() == RGB(212, 208, 200));
    CHECK(Load(eq, "focus=yes") == 1);
    CHECK(ground() == RGB(0, 200, 0));
    CHECK(Load(eq, "focuscolor=ffff") == 1);
    CHECK(ground() == 0x00FFFF);
    const HDC dc = GetDC(caption);
    SendMessageA(eq, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(caption));
    CHECK(GetTextColor(dc) == 0x000000); // readable on it
    ReleaseDC(caption, dc);
    CHECK(Load(eq, "focus=0") == 1);
    CHECK(ground() == RGB(212, 208, 200));
}

TEST_CASE_FIXTURE(EqFixture, "the closed list of types has no room for their pictures, but for other names") {
    const HWND list = Item(eq, TYPES);
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 72, 17);
    const HGDIOBJ previous = SelectObject(dc, bitmap);
    COLORREF ground = 0;
    const auto isDrawn = [&](UINT number, UINT state, int left) {
        const auto text = static_cast<ULONG_PTR>(SendMessageA(list, CB_GETITEMDATA, number, 0));
        DRAWITEMSTRUCT item{ODT_COMBOBOX, TYPES,          number, ODA_DRAWENTIRE, state, list,
                            dc,           {0, 0, 72, 17}, text};
        SendMessageA(eq, WM_DRAWITEM, TYPES, reinterpret_cast<LPARAM>(&item));
        ground = GetPixel(dc, 50, 0);
        int drawn = 0;
        for (int i = 0; i < 13 * 17; ++i) {
            drawn += GetPixel(dc, left + i % 13, i / 13) != ground ? 1 : 0;
        }
        return drawn > 0;
    };
    constexpr int PICTURE = 59;
    CHECK(isDrawn(1, 0, PICTURE));
    CHECK(ground == RGB(255, 255, 200));
    CHECK(isDrawn(1, ODS_SELECTED, 2));
    CHECK(ground == GetSysColor(COLOR_HIGHLIGHT));
    CHECK_FALSE(isDrawn(1, ODS_COMBOBOXEDIT, PICTURE));
    Load(eq, "function=ZQACON*band");
    Load(eq, "properties=0,Allpass"); // which that device does not have
    CHECK(isDrawn(static_cast<UINT>(-1), ODS_COMBOBOXEDIT, 2));
    SelectObject(dc, previous);
    DeleteObject(bitmap);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
}

TEST_CASE("a band is copied from one panel to another") {
    EqFixture from(TestPanel::Visible);
    EqFixture to(TestPanel::Visible);
    const UINT format = a_GetClipboardFormat("EQ band");
    const auto pasted = [&to] {
        Load(to.eq, "properties=1,PEQ,6,20,0,1");
        to.Sent();
        ChooseFromMenu(to.eq, TYPES, PASTE);
        return to.Sent();
    };
    Load(from.eq, "properties=0,Hipass,12,440,-2,0.9");
    PutOnClipboard(format, nullptr, 0);
    CHECK(pasted().empty());
    ChooseFromMenu(from.eq, TYPES, COPY);
    CHECK(IsClipboardFormatAvailable(format));
    CHECK(pasted() == "0,Hipass,12 dB,440 Hz,-2 dB,0.9");
    const EqBand bad{0, 0, std::numeric_limits<float>::quiet_NaN(), 0.0F, 1.0F, 1};
    for (const std::size_t size : {sizeof bad, std::size_t{8}}) {
        PutOnClipboard(format, &bad, size);
        CHECK(pasted().empty());
    }
}

TEST_CASE("it may go while a list, a field or its menu is open") {
    for (const int open : {TYPES, GAIN, 0}) {
        CAPTURE(open);
        EqFixture fixture(TestPanel::Visible);
        const HWND eq = fixture.eq;
        SetFocus(Item(eq, GAIN));
        SetWindowTextA(Item(eq, GAIN), "5"); // typed, and lost
        if (open == 0) {
            std::thread user([eq] {
                WaitForMenu(true);
                SendMessageA(eq, WM_CLOSE, 0, 0);
            });
            SendMessageA(eq, WM_CONTEXTMENU, 0, At(200, 200));
            user.join();
        } else {
            SendMessageA(Item(eq, open), CB_SHOWDROPDOWN, TRUE, 0);
            fixture.sent.clear();
            DestroyWindow(eq);
        }
        CHECK_FALSE(IsWindow(eq));
        CHECK(fixture.sent.empty());
    }
    CHECK(a_HostinfoCount() == 0);
}

TEST_SUITE_END();
