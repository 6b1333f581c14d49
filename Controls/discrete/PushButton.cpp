// BBUTTON: a button with a caption that sends one value while it is pressed and another when it is released,
// or steps what it is bound to up or down, faster the longer it is held. It can ask before it acts, and a
// click can set any keyword of any object. Values are whole numbers, times in milliseconds.

#include "Controls/families/Button.h"
#include "Controls/families/ClickTemplate.h"
#include "Controls/families/HeldRepeat.h"
#include "Controls/families/Question.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/text/Numbers.h"

class PUSHBUTTONPROPERTIES : public BUTTONPROPERTIES {
public:
    KeywordList Keywords() const override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    void Draw(HDC dc, const RECT& client) const override;
    bool IsHeldDown() const override { return pressed; }
    void SetHeldDown(bool down) override { pressed = down; }
    void Pressed() override;
    void Released() override;

    // In absolute mode sends offValue. Else that many steps up or down from what it is bound to, or from
    // offValue where nobody answers, which offValue becomes.
    void SendStepped(int steps);
    bool IsAbsolute() const { return pressMode == logic::PressMode::Absolute; }
    bool ValuesAreInactive() const { return repeat.IsOn() || onValue == offValue; }

    int ValueKeyword(VALUERECORD& record);
    template <auto Member>
    int OneValueKeyword(VALUERECORD& record) {
        const auto handled = HandleInactive(record, ValuesAreInactive());
        return handled ? *handled : IntegerKeyword<Member>(&record, this);
    }
    std::string ModeText() const { return logic::PressModeText(pressMode); }
    bool SetMode(const std::string& text) {
        pressMode = logic::ParsePressMode(text);
        return true;
    }
    int PressedNumber() const { return pressed ? 1 : 0; }
    int ReleasedNumber() const { return pressed ? 0 : 1; }

    std::string clickTemplate; // property line that a click sends; empty for none
    std::string confirmText;   // question before the release acts; empty for none
    std::string dialogEntries; // kept for its readers
    bool pressed = false;      // drawn down
    logic::PressMode pressMode = logic::PressMode::Absolute;
    HeldRepeat repeat;

private:
    // The number of the first target that answers; the sign tells when none does.
    void AskTargets(int& current);
    void Repeat(DWORD now);
    void Compare();
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&PUSHBUTTONPROPERTIES::ValueKeyword>("value", KeywordKind::Integer)
        .Says("The off value. Set, it becomes off value and on value; nothing is sent.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    BUTTON_BITMAP.Pictures("BUTTON_").Says(
        "Image file with the released and the pressed face side by side, which gives the button its size; "
        "empty for a plain one."),
    BUTTON_CAPTION.Says("Text on the button and title of its question."),
    RepeatAcceleration<&PUSHBUTTONPROPERTIES::repeat>("captureaccel")
        .Label("Repeat acceleration")
        .Items(IDC_ACCELERATION)
        .Says("How much each further step of a held button grows, 0.5 to 10; `inactive` while there is no "
              "repeat."),
    RepeatPeriod<&PUSHBUTTONPROPERTIES::repeat>("captureperiod")
        .Label("Repeat period in ms (0: none)")
        .Items(IDC_PERIOD)
        .Unit("ms")
        .Says("Milliseconds between the steps of a held button, up to 1000; 0, shown as `inactive`, for no "
              "repeat."),
    Text<&PUSHBUTTONPROPERTIES::confirmText>("confirm")
        .Saved()
        .Label("Ask before")
        .Items(IDC_CONFIRM)
        .Preview(logic::QuestionText, IDC_CONFIRM_PREVIEW)
        .Says(
            "Question that is asked before the release acts; empty for none. `\\n` and `\\t` in it are line "
            "feed and tab."),
    CONNECTION_KEYWORD,
    Line<&PUSHBUTTONPROPERTIES::clickTemplate>("click")
        .Saved()
        .Label("Click template")
        .Items(IDC_CLICK)
        .Says("Property line that a click sends; empty for none. `%c` in it stands for the connections, `%n` "
              "for the full name, `%l` for the caption."),
    Text<&PUSHBUTTONPROPERTIES::dialogEntries>("dialogentries")
        .Saved()
        .Label("Dialog entries")
        .Items(IDC_ENTRIES)
        .Says("Kept for its readers; the button makes no use of it."),
    BUTTON_FONT,
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL),
    Property<&PUSHBUTTONPROPERTIES::PressedNumber, nullptr>("ispressed")
        .Says("1 while it is pressed, else 0. Cannot be set."),
    Property<&PUSHBUTTONPROPERTIES::ReleasedNumber, nullptr>("isnotpressed")
        .Says("0 while it is pressed, else 1. Cannot be set."),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Property<&PUSHBUTTONPROPERTIES::ModeText, &PUSHBUTTONPROPERTIES::SetMode>("mode")
        .Saved()
        .Label("Mode")
        .Items(IDC_MODE)
        .OneOf("absolute,increment,decrement")
        .Says("`absolute`: the release sends the off value; `increment`, `decrement`: it reads the number of "
              "the first target that answers, or where none does takes the off value, and sends the next one "
              "up or down to all. While nobody answers it shows the not-equal sign."),
    Handled<&PUSHBUTTONPROPERTIES::OneValueKeyword<&PUSHBUTTONPROPERTIES::offValue>>("offvalue",
                                                                                     KeywordKind::Integer)
        .Saved()
        .Label("Off value")
        .Items(IDC_OFF_VALUE)
        .Says("Whole number sent at the release; `inactive` while the button repeats or both values are "
              "equal."),
    Handled<&PUSHBUTTONPROPERTIES::OneValueKeyword<&PUSHBUTTONPROPERTIES::onValue>>("onvalue",
                                                                                    KeywordKind::Integer)
        .Saved()
        .Label("On value")
        .Items(IDC_ON_VALUE)
        .Says(
            "Whole number sent at the press, unless the button repeats; `inactive` while it repeats or both "
            "values are equal."),
    BUTTON_VALUES,
    BUTTON_COLOURS.Says("Both colours of the caption, released and pressed, joined by `,`."),
    Colour<&PUSHBUTTONPROPERTIES::textColorPressed>("textcolorwhenpressed")
        .Saved()
        .Label("Pressed text")
        .Items(IDC_PRESSED_COLOUR, IDC_CHOOSE_PRESSED_COLOUR)
        .Says("Colour of the caption while it is pressed, `0x00bbggrr`."),
    Colour<&PUSHBUTTONPROPERTIES::textColorReleased>("textcolorwhenunpressed")
        .Saved()
        .Label("Released text")
        .Items(IDC_RELEASED_COLOUR, IDC_CHOOSE_RELEASED_COLOUR)
        .Says("Colour of the caption while it is released, `0x00bbggrr`."),
    VALUE,
});

} // namespace

