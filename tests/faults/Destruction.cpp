// Controls of every class that are destroyed, bound anew or have their dialog or their panel closed by what
// they notify: a change of the focus, a get, a set, a poll, a line of their dialog, a key, a press.

#include "Panelhost/Dialogs.h"
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
LRESULT CALLBACK Target(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static int answers = 0;
    auto* record = reinterpret_cast<VALUERECORD*>(lParam);
    switch (message) {
    case WM_KILLFOCUS:
    case WM_SETFOCUS:
        Notified("a change of the focus");
        break;
    case CWM_MESSAGE:
        Notified(record->command == COMMAND_GET ? "a get" : "a set");
        return record->command == COMMAND_GET ? a_AnswerInteger(record, ++answers) : 1;
    }
    return OwnProcedure(window, message, wParam, lParam);
}

void UseDialog(Random& random, HWND control) {
    HWND dialog = nullptr;
    SendMessageA(control, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    const std::vector<HWND> children = ChildrenOf(dialog);
    for (int i = 0; i < 3 && IsWindow(dialog) && !children.empty(); ++i) {
        HWND child = random.Pick(children);
        constexpr const char* TYPED[] = {"5", "0", "-3,7", "Target", "avg", "x"};
        constexpr WORD CODES[] = {EDIT_ENTER, EN_KILLFOCUS, BN_CLICKED, BN_CLICKED};
        SetFocus(child);
        char className[16] = "";
        GetClassNameA(child, className, sizeof className);
        if (lstrcmpiA(className, "EDIT") == 0) {
            SetWindowTextA(child, random.Pick(TYPED));
        }
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(child), random.Pick(CODES)),
                     reinterpret_cast<LPARAM>(child));
    }
}

void Use(Random& random, HWND control, int use) {
    constexpr WPARAM KEYS[] = {VK_UP, VK_DOWN, VK_LEFT, VK_PRIOR, VK_HOME, VK_SPACE, VK_RETURN, VK_TAB, '5'};
    const auto at = [&random] { return At(random.Below(100), random.Below(40)); };
    const auto send = [control](UINT message, WPARAM wParam, LPARAM lParam) {
        SendMessageA(control, message, wParam, lParam);
    };
    switch (use) {
    case 0: // the focus leaves the target
        SetFocus(FindWindowExA(GetParent(control), nullptr, "FaultTarget", nullptr));
        send(WM_LBUTTONDOWN, MK_LBUTTON, at());
        send(WM_MOUSEMOVE, MK_LBUTTON, at());
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
    WNDCLASSA targetClass{};
    targetClass.lpfnWndProc = Target;
    targetClass.lpszClassName = "FaultTarget";
    RegisterClassA(&targetClass);
    const char* className =
        EXPECTED_CLASSES[static_cast<std::size_t>(number) % std::size(EXPECTED_CLASSES)].name;
    for (int i = 0; i < 6; ++i) {
        TestPanel panel(TestPanel::Visible);
        const HWND window = panel.Window();
        panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n");
        panel.Create("FaultTarget", "Target");
        HWND control = panel.Create(className, "Subject");
        Load(panel.Create("KNOB", "Other"), "connection=Subject;Target");
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
        const std::function<void()> ways[] = {
            [&] { DestroyWindow(control); },
            [&] { DestroyWindow(control); },
            [&] {
                Load(control, "function=");
                Load(control, "connection=Other");
            },
            [&] { DestroyWindow(IsWindow(control) ? ObjectOf(control).dialog : nullptr); },
            [&] { DestroyWindow(panel.Find("Target")); },
            [&] { panel.Close(); }};
        const int way = random.Below(std::size(ways));
        notificationsBefore = random.Below(3);
        action = ways[way];
        for (int step = 0; step < 6 && IsWindow(control) && IsWindow(window); ++step) {
            const int use = random.Below(8);
            Doing("%s, way %d, step %d (use %d)", className, way, step, use);
            Use(random, control, use);
        }
        action = nullptr;
        Doing("%s: close the panel", className);
    }
}

} // namespace

const Topic destructionTopic{"destruction", Round};
