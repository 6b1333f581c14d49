// REVMETER: one float value, or several combined, as a bar that hangs from the upper end of its range down to
// the value, as gain reduction is shown. Where it may be set it is dragged and stepped as a knob is, in
// relative mode too. Values are in the unit of the bound parameter, interval in milliseconds, geometry in
// pixels.

#include "Controls/OSMIRControlLib.h"
#include "Controls/drawing/Shading.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/families/RelativeMode.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/KnobLogic.h"
#include "logic/controls/RangeLogic.h"
#include "logic/controls/ReverseMeterLogic.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int UNLIT = 0; // parts of the image
constexpr int LIT = 1;

} // namespace

class REVMETERPROPERTIES : public RANGEDPROPERTIES {
public:
    REVMETERPROPERTIES() : RANGEDPROPERTIES(-40, 0) { resolution = 0.5F; }
    KeywordList Keywords() const override;
    void SetDefaults() override;
    int ValueDatatype() const override { return DATATYPE_FLOAT; }
    bool IsRelative() const override { return relativeMode.relative != 0; }
    void BindingsChanged() override { relativeMode.Rebuild(*this, value); }
    BitmapParts Frames() const override { return {*face.Get(), 2}; } // unlit and lit
    void Moved() override;
    float Limited(float number) const override { return logic::LimitToRange(number, minimum, maximum); }
    bool OffersApply() const override { return settable != 0; }
    void Send() override;
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    std::optional<logic::Travel> TravelIn(SIZE client) const override;
    bool BeginDrag(POINT point) override;
    void MoveDrag(POINT point) override;

    bool MovesOthers() const { return settable != 0 && IsRelative(); }
    // In rising order.
    logic::KnobRange Range() const {
        return {std::min(minimum, maximum), std::max(minimum, maximum), resolution};
    }
    int BarHeight(int height) const { return logic::HangingHeight(value, minimum, maximum, height); }

    logic::MeterCombination combine = logic::MeterCombination::Maximum;
    int settable = 0; // 1: by mouse and keys
    RelativeMode relativeMode;

private:
    int PollCombined();

    std::pair<int, int> shown_{-1, -1}; // heights of the bar and of the window when it was drawn anew
    int dragOrigin_ = 0;                // x of the last mouse position
};

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&REVMETERPROPERTIES::ValueKeyword>("value", KeywordKind::Number)
                              .Says("The number. Set, it is limited to the range and, unless it is the old "
                                    "one, sent to everything the meter is bound to. An integer that is got "
                                    "is cut off.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Picture<&REVMETERPROPERTIES::face>("bitmap").Saved().Pictures("METER_").Says(
        "Image file with the unlit and the lit bar side by side, which gives the meter its size; empty for a "
        "plain bar."),
    Words<"max,avg", &REVMETERPROPERTIES::combine>("combine")
        .Saved()
        .Label("Combine Results")
        .Items(IDC_COMBINE)
        .Says("What becomes of several answers: `max` the largest, `avg` the average."),
    CONNECTION_KEYWORD,
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    RANGE_KEYWORD.Parts(RANGE_PARTS<1, 0>)
        .Says("Both ends (whole numbers), in any order, and value, joined by `,`; the value, or the second "
              "end and the value, may be left out. The bar hangs from the greater end. Sends the value."),
    Relative<&REVMETERPROPERTIES::relativeMode>("relative")
        .With(&KEYWORDINFO::optionCount, 0) // a list, no buttons
        .OneOf("0,1")
        .Label("Relative mode")
        .Says("Not 0: while it may be set it moves every connected control by its own distance, kept in "
              "`values`, instead of setting all to one value. It has then at most 292 functions and "
              "connections."),
    Number<&REVMETERPROPERTIES::resolution>("resolution")
        .Saved()
        .Label("Resolution")
        .Items(IDC_RESOLUTION)
        .Says("Step of the arrow keys; Page Up and Page Down go ten steps, drags are rounded to it; 0 for no "
              "steps."),
    Integer<&REVMETERPROPERTIES::settable, 0, 1>("settable")
        .OneOf("0,1")
        .Saved()
        .Label("Set by mouse and keys")
        .Says("1: it is dragged sideways and stepped by keys as a knob is; 0: it only shows."),
    VALUE,
    Offsets<&REVMETERPROPERTIES::relativeMode>("values").Says(
        "Distances of the connected controls from the meter in relative mode, joined by `,`, in the order "
        "of functions and connections."),
    OffsetsCopy<&REVMETERPROPERTIES::relativeMode>("valuescopy")
        .Says("The same as `values` with a `,` behind each; empty, and nothing to load, unless the meter is "
              "relative."),
});

} // namespace

