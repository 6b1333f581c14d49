// How windows of the program and the system's controls in them look in the dark theme. In the light one they
// are drawn by the system, and nothing here has a hand in it.

#include "Panel/theme/ThemedControls.h"

#include "Panel/theme/Theme.h"
#include "Panelhost/Trace.h"
#include "base/Gdi.h"
#include "base/Handles.h"

#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

namespace {

constexpr UINT_PTR SUBCLASS = 0x7E3E;
constexpr int PADDING = 6; // pixels beside a text
constexpr UINT ONE_LINE = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;

enum class Kind { Own, Button, Header, Status, Toolbar, Field, Other };

struct Known {
    const char* className;
    Kind kind;
};
constexpr Known KNOWN[] = {
    {"Button", Kind::Button},           {"ComboBox", Kind::Other},        {"Edit", Kind::Field},
    {"ListBox", Kind::Field},           {STATUSCLASSNAMEA, Kind::Status}, {"Static", Kind::Other},
    {TOOLBARCLASSNAMEA, Kind::Toolbar}, {WC_HEADERA, Kind::Header},       {WC_LISTVIEWA, Kind::Field},
    {WC_TREEVIEWA, Kind::Field},
};

bool Is(HWND window, const char* className) {
    char name[32] = "";
    GetClassNameA(window, name, sizeof name);
    return _stricmp(name, className) == 0;
}

Kind KindOf(HWND window) {
    for (const Known& known : KNOWN) {
        if (Is(window, known.className)) {
            const bool isDrawnByOwner = known.kind == Kind::Button &&
                                        (GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK) == BS_OWNERDRAW;
            return isDrawnByOwner ? Kind::Other : known.kind;
        }
    }
    char name[32] = "";
    GetClassNameA(window, name, sizeof name);
    return IsOwnWindow(name) ? Kind::Own : Kind::Other;
}

std::string TextOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)), '\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void Frame(HDC dc, const RECT& place, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FrameRect(dc, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void Write(HDC dc, const std::string& text, RECT place, COLORREF colour, UINT format) {
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &place, format);
}

// Painting of a whole window, seen all at once.
template <class Painting>
void Paint(HWND window, Painting&& painting) {
    PAINTSTRUCT paint;
    const HDC screen = BeginPaint(window, &paint);
    RECT client;
    GetClientRect(window, &client);
    if (const Bitmap bitmap(CreatePixels(client.right, client.bottom)); screen && bitmap) {
        const MemoryDc dc(bitmap.get());
        const HFONT given = GetWindowFont(window);
        const Selected font(dc.Get(), given ? given : GetStockObject(DEFAULT_GUI_FONT));
        painting(dc.Get(), client);
        BitBlt(screen, 0, 0, client.right, client.bottom, dc.Get(), 0, 0, SRCCOPY);
    }
    EndPaint(window, &paint);
}

// Controls.

void PaintMark(HDC dc, RECT box, bool isRound, LRESULT state) {
    const ThemeColours& colours = Colours();
    const bool isOn = (state & BST_CHECKED) != 0;
    FillThemed(dc, box, isOn && !isRound ? colours.accent : colours.field);
    Frame(dc, box, isOn ? colours.accent : colours.edge);
    if (!isOn) {
        return;
    }
    if (isRound) {
        InflateRect(&box, -4, -4);
        return FillThemed(dc, box, colours.accent);
    }
    const POINT tick[] = {
        {box.left + 3, box.top + 6}, {box.left + 5, box.top + 9}, {box.left + 10, box.top + 3}};
    SetDCPenColor(dc, colours.field);
    const Selected pen(dc, GetStockObject(DC_PEN));
    for (int dy = 0; dy < 2; ++dy) {
        POINT moved[3];
        std::transform(std::begin(tick), std::end(tick), moved, [&](POINT p) {
            return POINT{p.x, p.y + dy};
        });
        Polyline(dc, moved, 3);
    }
}

