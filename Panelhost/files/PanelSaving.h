#pragma once

#include "Panelhost/objects/PanelRoot.h"

#include <string>

// Writes a panel file beside the old one and puts it in its place when it is whole.
class PanelSaving {
public:
    static bool Save(PanelRoot& root, const std::string& path);
    // Writes the lines of one object to an open file.
    static void WriteObject(HOSTINFO& object, HANDLE file);
    // The same; false when a line was lost.
    static bool WriteWhole(HOSTINFO& object, HANDLE file);
    // A line of the panel being saved was lost.
    static void Failed() { failed_ = true; }

private:
    // The system's error code.
    static DWORD Replace(PanelRoot& root, const std::string& path);
    static bool WriteAll(PanelRoot& root, HANDLE file);

    static thread_local bool failed_;
};
