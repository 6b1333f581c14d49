// The edit mode of Panel.exe, from outside: input goes to the running program, and what it saves is read.

#include "Controls/resources/resource.h"
#include "Panel/resource.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/PanelProgram.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <random>

namespace {

const char* const PANEL = "size=600,400\r\n"
                          "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\n"
                          "A*connection=B*resolution;C\r\n"
                          "control=0x00000000 KNOB \"B\" 0x50010000 140,60,187,107\r\n"
                          "control=0x00000000 BSTATIC \"C\" 0x50000000 250,50,350,90\r\n"
                          "C*connection=A\r\n"
                          "control=0x00000000 MINIEDIT \"S\" 0x50000000 340,140,500,300\r\n"
                          "S*control=0x00000000 LED \"Part\" 0x50010000 20,20,36,36\r\n"
                          "S*Part*connection=A\r\n"
                          "control=0x00000000 LED \"Layered\" 0x50010000 20,300,36,316\r\n"
                          "Layered*layer=u2\r\n"
                          "control=0x00000000 BCOMBOBOX \"Combo\" 0x50010003 440,340,560,388\r\n";

void PutOnClipboard(const std::string& text) {
    REQUIRE(OpenClipboard(nullptr));
    EmptyClipboard();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
    SetClipboardData(CF_TEXT, memory);
    CloseClipboard();
}

// The program at both ends of its history; it is edited before.
void CheckHistory(const PanelProgram& program, const std::string& start, int steps) {
    const std::string end = program.Saved();
    CHECK(program.UndoAll() == steps);
    CHECK(program.Saved() == start);
    CHECK(program.RedoAll() == steps);
    CHECK(program.Saved() == end);
    program.UndoAll();
    CHECK(program.Saved() == start);
}

} // namespace

TEST_CASE("lines that could not be read are told of, kept, and the old file at the first saving") {
    const std::string file = "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\n"
                             "A*bitmap=.\\Controls\\Missing.bmp\r\n"
                             "control=0x00000000 PanelWindow \"W\" 0x50000000 100,40,187,87\r\n"
                             "W*value=1\r\n";
    const PanelProgram program(file);
    const HWND notice = program.Below(program.Frame(), "PanelNotice");
    char text[256] = "";
    SendMessageA(notice, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    CHECK(text == std::string("3 lines could not be read: 1 missing picture, 1 unknown control, 1 line of a "
                              "missing control. They are kept and saved as they are."));
    RECT bar;
    RECT panel;
    GetWindowRect(notice, &bar);
    GetWindowRect(program.Panel(), &panel);
    CHECK((GetWindowLongA(notice, GWL_STYLE) & WS_VISIBLE) != 0);
    CHECK(bar.bottom <= panel.top);
    SendMessageA(notice, WM_COMMAND, CMD_VIEW_UNREAD, 0);
    const HWND list = program.Below(program.Top("PanelUnread"), WC_LISTVIEWA);
    CHECK(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0) == 3);
    SendMessageA(notice, WM_COMMAND, CMD_CLOSE_NOTICE, 0);
    CHECK((GetWindowLongA(notice, GWL_STYLE) & WS_VISIBLE) == 0);

    program.Folder().Write("test.panel.bak", "of the user");
    const std::string saved = program.Saved();
    CHECK(Contains(saved, "\r\nA*bitmap=.\\Controls\\Missing.bmp\r\n"));
    CHECK(Contains(saved,
                   "\r\ncontrol=0x00000000 PanelWindow \"W\" 0x50000000 100,40,187,87\r\nW*value=1\r\n"));
    const std::vector<std::string> names{"test.panel", "test.panel.2.bak", "test.panel.bak", "trace.txt"};
    CHECK(program.Folder().Names() == names);
    CHECK(ReadBytes(program.Folder().Path("test.panel.2.bak")) == file);
    CHECK(ReadBytes(program.Folder().Path("test.panel.bak")) == "of the user");
    CHECK(program.Saved() == saved);
    CHECK(program.Folder().Names() == names);

    // Deleting the control takes the name of its picture along, and undoing brings it back.
    program.Command(CMD_EDIT_MODE);
    program.Click({60, 60});
    program.Command(CMD_DELETE);
    CHECK_FALSE(Contains(program.Saved(), "Missing.bmp"));
    program.Command(CMD_UNDO);
    CHECK(program.Saved() == saved);
    program.Command(CMD_DUPLICATE);
    CHECK(Contains(program.Saved(), "\r\nA 2*bitmap=.\\Controls\\Missing.bmp\r\n"));
    program.Command(CMD_UNDO);
    CHECK(program.Saved() == saved);
}

