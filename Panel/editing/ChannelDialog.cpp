#include "Panel/editing/ChannelDialog.h"

#include "Panel/resource.h"
#include "Panelhost/Devices.h"
#include "Panelhost/Dialog.h"
#include "Panelhost/HostInterface.h"
#include "logic/editing/CountUp.h"
#include "logic/text/NamePattern.h"
#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <windowsx.h>
#include <commctrl.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace {

constexpr int HIGHEST_CHANNEL = 9999;
enum Column { PART, PATTERN, FIRST, LAST };

// What is bound in each strip.
struct Part {
    std::string name; // inside the strip; empty for the strip itself
    std::string pattern;
};

bool HasFunction(HOSTINFO* object) {
    return object->HasHostinfoTable() != 0 && a_FindKeyword(object->GetHostinfoTable(), "function") >= 0;
}

class ChannelDialog : public Dialog {
public:
    ChannelDialog(PanelEdits& edits, const std::vector<HOSTINFO*>& strips) : edits_(edits), strips_(strips) {}

    void Run(HWND owner) { RunModal(GetModuleHandleA(nullptr), IDD_CHANNEL, owner); }

private:
    void OnCreate() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void FindParts();
    void ChooseDevice();
    void ShowTable();
    void ShowPart();
    void TakePattern();
    void Bind();

    std::string TextOf(int item) const {
        char text[256] = "";
        GetDlgItemTextA(Handle(), item, text, sizeof text);
        return std::string(logic::TrimBlanks(text));
    }
    std::optional<int> Channel() const {
        const auto number = logic::ParseWholeInteger(TextOf(IDC_CHANNEL_FIRST));
        return number && *number >= 0 && *number <= HIGHEST_CHANNEL ? std::optional(int{*number})
                                                                    : std::nullopt;
    }
    std::string Address(const Part& part, int channel) const {
        return part.pattern.empty()
                   ? ""
                   : TextOf(IDC_CHANNEL_DEVICE) + "*" + logic::ExpandPattern(part.pattern, channel, channel);
    }
    HOSTINFO* Find(const HOSTINFO* strip, const Part& part) const {
        if (!a_IsAlive(strip)) {
            return nullptr;
        }
        return a_FindHostinfo(edits_.Root(),
                              (part.name.empty() ? strip->name : strip->name + "*" + part.name).c_str());
    }
    int Chosen() const { return ListView_GetNextItem(Item(IDC_CHANNEL_TABLE), -1, LVNI_SELECTED); }

    PanelEdits& edits_;
    std::vector<HOSTINFO*> strips_; // in the order of the channels
    std::vector<Part> parts_;
    std::vector<logic::KeywordSeries> series_; // of the device
    bool filling_ = false;
};

void ChannelDialog::OnCreate() {
    FindParts();
    const HWND table = Item(IDC_CHANNEL_TABLE);
    ListView_SetExtendedListViewStyle(table, LVS_EX_FULLROWSELECT);
    const std::pair<const char*, int> columns[] = {
        {"Part", 90}, {"Parameter", 120}, {"First channel", 132}, {"Last channel", 132}};
    for (int i = 0; i < static_cast<int>(std::size(columns)); ++i) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<char*>(columns[i].first);
        column.cx = columns[i].second;
        SendMessageA(table, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    filling_ = true;
    for (const auto& [name, status] : a_ListDevices(edits_.Root())) {
        ComboBox_AddString(Item(IDC_CHANNEL_DEVICE), name.c_str());
    }
    ComboBox_SetCurSel(Item(IDC_CHANNEL_DEVICE), 0);
    SetDlgItemTextA(Handle(), IDC_CHANNEL_FIRST, "1");
    filling_ = false;
    ChooseDevice();
}

// Those of all strips, by their names.
void ChannelDialog::FindParts() {
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        const auto strip = std::find(strips_.begin(), strips_.end(), object->parent);
        const bool isStrip = std::find(strips_.begin(), strips_.end(), object) != strips_.end();
        const std::string name = isStrip ? "" : a_OwnName(object);
        const bool isKnown = std::any_of(parts_.begin(), parts_.end(), [&](const Part& part) {
            return logic::FoldName(part.name) == logic::FoldName(name);
        });
        if ((isStrip || strip != strips_.end()) && !isKnown && HasFunction(object)) {
            parts_.push_back({name, ""});
        }
    }
}

