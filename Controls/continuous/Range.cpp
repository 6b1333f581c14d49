// BRANGE: one float value as a marker on a track, with a permitted range in it. The marker has the alarm
// colour while the value is outside of that. The value and both ends can be bound, and dragged where that is
// allowed. A range that is wider than high is horizontal, with its minimum on the left, any other vertical,
// with its minimum at the bottom. Interval in milliseconds, geometry in pixels.

#include "Controls/drawing/Shading.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/FunctionList.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/framework/Keywords.h"
#include "Controls/framework/WheelTurn.h"
#include "Controls/resources/resource.h"
#include "logic/controls/FaderLogic.h"
#include "logic/controls/RangeLogic.h"
#include "logic/controls/SpinLogic.h"
#include "logic/drawing/PanelColours.h"

#include <algorithm>
#include <utility>

namespace {

enum class Settable { Nothing, Ends, Value, All }; // in the order of the words

constexpr int MARKER_REACH = 2; // to either side of its line
constexpr COLORREF GROOVE_SHADE = RGB(10, 11, 13);

} // namespace

class RANGEPROPERTIES : public RANGEDPROPERTIES {
public:
    RANGEPROPERTIES() : RANGEDPROPERTIES(0, 100) {}
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Apply() override;
    void Send() override;
    float Limited(float number) const override { return logic::LimitToRange(number, minimum, maximum); }
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    std::optional<logic::Travel> TravelIn(SIZE client) const override;
    bool BeginDrag(POINT point) override;
    void MoveDrag(POINT point) override;

    void LookChanged() { Redraw(); }
    int State() const { return Ends().StateOf(value); }
    template <auto End>
    int EndKeyword(VALUERECORD& record);

    logic::Permitted Ends() const { return logic::PermittedIn(ends, minimum, maximum); }
    bool MayMoveEnds() const { return settable == Settable::Ends || settable == Settable::All; }
    bool MayMoveValue() const { return settable == Settable::Value || settable == Settable::All; }

    logic::PermittedEnds ends;
    FunctionList lowFunctions;
    FunctionList highFunctions;
    Settable settable = Settable::Nothing;
    COLORREF rangeColour = logic::PANEL_GREEN;
    COLORREF alarmColour = logic::PANEL_RED;
    COLORREF lineColour = logic::PANEL_TEXT;

private:
    // Takes the ends and sends those that are numbers and not the old ones. False when nothing changed.
    bool TakeEnds(const logic::PermittedEnds& taken);
    // Along the track from its beginning, of a point in the client area.
    int PixelAt(POINT point) const;

    logic::RangePart held_ = logic::RangePart::None;
    int grip_ = 0; // from the place of what is held to the mouse
};

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&RANGEPROPERTIES::ValueKeyword>("value", KeywordKind::Number)
                              .Says("The number. Set, it is limited to `properties` and, unless it is the "
                                    "old one, sent to everything the range is bound to.");

