#include "Panel/editing/RenameDialog.h"

#include "Panel/resource.h"
#include "Panelhost/Dialog.h"
#include "Panelhost/Renaming.h"

#include <memory>

namespace {

constexpr std::size_t LOSSES_SHOWN = 12;
constexpr int LONGEST_NAME = 63;

class RenameDialog : public Dialog {
public:
    explicit RenameDialog(HOSTINFO* object) : object_(object) {}

    void Run(HWND owner) { RunModal(GetModuleHandleA(nullptr), IDD_RENAME, owner); }

private:
    void OnCreate() override {
        SendMessageA(Item(IDC_NAME), EM_LIMITTEXT, LONGEST_NAME, 0);
        SetDlgItemTextA(Handle(), IDC_NAME, a_OwnName(object_).c_str());
        SendMessageA(Item(IDC_NAME), EM_SETSEL, 0, -1);
        SetFocus(Item(IDC_NAME));
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        if (message != WM_COMMAND) {
            return Dialog::OnMessage(message, wParam, lParam, result);
        }
        if (wParam == IDOK) {
            Take();
        } else if (wParam == IDCANCEL) {
            EndDialog(Handle(), IDCANCEL);
        } else if (LOWORD(wParam) == IDC_NAME && HIWORD(wParam) == EN_CHANGE) {
            SetDlgItemTextA(Handle(), IDC_NAME_FAULT, "");
        }
        return true;
    }

    void Take() {
        char name[LONGEST_NAME + 1] = "";
        GetDlgItemTextA(Handle(), IDC_NAME, name, sizeof name);
        const std::string fault = RenameAsking(Handle(), object_, name);
        if (Handle() == nullptr) {
            return; // it went while the question stood
        }
        if (fault.empty()) {
            EndDialog(Handle(), IDOK);
        } else {
            SetDlgItemTextA(Handle(), IDC_NAME_FAULT, fault.c_str());
            SetFocus(Item(IDC_NAME));
        }
    }

    HOSTINFO* object_;
};

} // namespace

void AskForName(HWND owner, HOSTINFO* object) {
    std::make_shared<RenameDialog>(object)->Run(owner);
}

std::string RenameAsking(HWND owner, HOSTINFO* object, const std::string& name) {
    RENAMING renaming = a_PlanRenaming(object, name.c_str());
    if (renaming.answer != 0 && renaming.to == renaming.from && !renaming.to.empty()) {
        return {};
    }
    if (const std::string fault = a_RenameFault(renaming); !fault.empty()) {
        return fault;
    }
    if (!renaming.losses.empty()) {
        const std::string question = "These would not follow the new name, and stay as they are:\r\n\r\n" +
                                     a_RenameLosses(renaming, LOSSES_SHOWN) + "\r\nRename all the same?";
        if (MessageBoxA(owner, question.c_str(), "Rename", MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) !=
            IDYES) {
            return {};
        }
        renaming = a_PlanRenaming(object, name.c_str()); // while the question stood things may have changed
    }
    return a_Rename(renaming) != 0 ? "" : "The name could not be given.";
}
