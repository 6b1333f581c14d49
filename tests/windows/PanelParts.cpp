// The window of the panel program: where its parts are, what they show, and who has the keyboard.

#include "Panel/editing/Icons.h"
#include "Panel/editing/Palette.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/Trace.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/FormPanels.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

#include <algorithm>
#include <set>

TEST_SUITE_BEGIN("PanelParts");

namespace {

SIZE SizeOf(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

LONG HeightOf(HWND window) {
    RECT place;
    GetWindowRect(window, &place);
    return place.bottom - place.top;
}

} // namespace

TEST_CASE("the parts share the room of the window, which is as large as the panel needs") {
    PanelHere program(EDITED_PANEL);
    const std::string unread = program.Folder().Write(
        "unread.panel", "size=600,400\r\ncontrol=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\nwords\r\n");
    const std::string plain =
        program.Folder().Write("plain.panel", "control=0x00000000 KNOB \"A\" 0x50010000 400,40,447,87\r\n");
    const std::tuple<const char*, std::function<void()>, int, int, const char*> rows[] = {
        {"operated", [] {}, 0, 0, "0,0,600,400"},
        {"edited", [&] { program.Command(CMD_EDIT_MODE); }, Palette::WIDTH, 0, "0,0,600,400"},
        {"unread lines", [&] { program.Open(unread); }, Palette::WIDTH, 36, "0,0,600,400"},
        {"notice closed", [&] { program.Command(CMD_CLOSE_NOTICE); }, Palette::WIDTH, 0, "0,0,600,400"},
        {"without a size", [&] { program.Open(plain); }, Palette::WIDTH, 0, "0,0,457,200"},
    };
    for (const auto& [name, change, left, height, place] : rows) {
        CAPTURE(std::string(name));
        change();
        const SIZE client = SizeOf(program.Frame());
        const HWND status = program.Part(STATUSCLASSNAMEA);
        const HWND palette = program.Part("PanelPalette");
        const HWND notice = program.Part("PanelNotice");
        const LONG top = HeightOf(program.Part(TOOLBARCLASSNAMEA)) + height;
        const LONG bottom = client.cy - HeightOf(status);
        CHECK(program.PlaceOf(program.Panel(), program.Panel()) == place);
        CHECK(program.PlaceOf(program.Part(TOOLBARCLASSNAMEA)).starts_with("0,"));
        CHECK(program.PlaceOf(status) == a_GetRectString({0, bottom, client.cx, client.cy}));
        const HWND properties = program.Part("PanelProperties");
        const LONG right = client.cx - (left > 0 ? SizeOf(properties).cx : 0);
        CHECK(program.PlaceOf(program.Part("PanelView")) == a_GetRectString({left, top, right, bottom}));
        CHECK((IsWindowVisible(properties) != FALSE) == (left > 0));
        CHECK((IsWindowVisible(palette) != FALSE) == (left > 0));
        CHECK((IsWindowVisible(notice) != FALSE) == (height > 0));
        if (height > 0) {
            const LONG middle = top + HeightOf(palette);
            CHECK(program.PlaceOf(palette) == a_GetRectString({0, top, left, middle}));
            CHECK(program.PlaceOf(program.Part("PanelObjects")) ==
                  a_GetRectString({0, middle, left, bottom}));
            CHECK(program.PlaceOf(properties) == a_GetRectString({right, top, client.cx, bottom}));
            CHECK(program.PlaceOf(notice) == a_GetRectString({0, top - 36, client.cx, top}));
            CHECK(program.PlaceOf(GetDlgItem(notice, CMD_VIEW_UNREAD), notice) ==
                  a_GetRectString({client.cx - 140, 6, client.cx - 76, 30}));
            CHECK(program.PlaceOf(GetDlgItem(notice, CMD_CLOSE_NOTICE), notice) ==
                  a_GetRectString({client.cx - 70, 6, client.cx - 6, 30}));
        }
    }
    // The panel's own statement of its size is followed, as far as the screen goes.
    program.Open(program.Folder().Path("test.panel"));
    SendMessageA(program.Panel(), WM_ERASEBKGND, 0, 0);
    Load(program.Panel(), "size=3000,2000");
    program.Command(CMD_GRID);
    RECT frame;
    GetWindowRect(program.Frame(), &frame);
    const RECT work = WorkArea(program.Frame());
    CHECK(EqualRect(&frame, &work));
    Load(program.Panel(), "size=500,300");
    program.Command(CMD_GRID);
    CHECK(program.PlaceOf(program.Panel(), GetParent(program.Panel())) == "0,0,500,300");
}

TEST_CASE("a panel that is larger than its view is scrolled, one that is smaller lies in the middle") {
    PanelHere program("size=2000,1500\r\ncontrol=0x00000000 KNOB \"A\" 0x50010000 10,10,57,57\r\n"
                      "control=0x00000000 KNOB \"B\" 0x50010000 1900,1400,1947,1447\r\n");
    SetWindowPos(program.Frame(), nullptr, 30, 30, 500, 400, SWP_NOZORDER);
    const HWND view = program.Part("PanelView");
    const SIZE room = SizeOf(view);
    const int bar = GetSystemMetrics(SM_CXVSCROLL);
    const std::tuple<UINT, int, int, int, int> rows[] = {
        {WM_VSCROLL, SB_LINEDOWN, 0, 0, -20},
        {WM_VSCROLL, SB_PAGEDOWN, 0, 0, -20 - room.cy},
        {WM_HSCROLL, SB_PAGERIGHT, 0, -room.cx, -20 - room.cy},
        {WM_HSCROLL, SB_LINELEFT, 0, 20 - room.cx, -20 - room.cy},
        {WM_VSCROLL, SB_BOTTOM, 0, 20 - room.cx, room.cy - 1500},
        {WM_VSCROLL, SB_TOP, 0, 20 - room.cx, 0},
        {WM_HSCROLL, SB_LEFT, 0, 0, 0},
        {WM_MOUSEWHEEL, 0, -WHEEL_DELTA / 2, 0, 0},
        {WM_MOUSEWHEEL, 0, -WHEEL_DELTA / 2, 0, -60},
        {WM_MOUSEWHEEL, MK_SHIFT, -2 * WHEEL_DELTA, -120, -60},
        {WM_MOUSEWHEEL, 0, 9 * WHEEL_DELTA, -120, 0},
    };
    const auto at = [&](LONG left, LONG top) {
        return a_GetRectString({left, top, left + 2000, top + 1500});
    };
    for (const auto& [message, low, high, left, top] : rows) {
        CAPTURE(message);
        CAPTURE(low);
        SendMessageA(view, message, MAKEWPARAM(low, high), 0);
        CHECK(program.PlaceOf(program.Panel(), view) == at(left, top));
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(view, SB_VERT, &info);
        CHECK(info.nPos == -top);
        CHECK(info.nMax == 1499);
        CHECK(static_cast<int>(info.nPage) == room.cy);
    }
    // Whoever gets the focus by a key is brought into view.
    SetFocus(ph_Find(program.Root(), "A"));
    program.Type(VK_TAB);
    CHECK(program.PlaceOf(program.Panel(), view) == at(room.cx - 1947, room.cy - 1447));

    CHECK(program.Open(program.Folder().Write("small.panel", "size=101,51\r\n")));
    SetWindowPos(program.Frame(), nullptr, 30, 30, 500, 400, SWP_NOZORDER);
    const SIZE now = SizeOf(view);
    const LONG left = (now.cx - 101) / 2;
    const LONG top = (now.cy - 51) / 2;
    CHECK(now.cx == room.cx + bar);
    CHECK(program.PlaceOf(program.Panel(), view) == a_GetRectString({left, top, left + 101, top + 51}));
}

TEST_CASE("the keyboard goes through the controls and comes back to the one that had it") {
    PanelHere program("size=400,300\r\ncontrol=0x00000000 KNOB \"A\" 0x50010000 10,10,57,57\r\n"
                      "control=0x00000000 BSTATIC \"T\" 0x50000000 60,10,107,57\r\n"
                      "control=0x00000000 BEDIT \"E\" 0x50010000 110,10,197,30\r\nE*value=text\r\n"
                      "control=0x00000000 KNOB \"B\" 0x50010000 200,10,247,57\r\n");
    const auto find = [&](const char* name) { return ph_Find(program.Root(), name); };
    const HWND edit = find("E");
    SetFocus(program.Panel());
    for (const HWND next : {find("A"), edit, find("B"), find("A")}) {
        program.Type(VK_TAB);
        CHECK(GetFocus() == next);
    }
    for (const HWND next : {find("B"), edit}) {
        program.Type(VK_TAB, "Shift");
        CHECK(GetFocus() == next);
    }
    CHECK(SendMessageA(edit, EM_GETSEL, 0, 0) == MAKELONG(0, 4)); // its whole text
    // The program is left and comes back.
    SendMessageA(program.Frame(), WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(nullptr);
    SendMessageA(program.Frame(), WM_SETFOCUS, 0, 0);
    CHECK(GetFocus() == edit);
    // No control has it while the panel is edited; keys that reach one are the panel's.
    SetFocus(find("A"));
    program.Command(CMD_EDIT_MODE);
    CHECK(GetFocus() == program.Panel());
    program.Click({20, 20});
    SetFocus(find("B"));
    program.Type(VK_RIGHT);
    CHECK(GetFocus() == program.Panel());
    CHECK(ObjectOf(find("A")).rectangle.left == 11);
}

TEST_CASE(
    "the status bar tells what is under the mouse or has the keyboard, how much there is, what went wrong") {
    PanelHere program(EDITED_PANEL);
    const HWND bar = program.Part(STATUSCLASSNAMEA);
    const auto hover = [&](int x, int y) {
        SendMessageA(program.Panel(), WM_MOUSEMOVE, 0, At(x, y));
        program.Command(CMD_COPY); // nothing to copy: brings the bar up to date
        return program.Status();
    };
    SetFocus(program.Panel());
    CHECK(hover(5, 5).empty());
    CHECK(hover(60, 60) == "A = 0   B*resolution;C");
    CHECK(hover(370, 170) == "S*Part = 0   A");
    SetFocus(ph_Find(program.Root(), "B"));
    CHECK(hover(5, 5) == "B = 0");
    CHECK(program.Status(1) == "7 controls");
    CHECK(SendMessageA(bar, SB_GETPARTS, 0, 0) == 2);
    DestroyWindow(ph_Find(program.Root(), "A"));
    Load(ph_Find(program.Root(), "B"), "interval=no number");
    hover(5, 5);
    CHECK(program.Status(1) == "6 controls");
    CHECK(program.Status(2) == "1 message");
    // A new panel has no messages, a damaged one keeps those of the one that runs.
    CHECK_FALSE(program.Open(program.Folder().Write("bad.panel", "words\r\n")));
    hover(5, 5);
    CHECK(program.Status(2) == "1 message");
    CHECK(program.Open(program.Folder().Path("test.panel")));
    CHECK(SendMessageA(bar, SB_GETPARTS, 0, 0) == 2);
}

TEST_CASE("the trace keeps the last lines, and shows the end unless the user looks elsewhere") {
    PanelHere program("size=300,200\r\n");
    program.Command(CMD_VIEW_TRACE);
    const HWND list = program.Below(FindWindowA("PanelTrace", nullptr), WC_LISTVIEWA);
    const auto trace = [&](int count) {
        for (int i = 0; i < count; ++i) {
            TRACE("line %d\n", i);
        }
        program.Command(CMD_GRID);
    };
    const auto isAtEnd = [&] {
        return ListView_GetTopIndex(list) + ListView_GetCountPerPage(list) >= ListView_GetItemCount(list);
    };
    trace(100);
    CHECK(isAtEnd());
    ListView_EnsureVisible(list, 3, FALSE);
    trace(10);
    CHECK(ListView_GetTopIndex(list) == 3);
    trace(6000);
    CHECK(ListView_GetItemCount(list) == 5000);
    char text[64] = "";
    ListView_GetItemText(list, 4999, 2, text, sizeof text);
    CHECK(text == std::string("line 5999"));
}

TEST_CASE("a panel with changes is not lost by another one, an end or a file that cannot be written") {
    PanelHere program(EDITED_PANEL);
    const std::string file = program.Folder().Path("test.panel");
    Load(program.Panel(), "title=changed");
    for (const int answer : {IDCANCEL, IDNO}) {
        Answer asked("Panel", answer);
        CHECK(SendMessageA(program.Frame(), WM_QUERYENDSESSION, 0, 0) == (answer == IDNO));
        CHECK(asked.Question() == "Save the changes to test.panel?");
    }
    SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
    {
        Answer told("Panel", IDOK);
        program.Command(CMD_SAVE);
        CHECK(told.Question().starts_with("Cannot save " + file + ": "));
    }
    program.Command(CMD_GRID);
    CHECK(program.Title() == "changed * - Panel");
    SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    Answer asked("Panel", IDYES);
    SendMessageA(program.Frame(), WM_CLOSE, 0, 0);
    CHECK(program.HasEnded());
    CHECK(Contains(ReadBytes(file), "title=changed\r\n"));

    // Two panels do not share an outside channel.
    const std::string midi =
        program.Folder().Write("midi.panel", "control=0x00000000 IMIDI \"M\" 0x40000000 0,0,32,32\r\n");
    CHECK(program.Open(midi));
    CHECK(program.Open(midi));
    WriteBytes(midi, "damaged\r\n");
    CHECK_FALSE(program.Open(midi));
    CHECK(ph_Find(program.Root(), "M") != nullptr); // the running one stays
    // The devices beside the file are those of its panel.
    program.Folder().Write("net.devices", "AMP1*device=simulated\r\n");
    CHECK(program.Open(program.Folder().Write("net.panel", "size=100,100\r\n")));
    CHECK(ph_Find(program.Root(), "AMP1") != nullptr);
    CHECK(program.Open(file));
    CHECK(ph_Find(program.Root(), "AMP1") == nullptr);
}

TEST_CASE(
    "devices that are not live are counted beside a lamp, and what is wrong with their file is said above") {
    PanelHere program("size=400,300\r\n");
    const TestFolder& folder = program.Folder();
    const auto notice = [&program] {
        char text[256] = "";
        GetWindowTextA(program.Part("PanelNotice"), text, sizeof text);
        return std::string(text);
    };
    const std::string bound =
        "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\nA*function=AMP1*gain\r\n";
    const std::tuple<const char*, const char*, std::string> rows[] = {
        {"none", "", "There is no device file none.devices beside the panel."},
        {"good", "AMP1*device=simulated\r\nAMP1*gain=float,0,1,0\r\nAMP2*device=simulated\r\n", ""},
        {"bad", "nonsense\r\n", folder.Path("bad.devices") + " is not a device file."},
    };
    for (const auto& [name, devices, fault] : rows) {
        CAPTURE(std::string(name));
        if (*devices != '\0') {
            folder.Write(std::string(name) + ".devices", devices);
        }
        REQUIRE(program.Open(folder.Write(std::string(name) + ".panel", bound)));
        CHECK(ph_Find(program.Root(), "A") != nullptr);
        CHECK(notice() == fault);
        program.Command(CMD_COPY); // brings the bar up to date
        CHECK(program.Status(1) == (fault.empty() ? "2 devices live" : "1 control"));
    }
    SendMessageA(GetDlgItem(program.Part("PanelNotice"), CMD_VIEW_TRACE), BM_CLICK, 0, 0);
    program.Serve();
    CHECK(IsWindowVisible(FindWindowA("PanelTrace", "Trace"))); // with the lines that could not be read
    program.Command(CMD_VIEW_TRACE);

    REQUIRE(program.Open(folder.Path("good.panel")));
    for (const auto& [online, count] :
         {std::pair("0", "1 device not live"), std::pair("1", "2 devices live")}) {
        REQUIRE(ph_SetParameter(program.Root(), "AMP2*online", online) == 1);
        program.Command(CMD_COPY);
        CHECK(program.Status(1) == count);
        CHECK(program.Status(2) == "1 control");
        CHECK(SendMessageA(program.Part(STATUSCLASSNAMEA), SB_GETICON, 1, 0) != 0);
    }
    // The lamp opens the list of what is bound, with what is not live alone.
    REQUIRE(ph_SetParameter(program.Root(), "AMP1*online", "0") == 1);
    NMMOUSE click{};
    click.hdr = {program.Part(STATUSCLASSNAMEA), IDC_STATUS, static_cast<UINT>(NM_CLICK)};
    const HWND bindings = FindWindowA("PanelBindings", "Bindings");
    for (const auto& [part, isOpened] : {std::pair(2, false), std::pair(1, true)}) {
        click.dwItemSpec = static_cast<DWORD_PTR>(part);
        SendMessageA(program.Frame(), WM_NOTIFY, IDC_STATUS, reinterpret_cast<LPARAM>(&click));
        CHECK((IsWindowVisible(bindings) != FALSE) == isOpened);
    }
    const HWND list = program.Below(bindings, WC_LISTVIEWA);
    CHECK(ListView_GetItemCount(list) == 1);
    ph_SetParameter(program.Root(), "AMP1*online", "1");
    SendMessageA(bindings, WM_TIMER, 1, 0); // a second later
    CHECK(ListView_GetItemCount(list) == 0);
}

TEST_CASE("the grid is drawn over whatever ground there is") {
    for (const char* ground : {"", "background=0x00402010\r\n"}) {
        const PanelHere program(std::string("size=400,300\r\n") + ground);
        const auto at = [&](int x, int y) {
            RedrawWindow(program.Panel(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
            const HDC dc = GetDC(program.Panel());
            const COLORREF colour = GetPixel(dc, x, y);
            ReleaseDC(program.Panel(), dc);
            return colour;
        };
        const COLORREF plain = at(16, 16);
        program.Command(CMD_EDIT_MODE);
        CHECK((at(16, 16) ^ plain) == RGB(88, 88, 88));
        CHECK(at(24, 40) != plain);
        CHECK(at(23, 40) == plain);
        CHECK(at(24, 41) == plain);
        program.Command(CMD_GRID);
        CHECK(at(16, 16) == plain);
    }
}

TEST_CASE("every button and every entry has a picture of its own") {
    const ImageList icons(MakeIcons(false));
    const ImageList tiles(MakeTiles());
    std::set<std::vector<std::uint32_t>> different;
    const auto check = [&](const ImageList& list, int image, int side) {
        CAPTURE(image);
        std::uint32_t* bits = nullptr;
        const Bitmap bitmap(CreatePixels(side, side, &bits));
        const MemoryDc dc(bitmap.get());
        ImageList_Draw(list.get(), image, dc.Get(), 0, 0, ILD_NORMAL);
        GdiFlush();
        CHECK(std::count(bits, bits + side * side, *bits) < side * side - 30); // something is drawn
        CHECK(different.insert({bits, bits + side * side}).second);
    };
    for (int i = 0; i < static_cast<int>(Icon::Count); ++i) {
        check(icons, i, ICON_SIZE);
    }
    for (const CatalogueEntry& entry : Catalogue()) {
        check(tiles, EntryTile(entry), TILE_SIZE);
    }
}

TEST_SUITE_END();
