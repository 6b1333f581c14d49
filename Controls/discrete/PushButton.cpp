// BBUTTON: a button with a caption that sends one value while it is pressed and another when it is released,
// or steps what it is bound to up or down, faster the longer it is held. It can ask before it acts, and a
// click can set any keyword of any object. Values are whole numbers, times in milliseconds.

#include "Controls/dialog/ParameterDialog.h"
#include "Controls/families/Button.h"
#include "Controls/families/ClickTemplate.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/text/Numbers.h"

#include <cstring>

namespace {

constexpr UINT_PTR REPEAT_TIMER = 11;
constexpr int LONGEST_PERIOD = 1000;
constexpr float SLOWEST_ACCELERATION = 0.5F;
constexpr float FASTEST_ACCELERATION = 10.0F;
constexpr const char* INACTIVE = "inactive"; // stands for a number that has no effect at present

} // namespace

class PUSHBUTTONPROPERTIES : public BUTTONPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    void Draw(HDC dc, const RECT& client) const override;
    bool IsHeldDown() const override { return pressed; }
    void SetHeldDown(bool down) override { pressed = down; }
    void Pressed() override;
    void Released() override;

    void StopRepeat();
    // In absolute mode sends offValue. Else that many steps up or down from what it is bound to, or from
    // offValue where nobody answers, which offValue becomes.
    void SendStepped(int steps);
    bool ValuesAreInactive() const { return capturePeriod != 0 || onValue == offValue; }

    std::string clickTemplate; // property line that a click sends; empty for none
    std::string confirmText;   // question before the release acts; empty for none
    std::string dialogEntries; // kept for its readers
    bool pressed = false;      // drawn down
    logic::PressMode pressMode = logic::PressMode::Absolute;
    bool capturedAtTick = false; // the repeat timer runs and the window had the capture at the last WM_TIMER
    DWORD pressTick = 0;         // tick count when the repeat timer was started; 0: it does not run
    int capturePeriod = 100;     // between two steps of a held button; 0: no repeat
    float captureAccel = 1.0F;   // how much each further step grows, 0.5 to 10

private:
    // The number of the first target that answers; the sign tells when none does.
    void AskTargets(int& current);
    void Repeat(DWORD now);
    void Compare();
};

// Keyword handlers

namespace {

PUSHBUTTONPROPERTIES& Push(HOSTINFO* object) {
    return *static_cast<PUSHBUTTONPROPERTIES*>(object);
}

// A float is rounded by adding 0.5 and cutting off.
int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    PUSHBUTTONPROPERTIES& button = Push(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerInteger(record, button.offValue);
    }
    int value = 0;
    if (record->command != COMMAND_SET || a_ReadInteger(record, &value) == 0) {
        return 0;
    }
    if (record->datatype == DATATYPE_FLOAT) {
        value = logic::TruncateToInteger(*static_cast<const float*>(record->data) + 0.5);
    }
    if (value == button.offValue) {
        return 0;
    }
    button.offValue = value;
    button.onValue = value;
    return 1;
}

// A number that is written as "inactive" while it has no effect; "inactive" read leaves it as it is.
template <KEYWORDHANDLER Handler>
int UnlessInactive(VALUERECORD* record, HOSTINFO* object, bool inactive) {
    if (record->datatype == DATATYPE_TEXT && record->data != nullptr) {
        if (record->command == COMMAND_GET && inactive) {
            return a_AnswerText(record, INACTIVE);
        }
        if (record->command == COMMAND_SET && std::strcmp(static_cast<char*>(record->data), INACTIVE) == 0) {
            return 1;
        }
    }
    return Handler(record, object);
}

int OffValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    return UnlessInactive<IntegerKeyword<&PUSHBUTTONPROPERTIES::offValue>>(record, object,
                                                                           Push(object).ValuesAreInactive());
}

int OnValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    return UnlessInactive<IntegerKeyword<&PUSHBUTTONPROPERTIES::onValue>>(record, object,
                                                                          Push(object).ValuesAreInactive());
}

int AccelerationKeyword(VALUERECORD* record, HOSTINFO* object) {
    PUSHBUTTONPROPERTIES& button = Push(object);
    const int answer = UnlessInactive<FloatKeyword<&PUSHBUTTONPROPERTIES::captureAccel>>(
        record, object, button.capturePeriod == 0);
    a_CheckFloatRange(&button.captureAccel, SLOWEST_ACCELERATION, FASTEST_ACCELERATION);
    return answer;
}

