#include "Panel/lists/LayersWindow.h"

#include "Panel/resource.h"
#include "logic/controls/Layers.h"

#include <commctrl.h>

#include <utility>

namespace {

enum Column { COLUMN_NAME, COLUMN_LAYER, COLUMN_SHOWN, COLUMN_COUNT, COLUMN_CONTROLS };
constexpr ListColumn COLUMNS[] = {
    {"Name", 140}, {"Layer", 50}, {"Shown", 50}, {"Controls", 60}, {"Which", 1000}};

} // namespace

bool LayersWindow::Create(HWND frame, HFONT font) {
    return ListWindow::Create("PanelLayers", "Layers", frame, font, IDM_LAYERS, COLUMNS, IDA_LAYERS,
                              LVS_EDITLABELS);
}

void LayersWindow::SetEditing(const LayerEditing* layers) {
    ListView_CancelEditLabel(List());
    layers_ = layers;
    if (layers == nullptr) {
        Show(false);
    }
    Update();
}

void LayersWindow::Update() {
    if (ListView_GetEditControl(List()) != nullptr) {
        return; // a name is being typed
    }
    std::vector<LayerRow> rows = layers_ == nullptr || !IsShown() ? std::vector<LayerRow>() : layers_->Rows();
    if (rows != rows_) {
        rows_ = std::move(rows);
        ListView_SetItemCountEx(List(), Count(), LVSICF_NOSCROLL);
    }
}

std::string LayersWindow::Cell(int row, int column) const {
    const LayerRow& layer = rows_[static_cast<std::size_t>(row)];
    switch (column) {
    case COLUMN_NAME:
        return layer.name;
    case COLUMN_LAYER:
        return layer.number == 0 ? "" : "u" + std::to_string(layer.number);
    case COLUMN_SHOWN:
        return layer.isShown ? "yes" : "no";
    case COLUMN_COUNT:
        return std::to_string(layer.count);
    default:
        return layer.controls;
    }
}

std::uint64_t LayersWindow::Chosen() const {
    std::uint64_t layers = 0;
    for (int row = -1; (row = ListView_GetNextItem(List(), row, LVNI_SELECTED)) >= 0;) {
        const int number = rows_[static_cast<std::size_t>(row)].number;
        layers |= number == 0 ? 0 : logic::LayerBit(number);
    }
    return layers;
}

const LayerRow* LayersWindow::Focused() const {
    const int row = ListView_GetNextItem(List(), -1, LVNI_FOCUSED);
    return row < 0 || row >= Count() ? nullptr : &rows_[static_cast<std::size_t>(row)];
}

LRESULT LayersWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (message != WM_NOTIFY || header->idFrom != IDC_LIST || layers_ == nullptr) {
        return ListWindow::OnMessage(message, wParam, lParam);
    }
    switch (header->code) {
    case NM_DBLCLK:
        OnCommand(CMD_LAYER_ALONE);
        return 0;
    case LVN_BEGINLABELEDITA:
        return Focused() == nullptr || Focused()->number == 0; // which prevents it
    case LVN_ENDLABELEDITA: {
        const LVITEMA& item = reinterpret_cast<const NMLVDISPINFOA*>(lParam)->item;
        if (item.pszText == nullptr || item.iItem < 0 || item.iItem >= Count()) {
            return FALSE; // given up
        }
        LayerRow& row = rows_[static_cast<std::size_t>(item.iItem)];
        if (!layers_->Rename(row.number, item.pszText)) {
            MessageBeep(MB_OK);
            return FALSE;
        }
        row.name = item.pszText;
        return TRUE;
    }
    default:
        return ListWindow::OnMessage(message, wParam, lParam);
    }
}

void LayersWindow::OnCommand(int command) {
    if (layers_ == nullptr || command < CMD_LAYER_SHOW || command > CMD_LAYER_RENAME) {
        return ListWindow::OnCommand(command);
    }
    const bool isAnyChosen = ListView_GetSelectedCount(List()) > 0;
    using Change = LayerEditing::Change;
    switch (command) {
    case CMD_LAYER_ALL:
        layers_->ShowOnly(0);
        break;
    case CMD_LAYER_RENAME:
        if (Focused() != nullptr) {
            ListView_EditLabel(List(), ListView_GetNextItem(List(), -1, LVNI_FOCUSED));
        }
        return;
    case CMD_LAYER_SELECT:
        if (Focused() != nullptr) {
            layers_->SelectControls(Focused()->number);
        }
        break;
    case CMD_LAYER_PUT:
        if (isAnyChosen) {
            layers_->ChangeSelected(Change::Put, Chosen());
        }
        break;
    case CMD_LAYER_ADD:
    case CMD_LAYER_REMOVE:
        if (Chosen() != 0) {
            layers_->ChangeSelected(command == CMD_LAYER_ADD ? Change::Add : Change::Remove, Chosen());
        }
        break;
    case CMD_LAYER_SHOW:
        layers_->Toggle(Chosen());
        break;
    default: // alone
        if (isAnyChosen) {
            layers_->ShowOnly(Chosen());
        }
        break;
    }
    Update();
}
