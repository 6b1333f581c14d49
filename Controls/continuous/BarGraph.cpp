// FADING: one float value as a drawn bar that takes no input but a click, which clears its peak mark. The bar
// sinks and the peak stays in real time, whenever the ticks come. Interval and hold in milliseconds, fall in
// units a second, geometry in pixels.

#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/BarLogic.h"
#include "logic/drawing/PanelColours.h"
#include "logic/text/FloatFormat.h"
#include "logic/text/Numbers.h"
#include "logic/text/Ranges.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace {

enum class Direction { Up, Down, Left, Right };
enum class Style { Solid, Gradient, Segments };

constexpr int HIGHEST = 1000000000;

} // namespace

class BARGRAPHPROPERTIES : public RANGEDPROPERTIES {
public:
    BARGRAPHPROPERTIES() : RANGEDPROPERTIES(0, 100) { font.Load("Tahoma,8"); }
    KeywordList Keywords() const override;
    void SetDefaults() override { interval = 100; }
    int ValueDatatype() const override { return DATATYPE_FLOAT; }
    bool OffersApply() const override { return false; }
    float Limited(float number) const override { return Range().Limit(number); }
    void Send() override;
    void Poll() override;
    void Moved() override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    DWORD DueIn(DWORD now) const noexcept override;
    void Draw(HDC dc, const RECT& client) const override;
    std::optional<logic::Travel> TravelIn(SIZE client) const override;

    int ValueKeyword(VALUERECORD& record);
    bool SetRange(const std::string& text);
    int LawNumber() const { return static_cast<int>(law); }
    bool SetLaw(int number);
    std::string Origin() const { return origin ? logic::FormatFloat(*origin) : ""; }
    bool SetOrigin(const std::string& text);
    std::string Zones() const { return logic::ZonesText(zones); }
    bool SetZones(const std::string& text);
    std::string Format() const { return format; }
    bool SetFormat(const std::string& text);
    void MotionChanged();
    void FontChanged() { LookChanged(); }
    void LookChanged();
    void ClearPeak();

    logic::Law law = logic::Law::Linear;
    Direction direction = Direction::Up;
    std::optional<float> origin; // none: the lower end of the range
    COLORREF barColour = logic::PANEL_GREEN;
    std::vector<logic::Zone> zones;
    Style style = Style::Solid;
    int segment = 4; // pixels of one with its gap
    int hold = 0;
    float fall = 0;
    std::string format; // of the number over the bar; empty for none
    FontProperty font;
    std::optional<COLORREF> textColour; // none: what can be read on the ground
    std::optional<COLORREF> backgroundColour = logic::PANEL_WELL;

private:
    // What is seen of the value in a client area.
    struct View {
        logic::Span lit;
        logic::Span peak;
        std::string number;
        RECT numberPlace; // empty without a number
    };

    logic::TravelRange Range() const {
        return {static_cast<float>(minimum), static_cast<float>(maximum), law};
    }
    bool IsVertical() const { return direction == Direction::Up || direction == Direction::Down; }
    int Length(const RECT& client) const { return IsVertical() ? client.bottom : client.right; }
    int SegmentLength() const { return style == Style::Segments ? segment : 0; }
    RECT AreaOf(const logic::Span& span, const RECT& client) const;
    std::vector<logic::ColourRun> Colours(int length) const;
    View ViewOf(const RECT& client) const;
    RECT NumberPlace(const std::string& number, const RECT& client) const;
    void ShowMotion();
    void DrawNumber(HDC dc, const RECT& client, const View& view, COLORREF ground,
                    const std::vector<logic::ColourRun>& colours) const;

