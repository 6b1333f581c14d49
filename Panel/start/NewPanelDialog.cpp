#include "Panel/start/NewPanelDialog.h"

#include "Panel/resource.h"
#include "Panelhost/Bitmap.h"
#include "Panelhost/Dialog.h"
#include "base/FileNames.h"
#include "base/FileSearch.h"
#include "base/Gdi.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <vector>

namespace {

constexpr int LEAST = 64; // pixels
constexpr int MOST = 8192;
constexpr int WHOLE_GROUND = 400; // a picture as high is the ground of a whole panel, and no pattern
constexpr int ROW_HEIGHT = 52;
constexpr SIZE SWATCH{88, 44};
constexpr int PADDING = 4;

struct Size {
    int width;
    int height;
};
constexpr Size SIZES[] = {{1280, 720},  {1024, 600}, {1024, 768}, {1280, 800},
                          {1920, 1080}, {800, 480},  {640, 480}};

struct Ground {
    std::string name;
    std::string text;                   // of the root's keyword
    COLORREF colour = 0;                // without a picture
    const OSMIRBitmap* image = nullptr; // of this, with
};

// The brightness of what is seen on the whole, 0 to 255.
int Brightness(const Ground& ground) {
    COLORREF mean = ground.colour;
    if (ground.image) {
        const Bitmap bitmap(CreatePixels(1, 1));
        const MemoryDc dc(bitmap.get());
        SetStretchBltMode(dc.Get(), HALFTONE);
        StretchBlt(dc.Get(), 0, 0, 1, 1, ground.image->Dc(), 0, 0, ground.image->Width(),
                   ground.image->Height(), SRCCOPY);
        mean = GetPixel(dc.Get(), 0, 0);
    }
    return (GetRValue(mean) * 3 + GetGValue(mean) * 6 + GetBValue(mean)) / 10;
}

std::string SizeText(Size size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

// "1024 x 600", also with a comma, or other blanks.
std::optional<Size> ReadSize(const std::string& text) {
    const std::size_t cross = text.find_first_of("xX*,;");
    if (cross == std::string::npos) {
        return std::nullopt;
    }
    const auto trimmed = [](std::string part) {
        const std::size_t first = part.find_first_not_of(' ');
        return first == std::string::npos ? "" : part.substr(first, part.find_last_not_of(' ') - first + 1);
    };
    const auto width = logic::ParseWholeInteger(trimmed(text.substr(0, cross)));
    const auto height = logic::ParseWholeInteger(trimmed(text.substr(cross + 1)));
    const auto fits = [](const auto& number) { return number && *number >= LEAST && *number <= MOST; };
    return fits(width) && fits(height) ? std::optional(Size{*width, *height}) : std::nullopt;
}

class NewPanelDialog : public Dialog {
public:
    ~NewPanelDialog() override {
        for (const Ground& ground : grounds_) {
            a_UnregisterBitmap(ground.image);
        }
    }

    std::optional<std::string> Run(HWND owner) {
        return RunModal(GetModuleHandleA(nullptr), IDD_NEW_PANEL, owner) == IDOK ? std::optional(lines_)
                                                                                 : std::nullopt;
    }

private:
    void OnCreate() override {
        FindGrounds();
        for (const Size& size : SIZES) {
            SendDlgItemMessageA(Handle(), IDC_NEW_SIZE, CB_ADDSTRING, 0,
                                reinterpret_cast<LPARAM>(SizeText(size).c_str()));
        }
        for (const Ground& ground : grounds_) {
            SendDlgItemMessageA(Handle(), IDC_NEW_GROUND, LB_ADDSTRING, 0,
                                reinterpret_cast<LPARAM>(ground.name.c_str()));
        }
        SetSize(SIZES[0]);
        SendDlgItemMessageA(Handle(), IDC_NEW_GROUND, LB_SETITEMHEIGHT, 0, ROW_HEIGHT);
        SendDlgItemMessageA(Handle(), IDC_NEW_GROUND, LB_SETCURSEL, 0, 0);
        SetFocus(Item(IDC_NEW_SIZE));
    }

    // The pictures made for it, and a colour alone.
    void FindGrounds() {
        for (FileSearch found(ModuleFolder(nullptr) + "Controls\\Panel_*.png"); found.HasFile();
             found.Next()) {
            const std::string file = std::string(".\\Controls\\") + found.Name();
            std::string name = std::string(found.Name()).substr(6);
            name = name.substr(0, name.rfind('.'));
            std::replace(name.begin(), name.end(), '_', ' ');
            name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
            if (const OSMIRBitmap* image = a_GetBitmap3(file.c_str())) {
                grounds_.push_back({name, file, 0, image});
            }
        }
        std::stable_sort(grounds_.begin(), grounds_.end(), [](const Ground& one, const Ground& other) {
            return (one.name == "Dark") > (other.name == "Dark") ||
                   ((one.name == "Dark") == (other.name == "Dark") && one.name < other.name);
        });
        grounds_.push_back({"Plain dark grey", "0x00241f1c", 0x00241f1c, nullptr});
        grounds_.push_back({"Plain light grey", "0x00e4e4e4", 0x00e4e4e4, nullptr});
    }

    void SetSize(Size size) {
        SetDlgItemTextA(Handle(), IDC_NEW_SIZE, SizeText(size).c_str());
        proposed_ = SizeText(size);
    }

    std::string TypedSize() const {
        char text[64] = "";
        GetDlgItemTextA(Handle(), IDC_NEW_SIZE, text, sizeof text);
        return text;
    }

    const Ground* Chosen() const {
        const LRESULT index = SendDlgItemMessageA(Handle(), IDC_NEW_GROUND, LB_GETCURSEL, 0, 0);
        return index < 0 || static_cast<std::size_t>(index) >= grounds_.size()
                   ? nullptr
                   : &grounds_[static_cast<std::size_t>(index)];
    }

    // A picture of a whole panel proposes its own size, until one was typed.
    void FollowGround() {
        const Ground* ground = Chosen();
        if (ground && ground->image && ground->image->Height() >= WHOLE_GROUND && TypedSize() == proposed_) {
            SetSize({ground->image->Width(), ground->image->Height()});
        }
    }

    void Take() {
        const auto size = ReadSize(TypedSize());
        const Ground* ground = Chosen();
        if (!size || !ground) {
            SetDlgItemTextA(Handle(), IDC_NEW_FAULT, "The size is width x height, 64 to 8192 pixels each.");
            SetFocus(Item(IDC_NEW_SIZE));
            return;
        }
        lines_ = "background=" + ground->text + "\r\nsize=" + std::to_string(size->width) + "," +
                 std::to_string(size->height) + "\r\n" + (Brightness(*ground) < 128 ? "style=dark\r\n" : "");
        EndDialog(Handle(), IDOK);
    }

    void Draw(const DRAWITEMSTRUCT& draw) const {
        if (draw.itemID >= grounds_.size()) {
            return;
        }
        const Ground& ground = grounds_[draw.itemID];
        const bool isSelected = (draw.itemState & ODS_SELECTED) != 0;
        FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(isSelected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        RECT swatch{draw.rcItem.left + PADDING, draw.rcItem.top + PADDING,
                    draw.rcItem.left + PADDING + SWATCH.cx, draw.rcItem.top + PADDING + SWATCH.cy};
        const int saved = SaveDC(draw.hDC);
        if (ground.image) {
            IntersectClipRect(draw.hDC, swatch.left, swatch.top, swatch.right, swatch.bottom);
            const bool isWhole = ground.image->Height() >= WHOLE_GROUND;
            SetStretchBltMode(draw.hDC, HALFTONE);
            SetBrushOrgEx(draw.hDC, 0, 0, nullptr);
            const int width = isWhole ? SWATCH.cx : ground.image->Width();
            const int height = isWhole ? SWATCH.cy : ground.image->Height();
            StretchBlt(draw.hDC, swatch.left, swatch.top, width, height, ground.image->Dc(), 0, 0,
                       ground.image->Width(), ground.image->Height(), SRCCOPY);
        } else {
            SetDCBrushColor(draw.hDC, ground.colour);
            FillRect(draw.hDC, &swatch, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        }
        RestoreDC(draw.hDC, saved);
        FrameRect(draw.hDC, &swatch, GetSysColorBrush(COLOR_BTNSHADOW));
        RECT name = draw.rcItem;
        name.left = swatch.right + 3 * PADDING;
        SetBkMode(draw.hDC, TRANSPARENT);
        SetTextColor(draw.hDC, GetSysColor(isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        DrawTextA(draw.hDC, ground.name.c_str(), -1, &name, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        if ((draw.itemState & ODS_FOCUS) != 0) {
            DrawFocusRect(draw.hDC, &draw.rcItem);
        }
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        switch (message) {
        case WM_DRAWITEM:
            Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            result = TRUE;
            return true;
        case WM_COMMAND:
            if (wParam == IDCANCEL) {
                EndDialog(Handle(), IDCANCEL);
            } else if (wParam == IDOK || wParam == MAKEWPARAM(IDC_NEW_GROUND, LBN_DBLCLK)) {
                Take();
            } else if (wParam == MAKEWPARAM(IDC_NEW_GROUND, LBN_SELCHANGE)) {
                FollowGround();
            }
            return true;
        default:
            return Dialog::OnMessage(message, wParam, lParam, result);
        }
    }

    std::vector<Ground> grounds_;
    std::string proposed_; // size
    std::string lines_;
};

} // namespace

std::optional<std::string> AskForNewPanel(HWND owner) {
    return std::make_shared<NewPanelDialog>()->Run(owner);
}
