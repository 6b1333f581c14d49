#pragma once

#include "Panelhost/Background.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/objects/KeptLines.h"
#include "Panelhost/objects/Opening.h"
#include "base/SharedLock.h"
#include "logic/remote/TerminalAdmission.h"

#include <list>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// Which objects depend on which key (a name they wait for, a target they are bound to), looked up from both
// sides.
template <class Key>
class Dependence {
public:
    void Add(HOSTINFO* object, const Key& key) {
        if (auto& dependents = objects_[key]; !dependents.contains(object)) {
            keys_[object].push_back(
                key); // first, so that Forget finds it even if there is no memory for more
            dependents.insert(object);
        }
    }

    void Forget(HOSTINFO* object) {
        const auto entry = keys_.find(object);
        if (entry == keys_.end()) {
            return;
        }
        for (const Key& key : entry->second) {
            const auto dependents = objects_.find(key);
            if (dependents == objects_.end()) {
                continue;
            }
            dependents->second.erase(object);
            if (dependents->second.empty()) {
                objects_.erase(dependents);
            }
        }
        keys_.erase(entry);
    }

    std::vector<HOSTINFO*> On(const Key& key) const {
        const auto entry = objects_.find(key);
        return entry == objects_.end() ? std::vector<HOSTINFO*>{}
                                       : std::vector<HOSTINFO*>(entry->second.begin(), entry->second.end());
    }

private:
    std::unordered_map<Key, std::unordered_set<HOSTINFO*>> objects_;
    std::unordered_map<const HOSTINFO*, std::vector<Key>> keys_;
};

// The root object of one panel: owns the tree of names below it, knows who waits for a name and who is bound
// to whom, and answers the private messages for the panel window.
class PanelRoot : public HOSTINFO {
public:
    // Null when the window is none or has a root already.
    static PanelRoot* Create(HWND panel, const char* rootName);
    // The object as a root, or null when it is none that lives.
    static PanelRoot* From(HOSTINFO* object);
    // Whether any root keeps lines that could not be read.
    static bool AnyKept();
    // The root above an object, or null.
    static PanelRoot* Above(const HOSTINFO* object);
    ~PanelRoot() override;
    // Ends it at once, with all its controls and devices. Its memory goes when nobody holds it any more.
    void Destroy();
    // For whoever goes on with a root after something that may end it.
    class Held {
    public:
        explicit Held(PanelRoot& root) : root_(root) { ++root.holds_; }
        ~Held() { root_.Release(); }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;

    private:
        PanelRoot& root_;
    };

    int HasHostinfoTable() override { return 1; }
    const KEYWORDROW* GetHostinfoTable() override;
    LRESULT OnLoad(WPARAM loadMode, LPARAM line) override;
    LRESULT OnSave(WPARAM saveCode, LPARAM file) override;
    LRESULT OnSaveToListCtrl(WPARAM wParam, LPARAM listView) override;
    LRESULT OnMessage(WPARAM wParam, LPARAM record) override;
    LRESULT OnGetActiveLayer(WPARAM wParam, LPARAM layers) override;

    // Tree of names.
    void Add(HOSTINFO* object, HOSTINFO* owner, const std::string& ownName);
    void Remove(HOSTINFO* object);
    HOSTINFO* Find(const std::string& fullName);
    const std::list<HOSTINFO*>& Controls() const { return controls_; }
    const std::list<HOSTINFO*>& Devices() const { return devices_; }

    // Bindings. Announce and Withdraw rebuild the request lists of those that are bound to the object.
    void Announce(HOSTINFO* object);
    void Withdraw(HOSTINFO* object);
    // An object's own request list is about to be built anew, or the object goes.
    void Forget(HOSTINFO* object);
    void WaitFor(HOSTINFO* object, const std::string& name);
    void Bind(HOSTINFO* object, const HOSTINFO* target);

    // Further request lists of an object, followed like its own.
    struct FurtherList {
        const BINDINGLIST* functions;
        REQUESTLIST* requests;
    };
    void Follow(HOSTINFO* object, FurtherList list);
    const std::vector<FurtherList>& FurtherLists(const HOSTINFO* object) const;
    void ForgetFurtherLists(const HOSTINFO* object) { further_.erase(object); }

    // Windows of the controls that wait for a device parameter's address.
    std::vector<HWND> DependentsOn(const std::string& address) const;

    // In the order of saving and on the screen; null for the other one: to the end.
    void MoveBefore(HOSTINFO* object, HOSTINFO* other);

    void ApplyLayers(const HOSTINFO* object) const;
    // To all controls. What is hidden loses the focus, and whoever hears of that may end controls.
    void ApplyLayersToAll();
    void SetMode(WORD newMode);
    void Tick();

    // Values of the root's own saved keywords, and the way back to an empty panel with those.
    std::vector<std::string> SavedValues();
    void MakeEmpty(const std::vector<std::string>& values);

    // Whoever watches the loading of panel files.
    struct Progress {
        int(__cdecl* tell)(int read, int total, void* context) = nullptr;
        void* context = nullptr;
    };

    cPanelBackground background;
    std::uint64_t activeLayers = 0;
    std::string title;
    bool showsBandwidth = false;              // equaliser bands show bandwidth in place of Q
    std::string size;                         // "width,height" or empty
    std::string terminals;                    // networks that may connect to its terminals, or empty
    logic::TerminalNetworks terminalNetworks; // the same
    std::string parameterDialog;              // name of the control whose parameter dialog is open
    int loadErrors = 0;
    bool sendsOnOpen = false; // a panel file sends the values saved in it
    Opening opening;
    Progress progress;
    KeptLines kept{*this};
    EDITLISTENER editListener = nullptr;
    void* editContext = nullptr;

private:
    PanelRoot() = default;
    void End();
    void Release();
    void DestroyControls();
    std::list<HOSTINFO*>::iterator EndOf(const HOSTINFO* owner);
    std::string FreeName(const std::string& path, const std::string& ownName);

    int holds_ = 1; // one until Destroy, one of each Held
    bool ended_ = false;
    unsigned removals_ = 0;                             // of objects so far
    SharedLock lock_;                                   // guards byName_: other threads look names up
    std::unordered_map<std::string, HOSTINFO*> byName_; // full names in folded form
    std::unordered_map<std::string, int> lastNumber_;   // folded name: last number appended to make it free
    std::list<HOSTINFO*> controls_;                     // in order of creation
    std::list<HOSTINFO*> devices_;
    Dependence<std::string> waiting_;   // on a folded name that nothing has at present
    Dependence<const HOSTINFO*> bound_; // on a target
    std::unordered_map<const HOSTINFO*, std::vector<FurtherList>> further_;
};
