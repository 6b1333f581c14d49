// CROSSOVER: one way of a loudspeaker crossover as a strip that makes its own controls. The strip holds the
// filters, gain, polarity, delay and mute, asks and tells its devices, and has a keyword for each of them
// that its children are connected to. Geometry in pixels, levels and gain in dB, frequencies in Hz.

#include "Controls/drawing/FontProperty.h"
#include "Controls/families/CrossoverParts.h"
#include "Controls/families/FunctionList.h"
#include "Controls/families/Strip.h"
#include "Controls/families/StripChildren.h"
#include "Controls/framework/Keywords.h"
#include "base/Gdi.h"
#include "logic/controls/FilterValues.h"
#include "logic/text/TypedNumber.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>

using logic::Crossover;
using logic::CrossoverFilters;

namespace {

constexpr int STRIP_WIDTH = 72;
constexpr int STRIP_HEIGHT = 252;
constexpr float LOWEST_SIGNAL = -60; // dB, of the bar
constexpr int UNREACHABLE = -1;      // answer of a part that is not known

// What the keywords function to function3 are bound to.
enum Part { FILTERS, GAIN, POLARITY, DELAY, PART_COUNT };

constexpr const char* LABEL = "Label";
constexpr const char* BYPASSED_DELAY = "off";

// A choice of filter types: "items=thru=OFF;6dB=BUTT6;...".
std::string TypeItems() {
    std::string line = "items=";
    for (std::size_t type = 0; type < logic::CROSSOVER_KEYS.size(); ++type) {
        line.append(type == 0 ? "" : ";")
            .append(logic::CROSSOVER_NAMES[type])
            .append("=")
            .append(logic::CROSSOVER_KEYS[type]);
    }
    return line;
}

StripChild TypeList(const char* name, int top, const char* items, const char* connection) {
    return {"BCOMBOBOX",
            name,
            {4, top, 64, 19},
            12,
            {items, "font=Small Fonts,7", connection},
            WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST};
}

StripChild Field(const char* name, RECT place, const char* connection) {
    return {"BEDIT",
            name,
            place,
            12,
            {"font=ms sans serif,8", "textcolor=0x00ccff", "backgroundcolor=0x00000000", "datatype=string",
             "alignment=center", "interval=250", connection},
            WS_VISIBLE | STRIP_FIELD_STYLE,
            WS_EX_STATICEDGE};
}

} // namespace

class CROSSOVERPROPERTIES : public STRIPPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    void BindingsChanged() override { way_.parts[FILTERS].SetKnown(false); }
    void ChildPressed(HWND child) override;

    std::span<const StripChild> Children() const override;
    SIZE StripSize() const override { return {STRIP_WIDTH, STRIP_HEIGHT}; }
    int Look() const override { return 0; }
    void DrawBackground(HDC dc) const override;
    POINT NotEqualPlace() const override { return {8, 160}; } // where no child is

    // The functions of a part; those of the filters are the strip's own.
    template <int part>
    std::string PartFunctions() const {
        return lists_[part].Text();
    }
    template <int part>
    bool SetPartFunctions(const std::string& text) {
        way_.parts[part].SetKnown(false);
        return lists_[part].Load(*this, text);
    }

    // What the children are connected to; no keyword has the name of a child, which would be found first. A
    // get of what no device answers, or is not known here, fails: so each of them shows it.
    template <bool isHighPass>
    int TypeKeyword(VALUERECORD& record);
    template <bool isHighPass>
    int FrequencyKeyword(VALUERECORD& record);
    int GainKeyword(VALUERECORD& record);
    int PolarityKeyword(VALUERECORD& record);
    int DelayKeyword(VALUERECORD& record);
    int BypassKeyword(VALUERECORD& record);
    int MuteKeyword(VALUERECORD& record);
    int SignalKeyword(VALUERECORD& record);

    FunctionList muteFunctions;
    FunctionList levelFunctions;

private:
    class Way : public HeldBlock<Crossover> {
    public:
        explicit Way(CROSSOVERPROPERTIES& strip) : strip_(strip) {
            parts = CrossoverParts(strip.requests, strip.requests, strip.lists_[GAIN].Requests(),
                                   strip.lists_[POLARITY].Requests(), strip.lists_[DELAY].Requests());
        }
        CONTROLPROPERTIES& Owner() override { return strip_; }
        void ShowBlock(const Crossover& next) override { value = next; } // the children ask for it
        bool IsThere(Part part) const {
            return parts[part].lastResult <= REQUEST_DELIVERED && !parts[part].odd;
        }

    private:
        CROSSOVERPROPERTIES& strip_;
    };

    static auto& FilterOf(auto& way, bool isHighPass) {
        return isHighPass ? way.filters.highPass : way.filters.lowPass;
    }
    bool AreBypassed() const {
        return way_.value.filters.highPass.type == 0 && way_.value.filters.lowPass.type == 0;
    }
    void Bypass(bool isBypassed);

    FunctionList lists_[PART_COUNT]; // the first is not used
    Way way_{*this};
    int muted_ = 0;
    float signal_ = LOWEST_SIGNAL;
    int muteResult_ = REQUEST_UNCHANGED; // of the last poll
    int signalResult_ = REQUEST_UNCHANGED;
    CrossoverFilters bypassed_;       // what the filters were before
    std::optional<DWORD> labelPress_; // tick count of one that another makes a double click
};

