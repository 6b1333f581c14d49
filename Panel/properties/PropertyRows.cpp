#include "Panel/properties/PropertyRows.h"

#include "Panel/editing/Placement.h"
#include "Panelhost/SecretKeywords.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Renaming.h"
#include "Panelhost/Requests.h"
#include "Panelhost/TypedValues.h"
#include "logic/editing/PropertyTexts.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iterator>
#include <optional>
#include <unordered_map>

namespace {

using Source = PropertyRow::Source;

constexpr int FARTHEST = 16384; // of a control's edges from the panel's corner, and its largest size, pixels

struct PlaceRow {
    Source source;
    const char* name;
    const char* help;
};
constexpr PlaceRow PLACES[] = {
    {Source::Left, "left", "Left edge in pixels, from that of the panel or the control that it is inside."},
    {Source::Top, "top", "Upper edge in pixels, from that of the panel or the control that it is inside."},
    {Source::Width, "width", "Width in pixels."},
    {Source::Height, "height", "Height in pixels."}};

std::int32_t& Edge(logic::Rectangle& place, Source source) {
    return source == Source::Left ? place.left : place.top;
}

std::int32_t NumberOf(const logic::Rectangle& place, Source source) {
    switch (source) {
    case Source::Left:
        return place.left;
    case Source::Top:
        return place.top;
    case Source::Width:
        return place.right - place.left;
    default:
        return place.bottom - place.top;
    }
}

// Takes one more object's value into a row. It is read by the function, which is asked only while it matters:
// of many objects most rows differ soon.
template <typename Read>
void Join(PropertyRow& row, const Read& read) {
    if (!row.isMixed) {
        const auto value = read();
        if (row.holders == 0) {
            row.value = value;
        } else if (row.value != value) {
            row.isMixed = true;
            row.value.clear();
        }
    }
    ++row.holders;
}

bool IsShown(const KEYWORDROW& row) {
    // These two are saved in a way of their own.
    return row.handler != nullptr && !IsSecret(row) &&
           ((row.flags & KEYWORD_SAVED) != 0 || std::strcmp(row.keyword, "connection") == 0 ||
            std::strcmp(row.keyword, "layer") == 0);
}

PropertyGroup GroupOf(const char* keyword, KeywordKind kind, bool isRoot) {
    switch (kind) {
    case KeywordKind::Colour:
    case KeywordKind::Typeface:
    case KeywordKind::Picture:
        return PropertyGroup::Look;
    case KeywordKind::Addresses:
    case KeywordKind::Line:
        return PropertyGroup::Bindings;
    default:
        break;
    }
    constexpr const char* LOOKS[] = {"artscale", "ground", "style"};
    const bool isLook = std::any_of(std::begin(LOOKS), std::end(LOOKS),
                                    [&](const char* look) { return std::strcmp(keyword, look) == 0; });
    if (isLook && isRoot) {
        return PropertyGroup::Look;
    }
    if (std::strcmp(keyword, "layer") == 0 && !isRoot) {
        return PropertyGroup::Place;
    }
    return std::strcmp(keyword, "interval") == 0 ? PropertyGroup::Bindings : PropertyGroup::Behaviour;
}

std::string HelpOf(const KEYWORDINFO& info) {
    std::string help = logic::PlainSentence(info.sentence);
    const auto number = [](double value) { return logic::FormatFloat(static_cast<float>(value)); };
    if (*info.words != '\0') {
        help += " One of: " + std::string(info.words) + ".";
    }
    if (info.hasLimits) {
        help += info.maximum < 2147483647.0
                    ? " From " + number(info.minimum) + " to " + number(info.maximum) + "."
                    : " From " + number(info.minimum) + ".";
    }
    return help;
}

PropertyRow RowOf(const KEYWORDROW& keyword, const KEYWORDINFO& info, bool isRoot) {
    PropertyRow row;
    row.name = keyword.keyword;
    row.kind = info.kind;
    row.words = info.words;
    row.mayBeEmpty = info.mayBeEmpty;
    row.pictures = info.pictures;
    row.help = HelpOf(info);
    row.isFixed = info.isOnlyWritten;
    row.group = GroupOf(keyword.keyword, info.kind, isRoot);
    return row;
}

const KEYWORDINFO& InfoOf(HOSTINFO& object, int row) {
    static const KEYWORDINFO unknown;
    const KEYWORDINFO* infos = object.GetKeywordInfo();
    return infos == nullptr ? unknown : infos[row];
}

// The rows of all keywords, and which of them belong to the table of a class.
class KeywordRows {
public:
    void Add(HOSTINFO& object) {
        if (object.HasHostinfoTable() == 0) {
            return;
        }
        char value[TEXT_SIZE];
        for (const auto& [keyword, place] : PlacesFor(object)) {
            Join(rows_[place], [&, keyword = keyword, place = place]() -> std::string {
                if (rows_[place].name == "connection") {
                    return a_BuildString(object.connections); // asked for it, a control answers nothing
                }
                *value = '\0';
                VALUERECORD record = VALUERECORD::GetText(value, keyword);
                SendMessageA(object.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
                return value;
            });
        }
    }
    std::vector<PropertyRow> Take() { return std::move(rows_); }

private:
    using Places = std::vector<std::pair<int, std::size_t>>; // row of the table, row here

    const Places& PlacesFor(HOSTINFO& object) {
        const KEYWORDROW* table = object.GetHostinfoTable();
        const auto [found, isNew] = tables_.try_emplace(table);
        for (int i = 0; isNew && table != nullptr && table[i].keyword != nullptr; ++i) {
            if (IsShown(table[i])) {
                found->second.emplace_back(i, PlaceOfRow(object, table[i], InfoOf(object, i)));
            }
        }
        return found->second;
    }

    std::size_t PlaceOfRow(const HOSTINFO& object, const KEYWORDROW& keyword, const KEYWORDINFO& info) {
        const auto [found, isNew] = places_.try_emplace(keyword.keyword, rows_.size());
        PropertyRow row = RowOf(keyword, info, object.kind == KIND_ROOT);
        if (isNew) {
            rows_.push_back(std::move(row));
        } else if (PropertyRow& known = rows_[found->second];
                   known.kind != row.kind || known.words != row.words) {
            known.kind = KeywordKind::Text; // what suits both
            known.words.clear();
        }
        return found->second;
    }

    std::vector<PropertyRow> rows_;
    std::unordered_map<std::string, std::size_t> places_;
    std::unordered_map<const KEYWORDROW*, Places> tables_;
};

PropertyRow FixedRow(Source source, const char* name, const char* help) {
    PropertyRow row;
    row.source = source;
    row.group = PropertyGroup::Control;
    row.name = name;
    row.help = help;
    row.isFixed = true;
    return row;
}

// Whatever names the control follows. What could not is told of, and nothing is done then.
std::string SetName(HOSTINFO* object, const std::string& typed) {
    const RENAMING renaming = a_PlanRenaming(object, typed.c_str());
    if (!renaming.to.empty() && renaming.to == renaming.from) {
        return {};
    }
    if (std::string fault = a_RenameFault(renaming); !fault.empty()) {
        fault.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(fault.front())));
        return "cannot be the name: " + fault.substr(0, fault.find_last_not_of('.') + 1);
    }
    if (!renaming.losses.empty()) {
        const RENAMEDTEXT& lost = renaming.losses.front().text;
        const std::size_t others = renaming.losses.size() - 1;
        return "would not be followed by " + lost.object->name + "*" + lost.row->keyword +
               (others > 0 ? " and " + std::to_string(others) + " more" : "") +
               "; Edit > Rename asks whether it may be so";
    }
    return a_Rename(renaming) != 0 ? "" : "is not possible here";
}

