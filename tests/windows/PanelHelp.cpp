// Help: F1, the pages it opens, and what commands say of themselves.

#include "Panel/common/CommandText.h"
#include "Panel/help/HelpPages.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/OpenedPages.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

#include <map>
#include <set>

TEST_SUITE_BEGIN("PanelHelp");

namespace {

std::string Documentation(const std::string& page) {
    return ReadBytes(ModuleFolder(nullptr) + "Documentation\\" + page);
}

void CheckIsThere(const std::string& address) {
    const std::size_t place = address.find('#');
    const std::string page = Documentation(address.substr(0, place));
    CAPTURE(address);
    CHECK(Contains(page, "<html"));
    if (place != std::string::npos) {
        CHECK(Contains(page, "id=\"" + address.substr(place + 1) + "\""));
    }
}

// All commands below a menu, with the texts of their items.
void Collect(HMENU menu, std::map<int, std::string>& items) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        if (const HMENU below = GetSubMenu(menu, i)) {
            Collect(below, items);
        } else if (const UINT command = GetMenuItemID(menu, i); command != 0) {
            char text[128] = "";
            GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            items[static_cast<int>(command)] = text;
        }
    }
}

std::map<int, std::string> AllMenuItems() {
    std::map<int, std::string> items;
    for (const int id : {IDM_FRAME, IDM_TRACE, IDM_UNREAD, IDM_CHECK, IDM_SNAPSHOTS, IDM_BINDINGS,
                         IDM_REPLACE, IDM_LAYERS}) {
        const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id));
        const std::size_t before = items.size();
        Collect(menu, items);
        CHECK((items.size() > before || id == IDM_UNREAD));
        DestroyMenu(menu);
    }
    return items;
}

// A control or a part of the window that has the keyboard while F1 is pressed, and what is opened.
struct Place {
    int command; // done before; 0 for none
    const char* window;
    const char* child;
    const char* page;
};
const Place PLACES[] = {
    {0, nullptr, nullptr, "panel-app.html"},
    {CMD_EDIT_MODE, nullptr, nullptr, "panel-app.html"},
    {CMD_SELECT_NEXT, nullptr, nullptr, "property-reference.html#knob"},
    {0, "PanelProperties", WC_LISTVIEWA, "properties-of-controls.html"},
    {0, "PanelObjects", "Edit", "building-panels.html#the-list-of-objects"},
    {CMD_VIEW_TRACE, "PanelTrace", WC_LISTVIEWA, "panel-app.html#when-something-is-wrong"},
    {CMD_VIEW_UNREAD, "PanelUnread", WC_LISTVIEWA, "panel-app.html#when-something-is-wrong"},
    {CMD_CHECK, "PanelCheck", WC_LISTVIEWA, "panel-check.html"},
    {CMD_SNAPSHOTS, "PanelSnapshots", WC_LISTVIEWA, "snapshots.html"},
    {CMD_DEVICES, "PanelDevices", "Edit", "device-files.html#editing-in-the-program"},
    {CMD_VIEW_BINDINGS, "PanelBindings", "Edit", "bindings.html"},
    {CMD_REPLACE_BINDINGS, "PanelReplace", "Edit", "bindings.html#find-and-replace"},
    {CMD_VIEW_LAYERS, "PanelLayers", WC_LISTVIEWA, "panel-files.html#layers"},
};

// Dialogs that wait for an answer.
const std::tuple<int, const char*, const char*> DIALOGS[] = {
    {CMD_RENAME, "Rename", "building-panels.html#names"},
    {CMD_BIND_CHANNEL, "Bind Channel", "building-panels.html#channels"},
    {CMD_DUPLICATE_ROW, "Duplicate in a Row", "building-panels.html#copies-in-a-row"},
    {CMD_PIN, "Lock the Panel", "operating.html#lock"},
};

} // namespace

TEST_CASE("F1 opens the page on what has the keyboard, and it is there") {
    PanelHere program(EDITED_PANEL);
    const OpenedPages opened;
    for (const Place& place : PLACES) {
        CAPTURE(place.page);
        place.command != 0 ? program.Command(place.command) : void();
        const HWND top = place.window == nullptr ? nullptr : FindWindowA(place.window, nullptr);
        const HWND window = place.window == nullptr ? program.Panel()
                            : top                   ? program.Below(top, place.child)
                                                    : program.Below(program.Part(place.window), place.child);
        REQUIRE(window != nullptr);
        program.Type(VK_F1, "", window);
        CHECK(OpenedPages::Last() == place.page);
        CheckIsThere(place.page);
    }
    const HWND tree = program.Below(program.Part("PanelPalette"), WC_TREEVIEWA);
    TreeView_SelectItem(tree, TreeView_GetChild(tree, TreeView_GetRoot(tree)));
    program.Type(VK_F1, "", tree);
    CheckIsThere(OpenedPages::Last());
    for (const char* page : {PAGE_CONTENTS, PAGE_KEYS, PAGE_PANEL_PROPERTIES}) {
        CheckIsThere(page);
    }
}

