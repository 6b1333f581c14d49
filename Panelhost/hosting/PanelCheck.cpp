#include "Panelhost/PanelCheck.h"

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/BindingList.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/KeywordInfo.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/controls/Layers.h"
#include "logic/editing/Overlaps.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <vector>

namespace {

constexpr std::size_t MOST_COVERS = 1000;
constexpr std::size_t LONGEST_EXCERPT = 200; // of a line

using Findings = std::list<PANELFINDING>;

// A file that is not there is refused like any other value.
bool NamesFile(HOSTINFO* root, const PH_UNREADLINE& line) {
    HOSTINFO* object = a_FindHostinfo(root, line.object);
    const int row =
        object == nullptr || object->HasHostinfoTable() == 0
            ? -1
            : a_FindKeyword(object->GetHostinfoTable(), logic::SplitPropertyLine(line.line).keyword);
    const KEYWORDINFO* infos = row < 0 ? nullptr : object->GetKeywordInfo();
    return line.reason == PH_UNREAD_PICTURE ||
           (line.reason == PH_UNREAD_VALUE && infos != nullptr && infos[row].kind == KeywordKind::File);
}

struct LineFindings {
    HOSTINFO* root;
    Findings* findings;
};

void __cdecl TakeLine(const PH_UNREADLINE* line, void* context) {
    constexpr const char* reasons[] = {"not understood",    "damaged",        "unknown class",
                                       "the name is taken", "no such object", "unknown keyword",
                                       "value refused",     "picture missing"};
    const auto& [root, findings] = *static_cast<LineFindings*>(context);
    const int reason =
        line->reason > 0 && line->reason < static_cast<int>(std::size(reasons)) ? line->reason : 0;
    const bool isFile = NamesFile(root, *line);
    findings->push_back({isFile ? FINDING_FILE : FINDING_LINE, line->object,
                         "line " + std::to_string(line->number) + ", " +
                             (isFile ? "file missing or unreadable" : reasons[reason]) + ": " +
                             std::string(line->line).substr(0, LONGEST_EXCERPT)});
}

void FindLines(HOSTINFO* root, Findings& findings) {
    LineFindings context{root, &findings};
    ph_ListUnread(
        root, [](const PH_UNREADLINE* line, void* given) { Guarded([&] { TakeLine(line, given); }); },
        &context);
}

void FindBindings(HOSTINFO* root, Findings& findings) {
    for (const BINDING& binding : a_ListBindings(root)) {
        const bool isSilent = binding.state == PARAMETER_STALE && binding.target != nullptr &&
                              a_WhyNotLive(dynamic_cast<DEVICE*>(binding.target)->OnStatus()).empty();
        if (binding.state == PARAMETER_NONE || binding.state == ADDRESS_NO_KEYWORD ||
            binding.state == ADDRESS_NO_CONTROL || isSilent) {
            findings.push_back({FINDING_BINDING, binding.object->name,
                                std::string(binding.row->keyword) + " " + binding.address + ": " +
                                    a_StateName(binding.state)});
        }
    }
}

std::string ValueOf(HOSTINFO* object, const KEYWORDROW* row) {
    char text[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(text, static_cast<int>(row - object->GetHostinfoTable()));
    row->handler(&record, object);
    text[TEXT_SIZE - 1] = '\0';
    return text;
}

// Calls the function with each keyword of an object that is described, and its value.
template <class Take>
void ForKeywords(HOSTINFO* object, KeywordKind kind, Take take) {
    const KEYWORDINFO* infos = object->GetKeywordInfo();
    const KEYWORDROW* row = object->HasHostinfoTable() != 0 ? object->GetHostinfoTable() : nullptr;
    for (; infos != nullptr && row != nullptr && row->keyword != nullptr; ++row, ++infos) {
        if (infos->kind == kind && row->handler != nullptr) {
            take(*row, *infos, ValueOf(object, row));
        }
    }
}

std::string FullName(const std::string& file) {
    char path[MAX_PATH] = "";
    return logic::FoldName(a_MakeFullPathName(file.c_str(), path) != 0 ? path : file);
}

// Files that are there no more, or are read no sooner than they are used, unless a control of the panel
// itself writes them.
void FindMissingFiles(const PanelRoot& root, Findings& findings) {
    std::set<std::string> written;
    Findings missing;
    for (HOSTINFO* object : root.Controls()) {
        ForKeywords(object, KeywordKind::File,
                    [&](const KEYWORDROW& row, const KEYWORDINFO& info, const std::string& value) {
                        if (!info.mayBeEmpty) { // as what is read may be
                            written.insert(FullName(value));
                            return;
                        }
                        for (const std::string& file : logic::SplitList(value)) {
                            if (GetFileAttributesA(FullName(file).c_str()) == INVALID_FILE_ATTRIBUTES) {
                                missing.push_back(
                                    {FINDING_FILE, object->name, std::string(row.keyword) + " " + file});
                            }
                        }
                    });
    }
    for (PANELFINDING& finding : missing) {
        const std::string file = finding.text.substr(finding.text.find(' ') + 1);
        if (!written.contains(FullName(file))) {
            finding.text += ": there is no such file";
            findings.push_back(std::move(finding));
        }
    }
}

struct Placed {
    const HOSTINFO* object;
    logic::Rectangle place; // in what contains it
};

// The controls that users can see, by what contains them, from front to back.
std::map<HWND, std::vector<Placed>> PlacedControls(const PanelRoot& root) {
    std::map<HWND, std::vector<Placed>> placed;
    std::set<HWND> owners;
    for (const HOSTINFO* object : root.Controls()) {
        owners.insert(GetParent(object->window));
    }
    for (HWND owner : owners) {
        for (HWND child = GetWindow(owner, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            const HOSTINFO* object = a_FromWindow(child);
            if (object == nullptr || PanelRoot::Above(object) != &root ||
                (object->flags & FLAG_EDIT_ONLY) != 0) {
                continue;
            }
            RECT place{};
            GetWindowRect(child, &place);
            MapWindowPoints(nullptr, owner, reinterpret_cast<POINT*>(&place), 2);
            const bool isHidden = object->layers == 0 && (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) == 0;
            if (!isHidden) {
                placed[owner].push_back({object, {place.left, place.top, place.right, place.bottom}});
            }
        }
    }
    return placed;
}

void FindPlaces(const PanelRoot& root, Findings& findings) {
    for (const auto& [owner, controls] : PlacedControls(root)) {
        RECT area{};
        GetClientRect(owner, &area);
        if (owner == root.window) {
            const auto size = logic::ParseRectangle("0,0," + root.size);
            area =
                size && !root.size.empty() ? RECT{0, 0, size->right, size->bottom} : RECT{0, 0, 32767, 32767};
        }
        const std::string name = owner == root.window || controls.front().object->parent == nullptr
                                     ? "the panel"
                                     : controls.front().object->parent->name;
        for (const Placed& control : controls) {
            if (logic::ReachesBeyond(control.place, area.right, area.bottom)) {
                findings.push_back(
                    {FINDING_PLACE, control.object->name,
                     "at " + logic::RectangleText(control.place) + " it reaches beyond " + name});
            }
        }
    }
}

void FindCovered(const PanelRoot& root, Findings& findings) {
    for (const auto& [owner, controls] : PlacedControls(root)) {
        if (owner != root.window) {
            continue; // a strip's own affair
        }
        std::vector<logic::PlacedControl> places;
        for (const Placed& control : controls) {
            places.push_back({control.place, control.object->layers});
        }
        for (const auto& [front, behind] : logic::FindCovers(places, MOST_COVERS)) {
            findings.push_back(
                {FINDING_COVER, controls[front].object->name, "covers " + controls[behind].object->name});
        }
    }
}

// What a click brings up: the layers of "layer=u2", or any where they depend on what is clicked.
std::uint64_t LayersOfClicks(const PanelRoot& root) {
    constexpr std::uint64_t all = ~std::uint64_t{0};
    std::uint64_t reached = 0;
    for (HOSTINFO* object : root.Controls()) {
        ForKeywords(object, KeywordKind::Line,
                    [&](const KEYWORDROW&, const KEYWORDINFO&, const std::string& value) {
                        const logic::PropertyLine line = logic::SplitPropertyLine(value);
                        if (!line.object.empty() || line.keyword != "layer") {
                            return;
                        }
                        const auto layers = logic::ParseLayers(line.value);
                        reached |= !layers || *layers == 0 ? all : *layers;
                    });
    }
    return reached;
}

void FindLayers(const PanelRoot& root, Findings& findings) {
    const std::uint64_t reached =
        root.activeLayers == 0 ? ~std::uint64_t{0} : root.activeLayers | LayersOfClicks(root);
    std::map<std::uint64_t, int> hidden; // by layers: how many controls
    std::map<std::uint64_t, const HOSTINFO*> first;
    for (const HOSTINFO* object : root.Controls()) {
        if (object->layers != 0 && (object->layers & reached) == 0) {
            ++hidden[object->layers];
            first.try_emplace(object->layers, object);
        }
    }
    for (const auto& [layers, count] : hidden) {
        findings.push_back({FINDING_LAYER, first[layers]->name,
                            "on " + logic::LayersText(layers) + ", which no button brings up" +
                                (count > 1 ? ", with " + std::to_string(count - 1) + " more" : "")});
    }
}

void FindDevices(HOSTINFO* root, Findings& findings) {
    for (const std::string& fault : a_DeviceFaults(root)) {
        findings.push_back({FINDING_DEVICE, "", fault});
    }
    for (const auto& [name, status] : a_ListDevices(root)) {
        if (const std::string why = a_WhyNotLive(status); !why.empty() && status.state != DEVICE_OPEN) {
            findings.push_back({FINDING_DEVICE, name, why});
        }
    }
}

} // namespace

std::list<PANELFINDING> a_CheckPanel(HOSTINFO* object) {
    return Guarded(Findings(), [&] {
        Findings findings;
        const PanelRoot* root = PanelRoot::From(object);
        if (root != nullptr) {
            FindLines(object, findings);
            FindMissingFiles(*root, findings);
            FindBindings(object, findings);
            FindPlaces(*root, findings);
            FindCovered(*root, findings);
            FindLayers(*root, findings);
            FindDevices(object, findings);
            findings.sort(
                [](const PANELFINDING& one, const PANELFINDING& other) { return one.kind < other.kind; });
        }
        return findings;
    });
}

const char* a_FindingName(int kind) {
    constexpr const char* names[] = {"",      "unread line", "binding", "missing file",
                                     "place", "cover",       "layer",   "device"};
    return kind >= 0 && kind < static_cast<int>(std::size(names)) ? names[kind] : "";
}

std::string a_FindingsText(const std::list<PANELFINDING>& findings) {
    return Guarded(std::string(), [&] {
        std::string text;
        for (const PANELFINDING& finding : findings) {
            text += std::string(a_FindingName(finding.kind)) + ", " +
                    (finding.object.empty() ? "panel" : finding.object) + ": " + finding.text + "\r\n";
        }
        return text;
    });
}

bool a_HasAnswers(HOSTINFO* root) {
    return Guarded(true, [&] {
        for (const auto& [name, status] : a_ListDevices(root)) {
            if (status.state != DEVICE_LIVE && status.state != DEVICE_OPEN) {
                return false;
            }
        }
        const auto bindings = a_ListBindings(root);
        return std::ranges::none_of(bindings, [](const BINDING& binding) {
            return binding.state == PARAMETER_UNKNOWN && binding.target != nullptr;
        });
    });
}

static_assert(PH_FINDING_LINE == FINDING_LINE && PH_FINDING_DEVICE == FINDING_DEVICE);

int ph_CheckPanel(HOSTINFO* root, void(__cdecl* receive)(const PH_FINDING* finding, void* context),
                  void* context) noexcept {
    if (PanelRoot::From(root) == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        const Findings findings = a_CheckPanel(root);
        for (const PANELFINDING& finding : findings) {
            if (receive != nullptr) {
                const PH_FINDING handed{finding.kind, finding.object.c_str(), finding.text.c_str()};
                receive(&handed, context);
            }
        }
        return static_cast<int>(findings.size());
    });
}
