#include "Panel/operating/PinDialogs.h"

#include "Panel/resource.h"
#include "Panelhost/Dialog.h"
#include "Panelhost/Operating.h"

#include <memory>
#include <string>
#include <utility>

namespace {

constexpr UINT_PTR COUNT_TIMER = 1;
constexpr UINT COUNT_INTERVAL = 200; // milliseconds

// What was typed. It does not stay in memory.
class TypedPin {
public:
    explicit TypedPin(HWND field) {
        wchar_t text[LONGEST_PIN + 2] = L"";
        const int length = GetWindowTextW(field, text, static_cast<int>(std::size(text)));
        const int size =
            WideCharToMultiByte(CP_UTF8, 0, text, length, bytes_, sizeof bytes_, nullptr, nullptr);
        size_ = size > 0 ? static_cast<std::size_t>(size) : 0;
        SecureZeroMemory(text, sizeof text);
    }
    ~TypedPin() { SecureZeroMemory(bytes_, sizeof bytes_); }
    TypedPin(const TypedPin&) = delete;
    TypedPin& operator=(const TypedPin&) = delete;

    std::string_view Get() const { return {bytes_, size_}; }

private:
    char bytes_[4 * (LONGEST_PIN + 2)] = "";
    std::size_t size_ = 0;
};

class PinDialog : public Dialog {
public:
    explicit PinDialog(HOSTINFO* root) : root_(root) {}
    bool Run(HWND owner, int dialogTemplate) {
        return RunModal(GetModuleHandleA(nullptr), dialogTemplate, owner) == IDOK;
    }

protected:
    virtual void Confirm() = 0;

    HOSTINFO* Root() const { return root_; }
    void Tell(const std::string& text) const {
        if (text != told_) {
            told_ = text;
            SetDlgItemTextA(Handle(), IDC_PIN_MESSAGE, text.c_str());
        }
    }
    void OnCreate() override {
        for (const int field : {IDC_PIN, IDC_PIN_AGAIN}) {
            SendDlgItemMessageA(Handle(), field, EM_LIMITTEXT, LONGEST_PIN, 0);
        }
        SetFocus(Item(IDC_PIN));
    }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        if (message == WM_COMMAND && LOWORD(wParam) == IDOK) {
            Confirm();
            return true;
        }
        if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL) {
            EndDialog(Handle(), IDCANCEL);
            return true;
        }
        return Dialog::OnMessage(message, wParam, lParam, result);
    }

private:
    HOSTINFO* root_;
    mutable std::string told_;
};

class OldPinDialog : public PinDialog {
public:
    OldPinDialog(HOSTINFO* root, logic::PinTries& tries) : PinDialog(root), tries_(tries) {}

private:
    void OnCreate() override {
        PinDialog::OnCreate();
        SetTimer(Handle(), COUNT_TIMER, COUNT_INTERVAL, nullptr);
        ShowWait();
    }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        if (message == WM_TIMER) {
            ShowWait();
            return true;
        }
        return PinDialog::OnMessage(message, wParam, lParam, result);
    }
    void Confirm() override {
        if (tries_.Wait(GetTickCount64()) > 0) {
            return;
        }
        int answer = LOCK_STAYS;
        {
            const TypedPin pin(Item(IDC_PIN));
            answer = a_TryLock(Root(), pin.Get());
        }
        if (answer == LOCK_OPENS) {
            tries_.Right();
            EndDialog(Handle(), IDOK);
            return;
        }
        if (answer == LOCK_STAYS) {
            tries_.Wrong(GetTickCount64());
        }
        reason_ = answer == LOCK_STAYS
                      ? "This is not the PIN."
                      : "The panel file is damaged: no PIN opens it. Take its line \"lock=\" out.";
        SetDlgItemTextA(Handle(), IDC_PIN, "");
        ShowWait();
    }
    void ShowWait() const {
        constexpr ULONGLONG SECOND = 1000;
        const ULONGLONG wait = tries_.Wait(GetTickCount64());
        Tell(wait == 0 ? reason_
                       : reason_ + (reason_.empty() ? "" : " ") + "The next try can be made in " +
                             std::to_string((wait + SECOND - 1) / SECOND) + " s.");
    }

    logic::PinTries& tries_;
    std::string reason_;
};

class NewPinDialog : public PinDialog {
public:
    using PinDialog::PinDialog;

private:
    void Confirm() override {
        const TypedPin pin(Item(IDC_PIN));
        const TypedPin again(Item(IDC_PIN_AGAIN));
        const auto length = static_cast<int>(pin.Get().size());
        if (pin.Get() != again.Get()) {
            Tell("The two are not the same.");
        } else if (length != 0 && (length < SHORTEST_PIN || length > LONGEST_PIN)) {
            Tell("A PIN has " + std::to_string(SHORTEST_PIN) + " to " + std::to_string(LONGEST_PIN) +
                 " characters.");
        } else if (a_SetLock(Root(), pin.Get())) {
            EndDialog(Handle(), IDOK);
        } else {
            Tell("The panel cannot be locked now.");
        }
    }
};

} // namespace

bool AskPin(HWND owner, HOSTINFO* root, logic::PinTries& tries) {
    return std::make_shared<OldPinDialog>(root, tries)->Run(owner, IDD_PIN);
}

void AskNewPin(HWND owner, HOSTINFO* root) {
    std::make_shared<NewPinDialog>(root)->Run(owner, IDD_NEW_PIN);
}