// Keywords

namespace {

template <int part>
constexpr Keyword PartKeyword(const char* name) {
    return Property<&CROSSOVERPROPERTIES::PartFunctions<part>, &CROSSOVERPROPERTIES::SetPartFunctions<part>>(
               name, KeywordKind::Addresses)
        .Saved();
}

constexpr Keyword VALUE =
    Handled<&CROSSOVERPROPERTIES::MuteKeyword>("value", KeywordKind::Integer)
        .Says("1: the way is muted, 0: it is not; another number counts as 1. Unless it "
              "is the old one, it is sent to `function4`. With `MUTE`.");
constexpr Keyword TYPE =
    Handled<&CROSSOVERPROPERTIES::TypeKeyword<true>>("highpass", KeywordKind::Text)
        .Says("Type of the high pass, `OFF` to `LINK24` as in the `value` of a crossover, or the name in the "
              "list. With `HpType`.");
constexpr Keyword FREQUENCY =
    Handled<&CROSSOVERPROPERTIES::FrequencyKeyword<true>>("highcorner", KeywordKind::Text)
        .Says("Corner of the high pass, 20 to 20000 Hz, typed as `80`, `1.2k` or `1k2 Hz`. With `HpFreq`.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Handled<&CROSSOVERPROPERTIES::BypassKeyword>("bypass", KeywordKind::Integer)
        .Says("1: both filters are off. Set to 1 it turns them off, set to 0 on again as they were. A double "
              "click on the label does the one or the other."),
    CONNECTION_KEYWORD.Says("Crossover controls that hold the filters too, joined by `;`. Saved after all "
                            "other keywords."),
    Handled<&CROSSOVERPROPERTIES::DelayKeyword>("delaytime", KeywordKind::Text)
        .Says(
            "The delay with its unit, `2.5 ms`, or `off` while it is bypassed. A number alone is in the unit "
            "that it has. With `Delay`."),
    FUNCTION_KEYWORD.Says("Device parameters that hold the two filters, `DEVICE*parameter`, joined by `;`."),
    PartKeyword<GAIN>("function1")
        .Label("Gain function")
        .Says("Device parameters that hold the gain in dB, joined by `;`."),
    PartKeyword<POLARITY>("function2")
        .Label("Polarity function")
        .Says("Device parameters that hold the polarity, 0 normal, 1 inverted, joined by `;`."),
    PartKeyword<DELAY>("function3")
        .Label("Delay function")
        .Says("Device parameters that hold the delay, joined by `;`."),
    Functions<&CROSSOVERPROPERTIES::muteFunctions>("function4")
        .Label("Mute function")
        .Says("Device parameters that hold the mute, 0 or 1, joined by `;`."),
    Functions<&CROSSOVERPROPERTIES::levelFunctions>("function5")
        .Label("Level function")
        .Says("Device parameters that hold the level in dB that the bar shows, joined by `;`."),
    Handled<&CROSSOVERPROPERTIES::GainKeyword>("gain", KeywordKind::Number)
        .Says("The gain in dB, limited to -30 to 6. With `Fader` and `Value`."),
    FREQUENCY,
    TYPE,
    INTERVAL_KEYWORD,
    Handled<&CROSSOVERPROPERTIES::PolarityKeyword>("inverted", KeywordKind::Integer)
        .Says("1: inverted, 0: normal; another number counts as 1. With `Polarity`."),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Handled<&CROSSOVERPROPERTIES::FrequencyKeyword<false>>("lowcorner", KeywordKind::Text)
        .Says("Corner of the low pass, likewise. With `LpFreq`."),
    Handled<&CROSSOVERPROPERTIES::TypeKeyword<false>>("lowpass", KeywordKind::Text)
        .Says("Type of the low pass, likewise. With `LpType`."),
    Handled<&CROSSOVERPROPERTIES::SignalKeyword>("signal", KeywordKind::Number)
        .Says("The level in dB that was polled last; it can only be read. With `Level`."),
    VALUE,
});

} // namespace

KeywordList CROSSOVERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

