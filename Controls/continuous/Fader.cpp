// FADER: one float value as a knob on a straight track, dragged, turned by the wheel or stepped by keys, sent
// to everything it is bound to and polled back. In relative mode every connection keeps its own offset from
// the value. A fader that is wider than high is horizontal, any other vertical. Values are in the unit of the
// bound parameter, interval in milliseconds, geometry in pixels.

#include "Controls/dialog/ParameterDialog.h"
#include "Controls/drawing/BitmapParts.h"
#include "Controls/drawing/Shading.h"
#include "Controls/families/RemoteOffsets.h"
#include "Controls/families/Tooltip.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/FaderLogic.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::size_t RESOLUTION_LENGTH = 5;
constexpr int MAXIMUM_KNOB_HEIGHT = 16384; // as large as an image can be
constexpr int TIP_BELOW = 21;              // of a tooltip from the mouse that drags the knob
constexpr int HOVER_BELOW = 16;            // of the tooltip's area from a fader with a horizontal image
constexpr int TRACK = 0;                   // parts of the image
constexpr int KNOB = 1;

} // namespace

class FADERPROPERTIES : public CONTROLPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    LRESULT OnSaveToListCtrl(WPARAM wParam, LPARAM listView) override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    void SetDefaults() override;
    bool IsRelative() const override { return relative != 0; }
    void BindingsChanged() override { offsets.Rebuild(relative != 0, *this, value); }
    int PreferredWidth() const override;
    void BitmapChanged();
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool BeginDrag(POINT point) override;
    void MoveDrag(POINT point) override;
    void EndDrag() override;
    void CancelDrag() override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    logic::FaderRange Range() const { return {minimum, maximum, resolution}; }
    bool HasHorizontalImage() const {
        return face.Get() != nullptr && face.Get()->Width() > face.Get()->Height();
    }
    BitmapParts Parts() const;
    // Moves the knob to where its value is.
    void PlaceKnob();
    void ShapeChanged();
    // Takes a value that is within the range already and, if it is a new one, shows and sends it. Returns 0
    // when nothing changed.
    int TakeValue(float newValue);
    void Send();
    std::string TipText() const { return logic::FormatFloatAs(fmt, value); }

    float value = 0.0F;
    float resolution = 0.0F; // step size; 0: continuous, and the keys and the wheel that step do nothing
    int setValue = 0;        // what the space bar sets
    int knobHeight = 22;     // length of the knob along the travel
    logic::FaderKnob knob;
    int minimum = -80;
    int maximum = 0;
    int relative = 0;      // 1: relative mode
    std::string fmt;       // printf format of the value in the tooltip; empty: no tooltip
    RemoteOffsets offsets; // relative mode
    BitmapProperty face;   // track and knob; gives the window its size
    Tooltip tooltip;
};

// Keyword handlers

namespace {

FADERPROPERTIES& Fader(HOSTINFO* object) {
    return *static_cast<FADERPROPERTIES*>(object);
}

int AnswerValue(VALUERECORD* record, float value) {
    if (record->data == nullptr) {
        return 0;
    }
    if (record->datatype == DATATYPE_INTEGER) {
        auto& held = *static_cast<int*>(record->data);
        if (static_cast<float>(held) == value) { // deliberately with the fraction: 3 is not 3.5
            return 0;
        }
        held = logic::TruncateToInteger(value);
        return 1;
    }
    if (record->datatype == DATATYPE_FLOAT &&
        std::fabs(value - *static_cast<const float*>(record->data)) < 0.00001F) {
        return 0;
    }
    return a_AnswerFloat(record, value);
}

// The three datatypes deliberately differ in what becomes of a value beyond the range: only a float shows the
// not-equal mark, and only a text learns the limit.
int SetFaderValue(VALUERECORD* record, FADERPROPERTIES& fader) {
    if (record->datatype == DATATYPE_INTEGER && record->data != nullptr) {
        const int value = *static_cast<const int*>(record->data);
        return fader.TakeValue(static_cast<float>(logic::LimitFaderInteger(value, fader.Range())));
    }
    float value = 0;
    if (a_ReadFloat(record, &value) == 0) {
        return 0;
    }
    const logic::LimitedValue limited = logic::LimitFader(value, fader.Range());
    if (limited.outside && record->datatype == DATATYPE_TEXT) {
        std::snprintf(static_cast<char*>(record->data), TEXT_SIZE, "%s",
                      logic::FormatFixed(static_cast<double>(limited.value), 6).c_str());
    } else if (limited.outside) {
        fader.ShowNotEqual(true);
    }
    return fader.TakeValue(limited.value);
}

int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    switch (record->command) {
    case COMMAND_GET:
        return AnswerValue(record, Fader(object).value);
    case COMMAND_SET:
        return SetFaderValue(record, Fader(object));
    default:
        return 0;
    }
}