void ChannelDialog::ChooseDevice() {
    std::list<std::string> keywords;
    if (HOSTINFO* device = a_FindHostinfo(edits_.Root(), TextOf(IDC_CHANNEL_DEVICE).c_str());
        device != nullptr && device->kind == KIND_DEVICE) {
        device->OnGetKeywords(0, reinterpret_cast<LPARAM>(&keywords));
    }
    series_ = logic::FindSeries({keywords.begin(), keywords.end()});
    const HWND patterns = Item(IDC_CHANNEL_PATTERN);
    filling_ = true;
    ComboBox_ResetContent(patterns);
    ComboBox_AddString(patterns, "");
    for (const logic::KeywordSeries& one : series_) {
        ComboBox_AddString(patterns, one.pattern.c_str());
    }
    filling_ = false;
    for (Part& part : parts_) {
        const int place =
            logic::SeriesFor(part.name.empty() ? a_OwnName(strips_.front()) : part.name, series_);
        part.pattern = place < 0 ? "" : series_[static_cast<std::size_t>(place)].pattern;
    }
    // A strip is bound by its parts.
    if (parts_.size() > 1 && parts_.front().name.empty()) {
        parts_.front().pattern.clear();
    }
    ShowTable();
    ListView_SetItemState(Item(IDC_CHANNEL_TABLE), 0, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
    ShowPart();
}

void ChannelDialog::ShowTable() {
    const HWND table = Item(IDC_CHANNEL_TABLE);
    const std::optional<int> first = Channel();
    const int last = first.value_or(0) + static_cast<int>(strips_.size()) - 1;
    int bound = 0;
    int missing = 0;
    filling_ = true;
    for (int row = 0; row < static_cast<int>(parts_.size()); ++row) {
        const Part& part = parts_[static_cast<std::size_t>(row)];
        std::string cells[] = {part.name.empty() ? "(itself)" : part.name, part.pattern,
                               first ? Address(part, *first) : "", first ? Address(part, last) : ""};
        for (int channel = first.value_or(0); first && channel <= last && !part.pattern.empty(); ++channel) {
            const bool isThere =
                ph_ParameterState(edits_.Root(), Address(part, channel).c_str()) != PH_STATE_NONE;
            missing += isThere ? 0 : 1;
            ++bound;
        }
        for (const int column : {FIRST, LAST}) {
            if (!cells[column].empty() &&
                ph_ParameterState(edits_.Root(), cells[column].c_str()) == PH_STATE_NONE) {
                cells[column] += " (not there)";
            }
        }
        for (int column = 0; column < static_cast<int>(std::size(cells)); ++column) {
            LVITEMA item{};
            item.iItem = row;
            item.iSubItem = column;
            item.mask = LVIF_TEXT;
            item.pszText = cells[column].data();
            if (column == 0 && row >= ListView_GetItemCount(table)) {
                SendMessageA(table, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
            } else {
                SendMessageA(table, LVM_SETITEMTEXTA, static_cast<WPARAM>(row),
                             reinterpret_cast<LPARAM>(&item));
            }
        }
    }
    filling_ = false;
    const std::string text =
        !first ? "The channel is a number from 0 to 9999."
               : std::to_string(bound) + (bound == 1 ? " binding in " : " bindings in ") +
                     std::to_string(strips_.size()) + " selected" +
                     (missing == 0
                          ? ""
                          : ", " + std::to_string(missing) + " of them to what the device does not have");
    SetDlgItemTextA(Handle(), IDC_CHANNEL_STATUS, text.c_str());
    EnableWindow(Item(IDOK), first && bound > 0);
}

void ChannelDialog::ShowPart() {
    const int row = Chosen();
    EnableWindow(Item(IDC_CHANNEL_PATTERN), row >= 0);
    filling_ = true;
    SetDlgItemTextA(Handle(), IDC_CHANNEL_PATTERN,
                    row < 0 ? "" : parts_[static_cast<std::size_t>(row)].pattern.c_str());
    filling_ = false;
}

void ChannelDialog::TakePattern() {
    if (const int row = Chosen(); row >= 0) {
        parts_[static_cast<std::size_t>(row)].pattern = TextOf(IDC_CHANNEL_PATTERN);
        ShowTable();
    }
}

void ChannelDialog::Bind() {
    const std::optional<int> first = Channel();
    std::vector<PanelEdits::Line> lines;
    for (std::size_t i = 0; first && i < strips_.size(); ++i) {
        for (const Part& part : parts_) {
            HOSTINFO* object = part.pattern.empty() ? nullptr : Find(strips_[i], part);
            if (object != nullptr && HasFunction(object)) {
                lines.push_back({object, "function=" + Address(part, *first + static_cast<int>(i))});
            }
        }
    }
    if (edits_.Root()->mode != 0) { // as it was when it was asked
        edits_.Apply("Bind Channel", lines);
    }
    EndDialog(Handle(), IDOK);
}

bool ChannelDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == LVN_ITEMCHANGED) {
        if (!filling_) {
            ShowPart();
        }
        return true;
    }
    if (message != WM_COMMAND) {
        return Dialog::OnMessage(message, wParam, lParam, result);
    }
    const int code = HIWORD(wParam);
    switch (LOWORD(wParam)) {
    case IDOK:
        Bind();
        break;
    case IDCANCEL:
        EndDialog(Handle(), IDCANCEL);
        break;
    case IDC_CHANNEL_DEVICE:
        if (code == CBN_SELCHANGE) {
            ChooseDevice();
        }
        break;
    case IDC_CHANNEL_FIRST:
        if (code == EN_CHANGE && !filling_) {
            ShowTable();
        }
        break;
    case IDC_CHANNEL_PATTERN:
        if (code == CBN_EDITCHANGE && !filling_) {
            TakePattern();
        } else if (code == CBN_SELCHANGE) { // the field gets the text after this
            const HWND patterns = Item(IDC_CHANNEL_PATTERN);
            const int chosen = ComboBox_GetCurSel(patterns);
            std::string text(
                static_cast<std::size_t>(std::max(0, ComboBox_GetLBTextLen(patterns, chosen))) + 1, '\0');
            ComboBox_GetLBText(patterns, chosen, text.data());
            SetWindowTextA(patterns, text.c_str());
            TakePattern();
        }
        break;
    default:
        break;
    }
    return true;
}

} // namespace

void BindChannels(HWND owner, PanelEdits& edits, const std::vector<HOSTINFO*>& strips) {
    std::make_shared<ChannelDialog>(edits, strips)->Run(owner);
}
