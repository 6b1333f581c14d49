// SPEAKERCONTROL: the monitor section of a desk, made of its own controls: a button for each set of
// loudspeakers, a knob for their level, dim, mono, mute and a contact to talk back. The control holds all of
// it, asks and tells its devices, and has a keyword for each that its children are connected to. Levels in
// dB, geometry in pixels.

#include "Controls/drawing/FontProperty.h"
#include "Controls/families/FunctionList.h"
#include "Controls/families/HeldBlock.h"
#include "Controls/families/Strip.h"
#include "Controls/framework/Keywords.h"
#include "base/Gdi.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace {

constexpr SIZE SIZE_OF_NEW{160, 120};
constexpr SIZE LEAST_SIZE{64, 64};
constexpr float LOWEST_LEVEL = -80;
constexpr float HIGHEST_LEVEL = 10;
constexpr float ROUNDING = 1; // dB that a device may change of what it is told
constexpr int UNREACHABLE = -1;
constexpr std::size_t MOST_SETS = 8;

// What the keywords function to function5 are bound to.
enum Part { SPEAKER, LEVEL, DIM, MONO, MUTE, TALK, PART_COUNT };

// As the devices hold it.
struct Monitor {
    int speaker = 0; // from 1 on, 0: none
    float level = LOWEST_LEVEL;
    int dim = 0;
    int mono = 0;
    int mute = 0;
    int talk = 0;

    friend bool operator==(const Monitor&, const Monitor&) = default;
};

// What is no number, or neither 0 nor 1 where it should be, stays as it is held.
Monitor KnownOf(const Monitor& answered, const Monitor& held) {
    Monitor known = answered;
    known.speaker = known.speaker >= 0 ? known.speaker : held.speaker;
    known.level = std::isfinite(known.level) ? known.level : held.level;
    for (const auto contact : {&Monitor::dim, &Monitor::mono, &Monitor::mute, &Monitor::talk}) {
        known.*contact = known.*contact == 0 || known.*contact == 1 ? known.*contact : held.*contact;
    }
    return known;
}

template <auto number>
BlockPart<Monitor> NumberPart(REQUESTLIST& requests, int datatype = DATATYPE_INTEGER) {
    return {&requests, &requests, datatype, [](Monitor& monitor) -> void* { return &(monitor.*number); },
            [](Monitor& to, const Monitor& from) { to.*number = from.*number; }};
}

float LimitedLevel(float level) {
    return std::clamp(level, LOWEST_LEVEL, HIGHEST_LEVEL);
}

constexpr const char* SETS[MOST_SETS] = {"Set1", "Set2", "Set3", "Set4", "Set5", "Set6", "Set7", "Set8"};
constexpr const char* KNOB = "Level";
constexpr const char* LOWER_ROW[] = {"DIM", "MONO", "MUTE", "TALK"};
constexpr const char* FONT_LINE = "font=Small Fonts,7";

constexpr StripChild Set(const char* name, const char* number) {
    return {"BRADIOBUTTON",
            name,
            {},
            12,
            {"style=button", number, "textcolorwhenpressed=0x00000000", "textcolorwhenreleased=0x00ffffff",
             FONT_LINE, "interval=100", "connection=%n"},
            WS_TABSTOP}; // shown when there is such a set
}

constexpr StripChild Button(const char* className, const char* name, const char* caption,
                            const char* connection) {
    return {className,
            name,
            {},
            12,
            {caption, "textcolorwhenpressed=0x00000000", "textcolorwhenreleased=0x00ffffff", FONT_LINE,
             "interval=100", connection},
            WS_VISIBLE | WS_TABSTOP};
}

// The faces there are, the largest first.
struct Face {
    SIZE size;
    const char* name;
};
constexpr Face SET_FACES[] = {{{104, 24}, "104x24"}, {{48, 24}, "48x24"}, {{26, 16}, "26x16"}};
constexpr Face ROW_FACES[] = {{{48, 24}, "48x24"}, {{38, 24}, "38x24"}, {{26, 16}, "26x16"}};
constexpr const char* ROW_COLOURS[] = {"yellow", "blue", "red", "green"};

