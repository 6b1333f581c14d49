// What fills the controls of some classes, and what those are measured against that the system draws.
#pragma once

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <windows.h>

#include <string_view>
#include <vector>

struct Content {
    const char* className;
    const char* lines;         // property lines joined by "|"
    const char* parts[2] = {}; // what it is made of, its yardstick: classes of the system, and BLIT_CLASS
                               // where it draws; null for none
    double creation = 1.5;     // what the ratios are not to exceed
    double painting = 1.3;
};

// An empty one for a class that is measured as it is created.
const Content& ContentOf(const char* className);

// Property lines joined by "|".
void LoadLines(HWND window, std::string_view lines);
// A control of the subject's class with its content, as large as a new one of an editor where there is some.
// Null on failure.
HWND AddFilled(const BenchPanel& panel, const Subject& subject, int number);
// Windows of the parts, in the styles, the sizes, the fonts and with the texts of those in the control. Empty
// for a subject without parts.
std::vector<HWND> AddParts(const BenchPanel& panel, const Subject& subject, HWND control, int number);

// What is shown stays as it is: it is set to the value that it holds, and polls. Whether anything is to be
// painted then.
bool IsPaintedUnchanged(HWND control);
