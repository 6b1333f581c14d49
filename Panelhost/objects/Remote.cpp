// What another machine may set, and whether it may connect.

#include "Panelhost/Remote.h"

#include "Panelhost/Trace.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Panelhost/SecretKeywords.h"
#include "base/Guard.h"
#include "logic/remote/RemoteValues.h"
#include "logic/text/PropertyLine.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

thread_local bool isRemote = false;

// The flags of all keywords that the objects of a panel guard. Names count, not objects: another object can
// be meant by the time that a binding or a click is carried out.
class GuardedKeywords {
public:
    explicit GuardedKeywords(const HOSTINFO* object) {
        Read(const_cast<HOSTINFO*>(object));
        if (PanelRoot* root = PanelRoot::Above(object); root != nullptr) {
            Read(root);
            for (HOSTINFO* control : root->Controls()) {
                Read(control);
            }
        }
    }

    int Flags(std::string_view keyword) const {
        const auto found = flags_.find(keyword);
        return found == flags_.end() ? 0 : found->second;
    }

private:
    void Read(HOSTINFO* object) {
        const KEYWORDROW* row = object->HasHostinfoTable() != 0 ? object->GetHostinfoTable() : nullptr;
        if (row == nullptr || !tables_.insert(row).second) {
            return;
        }
        for (; row->keyword != nullptr; ++row) {
            if ((row->flags & KEYWORD_GUARDED) != 0) {
                flags_[row->keyword] |= row->flags & KEYWORD_GUARDED;
            }
        }
    }

    std::unordered_set<const KEYWORDROW*> tables_;
    std::unordered_map<std::string_view, int> flags_;
};

bool MayBind(const GuardedKeywords& keywords, std::string_view text) {
    for (const std::string& address : logic::SplitList(text)) {
        const std::string keyword = address.substr(address.rfind('*') + 1);
        if (keyword.find_first_of("%=") != std::string::npos || keywords.Flags(keyword) != 0) {
            return false;
        }
    }
    return true;
}

bool MaySet(const GuardedKeywords& keywords, int flags, std::string_view text) {
    while (true) {
        if ((flags & KEYWORD_CLOSED) != 0 || ((flags & KEYWORD_FILE) != 0 && !logic::ArePathsBelow(text)) ||
            ((flags & KEYWORD_RECORDING) != 0 && !logic::IsRemoteDuration(text)) ||
            ((flags & KEYWORD_BINDINGS) != 0 && !MayBind(keywords, text))) {
            return false;
        }
        if ((flags & KEYWORD_CLICK) == 0) {
            return true;
        }
        if (!logic::HasFixedKeyword(text)) {
            return false;
        }
        const auto line = logic::SplitPropertyLine(text); // to be set by a click, as if it were set now
        flags = keywords.Flags(line.keyword);
        text = line.value;
        if (flags != 0 && text.find('%') != std::string_view::npos) {
            return false;
        }
    }
}

} // namespace

RemoteSetting::RemoteSetting(bool isRemoteNow) : outer_(std::exchange(isRemote, isRemoteNow)) {}

RemoteSetting::~RemoteSetting() {
    isRemote = outer_;
}

bool a_IsRemote() {
    return isRemote;
}

bool a_MayBeSetRemotely(const HOSTINFO* object, const KEYWORDROW* table, int row, std::string_view text) {
    const int flags = table[row].flags & KEYWORD_GUARDED;
    if (flags == 0) {
        return true;
    }
    return Guarded(false, [&] {
        if (MaySet(GuardedKeywords(object), flags, text)) {
            return true;
        }
        EDITTRACE(object->kind == KIND_ROOT ? object : object->parent, "Not to be set by a terminal: %s",
                  (object->name + "*" + table[row].keyword + "=" +
                   (IsSecret(table[row]) ? "..." : std::string(text)))
                      .c_str());
        return false;
    });
}

bool a_MayConnect(const HOSTINFO* object, unsigned long address) {
    const PanelRoot* root = PanelRoot::Above(object);
    return root == nullptr || root->terminalNetworks.Contain(address);
}
