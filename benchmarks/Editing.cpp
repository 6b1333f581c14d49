// The edit mode of the panel program with many controls selected: their properties, a step of a drag.

#include "Panel/editing/Editor.h"
#include "Panel/editing/Placement.h"
#include "Panel/properties/PropertyPane.h"
#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <cstring>

namespace {

constexpr int CONTROLS = 1000;
constexpr const char* CLASSES[] = {"KNOB", "FADER", "BBUTTON", "BEDIT"};
constexpr int DRAGGED = 100;
constexpr int DRAG_STEP = 8; // pixels, a line of the grid
constexpr int PANE_WIDTH = 264;
constexpr int PANE_HEIGHT = 500;

// Of each selected control as text: what is saved of it.
double ReadKeywords(const Editor& editor) {
    const double start = Now();
    char value[TEXT_SIZE];
    for (HOSTINFO* object : editor.Selected()) {
        const KEYWORDROW* table = object->GetHostinfoTable();
        for (int row = 0; table[row].keyword != nullptr; ++row) {
            if (table[row].handler != nullptr && ((table[row].flags & KEYWORD_SAVED) != 0 ||
                                                  std::strcmp(table[row].keyword, "connection") == 0)) {
                *value = '\0';
                VALUERECORD record = VALUERECORD::GetText(value, row);
                SendMessageA(object->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
            }
        }
    }
    return Now() - start;
}

// Seconds for a step of the mouse to the right or back, until all is painted.
class Drag {
public:
    Drag(Editor& editor, HOSTINFO* pressed) : editor_(editor) {
        const logic::Rectangle place = PlaceOf(*pressed);
        from_ = {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
        Mouse(WM_LBUTTONDOWN, from_.x);
        Mouse(WM_MOUSEMOVE, from_.x + 2 * DRAG_STEP); // no click
    }
    ~Drag() {
        LRESULT result = 0;
        editor_.OnMessage(WM_KEYDOWN, VK_ESCAPE, 0, result);
    }
    Drag(const Drag&) = delete;
    Drag& operator=(const Drag&) = delete;

    double Step() {
        Settle();
        isRight_ = !isRight_;
        const double start = Now();
        Mouse(WM_MOUSEMOVE, from_.x + (isRight_ ? 3 : 2) * DRAG_STEP);
        UpdateWindow(editor_.Panel());
        return Now() - start;
    }

private:
    void Mouse(UINT message, LONG x) {
        LRESULT result = 0;
        editor_.OnMessage(message, MK_LBUTTON, MAKELPARAM(x, from_.y), result);
    }

    Editor& editor_;
    POINT from_{};
    bool isRight_ = false;
};

// The same with windows that are nothing but windows.
double MoveBareWindows(HWND panel, const std::vector<HWND>& windows, int by) {
    Settle();
    const double start = Now();
    HDWP positions = BeginDeferWindowPos(static_cast<int>(windows.size()));
    for (std::size_t i = 0; i < windows.size() && positions != nullptr; ++i) {
        const RECT place = PlaceOf(static_cast<int>(i));
        positions =
            DeferWindowPos(positions, windows[i], nullptr, place.left + by, place.top, 0, 0,
                           SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS | static_cast<UINT>(SWP_NOSIZE));
    }
    if (positions != nullptr) {
        EndDeferWindowPos(positions);
    }
    RedrawWindow(panel, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    return Now() - start;
}

void MeasureDrag(Report& report, Editor& editor) {
    editor.Execute(CMD_SELECT_ALL);
    std::vector<HOSTINFO*> dragged = editor.Selected();
    if (dragged.size() != CONTROLS) {
        return report.Fail("drag", "not all are there");
    }
    dragged.resize(DRAGGED);
    editor.Select(dragged);
    const BenchPanel bare(true);
    std::vector<HWND> windows = bare.AddMany(BARE_CLASS, CONTROLS);
    windows.resize(DRAGGED);
    const logic::Rectangle before = PlaceOf(*dragged.back());
    Drag drag(editor, dragged.front());
    int by = 0;
    const auto ours = [&] { return drag.Step(); };
    const auto yardstick = [&] { return MoveBareWindows(bare.Window(), windows, by = DRAG_STEP - by); };
    report.Measure("drag step of 100 selected of 1000", ours, "100 of 1000 bare windows moved", yardstick,
                   Unit::Seconds, RatioUpTo(2), 30);
    if (PlaceOf(*dragged.back()) == before) {
        report.Fail("drag", "the controls do not follow the mouse");
    }
}

} // namespace

void MeasureEditing(Report& report) {
    const BenchPanel panel(true);
    for (int i = 0; i < CONTROLS; ++i) {
        panel.Add(CLASSES[static_cast<std::size_t>(i) % std::size(CLASSES)], i);
    }
    Editor editor(panel.Window(), panel.Root(), [](const std::string&) {});
    const BenchPanel frame(true);
    PropertyPane pane;
    if (!pane.Create(frame.Window(), static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)))) {
        return report.Fail("property pane", "it cannot be made");
    }
    SetWindowPos(pane.Handle(), HWND_TOP, 0, 0, PANE_WIDTH, PANE_HEIGHT, SWP_NOACTIVATE);
    editor.SetActive(true);
    pane.SetEditor(&editor);
    const auto select = [&](bool all) {
        LRESULT result = 0;
        if (all) {
            editor.Execute(CMD_SELECT_ALL);
        } else {
            editor.OnMessage(WM_KEYDOWN, VK_ESCAPE, 0, result);
            pane.Update();
        }
        Settle();
    };
    select(true);
    if (editor.Selected().size() != CONTROLS) {
        report.Fail("property pane", "not all are selected");
    }
    const auto fill = [&] {
        select(false);
        select(true);
        const double start = Now();
        pane.Update();
        RedrawWindow(pane.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        return Now() - start;
    };
    const auto read = [&] {
        Settle();
        return ReadKeywords(editor);
    };
    report.Measure("properties of 1000 selected, read and shown", fill, "their keywords, each read once",
                   read, Unit::Seconds, RatioUpTo(5), 15);
    pane.SetEditor(nullptr);
    MeasureDrag(report, editor);
    editor.SetActive(false);
}
