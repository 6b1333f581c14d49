// The dialogs of the library, driven by the messages that keys, clicks and objects cause.

#include "Panelhost/Dialogs.h"
#include "Panelhost/PropertyLines.h"
#include "base/Gdi.h"
#include "tests/windows/HeldKeys.h"
#include "tests/windows/LibraryDialogs.h"
#include "tests/windows/Resources.h"

#include <map>

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

TEST_SUITE_BEGIN("dialogs");

namespace {

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

} // namespace

TEST_CASE("values are edited in place, and what is refused is kept") {
    const Scene scene;
    const PropertyDialog dialog(scene.Object());
    REQUIRE(dialog.window != nullptr);
    CHECK(TextOf(dialog.window) == "Knob - Properties");
    CHECK(dialog.Value("bitmap") == ".\\Controls\\Knob.bmp");

    // Left by a key (0: the focus goes elsewhere), then shown, perhaps refused, and the keyword edited next.
    const std::tuple<const char*, const char*, WPARAM, const char*, bool, const char*> rows[] = {
        {"interval", "300", VK_TAB, "300", false, "properties"},
        {"resolution", "2.50", 0, "2.5", false, nullptr},
        {"resolution", "x", 0, "x", true, nullptr},
        {"resolution", "y", VK_TAB, "y", true, "resolution"},
        {"resolution", "y", VK_ESCAPE, "2.5", false, nullptr},
        {"valuescopy", "1", VK_TAB, "", false, nullptr}, // the last one; an absolute knob keeps none
    };
    for (const auto& [keyword, typed, key, shown, refused, next] : rows) {
        INFO(keyword, " ", typed);
        dialog.Type(keyword, typed);
        if (key == 0) {
            SetFocus(dialog.list);
        } else {
            Press(dialog.Edit(), key);
        }
        PumpAll();
        CHECK(dialog.Value(keyword) == shown);
        CHECK(dialog.Note(keyword).empty() == !refused);
        CHECK((dialog.Edit() != nullptr) == (next != nullptr));
        if (next != nullptr) {
            CHECK(SelectedRow(dialog.list) == RowOf(dialog.list, next));
            CHECK(TextOf(dialog.Edit()) == dialog.Value(next));
        }
    }
    CHECK(Text(scene.knob, "interval") == "300");
    CHECK(Text(scene.knob, "resolution") == "2.5");
    CHECK(IsChanged(scene.knob));

    SUBCASE("closing applies, and stays once for a value that is refused") {
        dialog.Type("interval", "1k2 ms"); // as people write it
        Command(dialog.window, IDCANCEL);
        CHECK(!IsWindow(dialog.window));
        CHECK(Text(scene.knob, "interval") == "1200");
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
        for (HWND item = nullptr; (item = FindWindowExA(dialog, item, nullptr, nullptr)) != nullptr;) {
            before[GetDlgCtrlID(item)] = place(GetDlgCtrlID(item));
        }
        before.erase(0); // the grip
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
            std::size_t checked = 0;
            for (const auto& [by, ids] : growths) {
                for (const int id : ids) {
                    CAPTURE(id);
                    const RECT& old = before[id];
                    CHECK(PlaceOf(Item(dialog, id)) ==
                          a_GetRectString({old.left + times * by.left, old.top + times * by.top,
                                           old.right + times * by.right, old.bottom + times * by.bottom}));
                    ++checked;
                }
            }
            CHECK(checked == before.size());
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
    CHECK(ListView_GetColumnWidth(properties.list, 0) + ListView_GetColumnWidth(properties.list, 1) +
              ListView_GetColumnWidth(properties.list, 2) ==
          client.right);
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
    for (const auto& [message, id, brush] : {std::tuple(WM_CTLCOLORSTATIC, IDC_STATUS, BRUSH_DIALOG),
                                             {WM_CTLCOLOREDIT, IDC_SEARCH, BRUSH_FIELD},
                                             {WM_CTLCOLORSTATIC, IDC_HEADER_AVAILABLE, BRUSH_HEADER},
                                             {WM_CTLCOLORSTATIC, IDC_HEADER_CONNECTIONS, BRUSH_HEADER}}) {
        CAPTURE(id);
        const HWND item = Item(connections.window, id);
        CHECK(SendMessageA(connections.window, message, reinterpret_cast<WPARAM>(dc),
                           reinterpret_cast<LPARAM>(item)) == reinterpret_cast<LRESULT>(a_GetObject(brush)));
        CHECK(GetTextColor(dc) == (brush == BRUSH_HEADER ? RGB(255, 255, 255) : 0));
    }
    DeleteDC(dc);
}

TEST_CASE("dialogs leave nothing behind") {
    const Scene scene;
    const TestFolder folder;
    folder.Write("face.bmp", BitmapFile(100, 30, 0x336699));
    const std::string left = LeftBehind(20, [&] {
        const PropertyDialog properties(scene.Object());
        const ConnectionDialog connections(scene.Object());
        properties.Type("interval", "x");
        connections.Search("a");
        UpdateWindow(properties.window);
        UpdateWindow(connections.window);
        PumpAll();
        DestroyWindow(properties.window);
        DestroyWindow(connections.window);
        ChoosePicture(folder.Path(""), "", 1, [](HWND dialog, HWND) { Command(dialog, IDOK); });
    });
    CHECK(left == "");
}

TEST_SUITE_END();
