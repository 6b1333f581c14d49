#pragma once

#include "tests/windows/PanelProgram.h"

// A panel with knobs that overlap nothing, a text, a control with a part, one on a layer and a drop-down
// list.
constexpr const char* EDITED_PANEL = "size=600,400\r\n"
                                     "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\n"
                                     "A*connection=B*resolution;C\r\n"
                                     "control=0x00000000 KNOB \"B\" 0x50010000 140,60,187,107\r\n"
                                     "control=0x00000000 BSTATIC \"C\" 0x50000000 250,50,350,90\r\n"
                                     "C*connection=A\r\n"
                                     "control=0x00000000 MINIEDIT \"S\" 0x50000000 340,140,500,300\r\n"
                                     "S*control=0x00000000 LED \"Part\" 0x50010000 20,20,36,36\r\n"
                                     "S*Part*connection=A\r\n"
                                     "control=0x00000000 LED \"Layered\" 0x50010000 20,300,36,316\r\n"
                                     "Layered*layer=u2\r\n"
                                     "control=0x00000000 BCOMBOBOX \"Combo\" 0x50010003 440,340,560,388\r\n";

// A program that edits a panel.
struct Editing : PanelHere {
    explicit Editing(const std::string& contents = EDITED_PANEL) : PanelHere(contents) {
        Command(CMD_EDIT_MODE);
        start = Saved();
    }
    // It goes to both ends of its history.
    void CheckHistory(int steps) const {
        const std::string end = Saved();
        CHECK(UndoAll() == steps);
        CHECK(Saved() == start);
        CHECK(RedoAll() == steps);
        CHECK(Saved() == end);
        UndoAll();
        CHECK(Saved() == start);
    }
    void Check(const char* line) const { CHECK(Contains(Saved(), line)); }
    // Its rectangle, as it is saved.
    std::string Place(const std::string& name) const {
        const std::string saved = Saved();
        const std::size_t begin = saved.find('x', saved.find("\"" + name + "\"")) + 10;
        return saved.substr(begin, saved.find('\r', begin) - begin);
    }
    // The lines over the panel that can be seen, in a fixed order.
    std::string Lines() const;

    std::string start;
};
