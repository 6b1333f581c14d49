// The root object: names, bindings between objects, layers and modes, and the panel window's own keywords.

#include "Panelhost/objects/PanelRoot.h"

#include "Panelhost/PropertyLines.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/PropertyValues.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/ObjectTree.h"
#include "Panelhost/objects/PanelProcedure.h"
#include "base/DrawingHeld.h"
#include "base/Guard.h"
#include "logic/controls/Layers.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

std::vector<PanelRoot*>& Roots() {
    static std::vector<PanelRoot*> roots;
    return roots;
}

PanelRoot& AsRoot(HOSTINFO* object) {
    return *static_cast<PanelRoot*>(object);
}

// The keywords of the root. Each handler takes text and answers in any datatype.
int AnswerOrTake(VALUERECORD* record, const std::string& current,
                 bool (*take)(PanelRoot&, const std::string&), HOSTINFO* object) {
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, current.c_str());
    }
    std::string text;
    return record->command == COMMAND_SET && a_ReadText(record, &text) != 0 && take(AsRoot(object), text) ? 1
                                                                                                          : 0;
}

int BackgroundKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, AsRoot(object).background.Text(),
        [](PanelRoot& root, const std::string& text) {
            if (!root.background.Set(text.c_str())) {
                return false;
            }
            RedrawWindow(root.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
            return true;
        },
        object);
}

int BandwidthKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, AsRoot(object).showsBandwidth ? "bw" : "",
        [](PanelRoot& root, const std::string& text) {
            root.showsBandwidth = !text.empty() && (text.front() == 'b' || text.front() == 'B');
            return true;
        },
        object);
}

int LayerKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, logic::LayersText(AsRoot(object).activeLayers),
        [](PanelRoot& root, const std::string& text) {
            const auto layers = logic::ParseLayers(text);
            if (!layers) {
                return false;
            }
            root.activeLayers = *layers;
            root.ApplyLayersToAll();
            return true;
        },
        object);
}

constexpr const char* SEND = "send";
constexpr const char* FOLLOW = "follow"; // and so does an empty text

int OnOpenKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, AsRoot(object).sendsOnOpen ? SEND : FOLLOW,
        [](PanelRoot& root, const std::string& text) {
            if (text != SEND && text != FOLLOW && !text.empty()) {
                return false;
            }
            root.sendsOnOpen = text == SEND;
            return true;
        },
        object);
}

int ParameterDialogKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, AsRoot(object).parameterDialog,
        [](PanelRoot& root, const std::string& text) {
            root.parameterDialog = text;
            return true;
        },
        object);
}

int SizeKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, AsRoot(object).size,
        [](PanelRoot& root, const std::string& text) {
            if (!text.empty()) {
                const auto size = logic::ParseRectangle("0,0," + text);
                if (!size || size->right < 1 || size->bottom < 1) {
                    return false;
                }
            }
            root.size = text;
            return true;
        },
        object);
}

int TerminalKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, AsRoot(object).terminals,
        [](PanelRoot& root, const std::string& text) {
            auto networks = logic::TerminalNetworks::Parse(text);
            if (!networks) {
                return false;
            }
            root.terminals = text;
            root.terminalNetworks = std::move(*networks);
            return true;
        },
        object);
}

int TitleKeyword(VALUERECORD* record, HOSTINFO* object) {
    return AnswerOrTake(
        record, AsRoot(object).title,
        [](PanelRoot& root, const std::string& text) {
            root.title = text;
            return true;
        },
        object);
}

void RebuildRequests(const std::vector<HOSTINFO*>& objects) {
    for (HOSTINFO* object : objects) {
        a_BuildRequestList(object->functions, object->connections, object, object->requests);
    }
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", TitleKeyword, 0},
    {"background", BackgroundKeyword, KEYWORD_SAVED | KEYWORD_FILE},
    {"bandwidth", BandwidthKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, KEYWORD_SAVED},
    {"onopen", OnOpenKeyword, KEYWORD_SAVED | KEYWORD_CLOSED},
    {"parameterdlg", ParameterDialogKeyword, 0},
    {"size", SizeKeyword, KEYWORD_SAVED},
    {"terminal", TerminalKeyword, KEYWORD_SAVED | KEYWORD_CLOSED},
    {"title", TitleKeyword, KEYWORD_SAVED},
    {},
};

} // namespace

