// Controls say that what they are bound to is not live. The device is a double whose states are switched
// here.

#include "Panelhost/Bitmap.h"
#include "Panelhost/Devices.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <set>

TEST_SUITE_BEGIN("NotLive");

namespace {

class Desk : public DEVICE {
public:
    explicit Desk(const TestPanel& panel) { Register(panel.Root(), "DESK"); }
    void Switch(int device, int parameter, DWORD silent = 4000) {
        status_ = {device, silent, silent};
        parameter_ = parameter;
    }

    LRESULT OnRequestList(WPARAM, LPARAM item) override {
        reinterpret_cast<REQUESTITEM*>(item)->context = this;
        reinterpret_cast<REQUESTITEM*>(item)->handler = [](VALUERECORD* record, void* context) {
            return static_cast<Desk*>(context)->Answer(*record);
        };
        return 1;
    }
    LRESULT OnIsAlive(WPARAM, LPARAM) override { return status_.state == DEVICE_LIVE ? 1 : 0; }
    int OnParameterState(const char*, DWORD* age) override {
        *age = NO_AGE;
        return parameter_;
    }
    DEVICESTATUS OnStatus() override { return status_; }

private:
    int Answer(VALUERECORD& record) const {
        static const logic::EqBand band{0, logic::Peak, 100.0F, 0.0F, 1.0F, 1};
        static const logic::CrossoverFilters filters{};
        static const logic::DelaySetting delay{};
        if (record.command != COMMAND_GET ||
            (parameter_ != PARAMETER_LIVE && parameter_ != PARAMETER_PENDING)) {
            return -1;
        }
        switch (record.datatype) {
        case DATATYPE_INTEGER:
            return a_AnswerInteger(&record, 1);
        case DATATYPE_FLOAT:
            return a_AnswerFloat(&record, 1);
        case DATATYPE_TEXT:
            return a_AnswerText(&record, "1");
        case DATATYPE_CROSSOVER:
            return a_AnswerBytes(&record, DATATYPE_CROSSOVER, &filters, sizeof filters);
        case DATATYPE_DELAY:
            return a_AnswerBytes(&record, DATATYPE_DELAY, &delay, sizeof delay);
        default:
            return a_AnswerBytes(&record, record.datatype, &band, sizeof band);
        }
    }

    DEVICESTATUS status_{DEVICE_LIVE, 0, 0};
    int parameter_ = PARAMETER_LIVE;
};

// Where the not-equal sign stands in the picture of a control, "3,3"; empty when it does not.
std::string SignIn(HWND control) {
    static const OSMIRBitmap& sign = *a_GetNotEqualSign();
    // Not its corners, which the control shows through.
    static const std::vector<std::pair<POINT, COLORREF>> points = [] {
        std::vector<std::pair<POINT, COLORREF>> opaque;
        const HDC dc = CreateCompatibleDC(nullptr);
        const HDC screen = GetDC(nullptr);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, sign.Width(), sign.Height());
        const HGDIOBJ previous = SelectObject(dc, bitmap);
        sign.Draw(dc, 0, 0);
        for (int y = 0; y < sign.Height(); ++y) {
            for (int x = 1; x < sign.Width() - 1; ++x) {
                opaque.push_back({{x, y}, GetPixel(dc, x, y)});
            }
        }
        SelectObject(dc, previous);
        DeleteObject(bitmap);
        ReleaseDC(nullptr, screen);
        DeleteDC(dc);
        return opaque;
    }();
    const Picture picture(control);
    RECT client{};
    GetClientRect(control, &client);
    for (int y = 0; y + sign.Height() <= client.bottom; ++y) {
        for (int x = 0; x + sign.Width() <= client.right; ++x) {
            const bool isThere = std::all_of(points.begin(), points.end(), [&](const auto& point) {
                return picture.At(x + point.first.x, y + point.first.y) == point.second;
            });
            if (isThere) {
                return std::to_string(x) + "," + std::to_string(y);
            }
        }
    }
    return {};
}

bool IsMarked(HWND control) {
    const std::vector<HWND> children = ChildrenOf(control);
    return SignIn(control) != "" ||
           std::any_of(children.begin(), children.end(), [](HWND child) { return SignIn(child) != ""; });
}

std::string StatusOf(HWND control) {
    char text[TEXT_SIZE] = "";
    ObjectOf(control).OnGetTooltip(0, reinterpret_cast<LPARAM>(text));
    return text;
}

// Those that are seen in an operated panel and take functions.
std::vector<HWND> BoundControls(const TestPanel& panel) {
    std::vector<HWND> controls;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        HWND control = panel.Create(expected.name, expected.name);
        if (IsWindowVisible(control) &&
            a_FindKeyword(ObjectOf(control).GetHostinfoTable(), "function") >= 0) {
            Load(control, "function=DESK*value");
            controls.push_back(control);
        }
    }
    // So that each has something to show the value by.
    Load(panel.Find("BCOMBOBOX"), "items=1");
    Load(panel.Find("FADER"), "properties=0,100", LOAD_FROM_FILE);
    return controls;
}