// The end that is a member of the ends.
template <auto End>
constexpr Keyword EndOf(const char* name) {
    return Handled<&RANGEPROPERTIES::EndKeyword<End>>(name, KeywordKind::Number).Saved().MayBeEmpty();
}

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Colour<&RANGEPROPERTIES::alarmColour>("alarmcolor")
        .Saved()
        .Label("Colour of the marker outside")
        .Says("Colour of the marker while the value is outside of the permitted range, `0x00bbggrr`."),
    CONNECTION_KEYWORD,
    FUNCTION_KEYWORD,
    Functions<&RANGEPROPERTIES::lowFunctions>("function1")
        .Label("Function of the lower end")
        .Says("Device parameters that hold `low`, joined by `;`."),
    Functions<&RANGEPROPERTIES::highFunctions>("function2")
        .Label("Function of the upper end")
        .Says("Device parameters that hold `high`, joined by `;`."),
    EndOf<&logic::PermittedEnds::high>("high")
        .Label("Permitted up to")
        .Says("Upper end of the permitted range; empty for the end of `properties`. It is limited to `low` "
              "and to `properties`, and sent to `function2`."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Colour<&RANGEPROPERTIES::lineColour>("linecolor")
        .Saved()
        .Label("Colour of the lines")
        .Says("Colour of the marker inside the permitted range and of the ends of that, `0x00bbggrr`."),
    EndOf<&logic::PermittedEnds::low>("low")
        .Label("Permitted from")
        .Says("Lower end of the permitted range; empty for the end of `properties`. It is limited to `high` "
              "and to `properties`, and sent to `function1`."),
    RANGE_KEYWORD.Parts(RANGE_PARTS<1, 0>)
        .Says("Minimum and maximum (whole numbers) and value, joined by `,`; the value, or maximum and "
              "value, may be left out. Sends the value. With a minimum above the maximum the track is "
              "turned over."),
    Colour<&RANGEPROPERTIES::rangeColour>("rangecolor")
        .Saved()
        .Label("Colour of the range")
        .Says("Colour of the permitted range, `0x00bbggrr`."),
    Words<"none,ends,value,all", &RANGEPROPERTIES::settable, &RANGEPROPERTIES::LookChanged>("settable")
        .Saved()
        .Label("What can be dragged")
        .Says("What can be dragged: `none`, the `ends` of the permitted range, which never cross, the "
              "`value`, which keys and the wheel step by 1 then, with Shift the wheel by a tenth, or `all`."),
    Property<&RANGEPROPERTIES::State, nullptr>("state").Says(
        "Where the value is: -1 below the permitted range, 0 inside, 1 above. It can only be read, for "
        "instance by a lamp that is connected to `NAME*state`."),
    VALUE,
});

} // namespace

KeywordList RANGEPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

template <auto End>
int RANGEPROPERTIES::EndKeyword(VALUERECORD& record) {
    constexpr bool isLow = End == &logic::PermittedEnds::low;
    if (record.command == COMMAND_GET) {
        const bool isNone = !(ends.*End) && record.datatype == DATATYPE_TEXT;
        return isNone ? a_AnswerText(&record, "") : a_AnswerFloat(&record, isLow ? Ends().low : Ends().high);
    }
    const auto text = record.datatype == DATATYPE_TEXT ? TextToSet(&record) : std::nullopt;
    float read = 0;
    const bool isNone = text && text->empty();
    if (record.command != COMMAND_SET || (!isNone && a_ReadFloat(&record, &read) == 0)) {
        return 0;
    }
    const std::optional<float> number = isNone ? std::nullopt : std::optional(read);
    logic::PermittedEnds taken = ends;
    if constexpr (isLow) {
        taken.SetLow(number);
    } else {
        taken.SetHigh(number);
    }
    TakeEnds(taken);
    return 1;
}

void RANGEPROPERTIES::SetDefaults() {
    interval = 100;
    lowFunctions.Attach(*this);
    highFunctions.Attach(*this);
}

// Value and ends

bool RANGEPROPERTIES::TakeEnds(const logic::PermittedEnds& taken) {
    const logic::PermittedEnds before = std::exchange(ends, taken);
    const bool isLowNew = taken.low != before.low;
    const bool isHighNew = taken.high != before.high;
    if (isLowNew || isHighNew) {
        Redraw();
    }
    logic::Permitted sent = Ends();
    if (isLowNew && taken.low) {
        a_SendRequest(lowFunctions.Requests(), COMMAND_SET, DATATYPE_FLOAT, &sent.low, nullptr);
    }
    if (isHighNew && taken.high) {
        a_SendRequest(highFunctions.Requests(), COMMAND_SET, DATATYPE_FLOAT, &sent.high, nullptr);
    }
    return isLowNew || isHighNew;
}

void RANGEPROPERTIES::Send() {
    float sent = value;
    a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &sent, nullptr);
}

void RANGEPROPERTIES::Apply() {
    logic::Permitted sent = Ends();
    Send();
    a_SendRequest(lowFunctions.Requests(), COMMAND_SET, DATATYPE_FLOAT, &sent.low, nullptr);
    a_SendRequest(highFunctions.Requests(), COMMAND_SET, DATATYPE_FLOAT, &sent.high, nullptr);
}

