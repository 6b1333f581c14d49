// Snapshots are taken and read here; what is done with their values is the affair of Recall.

#include "Panelhost/Snapshots.h"

#include "Panelhost/BindingList.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/Trace.h"
#include "Panelhost/files/FileBeside.h"
#include "Panelhost/files/LineFile.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Version.h"
#include "base/FileNames.h"
#include "base/FileSearch.h"
#include "base/Guard.h"
#include "logic/devices/SnapshotFile.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <unordered_set>

namespace {

// How long the first values of parameters that nobody has asked for are waited for: as long as some come, and
// in all.
constexpr DWORD PATIENCE = 600;
constexpr DWORD LONGEST_WAIT = 4000;
constexpr DWORD LOOK_EVERY = 5;

// A parameter that an address names.
struct Named {
    DEVICE* device = nullptr; // null: none
    std::string keyword;
};

Named Find(PanelRoot& root, const std::string& address) {
    const std::size_t star = address.rfind('*');
    if (star == std::string::npos) {
        return {};
    }
    return {dynamic_cast<DEVICE*>(root.Find(address.substr(0, star))), address.substr(star + 1)};
}

bool IsRecallable(const Named& named) {
    logic::FadeScale scale;
    return named.device != nullptr && named.device->OnIsRecallable(named.keyword.c_str(), &scale);
}

int StateOf(const Named& named) {
    DWORD age = NO_AGE;
    return named.device->OnParameterState(named.keyword.c_str(), &age);
}

// What the device holds, if that is known.
std::optional<std::string> TextOf(const Named& named) {
    const int state = StateOf(named);
    std::string text;
    int result = 0;
    const bool isKnown = state == PARAMETER_LIVE || state == PARAMETER_PENDING || state == PARAMETER_SENT;
    return named.device->OnGet(named.keyword.c_str(), text, &result) != 0 && isKnown ? std::optional(text)
                                                                                     : std::nullopt;
}

// What controls on hidden layers are bound to is not read as a rule, so it is asked for now.
void WaitForValues(const std::vector<Named>& parameters) {
    const auto countUnknown = [&] {
        return std::ranges::count_if(parameters, [](const Named& named) {
            int result = 0;
            std::string text;
            return StateOf(named) == PARAMETER_UNKNOWN && named.device->OnStatus().state == DEVICE_LIVE &&
                   named.device->OnGet(named.keyword.c_str(), text, &result) == 0;
        });
    };
    const DWORD start = GetTickCount();
    DWORD last = start;
    for (auto unknown = countUnknown(); unknown > 0;) {
        const DWORD now = GetTickCount();
        if (now - last >= PATIENCE || now - start >= LONGEST_WAIT) {
            return;
        }
        Sleep(LOOK_EVERY);
        for (const Named& named : parameters) { // the same device again costs nothing
            named.device->OnDataInBuffer(0, 0);
        }
        if (const auto still = countUnknown(); still < unknown) {
            unknown = still;
            last = now;
        }
    }
}

std::string FileNameOf(const std::string& path) {
    return path.substr(path.find_last_of("\\/") + 1);
}

std::string Now() {
    SYSTEMTIME time;
    GetLocalTime(&time);
    char text[64];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", time.wYear, time.wMonth, time.wDay,
                  time.wHour, time.wMinute, time.wSecond);
    return text;
}

std::string Program() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    return FileNameOf(NarrowText({path, length})) + ", Panelhost " PROJECT_VERSION_TEXT;
}

int Take(PanelRoot& root, const std::string& path, const std::list<std::string>& addresses) {
    std::vector<Named> parameters;
    for (const std::string& address : addresses) {
        if (Named named = Find(root, address); IsRecallable(named)) {
            parameters.push_back(std::move(named));
        } else {
            TRACE("Not in the snapshot: %s, which is no parameter that can be set\n", address.c_str());
        }
    }
    WaitForValues(parameters);
    logic::Snapshot snapshot{
        FileNameOf(NarrowText(FullFileName(WideFileName(root.panelFile)))), Now(), Program(), {}};
    for (const Named& named : parameters) {
        const std::string address = named.device->name + "*" + named.keyword;
        const auto text = TextOf(named);
        if (text && std::ranges::none_of(*text, logic::IsControl)) {
            snapshot.values.push_back({address, *text});
        } else {
            const std::string why = a_WhyNotLive(named.device->OnStatus());
            TRACE("Not in the snapshot: %s, %s\n", address.c_str(), why.empty() ? "not known" : why.c_str());
        }
    }
    if (const DWORD error = FileBeside::Write(path, logic::SnapshotText(snapshot)); error != ERROR_SUCCESS) {
        TRACE("Snapshot %s was not written: error %lu\n", path.c_str(), error);
        SetLastError(error);
        return -1;
    }
    return static_cast<int>(snapshot.values.size());
}

