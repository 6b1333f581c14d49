#include "Panelhost/dialogs/Bindables.h"

#include "Panelhost/Dialogs.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Search.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace {

constexpr const char* DEFAULT_VALUE = " ";

bool IsReachable(HOSTINFO* device) {
    return device->OnIsAlive(0, 0) != 0;
}

void Mix(std::uint64_t& hash, std::uint64_t value) {
    hash = (hash ^ value) * 0x100000001B3U;
}

} // namespace

std::uint64_t Bindables::Signature(HOSTINFO* object) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (HOSTINFO* other : a_ListHostinfos(a_FindRootHostinfo(object))) {
        Mix(hash, reinterpret_cast<std::uintptr_t>(other));
        for (const char letter : other->name) {
            Mix(hash, static_cast<unsigned char>(letter));
        }
        if (other->kind == KIND_DEVICE) {
            Mix(hash, IsReachable(other) ? 1 : 2);
        }
    }
    return hash;
}

std::size_t Bindables::Add(std::size_t owner, BindableKind kind, const std::string& label,
                           const std::string& address) {
    const std::size_t index = all_.size();
    const bool inGroup = owner == DEVICES || owner == CONTROLS;
    const std::string path = inGroup ? "" : all_[owner].path + "*";
    all_.push_back({kind, label, address, path + logic::FoldName(label), {}});
    all_[owner].children.push_back(index);
    return index;
}

void Bindables::AddDevice(HOSTINFO* device) {
    const bool reachable = IsReachable(device);
    const std::size_t index = Add(DEVICES, reachable ? BindableKind::Device : BindableKind::LostDevice,
                                  device->name + (reachable ? "" : "  (not reachable)"), {});
    all_[index].path = logic::FoldName(device->name);
    std::list<std::string> keywords;
    device->OnGetKeywords(0, reinterpret_cast<LPARAM>(&keywords));
    for (const std::string& keyword : keywords) {
        Add(index, BindableKind::Parameter, keyword, device->name + "*" + keyword);
    }
}

void Bindables::AddKeywords(std::size_t owner, HOSTINFO* control) {
    const KEYWORDROW* row = control->HasHostinfoTable() != 0 ? control->GetHostinfoTable() : nullptr;
    for (; row != nullptr && row->keyword != nullptr; ++row) {
        if (row->handler != nullptr && std::strcmp(row->keyword, DEFAULT_VALUE) != 0) {
            Add(owner, BindableKind::Keyword, row->keyword, control->name + "*" + row->keyword);
        }
    }
}

void Bindables::Read(HOSTINFO* object) {
    signature_ = Signature(object);
    all_ = {{BindableKind::Group, "Devices", {}, {}, {}}, {BindableKind::Group, "Controls", {}, {}, {}}};
    std::unordered_map<const HOSTINFO*, std::size_t> places;
    std::vector<HOSTINFO*> controls;
    for (HOSTINFO* other : a_ListHostinfos(a_FindRootHostinfo(object))) {
        if (other->kind == KIND_DEVICE) {
            AddDevice(other);
            continue;
        }
        controls.push_back(other);
        const auto owner = places.find(other->parent);
        // An object is no partner of its own, yet it may hold some.
        places[other] = Add(owner == places.end() ? CONTROLS : owner->second, BindableKind::Control,
                            a_OwnName(other), other == object ? "" : other->name);
    }
    // Keywords go below the controls that an object holds.
    for (HOSTINFO* control : controls) {
        if (control != object) {
            AddKeywords(places[control], control);
        }
    }
    if (const auto own = places.find(object); own != places.end() && all_[own->second].children.empty()) {
        for (Bindable& owner : all_) {
            owner.children.erase(std::remove(owner.children.begin(), owner.children.end(), own->second),
                                 owner.children.end());
        }
    }
}

void Bindables::Search(std::string_view text) {
    const std::vector<std::string> words = logic::SearchWords(text);
    for (std::size_t index = all_.size(); index-- > 0;) { // what is held before its owner
        Bindable& bindable = all_[index];
        bindable.matches = bindable.kind != BindableKind::Group && logic::HoldsAll(bindable.path, words);
        bindable.holdsShown = std::any_of(bindable.children.begin(), bindable.children.end(),
                                          [this](std::size_t child) { return all_[child].shown; });
        bindable.shown = bindable.kind == BindableKind::Group || bindable.matches || bindable.holdsShown;
    }
}

std::vector<std::string> a_ListAddresses(HOSTINFO* object, bool functions, bool connections) {
    return Guarded(std::vector<std::string>{}, [&] {
        std::vector<std::string> addresses;
        if (!a_IsAlive(object)) {
            return addresses;
        }
        Bindables bindables;
        bindables.Read(object);
        for (std::size_t index = 0; index < bindables.Size(); ++index) {
            const Bindable& bindable = bindables[index];
            if (!bindable.address.empty() && (bindable.IsFunction() ? functions : connections)) {
                addresses.push_back(bindable.address);
            }
        }
        return addresses;
    });
}
