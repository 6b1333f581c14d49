// CLOCK: local time, weekday and date as three centred lines of text, redrawn about twice a second. A click
// can send a fixed property line. Intervals in milliseconds, geometry in pixels.

#include "Controls/drawing/TextColours.h"
#include "Controls/families/ClickTemplate.h"
#include "Controls/families/FacedControl.h"
#include "Controls/families/Tooltip.h"
#include "Controls/framework/Keywords.h"
#include "base/Gdi.h"
#include "logic/controls/ClockText.h"

#include <algorithm>

namespace {

constexpr DWORD REDRAW_INTERVAL = 501;          // at least, from one redraw to the next
constexpr std::size_t CLICK_TEMPLATE_SIZE = 15; // longest template
constexpr UINT TEXT_FORMAT = DT_CENTER | DT_EXPANDTABS | DT_NOPREFIX | DT_END_ELLIPSIS;

} // namespace

class CLOCKPROPERTIES : public FACEDPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    DWORD DueIn(DWORD now) const noexcept override;
    // Destroys the window and with it the object, from any thread. 1, or 0 when it is gone already.
    LRESULT OnDelete(WPARAM wParam, LPARAM lParam) override;
    void FontChanged();
    void FaceChanged() override;
    void Draw(HDC dc, const RECT& client) const override;

    // Takes the size of the text and gives the control that of the bitmap or, without one, at least the
    // text's.
    void Measure();
    // The answer to a child window that asks for its colours.
    HBRUSH ColourStatic(HDC dc);

    std::string clickTemplate;
    SIZE textSize{};
    int measuredDay = 0; // of the month
    FontProperty font;
    COLORREF textColor = 0x00E6160B;
    COLORREF backgroundColor = 0x00000000; // of child windows; the clock itself shows the panel behind it
    FieldColours childColours;
    DWORD lastTick = 0; // tick count of the last redraw by the timer
    Tooltip tooltip;
};

// Keywords

namespace {

// A file without an image leaves the clock without one, and its name is kept.
int FaceKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& clock = *static_cast<CLOCKPROPERTIES*>(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, clock.face.Name().c_str());
    }
    const auto name = TextToSet(record);
    if (!name) {
        return 0;
    }
    const bool loaded = clock.face.Replace(*name, clock.WantedArt());
    clock.BitmapChanged();
    return loaded ? 1 : 0;
}

int NothingKeyword(VALUERECORD*, HOSTINFO*) {
    return 0;
}

// The clock takes nothing but texts.
template <KEYWORDHANDLER Handler>
constexpr Keyword OfText(Keyword keyword) {
    keyword.row.handler = TextOnly<Handler>;
    return keyword;
}
template <KEYWORDHANDLER Handler>
constexpr Keyword OfText(const char* name, KeywordKind kind) {
    return Row(name, kind, TextOnly<Handler>);
}

constexpr Keyword NO_VALUE =
    Row("value", KeywordKind::Text, NothingKeyword).Says("Nothing; it can be neither set nor read.");

constexpr KeywordTable KEYWORDS({
    NO_VALUE.Named(" "),
    OfText<ColourKeyword<&CLOCKPROPERTIES::backgroundColor>>("backgroundcolor", KeywordKind::Colour)
        .Saved()
        .Says(
            "Ground of windows inside the clock, `0x00bbggrr`; the clock itself shows the panel behind it."),
    OfText<FaceKeyword>("bitmap", KeywordKind::Picture)
        .Saved()
        .Says("Image file that is drawn over the text and gives the clock its size; empty for none."),
    OfText<IgnoredKeyword>("caption", KeywordKind::Text).Saved().Says("Taken and not kept."),
    OfText<TextKeyword<&CLOCKPROPERTIES::clickTemplate, CLICK_TEMPLATE_SIZE>>("click", KeywordKind::Line)
        .Longest(int{CLICK_TEMPLATE_SIZE})
        .Saved()
        .Says("Property line that a click sends, up to 15 characters; empty for none. `%c` in it stands for "
              "the connections, `%n` for the full name."),
    OfText<FontKeyword<&CLOCKPROPERTIES::font>>("font", KeywordKind::Typeface)
        .Saved()
        .Says("Font: face, size in points, `bold` where it is."),
    OfText<IntervalKeyword>(INTERVAL_KEYWORD)
        .Says("Taken and kept; the clock is redrawn about twice a second whatever it is."),
    OfText<LayerKeyword>(LAYER_KEYWORD),
    OfText<LayerKeyword>(LEVEL_KEYWORD),
    OfText<ColourKeyword<&CLOCKPROPERTIES::textColor>>("textcolor", KeywordKind::Colour)
        .Saved()
        .Says("Colour of the text, `0x00bbggrr`."),
    NO_VALUE,
    // Every control's connections are saved, so every control has to read them back. It stands last because
    // hosts address the other rows by number as well.
    OfText<ConnectionKeyword>(CONNECTION_KEYWORD),
});

} // namespace

KeywordList CLOCKPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// Time

