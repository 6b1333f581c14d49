// The edit mode of the panel program with many controls selected.

#include "Panel/editing/Editor.h"
#include "Panel/properties/PropertyPane.h"
#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <cstring>

namespace {

constexpr int CONTROLS = 1000;
constexpr const char* CLASSES[] = {"KNOB", "FADER", "BBUTTON", "BEDIT"};
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
    editor.SetActive(false);
}
