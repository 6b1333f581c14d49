// The property pane of Panel.exe: what it shows of what is selected, and what is set by it.

#include "Panelhost/TypedValues.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/ListRows.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

#include <functional>
#include <tuple>

TEST_SUITE_BEGIN("PanelProperties");

namespace {

// Controls of three classes: two knobs that differ, a static text, one with a switch and words.
const std::string PANEL = "size=600,400\r\n"
                          "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\n"
                          "A*resolution=2\r\n"
                          "control=0x00000000 KNOB \"B\" 0x50010000 140,60,187,107\r\n"
                          "control=0x00000000 BEDIT \"C\" 0x50010000 250,50,350,70\r\n"
                          "C*limits=0,10\r\n";
const std::pair<char, POINT> PLACES[] = {{'A', {60, 60}}, {'B', {160, 80}}, {'C', {300, 60}}};

struct Pane : Editing {
    explicit Pane(const std::string& contents = PANEL)
        : Editing(contents), window(Part("PanelProperties")), list(Below(window, WC_LISTVIEWA)) {
        Folder().Write("test.devices", "AMP1*device=simulated\r\nAMP1*gain1=float,-80,18,-20,dB\r\n"
                                       "AMP1*gain2=float,-80,18,-20,dB\r\nAMP1*mute1=integer,0,1,0,\r\n");
    }
    void SelectControls(const std::string& letters) {
        Click({5, 5});
        for (const auto& [letter, place] : PLACES) {
            if (letters.find(letter) != std::string::npos) {
                Click(place, MK_CONTROL);
            }
        }
        Tick();
    }
    std::string Value(const std::string& name) const { return Cell(list, RowOf(list, name), 1); }
    std::string Note(const std::string& name) const { return Cell(list, RowOf(list, name), 2); }
    HWND Edit() const { return FindWindowExA(list, nullptr, "EDIT", nullptr); }
    HWND Choices() const { return FindWindowA("PanelChoices", nullptr); }
    std::string ChoiceTexts() const {
        const HWND box = Below(Choices(), "LISTBOX");
        std::string all;
        for (int i = 0; IsWindowVisible(Choices()) && i < SendMessageA(box, LB_GETCOUNT, 0, 0); ++i) {
            char text[128] = "";
            SendMessageA(box, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            all += (all.empty() ? "" : " ") + std::string(text);
        }
        return all;
    }
    void Begin(const std::string& name) {
        CAPTURE(name);
        REQUIRE(RowOf(list, name) >= 0);
        SetFocus(list);
        SelectRow(list, RowOf(list, name));
        ::Press(list, VK_F2);
    }
    void Enter(const std::string& text) const {
        REQUIRE(Edit() != nullptr);
        SendMessageA(Edit(), EM_SETSEL, 0, -1);
        SendMessageA(Edit(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    }
    // What the row shows then.
    std::string Set(const std::string& name, const std::string& text) {
        Begin(name);
        Enter(text);
        ::Press(Edit(), VK_RETURN);
        return Value(name);
    }
    std::string UndoLabel() const {
        const std::string text = Item(CMD_UNDO).text;
        return text.substr(0, text.find('\t'));
    }
    // All names, "[...]" around headings.
    std::string Names() const {
        std::string all;
        for (int row = 0; row < SendMessageA(list, LVM_GETITEMCOUNT, 0, 0); ++row) {
            const std::string name = Cell(list, row, 0);
            all += (all.empty() ? "" : " ") + (Cell(list, row, 2).empty() ? "[" + name + "]" : name);
        }
        return all;
    }

    HWND window;
    HWND list;
};

} // namespace

TEST_CASE("numbers, words and colours are read as people type them") {
    const auto about = [](KeywordKind kind, const char* unit = "", const char* words = "") {
        KEYWORDINFO info;
        info.kind = kind;
        info.unit = unit;
        info.words = words;
        info.hasLimits = kind == KeywordKind::Integer;
        info.minimum = -10;
        info.maximum = 2000000000;
        return info;
    };
    const KEYWORDINFO whole = about(KeywordKind::Integer, "ms");
    const KEYWORDINFO number = about(KeywordKind::Number);
    const std::tuple<KEYWORDINFO, const char*, const char*, const char*> rows[] = {
        {whole, "250 ms", "250", ""},
        {whole, "1k2", "1200", ""},
        {whole, " 123456789", "123456789", ""}, // all digits
        {whole, "7,5", "", "is not a whole number"},
        {whole, "5 s", "", "is not a whole number"},
        {whole, "", "", "is not a whole number"},
        {whole, "-11", "-11", "is less than -10"},
        {whole, "3e9", "", "is not a whole number"},
        {number, "-20 dB", "-20", ""},
        {number, "-7,5", "-7.5", ""},
        {number, "2 kHz", "2000", ""},
        {number, "1 ms", "", "is not a number"}, // which may not be the parameter's unit
        {about(KeywordKind::Words, "", "no,yes"), " YES", "yes", ""},
        {about(KeywordKind::Words, "", "no,yes"), "maybe", "maybe", ""}, // the control knows
        {about(KeywordKind::Colour), "#FF8000", "0x000080ff", ""},
        {about(KeywordKind::Colour), "0x00ff0000", "0x00ff0000", ""},
        {about(KeywordKind::Colour), "red", "", "is not a colour (0x00bbggrr)"},
    };
    for (const auto& [info, typed, value, objection] : rows) {
        CAPTURE(std::string(typed));
        const TYPEDVALUE read = a_ReadTyped("x", info, typed);
        CHECK(read.objection == objection);
        CHECK(read.value == value);
        if (info.kind == KeywordKind::Number) {
            CHECK(a_ReadTyped("x", info, typed, true).objection == "is not a number");
        }
    }
}

TEST_CASE("all properties of all that is selected, in groups") {
    Pane pane;
    CHECK(pane.Names().starts_with("[Behaviour] bandwidth devices layer "));
    CHECK(pane.Names().ends_with(" size terminal title [Look] artscale background ground style"));
    CHECK_FALSE(Contains(pane.Names(), " lock ")); // which is secret
    CHECK(pane.Value("size") == "600,400");
    CHECK(TextOf(pane.window) == "Panel");
    pane.SelectControls("A");
    CHECK(TextOf(pane.window) == "A");
    CHECK(pane.Names().starts_with("[Control] name class [Place] left top width height layer [Behaviour]"));
    CHECK(Contains(pane.Names(), " resolution "));
    CHECK(Contains(pane.Names(), " [Look] bitmap"));
    CHECK(Contains(pane.Names(), " [Bindings] connection function interval"));
    CHECK(pane.Value("class") == "KNOB");
    CHECK(pane.Value("top") == "40");
    CHECK(pane.Value("resolution") == "2");
    pane.SelectControls("AB");
    CHECK(TextOf(pane.window) == "2 controls");
    CHECK(pane.Value("class") == "KNOB");
    CHECK(pane.Value("resolution") == "(different)");
    CHECK(pane.Value("width") == "47");
    pane.SelectControls("ABC"); // with what some of them have
    CHECK(pane.Value("width") == "(different)");
    CHECK(pane.Value("limits") == "0,10");
    CHECK(pane.Note("limits").ends_with(" Of 1 of the controls."));
    CHECK(pane.Note("onopen").empty());
    // It follows what others change.
    Load(ph_Find(pane.Root(), "C"), "limits=0,20");
    CHECK(WaitFor([&] {
        pane.Tick();
        return pane.Value("limits") == "0,20";
    }));
    pane.Press({60, 60});
    pane.MoveTo({100, 90});
    CHECK(WaitFor([&] {
        pane.Tick();
        return pane.Value("top") != "(different)" || pane.Value("left") == "(different)";
    }));
    pane.Key(VK_ESCAPE);
    pane.Release({100, 90});
}

TEST_CASE("each change is one step, and what is refused stays as it was typed") {
    Pane pane;
    const std::tuple<const char*, const char*, const char*, const char*, const char*, const char*> rows[] = {
        // selected, row, typed, undone by, saved, why not
        {"", "title", "Hall", "&Undo Change of title", "\r\ntitle=Hall\r\n", ""},
        {"", "size", "0,0", "", "size=600,400", "\"0,0\" is not possible here. It is still 600,400."},
        {"A", "resolution", "0,5 dB", "&Undo Change of resolution", "A*resolution=0.5\r\n", ""},
        {"AB", "resolution", "7", "&Undo Change of resolution", "B*resolution=7\r\n", ""},
        {"AB", "resolution", "x", "", "A*resolution=2\r\n", "\"x\" is not a number. It is still different."},
        {"ABC", "interval", "2k ms", "&Undo Change of interval", "C*interval=2000\r\n", ""},
        {"C", "interval", "-1", "", "C*interval=1000\r\n", "\"-1\" is less than 0. It is still 1000."},
        {"A", "name", "Main", "&Undo Rename", "Main*resolution=2\r\n", ""},
        {"A", "name", "B", "", "A*resolution=2\r\n",
         "\"B\" cannot be the name: another object has this name. It is still A."},
        {"AB", "left", "60 px", "&Undo Move", "60,60,107,107", ""},
        {"A", "top", "0", "&Undo Move", "40,0,87,47", ""},
        {"C", "width", "120", "&Undo Resize", "250,50,370,70", ""},
        {"C", "height", "0", "", "250,50,350,70", "\"0\" is less than 1. It is still 20."},
        {"C", "alignment", "CENTER", "&Undo Change of alignment", "C*alignment=center\r\n", ""},
        {"C", "alignment", "up", "", "C*alignment=left\r\n",
         "\"up\" is none of left,center,right. It is still left."},
        {"C", "textcolor", "#ff0000", "&Undo Change of textcolor", "C*textcolor=0x000000ff\r\n", ""},
        {"C", "layer", "u3", "&Undo Change of layer", "C*layer=u3\r\n", ""},
        {"AC", "function", "AMP1*gain1;AMP1*gain2", "&Undo Change of function",
         "C*function=AMP1*gain1;AMP1*gain2\r\n", ""},
        {"A", "connection", "B*resolution", "&Undo Change of connection", "A*connection=B*resolution\r\n",
         ""},
    };
    for (const auto& [selected, row, typed, undo, saved, why] : rows) {
        CAPTURE(std::string(selected));
        CAPTURE(std::string(row));
        CAPTURE(std::string(typed));
        pane.SelectControls(selected);
        const std::string help = pane.Note(row);
        pane.Set(row, typed);
        const bool isRefused = *why != '\0';
        CHECK((pane.Edit() != nullptr) == isRefused); // to be mended
        CHECK(Contains(pane.Saved(), saved));
        if (isRefused) {
            CHECK(pane.Value(row) == typed);
            CHECK(pane.Note(row) == why);
            SetFocus(pane.list); // it stays when something else is looked at
            CHECK(pane.Edit() == nullptr);
            CHECK(pane.Value(row) == typed);
            SelectRow(pane.list, RowOf(pane.list, row));
            ::Press(pane.list, VK_ESCAPE);
            CHECK(pane.Value(row) != typed);
            CHECK(pane.Note(row) == help);
        } else {
            CHECK(pane.UndoLabel() == undo);
            pane.Command(CMD_UNDO);
        }
        CHECK(pane.Saved() == pane.start);
        CHECK(pane.UndoLabel() == "&Undo");
    }
    // All or none of them.
    Load(ph_Find(pane.Root(), "B"), "resolution=3");
    const std::string before = pane.Saved();
    pane.SelectControls("AC");
    CHECK(pane.Set("font", "nothing") == "nothing");
    CHECK(pane.Saved() == before);
}

TEST_CASE("keys lead through all properties, and every kind has its editor") {
    Pane pane;
    pane.SelectControls("C");
    pane.Type(VK_F6, "", pane.Panel());
    CHECK(GetFocus() == pane.list);
    CHECK(Cell(pane.list, SelectedRow(pane.list), 0) == "name");
    ::Press(pane.list, VK_DOWN);
    ::Press(pane.list, VK_RETURN);
    CHECK(pane.Edit() == nullptr); // a control has its class for good
    ::Press(pane.list, VK_DOWN);
    CHECK(Cell(pane.list, SelectedRow(pane.list), 0) == "left"); // no heading is stopped at
    SendMessageA(pane.list, WM_CHAR, '9', 0);
    CHECK(TextOf(pane.Edit()) == "9");
    ::Press(pane.Edit(), VK_TAB);
    CHECK(pane.Value("left") == "9");
    CHECK(Cell(pane.list, SelectedRow(pane.list), 0) == "top");
    CHECK(TextOf(pane.Edit()) == "50");
    ::Press(pane.Edit(), VK_UP); // arrows and wheel step
    SendMessageA(pane.Edit(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    CHECK(pane.Value("top") == "52");
    CHECK(pane.UndoAll() == 2); // the steps are one
    pane.Enter("bad");
    ::Press(pane.Edit(), VK_TAB);
    CHECK(TextOf(pane.Edit()) == "bad");
    ::Press(pane.Edit(), VK_ESCAPE);
    CHECK(pane.Edit() == nullptr);
    CHECK(pane.Value("top") == "50");
    // Undo is the panel's while nothing is typed, and the field's while it is.
    pane.Set("limits", "1,2");
    pane.Type('Z', "Ctrl", pane.list);
    CHECK(pane.Value("limits") == "0,10");
    pane.Begin("limits");
    pane.Enter("5,6");
    pane.Type('Z', "Ctrl", pane.Edit());
    pane.Type(VK_DELETE, "", pane.Edit());
    CHECK(ph_Find(pane.Root(), "C") != nullptr);
    ::Press(pane.Edit(), VK_ESCAPE);
    // A switch, and a list of words.
    SelectRow(pane.list, RowOf(pane.list, "readonly"));
    ::Press(pane.list, VK_SPACE);
    CHECK(pane.Value("readonly") == "1");
    CHECK(pane.Edit() == nullptr);
    pane.Begin("alignment");
    SendMessageA(pane.Edit(), WM_SYSKEYDOWN, VK_DOWN, 0x20000000);
    CHECK(pane.ChoiceTexts() == "left center right");
    ::Press(pane.Edit(), VK_DOWN);
    ::Press(pane.Edit(), VK_RETURN);
    CHECK(pane.Value("alignment") == "center");
    CHECK(pane.ChoiceTexts().empty());
    // What a device offers, by parts of its name.
    pane.Set("function", "AMP1*mute1");
    pane.Begin("function");
    SendMessageA(pane.Edit(), EM_SETSEL, 99, 99);
    SendMessageA(pane.Edit(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("; GAIN a"));
    CHECK(pane.ChoiceTexts() == "");
    CHECK(pane.Open(pane.Folder().Path("test.panel"))); // with its devices
    pane.SelectControls("C");
    pane.Begin("function");
    pane.Enter("AMP1*mute1; GAIN a");
    CHECK(pane.ChoiceTexts() == "AMP1*gain1 AMP1*gain2");
    ::Press(pane.Edit(), VK_DOWN);
    ::Press(pane.Edit(), VK_DOWN);
    ::Press(pane.Edit(), VK_RETURN);
    CHECK(TextOf(pane.Edit()) == "AMP1*mute1; AMP1*gain2");
    ::Press(pane.Edit(), VK_RETURN);
    CHECK(pane.Value("function") == "AMP1*mute1;AMP1*gain2");
    pane.Begin("connection");
    pane.Enter("b res");
    CHECK(pane.ChoiceTexts() == "B*resolution");
    ::Press(pane.Edit(), VK_ESCAPE);
    CHECK(pane.ChoiceTexts().empty());
    ::Press(pane.Edit(), VK_ESCAPE);
    ::Press(pane.list, VK_ESCAPE);
    CHECK(GetFocus() == pane.Panel());
}

TEST_CASE("it stands whatever happens to what is selected while a value is typed") {
    Pane pane;
    pane.Command(CMD_SELECT_ALL);
    pane.Command(CMD_DUPLICATE);
    pane.Begin("interval");
    pane.Enter("77");
    pane.Command(CMD_UNDO); // takes the value, and then that back
    pane.Command(CMD_UNDO);
    pane.Tick();
    CHECK(pane.Edit() == nullptr);
    CHECK(TextOf(pane.window) == "Panel");
    CHECK(pane.Saved() == pane.start);
    const std::function<void()> ends[] = {
        [&] { DestroyWindow(ph_Find(pane.Root(), "A")); },
        [&] { pane.Command(CMD_EDIT_MODE); },
        [&] { pane.Command(CMD_VIEW_PROPERTIES); },
        [&] { CHECK(pane.Open(pane.Folder().Path("test.panel"))); },
    };
    for (const auto& end : ends) {
        pane.SelectControls("AB");
        pane.Begin("interval");
        pane.Enter("bad");
        end();
        pane.Tick();
        CHECK(pane.Edit() == nullptr);
        CHECK(pane.Open(pane.Folder().Path("test.panel")));
        if (!pane.Item(CMD_EDIT_MODE).checked) {
            pane.Command(CMD_EDIT_MODE);
        }
        if (!pane.Item(CMD_VIEW_PROPERTIES).checked) {
            pane.Command(CMD_VIEW_PROPERTIES);
        }
    }
    // What is typed is saved, and asked for at the end.
    pane.SelectControls("A");
    pane.Begin("interval");
    pane.Enter("88");
    CHECK(Contains(pane.Saved(), "A*interval=88\r\n"));
    pane.Begin("interval");
    pane.Enter("99");
    Answer question("Panel", IDCANCEL);
    SendMessageA(pane.Frame(), WM_CLOSE, 0, 0);
    CHECK(question.Question() == "Save the changes to test.panel?");
    // Its width is dragged.
    const auto width = [&] {
        RECT place;
        GetClientRect(pane.window, &place);
        return place.right;
    };
    const int before = width();
    SendMessageA(pane.window, WM_LBUTTONDOWN, MK_LBUTTON, At(2, 100));
    SendMessageA(pane.window, WM_MOUSEMOVE, MK_LBUTTON, At(-38, 100));
    SendMessageA(pane.window, WM_LBUTTONUP, 0, At(-38, 100));
    CHECK(width() == before + 40);
    CHECK(GetCapture() == nullptr);
    pane.Begin("interval"); // and it goes with the program
    pane.Enter("5");
}

TEST_SUITE_END();