int PropertiesKeyword(VALUERECORD* record, HOSTINFO* object) {
    FADERPROPERTIES& fader = Fader(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record,
                            logic::RangeAndValueText(fader.minimum, fader.maximum, fader.value).c_str());
    }
    const auto text = TextToSet(record);
    const auto read = text ? logic::ParseRangeAndValue(*text) : std::nullopt;
    if (!read) {
        return 0;
    }
    fader.minimum = read->minimum;
    fader.maximum = read->maximum.value_or(fader.maximum);
    fader.value = read->value.value_or(fader.value); // as it is, even beyond the range
    fader.PlaceKnob();
    fader.Send();
    return 1;
}

// A file gives five characters back. What they cannot say of a number is refused: it would not return.
bool IsShort(float number) {
    return logic::ParseWholeFloat(logic::FormatFloat(number).substr(0, RESOLUTION_LENGTH)) == number;
}

int ResolutionKeyword(VALUERECORD* record, HOSTINFO* object) {
    float number = 0;
    if (record->command == COMMAND_SET && (a_ReadFloat(record, &number) == 0 || !IsShort(number))) {
        return 0;
    }
    return FloatKeyword<&FADERPROPERTIES::resolution>(record, object);
}

int RelativeKeyword(VALUERECORD* record, HOSTINFO* object) {
    return RelativeModeKeyword(record, Fader(object), Fader(object).relative);
}

// In absolute mode there are no offsets, and those that are loaded are ignored.
int OffsetsKeyword(VALUERECORD* record, HOSTINFO* object, float logic::OffsetRecord::*number,
                   std::size_t step) {
    FADERPROPERTIES& fader = Fader(object);
    return fader.relative != 0 ? fader.offsets.Keyword(record, fader, number, step)
                               : IgnoredKeyword(record, object);
}

int ValuesKeyword(VALUERECORD* record, HOSTINFO* object) {
    return OffsetsKeyword(record, object, &logic::OffsetRecord::offset, 1);
}

// Deliberately takes only every other number of a text that is written like that of `values`.
int ValuesCopyKeyword(VALUERECORD* record, HOSTINFO* object) {
    return OffsetsKeyword(record, object, &logic::OffsetRecord::remote, 2);
}

constexpr KEYWORDHANDLER KNOB_HEIGHT = IntegerKeyword<&FADERPROPERTIES::knobHeight, 1, MAXIMUM_KNOB_HEIGHT>;

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"bitmap", BitmapKeyword<&FADERPROPERTIES::face>, KEYWORD_SAVED | KEYWORD_FILE},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"fmt", FloatFormatKeyword<&FADERPROPERTIES::fmt>, KEYWORD_SAVED},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"knobheight", Notifying<KNOB_HEIGHT, &FADERPROPERTIES::ShapeChanged>, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"properties", PropertiesKeyword, KEYWORD_SAVED},
    {"relative", RelativeKeyword, KEYWORD_SAVED},
    {"resolution", ResolutionKeyword, KEYWORD_SAVED},
    {"setvalue", IntegerKeyword<&FADERPROPERTIES::setValue>, KEYWORD_SAVED},
    {"value", ValueKeyword, 0},
    {"values", ValuesKeyword, KEYWORD_SAVED},
    {"valuescopy", ValuesCopyKeyword, KEYWORD_SAVED},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* FADERPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// Deliberately with the rows that are not saved.
LRESULT FADERPROPERTIES::OnSaveToListCtrl(WPARAM, LPARAM listView) {
    return a_ListProperties(this, KEYWORDS, reinterpret_cast<HWND>(listView), true);
}

