// CONDITIONALLED: a lamp that is lit while a condition over the values that it is bound to holds. It only
// shows: nothing is sent. It goes on and off after delays, blinks, and can stay lit until it is clicked. A
// value that cannot be reached makes it neither lit nor dark. Times in milliseconds.

#include "Controls/families/LampControl.h"
#include "Panelhost/Trace.h"
#include "logic/controls/Condition.h"
#include "logic/controls/ConditionLamp.h"
#include "logic/controls/LedLogic.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr int LONGEST_DELAY = 86'400'000; // a day
constexpr int LONGEST_BLINK = 60'000;

} // namespace

class CONDITIONALLEDPROPERTIES : public LAMPPROPERTIES {
public:
    KeywordList Keywords() const override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    DWORD DueIn(DWORD now) const noexcept override;
    void FaceChanged() override { Redraw(); }
    void BindingsChanged() override { PollSoon(); }
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool DrawsNotEqual(const RECT& client) const override { return !HasRoomForSign(client); }

    int Value() const { return lamp_.IsLit() ? 1 : 0; }
    std::string ConditionText() const { return condition; }
    bool SetCondition(const std::string& text);
    int FunctionsKeyword(VALUERECORD& record) { return Bind(record, connections, FunctionKeyword); }
    int ConnectionsKeyword(VALUERECORD& record) { return Bind(record, functions, ConnectionKeyword); }
    void TimesChanged();
    void Seen();

    std::string condition = "a";
    int delayOn = 0;
    int delayOff = 0;
    int blink = 0; // period; 0 for a steady light
    int latch = 0;
    COLORREF litColour = LampColours().lit;
    COLORREF darkColour = LampColours().dark;

private:
    // At the next tick.
    int Bind(VALUERECORD& record, const BINDINGLIST& others, KEYWORDHANDLER keyword);
    void Show();

    logic::Condition compiled_;
    logic::ConditionLamp lamp_;
    double result_ = 0; // of the condition, when it could last be reckoned
};

// Keywords

namespace {

constexpr Keyword VALUE = Property<&CONDITIONALLEDPROPERTIES::Value, nullptr>("value").Says(
    "1 while it is lit, dark phases of its blinking included, 0 while it is dark; what it was, while that is "
    "not known. It can only be read, for instance by a button that is connected to the lamp.");

template <auto Member, int Maximum>
constexpr Keyword Milliseconds(const char* name) {
    return Limited<Member, 0, Maximum, &CONDITIONALLEDPROPERTIES::TimesChanged>(name).Saved().Unit("ms");
}

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    LAMP_BITMAP,
    Milliseconds<&CONDITIONALLEDPROPERTIES::blink, LONGEST_BLINK>("blink")
        .Label("Blink period in ms")
        .Says("Milliseconds from one flash to the next while it is lit, up to 60000; 0 for a steady light."),
    Property<&CONDITIONALLEDPROPERTIES::ConditionText, &CONDITIONALLEDPROPERTIES::SetCondition>("condition")
        .Saved()
        .Label("Condition")
        .Objection(logic::ConditionObjection)
        .Says(
            "When it is lit, such as `a > -6 and b = 1`: `a` to `z` are the values of `function`, then those "
            "of `connection`, in their order; with numbers, brackets, `min(a, b)`, `max(a, b)`, `abs(a)`, "
            "`+ - * /`, `= <> < <= > >=`, `not`, `and`, `or`. What is not 0 holds. Numbers that differ by "
            "less than a millionth are equal. It is crossed out while a value cannot be reached, a letter "
            "has no entry, or the result cannot be reckoned."),
    Handled<&CONDITIONALLEDPROPERTIES::ConnectionsKeyword>("connection", KeywordKind::Addresses)
        .Says("Controls whose values stand for the letters behind those of `function`, joined by `;`; 26 "
              "entries at most in both. Saved after all other keywords."),
    Colour<&CONDITIONALLEDPROPERTIES::darkColour>("darkcolor")
        .Saved()
        .Label("Dark colour")
        .Says("Colour of the dark lamp without an image, `0x00bbggrr`."),
    Milliseconds<&CONDITIONALLEDPROPERTIES::delayOff, LONGEST_DELAY>("delayoff")
        .Label("Dark after ms")
        .Says("Milliseconds that the condition must not hold before it goes dark, up to a day."),
    Milliseconds<&CONDITIONALLEDPROPERTIES::delayOn, LONGEST_DELAY>("delayon")
        .Label("Lit after ms")
        .Says("Milliseconds that the condition must hold before it is lit, up to a day."),
    LAMP_FRAMES.Says(
        "Number of frames of the image, 2 to 64. With more than two the result of the condition, "
        "without its fraction, is the number of the frame while it is lit."),
    Handled<&CONDITIONALLEDPROPERTIES::FunctionsKeyword>("function", KeywordKind::Addresses)
        .Saved()
        .Says("Device parameters whose values stand for the letters from `a` on, joined by `;`; with "
              "`connection` 26 entries at most."),
    INTERVAL_KEYWORD,
    Limited<&CONDITIONALLEDPROPERTIES::latch, 0, 1, &CONDITIONALLEDPROPERTIES::TimesChanged>("latch")
        .Saved()
        .OneOf("0,1")
        .Label("Stays lit until clicked")
        .Says("1: it stays lit until it is clicked, and then until the condition does not hold any more."),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Colour<&CONDITIONALLEDPROPERTIES::litColour>("litcolor")
        .Saved()
        .Label("Lit colour")
        .Says("Colour of the lit lamp without an image, `0x00bbggrr`."),
    VALUE,
});

} // namespace

