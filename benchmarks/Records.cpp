// Messages that controls get all the time, in the same thread: value records and the timer.

#include "Panelhost/Messages.h"
#include "Panelhost/ValueRecord.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

namespace {

// Many short samples: most of them fit between two interruptions.
constexpr int REPETITIONS = 2000;
constexpr int ROUNDS = 125;

// Seconds for one record. The buffer never holds the value beforehand, so that it is stored each time.
Workload Get(HWND window, const char* keyword) {
    return [window, keyword] {
        float value = 0;
        const double start = Now();
        for (int i = 0; i < REPETITIONS; ++i) {
            value = -1.0F;
            VALUERECORD record = VALUERECORD::Get(DATATYPE_FLOAT, &value).Named(keyword);
            SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
        }
        return (Now() - start) / REPETITIONS;
    };
}

// Seconds for one tick.
Workload Tick(HWND window) {
    return [window] {
        const double start = Now();
        for (int i = 0; i < REPETITIONS; ++i) {
            SendMessageA(window, WM_TIMER, 0, 0);
        }
        return (Now() - start) / REPETITIONS;
    };
}

} // namespace

void MeasureRecords(Report& report) {
    const BenchPanel panel(false);
    const HWND bare = panel.Add(ANSWER_CLASS, 0);
    int number = 0;
    for (const auto& [className, name, bindings, windows, systemClass, isStrip, size] : Subjects()) {
        if (!report.WantsSubject(name)) {
            continue;
        }
        const HWND control = panel.Add(className, ++number);
        report.Measure("get the value of a " + name, Get(control, nullptr), "bare window's answer",
                       Get(bare, nullptr), Unit::Seconds, RatioUpTo(isStrip ? 6 : 3), ROUNDS);
        report.Measure("one tick of an idle " + name, Tick(control), "WM_TIMER to a bare window", Tick(bare),
                       Unit::Seconds, RatioUpTo(3), ROUNDS);
    }
    report.Measure("get the value of a knob by its keyword", Get(panel.Add("KNOB", ++number), "value"),
                   "bare window's answer", Get(bare, "value"), Unit::Seconds, RatioUpTo(3), ROUNDS);
}
