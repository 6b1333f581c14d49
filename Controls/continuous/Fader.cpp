// FADER: one float value as a knob on a straight track, dragged, turned by the wheel or stepped by keys, sent
// to everything it is bound to and polled back. In relative mode every connection keeps its own offset from
// the value. A fader that is wider than high is horizontal, any other vertical. Values are in the unit of the
// bound parameter, interval in milliseconds, geometry in pixels.

#include "Controls/drawing/FaderFace.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/families/RemoteOffsets.h"
#include "Controls/families/ValueTip.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "Panelhost/PropertyList.h"
#include "logic/controls/FaderLogic.h"
#include "logic/text/Numbers.h"

#include <cstdio>
#include <cstring>

constexpr int SMALL_CAP = 0;
constexpr int MEDIUM_CAP = 1;
constexpr int LARGE_CAP = 2;

class FADERPROPERTIES : public RANGEDPROPERTIES {
public:
    FADERPROPERTIES() : RANGEDPROPERTIES(-80, 0) {}
    KeywordList Keywords() const override;
    LRESULT OnSaveToListCtrl(WPARAM wParam, LPARAM listView) override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    void SetDefaults() override;
    bool IsRelative() const override { return offsets.relative != 0; }
    void BindingsChanged() override { offsets.Rebuild(*this, value); }
    BitmapParts Frames() const override;
    void CapChanged();
    void FaceChanged() override {
        Moved();
        Redraw();
    }
    void Moved() override;
    float Loaded(float number) const override { return number; } // as it is, even beyond the range
    void Send() override;
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    std::optional<logic::Travel> TravelIn(SIZE client) const override;
    Art WantedArt() const override;
    bool IsSavedNow(const char* keyword) const override {
        return std::strcmp(keyword, "cap") != 0 || cap != MEDIUM_CAP;
    }
    bool BeginDrag(POINT point) override;
    void MoveDrag(POINT point) override;
    void EndDrag() override;
    void CancelDrag() override;

    int ValueKeyword(VALUERECORD& record);
    int RelativeKeyword(VALUERECORD& record) { return RelativeModeKeyword(&record, *this, offsets.relative); }
    std::string Format() const { return tip.Format(); }
    bool SetFormat(const std::string& format) { return tip.SetFormat(format); }
    float Resolution() const { return resolution; }
    bool SetResolution(float number);
    template <auto Number, std::size_t Step>
    int OffsetsKeyword(VALUERECORD& record) {
        return offsets.Keyword(&record, *this, Number, Step);
    }

    logic::FaderRange Range() const { return {minimum, maximum, resolution}; }
    bool HasHorizontalImage() const {
        return face.Get() != nullptr && face.Get()->Width() > face.Get()->Height();
    }

    int setValue = 0;    // what the space bar sets
    int knobHeight = 22; // length of the knob along the travel
    int cap = MEDIUM_CAP;
    // Length of the knob along the travel as it is drawn.
    int KnobLength() const;
    logic::FaderKnob knob;
    RemoteOffsets offsets; // relative mode
    ValueTip tip;

private:
    bool SetValue(VALUERECORD& record);
};

// Keywords