// Text that is no number gives 0, "inactive" among it. A float is rounded by adding 0.5 and cutting off.
int PeriodKeyword(VALUERECORD* record, HOSTINFO* object) {
    PUSHBUTTONPROPERTIES& button = Push(object);
    if (record->command == COMMAND_GET) {
        return button.capturePeriod == 0 && record->datatype == DATATYPE_TEXT
                   ? a_AnswerText(record, INACTIVE)
                   : a_AnswerInteger(record, button.capturePeriod);
    }
    if (record->command != COMMAND_SET || record->data == nullptr) {
        return 0;
    }
    const bool isFloat = record->datatype == DATATYPE_FLOAT;
    int period = 0;
    if (isFloat || a_ReadInteger(record, &period) == 0) { // text beyond 32 bits is a float still
        float number = 0;
        if (a_ReadFloat(record, &number) == 0 && record->datatype != DATATYPE_TEXT) {
            return 0;
        }
        period = logic::TruncateToInteger(number + (isFloat ? 0.5 : 0.0));
    }
    a_CheckIntRange(&period, 0, LONGEST_PERIOD);
    button.capturePeriod = period;
    return 1;
}

int ModeKeyword(VALUERECORD* record, HOSTINFO* object) {
    PUSHBUTTONPROPERTIES& button = Push(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, logic::PressModeText(button.pressMode));
    }
    const auto text = TextToSet(record);
    if (!text) {
        return 0;
    }
    button.pressMode = logic::ParsePressMode(*text);
    return 1;
}

int IsPressedKeyword(VALUERECORD* record, HOSTINFO* object) {
    return record->command == COMMAND_GET ? a_AnswerInteger(record, Push(object).pressed ? 1 : 0) : 0;
}

