// The dialogs of the library, driven by the messages that keys, clicks and objects cause.

#include "Panelhost/dialogs/resource.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <commctrl.h>
#include <functional>
#include <thread>

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
        entry.mask = TVIF_TEXT;
        entry.hItem = item;
        entry.pszText = text;
        entry.cchTextMax = sizeof text;
        TreeView_GetItem(tree, &entry);
        std::string shown = text;
        shown += "|";
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

// Waits for the picture dialog and answers it once all of its pictures are there.
std::string ChoosePicture(const std::string& folder, const char* prefix, int expected,
                          const std::function<void(HWND, HWND)>& answer) {
    const DWORD own = GetCurrentThreadId();
    std::thread answering([=] {
        HWND dialog = nullptr;
        HWND list = nullptr;
        for (int attempt = 0; attempt < 2000 && (list == nullptr || ListView_GetItemCount(list) < expected);
             ++attempt) {
            Sleep(5);
            dialog = FindWindowA("#32770", "Select a Picture");
            list = dialog != nullptr && GetWindowThreadProcessId(dialog, nullptr) == own
                       ? GetDlgItem(dialog, IDC_PICTURES)
                       : nullptr;
        }
        answer(dialog, list);
    });
    char name[MAX_PATH] = "untouched";
    const int chosen = a_PopupBitmapView(nullptr, folder.c_str(), prefix, name);
    answering.join();
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

    SUBCASE("typing opens the edit field in place of the value") {
        SelectRow(dialog.list, RowOf(dialog.list, "interval"));
        SendMessageA(dialog.list, WM_CHAR, '7', 0);
        CHECK(TextOf(dialog.Edit()) == "7");
        Press(dialog.Edit(), VK_RETURN);
        CHECK(Text(scene.knob, "interval") == "7");
    }
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

TEST_CASE("long values pass whole") {
    const TestPanel panel(TestPanel::Visible);
    const PropertyDialog dialog(*panel.Root());
    const std::string title(TEXT_SIZE - 1, 'W');
    dialog.Type("title", title);
    Press(dialog.Edit(), VK_RETURN);
    CHECK(Text(panel.Window(), "title") == title);
    CHECK(dialog.Value("title") == title);
    dialog.Type("title", title + "x"); // as by pasting
    SendMessageA(dialog.Edit(), EM_SETSEL, 0, -1);
    SendMessageA(dialog.Edit(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>((title + "x").c_str()));
    Press(dialog.Edit(), VK_RETURN);
    CHECK(Text(panel.Window(), "title") == title);
    CHECK(dialog.Note("title").starts_with("Refused: is longer than 4095 bytes"));
}

TEST_CASE("a list of bindings that is full stays as it is") {
    const Scene scene;
    const ConnectionDialog dialog(scene.Object());
    const std::string full = "AMP1*gain1;" + std::string(TEXT_SIZE - 20, 'x');
    REQUIRE(Load(scene.knob, "function=" + full) == 1);
    dialog.Search("gain2");
    Press(dialog.tree, VK_RETURN);
    CHECK(a_BuildString(scene.Object().functions) == full);
    CHECK(dialog.Status() ==
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
    dialog.Search("knob");
    CHECK(dialog.Status() == "Nothing found.");
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
    };
    const Row rows[] = {
        {"gain2", "AMP1*gain2", ""},
        {"gain1", "AMP1*gain2;AMP1*gain1", ""},
        {"gain2", "AMP1*gain2;AMP1*gain1", ""}, // twice is once
        {"other", "AMP1*gain2;AMP1*gain1", "Other"},
        {"outer inner", "AMP1*gain2;AMP1*gain1", "Other;Outer*Inner"},
    };
    for (const Row& row : rows) {
        INFO(row.search);
        dialog.Search(row.search);
        Press(dialog.tree, VK_RETURN);
        CHECK(a_BuildString(scene.Object().functions) == row.functions);
        CHECK(scene.Connections() == row.connections);
    }
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

    SelectRow(dialog.connections, 2);
    Command(dialog.window, IDC_UP);
    CHECK(scene.Connections() == "Other;Gone;Outer*Inner*resolution");
    Command(dialog.window, IDC_DOWN);
    CHECK(scene.Connections() == "Other;Outer*Inner*resolution;Gone");
    CHECK(!IsWindowEnabled(GetDlgItem(dialog.window, IDC_DOWN)));
    SelectRow(dialog.connections, 0);
    Press(dialog.connections, VK_DELETE);
    CHECK(scene.Connections() == "Outer*Inner*resolution;Gone");
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

TEST_CASE("Enter and Escape in an edit field reach its dialog") {
    static std::vector<WPARAM> received;
    received.clear();
    HWND parent = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    const auto receive =
        [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) __attribute__((stdcall))->LRESULT {
        if (message == WM_COMMAND && HIWORD(wParam) < EN_SETFOCUS) {
            received.push_back(wParam);
        }
        return DefWindowProcA(window, message, wParam, lParam);
    };
    SetWindowLongPtrA(parent, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>(receive)));
    HWND edit = CreateWindowExA(0, "EDIT", "", WS_CHILD, 0, 0, 9, 9, parent, reinterpret_cast<HMENU>(7),
                                nullptr, nullptr);
    CHECK(a_SubclassEditControl(edit) == 1);
    CHECK(a_SubclassEditControl(nullptr) == 0);
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE, VK_TAB}) {
        const bool wanted = key != VK_TAB;
        MSG message{edit, WM_KEYDOWN, key, 0, 0, {}};
        const LRESULT code = SendMessageA(edit, WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message));
        CHECK(((code & DLGC_WANTMESSAGE) != 0) == wanted);
        Press(edit, key);
    }
    CHECK(received == std::vector<WPARAM>{MAKEWPARAM(7, EDIT_ENTER), MAKEWPARAM(7, EDIT_ESCAPE)});
    DestroyWindow(parent);
}

