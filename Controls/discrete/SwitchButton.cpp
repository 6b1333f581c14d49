// BTRISTATEBUTTON: a button that stays on or off, sends its on or off value at each change and follows what
// it is bound to. Each direction can have a question in front of it, and the caption can come from a second
// binding. Values are whole numbers, times in milliseconds.

#include "Controls/families/FunctionList.h"
#include "Controls/families/Question.h"
#include "Controls/families/TwoStateButton.h"
#include "logic/controls/ButtonLogic.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

class SWITCHBUTTONPROPERTIES : public TWOSTATEPROPERTIES {
public:
    SWITCHBUTTONPROPERTIES() {
        onValue = 1;
        lastPoll = GetTickCount();
    }
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    bool IsOn() const override { return isOn; }
    void Released() override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(Value()); }

    int Value() const { return isOn ? onValue : offValue; }
    void SetOn(bool on);

    int ValueKeyword(VALUERECORD& record);
    // Both questions at once; empty when they are not the same.
    std::string BothQuestions() const {
        return confirmWhenPressed == confirmWhenReleased ? confirmWhenPressed : "";
    }
    bool SetBothQuestions(const std::string& text);

    std::string confirmWhenReleased; // question before it goes off; empty for none
    std::string confirmWhenPressed;  // question before it goes on; empty for none
    bool isOn = false;
    FunctionList captionFunctions; // where the caption comes from; empty: it stays

private:
    // REQUEST_UNCHANGED, REQUEST_DELIVERED when a new state or caption was taken, anything else for a
    // mismatch.
    int PollValue();
    int PollCaption();
};

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&SWITCHBUTTONPROPERTIES::ValueKeyword>("value", KeywordKind::Integer)
                              .Says("On value or off value; any other number is refused. A change is sent to "
                                    "everything the button is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    STATE_BITMAP,
    BUTTON_CAPTION.Says("Text on the button and title of its questions."),
    CONNECTION_KEYWORD,
    Property<&SWITCHBUTTONPROPERTIES::BothQuestions, &SWITCHBUTTONPROPERTIES::SetBothQuestions>("confirm")
        .Saved()
        .Says("Sets both questions at once; empty when they are not the same."),
    Text<&SWITCHBUTTONPROPERTIES::confirmWhenPressed>("confirmwhenpressed")
        .Saved()
        .Label("Ask before on")
        .Items(IDC_CONFIRM)
        .Preview(logic::QuestionText, IDC_CONFIRM_PREVIEW)
        .Says("Question that is asked before it goes on; empty for none. `\\n` and `\\t` in it are line feed "
              "and tab."),
    Text<&SWITCHBUTTONPROPERTIES::confirmWhenReleased>("confirmwhenreleased")
        .Saved()
        .Label("Ask before off")
        .Items(IDC_CONFIRM_RELEASED)
        .Preview(logic::QuestionText, IDC_CONFIRM_RELEASED_PREVIEW)
        .Says("Question that is asked before it goes off; empty for none."),
    BUTTON_FONT,
    FUNCTION_KEYWORD,
    Functions<&SWITCHBUTTONPROPERTIES::captionFunctions>("function1")
        .Label("Caption follows")
        .Items(IDC_CAPTION_FUNCTION)
        .Says("Device parameters that the caption comes from, joined by `;`; empty: it stays."),
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Integer<&SWITCHBUTTONPROPERTIES::offValue>("offvalue")
        .Saved()
        .Label("Off value")
        .Items(IDC_OFF_VALUE)
        .Says("Whole number that means off."),
    Integer<&SWITCHBUTTONPROPERTIES::onValue>("onvalue")
        .Saved()
        .Label("On value")
        .Items(IDC_ON_VALUE)
        .Says("Whole number that means on."),
    BUTTON_VALUES,
    STATE_COLOURS,
    STATE_COLOUR_ON,
    STATE_COLOUR_OFF,
    VALUE,
});

} // namespace

KeywordList SWITCHBUTTONPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool SWITCHBUTTONPROPERTIES::SetBothQuestions(const std::string& text) {
    if (text.size() >= TEXT_SIZE) {
        return false;
    }
    confirmWhenPressed = text;
    confirmWhenReleased = text;
    return true;
}

// Of the two values; any other is refused. A change is sent.
int SWITCHBUTTONPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerInteger(&record, Value());
    }
    int value = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &value) == 0 ||
        (value != onValue && value != offValue)) {
        return 0;
    }
    if (const bool on = value == onValue; on != isOn) {
        SetOn(on);
        Send(value);
    }
    return 1;
}

// State

void SWITCHBUTTONPROPERTIES::SetDefaults() {
    BUTTONPROPERTIES::SetDefaults();
    captionFunctions.Attach(*this);
}

void SWITCHBUTTONPROPERTIES::SetOn(bool on) {
    isOn = on;
    SetHeldDown(dragging && IsHeldDown());
    Redraw();
}

void SWITCHBUTTONPROPERTIES::Released() {
    if (!IsHeldDown()) { // the cursor left the button
        return;
    }
    const bool on = !isOn; // as it was asked for, even if a poll changes the state meanwhile
    if (!IsConfirmed(*this, on ? confirmWhenPressed : confirmWhenReleased, caption)) {
        ShowHeldDown(false);
        return;
    }
    SetOn(on);
    Send(Value());
}

// Polling

int SWITCHBUTTONPROPERTIES::PollValue() {
    int value = Value();
    const int result = Ask(requests, DATATYPE_INTEGER, &value);
    if (result != REQUEST_DELIVERED) {
        return result;
    }
    if (value != onValue && value != offValue) {
        return REQUEST_DISAGREE;
    }
    SetOn(value == onValue);
    return result;
}

int SWITCHBUTTONPROPERTIES::PollCaption() {
    char text[TEXT_SIZE];
    std::snprintf(text, sizeof text, "%s", caption.c_str());
    const int result = Ask(captionFunctions.Requests(), DATATYPE_TEXT, text);
    if (result == REQUEST_DELIVERED) {
        caption.assign(text, std::strcspn(text, "\r\n")); // it is saved as one line
    }
    return result;
}

void SWITCHBUTTONPROPERTIES::Poll() {
    const int ofValue = PollValue();
    const int ofCaption = PollCaption();
    if (ofValue == REQUEST_DELIVERED || ofCaption == REQUEST_DELIVERED) {
        Redraw();
    }
    ShowPollResult(std::max(ofValue, ofCaption));
}

// Registration

extern const ControlImplementation switchButtonControl = Implement<SWITCHBUTTONPROPERTIES>(
    ButtonProc, LAID_OUT,
    "A button that stays on or off, sends a number at each change and follows what it is bound to.");