KeywordList PUSHBUTTONPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// A float is rounded by adding 0.5 and cutting off.
int PUSHBUTTONPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerInteger(&record, offValue);
    }
    int value = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &value) == 0) {
        return 0;
    }
    if (record.datatype == DATATYPE_FLOAT) {
        value = logic::TruncateToInteger(*static_cast<const float*>(record.data) + 0.5);
    }
    if (value == offValue) {
        return 0;
    }
    offValue = value;
    onValue = value;
    return 1;
}

// Press and release

void PUSHBUTTONPROPERTIES::Pressed() {
    if (repeat.IsOn()) {
        repeat.Start(window);
    } else if (onValue != offValue) {
        Send(onValue);
    }
}

void PUSHBUTTONPROPERTIES::Released() {
    ShowHeldDown(false);
    if (!IsConfirmed(*this, confirmText, caption)) {
        return;
    }
    SendClickTemplate(*this, clickTemplate, caption.c_str());
    SendStepped(1);
}

void PUSHBUTTONPROPERTIES::SendStepped(int steps) {
    if (!IsAbsolute()) {
        int current = offValue;
        AskTargets(current);
        offValue = logic::StepValue(current, pressMode, steps);
    }
    Send(offValue);
}

void PUSHBUTTONPROPERTIES::AskTargets(int& current) {
    const bool isAnswered = requests.empty() || AskForValue(requests, DATATYPE_INTEGER, &current);
    ShowPollResult(isAnswered ? WhetherLive() : REQUEST_UNREACHABLE);
}

// While held, and comparing while idle

LRESULT PUSHBUTTONPROPERTIES::OnTimer(WPARAM timer, LPARAM) {
    const DWORD now = GetTickCount();
    if (timer != HeldRepeat::TIMER && UntilPoll(now) > 0) {
        return 0;
    }
    lastPoll = now;
    if (!IsAbsolute() && !dragging) {
        int current = offValue; // asked for the sign alone
        AskTargets(current);
    } else if (!IsAbsolute()) {
        Repeat(now);
    } else if (onValue != offValue && !repeat.IsOn()) {
        Compare();
    } else {
        ShowPollResult(WhetherLive());
    }
    return 0;
}

void PUSHBUTTONPROPERTIES::Repeat(DWORD now) {
    const int steps = interval == 0 || !repeat.IsOn() ? 0 : repeat.Steps(now);
    if (steps > 0) {
        SendStepped(steps);
    }
}

void PUSHBUTTONPROPERTIES::Compare() {
    int current = offValue;
    const int result = Ask(requests, DATATYPE_INTEGER, &current);
    const bool matches = current == onValue || current == offValue;
    ShowPollResult(matches ? result : REQUEST_DISAGREE);
}

// Drawing

void PUSHBUTTONPROPERTIES::Draw(HDC dc, const RECT& client) const {
    DrawFace(dc, client, pressed ? 1 : 0, pressed);
    DrawCaption(dc, client, pressed, pressed, pressed ? textColorPressed : textColorReleased);
}

// Window procedure and registration

namespace {

LRESULT CALLBACK PushButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& button = *PropertiesOf<PUSHBUTTONPROPERTIES>(window);
    if (message == WM_LBUTTONDOWN && wParam == 0 && button.mode == 0) { // no button is down
        return 0;
    }
    button.repeat.Watch(window, message);
    return ButtonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation pushButtonControl = Implement<PUSHBUTTONPROPERTIES>(
    PushButtonProc, LAID_OUT,
    "A button that sends one number when pressed and another when released, or steps what it is "
    "bound to up or down.");