PanelRoot* PanelRoot::Create(HWND panel, const char* rootName) {
    if (!IsWindow(panel) || ObjectTree::Get().FromWindow(panel) != nullptr) {
        return nullptr;
    }
    auto* root = new PanelRoot;
    root->window = panel;
    root->kind = KIND_ROOT;
    root->name = logic::CleanName(rootName == nullptr ? "" : rootName);
    root->root_ = root;
    GetClientRect(panel, &root->rectangle);
    Roots().push_back(root);
    ObjectTree::Get().Enter(root);
    if (!Guarded(false, [&] { return PanelProcedure::Attach(panel, *root); })) {
        delete root;
        return nullptr;
    }
    return root;
}

PanelRoot* PanelRoot::From(HOSTINFO* object) {
    const auto& roots = Roots();
    const auto found = std::find(roots.begin(), roots.end(), object);
    return found == roots.end() ? nullptr : *found;
}

bool PanelRoot::AnyKept() {
    return std::any_of(Roots().begin(), Roots().end(),
                       [](const PanelRoot* root) { return !root->kept.IsEmpty(); });
}

PanelRoot* PanelRoot::Above(const HOSTINFO* object) {
    return object == nullptr ? nullptr : object->root_;
}

PanelRoot::~PanelRoot() {
    End();
}

void PanelRoot::End() {
    if (std::exchange(ended_, true)) {
        return;
    }
    kept.Clear();
    DestroyControls();
    while (!devices_.empty()) {
        HOSTINFO* device = devices_.front();
        delete device;
        if (!devices_.empty() && devices_.front() == device) {
            devices_.pop_front();
        }
    }
    if (window != nullptr) {
        PanelProcedure::Detach(window);
        window = nullptr;
    }
    ObjectTree::Get().Leave(this);
    auto& roots = Roots();
    roots.erase(std::remove(roots.begin(), roots.end(), this), roots.end());
    root_ = nullptr; // the base class has nothing to take out of this tree any more
}

void PanelRoot::Release() {
    if (--holds_ == 0) {
        delete this;
    }
}

void PanelRoot::Destroy() {
    if (!ended_) { // not once more by what goes with it
        End();
        Release();
    }
}

void PanelRoot::DestroyControls() {
    const DrawingHeld held(window);
    while (!controls_.empty()) {
        HOSTINFO* control = controls_.front();
        DestroyWindow(control->window);
        if (!controls_.empty() && controls_.front() == control) { // a window that this thread cannot destroy
            Remove(control);
        }
    }
}

const KEYWORDROW* PanelRoot::GetHostinfoTable() {
    return KEYWORDS;
}

LRESULT PanelRoot::OnLoad(WPARAM loadMode, LPARAM line) {
    const auto* text = reinterpret_cast<const char*>(line);
    if (text == nullptr) {
        return 0;
    }
    char keyword[TEXT_SIZE];
    char value[TEXT_SIZE];
    a_GetKeyword(text, keyword);
    a_GetParameter(text, value);
    const int row = a_FindKeyword(KEYWORDS, keyword);
    if (row < 0) {
        TRACE("Panel Keyword not found: %s\n", keyword);
        return 0;
    }
    if (!a_IsPropertyValue(this, KEYWORDS, row, logic::SplitPropertyLine(text).value)) {
        return EDITTRACE(this, "Error reading line %s", text);
    }
    VALUERECORD record{COMMAND_SET, row, DATATYPE_TEXT, 0, value, nullptr, 0};
    const bool edited = loadMode != LOAD_FROM_FILE && (KEYWORDS[row].flags & KEYWORD_SAVED) != 0;
    if (a_DispatchRecord(this, KEYWORDS, &record) == 0) {
        return EDITTRACE(this, "Error reading line %s", text);
    }
    if (edited) {
        flags |= FLAG_CHANGED;
    }
    return 1;
}