const Face& LargestIn(std::span<const Face> faces, int width, int height) {
    const auto fits = [&](const Face& face) { return face.size.cx <= width && face.size.cy <= height; };
    const auto largest = std::find_if(faces.begin(), faces.end(), fits);
    return largest != faces.end() ? *largest : faces.back();
}

constexpr StripChild CHILDREN[] = {
    Set(SETS[0], "onvalue=1"),
    Set(SETS[1], "onvalue=2"),
    Set(SETS[2], "onvalue=3"),
    Set(SETS[3], "onvalue=4"),
    Set(SETS[4], "onvalue=5"),
    Set(SETS[5], "onvalue=6"),
    Set(SETS[6], "onvalue=7"),
    Set(SETS[7], "onvalue=8"),
    {"KNOB",
     KNOB,
     {},
     12,
     {"bitmap=.\\Controls\\Knob.bmp", "properties=-80,10,-80", "resolution=.5", "interval=100",
      "connection=%n*volume"},
     WS_VISIBLE | WS_TABSTOP},
    Button("BTRISTATEBUTTON", LOWER_ROW[0], "caption=DIM", "connection=%n*dimmed"),
    Button("BTRISTATEBUTTON", LOWER_ROW[1], "caption=MONO", "connection=%n*summed"),
    Button("BTRISTATEBUTTON", LOWER_ROW[2], "caption=MUTE", "connection=%n*muted"),
    Button("CONTACTBUTTON", LOWER_ROW[3], "caption=TALK", "connection=%n*talking"),
};

} // namespace

class SPEAKERCONTROLPROPERTIES : public STRIPPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    void BindingsChanged() override { monitor_.parts[SPEAKER].SetKnown(false); }
    void Draw(HDC dc, const RECT& client) const override;

    std::span<const StripChild> Children() const override { return CHILDREN; }
    SIZE StripSize() const override;
    int Look() const override { return static_cast<int>(MAKELONG(StripSize().cx, StripSize().cy)); }
    void DrawBackground(HDC) const override {}
    POINT NotEqualPlace() const override;
    // Puts the children where they belong in a window of its size, with faces that fit.
    void Arrange();

    std::string Speakers() const;
    bool SetSpeakers(const std::string& text);
    template <int part>
    std::string PartFunctions() const {
        return lists_[part].Text();
    }
    template <int part>
    bool SetPartFunctions(const std::string& text);

    // What the children are connected to. A get of what no device answers fails: so each of them shows it.
    int SpeakerKeyword(VALUERECORD& record);
    int LevelKeyword(VALUERECORD& record);
    int DimKeyword(VALUERECORD& record);
    template <Part part, auto number>
    int SwitchKeyword(VALUERECORD& record);
    int TalkKeyword(VALUERECORD& record);

    float dim = -20;
    int talkDims = 1;

private:
    class HeldMonitor : public HeldBlock<Monitor> {
    public:
        explicit HeldMonitor(SPEAKERCONTROLPROPERTIES& control) : control_(control) {
            FunctionList* lists = control.lists_;
            parts = {NumberPart<&Monitor::speaker>(control.requests),
                     NumberPart<&Monitor::level>(lists[LEVEL].Requests(), DATATYPE_FLOAT),
                     NumberPart<&Monitor::dim>(lists[DIM].Requests()),
                     NumberPart<&Monitor::mono>(lists[MONO].Requests()),
                     NumberPart<&Monitor::mute>(lists[MUTE].Requests()),
                     NumberPart<&Monitor::talk>(lists[TALK].Requests())};
        }
        CONTROLPROPERTIES& Owner() override { return control_; }
        void ShowBlock(const Monitor& next) override { control_.Take(next); }
        bool IsThere(Part part) const {
            return parts[part].lastResult <= REQUEST_DELIVERED && !parts[part].odd;
        }

    private:
        SPEAKERCONTROLPROPERTIES& control_;
    };

    void Take(const Monitor& next);
    // The level that the knob has: without what is taken off to dim.
    float Level() const;
    bool IsDimmedByDevice() const { return !lists_[DIM].Requests().empty(); }
    bool IsToBeDim() const { return isDim_ || (isTalking_ && talkDims != 0); }
    // Dims and undims as it is to be. False when it cannot be done now.
    bool FollowDim();
    bool IsReached(Part part);
    RECT NumberPlace() const;
    std::string NumberText() const;
    void PutButton(const char* child, RECT cell, std::span<const Face> faces, const char* colour) const;

    std::vector<std::string> names_{"A", "B"};
    FunctionList lists_[PART_COUNT]; // the first is not used
    HeldMonitor monitor_{*this};
    bool isDim_ = false;     // by its button
    bool isTalking_ = false; // from here
    // Taken off the level at present, where no device does it: the decibels, and the level without them.
    float lowered_ = 0;
    float levelBefore_ = LOWEST_LEVEL;
    bool isEditing_ = false; // what is taken comes from here
    bool isOwed_ = false;    // the talkback could not dim, or undim, when it was to
    FontProperty numberFont_;
};

