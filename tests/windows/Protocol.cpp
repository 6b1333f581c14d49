// What the controls of all classes do alike, class by class.

#include "Panelhost/PropertyLines.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/ControlClasses.h"

#include <algorithm>
#include <iterator>
#include <limits>

TEST_SUITE_BEGIN("Protocol");

namespace {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float BEYOND_ALL = std::numeric_limits<float>::infinity();

// A panel with one control of every class, named after it.
class AllControls {
public:
    explicit AllControls(TestPanel::Visibility visibility = TestPanel::Hidden) : panel(visibility) {
        for (const ExpectedClass& expected : EXPECTED_CLASSES) {
            panel.Create(expected.name, expected.name);
        }
        // So that each takes the values that the tests set.
        Load(panel.Find("FADER"), "properties=0,100,0", LOAD_FROM_FILE);
        Load(panel.Find("REVMETER"), "properties=0,100,0", LOAD_FROM_FILE);
        Load(panel.Find("SCALE"), "properties=0,100", LOAD_FROM_FILE);
        Load(panel.Find("MIXER"), "mode=output", LOAD_FROM_FILE);
        Load(panel.Find("BTRISTATEBUTTON"), "offvalue=2", LOAD_FROM_FILE);
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_POSTMESSAGE);) {
        }
    }

    template <class Check>
    void ForEach(Check check) const {
        for (const ExpectedClass& expected : EXPECTED_CLASSES) {
            INFO(std::string(expected.name));
            HWND control = panel.Find(expected.name);
            REQUIRE(control != nullptr);
            check(control);
        }
    }

    TestPanel panel;
};

// What a CWM_SAVE writes.
std::string Saved(HWND control, WPARAM saveCode) {
    const TestFolder folder;
    const std::string path = folder.Path("saved");
    HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    CHECK(SendMessageA(control, CWM_SAVE, saveCode, reinterpret_cast<LPARAM>(file)) == 0);
    CloseHandle(file);
    return ReadBytes(path);
}

std::string ClassOf(HWND control) {
    char name[64] = "";
    GetClassNameA(control, name, sizeof name);
    return name;
}

// Few controls do without, and without a function then.
bool HasValue(HWND control) {
    return ClassOf(control) != "CLOCK" && TakesConnections(ClassOf(control));
}

// Its default value is a block, which has a text form of its own and is none of a single number or word, a
// level that is never above 0, one of two states, or one that can only be read.
bool TakesNoNumber(HWND control) {
    constexpr std::string_view names[] = {"CONDITIONALLED", "CROSSOVER",    "EQ",     "IWAVEIN",
                                          "MINIDELAY",      "MINIDYNAMICS", "MINIEQ", "MINIROUTING",
                                          "MINIXOVER",      "XIPCHECK",     "XOVER"};
    return std::ranges::find(names, ClassOf(control)) != std::end(names);
}

} // namespace

TEST_CASE("a control is made with, without and with a useless parent object") {
    const TestPanel panel;
    TestPanel gone;
    HOSTINFO* const goneRoot = gone.Root();
    gone.Close();
    void* const contexts[] = {panel.Root(), nullptr, goneRoot, const_cast<TestPanel*>(&panel)};
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        for (void* context : contexts) {
            INFO(std::string(expected.name));
            CAPTURE(context);
            HWND control = CreateControl(expected.name, "Own name", panel.Window(), context);
            REQUIRE(control != nullptr);
            const HOSTINFO& object = ObjectOf(control);
            CHECK(reinterpret_cast<LONG>(&object) == GetWindowLongA(control, GWL_USERDATA));
            CHECK(a_FromWindow(control) == &object);
            CHECK(object.window == control);
            CHECK((object.kind == KIND_CONTROL && object.mode == 0));
            CHECK(object.parent == (context == panel.Root() ? panel.Root() : nullptr));
            CHECK(object.name == "Own name");
            CHECK((object.rectangle.left == 10 && object.rectangle.top == 20));
            CHECK_FALSE(IsChanged(control));
            CHECK(panel.Find("own NAME") == (context == panel.Root() ? control : nullptr));

            // Everything a host may send reaches it, bound to nothing and with nobody above it.
            for (const char* line :
                 {"function=AMP1*gain;%n*x", "connection=%n*Own name", "nosuch=1", "=", ""}) {
                Load(control, line);
            }
            CHECK_FALSE(Saved(control, SAVE_PROPERTIES).empty());
            for (const UINT message :
                 {WM_TIMER, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_RBUTTONDOWN, WM_KEYDOWN,
                  WM_SETFOCUS, WM_KILLFOCUS, WM_GETDLGCODE, WM_CAPTURECHANGED}) {
                SendMessageA(control, message, 0, 0);
            }
            { const Picture picture(control); }
            for (const UINT message : {UINT{WM_DROPFILES}, CWM_DROPFILES}) {
                CHECK(Drop(control, std::string("C:\\nosuch.xyz") + '\0', message));
                SendMessageA(control, message, 0x1230, 0x1230); // which is no drop
            }
            DestroyWindow(control);
            CHECK(a_FromWindow(control) == nullptr);
            CHECK(panel.Find("Own name") == nullptr);
        }
    }
    CHECK(a_HostinfoCount() == 1);
}

