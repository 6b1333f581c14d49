// Groups of an edited panel: controls that are selected, and so edited, as one.

#include "tests/windows/Buttons.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

#include <tuple>

TEST_SUITE_BEGIN("PanelGroups");

namespace {

// A knob and a text that are a group.
struct Grouped : Editing {
    explicit Grouped(const std::string& contents = EDITED_PANEL) : Editing(contents) {
        Click({60, 60});
        Click({300, 75}, MK_CONTROL);
        Type('G', "Ctrl+Shift", Panel());
        Click({5, 5});
        start = Saved();
    }
    // With nothing selected before.
    void Take(POINT point) const {
        Click({5, 5});
        Click(point);
    }
    bool Has(const char* line) const { return Contains(Saved(), line); }
    std::string Selected() {
        Tick();
        return Status().substr(0, Status().find("   "));
    }
    // Since it was grouped.
    void CheckUndo(int steps) {
        const std::string end = Saved();
        for (int i = 0; i < steps; ++i) {
            Command(CMD_UNDO);
        }
        CHECK(Saved() == start);
        for (int i = 0; i < steps; ++i) {
            Command(CMD_REDO);
        }
        CHECK(Saved() == end);
        for (int i = 0; i < steps; ++i) {
            Command(CMD_UNDO);
        }
    }
};

} // namespace

TEST_CASE("a press on one selects the group, the next one reaches it alone") {
    Grouped program;
    program.Check("A*editgroup=1\r\n");
    program.Check("C*editgroup=1\r\n");
    const std::tuple<POINT, WPARAM, const char*, const char*> rows[] = {
        {{60, 60}, 0, "", "Group of 2"}, // a click and what is selected then
        {{75, 75}, 0, "", "A"},
        {{300, 75}, 0, "", "C"}, // one goes on inside
        {{160, 80}, 0, "", "B"},
        {{300, 75}, 0, "", "Group of 2"},
        {{160, 80}, MK_CONTROL, "", "3 selected"},
        {{60, 60}, MK_CONTROL, "", "B"}, // the whole group goes
        {{300, 60}, MK_SHIFT, "", "3 selected"},
        {{60, 60}, 0, "", "Group of 2"},
        {{5, 5}, 0, "", "Edit: click or drag to select, drag from the list at the left to add"},
        {{60, 60}, 0, "Alt", "A"},
        {{160, 80}, 0, "", "B"},
        {{300, 75}, MK_SHIFT, "Alt", "2 selected"},
    };
    for (const auto& [point, keys, held, selected] : rows) {
        CAPTURE(point.x);
        const HeldKeys holding(held);
        program.Click(point, keys);
        CHECK(program.Selected() == selected);
    }
    program.Drag({120, 30}, {80, 45}); // a band that touches one of them
    CHECK(program.Selected() == "Group of 2");
    // What is out of reach does not come along.
    program.Click({5, 5});
    {
        const HeldKeys holding("Alt");
        program.Click({60, 60});
    }
    program.Command(CMD_LOCK);
    program.Click({5, 5});
    program.Click({300, 75});
    CHECK(program.Selected() == "C");
}