std::string SetPlace(PanelEdits& edits, const std::vector<HOSTINFO*>& objects, const PropertyRow& row,
                     const std::string& typed, int key) {
    const bool isSize = row.source == Source::Width || row.source == Source::Height;
    KEYWORDINFO info;
    info.kind = KeywordKind::Integer;
    info.unit = "px";
    info.hasLimits = true;
    info.minimum = isSize ? 1 : -FARTHEST;
    info.maximum = FARTHEST;
    const TYPEDVALUE read = a_ReadTyped(row.name.c_str(), info, typed);
    if (!read.objection.empty()) {
        return read.objection;
    }
    const std::int32_t number = *logic::ParseWholeInteger(read.value);
    const std::vector<Placement> before = PlacementsOf(objects);
    std::vector<Placement> now = before;
    for (Placement& placement : now) {
        logic::Rectangle& place = placement.place;
        if (row.source == Source::Width) {
            place.right = place.left + number;
        } else if (row.source == Source::Height) {
            place.bottom = place.top + number;
        } else {
            const std::int32_t by = number - Edge(place, row.source);
            place =
                logic::Moved(place, row.source == Source::Left ? logic::Offset{by, 0} : logic::Offset{0, by});
        }
    }
    PlaceObjects(now);
    edits.CommitPlaces(isSize ? "Resize" : "Move", before, key);
    return {};
}