// What is shown of a number beyond the range, or of ends that have changed places, is marked: it is not what
// is there.
void RANGEPROPERTIES::Poll() {
    float polled = value;
    logic::Permitted asked = Ends();
    int result = Ask(requests, DATATYPE_FLOAT, &polled);
    const int lowResult = Ask(lowFunctions.Requests(), DATATYPE_FLOAT, &asked.low);
    const int highResult = Ask(highFunctions.Requests(), DATATYPE_FLOAT, &asked.high);
    logic::PermittedEnds polledEnds = ends;
    if (lowResult == REQUEST_DELIVERED) {
        polledEnds.low = Limited(asked.low);
    }
    if (highResult == REQUEST_DELIVERED) {
        polledEnds.high = Limited(asked.high);
    }
    polledEnds.SetLow(polledEnds.low);
    const float limited = result == REQUEST_DELIVERED ? Limited(polled) : value;
    if (limited != value || polledEnds.low != ends.low || polledEnds.high != ends.high) {
        value = limited;
        ends = polledEnds;
        Redraw();
    }
    const auto isOther = [](const REQUESTLIST& list, int answer, float shown, float held) {
        return !list.empty() && answer <= REQUEST_DELIVERED && shown != held;
    };
    if (isOther(requests, result, value, polled) ||
        isOther(lowFunctions.Requests(), lowResult, Ends().low, asked.low) ||
        isOther(highFunctions.Requests(), highResult, Ends().high, asked.high)) {
        result = std::max(result, REQUEST_DISAGREE);
    }
    ShowPollResult(std::max({result, lowResult, highResult}));
}

// Drawing

namespace {

// The client area along and across the track.
struct Layout {
    explicit Layout(const RECT& client)
        : isHorizontal(client.right > client.bottom),
          length(isHorizontal ? client.right : client.bottom),
          breadth(isHorizontal ? client.bottom : client.right) {}

    RECT Area(int from, int to, int top, int bottom) const {
        return isHorizontal ? RECT{from, top, to, bottom} : RECT{top, length - to, bottom, length - from};
    }

    bool isHorizontal;
    int length, breadth;
};

Layout LayoutOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return Layout(client);
}

COLORREF Lighter(COLORREF colour) {
    const auto half = [](int part) { return part + (255 - part) / 3; };
    return RGB(half(GetRValue(colour)), half(GetGValue(colour)), half(GetBValue(colour)));
}

} // namespace

void RANGEPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const Layout layout(client);
    const logic::RangeTrack track{layout.length, minimum, maximum};
    const int thickness = std::clamp(layout.breadth / 3, 2, 10);
    const int top = (layout.breadth - thickness) / 2;
    const int bottom = top + thickness;
    // A groove, lit from above left.
    const RECT groove = layout.Area(0, layout.length, top, bottom);
    FillGround(dc, RIM_COLOUR, groove);
    FillGround(dc, GROOVE_SHADE, {groove.left, groove.top, groove.right - 1, groove.bottom - 1});
    FillGround(dc, GROOVE_COLOUR, {groove.left + 1, groove.top + 1, groove.right - 1, groove.bottom - 1});

    const logic::Permitted permitted = Ends();
    const auto [from, to] = std::minmax({track.PlaceOf(permitted.low), track.PlaceOf(permitted.high)});
    const RECT band = layout.Area(from, to + 1, top + 1, bottom - 1);
    FillGround(dc, rangeColour, band);
    const bool isThin = !layout.isHorizontal; // the light falls on the left edge of an upright track
    FillGround(dc, Lighter(rangeColour),
               {band.left, band.top, isThin ? std::min(band.left + 1, band.right) : band.right,
                isThin ? band.bottom : std::min(band.top + 1, band.bottom)});
    for (const int end : {from, to}) {
        FillGround(dc, lineColour, layout.Area(end, end + 1, top, layout.breadth - 2));
        if (MayMoveEnds()) { // a foot to take it by
            FillGround(dc, lineColour, layout.Area(end - 2, end + 3, layout.breadth - 5, layout.breadth - 1));
        }
    }

    const int marker = track.PlaceOf(value);
    const COLORREF colour = State() != 0 ? alarmColour : lineColour;
    FillGround(dc, GROOVE_SHADE,
               layout.Area(marker - MARKER_REACH, marker + MARKER_REACH + 1, 0, bottom + 2));
    FillGround(dc, colour, layout.Area(marker - MARKER_REACH + 1, marker + MARKER_REACH, 1, bottom + 1));
}

