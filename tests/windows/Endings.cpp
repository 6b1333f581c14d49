// Controls that end, are bound anew or lose their dialog while one of their own messages is handled.

#include "Panelhost/Dialogs.h"
#include "Panelhost/Editing.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/FreedMemory.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>

TEST_SUITE_BEGIN("Endings");

namespace {

// What happens when somebody else is asked, told, or loses the focus: nothing while it is not armed, and once
// after it was.
std::function<void()> armed;
int fired = 0;

void Fire() {
    if (armed) {
        ++fired;
        const auto action = std::exchange(armed, nullptr);
        action();
    }
}

// A control of another library that a control is bound to.
LRESULT CALLBACK TrapProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case CWM_MESSAGE: {
        const auto& record = *reinterpret_cast<VALUERECORD*>(lParam);
        if (record.command == COMMAND_GET && record.datatype == DATATYPE_FLOAT) {
            *static_cast<float*>(record.data) += 1.0F;
        }
        if (record.command != COMMAND_RESOLVE) {
            Fire();
        }
        return 1;
    }
    case WM_KILLFOCUS:
        Fire();
        return 0;
    default:
        return OwnProcedure(window, message, wParam, lParam);
    }
}

HWND CreateTrap(const TestPanel& panel) {
    RegisterTestClass("EndingTrap", TrapProc);
    return panel.Create("EndingTrap", "TRAP");
}

// The control and its children.
std::vector<HWND> PartsOf(HWND control) {
    std::vector<HWND> parts = ChildrenOf(control);
    parts.insert(parts.begin(), control);
    return parts;
}

HWND DialogOf(HWND control) {
    HWND dialog = nullptr;
    SendMessageA(control, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    return dialog;
}

struct Scene {
    TestPanel panel;
    HWND trap = nullptr;
    HWND control = nullptr;
    std::function<void()> action;

    // The next of what the trap hears does it.
    void Arm() const { armed = action; }
};

void EnterLines(const Scene& scene) {
    const HWND dialog = DialogOf(scene.control);
    for (HWND item : ChildrenOf(dialog)) {
        char className[32] = "";
        GetClassNameA(item, className, sizeof className);
        const int id = GetDlgCtrlID(item);
        const auto command = [&](WORD code) {
            scene.Arm();
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(item));
        };
        if (lstrcmpiA(className, "EDIT") == 0) {
            for (const char* text : {"7", "TRAP;TRAP"}) {
                SetWindowTextA(item, text);
                command(EDIT_ENTER);
            }
        } else if ((GetWindowLongA(item, GWL_STYLE) & BS_TYPEMASK) == BS_AUTORADIOBUTTON) {
            command(BN_CLICKED);
        }
    }
}

// With a host that listens.
template <int TOLD>
void EnterToldLines(const Scene& scene) {
    const auto listen = [](int event, HOSTINFO*, void*) {
        if (event == TOLD) {
            Fire();
        }
        return 1;
    };
    a_SetEditListener(scene.panel.Root(), listen, nullptr);
    EnterLines(scene);
}

struct Event {
    const char* name;
    void (*happen)(const Scene& scene);
    bool isOfDialogs = false; // that are the same for all classes: one of each kind of dialog stands for all
};

// Dialogs with a layout of their own, and some of those that are laid out when they open.
bool StandsForDialogs(std::string_view className) {
    constexpr std::string_view names[] = {"KNOB", "FADER", "XOVER", "BEDIT", "BBUTTON", "SPINEDIT"};
    return std::ranges::find(names, className) != std::end(names);
}