// Keywords

namespace {

using Control = SPEAKERCONTROLPROPERTIES;

template <int part>
constexpr Keyword PartKeyword(const char* name, const char* label) {
    return Property<&Control::PartFunctions<part>, &Control::SetPartFunctions<part>>(name,
                                                                                     KeywordKind::Addresses)
        .Saved()
        .Label(label);
}

constexpr Keyword VALUE =
    Handled<&Control::SpeakerKeyword>("value", KeywordKind::Integer)
        .Says("Number of the set of loudspeakers that is on, from 1, limited to the number of `speakers`; 0: "
              "none. Unless it is the old one, it is sent to `function`. With `Set1` and the others.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    CONNECTION_KEYWORD,
    Limited<&Control::dim, -80, 0>("dim")
        .Saved()
        .Unit("dB")
        .Label("Dim by dB")
        .Says("Added to the level that is sent while it is dimmed, -80 to 0 dB, unless `function2` is bound: "
              "then a "
              "device does that. Counts from the next time it is dimmed."),
    Handled<&Control::DimKeyword>("dimmed", KeywordKind::Integer)
        .Says(
            "1: dimmed by the button, 0: not; another number counts as 1. Without `function2` it is refused "
            "while the level is not known, and ends when the level is changed elsewhere. With `DIM`."),
    FUNCTION_KEYWORD.Says("Device parameters that hold the number of the set that is on, `DEVICE*parameter`, "
                          "joined by `;`."),
    PartKeyword<LEVEL>("function1", "Level function")
        .Says("Device parameters that hold the level in dB, joined by `;`."),
    PartKeyword<DIM>("function2", "Dim function")
        .Says("Device parameters that dim, 0 or 1, joined by `;`; empty where `dim` is to do it."),
    PartKeyword<MONO>("function3", "Mono function")
        .Says("Device parameters that hold mono, 0 or 1, joined by `;`."),
    PartKeyword<MUTE>("function4", "Mute function")
        .Says("Device parameters that hold the mute, 0 or 1, joined by `;`."),
    PartKeyword<TALK>("function5", "Talkback function")
        .Says("Device parameters of the talkback, 0 or 1, joined by `;`. It never stays on: the 0 is sent "
              "until it arrives."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Handled<&Control::SwitchKeyword<MUTE, &Monitor::mute>>("muted", KeywordKind::Integer)
        .Says("1: muted, 0: not; another number counts as 1. With `MUTE`."),
    Property<&Control::Speakers, &Control::SetSpeakers>("speakers")
        .Saved()
        .Label("Loudspeakers")
        .Says("Names of the sets of loudspeakers, joined by `;`, up to 8; more are refused."),
    Handled<&Control::SwitchKeyword<MONO, &Monitor::mono>>("summed", KeywordKind::Integer)
        .Says("1: mono, 0: stereo; another number counts as 1. With `MONO`."),
    Integer<&Control::talkDims, 0, 1>("talkdim")
        .Saved()
        .OneOf("0,1")
        .Label("Talkback dims")
        .Says("1: it is dimmed, once, while the talkback is held, too."),
    Handled<&Control::TalkKeyword>("talking", KeywordKind::Integer)
        .Says("1 while the talkback is on; another number counts as 1. With `TALK`."),
    VALUE,
    Handled<&Control::LevelKeyword>("volume", KeywordKind::Number)
        .Says("The level in dB without what dims it, limited to -80 to 10. Unless it is the old one, the "
              "level is sent to `function1`. With `Level`."),
});

} // namespace

