// The dialogs of the library, driven by the messages that keys, clicks and objects cause.

#include "Panelhost/dialogs/resource.h"
#include "base/Gdi.h"
#include "tests/windows/HeldKeys.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <commctrl.h>
#include <algorithm>
#include <functional>
#include <initializer_list>
#include <map>

TEST_SUITE_BEGIN("dialogs");

namespace {

void Pump() {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
        DispatchMessageA(&message);
    }
}

std::string TextOf(HWND window) {
    char text[TEXT_SIZE] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

std::string Cell(HWND list, int row, int column) {
    char text[TEXT_SIZE] = "";
    ListView_GetItemText(list, row, column, text, TEXT_SIZE);
    return text;
}

int RowOf(HWND list, const std::string& text) {
    int row = ListView_GetItemCount(list) - 1;
    while (row >= 0 && Cell(list, row, 0) != text) {
        --row;
    }
    return row;
}

void SelectRow(HWND list, int row) {
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

int SelectedRow(HWND list) {
    return ListView_GetNextItem(list, -1, LVNI_SELECTED);
}

void Press(HWND window, WPARAM key) {
    SendMessageA(window, WM_KEYDOWN, key, 0);
}

// Keys as they come from the keyboard to whatever has the focus, through the dialog's own handling of them.
void Type(HWND dialog, std::initializer_list<WPARAM> keys, const char* held = "") {
    for (const WPARAM key : keys) {
        const HeldKeys down(held);
        PostMessageA(GetFocus(), WM_KEYDOWN, key, 0);
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_POSTMESSAGE);) {
            if (!IsDialogMessageA(dialog, &message)) {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
        }
    }
}

int Focused() {
    return GetDlgCtrlID(GetFocus());
}

void Command(HWND dialog, int id) {
    SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

// The generic dialog of an object.
struct PropertyDialog {
    explicit PropertyDialog(HOSTINFO& object)
        : window(a_PropertyDlg(1, object.parent, &object)), list(GetDlgItem(window, IDC_PROPERTY_LIST)) {}

    HWND Edit() const { return FindWindowExA(list, nullptr, "EDIT", nullptr); }
    std::string Value(const std::string& keyword) const { return Cell(list, RowOf(list, keyword), 1); }
    std::string Note(const std::string& keyword) const { return Cell(list, RowOf(list, keyword), 2); }
    void Type(const std::string& keyword, const std::string& text) const {
        SelectRow(list, RowOf(list, keyword));
        Press(list, VK_F2);
        REQUIRE(Edit() != nullptr);
        SetWindowTextA(Edit(), text.c_str());
    }

    HWND window;
    HWND list;
};

struct ConnectionDialog {
    explicit ConnectionDialog(HOSTINFO& object)
        : window(a_ConnectionDlg(1, object.window, &object)),
          tree(GetDlgItem(window, IDC_AVAILABLE)),
          functions(GetDlgItem(window, IDC_FUNCTIONS)),
          connections(GetDlgItem(window, IDC_CONNECTIONS)) {}

    // What the tree shows from an item on, owners before what they hold, each followed by "|".
    std::string Tree(HTREEITEM item) const {
        if (item == nullptr) {
            return {};
        }
        char text[128] = "";
        TVITEMA entry{};
        entry.mask = TVIF_TEXT | TVIF_STATE;
        entry.stateMask = TVIS_BOLD;
        entry.hItem = item;
        entry.pszText = text;
        entry.cchTextMax = sizeof text;
        TreeView_GetItem(tree, &entry);
        std::string shown = text;
        shown += (entry.state & TVIS_BOLD) != 0 ? "!|" : "|"; // bound
        shown += Tree(TreeView_GetChild(tree, item));
        return shown + Tree(TreeView_GetNextSibling(tree, item));
    }
    std::string Tree() const { return Tree(TreeView_GetRoot(tree)); }
    void Search(const char* text) const { SetDlgItemTextA(window, IDC_SEARCH, text); }
    std::string Status() const { return TextOf(GetDlgItem(window, IDC_STATUS)); }

    HWND window;
    HWND tree;
    HWND functions;
    HWND connections;
};

// Devices with two parameters, and a panel of knobs of which one holds another.
struct Scene {
    Scene() {
        panel.Declare(
            "AMP1*device=simulated\nAMP1*gain1=float,-80,18,-20,dB\nAMP1*gain2=float,-80,18,-20,dB\n");
        knob = panel.Create("KNOB", "Knob");
        panel.Create("KNOB", "Other");
        HWND outer = panel.Create("KNOB", "Outer");
        CreateControl("KNOB", "Inner", outer, &ObjectOf(outer));
    }
    HOSTINFO& Object() const { return ObjectOf(knob); }
    std::string Connections() const { return a_BuildString(Object().connections); }

    TestPanel panel{TestPanel::Visible};
    HWND knob;
};

std::function<bool()> attempt; // made again and again while a dialog is open, until it succeeds

void CALLBACK Try(HWND, UINT, UINT_PTR timer, DWORD) {
    if (attempt()) {
        KillTimer(nullptr, timer);
    }
}

// Answers the picture dialog once all of its pictures are there.
std::string ChoosePicture(const std::string& folder, const char* prefix, int expected,
                          const std::function<void(HWND, HWND)>& answer) {
    const DWORD start = GetTickCount();
    attempt = [&, start] {
        const HWND dialog = FindWindowA("#32770", "Select a Picture");
        const HWND list = GetDlgItem(dialog, IDC_PICTURES);
        if (list == nullptr || (ListView_GetItemCount(list) < expected && GetTickCount() - start < 30000)) {
            return false;
        }
        answer(dialog, list);
        return true;
    };
    SetTimer(nullptr, 0, 5, Try);
    char name[MAX_PATH] = "untouched";
    const int chosen = a_PopupBitmapView(nullptr, folder.c_str(), prefix, name);
    CHECK((chosen == 1) == (*name != '\0'));
    return name;
}

} // namespace

TEST_CASE("values are edited in place, and what is refused is kept") {
    const Scene scene;
    const PropertyDialog dialog(scene.Object());
    REQUIRE(dialog.window != nullptr);
    CHECK(TextOf(dialog.window) == "Knob - Properties");
    CHECK(dialog.Value("bitmap") == ".\\Controls\\Knob.bmp");

    struct Row {
        const char* keyword;
        const char* typed;
        WPARAM key; // 0: the focus goes elsewhere
        const char* shown;
        bool refused;
        const char* editedNext; // keyword; null when the edit field closes
    };
    const Row rows[] = {
        {"interval", "250", VK_RETURN, "250", false, nullptr},
        {"interval", "300", VK_TAB, "300", false, "properties"},
        {"resolution", "2.50", 0, "2.5", false, nullptr},
        {"resolution", "9", VK_ESCAPE, "2.5", false, nullptr},
        {"resolution", "x", VK_RETURN, "x", true, "resolution"},
        {"resolution", "x", 0, "x", true, nullptr},
        {"resolution", "y", VK_TAB, "y", true, "resolution"},
        {"resolution", "y", VK_ESCAPE, "2.5", false, nullptr},
        {"valuescopy", "1", VK_TAB, "", false, nullptr}, // the last one; an absolute knob keeps none
    };
    for (const Row& row : rows) {
        INFO(row.keyword, " ", row.typed);
        dialog.Type(row.keyword, row.typed);
        if (row.key == 0) {
            SetFocus(dialog.list);
        } else {
            Press(dialog.Edit(), row.key);
        }
        Pump();
        CHECK(dialog.Value(row.keyword) == row.shown);
        CHECK(dialog.Note(row.keyword).empty() == !row.refused);
        CHECK((dialog.Edit() != nullptr) == (row.editedNext != nullptr));
        if (row.editedNext != nullptr) {
            CHECK(SelectedRow(dialog.list) == RowOf(dialog.list, row.editedNext));
            CHECK(TextOf(dialog.Edit()) == dialog.Value(row.editedNext));
        }
    }
    CHECK(Text(scene.knob, "interval") == "300");
    CHECK(Text(scene.knob, "resolution") == "2.5");
    CHECK(IsChanged(scene.knob));

    SUBCASE("closing applies, and stays once for a value that is refused") {
        dialog.Type("interval", "55");
        Command(dialog.window, IDCANCEL);
        CHECK(!IsWindow(dialog.window));
        CHECK(Text(scene.knob, "interval") == "55");
        const PropertyDialog again(scene.Object());
        again.Type("interval", "z");
        Command(again.window, IDCANCEL);
        REQUIRE(IsWindow(again.window));
        CHECK(TextOf(again.Edit()) == "z");
        Command(again.window, IDCANCEL);
        CHECK(!IsWindow(again.window));
    }
    SUBCASE("a refresh takes over new values and leaves selection and edit field alone") {
        dialog.Type("resolution", "being typed");
        Load(scene.knob, "interval=77");
        SendMessageA(dialog.window, CWM_ATTACHDIALOG, 0, reinterpret_cast<LPARAM>(&scene.Object()));
        CHECK(dialog.Value("interval") == "77");
        CHECK(TextOf(dialog.Edit()) == "being typed");
        CHECK(SelectedRow(dialog.list) == RowOf(dialog.list, "resolution"));
    }
}

TEST_CASE("long values pass whole or not at all") {
    const TestPanel panel(TestPanel::Visible);
    const PropertyDialog dialog(*panel.Root());
    const std::string title(TEXT_SIZE - 1, 'W');
    for (const std::string& typed : {title, title + "x"}) { // by pasting
        dialog.Type("title", "");
        SendMessageA(dialog.Edit(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(typed.c_str()));
        Press(dialog.Edit(), VK_RETURN);
        CHECK(Text(panel.Window(), "title") == title);
        CHECK(dialog.Note("title").starts_with(typed == title ? "" : "Refused: is longer than 4095 bytes"));
    }
    const Scene scene;
    const ConnectionDialog connections(scene.Object());
    const std::string full = "AMP1*gain1;" + std::string(TEXT_SIZE - 20, 'x');
    REQUIRE(Load(scene.knob, "function=" + full) == 1);
    connections.Search("gain2");
    Press(connections.tree, VK_RETURN);
    CHECK(a_BuildString(scene.Object().functions) == full);
    CHECK(connections.Status() ==
          "The list of functions is full: it is longer than 4095 bytes, 2 of its entries would fit.");
}

TEST_CASE("dialogs are one per object and go with it") {
    using Opener = HWND (*)(HOSTINFO&);
    const Opener openers[] = {[](HOSTINFO& object) { return PropertyDialog(object).window; },
                              [](HOSTINFO& object) { return ConnectionDialog(object).window; }};
    for (const Opener open : openers) {
        Scene scene;
        HWND dialog = open(scene.Object());
        REQUIRE(dialog != nullptr);
        CHECK(open(scene.Object()) == dialog);
        scene.Object().dialog = dialog;
        Command(dialog, IDCANCEL);
        CHECK(!IsWindow(dialog));
        CHECK(scene.Object().dialog == nullptr);

        dialog = open(scene.Object());
        HWND ofRoot = open(*scene.panel.Root());
        DestroyWindow(scene.knob);
        CHECK(!IsWindow(dialog));
        CHECK(IsWindow(ofRoot));
        HWND window = scene.panel.Window();
        HOSTINFO* root = scene.panel.Root();
        CHECK(a_IsAlive(root));
        scene.panel.Close();
        CHECK(!IsWindow(window));
        SendMessageA(ofRoot, WM_NULL, 0, 0);
        CHECK(!IsWindow(ofRoot));
    }
    CHECK(a_PropertyDlg(1, static_cast<HOSTINFO*>(nullptr), nullptr) == nullptr);
    CHECK(a_ConnectionDlg(1, nullptr, nullptr) == nullptr);
}

TEST_CASE("the search shows what leads to a match") {
    const Scene scene;
    const ConnectionDialog dialog(scene.Object());
    struct Row {
        const char* search;
        const char* shown;
    };
    const Row rows[] = {
        {"", "Devices|AMP1|Controls|Other|Outer|"},
        {"GAIN2", "Devices|AMP1|gain2|Controls|"},
        {"amp1 1", "Devices|AMP1|Controls|"},
        {"inner", "Devices|Controls|Outer|Inner|"},
        {"outer resol", "Devices|Controls|Outer|Inner|resolution|resolution|"},
        {"knob", "Devices|Controls|"}, // nobody is connected to himself
        {"", "Devices|AMP1|Controls|Other|Outer|"},
    };
    for (const Row& row : rows) {
        INFO(row.search);
        dialog.Search(row.search);
        CHECK(dialog.Tree() == row.shown);
    }
    const auto amp = [&] { return TreeView_GetChild(dialog.tree, TreeView_GetRoot(dialog.tree)); };
    TreeView_Expand(dialog.tree, amp(), TVE_EXPAND); // what the user opened is open again behind a search
    dialog.Search("knob");
    CHECK(dialog.Status() == "Nothing found.");
    dialog.Search("");
    CHECK(dialog.Status().empty());
    CHECK(dialog.Tree() == "Devices|AMP1|online|gain1|gain2|Controls|Other|Outer|");
    TreeView_SelectItem(dialog.tree, amp());
    Press(dialog.tree, VK_LEFT);
    dialog.Search("knob");
    scene.panel.Create("KNOB", "New");
    dialog.Search("");
    SendMessageA(dialog.window, CWM_ATTACHDIALOG, 0, 0);
    CHECK(dialog.Tree() == "Devices|AMP1|Controls|Other|Outer|New|");

    HOSTINFO& outer = ObjectOf(scene.panel.Find("Outer"));
    const ConnectionDialog ofOuter(outer);
    CHECK(ofOuter.Tree() == "Devices|AMP1|Controls|Knob|Other|Outer|New|");
    ofOuter.Search("outer"); // holds somebody, yet is nobody's partner itself
    CHECK(ofOuter.Tree() == "Devices|Controls|Outer|");
    Press(ofOuter.tree, VK_DOWN);
    Press(ofOuter.tree, VK_DOWN);
    CHECK(!IsWindowEnabled(GetDlgItem(ofOuter.window, IDC_ADD)));
    Press(ofOuter.tree, VK_RETURN);
    CHECK(outer.connections.empty());
}

TEST_CASE("bindings are added, moved and removed by property lines") {
    const Scene scene;
    const ConnectionDialog dialog(scene.Object());
    struct Row {
        const char* search; // what is then added
        const char* functions;
        const char* connections;
        const char* status;
        const char* tree;
    };
    const Row rows[] = {
        {"gain2", "AMP1*gain2", "", "AMP1*gain2 was added to the functions.",
         "Devices|AMP1|gain2!|Controls|"},
        {"gain1", "AMP1*gain2;AMP1*gain1", "", "AMP1*gain1 was added to the functions.",
         "Devices|AMP1|gain1!|Controls|"},
        {"gain2", "AMP1*gain2;AMP1*gain1", "", "AMP1*gain2 is among the functions already.",
         "Devices|AMP1|gain2!|Controls|"},
        {"other", "AMP1*gain2;AMP1*gain1", "Other", "Other was added to the connections.",
         "Devices|Controls|Other!|"},
        {"outer inner", "AMP1*gain2;AMP1*gain1", "Other;Outer*Inner",
         "Outer*Inner was added to the connections.", "Devices|Controls|Outer|Inner!|"},
    };
    for (const Row& row : rows) {
        INFO(row.search);
        dialog.Search(row.search);
        Press(dialog.tree, VK_RETURN);
        CHECK(a_BuildString(scene.Object().functions) == row.functions);
        CHECK(scene.Connections() == row.connections);
        CHECK(dialog.Status() == row.status);
        CHECK(dialog.Tree() == row.tree);
    }
    const HWND added = scene.Connections().empty() ? dialog.functions : dialog.connections;
    CHECK(SelectedRow(added) == 1);
    const HTREEITEM shown = TreeView_GetSelection(dialog.tree);
    TreeView_Expand(dialog.tree, shown, TVE_EXPAND);
    RECT place{};
    TreeView_GetItemRect(dialog.tree, TreeView_GetChild(dialog.tree, shown), &place, TRUE);
    SendMessageA(dialog.tree, WM_LBUTTONDBLCLK, MK_LBUTTON, At(place.left + 1, place.top + 1));
    CHECK(scene.Connections() == "Other;Outer*Inner;Outer*Inner*bitmap");

    Load(scene.knob, "connection=Other;Outer*Inner*resolution;Gone");
    Pump();
    CHECK(IsChanged(scene.knob));
    CHECK(ListView_GetItemCount(dialog.connections) == 3);
    CHECK(Cell(dialog.connections, 2, 0) == "Gone  (not reachable)");

    const auto enabled = [&] { // Add, Remove, Up and Down
        std::string letters;
        for (const auto& [id, letter] :
             {std::pair(IDC_ADD, 'A'), {IDC_REMOVE, 'R'}, {IDC_UP, 'U'}, {IDC_DOWN, 'D'}}) {
            letters += IsWindowEnabled(GetDlgItem(dialog.window, id)) ? letter : ' ';
        }
        return letters;
    };
    SelectRow(dialog.connections, 2);
    CHECK(enabled() == "ARU ");
    Command(dialog.window, IDC_UP);
    CHECK(scene.Connections() == "Other;Gone;Outer*Inner*resolution");
    CHECK(dialog.Status() == "Gone was moved up.");
    CHECK(enabled() == "ARUD");
    Command(dialog.window, IDC_DOWN);
    CHECK(scene.Connections() == "Other;Outer*Inner*resolution;Gone");
    CHECK(dialog.Status() == "Gone was moved down.");
    CHECK(SelectedRow(dialog.connections) == 2);
    SelectRow(dialog.connections, 0);
    CHECK(enabled() == "AR D");
    Press(dialog.connections, VK_DELETE);
    CHECK(scene.Connections() == "Outer*Inner*resolution;Gone");
    CHECK(dialog.Status() == "Other was removed from the connections.");
    SelectRow(dialog.functions, 1);
    CHECK(SelectedRow(dialog.connections) == -1);
    Command(dialog.window, IDC_REMOVE);
    CHECK(a_BuildString(scene.Object().functions) == "AMP1*gain2");
    CHECK(ListView_GetItemCount(dialog.functions) == 1);

    ph_SetParameter(scene.panel.Root(), "AMP1*online", "0");
    SendMessageA(dialog.window, CWM_ATTACHDIALOG, 0, 0);
    dialog.Search("");
    CHECK(Cell(dialog.functions, 0, 0) == "AMP1*gain2  (not reachable)");
    CHECK(dialog.Tree() == "Devices|AMP1  (not reachable)|Controls|Other|Outer|");
}

TEST_CASE("dialogs are used by the keyboard alone") {
    const Scene scene;
    scene.panel.Create("KNOB", "gone later");
    const ConnectionDialog dialog(scene.Object());
    const auto type = [&](std::initializer_list<WPARAM> keys, const char* held = "") {
        Type(dialog.window, keys, held);
        return Focused();
    };
    CHECK(Focused() == IDC_SEARCH);
    CHECK(type({'I', 'N', '2', VK_RETURN}) == IDC_SEARCH); // the first match
    CHECK(a_BuildString(scene.Object().functions) == "AMP1*gain2");
    CHECK(type({VK_ESCAPE}) == IDC_SEARCH);
    CHECK(TextOf(GetDlgItem(dialog.window, IDC_SEARCH)).empty());
    CHECK(type({VK_DOWN}) == IDC_AVAILABLE);
    CHECK(type({VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN}) == IDC_AVAILABLE);
    CHECK(a_BuildString(scene.Object().functions) == "AMP1*gain2;AMP1*online");
    for (const int next :
         {IDC_ADD, IDC_REMOVE, IDC_UP, IDC_FUNCTIONS, IDC_CONNECTIONS, IDCANCEL, IDC_SEARCH}) {
        CHECK(type({VK_TAB}) == next);
    }
    CHECK(type({VK_TAB, VK_TAB, VK_TAB, VK_TAB, VK_TAB}) == IDC_FUNCTIONS);
    CHECK(type({VK_HOME, VK_RETURN, VK_DELETE}) == IDC_FUNCTIONS); // Enter adds nothing from here
    CHECK(a_BuildString(scene.Object().functions) == "AMP1*online");
    CHECK(type({VK_DELETE}) == IDC_FUNCTIONS);
    CHECK(scene.Object().functions.empty());
    SetDlgItemTextA(dialog.window, IDC_SEARCH, "other");
    CHECK(type({'F'}, "Ctrl") == IDC_SEARCH);
    CHECK(type({'K'}) == IDC_SEARCH); // in place of what was there
    CHECK(TextOf(GetDlgItem(dialog.window, IDC_SEARCH)) == "k");
    type({VK_ESCAPE});
    CHECK(IsWindow(dialog.window));
    type({VK_ESCAPE});
    CHECK_FALSE(IsWindow(dialog.window));

    const PropertyDialog properties(scene.Object());
    const auto press = [&](std::initializer_list<WPARAM> keys, const char* held = "") {
        Type(properties.window, keys, held);
        return properties.Edit() == nullptr ? std::string("none") : TextOf(properties.Edit());
    };
    CHECK(GetFocus() == properties.list);
    SelectRow(properties.list, RowOf(properties.list, "interval"));
    CHECK(press({VK_RETURN}) == Text(scene.knob, "interval"));
    CHECK(press({'8', '1', VK_RETURN}) == "none");
    CHECK(Text(scene.knob, "interval") == "81");
    CHECK(SelectedRow(properties.list) == RowOf(properties.list, "interval") + 1);
    CHECK(press({VK_UP, '9', '2'}) == "92");
    CHECK(press({VK_TAB}) == properties.Value("properties"));
    CHECK(press({VK_TAB}, "Shift") == "92");
    CHECK(press({'X', VK_RETURN}) == "x");
    CHECK(press({VK_ESCAPE}) == "none");
    CHECK(properties.Value("interval") == "92");
    CHECK(GetFocus() == properties.list);
    press({VK_ESCAPE});
    CHECK_FALSE(IsWindow(properties.window));
}

TEST_CASE("items keep their places in a dialog that is made larger") {
    using Growths = std::vector<std::pair<RECT, std::vector<int>>>; // for 100 x 60 more, and whose they are
    const auto check = [](HWND dialog, const Growths& growths) {
        const auto place = [&](int id) {
            RECT now;
            GetWindowRect(GetDlgItem(dialog, id), &now);
            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&now), 2);
            return now;
        };
        std::map<int, RECT> before;
        int items = 0;
        for (HWND item = nullptr; (item = FindWindowExA(dialog, item, nullptr, nullptr)) != nullptr;) {
            items += GetDlgCtrlID(item) != 0 ? 1 : 0;
            before[GetDlgCtrlID(item)] = place(GetDlgCtrlID(item));
        }
        RECT window;
        GetWindowRect(dialog, &window);
        const SIZE least{window.right - window.left, window.bottom - window.top};
        MINMAXINFO limits{};
        SendMessageA(dialog, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
        CHECK(limits.ptMinTrackSize.x == least.cx);
        CHECK(limits.ptMinTrackSize.y == least.cy);
        for (const int times : {1, 2, 0}) {
            SetWindowPos(dialog, nullptr, 0, 0, least.cx + times * 100, least.cy + times * 60,
                         SWP_NOMOVE | SWP_NOZORDER);
            int checked = 0;
            for (const auto& [by, ids] : growths) {
                for (const int id : ids) {
                    CAPTURE(id);
                    const RECT& old = before[id];
                    const RECT wanted{old.left + times * by.left, old.top + times * by.top,
                                      old.right + times * by.right, old.bottom + times * by.bottom};
                    CHECK(a_GetRectString(place(id)) == a_GetRectString(wanted));
                    ++checked;
                }
            }
            CHECK(checked == items);
        }
    };
    const Scene scene;
    const ConnectionDialog connections(scene.Object());
    check(connections.window, {{{0, 0, 50, 0}, {IDC_HEADER_AVAILABLE, IDC_SEARCH}},
                               {{0, 0, 0, 0}, {IDC_SEARCH_LABEL}},
                               {{0, 0, 50, 60}, {IDC_AVAILABLE}},
                               {{50, 24, 50, 24}, {IDC_ADD, IDC_REMOVE, IDC_UP, IDC_DOWN}},
                               {{50, 0, 100, 0}, {IDC_HEADER_FUNCTIONS}},
                               {{50, 0, 100, 30}, {IDC_FUNCTIONS}},
                               {{50, 30, 100, 30}, {IDC_HEADER_CONNECTIONS}},
                               {{50, 30, 100, 60}, {IDC_CONNECTIONS}},
                               {{0, 60, 100, 60}, {IDC_STATUS}},
                               {{100, 60, 100, 60}, {IDCANCEL}}});
    const PropertyDialog properties(scene.Object());
    check(properties.window, {{{0, 0, 100, 60}, {IDC_PROPERTY_LIST}}, {{100, 60, 100, 60}, {IDCANCEL}}});
    RECT client;
    GetClientRect(properties.list, &client);
    const int widths[] = {ListView_GetColumnWidth(properties.list, 0),
                          ListView_GetColumnWidth(properties.list, 1),
                          ListView_GetColumnWidth(properties.list, 2)};
    CHECK(widths[0] == client.right / 5);
    CHECK(widths[2] == client.right * 32 / 100);
    CHECK(widths[0] + widths[1] + widths[2] == client.right);
    ChoosePicture("Controls", "KNOB_amber", 1, [&](HWND dialog, HWND) {
        check(dialog, {{{0, 0, 100, 60}, {IDC_PICTURES}},
                       {{0, 30, 100, 30}, {IDC_NO_PICTURES}},
                       {{0, 60, 100, 60}, {IDC_PICTURE_NAME}},
                       {{100, 60, 100, 60}, {IDOK, IDCANCEL}}});
        Command(dialog, IDCANCEL);
    });
}

TEST_CASE("what is lost or refused is red, fields and headings have colours of their own") {
    const Scene scene;
    REQUIRE(Load(scene.knob, "connection=Other;Gone") == 1);
    const ConnectionDialog connections(scene.Object());
    const PropertyDialog properties(scene.Object());
    properties.Type("interval", "x");
    Press(properties.Edit(), VK_RETURN);
    const auto colour = [](HWND dialog, HWND list, int row, int column, DWORD stage) {
        NMLVCUSTOMDRAW draw{};
        draw.nmcd.hdr = {list, static_cast<UINT_PTR>(GetDlgCtrlID(list)), static_cast<UINT>(NM_CUSTOMDRAW)};
        draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
        draw.iSubItem = column;
        draw.clrText = 0x123456;
        for (const DWORD one : {DWORD(CDDS_PREPAINT), DWORD(CDDS_ITEMPREPAINT), stage}) {
            draw.nmcd.dwDrawStage = one;
            const LRESULT answer = SendMessageA(dialog, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&draw));
            CHECK((answer == CDRF_NOTIFYITEMDRAW || one != CDDS_PREPAINT));
        }
        return draw.clrText;
    };
    const COLORREF red = RGB(176, 0, 32);
    CHECK(colour(connections.window, connections.connections, 0, 0, CDDS_ITEMPREPAINT) == 0x123456);
    CHECK(colour(connections.window, connections.connections, 1, 0, CDDS_ITEMPREPAINT) == red);
    const int refused = RowOf(properties.list, "interval");
    constexpr DWORD CELL = CDDS_ITEMPREPAINT | CDDS_SUBITEM;
    CHECK(colour(properties.window, properties.list, refused, 1, CELL) == red);
    CHECK(colour(properties.window, properties.list, refused, 0, CELL) == 0);
    CHECK(colour(properties.window, properties.list, refused + 1, 1, CELL) == 0);

    const HDC dc = CreateCompatibleDC(nullptr);
    const auto brush = [&](UINT message, int id) {
        return reinterpret_cast<HBRUSH>(
            SendMessageA(connections.window, message, reinterpret_cast<WPARAM>(dc),
                         reinterpret_cast<LPARAM>(GetDlgItem(connections.window, id))));
    };
    for (const int heading : {IDC_HEADER_AVAILABLE, IDC_HEADER_FUNCTIONS, IDC_HEADER_CONNECTIONS}) {
        CHECK(brush(WM_CTLCOLORSTATIC, heading) == a_GetObject(BRUSH_HEADER));
        CHECK(GetTextColor(dc) == RGB(255, 255, 255));
        CHECK(GetBkMode(dc) == TRANSPARENT);
    }
    CHECK(brush(WM_CTLCOLORSTATIC, IDC_STATUS) == a_GetObject(BRUSH_DIALOG));
    CHECK(GetTextColor(dc) == 0);
    CHECK(brush(WM_CTLCOLOREDIT, IDC_SEARCH) == a_GetObject(BRUSH_FIELD));
    CHECK(GetBkColor(dc) == FIELD_COLOUR);
    CHECK(brush(WM_CTLCOLORDLG, IDC_SEARCH) == a_GetObject(BRUSH_DIALOG));
    DeleteDC(dc);
}

