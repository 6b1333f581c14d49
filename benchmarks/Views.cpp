// Views of processing blocks with content: a curve of 16 bands, at rest and while one of them is dragged.

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"
#include "Panelhost/ValueRecord.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <string>
#include <vector>

namespace {

constexpr int BANDS = 16;
constexpr SIZE VIEW{480, 240};
constexpr int MOVES = 20;
constexpr int POLLS = 20;
constexpr UINT_PTR TICK = 1;

std::string Bands(bool areDeclared) {
    std::string text = areDeclared ? "DSP*device=simulated\n" : "";
    for (int band = 1; band <= BANDS; ++band) {
        const std::string name = "DSP*band" + std::to_string(band);
        text += areDeclared ? name + "=channeleq,,,0,PEQ,6 dB," + std::to_string(band * 250) + " Hz,4 dB,2\n"
                            : name + (band < BANDS ? ";" : "");
    }
    return text;
}

void Load(HWND control, const std::string& line) {
    SendMessageA(control, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
}

// Seconds for a poll.
double Poll(HWND view) {
    Sleep(20); // so that it is due
    const double start = Now();
    SendMessageA(view, WM_TIMER, TICK, 0);
    return Now() - start;
}

std::string ValueOf(HWND view) {
    char text[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(text);
    SendMessageA(view, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return text;
}

void Mouse(HWND view, UINT message, POINT at) {
    SendMessageA(view, message, MK_LBUTTON, MAKELPARAM(at.x, at.y));
}

bool IsToBePainted(HWND view) {
    return GetUpdateRect(view, nullptr, FALSE) != FALSE;
}

} // namespace

void MeasureViews(Report& report) {
    const BenchPanel panel(true);
    DeclareDevices(panel, Bands(true));
    const HWND blit = panel.Add(BLIT_CLASS, 0, VIEW);
    const HWND view = panel.Add("MINIEQ", 12, VIEW);
    Load(view, "interval=0");
    Load(view, "datatype=channeleq");
    Load(view, "function=" + Bands(false));
    Poll(view);
    UpdateWindow(view);
    for (int i = 0; i < POLLS; ++i) {
        Poll(view);
    }
    if (IsToBePainted(view)) {
        report.Fail("poll 16 bands", "bands that are as they were are painted again");
    }

    const REQUESTLIST requests = a_FromWindow(view)->requests;
    const auto poll = [view] { return Poll(view); };
    const auto get = [&requests] {
        Sleep(20); // as the other one does
        const double start = Now();
        for (const REQUESTITEM& item : requests) {
            char band[TEXT_SIZE] = "";
            a_SendToItem(item, COMMAND_GET, DATATYPE_CHANNEL_EQ, band);
        }
        return Now() - start;
    };
    report.Measure("poll 16 bands that are as they were", poll, "a bare get of the 16", get, Unit::Seconds,
                   NO_AIM, 25); // cold, and so short that the message itself counts

    // The fourth: 1 kHz and 4 dB, in the middle and 2/9 of the height above it.
    const POINT point{271, 93};
    Mouse(view, WM_LBUTTONDOWN, point);
    int step = 0;
    const auto drag = [&] {
        Settle();
        const double start = Now();
        for (int i = 0; i < MOVES; ++i) {
            Mouse(view, WM_MOUSEMOVE, {point.x + ++step % 20, point.y + step % 12});
            UpdateWindow(view);
        }
        return (Now() - start) / MOVES;
    };
    const auto paint = [blit] {
        Settle();
        const double start = Now();
        for (int i = 0; i < MOVES; ++i) {
            RedrawWindow(blit, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        }
        return (Now() - start) / MOVES;
    };
    const std::string before = ValueOf(view);
    drag();
    if (ValueOf(view) == before) {
        report.Fail("drag one of 16 bands", "the band does not follow the mouse");
    }
    report.Measure("drag one of 16 bands, send and paint", drag, "bare window, one BitBlt", paint,
                   Unit::Seconds, RatioUpTo(3), 25);
    Mouse(view, WM_LBUTTONUP, point);
}
