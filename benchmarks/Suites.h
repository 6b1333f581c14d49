// The groups of figures and the controls they are measured on.
#pragma once

#include "benchmarks/Report.h"

// A further control is a line here; figures that only it has are added to a group.
struct Subject {
    const char* className;
    const char* name;
    const char* bindings; // a property line; empty for none
    int windows = 1;      // that it is made of, itself included; fewer of it are made where there are more
    const char* systemClass = nullptr; // that it stands on: its yardstick in place of a bare window
};
constexpr const char* TWO_PARAMETERS = "function=AMP1*gain1;AMP1*gain2";
constexpr Subject SUBJECTS[] = {
    {"KNOB", "knob", TWO_PARAMETERS},
    {"FADER", "fader", TWO_PARAMETERS},
    {"METER", "meter", TWO_PARAMETERS},
    {"BBUTTON", "push button", TWO_PARAMETERS},
    {"BTRISTATEBUTTON", "switch button", TWO_PARAMETERS},
    {"LED", "LED", TWO_PARAMETERS},
    {"BSTATIC", "static text", TWO_PARAMETERS},
    {"BEDIT", "edit field", TWO_PARAMETERS, 1, "EDIT"},
    {"CLOCK", "clock", ""},
    {"EQ", "equaliser", TWO_PARAMETERS, 16},
    {"XOVER", "crossover", TWO_PARAMETERS, 22},
};

void MeasureCreation(Report& report);
void MeasurePainting(Report& report);
void MeasureRecords(Report& report);
void MeasureMemory(Report& report);
void MeasurePanelFiles(Report& report);
void MeasureWork(Report& report);
void MeasureStrips(Report& report);
void MeasureWaveFiles(Report& report);
void MeasureNetwork(Report& report);
void MeasurePanels(Report& report);

// Creates that many windows in this process, which is to do nothing else, lets each load the line unless it
// is empty, and prints what they hold.
int PrintMemory(const char* className, int count, const char* line);