TEST_CASE("names are unique among siblings, looked up without regard to case, and free again afterwards") {
    const TestPanel panel;
    for (const auto& [text, name] : {std::pair("Gain", "Gain"),
                                     {"gain", "gain1"},
                                     {"GAIN", "GAIN2"},
                                     {"", "KNOB"},
                                     {"\xC4rger", "\xC4rger"}}) {
        CHECK(ObjectOf(panel.Create("KNOB", text)).name == name);
        CHECK(panel.Find(name) != nullptr);
    }
    CHECK(panel.Find("\xE4RGER") == panel.Find("\xC4rger"));
    CHECK(panel.Find("gAIN2") == panel.Find("GAIN2"));
    CHECK(panel.Find("Gain3") == nullptr);
    CHECK(panel.Find("") == nullptr);

    HWND strip = panel.Create("MIXER", "Strip1");
    HWND child = CreateControl("KNOB", "Gain", strip, &ObjectOf(strip));
    CHECK(ObjectOf(child).name == "Strip1*Gain");
    CHECK(panel.Find("strip1*GAIN") == child);
    CHECK(a_FindHwnd(&ObjectOf(strip), "gain") == child); // a child comes before an object of the panel

    DestroyWindow(panel.Find("gain1"));
    CHECK(ObjectOf(panel.Create("KNOB", "Gain")).name == "Gain1");
    DestroyWindow(strip);
    CHECK(panel.Find("Strip1*Gain") == nullptr);
}

TEST_CASE("save codes: header and keywords, connections, anything else") {
    const AllControls all;
    TraceCapture trace;
    all.ForEach([&](HWND control) {
        const HOSTINFO& object = ObjectOf(control);
        LoadLines(control, "function=AMP1*gain|connection=Other*value;Third");
        char header[200];
        std::snprintf(header, sizeof header, "control=0x%08x %s \"%s\" 0x%08x %ld,%ld,%ld,%ld\r\n",
                      static_cast<unsigned>(GetWindowLongA(control, GWL_EXSTYLE)), object.name.c_str(),
                      object.name.c_str(), static_cast<unsigned>(GetWindowLongA(control, GWL_STYLE)),
                      object.rectangle.left, object.rectangle.top, object.rectangle.right,
                      object.rectangle.bottom);
        const std::string saved = Saved(control, SAVE_PROPERTIES);
        CHECK(saved.starts_with(header));
        CHECK((saved.find("\r\n" + object.name + "*function=AMP1*gain\r\n") != std::string::npos) ==
              HasValue(control));
        CHECK(saved.find("*connection=Other") == std::string::npos);
        const std::string connections = TakesConnections(ClassOf(control)) ? "Other*value;Third" : "";
        CHECK(Saved(control, SAVE_CONNECTIONS) == object.name + "*connection=" + connections + "\r\n");
        trace.Clear();
        CHECK(Saved(control, 0x1F).empty());
        CHECK(trace.Count(TRACE_DEBUG, "Unknown wSaveCode 1f\n") == 1);
    });
}

