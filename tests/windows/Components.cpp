// Where the components of a panel that is edited come from: palette and clipboard.

#include "Panel/editing/Catalogue.h"
#include "Panelhost/Editing.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

TEST_SUITE_BEGIN("Components");

TEST_CASE("all classes are made from the palette, each as large as it should be") {
    Editing program("size=600,400\r\n");
    const HWND tree = program.Part(WC_TREEVIEWA);
    const auto next = [&](WPARAM which, LPARAM item) {
        return SendMessageA(tree, TVM_GETNEXTITEM, which, item);
    };
    int groups = 0;
    int entries = 0;
    int tabStops = 0;
    for (LPARAM item = next(TVGN_ROOT, 0); item != 0; item = next(TVGN_NEXTVISIBLE, item)) {
        const std::string before = program.Saved();
        SendMessageA(tree, TVM_SELECTITEM, TVGN_CARET, item);
        SendMessageA(tree, WM_KEYDOWN, VK_RETURN, 0); // nothing happens at the name of a group
        char text[64] = "";
        TVITEMA entry{};
        entry.mask = TVIF_TEXT | TVIF_IMAGE;
        entry.hItem = reinterpret_cast<HTREEITEM>(item);
        entry.pszText = text;
        entry.cchTextMax = sizeof text;
        SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&entry));
        const std::string name = text;
        CAPTURE(name);
        if (next(TVGN_PARENT, item) == 0) {
            CHECK(entry.iImage == groups++);
            CHECK(program.Saved() == before);
            continue;
        }
        CHECK(entry.iImage == CATALOGUE_GROUPS + entries++);
        const HWND made = ph_Find(program.Root(), (name + " 1").c_str());
        REQUIRE(made != nullptr);
        const RECT place = ObjectOf(made).rectangle;
        CHECK((place.right >= place.left + 8 && place.bottom >= place.top + 8));
        CHECK((place.left % 8 == 0 && place.right <= 600 && place.bottom <= 400));
        tabStops += (GetWindowLongA(made, GWL_STYLE) & WS_TABSTOP) != 0 ? 1 : 0;
        program.Command(CMD_GRID);
        CHECK(program.Item(CMD_UNDO).text == "&Undo New " + name + "\tCtrl+Z");
        // The knob comes with its caption and a field for its value.
        CHECK(Contains(program.Status(), name == "Knob" ? "Group of 3" : name + " 1   "));
    }
    const std::string saved = program.Saved();
    for (const auto& row : EXPECTED_CLASSES) {
        CAPTURE(row.name);
        CHECK(Contains(saved, std::string(" ") + row.name + " \""));
    }
    CHECK(groups == CATALOGUE_GROUPS);
    CHECK(entries == 45);
    CHECK(tabStops == 27); // not what shows only, and what is not there while the panel is operated
    program.CheckHistory(45);
}

TEST_CASE("a knob comes with its caption and a field for its value, which one undo takes back") {
    for (const auto& [lines, face, colour] :
         {std::tuple("", 47, false), {"artscale=150\r\nstyle=dark\r\n", 71, true}}) {
        Editing program(std::string("size=600,400\r\n") + lines);
        const HWND tree = program.Part(WC_TREEVIEWA);
        for (HTREEITEM item = TreeView_GetChild(tree, TreeView_GetRoot(tree)); item != nullptr;
             item = TreeView_GetNextSibling(tree, item)) {
            char text[64] = "";
            TVITEMA entry{};
            entry.mask = TVIF_TEXT;
            entry.hItem = item;
            entry.pszText = text;
            entry.cchTextMax = sizeof text;
            SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&entry));
            if (std::string(text) == "Knob") {
                TreeView_SelectItem(tree, item);
            }
        }
        for (const char* number : {"1", "2"}) {
            SendMessageA(tree, WM_KEYDOWN, VK_RETURN, 0);
            const auto find = [&](const char* name) {
                return ph_Find(program.Root(), (std::string(name) + " " + number).c_str());
            };
            const HWND knob = find("Knob");
            const HWND caption = find("Knob caption");
            const HWND field = find("Knob value");
            REQUIRE((knob != nullptr && caption != nullptr && field != nullptr));
            const RECT place = ObjectOf(knob).rectangle;
            CHECK(place.right - place.left == face);
            CHECK(ObjectOf(caption).rectangle.bottom == place.top);
            CHECK(ObjectOf(field).rectangle.top == place.bottom + 1);
            CHECK(Contains(program.Saved(),
                           std::string("Knob value ") + number + "*connection=Knob " + number + "\r\n"));
            CHECK((Text(caption, "textcolor") == "0x00c0b4aa") == colour);
            SetValue(field, 12.5F);
            CHECK(Value(knob) == 12.5F);
        }
        CHECK(program.UndoAll() == 2);
        CHECK(ph_Find(program.Root(), "Knob value 1") == nullptr);
    }
}

