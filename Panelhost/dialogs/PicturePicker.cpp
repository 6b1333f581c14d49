// The choice among the pictures of a folder, shown as thumbnails.

#include "Panelhost/Dialogs.h"

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Bitmap.h"
#include "Panelhost/dialogs/ApplicationFiles.h"
#include "Panelhost/dialogs/Dialog.h"
#include "Panelhost/dialogs/ListView.h"
#include "Panelhost/dialogs/Thumbnail.h"
#include "Panelhost/dialogs/resource.h"
#include "base/FileSearch.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <commctrl.h>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int SIDE = 64; // of a thumbnail, pixels
constexpr SIZE SPACING{SIDE + 56, SIDE + 46};
constexpr COLORREF GROUND = RGB(255, 255, 255);
constexpr UINT_PTR LOAD_TIMER = 1;
constexpr UINT LOAD_PAUSE = 10;      // milliseconds, for input and painting
constexpr ULONGLONG LOAD_SLICE = 50; // milliseconds that pictures are loaded in one go
constexpr const char* TYPES[] = {".bmp", ".png", ".jpg", ".gif"};

bool EndsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The names of the picture files of a folder that begin with the prefix, sorted without regard to case.
std::vector<std::string> PictureFiles(const std::string& folder, const std::string& prefix) {
    std::vector<std::string> files;
    const std::string wanted = logic::FoldName(prefix);
    for (FileSearch search(folder + "\\*"); search.HasFile(); search.Next()) {
        const std::string name = search.Name();
        const std::string folded = logic::FoldName(name);
        const bool isPicture = std::any_of(std::begin(TYPES), std::end(TYPES),
                                           [&](const char* type) { return EndsWith(folded, type); });
        if (isPicture && folded.compare(0, wanted.size(), wanted) == 0 && !search.IsFolder()) {
            files.push_back(name);
        }
    }
    std::sort(files.begin(), files.end(), [](const std::string& a, const std::string& b) {
        return logic::FoldName(a) < logic::FoldName(b);
    });
    return files;
}

// An image of the registry for as long as it is looked at.
class HeldBitmap {
public:
    explicit HeldBitmap(std::string name) : name_(std::move(name)), bitmap_(a_GetBitmap3(name_.c_str())) {}
    ~HeldBitmap() {
        if (bitmap_ != nullptr) {
            a_UnregisterBitmap3(name_.c_str());
        }
    }
    HeldBitmap(const HeldBitmap&) = delete;
    HeldBitmap& operator=(const HeldBitmap&) = delete;

    const OSMIRBitmap* Get() const { return bitmap_; }

private:
    std::string name_;
    const OSMIRBitmap* bitmap_;
};

class PicturePicker : public Dialog {
public:
    // The current picture, as a property holds it, is the one that is selected at first.
    PicturePicker(std::string folder, const std::string& prefix, const std::string& current)
        : folder_(std::move(folder)),
          current_(logic::FoldName(current)),
          files_(PictureFiles(folder_, prefix)) {}

    // The name of the chosen file as a property holds it; empty when none was chosen.
    std::string Choose(HWND owner) {
        return RunModal(DialogModule(), IDD_PICTURES, owner) == IDOK ? chosen_ : std::string();
    }

private:
    struct Picture {
        std::string path;
        SIZE size;
    };

    void OnCreate() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnResized() override { SendMessageA(list_, LVM_ARRANGE, LVA_DEFAULT, 0); }
    void LoadSome();
    void AddPicture(const std::string& name);
    void ShowSelected() const;
    void Accept();

    std::string folder_;
    std::string current_; // folded
    std::vector<std::string> files_;
    std::size_t loaded_ = 0;
    bool isToBeSeen_ = false; // what has been selected
    HWND list_ = nullptr;
    ImageList thumbnails_;
    std::vector<Picture> pictures_; // in the order of the list
    std::string chosen_;
};

void PicturePicker::OnCreate() {
    list_ = Item(IDC_PICTURES);
    thumbnails_.reset(ImageList_Create(SIDE, SIDE, ILC_COLOR24, 16, 16));
    SetWindowLongPtrA(list_, GWL_STYLE, GetWindowLongPtrA(list_, GWL_STYLE) | LVS_SHAREIMAGELISTS);
    SendMessageA(list_, LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(thumbnails_.get()));
    SendMessageA(list_, LVM_SETICONSPACING, 0, MAKELPARAM(SPACING.cx, SPACING.cy));
    SetListColours(list_, GROUND);
    SetLayout({{IDC_PICTURES, 0, 0, 100, 100},
               {IDC_NO_PICTURES, 0, 50, 100, 50},
               {IDC_PICTURE_NAME, 0, 100, 100, 100},
               {IDOK, 100, 100, 100, 100},
               {IDCANCEL, 100, 100, 100, 100}});
    LoadSome();
    ShowSelected();
    SetFocus(list_);
    ShowAtCursor();
}

