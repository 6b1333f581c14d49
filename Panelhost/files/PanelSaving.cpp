#include "Panelhost/files/PanelSaving.h"

#include "Panelhost/Editing.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "Panelhost/files/FileBeside.h"
#include "Panelhost/files/TextCollector.h"
#include "base/Guard.h"
#include "logic/controls/Layers.h"
#include "logic/editing/Groups.h"

#include <atomic>

namespace {

// The last write that failed.
std::atomic<HANDLE> failedFile = nullptr;
std::atomic<DWORD> failedReason = ERROR_SUCCESS;

DWORD Write(HANDLE file, const std::string& text) {
    return a_WriteText(file, text.data(), text.size()) != 0 ? DWORD{ERROR_SUCCESS} : GetLastError();
}

// What could not be written is told by a result that is not 0, and by exceptions that were kept inside.
DWORD Ask(const HOSTINFO& object, WPARAM saveCode, HANDLE file) {
    const unsigned failures = FailureCount();
    const LRESULT reason = SendMessageA(object.window, CWM_SAVE, saveCode, reinterpret_cast<LPARAM>(file));
    return FailureCount() == failures && reason >= 0 ? static_cast<DWORD>(reason)
                                                     : DWORD{ERROR_NOT_ENOUGH_MEMORY};
}

} // namespace

void PanelSaving::NoteFailure(HANDLE file, DWORD reason) {
    failedReason = reason;
    failedFile = file;
}

DWORD PanelSaving::WriteObject(HOSTINFO& object, HANDLE file) {
    DWORD error = Ask(object, SAVE_PROPERTIES, file);
    if (error == ERROR_SUCCESS && object.kind != KIND_ROOT &&
        object.layers != 0) { // the panel's affair, so the controls do not write it
        error = Write(file, object.name + "*layer=" + logic::LayersText(object.layers) + "\r\n");
    }
    if (error == ERROR_SUCCESS && object.kind != KIND_ROOT && object.group != 0) {
        error = Write(file, object.name + "*" + std::string(logic::GROUP_KEYWORD) + "=" +
                                a_GetGroup(&object) + "\r\n");
    }
    return error == ERROR_SUCCESS ? Ask(object, SAVE_CONNECTIONS, file) : error;
}

std::optional<std::string> PanelSaving::ObjectText(HOSTINFO& object, TextCollector& collector,
                                                   Purpose purpose) {
    auto text = collector.TextOf(object);
    const PanelRoot* root = PanelRoot::Above(&object);
    return text && root != nullptr
               ? std::optional(root->kept.Merged(object, *text, purpose == Purpose::PanelFile))
               : text;
}

DWORD PanelSaving::WriteAll(PanelRoot& root, HANDLE file) {
    std::optional<TextCollector> collector; // only where lines are kept
    const auto write = [&](HOSTINFO& object) -> DWORD {
        if (!root.kept.Concerns(object)) {
            return WriteObject(object, file);
        }
        if (!collector) {
            collector.emplace();
        }
        const auto text = ObjectText(object, *collector, Purpose::PanelFile);
        return text ? Write(file, *text) : DWORD{ERROR_NOT_ENOUGH_MEMORY};
    };
    failedFile = nullptr;
    DWORD error = write(root);
    for (HOSTINFO* control : root.Controls()) {
        error = error == ERROR_SUCCESS ? write(*control) : error;
    }
    if (error == ERROR_SUCCESS && failedFile == file) {
        error = failedReason;
    }
    return error;
}

DWORD PanelSaving::Replace(PanelRoot& root, const std::string& path) {
    FileBeside beside(path);
    if (beside.Error() != ERROR_SUCCESS) {
        return beside.Error();
    }
    const DWORD error = WriteAll(root, beside.Handle());
    return error != ERROR_SUCCESS ? error : beside.TakePlace();
}

bool PanelSaving::Save(PanelRoot& root, const std::string& path) {
    const DWORD error = Guarded(DWORD{ERROR_NOT_ENOUGH_MEMORY}, [&] { return Replace(root, path); });
    if (error != ERROR_SUCCESS) {
        TRACE("Panel file %s was not saved: error %lu\n", path.c_str(), error);
        SetLastError(error); // for the host's message
        return false;
    }
    a_SetChanged(&root, false);
    return true;
}
