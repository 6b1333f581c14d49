// AUTOMIXER: one microphone of an automatic mixer as a strip that makes its own controls. The strip holds
// what the mixer knows of its channel, asks and tells its devices, and has a keyword for each of it that its
// children are connected to. Geometry in pixels, levels and gains in dB, times in milliseconds.

#include "Controls/drawing/FontProperty.h"
#include "Controls/families/FunctionList.h"
#include "Controls/families/HeldBlock.h"
#include "Controls/families/Strip.h"
#include "Controls/families/StripChildren.h"
#include "Controls/framework/Keywords.h"
#include "base/Gdi.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <type_traits>

namespace {

constexpr int STRIP_WIDTH = 64;
constexpr int STRIP_HEIGHT = 330;
constexpr int METERS_TOP = 70; // of both, as high as the picture of the one
constexpr int METERS_HEIGHT = 90;
constexpr int UNREACHABLE = -1; // answer of a part that is not known

// What the keywords function to function8 are bound to.
enum Part { LEVEL, INPUT_LEVEL, SHARE, PRIORITY, WEIGHT, THRESHOLD, HOLD, FREEZE, MUTE, PART_COUNT };

struct Limits {
    float low, high;
};
constexpr Limits LIMITS[PART_COUNT] = {{-80, 10}, {},          {},     {0, 1}, {-24, 24},
                                       {-80, 18}, {0, 10'000}, {0, 1}, {0, 1}};

struct Channel {
    float level = 0;
    float input = -80;
    float share = 0;
    int priority = 0;
    float weight = 0;
    float threshold = -50;
    float hold = 500;
    int freeze = 0;
    int mute = 0;

    friend bool operator==(const Channel&, const Channel&) = default;
};

// What is no number, or neither 0 nor 1 where it should be, stays as it is held.
Channel KnownOf(const Channel& answered, const Channel& held) {
    Channel known = answered;
    for (const auto number : {&Channel::level, &Channel::input, &Channel::share, &Channel::weight,
                              &Channel::threshold, &Channel::hold}) {
        known.*number = std::isfinite(known.*number) ? known.*number : held.*number;
    }
    for (const auto contact : {&Channel::priority, &Channel::freeze, &Channel::mute}) {
        known.*contact = known.*contact == 0 || known.*contact == 1 ? known.*contact : held.*contact;
    }
    return known;
}

template <auto number>
BlockPart<Channel> NumberPart(REQUESTLIST& requests) {
    constexpr bool isFloat = std::is_same_v<decltype(number), float Channel::*>;
    return {&requests, &requests, isFloat ? DATATYPE_FLOAT : DATATYPE_INTEGER,
            [](Channel& channel) -> void* { return &(channel.*number); },
            [](Channel& to, const Channel& from) { to.*number = from.*number; }};
}

// Of what is set seldom; it stands in the place of the fader.
constexpr StripChild Setting(const char* name, int top, const char* range, const char* step, const char* unit,
                             const char* connection) {
    return {"SPINEDIT",
            name,
            {4, top, 56, 18},
            12,
            {"font=Small Fonts,7", "textcolor=0x00ccff", "backgroundcolor=0x00000000", "alignment=right",
             "interval=250", range, step, unit, connection},
            WS_TABSTOP};
}

constexpr const char* FADER = "Fader";
constexpr const char* SCALE = "Scale";
constexpr const char* SETTINGS[] = {"Weight", "Threshold", "Hold"};
constexpr int SETTING_TOPS[] = {197, 231, 265};
constexpr StripChange AS_FADER[] = {{.child = FADER, .show = SW_SHOWNA},
                                    {.child = SCALE, .show = SW_SHOWNA},
                                    {.child = SETTINGS[0], .show = SW_HIDE},
                                    {.child = SETTINGS[1], .show = SW_HIDE},
                                    {.child = SETTINGS[2], .show = SW_HIDE}};
constexpr StripChange AS_SETTINGS[] = {{.child = FADER, .show = SW_HIDE},
                                       {.child = SCALE, .show = SW_HIDE},
                                       {.child = SETTINGS[0], .show = SW_SHOWNA},
                                       {.child = SETTINGS[1], .show = SW_SHOWNA},
                                       {.child = SETTINGS[2], .show = SW_SHOWNA}};

} // namespace

class AUTOMIXERPROPERTIES : public STRIPPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    int ValueDatatype() const override { return DATATYPE_FLOAT; }
    void Poll() override { ShowPollResult(channel_.Ask()); }
    void BindingsChanged() override { channel_.parts[LEVEL].SetKnown(false); }

    std::span<const StripChild> Children() const override;
    SIZE StripSize() const override { return {STRIP_WIDTH, STRIP_HEIGHT}; }
    int Look() const override { return advanced; }
    void DrawBackground(HDC dc) const override;
    POINT NotEqualPlace() const override { return {22, 58}; } // where no child is

    // The functions of a part; those of the level are the strip's own.
    template <Part part>
    std::string PartFunctions() const {
        return lists_[part].Text();
    }
    template <Part part>
    bool SetPartFunctions(const std::string& text) {
        channel_.parts[part].SetKnown(false);
        return lists_[part].Load(*this, text);
    }
    void AdvancedChanged();

    // What the children are connected to; no keyword for it has the name of a child, which would be found
    // first. A get of what no device answers fails: so each of them shows it.
    template <Part part, auto number, bool isSet = true>
    int PartKeyword(VALUERECORD& record);

    int advanced = 0; // 1: the settings are shown, not the fader

private:
    class HeldChannel : public HeldBlock<Channel> {
    public:
        explicit HeldChannel(AUTOMIXERPROPERTIES& strip) : strip_(strip) {
            FunctionList* lists = strip.lists_;
            parts = {NumberPart<&Channel::level>(strip.requests),
                     NumberPart<&Channel::input>(lists[INPUT_LEVEL].Requests()),
                     NumberPart<&Channel::share>(lists[SHARE].Requests()),
                     NumberPart<&Channel::priority>(lists[PRIORITY].Requests()),
                     NumberPart<&Channel::weight>(lists[WEIGHT].Requests()),
                     NumberPart<&Channel::threshold>(lists[THRESHOLD].Requests()),
                     NumberPart<&Channel::hold>(lists[HOLD].Requests()),
                     NumberPart<&Channel::freeze>(lists[FREEZE].Requests()),
                     NumberPart<&Channel::mute>(lists[MUTE].Requests())};
        }
        CONTROLPROPERTIES& Owner() override { return strip_; }
        void ShowBlock(const Channel& next) override { value = next; } // the children ask for it
        bool IsThere(Part part) const {
            return parts[part].lastResult <= REQUEST_DELIVERED && !parts[part].odd;
        }

    private:
        AUTOMIXERPROPERTIES& strip_;
    };

    FunctionList lists_[PART_COUNT]; // the first is not used
    HeldChannel channel_{*this};
};

// Keywords

namespace {

using Strip = AUTOMIXERPROPERTIES;

template <Part part>
constexpr Keyword PartFunctions(const char* name, const char* label) {
    return Property<&Strip::PartFunctions<part>, &Strip::SetPartFunctions<part>>(name, KeywordKind::Addresses)
        .Saved()
        .Label(label);
}

template <Part part, auto number, bool isSet = true>
constexpr Keyword PartValue(const char* name, KeywordKind kind = KeywordKind::Number) {
    return Handled<&Strip::PartKeyword<part, number, isSet>>(name, kind);
}

constexpr Keyword VALUE = PartValue<LEVEL, &Channel::level>("value").Says(
    "The level of the fader in dB, limited to -80 to 10. Unless it is the old one, it is sent to `function`. "
    "With `Fader` and `Value`.");
constexpr Keyword ADVANCED =
    Integer<&Strip::advanced, 0, 1, &Strip::AdvancedChanged>("advanced")
        .Saved()
        .OneOf("0,1")
        .Label("Weight, threshold, hold shown")
        .Says("1: `Weight`, `Threshold` and `Hold` are shown in the place of `Fader` and `Scale`.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    ADVANCED,
    CONNECTION_KEYWORD,
    Integer<&Strip::advanced, 0, 1, &Strip::AdvancedChanged>("details").Says(
        "The same as `advanced`, for connections: there `Strip*advanced` names the switch. With "
        "`ADVANCED`."),
    PartValue<FREEZE, &Channel::freeze>("frozen", KeywordKind::Integer)
        .Says("1: the gain is frozen, 0: it is not; another number counts as 1. With `FREEZE GAIN`."),
    FUNCTION_KEYWORD.Says("Device parameters that hold the level of the fader in dB, `DEVICE*parameter`, "
                          "joined by `;`."),
    PartFunctions<INPUT_LEVEL>("function1", "Input level function")
        .Says("Device parameters that hold the level of the microphone in dB, joined by `;`."),
    PartFunctions<SHARE>("function2", "Gain function")
        .Says("Device parameters that hold the gain that the mixer gives the channel, in dB, 0 or less, "
              "joined by `;`."),
    PartFunctions<PRIORITY>("function3", "Priority function")
        .Says("Device parameters that hold the priority, 0 or 1, joined by `;`."),
    PartFunctions<WEIGHT>("function4", "Weight function")
        .Says("Device parameters that hold the weight in dB, joined by `;`."),
    PartFunctions<THRESHOLD>("function5", "Threshold function")
        .Says("Device parameters that hold the threshold in dB, joined by `;`."),
    PartFunctions<HOLD>("function6", "Hold function")
        .Says("Device parameters that hold the hold time in ms, joined by `;`."),
    PartFunctions<FREEZE>("function7", "Freeze function")
        .Says("Device parameters that hold whether the gain is frozen, 0 or 1, joined by `;`."),
    PartFunctions<MUTE>("function8", "Mute function")
        .Says("Device parameters that hold the mute, 0 or 1, joined by `;`."),
    PartValue<THRESHOLD, &Channel::threshold>("gatelevel")
        .Says("The threshold in dB, limited to -80 to 18. With `Threshold`."),
    PartValue<HOLD, &Channel::hold>("holdtime")
        .Says("The hold time in ms, limited to 0 to 10000. With `Hold`."),
    PartValue<INPUT_LEVEL, &Channel::input, false>("input").Says(
        "The level of the microphone that was polled last; it can only be read. With `VUMeterIn`."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    PartValue<MUTE, &Channel::mute>("muted", KeywordKind::Integer)
        .Says("1: the channel is muted, 0: it is not; another number counts as 1. With `MUTE`."),
    PartValue<PRIORITY, &Channel::priority>("priority", KeywordKind::Integer)
        .Says("1: the channel has priority, 0: it has not; another number counts as 1. With `PRIO`."),
    PartValue<SHARE, &Channel::share, false>("share").Says(
        "The gain that was polled last; it can only be read. With `Gain`."),
    VALUE,
    PartValue<WEIGHT, &Channel::weight>("weighting")
        .Says("The weight in dB, limited to -24 to 24. With `Weight`."),
});

} // namespace

KeywordList AUTOMIXERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

template <Part part, auto number, bool isSet>
int AUTOMIXERPROPERTIES::PartKeyword(VALUERECORD& record) {
    constexpr bool isFloat = std::is_same_v<decltype(number), float Channel::*>;
    if (record.command == COMMAND_GET) {
        const auto held = channel_.value.*number;
        if (!channel_.IsThere(part)) {
            return UNREACHABLE;
        }
        if constexpr (isFloat) {
            return a_AnswerFloat(&record, held);
        } else {
            return a_AnswerInteger(&record, held);
        }
    }
    float wanted = 0;
    if (!isSet || record.command != COMMAND_SET || a_ReadFloat(&record, &wanted) == 0 ||
        !std::isfinite(wanted)) {
        return 0;
    }
    channel_.Edit(part, [wanted](Channel& channel) {
        if constexpr (isFloat) {
            channel.*number = std::clamp(wanted, LIMITS[part].low, LIMITS[part].high);
        } else {
            channel.*number = wanted != 0 ? 1 : 0;
        }
    });
    return 1;
}

// Children

std::span<const StripChild> AUTOMIXERPROPERTIES::Children() const {
    static constexpr StripChild children[] = {
        StripLabel("Label", {4, 3, 56, 15}),
        StripSwitch("PRIO", {4, 22}, "bitmap=.\\Controls\\SWITCHBUTTON_yellow_26x16.bmp", "caption=PRIO",
                    "connection=%n*priority"),
        StripSwitch("MUTE", {34, 22}, "bitmap=.\\Controls\\SWITCHBUTTON_red_26x16.bmp", "caption=MUTE",
                    "connection=%n*muted"),
        StripSwitch("FREEZE GAIN", {4, 41}, "bitmap=.\\Controls\\SWITCHBUTTON_blue_56x16.bmp",
                    "caption=FREEZE", "connection=%n*frozen"),
        {"METER",
         "VUMeterIn",
         {5, METERS_TOP, 12, METERS_HEIGHT},
         12,
         {"bitmap=.\\Controls\\_AutoMixerInMeter.ds", "properties=-60,0", "connection=%n*input"}},
        {"REVMETER",
         "Gain",
         {47, METERS_TOP, 12, METERS_HEIGHT},
         12,
         {"properties=-60,0,0", "connection=%n*share"}},
        StripSwitch("ADVANCED", {4, 165}, "bitmap=.\\Controls\\SWITCHBUTTON_green_56x16.bmp",
                    "caption=ADVANCED", "connection=%n*details"),
        {"FADER",
         FADER,
         {42, 186, 14, 101},
         12,
         {"bitmap=.\\Controls\\Fader.bmp", "properties=-80,10", "resolution=.5", "interval=100",
          "connection=%n"},
         WS_VISIBLE | WS_TABSTOP},
        {"SCALE",
         SCALE,
         {14, 186, 28, 101},
         12,
         {"font=Small Fonts,5", "textcolor=0x00000000", "linecolor=0x00000000", "side=left",
          "beside=%n*Fader"}},
        Setting(SETTINGS[0], SETTING_TOPS[0], "properties=-24,24,0", "resolution=.5", "unit=dB",
                "connection=%n*weighting"),
        Setting(SETTINGS[1], SETTING_TOPS[1], "properties=-80,18,-50", "resolution=1", "unit=dB",
                "connection=%n*gatelevel"),
        Setting(SETTINGS[2], SETTING_TOPS[2], "properties=0,10000,500", "resolution=50", "unit=ms",
                "connection=%n*holdtime"),
        StripNumber("Value", {12, 293, 40, 15}, "connection=%n"),
        StripNameField("Edit", {4, 314, 56, 15}),
    };
    return children;
}

void AUTOMIXERPROPERTIES::SetDefaults() {
    interval = 100;
    for (FunctionList& list : std::span(lists_).subspan(INPUT_LEVEL)) {
        list.Attach(*this);
    }
    STRIPPROPERTIES::SetDefaults();
}

void AUTOMIXERPROPERTIES::AdvancedChanged() {
    Change(advanced != 0 ? AS_SETTINGS : AS_FADER);
    LookChanged();
}

// Drawing

namespace {

void DrawMeterScale(HDC dc) {
    constexpr int MARKS = 4; // 20 dB apart
    for (int mark = 0; mark < MARKS; ++mark) {
        const int y = METERS_TOP + (METERS_HEIGHT - 1) * mark / (MARKS - 1);
        for (const int x : {18, 42}) {
            MoveToEx(dc, x, y, nullptr);
            LineTo(dc, x + 4, y);
        }
        RECT place{22, y - 5, 42, y + 5};
        DrawTextA(dc, std::to_string(-20 * mark).c_str(), -1, &place,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOCLIP);
    }
}

} // namespace

void AUTOMIXERPROPERTIES::DrawBackground(HDC dc) const {
    TextOutA(dc, 7, 59, "IN", 2);
    TextOutA(dc, 38, 59, "GAIN", 4);
    DrawMeterScale(dc);
    if (advanced == 0) {
        return;
    }
    constexpr const char* CAPTIONS[] = {"WEIGHT", "THRESHOLD", "HOLD"};
    for (std::size_t i = 0; i < std::size(CAPTIONS); ++i) {
        TextOutA(dc, 4, SETTING_TOPS[i] - 10, CAPTIONS[i], lstrlenA(CAPTIONS[i]));
    }
}

extern const ControlImplementation autoMixerControl = Implement<AUTOMIXERPROPERTIES>(
    StripProc, LAID_OUT,
    "One microphone of an automatic mixer as a strip: its level and the gain that the mixer gives it, "
    "priority, "
    "freeze and mute, a fader, and behind `ADVANCED` weight, threshold and hold time, each a control of its "
    "own "
    "inside it (`Talker1*Fader`, `Label`, `VUMeterIn`, `Gain`, `PRIO`, `ADVANCED`, `FREEZE GAIN`, `MUTE`, "
    "`Scale`, `Value`, `Edit`, `Weight`, `Threshold`, `Hold`) and connected to a keyword of the strip.");
