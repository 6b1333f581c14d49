// LED: shows a value as a lamp that goes on and off at thresholds, or as one of several frames of an image.
// It takes no input of its own. Interval in milliseconds, geometry in pixels.

#include "Controls/families/LampControl.h"
#include "logic/controls/LedLogic.h"

class LEDPROPERTIES : public LAMPPROPERTIES {
public:
    KeywordList Keywords() const override;
    void FaceChanged() override;
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool DrawsNotEqual(const RECT& client) const override { return !HasRoomForSign(client); }

    float Value() const { return value; }
    bool SetValue(float newValue);
    void ThresholdsChanged() { Show(value); }
    // Takes the value; redraws only when it shows.
    void Show(float newValue);

    float value = 0;
    float onThreshold = 0.5F;  // lit from here upwards
    float offThreshold = 0.5F; // dark below
};

// Keywords

namespace {

constexpr Keyword VALUE = Property<&LEDPROPERTIES::Value, &LEDPROPERTIES::SetValue>("value").Says(
    "The number. Set, it is shown and, unless it is the old one, sent to everything the LED is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    LAMP_BITMAP,
    CONNECTION_KEYWORD,
    LAMP_FRAMES.Says(
        "Number of frames of the image, 2 to 64. With more than two the value, without its fraction, "
        "is the number of the frame, the first being 0."),
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Number<&LEDPROPERTIES::offThreshold, &LEDPROPERTIES::ThresholdsChanged>("offthreshold")
        .Saved()
        .Label("Dark below (value)")
        .Items(IDC_OFF_VALUE)
        .Says("It goes dark below this value; above `onthreshold` it counts as equal to that."),
    Number<&LEDPROPERTIES::onThreshold, &LEDPROPERTIES::ThresholdsChanged>("onthreshold")
        .Saved()
        .Label("Lit from (value)")
        .Items(IDC_ON_VALUE)
        .Says("It is lit from this value upwards."),
    VALUE,
});

} // namespace

KeywordList LEDPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool LEDPROPERTIES::SetValue(float newValue) {
    if (newValue != value) {
        Show(newValue);
        a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &newValue, nullptr);
    }
    return true;
}

void LEDPROPERTIES::FaceChanged() {
    Show(value);
    Redraw();
}

// Value

void LEDPROPERTIES::Show(float newValue) {
    value = newValue;
    const int shown = frames > LEAST_FRAMES
                          ? logic::FrameOfValue(value, frames)
                          : (logic::IsLit(value, onThreshold, offThreshold, frame != 0) ? 1 : 0);
    if (shown != frame) {
        frame = shown;
        Redraw();
    }
}

void LEDPROPERTIES::Poll() {
    float polled = value;
    const int result = Ask(requests, DATATYPE_FLOAT, &polled);
    if (result == REQUEST_DELIVERED) {
        Show(polled);
    }
    ShowPollResult(result);
}

// Drawing

void LEDPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (notEqual && DrawsNotEqual(client)) {
        DrawUnknownLamp(dc, client);
    } else {
        DrawFrame(dc, client, frame);
    }
}

extern const ControlImplementation ledControl = Implement<LEDPROPERTIES>(
    IndicatorProc, LAID_OUT,
    "A lamp that is lit from a value upwards, or an image of which the value picks a frame.");
