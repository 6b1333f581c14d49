// SPINEDIT: one float value in a field with arrows. It is typed, stepped by keys, the wheel and the arrows,
// and turned by dragging an arrow; it is sent to everything the control is bound to and polled back. The
// field and the arrows are the system's. Interval in milliseconds, geometry in pixels.

#include "Controls/drawing/Shading.h"
#include "Controls/families/Arrows.h"
#include "Controls/families/EditField.h"
#include "Controls/families/FieldMargin.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/families/TextLook.h"
#include "Controls/framework/WheelTurn.h"
#include "Panelhost/Bitmap.h"
#include "base/Gdi.h"
#include "logic/controls/SpinLogic.h"
#include "logic/text/FloatFormat.h"
#include "logic/text/TypedNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int FIELD = 1; // ids of the children
constexpr int ARROWS = 2;
constexpr int ARROWS_WIDTH = 16;
constexpr int RIM = 1;
constexpr int SIGN_GAP = 4; // around the not-equal sign, left and right of it
constexpr int PAGE = 10;    // steps
constexpr std::size_t LONGEST_UNIT = 31;

} // namespace

class SPINEDITPROPERTIES : public TEXTLOOKPROPERTIES, private EditField::Owner, private Arrows::Owner {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    void ShowValueAnew() override { field_.Show(); }
    void Draw(HDC dc, const RECT& client) const override;
    POINT NotEqualPlace() const override;
    void LookChanged() override;
    void FontChanged() override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    // Takes a number that is within the range. False when it is the old one.
    bool TakeValue(float number);
    void Send();
    // Steps from the value, or from what is typed.
    void Step(int steps) override;
    void StepBy(int steps, float size);
    // True when it is a key of the control.
    bool KeyDown(WPARAM key);
    void Turn(WheelTurn wheel) override;

    int ValueKeyword(VALUERECORD& record);
    std::string Properties() const { return logic::SpinPropertiesText(range, value); }
    bool SetProperties(const std::string& text);
    std::string Format() const { return format; }
    bool SetFormat(const std::string& text);
    void TextChanged() { field_.Show(); }
    void ReadOnlyChanged();

    void Arrange();
    HBRUSH Colours(HDC dc);
    LRESULT HandleField(const ChildMessage& of);
    LRESULT HandleArrows(const ChildMessage& of) { return arrows_.Handle(of, fieldWindow_); }
    bool Notified(const NMHDR& header) const { return arrows_.Notified(header); }
    // For the window procedure.
    LRESULT Command(int id, WORD code, LPARAM number);
    void FocusField() const;

    logic::SpinRange range{0, 100};
    float value = 0;
    float resolution = 1;
    std::string format = "%.7g";
    std::string unit;
    int readOnly = 0;

private:
    struct Places {
        RECT field;
        RECT arrows;
    };