void PaintButton(HWND window, HDC dc, const RECT& client) {
    constexpr LONG MARK = 13;
    const ThemeColours& colours = Colours();
    const LRESULT state = SendMessageA(window, BM_GETSTATE, 0, 0);
    const LONG style = GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK;
    const COLORREF text = IsWindowEnabled(window) ? colours.text : colours.dimText;
    const UINT cues = (SendMessageA(window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) ? DT_HIDEPREFIX : 0;
    RECT place = client;
    FillThemed(dc, client, colours.ground);
    if (style > BS_DEFPUSHBUTTON) {
        const LONG top = (client.bottom - MARK) / 2;
        const bool isRound = style == BS_RADIOBUTTON || style == BS_AUTORADIOBUTTON;
        PaintMark(dc, {0, top, MARK, top + MARK}, isRound, state);
        place.left = MARK + PADDING;
        Write(dc, TextOf(window), place, text, DT_SINGLELINE | DT_VCENTER | cues);
        if ((state & BST_FOCUS) != 0) {
            Frame(dc, {place.left - 2, top - 1, client.right, top + MARK + 1}, colours.edge);
        }
        return;
    }
    const bool isFirst = style == BS_DEFPUSHBUTTON || (state & BST_FOCUS) != 0;
    FillThemed(dc, client, (state & BST_PUSHED) != 0 ? colours.selection : colours.raised);
    Frame(dc, client, isFirst ? colours.accent : colours.edge);
    Write(dc, TextOf(window), place, text, DT_SINGLELINE | DT_VCENTER | DT_CENTER | cues);
}

void PaintHeader(HWND header, HDC dc, const RECT& client) {
    const ThemeColours& colours = Colours();
    FillThemed(dc, client, colours.raised);
    const int count = Header_GetItemCount(header);
    for (int i = 0; i < count; ++i) {
        char text[128] = "";
        HDITEMA item{};
        item.mask = HDI_TEXT | HDI_FORMAT;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        RECT place;
        if (!SendMessageA(header, HDM_GETITEMA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item)) ||
            !Header_GetItemRect(header, i, &place)) {
            continue;
        }
        FillThemed(dc, {place.right - 1, place.top, place.right, place.bottom}, colours.edge);
        InflateRect(&place, -PADDING, 0);
        const UINT side = (item.fmt & HDF_JUSTIFYMASK) == HDF_CENTER  ? DT_CENTER
                          : (item.fmt & HDF_JUSTIFYMASK) == HDF_RIGHT ? DT_RIGHT
                                                                      : DT_LEFT;
        Write(dc, text, place, colours.text, ONE_LINE | DT_NOPREFIX | side);
    }
    FillThemed(dc, {0, client.bottom - 1, client.right, client.bottom}, colours.edge);
}

void PaintStatus(HWND bar, HDC dc, const RECT& client) {
    constexpr int ICON = 16;
    const ThemeColours& colours = Colours();
    FillThemed(dc, client, colours.ground);
    FillThemed(dc, {0, 0, client.right, 1}, colours.rule);
    const auto count = static_cast<int>(SendMessageA(bar, SB_GETPARTS, 0, 0));
    for (int i = 0; i < count; ++i) {
        const auto part = static_cast<WPARAM>(i);
        RECT place;
        if (!SendMessageA(bar, SB_GETRECT, part, reinterpret_cast<LPARAM>(&place))) {
            continue;
        }
        std::string text(LOWORD(SendMessageA(bar, SB_GETTEXTLENGTHA, part, 0)) + 1U, '\0');
        SendMessageA(bar, SB_GETTEXTA, part, reinterpret_cast<LPARAM>(text.data()));
        text.resize(std::strlen(text.c_str()));
        if (i > 0) {
            FillThemed(dc, {place.left - 1, place.top + 1, place.left, place.bottom - 1}, colours.edge);
        }
        place.left += PADDING;
        if (const auto icon = reinterpret_cast<HICON>(SendMessageA(bar, SB_GETICON, part, 0))) {
            DrawIconEx(dc, place.left, (place.top + place.bottom - ICON) / 2, icon, ICON, ICON, 0, nullptr,
                       DI_NORMAL);
            place.left += ICON + PADDING / 2;
        }
        Write(dc, text, place, colours.text, ONE_LINE | DT_NOPREFIX);
    }
    for (int i = 1; i <= 3; ++i) { // the grip
        for (int j = 1; j <= i; ++j) {
            const LONG x = client.right - 4 * (4 - i);
            const LONG y = client.bottom - 4 * j;
            FillThemed(dc, {x, y, x + 2, y + 2}, colours.edge);
        }
    }
}