TEST_CASE("thumbnails show the whole picture, in its shape and over white") {
    const TestFolder folder;
    std::string two = BitmapFile(128, 128, 0x00FF00); // lower half green and black by turns, upper one blue
    for (std::size_t i = 0; i < 128 * 128; ++i) {
        two.replace(54 + 3 * i, 3,
                    i >= 64 * 128 ? std::string("\xFF\0\0", 3)
                    : i % 2 == 0  ? std::string(3, '\0')
                                  : std::string("\0\xFF\0", 3));
    }
    folder.Write("1.bmp", two);
    folder.Write("2.bmp", BitmapFile(200, 50, 0xFF0000));
    folder.Write("3.bmp", BitmapFile(3, 200, 0xFF0000));
    folder.Write("4.bmp", BitmapFile(20, 10, 0xFF0000));
    folder.Write("5.png", ReadBytes("Controls\\MiniEdit.png")); // its corners are round
    const struct {
        int image, x, y;
        COLORREF colour;
    } rows[] = {
        {0, 0, 0, 0xFF0000},   {0, 63, 31, 0xFF0000}, {0, 0, 32, 0x007F00},  {0, 63, 63, 0x007F00},
        {1, 0, 24, 0x0000FF},  {1, 63, 39, 0x0000FF}, {1, 30, 23, 0xFFFFFF}, {1, 30, 40, 0xFFFFFF},
        {2, 31, 0, 0x0000FF},  {2, 31, 63, 0x0000FF}, {2, 30, 30, 0xFFFFFF}, {2, 32, 30, 0xFFFFFF},
        {3, 22, 27, 0x0000FF}, {3, 41, 36, 0x0000FF}, {3, 21, 30, 0xFFFFFF}, {3, 42, 30, 0xFFFFFF},
        {3, 30, 26, 0xFFFFFF}, {3, 30, 37, 0xFFFFFF}, {4, 8, 16, 0xFFFFFF},  {4, 9, 16, 0xCFCECE},
        {4, 32, 32, 0x1E1916},
    };
    const std::string base = folder.Path("");
    ChoosePicture(base, "", 5, [&](HWND dialog, HWND list) {
        const auto images =
            reinterpret_cast<HIMAGELIST>(SendMessageA(list, LVM_GETIMAGELIST, LVSIL_NORMAL, 0));
        std::uint32_t* bits = nullptr;
        const Bitmap bitmap(CreatePixels(64, 64, &bits));
        const MemoryDc dc(bitmap.get());
        for (const auto& row : rows) {
            CAPTURE(row.image);
            CAPTURE(row.x);
            CAPTURE(row.y);
            ImageList_Draw(images, row.image, dc.Get(), 0, 0, ILD_NORMAL);
            CHECK(GetPixel(dc.Get(), row.x, row.y) == row.colour);
        }
        CHECK(TextOf(GetDlgItem(dialog, IDC_PICTURE_NAME)).ends_with("1.bmp   128 x 128 pixels"));
        Press(list, VK_DOWN);
        Press(list, VK_RIGHT);
        CHECK(SelectedRow(list) > 0);
        Command(dialog, IDCANCEL);
    });
}