// Of the line of the marker.
std::optional<logic::Travel> RANGEPROPERTIES::TravelIn(SIZE client) const {
    const Layout layout({0, 0, client.cx, client.cy});
    const logic::RangeTrack track{layout.length, minimum, maximum};
    return logic::Travel{.range = {static_cast<float>(minimum), static_cast<float>(maximum)},
                         .begin = layout.isHorizontal ? track.Margin() : layout.length - 1 - track.Margin(),
                         .length = track.Way(),
                         .isHorizontal = layout.isHorizontal,
                         .isBackwards = !layout.isHorizontal};
}

// Input

int RANGEPROPERTIES::PixelAt(POINT point) const {
    const Layout layout = LayoutOf(window);
    return layout.isHorizontal ? point.x : layout.length - 1 - point.y;
}

bool RANGEPROPERTIES::BeginDrag(POINT point) {
    const Layout layout = LayoutOf(window);
    const logic::RangeTrack track{layout.length, minimum, maximum};
    const int across = layout.isHorizontal ? point.y : point.x;
    const int pixel = PixelAt(point);
    const logic::Permitted permitted = Ends();
    held_ = logic::PartAt({pixel, across < (layout.breadth + 1) / 2, MayMoveEnds(), MayMoveValue()}, track,
                          permitted, value);
    const float number = held_ == logic::RangePart::Low    ? permitted.low
                         : held_ == logic::RangePart::High ? permitted.high
                                                           : value;
    grip_ = pixel - track.PlaceOf(number);
    return held_ != logic::RangePart::None;
}

void RANGEPROPERTIES::MoveDrag(POINT point) {
    const logic::RangeTrack track{LayoutOf(window).length, minimum, maximum};
    const int pixel = PixelAt(point) - grip_;
    const logic::Permitted permitted = Ends();
    logic::PermittedEnds taken = ends;
    float number = value;
    // What stays at its pixel keeps its number, which may be one between two pixels.
    if (held_ == logic::RangePart::Low && pixel != track.PlaceOf(permitted.low)) {
        taken.low = std::min(track.NumberAt(pixel), permitted.high);
    } else if (held_ == logic::RangePart::High && pixel != track.PlaceOf(permitted.high)) {
        taken.high = std::max(track.NumberAt(pixel), permitted.low);
    } else if (held_ == logic::RangePart::Value && pixel != track.PlaceOf(value)) {
        number = track.NumberAt(pixel);
    }
    if (TakeEnds(taken) || TakeValue(number)) {
        UpdateWindow(window);
    }
}

namespace {

void Step(const RANGEPROPERTIES& range, logic::FaderKey key) {
    const logic::FaderRange limits{std::min(range.minimum, range.maximum),
                                   std::max(range.minimum, range.maximum), 1.0F};
    if (const auto stepped = logic::StepFader(range.value, key, limits)) {
        range.SetThroughMessage(DATATYPE_FLOAT, *stepped);
    }
}

void Turn(const RANGEPROPERTIES& range, WheelTurn wheel) {
    const logic::SpinRange limits{static_cast<float>(range.minimum), static_cast<float>(range.maximum)};
    range.SetThroughMessage(DATATYPE_FLOAT, logic::StepSpin(range.value, wheel.steps, wheel.Size(1), limits));
}

LRESULT CALLBACK RangeProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const RANGEPROPERTIES& range = *PropertiesOf<RANGEPROPERTIES>(window);
    if (range.settable == Settable::Nothing) {
        return IndicatorProc(window, message, wParam, lParam);
    }
    if (message == WM_KEYDOWN || message == WM_MOUSEWHEEL) {
        if (PassInput(range, message, wParam, lParam) || !range.MayMoveValue()) {
            return 0;
        }
        if (message == WM_MOUSEWHEEL) {
            Turn(range, WheelTurn(wParam));
        } else if (wParam >= VK_PRIOR && wParam <= VK_DOWN) {
            Step(range, static_cast<logic::FaderKey>(wParam));
        }
        return 0;
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation rangeControl{
    .create = CreateProperties<RANGEPROPERTIES>,
    .procedure = RangeProc,
    .purpose = "A number as a marker on a track with a permitted range, in an alarm colour while it is "
               "outside. Wider than high it is horizontal.",
    .dialog = LAID_OUT};