TEST_CASE("property lines: applied, refused with a trace, or for the default value") {
    const AllControls all;
    TraceCapture trace;
    all.ForEach([&](HWND control) {
        if (!HasValue(control)) {
            return;
        }
        trace.Clear();
        CHECK(Load(control, "connection=X;Y") == 1);
        CHECK(ObjectOf(control).requests.size() == 2);
        CHECK(Load(control, "connection=") == 1);
        CHECK(ObjectOf(control).requests.empty());
        CHECK(SendMessageA(control, CWM_LOAD, 0, 0) == 0);
        if (TakesNoNumber(control)) {
            CHECK(Load(control, "nosuch=anything") == 0);
            CHECK(trace.CountContaining("Keyword not found: nosuch\n") == 1);
            return;
        }
        // The keyword is unknown, keywords being case-sensitive, or there is none: the text is for the
        // default value.
        for (const auto& [line, keyword, value] :
             {std::tuple("nosuch=1", "nosuch", "1"), {"INTERVAL=2", "INTERVAL", "2"}, {"1", "", "1"}}) {
            Load(control, line);
            CHECK(trace.CountContaining(std::string("Keyword not found: ") + keyword + "\n") == 1);
            CHECK(Text(control) == value);
        }
    });
}

TEST_CASE("the changed flag follows what is loaded, except by the file loader") {
    const AllControls all;
    const TestFolder folder;
    HOSTINFO* root = all.panel.Root();
    const auto save = [&] { return ph_SavePanel(root, folder.Path("saved.panel").c_str()); };
    all.ForEach([&](HWND control) {
        CHECK_FALSE(a_IsChanged(root));
        Load(control, "layer=", LOAD_FROM_FILE);
        Load(control, "interval=x");
        CHECK_FALSE(IsChanged(control));
        for (const WPARAM mode : {WPARAM{0}, WPARAM{2}}) {
            Load(control, "layer=", mode);
            CHECK(IsChanged(control));
            CHECK(a_IsChanged(root));
            CHECK(save() == 1);
            CHECK_FALSE(IsChanged(control));
        }
    });
    CHECK(Load(all.panel.Window(), "title=New", LOAD_FROM_FILE) == 1);
    CHECK(Load(all.panel.Window(), "parameterdlg=KNOB") == 1); // not saved
    CHECK_FALSE(a_IsChanged(root));
    CHECK(Load(all.panel.Window(), "title=Newer") == 1);
    CHECK(a_IsChanged(root));
}

TEST_CASE("value records: look-up, get, and everything that is refused") {
    const AllControls all;
    const TraceCapture trace;
    all.ForEach([&](HWND control) {
        if (!HasValue(control)) {
            return;
        }
        Load(control, "connection=" + ObjectOf(control).name); // a ring that has to settle
        for (const char* keyword : {"layer", "nosuch"}) {
            VALUERECORD query{COMMAND_RESOLVE, 0, DATATYPE_TEXT, 0, nullptr, keyword, 0};
            CHECK(SendMessageA(control, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&query)) == 1);
            CHECK(query.index == std::max(a_FindKeyword(ObjectOf(control).GetHostinfoTable(), keyword), 0));
        }
        if (TakesNoNumber(control)) {
            return;
        }
        REQUIRE(Load(control, " =1") == 1); // the keyword of the default value
        int number = 7;
        float real = 7.0F;
        char text[TEXT_SIZE] = "7";
        for (const int answer : {1, 0}) { // held already
            CHECK(Send(control, COMMAND_GET, DATATYPE_INTEGER, &number) == answer);
            CHECK(Send(control, COMMAND_GET, DATATYPE_FLOAT, &real) == answer);
            CHECK(Send(control, COMMAND_GET, DATATYPE_TEXT, text) == answer);
        }
        CHECK((number == 1 && real == 1.0F && text == std::string("1")));
        number = 2;
        CHECK(Send(control, COMMAND_SET, DATATYPE_INTEGER, &number) == 1);
        CHECK(Text(control) == "2");

        for (const int index : {100, 0x7FFFFFFF, -1, std::numeric_limits<int>::min()}) {
            CHECK(Send(control, COMMAND_GET, DATATYPE_TEXT, text, nullptr, index) == 0);
            CHECK(Send(control, COMMAND_SET, DATATYPE_TEXT, text, nullptr, index) == 0);
        }
        for (const int datatype : {DATATYPE_INTEGER, DATATYPE_FLOAT, DATATYPE_TEXT}) {
            CHECK(Send(control, COMMAND_GET, datatype, nullptr) == 0);
            CHECK(Send(control, COMMAND_SET, datatype, nullptr) == 0);
        }
        CHECK(SendMessageA(control, CWM_MESSAGE, 0, 0) == 0);
        for (float bad : {NOT_A_NUMBER, BEYOND_ALL, -BEYOND_ALL}) {
            CHECK(Send(control, COMMAND_SET, DATATYPE_FLOAT, &bad) == 0);
        }
        CHECK(Text(control) == "2");
    });
    CHECK(trace.CountContaining("does not settle") == 0);
}

