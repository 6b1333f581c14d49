// BTRISTATEBUTTON: a button that stays on or off, sends its on or off value at each change and follows what
// it is bound to. Each direction can have a question in front of it, and the caption can come from a second
// binding. Values are whole numbers, times in milliseconds.

#include "Controls/dialog/ParameterDialog.h"
#include "Controls/families/Button.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/drawing/ImageFrames.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

enum class SwitchFace { Off, HeldDown, On }; // also the number of the image's frame

} // namespace

class SWITCHBUTTONPROPERTIES : public BUTTONPROPERTIES {
public:
    SWITCHBUTTONPROPERTIES() {
        onValue = 1;
        lastPoll = GetTickCount();
    }
    void SetDefaults() override;

    const KEYWORDROW* GetHostinfoTable() override;
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool IsHeldDown() const override { return face == SwitchFace::HeldDown; }
    void SetHeldDown(bool down) override;
    void Released() override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(Value()); }

    // The third one shows the switch held down.
    int FrameCount() const override {
        return logic::ButtonFrameCount(image.Name(), image.Get()->Width(), image.Get()->Height());
    }
    int Value() const { return isOn ? onValue : offValue; }
    void SetOn(bool on);

    std::string confirmWhenReleased; // question before it goes off; empty for none
    std::string confirmWhenPressed;  // question before it goes on; empty for none
    bool isOn = false;
    SwitchFace face = SwitchFace::Off;
    BINDINGLIST captionFunctions; // where the caption comes from; empty: it stays
    REQUESTLIST captionRequests;

private:
    // REQUEST_UNCHANGED, REQUEST_DELIVERED when a new state or caption was taken, anything else for a
    // mismatch.
    int PollValue();
    int PollCaption();
};

// Keyword handlers

namespace {

SWITCHBUTTONPROPERTIES& Switch(HOSTINFO* object) {
    return *static_cast<SWITCHBUTTONPROPERTIES*>(object);
}

// Of the two values; any other is refused. A change is sent.
int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    SWITCHBUTTONPROPERTIES& button = Switch(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerInteger(record, button.Value());
    }
    int value = 0;
    if (record->command != COMMAND_SET || a_ReadInteger(record, &value) == 0 ||
        (value != button.onValue && value != button.offValue)) {
        return 0;
    }
    if (const bool on = value == button.onValue; on != button.isOn) {
        button.SetOn(on);
        button.Send(value);
    }
    return 1;
}

// Both questions at once; written only when they are the same.
int ConfirmKeyword(VALUERECORD* record, HOSTINFO* object) {
    SWITCHBUTTONPROPERTIES& button = Switch(object);
    if (record->command == COMMAND_GET) {
        const bool same = button.confirmWhenPressed == button.confirmWhenReleased;
        return a_AnswerText(record, same ? button.confirmWhenPressed.c_str() : "");
    }
    const int taken = TextKeyword<&SWITCHBUTTONPROPERTIES::confirmWhenPressed>(record, object);
    if (taken != 0) {
        button.confirmWhenReleased = button.confirmWhenPressed;
    }
    return taken;
}

