// The edit mode of Panel.exe: what mouse, keys, menus and dialogs do there.

#include "Controls/resources/resource.h"
#include "Panelhost/Editing.h"
#include "tests/windows/FormPanels.h"
#include "tests/windows/PanelCommands.h"
#include "tests/windows/Resources.h"

#include <commctrl.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <random>

std::string Editing::Lines() const {
    std::vector<std::string> places;
    for (HWND line = nullptr; (line = FindWindowExA(nullptr, line, "PanelLine", nullptr)) != nullptr;) {
        if (IsWindowVisible(line)) {
            places.push_back(PlaceOf(line, Panel()));
        }
    }
    std::sort(places.begin(), places.end());
    std::string all;
    for (const std::string& place : places) {
        all += (all.empty() ? "" : " ") + place;
    }
    return all;
}

TEST_SUITE_BEGIN("Editing");

namespace {

// The entries of the menu that opens, with "-" before those that cannot be chosen; one of them is then
// chosen, counted from 1; 0 is Escape.
std::string ShownMenu(const PanelHere& program, POINT point, int down) {
    const MenusByKeyboard menus;
    std::string shown;
    bool isChosen = false;
    // The system ends a menu now and then as soon as it opens.
    for (int tries = 0; tries < 10 && !isChosen; ++tries) {
        std::atomic<bool> isOver = false;
        shown.clear();
        std::thread user([&] {
            while (!isOver && FindWindowA("#32768", nullptr) == nullptr) {
                Sleep(5);
            }
            if (isOver) {
                return;
            }
            const auto menu =
                reinterpret_cast<HMENU>(SendMessageA(FindWindowA("#32768", nullptr), 0x1E1, 0, 0));
            for (int i = 0; i < GetMenuItemCount(menu); ++i) {
                char text[64] = "";
                const auto item = static_cast<UINT>(i);
                GetMenuStringA(menu, item, text, sizeof text, MF_BYPOSITION);
                const bool grey = (GetMenuState(menu, item, MF_BYPOSITION) & MF_GRAYED) != 0;
                shown +=
                    *text == '\0' ? "" : (shown.empty() ? "" : ", ") + std::string(grey ? "-" : "") + text;
            }
            isChosen = ChooseShownEntry(program.Frame(), down);
        });
        SendMessageA(program.Panel(), WM_RBUTTONDOWN, MK_RBUTTON, At(point.x, point.y));
        isOver = true;
        user.join();
        // A key that the menu did not take any more is still there.
        for (MSG key; PeekMessageA(&key, program.Frame(), WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE) != FALSE;) {
            isChosen = isChosen && key.wParam != VK_RETURN;
        }
    }
    return shown;
}

} // namespace

TEST_CASE("lines that could not be read are told of, kept, and the old file at the first saving") {
    const std::string file = "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\n"
                             "A*bitmap=.\\Controls\\Missing.bmp\r\n"
                             "control=0x00000000 PanelWindow \"W\" 0x50000000 100,40,187,87\r\n"
                             "W*value=1\r\n";
    const PanelHere program(file);
    CHECK(TextOf(program.Part("PanelNotice")) ==
          "3 lines could not be read: 1 missing picture, 1 unknown control, 1 line of a "
          "missing control. They are kept and saved as they are.");
    program.Folder().Write("test.panel.bak", "of the user");
    const std::string saved = program.Saved();
    const std::vector<std::string> names{"test.panel", "test.panel.2.bak", "test.panel.bak"};
    CHECK(program.Folder().Names() == names);
    CHECK(ReadBytes(program.Folder().Path("test.panel.2.bak")) == file);
    CHECK(ReadBytes(program.Folder().Path("test.panel.bak")) == "of the user");
    CHECK(program.Saved() == saved);
    CHECK(program.Folder().Names() == names);
    // They are copied, deleted and brought back with their control.
    program.Command(CMD_EDIT_MODE);
    program.Click({60, 60});
    program.Command(CMD_DUPLICATE);
    CHECK(program.Status() == "A 2   KNOB   picture missing: .\\Controls\\Missing.bmp   48,48   47 x 47");
    CHECK(Contains(program.Saved(), "\r\nA 2*bitmap=.\\Controls\\Missing.bmp\r\n"));
    program.Command(CMD_SELECT_ALL);
    program.Command(CMD_DELETE);
    CHECK_FALSE(Contains(program.Saved(), "Missing.bmp"));
    CHECK(program.UndoAll() == 2);
    CHECK(program.Saved() == saved);
}