TEST_CASE("no keyword knows another command than get and set, or a datatype that is none") {
    const AllControls all;
    const auto check = [](HWND window) {
        char text[TEXT_SIZE] = "1";
        int row = 0;
        for (const KEYWORDROW* table = ObjectOf(window).GetHostinfoTable(); table[row].keyword != nullptr;
             ++row) {
            INFO(std::string(table[row].keyword));
            for (const int command : {0, 3, 5, 100, -1}) {
                CHECK(Send(window, command, DATATYPE_TEXT, text, nullptr, row) == 0);
            }
            for (const int datatype : {0, 1, 37, 77, -11}) {
                CHECK(Send(window, COMMAND_GET, datatype, text, nullptr, row) == 0);
                CHECK(Send(window, COMMAND_SET, datatype, text, nullptr, row) == 0);
            }
        }
    };
    all.ForEach(check);
    check(all.panel.Window());
}

TEST_CASE("the preferred width is that of one frame of the picture") {
    const TestPanel panel;
    const TestFolder folder;
    const std::string wide = folder.Write("wide.bmp", BitmapFile(40, 30, 0));
    const std::string high = folder.Write("high.bmp", BitmapFile(40, 60, 0));
    const std::string three = folder.Write("three_20x30.bmp", BitmapFile(60, 30, 0));
    const struct {
        const char* className;
        std::string picture;
        int width;
    } rows[] = {{"KNOB", wide, 40},
                {"FADER", wide, 40},
                {"FADER", high, 20},
                {"METER", high, 20},
                {"BBUTTON", wide, 20},
                {"BTRISTATEBUTTON", wide, 20},
                {"LED", wide, 20},
                {"CONDITIONALLED", wide, 20},
                {"BIMAGELIST", wide, 40},
                {"CLOCK", wide, 40},
                // Of a name that ends in the size of a third; a switch has three faces, a button has two.
                {"BTRISTATEBUTTON", three, 20},
                {"BBUTTON", three, 30}};
    for (const auto& row : rows) {
        INFO(std::string(row.className));
        HWND control = panel.Create(row.className, "Control");
        REQUIRE(Load(control, "bitmap=" + row.picture) == 1);
        CHECK(SizeText(control).starts_with(std::to_string(row.width) + " x "));
        CHECK(SendMessageA(control, CWM_GETPREFERREDWIDTH, 0, 0) == row.width);
        DestroyWindow(control);
    }
}

TEST_CASE("keys and the wheel are the panel's while it is edited") {
    for (const char* className : {"KNOB", "FADER"}) {
        const TestPanel panel;
        HWND control = panel.Create(className, "Control");
        Load(control, "properties=0,100,50");
        Load(control, "resolution=1");
        SetValue(control, 50.0F);
        const auto operate = [control] {
            SendMessageA(control, WM_KEYDOWN, VK_HOME, 1);
            SendMessageA(control, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0);
        };
        ph_SetMode(panel.Root(), 1);
        operate();
        CHECK(Value(control) == 50.0F);
        MSG posted;
        CHECK(TakePosted(panel.Window(), WM_KEYDOWN, posted));
        CHECK(posted.wParam == VK_HOME);
        ph_SetMode(panel.Root(), 0);
        operate();
        CHECK(Value(control) > 90.0F);
        CHECK_FALSE(TakePosted(panel.Window(), WM_KEYDOWN, posted));
    }
}

