// MIXER: a channel strip that makes its own controls - mute, invert and solo switches, level and pan fader,
// two lamps, a value, a name field and a label - and configures them by property lines, as a panel file
// would. It draws only the background with the fader's scale. Geometry in pixels, levels in dB.

#include "Controls/dialog/ParameterDialog.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "base/Gdi.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int STRIP_WIDTH = 48;
constexpr int STRIP_HEIGHT = 252;
constexpr COLORREF STRIP_COLOUR = RGB(153, 153, 153);
constexpr LRESULT DIALOG_CODE = DLGC_WANTARROWS | DLGC_WANTALLKEYS;

// What the background of a strip shows.
struct StripLook {
    bool isInput = true; // the scale ends at 0 dB; otherwise at +18 dB
    bool hasPan = false;

    bool operator==(const StripLook&) const = default;
};

class StripBackground;

} // namespace

class MIXERPROPERTIES : public CONTROLPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override;
    void Destroying() override { a_DestroyChildWindows(this); }
    void Draw(HDC dc, const RECT& client) const override;
    void Poll() override;
    LRESULT OnUpdate(WPARAM wParam, LPARAM lParam) override;

    void SetInput(bool input);
    void ShowPan(bool shown);
    void LookChanged();

    StripLook look;
    HWND fader = nullptr; // level
    HWND pan = nullptr;
    std::shared_ptr<const StripBackground> background; // the same for all strips of that look
    FontProperty textFont;
    FontProperty scaleFont;

private:
    bool PassLevelOn();

    float level_ = 0; // of the fader, as last exchanged with the functions
};

// Children

namespace {

constexpr int MAXIMUM_LINES = 9;
constexpr DWORD FIELD_STYLE = ES_AUTOHSCROLL | WS_TABSTOP;

struct StripChild {
    const char* className;
    const char* name;
    RECT place; // left, top, width, height
    INT_PTR id;
    const char* lines[MAXIMUM_LINES];
    DWORD style = WS_VISIBLE;
    DWORD extendedStyle = 0;
};

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
     WS_VISIBLE | FIELD_STYLE,
     WS_EX_STATICEDGE},
    {"BEDIT",
     "Edit",
     {4, 236, 40, 15},
     13,
     {"*alignment=center", "*backgroundcolor=0x004C4C4C", "*textcolor=0x00ffffff",
      "*caption=", "*font=ms sans serif,8"},
     WS_VISIBLE | FIELD_STYLE},
    {"BSTATIC",
     "Label",
     {9, 3, 30, 15},
     14,
     {"backgroundcolor=0x004c4c4c", "textcolor=0x00ffffff", "datatype=string", "font=ms sans serif,8",
      "alignment=center", "caption="}},
    {"FADER",
     PAN_FADER,
     {1, 33, 14, 101},
     12,
     {"bitmap=.\\Controls\\Fader_horizontal.bmp", "knobheight=9", "resolution=1", "fmt=%.0f",
      "properties=-50,50,0"},
     WS_TABSTOP}, // hidden until the strip is a stereo one
};

// The lines are the child's defaults and no changes to the panel.
void Load(HWND child, const char* line) {
    SendMessageA(child, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line));
}

HWND CreateChild(const StripChild& child, MIXERPROPERTIES& strip) {
    HOSTINFO* context = &strip;
    HWND made = CreateWindowExA(child.extendedStyle, child.className, child.name, WS_CHILD | child.style,
                                child.place.left, child.place.top, child.place.right, child.place.bottom,
                                strip.window, reinterpret_cast<HMENU>(child.id), ModuleInstance(), context);
    for (const char* line : child.lines) {
        if (line != nullptr) {
            Load(made, line);
        }
    }
    return made;
}

// The level as the fader has it, or is to have it.
int ExchangeLevel(HWND fader, int command, int datatype, void* data) {
    if (a_FromWindow(fader) == nullptr) { // deleted while the panel was edited
        return 0;
    }
    VALUERECORD record{command, 0, datatype, 0, data, nullptr, 0};
    return static_cast<int>(SendMessageA(fader, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record)));
}

// Keyword handlers

MIXERPROPERTIES& Strip(HOSTINFO* object) {
    return *static_cast<MIXERPROPERTIES*>(object);
}

// The value of the strip is its level.
int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    return ExchangeLevel(Strip(object).fader, record->command, record->datatype, record->data);
}

bool BeginsWith(const std::string& text, char letter) {
    return !text.empty() && (text.front() == letter || text.front() == letter - 'a' + 'A');
}

int ModeKeyword(VALUERECORD* record, HOSTINFO* object) {
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, Strip(object).look.isInput ? "input" : "output");
    }
    const auto text = TextToSet(record);
    if (!text) {
        return 0;
    }
    Strip(object).SetInput(BeginsWith(*text, 'i'));
    return 1;
}

