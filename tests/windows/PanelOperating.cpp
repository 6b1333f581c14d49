// A panel that is handed over: what whoever operates it cannot do, and the lock in front of the edit mode.

#include "Panelhost/Dialogs.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Operating.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Root.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/FormPanels.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

TEST_SUITE_BEGIN("PanelOperating");

namespace {

constexpr const char* HALL = "title=Hall\r\nsize=300,200\r\n"
                             "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\n"
                             "A*properties=0,100,50\r\n";

CommandLine Operated(bool fullScreen = false) {
    CommandLine commandLine;
    commandLine.operate = true;
    commandLine.fullScreen = fullScreen;
    return commandLine;
}

std::string LockOf(const std::string& text) {
    const std::size_t begin = text.find("lock=");
    return begin == std::string::npos ? "" : text.substr(begin, text.find('\r', begin) - begin);
}

// The locked panel of a file.
std::string Locked(const char* pin) {
    const TestPanel panel;
    panel.Open(HALL);
    REQUIRE(a_SetLock(panel.Root(), pin));
    return panel.Saved();
}

// What is typed into the two fields of a dialog, then OK; then Cancel, which finds the dialog gone when it
// was right. What the dialog said last.
std::string Type(const PanelHere& program, int command, const char* title, const char* pin,
                 const char* again = "") {
    std::string said;
    Answer answer(title, IDCANCEL, [&] {
        const HWND dialog = FindWindowA("#32770", title);
        SetDlgItemTextA(dialog, IDC_PIN, pin);
        SetDlgItemTextA(dialog, IDC_PIN_AGAIN, again);
        SendMessageA(dialog, WM_COMMAND, IDOK, 0);
        char text[200] = "";
        GetDlgItemTextA(dialog, IDC_PIN_MESSAGE, text, sizeof text);
        said = text;
    });
    program.Command(command);
    answer.Question();
    return said;
}

bool IsEdited(const PanelHere& program) {
    return program.Root()->mode != 0;
}

} // namespace

TEST_CASE("what is only operated has no menu, tools, dialogs and edit mode, and stays as its file says") {
    PanelHere program(HALL, Operated());
    const std::string file = program.Folder().Path("test.panel");
    const HWND knob = ph_Find(program.Root(), "A");
    const HWND toolbar = program.Part(TOOLBARCLASSNAMEA);
    CHECK(GetMenu(program.Frame()) == nullptr);
    CHECK_FALSE(IsWindowVisible(toolbar));
    CHECK(IsWindowVisible(program.Part(STATUSCLASSNAMEA)));
    CHECK(program.PlaceOf(program.Panel(), program.Panel()) == "0,0,300,200");

    for (int command = 1000; command < 1300; ++command) { // all there are, but those that end it
        if (command != CMD_EXIT) {
            program.Command(command);
        }
    }
    for (const WPARAM key : {VK_F5, VK_F9, static_cast<int>('N'), static_cast<int>('O')}) {
        program.Type(key, key > VK_F1 ? "" : "Ctrl", program.Panel());
    }
    SendMessageA(program.Panel(), WM_RBUTTONDOWN, MK_RBUTTON, At(60, 60)); // no menu, which would stay open
    SendMessageA(knob, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT | MK_CONTROL, At(5, 5));
    SendMessageA(knob, CWM_PARAMETERDLG, 0, 0);
    CHECK(a_ConnectionDlg(1, program.Frame(), a_FromWindow(knob)) == nullptr);
    CHECK(a_ApplyEdit(a_FromWindow(knob), "resolution=5") == 0);
    const std::string picture = Text(knob, "bitmap");
    Drop(knob, program.Folder().Write("a.bmp", BitmapFile(47, 94, 0xFF0000)) + '\0');
    CHECK(Text(knob, "bitmap") == picture);
    CHECK(a_SetLock(program.Root(), "4711") == false);
    program.Serve();
    CHECK_FALSE(IsEdited(program));
    CHECK(program.Root()->name == "test.panel");
    CHECK(FindWindowA("#32770", nullptr) == nullptr);
    CHECK_FALSE(IsWindowVisible(FindWindowA("PanelTrace", nullptr)));

    SetFocus(knob);
    program.Type(VK_LEFT, "", knob);
    CHECK(Value(knob) > 50);
    CHECK(Load(knob, "resolution=5") == 1); // a terminal may
    CHECK(a_IsChanged(program.Root()));
    program.Command(CMD_EDIT_MODE); // any command brings the title up to date
    CHECK(program.Title() == "Hall - Panel");
    program.Command(CMD_EXIT); // and asks nothing
    CHECK(program.HasEnded());
    CHECK(ReadBytes(file) == HALL);
}