KeywordList REVMETERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void REVMETERPROPERTIES::SetDefaults() {
    interval = 100;
    DragAcceptFiles(window, TRUE);
}

// Value

int l_SendRequest(REVMETERPROPERTIES* object, int command, int datatype, long value, int* result) {
    if (!object->MovesOthers()) {
        return a_SendRequest(object->requests, command, datatype, reinterpret_cast<void*>(value), result);
    }
    return SendByMode(object->relativeMode, *object, object->value, command, datatype, value, result);
}

int l_SendRequestReverseMeter(HOSTINFO* object, int command, int datatype, long value, int* result) {
    return RequestBy<REVMETERPROPERTIES>(object, command, datatype, value, result);
}

void REVMETERPROPERTIES::Send() {
    float sent = value;
    l_SendRequest(this, COMMAND_SET, DATATYPE_FLOAT, reinterpret_cast<long>(&sent), nullptr);
}

// Redraws only when it shows.
void REVMETERPROPERTIES::Moved() {
    RECT client{};
    GetClientRect(window, &client);
    const std::pair<int, int> heights(BarHeight(client.bottom), client.bottom);
    if (std::exchange(shown_, heights) != heights) {
        Redraw();
    }
}

// Without an answer the value stays.
int REVMETERPROPERTIES::PollCombined() {
    logic::LevelAnswers answers(combine);
    int result = REQUEST_UNCHANGED;
    for (const REQUESTITEM& item : ItemsOf(requests)) {
        float answer = value;
        if (a_SendToItem(item, COMMAND_GET, DATATYPE_FLOAT, &answer) < 0) {
            result = REQUEST_UNREACHABLE;
        } else {
            answers.Take(answer);
        }
    }
    if (const auto combined = answers.Result()) {
        value = Limited(*combined);
        Moved();
    }
    return result;
}

void REVMETERPROPERTIES::Poll() {
    if (!MovesOthers()) {
        ShowPollResult(PollCombined());
        return;
    }
    float held = value;
    int result = REQUEST_UNCHANGED;
    l_SendRequest(this, COMMAND_GET, DATATYPE_FLOAT, reinterpret_cast<long>(&held), &result);
    ShowPollResult(result);
}

// Drawing and input

void REVMETERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const int bar = BarHeight(client.bottom);
    if (face.Get() != nullptr) {
        const BitmapParts parts = Frames();
        parts.Draw(dc, LIT, {0, 0, client.right, bar});
        parts.Draw(dc, UNLIT, {0, bar, client.right, client.bottom});
        return;
    }
    FillGround(dc, GROOVE_COLOUR, client);
    if (const RECT lit{0, 0, client.right, bar}; IsDark()) {
        FillGround(dc, logic::PANEL_BLUE, lit);
    } else {
        DrawShadedColumns(dc, lit, BAR_COLOUR);
    }
    SetDCBrushColor(dc, RIM_COLOUR);
    FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

std::optional<logic::Travel> REVMETERPROPERTIES::TravelIn(SIZE client) const {
    const auto lower = static_cast<float>(std::min(minimum, maximum));
    const auto upper = static_cast<float>(std::max(minimum, maximum));
    return logic::Travel{
        .range = {upper, lower}, .length = client.cy, .shown = logic::Travel::Shown::Bar, .origin = upper};
}

bool REVMETERPROPERTIES::BeginDrag(POINT point) {
    dragOrigin_ = point.x;
    return true;
}

void REVMETERPROPERTIES::MoveDrag(POINT point) {
    const std::int16_t dx = logic::DragDistance(point.x, dragOrigin_);
    if (dx == 0) {
        return;
    }
    dragOrigin_ = point.x;
    if (TakeValue(Limited(logic::DragKnob(value, dx, Range())))) {
        UpdateWindow(window);
    }
}

namespace {

LRESULT CALLBACK ReverseMeterProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const REVMETERPROPERTIES& meter = *PropertiesOf<REVMETERPROPERTIES>(window);
    if (meter.settable == 0) {
        return IndicatorProc(window, message, wParam, lParam);
    }
    if (message == WM_KEYDOWN) {
        const bool isPanels = PassInput(meter, message, wParam, lParam);
        if (const auto stepped =
                logic::StepKnob(meter.value, static_cast<logic::KnobKey>(wParam), meter.Range());
            stepped && !isPanels) {
            meter.SetThroughMessage(DATATYPE_FLOAT, *stepped);
        }
        return 0;
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation reverseMeterControl = Implement<REVMETERPROPERTIES>(
    ReverseMeterProc, LAID_OUT,
    "A number, or several combined, as a bar that hangs from the upper end of its range down to "
    "the value: gain reduction.");