TEST_CASE("a changed function is loaded anew when the control is bound to it") {
    const AllControls all;
    all.ForEach([&](HWND control) {
        if (!HasValue(control)) {
            return;
        }
        Load(control, "function=AMP1*gain;%n*level", LOAD_FROM_FILE);
        for (const auto& [what, function, isLoaded] : {std::tuple(WPARAM{5}, "AMP1*gain", true),
                                                       {5, "amp1*gain", true},
                                                       {4, "AMP1*gain", false},
                                                       {5, "AMP1*GAIN", false},
                                                       {5, "AMP2*gain", false},
                                                       {5, nullptr, false}}) {
            ObjectOf(control).flags = 0;
            SendMessageA(control, CWM_FUNCTIONCHANGED, what, reinterpret_cast<LPARAM>(function));
            CHECK(IsChanged(control) == isLoaded);
        }
    });
}

TEST_CASE(
    "a plain right click goes to the parent window, one with Ctrl and Shift opens the property dialog") {
    const AllControls all(TestPanel::Visible);
    MSG posted;
    HWND panel = all.panel.Window();
    MoveCursor(all.panel, 123, 45);
    constexpr WPARAM OPEN = MK_RBUTTON | MK_SHIFT | MK_CONTROL;
    all.ForEach([&](HWND control) {
        for (const WPARAM keys : {WPARAM{MK_RBUTTON}, WPARAM{MK_RBUTTON | MK_CONTROL}}) {
            SendMessageA(control, WM_RBUTTONDOWN, keys, At(1, 1));
            REQUIRE(TakePosted(panel, WM_RBUTTONDOWN, posted));
            CHECK(posted.wParam == keys);
            CHECK(posted.lParam == At(123, 45));
        }
        CHECK(ObjectOf(control).dialog == nullptr);

        SendMessageA(control, WM_RBUTTONDOWN, OPEN, At(1, 1));
        HWND dialog = ObjectOf(control).dialog;
        REQUIRE(IsWindow(dialog));
        CHECK_FALSE(TakePosted(panel, WM_RBUTTONDOWN, posted));
        SendMessageA(control, WM_RBUTTONDOWN, OPEN, At(1, 1)); // no second one
        CHECK(TakePosted(panel, WM_RBUTTONDOWN, posted));
        CHECK(ObjectOf(control).dialog == dialog);

        Load(control, "layer=");
        MSG attach;
        CHECK(TakePosted(dialog, CWM_ATTACHDIALOG, attach)); // it shows the new value
        DestroyWindow(control);
        CHECK_FALSE(IsWindow(dialog));
    });

    HWND strip = all.panel.Create("MIXER", "Strip");
    HWND child = CreateControl("LED", "Lamp", strip, &ObjectOf(strip));
    SendMessageA(child, WM_RBUTTONDOWN, MK_RBUTTON, At(1, 1));
    REQUIRE(TakePosted(strip, WM_RBUTTONDOWN, posted));
    CHECK(posted.lParam == At(123 - 10, 45 - 20));
}

TEST_CASE("the mouse is the panel's while it is edited and with Ctrl") {
    const AllControls all(TestPanel::Visible);
    MSG posted;
    HWND panel = all.panel.Window();
    MoveCursor(all.panel, 77, 88);
    all.ForEach([&](HWND control) {
        const auto forwards = [&](int mode, UINT message, WPARAM keys) {
            ph_SetMode(all.panel.Root(), mode);
            SendMessageA(control, message, keys, At(2, 2));
            ReleaseCapture();
            const bool found = TakePosted(panel, message, posted);
            CHECK((!found || (posted.wParam == keys && posted.lParam == At(77, 88))));
            CHECK_FALSE(TakePosted(panel, message, posted));
            return found;
        };
        CHECK(forwards(1, WM_LBUTTONDOWN, MK_LBUTTON));
        CHECK(forwards(1, WM_MOUSEMOVE, 0));
        CHECK(forwards(0, WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL));
        CHECK(forwards(0, WM_MOUSEMOVE, 0));
        CHECK(forwards(1, WM_LBUTTONDBLCLK, MK_LBUTTON));
        CHECK(forwards(0, WM_LBUTTONDBLCLK, MK_LBUTTON | MK_CONTROL));
        SetFocus(panel);
        CHECK_FALSE(forwards(0, WM_LBUTTONDOWN, MK_LBUTTON));
        const std::string name = ClassOf(control);
        if (name == "METER" || name == "FADING" || name == "LED" || name == "CONDITIONALLED" ||
            name == "BIMAGELIST" || name == "LSBSTATIC" || name == "BSTATIC" || name == "CLOCK" ||
            name == "BRANGE" || name == "REVMETER" || name == "SCALE") { // to look at only
            CHECK(GetFocus() == panel);
        } else if (name[0] != 'I' && name != "XIPCHECK") { // those are hidden
            CHECK(GetFocus() != panel);
        }
        CHECK_FALSE(forwards(0, WM_LBUTTONDBLCLK, MK_LBUTTON));
    });
    HWND strip = all.panel.Find("MIXER");
    HWND child = CreateControl("LED", "Lamp", strip, &ObjectOf(strip));
    SendMessageA(child, WM_MOUSEMOVE, 0, At(1, 1)); // inside a strip nobody asks for it
    CHECK_FALSE(TakePosted(panel, WM_MOUSEMOVE, posted));
    ph_SetMode(all.panel.Root(), 1);
    CHECK(ObjectOf(child).mode == 1);
    CHECK(ObjectOf(all.panel.Create("LED", "New")).mode == 1);
}