TEST_CASE("pictures are chosen by key and double click") {
    const TestFolder folder;
    const std::string marine = folder.Write("A_marine.bmp", BitmapFile(3, 200, 0x203040));
    folder.Write("a_broken.bmp", "no picture");
    folder.Write("a_note.txt", "no picture");
    folder.Write("B_other.bmp", BitmapFile(2, 2, 0));
    folder.Write("A_Zinc.BMP", BitmapFile(20, 20, 0x808080));
    const std::string base = marine.substr(0, marine.rfind('\\'));
    const auto press = [](int id) { return [id](HWND dialog, HWND) { Command(dialog, id); }; };

    CHECK(ChoosePicture(base, "A_", 2, press(IDOK)) == marine);
    CHECK(ChoosePicture(base, "A_", 2, press(IDCANCEL)).empty());
    CHECK(ChoosePicture(base, "none", 0, press(IDCANCEL)).empty());
    CHECK(ChoosePicture("Controls", "KNOB_amber", 1, press(IDOK)) == ".\\Controls\\KNOB_amber.bmp");
    const std::string chosen = ChoosePicture(base, "a_", 2, [](HWND, HWND list) {
        CHECK(ListView_GetItemCount(list) == 2);
        Press(list, VK_RIGHT);
        Press(list, VK_RETURN);
    });
    CHECK(chosen == base + "\\A_Zinc.BMP");
    CHECK(a_BitmapCount() == 0);
    char name[MAX_PATH];
    CHECK(a_PopupBitmapView(nullptr, nullptr, "A_", name) == 0);
}