TEST_CASE("what ends a gesture, and what of it stays") {
    Editing program;
    const HWND panel = program.Panel();
    const std::tuple<UINT, WPARAM, LPARAM, bool> rows[] = {
        {WM_LBUTTONUP, 0, At(200, 200), true},
        {WM_MOUSEMOVE, 0, At(200, 200), true}, // released elsewhere
        {WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, At(160, 80), true},
        {WM_KEYDOWN, VK_ESCAPE, 0, false},
        {WM_CANCELMODE, 0, 0, false},
        {WM_CAPTURECHANGED, 0, 0, false},
        {WM_COMMAND, CMD_COPY, 0, false},
        {WM_COMMAND, CMD_EDIT_MODE, 0, false}};
    for (const auto& [message, wParam, lParam, stays] : rows) {
        CAPTURE(message);
        program.Press({60, 60});
        CHECK(GetCapture() == panel);
        program.MoveTo({62, 61}); // no drag yet
        CHECK(program.PlaceOf(ph_Find(program.Root(), "A"), panel) == "40,40,87,87");
        program.MoveTo({200, 200});
        program.Key(VK_RIGHT); // does nothing meanwhile
        CHECK(SendMessageA(program.Frame(), WM_SYSCOMMAND, SC_KEYMENU, 0) == 0);
        SendMessageA(message == WM_COMMAND ? program.Frame() : panel, message, wParam, lParam);
        CHECK(GetCapture() == nullptr);
        program.Release({200, 200});
        CHECK(program.Lines().empty());
        CHECK(Contains(program.Saved(), "\"A\" 0x50010000 40,40,87,87") == !stays);
        CHECK(program.UndoAll() == (stays ? 1 : 0));
    }
    // While it is operated nothing of the edit mode is at work.
    program.Drag({290, 70}, {100, 300});
    program.Click({60, 60}, MK_CONTROL);
    program.Key(VK_DELETE);
    SendMessageA(panel, WM_RBUTTONDOWN, MK_RBUTTON, At(290, 70)); // it offers nothing
    CHECK(program.Saved() == program.start);
    Load(ph_Find(program.Root(), "A"), "value=3", LOAD_FROM_FILE); // kept, as what it is bound to disagrees
    CHECK(ShownMenu(program, {60, 60}, 1) == "Apply");
    program.Check("B*resolution=3\r\n");
}

TEST_CASE("presses and bands select, the cursor shows what a press would do") {
    Editing program;
    const std::tuple<POINT, POINT, WPARAM, const char*> rows[] = {
        {{60, 60}, {60, 60}, 0, "A   KNOB"},
        {{160, 80}, {160, 80}, MK_CONTROL, "2 selected   40,40   147 x 67"},
        {{60, 60}, {60, 60}, MK_CONTROL, "B   KNOB"},
        {{160, 80}, {160, 80}, 0, "B   KNOB"},
        {{60, 60}, {60, 60}, MK_SHIFT, "2 selected   40,40   147 x 67"},
        {{160, 80}, {160, 80}, MK_SHIFT, "2 selected   40,40   147 x 67"}, // it stays
        {{240, 40}, {260, 70}, MK_SHIFT, "3 selected   40,40   310 x 67"},
        {{130, 20}, {260, 70}, 0, "2 selected   140,50   210 x 57"},
        {{10, 290}, {30, 310}, MK_CONTROL, "3 selected   20,50   330 x 266"},
        {{30, 20}, {140, 80}, 0, "A   KNOB"}, // up to its edge, not into it
        {{5, 5}, {5, 5}, 0, "Edit: click"},
    };
    for (const auto& [from, to, keys, status] : rows) {
        program.Press(from, keys);
        program.MoveTo(to);
        program.Release(to);
        program.Tick();
        CAPTURE(std::string(status));
        CHECK(program.Status().substr(0, std::strlen(status)) == status);
    }
    program.Press({30, 20});
    program.MoveTo({110, 120});
    CHECK(program.Lines() == "110,20,111,121 30,120,111,121 30,20,111,21 30,20,31,121");
    program.Key(VK_ESCAPE);
    CHECK(program.Lines().empty());
    CHECK(program.UndoAll() == 0);

    program.Click({290, 70});
    const std::pair<POINT, const char*> cursors[] = {
        {{251, 51}, IDC_SIZENWSE}, {{349, 89}, IDC_SIZENWSE}, {{349, 51}, IDC_SIZENESW},
        {{251, 89}, IDC_SIZENESW}, {{300, 51}, IDC_SIZENS},   {{300, 89}, IDC_SIZENS},
        {{251, 70}, IDC_SIZEWE},   {{349, 70}, IDC_SIZEWE},   {{280, 65}, IDC_SIZEALL},
        {{60, 60}, IDC_ARROW},     {{5, 5}, IDC_ARROW},       {{599, 20}, IDC_SIZEWE},
        {{20, 397}, IDC_SIZENS},   {{597, 399}, IDC_SIZENWSE}};
    for (const auto& [point, cursor] : cursors) {
        CAPTURE(point.x);
        SendMessageA(program.Panel(), WM_MOUSEMOVE, 0, At(point.x, point.y));
        CHECK(GetCursor() == LoadCursorA(nullptr, cursor));
    }
}