std::vector<std::string> PanelRoot::SavedValues() {
    std::vector<std::string> values;
    for (const KEYWORDROW* row = KEYWORDS; row->keyword != nullptr; ++row) {
        char value[TEXT_SIZE] = "";
        VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, value, nullptr, 0};
        if ((row->flags & KEYWORD_SAVED) != 0) {
            row->handler(&record, this);
            values.emplace_back(value);
        }
    }
    return values;
}

void PanelRoot::MakeEmpty(const std::vector<std::string>& values) {
    kept.Clear();
    DestroyControls();
    loadErrors = 0;
    auto value = values.begin();
    for (const KEYWORDROW* row = KEYWORDS; row->keyword != nullptr && value != values.end(); ++row) {
        if ((row->flags & KEYWORD_SAVED) != 0) {
            std::string text = *value++;
            VALUERECORD record{COMMAND_SET, 0, DATATYPE_TEXT, 0, text.data(), nullptr, 0};
            row->handler(&record, this);
        }
    }
}

LRESULT PanelRoot::OnSave(WPARAM saveCode, LPARAM file) {
    if (saveCode != SAVE_PROPERTIES) {
        if (saveCode != SAVE_CONNECTIONS) {
            TRACE("Unknown wSaveCode %x\n", static_cast<unsigned>(saveCode));
        }
        return 0;
    }
    return Guarded(LRESULT{-1}, [&] {
        std::string lines;
        char value[TEXT_SIZE];
        for (const KEYWORDROW* row = KEYWORDS; row->keyword != nullptr; ++row) {
            // What a panel has without a line is not written.
            std::snprintf(value, sizeof value, "%s", row->handler == OnOpenKeyword ? FOLLOW : "");
            VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, value, nullptr, 0};
            if ((row->flags & KEYWORD_SAVED) != 0 && row->handler(&record, this) != 0) {
                lines += std::string(row->keyword) + "=" + value + "\r\n";
            }
        }
        a_WriteText(reinterpret_cast<HANDLE>(file), lines.data(), lines.size());
        return LRESULT{0};
    });
}

LRESULT PanelRoot::OnSaveToListCtrl(WPARAM, LPARAM listView) {
    return a_ListProperties(this, KEYWORDS, reinterpret_cast<HWND>(listView));
}

LRESULT PanelRoot::OnMessage(WPARAM, LPARAM record) {
    auto* request = reinterpret_cast<VALUERECORD*>(record);
    if (request == nullptr) {
        return 0;
    }
    if (request->index == 0 && request->name != nullptr && a_FindKeyword(KEYWORDS, request->name) < 0) {
        return 0; // unlike a control, which falls back to its default value
    }
    return a_DispatchRecord(this, KEYWORDS, request);
}

LRESULT PanelRoot::OnGetActiveLayer(WPARAM, LPARAM layersOut) {
    *reinterpret_cast<std::uint64_t*>(layersOut) = activeLayers;
    return 1;
}

std::string PanelRoot::FreeName(const std::string& path, const std::string& ownName) {
    const std::string folded = logic::FoldName(path + ownName);
    if (byName_.find(folded) == byName_.end()) {
        return path + ownName;
    }
    int& number =
        lastNumber_[folded]; // where the last search ended: a thousand equal names stay a linear effort
    while (byName_.find(folded + std::to_string(++number)) != byName_.end()) {
    }
    return path + ownName + std::to_string(number);
}

void PanelRoot::Add(HOSTINFO* object, HOSTINFO* owner, const std::string& ownName) {
    object->name = FreeName(owner == this ? "" : owner->name + "*", ownName);
    auto& list = object->kind == KIND_DEVICE ? devices_ : controls_;
    object->place_ = list.insert(object->kind == KIND_DEVICE ? list.end() : EndOf(owner), object);
    try {
        const SharedLock::Writing writing(lock_);
        byName_[logic::FoldName(object->name)] = object;
    } catch (const std::bad_alloc&) {
        list.erase(object->place_);
        throw;
    }
    object->root_ = this;
    object->reachable_ = true;
    object->mode = mode;
    ++owner->children_;
    kept.Added(*object);
}

