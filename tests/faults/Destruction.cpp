// Controls of every class that are destroyed, bound anew or have their dialog or their panel closed by what
// they notify: a change of the focus, a get, a set, a poll, a line of their dialog, a key, a press.

#include "Panelhost/Editing.h"
#include "tests/faults/Scenery.h"

#include <functional>

namespace {

std::function<void()> action; // what the next notification but some does
int notificationsBefore = 0;

void Notified(const char* what) {
    if (action && notificationsBefore-- == 0) {
        Doing("%s: destroy inside it", what);
        std::exchange(action, nullptr)();
    }
}

// An object that others are bound to: it answers every get with another value and takes what it is sent.
class Target : public HOSTINFO {
public:
    explicit Target(const TestPanel& panel) {
        WNDCLASSA targetClass{};
        targetClass.lpfnWndProc = Procedure;
        targetClass.lpszClassName = "FaultTarget";
        RegisterClassA(&targetClass);
        const HWND made = CreateWindowExA(0, "FaultTarget", "Target", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9,
                                          panel.Window(), nullptr, nullptr, nullptr);
        a_InitializeHostinfo(made, this, panel.Root());
        a_AddHostinfo(panel.Root(), this);
        SetWindowLongA(made, GWL_USERDATA, reinterpret_cast<LONG>(this));
        a_HostinfoCreated(panel.Root(), this);
    }
    LRESULT OnMessage(WPARAM, LPARAM lParam) override {
        auto* record = reinterpret_cast<VALUERECORD*>(lParam);
        if (record->command == COMMAND_GET) {
            Notified("a get");
            return a_AnswerInteger(record, ++answers);
        }
        Notified("a set");
        return 1;
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* target = reinterpret_cast<Target*>(GetWindowLongA(window, GWL_USERDATA));
        if (message == WM_KILLFOCUS || message == WM_SETFOCUS) {
            Notified("a change of the focus");
        } else if (target != nullptr && message == CWM_MESSAGE) {
            return target->OnMessage(wParam, lParam);
        } else if (target != nullptr && message == WM_DESTROY) {
            SetWindowLongA(window, GWL_USERDATA, 0);
            a_HostinfoDestroyed(a_FindRootHostinfo(target->parent), target);
            a_CleanHostinfo(target);
            a_RemoveHostinfo(target->parent, target);
            delete target;
        }
        return DefWindowProcA(window, message, wParam, lParam);
    }

    static inline int answers = 0;
};

void UseDialog(Random& random, HWND control) {
    HWND dialog = nullptr;
    SendMessageA(control, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    std::vector<HWND> children;
    EnumChildWindows(
        dialog, [](HWND child, LPARAM list) __attribute__((stdcall))->BOOL {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&children));
    for (int i = 0; i < 3 && IsWindow(dialog) && !children.empty(); ++i) {
        HWND child = random.Pick(children);
        const int id = GetDlgCtrlID(child);
        char className[16];
        GetClassNameA(child, className, sizeof className);
        const bool isEdit = lstrcmpiA(className, "EDIT") == 0;
        constexpr const char* TYPED[] = {"5", "0", "-3,7", "Target", "avg", "x"};
        SetFocus(child);
        if (isEdit && IsWindow(child)) {
            SetWindowTextA(child, random.Pick(TYPED));
        }
        constexpr WORD CODES[] = {EDIT_ENTER, EN_KILLFOCUS};
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, isEdit ? random.Pick(CODES) : BN_CLICKED),
                     reinterpret_cast<LPARAM>(child));
    }
}

void Use(Random& random, HWND control) {
    constexpr WPARAM KEYS[] = {VK_UP, VK_DOWN, VK_LEFT, VK_PRIOR, VK_HOME, VK_SPACE, VK_RETURN, VK_TAB, '5'};
    const auto at = [&random] { return At(random.Below(100), random.Below(40)); };
    const auto send = [control](UINT message, WPARAM wParam, LPARAM lParam) {
        SendMessageA(control, message, wParam, lParam);
    };
    switch (random.Below(8)) {
    case 0: // the focus leaves the target
        SetFocus(FindWindowExA(GetParent(control), nullptr, "FaultTarget", nullptr));
        send(WM_LBUTTONDOWN, MK_LBUTTON, at());
        for (int i = 0; i < 3; ++i) {
            send(WM_MOUSEMOVE, MK_LBUTTON, at());
        }
        send(WM_LBUTTONUP, 0, at());
        break;
    case 1: {
        const WPARAM key = random.Pick(KEYS);
        SetFocus(control);
        send(WM_KEYDOWN, key, 1);
        send(WM_CHAR, key, 1);
        send(WM_KEYUP, key, 1);
        break;
    }
    case 2:
        send(WM_MOUSEWHEEL, MAKEWPARAM(0, random.OneIn(2) ? 120 : -120), at());
        break;
    case 3:
    case 4:
        ObjectOf(control).interval = 0;
        Sleep(2);
        send(WM_TIMER, 0, 0);
        break;
    case 5:
        Load(control, Scenery::Line(random, control), LOAD_FROM_DIALOG);
        break;
    case 6:
        UseDialog(random, control);
        break;
    default:
        SetValue(control, static_cast<float>(random.Below(100)));
        send(CWM_MENUCOMMAND, 0, 1);
    }
    if (GetCapture() != nullptr) {
        ReleaseCapture();
    }
}

void Round(Random& random, int number) {
    const char* className = ClassNames()[static_cast<std::size_t>(number) % ClassNames().size()];
    for (int i = 0; i < 6; ++i) {
        TestPanel panel(TestPanel::Visible);
        const HWND window = panel.Window();
        panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n");
        new Target(panel); // goes with its window
        HWND control = panel.Create(className, "Subject");
        HWND other = panel.Create("KNOB", "Other");
        Load(other, "connection=Subject;Target");
        constexpr const char* LINES[] = {"connection=Target;Other", "connection=Other;Target",
                                         "function=AMP1*gain",      "connection=Target",
                                         "properties=0,100",        "relative=1",
                                         "click=Target*value=1",    "value=1"};
        for (int count = random.Below(4); count >= 0; --count) {
            Load(control, random.Pick(LINES));
        }
        a_SetEditListener(
            panel.Root(),
            [](int, HOSTINFO*, void*) {
                Notified("an edit");
                return 1;
            },
            nullptr);
        const int way = random.Below(6);
        notificationsBefore = random.Below(3);
        action = [&] {
            switch (way) {
            case 0:
            case 1:
                DestroyWindow(control);
                break;
            case 2:
                Load(control, "function=");
                Load(control, "connection=Other");
                break;
            case 3:
                if (HWND dialog = IsWindow(control) ? ObjectOf(control).dialog : nullptr; dialog != nullptr) {
                    DestroyWindow(dialog);
                }
                break;
            case 4:
                DestroyWindow(panel.Find("Target"));
                break;
            default:
                panel.Close();
            }
        };
        for (int step = 0; step < 6 && IsWindow(control) && IsWindow(window); ++step) {
            Random copy = random;
            Doing("%s, way %d, step %d (use %d)", className, way, step, copy.Below(8));
            Use(random, control);
        }
        action = nullptr;
        Doing("%s: close the panel", className);
    }
}

} // namespace

const Topic destructionTopic{"destruction", Round};
