#include "benchmarks/FilledControls.h"

#include "Panelhost/Messages.h"
#include "Panelhost/ValueRecord.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr Content CONTENTS[] = {
    {.className = "SCALE", .lines = "properties=-80,12|minor=4|fmt=%g dB"},
    {.className = "FADING",
     .lines =
         "properties=-80,12,-6|zones=-80=0x0040c040;-12=0x0000c0ff;0=0x000000ff|style=segments|hold=2000|"
         "fmt=%.1f"},
    {.className = "REVMETER", .lines = "properties=-40,0,-12"},
    {.className = "SPINEDIT",
     .lines = "properties=-80,18,-6.5|resolution=0.5|unit=dB",
     .parts = {"EDIT", UPDOWN_CLASSA},
     .painting = 1.2},
    {.className = "BRANGE", .lines = "properties=-80,18,-6|low=-40|high=0|settable=all"},
    {.className = "BRADIOBUTTON", .lines = "caption=Stage left|group=bench|value=1"},
    {.className = "SWITCH", .lines = "positions=-1,0,1|caption=DOWN;;UP|value=1"},
    {.className = "CONTACTBUTTON", .lines = "caption=Curtain"},
    {.className = "BCOMBOBOX",
     .lines = "items=Off;Low=1;Middle=2;High=3|value=2",
     .parts = {"COMBOBOX"},
     .creation = 1.2,
     .painting = 1.2},
    {.className = "BIMAGELIST", .lines = "bitmap=.\\Controls\\LED_green_16x16.bmp|frames=2|value=1"},
    {.className = "CONDITIONALLED", .lines = "condition=1 < 2 and not 3 > 4"},
    {.className = "BEDIT2",
     .lines = "caption=Doors open at seven\\nInterval after act one",
     .parts = {"EDIT"},
     .creation = 1.2,
     .painting = 1.2},
    {.className = "LISTSELECTION",
     .lines = "items=Overture;First act;Second act;Interval;Third act;Finale|value=2"},
    {.className = "MINIDELAY", .lines = "connection=Control|value=0,20 ms|caption=Delay"},
    {.className = "MINIDYNAMICS", .lines = "connection=Control|value=-30|caption=Compressor"},
    {.className = "MINIEQ", .lines = "caption=Equalizer|connection=Control"},
    {.className = "MINIXOVER", .lines = "caption=Crossover|connection=Control"},
    {.className = "MINIEDIT", .lines = "caption=Gate|connection=Control|value=1"},
    {.className = "MINIROUTING", .lines = "routes=DSP*route%i_%o"},
    {.className = "DANTECONTROL", .lines = "", .parts = {"COMBOBOX", BLIT_CLASS}, .painting = 1.2},
};

BOOL CALLBACK IsToBePainted(HWND window, LPARAM found) {
    if (GetUpdateRect(window, nullptr, FALSE)) {
        *reinterpret_cast<bool*>(found) = true;
    }
    return TRUE;
}

} // namespace

void LoadLines(HWND window, std::string_view lines) {
    while (!lines.empty()) {
        const std::string line(lines.substr(0, lines.find('|')));
        SendMessageA(window, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    }
}

const Content& ContentOf(const char* className) {
    static constexpr Content NOTHING{.className = "", .lines = "", .painting = 1.5};
    for (const Content& content : CONTENTS) {
        if (std::strcmp(content.className, className) == 0) {
            return content;
        }
    }
    return NOTHING;
}

HWND AddFilled(const BenchPanel& panel, const Subject& subject, int number) {
    const Content& content = ContentOf(subject.className);
    if (*content.className == '\0') {
        return panel.Add(subject.className, number);
    }
    const HWND control = panel.Add(subject.className, number, subject.size);
    LoadLines(control, content.lines);
    return control;
}

std::vector<HWND> AddParts(const BenchPanel& panel, const Subject& subject, HWND control, int number) {
    std::vector<HWND> added;
    for (const char* part : ContentOf(subject.className).parts) {
        if (part == nullptr) {
            break;
        }
        const HWND inner = FindWindowExA(control, nullptr, part, nullptr);
        const HWND model = inner != nullptr ? inner : control;
        RECT place;
        GetWindowRect(model, &place);
        auto style = static_cast<DWORD>(GetWindowLongA(model, GWL_STYLE));
        if (lstrcmpiA(part, WC_COMBOBOXA) == 0) {
            style |= WS_VSCROLL; // it has passed it on to its list
            if (model == control) {
                place.bottom = place.top + subject.size.cy; // it has kept the rest for its list
            }
        }
        const RECT corner = PlaceOf(number);
        char text[TEXT_SIZE] = "";
        GetWindowTextA(model, text, sizeof text);
        const HWND made =
            CreateWindowExA(static_cast<DWORD>(GetWindowLongA(model, GWL_EXSTYLE)), part, text, style,
                            corner.left, corner.top, place.right - place.left, place.bottom - place.top,
                            panel.Window(), nullptr, GetModuleHandleA(nullptr), nullptr);
        if (const LRESULT font = SendMessageA(model, WM_GETFONT, 0, 0); font != 0) {
            SendMessageA(made, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
        }
        if (lstrcmpiA(part, WC_COMBOBOXA) == 0) {
            SendMessageA(made, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
            SendMessageA(made, CB_SETCURSEL, 0, 0);
        }
        added.push_back(made);
    }
    return added;
}

bool IsPaintedUnchanged(HWND control) {
    const auto poll = [control] {
        Sleep(2);
        SendMessageA(control, WM_TIMER, 0, 0);
    };
    LoadLines(control, "interval=0");
    poll(); // the first one may find something
    UpdateWindow(control);
    Settle();
    char text[TEXT_SIZE] = "";
    VALUERECORD get = VALUERECORD::GetText(text);
    if (SendMessageA(control, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&get)) != 0) {
        VALUERECORD set = VALUERECORD::SetText(text);
        SendMessageA(control, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&set));
    }
    poll();
    bool isToBePainted = false;
    IsToBePainted(control, reinterpret_cast<LPARAM>(&isToBePainted));
    EnumChildWindows(control, IsToBePainted, reinterpret_cast<LPARAM>(&isToBePainted));
    return isToBePainted;
}
