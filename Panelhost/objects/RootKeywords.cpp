// The keywords of the root: what a panel as a whole keeps, and the loading and saving of it.

#include "Panelhost/HostInterface.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/PropertyValues.h"
#include "Panelhost/Root.h"
#include "Panelhost/Snapshots.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Panelhost/SecretKeywords.h"
#include "base/Guard.h"
#include "logic/controls/Layers.h"
#include "logic/devices/SnapshotFile.h"
#include "logic/security/PinLock.h"
#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

constexpr const char* SEND = "send";
constexpr const char* FOLLOW = "follow";   // and so does an empty text
constexpr const char* CLASSIC = "classic"; // and so does an empty text
constexpr const char* DARK = "dark";

void RedrawPanel(const PanelRoot& root) {
    RedrawWindow(root.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

std::string ArtScaleText(const PanelRoot& root) {
    return std::to_string(root.artScale);
}

bool SetArtScale(PanelRoot& root, const std::string& text) {
    const auto percent = logic::ParseWholeInteger(text.empty() ? "100" : text);
    if (!percent || (*percent != 100 && *percent != 150 && *percent != 200)) {
        return false;
    }
    if (*percent != root.artScale) {
        const PanelRoot::Held held(root);
        root.artScale = *percent;
        root.TellControls(SYSTEM_ART);
        RedrawPanel(root);
    }
    return true;
}

std::string BackgroundText(const PanelRoot& root) {
    return root.background.Text();
}

bool SetBackground(PanelRoot& root, const std::string& text) {
    if (!root.background.Set(text.c_str())) {
        return false;
    }
    RedrawPanel(root);
    return true;
}

std::string BandwidthText(const PanelRoot& root) {
    return root.showsBandwidth ? "bw" : "";
}

bool SetBandwidth(PanelRoot& root, const std::string& text) {
    root.showsBandwidth = !text.empty() && (text.front() == 'b' || text.front() == 'B');
    return true;
}

constexpr const char* GROUNDS[] = {"graphite", "brushed", "night"};

bool SetGround(PanelRoot& root, const std::string& text) {
    const bool isKnown = std::any_of(std::begin(GROUNDS), std::end(GROUNDS),
                                     [&](const char* ground) { return text == ground; });
    if (!text.empty() && !isKnown) {
        return false;
    }
    std::string name = text; // before anything is changed: there may be no memory for it
    if (!root.ground.Set(text.empty() ? "" : (".\\Controls\\Ground_" + text + ".png").c_str())) {
        return false;
    }
    root.groundName.swap(name);
    RedrawPanel(root);
    return true;
}

std::string LayersText(const PanelRoot& root) {
    return logic::LayersText(root.activeLayers);
}

bool SetLayers(PanelRoot& root, const std::string& text) {
    const auto layers = logic::ParseLayers(text);
    if (!layers) {
        return false;
    }
    root.activeLayers = *layers;
    root.ApplyLayersToAll();
    return true;
}

// A panel file may hold any text: what is no lock is one that nothing opens.
bool SetLock(PanelRoot& root, const std::string& text) {
    if (!root.opening.IsUnderWay() && !text.empty() && !logic::PinLock::Parse(text)) {
        return false;
    }
    root.lock = text;
    return true;
}

std::string LayerNamesText(const PanelRoot& root) {
    return logic::LayerNamesText(root.layerNames);
}

bool SetLayerNames(PanelRoot& root, const std::string& text) {
    const auto names = logic::ParseLayerNames(text);
    root.layerNames = names.value_or(root.layerNames);
    return names.has_value();
}

// The number of the only layer that is active.
std::string PageText(const PanelRoot& root) {
    return std::to_string(std::has_single_bit(root.activeLayers) ? std::countr_zero(root.activeLayers) + 1
                                                                 : 0);
}

bool SetPage(PanelRoot& root, const std::string& text) {
    const auto number = logic::ParseWholeInteger(text);
    return number && *number >= 0 && *number <= logic::LAYER_COUNT &&
           SetLayers(root, *number == 0 ? "" : "u" + std::to_string(*number));
}

std::string OnOpenText(const PanelRoot& root) {
    return root.sendsOnOpen ? SEND : FOLLOW;
}

bool SetOnOpen(PanelRoot& root, const std::string& text) {
    if (text != SEND && text != FOLLOW && !text.empty()) {
        return false;
    }
    root.sendsOnOpen = text == SEND;
    return true;
}

bool SetSize(PanelRoot& root, const std::string& text) {
    if (!text.empty()) {
        const auto size = logic::ParseRectangle("0,0," + text);
        if (!size || size->right < 1 || size->bottom < 1) {
            return false;
        }
    }
    root.size = text;
    return true;
}

// A line of the panel file recalls nothing.
bool SetSnapshot(PanelRoot& root, const std::string& text) {
    const auto recall = logic::ReadSnapshotRecall(text);
    if (!recall || root.opening.IsUnderWay()) {
        return false;
    }
    const std::string path = a_SnapshotFile(&root, recall->name.c_str());
    if (ph_RecallSnapshot(&root, path.c_str(), recall->milliseconds) < 0) {
        EDITTRACE(&root, "There is no snapshot %s beside the panel", recall->name.c_str());
        return false;
    }
    root.snapshot = text;
    return true;
}

std::string StyleText(const PanelRoot& root) {
    return root.isDark ? DARK : CLASSIC;
}

bool SetStyle(PanelRoot& root, const std::string& text) {
    if (text != CLASSIC && text != DARK && !text.empty()) {
        return false;
    }
    if (const bool isDark = text == DARK; isDark != root.isDark) {
        const PanelRoot::Held held(root);
        root.isDark = isDark;
        root.TellControls(SYSTEM_STYLE);
        RedrawWindow(root.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    }
    return true;
}

bool SetTerminals(PanelRoot& root, const std::string& text) {
    auto networks = logic::TerminalNetworks::Parse(text);
    if (!networks) {
        return false;
    }
    root.terminals = text;
    root.terminalNetworks = std::move(*networks);
    return true;
}

template <std::string PanelRoot::*Member>
std::string MemberText(const PanelRoot& root) {
    return root.*Member;
}

template <std::string PanelRoot::*Member>
bool SetMember(PanelRoot& root, const std::string& text) {
    root.*Member = text;
    return true;
}

// Each keyword takes text and answers in any datatype.
template <std::string (*Get)(const PanelRoot&), bool (*Set)(PanelRoot&, const std::string&)>
int Handle(VALUERECORD* record, HOSTINFO* object) {
    auto& root = *static_cast<PanelRoot*>(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, Get(root).c_str());
    }
    std::string text;
    return record->command == COMMAND_SET && a_ReadText(record, &text) != 0 && Set(root, text) ? 1 : 0;
}

struct RootKeyword {
    KEYWORDROW row;
    KEYWORDINFO info;
    const char* unsaved = ""; // what a panel has without a line of it
};

constexpr KEYWORDINFO About(KeywordKind kind, const char* sentence, const char* words = "") {
    KEYWORDINFO info;
    info.kind = kind;
    info.sentence = sentence;
    info.words = words;
    info.mayBeEmpty = true;
    return info;
}

constexpr KEYWORDINFO NamingControl(KEYWORDINFO info) {
    info.addresses = logic::AddressForm::Connections;
    return info;
}

constexpr KEYWORDHANDLER HandleTitle = Handle<MemberText<&PanelRoot::title>, SetMember<&PanelRoot::title>>;

constexpr RootKeyword ROOT_KEYWORDS[] = {
    {{" ", HandleTitle, 0}, About(KeywordKind::Text, "The title.")},
    {{"artscale", Handle<ArtScaleText, SetArtScale>, KEYWORD_SAVED},
     About(KeywordKind::Words,
           "Size of the controls' pictures in percent: `100`, `150` or `200`. A picture that has a larger "
           "[form](panel-files.md#larger-pictures) is shown in it, and gives its control that size; parts of "
           "strips keep theirs.",
           "100,150,200"),
     "100"},
    {{"background", Handle<BackgroundText, SetBackground>, KEYWORD_SAVED | KEYWORD_FILE},
     About(KeywordKind::Picture, "A colour (`0x00bbggrr`) or an image file that is repeated over the panel; "
                                 "empty for the system's dialog colour.")},
    {{"bandwidth", Handle<BandwidthText, SetBandwidth>, KEYWORD_SAVED},
     About(KeywordKind::Words,
           "`bw`: equaliser bands made from now on show bandwidth in place of Q; anything else, kept as "
           "empty: Q.",
           "bw")},
    {{"devices", Handle<MemberText<&PanelRoot::deviceFile>, SetMember<&PanelRoot::deviceFile>>,
      KEYWORD_SAVED | KEYWORD_CLOSED},
     About(
         KeywordKind::Text,
         "The [device file](device-files.md#which-file), for the host to follow: beside the panel unless the "
         "name has a folder; empty for the one that has the name of the panel. Not to be set by a "
         "terminal.")},
    {{"ground", Handle<MemberText<&PanelRoot::groundName>, SetGround>, KEYWORD_SAVED},
     About(KeywordKind::Words,
           "`graphite`, `brushed` or `night`: the drawn ground of the panel while `background` is empty; "
           "empty for none.",
           "graphite,brushed,night")},
    {{"layer", Handle<LayersText, SetLayers>, KEYWORD_SAVED},
     About(KeywordKind::Text, "The active layers, `u1` to `u64`, joined by `,`; empty for all.")},
    {{"lock", Handle<MemberText<&PanelRoot::lock>, SetLock>, KEYWORD_SAVED | KEYWORD_CLOSED | KEYWORD_SECRET},
     About(KeywordKind::Text, "What the PIN is recognised by that opens a panel "
                              "[for editing](operating.md#lock), as `File > Lock` makes it; empty for "
                              "none. Told to nobody, and not to be set by a terminal.")},
    {{"layernames", Handle<LayerNamesText, SetLayerNames>, KEYWORD_SAVED},
     About(KeywordKind::Text, "What people call the layers, `u1=Mix;u2=EQ`, where these are listed.")},
    {{"onopen", Handle<OnOpenText, SetOnOpen>, KEYWORD_SAVED | KEYWORD_CLOSED},
     About(KeywordKind::Words,
           "`follow`: opening the panel moves no device, the controls show what these hold; `send`: the "
           "values saved in the panel go to its [devices](panel-files.md#opening).",
           "follow,send"),
     FOLLOW},
    {{"page", Handle<PageText, SetPage>, 0},
     About(KeywordKind::Integer,
           "Number of the layer that is shown alone, 1 to 64: another way to set `layer`, for [buttons that "
           "switch layers](panel-files.md#layers). 0: all of them, or several.")},
    {{"parameterdlg", Handle<MemberText<&PanelRoot::parameterDialog>, SetMember<&PanelRoot::parameterDialog>>,
      0},
     NamingControl(About(KeywordKind::Text, "Name of the control whose parameter dialog is open."))},
    {{"size", Handle<MemberText<&PanelRoot::size>, SetSize>, KEYWORD_SAVED},
     About(KeywordKind::Numbers,
           "Width and height of the panel in pixels, joined by `,`; empty to let the host choose.")},
    {{"snapshot", Handle<MemberText<&PanelRoot::snapshot>, SetSnapshot>, KEYWORD_CLOSED},
     About(KeywordKind::Text,
           "Recalls a [snapshot](snapshots.md): its name, and after a comma the milliseconds of a fade, as "
           "`Evening,2000`. For clicks of buttons and lists, not for files and terminals.")},
    {{"style", Handle<StyleText, SetStyle>, KEYWORD_SAVED},
     About(KeywordKind::Words,
           "`dark`: equalisers, crossovers and strips are drawn in the dark [style of "
           "panels](style-of-panels.md), with "
           "the same places and sizes; `classic`: in their own colours, as without this line.",
           "classic,dark"),
     CLASSIC},
    {{"terminal", Handle<MemberText<&PanelRoot::terminals>, SetTerminals>, KEYWORD_SAVED | KEYWORD_CLOSED},
     About(KeywordKind::Text,
           "IPv4 networks that [terminals](terminal.md#who-may-connect) may connect from, joined by `,`: "
           "`192.168.0.0/16,10.1.2.3`; empty for all, `none` for nobody. Not to be set by a terminal.")},
    {{"title", HandleTitle, KEYWORD_SAVED}, About(KeywordKind::Text, "The title, for the host to show.")},
};

constexpr int COUNT = static_cast<int>(std::size(ROOT_KEYWORDS));

// The same as a keyword table, which ends with an empty row, and what belongs to it.
struct Tables {
    KEYWORDROW rows[COUNT + 1]{};
    KEYWORDINFO infos[COUNT]{};
};

constexpr Tables TABLES = [] {
    Tables tables;
    for (int i = 0; i < COUNT; ++i) {
        tables.rows[i] = ROOT_KEYWORDS[i].row;
        tables.infos[i] = ROOT_KEYWORDS[i].info;
    }
    return tables;
}();

constexpr const KEYWORDROW* KEYWORDS = TABLES.rows;

} // namespace

const KEYWORDROW* PanelRoot::GetHostinfoTable() {
    return KEYWORDS;
}

const KEYWORDINFO* PanelRoot::GetKeywordInfo() const noexcept {
    return TABLES.infos;
}

LRESULT PanelRoot::OnLoad(WPARAM loadMode, LPARAM lParam) {
    const auto* line = reinterpret_cast<const char*>(lParam);
    if (line == nullptr) {
        return 0;
    }
    const logic::PropertyLine parts = logic::SplitPropertyLine(line);
    const int row = a_FindKeyword(KEYWORDS, parts.keyword);
    if (row < 0) {
        TRACE("Panel Keyword not found: %s\n", std::string(parts.keyword.substr(0, TEXT_SIZE - 1)).c_str());
        return 0;
    }
    const std::string told = IsSecret(KEYWORDS[row]) ? std::string(parts.keyword) + "=..." : line;
    if (!a_IsPropertyValue(this, KEYWORDS, row, parts.value)) {
        return EDITTRACE(this, "Error reading line %s", told.c_str());
    }
    char value[TEXT_SIZE];
    value[parts.value.copy(value, TEXT_SIZE - 1)] = '\0';
    VALUERECORD record = VALUERECORD::SetText(value, row);
    const bool edited = loadMode != LOAD_FROM_FILE && (KEYWORDS[row].flags & KEYWORD_SAVED) != 0;
    if (a_DispatchRecord(this, KEYWORDS, &record) == 0) {
        return EDITTRACE(this, "Error reading line %s", told.c_str());
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
        VALUERECORD record = VALUERECORD::GetText(value);
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
            VALUERECORD record = VALUERECORD::SetText(text.data());
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
        for (const auto& [row, info, unsaved] : ROOT_KEYWORDS) {
            char value[TEXT_SIZE] = "";
            std::strcpy(value, unsaved);
            VALUERECORD record = VALUERECORD::GetText(value);
            if ((row.flags & KEYWORD_SAVED) != 0 && row.handler(&record, this) != 0) {
                lines += std::string(row.keyword) + "=" + value + "\r\n";
            }
        }
        return a_WriteText(reinterpret_cast<HANDLE>(file), lines.data(), lines.size()) != 0
                   ? LRESULT{0}
                   : static_cast<LRESULT>(GetLastError());
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
    const int row = request->index == 0 && request->name != nullptr ? a_FindKeyword(KEYWORDS, request->name)
                                                                    : request->index;
    if (row > 0 && row < COUNT && IsSecret(KEYWORDS[row]) && request->command != COMMAND_RESOLVE) {
        return 0;
    }
    return a_DispatchRecord(this, KEYWORDS, request);
}

LRESULT PanelRoot::OnGetDatatype(WPARAM, LPARAM keyword) {
    const int row = a_FindKeyword(KEYWORDS, reinterpret_cast<const char*>(keyword));
    return row >= 0 && TABLES.infos[row].kind == KeywordKind::Integer ? DATATYPE_INTEGER : DATATYPE_TEXT;
}

int a_Request(HOSTINFO* object, const char* keyword, int* value) {
    PanelRoot* root = PanelRoot::Above(object);
    const int row = root == nullptr ? -1 : a_FindKeyword(KEYWORDS, keyword);
    if (row < 0) {
        return 0;
    }
    return Guarded(0, [&] {
        char text[TEXT_SIZE] = "";
        VALUERECORD record = VALUERECORD::GetText(text, row);
        a_DispatchRecord(root, KEYWORDS, &record);
        *value = text[0] != '\0' ? 1 : 0;
        return 1;
    });
}