int StereoKeyword(VALUERECORD* record, HOSTINFO* object) {
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, Strip(object).look.hasPan ? "yes" : "no");
    }
    const auto text = TextToSet(record);
    if (!text) {
        return 0;
    }
    Strip(object).ShowPan(BeginsWith(*text, 'y'));
    return 1;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"mode", ModeKeyword, KEYWORD_SAVED},
    {"stereo", StereoKeyword, KEYWORD_SAVED},
    {"value", ValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* MIXERPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// State

void MIXERPROPERTIES::SetInput(bool input) {
    if (input == look.isInput) {
        return;
    }
    look.isInput = input;
    Load(fader, input ? "properties=-80,0" : "properties=-80,18");
    LookChanged();
}

void MIXERPROPERTIES::ShowPan(bool shown) {
    if (shown == look.hasPan) {
        return;
    }
    look.hasPan = shown;
    ShowWindow(pan, shown ? SW_SHOWNA : SW_HIDE);
    LookChanged();
}

// Sends what the fader was moved to. The object may be gone afterwards. False when it was not moved.
bool MIXERPROPERTIES::PassLevelOn() {
    float level = level_;
    if (requests.empty() || ExchangeLevel(fader, COMMAND_GET, DATATYPE_FLOAT, &level) == 0) {
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
    if (result == REQUEST_DELIVERED && GetCapture() != fader) {
        ExchangeLevel(fader, COMMAND_SET, DATATYPE_FLOAT, &level);
        ExchangeLevel(fader, COMMAND_GET, DATATYPE_FLOAT, &level_); // limited to its range
    }
    ShowPollResult(result);
}

// Drawing

namespace {

void DrawScale(HDC dc, const StripLook& look) {
    struct Label {
        POINT place;
        const char* text;
    };
    static constexpr Label INPUT_LABELS[] = {
        {{8, 115}, "0"}, {{2, 135}, "-20"}, {{2, 154}, "-40"}, {{2, 174}, "-60"}, {{2, 194}, "-80"}};
    static constexpr Label OUTPUT_LABELS[] = {{{2, 115}, "+18"}, {{8, 130}, "0"},   {{2, 146}, "-20"},
                                              {{2, 162}, "-40"}, {{2, 178}, "-60"}, {{2, 194}, "-80"}};
    const double distance = look.isInput ? 19.63 : 15.63;
    for (double y = 119.0; y <= 210.0; y += distance) {
        MoveToEx(dc, 14, static_cast<int>(y), nullptr);
        LineTo(dc, 18, static_cast<int>(y));
        MoveToEx(dc, 25, static_cast<int>(y), nullptr);
        LineTo(dc, 30, static_cast<int>(y));
    }
    const auto write = [dc](const Label& label) {
        TextOutA(dc, label.place.x, label.place.y, label.text, lstrlenA(label.text));
    };
    if (look.isInput) {
        std::for_each(std::begin(INPUT_LABELS), std::end(INPUT_LABELS), write);
    } else {
        std::for_each(std::begin(OUTPUT_LABELS), std::end(OUTPUT_LABELS), write);
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

void DrawStrip(HDC dc, const StripLook& look, HFONT font) {
    const RECT all{0, 0, STRIP_WIDTH, STRIP_HEIGHT};
    const Brush ground(CreateSolidBrush(STRIP_COLOUR));
    FillRect(dc, &all, ground.get());
    const Selected selectedFont(dc, font);
    const Selected pen(dc, GetStockObject(BLACK_PEN));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0, 0, 0));
    DrawLampNames(dc);
    DrawScale(dc, look);
    if (look.hasPan) {
        DrawPanScale(dc);
    }
}

// A finished background. There are four at most, however many strips.
class StripBackground {
public:
    StripBackground(const StripLook& look, HFONT font)
        : bitmap_(CreatePixels(STRIP_WIDTH, STRIP_HEIGHT)), dc_(bitmap_.get()) {
        DrawStrip(dc_.Get(), look, font);
    }

    HDC Dc() const { return dc_.Get(); }

    static std::shared_ptr<const StripBackground> Get(const StripLook& look, HFONT font) {
        static std::weak_ptr<const StripBackground> known[2][2];
        auto& entry = known[look.isInput ? 1 : 0][look.hasPan ? 1 : 0];
        auto found = entry.lock();
        if (!found) {
            found = std::make_shared<StripBackground>(look, font);
            entry = found;
        }
        return found;
    }

private:
    Bitmap bitmap_;
    MemoryDc dc_;
};

} // namespace

void MIXERPROPERTIES::LookChanged() {
    background = StripBackground::Get(look, scaleFont.Get());
    Redraw();
}

void MIXERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    BitBlt(dc, 0, 0, client.right, client.bottom, background->Dc(), 0, 0, SRCCOPY);
}

// Creation

void MIXERPROPERTIES::SetDefaults() {
    interval = 250;
    Resize(STRIP_WIDTH, STRIP_HEIGHT);
    SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) | WS_CLIPCHILDREN);
    SetWindowLongA(window, GWL_EXSTYLE, GetWindowLongA(window, GWL_EXSTYLE) | WS_EX_CONTROLPARENT);
    textFont.Load("ms sans serif,8");
    scaleFont.Load("Small Fonts,5");
    for (const StripChild& child : CHILDREN) {
        const HWND made = CreateChild(child, *this);
        fader = child.name == LEVEL_FADER ? made : fader;
        pan = child.name == PAN_FADER ? made : pan;
    }
    ExchangeLevel(fader, COMMAND_GET, DATATYPE_FLOAT, &level_);
    LookChanged();
}

// Window procedure

namespace {

LRESULT CALLBACK MixerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DIALOG_CODE : CommonProc(window, message, wParam, lParam);
}

} // namespace

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {{IDC_INTERVAL, "Polling interval", FieldKind::Integer, "interval"}};
constexpr DialogChoice CHOICES[] = {{IDC_MODE, "mode", "input,output"}, {IDC_STEREO, "stereo", "no,yes"}};
constexpr ParameterDialog DIALOG{.resource = IDD_MIXER, .edits = EDITS, .choices = CHOICES};

} // namespace

extern const ControlImplementation mixerControl{
    .create = CreateProperties<MIXERPROPERTIES>, .procedure = MixerProc, .fields = &DIALOG};
