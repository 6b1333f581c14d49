// SPEAKERCONTROL: the monitor section of a desk, made of its own controls: a button for each set of
// loudspeakers, a knob for their level, dim, mono, mute and a contact to talk back. The control holds all of
// it, asks and tells its devices, and has a keyword for each that its children are connected to. Levels in
// dB, geometry in pixels.

#include "Controls/strips/SpeakerControl.h"

#include "Controls/framework/Keywords.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace {

constexpr float HIGHEST_LEVEL = 10;
constexpr float ROUNDING = 1; // dB that a device may change of what it is told
constexpr int UNREACHABLE = -1;

using Control = SPEAKERCONTROLPROPERTIES;
using Monitor = Control::Monitor;
using enum Control::Part;

float LimitedLevel(float level) {
    return std::clamp(level, Control::LOWEST_LEVEL, HIGHEST_LEVEL);
}

} // namespace

Monitor KnownOf(const Monitor& answered, const Monitor& held) {
    Monitor known = answered;
    known.speaker = known.speaker >= 0 ? known.speaker : held.speaker;
    known.level = std::isfinite(known.level) ? known.level : held.level;
    for (const auto contact : {&Monitor::dim, &Monitor::mono, &Monitor::mute, &Monitor::talk}) {
        known.*contact = known.*contact == 0 || known.*contact == 1 ? known.*contact : held.*contact;
    }
    return known;
}

// Keywords

namespace {

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

template <SPEAKERCONTROLPROPERTIES::Part part, auto number>
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

void SPEAKERCONTROLPROPERTIES::Poll() {
    const Held held(*this);
    const int result = monitor_.Ask();
    if (isOwed_) {
        isOwed_ = !FollowDim();
    }
    const bool isKnownSet = monitor_.value.speaker <= static_cast<int>(names_.size());
    ShowPollResult(isKnownSet ? result : std::max(result, REQUEST_DISAGREE));
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
