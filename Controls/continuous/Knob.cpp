// KNOB: one float value as a rotary knob that is dragged horizontally or turned by keys, sent to everything
// it is bound to and polled back. In relative mode it moves several connected controls, each with its own
// offset. Values are in the unit of the bound parameter, interval in milliseconds, geometry in pixels.

#include "Controls/OSMIRControlLib.h"
#include "Controls/dialog/ParameterDialog.h"
#include "Controls/families/RelativeMode.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/KnobLogic.h"
#include "logic/text/Numbers.h"

#include <utility>

class KNOBPROPERTIES : public CONTROLPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    const char* DefaultProperties() const override { return "bitmap=.\\Controls\\Knob.bmp"; }
    void SetDefaults() override { interval = 1000; }
    int PreferredWidth() const override;
    bool IsRelative() const override { return relativeMode.relative != 0; }
    void BindingsChanged() override { relativeMode.Rebuild(*this, value); }
    void BitmapChanged();
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool BeginDrag(POINT point) override;
    void MoveDrag(POINT point) override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    logic::KnobRange Range() const { return {minimum, maximum, resolution}; }
    float Limited(float number) const;
    // Limits the value to the range and, if it is a new one, shows and sends it. Returns 0 when nothing
    // changed.
    int SetValue(float newValue);
    // "minimum,maximum,value" or the beginning of it. Returns 0 when unreadable.
    int LoadProperties(std::string_view text);
    void Send();

    BitmapProperty face; // gives the window its size
    int minimum = 0;
    int maximum = 100;
    int dragOrigin = 0; // x of the last mouse position
    float value = 0.0F;
    float resolution =
        0.5F; // keys step by it, drags round to it; 0: continuous, and the step keys do nothing
    RelativeMode relativeMode;
};

// Keyword handlers

namespace {

KNOBPROPERTIES& Knob(HOSTINFO* object) {
    return *static_cast<KNOBPROPERTIES*>(object);
}

int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    KNOBPROPERTIES& knob = Knob(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerFloat(record, knob.value);
    }
    float value = 0;
    if (record->command != COMMAND_SET || a_ReadFloat(record, &value) == 0) {
        return 0;
    }
    value = knob.Limited(value);
    if (record->datatype == DATATYPE_FLOAT) {
        *static_cast<float*>(record->data) = value; // the caller learns the limit
    }
    return knob.SetValue(value);
}

int PropertiesKeyword(VALUERECORD* record, HOSTINFO* object) {
    KNOBPROPERTIES& knob = Knob(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, logic::RangeAndValueText(knob.minimum, knob.maximum, knob.value).c_str());
    }
    const auto text = TextToSet(record);
    return text ? knob.LoadProperties(*text) : 0;
}

int RelativeKeyword(VALUERECORD* record, HOSTINFO* object) {
    return RelativeModeKeyword(record, Knob(object), Knob(object).relativeMode.relative);
}

int SetOffsets(const VALUERECORD* record, KNOBPROPERTIES& knob) {
    const auto text = TextToSet(record);
    auto offsets = text ? logic::ParseFloats(*text) : std::nullopt;
    if (!offsets || !HasRoomForOffsets(knob, offsets->size())) {
        return 0;
    }
    knob.relativeMode.Load(std::move(*offsets));
    return 1;
}

int ValuesKeyword(VALUERECORD* record, HOSTINFO* object) {
    KNOBPROPERTIES& knob = Knob(object);
    if (record->command != COMMAND_GET) {
        return SetOffsets(record, knob);
    }
    std::string text;
    for (const float offset : knob.relativeMode.offsets) {
        text += (text.empty() ? "" : ",") + logic::FormatFloat(offset);
    }
    return a_AnswerText(record, text.c_str());
}

// A copy of the offsets, each with a comma behind it; nothing when the knob is absolute, and nothing to load
// then.
int ValuesCopyKeyword(VALUERECORD* record, HOSTINFO* object) {
    KNOBPROPERTIES& knob = Knob(object);
    if (record->command != COMMAND_GET) {
        return knob.relativeMode.relative != 0 ? SetOffsets(record, knob) : IgnoredKeyword(record, object);
    }
    std::string text;
    if (knob.relativeMode.relative != 0) {
        for (const float offset : knob.relativeMode.offsets) {
            text += logic::FormatFloat(offset) + ",";
        }
    }
    return a_AnswerText(record, text.c_str());
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"bitmap", BitmapKeyword<&KNOBPROPERTIES::face>, KEYWORD_SAVED | KEYWORD_FILE},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", IgnoredKeyword, 0},
    {"level", IgnoredKeyword, 0},
    {"properties", PropertiesKeyword, KEYWORD_SAVED},
    {"relative", RelativeKeyword, KEYWORD_SAVED},
    {"resolution", FloatKeyword<&KNOBPROPERTIES::resolution>, KEYWORD_SAVED},
    {"value", ValueKeyword, 0},
    {"values", ValuesKeyword, KEYWORD_SAVED},
    {"valuescopy", ValuesCopyKeyword, KEYWORD_SAVED},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* KNOBPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// Value