    logic::BarMotion motion_;
    View view_{}; // that was last invalidated
};

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&BARGRAPHPROPERTIES::ValueKeyword>("value", KeywordKind::Number)
                              .Says("The number, of which a whole-number get gives what is before the point. "
                                    "Set, it is limited to the range and, unless it is the old one, sent to "
                                    "everything the bar is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    OptionalColour<&BARGRAPHPROPERTIES::backgroundColour>("backgroundcolor")
        .Saved()
        .Label("Background")
        .Says("Colour of what is not lit, `0x00bbggrr`; empty to show the panel behind it."),
    Colour<&BARGRAPHPROPERTIES::barColour>("barcolor")
        .Saved()
        .Label("Bar colour")
        .Says("Colour of the bar without zones and below the lowest of them, `0x00bbggrr`."),
    CONNECTION_KEYWORD,
    Words<"up,down,left,right", &BARGRAPHPROPERTIES::direction, &BARGRAPHPROPERTIES::LookChanged>("direction")
        .Saved()
        .Label("Direction")
        .Says("Where the bar grows to: `up`, `down`, `left` or `right`."),
    Limited<&BARGRAPHPROPERTIES::fall, 0, HIGHEST, &BARGRAPHPROPERTIES::MotionChanged>("fall")
        .Saved()
        .Unit("1/s")
        .Label("Fall per second")
        .Says("Units a second that the bar sinks at most; 0 for at once."),
    Property<&BARGRAPHPROPERTIES::Format, &BARGRAPHPROPERTIES::SetFormat>("fmt")
        .Saved()
        .Label("Number format")
        .Says("`printf` format of a number over the bar, with one float conversion; empty for none."),
    FontOf<&BARGRAPHPROPERTIES::font>("font").Saved().Label("Font").Says(
        "Font of the number: face, size in points, `bold` where it is."),
    FUNCTION_KEYWORD,
    Limited<&BARGRAPHPROPERTIES::hold, 0, HIGHEST, &BARGRAPHPROPERTIES::MotionChanged>("hold")
        .Saved()
        .Unit("ms")
        .Label("Peak hold in ms")
        .Says("Milliseconds that a mark stays at a peak, unless a click clears it; 0 for no mark."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Property<&BARGRAPHPROPERTIES::Origin, &BARGRAPHPROPERTIES::SetOrigin>("origin", KeywordKind::Number)
        .Saved()
        .MayBeEmpty()
        .Label("Origin")
        .Says("Value from which the bar grows both ways, such as 0 for a panorama; empty for the minimum."),
    Property<&BARGRAPHPROPERTIES::RangeText, &BARGRAPHPROPERTIES::SetRange>("properties",
                                                                            KeywordKind::Numbers)
        .Saved()
        .Parts(RANGE_PARTS<1, 1>)
        .Says(
            "Minimum and maximum (whole numbers) and value, joined by `,`; the value, or maximum and "
            "value, may be left out. With a minimum above the maximum the bar is turned over. A logarithmic "
            "bar refuses ends that are not above 0."),
    // Behind the range, without which `log` would be refused.
    WordsProperty<"linear,log", &BARGRAPHPROPERTIES::LawNumber, &BARGRAPHPROPERTIES::SetLaw>("law")
        .Saved()
        .Label("Law")
        .Says("`linear`, or `log` for frequencies and times, which is refused unless both ends of the range "
              "are above 0."),
    Limited<&BARGRAPHPROPERTIES::segment, 2, 1000, &BARGRAPHPROPERTIES::LookChanged>("segment")
        .Saved()
        .Unit("px")
        .Label("Segment in pixels")
        .Says("Pixels of one segment with its gap, 2 to 1000."),
    Words<"solid,gradient,segments", &BARGRAPHPROPERTIES::style, &BARGRAPHPROPERTIES::LookChanged>("style")
        .Saved()
        .Label("Style")
        .Says("`solid`, `gradient` where colours blend into each other, or `segments`."),
    OptionalColour<&BARGRAPHPROPERTIES::textColour>("textcolor")
        .Saved()
        .Label("Text colour")
        .Says("Colour of the number, `0x00bbggrr`; empty for black or white, whichever can be read."),
    VALUE,
    Property<&BARGRAPHPROPERTIES::Zones, &BARGRAPHPROPERTIES::SetZones>("zones").Saved().Label("Zones").Says(
        "Colours of the bar from a value upwards, `-80=0x0040c040;0=0x000000ff`, at most 64; empty for "
        "none."),
});

} // namespace

KeywordList BARGRAPHPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

int BARGRAPHPROPERTIES::ValueKeyword(VALUERECORD& record) {
    return record.command == COMMAND_GET ? AnswerValue(record) : RANGEDPROPERTIES::ValueKeyword(record);
}

bool BARGRAPHPROPERTIES::SetRange(const std::string& text) {
    const auto read = logic::ParseRangeAndValue(text);
    if (!read ||
        (law == logic::Law::Logarithmic && std::min(read->minimum, read->maximum.value_or(maximum)) <= 0)) {
        return false;
    }
    LoadRange(text);
    motion_.Reset(value, GetTickCount());
    LookChanged();
    return true;
}

