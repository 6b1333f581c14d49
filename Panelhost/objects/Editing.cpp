#include "Panelhost/Editing.h"

#include "Panelhost/Guard.h"
#include "Panelhost/files/LineFile.h"
#include "Panelhost/files/PanelLoading.h"
#include "Panelhost/files/PanelSaving.h"
#include "Panelhost/objects/PanelRoot.h"

namespace {

// A file that the system keeps in memory as far as it can, and that goes when it is closed.
class TemporaryFile {
public:
    TemporaryFile() {
        char folder[MAX_PATH];
        char path[MAX_PATH];
        if (GetTempPathA(MAX_PATH, folder) != 0 && GetTempFileNameA(folder, "pan", 0, path) != 0) {
            file_ = CreateFileA(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        }
    }
    ~TemporaryFile() {
        if (file_ != INVALID_HANDLE_VALUE) {
            CloseHandle(file_);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    HANDLE Handle() const { return file_; }

    std::string Contents() const {
        std::string text(file_ == INVALID_HANDLE_VALUE ? 0 : GetFileSize(file_, nullptr), '\0');
        DWORD length = 0;
        SetFilePointer(file_, 0, nullptr, FILE_BEGIN);
        if (!ReadFile(file_, text.data(), static_cast<DWORD>(text.size()), &length, nullptr)) {
            length = 0;
        }
        text.resize(length);
        return text;
    }

private:
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

} // namespace

void a_SetEditListener(HOSTINFO* root, EDITLISTENER listener, void* context) {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        panel->editListener = listener;
        panel->editContext = context;
    }
}

bool a_HasEditListener(const HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    return panel != nullptr && panel->editListener != nullptr;
}

void a_NotifyEdit(int event, HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    if (panel != nullptr && panel->editListener != nullptr) {
        panel->editListener(event, object, panel->editContext);
    }
}

void a_DeleteObject(HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    if (panel != nullptr && panel->editListener != nullptr) {
        panel->editListener(EDIT_DELETE, object, panel->editContext);
    } else if (object != nullptr) {
        DestroyWindow(object->window);
    }
}

std::string a_ObjectText(HOSTINFO* object) {
    if (object == nullptr) {
        return {};
    }
    return Guarded<std::string>({}, [&] {
        const TemporaryFile file;
        if (file.Handle() != INVALID_HANDLE_VALUE) {
            PanelSaving::WriteObject(*object, file.Handle());
        }
        return file.Contents();
    });
}

int a_LoadText(HOSTINFO* root, std::string_view text, const char* nameInTraces) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        LineText lines(text, nameInTraces);
        return PanelLoading(*panel).LoadLines(lines);
    });
}

void a_MoveBefore(HOSTINFO* object, HOSTINFO* other) {
    PanelRoot* panel = PanelRoot::Above(object);
    if (panel == nullptr || object == other || object->kind != KIND_CONTROL ||
        (other != nullptr && (other->parent != object->parent || other->kind != KIND_CONTROL))) {
        return;
    }
    Guarded([&] { panel->MoveBefore(object, other); });
}
