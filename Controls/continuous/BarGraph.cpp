// FADING: one float value as a drawn bar that takes no input but a click, which clears its peak mark. The bar
// sinks and the peak stays in real time, whenever the ticks come. Interval and hold in milliseconds, fall in
// units a second, geometry in pixels.

#include "Controls/drawing/BarFace.h"
#include "Controls/drawing/FontProperty.h"
#include "Controls/families/DarkStrip.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/families/TravelBeside.h"
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
#include <utility>
#include <vector>

namespace {

constexpr int HIGHEST = 1000000000;

} // namespace

class BARGRAPHPROPERTIES : public RANGEDPROPERTIES {
public:
    BARGRAPHPROPERTIES() : RANGEDPROPERTIES(0, 100) { font.Load("Tahoma,8"); }
    KeywordList Keywords() const override;
    void SetDefaults() override {
        interval = 100;
        beside_.Attach(*this);
    }
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
    std::string Beside() const { return beside_.Text(); }
    bool SetBeside(const std::string& text);
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
    void Painting();
    void ClearPeak();

    logic::Law law = logic::Law::Linear;
    BarDirection direction = BarDirection::Up;
    std::optional<float> origin; // none: the lower end of the range
    COLORREF barColour = logic::PANEL_GREEN;
    std::vector<logic::Zone> zones;
    BarStyle style = BarStyle::Solid;
    int segment = 4; // pixels of one with its gap
    int hold = 0;
    float fall = 0;
    std::string format; // of the number over the bar; empty for none
    FontProperty font;
    std::optional<COLORREF> textColour; // none: what can be read on the ground
    std::optional<COLORREF> backgroundColour = logic::PANEL_WELL;

private:
    // What is seen of the value.
    struct View {
        logic::BarSpans spans;
        std::string number;
        RECT numberPlace; // empty without a number
    };

    logic::TravelRange Range() const {
        return {static_cast<float>(minimum), static_cast<float>(maximum), law};
    }
    RECT TrackBeside(const RECT& client) const;
    BarFace LookIn(const RECT& client) const;
    BarFace Look() const;
    logic::BarSpans SpansOn(const BarFace& look) const;
    std::string Number() const { return format.empty() ? "" : logic::FormatFloatAs(format, value); }
    RECT NumberPlaceOn(const BarFace& look, const std::string& number) const;
    void ShowMotion();