namespace {

constexpr int MAXIMUM_KNOB_HEIGHT = 16384; // as large as an image can be

constexpr Keyword VALUE = Handled<&FADERPROPERTIES::ValueKeyword>("value", KeywordKind::Number)
                              .Says("The number. Set, it is limited to the range and, unless it is the old "
                                    "one, sent to everything the fader is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Picture<&FADERPROPERTIES::face>("bitmap").Saved().Pictures("FADER_").Says(
        "Image file with track and knob side by side, or track above knob where it is wider than high; gives "
        "the fader its size; empty for a plain one."),
    Words<"small,medium,large", &FADERPROPERTIES::cap, &FADERPROPERTIES::CapChanged>("cap").Saved().Says(
        "Size of the knob: `small`, `medium` (as long as `knobheight` says) or `large`; the image is the one "
        "of that name in the folder `small` or `large` beside `bitmap`, and where there is none, `medium`."),
    CONNECTION_KEYWORD,
    Property<&FADERPROPERTIES::Format, &FADERPROPERTIES::SetFormat>("fmt").Saved().Says(
        "`printf` format of the value in the tooltip, with one float conversion; empty for no tooltip."),
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD,
    Integer<&FADERPROPERTIES::knobHeight, 1, MAXIMUM_KNOB_HEIGHT, &FADERPROPERTIES::FaceChanged>("knobheight")
        .Saved()
        .Says("Length of the knob along its travel in pixels, from 1 on."),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    RANGE_KEYWORD.Parts(RANGE_PARTS<1, 0>)
        .Says("Minimum and maximum (whole numbers) and value, joined by `,`; the value, or maximum and "
              "value, may be left out. Sends the value, even one beyond the range."),
    Handled<&FADERPROPERTIES::RelativeKeyword>("relative", KeywordKind::Integer)
        .Saved()
        .Options(RELATIVE_OPTIONS)
        .Says("Not 0: it moves every connection by its own distance, kept in `values`, instead of setting "
              "all to one value. It has then at most 292 functions and connections."),
    Property<&FADERPROPERTIES::Resolution, &FADERPROPERTIES::SetResolution>("resolution")
        .Saved()
        .AsTyped()
        .Label("Resolution")
        .Items(IDC_RESOLUTION)
        .Says("Step of keys and wheel; 0 for no steps. Of a text only five characters count."),
    Integer<&FADERPROPERTIES::setValue>("setvalue").Saved().Says("Whole number that the space bar sets."),
    VALUE,
    Handled<&FADERPROPERTIES::OffsetsKeyword<&logic::OffsetRecord::offset, 1>>("values", KeywordKind::Numbers)
        .Saved()
        .Says("Distances of the connections from the fader in relative mode, joined by `,`. Loading adds to "
              "those that are there; in absolute mode it is empty and nothing is loaded."),
    // Deliberately takes only every other number of a text that is written like that of `values`.
    Handled<&FADERPROPERTIES::OffsetsKeyword<&logic::OffsetRecord::remote, 2>>("valuescopy",
                                                                               KeywordKind::Numbers)
        .Saved()
        .Says("Values that the connections were last seen with in relative mode. Of a text that is loaded "
              "every other number is taken."),
});

} // namespace

KeywordList FADERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// The three datatypes deliberately differ in what becomes of a value beyond the range: only a float shows the
// not-equal mark, and only a text learns the limit.
bool FADERPROPERTIES::SetValue(VALUERECORD& record) {
    if (record.datatype == DATATYPE_INTEGER && record.data != nullptr) {
        const int whole = *static_cast<const int*>(record.data);
        return TakeValue(static_cast<float>(logic::LimitFaderInteger(whole, Range())));
    }
    float number = 0;
    if (a_ReadFloat(&record, &number) == 0) {
        return false;
    }
    const logic::LimitedValue limited = logic::LimitFader(number, Range());
    if (limited.outside && record.datatype == DATATYPE_TEXT) {
        std::snprintf(static_cast<char*>(record.data), TEXT_SIZE, "%s",
                      logic::FormatFixed(static_cast<double>(limited.value), 6).c_str());
    } else if (limited.outside) {
        ShowNotEqual(true);
    }
    return TakeValue(limited.value);
}

int FADERPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return AnswerValue(record);
    }
    return record.command == COMMAND_SET && SetValue(record) ? 1 : 0;
}

bool FADERPROPERTIES::SetResolution(float number) {
    const bool isShort = logic::IsShortResolution(number);
    resolution = isShort ? number : resolution;
    return isShort;
}

// Deliberately with the rows that are not saved.
LRESULT FADERPROPERTIES::OnSaveToListCtrl(WPARAM, LPARAM listView) {
    return a_ListProperties(this, Keywords().rows, reinterpret_cast<HWND>(listView), true);
}

void FADERPROPERTIES::SetDefaults() {
    interval = 100;
    Moved();
    tip.Attach(*this);
    DragAcceptFiles(window, TRUE);
}

// Value