// Piece by piece, so that a large folder keeps nobody waiting.
void PicturePicker::LoadSome() {
    const ULONGLONG end = GetTickCount64() + LOAD_SLICE;
    SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
    while (loaded_ < files_.size() && GetTickCount64() < end) {
        AddPicture(files_[loaded_++]);
    }
    SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list_, nullptr, TRUE);
    if (std::exchange(isToBeSeen_, false)) { // while it does not draw, the list does not scroll right
        SelectRow(list_, SelectedRow(list_));
    }
    if (loaded_ < files_.size()) {
        SetTimer(Handle(), LOAD_TIMER, LOAD_PAUSE, nullptr);
        return;
    }
    KillTimer(Handle(), LOAD_TIMER);
    ShowWindow(Item(IDC_NO_PICTURES), pictures_.empty() ? SW_SHOWNA : SW_HIDE);
}

void PicturePicker::AddPicture(const std::string& name) {
    const std::string path = folder_ + "\\" + name;
    const HeldBitmap image(path);
    if (image.Get() == nullptr) {
        return;
    }
    const Bitmap thumbnail = MakeThumbnail(*image.Get(), SIDE, GROUND);
    pictures_.push_back({path, {image.Get()->Width(), image.Get()->Height()}});
    AddRow(list_, name, ImageList_Add(thumbnails_.get(), thumbnail.get(), nullptr));
    const int row = static_cast<int>(pictures_.size()) - 1;
    const bool isUntouched = SelectedRow(list_) <= 0; // nobody has gone on meanwhile
    if (row == 0 || (isUntouched && logic::FoldName(PropertyFileName(path)) == current_)) {
        SelectRow(list_, row);
        isToBeSeen_ = true;
    }
}

void PicturePicker::ShowSelected() const {
    const int row = SelectedRow(list_);
    EnableWindow(Item(IDOK), row >= 0);
    std::string text;
    if (row >= 0) {
        const Picture& picture = pictures_[static_cast<std::size_t>(row)];
        text = PropertyFileName(picture.path) + "   " + std::to_string(picture.size.cx) + " x " +
               std::to_string(picture.size.cy) + " pixels";
    }
    SetWindowTextA(Item(IDC_PICTURE_NAME), text.c_str());
}

void PicturePicker::Accept() {
    if (const int row = SelectedRow(list_); row >= 0) {
        chosen_ = PropertyFileName(pictures_[static_cast<std::size_t>(row)].path);
        EndDialog(Handle(), IDOK);
    }
}

bool PicturePicker::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
    case WM_TIMER:
        LoadSome();
        return true;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
            Accept();
        } else if (LOWORD(wParam) == IDCANCEL) {
            EndDialog(Handle(), IDCANCEL);
        }
        return true;
    case WM_NOTIFY: {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.hwndFrom == list_ && header.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
            ShowSelected();
        } else if (header.hwndFrom == list_ && header.code == static_cast<UINT>(LVN_ITEMACTIVATE)) {
            Accept();
        }
        return true;
    }
    case WM_CTLCOLORSTATIC:
        if (reinterpret_cast<HWND>(lParam) == Item(IDC_NO_PICTURES)) { // it lies on the list
            SetBkColor(reinterpret_cast<HDC>(wParam), GROUND);
            result = reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
            return true;
        }
        break;
    default:
        break;
    }
    return Dialog::OnMessage(message, wParam, lParam, result);
}

// The name of the chosen file as a property holds it; empty when none was chosen.
std::string PictureOf(HWND owner, const char* folder, const char* prefix, const std::string& current) {
    char path[MAX_PATH];
    if (a_MakeFullPathName(folder, path) == 0) {
        return {};
    }
    std::string full = path;
    while (!full.empty() && full.back() == '\\') {
        full.pop_back();
    }
    const auto picker = std::make_shared<PicturePicker>(full, prefix == nullptr ? "" : prefix, current);
    return picker->Choose(owner == nullptr ? nullptr : GetAncestor(owner, GA_ROOT));
}

} // namespace

int a_PopupBitmapView(HWND owner, const char* folder, const char* prefix, char* name) {
    if (folder == nullptr || name == nullptr) {
        return 0;
    }
    *name = '\0';
    return Guarded(0, [&] {
        const std::string chosen = PictureOf(owner, folder, prefix, "");
        if (chosen.empty() || chosen.size() >= MAX_PATH) {
            return 0;
        }
        std::memcpy(name, chosen.c_str(), chosen.size() + 1);
        return 1;
    });
}

std::string a_ChoosePicture(HWND owner, const std::string& prefix, const std::string& current) {
    return Guarded(std::string(), [&] { return PictureOf(owner, ".\\Controls", prefix.c_str(), current); });
}
