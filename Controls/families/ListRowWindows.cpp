#include "Controls/families/ListRowWindows.h"

#include "base/Guard.h"

#include <algorithm>
#include <cstdint>
#include <utility>

extern const WNDPROC listRow;

namespace {

constexpr int WHEEL_ROWS = 3; // of one notch

} // namespace

void LISTROWSPROPERTIES::SetDefaults() {
    // It paints the rows, over their windows.
    if (const LONG style = GetWindowLongA(window, GWL_STYLE); (style & WS_CLIPCHILDREN) != 0) {
        SetWindowLongA(window, GWL_STYLE, style & ~WS_CLIPCHILDREN);
    }
}

// Layout and scrolling

void LISTROWSPROPERTIES::FontChanged() {
    letters = ListLetters();
    Arrange();
}

ListLayout LISTROWSPROPERTIES::LayoutOf(const RECT& client) const {
    ListLayout layout(client, letters, rows, numbers != 0 ? LongestNumber() : 0);
    if (Scroll(layout).NeedsBar()) {
        layout.AddBar();
    }
    return layout;
}

ListLayout LISTROWSPROPERTIES::CurrentLayout() const {
    RECT client{};
    GetClientRect(window, &client);
    return LayoutOf(client);
}

RECT LISTROWSPROPERTIES::ThumbArea(const ListLayout& layout) const {
    const auto thumb = Scroll(layout).ThumbAt(top, layout.Track());
    return {layout.bar.left, layout.bar.top + thumb.start, layout.bar.right,
            layout.bar.top + thumb.start + thumb.length};
}

std::optional<int> LISTROWSPROPERTIES::EntryAt(const ListLayout& layout, POINT point) const {
    const auto row = layout.RowAt(point);
    return row && top + *row < EntryCount() ? std::optional(top + *row) : std::nullopt;
}

void LISTROWSPROPERTIES::Arrange() {
    if (EntryCount() > 0 || !windows_.empty()) {
        if (letters.font == nullptr) {
            letters = ListLetters(font.Get());
        }
        const ListLayout layout = CurrentLayout();
        const logic::ListScroll scroll = Scroll(layout);
        const std::optional<int> shown = EntryToShow();
        top = shown ? scroll.TopShowing(*shown, top) : scroll.LimitTop(top);
        PlaceRows(layout, std::min(layout.rows, EntryCount()));
    }
    Redraw();
}

void LISTROWSPROPERTIES::ScrollTo(int entry) {
    if (entry != top) {
        top = entry;
        Redraw();
    }
}

void LISTROWSPROPERTIES::Wheel(int delta) {
    wheel_ += delta * WHEEL_ROWS;
    const int moved = wheel_ / WHEEL_DELTA;
    wheel_ -= moved * WHEEL_DELTA;
    ScrollTo(Scroll(CurrentLayout()).LimitTop(std::int64_t{top} - moved));
}

// Windows of the rows

void LISTROWSPROPERTIES::PlaceRows(const ListLayout& layout, int count) {
    MakeRows(static_cast<std::size_t>(count), layout.numberWidth > 0);
    for (std::size_t row = 0; row < windows_.size(); ++row) {
        const RECT whole = layout.Row(static_cast<int>(row));
        const RECT button = layout.Button(static_cast<int>(row));
        const RECT places[] = {{whole.left, whole.top, button.left, button.bottom}, button};
        const HWND parts[] = {windows_[row].number, windows_[row].button};
        for (std::size_t part = 0; part < 2; ++part) {
            RECT& area = areas_[2 * row + part];
            if (parts[part] != nullptr && !EqualRect(&area, &places[part])) {
                area = places[part];
                SetWindowPos(parts[part], nullptr, area.left, area.top, area.right - area.left,
                             area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
            }
        }
    }
}

void LISTROWSPROPERTIES::MakeRows(std::size_t count, bool withNumbers) {
    const auto make = [this](const char* className, std::size_t id) {
        return CreateWindowExA(WS_EX_NOPARENTNOTIFY, className, "", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, window,
                               reinterpret_cast<HMENU>(id), ModuleInstance(), const_cast<WNDPROC*>(&listRow));
    };
    while (windows_.size() > count) {
        const RowWindows gone = windows_.back();
        windows_.pop_back();
        DestroyWindow(gone.button);
        if (gone.number != nullptr) {
            DestroyWindow(gone.number);
        }
    }
    const std::size_t before = windows_.size();
    windows_.resize(count);
    areas_.resize(2 * count);
    for (std::size_t row = 0; row < count; ++row) {
        RowWindows& made = windows_[row];
        if (row >= before) {
            made = {nullptr, make("LSBBUTTON", 2 * row + 1)};
            areas_[2 * row + 1] = {};
        }
        if (withNumbers && made.number == nullptr) {
            made.number = make("LSBSTATIC", 2 * row);
            areas_[2 * row] = {};
        } else if (!withNumbers && made.number != nullptr) {
            DestroyWindow(std::exchange(made.number, nullptr));
        }
    }
}

namespace {

// A row knows which one it is by its identifier.
std::string TextOf(const LISTROWSPROPERTIES& list, HWND window) {
    const int id = GetDlgCtrlID(window);
    return list.RowText(id / 2, id % 2 == 0);
}

// Has the list draw what lies in the window of a row.
void PrintRow(HWND list, HWND window, HDC dc) {
    POINT place{};
    RECT client{};
    MapWindowPoints(window, list, &place, 1);
    GetClientRect(window, &client);
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, 0, 0, client.right, client.bottom);
    SetViewportOrgEx(dc, -place.x, -place.y, nullptr);
    SendMessageA(list, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    RestoreDC(dc, saved);
}

LRESULT HandleRow(const LISTROWSPROPERTIES& list, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NCHITTEST:
        return HTTRANSPARENT; // the mouse is the list's
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: // what was covered of a row was covered of the list, which paints it
        ValidateRect(window, nullptr);
        return 0;
    case WM_PRINTCLIENT:
        PrintRow(list.window, window, reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(TextOf(list, window).size());
    case WM_GETTEXT: {
        if (wParam == 0 || lParam == 0) {
            return 0;
        }
        const std::string text = TextOf(list, window);
        auto* buffer = reinterpret_cast<char*>(lParam);
        const std::size_t length = text.copy(buffer, wParam - 1);
        buffer[length] = '\0';
        return static_cast<LRESULT>(length);
    }
    default:
        break;
    }
    if (message >= WM_MOUSEFIRST && message < WM_MOUSEWHEEL) { // sent to the row itself
        POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        MapWindowPoints(window, list.window, &point, 1);
        return SendMessageA(list.window, message, wParam, MAKELPARAM(point.x, point.y));
    }
    if (message == WM_MOUSEWHEEL || message == WM_KEYDOWN) {
        return SendMessageA(list.window, message, wParam, lParam);
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

LRESULT CALLBACK RowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return Guarded(LRESULT{0}, [&] {
        auto* list = dynamic_cast<LISTROWSPROPERTIES*>(a_FromWindow(GetParent(window)));
        if (list == nullptr || message == WM_NCCREATE) {
            return DefWindowProcA(window, message, wParam, lParam);
        }
        const Held held(*list);
        return HandleRow(*list, window, message, wParam, lParam);
    });
}

} // namespace

extern const WNDPROC listRow = RowProc;