TEST_CASE("a control is dragged with the mouse, and the way back is byte for byte the same") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    CHECK_FALSE(Contains(program.Title(), "*"));

    // Input as it comes from the device, over the control's own window.
    const auto mouse = [&](POINT point, DWORD event) {
        ClientToScreen(program.Panel(), &point);
        SetCursorPos(point.x, point.y);
        Sleep(60);
        if (event != 0) {
            mouse_event(event, 0, 0, 0, 0);
            Sleep(60);
        }
    };
    mouse({60, 60}, MOUSEEVENTF_LEFTDOWN);
    mouse({70, 70}, 0);
    mouse({92, 260}, 0);
    mouse({92, 260}, MOUSEEVENTF_LEFTUP);
    CHECK(WaitFor([&] { return Contains(program.Title(), "*"); }));
    CHECK(Contains(program.Saved(), "KNOB \"A\" 0x50010000 72,240,119,287"));
    CheckHistory(program, start, 1);
    program.Command(CMD_REDO);
    CHECK(WaitFor([&] { return Contains(program.Title(), "*"); }));
    program.Command(CMD_UNDO);
    CHECK(WaitFor([&] { return !Contains(program.Title(), "*"); }));
    CHECK(program.Close() == 0); // nothing is asked: it is as it was saved
}

TEST_CASE("escape and a lost capture take a gesture back") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Press({60, 60});
    program.MoveTo({200, 200});
    program.Key(VK_ESCAPE);
    program.Release({200, 200});
    CHECK(program.Saved() == start);
    program.Press({60, 60});
    program.MoveTo({200, 200});
    SendMessageA(program.Panel(), WM_CANCELMODE, 0, 0);
    CHECK(program.Saved() == start);
    program.Press({60, 60});
    program.MoveTo({200, 200});
    SendMessageA(program.Panel(), WM_CAPTURECHANGED, 0, 0);
    CHECK(program.Saved() == start);
    CHECK(program.UndoAll() == 0);
}

TEST_CASE("while the panel is operated nothing of the edit mode is at work") {
    const PanelProgram program(PANEL);
    const std::string start = program.Saved();
    program.Drag({290, 70}, {100, 300});
    program.Click({60, 60}, MK_CONTROL);
    program.Key(VK_DELETE);
    for (const int command : {CMD_SELECT_ALL, CMD_DELETE, CMD_DUPLICATE, CMD_UNDO}) {
        program.Command(command);
    }
    SendMessageA(program.Panel(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(290, 70)); // it offers nothing
    CHECK(program.Saved() == start);
}

TEST_CASE("the wheel sets no control while the panel is edited") {
    const PanelProgram program("control=0x00000000 FADER \"F\" 0x50010000 20,20,50,220\r\n"
                               "F*resolution=1\r\nF*properties=-80,0,-80\r\n");
    const HWND fader = program.Below(program.Panel(), "FADER");
    REQUIRE(fader != nullptr);
    const auto holds = [&](const char* value) {
        return Contains(program.Saved(), std::string("F*properties=") + value + "\r\n");
    };
    const WPARAM notch = MAKEWPARAM(0, WHEEL_DELTA);
    PostMessageA(fader, WM_MOUSEWHEEL, notch, 0);
    CHECK(WaitFor([&] { return holds("-80,0,-79"); }));
    program.Command(CMD_EDIT_MODE);
    PostMessageA(fader, WM_MOUSEWHEEL, notch, 0);
    PostMessageA(program.Frame(), WM_COMMAND, CMD_EDIT_MODE, 0);
    PostMessageA(fader, WM_MOUSEWHEEL, notch, 0);
    Sleep(300);
    CHECK(holds("-80,0,-78"));
}

TEST_CASE("handles size what takes any size, and leave alone what its image sizes") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Click({290, 70});
    program.Drag({349, 89}, {389, 129}); // onto the grid
    CHECK(Contains(program.Saved(), "BSTATIC \"C\" 0x50000000 250,50,392,128"));
    program.Drag({500, 350}, {468, 254}); // its list comes along
    CHECK(Contains(program.Saved(), "\"Combo\" 0x54010003 408,248,528,296"));
    program.Click({60, 60});
    program.Drag({86, 86}, {130, 230});
    CHECK(Contains(program.Saved(), "KNOB \"A\" 0x50010000 40,40,87,87"));
    CheckHistory(program, start, 2);
}

