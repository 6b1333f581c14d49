#include "Panel/editing/RowDialog.h"

#include "Panel/resource.h"
#include "Panelhost/Dialog.h"
#include "logic/text/Numbers.h"

#include <memory>
#include <optional>
#include <string>

namespace {

constexpr int MOST_COPIES = 256;
constexpr int FARTHEST = 4096; // pixels

class RowDialog : public Dialog {
public:
    explicit RowDialog(CopiedRow& row) : row_(row) {}

    bool Run(HWND owner) { return RunModal(GetModuleHandleA(nullptr), IDD_ROW, owner) == IDOK; }

private:
    void OnCreate() override {
        SetDlgItemTextA(Handle(), IDC_ROW_COUNT, std::to_string(row_.count).c_str());
        SetDlgItemTextA(Handle(), IDC_ROW_X, std::to_string(row_.stepX).c_str());
        SetDlgItemTextA(Handle(), IDC_ROW_Y, std::to_string(row_.stepY).c_str());
        CheckDlgButton(Handle(), IDC_ROW_COUNTS, row_.counts ? BST_CHECKED : BST_UNCHECKED);
        SendMessageA(Item(IDC_ROW_COUNT), EM_SETSEL, 0, -1);
        SetFocus(Item(IDC_ROW_COUNT));
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        if (message != WM_COMMAND) {
            return Dialog::OnMessage(message, wParam, lParam, result);
        }
        if (wParam == IDCANCEL) {
            EndDialog(Handle(), IDCANCEL);
        } else if (wParam == IDOK) {
            Take();
        }
        return true;
    }

    // A number within the limits; where it is none the field is chosen, and the dialog says so.
    std::optional<int> NumberIn(int item, int least, int most) {
        char text[32] = "";
        GetDlgItemTextA(Handle(), item, text, sizeof text);
        const auto number = logic::ParseWholeInteger(text);
        if (number && *number >= least && *number <= most) {
            return *number;
        }
        const std::string fault =
            "This is a whole number from " + std::to_string(least) + " to " + std::to_string(most) + ".";
        SetDlgItemTextA(Handle(), IDC_ROW_FAULT, fault.c_str());
        SetFocus(Item(item));
        SendMessageA(Item(item), EM_SETSEL, 0, -1);
        return std::nullopt;
    }

    void Take() {
        const auto count = NumberIn(IDC_ROW_COUNT, 1, MOST_COPIES);
        const auto x = count ? NumberIn(IDC_ROW_X, -FARTHEST, FARTHEST) : std::nullopt;
        const auto y = x ? NumberIn(IDC_ROW_Y, -FARTHEST, FARTHEST) : std::nullopt;
        if (y) {
            row_ = {*count, *x, *y, IsDlgButtonChecked(Handle(), IDC_ROW_COUNTS) == BST_CHECKED};
            EndDialog(Handle(), IDOK);
        }
    }

    CopiedRow& row_;
};

} // namespace

bool AskForRow(HWND owner, CopiedRow& row) {
    return std::make_shared<RowDialog>(row)->Run(owner);
}