TEST_CASE("a dropped picture becomes the bitmap of a control that has one") {
    const TestPanel panel;
    const TestFolder folder;
    const std::string outside = folder.Write("face.bmp", BitmapFile(12, 12, 0x112233));
    const std::string inside = ProgramFolder() + "controls\\KNOB_blue.bmp";
    HOSTINFO* knob = &ObjectOf(panel.Create("KNOB", "Knob"));
    const struct {
        HOSTINFO* object;
        std::string file;
        int taken;
        std::string bitmap; // afterwards
    } rows[] = {{knob, outside, 1, outside},
                {knob, inside, 1, ".\\controls\\KNOB_blue.bmp"},
                {knob, outside + "x", 0, ".\\controls\\KNOB_blue.bmp"},
                {nullptr, outside, 0, ".\\controls\\KNOB_blue.bmp"},
                {panel.Root(), outside, 0, ".\\controls\\KNOB_blue.bmp"}};
    for (const auto& row : rows) {
        CHECK(a_DropBitmap(row.object, MakeDrop(row.file + '\0' + "second.bmp" + '\0')) == row.taken);
        CHECK(Text(knob->window, "bitmap") == row.bitmap);
    }
    CHECK(a_DropBitmap(knob, nullptr) == 0);
}

TEST_CASE("dialogs leave nothing behind") {
    const Scene scene;
    const TestFolder folder;
    folder.Write("face.bmp", BitmapFile(100, 30, 0x336699));
    const auto round = [&] {
        const PropertyDialog properties(scene.Object());
        const ConnectionDialog connections(scene.Object());
        properties.Type("interval", "x");
        connections.Search("a");
        UpdateWindow(properties.window);
        UpdateWindow(connections.window);
        Pump();
        DestroyWindow(properties.window);
        DestroyWindow(connections.window);
        ChoosePicture(folder.Path(""), "", 1, [](HWND dialog, HWND) { Command(dialog, IDOK); });
    };
    for (int warmUp = 0; warmUp < 3; ++warmUp) {
        round();
    }
    const Resources before = CountResources();
    for (int i = 0; i < 20; ++i) {
        round();
    }
    CHECK(CountResources().Settled(before) == before);
}

TEST_SUITE_END();