void FADERPROPERTIES::Send() {
    if (IsRelative()) {
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
    if (IsRelative()) {
        offsets.Send(*this, value, COMMAND_GET);
        ShowPollResult(WhetherLive()); // each connection has its own value, so none of them differs
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
    Moved();
}

// Layout

BitmapParts FADERPROPERTIES::Frames() const {
    return {*face.Get(), 2, HasHorizontalImage() ? BitmapParts::Stacked : BitmapParts::SideBySide};
}

// Those of the caps are the lengths that their pictures are drawn with.
int FADERPROPERTIES::KnobLength() const {
    constexpr int LENGTHS[] = {14, 0, 34};
    const bool isOther = face.Get() != nullptr ? !face.Taken().variant.empty() : cap != MEDIUM_CAP;
    return (isOther ? LENGTHS[cap] : knobHeight) * (face.Get() != nullptr ? face.Taken().percent : 100) / 100;
}

Art FADERPROPERTIES::WantedArt() const {
    Art art = RANGEDPROPERTIES::WantedArt();
    art.variant = cap == SMALL_CAP ? "small" : cap == LARGE_CAP ? "large" : "";
    return art;
}

void FADERPROPERTIES::CapChanged() {
    ArtChanged();
    FaceChanged();
}

// Moves the knob to where its value is.
void FADERPROPERTIES::Moved() {
    RECT client{};
    GetClientRect(window, &client);
    if (knob.Place(value, Range(), {client.right, client.bottom, KnobLength()})) {
        Redraw();
    }
}

// Of the line on the knob. Without an image it is the brightest line.
std::optional<logic::Travel> FADERPROPERTIES::TravelIn(SIZE client) const {
    const logic::FaderShape shape{client.cx, client.cy, KnobLength()};
    const int line = face.Get() != nullptr ? (shape.knobHeight - 1) / 2 : shape.knobHeight / 2;
    const int way = shape.Way();
    return logic::Travel{.range = {static_cast<float>(minimum), static_cast<float>(maximum)},
                         .begin = shape.IsVertical() ? line + way : line,
                         .length = way,
                         .isHorizontal = !shape.IsVertical(),
                         .isBackwards = shape.IsVertical()};
}

// Drawing

void FADERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (face.Get() != nullptr) {
        DrawFader(dc, knob, Frames(), client);
    } else {
        DrawPlainFader(dc, knob);
    }
}

// Input

bool FADERPROPERTIES::BeginDrag(POINT point) {
    if (!knob.Hold({point.x, point.y})) {
        return false; // the knob does not jump to the mouse
    }
    ClientToScreen(window, &point);
    tip.Track(point, value, true);
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
    if (dragging) {
        const bool below = knob.Shape().IsVertical() || HasHorizontalImage();
        tip.Track(held, value, below);
    }
}

void FADERPROPERTIES::EndDrag() {
    CancelDrag();
    if (IsRelative()) {
        offsets.See(*this);
    }
}

void FADERPROPERTIES::CancelDrag() {
    tip.StopTracking();
    Moved(); // from where it was dragged to where its value is
}

namespace {

void Step(const FADERPROPERTIES& fader, logic::FaderKey key) {
    const auto stepped = logic::StepFader(fader.value, key, fader.Range());
    if (stepped) {
        fader.SetThroughMessage(DATATYPE_FLOAT, *stepped);
        fader.tip.Update(fader.value); // the mouse is on the fader that its wheel turns
    }
}

static_assert(static_cast<int>(logic::FaderKey::PageUp) == VK_PRIOR &&
              static_cast<int>(logic::FaderKey::Down) == VK_DOWN);

void KeyDown(const FADERPROPERTIES& fader, WPARAM key) {
    if (key == VK_SPACE) {
        fader.SetThroughMessage(DATATYPE_INTEGER, fader.setValue);
    } else if (key > VK_SPACE && key <= VK_DOWN) {
        Step(fader, static_cast<logic::FaderKey>(key));
    }
}

LRESULT CALLBACK FaderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    FADERPROPERTIES& fader = *PropertiesOf<FADERPROPERTIES>(window);
    if (!fader.dragging) {
        fader.tip.Relay(fader, message, wParam, lParam, fader.value, fader.HasHorizontalImage());
    }
    if ((message == WM_KEYDOWN || message == WM_MOUSEWHEEL) && PassInput(fader, message, wParam, lParam)) {
        return 0;
    }
    if (message == WM_KEYDOWN) {
        KeyDown(fader, wParam);
        return 0;
    }
    if (message == WM_MOUSEWHEEL) {
        Step(fader, GET_WHEEL_DELTA_WPARAM(wParam) < 1 ? logic::FaderKey::Down : logic::FaderKey::Up);
        return 0;
    }
    if (message == WM_SIZE) {
        fader.Moved();
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation faderControl = Implement<FADERPROPERTIES>(
    FaderProc, IDD_FADER,
    "A number as a knob on a straight track that is dragged, turned by the wheel or stepped by "
    "keys. Wider than high it is horizontal.",
    SharePopupTooltip);