std::string SetKeyword(PanelEdits& edits, const std::vector<HOSTINFO*>& objects, const PropertyRow& row,
                       const std::string& typed, int key) {
    std::vector<PanelEdits::Line> lines;
    for (HOSTINFO* object : objects) {
        const KEYWORDROW* table = object->HasHostinfoTable() != 0 ? object->GetHostinfoTable() : nullptr;
        const int place = a_FindKeyword(table, row.name);
        if (place < 0 || !IsShown(table[place])) {
            continue;
        }
        const TYPEDVALUE read = a_ReadTyped(row.name.c_str(), InfoOf(*object, place), typed);
        if (!read.objection.empty()) {
            return read.objection;
        }
        lines.push_back({object, row.name + "=" + read.value});
    }
    const std::vector<HOSTINFO*> refused = edits.ApplyAll("Change of " + row.name, lines, key);
    if (refused.empty()) {
        return {};
    }
    const std::string why = row.words.empty() ? "is not possible here" : "is none of " + row.words;
    return why + (objects.size() > 1 ? " (" + refused.front()->name + ")" : "");
}

} // namespace

const char* GroupName(PropertyGroup group) {
    constexpr const char* NAMES[] = {"Control", "Place", "Behaviour", "Look", "Bindings"};
    return NAMES[static_cast<int>(group)];
}

void ReadPlaces(const std::vector<HOSTINFO*>& objects, std::vector<PropertyRow>& rows) {
    for (PropertyRow& row : rows) {
        if (std::any_of(std::begin(PLACES), std::end(PLACES),
                        [&](const PlaceRow& place) { return place.source == row.source; })) {
            row.holders = 0;
            row.isMixed = false;
            for (const HOSTINFO* object : objects) {
                Join(row, [&] { return std::to_string(NumberOf(PlaceOf(*object), row.source)); });
            }
        }
    }
}

std::vector<PropertyRow> ReadRows(const std::vector<HOSTINFO*>& objects) {
    std::vector<PropertyRow> rows;
    if (objects.empty()) {
        return rows;
    }
    if (objects.front()->kind != KIND_ROOT) {
        rows.push_back(
            FixedRow(Source::Name, "name", "Name of the control, which others are bound to it by."));
        rows.push_back(FixedRow(Source::Class, "class", "What kind of control it is."));
        rows[0].isFixed = objects.size() > 1; // each has its own
        for (const HOSTINFO* object : objects) {
            Join(rows[0], [&] { return a_OwnName(object); });
            Join(rows[1], [&] {
                char className[64] = "";
                GetClassNameA(object->window, className, sizeof className);
                return std::string(className);
            });
        }
        for (const PlaceRow& place : PLACES) {
            PropertyRow row = FixedRow(place.source, place.name, place.help);
            row.group = PropertyGroup::Place;
            row.kind = KeywordKind::Integer;
            row.isFixed = false;
            rows.push_back(std::move(row));
        }
        ReadPlaces(objects, rows);
    }
    KeywordRows keywords;
    for (HOSTINFO* object : objects) {
        keywords.Add(*object);
    }
    std::vector<PropertyRow> more = keywords.Take();
    std::move(more.begin(), more.end(), std::back_inserter(rows));
    std::stable_sort(rows.begin(), rows.end(),
                     [](const PropertyRow& a, const PropertyRow& b) { return a.group < b.group; });
    return rows;
}

std::string SetRow(PanelEdits& edits, const std::vector<HOSTINFO*>& objects, const PropertyRow& row,
                   const std::string& typed, int key) {
    switch (row.source) {
    case Source::Keyword:
        return SetKeyword(edits, objects, row, typed, key);
    case Source::Name:
        return SetName(objects.front(), typed);
    case Source::Class:
        return "cannot be set here";
    default:
        return SetPlace(edits, objects, row, typed, key);
    }
}
