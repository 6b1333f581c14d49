// MIXER: a channel strip that makes its own controls - mute, invert and solo switches, level and pan fader,
// two lamps, a value, a name field and a label - and configures them by property lines, as a panel file
// would. It draws only the background with the fader's scale. Geometry in pixels, levels in dB.

#include "Controls/drawing/FontProperty.h"
#include "Controls/families/Strip.h"
#include "Controls/families/StripChildren.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "base/Gdi.h"

#include <span>
#include <string>

namespace {

constexpr int STRIP_WIDTH = 48;
constexpr int STRIP_HEIGHT = 252;

constexpr const char* LEVEL_FADER = "Fader";
constexpr const char* PAN_FADER = "Stereo";

constexpr StripChild CHILDREN[] = {
    {"BTRISTATEBUTTON",
     "MUTE",
     {11, 87, 10, 10},
     12,
     {"bitmap=.\\Controls\\SWITCHBUTTON_red_26x16.bmp", "caption=MUTE", "textcolor=0xffffff,0",
      "font=Small Fonts,5"},
     WS_VISIBLE | WS_TABSTOP},
    {"BTRISTATEBUTTON",
     "INV",
     {11, 49, 10, 10},
     12,
     {"bitmap=.\\Controls\\SWITCHBUTTON_yellow_26x16.bmp", "caption=INV", "textcolor=0xffffff,0",
      "font=Small Fonts,5"},
     WS_VISIBLE | WS_TABSTOP},
    {"BTRISTATEBUTTON",
     "SOLO",
     {11, 68, 10, 10},
     12,
     {"bitmap=.\\Controls\\SWITCHBUTTON_green_26x16.bmp", "caption=SOLO", "textcolor=0xffffff,0",
      "font=Small Fonts,5"},
     WS_VISIBLE | WS_TABSTOP},
    {"FADER",
     LEVEL_FADER,
     {15, 108, 14, 101},
     12,
     {"bitmap=.\\Controls\\Fader.bmp", "properties=-80,0", "resolution=.5"},
     WS_VISIBLE | WS_TABSTOP},
    {"LED", "Led0db", {35, 119, 8, 8}, 12, {"bitmap=.\\Controls\\_MixerRedLed8x8.bmp"}},
    {"LED", "LedSig", {35, 137, 8, 8}, 12, {"bitmap=.\\Controls\\_MixerGreenLed8x8.bmp"}},
    {"BEDIT",
     "Value",
     {9, 215, 30, 15},
     12,
     {"font=ms sans serif,8", "textcolor=0x00ccff", "backgroundcolor=0x00000000", "datatype=f", "fmt=%.1f",
      "alignment=center", "interval=250", "connection=%n*Fader", "* =0.0"},
     WS_VISIBLE | STRIP_FIELD_STYLE,
     WS_EX_STATICEDGE},
    StripNameField("Edit", {4, 236, 40, 15}),
    StripLabel("Label", {9, 3, 30, 15}),
    {"FADER",
     PAN_FADER,
     {1, 33, 14, 101},
     12,
     {"bitmap=.\\Controls\\Fader_horizontal.bmp", "knobheight=9", "resolution=1", "fmt=%.0f",
      "properties=-50,50,0"},
     WS_TABSTOP}, // hidden until the strip is a stereo one
};

// What the modes make of them.
constexpr StripChange AS_INPUT[] = {{LEVEL_FADER, "properties=-80,0"}};
constexpr StripChange AS_OUTPUT[] = {{LEVEL_FADER, "properties=-80,18"}};
constexpr StripChange AS_MONO[] = {{.child = PAN_FADER, .show = SW_HIDE}};
constexpr StripChange AS_STEREO[] = {{.child = PAN_FADER, .show = SW_SHOWNA}};

} // namespace

class MIXERPROPERTIES : public STRIPPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    LRESULT OnUpdate(WPARAM wParam, LPARAM lParam) override;

    std::span<const StripChild> Children() const override { return CHILDREN; }
    SIZE StripSize() const override { return {STRIP_WIDTH, STRIP_HEIGHT}; }
    int Look() const override { return (isInput ? 1 : 0) + (hasPan ? 2 : 0); }
    void DrawBackground(HDC dc) const override;

    // The level, as the fader has it or is to have it.
    int ExchangeLevel(int command, int datatype, void* data) const {
        return SendToChild(LEVEL_FADER, command, datatype, data);
    }
    int LevelKeyword(VALUERECORD& record) {
        return ExchangeLevel(record.command, record.datatype, record.data);
    }
    std::string ModeText() const { return isInput ? "input" : "output"; }
    bool SetMode(const std::string& text);
    std::string StereoText() const { return hasPan ? "yes" : "no"; }
    bool SetStereo(const std::string& text);

    bool isInput = true; // the scale ends at 0 dB; otherwise at +18 dB
    bool hasPan = false;

private:
    bool PassLevelOn();

    float level_ = 0; // of the fader, as last exchanged with the functions
};

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&MIXERPROPERTIES::LevelKeyword>("value", KeywordKind::Number)
                              .Says("The level in dB, that of the child `Fader`.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    CONNECTION_KEYWORD,
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Property<&MIXERPROPERTIES::ModeText, &MIXERPROPERTIES::SetMode>("mode")
        .Saved()
        .Label("Mode")
        .Items(IDC_MODE)
        .OneOf("input,output")
        .Says("`input`: the level goes from -80 to 0 dB; anything else is `output`: from -80 to 18 dB."),
    Property<&MIXERPROPERTIES::StereoText, &MIXERPROPERTIES::SetStereo>("stereo")
        .Saved()
        .Label("Pan fader (stereo)")
        .Items(IDC_STEREO)
        .OneOf("no,yes")
        .Says("`yes`: the pan fader is shown; anything else is `no`."),
    VALUE,
});

