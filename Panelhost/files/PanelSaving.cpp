#include "Panelhost/files/PanelSaving.h"

#include "Panelhost/PropertyList.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "Panelhost/files/TextCollector.h"
#include "base/FileNames.h"
#include "base/Guard.h"
#include "logic/controls/Layers.h"

#include <atomic>
#include <cstdio>

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

// A new file of a name that nothing had; it goes unless it is put in the place of another one.
class PanelSaving::File {
public:
    explicit File(const std::string& path) {
        constexpr unsigned TRIES = 1000;
        const auto start = static_cast<unsigned>(GetCurrentProcessId());
        for (unsigned i = 0; i < TRIES; ++i) {
            char ending[24];
            std::snprintf(ending, sizeof ending, ".%x.%u.tmp", start, i);
            path_ = path + ending;
            handle_ = CreateFileA(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                  nullptr);
            error_ = handle_ == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
            if (error_ == ERROR_SUCCESS || GetFileAttributesA(path_.c_str()) == INVALID_FILE_ATTRIBUTES) {
                return; // made, or refused for another reason than its name
            }
        }
    }
    ~File() {
        Close();
        if (made_) {
            DeleteFileA(path_.c_str());
        }
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    DWORD Error() const { return error_; }
    HANDLE Handle() const { return handle_; }

    DWORD MoveTo(const std::string& path) {
        Close();
        // Where the old file was named by its short name, the new one would have no other.
        if (!MoveFileExW(WideFileName(path_).c_str(), FullFileName(WideFileName(path)).c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
            return GetLastError();
        }
        made_ = false;
        return ERROR_SUCCESS;
    }

private:
    void Close() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            CloseHandle(handle_);
            handle_ = INVALID_HANDLE_VALUE;
            made_ = true;
        }
    }

    std::string path_;
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    DWORD error_ = ERROR_SUCCESS;
    bool made_ = false; // and closed
};

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
    if (error == ERROR_SUCCESS && !FlushFileBuffers(file)) {
        const DWORD reason = GetLastError();
        error = reason != ERROR_SUCCESS ? reason : DWORD{ERROR_WRITE_FAULT};
    }
    return error;
}

DWORD PanelSaving::Replace(PanelRoot& root, const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return ERROR_ACCESS_DENIED; // renaming alone would not see to that everywhere
    }
    File beside(path);
    if (beside.Error() != ERROR_SUCCESS) {
        return beside.Error();
    }
    const DWORD error = WriteAll(root, beside.Handle());
    return error != ERROR_SUCCESS ? error : beside.MoveTo(path);
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