TEST_CASE("a group moves, goes and is copied as one, and its copies are groups of their own") {
    Grouped program;
    program.Drag({60, 60}, {90, 160});
    CHECK(program.Place("A") == "72,140,119,187");
    CHECK(program.Place("C") == "282,150,382,190");
    program.CheckUndo(1);

    program.Take({60, 60});
    program.Command(CMD_DELETE);
    CHECK_FALSE(program.Has("\"A\""));
    CHECK_FALSE(program.Has("\"C\""));
    program.CheckUndo(1);

    program.Take({60, 60});
    program.Command(CMD_DUPLICATE);
    CHECK(program.Has("A 2*editgroup=2\r\n"));
    CHECK(program.Has("C 2*editgroup=2\r\n"));
    CHECK(program.Selected() == "Group of 2");
    program.CheckUndo(1);

    program.Take({60, 60});
    const Answer answer("Duplicate in a Row", IDOK, [] {
        SetDlgItemTextA(FindWindowA("#32770", "Duplicate in a Row"), IDC_ROW_COUNT, "2");
    });
    program.Command(CMD_DUPLICATE_ROW);
    for (const char* line : {"A 2*editgroup=2\r\n", "C 2*editgroup=2\r\n", "A 3*editgroup=3\r\n",
                             "C 3*editgroup=3\r\n", "A*editgroup=1\r\n"}) {
        CHECK(program.Has(line));
    }
    program.CheckUndo(1);

    program.Take({60, 60});
    program.Command(CMD_COPY);
    program.Command(CMD_UNGROUP);
    CHECK_FALSE(program.Has("editgroup"));
    program.Command(CMD_PASTE); // as they were copied, under a number that is free now
    CHECK(program.Has("C 2*editgroup=1\r\n"));
    CHECK_FALSE(program.Has("C*editgroup"));
    program.CheckUndo(2);

    program.Take({60, 60});
    program.Click({75, 75});
    program.Command(CMD_DUPLICATE); // of one alone
    CHECK(program.Has("\"A 2\""));
    CHECK_FALSE(program.Has("A 2*editgroup"));
    program.CheckUndo(1);

    // One that is taken out, and one that comes in from another group.
    program.Take({60, 60});
    program.Click({75, 75});
    program.Command(CMD_UNGROUP);
    CHECK_FALSE(program.Has("A*editgroup"));
    CHECK_FALSE(program.Item(CMD_UNGROUP).enabled);
    program.Click({300, 75});
    CHECK(program.Selected() == "C");
    program.Command(CMD_GRID);
    CHECK_FALSE(program.Item(CMD_UNGROUP).enabled); // it is alone
    program.Click({160, 80}, MK_SHIFT);
    program.Command(CMD_GROUP);
    CHECK(program.Has("B*editgroup=2\r\n"));
    CHECK(program.Has("C*editgroup=2\r\n"));
    program.CheckUndo(2);
}

TEST_CASE("what a file says of groups is kept, whatever it is") {
    const char* const words[] = {"0", "65536", "-1", "1x", "one", "1,2"};
    std::string panel = "size=600,400\r\n";
    for (const char* word : words) {
        const std::string name = std::string("L ") + word;
        panel += "control=0x00000000 LED \"" + name + "\" 0x50000000 20,20,36,36\r\n" + name +
                 "*editgroup=" + word + "\r\n";
    }
    panel += "control=0x00000000 LED \"Last\" 0x50000000 40,40,56,56\r\nLast*editgroup=65535\r\n"
             "S*editgroup=7\r\n";
    Editing program(panel);
    for (const char* word : words) {
        program.Check((std::string("L ") + word + "*editgroup=" + word + "\r\n").c_str());
    }
    program.Check("Last*editgroup=65535\r\n");
    program.Check("S*editgroup=7\r\n"); // of a control that is not there
    program.Command(CMD_SELECT_ALL);
    program.Command(CMD_GROUP);
    CHECK_FALSE(Contains(program.Saved(), "editgroup=65535"));
    program.Check("L one*editgroup=1\r\n");
    CHECK_FALSE(Contains(program.Saved(), "editgroup=one"));
    program.CheckHistory(1);
}

TEST_CASE("the list of objects selects groups, too") {
    Grouped program;
    const HWND list = program.Below(program.Part("PanelObjects"), WC_LISTVIEWA);
    const auto choose = [&](int row) {
        program.Command(CMD_GRID); // it is up to date then
        ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
        ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        program.Serve();
        CHECK(ListView_GetNextItem(list, -1, LVNI_FOCUSED) == row); // the arrow keys go on there
        return program.Selected();
    };
    CHECK(choose(1) == "Group of 2"); // A
    CHECK(choose(3) == "C");
    CHECK(choose(2) == "B");
    CHECK(choose(3) == "Group of 2");
}

TEST_SUITE_END();