void FADERPROPERTIES::SetDefaults() {
    interval = 100;
    PlaceKnob();
    tooltip.AttachRelayed(*this);
    DragAcceptFiles(window, TRUE);
}

// Value

int FADERPROPERTIES::TakeValue(float newValue) {
    if (newValue == value) {
        return 0;
    }
    value = newValue;
    PlaceKnob();
    Send();
    return 1;
}

void FADERPROPERTIES::Send() {
    if (relative != 0) {
        offsets.Send(*this, value, COMMAND_SET);
    } else {
        float sent = value;
        a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &sent, nullptr);
    }
}

LRESULT FADERPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    if (dragging) {
        return 0;
    }
    CONTROLPROPERTIES::OnTimer(timer, lParam);
    return 1;
}

void FADERPROPERTIES::Poll() {
    if (requests.empty() && !notEqual && lastPollResult == REQUEST_UNCHANGED) {
        return;
    }
    if (relative != 0) {
        offsets.Send(*this, value, COMMAND_GET);
        ShowPollResult(REQUEST_UNCHANGED); // each connection has its own value, so none of them differs
        return;
    }
    float polled = value;
    const int result = Ask(requests, DATATYPE_FLOAT, &polled);
    if (result != REQUEST_DELIVERED) {
        ShowPollResult(result);
        return;
    }
    lastPollResult = result;
    const logic::LimitedValue limited = logic::LimitFader(polled, Range());
    value = limited.value;
    ShowNotEqual(limited.outside);
    PlaceKnob();
}

// Layout

BitmapParts FADERPROPERTIES::Parts() const {
    return {*face.Get(), 2, HasHorizontalImage() ? BitmapParts::Stacked : BitmapParts::SideBySide};
}

void FADERPROPERTIES::PlaceKnob() {
    RECT client{};
    GetClientRect(window, &client);
    if (knob.Place(value, Range(), {client.right, client.bottom, knobHeight})) {
        Redraw();
    }
}

void FADERPROPERTIES::ShapeChanged() {
    PlaceKnob();
    Redraw();
}

int FADERPROPERTIES::PreferredWidth() const {
    return face.Get() != nullptr ? Parts().Width() : CONTROLPROPERTIES::PreferredWidth();
}

void FADERPROPERTIES::BitmapChanged() {
    if (face.Get() != nullptr) {
        Resize(Parts().Width(), Parts().Height());
    }
    ShapeChanged();
}

// Drawing

namespace {

// Without an image a horizontal fader deliberately looks like a vertical one, but brighter.
void DrawPlainFader(HDC dc, const logic::FaderKnob& knob) {
    const logic::FaderShape& shape = knob.Shape();
    const int middle = shape.width / 2;
    const RECT slot{middle - 1, shape.knobHeight / 2, middle + 1, shape.height - shape.knobHeight / 2};
    FillRect(dc, &slot, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    const RECT bar{0, knob.Top(), shape.width, knob.Top() + shape.knobHeight};
    DrawShadedRows(dc, bar, shape.IsVertical() ? BAR_COLOUR : BRIGHT_BAR_COLOUR);
}

} // namespace

void FADERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (face.Get() == nullptr) {
        DrawPlainFader(dc, knob);
        return;
    }
    const BitmapParts parts = Parts();
    parts.Draw(dc, TRACK, client);
    if (knob.Shape().IsVertical()) {
        parts.Draw(dc, KNOB, 0, knob.Top(), {0, 0, client.right, knobHeight});
    } else {
        parts.Draw(dc, KNOB, knob.Left(), 0, {0, 0, knobHeight, client.bottom});
    }
}

// Input

bool FADERPROPERTIES::BeginDrag(POINT point) {
    if (!knob.Hold({point.x, point.y})) {
        return false; // the knob does not jump to the mouse
    }
    if (!fmt.empty()) {
        ClientToScreen(window, &point);
        tooltip.Track({point.x, point.y + TIP_BELOW}, TipText());
    }
    return true;
}