    std::string TextOfValue() const override;
    bool TakeTyped(const std::string& text) override;
    bool KeepsRefused() const override { return true; }
    void TypedDropped() override { ShowRefused(false); }
    void TypedTaken() override { Send(); }
    bool TextGiven(const std::string&) override { return true; } // the field belongs to the value
    LRESULT FieldDoes(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::optional<float> ReadTyped(const std::string& text) const;
    COLORREF Ground() const;
    Places PlacesOfChildren() const;
    void ShowRefused(bool isRefused);

    HWND fieldWindow_ = nullptr;
    EditField field_{*this, fieldWindow_, *this};
    FieldMargin margin_{fieldWindow_};
    Arrows arrows_{*this, *this};
    FieldColours colours_;
    bool isRefused_ = false; // what was typed last
    Places places_{};
};

namespace {

LRESULT HandleSpinField(SPINEDITPROPERTIES& spin, const ChildMessage& of) {
    return spin.HandleField(of);
}
LRESULT HandleSpinArrows(SPINEDITPROPERTIES& spin, const ChildMessage& of) {
    return spin.HandleArrows(of);
}

} // namespace

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&SPINEDITPROPERTIES::ValueKeyword>("value", KeywordKind::Number)
                              .Says("The number. Set, it is limited to `properties` and, unless it is the "
                                    "old one, sent to everything the field is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    ALIGNMENT_KEYWORD,
    GROUND_COLOUR_KEYWORD.Says("Colour of the field, `0x00bbggrr`; empty for the system's."),
    CONNECTION_KEYWORD,
    Property<&SPINEDITPROPERTIES::Format, &SPINEDITPROPERTIES::SetFormat>("fmt")
        .Saved()
        .Label("Number format")
        .Items(IDC_FORMAT)
        .Says("`printf` format of the number, with one float conversion; empty for the plain number. What "
              "stands around the number may be typed with it."),
    TEXT_FONT_KEYWORD,
    FUNCTION_KEYWORD,
    TEXT_INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Property<&SPINEDITPROPERTIES::Properties, &SPINEDITPROPERTIES::SetProperties>("properties",
                                                                                  KeywordKind::Numbers)
        .Saved()
        .Parts(RANGE_PARTS<2, 2>)
        .Says("Both ends of what can be set, in any order, and value, joined by `,`; the value, or the "
              "second end and the value, may be left out. Sends the value."),
    Integer<&SPINEDITPROPERTIES::readOnly, 0, 1, &SPINEDITPROPERTIES::ReadOnlyChanged>("readonly")
        .Saved()
        .OneOf("0,1")
        .Label("Read-only")
        .Items(IDC_READ_ONLY)
        .Says("1: it shows its value, and neither typing nor keys nor arrows change it."),
    Limited<&SPINEDITPROPERTIES::resolution, 0, std::numeric_limits<int>::max()>("resolution")
        .Saved()
        .Label("Resolution")
        .Items(IDC_RESOLUTION)
        .Says("Step of the arrows, the arrow keys and the wheel, which with Shift goes a tenth; Page Up and "
              "Page Down go ten steps; 0 for "
              "no steps. What is typed is not rounded to it."),
    TEXT_COLOUR_KEYWORD,
    Text<&SPINEDITPROPERTIES::unit, LONGEST_UNIT, &SPINEDITPROPERTIES::TextChanged>("unit")
        .Saved()
        .Label("Unit")
        .Says("Shown behind the number, at most 31 characters. It may be typed or left out; a number with "
              "another one is refused."),
    VALUE,
});

} // namespace

KeywordList SPINEDITPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

int SPINEDITPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerFloat(&record, value);
    }
    float number = 0;
    if (record.command != COMMAND_SET || a_ReadFloat(&record, &number) == 0) {
        return 0;
    }
    return TakeValue(range.Limited(number)) ? 1 : 0;
}

bool SPINEDITPROPERTIES::SetProperties(const std::string& text) {
    const auto read = logic::ParseSpinProperties(text);
    if (!read) {
        return false;
    }
    range = {read->minimum, read->maximum.value_or(range.maximum)};
    value = range.Limited(read->value.value_or(value));
    field_.Show();
    Send();
    return true;
}

bool SPINEDITPROPERTIES::SetFormat(const std::string& text) {
    if (!MayBeFormat(text)) {
        return false;
    }
    format = text;
    field_.Show();
    return true;
}

void SPINEDITPROPERTIES::ReadOnlyChanged() {
    SendMessageA(fieldWindow_, EM_SETREADONLY, static_cast<WPARAM>(readOnly), 0);
    EnableWindow(arrows_.Window(), readOnly == 0);
    LookChanged();
}

// Value

bool SPINEDITPROPERTIES::TakeValue(float number) {
    if (number == value) {
        return false;
    }
    value = number;
    ShowRefused(false);
    field_.Show();
    Send();
    return true;
}

void SPINEDITPROPERTIES::Send() {
    float sent = value;
    a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &sent, nullptr);
}

void SPINEDITPROPERTIES::Poll() {
    if (arrows_.IsHeld()) {
        return;
    }
    float polled = value;
    const int result = Ask(requests, DATATYPE_FLOAT, &polled);
    if (result == REQUEST_DELIVERED && std::isfinite(polled)) {
        value = polled;
        field_.Show();
    }
    Answered(requests, DATATYPE_FLOAT, result);
    ShowPollResult(result);
    Arrange();
}

// Typing

std::string SPINEDITPROPERTIES::TextOfValue() const {
    const std::string number =
        format.empty() ? logic::FormatFloat(value) : logic::FormatFloatAs(format, value);
    return unit.empty() ? number : number + " " + unit;
}

std::optional<float> SPINEDITPROPERTIES::ReadTyped(const std::string& text) const {
    const auto number = logic::ParseTypedNumber(text, unit, format);
    return number && range.Contains(*number) ? number : std::nullopt;
}