int l_SendRequest(KNOBPROPERTIES* object, int command, int datatype, long value, int* result) {
    return SendByMode(object->relativeMode, *object, object->value, command, datatype, value, result);
}

int l_SendRequest(HOSTINFO* object, int command, int datatype, long value, int* result) {
    return RequestBy<KNOBPROPERTIES>(object, command, datatype, value, result);
}

// Of a reversed range, which leaves only its ends, each one is kept: a value that is saved comes back.
float KNOBPROPERTIES::Limited(float number) const {
    const auto low = static_cast<float>(minimum);
    const auto high = static_cast<float>(maximum);
    return number == low || number == high ? number : logic::Clamp(number, low, high);
}

void KNOBPROPERTIES::Send() {
    float sent = value;
    l_SendRequest(this, COMMAND_SET, DATATYPE_FLOAT, reinterpret_cast<long>(&sent), nullptr);
}

int KNOBPROPERTIES::SetValue(float newValue) {
    if (newValue == value) {
        return 0;
    }
    value = newValue;
    Redraw();
    Send();
    return 1;
}

int KNOBPROPERTIES::LoadProperties(std::string_view text) {
    const auto read = logic::ParseRangeAndValue(text);
    if (!read) {
        return 0;
    }
    minimum = read->minimum;
    maximum = read->maximum.value_or(maximum);
    value = Limited(read->value.value_or(value));
    Redraw();
    Send();
    return 1;
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

// Drawing

int KNOBPROPERTIES::PreferredWidth() const {
    return face.Get() != nullptr ? face.Get()->Width() : CONTROLPROPERTIES::PreferredWidth();
}

void KNOBPROPERTIES::BitmapChanged() {
    if (const OSMIRBitmap* bitmap = face.Get(); bitmap != nullptr) {
        Resize(bitmap->Width(), bitmap->Height());
    }
    Redraw();
}

void KNOBPROPERTIES::Draw(HDC dc, const RECT&) const {
    if (face.Get() == nullptr) {
        return;
    }
    face.Get()->Draw(dc, 0, 0);
    const logic::DotRectangle dot = logic::KnobDot(value, Range());
    // Round without its corners. Ellipses and arcs of that size look different on each system.
    const auto fill = [dc, &dot](COLORREF colour, RECT area) {
        OffsetRect(&area, dot.left, dot.top);
        SetDCBrushColor(dc, colour);
        FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    };
    const COLORREF red = HasFocus() ? RGB(255, 0, 0) : RGB(192, 0, 0);
    fill(red, {1, 0, 4, 5});
    fill(red, {0, 1, 5, 4});
    const COLORREF highlight = GetSysColor(COLOR_BTNHIGHLIGHT);
    fill(highlight, {1, 4, 4, 5});
    fill(highlight, {4, 1, 5, 4});
}

// Input

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

std::optional<logic::KnobKey> KeyOf(WPARAM key) {
    switch (key) {
    case VK_PRIOR:
        return logic::KnobKey::PageUp;
    case VK_NEXT:
        return logic::KnobKey::PageDown;
    case VK_END:
        return logic::KnobKey::End;
    case VK_HOME:
        return logic::KnobKey::Home;
    case VK_LEFT:
        return logic::KnobKey::Left;
    case VK_RIGHT:
        return logic::KnobKey::Right;
    default:
        return std::nullopt;
    }
}

void KeyDown(KNOBPROPERTIES& knob, WPARAM wParam, LPARAM lParam) {
    const bool isPanels = PassInput(knob, WM_KEYDOWN, wParam, lParam);
    const auto key = isPanels ? std::nullopt : KeyOf(wParam);
    const auto stepped = key ? logic::StepKnob(knob.value, *key, knob.Range()) : std::nullopt;
    if (stepped) {
        float value = *stepped;
        VALUERECORD record{COMMAND_SET, 0, DATATYPE_FLOAT, 0, &value, nullptr, 0};
        SendMessageA(knob.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    }
    PaintControl(knob); // deliberately at once, and no key goes on to default processing
}

LRESULT CALLBACK KnobProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN) {
        KeyDown(*PropertiesOf<KNOBPROPERTIES>(window), wParam, lParam);
        return 0;
    }
    if (message == WM_SETFOCUS) {
        PropertiesOf<KNOBPROPERTIES>(window)->Redraw(); // the dot shows it
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_MAXIMUM, "Maximum Value", FieldKind::Integer, "properties", 1, 2},
    {IDC_MINIMUM, "Minimum Value", FieldKind::Integer, "properties", 0, 2},
    {IDC_RESOLUTION, "Resolution", FieldKind::Float, "resolution"},
};
constexpr DialogOption OPTIONS[] = {
    {IDC_ABSOLUTE, "relative", "0"},
    {IDC_RELATIVE, "relative", "1"},
};
constexpr ParameterDialog DIALOG{.resource = IDD_KNOB, .edits = EDITS, .options = OPTIONS};

} // namespace

extern const ControlImplementation knobControl{
    .create = CreateProperties<KNOBPROPERTIES>, .procedure = KnobProc, .dialog = &DIALOG};
