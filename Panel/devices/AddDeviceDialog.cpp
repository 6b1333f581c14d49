#include "Panel/devices/AddDeviceDialog.h"

#include "Panel/resource.h"
#include "Panelhost/DeviceFiles.h"
#include "Panelhost/Dialog.h"
#include "Panelhost/Hostinfo.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

// What a device of a kind is asked for, and where the kind wants it.
struct Field {
    const char* place;
    int label, item;
};
constexpr Field FIELDS[] = {{"{address}", IDC_ADD_ADDRESS_LABEL, IDC_ADD_ADDRESS},
                            {"{port}", IDC_ADD_PORT_LABEL, IDC_ADD_PORT},
                            {"{profile}", IDC_ADD_PROFILE_LABEL, IDC_ADD_PROFILE}};

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (auto place = text.find(what); place != std::string::npos;
         place = text.find(what, place + by.size())) {
        text.replace(place, what.size(), by);
    }
    return text;
}

bool IsDeclared(const std::string& text, const std::string& name) {
    const std::string folded = logic::FoldName("\n" + text);
    return folded.find("\n" + logic::FoldName(name) + "*device=") != std::string::npos;
}

class AddDeviceDialog : public Dialog {
public:
    AddDeviceDialog(HOSTINFO* root, const std::string& file, const std::string& text)
        : root_(root), file_(file), text_(text) {
        for (DEVICEKINDINFO& kind : a_ListDeviceKinds()) {
            kinds_.push_back(std::move(kind));
        }
    }

    std::optional<std::string> Run(HWND owner) {
        return RunModal(GetModuleHandleA(nullptr), IDD_ADD_DEVICE, owner) == IDOK ? std::optional(lines_)
                                                                                  : std::nullopt;
    }

private:
    void OnCreate() override {
        for (const DEVICEKINDINFO& kind : kinds_) {
            Add(IDC_ADD_KIND, kind.title);
        }
        SendDlgItemMessageA(Handle(), IDC_ADD_KIND, CB_SETCURSEL, 0, 0);
        SetDlgItemTextA(Handle(), IDC_ADD_NAME, FreeName().c_str());
        SetDlgItemTextA(Handle(), IDC_ADD_ADDRESS, "127.0.0.1");
        FollowKind();
        SetFocus(Item(IDC_ADD_KIND));
    }

    void Add(int list, const std::string& text) const {
        SendDlgItemMessageA(Handle(), list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }

    std::size_t Chosen(int list) const {
        return static_cast<std::size_t>(SendDlgItemMessageA(Handle(), list, CB_GETCURSEL, 0, 0));
    }

    std::string TextOf(int item) const {
        char text[256] = "";
        GetDlgItemTextA(Handle(), item, text, sizeof text);
        return text;
    }

    std::string FreeName() const {
        std::string name;
        for (int number = 1;
             name.empty() || IsDeclared(text_, name) || a_FindHostinfo(root_, name.c_str()) != nullptr;
             ++number) {
            name = "DEVICE" + std::to_string(number);
        }
        return name;
    }

    void FollowKind() {
        const std::size_t chosen = Chosen(IDC_ADD_KIND);
        if (chosen >= kinds_.size()) {
            return;
        }
        const DEVICEKINDINFO& kind = kinds_[chosen];
        for (const Field& field : FIELDS) {
            const int command = kind.example.find(field.place) != std::string::npos ? SW_SHOWNA : SW_HIDE;
            ShowWindow(Item(field.label), command);
            ShowWindow(Item(field.item), command);
        }
        profiles_.clear();
        SendDlgItemMessageA(Handle(), IDC_ADD_PROFILE, CB_RESETCONTENT, 0, 0);
        for (DEVICEPROFILE& profile : a_ListProfiles(kind.word.c_str(), file_.c_str())) {
            Add(IDC_ADD_PROFILE, profile.name + (profile.title.empty() ? "" : " - " + profile.title));
            profiles_.push_back(std::move(profile));
        }
        SendDlgItemMessageA(Handle(), IDC_ADD_PROFILE, CB_SETCURSEL, 0, 0);
        FollowProfile();
        SetDlgItemTextA(Handle(), IDC_ADD_FAULT, "");
    }

    void FollowProfile() {
        const std::size_t chosen = Chosen(IDC_ADD_PROFILE);
        const int port = chosen < profiles_.size() ? profiles_[chosen].port : 0;
        SetDlgItemTextA(Handle(), IDC_ADD_PORT, port == 0 ? "" : std::to_string(port).c_str());
    }

    std::string Lines(const std::string& name) const {
        const std::size_t kind = Chosen(IDC_ADD_KIND);
        const std::size_t profile = Chosen(IDC_ADD_PROFILE);
        std::string lines = kind < kinds_.size() ? kinds_[kind].example : "";
        lines = Replaced(lines, "{address}", TextOf(IDC_ADD_ADDRESS));
        lines = Replaced(lines, "{port}", TextOf(IDC_ADD_PORT));
        lines = Replaced(lines, "{profile}", profile < profiles_.size() ? profiles_[profile].name : "");
        std::string whole;
        for (std::size_t start = 0; start < lines.size(); start = lines.find('\n', start) + 1) {
            whole += name + "*" + lines.substr(start, lines.find('\n', start) - start) + "\r\n";
        }
        return whole;
    }

    void Take() {
        const std::string before = text_.empty() || text_.ends_with('\n') ? text_ : text_ + "\r\n";
        const auto above = static_cast<std::size_t>(std::ranges::count(before, '\n'));
        lines_ = Lines(TextOf(IDC_ADD_NAME));
        for (const DEVICELINEFAULT& fault : a_CheckDeviceText(root_, file_.c_str(), before + lines_)) {
            if (fault.line > above) {
                SetDlgItemTextA(Handle(), IDC_ADD_FAULT, ("This cannot be declared: " + fault.why).c_str());
                return;
            }
        }
        EndDialog(Handle(), IDOK);
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        if (message != WM_COMMAND) {
            return Dialog::OnMessage(message, wParam, lParam, result);
        }
        if (wParam == IDCANCEL) {
            EndDialog(Handle(), IDCANCEL);
        } else if (wParam == IDOK) {
            Take();
        } else if (wParam == MAKEWPARAM(IDC_ADD_KIND, CBN_SELCHANGE)) {
            FollowKind();
        } else if (wParam == MAKEWPARAM(IDC_ADD_PROFILE, CBN_SELCHANGE)) {
            FollowProfile();
        }
        return true;
    }

    HOSTINFO* root_;
    const std::string file_;
    const std::string text_;
    std::vector<DEVICEKINDINFO> kinds_;
    std::vector<DEVICEPROFILE> profiles_;
    std::string lines_;
};

} // namespace

std::optional<std::string> AskForDevice(HWND owner, HOSTINFO* root, const std::string& file,
                                        const std::string& text) {
    return std::make_shared<AddDeviceDialog>(root, file, text)->Run(owner);
}