std::optional<logic::Snapshot> Read(const std::string& path) {
    LineFile file(path);
    if (!file.IsOpen()) {
        return std::nullopt;
    }
    logic::SnapshotReader reader;
    std::string line;
    bool isUsable = false;
    while (file.Next(line, isUsable)) {
        if (!isUsable || !reader.Take(line)) {
            TRACE("Not understood: %s\n", line.substr(0, TEXT_SIZE - 1).c_str());
        }
    }
    return file.HasFailed() ? std::nullopt : reader.Finish();
}

std::string NameOf(const std::string& path) {
    const std::string name = FileNameOf(path);
    return name.ends_with(logic::SNAPSHOT_EXTENSION)
               ? name.substr(0, name.size() - logic::SNAPSHOT_EXTENSION.size())
               : name;
}

int Start(HOSTINFO* object, const char* file, const std::list<std::string>* chosen, int milliseconds) {
    PanelRoot* root = PanelRoot::From(object);
    if (root == nullptr || file == nullptr || root->opening.IsUnderWay()) {
        return -1;
    }
    return Guarded(-1, [&] {
        auto snapshot = Read(file);
        if (!snapshot) {
            return -1;
        }
        if (chosen != nullptr) {
            std::unordered_set<std::string> folded;
            for (const std::string& address : *chosen) {
                folded.insert(logic::FoldAddress(address));
            }
            std::erase_if(snapshot->values, [&](const logic::SnapshotValue& value) {
                return !folded.contains(logic::FoldAddress(value.address));
            });
        }
        return root->recall.Start(snapshot->values, milliseconds, NameOf(file));
    });
}

std::string FolderOf(const PanelRoot& root) {
    return root.panelFile.substr(0, root.panelFile.find_last_of("\\/") + 1);
}

} // namespace

std::list<std::string> a_ListRecallable(HOSTINFO* object) {
    return Guarded(std::list<std::string>(), [&] {
        std::list<std::string> addresses;
        PanelRoot* root = PanelRoot::From(object);
        if (root == nullptr) {
            return addresses;
        }
        std::unordered_set<std::string> known;
        for (const BINDING& binding : a_ListBindings(root)) {
            if (binding.target == nullptr || binding.target->kind != KIND_DEVICE) {
                continue;
            }
            std::string address = binding.target->name + "*" + binding.keyword;
            const logic::AddressForm form = a_AddressForm(binding.object, binding.row);
            if ((form == logic::AddressForm::Functions || form == logic::AddressForm::Pattern) &&
                known.insert(address).second && IsRecallable(Find(*root, address))) {
                addresses.push_back(std::move(address));
            }
        }
        return addresses;
    });
}

int ph_TakeSnapshot(HOSTINFO* object, const char* file, const char* addresses) noexcept {
    PanelRoot* root = PanelRoot::From(object);
    if (root == nullptr || file == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        std::list<std::string> wanted;
        if (addresses == nullptr) {
            wanted = a_ListRecallable(object);
        } else {
            std::unordered_set<std::string> known;
            for (std::string& address : logic::SplitList(addresses)) {
                if (known.insert(logic::FoldAddress(address)).second) {
                    wanted.push_back(std::move(address));
                }
            }
        }
        return Take(*root, file, wanted);
    });
}

int ph_RecallSnapshot(HOSTINFO* root, const char* file, int milliseconds) noexcept {
    return Start(root, file, nullptr, milliseconds);
}

int a_RecallSnapshot(HOSTINFO* root, const char* file, const std::list<std::string>& addresses,
                     int milliseconds) {
    return Start(root, file, &addresses, milliseconds);
}

int ph_StopRecall(HOSTINFO* root) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? 0 : Guarded(0, [&] { return panel->recall.Stop(); });
}

