// What the controls that are made of many windows do: showing a record that a device has changed, and a step
// of an arrow down to the request that it sends.

#include "Panelhost/Hostinfo.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"
#include "logic/controls/EqBand.h"

#include <commctrl.h>

#include <string>

namespace {

constexpr int REPETITIONS = 40;
constexpr int ROUNDS = 35;
constexpr int FREQUENCY_FIELD = 102;
constexpr int FREQUENCY_SPIN = 107;

HWND AddEqualiser(const BenchPanel& panel) {
    const HWND eq = panel.Add("EQ", 1);
    SendMessageA(eq, CWM_LOAD, LOAD_FROM_FILE,
                 reinterpret_cast<LPARAM>("properties=0,PEQ,6 dB,1000 Hz,0 dB,1"));
    return eq;
}

// Seconds for one new text of an edit field, which is most of what showing a value asks of the system.
Workload SetField(HWND field) {
    return [field] {
        const double start = Now();
        for (int i = 0; i < REPETITIONS; ++i) {
            SetWindowTextA(field, i % 2 == 0 ? "440 Hz" : "880 Hz");
            UpdateWindow(field);
        }
        return (Now() - start) / REPETITIONS;
    };
}

Workload ShowBand(HWND eq, bool isChanged) {
    return [eq, isChanged] {
        logic::EqBand band{0, logic::Peak, 440.0F, 0.0F, 1.0F, 1};
        const HWND field = GetDlgItem(eq, FREQUENCY_FIELD);
        const double start = Now();
        for (int i = 0; i < REPETITIONS; ++i) {
            band.frequency = isChanged && i % 2 == 0 ? 880.0F : 440.0F;
            VALUERECORD record = VALUERECORD::Set(DATATYPE_MASTER_EQ, &band);
            SendMessageA(eq, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
            UpdateWindow(field);
        }
        return (Now() - start) / REPETITIONS;
    };
}

void MeasureShowing(Report& report) {
    const BenchPanel panel(true);
    const HWND eq = AddEqualiser(panel);
    const HWND field = GetDlgItem(AddEqualiser(panel), FREQUENCY_FIELD);
    Settle();
    report.Measure("show a band with a new frequency", ShowBand(eq, true), "a new text of its field",
                   SetField(field), Unit::Seconds, RatioUpTo(2), ROUNDS);
    report.Measure("show a band with nothing new", ShowBand(eq, false), "a new text of a field",
                   SetField(field), Unit::Seconds, RatioUpTo(0.1), ROUNDS);
}

// Seconds for one step of the frequency's arrows, up and down by turns, with the set request that comes of
// it.
Workload Step(HWND eq) {
    return [eq] {
        NMUPDOWN step{
            {GetDlgItem(eq, FREQUENCY_SPIN), FREQUENCY_SPIN, static_cast<UINT>(UDN_DELTAPOS)}, 0, 1};
        const double start = Now();
        for (int i = 0; i < REPETITIONS; ++i) {
            step.iDelta = -step.iDelta;
            SendMessageA(eq, WM_NOTIFY, step.hdr.idFrom, reinterpret_cast<LPARAM>(&step));
            UpdateWindow(GetDlgItem(eq, FREQUENCY_FIELD));
        }
        return (Now() - start) / REPETITIONS;
    };
}

void MeasureStep(Report& report) {
    const BenchPanel panel(true);
    const HWND eq = AddEqualiser(panel);
    const HWND other = AddEqualiser(panel);
    const std::string line = "connection=" + a_FromWindow(other)->name;
    SendMessageA(eq, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
    Settle();
    report.Measure("one step of an arrow, sent to a second band that shows it", Step(eq),
                   "a new text of a field", SetField(GetDlgItem(other, FREQUENCY_FIELD)), Unit::Seconds,
                   NO_AIM, ROUNDS);
}

} // namespace

void MeasurePanels(Report& report) {
    MeasureShowing(report);
    MeasureStep(report);
}