bool BARGRAPHPROPERTIES::SetLaw(int number) {
    const auto wanted = static_cast<logic::Law>(number);
    if (wanted == logic::Law::Logarithmic && std::min(minimum, maximum) <= 0) {
        return false;
    }
    law = wanted;
    LookChanged();
    return true;
}

bool BARGRAPHPROPERTIES::SetOrigin(const std::string& text) {
    const auto number = logic::ParseWholeFloat(text);
    if (!text.empty() && !number) {
        return false;
    }
    origin = number;
    LookChanged();
    return true;
}

bool BARGRAPHPROPERTIES::SetZones(const std::string& text) {
    auto read = logic::ParseZones(text);
    if (!read) {
        return false;
    }
    zones = std::move(*read);
    LookChanged();
    return true;
}

bool BARGRAPHPROPERTIES::SetFormat(const std::string& text) {
    if (!MayBeFormat(text)) {
        return false;
    }
    format = text;
    LookChanged();
    return true;
}

// Value

void BARGRAPHPROPERTIES::Send() {
    float sent = value;
    a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &sent, nullptr);
}

void BARGRAPHPROPERTIES::Poll() {
    if (requests.empty() && lastPollResult == REQUEST_UNCHANGED) {
        return;
    }
    float polled = value;
    const int result = Ask(requests, DATATYPE_FLOAT, &polled);
    if (result == REQUEST_DELIVERED) {
        value = Limited(polled);
        Moved();
    }
    ShowPollResult(result);
}

void BARGRAPHPROPERTIES::Moved() {
    motion_.Take(value, GetTickCount());
    ShowMotion();
}

void BARGRAPHPROPERTIES::MotionChanged() {
    motion_.hold = hold;
    motion_.fall = fall;
    motion_.Advance(GetTickCount());
    ShowMotion();
}

void BARGRAPHPROPERTIES::ClearPeak() {
    motion_.ClearPeak();
    ShowMotion();
}

LRESULT BARGRAPHPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    motion_.Advance(GetTickCount());
    ShowMotion();
    return CONTROLPROPERTIES::OnTimer(timer, lParam);
}

DWORD BARGRAPHPROPERTIES::DueIn(DWORD now) const noexcept {
    return std::min<DWORD>(UntilPoll(now), motion_.DueIn(now).value_or(NO_TICK));
}

// Layout

std::optional<logic::Travel> BARGRAPHPROPERTIES::TravelIn(SIZE client) const {
    const int length = IsVertical() ? client.cy : client.cx;
    const bool isBackwards = direction == Direction::Up || direction == Direction::Left;
    return logic::Travel{.range = Range(),
                         .begin = isBackwards ? length : 0,
                         .length = length,
                         .isHorizontal = !IsVertical(),
                         .isBackwards = isBackwards,
                         .shown = logic::Travel::Shown::Bar,
                         .origin = origin.value_or(Range().Lower()),
                         .segment = SegmentLength()};
}

RECT BARGRAPHPROPERTIES::AreaOf(const logic::Span& span, const RECT& client) const {
    switch (direction) {
    case Direction::Up:
        return {0, client.bottom - span.last, client.right, client.bottom - span.first};
    case Direction::Down:
        return {0, span.first, client.right, span.last};
    case Direction::Left:
        return {client.right - span.last, 0, client.right - span.first, client.bottom};
    default:
        return {span.first, 0, span.last, client.bottom};
    }
}

std::vector<logic::ColourRun> BARGRAPHPROPERTIES::Colours(int length) const {
    return style == Style::Gradient ? logic::GradientRuns(Range(), zones, barColour, length)
                                    : logic::ZoneRuns(Range(), zones, barColour, length);
}

BARGRAPHPROPERTIES::View BARGRAPHPROPERTIES::ViewOf(const RECT& client) const {
    const logic::TravelRange range = Range();
    const int length = Length(client);
    View view{};
    view.lit =
        logic::LitSpan(range, origin.value_or(range.Lower()), motion_.Shown(), length, SegmentLength());
    if (const auto peak = motion_.Peak()) {
        view.peak = logic::PeakSpan(range, *peak, length, SegmentLength());
    }
    if (!format.empty()) {
        view.number = logic::FormatFloatAs(format, value);
    }
    return view;
}

