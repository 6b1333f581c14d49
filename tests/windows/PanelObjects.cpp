// The list of objects beside an edited panel, and what is inside of controls.

#include "Panel/editing/ObjectPane.h"
#include "Panelhost/Editing.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

TEST_SUITE_BEGIN("PanelObjects");

namespace {

struct Objects : Editing {
    Objects() : Editing(PANEL) {
        list = Below(Part("PanelObjects"), WC_LISTVIEWA);
        search = Below(Part("PanelObjects"), "Edit");
        Show();
    }

    void Show() {
        Serve();
        Command(CMD_GRID); // what was changed is shown now
        Command(CMD_GRID);
    }
    std::string Cell(int row, int column = 0) const {
        char text[128] = "";
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text;
    }
    // The names, those that are selected in brackets.
    std::string Rows() const {
        std::string rows;
        for (int row = 0; row < ListView_GetItemCount(list); ++row) {
            const std::string name = Cell(row);
            rows += rows.empty() ? "" : " ";
            rows += ListView_GetItemState(list, row, LVIS_SELECTED) != 0 ? "[" + name + "]" : name;
        }
        return rows;
    }
    int RowOf(const std::string& name) const {
        for (int row = 0; row < ListView_GetItemCount(list); ++row) {
            if (Cell(row) == name) {
                return row;
            }
        }
        FAIL("no row " << name);
        return -1;
    }
    // A point in the cell, of the screen.
    POINT At(const std::string& name, int column, bool lower = false) const {
        RECT place{};
        if (column == 0) {
            ListView_GetItemRect(list, RowOf(name), &place, LVIR_LABEL);
        } else {
            ListView_GetSubItemRect(list, RowOf(name), column, LVIR_BOUNDS, &place);
        }
        return {place.left + 4, lower ? place.bottom - 2 : place.top + 2};
    }
    void Notify(UINT code, POINT point) const {
        NMITEMACTIVATE click{};
        click.hdr = {list, IDC_OBJECT_LIST, code};
        click.ptAction = point;
        SendMessageA(Part("PanelObjects"), WM_NOTIFY, IDC_OBJECT_LIST, reinterpret_cast<LPARAM>(&click));
    }
    void SelectRows(const std::vector<std::string>& names) {
        ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
        for (const std::string& name : names) {
            ListView_SetItemState(list, RowOf(name), LVIS_SELECTED | LVIS_FOCUSED,
                                  LVIS_SELECTED | LVIS_FOCUSED);
        }
        Serve();
    }
    // Drags what is selected in the list to a point of it.
    void DragRows(POINT to) {
        const HWND pane = Part("PanelObjects");
        NMLISTVIEW begin{};
        begin.hdr = {list, IDC_OBJECT_LIST, LVN_BEGINDRAG};
        SendMessageA(pane, WM_NOTIFY, IDC_OBJECT_LIST, reinterpret_cast<LPARAM>(&begin));
        POINT before;
        GetCursorPos(&before);
        ClientToScreen(list, &to);
        SetCursorPos(to.x, to.y);
        SendMessageA(pane, WM_MOUSEMOVE, MK_LBUTTON, 0);
        SendMessageA(pane, WM_LBUTTONUP, 0, MAKELPARAM(0, 100));
        SetCursorPos(before.x, before.y);
    }

    static constexpr const char* PANEL = "size=600,400\r\n"
                                         "control=0x00000000 KNOB \"A\" 0x50010000 240,40,287,87\r\n"
                                         "A*connection=S*Part\r\n"
                                         "control=0x00000000 KNOB \"B\" 0x50010000 140,60,187,107\r\n"
                                         "control=0x00000000 MINIEDIT \"S\" 0x50000000 340,140,500,300\r\n"
                                         "S*control=0x00000000 LED \"Part\" 0x50010000 20,20,36,36\r\n"
                                         "S*control=0x00000000 LED \"Other\" 0x50010000 60,20,76,36\r\n"
                                         "control=0x00000000 BSTATIC \"C\" 0x50000000 40,50,100,90\r\n";
    HWND list = nullptr;
    HWND search = nullptr;
};

} // namespace

TEST_CASE("the list of objects and the panel select the same") {
    Objects program;
    CHECK(program.Rows() == "Panel A B S C");
    program.Click({260, 60});
    program.Click({160, 80}, MK_CONTROL);
    program.Show();
    CHECK(program.Rows() == "Panel [A] [B] S C");
    program.SelectRows({"S", "C"});
    program.Tick();
    CHECK(program.Status().starts_with("2 selected   40,50"));
    program.Notify(static_cast<UINT>(NM_DBLCLK), {}); // opens the dialog of the one with the focus
    program.Command(CMD_ENTER);                       // of two nothing is entered
    SendMessageA(FindWindowA("#32770", nullptr), WM_CLOSE, 0, 0);
    program.Click({368, 168});
    program.Command(CMD_ENTER);
    program.Click({368, 168});
    program.Show();
    CHECK(program.Rows() == "Panel A B S [Part] Other C"); // its parts are listed
    program.SelectRows({"Other"});
    CHECK(program.Rows() == "Panel A B S Part [Other] C");
    program.Key(VK_RIGHT);
    program.Check("S*control=0x00000000 LED \"Other\" 0x50010000 61,20,77,36");
    program.SelectRows({"Other", "A"}); // what has the focus says inside what
    CHECK(program.Rows() == "Panel [A] B S Part Other C");
    program.SelectRows({"Panel"});
    program.Tick();
    CHECK(program.Status().starts_with("Edit: click"));

    SetWindowTextA(program.search, "par");
    CHECK(program.Rows() == "Panel S Part");
    SetWindowTextA(program.search, "knob");
    CHECK(program.Rows() == "Panel A B");
    SetWindowTextA(program.search, "");
    CHECK(program.Rows() == "Panel A B S Part Other C");
    program.Command(CMD_EDIT_MODE);
    CHECK_FALSE(IsWindowVisible(program.list));
}

