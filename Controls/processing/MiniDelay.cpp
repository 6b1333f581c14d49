// MINIDELAY: a delay as a lamp, a number and a bar. The number is shown in a unit of the view's own; the
// delay keeps its unit. A click on the lamp bypasses, the wheel steps.

#include "Controls/families/HeldBlock.h"
#include "Controls/families/View.h"
#include "Controls/resources/resource.h"
#include "base/Gdi.h"
#include "logic/controls/DelayView.h"

#include <algorithm>
#include <cmath>

using logic::DelaySetting;

namespace {

constexpr int MARGIN = 6;
constexpr int BAR_HEIGHT = 6;
constexpr int LOWEST_RATE = 8000; // Hz
constexpr int HIGHEST_RATE = 768'000;
constexpr int PAGE = 10; // steps

// The picture and the two lamps of the view.
class DelayPictures : public SharedPicture {
public:
    DelayPictures(const ControlClass& controlClass, HINSTANCE module)
        : SharedPicture(controlClass),
          lit_(LoadBitmapA(module, MAKEINTRESOURCEA(IDB_DELAY_ON))),
          dark_(LoadBitmapA(module, MAKEINTRESOURCEA(IDB_DELAY_OFF))) {}

    HBITMAP Lamp(bool isLit) const { return (isLit ? lit_ : dark_).get(); }

private:
    const Bitmap lit_;
    const Bitmap dark_;
};

std::unique_ptr<SharedResources> Share(const ControlClass& controlClass, HINSTANCE module) {
    return std::make_unique<DelayPictures>(controlClass, module);
}

} // namespace

class MINIDELAYPROPERTIES : public VIEWPROPERTIES {
public:
    MINIDELAYPROPERTIES() : delay(*this) {}
    KeywordList Keywords() const override;
    void SetDefaults() override;
    int ValueDatatype() const override { return DATATYPE_DELAY; }
    void BindingsChanged() override;
    void Poll() override { ShowPollResult(delay.Ask()); }
    void DrawView(Canvas& canvas) const override;
    bool BeginViewDrag(POINT point) override;
    bool KeyDown(WPARAM key) override;
    void Wheel(int notches, bool fine, POINT) override { Step(notches, fine); }

    int ValueKeyword(VALUERECORD& record);
    float Maximum() const { return maximum; }
    bool SetMaximum(float milliseconds);
    void LookChanged() { Redraw(); }
    void Take(const DelaySetting& taken);
    void Step(int steps, bool isSmall);
    void Bypass();

    class Delay : public HeldBlock<DelaySetting> {
    public:
        explicit Delay(MINIDELAYPROPERTIES& view) : view_(view) {}
        CONTROLPROPERTIES& Owner() override { return view_; }
        void ShowBlock(const DelaySetting& next) override {
            value = next;
            view_.RedrawView();
        }

    private:
        MINIDELAYPROPERTIES& view_;
    };

    Delay delay;
    logic::ShownUnit unit = logic::ShownUnit::Milliseconds;
    int sampleRate = 48'000;
    float maximum = 500; // milliseconds that fill the bar

private:
    HBITMAP Lamp() const;
    RECT LampBox() const;
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&MINIDELAYPROPERTIES::ValueKeyword>("value", KeywordKind::Block)
        .Says(
            "The delay as `0,2.5 ms`: bypass, then amount and unit, of which either may be left out. Set, it "
            "is sent to everything the view is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    VIEW_BACKGROUND,
    VIEW_CAPTION,
    VIEW_CLICK,
    CONNECTION_KEYWORD,
    VIEW_FONT,
    FUNCTION_KEYWORD.Says("Device parameters that hold the delay, joined by `;`."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    VIEW_LINE_COLOUR.Says("Colour of the bar, `0x00bbggrr`."),
    Property<&MINIDELAYPROPERTIES::Maximum, &MINIDELAYPROPERTIES::SetMaximum>("maximum")
        .Saved()
        .Label("Full bar in ms")
        .Unit("ms")
        .Says("Milliseconds that fill the bar; more than 0."),
    Limited<&MINIDELAYPROPERTIES::sampleRate, LOWEST_RATE, HIGHEST_RATE, &MINIDELAYPROPERTIES::LookChanged>(
        "samplerate")
        .Saved()
        .Label("Sampling rate in Hz")
        .Unit("Hz")
        .Says("Sampling rate that samples are counted at, 8000 to 768000 Hz."),
    VIEW_TEXT_COLOUR,
    Words<"ms,m,ft,samples", &MINIDELAYPROPERTIES::unit, &MINIDELAYPROPERTIES::LookChanged>("unit")
        .Saved()
        .Label("Unit")
        .Says("Unit that the delay is shown and stepped in: `ms`, `m`, `ft` or `samples`. It keeps its own."),
    VALUE,
});

} // namespace

KeywordList MINIDELAYPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void MINIDELAYPROPERTIES::SetDefaults() {
    VIEWPROPERTIES::SetDefaults();
    delay.parts = {WholeBlock<DelaySetting>(requests, DATATYPE_DELAY)};
}

void MINIDELAYPROPERTIES::BindingsChanged() {
    delay.parts.front().SetKnown(false);
    VIEWPROPERTIES::BindingsChanged();
}

bool MINIDELAYPROPERTIES::SetMaximum(float milliseconds) {
    if (!(milliseconds > 0)) {
        return false;
    }
    maximum = milliseconds;
    Redraw();
    return true;
}