RECT BARGRAPHPROPERTIES::NumberPlace(const std::string& number, const RECT& client) const {
    if (number.empty()) {
        return {};
    }
    const HDC dc = GetDC(window);
    SIZE extent{};
    {
        const Selected selected(dc, font.Get());
        GetTextExtentPoint32A(dc, number.c_str(), static_cast<int>(number.size()), &extent);
    }
    ReleaseDC(window, dc);
    // More for what a glyph has beyond its cell, and for the edge of a plate behind it.
    const int left = (client.right - extent.cx) / 2 - 3;
    const int top = (client.bottom - extent.cy) / 2 - 1;
    return {left, top, left + extent.cx + 7, top + extent.cy + 3};
}

// Invalidates where it looks different than before.
void BARGRAPHPROPERTIES::ShowMotion() {
    RECT client{};
    GetClientRect(window, &client);
    View view = ViewOf(client);
    const auto invalidate = [&](const RECT& area) {
        if (!IsRectEmpty(&area)) {
            RedrawArea(&area);
        }
    };
    for (const auto part : {&View::lit, &View::peak}) {
        for (const logic::Span& piece : logic::Difference(view_.*part, view.*part).pieces) {
            invalidate(AreaOf(piece, client));
        }
    }
    view.numberPlace = view_.numberPlace;
    if (view.number != view_.number) {
        invalidate(view_.numberPlace);
        view.numberPlace = NumberPlace(view.number, client);
        invalidate(view.numberPlace);
    }
    view_ = std::move(view);
}

void BARGRAPHPROPERTIES::LookChanged() {
    RECT client{};
    GetClientRect(window, &client);
    view_ = ViewOf(client);
    view_.numberPlace = NumberPlace(view_.number, client);
    Redraw();
}

// Drawing

void BARGRAPHPROPERTIES::Draw(HDC dc, const RECT& client) const {
    FillGround(dc, backgroundColour, client);
    const View view = ViewOf(client);
    const COLORREF ground =
        view.number.empty() ? 0
                            : GetPixel(dc, client.right / 2, client.bottom / 2); // before the bar is over it
    const auto colours = Colours(Length(client));
    for (const logic::Span& part : {view.lit, view.peak}) {
        for (const logic::ColourRun& run : logic::DrawnRuns(colours, part, SegmentLength())) {
            FillGround(dc, run.colour, AreaOf(run.span, client));
        }
    }
    if (!view.number.empty()) {
        DrawNumber(dc, client, view, ground, colours);
    }
}

// Without a colour of its own it can be read over the bar and beside it: each part in the colour for it. The
// gaps between segments would cut through it, so that there it stands on a plate.
void BARGRAPHPROPERTIES::DrawNumber(HDC dc, const RECT& client, const View& view, COLORREF ground,
                                    const std::vector<logic::ColourRun>& colours) const {
    const Selected selected(dc, font.Get());
    SetBkMode(dc, TRANSPARENT);
    const auto draw = [&](COLORREF colour) {
        RECT place = client;
        SetTextColor(dc, colour);
        DrawTextA(dc, view.number.c_str(), -1, &place,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
    };
    const COLORREF plate = backgroundColour.value_or(logic::PANEL_WELL);
    if (style == Style::Segments) {
        FillGround(dc, plate, NumberPlace(view.number, client));
    }
    if (textColour || style == Style::Segments) {
        draw(textColour.value_or(ReadableOn(plate)));
        return;
    }
    draw(ReadableOn(ground));
    const int middle = Length(client) / 2;
    const auto run = std::ranges::find_if(colours, [&](const auto& one) { return middle < one.span.last; });
    if (run != colours.end()) {
        const RECT lit = AreaOf(view.lit, client);
        const int saved = SaveDC(dc);
        IntersectClipRect(dc, lit.left, lit.top, lit.right, lit.bottom);
        draw(ReadableOn(run->colour));
        RestoreDC(dc, saved);
    }
}

// Input

namespace {

LRESULT CALLBACK BarGraphProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& bar = *PropertiesOf<BARGRAPHPROPERTIES>(window);
    if (message == WM_LBUTTONDOWN && !IsPanelClick(bar, wParam)) {
        bar.ClearPeak();
    } else if (message == WM_SIZE) {
        bar.LookChanged();
    }
    return IndicatorProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation barGraphControl{
    .create = CreateProperties<BARGRAPHPROPERTIES>,
    .procedure = BarGraphProc,
    .purpose =
        "A number as a drawn bar, with coloured zones, a peak mark that a click clears, and the number "
        "over it.",
    .dialog = LAID_OUT};