KeywordList SPEAKERCONTROLPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

std::string SPEAKERCONTROLPROPERTIES::Speakers() const {
    std::string text;
    for (const std::string& one : names_) {
        text += (&one == &names_.front() ? "" : ";") + one;
    }
    return text;
}

bool SPEAKERCONTROLPROPERTIES::SetSpeakers(const std::string& text) {
    std::vector<std::string> names;
    for (const std::string_view one : logic::SplitFields(text, ';')) {
        names.emplace_back(logic::TrimBlanks(one));
    }
    if (text.empty()) {
        names.clear();
    }
    if (names.size() > MOST_SETS) {
        return false;
    }
    names_ = std::move(names);
    Arrange();
    return true;
}

template <int part>
bool SPEAKERCONTROLPROPERTIES::SetPartFunctions(const std::string& text) {
    monitor_.parts[part].SetKnown(false);
    if (part == LEVEL || part == DIM) { // of the new ones nothing was taken off
        lowered_ = 0;
        isDim_ = false;
    }
    return lists_[part].Load(*this, text);
}

int SPEAKERCONTROLPROPERTIES::SpeakerKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return monitor_.IsThere(SPEAKER) ? a_AnswerInteger(&record, monitor_.value.speaker) : UNREACHABLE;
    }
    int number = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &number) == 0) {
        return 0;
    }
    monitor_.Edit(SPEAKER, [&](Monitor& monitor) {
        monitor.speaker = std::clamp(number, 0, static_cast<int>(names_.size()));
    });
    return 1;
}

template <Part part, auto number>
int SPEAKERCONTROLPROPERTIES::SwitchKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return monitor_.IsThere(part) ? a_AnswerInteger(&record, monitor_.value.*number) : UNREACHABLE;
    }
    int on = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &on) == 0) {
        return 0;
    }
    monitor_.Edit(part, [&](Monitor& monitor) { monitor.*number = on != 0 ? 1 : 0; });
    return 1;
}

// Level and dim

float SPEAKERCONTROLPROPERTIES::Level() const {
    const float level = monitor_.value.level;
    const bool isAsBefore = std::abs(LimitedLevel(levelBefore_ + lowered_) - level) < ROUNDING;
    return lowered_ == 0 ? LimitedLevel(level) : isAsBefore ? levelBefore_ : LimitedLevel(level - lowered_);
}

int SPEAKERCONTROLPROPERTIES::LevelKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return monitor_.IsThere(LEVEL) ? a_AnswerFloat(&record, Level()) : UNREACHABLE;
    }
    float level = 0;
    if (record.command != COMMAND_SET || a_ReadFloat(&record, &level) == 0 || !std::isfinite(level)) {
        return 0;
    }
    const Held held(*this);
    if (monitor_.Learn()) {
        levelBefore_ = LimitedLevel(level);
        isEditing_ = true;
        monitor_.Edit(LEVEL,
                      [&](Monitor& monitor) { monitor.level = LimitedLevel(levelBefore_ + lowered_); });
        isEditing_ = false;
    }
    return 1;
}

// Whoever changes the level while it is dimmed from here has another one in mind: it is not to be raised from
// there.
void SPEAKERCONTROLPROPERTIES::Take(const Monitor& next) {
    if (lowered_ != 0 && !isEditing_ && std::abs(next.level - monitor_.value.level) >= ROUNDING) {
        lowered_ = 0;
        isDim_ = false;
    }
    if (IsDimmedByDevice() && !isEditing_ && !isOwed_ && !(isTalking_ && talkDims != 0)) {
        isDim_ = next.dim != 0;
    }
    const std::string before = NumberText();
    monitor_.value = next;
    if (NumberText() != before) {
        const RECT place = NumberPlace();
        RedrawArea(&place);
    }
}

bool SPEAKERCONTROLPROPERTIES::FollowDim() {
    const bool isToBeDim = IsToBeDim();
    if (!monitor_.Learn()) {
        return true;
    }
    if (!IsReached(IsDimmedByDevice() ? DIM : LEVEL)) {
        return false;
    }
    if (IsDimmedByDevice()) {
        isEditing_ = true;
        monitor_.Edit(DIM, [&](Monitor& monitor) { monitor.dim = isToBeDim ? 1 : 0; });
        isEditing_ = false;
        return true;
    }
    if (isToBeDim != (lowered_ != 0)) {
        levelBefore_ = Level();
        lowered_ = isToBeDim ? dim : 0;
        isEditing_ = true;
        monitor_.Edit(LEVEL,
                      [&](Monitor& monitor) { monitor.level = LimitedLevel(levelBefore_ + lowered_); });
        isEditing_ = false;
    }
    return true;
}

