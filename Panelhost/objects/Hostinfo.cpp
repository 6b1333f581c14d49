// HOSTINFO: base behaviour, and the life of an object in the tree.

#include "Panelhost/Hostinfo.h"

#include "Panelhost/AddressTexts.h"
#include "Panelhost/PropertyValues.h"
#include "Panelhost/Remote.h"
#include "Panelhost/objects/ObjectTree.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/controls/Layers.h"
#include "logic/text/PropertyLine.h"

#include <cstring>
#include <olectl.h>

int HOSTINFO::HasHostinfoTable() {
    return 0;
}
const KEYWORDROW* HOSTINFO::GetHostinfoTable() {
    return nullptr;
}
LRESULT HOSTINFO::OnLoad(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnSave(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnSaveToListCtrl(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnTimer(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnMessage(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnSystem(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnInitialize(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnDelete(WPARAM, LPARAM) {
    return 0;
}
int HOSTINFO::OnGet(char*, int*) {
    return 0;
}
int HOSTINFO::OnGet(char*, float*) {
    return 0;
}
int HOSTINFO::OnGet(char*, char*) {
    return 0;
}
int HOSTINFO::OnGet(const char*, std::string&, int*) {
    return 0;
}
int HOSTINFO::OnSet(char*, MEMORY*) {
    return 0;
}
int HOSTINFO::OnSet(char*, int*) {
    return 0;
}
int HOSTINFO::OnSet(char*, float*) {
    return 0;
}
int HOSTINFO::OnSet(char*, char*) {
    return 0;
}
int HOSTINFO::OnSet(const char*, std::string&, int*) {
    return 0;
}
LRESULT HOSTINFO::OnUpdate(WPARAM, LPARAM) {
    return 0;
}
int HOSTINFO::OnConnectSource(std::string&, std::string&) {
    return 0;
}
int HOSTINFO::OnConnectSource(unsigned, long) {
    return 0;
}
LRESULT HOSTINFO::OnConnectTarget(WPARAM, LPARAM) {
    return 0;
}
int HOSTINFO::OnChangeAddress(std::string&, std::string&, std::string&) {
    return 0;
}
int HOSTINFO::OnChangeAddress(unsigned, long) {
    return 0;
}
int HOSTINFO::OnDisconnectSource(std::string&, std::string&) {
    return 0;
}
int HOSTINFO::OnDisconnectSource(unsigned, long) {
    return 0;
}
HOSTINFO* HOSTINFO::OnGetHostinfo(WPARAM, LPARAM) {
    return nullptr;
}
LRESULT HOSTINFO::OnGetTooltip(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetActiveLayer(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnData(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnIsAlive(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnInterfaceworking(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetKeywords(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetKeywords2(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetDatatype(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetUserfriendlyName(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetPropertydlg(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetContextMenu(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnSetContextMenu(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnCaller(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetKeywords_PWS(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnGetKeywords_DCS(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnRequestList(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnDataInBuffer(WPARAM, LPARAM) {
    return 0;
}
LRESULT HOSTINFO::OnIPAddressChanged(WPARAM, LPARAM) {
    return 0;
}

const KEYWORDINFO* HOSTINFO::GetKeywordInfo() const noexcept {
    return nullptr;
}

bool HOSTINFO::MakesChild(const char*) const noexcept {
    return false;
}

DWORD HOSTINFO::DueIn(DWORD) const noexcept {
    return 0;
}

HOSTINFO::~HOSTINFO() {
    Guarded([this] { a_RemoveHostinfo(parent, this); }); // nothing may find an object that is gone
}

void a_InitializeHostinfo(HWND window, HOSTINFO* object, void* createParameter) {
    if (object == nullptr) {
        return;
    }
    Guarded([&] {
        object->window = window;
        auto* parent = static_cast<HOSTINFO*>(createParameter);
        object->parent = ObjectTree::Get().IsAlive(parent) ? parent : nullptr;
        char text[128];
        GetWindowTextA(window, text, sizeof text);
        object->name = logic::CleanName(text);
        if (object->name.empty()) {
            GetClassNameA(window, text, sizeof text);
            object->name = logic::CleanName(text);
        }
        ObjectTree::Get().Enter(object);
    });
}

void a_AddHostinfo(HOSTINFO* parent, HOSTINFO* object) {
    PanelRoot* root = PanelRoot::Above(parent);
    if (root != nullptr && object != nullptr && PanelRoot::Above(object) == nullptr) {
        Guarded([&] { root->Add(object, parent, object->name); });
    }
}

void a_RemoveHostinfo(HOSTINFO*, HOSTINFO* object) {
    if (object == nullptr) {
        return;
    }
    Guarded([object] {
        if (PanelRoot* root = PanelRoot::Above(object); root != nullptr) {
            root->Remove(object);
        }
        ObjectTree::Get().Leave(object);
    });
}

void a_HostinfoCreated(HOSTINFO* root, HOSTINFO* object) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel != nullptr && object != nullptr) {
        Guarded([&] { panel->Announce(object); });
    }
}

void a_HostinfoDestroyed(HOSTINFO* root, HOSTINFO* object) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel != nullptr && object != nullptr) {
        Guarded([&] { panel->Withdraw(object); });
    }
}

void a_CleanHostinfo(HOSTINFO* object) {
    if (object == nullptr) {
        return;
    }
    if (HWND dialog = object->dialog; dialog != nullptr) {
        object->dialog = nullptr;
        DestroyWindow(dialog);
    }
    Guarded([object] {
        if (PanelRoot* root = PanelRoot::Above(object); root != nullptr) {
            for (const auto& list : root->bindings.FurtherLists(object)) {
                list.requests->clear();
            }
            root->bindings.ForgetFurtherLists(object);
        }
        object->functions.clear();
        object->connections.clear();
        a_BuildRequestList(object->functions, object->connections, object, object->requests);
    });
}

HOSTINFO* a_FindRootHostinfo(HOSTINFO* object) {
    return PanelRoot::Above(object);
}

HOSTINFO* a_FindHostinfo(HOSTINFO* root, const char* fullName) {
    PanelRoot* panel = PanelRoot::Above(root);
    if (panel == nullptr || fullName == nullptr) {
        return nullptr;
    }
    return Guarded<HOSTINFO*>(nullptr, [&] { return panel->Find(fullName); });
}

HWND a_FindHwnd(HOSTINFO* object, const char* name) {
    PanelRoot* panel = PanelRoot::Above(object);
    if (panel == nullptr || name == nullptr) {
        return nullptr;
    }
    return Guarded<HWND>(nullptr, [&] {
        const HOSTINFO* found = object == panel ? nullptr : panel->Find(object->name + "*" + name);
        if (found == nullptr) {
            found = panel->Find(name);
        }
        return found == nullptr ? nullptr : found->window;
    });
}

HOSTINFO* a_FromWindow(HWND window) {
    return ObjectTree::Get().FromWindow(window);
}
bool a_IsAlive(const HOSTINFO* object) {
    return object != nullptr && ObjectTree::Get().IsAlive(object);
}
unsigned a_LifeOf(const HOSTINFO* object) {
    return object == nullptr ? 0 : ObjectTree::Get().LifeOf(object);
}
int a_HostinfoCount() {
    return ObjectTree::Get().Count();
}

std::list<HOSTINFO*> a_ListHostinfos(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::Above(root);
    return Guarded<std::list<HOSTINFO*>>({}, [&] {
        std::list<HOSTINFO*> all;
        if (panel != nullptr) {
            all.insert(all.end(), panel->Devices().begin(), panel->Devices().end());
            all.insert(all.end(), panel->Controls().begin(), panel->Controls().end());
        }
        return all;
    });
}

std::string a_OwnName(const HOSTINFO* object) {
    if (object == nullptr) {
        return {};
    }
    const auto star = object->name.rfind('*');
    return star == std::string::npos ? object->name : object->name.substr(star + 1);
}

const KEYWORDROW* a_SelectRow(HOSTINFO* object, const KEYWORDROW* table, VALUERECORD* record,
                              LRESULT* answer) {
    *answer = 0;
    if (object == nullptr || table == nullptr || record == nullptr) {
        return nullptr;
    }
    if (record->name != nullptr && record->index == 0) {
        const int row = a_FindKeyword(table, record->name);
        record->index = row < 0 ? 0 : row;
    }
    if (record->command == COMMAND_RESOLVE) {
        *answer = 1;
        return nullptr;
    }
    if ((record->command != COMMAND_GET && record->command != COMMAND_SET) || record->index < 0) {
        return nullptr;
    }
    for (int row = 0; row <= record->index; ++row) { // the index comes from outside: never step over the end
        if (table[row].keyword == nullptr) {
            return nullptr;
        }
    }
    if (record->command == COMMAND_SET && record->datatype == DATATYPE_TEXT && record->data != nullptr) {
        const auto* text = static_cast<const char*>(record->data);
        if (!a_IsPropertyValue(object, table, record->index, {text, strnlen(text, TEXT_SIZE)})) {
            return nullptr;
        }
    }
    const KEYWORDROW& row = table[record->index];
    return row.handler == nullptr ? nullptr : &row;
}

logic::AddressForm a_AddressForm(HOSTINFO* object, const KEYWORDROW* row) {
    const KEYWORDINFO* infos = object->GetKeywordInfo();
    const KEYWORDROW* table = object->GetHostinfoTable();
    if (infos != nullptr && table != nullptr && infos[row - table].addresses != logic::AddressForm::None) {
        return infos[row - table].addresses;
    }
    const bool isConnection = std::strcmp(row->keyword, "connection") == 0;
    return (row->flags & KEYWORD_BINDINGS) != 0
               ? isConnection ? logic::AddressForm::Connections : logic::AddressForm::Functions
           : (row->flags & KEYWORD_CLICK) != 0 ? logic::AddressForm::Line
                                               : logic::AddressForm::None;
}

logic::AddressForm a_AddressForm(HOSTINFO* object, const char* keyword) {
    const KEYWORDROW* table = object->HasHostinfoTable() != 0 ? object->GetHostinfoTable() : nullptr;
    const int row = a_FindKeyword(table, keyword);
    return row < 0 ? logic::AddressForm::None : a_AddressForm(object, &table[row]);
}

void a_KeywordSet(HOSTINFO* object, const char* keyword) {
    if (keyword == nullptr || !a_IsAlive(object)) {
        return;
    }
    PanelRoot* root = PanelRoot::Above(object);
    if (root == nullptr) {
        return;
    }
    if (a_AddressForm(object, keyword) != logic::AddressForm::None) {
        root->NoteAddressChange();
    }
    if (PanelRoot::AnyKept()) {
        Guarded([&] { root->kept.KeywordSet(*object, keyword); });
    }
}

std::string a_GetLayers(const HOSTINFO* object) {
    return Guarded<std::string>({},
                                [&] { return object == nullptr ? "" : logic::LayersText(object->layers); });
}

void a_ApplyVisibility(HOSTINFO* object) {
    const PanelRoot* root = PanelRoot::Above(object);
    if (root != nullptr) {
        root->ApplyLayers(object);
    }
}

void a_DestroyChildWindows(const HOSTINFO* object) {
    if (object == nullptr || object->window == nullptr) {
        return;
    }
    // The last one first: what was made later may be bound to what was made before.
    HWND last = nullptr;
    while (const HWND first = GetWindow(object->window, GW_CHILD)) {
        const HWND child = GetWindow(first, GW_HWNDLAST);
        if (child == last) {
            return; // of another thread, which has to destroy it
        }
        last = child;
        DestroyWindow(child);
    }
}

HBRUSH a_AskForColours(UINT message, WPARAM dc, LPARAM window) {
    const HWND child = reinterpret_cast<HWND>(window);
    return a_FromWindow(child) == nullptr
               ? nullptr
               : reinterpret_cast<HBRUSH>(SendMessageA(child, OCM__BASE + message, dc, window));
}

int a_SetLayers(HOSTINFO* object, const char* text) {
    if (object == nullptr || text == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        const auto layers = logic::ParseLayers(text);
        if (!layers) {
            return 0;
        }
        const bool wasLayered = object->layers != 0;
        object->layers = *layers;
        if (const PanelRoot* root = PanelRoot::Above(object); root != nullptr) {
            root->ApplyLayers(object);
        }
        if (wasLayered && object->layers == 0 &&
            (object->flags & FLAG_EDIT_ONLY) == 0) { // back on every layer
            ShowWindow(object->window, SW_SHOWNA);
        }
        return 1;
    });
}
