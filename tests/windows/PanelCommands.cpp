// Every command of the panel program: its key, when it can be chosen, and what it changes.

#include "Panelhost/Trace.h"
#include "Panel/common/Settings.h"
#include "Panel/common/VersionText.h"
#include "Panel/theme/Theme.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/OpenedPages.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>
#include <set>

TEST_SUITE_BEGIN("PanelCommands");

namespace {

constexpr int NONE = 0; // no command: a key alone
constexpr int ANY = 1000;

// Of the edit mode.
struct Edit {
    int command;
    WPARAM key; // 0: none
    const char* held;
    int least; // how many controls have to be selected, and may be
    int most;
    const char* selected; // by their letters, the first of them first
    const char* label;    // of the step that undoes it; empty where nothing changes
    const char* status;
    const char* line = "";        // that is saved
    const char* order = "ABCSLC"; // first letters of the controls, as they are saved
};
const Edit EDITS[] = {
    {CMD_ALIGN_LEFT, 0, "", 2, ANY, "CA", "Align", "2 selected   250,40   100 x 50",
     "54010000 250,40,297,87"},
    {CMD_ALIGN_TOP, 0, "", 2, ANY, "AB", "Align", "2 selected   40,40   147 x 47", "140,40,187,87"},
    {CMD_ALIGN_RIGHT, 0, "", 2, ANY, "CA", "Align", "2 selected   250,40   100 x 50", "303,40,350,87"},
    {CMD_ALIGN_BOTTOM, 0, "", 2, ANY, "CA", "Align", "2 selected   40,43   310 x 47", "40,43,87,90"},
    {CMD_ALIGN_CENTRE_ACROSS, 0, "", 2, ANY, "CA", "Align", "2 selected   250,40", "277,40,324,87"},
    {CMD_ALIGN_CENTRE_DOWN, 0, "", 2, ANY, "CA", "Align", "2 selected   40,47", "40,47,87,94"},
    {CMD_DISTRIBUTE_ACROSS, 0, "", 3, ANY, "ABC", "Distribute", "3 selected   40,40", "145,60,192,107"},
    {CMD_DISTRIBUTE_DOWN, 0, "", 3, ANY, "ABS", "Distribute", "3 selected   40,40", "140,90,187,137"},
    {CMD_SAME_WIDTH, 0, "", 2, ANY, "CS", "Size", "2 selected   250,50   190 x 250", "340,140,440,300"},
    {CMD_SAME_HEIGHT, 0, "", 2, ANY, "CS", "Size", "2 selected   250,50   250 x 130", "340,140,500,180"},
    {CMD_SAME_SIZE, 0, "", 2, ANY, "CS", "Size", "2 selected   250,50   190 x 130", "340,140,440,180"},
    {CMD_TO_FOREGROUND, 0, "", 1, ANY, "C", "Move To Foreground", "C   BSTATIC   250,50", "", "CABSLC"},
    {CMD_TO_BACKGROUND, 0, "", 1, ANY, "AB", "Move To Background", "2 selected   40,40", "", "CSLCAB"},
    {CMD_CUT, 'X', "Ctrl", 1, ANY, "AB", "Delete", "Edit: click", "C*connection=A", "CSLC"},
    {CMD_DELETE, VK_DELETE, "", 1, ANY, "S", "Delete", "Edit: click", "C*connection=A", "ABCLC"},
    {CMD_DUPLICATE, 'D', "Ctrl", 1, ANY, "AB", "Duplicate", "2 selected   48,48   147 x 67",
     "A 2*connection=B 2*resolution;C", "ABABCSLC"},
    {CMD_COPY, 'C', "Ctrl", 1, ANY, "S", "", "S   MINIEDIT   340,140   160 x 160"},
    {CMD_PASTE, 'V', "Ctrl", 0, ANY, "", "Paste", "S 2   MINIEDIT   348,148   160 x 160",
     "S 2*control=0x00000000 LED \"Part\" 0x50010000 20,20,36,36", "SABCSLC"},
    {CMD_PASTE, 'V', "Ctrl", 0, ANY, "A", "Paste", "S 2   MINIEDIT   356,156   160 x 160",
     "S 2*Part*connection=A", "SABCSLC"},
    {CMD_SORT_BY_POSITION, 0, "", 0, ANY, "", "", "Edit: click"}, // they are
    {CMD_HIDE, 'H', "Ctrl", 1, ANY, "C", "", "C   BSTATIC", "C\" 0x50000000 250,50"},
    {CMD_SHOW_ALL, 'H', "Ctrl+Shift", 0, ANY, "", "", "Edit: click"},
    {CMD_LOCK, 'L', "Ctrl", 1, ANY, "C", "", "C   BSTATIC"},
    {NONE, VK_RIGHT, "", 0, 0, "C", "", "Edit: click"}, // the mouse does not reach it
    {CMD_SHOW_ALL, 'H', "Ctrl+Shift", 0, ANY, "", "", "Edit: click"},
    {NONE, VK_ESCAPE, "", 0, 0, "P", "", "S   MINIEDIT"},
    {CMD_BIND_CHANNEL, 0, "", 1, ANY, "A", "", "A   KNOB"},
    {CMD_DUPLICATE_ROW, 0, "", 1, ANY, "B", "Duplicate in a Row", "B 2   KNOB   195,60", "B 2*resolution",
     "ABBCSLC"},
    {CMD_GROUP, 'G', "Ctrl+Shift", 2, ANY, "AC", "Group", "Group of 2   40,40   310 x 50", "C*editgroup=1"},
    {CMD_RENAME, 0, "", 1, 1, "B", "Rename", "Dial   KNOB", "A*connection=Dial*resolution;C", "ADCSLC"},
    {CMD_SELECT_ALL, 'A', "Ctrl", 0, ANY, "", "", "6 selected   20,40   540 x 348"},
    {CMD_GRID, 'G', "Ctrl", 0, ANY, "", "", "Edit: click"},
    {CMD_GRID, 'G', "Ctrl", 0, ANY, "", "", "Edit: click"},
    {CMD_PROPERTIES, 0, "", 0, ANY, "S", "", "S   MINIEDIT   340,140"},
    {CMD_CONNECTIONS, 0, "", 1, 1, "S", "", "S   MINIEDIT   340,140"},
    {CMD_SELECT_NEXT, VK_TAB, "", 0, ANY, "A", "", "B   KNOB   140,60   47 x 47"},
    {CMD_SELECT_PREVIOUS, VK_TAB, "Shift", 0, ANY, "A", "", "Combo   BCOMBOBOX   440,340   120 x 48"},
    {CMD_SELECT_NEXT, 0, "", 0, ANY, "P", "", "S*Part   LED   20,20   16 x 16"},
    {CMD_SELECT_NEXT, 0, "", 0, ANY, "", "", "A   KNOB   40,40   47 x 47"},
    {CMD_SELECT_NONE, VK_ESCAPE, "", 1, ANY, "AB", "", "Edit: click"},
    {CMD_MOVE_RIGHT, VK_RIGHT, "", 1, ANY, "AB", "Move", "2 selected   41,40   147 x 67", "141,60,188,107"},
    {CMD_MOVE_LEFT, 0, "", 1, ANY, "P", "Move", "S*Part   LED   19,20   16 x 16", "19,20,35,36"},
    {CMD_MOVE_UP, VK_UP, "", 1, ANY, "A", "Move", "A   KNOB   40,39   47 x 47", "40,39,87,86"},
    {CMD_MOVE_DOWN, VK_DOWN, "", 1, ANY, "A", "Move", "A   KNOB   40,41   47 x 47", "40,41,87,88"},
    {CMD_STEP_LEFT, VK_LEFT, "Shift", 1, ANY, "A", "Move", "A   KNOB   32,40   47 x 47", "32,40,79,87"},
    {CMD_STEP_UP, VK_UP, "Shift", 1, ANY, "A", "Move", "A   KNOB   40,32   47 x 47", "40,32,87,79"},
    {CMD_STEP_RIGHT, 0, "", 1, ANY, "A", "Move", "A   KNOB   48,40   47 x 47", "48,40,95,87"},
    {CMD_STEP_DOWN, 0, "", 1, ANY, "A", "Move", "A   KNOB   40,48   47 x 47", "40,48,87,95"},
    {CMD_WIDER, VK_RIGHT, "Ctrl", 1, ANY, "CS", "Size", "2 selected   250,50   251 x 250", "250,50,351,90"},
    {CMD_NARROWER, VK_LEFT, "Ctrl", 1, ANY, "C", "Size", "C   BSTATIC   250,50   99 x 40", "250,50,349,90"},
    {CMD_TALLER, 0, "", 1, ANY, "C", "Size", "C   BSTATIC   250,50   100 x 41", "250,50,350,91"},
    {CMD_SHORTER, VK_UP, "Ctrl", 1, ANY, "C", "Size", "C   BSTATIC   250,50   100 x 39", "250,50,350,89"},
};

// Titles of the dialogs of commands that ask something.
const std::map<int, const char*> QUESTIONS{
    {CMD_RENAME, "Rename"}, {CMD_BIND_CHANNEL, "Bind Channel"}, {CMD_DUPLICATE_ROW, "Duplicate in a Row"}};

void Select(PanelHere& program, const std::string& letters) {
    const std::map<char, POINT> places{
        {'A', {60, 60}}, {'B', {160, 80}}, {'C', {300, 75}}, {'S', {420, 220}}, {'P', {368, 168}}};
    program.Click({5, 5});
    for (const char letter : letters) {
        program.Click(places.at(letter), letter == letters.front() ? 0 : MK_CONTROL);
    }
    if (letters == "P") {
        SendMessageA(program.Panel(), WM_LBUTTONDBLCLK, MK_LBUTTON, At(368, 168));
    }
}

// First letters of the controls on the panel itself.
std::string OrderOf(const std::string& saved) {
    std::string order;
    for (std::size_t at = 0; (at = saved.find("\r\ncontrol=", at + 1)) != std::string::npos;) {
        order += saved[saved.find('"', at) + 1];
    }
    return order;
}

LRESULT ButtonState(const PanelHere& program, int command) {
    return SendMessageA(program.Part(TOOLBARCLASSNAMEA), TB_GETSTATE, static_cast<WPARAM>(command), 0);
}

HWND Shown(const char* className, const char* title) {
    const HWND window = FindWindowA(className, title);
    return IsWindowVisible(window) ? window : nullptr;
}

// What the command asks, which is answered with that button, in a file dialog after the name of a file.
std::string AskWindow(HWND window, int command, const char* title, int button, const std::string& file) {
    Answer answer(title, button, [&] {
        for (const int field : {0x480, 0x47C}) { // of one make of the dialog and the other
            SetDlgItemTextA(FindWindowA("#32770", title), field, file.c_str());
        }
    });
    SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
    return answer.Question();
}
std::string Ask(const PanelHere& program, int command, const char* title, int button,
                const std::string& file = "") {
    return AskWindow(program.Frame(), command, title, button, file);
}

HWND Bindings() {
    return Shown("PanelBindings", "Bindings");
}

HWND Devices() {
    return Shown("PanelDevices", nullptr);
}

std::string DevicesText() {
    char text[4096] = "";
    GetDlgItemTextA(Devices(), IDC_DEVICES_TEXT, text, sizeof text);
    return text;
}

HWND Replacing() {
    return Shown("PanelReplace", "Replace in Bindings");
}

int Rows(const PanelHere& program, const char* window, UINT count = LVM_GETITEMCOUNT) {
    return static_cast<int>(
        SendMessageA(program.Below(FindWindowA(window, nullptr), WC_LISTVIEWA), count, 0, 0));
}

HWND LayerList(const PanelHere& program) {
    return program.Below(FindWindowA("PanelLayers", nullptr), WC_LISTVIEWA);
}

// What the window of layers lists.
std::string Layers(PanelHere& program) {
    program.Command(CMD_GRID); // it is up to date then
    program.Command(CMD_GRID);
    ListView_SetItemState(LayerList(program), -1, 0, LVIS_SELECTED);
    program.Type('C', "Ctrl", LayerList(program));
    return OnClipboard();
}

// A command of that window for one of its lines.
void DoLayer(const PanelHere& program, int row, int command) {
    const HWND list = LayerList(program);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    SendMessageA(GetParent(list), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void NameLayer(PanelHere& program, int row, const char* name) {
    DoLayer(program, row, 0);
    program.Type(VK_F2, "", LayerList(program));
    const HWND edit = ListView_GetEditControl(LayerList(program));
    SetWindowTextA(edit, name);
    program.Type(VK_SPACE, "", edit); // is typed, and no command
    SendMessageA(edit, WM_KEYDOWN, VK_RETURN, 0);
}

bool IsSeen(const PanelHere& program, const char* control) {
    return IsWindowVisible(ph_Find(program.Root(), control)) != FALSE;
}

void CheckTheme(PanelHere& program, int command, const char* word, bool isDark) {
    const HWND status = program.Part(STATUSCLASSNAMEA);
    UpdateWindow(status);
    program.Command(command);
    CHECK(GetUpdateRect(status, nullptr, FALSE)); // it is painted again
    for (int other = CMD_THEME_SYSTEM; other <= CMD_THEME_DARK; ++other) {
        CHECK(program.Item(other).checked == (other == command));
    }
    CHECK(IsDarkTheme() == isDark);
    CHECK(ReadSettings(program.Settings(), "Theme.txt") == word + std::string("\r\n"));
}

// Those of the frame and its other windows, in this order.
const std::pair<int, void (*)(PanelHere& program)> OTHERS[] = {
    {CMD_EDIT_MODE,
     [](PanelHere& program) {
         for (const bool edited : {true, false}) {
             program.Command(CMD_EDIT_MODE);
             CHECK(program.Item(CMD_EDIT_MODE).checked == edited);
             CHECK((program.Root()->mode != 0) == edited);
         }
     }},
    {CMD_ENTER,
     [](PanelHere& program) {
         program.Command(CMD_EDIT_MODE);
         Select(program, "A");
         CHECK_FALSE(program.Item(CMD_ENTER).enabled); // it contains nothing
         Select(program, "S");
         CHECK(program.Item(CMD_ENTER).enabled);
         program.Type('I', "Ctrl", program.Panel());
         CHECK(program.Status() == "Inside S: Escape leaves it");
         CHECK_FALSE(program.Item(CMD_ENTER).enabled);
         program.Key(VK_TAB);
         program.Tick();
         CHECK(program.Status().starts_with("S*Part   LED"));
     }},
    {CMD_LEAVE,
     [](PanelHere& program) {
         CHECK(program.Item(CMD_LEAVE).enabled);
         program.Type('I', "Ctrl+Shift", program.Panel());
         CHECK(program.Status().starts_with("S   MINIEDIT"));
         CHECK_FALSE(program.Item(CMD_LEAVE).enabled);
         program.Command(CMD_EDIT_MODE);
     }},
    {CMD_UNGROUP,
     [](PanelHere& program) {
         program.Command(CMD_EDIT_MODE);
         Select(program, "AB");
         CHECK_FALSE(program.Item(CMD_UNGROUP).enabled);
         program.Command(CMD_GROUP);
         CHECK_FALSE(program.Item(CMD_GROUP).enabled);
         CHECK(program.Item(CMD_UNGROUP).enabled);
         program.Type('U', "Ctrl+Shift", program.Panel());
         CHECK_FALSE(Contains(program.Saved(), "editgroup"));
         CHECK(program.Item(CMD_UNDO).text == "&Undo Ungroup\tCtrl+Z");
         CHECK(program.UndoAll() == 2);
         program.Command(CMD_EDIT_MODE);
     }},
    {CMD_VIEW_LAYERS,
     [](PanelHere& program) {
         CHECK_FALSE(program.Item(CMD_VIEW_LAYERS).enabled);
         program.Command(CMD_VIEW_LAYERS);
         CHECK(Shown("PanelLayers", "Layers") == nullptr);
         program.Command(CMD_EDIT_MODE);
         program.Command(CMD_VIEW_LAYERS);
         CHECK(program.Item(CMD_VIEW_LAYERS) == PanelHere::MenuItem{"&Layers", true, true});
         CHECK(Layers(program) == "(every layer)\t\tyes\t5\tA, B, C, S, Combo\r\n\tu1\tyes\t0\t\r\n"
                                  "\tu2\tyes\t1\tLayered\r\n");
     }},
    {CMD_LAYER_PUT,
     [](PanelHere& program) {
         Select(program, "AB");
         DoLayer(program, 1, CMD_LAYER_PUT);
         CHECK(Contains(program.Saved(), "A*layer=u1\r\n"));
         CHECK(Contains(program.Saved(), "B*layer=u1\r\n"));
         CHECK(Contains(Layers(program), "\tu1\tyes\t2\tA, B\r\n"));
         CHECK(program.Item(CMD_UNDO).text == "&Undo Change Of Layer\tCtrl+Z");
         program.Command(CMD_UNDO);
         CHECK_FALSE(Contains(program.Saved(), "*layer=u1"));
         program.Command(CMD_REDO);
         CHECK(Contains(program.Saved(), "B*layer=u1\r\n"));
     }},
    {CMD_LAYER_ADD,
     [](PanelHere& program) {
         Select(program, "A");
         DoLayer(program, 2, CMD_LAYER_ADD);
         CHECK(Contains(program.Saved(), "A*layer=u1,u2\r\n"));
         DoLayer(program, 0, CMD_LAYER_ADD); // it is on some only, and stays so
         CHECK(Contains(program.Saved(), "A*layer=u1,u2\r\n"));
     }},
    {CMD_LAYER_REMOVE,
     [](PanelHere& program) {
         DoLayer(program, 2, CMD_LAYER_REMOVE);
         CHECK(Contains(program.Saved(), "A*layer=u1\r\n"));
         DoLayer(program, 0, CMD_LAYER_PUT); // on every layer
         CHECK_FALSE(Contains(program.Saved(), "A*layer="));
         CHECK(program.UndoAll() == 4);
         CHECK(program.RedoAll() == 4);
     }},
    {CMD_LAYER_ALONE,
     [](PanelHere& program) {
         DoLayer(program, 1, CMD_LAYER_ALONE);
         CHECK(IsSeen(program, "A"));
         CHECK(IsSeen(program, "B"));
         CHECK_FALSE(IsSeen(program, "Layered"));
         program.Tick();
         CHECK(Contains(Layers(program), "\tu2\tno\t1\tLayered\r\n"));
     }},
    {CMD_LAYER_SHOW,
     [](PanelHere& program) {
         Select(program, "AB");
         DoLayer(program, 2, CMD_LAYER_SHOW);
         CHECK(IsSeen(program, "Layered"));
         DoLayer(program, 1, CMD_LAYER_SHOW);
         CHECK_FALSE(IsSeen(program, "B"));
         program.Tick();
         CHECK(program.Status().starts_with("A   KNOB")); // what cannot be seen is not selected
         DoLayer(program, 2, CMD_LAYER_SHOW);             // the last one stays
         CHECK(IsSeen(program, "Layered"));
         const std::string saved = program.Saved();
         program.Command(CMD_EDIT_MODE);
         CHECK(IsSeen(program, "B"));
         CHECK(Shown("PanelLayers", "Layers") == nullptr);
         program.Command(CMD_EDIT_MODE);
         CHECK(IsSeen(program, "B")); // it begins with all
         CHECK(program.Saved() == saved);
         program.Command(CMD_VIEW_LAYERS);
     }},
    {CMD_LAYER_ALL,
     [](PanelHere& program) {
         DoLayer(program, 2, CMD_LAYER_ALONE);
         CHECK_FALSE(IsSeen(program, "B"));
         program.Type('H', "Ctrl", LayerList(program));
         CHECK(IsSeen(program, "B"));
     }},
    {CMD_LAYER_SELECT,
     [](PanelHere& program) {
         DoLayer(program, 2, CMD_LAYER_SELECT);
         program.Tick();
         CHECK(program.Status().starts_with("Layered   LED"));
         DoLayer(program, 0, CMD_LAYER_SELECT);
         program.Tick();
         CHECK(program.Status().starts_with("4 selected"));
     }},
    {CMD_LAYER_RENAME,
     [](PanelHere& program) {
         NameLayer(program, 2, "EQ");
         CHECK(Contains(program.Saved(), "layernames=u2=EQ\r\n"));
         CHECK(Contains(Layers(program), "EQ\tu2\tyes\t1\tLayered\r\n"));
         NameLayer(program, 2, "E;Q");
         NameLayer(program, 0, "Every");
         CHECK(Contains(program.Saved(), "layernames=u2=EQ\r\n"));
         CHECK(program.Item(CMD_UNDO).text == "&Undo Name Of Layer\tCtrl+Z");
         CHECK(program.UndoAll() == 5);
         CHECK_FALSE(Contains(program.Saved(), "layernames="));
         program.Command(CMD_EDIT_MODE);
     }},
    {CMD_SAVE,
     [](PanelHere& program) {
         Load(program.Panel(), "title=New title");
         program.Command(CMD_SAVE);
         CHECK(program.Title() == "New title - Panel");
         CHECK(Contains(ReadBytes(program.Folder().Path("test.panel")), "title=New title\r\n"));
         Load(program.Panel(), "title=");
     }},
    {CMD_SAVE_AS,
     [](PanelHere& program) {
         const std::string file = program.Folder().Path("other.panel");
         Ask(program, CMD_SAVE_AS, "Save As", IDCANCEL, program.Folder().Path("other"));
         CHECK(ReadBytes(file).empty());
         Ask(program, CMD_SAVE_AS, "Save As", IDOK, program.Folder().Path("other"));
         CHECK(Contains(ReadBytes(file), "\"Combo\""));
         CHECK(program.Title() == "other.panel - Panel");
     }},
    {CMD_EXPORT_PICTURE,
     [](PanelHere& program) {
         Ask(program, CMD_EXPORT_PICTURE, "Save As", IDOK, program.Folder().Path("picture"));
         CHECK(ReadBytes(program.Folder().Path("picture.png")).starts_with("\x89PNG"));
     }},
    {CMD_EXPORT_LIST,
     [](PanelHere& program) {
         Ask(program, CMD_EXPORT_LIST, "Save As", IDOK, program.Folder().Path("list"));
         CHECK(Contains(ReadBytes(program.Folder().Path("list.html")), "<h1>other.panel</h1>"));
     }},
    {CMD_PIN,
     [](PanelHere& program) {
         Ask(program, CMD_PIN, "Lock the Panel", IDCANCEL); // there is none
         CHECK_FALSE(program.Item(CMD_PIN).enabled);
         program.Command(CMD_EDIT_MODE);
         CHECK(program.Item(CMD_PIN).enabled);
         Ask(program, CMD_PIN, "Lock the Panel", IDCANCEL);
         program.Command(CMD_EDIT_MODE);
         CHECK_FALSE(program.Item(CMD_PIN).enabled);
     }},
    {CMD_NEW,
     [](PanelHere& program) {
         Load(program.Panel(), "title=not saved");
         CHECK(Ask(program, CMD_NEW, "Panel", IDCANCEL) == "Save the changes to other.panel?");
         CHECK(ph_Find(program.Root(), "A") != nullptr);
         {
             const Answer answer("New Panel", IDCANCEL);
             Ask(program, CMD_NEW, "Panel", IDNO);
             CHECK(ph_Find(program.Root(), "A") != nullptr);
         }
         const Answer answer("New Panel", IDOK, [] {
             SetDlgItemTextA(FindWindowA("#32770", "New Panel"), IDC_NEW_SIZE, "500 x400");
         });
         Ask(program, CMD_NEW, "Panel", IDNO);
         program.FindPanel();
         CHECK(program.Title() == "Untitled - Panel");
         CHECK(ph_Find(program.Root(), "A") == nullptr);
         CHECK(Text(program.Panel(), "style") == "dark");
         CHECK(Text(program.Panel(), "size") == "500,400");
         CHECK(Text(program.Panel(), "background") == ".\\Controls\\Panel_dark.png");
         CHECK(program.Root()->mode != 0); // it is there to be edited
         program.Command(CMD_EDIT_MODE);
         CHECK_FALSE(Contains(ReadBytes(program.Folder().Path("other.panel")), "not saved"));
     }},
    {CMD_OPEN,
     [](PanelHere& program) {
         program.Folder().Write("bad.panel", "no panel\r\n");
         Ask(program, CMD_OPEN, "Open", IDCANCEL, program.Folder().Path("other.panel"));
         CHECK(program.Title() == "Untitled - Panel");
         Answer told("Panel", IDOK);
         Ask(program, CMD_OPEN, "Open", IDOK, program.Folder().Path("bad.panel"));
         CHECK(told.Question() == program.Folder().Path("bad.panel") + " is not a panel file");
         CHECK(program.Title() == "Untitled - Panel");
         Ask(program, CMD_OPEN, "Open", IDOK, program.Folder().Path("other.panel"));
         program.FindPanel();
         CHECK(program.Title() == "other.panel - Panel");
         CHECK(ph_Find(program.Root(), "Combo") != nullptr);
     }},
    {CMD_START_PAGE,
     [](PanelHere& program) {
         const HWND page = program.Part("PanelStart");
         CHECK_FALSE(IsWindowVisible(page));
         program.Command(CMD_START_PAGE);
         CHECK(IsWindowVisible(page));
         CHECK_FALSE(IsWindowVisible(program.Part("PanelView")));
         CHECK(program.Title() == "Panel");
         CHECK(program.Open(program.Folder().Path("other.panel")));
         CHECK_FALSE(IsWindowVisible(page));
         CHECK(program.Title() == "other.panel - Panel");
     }},
    {CMD_VIEW_PROPERTIES,
     [](PanelHere& program) {
         program.Command(CMD_EDIT_MODE);
         const HWND pane = program.Part("PanelProperties");
         for (const bool shown : {false, true}) {
             program.Type(VK_F4, "", program.Panel());
             CHECK((IsWindowVisible(pane) != FALSE) == shown);
             CHECK(program.Item(CMD_VIEW_PROPERTIES).checked == shown);
         }
     }},
    {CMD_THEME_DARK, [](PanelHere& program) { CheckTheme(program, CMD_THEME_DARK, "dark", true); }},
    {CMD_THEME_LIGHT, [](PanelHere& program) { CheckTheme(program, CMD_THEME_LIGHT, "light", false); }},
    {CMD_THEME_SYSTEM, [](PanelHere& program) { CheckTheme(program, CMD_THEME_SYSTEM, "system", false); }},
    {CMD_GO_TO_PROPERTIES,
     [](PanelHere& program) {
         const HWND list = program.Below(program.Part("PanelProperties"), WC_LISTVIEWA);
         for (const HWND focus : {list, program.Panel()}) {
             program.Type(VK_F6);
             CHECK(GetFocus() == focus);
         }
         program.Command(CMD_EDIT_MODE);
         CHECK_FALSE(program.Item(CMD_GO_TO_PROPERTIES).enabled);
         program.Command(CMD_GO_TO_PROPERTIES);
         CHECK(GetFocus() == program.Panel());
     }},
    {CMD_PANEL_PROPERTIES,
     [](PanelHere& program) {
         CHECK_FALSE(program.Item(CMD_PANEL_PROPERTIES).enabled);
         program.Command(CMD_EDIT_MODE);
         program.Command(CMD_VIEW_PROPERTIES);
         Select(program, "A");
         program.Command(CMD_PANEL_PROPERTIES);
         const HWND list = program.Below(program.Part("PanelProperties"), WC_LISTVIEWA);
         CHECK(IsWindowVisible(list));
         CHECK(GetFocus() == list);
         program.Tick();
         CHECK(program.Status().starts_with("Edit: click")); // nothing is selected
     }},
    {CMD_ADD_CONTROL,
     [](PanelHere& program) {
         program.Type(VK_INSERT, "", program.Panel());
         const HWND tree = program.Below(program.Part("PanelPalette"), WC_TREEVIEWA);
         CHECK(GetFocus() == tree);
         TreeView_SelectItem(tree, TreeView_GetChild(tree, TreeView_GetRoot(tree)));
         program.Type(VK_RETURN);
         CHECK(program.UndoAll() == 1);
         program.Command(CMD_EDIT_MODE);
         CHECK_FALSE(program.Item(CMD_ADD_CONTROL).enabled);
     }},
    {CMD_HELP,
     [](PanelHere& program) {
         const OpenedPages opened;
         program.Command(CMD_HELP);
         CHECK(OpenedPages::Last() == "panel-app.html");
     }},
    {CMD_HELP_CONTENTS,
     [](PanelHere& program) {
         const OpenedPages opened;
         program.Command(CMD_HELP_CONTENTS);
         CHECK(OpenedPages::Last() == "index.html");
     }},
    {CMD_HELP_KEYS,
     [](PanelHere& program) {
         const OpenedPages opened;
         program.Command(CMD_HELP_KEYS);
         CHECK(OpenedPages::Last() == "keys-and-mouse.html");
     }},
    {CMD_VIEW_TRACE,
     [](PanelHere& program) {
         for (const bool shown : {true, false, true}) {
             program.Type(VK_F9, "", program.Panel());
             CHECK((Shown("PanelTrace", "Trace") != nullptr) == shown);
             CHECK(program.Item(CMD_VIEW_TRACE).checked == shown);
         }
     }},
    {CMD_TRACE_COPY,
     [](PanelHere& program) {
         EDITTRACE(program.Root(), "first\tline %s\n", "");
         TRACE("second line %d\n", 2);
         program.Command(CMD_GRID); // what was traced is shown now
         CHECK(Rows(program, "PanelTrace") >= 2);
         const HWND trace = Shown("PanelTrace", "Trace");
         const HWND list = program.Below(trace, WC_LISTVIEWA);
         program.Type('C', "Ctrl", trace);
         const std::string all = OnClipboard();
         CHECK(Contains(all, "\tEdit\tfirst line \r\n"));
         CHECK(Contains(all, "\tDebug\tsecond line 2\r\n"));
         CHECK(all[2] == ':');
         ListView_SetItemState(list, Rows(program, "PanelTrace") - 1, LVIS_SELECTED, LVIS_SELECTED);
         program.Type('C', "Ctrl", list);
         CHECK(OnClipboard() == all.substr(all.rfind("\r\n", all.size() - 3) + 2)); // the last line
     }},
    {CMD_TRACE_SELECT_ALL,
     [](PanelHere& program) {
         program.Type('A', "Ctrl", Shown("PanelTrace", "Trace"));
         CHECK(Rows(program, "PanelTrace", LVM_GETSELECTEDCOUNT) == Rows(program, "PanelTrace"));
     }},
    {CMD_TRACE_CLEAR,
     [](PanelHere& program) {
         CHECK(program.Status(2) == "1 message");
         program.Type('L', "Ctrl", Shown("PanelTrace", "Trace"));
         CHECK(Rows(program, "PanelTrace") == 0);
         program.Command(CMD_GRID);
         CHECK(SendMessageA(program.Part(STATUSCLASSNAMEA), SB_GETPARTS, 0, 0) == 2);
     }},
    {CMD_TRACE_CLOSE,
     [](PanelHere& program) {
         for (const WPARAM key : {VK_ESCAPE, VK_F9}) {
             program.Type(key, "", Shown("PanelTrace", "Trace"));
             CHECK(Shown("PanelTrace", "Trace") == nullptr);
             program.Command(CMD_VIEW_TRACE);
         }
         SendMessageA(Shown("PanelTrace", "Trace"), WM_CLOSE, 0, 0);
         CHECK(Shown("PanelTrace", "Trace") == nullptr);
     }},
    {CMD_VIEW_BINDINGS,
     [](PanelHere& program) {
         for (const bool shown : {true, false, true}) {
             program.Type('B', "Ctrl", shown ? program.Panel() : Bindings());
             CHECK((Bindings() != nullptr) == shown);
             CHECK(program.Item(CMD_VIEW_BINDINGS).checked == shown);
             CHECK(Rows(program, "PanelBindings") == (shown ? 4 : 0));
         }
         program.Type(VK_ESCAPE, "", Bindings());
         CHECK(Bindings() == nullptr);
         program.Command(CMD_VIEW_BINDINGS);
     }},
    {CMD_BINDINGS_SEARCH,
     [](PanelHere& program) {
         program.Type('F', "Ctrl", Bindings());
         const HWND field = GetDlgItem(Bindings(), IDC_BINDING_SEARCH);
         CHECK(GetFocus() == field);
         SetWindowTextA(field, "RESOL a");
         CHECK(Rows(program, "PanelBindings") == 1);
         CHECK(TextOf(GetDlgItem(Bindings(), IDC_BINDING_COUNTS)) == "1 of 4 bindings, 0 not live");
         SetWindowTextA(field, "");
         CHECK(Rows(program, "PanelBindings") == 4);
     }},
    {CMD_BINDINGS_NOT_LIVE,
     [](PanelHere& program) {
         Load(ph_Find(program.Root(), "B"), "connection=Nobody");
         SendMessageA(Bindings(), WM_TIMER, 1, 0); // a second later
         for (const int rows : {1, 5}) {
             program.Type('L', "Ctrl", Bindings());
             CHECK(Rows(program, "PanelBindings") == rows);
         }
     }},
    {CMD_BINDINGS_GO,
     [](PanelHere& program) {
         const HWND list = program.Below(Bindings(), WC_LISTVIEWA);
         ListView_SetItemState(list, 4, LVIS_SELECTED, LVIS_SELECTED);
         program.Type(VK_RETURN, "", list);
         const HWND line = FindWindowA("PanelLine", nullptr);
         CHECK(IsWindowVisible(line)); // around what it points at
         CHECK(Await([&] {
             program.Tick();
             return !IsWindowVisible(line);
         }));
         program.Command(CMD_EDIT_MODE);
         SendMessageA(Bindings(), WM_COMMAND, CMD_BINDINGS_GO, 0);
         program.Tick();
         CHECK(program.Status().starts_with("S*Part   LED"));
         program.Command(CMD_EDIT_MODE);
     }},
    {CMD_BINDINGS_EXPORT,
     [](PanelHere& program) {
         for (const auto& [name, text] :
              {std::pair("list.csv", "C,connection,A,live,0,\r\n"),
               {"list.txt", "C        connection  A             live             0\r\n"}}) {
             const std::string file = program.Folder().Path(name);
             AskWindow(Bindings(), CMD_BINDINGS_EXPORT, "Save As", IDOK, file);
             CHECK(Contains(ReadBytes(file), text));
         }
     }},
    {CMD_REPLACE_BINDINGS,
     [](PanelHere& program) {
         CHECK_FALSE(program.Item(CMD_REPLACE_BINDINGS).enabled);
         program.Command(CMD_REPLACE_BINDINGS);
         CHECK(Replacing() == nullptr);
         program.Command(CMD_EDIT_MODE);
         for (const bool shown : {true, false, true}) {
             program.Type('R', "Ctrl", shown ? program.Panel() : Replacing());
             CHECK((Replacing() != nullptr) == shown);
         }
         CHECK(GetFocus() == GetDlgItem(Replacing(), IDC_REPLACE_FIND));
         SetDlgItemTextA(Replacing(), IDC_REPLACE_FIND, "a");
         SetDlgItemTextA(Replacing(), IDC_REPLACE_BY, "Nobody");
         CHECK(Rows(program, "PanelReplace") == 2);
         CHECK(TextOf(GetDlgItem(Replacing(), IDC_REPLACE_TOLD)) ==
               "2 addresses, 2 of them will name nothing");
         SetDlgItemTextA(Replacing(), IDC_REPLACE_BY, "Combo");
     }},
    {CMD_REPLACE_SELECTED,
     [](PanelHere& program) {
         SendMessageA(GetDlgItem(Replacing(), CMD_REPLACE_SELECTED), BM_CLICK, 0, 0);
         CHECK(Rows(program, "PanelReplace") == 0); // nothing is selected
         Select(program, "S");
         CHECK(Await([&] { return Rows(program, "PanelReplace") == 1; })); // of what is inside
     }},
    {CMD_REPLACE_ALL,
     [](PanelHere& program) {
         const auto bound = [&](const char* name) {
             return a_BuildString(ObjectOf(ph_Find(program.Root(), name)).connections);
         };
         program.Type(VK_RETURN, "", GetDlgItem(Replacing(), IDC_REPLACE_BY));
         CHECK(TextOf(GetDlgItem(Replacing(), IDC_REPLACE_TOLD)) == "1 property changed");
         CHECK(Rows(program, "PanelReplace") == 0);
         CHECK(bound("S*Part") == "Combo");
         CHECK(bound("C") == "A");
         CHECK(program.UndoAll() == 1);
         CHECK(bound("S*Part") == "A");
         program.Command(CMD_EDIT_MODE);
         CHECK(Replacing() == nullptr); // it went with the edit mode
         program.Command(CMD_SAVE);
     }},
    {CMD_VIEW_UNREAD,
     [](PanelHere& program) {
         CHECK_FALSE(program.Item(CMD_VIEW_UNREAD).enabled);
         CHECK(program.Open(program.Folder().Write(
             "unread.panel", "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\nA*new\tword=1\r\n")));
         CHECK(program.Item(CMD_VIEW_UNREAD).enabled);
         program.Command(CMD_VIEW_UNREAD);
         program.Type('C', "Ctrl", Shown("PanelUnread", "Unread lines"));
         CHECK(OnClipboard() == "2\tunknown keyword\tA\tA*new word=1\r\n");
     }},
    {CMD_CLOSE_NOTICE,
     [](PanelHere& program) {
         const HWND notice = program.Part("PanelNotice");
         CHECK(IsWindowVisible(notice));
         SendMessageA(GetDlgItem(notice, CMD_CLOSE_NOTICE), BM_CLICK, 0, 0);
         program.Serve();
         CHECK_FALSE(IsWindowVisible(notice));
         CHECK(program.Open(program.Folder().Path("other.panel")));
         CHECK(Shown("PanelUnread", "Unread lines") == nullptr); // it went with its lines
     }},
    {CMD_SNAPSHOTS,
     [](PanelHere& program) {
         program.FindPanel();
         REQUIRE(ph_LoadDevices(program.Root(), program.Folder()
                                                    .Write("other.devices", "D*device=simulated\n"
                                                                            "D*x=float,0,1,0.25\n"
                                                                            "D*y=integer,0,1,1\n")
                                                    .c_str()) == 1);
         Load(ph_Find(program.Root(), "A"), "function=D*x;D*y", LOAD_FROM_FILE);
         program.Command(CMD_SNAPSHOTS);
         CHECK(Shown("PanelSnapshots", "Snapshots") != nullptr);
     }},
    {CMD_SNAPSHOT_TAKE,
     [](PanelHere& program) {
         const HWND window = Shown("PanelSnapshots", "Snapshots");
         const auto take = [&](const char* name) {
             SetDlgItemTextA(window, IDC_SNAPSHOT_NAME, name);
             SendMessageA(window, WM_COMMAND, CMD_SNAPSHOT_TAKE, 0);
         };
         {
             Answer refused("Panel", IDOK);
             take("..\\Evening");
             CHECK(refused.Question() == "\"..\\Evening\" cannot be the name of a snapshot");
         }
         take("Evening");
         CHECK(Contains(ReadBytes(program.Folder().Path("Evening.snapshot")), "\r\nD*x=0.25\r\nD*y=1\r\n"));
         ph_SetParameter(program.Root(), "D*x", "0.75");
         Answer asked("Panel", IDNO);
         take("Evening");
         CHECK(asked.Question() == "Replace the snapshot Evening?");
         CHECK(Contains(ReadBytes(program.Folder().Path("Evening.snapshot")), "D*x=0.25"));
         CHECK(Await([&] { // it is compared now and then
             program.Tick();
             SendMessageA(window, WM_COMMAND, CMD_TRACE_COPY, 0);
             return OnClipboard() == "D*x\t0.25\t0.75\tdiffers\r\nD*y\t1\t1\tthe same\r\n";
         }));
         SendMessageA(GetDlgItem(window, IDC_SNAPSHOT_DIFFERENCES), BM_CLICK, 0, 0);
         CHECK(Rows(program, "PanelSnapshots") == 1);
     }},
    {CMD_SNAPSHOT_RECALL_SELECTED,
     [](PanelHere& program) {
         const HWND window = Shown("PanelSnapshots", "Snapshots");
         ph_SetParameter(program.Root(), "D*y", "0");
         program.Command(CMD_SNAPSHOTS);
         const HWND list = program.Below(window, WC_LISTVIEWA);
         CHECK(Rows(program, "PanelSnapshots") == 2);
         ListView_SetItemState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
         SendMessageA(window, WM_COMMAND, CMD_SNAPSHOT_RECALL_SELECTED, 0);
         char x[16];
         char y[16];
         CHECK((ph_GetParameter(program.Root(), "D*x", x, sizeof x) == 1 && std::string(x) == "0.75"));
         CHECK((ph_GetParameter(program.Root(), "D*y", y, sizeof y) == 1 && std::string(y) == "1"));
     }},
    {CMD_SNAPSHOT_RECALL,
     [](PanelHere& program) {
         const HWND window = Shown("PanelSnapshots", "Snapshots");
         const auto recall = [&](const char* fade) {
             SetDlgItemTextA(window, IDC_SNAPSHOT_FADE, fade);
             SendMessageA(window, WM_COMMAND, CMD_SNAPSHOT_RECALL, 0);
         };
         {
             Answer refused("Panel", IDOK);
             recall("soon");
             CHECK(refused.Question() == "The fade takes 0 to 3600 seconds, not \"soon\"");
         }
         recall("3600");
         CHECK(ph_ListRecall(program.Root(), nullptr, nullptr) == 1);
     }},
    {CMD_SNAPSHOT_STOP,
     [](PanelHere& program) {
         const HWND window = Shown("PanelSnapshots", "Snapshots");
         CHECK(IsWindowEnabled(GetDlgItem(window, CMD_SNAPSHOT_STOP)));
         SendMessageA(window, WM_COMMAND, CMD_SNAPSHOT_STOP, 0);
         CHECK(ph_ListRecall(program.Root(), nullptr, nullptr) == 0);
         char report[256] = "";
         GetDlgItemTextA(window, IDC_SNAPSHOT_REPORT, report, sizeof report);
         CHECK(std::string(report) == "Evening: 1 of 2 values set, 1 stopped");
         SendMessageA(window, WM_CLOSE, 0, 0);
         CHECK(Shown("PanelSnapshots", "Snapshots") == nullptr);
     }},
    {CMD_CHECK,
     [](PanelHere& program) {
         ph_SetParameter(program.Root(), "D*online", "0");
         Load(ph_Find(program.Root(), "A"), "function=D*x;D*z", LOAD_FROM_FILE);
         program.Command(CMD_CHECK);
         program.Type('C', "Ctrl", Shown("PanelCheck", "Check of the panel"));
         const std::string found = OnClipboard();
         CHECK(Contains(found, "binding\tA\tfunction D*z: no such parameter\r\n"));
         CHECK(Contains(found, "device\tD\tnothing heard for 0 s\r\n"));
         SendMessageA(Shown("PanelCheck", "Check of the panel"), WM_CLOSE, 0, 0);
     }},
    {CMD_DEVICES,
     [](PanelHere& program) {
         program.Command(CMD_EDIT_MODE);
         program.Command(CMD_DEVICES);
         REQUIRE(Devices() != nullptr);
         CHECK(DevicesText() == ""); // no file was there when the panel was opened
     }},
    {CMD_DEVICES_ADD,
     [](PanelHere&) {
         AskWindow(Devices(), CMD_DEVICES_ADD, "Add Device", IDCANCEL, "");
         CHECK(DevicesText() == "");
         AskWindow(Devices(), CMD_DEVICES_ADD, "Add Device", IDOK, "");
         CHECK(DevicesText().starts_with("DEVICE1*device=simulated\r\nDEVICE1*gain=float,"));
     }},
    {CMD_DEVICES_UNDO,
     [](PanelHere&) {
         const std::string before = DevicesText();
         for (const std::string& text : {std::string(), before}) { // a field takes back what it took back
             SendMessageA(Devices(), WM_COMMAND, CMD_DEVICES_UNDO, 0);
             CHECK(DevicesText() == text);
         }
     }},
    {CMD_DEVICES_SAVE,
     [](PanelHere& program) {
         const std::string file = program.Folder().Path("hall.devices");
         AskWindow(Devices(), CMD_DEVICES_SAVE, "Save As", IDCANCEL, file);
         CHECK(ReadBytes(file).empty());
         AskWindow(Devices(), CMD_DEVICES_SAVE, "Save As", IDOK, file);
         CHECK(ReadBytes(file) == DevicesText());
         CHECK(ph_Find(program.Root(), "DEVICE1") != nullptr);
         CHECK(ph_Find(program.Root(), "D") == nullptr);
         CHECK(Text(program.Panel(), "devices") == "hall.devices");
         CHECK(program.Item(CMD_UNDO).text == "&Undo Device File\tCtrl+Z");
     }},
    {CMD_DEVICES_RELOAD,
     [](PanelHere& program) {
         program.Folder().Write("hall.devices", "E*device=simulated\nE*x=flaot\nE*y=float,0,1,0\nE*z=0\n");
         SendMessageA(Devices(), WM_COMMAND, CMD_DEVICES_RELOAD, 0);
         CHECK(Contains(DevicesText(), "E*device=simulated\r\n"));
         CHECK(ph_Find(program.Root(), "E") != nullptr);
         CHECK(ph_Find(program.Root(), "DEVICE1") == nullptr);
     }},
    {CMD_DEVICES_NEXT,
     [](PanelHere& program) {
         CHECK(Rows(program, "PanelDevices") == 2);
         for (const int line : {1, 3, 1}) {
             SendMessageA(Devices(), WM_COMMAND, CMD_DEVICES_NEXT, 0);
             CHECK(SendDlgItemMessageA(Devices(), IDC_DEVICES_TEXT, EM_LINEFROMCHAR, static_cast<WPARAM>(-1),
                                       0) == line);
         }
     }},
    {CMD_DEVICES_CHOOSE,
     [](PanelHere& program) {
         const std::string file = program.Folder().Write("third.devices", "F*device=simulated\r\n");
         AskWindow(Devices(), CMD_DEVICES_CHOOSE, "Open", IDOK, file);
         CHECK(Text(program.Panel(), "devices") == "third.devices");
         CHECK(ph_Find(program.Root(), "F") != nullptr);
         CHECK(DevicesText() == "F*device=simulated\r\n");
         program.Command(CMD_UNDO);
         CHECK(ph_Find(program.Root(), "E") != nullptr);
         CHECK(ph_Find(program.Root(), "F") == nullptr);
         CHECK(DevicesText().starts_with("E*"));
     }},
    {CMD_DEVICES_BESIDE,
     [](PanelHere& program) {
         SendMessageA(Devices(), WM_COMMAND, CMD_DEVICES_BESIDE, 0);
         CHECK(Text(program.Panel(), "devices") == "");
         CHECK(ph_Find(program.Root(), "D") != nullptr);
         SendMessageA(Devices(), WM_CLOSE, 0, 0);
         CHECK(Devices() == nullptr);
         program.Command(CMD_EDIT_MODE);
     }},
    {CMD_ABOUT,
     [](PanelHere& program) {
         const std::string text = Ask(program, CMD_ABOUT, "About Panel", IDOK);
         CHECK(Contains(text, "Panel " + VersionText() + "\n"));
         CHECK(Contains(text, "Control library: "));
     }},
    {CMD_EXIT,
     [](PanelHere& program) {
         Load(program.Panel(), "title=kept");
         Ask(program, CMD_EXIT, "Panel", IDCANCEL);
         CHECK_FALSE(program.HasEnded());
         Ask(program, CMD_EXIT, "Panel", IDYES);
         CHECK(program.HasEnded());
         CHECK(Contains(ReadBytes(program.Folder().Path("other.panel")), "title=kept\r\n"));
         program.Command(CMD_EXIT); // nothing is left to ask for
         CHECK(program.HasEnded());
     }},
};

// As a menu writes it.
std::string NameOf(const ACCEL& key) {
    const bool isFunction = key.key >= VK_F1 && key.key <= VK_F24;
    return std::string((key.fVirt & FCONTROL) != 0 ? "Ctrl+" : "") +
           ((key.fVirt & FSHIFT) != 0 ? "Shift+" : "") +
           (key.key == VK_DELETE   ? "Del"
            : key.key == VK_ESCAPE ? "Esc"
            : key.key == VK_INSERT ? "Ins"
            : isFunction           ? "F" + std::to_string(key.key - VK_F1 + 1)
                                   : std::string(1, static_cast<char>(key.key)));
}

} // namespace

TEST_CASE("every command has its row here") {
    const HRSRC resource = FindResourceA(nullptr, "COMMANDS", RT_RCDATA);
    REQUIRE(resource != nullptr);
    const std::string text(static_cast<const char*>(LockResource(LoadResource(nullptr, resource))),
                           SizeofResource(nullptr, resource));
    std::set<int> named{NONE};
    for (std::size_t at = 0; (at = text.find("#define CMD_", at)) != std::string::npos;) {
        at = text.find(' ', at + 8);
        named.insert(std::atoi(text.c_str() + at)); // 0 for another name of one
    }
    std::set<int> tested{CMD_UNDO, CMD_REDO}; // after every row
    std::transform(std::begin(EDITS), std::end(EDITS), std::inserter(tested, tested.end()),
                   [](const Edit& row) { return row.command; });
    std::transform(std::begin(OTHERS), std::end(OTHERS), std::inserter(tested, tested.end()),
                   [](const auto& row) { return row.first; });
    CHECK(named.size() > 30);
    CHECK(named == tested);
}

TEST_CASE("menus and buttons name the keys that are at work") {
    const PanelHere program("size=300,200\r\n");
    std::set<std::string> named;
    for (const int table : {IDA_FRAME, IDA_EDIT}) {
        ACCEL keys[32];
        const HACCEL loaded = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(table));
        const int count = CopyAcceleratorTableA(loaded, keys, std::size(keys));
        CHECK(count > 5);
        for (int i = 0; i < count; ++i) {
            CAPTURE(NameOf(keys[i]));
            CHECK(program.Item(keys[i].cmd).text.ends_with("\t" + NameOf(keys[i])) ==
                  (NameOf(keys[i]) != "Ctrl+Shift+Z")); // the second one of Redo
            CHECK(named.insert(NameOf(keys[i])).second);
        }
    }
    const HWND toolbar = program.Part(TOOLBARCLASSNAMEA);
    for (int i = 0; i < SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0); ++i) {
        TBBUTTON button{};
        SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        NMTTDISPINFOA tip{};
        tip.hdr = {toolbar, static_cast<UINT_PTR>(button.idCommand), static_cast<UINT>(TTN_GETDISPINFOA)};
        tip.lpszText = tip.szText;
        SendMessageA(program.Frame(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&tip));
        const std::string text = tip.lpszText;
        const std::string item = program.Item(button.idCommand).text;
        CAPTURE(text);
        CHECK(text.empty() == ((button.fsStyle & BTNS_SEP) != 0));
        if (const std::size_t tab = item.find('\t'); tab != std::string::npos) {
            CHECK(text.ends_with("(" + item.substr(tab + 1) + ")"));
            CHECK(named.count(item.substr(tab + 1)) == 1);
        }
    }
}