struct State {
    int device, parameter;
    const char* why; // empty: it is live
};
constexpr State STATES[] = {
    {DEVICE_LIVE, PARAMETER_LIVE, ""},
    {DEVICE_UNKNOWN, PARAMETER_UNKNOWN, "DESK: no answer yet for 4 s"},
    {DEVICE_LIVE, PARAMETER_PENDING, ""},
    {DEVICE_LIVE, PARAMETER_UNKNOWN, "DESK*value: no value yet"},
    {DEVICE_LIVE, PARAMETER_UNCONFIRMED, "DESK*value: not confirmed"},
    {DEVICE_LIVE, PARAMETER_STALE, "DESK*value: does not answer"},
    {DEVICE_STALE, PARAMETER_STALE, "DESK: nothing heard for 4 s"},
    {DEVICE_LOST, PARAMETER_LOST, "DESK: nothing heard for 4 s"},
    {DEVICE_OFF, PARAMETER_OFF, "DESK: switched off"},
    {DEVICE_REFUSED, PARAMETER_REFUSED, "DESK: something else answers"},
    {DEVICE_OPEN, PARAMETER_SENT, "DESK: answers nothing"},
    {DEVICE_LIVE, PARAMETER_LIVE, ""},
};

} // namespace

TEST_CASE("every control that is seen shows by the one sign, and by its status line, what is not live") {
    const TestPanel panel(TestPanel::Visible);
    Desk desk(panel);
    const std::vector<HWND> controls = BoundControls(panel);
    CHECK(controls.size() >= 36);
    for (const State& state : STATES) {
        desk.Switch(state.device, state.parameter);
        for (HWND control : controls) {
            const std::string name = ObjectOf(control).name;
            CAPTURE(name);
            CAPTURE(std::string(state.why));
            Poll(control);
            CHECK(IsMarked(control) == (state.why[0] != '\0'));
            const std::string status = StatusOf(control);
            const bool saysWhy = status.ends_with("   (" + std::string(state.why) + ")");
            CHECK((state.why[0] != '\0' ? saysWhy : status.find('(') == std::string::npos));
        }
    }
    // Where the class says nothing else, at one place.
    desk.Switch(DEVICE_STALE, PARAMETER_STALE);
    const std::set<std::string> elsewhere{"EQ",           "XOVER",         "SPINEDIT",  "BEDIT",
                                          "BEDIT2",       "BCOMBOBOX",     "CROSSOVER", "AUTOMIXER",
                                          "DANTECONTROL", "SPEAKERCONTROL"};
    for (HWND control : controls) {
        const std::string name = ObjectOf(control).name;
        CAPTURE(name);
        Poll(control);
        CHECK((SignIn(control) == "3,3") == !elsewhere.contains(name));
    }
}

TEST_CASE(
    "a device that goes or comes shows at the next tick, however seldom it is asked, and during a drag") {
    const TestPanel panel(TestPanel::Visible);
    Desk desk(panel);
    HWND knob = panel.Create("KNOB", "Knob");
    HWND fader = panel.Create("FADER", "Fader");
    HWND button = panel.Create("BBUTTON", "Button");
    HWND list = panel.Create("LISTSELECTION", "List");
    Load(list, "function1=DESK*text"); // of a list of its own
    Load(fader, "properties=0,100", LOAD_FROM_FILE);
    for (HWND control : {knob, fader, button}) {
        Load(control, "function=DESK*value");
    }
    for (HWND control : {knob, fader, button, list}) {
        Load(control, "interval=3600000");
    }
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(50, 20));
    for (const bool isLive : {false, true, false, true}) {
        desk.Switch(isLive ? DEVICE_LIVE : DEVICE_STALE, isLive ? PARAMETER_LIVE : PARAMETER_STALE);
        ph_Tick(panel.Root());
        for (HWND control : {knob, fader, button, list}) {
            const std::string name = ObjectOf(control).name;
            CAPTURE(name);
            CAPTURE(isLive);
            CHECK(IsMarked(control) != isLive);
        }
    }
    SendMessageA(fader, WM_LBUTTONUP, 0, At(50, 20));
}

TEST_CASE("a value that nobody has ever told shows a dash once a poll has found nobody") {
    const TestPanel panel(TestPanel::Visible);
    Desk desk(panel);
    for (const char* className :
         {"BSTATIC", "BEDIT", "BEDIT2", "BCOMBOBOX", "DANTECONTROL", "SPINEDIT", "EQ", "XOVER"}) {
        CAPTURE(std::string(className));
        HWND control = panel.Create(className, className);
        HWND field = control;
        for (HWND child : ChildrenOf(control)) {
            char kind[16] = "";
            GetClassNameA(child, kind, sizeof kind);
            field = lstrcmpiA(kind, "EDIT") == 0 && field == control ? child : field;
        }
        const auto text = [field] {
            char shown[TEXT_SIZE] = "";
            SendMessageA(field, WM_GETTEXT, sizeof shown, reinterpret_cast<LPARAM>(shown));
            return std::string(shown);
        };
        const std::string atFirst = text();
        desk.Switch(DEVICE_UNKNOWN, PARAMETER_UNKNOWN);
        Load(control, "function=DESK*value");
        CHECK(text() == atFirst);
        Poll(control);
        CHECK(text() == "–");
        CHECK(StatusOf(control).starts_with(std::string(className) + " = –   "));
        desk.Switch(DEVICE_LIVE, PARAMETER_LIVE);
        Poll(control);
        const std::string told = text();
        CHECK(told != "–");
        desk.Switch(DEVICE_LOST, PARAMETER_LOST);
        Poll(control);
        CHECK(text() == told); // the last one that was known
        Load(control, "function=DESK*other");
        Poll(control);
        CHECK(text() == "–");
        DestroyWindow(control);
    }
}
