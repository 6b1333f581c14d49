#pragma once

#include "Panelhost/objects/PanelRoot.h"

#include <optional>
#include <string>

// Writes a panel file beside the old one and puts it in its place when it is whole.
class PanelSaving {
public:
    // GetLastError tells why it failed.
    static bool Save(PanelRoot& root, const std::string& path);
    // The lines of one object, with those that are kept for it and for what belongs to it. Nothing when they
    // could not be written.
    static std::optional<std::string> ObjectText(HOSTINFO& object);
    // Lines of the object that is being written were lost, for that reason of the system.
    static void Failed(DWORD error);

private:
    class File;

    static void WriteObject(HOSTINFO& object, HANDLE file);
    static std::string WrittenText(HOSTINFO& object);
    static void WriteAll(PanelRoot& root, HANDLE file);
    static DWORD Replace(PanelRoot& root, const std::string& path);

    static thread_local DWORD error_; // the first one since the writing began
};
