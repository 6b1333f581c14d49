// LED: shows a value as a lamp that goes on and off at thresholds, or as one of several frames of an image.
// It takes no input of its own. Interval in milliseconds, geometry in pixels.

#include "Controls/dialog/ParameterDialog.h"
#include "Controls/drawing/BitmapParts.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "base/Gdi.h"
#include "logic/controls/LedLogic.h"

#include <algorithm>

namespace {

constexpr int LEAST_FRAMES = 2;
constexpr int MOST_FRAMES = 64;
constexpr int MARK_MARGIN = 3; // around the not-equal sign

} // namespace

class LEDPROPERTIES : public CONTROLPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override { interval = 250; }
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool DrawsNotEqual(const RECT& client) const override;
    int PreferredWidth() const override;
    void BitmapChanged();
    void ThresholdsChanged() { Show(value); }

    // Takes the value; redraws only when it shows.
    void Show(float newValue);

    float value = 0;
    float onThreshold = 0.5F;  // lit from here upwards
    float offThreshold = 0.5F; // dark below
    int frames = LEAST_FRAMES; // of the image, side by side
    int frame = 0;             // that is shown, 0 the dark one
    BitmapProperty image;      // a frame gives the window its size

private:
    void DrawLamp(HDC dc, const RECT& client) const;
    void DrawUnknown(HDC dc, const RECT& client) const;
};

// Keyword handlers

namespace {

LEDPROPERTIES& Led(HOSTINFO* object) {
    return *static_cast<LEDPROPERTIES*>(object);
}

int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    LEDPROPERTIES& led = Led(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerFloat(record, led.value);
    }
    float value = 0;
    if (record->command != COMMAND_SET || a_ReadFloat(record, &value) == 0) {
        return 0;
    }
    if (value != led.value) {
        led.Show(value);
        a_SendRequest(led.requests, COMMAND_SET, DATATYPE_FLOAT, &value, nullptr);
    }
    return 1;
}

template <auto Member>
constexpr KEYWORDHANDLER THRESHOLD = Notifying<FloatKeyword<Member>, &LEDPROPERTIES::ThresholdsChanged>;

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"bitmap", BitmapKeyword<&LEDPROPERTIES::image>, KEYWORD_SAVED | KEYWORD_FILE},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"frames",
     Notifying<IntegerKeyword<&LEDPROPERTIES::frames, LEAST_FRAMES, MOST_FRAMES>,
               &LEDPROPERTIES::BitmapChanged>,
     KEYWORD_SAVED},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"offthreshold", THRESHOLD<&LEDPROPERTIES::offThreshold>, KEYWORD_SAVED},
    {"onthreshold", THRESHOLD<&LEDPROPERTIES::onThreshold>, KEYWORD_SAVED},
    {"value", ValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* LEDPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
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

// Appearance

void LEDPROPERTIES::BitmapChanged() {
    if (image.Get() != nullptr) {
        const BitmapParts parts(*image.Get(), frames);
        Resize(parts.Width(), parts.Height());
    }
    Show(value);
    Redraw();
}

int LEDPROPERTIES::PreferredWidth() const {
    return image.Get() != nullptr ? BitmapParts(*image.Get(), frames).Width()
                                  : CONTROLPROPERTIES::PreferredWidth();
}

// The sign would cover all of a small lamp, or show a part of itself that says nothing.
bool LEDPROPERTIES::DrawsNotEqual(const RECT& client) const {
    const OSMIRBitmap& sign = *a_GetNotEqualSign();
    return client.right < sign.Width() + 2 * MARK_MARGIN || client.bottom < sign.Height() + 2 * MARK_MARGIN;
}

namespace {

COLORREF Between(COLORREF dark, COLORREF lit, int step, int steps) {
    const auto channel = [&](BYTE from, BYTE to) { return from + (to - from) * step / steps; };
    return RGB(channel(GetRValue(dark), GetRValue(lit)), channel(GetGValue(dark), GetGValue(lit)),
               channel(GetBValue(dark), GetBValue(lit)));
}

} // namespace

// A round lamp in a rim, brighter from frame to frame.
void LEDPROPERTIES::DrawLamp(HDC dc, const RECT& client) const {
    constexpr COLORREF RIM = RGB(28, 30, 32);
    constexpr COLORREF DARK = RGB(20, 70, 28);
    constexpr COLORREF LIT = RGB(70, 240, 96);
    constexpr COLORREF GLOSS = RGB(214, 255, 220);
    const int size = std::min(client.right, client.bottom);
    const int left = (client.right - size) / 2;
    const int top = (client.bottom - size) / 2;
    const auto disc = [&](int inset, COLORREF colour) {
        SetDCBrushColor(dc, colour);
        Ellipse(dc, left + inset, top + inset, left + size + 1 - inset, top + size + 1 - inset);
    };
    const Selected brush(dc, GetStockObject(DC_BRUSH));
    const Selected pen(dc, GetStockObject(NULL_PEN));
    disc(0, RIM);
    disc(std::max(size / 12, 1), Between(DARK, LIT, frame, frames - 1));
    if (frame > 0) {
        const int spot = std::max(size / 5, 2);
        SetDCBrushColor(dc, GLOSS);
        Ellipse(dc, left + size / 4, top + size / 4, left + size / 4 + spot + 1, top + size / 4 + spot + 1);
    }
}

// Neither lit nor dark: a grey plate that is crossed out.
void LEDPROPERTIES::DrawUnknown(HDC dc, const RECT& client) const {
    constexpr COLORREF PLATE = RGB(168, 168, 168);
    constexpr COLORREF CROSS = RGB(16, 16, 16);
    const Selected brush(dc, GetStockObject(DC_BRUSH));
    const Selected pen(dc, GetStockObject(DC_PEN));
    SetDCBrushColor(dc, PLATE);
    SetDCPenColor(dc, CROSS);
    FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    MoveToEx(dc, 0, 0, nullptr);
    LineTo(dc, client.right, client.bottom);
    MoveToEx(dc, 0, client.bottom - 1, nullptr);
    LineTo(dc, client.right, -1);
}

void LEDPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (notEqual && DrawsNotEqual(client)) {
        DrawUnknown(dc, client);
    } else if (image.Get() != nullptr) {
        const BitmapParts parts(*image.Get(), frames);
        parts.Draw(dc, frame, {0, 0, parts.Width(), parts.Height()});
    } else {
        DrawLamp(dc, client);
    }
}

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_ON_VALUE, "On from", FieldKind::Float, "onthreshold"},
    {IDC_OFF_VALUE, "Off below", FieldKind::Float, "offthreshold"},
    {IDC_FRAMES, "Frames", FieldKind::Integer, "frames"},
    {IDC_INTERVAL, "Polling interval", FieldKind::Integer, "interval"},
};
constexpr ParameterDialog DIALOG{.resource = IDD_LED, .edits = EDITS, .bitmapPrefix = "LED_"};

} // namespace

extern const ControlImplementation ledControl{
    .create = CreateProperties<LEDPROPERTIES>, .procedure = IndicatorProc, .fields = &DIALOG};