static_assert(PH_RECALL_UNDER_WAY == RECALL_UNDER_WAY && PH_RECALL_DONE == RECALL_DONE &&
              PH_RECALL_FAILED == RECALL_FAILED && PH_RECALL_STOPPED == RECALL_STOPPED &&
              PH_RECALL_OVERTAKEN == RECALL_OVERTAKEN);

int ph_ListRecall(HOSTINFO* root, void(__cdecl* receive)(const PH_RECALLEDVALUE* value, void* context),
                  void* context) noexcept {
    if (PanelRoot::From(root) == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        int underWay = 0;
        for (const RECALLEDVALUE& value : a_ListRecall(root)) {
            underWay += value.state == RECALL_UNDER_WAY ? 1 : 0;
            if (receive != nullptr) {
                const PH_RECALLEDVALUE handed{value.address.c_str(), value.text.c_str(), value.state,
                                              value.why.c_str()};
                receive(&handed, context);
            }
        }
        return underWay;
    });
}

bool a_ReadSnapshot(const char* file, SNAPSHOT* snapshot) {
    return Guarded(false, [&] {
        const auto read = file == nullptr || snapshot == nullptr ? std::nullopt : Read(file);
        if (!read) {
            return false;
        }
        *snapshot = {read->panel, read->time, read->program, {}};
        for (const logic::SnapshotValue& value : read->values) {
            snapshot->values.push_back({value.address, value.text});
        }
        return true;
    });
}

std::list<RECALLEDVALUE> a_ListRecall(HOSTINFO* root) {
    return Guarded(std::list<RECALLEDVALUE>(), [&] {
        const PanelRoot* panel = PanelRoot::From(root);
        const auto values = panel == nullptr ? std::vector<RECALLEDVALUE>() : panel->recall.List();
        return std::list<RECALLEDVALUE>(values.begin(), values.end());
    });
}

int a_CompareWithNow(HOSTINFO* object, const SNAPSHOTVALUE& value, std::string* now) {
    PanelRoot* root = PanelRoot::From(object);
    if (root == nullptr || now == nullptr) {
        return SNAPSHOT_UNKNOWN;
    }
    return Guarded(SNAPSHOT_UNKNOWN, [&] {
        const Named named = Find(*root, value.address);
        const auto text = named.device == nullptr ? std::nullopt : TextOf(named);
        if (!text) {
            return SNAPSHOT_UNKNOWN;
        }
        *now = *text;
        return named.device->OnHolds(named.keyword.c_str(), value.text) ? SNAPSHOT_EQUAL : SNAPSHOT_DIFFERS;
    });
}

std::list<std::string> a_ListSnapshots(HOSTINFO* object) {
    return Guarded(std::list<std::string>(), [&] {
        std::list<std::string> names;
        const PanelRoot* root = PanelRoot::From(object);
        if (root == nullptr || root->panelFile.empty()) {
            return names;
        }
        for (FileSearch search(FolderOf(*root) + "*" + std::string(logic::SNAPSHOT_EXTENSION));
             search.HasFile(); search.Next()) {
            if (const std::string name = NameOf(search.Name());
                !search.IsFolder() && logic::IsSnapshotName(name)) {
                names.push_back(name);
            }
        }
        names.sort([](const std::string& one, const std::string& other) {
            return logic::FoldName(one) < logic::FoldName(other);
        });
        return names;
    });
}

std::string a_SnapshotFile(HOSTINFO* object, const char* name) {
    return Guarded(std::string(), [&] {
        const PanelRoot* root = PanelRoot::From(object);
        return root == nullptr || name == nullptr || root->panelFile.empty() || !logic::IsSnapshotName(name)
                   ? std::string()
                   : FolderOf(*root) + name + std::string(logic::SNAPSHOT_EXTENSION);
    });
}

void a_SetPanelFile(HOSTINFO* object, const char* file) {
    Guarded([&] {
        if (PanelRoot* root = PanelRoot::From(object); root != nullptr) {
            char full[MAX_PATH];
            const DWORD length =
                file == nullptr || *file == '\0' ? 0 : GetFullPathNameA(file, MAX_PATH, full, nullptr);
            root->panelFile = length < MAX_PATH ? std::string(full, length) : "";
        }
    });
}
