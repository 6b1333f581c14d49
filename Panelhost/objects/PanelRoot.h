#pragma once

#include "Panelhost/Background.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Renaming.h"
#include "Panelhost/objects/Bindings.h"
#include "Panelhost/objects/KeptLines.h"
#include "Panelhost/objects/Opening.h"
#include "Panelhost/snapshots/Recall.h"
#include "base/SharedLock.h"
#include "logic/controls/Layers.h"
#include "logic/remote/TerminalAdmission.h"

#include <atomic>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

class DEVICE;
class NetworkThread;

// The root object of one panel: owns the tree of names below it and answers the private messages for the
// panel window.
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
    // Whether a request to that object may be made on this thread. The trace says, once for each root, that
    // one was made on another thread than the panel's.
    static bool IsOnItsThread(const HOSTINFO* object);
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
    const KEYWORDINFO* GetKeywordInfo() const noexcept override;
    LRESULT OnLoad(WPARAM loadMode, LPARAM line) override;
    LRESULT OnSave(WPARAM saveCode, LPARAM file) override;
    LRESULT OnSaveToListCtrl(WPARAM wParam, LPARAM listView) override;
    LRESULT OnMessage(WPARAM wParam, LPARAM record) override;
    LRESULT OnGetDatatype(WPARAM wParam, LPARAM keyword) override;
    LRESULT OnGetActiveLayer(WPARAM wParam, LPARAM layers) override;

    // Tree of names.
    void Add(HOSTINFO* object, HOSTINFO* owner, const std::string& ownName);
    void Remove(HOSTINFO* object);
    HOSTINFO* Find(const std::string& fullName);
    const std::list<HOSTINFO*>& Controls() const { return controls_; }
    const std::list<HOSTINFO*>& Devices() const { return devices_; }

    // The request lists of those that are bound to the object are rebuilt.
    void Announce(HOSTINFO* object);
    void Withdraw(HOSTINFO* object);

    // Gives a control another own name, clean and free among its siblings. All that is inside goes with it;
    // what waited for one of the new names is bound, and what was bound by an old one waits for it.
    void Rename(HOSTINFO* object, const std::string& ownName);

    // Devices of files, in that order, behind all others.
    void ArrangeDevices(const std::vector<DEVICE*>& order);

    // In the order of saving and on the screen; null for the other one: to the end.
    void MoveBefore(HOSTINFO* object, HOSTINFO* other);

    // Takes a control out of sight until the edit mode ends. False for what cannot be seen anyway.
    static bool Hide(HOSTINFO* object, bool hidden);
    void ApplyLayers(const HOSTINFO* object) const;
    // Another one whenever it may have changed what controls are bound to, or which of them are shown.
    unsigned BindingVersion() const { return bindings.Version() + layerChanges_; }
    // Another one whenever objects came or went, or a text that holds addresses may have changed.
    unsigned AddressVersion() const { return bindings.Version() + addressChanges_; }
    void NoteAddressChange() { ++addressChanges_; }
    // To all controls. What is hidden loses the focus, and whoever hears of that may end controls.
    void ApplyLayersToAll();
    void SetMode(WORD newMode);
    // OnSystem of all controls, any of which may go meanwhile.
    void TellControls(WPARAM event);
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
    cPanelBackground ground; // while there is no background
    std::string groundName;  // keyword "ground"
    int artScale = 100;      // keyword "artscale"
    // What is drawn behind the controls.
    const cPanelBackground& Behind() const { return background.Text().empty() ? ground : background; }
    std::uint64_t activeLayers = 0;
    std::uint64_t editedLayers = 0; // shown while the panel is edited; 0: all
    logic::LayerNames layerNames;
    std::string title;
    bool showsBandwidth = false;              // equaliser bands show bandwidth in place of Q
    bool isDark = false;                      // keyword "style"
    std::string size;                         // "width,height" or empty
    std::string terminals;                    // networks that may connect to its terminals, or empty
    logic::TerminalNetworks terminalNetworks; // the same
    std::string parameterDialog;              // name of the control whose parameter dialog is open
    std::string lock;                         // text of a logic::PinLock, or empty
    bool isOnlyOperated = false;              // nobody opens a dialog about a property, or drops a file
    int loadErrors = 0;
    std::weak_ptr<NetworkThread> network; // as long as it has real devices
    std::list<std::string> deviceFaults;  // devices that could not be declared, in words
    bool sendsOnOpen = false;             // a panel file sends the values saved in it
    bool neverSendsOnOpen = false;        // whatever the panel file says
    std::string panelFile;                // of the panel, absolute; empty while it has none
    std::string deviceFile;               // keyword "devices"
    std::string snapshot;                 // what was last recalled by the keyword
    Opening opening;
    Recall recall{*this};
    Bindings bindings;
    Progress progress;
    KeptLines kept{*this};
    EDITLISTENER editListener = nullptr;
    void* editContext = nullptr;
    RENAMELISTENER renameListener = nullptr;
    void* renameContext = nullptr;

private:
    PanelRoot() = default;
    void End();
    void Release();
    void DestroyControls();
    void TellWhetherLive(DEVICE& device);
    std::list<HOSTINFO*>::iterator EndOf(const HOSTINFO* owner);
    std::string FreeName(const std::string& path, const std::string& ownName);

    int holds_ = 1; // one until Destroy, one of each Held
    bool ended_ = false;
    unsigned removals_ = 0; // of objects so far
    mutable unsigned layerChanges_ = 0;
    unsigned addressChanges_ = 0;
    DWORD thread_ = 0; // of the panel window
    std::atomic<bool> isToldOfThreads_ = false;
    SharedLock lock_;                                   // guards byName_: other threads look names up
    std::unordered_map<std::string, HOSTINFO*> byName_; // full names in folded form
    std::unordered_map<std::string, int> lastNumber_;   // folded name: last number appended to make it free
    std::list<HOSTINFO*> controls_;                     // in order of creation
    std::list<HOSTINFO*> devices_;
};
