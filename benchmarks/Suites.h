// The groups of figures and the controls they are measured on.
#pragma once

#include "benchmarks/Report.h"

#include <windows.h>

#include <string>
#include <vector>

// A class of the palette's groups of controls that has keywords of its own.
struct Subject {
    const char* className;
    std::string name;
    std::string bindings;    // a property line; empty for none
    int windows = 1;         // that it is made of, itself included; fewer of it are made where there are more
    const char* systemClass; // that it stands on: its yardstick in place of a bare window; null for none
    bool isStrip;            // whose value is that of a child, asked by a second message
    SIZE size;               // of a new one in an editor, pixels
};
const std::vector<Subject>& Subjects();

void MeasureCreation(Report& report);
void MeasurePainting(Report& report);
void MeasureRecords(Report& report);
void MeasureMemory(Report& report);
void MeasurePanelFiles(Report& report);
void MeasureWork(Report& report);
void MeasureStrips(Report& report);
void MeasureWaveFiles(Report& report);
void MeasureNetwork(Report& report);
void MeasureSound(Report& report);
void MeasurePanels(Report& report);
void MeasureContent(Report& report);
void MeasureDevices(Report& report);
void MeasureMatrices(Report& report); // a part of the content
void MeasureViews(Report& report);
void MeasureEditing(Report& report);
void MeasureBindings(Report& report);

// Creates that many windows in this process, which is to do nothing else, lets each load the line unless it
// is empty, and prints what they hold.
int PrintMemory(const char* className, int count, const char* line);