// The edge of a field, which the system draws in its own colours.
void PaintEdge(HWND window) {
    const LONG style = GetWindowLongA(window, GWL_STYLE);
    const LONG exStyle = GetWindowLongA(window, GWL_EXSTYLE);
    const bool isSunken = (exStyle & WS_EX_CLIENTEDGE) != 0;
    if (!isSunken && (style & WS_BORDER) == 0) {
        return;
    }
    const WindowDc dc(window, DCX_WINDOW);
    RECT place;
    GetWindowRect(window, &place);
    OffsetRect(&place, -place.left, -place.top);
    Frame(dc.Get(), place, GetFocus() == window && Is(window, "Edit") ? Colours().accent : Colours().rule);
    if (isSunken) {
        InflateRect(&place, -1, -1);
        Frame(dc.Get(), place, Colours().field);
    }
}

// What a window is asked for the controls in it.

HBRUSH ColourControl(UINT message, HDC dc) {
    const ThemeColours& colours = Colours();
    const bool isField = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    const COLORREF ground = isField ? colours.field : colours.ground;
    SetTextColor(dc, colours.text);
    SetBkColor(dc, ground);
    SetDCBrushColor(dc, ground);
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

// Selected rows of lists that have not got the focus are drawn by the system in colours of its own.
template <class Draw>
LRESULT ColourRow(NMHDR& header) {
    auto& draw = reinterpret_cast<Draw&>(header);
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYITEMDRAW;
    }
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) {
        return CDRF_DODEFAULT;
    }
    bool isSelected = (draw.nmcd.uItemState & CDIS_SELECTED) != 0;
    if (Is(header.hwndFrom, WC_LISTVIEWA)) { // which says so of every row while the selection is always shown
        isSelected = ListView_GetItemState(header.hwndFrom, static_cast<int>(draw.nmcd.dwItemSpec),
                                           LVIS_SELECTED) != 0;
    }
    if (isSelected) {
        draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED | CDIS_FOCUS);
        draw.clrText = Colours().selectionText;
        draw.clrTextBk = GetFocus() == header.hwndFrom ? Colours().selection : Colours().raised;
    }
    return CDRF_DODEFAULT;
}

LRESULT AnswerDrawing(NMHDR& header) {
    return Is(header.hwndFrom, WC_LISTVIEWA)   ? ColourRow<NMLVCUSTOMDRAW>(header)
           : Is(header.hwndFrom, WC_TREEVIEWA) ? ColourRow<NMTVCUSTOMDRAW>(header)
                                               : CDRF_DODEFAULT;
}

bool HasSystemGround(HWND window, COLORREF& colour) {
    switch (GetClassLongA(window, GCL_HBRBACKGROUND)) {
    case COLOR_BTNFACE + 1:
        colour = Colours().ground;
        return true;
    case COLOR_APPWORKSPACE + 1:
        colour = Colours().surround;
        return true;
    default:
        return false;
    }
}