TEST_CASE("an entry is dragged from the palette onto the panel, or nowhere") {
    Editing program("size=600,400\r\ncontrol=0x00000000 KNOB \"B\" 0x50010000 301,300,348,347\r\n");
    const HWND tree = program.Part(WC_TREEVIEWA);
    const HWND palette = GetParent(tree);
    const auto move = [&](POINT point) {
        ClientToScreen(program.Panel(), &point);
        SetCursorPos(point.x, point.y);
        SendMessageA(palette, WM_MOUSEMOVE, MK_LBUTTON, 0);
    };
    NMTREEVIEWA drag{};
    drag.hdr = {tree, 103, static_cast<UINT>(TVN_BEGINDRAGA)};
    const auto start = [&](HTREEITEM item) {
        drag.itemNew.hItem = item;
        SendMessageA(palette, WM_NOTIFY, 103, reinterpret_cast<LPARAM>(&drag));
        return GetCapture() == palette;
    };
    const HTREEITEM group = TreeView_GetRoot(tree);
    const HTREEITEM fader = TreeView_GetNextSibling(tree, TreeView_GetChild(tree, group));
    CHECK_FALSE(start(group));
    constexpr const char* OUTLINE = "104,255,134,256 104,56,105,256 104,56,134,57 133,56,134,256";
    const std::tuple<POINT, UINT, WPARAM, bool, bool> rows[] = {
        {{303, 53}, WM_LBUTTONUP, 0, true, true}, // near the edge of the knob, which has a guide then
        {{101, 53}, WM_LBUTTONUP, 0, true, true},    {{-60, 53}, WM_LBUTTONUP, 0, false, false},
        {{101, 53}, WM_RBUTTONDOWN, 0, true, false}, {{101, 53}, WM_KEYDOWN, VK_ESCAPE, true, false},
        {{101, 53}, WM_CANCELMODE, 0, true, false},  {{101, 53}, WM_CAPTURECHANGED, 0, true, false}};
    for (const auto& [point, end, key, possible, made] : rows) {
        CAPTURE(end);
        CHECK(start(fader));
        move(point);
        const bool isNear = point.x == 303;
        CHECK(program.Lines() ==
              (!possible ? ""
               : isNear  ? "301,255,331,256 301,56,302,256 301,56,302,347 301,56,331,57 330,56,331,256"
                         : OUTLINE));
        CHECK(GetCursor() == LoadCursorA(nullptr, possible ? IDC_CROSS : IDC_NO));
        SendMessageA(palette, end, key, 0);
        CHECK(GetCapture() == nullptr);
        CHECK(GetFocus() == (made ? program.Panel() : tree));
        CHECK(program.Lines().empty());
        CHECK(Contains(program.Saved(), "\"Fader 1\"") == made);
        CHECK((!made || program.Place("Fader 1") == (isNear ? "301,56,331,256" : "104,56,134,256")));
        CHECK(program.UndoAll() == (made ? 1 : 0));
    }
}

TEST_CASE("components go from one program to another, which may have ended, and from panel to panel") {
    const PanelProgram source(EDITED_PANEL);
    Editing target("size=600,400\r\ncontrol=0x00000000 KNOB \"B\" 0x50010000 0,0,47,47\r\n");
    source.Command(CMD_EDIT_MODE);
    const std::string before = source.Saved();
    source.Command(CMD_SELECT_ALL);
    source.Command(CMD_COPY);
    CHECK(IsClipboardFormatAvailable(RegisterClipboardFormatA("OSMIR Panel Components")));
    CHECK(before.ends_with(OnClipboard()));
    source.Command(CMD_CUT);
    CHECK(source.Saved() == "size=600,400\r\n");
    source.Command(CMD_UNDO);
    CHECK(source.Saved() == before);
    CHECK(source.Close() == 0);
    target.Command(CMD_PASTE);
    for (const char* line : {"A*connection=B 2*resolution;C\r\n", "KNOB \"B 2\" 0x50010000 148,68,195,115",
                             "S*Part*connection=A\r\n", "Layered*layer=u2\r\n"}) {
        target.Check(line);
    }
    target.CheckHistory(1);
    target.Command(CMD_SELECT_ALL);
    target.Command(CMD_COPY);
    CHECK(target.Open(target.Folder().Write("other.panel", "size=600,400\r\n")));
    target.FindPanel();
    CHECK(target.Root()->mode != 0); // it goes on being edited
    target.Command(CMD_PASTE);
    CHECK(Contains(ReadBytes(target.Folder().Path("other.panel")), "size=600,400\r\n"));
    std::string pasted;
    CHECK(a_PanelText(target.Root(), 0, 9, &pasted) == 2);
    CHECK(Contains(pasted, "KNOB \"B\" 0x50010000 8,8,55,55"));
}

TEST_CASE("of damaged text on the clipboard the sound part is pasted and the rest is told") {
    Editing program;
    PutOnClipboard("noise\ncontrol=0x00000000 KNOB \"Broken\" 0x5001\nBroken*interval=7\nA*interval=9\n"
                   "control=0x00000000 NOSUCHCLASS \"No\" 0x50010000 1,2,3,4\nNo*interval=3\n"
                   "control=0x00000000 KNOB \"Good\" 0x50010000 10,300,57,347\nGood*interval=123\n");
    program.Command(CMD_PASTE);
    const std::string saved = program.Saved();
    CHECK(Contains(saved, "Good*interval=123\r\n"));
    CHECK_FALSE(Contains(saved, "Broken"));
    CHECK_FALSE(Contains(saved, "A*interval=9"));
    for (const char* line : {"noise", "Broken*interval=7", "A*interval=9", "NOSUCHCLASS"}) {
        CHECK(Contains(program.Trace(), line));
    }
    program.CheckHistory(1);
    PutOnClipboard("nothing of use");
    program.Command(CMD_PASTE);
    CHECK(program.Saved() == program.start);
}

TEST_SUITE_END();
