// Undo while the dialog stays open in which something was changed.

#include "Controls/resources/resource.h"
#include "Panel/editing/PanelEdits.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Editing.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/FormPanels.h"
#include "tests/windows/ListRows.h"

#include <algorithm>
#include <functional>
#include <utility>

TEST_SUITE_BEGIN("PanelDialogUndo");

namespace {

// A panel that is edited, with a history.
struct Changing {
    Changing() { ph_SetMode(panel.Root(), 1); }

    static std::string TextOf(HOSTINFO* object) {
        std::string text;
        REQUIRE(a_ObjectText(object, &text) == 1);
        return text;
    }
    // The change was one step, which leads back, and what the dialog shows follows; or back, there and back.
    void CheckSteps(const std::function<HOSTINFO*()>& object, const std::string& before,
                    const std::string& shownBefore, const std::function<std::string()>& shown,
                    bool isRepeated = true) {
        PumpAll();
        const std::string after = isRepeated ? TextOf(object()) : "";
        const std::string shownAfter = shown();
        const std::vector<bool> ways = isRepeated ? std::vector{true, false, true} : std::vector{true};
        for (const bool isBack : ways) {
            CHECK((isBack ? edits.Undo() : edits.Redo()));
            CHECK(TextOf(object()) == (isBack ? before : after));
            PumpAll();
            CHECK(Await([&] { return shown() == (isBack ? shownBefore : shownAfter); }));
        }
        CHECK_FALSE(edits.History().CanUndo());
    }

    TestPanel panel;
    PanelEdits edits{panel.Root(), [](const std::string& text) { FAIL(text); }};
};

bool IsOfClass(HWND item, const char* name) {
    char className[64] = "";
    GetClassNameA(item, className, sizeof className);
    return _stricmp(className, name) == 0;
}

// The fields, buttons and lists of a dialog that say something of its control.
std::vector<HWND> FieldsOf(HWND dialog) {
    std::vector<HWND> items;
    for (HWND item = GetWindow(dialog, GW_CHILD); item != nullptr; item = GetWindow(item, GW_HWNDNEXT)) {
        const LONG style = GetWindowLongA(item, GWL_STYLE);
        const LONG kind = style & BS_TYPEMASK;
        const int id = GetDlgCtrlID(item);
        const bool isTool =
            id == IDC_OBJECT_SELECTOR || id == IDC_TEMPLATE_OBJECT || id == IDC_TEMPLATE_KEYWORD;
        const bool isField = IsOfClass(item, "EDIT") && (style & ES_READONLY) == 0;
        const bool isSwitch = IsOfClass(item, "BUTTON") && kind != BS_PUSHBUTTON &&
                              kind != BS_DEFPUSHBUTTON && kind != BS_GROUPBOX && kind != BS_OWNERDRAW;
        if (!isTool && (style & WS_DISABLED) == 0 && (isField || isSwitch || IsOfClass(item, "COMBOBOX"))) {
            items.push_back(item);
        }
    }
    return items;
}

std::string ShownBy(HWND dialog) {
    std::string shown;
    for (const HWND item : FieldsOf(dialog)) {
        shown += IsOfClass(item, "BUTTON") ? std::to_string(SendMessageA(item, BM_GETCHECK, 0, 0))
                 : IsOfClass(item, "EDIT") ? TextOf(item)
                                           : std::to_string(SendMessageA(item, CB_GETCURSEL, 0, 0));
        shown += '|';
    }
    return shown;
}

// Uses the item until the object has changed.
bool Use(HWND dialog, HWND item, const std::function<bool()>& isChanged) {
    const int id = GetDlgCtrlID(item);
    const auto tell = [&](WORD code) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(item));
    };
    if (IsOfClass(item, "BUTTON")) {
        SendMessageA(item, BM_CLICK, 0, 0);
        return isChanged();
    }
    if (IsOfClass(item, "EDIT")) {
        for (const char* typed :
             {"7", "0.5", "0x00123456", "Tahoma,9,bold", "Nobody*value", "5,6", "%.2f", "x"}) {
            SetWindowTextA(item, typed);
            tell(EDIT_ENTER);
            if (isChanged()) {
                return true;
            }
        }
        return false;
    }
    const auto count = SendMessageA(item, CB_GETCOUNT, 0, 0);
    for (LRESULT entry = 0; entry < count && !isChanged(); ++entry) {
        SendMessageA(item, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
        tell(CBN_SELCHANGE);
        DispatchCommands(dialog);
    }
    return isChanged();
}

} // namespace