TEST_CASE("a PIN opens the edit mode of a panel and its parts, which go again with it") {
    for (const bool operated : {false, true}) {
        CAPTURE(operated);
        PanelHere program(Locked("4711"), operated ? Operated() : CommandLine{});
        const HWND knob = ph_Find(program.Root(), "A");
        const auto mayOpenDialog = [&] { return !a_IsOnlyOperated(program.Root()); };
        CHECK_FALSE(mayOpenDialog());
        CHECK(Type(program, CMD_EDIT_MODE, "Edit the Panel", "4712") == "This is not the PIN.");
        CHECK_FALSE(IsEdited(program));
        CHECK(Type(program, CMD_EDIT_MODE, "Edit the Panel", "4711") == "");
        CHECK(IsEdited(program));
        CHECK(mayOpenDialog());
        CHECK(GetMenu(program.Frame()) != nullptr);
        RECT view;
        GetClientRect(program.Part("PanelView"), &view);
        CHECK(a_GetRectString(view) == "0,0,300,200"); // nothing has to be scrolled
        CHECK(IsWindowVisible(program.Part(TOOLBARCLASSNAMEA)));
        program.Click({60, 60});
        program.Command(CMD_CONNECTIONS);
        CHECK(FindWindowA("#32770", "A - Functions and Connections") != nullptr);
        program.Command(CMD_EDIT_MODE);
        CHECK(FindWindowA("#32770", "A - Functions and Connections") == nullptr);
        CHECK((GetMenu(program.Frame()) == nullptr) == operated);
        CHECK_FALSE(mayOpenDialog());
        CHECK(IsWindow(knob));

        // Three wrong ones in a row make wait, the right one as well.
        for (int i = 0; i < 3; ++i) {
            Type(program, CMD_EDIT_MODE, "Edit the Panel", "wrong");
        }
        CHECK(
            Contains(Type(program, CMD_EDIT_MODE, "Edit the Panel", "4711"), "The next try can be made in "));
        CHECK_FALSE(IsEdited(program));
    }
}

TEST_CASE("a panel is locked by its menu and opened with it, and who edits another one meets its lock") {
    PanelHere program(HALL);
    CHECK_FALSE(program.Item(CMD_PIN).enabled);
    program.Command(CMD_PIN); // does nothing
    program.Command(CMD_EDIT_MODE);
    CHECK(program.Item(CMD_PIN).enabled);
    CHECK(Type(program, CMD_PIN, "Lock the Panel", "4711", "4712") == "The two are not the same.");
    CHECK(Type(program, CMD_PIN, "Lock the Panel", "471", "471") == "A PIN has 4 to 64 characters.");
    CHECK(LockOf(program.Saved()) == "");
    CHECK(Type(program, CMD_PIN, "Lock the Panel", "4711", "4711") == "");
    const std::string lock = LockOf(program.Saved());
    CHECK(lock.size() == 123);
    CHECK_FALSE(Contains(program.Saved(), "4711,"));
    program.Command(CMD_UNDO);
    CHECK(LockOf(program.Saved()) == "");
    program.Command(CMD_REDO);
    CHECK(LockOf(program.Saved()) == lock);
    CHECK(program.Open(program.Folder().Write("other.panel", Locked("0815"))));
    CHECK_FALSE(IsEdited(program));
    CHECK(Type(program, CMD_EDIT_MODE, "Edit the Panel", "4711") == "This is not the PIN.");
    CHECK(Type(program, CMD_EDIT_MODE, "Edit the Panel", "0815") == "");
    CHECK(Type(program, CMD_PIN, "Lock the Panel", "") == ""); // unlocked
    CHECK(LockOf(program.Saved()) == "");
    program.Command(CMD_EDIT_MODE);
    program.Command(CMD_EDIT_MODE);
    CHECK(IsEdited(program));
}

