// Controls with content: a long list beside the system's list view in its virtual mode, and a condition over
// several values beside what it takes to get them.

#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int ENTRIES = 10000;
constexpr int WIDTH = 200;
constexpr int HEIGHT = 200;
constexpr int PAGES = 20;
constexpr int LAMPS = 200;
constexpr const char* PARENT_CLASS = "BenchListParent";

void Load(HWND control, const std::string& line) {
    SendMessageA(control, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line.c_str()));
}

// A file in the folder for such, which goes with it.
class EntryFile {
public:
    EntryFile() {
        char folder[MAX_PATH];
        GetTempPathA(MAX_PATH, folder);
        GetTempFileNameA(folder, "lst", 0, path_);
        std::ofstream file(path_, std::ios::binary);
        for (int i = 1; i <= ENTRIES; ++i) {
            file << "Scene " << i << "=" << i << "\r\n";
        }
    }
    ~EntryFile() { DeleteFileA(path_); }
    EntryFile(const EntryFile&) = delete;
    EntryFile& operator=(const EntryFile&) = delete;

    const char* Path() const { return path_; }

private:
    char path_[MAX_PATH]{};
};

// Answers a list view for the text of an item.
LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == LVN_GETDISPINFOA) {
        LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(lParam)->item;
        if ((item.mask & LVIF_TEXT) != 0) {
            std::snprintf(item.pszText, static_cast<std::size_t>(item.cchTextMax),
                          item.iSubItem == 0 ? "%d" : "Scene %d", item.iItem + 1);
        }
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND CreateParent(const BenchPanel& panel) {
    WNDCLASSA parentClass{};
    parentClass.lpfnWndProc = ParentProc;
    parentClass.lpszClassName = PARENT_CLASS;
    RegisterClassA(&parentClass);
    return CreateWindowExA(0, PARENT_CLASS, "", WS_CHILD | WS_VISIBLE, WIDTH + 20, 0, WIDTH, HEIGHT,
                           panel.Window(), nullptr, nullptr, nullptr);
}

// Two columns, and all entries.
HWND CreateListView(HWND parent) {
    const HWND view = CreateWindowExA(0, WC_LISTVIEWA, "",
                                      WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_NOCOLUMNHEADER,
                                      0, 0, WIDTH, HEIGHT, parent, nullptr, nullptr, nullptr);
    LVCOLUMNA column{};
    column.mask = LVCF_WIDTH;
    column.cx = WIDTH / 4;
    SendMessageA(view, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    column.cx = WIDTH / 2;
    SendMessageA(view, LVM_INSERTCOLUMNA, 1, reinterpret_cast<LPARAM>(&column));
    SendMessageA(view, LVM_SETITEMCOUNT, ENTRIES, 0);
    return view;
}

HWND CreateList(const BenchPanel& panel, const EntryFile& file) {
    const HWND list = CreateWindowExA(0, "LISTSELECTION", "List", WS_CHILD | WS_VISIBLE, 0, 0, WIDTH, HEIGHT,
                                      panel.Window(), nullptr, nullptr, panel.Root());
    Load(list, std::string("file=") + file.Path());
    return list;
}

// Seconds until it is made and seen. What is destroyed is not counted.
template <class Create>
Workload Show(Create create) {
    return [create] {
        Settle();
        const double start = Now();
        const HWND window = create();
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const double seconds = Now() - start;
        DestroyWindow(window);
        return seconds;
    };
}

// Seconds for one page, down and up again.
Workload Scroll(HWND window, UINT message, WPARAM down, WPARAM up, int repeats) {
    return [=] {
        Settle();
        const double start = Now();
        for (int page = 0; page < PAGES; ++page) {
            for (int i = 0; i < repeats; ++i) {
                SendMessageA(window, message, page % 2 == 0 ? down : up, 1);
            }
            UpdateWindow(window);
        }
        return (Now() - start) / PAGES;
    };
}

// Seconds for one painting.
Workload Paint(HWND window) {
    return [window] {
        Settle();
        const double start = Now();
        for (int page = 0; page < PAGES; ++page) {
            RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
            UpdateWindow(window);
        }
        return (Now() - start) / PAGES;
    };
}

void MeasureLists(Report& report) {
    const EntryFile file;
    const BenchPanel panel(true);
    const HWND parent = CreateParent(panel);
    report.Measure("read and show a list of 10,000", Show([&] { return CreateList(panel, file); }),
                   "a virtual list view", Show([parent] { return CreateListView(parent); }), Unit::Seconds,
                   RatioUpTo(2), 25);
    const HWND list = CreateList(panel, file);
    const HWND view = CreateListView(parent);
    SendMessageA(list, WM_KEYDOWN, VK_END, 1); // each further page scrolls
    SendMessageA(list, WM_KEYDOWN, VK_PRIOR, 1);
    report.Measure(
        "scroll a list by a page",
        Scroll(list, WM_MOUSEWHEEL, MAKEWPARAM(0, 3 * WHEEL_DELTA), MAKEWPARAM(0, -3 * WHEEL_DELTA), 1),
        "a virtual list view", Scroll(view, WM_VSCROLL, SB_PAGEDOWN, SB_PAGEUP, 1), Unit::Seconds,
        RatioUpTo(1.5), 25);
    const HWND blit = panel.Add(BLIT_CLASS, 0);
    SetWindowPos(blit, nullptr, 0, HEIGHT + 20, WIDTH, HEIGHT, SWP_NOZORDER);
    report.Measure("paint a list with its rows", Paint(list), "bare window, one BitBlt", Paint(blit),
                   Unit::Seconds, RatioUpTo(1.3), 25);
}

void MeasureCondition(Report& report) {
    const BenchPanel panel(false);
    const std::vector<HWND> knobs = panel.AddMany("KNOB", 8);
    std::string names;
    for (const HWND knob : knobs) {
        names += a_OwnName(a_FromWindow(knob)) + ";";
    }
    const std::vector<HWND> lamps = panel.AddMany("CONDITIONALLED", LAMPS);
    for (const HWND lamp : lamps) {
        Load(lamp, "interval=0");
        Load(lamp, "condition=a > -6 and b = 0 or (c + d) / 2 < min(e, f) and not g <> h");
        Load(lamp, "connection=" + names);
    }
    const auto poll = [&lamps] {
        Sleep(20); // so that all of them are due
        const double start = Now();
        for (const HWND lamp : lamps) {
            SendMessageA(lamp, WM_TIMER, 0, 0);
        }
        return (Now() - start) / LAMPS;
    };
    const auto get = [&knobs] {
        const double start = Now();
        for (int i = 0; i < LAMPS; ++i) {
            for (const HWND knob : knobs) {
                float value = -1.0F;
                VALUERECORD record = VALUERECORD::Get(DATATYPE_FLOAT, &value);
                SendMessageA(knob, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
            }
        }
        return (Now() - start) / LAMPS;
    };
    report.Measure("a condition over 8 values", poll, "a bare get of the 8", get, Unit::Seconds, RatioUpTo(3),
                   25);
}

} // namespace

void MeasureContent(Report& report) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    MeasureLists(report);
    MeasureCondition(report);
    MeasureMatrices(report);
}
