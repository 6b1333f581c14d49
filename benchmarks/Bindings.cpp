// The list of everything that is bound: opening it, and the look that it takes each second while it is open.

#include "Panel/bindings/BindingTable.h"
#include "Panel/bindings/BindingsWindow.h"
#include "Panel/common/Window.h"
#include "Panel/resource.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Messages.h"
#include "base/Gdi.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

#include <string>

namespace {

constexpr int CONTROLS = 1000;
constexpr int BOUND_TO_EACH = 10;
constexpr int BINDINGS = CONTROLS * BOUND_TO_EACH;
constexpr int PARAMETERS = 100;

// A list of as many rows whose texts are at hand.
class PlainList : public ListWindow {
public:
    bool Create(HWND frame, HFONT font) {
        constexpr ListColumn COLUMNS[BINDING_COLUMNS] = {{"A", 130}, {"B", 80}, {"C", 160},
                                                         {"D", 110}, {"E", 80}, {"F", 50}};
        return ListWindow::Create("BenchPlainList", "Rows", frame, font, IDM_BINDINGS, COLUMNS);
    }

private:
    void Update() override { SendMessageA(List(), LVM_SETITEMCOUNT, BINDINGS, 0); }
    int Count() const override { return BINDINGS; }
    std::string Cell(int row, int) const override { return std::to_string(row); }
};

void BindControls(const BenchPanel& panel) {
    std::string devices = "AMP*device=simulated\n";
    for (int i = 0; i < PARAMETERS; ++i) {
        devices += "AMP*gain" + std::to_string(i) + "=float,-80,18,-6,dB\n";
    }
    DeclareDevices(panel, devices);
    int number = 0;
    for (const HWND control : panel.AddMany("KNOB", CONTROLS)) {
        std::string line = "function=";
        for (int i = 0; i < BOUND_TO_EACH; ++i) {
            line += "AMP*gain" + std::to_string(number++ % PARAMETERS) + ";";
        }
        SendMessageA(control, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
    }
}

// Seconds until the window is seen with all that it shows. Hiding it is not counted.
template <class List>
Workload Open(List& list) {
    return [&list] {
        Settle();
        const double start = Now();
        list.Show(true);
        RedrawWindow(list.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const double seconds = Now() - start;
        list.Show(false);
        return seconds;
    };
}

} // namespace

void MeasureBindings(Report& report) {
    const BenchPanel panel(false);
    BindControls(panel);
    const Font font(CreateSystemFont());
    PlainList plain;
    BindingsWindow bindings({});
    if (!plain.Create(panel.Window(), font.get()) || !bindings.Create(panel.Window(), font.get())) {
        report.Fail("open the list of 10,000 bindings", "no windows");
        return;
    }
    bindings.SetRoot(panel.Root());
    report.Measure("open the list of 10,000 bindings", Open(bindings), "a virtual list view of 10,000 rows",
                   Open(plain), Unit::Seconds, RatioUpTo(2), 25);

    BindingTable table;
    table.Read(panel.Root());
    if (table.Count() != BINDINGS || table.NotLive() != 0) {
        report.Fail("a look at 10,000 bindings", "they are not found");
    }
    const auto look = [&] {
        const double start = Now();
        table.Read(panel.Root());
        return Now() - start;
    };
    const auto ask = [&] {
        const double start = Now();
        for (int i = 0; i < BINDINGS; ++i) {
            ph_ParameterState(panel.Root(), table[i].address.c_str());
        }
        return Now() - start;
    };
    report.Measure("a look at 10,000 bindings, once a second", look, "ph_ParameterState of each", ask,
                   Unit::Seconds, RatioUpTo(2), 25);
}
