// What the rows of the property pane show.

#include "Panel/properties/PropertyPane.h"

#include "Panel/editing/Editor.h"
#include "Panelhost/Hostinfo.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr ULONGLONG READ_AGAIN = 200;   // milliseconds
constexpr ULONGLONG REST_OF_READS = 20; // times as long as a reading took

} // namespace

std::vector<HOSTINFO*> PropertyPane::Objects() const {
    const std::vector<HOSTINFO*>& selected = editor_->Selected();
    return selected.empty() ? std::vector<HOSTINFO*>{editor_->Edits().Root()} : selected;
}

void PropertyPane::Update() {
    choices_.Follow();
    if (!editor_ || !isShown_ || applying_) {
        return;
    }
    std::vector<HOSTINFO*> objects = Objects();
    const bool areOthers = objects != objects_;
    const ULONGLONG now = GetTickCount64();
    if (areOthers) {
        EndEdit();
        refused_.clear();
        addresses_.clear();
        objects_ = std::move(objects);
    } else if (editor_->Edits().Serial() == serial_ && now < nextRead_) {
        return;
    }
    if (editor_->IsDragging() && !areOthers) {
        ReadPlaces(objects_, rows_);
        InvalidateRect(list_, nullptr, FALSE);
        nextRead_ = now + READ_AGAIN;
        return;
    }
    Refill();
    // A large selection is read less often, so that the program stays quick.
    const ULONGLONG after = GetTickCount64();
    nextRead_ = after + std::max(READ_AGAIN, (after - now) * REST_OF_READS);
}

void PropertyPane::Refill() {
    std::erase_if(objects_, [](const HOSTINFO* object) { return !a_IsAlive(object); });
    serial_ = editor_->Edits().Serial();
    std::vector<PropertyRow> rows = ReadRows(objects_);
    const auto isSame = [](const PropertyRow& a, const PropertyRow& b) { return IdOf(a) == IdOf(b); };
    if (!std::equal(rows.begin(), rows.end(), rows_.begin(), rows_.end(), isSame)) {
        return Replace(std::move(rows));
    }
    bool isChanged = false;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        isChanged = isChanged || rows[i].value != rows_[i].value || rows[i].isMixed != rows_[i].isMixed;
    }
    rows_ = std::move(rows);
    if (isChanged) {
        InvalidateRect(list_, nullptr, FALSE);
    }
    ShowTitle();
}

// The rows are others than before.
void PropertyPane::Replace(std::vector<PropertyRow> rows) {
    const PropertyRow* selected = RowAt(SelectedLine());
    const std::string id = selected ? IdOf(*selected) : "";
    rows_ = std::move(rows);
    // Else each step below, and the list itself when it may draw again, draws its scroll bar at once.
    DefWindowProcA(list_, WM_SETREDRAW, FALSE, 0);
    SetWindowRedraw(list_, FALSE);
    lines_.clear();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (i == 0 || rows_[i].group != rows_[i - 1].group) {
            lines_.push_back({true, rows_[i].group, 0});
        }
        lines_.push_back({false, rows_[i].group, i});
    }
    SendMessageA(list_, LVM_SETITEMCOUNT, lines_.size(), LVSICF_NOSCROLL);
    const int again = FindLine(id);
    Select(again != NO_LINE ? again : NextLine(-1, 1));
    if (edit_ && FindLine(edited_) == NO_LINE) {
        EndEdit();
    }
    FitColumns();
    SetWindowRedraw(list_, TRUE);
    DefWindowProcA(list_, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(list_, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ERASE);
    ShowTitle();
}

void PropertyPane::ShowTitle() {
    if (std::string title = TitleText(); title != title_) {
        title_ = std::move(title);
        SetWindowTextA(Handle(), title_.c_str());
        InvalidateRect(Handle(), nullptr, TRUE);
    }
}

std::string PropertyPane::TitleText() const {
    if (objects_.empty()) {
        return "Properties";
    }
    if (objects_.size() == 1) {
        return objects_.front()->kind == KIND_ROOT ? "Panel" : objects_.front()->name;
    }
    return std::to_string(objects_.size()) + " controls";
}

const PropertyRow* PropertyPane::RowAt(int line) const {
    const auto index = static_cast<std::size_t>(line);
    return line < 0 || index >= lines_.size() || lines_[index].isHeading ? nullptr
                                                                         : &rows_[lines_[index].row];
}

// A keyword may be called as a place is.
std::string PropertyPane::IdOf(const PropertyRow& row) {
    return (row.source == PropertyRow::Source::Keyword ? "*" : "") + row.name;
}

int PropertyPane::FindLine(const std::string& id) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (!lines_[i].isHeading && IdOf(rows_[lines_[i].row]) == id) {
            return static_cast<int>(i);
        }
    }
    return NO_LINE;
}

const PropertyPane::Refusal* PropertyPane::RefusalOf(const PropertyRow& row) const {
    const auto found = refused_.find(IdOf(row));
    return found == refused_.end() ? nullptr : &found->second;
}

std::string PropertyPane::ShownText(const PropertyRow& row) const {
    const Refusal* refusal = RefusalOf(row);
    return refusal ? refusal->typed : row.isMixed ? "(different)" : row.value;
}

// Why it is refused, or what it is for.
std::string PropertyPane::NoteOf(int line) const {
    const PropertyRow* row = RowAt(line);
    if (!row) {
        return {};
    }
    if (const Refusal* refusal = RefusalOf(*row)) {
        const std::string now = row->isMixed ? "different" : row->value.empty() ? "empty" : row->value;
        return "\"" + refusal->typed + "\" " + refusal->why + ". It is still " + now + ".";
    }
    const bool isOfSome = row->holders < static_cast<int>(objects_.size());
    return row->help + (isOfSome ? " Of " + std::to_string(row->holders) + " of the controls." : "");
}

// As screen readers have it.
std::string PropertyPane::CellText(int line, int column) const {
    const PropertyRow* row = RowAt(line);
    if (!row) {
        return column == 0 ? GroupName(lines_[static_cast<std::size_t>(line)].group) : "";
    }
    return column == 0 ? row->name : column == NOTE ? NoteOf(line) : ShownText(*row);
}

int PropertyPane::SelectedLine() const {
    return static_cast<int>(SendMessageA(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void PropertyPane::Select(int line) {
    if (line != NO_LINE) {
        ListView_SetItemState(list_, line, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        SendMessageA(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(line), FALSE);
    }
}

int PropertyPane::NextLine(int line, int step) const {
    for (line += step; line >= 0 && line < static_cast<int>(lines_.size()); line += step) {
        if (RowAt(line)) {
            return line;
        }
    }
    return NO_LINE;
}
