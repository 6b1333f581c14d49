// KNOB: one float value as a rotary knob that is dragged horizontally or turned by wheel and keys, sent to
// everything it is bound to and polled back. In relative mode it moves several connected controls, each with
// its own offset. Values are in the unit of the bound parameter, interval in milliseconds, geometry in
// pixels.

#include "Controls/OSMIRControlLib.h"
#include "Controls/drawing/Shading.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/families/RelativeMode.h"
#include "Controls/framework/Keywords.h"
#include "Controls/framework/WheelTurn.h"
#include "Controls/resources/resource.h"
#include "logic/controls/KnobLogic.h"
#include "logic/controls/SpinLogic.h"
#include "logic/text/Numbers.h"

#include <cmath>

class KNOBPROPERTIES : public RANGEDPROPERTIES {
public:
    KNOBPROPERTIES() : RANGEDPROPERTIES(0, 100) { resolution = 0.5F; }
    KeywordList Keywords() const override;
    const char* DefaultProperties() const override { return "bitmap=.\\Controls\\Knob.bmp"; }
    void SetDefaults() override { interval = 1000; }
    bool IsRelative() const override { return relativeMode.relative != 0; }
    void BindingsChanged() override { relativeMode.Rebuild(*this, value); }
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool BeginDrag(POINT point) override;
    void MoveDrag(POINT point) override;
    void Send() override;

    logic::KnobRange Range() const { return {minimum, maximum, resolution}; }

    int dragOrigin = 0; // x of the last mouse position
    RelativeMode relativeMode;
};

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&KNOBPROPERTIES::ValueKeyword>("value", KeywordKind::Number)
                              .Says("The number. Set, it is limited to the range and, unless it is the old "
                                    "one, sent to everything the knob is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Picture<&KNOBPROPERTIES::face>("bitmap").Saved().Says(
        "Image file of the knob's face, which also gives the knob its size."),
    CONNECTION_KEYWORD,
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    RANGE_KEYWORD.Parts(RANGE_PARTS<2, 2>)
        .Says(
            "Minimum and maximum (whole numbers) and value, joined by `,`; the value, or maximum and value, "
            "may be left out. Sends the value."),
    Relative<&KNOBPROPERTIES::relativeMode>("relative")
        .Says("Not 0: it moves every connected control by its own distance, kept in `values`, instead of "
              "setting all to one value. It has then at most 292 functions and connections."),
    Number<&KNOBPROPERTIES::resolution>("resolution")
        .Saved()
        .Label("Resolution")
        .Items(IDC_RESOLUTION)
        .Says("Step of the arrow keys and the wheel, with Shift a tenth; Page Up and Page Down go ten steps, "
              "drags "
              "are rounded to it; 0 for no steps."),
    VALUE,
    Offsets<&KNOBPROPERTIES::relativeMode>("values").Says(
        "Distances of the connected controls from the knob in relative mode, joined by `,`, in the order "
        "of functions and connections."),
    OffsetsCopy<&KNOBPROPERTIES::relativeMode>("valuescopy")
        .Says("The same as `values` with a `,` behind each; empty, and nothing to load, unless the knob is "
              "relative."),
});

} // namespace

KeywordList KNOBPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// Value

int l_SendRequest(KNOBPROPERTIES* object, int command, int datatype, long value, int* result) {
    return SendByMode(object->relativeMode, *object, object->value, command, datatype, value, result);
}

int l_SendRequest(HOSTINFO* object, int command, int datatype, long value, int* result) {
    return RequestBy<KNOBPROPERTIES>(object, command, datatype, value, result);
}

void KNOBPROPERTIES::Send() {
    float sent = value;
    l_SendRequest(this, COMMAND_SET, DATATYPE_FLOAT, reinterpret_cast<long>(&sent), nullptr);
}

void KNOBPROPERTIES::Poll() {
    if (requests.empty() && lastPollResult == REQUEST_UNCHANGED) {
        return;
    }
    float polled = value;
    int result = REQUEST_UNCHANGED;
    l_SendRequest(this, COMMAND_GET, DATATYPE_FLOAT, reinterpret_cast<long>(&polled), &result);
    if (result == REQUEST_DELIVERED) {
        value = polled;
        Redraw();
    }
    ShowPollResult(result);
}

// Drawing and input

void KNOBPROPERTIES::Draw(HDC dc, const RECT&) const {
    if (face.Get() == nullptr) {
        return;
    }
    face.Get()->Draw(dc, 0, 0);
    const logic::DotRectangle dot = logic::KnobDot(value, Range(), face.Taken().percent);
    DrawDot(dc, dot.left, dot.top, HasFocus() ? RGB(255, 0, 0) : RGB(192, 0, 0), dot.right - dot.left);
}

bool KNOBPROPERTIES::BeginDrag(POINT point) {
    dragOrigin = point.x;
    return true;
}

void KNOBPROPERTIES::MoveDrag(POINT point) {
    const std::int16_t dx = logic::DragDistance(point.x, dragOrigin);
    if (dx == 0) {
        return;
    }
    dragOrigin = point.x;
    value = logic::DragKnob(value, dx, Range());
    Redraw();
    UpdateWindow(window);
    Send();
}

namespace {

static_assert(static_cast<int>(logic::KnobKey::PageUp) == VK_PRIOR &&
              static_cast<int>(logic::KnobKey::Right) == VK_RIGHT);

void KeyDown(KNOBPROPERTIES& knob, WPARAM wParam, LPARAM lParam) {
    const bool isPanels = PassInput(knob, WM_KEYDOWN, wParam, lParam);
    const auto stepped = isPanels
                             ? std::nullopt
                             : logic::StepKnob(knob.value, static_cast<logic::KnobKey>(wParam), knob.Range());
    if (stepped) {
        knob.SetThroughMessage(DATATYPE_FLOAT, *stepped);
    }
    PaintControl(knob); // deliberately at once, and no key goes on to default processing
}

void Turn(const KNOBPROPERTIES& knob, WheelTurn wheel) {
    const logic::SpinRange range{static_cast<float>(knob.minimum), static_cast<float>(knob.maximum)};
    if (const float size = wheel.Size(knob.resolution); std::isfinite(size) && size != 0) {
        knob.SetThroughMessage(DATATYPE_FLOAT, logic::StepSpin(knob.value, wheel.steps, size, range));
    }
}

LRESULT CALLBACK KnobProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN) {
        KeyDown(*PropertiesOf<KNOBPROPERTIES>(window), wParam, lParam);
        return 0;
    }
    if (message == WM_MOUSEWHEEL) {
        if (const auto& knob = *PropertiesOf<KNOBPROPERTIES>(window);
            !PassInput(knob, message, wParam, lParam)) {
            Turn(knob, WheelTurn(wParam));
        }
        return 0;
    }
    if (message == WM_SETFOCUS) {
        PropertiesOf<KNOBPROPERTIES>(window)->Redraw(); // the dot shows it
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation knobControl = Implement<KNOBPROPERTIES>(
    KnobProc, IDD_KNOB, "A number as a rotary knob that is dragged sideways or turned by the wheel or keys.");