void PanelRoot::Remove(HOSTINFO* object) {
    if (object == this) {
        return;
    }
    Withdraw(object);
    Forget(object); // one that found no place here for want of memory can be bound all the same
    ForgetFurtherLists(object);
    if (object->root_ != this) {
        return;
    }
    if (object->kind != KIND_DEVICE) {
        kept.Removed(*object, object->place_ == controls_.begin() ? *this : **std::prev(object->place_));
    }
    (object->kind == KIND_DEVICE ? devices_ : controls_).erase(object->place_);
    if (object->children_ > 0) { // its windows go right after it
        for (HOSTINFO* child : controls_) {
            if (child->parent == object) {
                child->parent = nullptr;
            }
        }
    }
    if (object->parent != nullptr) {
        --object->parent->children_;
    }
    object->root_ = nullptr;
    ++removals_;
}

HOSTINFO* PanelRoot::Find(const std::string& fullName) {
    const std::string folded = logic::FoldName(fullName);
    const SharedLock::Reading reading(lock_);
    const auto found = byName_.find(folded);
    return found == byName_.end() ? nullptr : found->second;
}

void PanelRoot::Announce(HOSTINFO* object) {
    RebuildRequests(waiting_.On(logic::FoldName(object->name)));
}

void PanelRoot::Withdraw(HOSTINFO* object) {
    if (!object->reachable_) {
        return;
    }
    object->reachable_ = false;
    {
        const SharedLock::Writing writing(lock_);
        const bool isErased = Guarded(false, [&] {
            byName_.erase(logic::FoldName(object->name));
            return true;
        });
        if (!isErased) { // without memory it has to be looked for
            std::erase_if(byName_, [object](const auto& entry) { return entry.second == object; });
        }
        lastNumber_.clear(); // the name is free again
    }
    Guarded([&] { RebuildRequests(bound_.On(object)); }); // what cannot be rebuilt sends to nobody
}

void PanelRoot::Forget(HOSTINFO* object) {
    waiting_.Forget(object);
    bound_.Forget(object);
}

void PanelRoot::WaitFor(HOSTINFO* object, const std::string& fullName) {
    waiting_.Add(object, logic::FoldName(fullName));
}

void PanelRoot::Bind(HOSTINFO* object, const HOSTINFO* target) {
    bound_.Add(object, target);
}

void PanelRoot::Follow(HOSTINFO* object, FurtherList list) {
    further_[object].push_back(list);
}

const std::vector<PanelRoot::FurtherList>& PanelRoot::FurtherLists(const HOSTINFO* object) const {
    static const std::vector<FurtherList> none;
    const auto found = further_.find(object);
    return found == further_.end() ? none : found->second;
}

std::vector<HWND> PanelRoot::DependentsOn(const std::string& address) const {
    std::vector<HWND> windows;
    for (const HOSTINFO* object : waiting_.On(logic::FoldName(address))) {
        windows.push_back(object->window);
    }
    return windows;
}

// Behind the last control inside that one, so that what belongs together stands together.
std::list<HOSTINFO*>::iterator PanelRoot::EndOf(const HOSTINFO* owner) {
    if (owner->kind == KIND_ROOT || owner->kind == KIND_DEVICE) {
        return controls_.end();
    }
    const std::string path = owner->name + "*";
    auto end = owner->place_;
    do {
        ++end;
    } while (end != controls_.end() && (*end)->name.compare(0, path.size(), path) == 0);
    return end;
}