TEST_CASE("every field of every dialog is undone and done again while it is open") {
    int dialogs = 0;
    int changes = 0;
    int seen = 0;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        CAPTURE(std::string(expected.name));
        Changing program;
        program.panel.Create(expected.name, "C");
        const auto object = [&] { return &ObjectOf(program.panel.Find("C")); };
        HWND dialog = nullptr;
        SendMessageA(object()->window, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
        if (dialog == nullptr) {
            continue;
        }
        ++dialogs;
        bool isFirst = true;
        PumpAll();
        const std::string start = program.TextOf(object());
        for (const HWND item : FieldsOf(dialog)) {
            CAPTURE(GetDlgCtrlID(item));
            const std::string shown = ShownBy(dialog); // what is not saved stays as it was made
            if (Use(dialog, item, [&] { return program.edits.History().CanUndo(); })) {
                ++changes;
                seen += ShownBy(dialog) != shown;
                program.CheckSteps(
                    object, start, shown, [&] { return ShownBy(dialog); }, std::exchange(isFirst, false));
                REQUIRE(IsWindow(dialog));
                CHECK(object()->dialog == dialog);
            }
        }
        SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        CHECK_FALSE(IsWindow(dialog));
        CHECK(program.TextOf(object()) == start);
    }
    CHECK(dialogs > 30);
    CHECK(changes > 100);
    CHECK(seen >= changes - 4); // the values of a button that repeats are not shown
}

TEST_CASE("the lists of properties and bindings follow an undo") {
    Changing program;
    HOSTINFO* root = program.panel.Root();
    const auto make = [&](const char* className, const char* name) {
        return &ObjectOf(program.panel.Create(className, name));
    };
    HOSTINFO* knob = make("KNOB", "A");
    HOSTINFO* strip = make("MINIEDIT", "S");
    HOSTINFO& bound = *make("KNOB", "B");
    const auto part = [&](HWND dialog, const char* className) {
        HWND found = nullptr;
        while ((found = FindWindowExA(dialog, found, className, nullptr)) && !IsWindowVisible(found)) {
        }
        REQUIRE(found != nullptr);
        return found;
    };
    const auto rows = {std::tuple(root, "title", "Hall"),
                       {root, "size", "500,300"},
                       {root, "style", "dark"},
                       {knob, "interval", "7"},
                       {strip, "caption", "x"}};
    for (const auto& [object, keyword, typed] : rows) {
        CAPTURE(std::string(keyword));
        const std::string before = program.TextOf(object);
        const HWND dialog = a_PropertyDlg(1, object->parent, object);
        const HWND list = part(dialog, WC_LISTVIEWA);
        PumpAll();
        const auto shown = [&] { return Cell(list, RowOf(list, keyword), 1); };
        const std::string shownBefore = shown();
        SelectRow(list, RowOf(list, keyword));
        Press(list, VK_F2);
        const HWND edit = part(list, "EDIT");
        SetWindowTextA(edit, typed);
        Press(edit, VK_RETURN);
        CHECK(Await([&] { return shown() != shownBefore; })); // it looks now and then
        program.CheckSteps([&] { return object; }, before, shownBefore, shown);
        SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    }
    const HWND dialog = a_ConnectionDlg(1, bound.window, &bound);
    const auto shown = [&] {
        std::string lists;
        for (HWND list = nullptr; (list = FindWindowExA(dialog, list, WC_LISTVIEWA, nullptr));) {
            for (int row = 0; row < ListView_GetItemCount(list); ++row) {
                lists += Cell(list, row, 0) + "|";
            }
        }
        return lists;
    };
    SetWindowTextA(part(dialog, "EDIT"), "S");
    PumpAll();
    const std::string before = program.TextOf(&bound);
    const std::string shownBefore = shown();
    Press(part(dialog, WC_TREEVIEWA), VK_RETURN);
    CHECK(Await([&] { return shown() != shownBefore; }));
    program.CheckSteps([&] { return &bound; }, before, shownBefore, shown);
    SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    CHECK(program.TextOf(&bound) == before);
}

TEST_SUITE_END();