// Whether what is sent now would arrive, and to somebody whose value is known.
bool SPEAKERCONTROLPROPERTIES::IsReached(Part part) {
    const BlockPart<Monitor>& of = monitor_.parts[part];
    Monitor held = monitor_.value;
    return of.asked->empty() || (of.isKnown && AskForValue(*of.asked, of.datatype, of.of(held)));
}

int SPEAKERCONTROLPROPERTIES::DimKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return monitor_.IsThere(IsDimmedByDevice() ? DIM : LEVEL) ? a_AnswerInteger(&record, isDim_ ? 1 : 0)
                                                                  : UNREACHABLE;
    }
    int on = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &on) == 0) {
        return 0;
    }
    const Held held(*this);
    const bool before = std::exchange(isDim_, on != 0);
    if (!FollowDim()) {
        isDim_ = before;
        return 0;
    }
    return 1;
}

int SPEAKERCONTROLPROPERTIES::TalkKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return monitor_.IsThere(TALK) ? a_AnswerInteger(&record, monitor_.value.talk) : UNREACHABLE;
    }
    int on = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &on) == 0) {
        return 0;
    }
    const Held held(*this);
    on = on != 0 ? 1 : 0;
    isTalking_ = on != 0;
    if (isTalking_) {
        isOwed_ = !FollowDim(); // before anybody is heard
    }
    int result = 1;
    for (REQUESTITEM& item : ItemsOf(lists_[TALK].Requests())) {
        item.record.reserved = record.reserved; // a release can be owed
        int sent = on;
        result = std::min(result, a_SendToItem(item, COMMAND_SET, DATATYPE_INTEGER, &sent) >= 0 ? 1 : -1);
    }
    monitor_.value.talk = on;
    if (!isTalking_) {
        isOwed_ = !FollowDim();
    }
    return result;
}

// Children

