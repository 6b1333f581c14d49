// BSTATIC: a line of text, fixed or following what the control is bound to. It takes no input of its own. A
// text that does not fit ends with dots and stands in full in the tooltip. Interval in milliseconds.

#include "Controls/families/DarkStrip.h"
#include "Controls/families/TextValue.h"
#include "Controls/families/Tooltip.h"
#include "base/Gdi.h"
#include "logic/drawing/PanelColours.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int MARGIN = 1;                // at the left and right end of the text, pixels
constexpr int MARK_END = 18;             // behind the not-equal sign
constexpr std::size_t TIP_COLUMNS = 100; // of the tooltip, characters

} // namespace

class STATICPROPERTIES : public TEXTPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    std::string Title() const override;
    void TextChanged() override;
    void Draw(HDC dc, const RECT& client) const override;

    // Puts the text into the tooltip, or takes it out, as it is clipped or not.
    void UpdateTip();

    Tooltip tooltip;

private:
    // Where the text goes.
    RECT Place(const RECT& client) const {
        return {notEqual ? MARK_END : MARGIN, 0, client.right - MARGIN, client.bottom};
    }

    std::string drawn_; // the text at the last change
    std::string tip_;   // the text in the tooltip
};

// Keywords

namespace {

constexpr Keyword VALUE =
    TEXT_VALUE_KEYWORD.Says("Text or number. Set, it is shown and, unless it is the old one, sent to "
                            "everything the control is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    ALIGNMENT_KEYWORD,
    GROUND_COLOUR_KEYWORD.Says("Colour of the ground, `0x00bbggrr`; empty to show the panel behind it."),
    CAPTION_KEYWORD.Says("The text that is shown while it is bound to nothing, and until the first poll; at "
                         "first the title it is created with. Nothing is sent."),
    CONNECTION_KEYWORD,
    DATATYPE_KEYWORD,
    TEXT_FORMAT_KEYWORD.Says("`printf` format of a number, with one float conversion, also for `d`; empty "
                             "for the plain number."),
    TEXT_FONT_KEYWORD,
    FUNCTION_KEYWORD,
    TEXT_INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    TEXT_COLOUR_KEYWORD,
    VALUE,
});

} // namespace

KeywordList STATICPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void STATICPROPERTIES::SetDefaults() {
    TEXTPROPERTIES::SetDefaults();
    tooltip.AttachRelayed(*this);
}

std::string STATICPROPERTIES::Title() const {
    char title[TEXT_SIZE] = "";
    DefWindowProcA(window, WM_GETTEXT, sizeof title,
                   reinterpret_cast<LPARAM>(title)); // the window's own text
    return title;
}

void STATICPROPERTIES::TextChanged() {
    if (ShownText() != drawn_) {
        drawn_ = ShownText();
        Redraw();
    }
}

// Drawing

void STATICPROPERTIES::Draw(HDC dc, const RECT& client) const {
    constexpr UINT PLACES[] = {DT_LEFT, DT_CENTER, DT_RIGHT};
    FillGround(dc, ShownGround(*this, backgroundColor), client);
    const Selected selected(dc, font.Get());
    SetBkMode(dc, TRANSPARENT);
    SelectTextColour(dc, ShownInk(*this, textColor, logic::PANEL_TEXT), client);
    RECT place = Place(client);
    DrawTextA(dc, ShownText().c_str(), -1, &place,
              PLACES[static_cast<int>(alignment)] | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX |
                  DT_END_ELLIPSIS);
}

// Tooltip

void STATICPROPERTIES::UpdateTip() {
    const std::string text = ShownText();
    RECT client{};
    GetClientRect(window, &client);
    const HDC dc = GetDC(window);
    SIZE extent{};
    {
        const Selected selected(dc, font.Get());
        GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &extent);
    }
    ReleaseDC(window, dc);
    const RECT place = Place(client);
    const std::string tip = extent.cx > place.right - place.left ? text : "";
    if (tip != tip_) {
        tip_ = tip;
        tooltip.Hover(client, logic::WrapText(tip, TIP_COLUMNS));
    }
}

// Input, and the text for those who ask the window for it

namespace {

LRESULT GetText(const std::string& text, WPARAM size, char* buffer) {
    if (size == 0 || buffer == nullptr) {
        return 0;
    }
    const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<LRESULT>(length);
}

LRESULT CALLBACK StaticProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& text = *PropertiesOf<STATICPROPERTIES>(window);
    if (message == WM_MOUSEMOVE) {
        text.UpdateTip();
    }
    text.tooltip.Relay(message, wParam, lParam);
    switch (message) {
    case WM_GETTEXT:
        return GetText(text.ShownText(), wParam, reinterpret_cast<char*>(lParam));
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(text.ShownText().size());
    case WM_SETTEXT:
        if (lParam != 0) {
            text.SetCaption(reinterpret_cast<const char*>(lParam));
        }
        return TRUE;
    default:
        break;
    }
    return IndicatorProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation staticControl = Implement<STATICPROPERTIES>(
    StaticProc, LAID_OUT,
    "A line of text, fixed or following what it is bound to; one that does not fit stands in full "
    "in the tooltip.",
    ShareTooltip);
