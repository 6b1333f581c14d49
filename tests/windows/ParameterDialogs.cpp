// The parameter dialogs of the controls, driven as a user would: by their fields, buttons and keys.

#include "Controls/resources/resource.h"
#include "Panelhost/Dialogs.h"
#include "tests/windows/FormPanels.h"

TEST_SUITE_BEGIN("ParameterDialogs");

namespace {

HWND OpenDialog(HWND control) {
    HWND dialog = nullptr;
    SendMessageA(control, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    return dialog;
}

void Command(HWND dialog, int id, WORD code = 0) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

std::string Field(HWND dialog, int id) {
    return TextOf(Item(dialog, id));
}

// Types a text and ends it with Enter, Escape, or by leaving the field.
void Type(HWND dialog, int id, const char* text, WORD end) {
    SetDlgItemTextA(dialog, id, text);
    Command(dialog, id, end);
}

// Chooses an entry of a combo box by its text. False when it has none.
bool Choose(HWND dialog, int id, const char* text) {
    Command(dialog, id, CBN_DROPDOWN);
    if (SendDlgItemMessageA(dialog, id, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(text)) == CB_ERR) {
        return false;
    }
    Command(dialog, id, CBN_SELCHANGE);
    DispatchCommands(dialog);
    return true;
}

} // namespace

TEST_CASE("every field sends its line, shows what became of it, and refuses what cannot be") {
    // Class, field, what is typed, the keyword, its value afterwards, and what is refused (null: nothing).
    using Row = std::tuple<const char*, int, const char*, const char*, const char*, const char*>;
    const Row rows[] = {
        {"KNOB", IDC_MAXIMUM, "40", "properties", "0,40,0", "4x"},
        {"KNOB", IDC_MINIMUM, "-40", "properties", "-40,100,0", "1.5"},
        {"KNOB", IDC_RESOLUTION, "2.5", "resolution", "2.5", "nan"},
        {"FADER", IDC_RESOLUTION, "0.5", "resolution", "0.5", "a half"},
        {"METER", IDC_MAXIMUM, "6", "properties", "0,6", "six"},
        {"BBUTTON", IDC_CAPTION, "Talk, back", "caption", "Talk, back", nullptr},
        {"BBUTTON", IDC_PERIOD, "250", "captureperiod", "250", "soon"},
        {"BBUTTON", IDC_PRESSED_COLOUR, "0x000000ff", "textcolorwhenpressed", "0x000000ff", "red"},
        {"BBUTTON", IDC_FONT, "tahoma,10,bold", "font", "tahoma,10,bold", "tahoma"},
        {"LED", IDC_ON_VALUE, "-6.5", "onthreshold", "-6.5", "red"},
        {"LED", IDC_FRAMES, "4", "frames", "4", "1"},
        {"BSTATIC", IDC_CAPTION, "Gain, dB", "caption", "Gain, dB", nullptr},
        {"BSTATIC", IDC_FORMAT, "%.2f dB", "fmt", "%.2f dB", "%d"},
        {"BEDIT", IDC_LIMITS, "-80,18", "limits", "-80,18", "18,-80"},
        {"BEDIT", IDC_TEXT_COLOUR, "0x00112233", "textcolor", "0x00112233", "0x1000000"},
        {"BTRISTATEBUTTON", IDC_CONFIRM_RELEASED, "Off?", "confirmwhenreleased", "Off?", nullptr},
        {"EQ", IDC_INTERVAL, "250", "interval", "250", "-1"},
        {"EQ", IDC_EQ_VALUES, "1,Loshelv,12 dB,100 Hz,3 dB,1", "properties", "1,Loshelv,12 dB,100 Hz,3 dB,1",
         "x"},
        {"EQ", IDC_FOCUS_COLOUR, "0x000000ff", "focuscolor", "0x000000ff", "green"},
        {"XOVER", IDC_CONFIGURATION, "TwoWayHigh", "config", "TwoWayHigh", "..\\Demo"},
        {"XOVER", IDC_GAIN_FUNCTION, "XO1*gain", "function1", "XO1*gain", nullptr},
        {"XOVER", IDC_POLARITY_FUNCTION, "XO1*polarity", "function2", "XO1*polarity", nullptr},
    };
    for (const auto& [className, id, typed, keyword, value, refused] : rows) {
        CAPTURE(std::string(className));
        CAPTURE(std::string(typed));
        const TestPanel panel;
        const HWND control = panel.Create(className, "Control");
        const HWND dialog = OpenDialog(control);
        REQUIRE(dialog != nullptr);
        const std::string before = Text(control, keyword);

        Type(dialog, id, typed, EDIT_ESCAPE);
        CHECK(Text(control, keyword) == before);
        if (refused != nullptr) {
            const std::string shown = Field(dialog, id);
            Type(dialog, id, refused, EDIT_ENTER);
            CHECK(Text(control, keyword) == before);
            CHECK(Field(dialog, id) == shown);
            CHECK(Field(dialog, IDC_DIALOG_STATUS).find(refused) != std::string::npos);
            CHECK_FALSE(IsChanged(control));
        }
        Command(dialog, id, EDIT_LEFT); // nothing was typed
        CHECK_FALSE(IsChanged(control));
        Type(dialog, id, typed, refused == nullptr ? EDIT_LEFT : EDIT_ENTER);
        CHECK(Text(control, keyword) == value);
        CHECK(Field(dialog, IDC_DIALOG_STATUS).empty());
        CHECK(IsChanged(control));
        PumpAll(); // the control asks the dialog to read it again
        CHECK(Field(dialog, id) == typed);
        Command(dialog, IDC_CLOSE_DIALOG);
        CHECK(ObjectOf(control).dialog == nullptr);
    }
}

TEST_CASE("style and combination are chosen") {
    const TestPanel panel;
    const std::tuple<const char*, int, const char*, const char*> rows[] = {
        {"EQ", IDC_EQ_DATATYPE, "datatype", "channeleq"},
        {"EQ", IDC_EQ_BANDWIDTH, "bw", "bw"},
        {"MIXER", IDC_MODE, "mode", "output"},
        {"MIXER", IDC_STEREO, "stereo", "yes"},
        {"METER", IDC_COMBINE, "combine", "avg"},
        {"BSTATIC", IDC_ALIGNMENT, "alignment", "right"},
        {"BSTATIC", IDC_DATATYPE, "datatype", "f"},
        {"BEDIT", IDC_READ_ONLY, "readonly", "1"}};
    for (const auto& [className, list, keyword, value] : rows) {
        CAPTURE(list);
        const HWND control = panel.Create(className, "Control");
        CHECK(Choose(OpenDialog(control), list, value));
        CHECK(Text(control, keyword) == value);
    }
    const HWND knob = panel.Create("KNOB", "Knob");
    const HWND dialog = OpenDialog(knob);
    Command(dialog, IDC_RELATIVE, BN_CLICKED);
    CHECK(Text(knob, "relative") == "1");
    PumpAll();
    CHECK(IsDlgButtonChecked(dialog, IDC_ABSOLUTE) == BST_UNCHECKED);
    CHECK(IsDlgButtonChecked(dialog, IDC_RELATIVE) == BST_CHECKED);
}

TEST_CASE(
    "one dialog a control, known to the panel, with a selector that lists what has one and changes to it") {
    const TestPanel panel;
    const HWND first = panel.Create("KNOB", "First");
    const HWND second = panel.Create("KNOB", "Second");
    const HWND meter = panel.Create("METER", "Meter");
    HWND dialog = OpenDialog(first);
    CHECK(OpenDialog(first) == dialog);
    CHECK(Text(panel.Window(), "parameterdlg") == "First");
    Command(dialog, IDC_OBJECT_SELECTOR, CBN_DROPDOWN);
    CHECK(SendDlgItemMessageA(dialog, IDC_OBJECT_SELECTOR, CB_GETCOUNT, 0, 0) == 3);

    CHECK(Choose(dialog, IDC_OBJECT_SELECTOR, "Second"));
    CHECK(ObjectOf(first).dialog == nullptr);
    CHECK(ObjectOf(second).dialog == dialog);
    Type(dialog, IDC_RESOLUTION, "8", EDIT_ENTER);
    CHECK(Text(first, "resolution") == "0.5");
    CHECK(Text(second, "resolution") == "8");

    CHECK(Choose(dialog, IDC_OBJECT_SELECTOR, "Meter")); // of another shape
    CHECK_FALSE(IsWindow(dialog));
    dialog = ObjectOf(meter).dialog;
    CHECK(IsWindow(dialog));
    CHECK(Field(dialog, IDC_OBJECT_SELECTOR) == "Meter");
    DestroyWindow(meter);
    CHECK_FALSE(IsWindow(dialog));
    CHECK(Text(panel.Window(), "parameterdlg").empty());
}

TEST_CASE("the click template is filled in from lists, and the question is shown as it will be") {
    const TestPanel panel;
    const HWND button = panel.Create("BBUTTON", "Button");
    panel.Create("KNOB", "Knob 1");
    const HWND dialog = OpenDialog(button);
    CHECK(Choose(dialog, IDC_TEMPLATE_OBJECT, "Knob 1"));
    CHECK(Choose(dialog, IDC_TEMPLATE_KEYWORD, "resolution"));
    Command(dialog, IDC_TEMPLATE_INSERT);
    CHECK(Field(dialog, IDC_CLICK) == "Knob 1*resolution=");
    Type(dialog, IDC_CLICK, "Knob 1*resolution=2", EDIT_ENTER);
    CHECK(Text(button, "click") == "Knob 1*resolution=2");

    Type(dialog, IDC_CONFIRM, "One\\nTwo", EDIT_ENTER);
    PumpAll();
    CHECK(Field(dialog, IDC_CONFIRM_PREVIEW) == "One\nTwo");
}

TEST_CASE("a control is deleted after a question") {
    const TestPanel panel;
    const HWND knob = panel.Create("KNOB", "Knob");
    const HWND dialog = OpenDialog(knob);
    for (const int answer : {IDNO, IDYES}) {
        const Answer asked("Delete", answer);
        Command(dialog, IDC_DELETE_CONTROL);
        CHECK((IsWindow(knob) != FALSE) == (answer == IDNO));
        CHECK((IsWindow(dialog) != FALSE) == (answer == IDNO));
    }
}

namespace {

constexpr const char* COLOUR_CHOOSER = "Color"; // titles
constexpr const char* FONT_CHOOSER = "Font";
constexpr int RED_FIELD = 706; // fields of the system's choosers
constexpr int FONT_SIZE_LIST = 0x472;

// Picks an entry of a list in the chooser.
void Pick(const char* chooser, int id, const char* text) {
    const HWND box = FindWindowA("#32770", chooser);
    const HWND list = GetDlgItem(box, id);
    SendMessageA(list, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
    SendMessageA(box, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

} // namespace

TEST_CASE("colours and fonts are chosen with the system's choosers, which begin with what is there") {
    const std::tuple<const char*, int, const char*> rows[] = {
        {"BBUTTON", IDC_CHOOSE_PRESSED_COLOUR, "textcolorwhenpressed"},
        {"BTRISTATEBUTTON", IDC_CHOOSE_RELEASED_COLOUR, "textcolorwhenreleased"},
        {"BSTATIC", IDC_CHOOSE_BACKGROUND, "backgroundcolor"},
        {"BEDIT", IDC_CHOOSE_TEXT_COLOUR, "textcolor"}};
    for (const auto& [className, chooserButton, keyword] : rows) {
        CAPTURE(std::string(className));
        const TestPanel panel;
        const HWND control = panel.Create(className, "Control");
        const HWND dialog = OpenDialog(control);
        CHECK(Load(control, std::string(keyword) + "=0x00010203") == 1);
        CHECK(Load(control, "font=Tahoma,8,bold") == 1);
        for (const int command : {IDCANCEL, IDOK}) {
            const auto choose = [&](const char* chooser, int button, const std::function<void()>& change) {
                Answer answer(chooser, command, change);
                Command(dialog, button);
                CHECK(answer.Question() != "(none)");
            };
            choose(COLOUR_CHOOSER, chooserButton, [] { // the other two parts stay as they are
                SetDlgItemTextA(FindWindowA("#32770", COLOUR_CHOOSER), RED_FIELD, "16");
            });
            choose(FONT_CHOOSER, IDC_CHOOSE_FONT, [] { Pick(FONT_CHOOSER, FONT_SIZE_LIST, "14"); });
            CHECK(Text(control, keyword) == (command == IDOK ? "0x00010210" : "0x00010203"));
            CHECK(Text(control, "font") == (command == IDOK ? "Tahoma,14,bold" : "Tahoma,8,bold"));
        }
    }
}

TEST_CASE("a panel is closed while a chooser is open") {
    for (const char* chooser : {COLOUR_CHOOSER, FONT_CHOOSER}) {
        CAPTURE(std::string(chooser));
        for (const bool wholePanel : {false, true}) {
            TestPanel panel;
            const HWND control = panel.Create("BBUTTON", "Button");
            const HWND dialog = OpenDialog(control);
            // Closed by its own thread, as by a timer or a host.
            Answer answer(chooser, IDOK,
                          [&] { SendMessageA(wholePanel ? panel.Window() : control, WM_CLOSE, 0, 0); });
            Command(dialog, chooser == COLOUR_CHOOSER ? IDC_CHOOSE_PRESSED_COLOUR : IDC_CHOOSE_FONT);
            CHECK(answer.Question() != "(none)");
            CHECK_FALSE(IsWindow(dialog));
            CHECK_FALSE(IsWindow(control));
            CHECK(FindWindowA("#32770", chooser) == nullptr);
        }
    }
}

TEST_SUITE_END();