TEST_CASE("commands can be chosen when there is something to do, in menu and toolbar alike") {
    PanelHere program(EDITED_PANEL);
    PutOnClipboard("x");
    for (const bool edited : {false, true}) {
        for (const char* selected : {"", "A", "AB", "ABC"}) {
            edited ? Select(program, selected) : void();
            program.Command(CMD_GRID);
            for (const Edit& row : EDITS) {
                const int count = static_cast<int>(std::strlen(selected));
                const bool possible = edited && count >= row.least && count <= row.most;
                CAPTURE(row.command);
                CAPTURE(std::string(selected));
                if (row.command == NONE) {
                    continue;
                }
                CHECK(program.Item(row.command).enabled == possible);
                if (const LRESULT state = ButtonState(program, row.command); state != -1) {
                    CHECK(((state & TBSTATE_ENABLED) != 0) == possible);
                    CHECK(((state & TBSTATE_HIDDEN) != 0) == !edited);
                    CHECK(((state & TBSTATE_CHECKED) != 0) == program.Item(row.command).checked);
                }
                if (!possible && row.command != CMD_GRID) {
                    program.Command(row.command);
                }
            }
        }
        edited ? void() : program.Command(CMD_EDIT_MODE);
    }
    CHECK_FALSE(program.Item(CMD_UNDO).enabled); // what cannot be chosen did nothing
    CHECK(Shown("#32770", nullptr) == nullptr);
}