    TravelBeside beside_;
    logic::BarMotion motion_;
    View view_{};           // that was last invalidated
    bool isLookNew_ = true; // all of it is to be painted, which takes the view
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
    Property<&BARGRAPHPROPERTIES::Beside, &BARGRAPHPROPERTIES::SetBeside>("beside", KeywordKind::Addresses)
        .Holds(logic::AddressForm::Connections)
        .Saved()
        .Label("Beside")
        .Says("Fader, meter or other bar graph whose range, law and travel the bar takes over where it grows "
              "the same way, so that equal values are at equal heights; empty for none. When that goes, what "
              "was taken over last stays. `properties` limits the value all the same."),
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

bool BARGRAPHPROPERTIES::SetBeside(const std::string& text) {
    if (!beside_.Load(*this, text)) {
        return false;
    }
    beside_.Follow(*this);
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
    if (beside_.Follow(*this)) {
        LookChanged();
    }
    motion_.Advance(GetTickCount());
    ShowMotion();
    return CONTROLPROPERTIES::OnTimer(timer, lParam);
}

DWORD BARGRAPHPROPERTIES::DueIn(DWORD now) const noexcept {
    return beside_.IsBehind(*this) ? 0
                                   : std::min<DWORD>(UntilPoll(now), motion_.DueIn(now).value_or(NO_TICK));
}

// Layout

std::optional<logic::Travel> BARGRAPHPROPERTIES::TravelIn(SIZE client) const {
    const BarFace bar = LookIn({0, 0, client.cx, client.cy});
    const bool isBackwards = direction == BarDirection::Up || direction == BarDirection::Left;
    return logic::Travel{.range = bar.range,
                         .begin = bar.IsVertical() ? (isBackwards ? bar.track.bottom : bar.track.top)
                                                   : (isBackwards ? bar.track.right : bar.track.left),
                         .length = bar.Length(),
                         .isHorizontal = !bar.IsVertical(),
                         .isBackwards = isBackwards,
                         .shown = logic::Travel::Shown::Bar,
                         .origin = origin.value_or(bar.range.Lower()),
                         .segment = bar.SegmentLength()};
}

// The part of the client area that lies beside the travel of the other one; empty when it goes another way.
RECT BARGRAPHPROPERTIES::TrackBeside(const RECT& client) const {
    const auto& travel = beside_.Travel();
    const bool isWide = direction == BarDirection::Left || direction == BarDirection::Right;
    const bool isBackwards = direction == BarDirection::Up || direction == BarDirection::Left;
    if (!travel || travel->isHorizontal != isWide || travel->isBackwards != isBackwards) {
        return {};
    }
    const int begin = travel->begin + beside_.Offset();
    const int from = isBackwards ? begin - travel->length : begin;
    const int to = from + travel->length;
    return isWide ? RECT{from, client.top, to, client.bottom} : RECT{client.left, from, client.right, to};
}

BarFace BARGRAPHPROPERTIES::LookIn(const RECT& client) const {
    const RECT track = TrackBeside(client);
    const bool isBeside = IsRectEmpty(&track) == FALSE;
    return {client,
            isBeside ? track : client,
            direction,
            style,
            segment,
            isBeside ? beside_.Travel()->range : Range(),
            barColour,
            zones,
            ShownGround(*this, backgroundColour),
            font.Get(),
            textColour};
}

BarFace BARGRAPHPROPERTIES::Look() const {
    RECT client{};
    GetClientRect(window, &client);
    return LookIn(client);
}

logic::BarSpans BARGRAPHPROPERTIES::SpansOn(const BarFace& look) const {
    logic::BarSpans spans;
    spans.lit = logic::LitSpan(look.range, origin.value_or(look.range.Lower()), motion_.Shown(),
                               look.Length(), look.SegmentLength());
    if (const auto peak = motion_.Peak()) {
        spans.peak = logic::PeakSpan(look.range, *peak, look.Length(), look.SegmentLength());
    }
    return spans;
}

RECT BARGRAPHPROPERTIES::NumberPlaceOn(const BarFace& look, const std::string& number) const {
    if (number.empty()) {
        return {};
    }
    const HDC dc = GetDC(window);
    const RECT place = look.NumberPlace(dc, number);
    ReleaseDC(window, dc);
    return place;
}

// Invalidates where it looks different than before.
void BARGRAPHPROPERTIES::ShowMotion() {
    if (isLookNew_) {
        return;
    }
    const BarFace look = Look();
    View view{SpansOn(look), Number(), view_.numberPlace};
    for (const logic::Span& piece : logic::Difference(view_.spans, view.spans)) {
        const RECT area = look.AreaOf(piece);
        RedrawArea(&area);
    }
    if (view.number != view_.number) {
        view.numberPlace = NumberPlaceOn(look, view.number);
        for (const RECT& place : {view_.numberPlace, view.numberPlace}) {
            if (IsRectEmpty(&place) == FALSE) {
                RedrawArea(&place);
            }
        }
    }
    view_ = std::move(view);
}

void BARGRAPHPROPERTIES::LookChanged() {
    isLookNew_ = true;
    Redraw();
}

void BARGRAPHPROPERTIES::Painting() {
    if (std::exchange(isLookNew_, false)) {
        const BarFace look = Look();
        view_ = {SpansOn(look), Number(), {}};
        view_.numberPlace = NumberPlaceOn(look, view_.number);
    }
}

void BARGRAPHPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const BarFace look = LookIn(client);
    look.Draw(dc, SpansOn(look), Number());
}

// Input

namespace {

LRESULT CALLBACK BarGraphProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& bar = *PropertiesOf<BARGRAPHPROPERTIES>(window);
    if (message == WM_LBUTTONDOWN && !IsPanelClick(bar, wParam)) {
        bar.ClearPeak();
    } else if (message == WM_SIZE) {
        bar.LookChanged();
    } else if (message == WM_PAINT) {
        bar.Painting();
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
