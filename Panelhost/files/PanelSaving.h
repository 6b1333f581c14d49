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
    // Writes the lines that the object itself has; false when one was lost.
    static bool WriteWhole(HOSTINFO& object, HANDLE file);
    // Lines of the object that is being written were lost, for that reason of the system.
    static void Failed(DWORD error);

private:
    class File;

    static void WriteObject(HOSTINFO& object, HANDLE file);
    static void WriteAll(PanelRoot& root, HANDLE file);
    static DWORD Replace(PanelRoot& root, const std::string& path);

    static thread_local DWORD error_; // the first one since the writing began
};