template <bool isHighPass>
int CROSSOVERPROPERTIES::TypeKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        const auto type = static_cast<std::size_t>(FilterOf(way_.value, isHighPass).type);
        return way_.IsThere(FILTERS) ? a_AnswerText(&record, std::string(logic::CROSSOVER_KEYS[type]).c_str())
                                     : UNREACHABLE;
    }
    const auto text = TextToSet(&record);
    const auto read =
        text && text->find(',') == std::string::npos ? logic::ReadFilters(*text, {}) : std::nullopt;
    if (!read) {
        return 0;
    }
    way_.Edit(FILTERS, [&](Crossover& way) { FilterOf(way, isHighPass).type = read->highPass.type; });
    return 1;
}

template <bool isHighPass>
int CROSSOVERPROPERTIES::FrequencyKeyword(VALUERECORD& record) {
    constexpr auto FIELD =
        isHighPass ? logic::CrossoverField::HighPassFrequency : logic::CrossoverField::LowPassFrequency;
    if (record.command == COMMAND_GET) {
        return way_.IsThere(FILTERS) ? a_AnswerText(&record, logic::FieldText(way_.value, FIELD).c_str())
                                     : UNREACHABLE;
    }
    const auto text = TextToSet(&record);
    const auto hertz = text ? logic::ParseTypedNumber(*text, "Hz") : std::nullopt;
    // A text that is the one that is shown has lost digits.
    if (!hertz) {
        return 0;
    }
    if (*text != logic::FieldText(way_.value, FIELD)) {
        way_.Edit(FILTERS, [&](Crossover& way) {
            FilterOf(way, isHighPass).frequency =
                std::clamp(*hertz, logic::LOWEST_FREQUENCY, logic::HIGHEST_FREQUENCY);
        });
    }
    return 1;
}

int CROSSOVERPROPERTIES::GainKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return way_.IsThere(GAIN) ? a_AnswerFloat(&record, way_.value.gain) : UNREACHABLE;
    }
    float gain = 0;
    if (record.command != COMMAND_SET || a_ReadFloat(&record, &gain) == 0) {
        return 0;
    }
    way_.Edit(GAIN,
              [&](Crossover& way) { way.gain = std::clamp(gain, logic::LOWEST_TRIM, logic::HIGHEST_TRIM); });
    return 1;
}

int CROSSOVERPROPERTIES::PolarityKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return way_.IsThere(POLARITY) ? a_AnswerInteger(&record, way_.value.polarity) : UNREACHABLE;
    }
    int polarity = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &polarity) == 0) {
        return 0;
    }
    way_.Edit(POLARITY, [&](Crossover& way) { way.polarity = polarity != 0 ? 1 : 0; });
    return 1;
}

int CROSSOVERPROPERTIES::DelayKeyword(VALUERECORD& record) {
    const logic::DelaySetting& held = way_.value.delay;
    const std::string shown = held.bypass != 0 ? BYPASSED_DELAY : logic::DelayAmountText(held);
    if (record.command == COMMAND_GET) {
        return way_.IsThere(DELAY) ? a_AnswerText(&record, shown.c_str()) : UNREACHABLE;
    }
    auto text = TextToSet(&record);
    if (!text || text->empty()) {
        return 0;
    }
    std::replace(text->begin(), text->end(), ',', '.');
    const bool isBypassed = *text == BYPASSED_DELAY;
    if (!isBypassed && !logic::ReadDelay("0," + *text, held)) {
        return 0;
    }
    if (*text != shown) {
        way_.Edit(DELAY, [&](Crossover& way) {
            way.delay = isBypassed ? logic::DelaySetting{1, way.delay.amount, way.delay.unit}
                                   : logic::ReadDelay("0," + *text, way.delay).value_or(way.delay);
        });
    }
    return 1;
}

int CROSSOVERPROPERTIES::BypassKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return way_.IsThere(FILTERS) ? a_AnswerInteger(&record, AreBypassed() ? 1 : 0) : UNREACHABLE;
    }
    int bypass = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &bypass) == 0) {
        return 0;
    }
    Bypass(bypass != 0);
    return 1;
}

int CROSSOVERPROPERTIES::MuteKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return muteResult_ <= REQUEST_DELIVERED ? a_AnswerInteger(&record, muted_) : UNREACHABLE;
    }
    int muted = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &muted) == 0) {
        return 0;
    }
    if (muted = muted != 0 ? 1 : 0; muted != muted_) {
        muted_ = muted;
        a_SendRequest(muteFunctions.Requests(), COMMAND_SET, DATATYPE_INTEGER, &muted, nullptr);
    }
    return 1;
}

int CROSSOVERPROPERTIES::SignalKeyword(VALUERECORD& record) {
    if (record.command != COMMAND_GET) {
        return 0;
    }
    return signalResult_ <= REQUEST_DELIVERED ? a_AnswerFloat(&record, signal_) : UNREACHABLE;
}

// Children