TEST_CASE("a dropped picture becomes the bitmap of a control that has one") {
    const TestPanel panel;
    const TestFolder folder;
    const std::string outside = folder.Write("face.bmp", BitmapFile(12, 12, 0x112233));
    const std::string inside = ProgramFolder() + "controls\\KNOB_blue.bmp";
    HWND knob = panel.Create("KNOB", "Knob");
    const auto drop = [](HWND control, const std::string& first) {
        return a_DropBitmap(control == nullptr ? nullptr : &ObjectOf(control),
                            MakeDrop(first + '\0' + "second.bmp" + '\0'));
    };
    CHECK(drop(knob, outside) == 1);
    CHECK(Text(knob, "bitmap") == outside);
    CHECK(drop(knob, inside) == 1);
    CHECK(Text(knob, "bitmap") == ".\\controls\\KNOB_blue.bmp");
    CHECK(drop(knob, outside + "x") == 0);
    CHECK(Text(knob, "bitmap") == ".\\controls\\KNOB_blue.bmp");
    CHECK(drop(nullptr, outside) == 0);
    CHECK(a_DropBitmap(&ObjectOf(knob), nullptr) == 0);
    CHECK(a_DropBitmap(panel.Root(), MakeDrop(outside + '\0')) == 0);
}

TEST_CASE("dialogs leave nothing behind") {
    const Scene scene;
    const auto round = [&scene] {
        const PropertyDialog properties(scene.Object());
        const ConnectionDialog connections(scene.Object());
        properties.Type("interval", "x");
        connections.Search("a");
        UpdateWindow(properties.window);
        UpdateWindow(connections.window);
        Pump();
        DestroyWindow(properties.window);
        DestroyWindow(connections.window);
    };
    const TestFolder folder;
    const std::string picture = folder.Write("face.bmp", BitmapFile(100, 30, 0x336699));
    const auto choose = [base = picture.substr(0, picture.rfind('\\'))] {
        ChoosePicture(base, "", 1, [](HWND dialog, HWND) { Command(dialog, IDOK); });
    };
    CHECK(a_GetObject(BRUSH_FIELD) == a_GetObject(BRUSH_FIELD));
    CHECK(a_GetObject(BRUSH_DIALOG) != a_GetObject(BRUSH_HEADER));
    CHECK(a_GetObject(0) == nullptr);
    for (int warmUp = 0; warmUp < 3; ++warmUp) {
        round();
        choose();
    }
    const Resources before = CountResources();
    for (int i = 0; i < 50; ++i) {
        round();
    }
    for (int i = 0; i < 10; ++i) {
        choose();
    }
    CHECK(CountResources().Settled(before) == before);
}