TEST_CASE("handles size what takes any size, and leave alone what its image sizes") {
    Editing program;
    program.Click({290, 70});
    {
        const HeldKeys exact("Alt"); // nothing attracts
        const std::tuple<POINT, POINT, const char*> rows[] = {{{251, 51}, {241, 44}, "240,43,350,90"},
                                                              {{349, 70}, {363, 77}, "250,50,364,90"},
                                                              {{349, 89}, {10, 10}, "250,50,254,54"}};
        for (const auto& [from, to, place] : rows) {
            program.Click({5, 5}); // so that no press is a second one
            program.Click({290, 70});
            program.Drag(from, to);
            CHECK(program.Place("C") == place);
            program.Command(CMD_UNDO);
        }
    }
    program.Click({5, 5});
    program.Click({290, 70});
    program.Drag({349, 89}, {389, 129}); // onto the grid
    program.Check("BSTATIC \"C\" 0x50000000 250,50,392,128");
    program.Drag({500, 350}, {468, 254}); // its list comes along
    program.Check("\"Combo\" 0x54010003 408,248,528,296");
    program.Click({60, 60});
    program.Drag({86, 86}, {130, 230});
    program.Check("KNOB \"A\" 0x50010000 40,40,87,87");
    program.CheckHistory(2);
}

TEST_CASE("what gets the size of another one keeps that of its image") {
    Editing program;
    program.Click({420, 220});
    program.Click({60, 60}, MK_CONTROL);
    program.Command(CMD_SAME_SIZE);
    CHECK(program.Place("A") == "40,40,87,87");
    CHECK(program.UndoAll() == 0);
}

TEST_CASE("the edges of the panel are dragged, by one step each") {
    Editing program;
    const std::tuple<POINT, POINT, const char*> rows[] = {
        {{599, 20}, {659, 90}, "size=664,400\r\n"},
        {{20, 399}, {400, 299}, "size=664,304\r\n"},
        {{662, 302}, {-500, 318}, "size=32,320\r\n"},
    };
    for (const auto& [from, to, line] : rows) {
        program.Press(from);
        program.MoveTo(to);
        program.Key(VK_ESCAPE); // which takes it back
        CHECK_FALSE(Contains(program.Saved(), line));
        program.Drag(from, to);
        program.Tick();
        program.Check(line);
    }
    RECT client;
    GetClientRect(program.Panel(), &client);
    CHECK((client.right == 32 && client.bottom == 320));
    program.CheckHistory(3);
}

TEST_CASE("what is dragged beyond the border of the view scrolls it") {
    std::string large = EDITED_PANEL;
    large.replace(large.find("600,400"), 7, "5000,4000");
    Editing program(large);
    const auto corner = [&] {
        POINT at{};
        MapWindowPoints(program.Panel(), GetParent(program.Panel()), &at, 1);
        return at;
    };
    program.Press({60, 60});
    RECT view;
    GetClientRect(GetParent(program.Panel()), &view);
    program.MoveTo({view.right + 10, view.bottom / 2});
    for (int tick = 0; tick < 20; ++tick) {
        SendMessageA(program.Panel(), WM_TIMER, 0x5C01, 0);
    }
    CHECK(corner().x < -200);
    CHECK(corner().y == 0);
    const std::string place = program.PlaceOf(ph_Find(program.Root(), "A"), program.Panel());
    CHECK(std::stoi(place) > view.right + 150); // it is still under the mouse
    program.Key(VK_ESCAPE);
    CHECK(program.Place("A") == "40,40,87,87");
    CHECK(program.UndoAll() == 0);
}

