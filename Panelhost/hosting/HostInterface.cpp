// The plain-C interface: checks what comes from outside and keeps exceptions inside.

#include "Panelhost/HostInterface.h"

#include "Panelhost/BindingList.h"
#include "Panelhost/Snapshots.h"
#include "Panelhost/files/DeviceLoading.h"
#include "Panelhost/files/PanelLoading.h"
#include "Panelhost/files/PanelSaving.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"

#include <climits>
#include <cstring>
#include <string>

namespace {

// The device and the parameter name of an address; the device is null when there is none.
HOSTINFO* FindDevice(HOSTINFO* root, const char* address, std::string& keyword) {
    PanelRoot* panel = PanelRoot::From(root);
    const char* star = address == nullptr ? nullptr : std::strrchr(address, '*');
    if (panel == nullptr || star == nullptr) {
        return nullptr;
    }
    keyword = star + 1;
    HOSTINFO* found = panel->Find(std::string(address, star));
    return found != nullptr && found->kind == KIND_DEVICE ? found : nullptr;
}

} // namespace

HOSTINFO* ph_CreateRoot(HWND panel, const char* name) noexcept {
    return Guarded<HOSTINFO*>(nullptr, [&] { return PanelRoot::Create(panel, name); });
}

void ph_DestroyRoot(HOSTINFO* root) noexcept {
    Guarded([&] {
        if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
            panel->Destroy();
        }
    });
}

int ph_LoadDevices(HOSTINFO* root, const char* file) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || file == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] { return LoadDeviceFile(*panel, file); });
}

int ph_LoadPanel(HOSTINFO* root, const char* file) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || file == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        const int created = PanelLoading(*panel).LoadFile(file);
        if (created >= 0) {
            a_SetPanelFile(root, file);
        }
        return created;
    });
}

void ph_SetLoadProgress(HOSTINFO* root, int(__cdecl* progress)(int read, int total, void* context),
                        void* context) noexcept {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        panel->progress = {progress, context};
    }
}

int ph_SavePanel(HOSTINFO* root, const char* file) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || file == nullptr) {
        return 0;
    }
    if (panel->opening.IsUnderWay()) {
        SetLastError(ERROR_BUSY); // half of it would take the place of the file
        return 0;
    }
    return Guarded(0, [&] {
        const bool isSaved = PanelSaving::Save(*panel, file);
        if (isSaved) {
            a_SetPanelFile(root, file);
        }
        return isSaved ? 1 : 0;
    });
}

int ph_ListUnread(HOSTINFO* root, void(__cdecl* receive)(const PH_UNREADLINE* line, void* context),
                  void* context) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        const std::vector<KeptLines::Unread> lines = panel->kept.List();
        for (const KeptLines::Unread& line : lines) {
            if (receive != nullptr) {
                const PH_UNREADLINE handed{line.object.c_str(), line.line.c_str(),
                                           static_cast<int>(line.number), line.reason};
                receive(&handed, context);
            }
        }
        return static_cast<int>(lines.size());
    });
}

HWND ph_Find(HOSTINFO* root, const char* fullName) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || fullName == nullptr) {
        return nullptr;
    }
    return Guarded<HWND>(nullptr, [&] {
        const HOSTINFO* found = panel->Find(fullName);
        return found == nullptr ? nullptr : found->window;
    });
}

void ph_Tick(HOSTINFO* root) noexcept {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        Guarded([panel] { panel->Tick(); });
    }
}

void ph_SetMode(HOSTINFO* root, int mode) noexcept {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        Guarded([&] { panel->SetMode(mode != 0 ? 1 : 0); });
    }
}

int ph_GetParameter(HOSTINFO* root, const char* address, char* text, int size) noexcept {
    if (text == nullptr || size < 1) {
        return 0;
    }
    return Guarded(0, [&] {
        std::string keyword;
        HOSTINFO* device = FindDevice(root, address, keyword);
        std::string value;
        int found = 0;
        if (device == nullptr || device->OnGet(keyword.c_str(), value, &found) == 0 ||
            value.size() >= static_cast<std::size_t>(size)) {
            return 0;
        }
        std::memcpy(text, value.c_str(), value.size() + 1);
        return 1;
    });
}

int ph_SetParameter(HOSTINFO* root, const char* address, const char* text) noexcept {
    if (text == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        std::string keyword;
        HOSTINFO* device = FindDevice(root, address, keyword);
        std::string value = text;
        int taken = 0;
        if (device == nullptr || device->OnSet(keyword.c_str(), value, &taken) == 0) {
            return 0;
        }
        if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr && panel->recall.IsUnderWay()) {
            REQUESTITEM item;
            device->OnRequestList(reinterpret_cast<WPARAM>(keyword.c_str()), reinterpret_cast<LPARAM>(&item));
            panel->recall.Overtake(item);
        }
        return 1;
    });
}

static_assert(PH_STATE_NONE == PARAMETER_NONE && PH_STATE_PENDING == PARAMETER_PENDING &&
              PH_STATE_LIVE == PARAMETER_LIVE && PH_STATE_SENT == PARAMETER_SENT &&
              PH_STATE_NO_KEYWORD == ADDRESS_NO_KEYWORD && PH_STATE_NO_CONTROL == ADDRESS_NO_CONTROL);

int ph_ParameterState(HOSTINFO* root, const char* address) noexcept {
    return a_ParameterState(root, address);
}

int ph_ListBindings(HOSTINFO* root, void(__cdecl* receive)(const PH_BINDING* binding, void* context),
                    void* context) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        const std::vector<BINDING> bindings = a_ListBindings(root);
        for (const BINDING& binding : bindings) {
            if (receive == nullptr) {
                break;
            }
            const std::string value = a_BindingValue(binding);
            const PH_BINDING handed{binding.object->name.c_str(),
                                    binding.row->keyword,
                                    binding.address.c_str(),
                                    binding.target == nullptr ? "" : binding.target->name.c_str(),
                                    binding.target != nullptr && binding.target->kind == KIND_DEVICE ? 1 : 0,
                                    binding.state,
                                    value.c_str(),
                                    binding.age > INT_MAX ? -1 : static_cast<int>(binding.age)};
            receive(&handed, context);
        }
        return static_cast<int>(bindings.size());
    });
}
