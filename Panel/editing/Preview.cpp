#include "Panel/editing/Preview.h"

#include "Panel/editing/Icons.h"
#include "Panel/editing/NewControls.h"
#include "Panel/export/PanelPicture.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"
#include "Panelhost/Root.h"

#include <cstdio>

namespace {

constexpr BYTE OPACITY = 225; // where the system can mix windows

// A panel that nobody sees, for as long as a picture is taken.
class HiddenPanel {
public:
    HiddenPanel(COLORREF ground, bool isDark)
        : window_(CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 1024, 1024, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr)),
          root_(window_ ? ph_CreateRoot(window_, "Preview") : nullptr) {
        char line[64];
        std::snprintf(line, sizeof line, "background=0x%08lx", static_cast<unsigned long>(ground));
        SendMessageA(window_, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line));
        SendMessageA(window_, CWM_LOAD, LOAD_FROM_FILE,
                     reinterpret_cast<LPARAM>(isDark ? "style=dark" : "style=classic"));
    }
    ~HiddenPanel() {
        if (root_) {
            ph_DestroyRoot(root_);
        }
        if (window_) {
            DestroyWindow(window_);
        }
    }
    HiddenPanel(const HiddenPanel&) = delete;
    HiddenPanel& operator=(const HiddenPanel&) = delete;

    HOSTINFO* Create(const CatalogueEntry& entry) const {
        return root_ ? a_FromWindow(CreateWindowExA(0, entry.className, entry.name, WS_CHILD | WS_VISIBLE, 0,
                                                    0, entry.size.cx, entry.size.cy, window_, nullptr,
                                                    nullptr, root_))
                     : nullptr;
    }

private:
    HWND window_;
    HOSTINFO* root_;
};

} // namespace

SIZE Preview::Make(const CatalogueEntry& entry, HOSTINFO* root) {
    RECT client;
    GetClientRect(root->window, &client);
    const COLORREF ground = GroundOf(root->window, client);
    if (entry.group == CatalogueGroup::Interfaces) {
        picture_.reset(MakePicture(entry, ground));
        return entry.size;
    }
    const HiddenPanel panel(ground, a_IsDark(root) != 0);
    const HOSTINFO* control = panel.Create(entry);
    if (!control) {
        return entry.size;
    }
    GiveArt(*control, ArtFor(entry.className, ground));
    RECT place;
    GetWindowRect(control->window, &place);
    const SIZE size{place.right - place.left, place.bottom - place.top};
    picture_ = PaintWindow(control->window, size);
    return size;
}

void Preview::Show(HWND panel, POINT corner) {
    if (!picture_) {
        return;
    }
    if (!Handle()) {
        Create("PanelLinePreview", "", WS_POPUP,
               WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TRANSPARENT | WS_EX_LAYERED, {}, panel, nullptr,
               nullptr);
        SetLayeredWindowAttributes(Handle(), 0, OPACITY, LWA_ALPHA);
    }
    ClientToScreen(panel, &corner);
    const SIZE size = SizeOf(picture_.get());
    RECT view;
    GetWindowRect(GetParent(panel), &view);
    SetWindowPos(Handle(), HWND_TOP, corner.x, corner.y, std::clamp(view.right - corner.x, 0L, size.cx),
                 std::clamp(view.bottom - corner.y, 0L, size.cy), SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(Handle());
}

void Preview::Hide() const {
    if (Handle() && IsWindowVisible(Handle())) {
        ShowWindow(Handle(), SW_HIDE);
    }
}

void Preview::Drop() {
    Hide();
    picture_.reset();
    if (Handle()) {
        DestroyWindow(Handle());
    }
}

LRESULT Preview::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NCHITTEST:
        return HTTRANSPARENT;
    case WM_ERASEBKGND:
        if (picture_) {
            const SIZE size = SizeOf(picture_.get());
            const MemoryDc dc(picture_.get());
            BitBlt(reinterpret_cast<HDC>(wParam), 0, 0, size.cx, size.cy, dc.Get(), 0, 0, SRCCOPY);
        }
        return 1;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}