namespace {

struct LocalTime {
    logic::CalendarTime time{};
    std::string text;
};

// The text is made once a second, however many clocks show it.
const LocalTime& Now() {
    static LocalTime last;
    SYSTEMTIME now;
    GetLocalTime(&now);
    const logic::CalendarTime time{now.wYear, now.wMonth,  now.wDay,   now.wDayOfWeek,
                                   now.wHour, now.wMinute, now.wSecond};
    if (time != last.time) {
        last = {time, logic::ClockText(time, logic::ClockLanguageOf(GetUserDefaultLangID()))};
    }
    return last;
}

} // namespace

DWORD CLOCKPROPERTIES::DueIn(DWORD now) const noexcept {
    const DWORD passed = now - lastTick;
    return passed < REDRAW_INTERVAL ? REDRAW_INTERVAL - passed : 0;
}

LRESULT CLOCKPROPERTIES::OnTimer(WPARAM, LPARAM) {
    const DWORD now = GetTickCount();
    if (DueIn(now) > 0 || GetCapture() == window) {
        return 0;
    }
    lastTick = now;
    if (Now().time.day != measuredDay) {
        Measure(); // the new date may be wider
    }
    InvalidateRect(window, nullptr, TRUE);
    return 0;
}

LRESULT CLOCKPROPERTIES::OnDelete(WPARAM, LPARAM) {
    if (a_FromWindow(window) != this) {
        return 0;
    }
    SendMessageA(window, WM_CLOSE, 0, 0); // a window is destroyed on its own thread only
    return 1;
}

// Layout

void CLOCKPROPERTIES::SetDefaults() {
    interval = 250;
    font.Load("Tahoma,20,bold");
    tooltip.AttachRelayed(*this);
    DragAcceptFiles(window, TRUE);
    Measure();
}

namespace {

// All clocks show the same text, most of them in the same font, so what was measured last is kept.
SIZE TextExtent(const std::string& text, const FontProperty& font) {
    static std::string lastText;
    static std::string lastFont;
    static SIZE last{};
    if (text != lastText || font.Text() != lastFont) {
        const HDC dc = CreateCompatibleDC(nullptr);
        const HGDIOBJ previous = SelectObject(dc, font.Get());
        RECT extent{0, 0, 500, 500};
        DrawTextA(dc, text.c_str(), -1, &extent, TEXT_FORMAT | DT_CALCRECT);
        SelectObject(dc, previous);
        DeleteDC(dc);
        last = {extent.right - extent.left, extent.bottom - extent.top};
        lastText = text;
        lastFont = font.Text();
    }
    return last;
}

} // namespace

void CLOCKPROPERTIES::Measure() {
    const LocalTime& now = Now();
    measuredDay = now.time.day;
    textSize = TextExtent(now.text, font);
    if (face.Get() != nullptr) {
        Resize(face.Get()->Width(), face.Get()->Height());
    } else {
        Resize(std::max(rectangle.right - rectangle.left, textSize.cx),
               std::max(rectangle.bottom - rectangle.top, textSize.cy));
    }
}

void CLOCKPROPERTIES::FontChanged() {
    SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    Measure();
    Redraw();
}

void CLOCKPROPERTIES::FaceChanged() {
    if (face.Get() != nullptr) {
        Measure();
    }
    Redraw();
}

// Drawing

void CLOCKPROPERTIES::Draw(HDC dc, const RECT& client) const {
    SelectObject(dc, font.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, textColor);
    RECT place{0, 0, textSize.cx, textSize.cy};
    OffsetRect(&place, (client.right - textSize.cx) / 2, (client.bottom - textSize.cy) / 2);
    DrawTextA(dc, Now().text.c_str(), -1, &place, TEXT_FORMAT);
    if (face.Get() != nullptr) {
        face.Get()->Draw(dc, 0, 0);
    }
}

HBRUSH CLOCKPROPERTIES::ColourStatic(HDC dc) {
    SetBkMode(dc, TRANSPARENT);
    return childColours.Answer(dc, textColor, backgroundColor);
}

// Input

namespace {

LRESULT CALLBACK ClockProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& clock = *PropertiesOf<CLOCKPROPERTIES>(window);
    clock.tooltip.Relay(message, wParam, lParam);
    switch (message) {
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(clock.ColourStatic(reinterpret_cast<HDC>(wParam)));
    case WM_LBUTTONDOWN:
        if (IsPanelClick(clock, wParam)) {
            break;
        }
        return DefWindowProcA(window, message, wParam, lParam); // takes neither focus nor capture
    case WM_LBUTTONUP:
        if (!IsPanelClick(clock, wParam | MK_LBUTTON)) {  // the button is no longer among the keys
            const std::string sent = clock.clickTemplate; // what is sent may replace it
            SendClickTemplate(clock, sent);
        }
        return DefWindowProcA(window, message, wParam, lParam);
    case CWM_PARAMETERDLG:
        return DefWindowProcA(window, message, wParam, lParam); // there is none
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation clockControl =
    Implement<CLOCKPROPERTIES>(ClockProc, NO_DIALOG, "Local time, weekday and date as text.", ShareTooltip);