std::span<const StripChild> CROSSOVERPROPERTIES::Children() const {
    static const std::string types = TypeItems();
    static const StripChild children[] = {
        StripLabel(LABEL, {4, 3, 64, 15}),
        TypeList("HpType", 28, types.c_str(), "connection=%n*highpass"),
        Field("HpFreq", {4, 47, 64, 15}, "connection=%n*highcorner"),
        TypeList("LpType", 72, types.c_str(), "connection=%n*lowpass"),
        Field("LpFreq", {4, 91, 64, 15}, "connection=%n*lowcorner"),
        StripSwitch("Polarity", {2, 112}, "bitmap=.\\Controls\\SWITCHBUTTON_yellow_26x16.bmp", "caption=INV",
                    "connection=%n*inverted"),
        StripSwitch("MUTE", {2, 131}, "bitmap=.\\Controls\\SWITCHBUTTON_red_26x16.bmp", "caption=MUTE",
                    "connection=%n"),
        {"FADER",
         "Fader",
         {49, 108, 14, 101},
         12,
         {"bitmap=.\\Controls\\Fader.bmp", "properties=-30,6", "resolution=.5", "interval=100",
          "connection=%n*gain"},
         WS_VISIBLE | WS_TABSTOP},
        {"SCALE",
         "Scale",
         {28, 108, 21, 101},
         12,
         {"font=Small Fonts,5", "textcolor=0x00000000", "linecolor=0x00000000", "side=left",
          "beside=%n*Fader"}},
        {"FADING",
         "Level",
         {64, 113, 5, 91},
         12,
         {"properties=-60,12,-60", "zones=-60=0x0040c040;-12=0x0000c0ff;0=0x000000ff",
          "backgroundcolor=0x00202020", "connection=%n*signal"}},
        StripNumber("Value", {36, 215, 32, 15}, "connection=%n*gain"),
        Field("Delay", {4, 236, 64, 15}, "connection=%n*delaytime"),
    };
    return children;
}

void CROSSOVERPROPERTIES::SetDefaults() {
    interval = 100;
    for (FunctionList* list :
         {&lists_[GAIN], &lists_[POLARITY], &lists_[DELAY], &muteFunctions, &levelFunctions}) {
        list->Attach(*this);
    }
    way_.value.filters = {{0, logic::LOWEST_FREQUENCY}, {0, logic::HIGHEST_FREQUENCY}};
    bypassed_ = way_.value.filters;
    STRIPPROPERTIES::SetDefaults();
}

// The second of two presses.
void CROSSOVERPROPERTIES::ChildPressed(HWND child) {
    if (child != Child(LABEL)) {
        return;
    }
    const auto now = static_cast<DWORD>(GetMessageTime());
    if (!labelPress_ || now - *labelPress_ > GetDoubleClickTime()) {
        labelPress_ = now;
        return;
    }
    labelPress_.reset();
    const Held held(*this);
    if (way_.Learn()) {
        Bypass(!AreBypassed());
    }
}

void CROSSOVERPROPERTIES::Bypass(bool isBypassed) {
    way_.Edit(FILTERS, [&](Crossover& way) {
        if (AreBypassed() == isBypassed) {
            return;
        }
        if (isBypassed) {
            bypassed_ = way.filters;
        }
        way.filters.highPass.type = isBypassed ? 0 : bypassed_.highPass.type;
        way.filters.lowPass.type = isBypassed ? 0 : bypassed_.lowPass.type;
    });
}

void CROSSOVERPROPERTIES::Poll() {
    int worst = way_.Ask();
    int muted = muted_;
    muteResult_ = Ask(muteFunctions.Requests(), DATATYPE_INTEGER, &muted);
    if (muteResult_ == REQUEST_DELIVERED) {
        muted_ = muted != 0 ? 1 : 0;
    }
    signalResult_ = Ask(levelFunctions.Requests(), DATATYPE_FLOAT, &signal_);
    ShowPollResult(std::max({worst, muteResult_, signalResult_}));
}

// Drawing

void CROSSOVERPROPERTIES::DrawBackground(HDC dc) const {
    struct Caption {
        int top;
        const char* text;
    };
    for (const auto& [top, text] : {Caption{18, "HIGH PASS"}, {62, "LOW PASS"}, {223, "DELAY"}}) {
        TextOutA(dc, 5, top, text, lstrlenA(text));
    }
}

extern const ControlImplementation crossoverStripControl = Implement<CROSSOVERPROPERTIES>(
    StripProc, LAID_OUT,
    "One way of a loudspeaker crossover as a strip: two filters, gain, polarity, delay, mute and a level, "
    "each "
    "a control of its own inside it (`Way1*Fader`, `Label`, `HpType`, `HpFreq`, `LpType`, `LpFreq`, "
    "`Polarity`, `Delay`, `MUTE`, `Scale`, `Level`, `Value`) and connected to a keyword of the strip.");