SIZE SPEAKERCONTROLPROPERTIES::StripSize() const {
    const SIZE own{rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
    return own.cx <= 0 || own.cy <= 0
               ? SIZE_OF_NEW
               : SIZE{std::max(own.cx, LEAST_SIZE.cx), std::max(own.cy, LEAST_SIZE.cy)};
}

void SPEAKERCONTROLPROPERTIES::SetDefaults() {
    interval = 100;
    for (FunctionList& list : std::span(lists_).subspan(LEVEL)) {
        list.Attach(*this);
    }
    numberFont_.Load("ms sans serif,8");
    STRIPPROPERTIES::SetDefaults();
    Arrange();
}

namespace {

constexpr int MARGIN = 4;
constexpr int GAP = 2;
constexpr int KNOB_SIDE = 47;
constexpr int NUMBER_HEIGHT = 15;
constexpr int ROW_HEIGHT = 24;

// The part of a length that the place has among so many alike, with gaps between them.
std::pair<int, int> Shared(int from, int to, int count, int place) {
    const int step = to - from + GAP;
    return {from + step * place / count, from + step * (place + 1) / count - GAP};
}

} // namespace

// In the middle of the cell. The face gives the button its size.
void SPEAKERCONTROLPROPERTIES::PutButton(const char* child, RECT cell, std::span<const Face> faces,
                                         const char* colour) const {
    const Face& face = LargestIn(faces, cell.right - cell.left, cell.bottom - cell.top);
    const std::string bitmap =
        std::string("bitmap=.\\Controls\\SWITCHBUTTON_") + colour + "_" + face.name + ".bmp";
    const StripChange change[] = {{.child = child, .line = bitmap.c_str()}};
    Change(change);
    SetWindowPos(Child(child), nullptr, (cell.left + cell.right - face.size.cx) / 2,
                 (cell.top + cell.bottom - face.size.cy) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SPEAKERCONTROLPROPERTIES::Arrange() {
    const SIZE size = StripSize();
    const int rowTop = size.cy - MARGIN - ROW_HEIGHT;
    for (int i = 0; i < static_cast<int>(std::size(LOWER_ROW)); ++i) {
        const auto [left, right] = Shared(MARGIN, size.cx - MARGIN, std::size(LOWER_ROW), i);
        PutButton(LOWER_ROW[i], {left, rowTop, right, rowTop + ROW_HEIGHT}, ROW_FACES, ROW_COLOURS[i]);
    }
    const int knobLeft = size.cx - MARGIN - KNOB_SIDE;
    const int knobTop = std::max<int>(MARGIN, (rowTop - KNOB_SIDE - NUMBER_HEIGHT) / 2);
    MoveWindow(Child(KNOB), knobLeft, knobTop, KNOB_SIDE, KNOB_SIDE, TRUE);
    const int count = static_cast<int>(names_.size());
    const int columns = count > 4 ? 2 : 1;
    const int rows = std::max((count + columns - 1) / columns, 1);
    for (int i = 0; i < static_cast<int>(MOST_SETS); ++i) {
        if (i < count) {
            const auto [left, right] = Shared(MARGIN, knobLeft - 2 * MARGIN, columns, i / rows);
            const auto [top, bottom] = Shared(MARGIN, rowTop - MARGIN, rows, i % rows);
            PutButton(SETS[i], {left, top, right, bottom}, SET_FACES, "green");
        }
        const std::string caption = "caption=" + (i < count ? names_[static_cast<std::size_t>(i)] : "");
        const StripChange change[] = {
            {.child = SETS[i], .line = caption.c_str(), .show = i < count ? SW_SHOWNA : SW_HIDE}};
        Change(change);
    }
    LookChanged();
}

void SPEAKERCONTROLPROPERTIES::Poll() {
    const Held held(*this);
    const int result = monitor_.Ask();
    if (isOwed_) {
        isOwed_ = !FollowDim();
    }
    const bool isKnownSet = monitor_.value.speaker <= static_cast<int>(names_.size());
    ShowPollResult(isKnownSet ? result : std::max(result, REQUEST_DISAGREE));
}

// Drawing

RECT SPEAKERCONTROLPROPERTIES::NumberPlace() const {
    RECT place{};
    if (HWND knob = Child(KNOB); a_FromWindow(knob) != nullptr) {
        GetWindowRect(knob, &place);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    }
    return {place.left - MARGIN, place.bottom, place.right + MARGIN, place.bottom + NUMBER_HEIGHT};
}

std::string SPEAKERCONTROLPROPERTIES::NumberText() const {
    if (!monitor_.parts[LEVEL].isKnown) {
        return NO_VALUE;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f dB", static_cast<double>(Level()));
    return text;
}

POINT SPEAKERCONTROLPROPERTIES::NotEqualPlace() const {
    const RECT number = NumberPlace();
    return {number.left - 2 * MARGIN, number.top - MARGIN};
}

void SPEAKERCONTROLPROPERTIES::Draw(HDC dc, const RECT& client) const {
    STRIPPROPERTIES::Draw(dc, client);
    RECT place = NumberPlace();
    const Selected font(dc, numberFont_.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, InkColour());
    const std::string text = NumberText();
    DrawTextA(dc, text.c_str(), -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

namespace {

LRESULT CALLBACK SpeakerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = StripProc(window, message, wParam, lParam);
    if (message == WM_WINDOWPOSCHANGED &&
        (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_NOSIZE) == 0) {
        if (auto* control = PropertiesOf<SPEAKERCONTROLPROPERTIES>(window)) {
            control->Arrange();
        }
    }
    return result;
}

} // namespace

extern const ControlImplementation speakerControl = Implement<SPEAKERCONTROLPROPERTIES>(
    SpeakerProc, LAID_OUT,
    "The monitor section of a desk: a button for each set of loudspeakers, a knob for their level, dim, "
    "mono, "
    "mute and talkback, all controls of its own inside it (`Monitor*Set1` and so on, `Level`, `DIM`, `MONO`, "
    "`MUTE`, `TALK`) and connected to a keyword of it. It fills a window of any size. Left dimmed, the level "
    "stays lowered when the panel is closed.");
