// Painting one control on a visible panel.

#include "benchmarks/FilledControls.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

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

} // namespace

void MeasurePainting(Report& report) {
    const BenchPanel panel(true);
    const HWND blit = panel.Add(BLIT_CLASS, 0);
    const HWND trackbar = panel.Add(TRACKBAR_CLASSA, 4);
    for (const Subject& subject : Subjects()) {
        if (!report.WantsSubject(subject.name)) {
            continue;
        }
        const HWND control = AddFilled(panel, subject, 8);
        if (control == nullptr) {
            report.Fail(subject.name, "it cannot be created");
            continue;
        }
        RECT client;
        GetClientRect(control, &client); // some give themselves their size
        std::vector<HWND> system = AddParts(panel, subject, control, 12);
        const bool hasParts = !system.empty();
        if (!hasParts && subject.systemClass != nullptr) {
            system.push_back(panel.Add(subject.systemClass, 12, {client.right, client.bottom}));
        }
        for (const HWND yardstick : {blit, trackbar}) {
            SetWindowPos(yardstick, nullptr, 0, 0, client.right, client.bottom, SWP_NOMOVE | SWP_NOZORDER);
        }
        Paint({control}, hasParts)(); // what is made at the first painting
        if (*ContentOf(subject.className).className != '\0' && IsPaintedUnchanged(control)) {
            report.Fail(subject.name, "what has not changed is painted again");
        }
        const std::vector<Samples> samples =
            TakeTurns(report.Rounds(40), {Paint({control}, hasParts),
                                          Paint(system.empty() ? std::vector{blit} : system, hasParts),
                                          Paint({trackbar}, false)});
        const std::string figure = "paint one " + subject.name;
        report.Add(figure, samples[0],
                   system.empty()      ? "bare window, one BitBlt"
                   : system.size() > 1 ? "the system's parts"
                                       : "the system's",
                   samples[1], Unit::Seconds, RatioUpTo(ContentOf(subject.className).painting));
        report.Add(figure, samples[0], "trackbar", samples[2], Unit::Seconds, NO_AIM);
        DestroyWindow(control);
        for (const HWND window : system) {
            DestroyWindow(window);
        }
    }
}