TEST_CASE("edges attract each other, the grid and the border of the panel") {
    Editing program;
    const std::tuple<bool, const char*, POINT, const char*, const char*> rows[] = {
        {false, "", {270, 150}, "250,50,251,177", "250,130,297,177"}, // left edges
        {false, "", {273, 153}, "300,50,301,180", "253,133,300,180"},
        {false, "", {-40, 500}, "0,388,560,389", "-39,388,8,435"},
        {false, "", {98, 201}, "", "78,181,125,228"},
        {true, "", {98, 201}, "", "80,184,127,231"},
        {true, "Alt", {98, 201}, "", "78,181,125,228"}};
    for (const auto& [grid, held, to, lines, place] : rows) {
        const HeldKeys keys(held);
        grid != program.Item(CMD_GRID).checked ? program.Command(CMD_GRID) : void();
        program.Click({5, 5});
        program.Press({60, 60});
        program.MoveTo(to);
        CHECK(program.Lines() == lines);
        program.Release(to);
        CHECK(program.Place("A") == place);
        program.Command(CMD_UNDO);
    }
}

TEST_CASE("a run of one arrow key is one step; undo selects what had been edited and brings all back") {
    Editing program;
    program.Click({60, 60});
    for (const WPARAM key : {VK_RIGHT, VK_RIGHT, VK_RIGHT, VK_RIGHT, VK_RIGHT, VK_DOWN}) {
        program.Key(key);
    }
    CHECK(program.Place("A") == "45,41,92,88");
    program.CheckHistory(2);
    program.Click({5, 5});
    program.Drag({60, 60}, {270, 70});
    program.Check("BSTATIC \"C\" 0x54000000"); // leaves out the knob now
    program.Command(CMD_UNDO);
    program.Command(CMD_DELETE); // not the neighbour that it lay on
    CHECK_FALSE(Contains(program.Saved(), "KNOB \"A\""));
    program.Check("BSTATIC \"C\" 0x50000000");
    program.Check("C*connection=A\r\n"); // the address of what is gone stays
    program.Command(CMD_SELECT_ALL);
    program.Command(CMD_DELETE);
    CHECK_FALSE(Contains(program.Saved(), "control="));
    program.CheckHistory(2);
}

TEST_CASE("a part is reached by a double press, a single one takes what it is in") {
    Editing program;
    program.Drag({368, 168}, {348, 198});
    program.Check("MINIEDIT \"S\" 0x50000000 320,168,480,328");
    program.Command(CMD_UNDO);
    program.Type(VK_ESCAPE, "", program.Panel()); // presses have the time of what was posted last
    program.Click({10, 10});                      // the next press is no second one
    program.Click({368, 168});
    program.Click({369, 169}); // close enough, soon enough
    program.Key(VK_RIGHT);
    program.Check("S*control=0x00000000 LED \"Part\" 0x50010000 21,20,37,36");
    program.Command(CMD_DELETE);
    CHECK_FALSE(Contains(program.Saved(), "Part"));
    program.CheckHistory(2);
    program.Click({60, 60});
    SendMessageA(program.Panel(), WM_LBUTTONDBLCLK, MK_LBUTTON, At(60, 60)); // it has no parts
    CHECK(IsWindow(ObjectOf(ph_Find(program.Root(), "A")).dialog));
}

