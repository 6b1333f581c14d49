#include "Controls/families/View.h"

#include "Controls/families/ClickTemplate.h"
#include "base/Gdi.h"
#include "logic/controls/BarLogic.h"

#include <algorithm>
#include <utility>
#include <windowsx.h>

namespace {

constexpr int STRIP_MARGIN = 3; // above and below its text
constexpr int STRIPE_PIXELS = 1 << 18;
constexpr std::size_t MOST_PARTS = 512; // that are remembered until the next painting

POINT PointOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

} // namespace

void VIEWPROPERTIES::SetDefaults() {
    interval = 1000;
    image_.Load(controlClass->image);
}

void VIEWPROPERTIES::Redraw() const {
    ground_.Change();
    RedrawView();
}

void VIEWPROPERTIES::RedrawView() const {
    picture_.Change();
    parts_.clear();
    RedrawArea(nullptr);
}

void VIEWPROPERTIES::RedrawPart(const RECT& part) const {
    if (parts_.size() < MOST_PARTS) {
        parts_.push_back(part);
    } else { // nobody has looked for a while
        picture_.Change();
        parts_.clear();
    }
    RedrawArea(&part);
}

// Layout

RECT VIEWPROPERTIES::ViewArea(const RECT& client) const {
    RECT area = client;
    if (!ShownCaption().empty()) {
        LOGFONTA face{};
        GetObjectA(font.Get(), sizeof face, &face);
        const int height = std::abs(face.lfHeight) + 2 * STRIP_MARGIN + 1;
        area.top = 2 * height < client.bottom ? height : 0; // a low view has no room for it
    }
    return area;
}

RECT VIEWPROPERTIES::ViewArea() const {
    RECT client{};
    GetClientRect(window, &client);
    return ViewArea(client);
}

POINT VIEWPROPERTIES::NotEqualPlace() const {
    return {3, ViewArea().top + 3};
}

COLORREF VIEWPROPERTIES::Shade(COLORREF colour, double way) const {
    return logic::Blend(backgroundColour, colour, way);
}

// Drawing

void VIEWPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const auto ground = [&](HDC kept, std::uint32_t* pixels) { PaintGround(kept, pixels, client, 0); };
    const auto paint = [&](HDC kept, std::uint32_t* pixels) {
        if (const OSMIRBitmap* picture = ground_.Get(client.right, client.bottom, ground)) {
            picture->Draw(kept, 0, 0);
            PaintView(kept, pixels, client, 0);
        }
    };
    PaintParts(client);
    if (const OSMIRBitmap* picture = picture_.Get(client.right, client.bottom, paint)) {
        picture->Draw(dc, 0, 0);
    } else if (client.right > 0) { // too large to be kept
        const int rows = std::max(STRIPE_PIXELS / static_cast<int>(client.right), 1);
        for (int top = 0; top < client.bottom; top += rows) {
            KeptPicture stripe(false, true);
            const auto part = [&](HDC kept, std::uint32_t* pixels) {
                PaintGround(kept, pixels, client, top);
                PaintView(kept, pixels, client, top);
            };
            if (const OSMIRBitmap* kept =
                    stripe.Get(client.right, std::min<int>(rows, client.bottom - top), part)) {
                kept->Draw(dc, 0, top);
            }
        }
    }
    if (IsBound()) {
        DrawOver(dc, ViewArea(client));
    }
}

void VIEWPROPERTIES::PaintParts(const RECT& client) const {
    if (parts_.empty()) {
        return;
    }
    const auto paint = [&](HDC kept, std::uint32_t* pixels) {
        const OSMIRBitmap* ground =
            ground_.Get(client.right, client.bottom,
                        [&](HDC dc, std::uint32_t* drawn) { PaintGround(dc, drawn, client, 0); });
        const RECT area = ViewArea(client);
        for (const RECT& part : parts_) {
            RECT inside{};
            if (ground == nullptr || IntersectRect(&inside, &part, &area) == FALSE) {
                continue;
            }
            ground->Draw(kept, inside.left, inside.top, inside.right - inside.left,
                         inside.bottom - inside.top, inside.left, inside.top);
            Canvas canvas(kept, pixels, client.right, 0, inside);
            if (IsBound()) {
                DrawView(canvas);
            }
        }
    };
    picture_.Update(client.right, client.bottom, paint);
    parts_.clear();
}

void VIEWPROPERTIES::PaintGround(HDC dc, std::uint32_t* pixels, const RECT& client, int top) const {
    const RECT area = ViewArea(client);
    if (area.top > 0) {
        const Canvas strip(dc, pixels, client.right, top, {0, 0, client.right, area.top});
        strip.Box(strip.Area(), Shade(textColour, 0.16));
        strip.Box({0, area.top - 1, client.right, area.top}, Shade(textColour, 0.35));
        strip.Text(ShownCaption(), {4, 0, client.right - 4, area.top - 1}, font.Get(), textColour,
                   DT_VCENTER | DT_CENTER | DT_END_ELLIPSIS);
    }
    Canvas canvas(dc, pixels, client.right, top, area);
    canvas.Box(area, backgroundColour);
    if (IsBound()) {
        DrawGround(canvas);
    }
}

void VIEWPROPERTIES::PaintView(HDC dc, std::uint32_t* pixels, const RECT& client, int top) const {
    Canvas canvas(dc, pixels, client.right, top, ViewArea(client));
    if (IsBound()) {
        DrawView(canvas);
    } else {
        DrawClassPicture(canvas);
    }
}

