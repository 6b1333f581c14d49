#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "benchmarks/FilledControls.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <algorithm>

namespace {

BOOL CALLBACK Count(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int WindowsIn(HWND window) {
    int count = 1;
    EnumChildWindows(window, Count, reinterpret_cast<LPARAM>(&count));
    return count;
}

constexpr int COMMON_ROWS = 6; // value, connection, function, interval, layer, level

int RowsOf(const KEYWORDROW* table) {
    int rows = 0;
    while (table[rows].keyword != nullptr) {
        ++rows;
    }
    return rows;
}

std::vector<Subject> FindSubjects() {
    std::vector<const PH_CONTROLCLASS*> known;
    ph_ListControlClasses(
        [](const PH_CONTROLCLASS* one, void* all) {
            static_cast<std::vector<const PH_CONTROLCLASS*>*>(all)->push_back(one);
        },
        &known);
    const BenchPanel panel(false);
    std::vector<Subject> subjects;
    std::vector<const KEYWORDROW*> tables;
    for (const PH_CONTROLCLASS* one : known) {
        const HWND control = one->group == PH_GROUP_INTERFACES ? nullptr : panel.Add(one->windowClass, 1);
        if (control == nullptr) {
            continue;
        }
        const KEYWORDROW* table = a_FromWindow(control)->GetHostinfoTable();
        const bool isBound = a_FindKeyword(table, "function") >= 0;
        subjects.push_back({one->windowClass,
                            one->name,
                            isBound ? "function=AMP1*gain1;AMP1*gain2" : "",
                            1,
                            one->systemClass,
                            one->group == PH_GROUP_STRIPS,
                            {one->width, one->height}});
        DestroyWindow(control);
        const HWND filled = AddFilled(panel, subjects.back(), 1);
        subjects.back().windows = WindowsIn(filled);
        DestroyWindow(filled);
        tables.push_back(table);
    }
    std::vector<Subject> own;
    for (std::size_t i = 0; i < subjects.size(); ++i) {
        // Of classes that are the same, the first; those that have the common part alone share its table.
        const bool isFirst =
            std::find(tables.begin(), tables.end(), tables[i]) == tables.begin() + static_cast<int>(i);
        if (isFirst && RowsOf(tables[i]) > COMMON_ROWS) {
            own.push_back(subjects[i]);
        }
    }
    return own;
}

} // namespace

const std::vector<Subject>& Subjects() {
    static const std::vector<Subject> subjects = FindSubjects();
    return subjects;
}