TEST_CASE("a run of one arrow key is one step") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Click({60, 60});
    for (int i = 0; i < 5; ++i) {
        program.Key(VK_RIGHT);
    }
    program.Key(VK_DOWN);
    CHECK(Contains(program.Saved(), "KNOB \"A\" 0x50010000 45,41,92,88"));
    CheckHistory(program, start, 2);
}

TEST_CASE("undo selects what had been edited, not a neighbour that it lay on") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Drag({60, 60}, {270, 70});
    CHECK(Contains(program.Saved(), "BSTATIC \"C\" 0x54000000")); // leaves out the knob now
    program.Command(CMD_UNDO);
    program.Command(CMD_DELETE);
    CHECK_FALSE(Contains(program.Saved(), "KNOB \"A\""));
    CHECK(Contains(program.Saved(), "BSTATIC \"C\" 0x50000000"));
    CheckHistory(program, start, 1);
}

TEST_CASE("a part is reached by a double press, a single one takes what it is in") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Drag({368, 168}, {348, 198});
    CHECK(Contains(program.Saved(), "MINIEDIT \"S\" 0x50000000 320,168,480,328"));
    program.Command(CMD_UNDO);
    Sleep(GetDoubleClickTime() + 50);
    program.Click({368, 168});
    SendMessageA(program.Panel(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(368, 168));
    program.Release({368, 168});
    program.Key(VK_RIGHT);
    CHECK(Contains(program.Saved(), "S*control=0x00000000 LED \"Part\" 0x50010000 21,20,37,36"));
    program.Command(CMD_DELETE);
    CHECK_FALSE(Contains(program.Saved(), "Part"));
    CheckHistory(program, start, 2);
}

TEST_CASE("alignment, order, copies and deletion are undone with names, order and connections") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Click({60, 60});
    program.Click({160, 80}, MK_CONTROL);
    program.Click({290, 70}, MK_CONTROL);
    program.Command(CMD_ALIGN_TOP);
    CHECK(Contains(program.Saved(), "KNOB \"B\" 0x50010000 140,40,187,87"));
    CHECK(Contains(program.Saved(), "BSTATIC \"C\" 0x50000000 250,40,350,80"));
    program.Command(CMD_DISTRIBUTE_ACROSS);
    program.Command(CMD_TO_BACKGROUND);
    CHECK(program.Saved().find("\"S\"") < program.Saved().find("\"A\""));
    program.Command(CMD_DUPLICATE);
    const std::string doubled = program.Saved();
    CHECK(Contains(doubled, "A 2*connection=B 2*resolution;C 2\r\n"));
    CHECK(Contains(doubled, "C 2*connection=A 2\r\n"));
    program.Command(CMD_DELETE);
    program.Click({60, 60});
    program.Command(CMD_DELETE);
    CHECK(Contains(program.Saved(), "C*connection=A\r\n")); // the address of what is gone stays
    program.Command(CMD_SELECT_ALL);
    program.Command(CMD_DELETE);
    CHECK_FALSE(Contains(program.Saved(), "control="));
    CheckHistory(program, start, 7);
}

