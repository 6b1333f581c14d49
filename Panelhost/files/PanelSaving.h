#pragma once

#include "Panelhost/objects/PanelRoot.h"

#include <optional>
#include <string>

class TextCollector;

// Writes a panel file beside the old one and puts it in its place when it is whole.
class PanelSaving {
public:
    // GetLastError tells why it failed.
    static bool Save(PanelRoot& root, const std::string& path);
    // The lines of one object alone, with those that are kept for it and for what belongs to it; or its part
    // of a panel file, in which lines of others may stand. Nothing when they could not be written.
    enum class Purpose { SingleText, PanelFile };
    static std::optional<std::string> ObjectText(HOSTINFO& object, TextCollector& collector, Purpose purpose);
    // Writes the lines that the object itself has. The system's reason when one was lost.
    static DWORD WriteObject(HOSTINFO& object, HANDLE file);
    // A write to that file failed. A control of others may not look at it, and the file that it leaves
    // incomplete must not take the place of the old one.
    static void NoteFailure(HANDLE file, DWORD reason);

private:
    static DWORD WriteAll(PanelRoot& root, HANDLE file);
    static DWORD Replace(PanelRoot& root, const std::string& path);
};