TEST_CASE("properties set in dialogs and a deletion there are steps too") {
    Editing program;
    program.Command(CMD_PROPERTIES); // nothing is selected: the panel's own
    const HWND own = FindWindowA("#32770", "test.panel - Properties");
    REQUIRE(own != nullptr);
    CHECK(program.Root()->dialog == own);
    CHECK(a_ApplyEdit(program.Root(), "size=500,300") == 1);
    program.Command(CMD_GRID); // by the way
    CHECK(program.Item(CMD_UNDO).text == "&Undo Change of property\tCtrl+Z");
    CHECK(program.PlaceOf(program.Panel(), program.Panel()) == "0,0,500,300");
    program.Command(CMD_UNDO);
    CHECK(program.PlaceOf(program.Panel(), program.Panel()) == "0,0,600,400");
    CHECK(program.Saved() == program.start);
    SendMessageA(own, WM_CLOSE, 0, 0);

    program.Click({60, 60});
    program.Command(CMD_PROPERTIES);
    const HWND knob = ph_Find(program.Root(), "A");
    const HWND dialog = ObjectOf(knob).dialog;
    SendDlgItemMessageA(dialog, IDC_RELATIVE, BM_CLICK, 0, 0);
    program.Check("A*relative=1");
    SendDlgItemMessageA(dialog, IDC_DELETE_CONTROL, BM_CLICK, 0, 0); // not asked for: it can be undone
    CHECK_FALSE(IsWindow(dialog));
    CHECK_FALSE(Contains(program.Saved(), "\"A\""));
    program.CheckHistory(2);
}

TEST_CASE("the menus offer what can be done, and do it") {
    Editing program;
    PutOnClipboard("control=0x00000000 LED \"New\" 0x50000000 10,300,26,316\n");
    const std::string all =
        "Modify Properties, Administrate Connections, Copy Component(s), Cut Component(s), "
        "Paste Component(s), Delete Component(s), Move To Foreground, Move To Background";
    CHECK(ShownMenu(program, {60, 60}, 0) == all + ", Apply");
    CHECK(program.Saved() == program.start);
    const std::tuple<int, const char*, const char*> rows[] = {
        {4, "Delete", "ontrol="}, {5, "Paste", "45,50,61,66"}, {6, "Delete", "ontrol="}};
    for (const auto& [down, label, place] : rows) {
        ShownMenu(program, {45, 50}, down);
        program.Command(CMD_GRID);
        CHECK(program.Item(CMD_UNDO).text == "&Undo " + std::string(label) + "\tCtrl+Z");
        CHECK((down == 5 ? program.Place("New") : place) == place);
        program.CheckHistory(1);
        PutOnClipboard("control=0x00000000 LED \"New\" 0x50000000 10,300,26,316\n");
    }
    EmptyClipboard();
    CHECK(ShownMenu(program, {5, 5}, 0) ==
          "Modify Properties, -Administrate Connections, -Copy Component(s), -Cut Component(s), "
          "Paste Component(s), -Delete Component(s), -Move To Foreground, -Move To Background");
}

TEST_CASE("random edits are undone and redone without a trace, and leave nothing behind") {
    Editing program;
    constexpr int COMMANDS[] = {
        CMD_DUPLICATE, CMD_DUPLICATE, CMD_DELETE, CMD_ALIGN_LEFT, CMD_DISTRIBUTE_ACROSS, CMD_TO_FOREGROUND,
        CMD_COPY,      CMD_PASTE,     CMD_CUT,    CMD_UNDO,       CMD_PROPERTIES,        CMD_CONNECTIONS};
    constexpr WPARAM KEYS[] = {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_TAB};
    const std::filesystem::path temporary = std::filesystem::temp_directory_path();
    const auto countFiles = [&] { return std::distance(std::filesystem::directory_iterator(temporary), {}); };
    Resources before{};
    const auto files = countFiles();
    for (unsigned round = 0; round < 4; ++round) {
        std::mt19937 random(20 + round % 2); // the same again, when caches are filled
        const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
        for (int i = 0; i < 20; ++i) {
            const POINT point{any(600), any(400)};
            program.Drag(point, {any(600), any(400)});
            program.Click({any(600), any(400)}, MK_CONTROL);
            program.Command(COMMANDS[any(std::size(COMMANDS))]);
            program.Key(KEYS[any(std::size(KEYS))]);
            if (const HWND dialog = FindWindowA("#32770", nullptr)) { // of a double press, too
                SendMessageA(dialog, WM_CLOSE, 0, 0);
            }
        }
        program.RedoAll();
        const int steps = program.UndoAll();
        CHECK(steps > 3);
        program.RedoAll();
        program.CheckHistory(steps);
        program.Serve();
        before = round < 2 ? CountResources() : before;
    }
    Resources now = CountResources().Settled(before);
    now.threads = before.threads; // the system's own, for timers, come and go
    CHECK(now == before);
    CHECK(countFiles() == files);
}

TEST_SUITE_END();
