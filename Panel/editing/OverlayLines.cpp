#include "Panel/editing/OverlayLines.h"

// One line. It never takes the mouse or the activation.
class OverlayLines::LineWindow : public Window {
public:
    explicit LineWindow(HWND owner) {
        Create("PanelLine", "", WS_POPUP, WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TRANSPARENT, {}, owner,
               nullptr, nullptr);
    }

    void Show(const RECT& place, COLORREF colour) {
        const bool recoloured = colour != colour_;
        colour_ = colour;
        SetWindowPos(Handle(), HWND_TOP, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOACTIVATE | SWP_SHOWWINDOW);
        if (recoloured) {
            InvalidateRect(Handle(), nullptr, TRUE);
        }
        UpdateWindow(Handle());
    }
    void Hide() const {
        if (IsWindowVisible(Handle())) {
            ShowWindow(Handle(), SW_HIDE);
        }
    }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_NCHITTEST:
            return HTTRANSPARENT;
        case WM_ERASEBKGND: {
            const auto dc = reinterpret_cast<HDC>(wParam);
            RECT client;
            GetClientRect(Handle(), &client);
            SetDCBrushColor(dc, colour_);
            FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
            return 1;
        }
        default:
            return Window::OnMessage(message, wParam, lParam);
        }
    }

    COLORREF colour_ = 0;
};

OverlayLines::OverlayLines(HWND panel) : panel_(panel) {}
OverlayLines::~OverlayLines() = default;

void OverlayLines::AddFrame(std::vector<Line>& lines, const RECT& frame, COLORREF colour) {
    lines.push_back({{frame.left, frame.top, frame.right, frame.top + 1}, colour});
    lines.push_back({{frame.left, frame.bottom - 1, frame.right, frame.bottom}, colour});
    lines.push_back({{frame.left, frame.top, frame.left + 1, frame.bottom}, colour});
    lines.push_back({{frame.right - 1, frame.top, frame.right, frame.bottom}, colour});
}

void OverlayLines::Show(const std::vector<Line>& lines) {
    // What of the panel can be seen, on the screen.
    RECT visible{};
    RECT view{};
    GetWindowRect(panel_, &visible);
    GetClientRect(GetParent(panel_), &view);
    MapWindowPoints(GetParent(panel_), nullptr, reinterpret_cast<POINT*>(&view), 2);
    IntersectRect(&visible, &visible, &view);

    std::size_t used = 0;
    for (const Line& line : lines) {
        RECT place = line.place;
        MapWindowPoints(panel_, nullptr, reinterpret_cast<POINT*>(&place), 2);
        if (!IntersectRect(&place, &place, &visible)) {
            continue;
        }
        if (used == windows_.size()) {
            windows_.push_back(std::make_unique<LineWindow>(GetAncestor(panel_, GA_ROOT)));
        }
        windows_[used++]->Show(place, line.colour);
    }
    for (; used < windows_.size(); ++used) {
        windows_[used]->Hide();
    }
}
