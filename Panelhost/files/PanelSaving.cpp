#include "Panelhost/files/PanelSaving.h"

#include "Panelhost/PropertyTable.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "logic/Layers.h"

#include <utility>

thread_local bool PanelSaving::failed_ = false;

void PanelSaving::WriteObject(HOSTINFO& object, HANDLE file) {
    const auto lines = reinterpret_cast<LPARAM>(file);
    SendMessageA(object.window, CWM_SAVE, SAVE_PROPERTIES, lines);
    if (object.kind != KIND_ROOT &&
        object.layers != 0) { // the panel's affair, so the controls do not write it
        const std::string line = object.name + "*layer=" + logic::LayersText(object.layers) + "\r\n";
        a_WriteText(file, line.data(), line.size());
    }
    SendMessageA(object.window, CWM_SAVE, SAVE_CONNECTIONS, lines);
}

bool PanelSaving::WriteWhole(HOSTINFO& object, HANDLE file) {
    const bool failedBefore = std::exchange(failed_, false);
    WriteObject(object, file);
    return !std::exchange(failed_, failedBefore);
}

bool PanelSaving::WriteAll(PanelRoot& root, HANDLE file) {
    failed_ = false;
    WriteObject(root, file);
    for (HOSTINFO* control : root.Controls()) {
        WriteObject(*control, file);
    }
    return !failed_ && FlushFileBuffers(file) != 0;
}

DWORD PanelSaving::Replace(PanelRoot& root, const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return ERROR_ACCESS_DENIED; // renaming alone would not see to that everywhere
    }
    const std::string beside = path + ".new";
    const HANDLE file =
        CreateFileA(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    DWORD error = WriteAll(root, file) ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
    CloseHandle(file);
    if (error == ERROR_SUCCESS &&
        !MoveFileExA(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        error = GetLastError();
    }
    if (error != ERROR_SUCCESS) {
        DeleteFileA(beside.c_str());
    }
    return error;
}

bool PanelSaving::Save(PanelRoot& root, const std::string& path) {
    if (const DWORD error = Replace(root, path); error != ERROR_SUCCESS) {
        TRACE("Panel file %s was not saved: error %lu\n", path.c_str(), error);
        SetLastError(error); // for the host's message
        return false;
    }
    a_SetChanged(&root, false);
    return true;
}