void FADERPROPERTIES::MoveDrag(POINT point) {
    const auto kept = knob.Drag({point.x, point.y});
    if (!kept) {
        return;
    }
    // Where the mouse is on the knob already it is not touched: it may have moved on since.
    POINT held{kept->x, kept->y};
    const bool strayed = held.x != point.x || held.y != point.y;
    ClientToScreen(window, &held);
    if (strayed && GetCapture() == window) {
        SetCursorPos(held.x, held.y);
    }
    Redraw();
    UpdateWindow(window);
    value = knob.Value(Range());
    Send();
    if (dragging && !fmt.empty()) {
        const bool below = knob.Shape().IsVertical() || HasHorizontalImage();
        tooltip.Track({held.x, held.y + (below ? TIP_BELOW : 0)}, TipText());
    }
}

void FADERPROPERTIES::EndDrag() {
    CancelDrag();
    if (relative != 0) {
        offsets.See(*this);
    }
}

void FADERPROPERTIES::CancelDrag() {
    tooltip.StopTracking();
    PlaceKnob(); // from where it was dragged to where its value is
}

namespace {

// As anybody else would set the value: limited, shown and sent.
template <class Value>
void SetThroughMessage(const FADERPROPERTIES& fader, int datatype, Value value) {
    VALUERECORD record{COMMAND_SET, 0, datatype, 0, &value, nullptr, 0};
    SendMessageA(fader.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
}

void Step(const FADERPROPERTIES& fader, logic::FaderKey key) {
    const auto stepped = logic::StepFader(fader.value, key, fader.Range());
    if (!stepped) {
        return;
    }
    SetThroughMessage(fader, DATATYPE_FLOAT, *stepped);
    if (!fader.fmt.empty()) {
        fader.tooltip.Update(fader.TipText()); // the mouse is on the fader that its wheel turns
    }
}

static_assert(static_cast<int>(logic::FaderKey::PageUp) == VK_PRIOR &&
              static_cast<int>(logic::FaderKey::Down) == VK_DOWN);

void KeyDown(const FADERPROPERTIES& fader, WPARAM key) {
    if (key == VK_SPACE) {
        SetThroughMessage(fader, DATATYPE_INTEGER, fader.setValue);
    } else if (key > VK_SPACE && key <= VK_DOWN) {
        Step(fader, static_cast<logic::FaderKey>(key));
    }
}

void ShowTip(FADERPROPERTIES& fader, UINT message, WPARAM wParam, LPARAM lParam) {
    if (fader.dragging || fader.fmt.empty()) {
        return;
    }
    fader.tooltip.Relay(message, wParam, lParam);
    if (message == WM_MOUSEMOVE && !fader.tooltip.IsVisible()) {
        RECT area{};
        GetClientRect(fader.window, &area);
        OffsetRect(&area, 0, fader.HasHorizontalImage() ? HOVER_BELOW : 0);
        fader.tooltip.Hover(area, fader.TipText());
    }
}

LRESULT CALLBACK FaderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    FADERPROPERTIES& fader = *PropertiesOf<FADERPROPERTIES>(window);
    ShowTip(fader, message, wParam, lParam);
    if ((message == WM_KEYDOWN || message == WM_MOUSEWHEEL) && PassInput(fader, message, wParam, lParam)) {
        return 0;
    }
    switch (message) {
    case WM_KEYDOWN:
        KeyDown(fader, wParam);
        return 0;
    case WM_MOUSEWHEEL:
        Step(fader, GET_WHEEL_DELTA_WPARAM(wParam) < 1 ? logic::FaderKey::Down : logic::FaderKey::Up);
        return 0;
    case WM_SIZE:
        fader.PlaceKnob();
        break;
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_MAXIMUM, "Maximum Value", FieldKind::Integer, "properties", 1, 1},
    {IDC_MINIMUM, "Minimum Value", FieldKind::Integer, "properties", 0, 0},
    {IDC_RESOLUTION, "Resolution", FieldKind::TypedFloat, "resolution"},
};
constexpr DialogOption OPTIONS[] = {
    {IDC_ABSOLUTE, "relative", "0"},
    {IDC_RELATIVE, "relative", "1"},
};
constexpr ParameterDialog DIALOG{
    .resource = IDD_FADER, .edits = EDITS, .options = OPTIONS, .bitmapPrefix = "FADER_"};

} // namespace

extern const ControlImplementation faderControl{.create = CreateProperties<FADERPROPERTIES>,
                                                .procedure = FaderProc,
                                                .fields = &DIALOG,
                                                .share = SharePopupTooltip};