namespace {

POINT Centred(const RECT& area, SIZE size) {
    return {(area.left + area.right - size.cx) / 2, (area.top + area.bottom - size.cy) / 2};
}

} // namespace

void VIEWPROPERTIES::DrawCentred(const Canvas& canvas, const OSMIRBitmap& image) {
    const POINT place = Centred(canvas.Area(), {image.Width(), image.Height()});
    image.Draw(canvas.Dc(), place.x, place.y);
}

void VIEWPROPERTIES::DrawClassPicture(const Canvas& canvas) const {
    if (const OSMIRBitmap* image = image_.Get()) {
        DrawCentred(canvas, *image);
    } else if (const HBITMAP opaque = PictureOf(*controlClass); opaque != nullptr) {
        const SIZE size = SizeOf(opaque);
        const POINT place = Centred(canvas.Area(), size);
        const MemoryDc memory(opaque);
        BitBlt(canvas.Dc(), place.x, place.y, size.cx, size.cy, memory.Get(), 0, 0, SRCCOPY);
    } else {
        canvas.Text(a_OwnName(this), canvas.Area(), font.Get(), textColour,
                    DT_CENTER | DT_VCENTER | DT_END_ELLIPSIS);
    }
}

// A click on the name strip

bool VIEWPROPERTIES::IsClickedAt(POINT point) const {
    RECT client{};
    GetClientRect(window, &client);
    return PtInRect(&client, point) && point.y < ViewArea(client).top;
}

void VIEWPROPERTIES::Click() {
    SendClickTemplate(*this, clickTemplate, ShownCaption().c_str());
}

bool VIEWPROPERTIES::BeginDrag(POINT point) {
    lastPoint_ = point;
    isClick_ = IsClickedAt(point);
    return isClick_ || BeginViewDrag(point);
}

void VIEWPROPERTIES::MoveDrag(POINT point) {
    lastPoint_ = point;
    if (!isClick_) {
        MoveViewDrag(point);
    }
}

void VIEWPROPERTIES::EndDrag() {
    if (!std::exchange(isClick_, false)) {
        EndViewDrag();
    } else if (IsClickedAt(lastPoint_)) {
        Click();
    }
}

void VIEWPROPERTIES::CancelDrag() {
    if (!std::exchange(isClick_, false)) {
        CancelViewDrag();
    }
}

// Hover

void VIEWPROPERTIES::Move(POINT point) {
    if (!isHovered_) {
        TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window, 0};
        isHovered_ = TrackMouseEvent(&leave) != FALSE;
    }
    Hovered(&point);
}

void VIEWPROPERTIES::Leave() {
    isHovered_ = false;
    Hovered(nullptr);
}

// Window procedure

namespace {

bool Key(VIEWPROPERTIES& view, WPARAM key) {
    if (key == VK_RETURN) {
        view.Click();
        return true;
    }
    if (key != VK_TAB) {
        return view.KeyDown(key);
    }
    const bool backwards = GetKeyState(VK_SHIFT) < 0;
    if (GetKeyState(VK_CONTROL) < 0 || (view.TakesTab(backwards) && view.KeyDown(key))) {
        return true;
    }
    if (const HWND next = GetNextDlgTabItem(GetParent(view.window), view.window, backwards);
        next != nullptr) {
        SetFocus(next);
    }
    return true;
}

// A dialog would take Enter for its own button.
LRESULT WantedKeys(const VIEWPROPERTIES& view, const MSG* key) {
    const bool isPress = key != nullptr && key->message == WM_KEYDOWN;
    if (isPress && key->wParam == VK_TAB) {
        return DLGC_WANTARROWS | (view.TakesTab(GetKeyState(VK_SHIFT) < 0) ? DLGC_WANTTAB : 0);
    }
    return DLGC_WANTARROWS | (isPress && key->wParam == VK_RETURN ? DLGC_WANTMESSAGE : 0);
}

} // namespace

LRESULT CALLBACK ViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& view = *PropertiesOf<VIEWPROPERTIES>(window);
    switch (message) {
    case WM_KEYDOWN:
        if (PassInput(view, message, wParam, lParam) || Key(view, wParam)) {
            return 0;
        }
        break;
    case WM_MOUSEWHEEL:
        if (!PassInput(view, message, wParam, lParam)) {
            POINT point = PointOf(lParam);
            ScreenToClient(window, &point);
            const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
            view.Wheel(delta < 1 ? std::min(delta / WHEEL_DELTA, -1) : std::max(delta / WHEEL_DELTA, 1),
                       (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0, point);
        }
        return 0;
    case WM_LBUTTONDBLCLK:
        if (!IsPanelClick(view, wParam) && !view.IsClickedAt(PointOf(lParam)) &&
            view.DoubleClicked(PointOf(lParam))) {
            return 0;
        }
        break;
    case WM_MOUSEMOVE:
        if (view.mode == 0 && !view.dragging) {
            view.Move(PointOf(lParam));
        }
        break;
    case WM_MOUSELEAVE:
        view.Leave();
        return 0;
    case WM_KILLFOCUS:
        view.FocusLost();
        break;
    case WM_GETDLGCODE:
        return WantedKeys(view, reinterpret_cast<const MSG*>(lParam));
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}
