// The rows of the object pane: which there are, and what each shows.

#include "Panel/editing/Catalogue.h"
#include "Panel/editing/Editor.h"
#include "Panel/editing/Icons.h"
#include "Panel/editing/ObjectPane.h"
#include "Panelhost/Devices.h"
#include "Panelhost/Hostinfo.h"
#include "base/Gdi.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace {

constexpr const char* MARK = "\x95";
constexpr int GROUP_BAR = 4; // pixels
constexpr COLORREF GROUP_COLOURS[] = {RGB(224, 122, 32), RGB(46, 134, 222), RGB(46, 160, 67),
                                      RGB(196, 64, 160), RGB(148, 120, 24), RGB(20, 158, 158)};

int TileOf(const HOSTINFO* object) {
    char className[64] = "";
    GetClassNameA(object->window, className, sizeof className);
    for (const CatalogueEntry& entry : Catalogue()) {
        if (_stricmp(entry.className, className) == 0) {
            return EntryTile(entry);
        }
    }
    return GroupTile(CatalogueGroup::Interfaces);
}

std::set<std::string> NotLive(HOSTINFO* root) {
    std::set<std::string> names;
    for (const auto& [name, status] : a_ListDevices(root)) {
        if (!a_WhyNotLive(status).empty()) {
            names.insert(name);
        }
    }
    return names;
}

std::string TextOf(const ObjectRow& row, const std::set<std::string>& notLive) {
    switch (row.kind) {
    case ObjectRow::Kind::Panel:
        return "Panel";
    case ObjectRow::Kind::Heading:
        return "Devices";
    case ObjectRow::Kind::Device:
        return a_IsAlive(row.object)
                   ? row.object->name + (notLive.contains(row.object->name) ? "   not live" : "   live")
                   : "";
    default:
        return a_IsAlive(row.object) ? a_OwnName(row.object) : "";
    }
}

} // namespace

void ObjectPane::ShowRows() {
    char wanted[128] = "";
    GetWindowTextA(search_, wanted, sizeof wanted);
    std::vector<ObjectRow> rows;
    if (editor_) {
        rows = ObjectRows(editor_->Edits().Root(), open_, wanted);
    }
    notLive_ = editor_ ? NotLive(editor_->Edits().Root()) : std::set<std::string>();
    std::vector<std::string> names;
    for (const ObjectRow& row : rows) {
        names.push_back(TextOf(row, notLive_));
    }
    if (rows == rows_ && names == names_) {
        return;
    }
    const bool isSame = rows.size() == rows_.size();
    rows_ = std::move(rows);
    names_ = std::move(names);
    following_ = true;
    ListView_SetItemState(list_, -1, 0, LVIS_SELECTED);
    if (!isSame) {
        ListView_SetItemCountEx(list_, static_cast<int>(rows_.size()), LVSICF_NOSCROLL);
        Arrange();
    }
    following_ = false;
    shown_.clear();
    InvalidateRect(list_, nullptr, TRUE);
}

HOSTINFO* ObjectPane::ObjectOf(int row) const {
    if (row < 0 || row >= static_cast<int>(rows_.size())) {
        return nullptr;
    }
    const ObjectRow& found = rows_[static_cast<std::size_t>(row)];
    return found.kind == ObjectRow::Kind::Control && a_IsAlive(found.object) ? found.object : nullptr;
}

int ObjectPane::RowOf(const HOSTINFO* object) const {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const ObjectRow& row) { return row.object == object; });
    return object == nullptr || found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void ObjectPane::FillItem(LVITEMA& item) const {
    if (item.iItem < 0 || item.iItem >= static_cast<int>(rows_.size())) {
        return;
    }
    const ObjectRow& row = rows_[static_cast<std::size_t>(item.iItem)];
    const HOSTINFO* object = ObjectOf(item.iItem);
    if ((item.mask & LVIF_TEXT) != 0 && item.pszText && item.cchTextMax > 0) {
        std::string text;
        if (item.iSubItem == NAME) {
            text = names_[static_cast<std::size_t>(item.iItem)];
        } else if (object) {
            const bool isSet = item.iSubItem == SEEN ? (object->flags & FLAG_HIDDEN) == 0
                                                     : (object->flags & FLAG_LOCKED) != 0;
            text = isSet ? MARK : "";
        }
        text.resize(std::min(text.size(), static_cast<std::size_t>(item.cchTextMax - 1)));
        std::memcpy(item.pszText, text.c_str(), text.size() + 1);
    }
    if ((item.mask & LVIF_INDENT) != 0) {
        item.iIndent = row.depth;
    }
    if ((item.mask & LVIF_IMAGE) != 0) {
        const bool isDevice = row.kind == ObjectRow::Kind::Device && a_IsAlive(row.object);
        item.iImage = object     ? TileOf(object)
                      : isDevice ? lamps_[!notLive_.contains(row.object->name)]
                                 : GroupTile(row.kind == ObjectRow::Kind::Panel ? CatalogueGroup::Strips
                                                                                : CatalogueGroup::Interfaces);
    }
    if ((item.mask & LVIF_STATE) != 0) {
        item.state |= INDEXTOSTATEIMAGEMASK(!row.hasParts ? 1 : (row.isOpen ? 3 : 2));
    }
}

// A bar beside each of a group, in one colour.
void ObjectPane::DrawGroups(HDC dc) const {
    const int first = ListView_GetTopIndex(list_);
    const int end = std::min(first + ListView_GetCountPerPage(list_) + 1, static_cast<int>(rows_.size()));
    for (int row = first; row < end; ++row) {
        const int group = rows_[static_cast<std::size_t>(row)].group;
        RECT place{};
        if (group != 0 && ListView_GetItemRect(list_, row, &place, LVIR_BOUNDS)) {
            const auto count = static_cast<int>(std::size(GROUP_COLOURS));
            const Brush brush(CreateSolidBrush(GROUP_COLOURS[(group - 1) % count]));
            place.right = place.left + GROUP_BAR;
            FillRect(dc, &place, brush.get());
        }
    }
}