TEST_CASE("the focus is remembered and shown") {
    const AllControls all(TestPanel::Visible);
    all.ForEach([&](HWND control) {
        SendMessageA(control, WM_SETFOCUS, 0, 0);
        CHECK((ObjectOf(control).flags & FLAG_FOCUS) != 0);
        SendMessageA(control, WM_KILLFOCUS, 0, 0);
        CHECK((ObjectOf(control).flags & FLAG_FOCUS) == 0);
    });
    HWND lamp = all.panel.Find("LED");
    CHECK(Picture(lamp).At(99, 20) != RGB(255, 176, 0));
    SetFocus(lamp);
    CHECK(Picture(lamp).At(99, 20) == RGB(255, 176, 0));
    ph_SetMode(all.panel.Root(), 1); // an edited panel shows what is selected instead
    CHECK(Picture(lamp).At(99, 20) != RGB(255, 176, 0));
}

TEST_CASE("drawing, keys and unlisted private messages have their fixed answers") {
    const AllControls all;
    all.ForEach([](HWND control) {
        const std::string name = ClassOf(control);
        const bool isButton = name == "BBUTTON" || name == "BTRISTATEBUTTON" || name == "CONTACTBUTTON" ||
                              name == "BRADIOBUTTON" || name == "SWITCH" || name == "LSBBUTTON";
        const bool accepts = isButton || name == "BIMAGELIST" || name == "LISTSELECTION" || name == "FADER" ||
                             name == "METER" || name == "REVMETER" || name == "CLOCK" || name == "EQ" ||
                             name == "XOVER";
        CHECK(((GetWindowLongA(control, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0) == accepts);
        if (name != "BEDIT" && name != "BEDIT2" && name != "BCOMBOBOX") {
            CHECK(SendMessageA(control, WM_ERASEBKGND, 0, 0) == 1);
            const bool isStrip =
                name == "MIXER" || name == "CROSSOVER" || name == "AUTOMIXER" || name == "SPEAKERCONTROL";
            const LRESULT wanted = isStrip ? DLGC_WANTARROWS | DLGC_WANTALLKEYS : DLGC_WANTARROWS;
            CHECK(SendMessageA(control, WM_GETDLGCODE, 0, 0) == wanted);
        }
        for (UINT message = 0x8005; message <= 0x8032; ++message) {
            if (message != CWM_GETPROPERTIES) {
                CHECK(SendMessageA(control, message, 0, 0) == 0);
            }
        }
        char caption[80] = "";
        caption[64] = '#';
        SetWindowTextA(control, std::string(100, 'x').c_str());
        SendMessageA(control, CWM_GETCAPTION, 0, reinterpret_cast<LPARAM>(caption));
        CHECK(caption == std::string(63, 'x')); // as much as its buffer holds
        CHECK(caption[64] == '#');
        const RECT& place = ObjectOf(control).rectangle;
        CHECK(SendMessageA(control, CWM_GETPREFERREDWIDTH, 0, 0) == place.right - place.left);
        SetWindowPos(control, nullptr, 30, 31, 70, 32, SWP_NOZORDER); // as an editor does
        CHECK(a_GetRectString(place) == "30,31,100," + std::to_string(place.bottom));
    });
}

TEST_SUITE_END();
