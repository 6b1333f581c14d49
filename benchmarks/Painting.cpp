// Painting one control on a visible panel.

#include "benchmarks/FilledControls.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

#include <utility>

namespace {

constexpr int REPETITIONS = 20;

// Seconds for one painting of all of them, with what is inside them or without.
Workload Paint(const std::vector<HWND>& windows, bool isWithChildren) {
    const UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | (isWithChildren ? RDW_ALLCHILDREN : RDW_NOCHILDREN);
    return [windows, flags] {
        Settle();
        const double start = Now();
        for (int i = 0; i < REPETITIONS; ++i) {
            for (const HWND window : windows) {
                RedrawWindow(window, nullptr, nullptr, flags);
            }
        }
        return (Now() - start) / REPETITIONS;
    };
}

// The windows that a control is measured against are made anew with it, so that they are as large.
void PaintOne(Report& report, const BenchPanel& panel, const Subject& subject, const char* look) {
    const HWND control = AddFilled(panel, subject, 8);
    if (control == nullptr) {
        return report.Fail(subject.name, "it cannot be created");
    }
    RECT client;
    GetClientRect(control, &client); // some give themselves their size
    const SIZE size{client.right, client.bottom};
    std::vector<HWND> system = AddParts(panel, subject, control, 12);
    const bool hasParts = !system.empty();
    if (!hasParts && subject.systemClass != nullptr) {
        system.push_back(panel.Add(subject.systemClass, 12, size));
    }
    const HWND blit = panel.Add(BLIT_CLASS, 0, size);
    const HWND trackbar = panel.Add(TRACKBAR_CLASSA, 4, size);
    Paint({control}, hasParts)(); // what is made at the first painting
    if (*ContentOf(subject.className).className != '\0' && IsPaintedUnchanged(control)) {
        report.Fail(subject.name, "what has not changed is painted again");
    }
    const std::vector<Samples> samples =
        TakeTurns(report.Rounds(40),
                  {Paint({control}, hasParts), Paint(system.empty() ? std::vector{blit} : system, hasParts),
                   Paint({trackbar}, false)});
    const std::string figure = "paint one " + subject.name + look;
    report.Add(figure, samples[0],
               system.empty()      ? "bare window, one BitBlt"
               : system.size() > 1 ? "the system's parts"
                                   : "the system's",
               samples[1], Unit::Seconds, RatioUpTo(ContentOf(subject.className).painting));
    report.Add(figure, samples[0], "trackbar", samples[2], Unit::Seconds, NO_AIM);
    system.insert(system.end(), {control, blit, trackbar});
    for (const HWND window : system) {
        DestroyWindow(window);
    }
}

} // namespace

void MeasurePainting(Report& report) {
    for (const auto& [style, look] : {std::pair("style=classic", ""), {"style=dark", ", dark"}}) {
        const BenchPanel panel(true);
        LoadLines(panel.Window(), style);
        for (const Subject& subject : Subjects()) {
            if (report.WantsSubject(subject.name)) {
                PaintOne(report, panel, subject, look);
            }
        }
    }
}
