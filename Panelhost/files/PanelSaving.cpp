#include "Panelhost/files/PanelSaving.h"

#include "Panelhost/PropertyTable.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "logic/Layers.h"

thread_local bool PanelSaving::failed_ = false;

bool PanelSaving::WriteAll(PanelRoot& root, HANDLE file) {
    failed_ = false;
    const auto lines = reinterpret_cast<LPARAM>(file);
    root.OnSave(SAVE_PROPERTIES, lines);
    for (HOSTINFO* control : root.Controls()) {
        SendMessageA(control->window, CWM_SAVE, SAVE_PROPERTIES, lines);
        if (control->layers != 0) { // belongs to the panel, so the controls do not write it themselves
            const std::string line = control->name + "*layer=" + logic::LayersText(control->layers) + "\r\n";
            a_WriteText(file, line.data(), line.size());
        }
        SendMessageA(control->window, CWM_SAVE, SAVE_CONNECTIONS, lines);
    }
    return !failed_ && FlushFileBuffers(file) != 0;
}

bool PanelSaving::Save(PanelRoot& root, const std::string& path) {
    const std::string beside = path + ".new";
    HANDLE file =
        CreateFileA(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        TRACE("Panel file %s cannot be written: error %lu\n", path.c_str(), GetLastError());
        return false;
    }
    const bool written = WriteAll(root, file);
    CloseHandle(file);
    if (!written ||
        !MoveFileExA(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        TRACE("Panel file %s was not saved: error %lu\n", path.c_str(), GetLastError());
        DeleteFileA(beside.c_str());
        return false;
    }
    a_SetChanged(&root, false);
    return true;
}