TEST_CASE("F1 works in dialogs, also in those that keep the program waiting") {
    PanelHere program(EDITED_PANEL);
    const OpenedPages opened;
    program.Command(CMD_EDIT_MODE);
    program.Command(CMD_SELECT_NEXT);
    for (const auto& [command, title, page] : DIALOGS) {
        CAPTURE(title);
        {
            const Answer answer(title, IDCANCEL, [title = title] {
                PostMessageA(FindWindowA("#32770", title), WM_KEYDOWN, VK_F1, 1);
            });
            program.Command(command);
        }
        CHECK(OpenedPages::Last() == page);
        CheckIsThere(page);
    }
    program.Command(CMD_PROPERTIES); // its dialog stays while another control is selected
    program.Command(CMD_SELECT_PREVIOUS);
    const HWND dialog = FindWindowA("#32770", "Knob Class");
    REQUIRE(dialog != nullptr);
    MSG key{GetNextDlgTabItem(dialog, nullptr, FALSE), WM_KEYDOWN, VK_F1, 1, 0, {}};
    CHECK(IsDialogMessageA(dialog, &key));
    CHECK(OpenedPages::Last() == "property-reference.html#knob");
}

TEST_CASE("every class of controls has its place in the reference") {
    const PanelHere program("size=300,200\r\n");
    int count = 0;
    ph_ListControlClasses(
        [](const PH_CONTROLCLASS* one, void* counted) {
            CheckIsThere(HelpPageOfClass(one->windowClass));
            ++*static_cast<int*>(counted);
        },
        &count);
    CHECK(count >= 45);
}

TEST_CASE("without a program for pages the user is told where they are, and an operator is not helped") {
    {
        PanelHere program(EDITED_PANEL);
        const OpenedPages none(false);
        Answer told("Panel", IDOK,
                    [] { PostMessageA(FindWindowA("#32770", "Panel"), WM_KEYDOWN, VK_F1, 1); });
        program.Command(CMD_HELP_CONTENTS);
        CHECK(told.Question() == "No program shows web pages here. The page is " + ModuleFolder(nullptr) +
                                     "Documentation\\index.html");
        CHECK(OpenHelpPage("nothing.html#here") == "the documentation is not beside the program: " +
                                                       ModuleFolder(nullptr) + "Documentation\\nothing.html");
    }
    CommandLine operate;
    operate.operate = true;
    PanelHere program(EDITED_PANEL, operate);
    const OpenedPages opened;
    program.Type(VK_F1, "", program.Panel());
    CHECK(OpenedPages::Last().empty());
}

TEST_CASE("every command of a menu tells what it does, and its key is on the page of keys") {
    const std::string keys = Documentation(PAGE_KEYS);
    std::set<std::string> told;
    for (const auto& [command, text] : AllMenuItems()) {
        CAPTURE(text);
        const std::string status = CommandStatus(command);
        CHECK(status.ends_with("."));
        CHECK(status.size() < 120); // of what the bar has room for
        CHECK(told.insert(status).second);
        const std::string tooltip = CommandTooltip(command, nullptr);
        CHECK((!tooltip.empty() && tooltip.find_first_of(".\n(") == std::string::npos));
        const std::size_t tab = text.find('\t');
        const std::string key = tab == std::string::npos ? "" : text.substr(tab + 1);
        const bool isArrow = key.ends_with("Left") || key.ends_with("Right") || key.ends_with("Up") ||
                             key.ends_with("Down"); // all four are said at once
        CHECK((isArrow || Contains(keys, key)));
    }
    CHECK(told.size() > 80);
    CHECK(CommandStatus(0).empty());
}

TEST_CASE("the status bar tells what a command does as long as it is pointed at") {
    PanelHere program(EDITED_PANEL);
    const HWND bar = program.Part(TOOLBARCLASSNAMEA);
    const auto point = [&](HWND window, int item, int flags) {
        SendMessageA(window, WM_MENUSELECT, MAKEWPARAM(item, flags), 0);
        program.Tick();
        return program.Status();
    };
    const std::string before = program.Status();
    CHECK(point(program.Frame(), CMD_SAVE, 0) == CommandStatus(CMD_SAVE));
    CHECK(point(program.Frame(), 1, MF_POPUP) == before);
    program.Command(CMD_VIEW_TRACE);
    CHECK(point(FindWindowA("PanelTrace", nullptr), CMD_TRACE_CLEAR, 0) == CommandStatus(CMD_TRACE_CLEAR));
    CHECK(point(program.Frame(), 0, 0xFFFF) == before);
    for (const bool leaves : {false, true}) {
        NMTBHOTITEM hot{{bar, IDC_TOOLBAR, static_cast<UINT>(TBN_HOTITEMCHANGE)},
                        leaves ? CMD_EDIT_MODE : 0,
                        leaves ? 0 : CMD_EDIT_MODE,
                        static_cast<DWORD>(leaves ? HICF_LEAVING : HICF_ENTERING)};
        SendMessageA(program.Frame(), WM_NOTIFY, IDC_TOOLBAR, reinterpret_cast<LPARAM>(&hot));
        CHECK(program.Status() == (leaves ? before : CommandStatus(CMD_EDIT_MODE)));
    }
}

TEST_SUITE_END();