void PanelRoot::MoveBefore(HOSTINFO* object, HOSTINFO* other) {
    // The object and all below it stay together and in order.
    const std::string path = object->name + "*";
    std::list<HOSTINFO*> moved;
    for (auto place = controls_.begin(); place != controls_.end();) {
        const auto next = std::next(place);
        if (*place == object || (*place)->name.compare(0, path.size(), path) == 0) {
            moved.splice(moved.end(), controls_, place);
        }
        place = next;
    }
    const bool hasOwner = object->parent != nullptr && object->parent != this;
    controls_.splice(other != nullptr ? other->place_ : (hasOwner ? EndOf(object->parent) : controls_.end()),
                     moved);
    HWND above = HWND_BOTTOM;
    if (other != nullptr) {
        above = GetWindow(other->window, GW_HWNDPREV);
        if (above == object->window) {
            return;
        }
        above = above == nullptr ? HWND_TOP : above;
    }
    SetWindowPos(object->window, above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void PanelRoot::ApplyLayers(const HOSTINFO* object) const {
    const bool editOnly = (object->flags & FLAG_EDIT_ONLY) != 0;
    if (object->layers == 0 && !editOnly) {
        return; // its visibility is the host's
    }
    const bool shown = mode != 0 || (!editOnly && logic::LayerShown(object->layers, activeLayers));
    const bool visible = (GetWindowLongA(object->window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (shown != visible) {
        ShowWindow(object->window, shown ? SW_SHOWNA : SW_HIDE);
    }
}

void PanelRoot::ApplyLayersToAll() {
    const std::vector<HOSTINFO*> controls(controls_.begin(), controls_.end());
    for (HOSTINFO* control : controls) {
        if (a_IsAlive(control)) {
            ApplyLayers(control);
        }
    }
}

void PanelRoot::SetMode(WORD newMode) {
    mode = newMode;
    for (HOSTINFO* control : controls_) {
        control->mode = newMode;
    }
    ApplyLayersToAll();
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void PanelRoot::Tick() {
    if (opening.IsUnderWay()) {
        return; // some of it is not there yet
    }
    const Held held(*this);
    // Objects may come and go while one of them handles the tick, so they are listed first.
    std::vector<HOSTINFO*> objects(devices_.begin(), devices_.end());
    objects.insert(objects.end(), controls_.begin(), controls_.end());
    const unsigned removals = removals_;
    const auto isThere = [&](const HOSTINFO* object) {
        return removals == removals_ || (a_IsAlive(object) && Above(object) == this);
    };
    opening.Send(*this); // before a poll brings what it replaces
    DWORD now = GetTickCount();
    for (const HOSTINFO* object : objects) {
        if (isThere(object) && object->DueIn(now) == 0) {
            SendMessageA(object->window, WM_TIMER, 0, 0);
            now = GetTickCount();
        }
    }
}

bool a_IsChanged(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return false;
    }
    const auto changed = [](const HOSTINFO* object) { return (object->flags & FLAG_CHANGED) != 0; };
    return changed(panel) || std::any_of(panel->Controls().begin(), panel->Controls().end(), changed);
}

void a_SetChanged(HOSTINFO* root, bool changed) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return;
    }
    panel->flags = static_cast<WORD>(changed ? panel->flags | FLAG_CHANGED : panel->flags & ~FLAG_CHANGED);
    if (!changed) {
        for (HOSTINFO* control : panel->Controls()) {
            control->flags = static_cast<WORD>(control->flags & ~FLAG_CHANGED);
        }
    }
}

int a_LoadErrorCount(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? 0 : panel->loadErrors;
}

int a_Request(HOSTINFO* object, const char* keyword, int* value) {
    PanelRoot* root = PanelRoot::Above(object);
    const int row = root == nullptr ? -1 : a_FindKeyword(root->GetHostinfoTable(), keyword);
    if (row < 0) {
        return 0;
    }
    return Guarded(0, [&] {
        char text[TEXT_SIZE] = "";
        VALUERECORD record{COMMAND_GET, row, DATATYPE_TEXT, 0, text, nullptr, 0};
        a_DispatchRecord(root, root->GetHostinfoTable(), &record);
        *value = text[0] != '\0' ? 1 : 0;
        return 1;
    });
}

const cPanelBackground* a_GetBackground(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? nullptr : &panel->background;
}