TEST_CASE("the full screen shows the panel alone, and a window while it is edited") {
    PanelHere program(Locked("4711"), Operated(true));
    const auto fillsScreen = [&] {
        RECT place;
        GetWindowRect(program.Frame(), &place);
        const bool isWhole = place.left == 0 && place.top == 0 &&
                             place.right == GetSystemMetrics(SM_CXSCREEN) &&
                             place.bottom == GetSystemMetrics(SM_CYSCREEN);
        return isWhole && (GetWindowLongA(program.Frame(), GWL_STYLE) & WS_CAPTION) == 0 &&
               !IsWindowVisible(program.Part(STATUSCLASSNAMEA));
    };
    for (int i = 0; i < 2; ++i) {
        CHECK(fillsScreen());
        Type(program, CMD_EDIT_MODE, "Edit the Panel", "4711");
        CHECK(IsEdited(program));
        CHECK_FALSE(fillsScreen());
        CHECK(IsWindowVisible(program.Part(STATUSCLASSNAMEA)));
        CHECK(program.PlaceOf(program.Panel(), program.Panel()) == "0,0,300,200");
        program.Command(CMD_EDIT_MODE);
    }
}

TEST_CASE("nobody is told the lock of a panel, and only its file and its user set it") {
    TestPanel panel;
    const TraceCapture trace;
    const std::string text = Locked("4711");
    const std::string lock = LockOf(text);
    REQUIRE(panel.Open(text) == 1);
    CHECK(LockOf(panel.Saved()) == lock);
    CHECK(a_TryLock(panel.Root(), "4711") == LOCK_OPENS);
    CHECK(a_TryLock(panel.Root(), "4710") == LOCK_STAYS);
    char buffer[TEXT_SIZE] = "unchanged";
    CHECK(Send(panel.Window(), COMMAND_GET, DATATYPE_TEXT, buffer, "lock") == 0);
    for (int row = 0; row < 20; ++row) {
        Send(panel.Window(), COMMAND_GET, DATATYPE_TEXT, buffer, nullptr, row);
        CHECK_FALSE(Contains(buffer, "pbkdf2"));
    }
    const HWND list =
        CreateWindowExA(0, WC_LISTVIEWA, "", LVS_REPORT, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    SendMessageA(panel.Window(), CWM_SAVETOLISTCTRL, 0, reinterpret_cast<LPARAM>(list));
    LVFINDINFOA find{};
    find.flags = LVFI_STRING;
    find.psz = "lock";
    CHECK(SendMessageA(list, LVM_FINDITEMA, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)) == -1);
    find.psz = "title";
    CHECK(SendMessageA(list, LVM_FINDITEMA, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)) != -1);
    DestroyWindow(list);

    char other[] = "4712";
    CHECK(Send(panel.Window(), COMMAND_SET, DATATYPE_TEXT, other, "lock") == 0);
    CHECK(Load(panel.Window(), "lock=4712") == 0); // a PIN is no lock
    {
        const RemoteSetting remote;
        CHECK(Load(panel.Window(), "lock=") == 0);
        CHECK(Load(panel.Window(), lock) == 0);
    }
    CHECK(LockOf(panel.Saved()) == lock);
    CHECK(trace.CountContaining("lock=...") > 0);
    CHECK(trace.CountContaining("4712") == 0);
    CHECK(trace.CountContaining("pbkdf2") == 0);

    // What a file holds in its place is a lock all the same.
    const std::string damaged =
        text.substr(0, text.find("lock=") + 40) + text.substr(text.find("lock=") + 41);
    REQUIRE(panel.Open(damaged) == 0);
    CHECK(a_HasLock(panel.Root()));
    CHECK(a_TryLock(panel.Root(), "4711") == LOCK_DAMAGED);
    CHECK(trace.CountContaining("pbkdf2") == 0);
    CHECK(LockOf(panel.Saved()) == LockOf(damaged));
    CHECK(a_SetLock(panel.Root(), ""));
    CHECK(a_TryLock(panel.Root(), "4711") == LOCK_OPENS);
    CHECK(a_SetLock(panel.Root(), "471") == false);
}

TEST_SUITE_END();