KeywordList CONDITIONALLEDPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool CONDITIONALLEDPROPERTIES::SetCondition(const std::string& text) {
    if (const auto fault = compiled_.Read(text)) {
        EDITTRACE(parent, "The condition cannot be read %s", logic::FaultText(*fault).c_str());
        return false;
    }
    condition = text;
    PollSoon(); // what was asked before may belong to other bindings
    return true;
}

int CONDITIONALLEDPROPERTIES::Bind(VALUERECORD& record, const BINDINGLIST& others, KEYWORDHANDLER keyword) {
    const auto text = TextToSet(&record);
    if (text && logic::SplitList(*text).size() + others.size() > logic::Condition::LETTERS) {
        EDITTRACE(parent, "A condition has at most %s functions and connections",
                  std::to_string(logic::Condition::LETTERS).c_str());
        return 0;
    }
    return keyword(&record, this);
}

void CONDITIONALLEDPROPERTIES::TimesChanged() {
    lamp_.delayOn = static_cast<std::uint32_t>(delayOn);
    lamp_.delayOff = static_cast<std::uint32_t>(delayOff);
    lamp_.blink = static_cast<std::uint32_t>(blink);
    lamp_.latch = latch != 0;
    lamp_.Advance(GetTickCount());
    Show();
}

// Values

void CONDITIONALLEDPROPERTIES::Poll() {
    const std::vector<REQUESTITEM> items = ItemsOf(requests);
    std::vector<float> values(items.size(), std::numeric_limits<float>::quiet_NaN());
    bool isReachable = true;
    for (std::size_t i = 0; i < items.size(); ++i) {
        float& number = values[i]; // with no number in hand each answer is a new one
        isReachable = a_SendToItem(items[i], COMMAND_GET, DATATYPE_FLOAT, &number) > 0 && isReachable;
    }
    const auto result = isReachable ? compiled_.Evaluate(values) : std::nullopt;
    lastPollResult = !isReachable ? REQUEST_UNREACHABLE : result ? REQUEST_UNCHANGED : REQUEST_DISAGREE;
    result_ = result.value_or(result_);
    lamp_.Take(result ? std::optional(*result != 0) : std::nullopt, GetTickCount());
    Show();
}

void CONDITIONALLEDPROPERTIES::Show() {
    const int lit = std::max(logic::FrameOfValue(static_cast<float>(result_), frames), 1);
    const int shown = lamp_.IsBright(GetTickCount()) ? (frames > LEAST_FRAMES ? lit : 1) : 0;
    if (shown != frame) {
        frame = shown;
        if (!lamp_.IsUnknown()) {
            Redraw();
        }
    }
    ShowNotEqual(lamp_.IsUnknown());
}

LRESULT CONDITIONALLEDPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    const LRESULT result =
        LAMPPROPERTIES::OnTimer(timer, lParam); // first: the condition may be another one now
    lamp_.Advance(GetTickCount());
    Show();
    return result;
}

DWORD CONDITIONALLEDPROPERTIES::DueIn(DWORD now) const noexcept {
    return std::min<DWORD>(UntilPoll(now), lamp_.DueIn(now).value_or(NO_TICK));
}

void CONDITIONALLEDPROPERTIES::Seen() {
    lamp_.Acknowledge(GetTickCount());
    Show();
}

// Drawing

void CONDITIONALLEDPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (notEqual) {
        DrawUnknownLamp(dc, client);
    } else {
        DrawFrame(dc, client, frame, {litColour, darkColour});
    }
}

// Input and registration

namespace {

LRESULT CALLBACK ConditionalLedProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& lamp = *PropertiesOf<CONDITIONALLEDPROPERTIES>(window);
    if (message == WM_LBUTTONDOWN && !IsPanelClick(lamp, wParam)) {
        lamp.Seen();
    }
    return IndicatorProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation conditionalLedControl = Implement<CONDITIONALLEDPROPERTIES>(
    ConditionalLedProc, LAID_OUT,
    "A lamp that is lit while a condition over the values that it is bound to holds; crossed out while that "
    "is not known.");