bool BeginsWith(const std::string& text, char letter) {
    return !text.empty() && (text.front() == letter || text.front() == letter - 'a' + 'A');
}

} // namespace

KeywordList MIXERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool MIXERPROPERTIES::SetMode(const std::string& text) {
    if (const bool input = BeginsWith(text, 'i'); input != isInput) {
        isInput = input;
        Change(input ? AS_INPUT : AS_OUTPUT);
        LookChanged();
    }
    return true;
}

bool MIXERPROPERTIES::SetStereo(const std::string& text) {
    if (const bool stereo = BeginsWith(text, 'y'); stereo != hasPan) {
        hasPan = stereo;
        Change(stereo ? AS_STEREO : AS_MONO);
        LookChanged();
    }
    return true;
}

// Value

void MIXERPROPERTIES::SetDefaults() {
    interval = 250;
    STRIPPROPERTIES::SetDefaults();
    ExchangeLevel(COMMAND_GET, DATATYPE_FLOAT, &level_);
}

// Sends what the fader was moved to. The object may be gone afterwards. False when it was not moved.
bool MIXERPROPERTIES::PassLevelOn() {
    float level = level_;
    if (requests.empty() || ExchangeLevel(COMMAND_GET, DATATYPE_FLOAT, &level) == 0) {
        return false;
    }
    level_ = level;
    a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &level, nullptr);
    return true;
}

LRESULT MIXERPROPERTIES::OnUpdate(WPARAM, LPARAM) {
    PassLevelOn();
    return 0;
}

// What is bound to the strip itself goes to and comes from the level fader, which knows nothing of it.
void MIXERPROPERTIES::Poll() {
    if (requests.empty()) {
        ShowPollResult(REQUEST_UNCHANGED); // it may have been bound before
        return;
    }
    if (PassLevelOn()) {
        return;
    }
    float level = level_;
    const int result = Ask(requests, DATATYPE_FLOAT, &level);
    if (result == REQUEST_DELIVERED && GetCapture() != Child(LEVEL_FADER)) {
        ExchangeLevel(COMMAND_SET, DATATYPE_FLOAT, &level);
        ExchangeLevel(COMMAND_GET, DATATYPE_FLOAT, &level_); // limited to its range
    }
    ShowPollResult(result);
}

// Drawing

namespace {

void DrawScale(HDC dc, bool isInput) {
    struct Label {
        POINT place;
        const char* text;
    };
    static constexpr Label INPUT_LABELS[] = {
        {{8, 115}, "0"}, {{2, 135}, "-20"}, {{2, 154}, "-40"}, {{2, 174}, "-60"}, {{2, 194}, "-80"}};
    static constexpr Label OUTPUT_LABELS[] = {{{2, 115}, "+18"}, {{8, 130}, "0"},   {{2, 146}, "-20"},
                                              {{2, 162}, "-40"}, {{2, 178}, "-60"}, {{2, 194}, "-80"}};
    const double distance = isInput ? 19.63 : 15.63;
    for (double y = 119.0; y <= 210.0; y += distance) {
        MoveToEx(dc, 14, static_cast<int>(y), nullptr);
        LineTo(dc, 18, static_cast<int>(y));
        MoveToEx(dc, 25, static_cast<int>(y), nullptr);
        LineTo(dc, 30, static_cast<int>(y));
    }
    const std::span<const Label> labels = isInput ? std::span<const Label>(INPUT_LABELS) : OUTPUT_LABELS;
    for (const Label& label : labels) {
        TextOutA(dc, label.place.x, label.place.y, label.text, lstrlenA(label.text));
    }
}

void DrawPanScale(HDC dc) {
    for (const int x : {5, 14, 23, 32, 41}) {
        MoveToEx(dc, x, 30, nullptr);
        LineTo(dc, x, 35);
    }
    TextOutA(dc, 3, 20, "L", 1);
    TextOutA(dc, 16, 20, "PAN", 3);
    TextOutA(dc, 39, 20, "R", 1);
}

void DrawLampNames(HDC dc) {
    constexpr UINT CENTRED = DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP;
    RECT clip{30, 109, 46, 119};
    DrawTextA(dc, "CLIP", -1, &clip, CENTRED);
    RECT signal{31, 145, 45, 155};
    DrawTextA(dc, "SIG", -1, &signal, CENTRED);
}

} // namespace

void MIXERPROPERTIES::DrawBackground(HDC dc) const {
    DrawLampNames(dc);
    DrawScale(dc, isInput);
    if (hasPan) {
        DrawPanScale(dc);
    }
}

extern const ControlImplementation mixerControl = Implement<MIXERPROPERTIES>(
    StripProc, LAID_OUT,
    "A channel strip: mute, invert and solo switches, level and pan fader, lamps for clip and signal, a "
    "value, a name field and a label, all controls of its own inside it (`Strip1*Fader`, `MUTE`, `INV`, "
    "`SOLO`, `Led0db`, `LedSig`, `Value`, `Edit`, `Label`, `Stereo`).");