TEST_CASE("each edit changes what it should, is named, undone and done again") {
    Editing program;
    for (const Edit& row : EDITS) {
        CAPTURE(row.command);
        CAPTURE(row.key);
        Select(program, row.selected);
        const bool hadGrid = program.Item(CMD_GRID).checked;
        const auto asked = QUESTIONS.find(row.command);
        const Answer answer(asked == QUESTIONS.end() ? "(nothing is asked)" : asked->second,
                            row.command == CMD_BIND_CHANNEL ? IDCANCEL : IDOK,
                            [] { SetDlgItemTextA(FindWindowA("#32770", "Rename"), IDC_NAME, "Dial"); });
        if (row.key != 0) {
            program.Type(row.key, row.held, program.Panel());
        } else {
            program.Command(row.command);
        }
        program.Tick();
        const std::string label = row.label;
        const std::string saved = program.Saved();
        CHECK(OrderOf(saved) == row.order);
        CHECK(program.Status().substr(0, std::strlen(row.status)) == row.status);
        CHECK(Contains(saved, row.line));
        CHECK(program.Item(CMD_GRID).checked == (hadGrid != (row.command == CMD_GRID)));
        const std::string named = label.empty() ? "" : " " + label;
        CHECK(program.Item(CMD_UNDO) ==
              PanelHere::MenuItem{"&Undo" + named + "\tCtrl+Z", !label.empty(), false});
        if (!label.empty()) {
            program.Type('Z', "Ctrl", program.Panel());
            CHECK(program.Saved() == program.start);
            CHECK(program.Item(CMD_UNDO).text == "&Undo\tCtrl+Z");
            CHECK(program.Item(CMD_REDO).text == "&Redo" + named + "\tCtrl+Y");
            program.Type(row.command == NONE ? 'Y' : 'Z', row.command == NONE ? "Ctrl" : "Ctrl+Shift",
                         program.Panel());
            CHECK(program.Saved() == saved);
            program.Command(CMD_UNDO);
        }
        if (row.command == CMD_PROPERTIES || row.command == CMD_CONNECTIONS) {
            const HWND dialog = Shown(
                "#32770", row.command == CMD_PROPERTIES ? "MiniEdit Class" : "S - Functions and Connections");
            CHECK(dialog != nullptr);
            SendMessageA(dialog, WM_CLOSE, 0, 0);
        }
        CHECK(program.Saved() == program.start);
    }
}

TEST_CASE("the commands of the frame and its other windows") {
    PanelHere program(EDITED_PANEL);
    for (const auto& [command, check] : OTHERS) {
        CAPTURE(command);
        check(program);
    }
}

TEST_SUITE_END();