constexpr Event EVENTS[] = {
    {"a press moves the focus",
     [](const Scene& scene) {
         for (HWND part : PartsOf(scene.control)) {
             SetFocus(scene.trap);
             scene.Arm();
             SendMessageA(part, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
             SendMessageA(part, WM_LBUTTONUP, 0, At(5, 5));
         }
     }},
    {"a drag",
     [](const Scene& scene) {
         SendMessageA(scene.control, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
         scene.Arm();
         for (int x = 6; x < 40; x += 8) {
             SendMessageA(scene.control, WM_MOUSEMOVE, MK_LBUTTON, At(x, x));
         }
         SendMessageA(scene.control, WM_LBUTTONUP, 0, At(40, 40));
     }},
    {"a click",
     [](const Scene& scene) {
         for (HWND part : PartsOf(scene.control)) {
             SendMessageA(part, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
             scene.Arm();
             SendMessageA(part, WM_LBUTTONUP, 0, At(5, 5));
         }
     }},
    {"keys",
     [](const Scene& scene) {
         for (HWND window : PartsOf(scene.control)) {
             SetFocus(window);
             SendMessageA(window, WM_CHAR, '3', 0);
             for (const WPARAM key : {VK_HOME, VK_END, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_SPACE, VK_RETURN,
                                      VK_ESCAPE, VK_TAB}) {
                 scene.Arm();
                 SendMessageA(window, WM_KEYDOWN, key, 0);
                 DispatchCommands(scene.control);
                 SendMessageA(window, WM_KEYUP, key, 0);
             }
         }
     }},
    {"the wheel",
     [](const Scene& scene) {
         scene.Arm();
         SendMessageA(scene.control, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0);
     }},
    {"typing, and the focus goes",
     [](const Scene& scene) {
         for (HWND window : PartsOf(scene.control)) {
             SetFocus(window);
             SendMessageA(window, WM_CHAR, '7', 0);
             scene.Arm();
             SetFocus(scene.trap);
         }
     }},
    {"a record",
     [](const Scene& scene) {
         for (float value : {1.0F, 2.0F, 60.0F}) {
             scene.Arm();
             Send(scene.control, COMMAND_SET, DATATYPE_FLOAT, &value);
             Send(scene.control, COMMAND_GET, DATATYPE_FLOAT, &value);
         }
     }},
    {"a poll",
     [](const Scene& scene) {
         scene.Arm();
         Poll(scene.control);
     }},
    {"lines",
     [](const Scene& scene) {
         for (const char* line : {"value=5", "properties=0,100,7", "relative=1", "connection=TRAP;TRAP",
                                  "function=TRAP;TRAP;TRAP", "valuescopy=1,2", "mode=increment",
                                  "PEQ,1000,3,1", "config=TwoWayHigh"}) {
             scene.Arm();
             Load(scene.control, line);
         }
     }},
    {"relative mode",
     [](const Scene& scene) {
         Load(scene.control, "relative=1");
         scene.Arm();
         SetValue(scene.control, 9.0F);
         if (a_FromWindow(scene.control) != nullptr) {
             scene.Arm();
             Poll(scene.control);
         }
         scene.Arm();
         Load(scene.control, "connection=TRAP;TRAP;TRAP");
     }},
    {"Apply",
     [](const Scene& scene) {
         scene.Arm();
         SendMessageA(scene.control, CWM_MENUCOMMAND, 0, 1);
     }},
    {"lines of the dialog", EnterLines},
    {"a line of the dialog that the host is asked for", EnterToldLines<EDIT_CHANGING>, true},
    {"a line of the dialog that the host is told of", EnterToldLines<EDIT_CHANGED>, true},
    {"the dialog becomes active",
     [](const Scene& scene) {
         const HWND dialog = DialogOf(scene.control);
         SetFocus(scene.trap);
         scene.Arm();
         SendMessageA(dialog, WM_ACTIVATE, WA_ACTIVE, 0);
         SendMessageA(dialog, WM_SETFOCUS, 0, 0);
     },
     true},
    {"typing in the dialog, and the focus goes",
     [](const Scene& scene) {
         for (HWND item : ChildrenOf(DialogOf(scene.control))) {
             SetFocus(item);
             SendMessageA(item, WM_CHAR, '7', 0);
             scene.Arm();
             SetFocus(scene.trap);
         }
     },
     true},
};

struct Action {
    const char* name;
    void (*act)(Scene& scene);
};

void CloseDialog(Scene& scene) {
    if (const HOSTINFO* object = a_FromWindow(scene.control); object != nullptr) {
        DestroyWindow(object->dialog);
    }
}

constexpr Action ACTIONS[] = {
    {"destroyed", [](Scene& scene) { DestroyWindow(scene.control); }},
    {"rebound",
     [](Scene& scene) {
         Load(scene.control, "connection=TRAP;NOBODY;TRAP");
         Load(scene.control, "function=NOBODY*x;TRAP");
     }},
    {"its dialog closed", CloseDialog},
    {"without what it is bound to", [](Scene& scene) { DestroyWindow(scene.trap); }},
    {"its panel closed", [](Scene& scene) { ph_DestroyRoot(scene.panel.Root()); }},
};

} // namespace

TEST_CASE("controls of every class survive what their own messages lead to") {
    REQUIRE(TrapFreedMemory());
    const int objects = a_HostinfoCount();
    // Of the classes without a file of their own one of each kind of value, and of each system class, stands
    // for all: they hold the keywords that are common to all of them.
    std::vector<ExpectedClass> classes;
    std::set<std::pair<LRESULT, std::string_view>> kinds;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        if (std::string_view(expected.name).starts_with("LSB")) {
            continue; // a button and a text by other names
        }
        const TestPanel panel;
        HWND control = panel.Create(expected.name, "Control");
        const bool isPlain = ObjectOf(control).GetHostinfoTable()[6].keyword == nullptr;
        const std::string_view system = expected.systemClass == nullptr ? "" : expected.systemClass;
        if (!isPlain || kinds.emplace(SendMessageA(control, CWM_GETCONTROLTYPE, 0, 0), system).second) {
            classes.push_back(expected);
        }
    }
    for (const Event& event : EVENTS) {
        fired = 0;
        for (const ExpectedClass& expected : classes) {
            const bool hasDialog = std::string_view(event.name).find("dialog") != std::string_view::npos;
            if (event.isOfDialogs && !StandsForDialogs(expected.name)) {
                continue;
            }
            for (const Action& action : ACTIONS) {
                if (action.act == CloseDialog && !hasDialog) {
                    continue;
                }
                const int firedBefore = fired;
                INFO(std::string(event.name), ": ", std::string(expected.name), " is ",
                     std::string(action.name));
                CAPTURE(fired);
                Scene scene;
                scene.trap = CreateTrap(scene.panel);
                scene.control = scene.panel.Create(expected.name, "Control");
                REQUIRE(scene.control != nullptr);
                for (const char* line :
                     {"resolution=1", "offvalue=1", "onvalue=5", "connection=TRAP*x;TRAP", "function=TRAP",
                      "function1=TRAP", "function2=TRAP", "datatype=f", "click=TRAP*x=%l"}) {
                    Load(scene.control, line, LOAD_FROM_FILE);
                }
                scene.action = [&] { action.act(scene); };
                event.happen(scene);
                armed = nullptr;
                PumpAll();
                DestroyWindow(scene.trap);
                if (fired == firedBefore) {
                    break; // nothing was heard, so that no other action would be taken either
                }
            }
        }
        INFO(std::string(event.name));
        CHECK(fired > 0);
    }
    CHECK(a_HostinfoCount() == objects);
}

TEST_CASE("a line of a panel file may close the panel") {
    const TestFolder folder;
    TestPanel panel;
    const HWND trap = CreateTrap(panel);
    REQUIRE(trap != nullptr);
    armed = [&] { ph_DestroyRoot(panel.Root()); };
    const std::string file =
        folder.Write("x.panel", "control=0x00000000 KNOB \"A\" 0x40000000 0,0,47,47\r\n"
                                "A*connection=TRAP\r\nA*relative=1\r\nA*bitmap=none.bmp\r\n"
                                "control=0x00000000 KNOB \"B\" 0x40000000 0,0,47,47\r\n"
                                "B*nosuch=1\r\n");
    CHECK(ph_LoadPanel(panel.Root(), file.c_str()) == -1);
    CHECK(a_HostinfoCount() == 0);
}