int IsNotPressedKeyword(VALUERECORD* record, HOSTINFO* object) {
    return record->command == COMMAND_GET ? a_AnswerInteger(record, Push(object).pressed ? 0 : 1) : 0;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"bitmap", BitmapKeyword<&PUSHBUTTONPROPERTIES::image>, KEYWORD_SAVED | KEYWORD_FILE},
    {"caption", CaptionKeyword, KEYWORD_SAVED},
    {"captureaccel", AccelerationKeyword, KEYWORD_SAVED},
    {"captureperiod", PeriodKeyword, KEYWORD_SAVED},
    {"confirm", TextKeyword<&PUSHBUTTONPROPERTIES::confirmText>, KEYWORD_SAVED},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"click", TextKeyword<&PUSHBUTTONPROPERTIES::clickTemplate>, KEYWORD_SAVED | KEYWORD_CLICK},
    {"dialogentries", TextKeyword<&PUSHBUTTONPROPERTIES::dialogEntries>, KEYWORD_SAVED},
    {"font", FontKeyword<&PUSHBUTTONPROPERTIES::font>, KEYWORD_SAVED},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"ispressed", IsPressedKeyword, 0},
    {"isnotpressed", IsNotPressedKeyword, 0},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"mode", ModeKeyword, KEYWORD_SAVED},
    {"offvalue", OffValueKeyword, KEYWORD_SAVED},
    {"onvalue", OnValueKeyword, KEYWORD_SAVED},
    {"properties", ButtonPropertiesKeyword, KEYWORD_SAVED},
    {"textcolor", TextColorKeyword, 0},
    {"textcolorwhenpressed", ColourKeyword<&PUSHBUTTONPROPERTIES::textColorPressed>, KEYWORD_SAVED},
    {"textcolorwhenunpressed", ColourKeyword<&PUSHBUTTONPROPERTIES::textColorReleased>, KEYWORD_SAVED},
    {"value", ValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* PUSHBUTTONPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// Press and release

void PUSHBUTTONPROPERTIES::Pressed() {
    if (capturePeriod != 0) {
        SetTimer(window, REPEAT_TIMER, static_cast<UINT>(capturePeriod), nullptr);
        pressTick = GetTickCount();
        TRACE("SetTimer %d\n", capturePeriod);
    } else if (onValue != offValue) {
        Send(onValue);
    }
}

void PUSHBUTTONPROPERTIES::Released() {
    ShowHeldDown(false);
    if (!confirmText.empty() && !IsConfirmed(confirmText)) {
        return;
    }
    SendClickTemplate(*this, clickTemplate, caption.c_str());
    SendStepped(1);
}

void PUSHBUTTONPROPERTIES::SendStepped(int steps) {
    if (pressMode != logic::PressMode::Absolute) {
        int current = offValue;
        AskTargets(current);
        offValue = logic::StepValue(current, pressMode, steps);
    }
    Send(offValue);
}

void PUSHBUTTONPROPERTIES::AskTargets(int& current) {
    const bool isAnswered = requests.empty() || AskForValue(requests, DATATYPE_INTEGER, &current);
    ShowPollResult(isAnswered ? REQUEST_UNCHANGED : REQUEST_UNREACHABLE);
}

// While held, and comparing while idle

void PUSHBUTTONPROPERTIES::StopRepeat() {
    pressTick = 0;
    KillTimer(window, REPEAT_TIMER);
    TRACE("KillTimer\n");
}

LRESULT PUSHBUTTONPROPERTIES::OnTimer(WPARAM timer, LPARAM) {
    const DWORD now = GetTickCount();
    if (timer != REPEAT_TIMER && UntilPoll(now) > 0) {
        return 0;
    }
    lastPoll = now;
    if (pressMode != logic::PressMode::Absolute && !dragging) {
        int current = offValue; // asked for the sign alone
        AskTargets(current);
    } else if (capturePeriod != 0) {
        Repeat(now);
    } else if (onValue != offValue && pressMode == logic::PressMode::Absolute) {
        Compare();
    }
    return 0;
}

void PUSHBUTTONPROPERTIES::Repeat(DWORD now) {
    if (!capturedAtTick || interval == 0 || pressMode == logic::PressMode::Absolute || pressTick == 0) {
        return;
    }
    const int steps = logic::RepeatSteps(now - pressTick, capturePeriod, captureAccel);
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
    DrawCaption(dc, client, pressed, pressed ? textColorPressed : textColorReleased);
}

// Window procedure and registration

namespace {

LRESULT CALLBACK PushButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& button = *PropertiesOf<PUSHBUTTONPROPERTIES>(window);
    switch (message) {
    case WM_LBUTTONDOWN:
        if (wParam == 0 && button.mode == 0) { // no button is down
            return 0;
        }
        break;
    case WM_TIMER:
        // Asked for only while the button repeats: the answer comes from the system, and the ticks never end.
        button.capturedAtTick = button.pressTick != 0 && GetCapture() == window;
        break;
    case WM_CAPTURECHANGED:
        button.StopRepeat();
        break;
    default:
        break;
    }
    return ButtonProc(window, message, wParam, lParam);
}

} // namespace

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_CAPTION, "Caption", FieldKind::Text, "caption"},
    {IDC_FONT, "Font", FieldKind::Font, "font", 0, 0, IDC_CHOOSE_FONT},
    {IDC_PRESSED_COLOUR, "Pressed text", FieldKind::Colour, "textcolorwhenpressed", 0, 0,
     IDC_CHOOSE_PRESSED_COLOUR},
    {IDC_RELEASED_COLOUR, "Released text", FieldKind::Colour, "textcolorwhenunpressed", 0, 0,
     IDC_CHOOSE_RELEASED_COLOUR},
    {IDC_ON_VALUE, "On value", FieldKind::Integer, "onvalue"},
    {IDC_OFF_VALUE, "Off value", FieldKind::Integer, "offvalue"},
    {IDC_PERIOD, "Repeat period", FieldKind::Integer, "captureperiod"},
    {IDC_ACCELERATION, "Repeat acceleration", FieldKind::Float, "captureaccel"},
    {IDC_INTERVAL, "Polling interval", FieldKind::Integer, "interval"},
    {IDC_ENTRIES, "Dialog entries", FieldKind::Text, "dialogentries"},
    {IDC_CONFIRM, "Ask before", FieldKind::Text, "confirm"},
    {IDC_CLICK, "Click template", FieldKind::Text, "click"},
};
constexpr DialogChoice CHOICES[] = {{IDC_MODE, "mode", "absolute,increment,decrement"}};
constexpr DialogPreview PREVIEWS[] = {{IDC_CONFIRM_PREVIEW, "confirm", logic::QuestionText}};
constexpr ParameterDialog DIALOG{.resource = IDD_PUSHBUTTON,
                                 .edits = EDITS,
                                 .choices = CHOICES,
                                 .bitmapPrefix = "BUTTON_",
                                 .previews = PREVIEWS,
                                 .templateEdit = IDC_CLICK};

} // namespace

extern const ControlImplementation pushButtonControl{
    .create = CreateProperties<PUSHBUTTONPROPERTIES>, .procedure = PushButtonProc, .fields = &DIALOG};