bool SPINEDITPROPERTIES::TakeTyped(const std::string& text) {
    const auto number = ReadTyped(text);
    ShowRefused(!number);
    value = number.value_or(value);
    return number.has_value();
}

void SPINEDITPROPERTIES::ShowRefused(bool isRefused) {
    if (isRefused != isRefused_) {
        isRefused_ = isRefused;
        LookChanged();
    }
}

// Steps

void SPINEDITPROPERTIES::Step(int steps) {
    StepBy(steps, resolution);
}

void SPINEDITPROPERTIES::StepBy(int steps, float size) {
    if (readOnly != 0) {
        return;
    }
    if (hasNoValue && !field_.IsEdited()) {
        return; // from nothing
    }
    const auto from = field_.IsEdited() ? ReadTyped(field_.Text()) : std::optional(value);
    if (!from) {
        ShowRefused(true);
        return;
    }
    field_.Restore();
    TakeValue(logic::StepSpin(*from, steps, size, range));
}

bool SPINEDITPROPERTIES::KeyDown(WPARAM key) {
    const bool isControl = GetKeyState(VK_CONTROL) < 0;
    const int steps = key == VK_UP      ? 1
                      : key == VK_DOWN  ? -1
                      : key == VK_PRIOR ? PAGE
                      : key == VK_NEXT  ? -PAGE
                                        : 0;
    if (readOnly != 0 || (steps == 0 && !(isControl && (key == VK_HOME || key == VK_END)))) {
        return false;
    }
    if (steps != 0) {
        Step(steps);
    } else {
        const auto [low, high] = std::minmax(range.minimum, range.maximum);
        const float end = key == VK_HOME ? high : low;
        field_.Restore();
        TakeValue(end);
    }
    return true;
}

void SPINEDITPROPERTIES::Turn(WheelTurn wheel) {
    StepBy(wheel.steps, wheel.Size(resolution));
}

// Drawing

void SPINEDITPROPERTIES::SetDefaults() {
    interval = 1000;
    SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) | WS_CLIPCHILDREN);
    places_ = PlacesOfChildren();
    const RECT& field = places_.field;
    fieldWindow_ = CreateWindowExA(0, "EDIT", TextOfValue().c_str(), WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL,
                                   field.left, field.top, field.right - field.left, field.bottom - field.top,
                                   window, reinterpret_cast<HMENU>(FIELD), ModuleInstance(), nullptr);
    SystemChild<HandleSpinField>::Subclass(fieldWindow_);
    SystemChild<HandleSpinArrows>::Subclass(arrows_.Create(ARROWS, places_.arrows));
    FontChanged();
    field_.Begin();
}

void SPINEDITPROPERTIES::FontChanged() {
    TEXTLOOKPROPERTIES::FontChanged(fieldWindow_);
    Arrange();
}

void SPINEDITPROPERTIES::LookChanged() {
    margin_.Align(alignment);
    if (IsWindowVisible(window)) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    }
}

// The not-equal sign has a place beside the field.
SPINEDITPROPERTIES::Places SPINEDITPROPERTIES::PlacesOfChildren() const {
    RECT inner{};
    GetClientRect(window, &inner);
    InflateRect(&inner, -RIM, -RIM);
    const int width = std::max<int>(inner.right - inner.left, 0);
    const int height = std::max<int>(inner.bottom - inner.top, 0);
    const int end = RIM + width - std::min(ARROWS_WIDTH, width / 2);
    const int sign = notEqual ? a_GetNotEqualSign()->Width() + SIGN_GAP : 0;
    const int line = std::min(a_FontHeight(font.Get()), height);
    const int top = RIM + (height - line) / 2;
    return {{std::min(RIM + sign, end), top, end, top + line}, {end, RIM, RIM + width, RIM + height}};
}