LRESULT OnOwn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC && message != WM_CTLCOLORSCROLLBAR) {
        return reinterpret_cast<LRESULT>(ColourControl(message, reinterpret_cast<HDC>(wParam)));
    }
    if (COLORREF colour = 0; message == WM_ERASEBKGND && HasSystemGround(window, colour)) {
        RECT client;
        GetClientRect(window, &client);
        FillThemed(reinterpret_cast<HDC>(wParam), client, colour);
        return 1;
    }
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_NOTIFY && result == CDRF_DODEFAULT &&
        reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(NM_CUSTOMDRAW)) {
        return AnswerDrawing(*reinterpret_cast<NMHDR*>(lParam));
    }
    return result;
}

// A button draws itself whenever something changes, without being asked to paint.
bool ChangesButton(UINT message) {
    switch (message) {
    case BM_SETCHECK:
    case BM_SETSTATE:
    case BM_SETSTYLE:
    case WM_ENABLE:
    case WM_KILLFOCUS:
    case WM_SETFOCUS:
    case WM_SETTEXT:
    case WM_UPDATEUISTATE:
        return true;
    default:
        return false;
    }
}

LRESULT OnControl(HWND window, Kind kind, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto painting = kind == Kind::Button   ? PaintButton
                          : kind == Kind::Header ? PaintHeader
                          : kind == Kind::Status ? PaintStatus
                                                 : nullptr;
    if (painting && message == WM_ERASEBKGND) {
        return 1;
    }
    if (painting && message == WM_PAINT) {
        Paint(window, [&](HDC dc, const RECT& client) { painting(window, dc, client); });
        return 0;
    }
    if (kind == Kind::Toolbar && message == WM_ERASEBKGND) {
        RECT client;
        GetClientRect(window, &client);
        FillThemed(reinterpret_cast<HDC>(wParam), client, Colours().ground);
        return 1;
    }
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (kind == Kind::Button && ChangesButton(message)) {
        InvalidateRect(window, nullptr, FALSE);
    }
    if (message == WM_NCPAINT || message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        PaintEdge(window);
    }
    return result;
}

LRESULT CALLBACK Themed(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                        DWORD_PTR data) noexcept {
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, Themed, SUBCLASS);
        return DefSubclassProc(window, message, wParam, lParam);
    }
    try {
        const auto kind = static_cast<Kind>(data);
        return kind == Kind::Own ? OnOwn(window, message, wParam, lParam)
                                 : OnControl(window, kind, message, wParam, lParam);
    } catch (...) {
        TRACE("Panel: message 0x%x failed\n", message);
        return 0;
    }
}

void SetListColours(HWND window, bool isDark) {
    const ThemeColours& colours = Colours();
    if (Is(window, WC_LISTVIEWA)) {
        ListView_SetBkColor(window, colours.field);
        ListView_SetTextBkColor(window, colours.field);
        ListView_SetTextColor(window, colours.text);
    } else if (Is(window, WC_TREEVIEWA)) {
        TreeView_SetBkColor(window, isDark ? colours.field : static_cast<COLORREF>(-1));
        TreeView_SetTextColor(window, isDark ? colours.text : static_cast<COLORREF>(-1));
        TreeView_SetLineColor(window, isDark ? colours.dimText : CLR_DEFAULT);
    }
}

} // namespace

bool IsOwnWindow(const char* className) {
    return std::strncmp(className, "Panel", 5) == 0 && std::strcmp(className, "PanelLine") != 0 &&
           std::strcmp(className, "PanelWindow") != 0;
}

void ThemeWindows(HWND window, bool isDark) {
    if (Is(window, "PanelWindow")) {
        return; // its look is its own
    }
    const Kind kind = KindOf(window);
    if (isDark) {
        SetWindowSubclass(window, Themed, SUBCLASS, static_cast<DWORD_PTR>(kind));
    } else {
        RemoveWindowSubclass(window, Themed, SUBCLASS);
    }
    SetListColours(window, isDark);
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        ThemeWindows(child, isDark);
    }
    if (kind == Kind::Own) {
        SendMessageA(window, THEME_CHANGED, 0, 0);
    }
}