TEST_CASE("a property set in a dialog and a deletion there are steps too") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Click({60, 60});
    program.Command(CMD_PROPERTIES);
    HWND dialog = nullptr;
    REQUIRE(WaitFor([&] { return (dialog = program.Top("#32770")) != nullptr; }));
    SendDlgItemMessageA(dialog, IDC_RELATIVE, BM_CLICK, 0, 0);
    CHECK(WaitFor([&] { return Contains(program.Saved(), "A*relative=1"); }));
    // Not asked for: it can be undone.
    PostMessageA(GetDlgItem(dialog, IDC_DELETE_CONTROL), BM_CLICK, 0, 0);
    CHECK(WaitFor([&] { return program.Top("#32770") == nullptr; }));
    CHECK_FALSE(Contains(program.Saved(), "\"A\""));
    CheckHistory(program, start, 2);
}

TEST_CASE("a control's own menu sends its value while the panel is operated") {
    // The two knobs disagree, so the fader keeps its own value.
    const PanelProgram program("size=300,300\r\n"
                               "control=0x00000000 FADER \"F\" 0x50010000 40,40,70,240\r\n"
                               "F*properties=0,100,30\r\nF*connection=K;L\r\n"
                               "control=0x00000000 KNOB \"K\" 0x50010000 100,100,147,147\r\n"
                               "K*properties=0,100,10\r\n"
                               "control=0x00000000 KNOB \"L\" 0x50010000 200,100,247,147\r\n"
                               "L*properties=0,100,20\r\n");
    CHECK(Contains(program.Saved(), "K*properties=0,100,10\r\n"));
    PostMessageA(program.Panel(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(50, 100));
    HWND menu = nullptr;
    REQUIRE(WaitFor([&] { return (menu = program.Top("#32768")) != nullptr; }));
    for (const WPARAM key : {VK_DOWN, VK_RETURN}) {
        PostMessageA(program.Frame(), WM_KEYDOWN, key, 0);
    }
    CHECK(WaitFor([&] { return program.Top("#32768") == nullptr; }));
    CHECK(WaitFor([&] { return Contains(program.Saved(), "K*properties=0,100,30\r\n"); }));
    CHECK(Contains(program.Saved(), "L*properties=0,100,30\r\n"));
}

TEST_CASE("all classes are made from the palette") {
    const PanelProgram program("size=600,400\r\n");
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    const HWND tree = program.Below(program.Frame(), WC_TREEVIEWA);
    REQUIRE(tree != nullptr);
    const auto next = [&](WPARAM which, LPARAM item) {
        return SendMessageA(tree, TVM_GETNEXTITEM, which, item);
    };
    for (LPARAM item = next(TVGN_ROOT, 0); item != 0; item = next(TVGN_NEXTVISIBLE, item)) {
        SendMessageA(tree, TVM_SELECTITEM, TVGN_CARET, item);
        SendMessageA(tree, WM_KEYDOWN, VK_RETURN, 0); // nothing happens at the name of a group
    }
    const std::string saved = program.Saved();
    for (const auto& row : EXPECTED_CLASSES) {
        CAPTURE(row.name);
        CHECK(Contains(saved, std::string(" ") + row.name + " \""));
    }
    CHECK(Contains(saved, "KNOB \"Knob 1\""));
    const int steps = program.UndoAll();
    CHECK(steps >= 45);
    CHECK(program.Saved() == start);
    CHECK(program.RedoAll() == steps);
    CHECK(program.Saved() == saved);
}

TEST_CASE("components go from one program to another") {
    const PanelProgram source(PANEL);
    const PanelProgram target("size=600,400\r\ncontrol=0x00000000 KNOB \"B\" 0x50010000 0,0,47,47\r\n");
    source.Command(CMD_EDIT_MODE);
    target.Command(CMD_EDIT_MODE);
    const std::string start = target.Saved();
    const std::string before = source.Saved();
    source.Command(CMD_SELECT_ALL);
    source.Command(CMD_COPY);
    CHECK(IsClipboardFormatAvailable(RegisterClipboardFormatA("OSMIR Panel Components")));
    CHECK(IsClipboardFormatAvailable(CF_TEXT));
    target.Command(CMD_PASTE);
    const std::string pasted = target.Saved();
    CHECK(Contains(pasted, "A*connection=B 2*resolution;C\r\n"));
    CHECK(Contains(pasted, "KNOB \"B 2\" 0x50010000 148,68,195,115"));
    CHECK(Contains(pasted, "S*Part*connection=A\r\n"));
    CHECK(Contains(pasted, "Layered*layer=u2\r\n"));
    CheckHistory(target, start, 1);
    source.Command(CMD_CUT);
    CHECK(source.Saved() == "size=600,400\r\n");
    source.Command(CMD_UNDO);
    CHECK(source.Saved() == before);
}

TEST_CASE("of damaged text on the clipboard the sound part is pasted and the rest is told") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    PutOnClipboard("noise\ncontrol=0x00000000 KNOB \"Broken\" 0x5001\nBroken*interval=7\nA*interval=9\n"
                   "control=0x00000000 NOSUCHCLASS \"No\" 0x50010000 1,2,3,4\nNo*interval=3\n"
                   "control=0x00000000 KNOB \"Good\" 0x50010000 10,300,57,347\nGood*interval=123\n");
    program.Command(CMD_PASTE);
    const std::string saved = program.Saved();
    CHECK(Contains(saved, "KNOB \"Good\""));
    CHECK(Contains(saved, "Good*interval=123\r\n"));
    CHECK_FALSE(Contains(saved, "Broken"));
    CHECK_FALSE(Contains(saved, "A*interval=9"));
    for (const char* line : {"noise", "Broken*interval=7", "A*interval=9", "NOSUCHCLASS"}) {
        CHECK(Contains(program.Trace(), line));
    }
    CheckHistory(program, start, 1);
    PutOnClipboard("nothing of use");
    program.Command(CMD_PASTE);
    CHECK(program.Saved() == start);
}