void SPINEDITPROPERTIES::Arrange() {
    const auto move = [](HWND child, RECT& place, const RECT& next) {
        if (!EqualRect(&place, &next)) {
            place = next;
            SetWindowPos(child, nullptr, next.left, next.top, next.right - next.left, next.bottom - next.top,
                         SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
        }
    };
    const Places next = PlacesOfChildren();
    move(arrows_.Window(), places_.arrows, next.arrows);
    move(fieldWindow_, places_.field, next.field);
}

COLORREF SPINEDITPROPERTIES::Ground() const {
    return isRefused_ ? REFUSED_COLOUR : FieldGround();
}

HBRUSH SPINEDITPROPERTIES::Colours(HDC dc) {
    const COLORREF ground = Ground();
    return colours_.Answer(dc, isRefused_ ? ReadableOn(ground) : FieldInk(), ground);
}

void SPINEDITPROPERTIES::Draw(HDC dc, const RECT& client) const {
    FillGround(dc, RIM_COLOUR, client);
    RECT inner = client;
    InflateRect(&inner, -RIM, -RIM);
    FillGround(dc, Ground(), inner);
}

POINT SPINEDITPROPERTIES::NotEqualPlace() const {
    RECT client{};
    GetClientRect(window, &client);
    return {RIM + SIGN_GAP / 2, (client.bottom - a_GetNotEqualSign()->Height()) / 2};
}

// Children

LRESULT SPINEDITPROPERTIES::FieldDoes(UINT message, WPARAM wParam, LPARAM lParam) {
    const ChildMessage of{fieldWindow_, SystemChild<HandleSpinField>::system, message, wParam, lParam};
    if (message == WM_KILLFOCUS) {
        HandleAsPart(*this, of);
    }
    return of.SystemDoes();
}

LRESULT SPINEDITPROPERTIES::HandleField(const ChildMessage& of) {
    // The control keeps the focus until the field has asked whether it was typed into.
    const auto answer = of.message == WM_KILLFOCUS ? std::nullopt : HandleAsPart(*this, of);
    if (answer) {
        return *answer;
    }
    if (of.message == WM_MOUSEWHEEL) {
        Turn(WheelTurn(of.wParam));
        return 0;
    }
    if (of.message == WM_KEYDOWN && KeyDown(of.wParam)) {
        return 0;
    }
    if (const auto answered = field_.Handle(of.message, of.wParam, of.lParam)) {
        return *answered;
    }
    const bool isMoved = FieldMargin::IsMovedBy(of.message);
    if (isMoved) {
        margin_.MakeRoom();
    }
    const LRESULT result = FieldDoes(of.message, of.wParam, of.lParam);
    if (isMoved) {
        margin_.Handled(of.message, alignment);
    }
    field_.Handled(of.message);
    return result;
}

LRESULT SPINEDITPROPERTIES::Command(int id, WORD code, LPARAM number) {
    if (!arrows_.Commanded(id, code, number) && id == FIELD && code == EN_CHANGE && isRefused_ &&
        field_.IsEdited()) {
        ShowRefused(false); // it is being corrected
    }
    return 0;
}

void SPINEDITPROPERTIES::FocusField() const {
    if (mode == 0) {
        SetFocus(fieldWindow_);
        SendMessageA(fieldWindow_, EM_SETSEL, 0, -1);
    }
}

namespace {

LRESULT CALLBACK SpinProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& spin = *PropertiesOf<SPINEDITPROPERTIES>(window);
    switch (message) {
    case WM_KEYDOWN:
    case WM_MOUSEWHEEL:
        if (!PassInput(spin, message, wParam, lParam)) {
            message == WM_KEYDOWN ? static_cast<void>(spin.KeyDown(wParam)) : spin.Turn(WheelTurn(wParam));
        }
        return 0;
    case WM_SETFOCUS: {
        const LRESULT result = CommonProc(window, message, wParam, lParam);
        spin.FocusField();
        return result;
    }
    case WM_SIZE:
        spin.Arrange();
        break;
    case WM_PAINT:
        RedrawEditedParts(spin);
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC: // while it is read-only
        return reinterpret_cast<LRESULT>(spin.Colours(reinterpret_cast<HDC>(wParam)));
    case WM_COMMAND:
        return spin.Command(LOWORD(wParam), HIWORD(wParam), lParam);
    case WM_NOTIFY:
        if (lParam != 0 && spin.Notified(*reinterpret_cast<const NMHDR*>(lParam))) {
            return 1; // the arrows keep their position
        }
        break;
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation spinEditControl = Implement<SPINEDITPROPERTIES>(
    SpinProc, LAID_OUT,
    "A number in a field with arrows. It is typed (`1.5k` and `1k5` are 1500, and a comma is a point), "
    "stepped "
    "by keys, the wheel and the arrows, and turned by dragging an arrow up or down. A typed text that is no "
    "number, or beyond the range, stays in the field on a red ground, and the value is kept.");