TEST_CASE("a device of the list is live or not") {
    Objects program;
    REQUIRE(ph_LoadDevices(
                program.Root(),
                program.Folder().Write("d.devices", "D*device=simulated\nD*x=float,0,1,0\n").c_str()) == 1);
    for (const bool isLive : {true, false, true}) {
        ph_SetParameter(program.Root(), "D*online", isLive ? "1" : "0");
        program.Show();
        CHECK(program.Cell(ListView_GetItemCount(program.list) - 1) ==
              (isLive ? "D   live" : "D   not live"));
    }
}

TEST_CASE("dragging in the list changes the order of saving, of Tab and on the screen") {
    Objects program;
    program.SelectRows({"C"});
    program.DragRows(program.At("A", 0));
    CHECK(program.Rows() == "Panel [C] A B S");
    CHECK(GetWindow(program.Panel(), GW_CHILD) == ph_Find(program.Root(), "C")); // in front of all
    program.SelectRows({"A", "B"});
    program.DragRows(program.At("S", 0, true));
    CHECK(program.Rows() == "Panel C S [A] [B]");
    program.DragRows(program.At("A", 0)); // where they are
    CHECK(program.Rows() == "Panel C S [A] [B]");
    program.SelectRows({"S"});
    program.Command(CMD_ENTER);
    program.Key(VK_TAB);
    program.Show();
    program.SelectRows({"Part"}); // parts stay inside
    program.DragRows(program.At("B", 0, true));
    CHECK(program.Rows() == "Panel C S Other [Part] A B");
    program.Key(VK_ESCAPE);
    program.Command(CMD_SELECT_ALL);
    program.Command(CMD_SORT_BY_POSITION);
    program.Show();
    CHECK(program.Rows() == "Panel [C] [B] [A] [S] Other Part");
    program.CheckHistory(4);
}

TEST_CASE("what is hidden or locked in the list is so until the edit mode ends, and is saved as ever") {
    Objects program;
    const HWND knob = ph_Find(program.Root(), "A");
    program.Notify(static_cast<UINT>(NM_CLICK), program.At("A", 1));
    program.Notify(static_cast<UINT>(NM_CLICK), program.At("B", 2));
    CHECK_FALSE(IsWindowVisible(knob));
    CHECK(program.Cell(program.RowOf("A"), 1).empty());
    CHECK(program.Cell(program.RowOf("B"), 2) == "\x95");
    CHECK(program.Saved() == program.start);
    program.Click({260, 60}); // nothing is there
    program.Click({160, 80});
    CHECK(program.Rows() == "Panel A B S C");
    program.Drag({0, 0}, {599, 399});
    program.Show();
    CHECK(program.Rows() == "Panel A B [S] [C]");
    program.SelectRows({"B"}); // the list reaches it, but nothing moves it
    for (const int command : {CMD_DELETE, CMD_CUT}) {
        CHECK_FALSE(program.Item(command).enabled);
    }
    program.Key(VK_RIGHT);
    CHECK(program.Saved() == program.start);
    program.Notify(static_cast<UINT>(NM_CLICK), program.At("A", 1));
    CHECK(IsWindowVisible(knob));
    CHECK(a_HideEdited(&ObjectOf(knob), true) == 1);
    program.Command(CMD_EDIT_MODE);
    CHECK(IsWindowVisible(knob));
    CHECK(a_HideEdited(&ObjectOf(knob), true) == 0); // it is not edited
    program.Command(CMD_EDIT_MODE);
    program.Click({160, 80});
    program.Show();
    CHECK(program.Rows() == "Panel A [B] S C");
}

TEST_CASE("a name is typed into the list, and what cannot be is told") {
    Objects program;
    const auto type = [&](const char* name, int key) {
        SetFocus(program.list);
        program.Type(VK_F2, "", program.list);
        const auto field = reinterpret_cast<HWND>(SendMessageA(program.list, LVM_GETEDITCONTROL, 0, 0));
        REQUIRE(field != nullptr);
        SetWindowTextA(field, (std::string("-") + name).c_str());
        SendMessageA(field, EM_SETSEL, 0, 0);
        program.Type(VK_DELETE, "", field); // a key of the text, not of the panel
        SendMessageA(field, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
        PumpAll();
    };
    program.SelectRows({"S"});
    type("Thrown away", VK_ESCAPE);
    CHECK(program.Saved() == program.start);
    type("Panel 2", VK_RETURN);
    CHECK(program.Rows() == "Panel A B [Panel 2] C");
    program.Check("A*connection=Panel 2*Part\r\n");
    {
        Answer told("Rename", IDOK);
        type("C", VK_RETURN);
        CHECK(told.Question() == "Another object has this name.");
    }
    CHECK(program.Rows() == "Panel A B [Panel 2] C");
    program.CheckHistory(1);
}

TEST_SUITE_END();