int CaptionFunctionKeyword(VALUERECORD* record, HOSTINFO* object) {
    SWITCHBUTTONPROPERTIES& button = Switch(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, a_BuildString(button.captionFunctions).c_str());
    }
    const auto text = TextToSet(record);
    BINDINGLIST none;
    return text ? a_FunctionChanged(text->c_str(), &button, button.captionFunctions, none,
                                    button.captionRequests)
                : 0;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"bitmap", BitmapKeyword<&SWITCHBUTTONPROPERTIES::image>, KEYWORD_SAVED | KEYWORD_FILE},
    {"caption", CaptionKeyword, KEYWORD_SAVED},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"confirm", ConfirmKeyword, KEYWORD_SAVED},
    {"confirmwhenpressed", TextKeyword<&SWITCHBUTTONPROPERTIES::confirmWhenPressed>, KEYWORD_SAVED},
    {"confirmwhenreleased", TextKeyword<&SWITCHBUTTONPROPERTIES::confirmWhenReleased>, KEYWORD_SAVED},
    {"font", FontKeyword<&SWITCHBUTTONPROPERTIES::font>, KEYWORD_SAVED},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"function1", CaptionFunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"offvalue", IntegerKeyword<&SWITCHBUTTONPROPERTIES::offValue>, KEYWORD_SAVED},
    {"onvalue", IntegerKeyword<&SWITCHBUTTONPROPERTIES::onValue>, KEYWORD_SAVED},
    {"properties", ButtonPropertiesKeyword, KEYWORD_SAVED},
    {"textcolor", TextColorKeyword, KEYWORD_SAVED},
    {"textcolorwhenpressed", ColourKeyword<&SWITCHBUTTONPROPERTIES::textColorPressed>, KEYWORD_SAVED},
    {"textcolorwhenreleased", ColourKeyword<&SWITCHBUTTONPROPERTIES::textColorReleased>, KEYWORD_SAVED},
    {"value", ValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* SWITCHBUTTONPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// State

void SWITCHBUTTONPROPERTIES::SetDefaults() {
    BUTTONPROPERTIES::SetDefaults();
    a_FollowRequests(this, captionFunctions, captionRequests);
}

void SWITCHBUTTONPROPERTIES::SetHeldDown(bool down) {
    face = down ? SwitchFace::HeldDown : isOn ? SwitchFace::On : SwitchFace::Off;
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
    const std::string question = on ? confirmWhenPressed : confirmWhenReleased;
    if (!question.empty()) {
        if (!IsConfirmed(question)) {
            ShowHeldDown(false);
            return;
        }
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
    const int result = Ask(captionRequests, DATATYPE_TEXT, text);
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

// Drawing

void SWITCHBUTTONPROPERTIES::Draw(HDC dc, const RECT& client) const {
    DrawFace(dc, client, static_cast<int>(face), isOn);
    DrawCaption(dc, client, face != SwitchFace::Off,
                face == SwitchFace::On ? textColorPressed : textColorReleased);
}

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_CAPTION, "Caption", FieldKind::Text, "caption"},
    {IDC_FONT, "Font", FieldKind::Font, "font", 0, 0, IDC_CHOOSE_FONT},
    {IDC_PRESSED_COLOUR, "Text when on", FieldKind::Colour, "textcolorwhenpressed", 0, 0,
     IDC_CHOOSE_PRESSED_COLOUR},
    {IDC_RELEASED_COLOUR, "Text when off", FieldKind::Colour, "textcolorwhenreleased", 0, 0,
     IDC_CHOOSE_RELEASED_COLOUR},
    {IDC_ON_VALUE, "On value", FieldKind::Integer, "onvalue"},
    {IDC_OFF_VALUE, "Off value", FieldKind::Integer, "offvalue"},
    {IDC_INTERVAL, "Polling interval", FieldKind::Integer, "interval"},
    {IDC_CAPTION_FUNCTION, "Caption follows", FieldKind::Text, "function1"},
    {IDC_CONFIRM, "Ask before on", FieldKind::Text, "confirmwhenpressed"},
    {IDC_CONFIRM_RELEASED, "Ask before off", FieldKind::Text, "confirmwhenreleased"},
};
constexpr DialogPreview PREVIEWS[] = {
    {IDC_CONFIRM_PREVIEW, "confirmwhenpressed", logic::QuestionText},
    {IDC_CONFIRM_RELEASED_PREVIEW, "confirmwhenreleased", logic::QuestionText},
};
constexpr ParameterDialog DIALOG{
    .resource = IDD_SWITCHBUTTON, .edits = EDITS, .bitmapPrefix = "SWITCHBUTTON_", .previews = PREVIEWS};

} // namespace

extern const ControlImplementation switchButtonControl{
    .create = CreateProperties<SWITCHBUTTONPROPERTIES>, .procedure = ButtonProc, .fields = &DIALOG};
