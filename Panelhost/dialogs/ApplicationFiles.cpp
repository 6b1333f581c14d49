// File names as properties hold them, and files dropped on a control.

#include "Panelhost/dialogs/ApplicationFiles.h"

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Trace.h"
#include "base/FileNames.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

#include <shellapi.h>

std::string PropertyFileName(const std::string& path) {
    char folder[MAX_PATH];
    char full[MAX_PATH];
    if (a_MakeFullPathName(".", folder) == 0 || a_MakeFullPathName(path.c_str(), full) == 0) {
        return {};
    }
    std::string start = folder;
    if (start.back() != '\\') { // it ends with one at the root of a drive
        start += '\\';
    }
    const std::string name = full;
    const bool inside =
        name.size() > start.size() && logic::FoldName(name.substr(0, start.size())) == logic::FoldName(start);
    return inside ? ".\\" + name.substr(start.size()) : name;
}

namespace {

struct DroppedFiles {
    std::string first; // empty when its name is too long or has no form in the ANSI code page
    UINT count;
};

// Frees the drop handle.
DroppedFiles TakeDrop(HDROP drop) {
    if (GlobalFlags(drop) == GMEM_INVALID_HANDLE) { // anybody can send the message
        return {"", 0};
    }
    wchar_t path[MAX_PATH] = L"";
    const UINT length = DragQueryFileW(drop, 0, path, MAX_PATH);
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    DragFinish(drop);
    const auto name = NarrowFileName({path, length < MAX_PATH ? length : 0});
    return {name && name->size() < MAX_PATH ? *name : "", count};
}

bool IsPropertyFile(const std::string& path) {
    constexpr std::string_view EXTENSION = ".cfg";
    return path.size() > EXTENSION.size() &&
           logic::FoldName(path.substr(path.size() - EXTENSION.size())) == logic::FoldName(EXTENSION);
}

} // namespace

int a_DropBitmap(HOSTINFO* object, HDROP drop) {
    if (drop == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        const std::string path = TakeDrop(drop).first;
        // A control without the keyword would take the name for its default value.
        if (path.empty() || !a_IsAlive(object) || a_FindKeyword(object->GetHostinfoTable(), "bitmap") < 0) {
            return 0;
        }
        const std::string line = "bitmap=" + PropertyFileName(path);
        return a_ApplyEdit(object, line.c_str());
    });
}

int a_DropFile(HOSTINFO* object, const char* keyword, HDROP drop) {
    if (drop == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        const DroppedFiles dropped = TakeDrop(drop);
        if (!a_IsAlive(object) || a_FindKeyword(object->GetHostinfoTable(), keyword) < 0) {
            return 0;
        }
        if (dropped.count != 1 || dropped.first.empty()) {
            return EDITTRACE(object, "Not one file: %s", dropped.first.c_str());
        }
        const std::string line = std::string(keyword) + "=" + PropertyFileName(dropped.first);
        return a_ApplyEdit(object, line.c_str());
    });
}

int a_DropFiles(HOSTINFO* object, HDROP drop) {
    if (drop == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        const DroppedFiles dropped = TakeDrop(drop);
        if (!a_IsAlive(object)) {
            return 0;
        }
        const std::string& path = dropped.first;
        if (dropped.count != 1 || !IsPropertyFile(path)) {
            return EDITTRACE(object, "Not one file of properties (.cfg): %s", path.c_str());
        }
        const int taken = a_ApplyEditFile(object, path.c_str());
        if (taken < 0 && a_IsAlive(object)) {
            EDITTRACE(object, "Cannot be read: %s", path.c_str());
        }
        return taken > 0 ? 1 : 0;
    });
}