TEST_CASE("nothing is lost where no temporary file can be made") {
    const PanelProgram program(PANEL, "C:\\no\\such\\folder");
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    program.Command(CMD_SELECT_ALL);
    program.Command(CMD_DELETE);
    CheckHistory(program, start, 1);
    program.Command(CMD_SELECT_ALL);
    program.Command(CMD_CUT);
    CHECK(program.Saved() == "size=600,400\r\n");
    program.Command(CMD_PASTE);
    CHECK(Contains(program.Saved(), "S*Part*connection=A\r\n"));
}

TEST_CASE("random edits are undone and redone without a trace") {
    const PanelProgram program(PANEL);
    program.Command(CMD_EDIT_MODE);
    const std::string start = program.Saved();
    constexpr int COMMANDS[] = {CMD_DUPLICATE,     CMD_DUPLICATE,     CMD_DELETE,
                                CMD_ALIGN_LEFT,    CMD_ALIGN_BOTTOM,  CMD_DISTRIBUTE_ACROSS,
                                CMD_TO_FOREGROUND, CMD_TO_BACKGROUND, CMD_COPY,
                                CMD_PASTE,         CMD_CUT,           CMD_UNDO,
                                CMD_UNDO,          CMD_REDO,          CMD_ALIGN_CENTRE_DOWN};
    constexpr WPARAM KEYS[] = {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, VK_TAB};
    std::mt19937 random(20);
    const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    for (int i = 0; i < 150; ++i) {
        const POINT point{any(600), any(400)};
        switch (any(4)) {
        case 0:
            program.Drag(point, {any(600), any(400)});
            break;
        case 1:
            program.Click(point, MK_CONTROL);
            break;
        case 2:
            program.Key(KEYS[any(std::size(KEYS))]);
            break;
        default:
            program.Command(COMMANDS[any(std::size(COMMANDS))]);
        }
        if (const HWND dialog = program.Top("#32770")) { // of a double press
            SendMessageA(dialog, WM_CLOSE, 0, 0);
        }
    }
    program.RedoAll();
    const std::string end = program.Saved();
    const int steps = program.UndoAll();
    CHECK(steps > 20);
    CHECK(program.Saved() == start);
    CHECK(program.RedoAll() == steps);
    CHECK(program.Saved() == end);
    program.UndoAll();
    CHECK(program.Saved() == start);
    CHECK(program.Close() == 0);
}