int MINIDELAYPROPERTIES::ValueKeyword(VALUERECORD& record) {
    const bool isText = record.datatype == DATATYPE_TEXT;
    if (record.command == COMMAND_GET) {
        return isText ? AnswerWith(&record, logic::DelayText(delay.value))
                      : a_AnswerBytes(&record, DATATYPE_DELAY, &delay.value, sizeof delay.value);
    }
    const auto text = isText ? TextToSet(&record) : std::nullopt;
    if (text) {
        const auto one = logic::ReadDelay(*text, {});
        if (!one) {
            return 0;
        }
        if (one == logic::ReadDelay(*text, {.bypass = 1, .amount = 1, .unit = 1})) { // nothing is left out
            Take(*one);
            return 1;
        }
        delay.Edit(0,
                   [&](DelaySetting& edited) { edited = logic::ReadDelay(*text, edited).value_or(edited); });
        return 1;
    }
    DelaySetting given;
    if (record.command != COMMAND_SET || a_ReadBytes(&record, DATATYPE_DELAY, &given, sizeof given) == 0 ||
        !logic::IsKnown(given)) {
        return 0;
    }
    Take(given);
    return 1;
}

// A whole delay needs nothing that is held.
void MINIDELAYPROPERTIES::Take(const DelaySetting& taken) {
    if (taken != delay.value || delay.IsAnyOdd()) {
        delay.KnowAll();
        delay.ShowBlock(taken);
        delay.SendAll();
    }
}

void MINIDELAYPROPERTIES::Step(int steps, bool isSmall) {
    delay.Edit(0, [&](DelaySetting& edited) {
        edited = logic::StepDelayIn(unit, edited, steps, isSmall, sampleRate);
    });
}

void MINIDELAYPROPERTIES::Bypass() {
    delay.Edit(0, [](DelaySetting& edited) { edited.bypass = edited.bypass != 0 ? 0 : 1; });
}

// Drawing

HBITMAP MINIDELAYPROPERTIES::Lamp() const {
    const auto* pictures = SharedOf<DelayPictures>(*controlClass);
    return pictures == nullptr ? nullptr : pictures->Lamp(delay.value.bypass == 0);
}

RECT MINIDELAYPROPERTIES::LampBox() const {
    const RECT area = ViewArea();
    const HBITMAP lamp = Lamp();
    const SIZE size = lamp == nullptr ? SIZE{} : SizeOf(lamp);
    const int bottom = std::max<int>(area.bottom - BAR_HEIGHT - MARGIN, area.top);
    const int top = std::max<int>((area.top + bottom - size.cy) / 2, area.top);
    return {area.left + MARGIN, top, area.left + MARGIN + size.cx, top + size.cy};
}

void MINIDELAYPROPERTIES::DrawView(Canvas& canvas) const {
    const RECT& area = canvas.Area();
    const bool isOn = delay.value.bypass == 0;
    const RECT lamp = LampBox();
    if (const HBITMAP picture = Lamp(); picture != nullptr) {
        const MemoryDc memory(picture);
        GdiTransparentBlt(canvas.Dc(), lamp.left, lamp.top, lamp.right - lamp.left, lamp.bottom - lamp.top,
                          memory.Get(), 0, 0, lamp.right - lamp.left, lamp.bottom - lamp.top,
                          GetPixel(memory.Get(), 0, 0));
    }
    const int barTop = std::max<int>(area.bottom - BAR_HEIGHT - MARGIN / 2, area.top);
    canvas.Text(logic::DelayTextIn(unit, delay.value, sampleRate),
                {lamp.right + MARGIN / 2, area.top, area.right - MARGIN, barTop}, font.Get(),
                isOn ? textColour : Shade(textColour, 0.6), DT_RIGHT | DT_VCENTER | DT_END_ELLIPSIS);
    const RECT track{area.left + MARGIN, barTop, area.right - MARGIN, barTop + BAR_HEIGHT};
    canvas.Box(track, Shade(textColour, 0.13));
    const double share = logic::DelayShare(delay.value, maximum, sampleRate);
    const int length = static_cast<int>(std::lround(share * std::max<int>(track.right - track.left, 0)));
    canvas.Box({track.left, track.top, track.left + length, track.bottom},
               isOn ? lineColour : Shade(textColour, 0.4));
}

// Input

bool MINIDELAYPROPERTIES::BeginViewDrag(POINT point) {
    RECT lamp = LampBox();
    InflateRect(&lamp, MARGIN / 2, MARGIN / 2);
    if (IsBound() && PtInRect(&lamp, point)) {
        Bypass();
    }
    return false;
}

bool MINIDELAYPROPERTIES::KeyDown(WPARAM key) {
    const bool isSmall = GetKeyState(VK_SHIFT) < 0;
    switch (key) {
    case VK_SPACE:
        Bypass();
        return true;
    case VK_UP:
    case VK_RIGHT:
        Step(1, isSmall);
        return true;
    case VK_DOWN:
    case VK_LEFT:
        Step(-1, isSmall);
        return true;
    case VK_PRIOR:
        Step(PAGE, isSmall);
        return true;
    case VK_NEXT:
        Step(-PAGE, isSmall);
        return true;
    default:
        return false;
    }
}

extern const ControlImplementation miniDelayControl{
    .create = CreateProperties<MINIDELAYPROPERTIES>,
    .procedure = ViewProc,
    .purpose =
        "A delay as a lamp, a number in a unit of choice and a bar. A click on the lamp bypasses it, the "
        "wheel and the arrow keys step it.",
    .dialog = LAID_OUT,
    .share = Share};
