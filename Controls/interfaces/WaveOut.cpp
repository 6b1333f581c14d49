// IWAVEOUT: plays wave files below the application folder. Its value is the number of the file that is being
// played, 0 when none is. Times in seconds, volume in dB.

#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/interfaces/sound/WavePlayer.h"
#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Trace.h"
#include "logic/remote/RemoteValues.h"
#include "logic/sound/Levels.h"
#include "logic/text/Text.h"

#include <utility>

namespace {

constexpr DWORD THREAD_EXIT_CODE = 15;
constexpr int SOFTEST = -80; // dB

} // namespace

class WAVEOUTPROPERTIES : public INTERFACEPROPERTIES {
public:
    KeywordList Keywords() const override;
    void Poll() override;
    void Destroying() override { player_.reset(); }
    void ServeCalls() override;

    int Value() const { return value; }
    bool SetValue(int number);
    std::string Files() const { return files; }
    bool SetFiles(const std::string& text);
    float Position() const { return player_ ? static_cast<float>((*player_)->Position()) : 0; }
    bool SetPosition(float seconds) { return player_ && (*player_)->Seek(static_cast<double>(seconds)); }
    float Length() const { return player_ ? static_cast<float>((*player_)->Length()) : 0; }
    void SoundChanged();

    int value = 0;
    std::string files = ".\\Temp\\wave.wav";
    std::string driver;
    float volume = 0;
    int loop = 0;

private:
    // Takes the value and has the player do it; false when there is no thread to be had.
    bool Play(int number);
    void Ended(unsigned order);

    std::unique_ptr<Worker<WavePlayer>> player_; // from the first file on
    unsigned order_ = 0;                         // of what is being played
    int lastPolled_ = 0; // what is polled unchanged starts nothing, whether or not the others took the 0
};

// Keywords

namespace {

constexpr Keyword VALUE = Property<&WAVEOUTPROPERTIES::Value, &WAVEOUTPROPERTIES::SetValue>("value").Says(
    "Number of the file that is being played, 1 for the first; 0 for none. Set, it is played from its "
    "beginning, or playing ends, and the number, unless it is the old one, is sent to all it is bound to. "
    "At the end of a file, and when one cannot be played, it becomes 0, which is sent.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    CONNECTION_KEYWORD,
    Text<&WAVEOUTPROPERTIES::driver>("driver")
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Label("Output device")
        .Says("Part of the name of the sound output; the first that has it is taken. Empty for the default "
              "one. "
              "Counts from the next file on."),
    Property<&WAVEOUTPROPERTIES::Files, &WAVEOUTPROPERTIES::SetFiles>("files", KeywordKind::File)
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .MayBeEmpty()
        .Label("Wave files")
        .Says(
            "Wave files below the application folder, joined by `;`: 8, 16, 24 or 32 bits, or floats, at any "
            "rate. A drive, a share and a way out of the folder are refused."),
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    Property<&WAVEOUTPROPERTIES::Length, nullptr>("length").Unit("s").Says(
        "Seconds that the file lasts that is being played, 0 when none is. It can only be read."),
    LEVEL_KEYWORD,
    Limited<&WAVEOUTPROPERTIES::loop, 0, 1, &WAVEOUTPROPERTIES::SoundChanged>("loop")
        .Saved()
        .OneOf("0,1")
        .Label("Begins again at the end")
        .Says("1: the file begins again at its end, until it is stopped."),
    Property<&WAVEOUTPROPERTIES::Position, &WAVEOUTPROPERTIES::SetPosition>("position")
        .Unit("s")
        .Says("Seconds of the file that have been played. Set, it goes on from there, limited to its length; "
              "refused while nothing is played."),
    Limited<&WAVEOUTPROPERTIES::volume, SOFTEST, 0, &WAVEOUTPROPERTIES::SoundChanged>("volume")
        .Saved()
        .Unit("dB")
        .Label("Volume in dB")
        .Says("-80 to 0 dB; 0 plays the samples as they are. Counts within a quarter of a second."),
    VALUE,
});

} // namespace

KeywordList WAVEOUTPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool WAVEOUTPROPERTIES::SetFiles(const std::string& text) {
    if (!logic::ArePathsBelow(text)) {
        EDITTRACE(parent, "A file to be played must lie below the application folder: %s", text.c_str());
        return false;
    }
    files = text;
    return true;
}

void WAVEOUTPROPERTIES::SoundChanged() {
    if (player_) {
        (*player_)->gain = logic::GainOf(volume);
        (*player_)->loops = loop != 0;
    }
}

// Value

bool WAVEOUTPROPERTIES::SetValue(int number) {
    if (number < 0) {
        return false;
    }
    const bool isOld = number == value; // and is not sent, or two that are bound to each other would not end
    if (isOld && number == 0) {
        return true;
    }
    if (!Play(number)) {
        return false;
    }
    if (!isOld) {
        a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &number, nullptr);
    }
    return true;
}

void WAVEOUTPROPERTIES::Poll() {
    int polled = value;
    int result = Ask(requests, DATATYPE_INTEGER, &polled);
    if (result == REQUEST_UNCHANGED) {
        lastPolled_ = value;
    } else if (result == REQUEST_DELIVERED && polled >= 0 && polled != lastPolled_) {
        lastPolled_ = polled;
        Play(polled);
    } else if (result == REQUEST_DELIVERED) {
        result = REQUEST_DISAGREE;
    }
    ShowPollResult(result);
}

bool WAVEOUTPROPERTIES::Play(int number) {
    if (!player_ && number != 0) {
        player_ = std::make_unique<Worker<WavePlayer>>(window, [this](unsigned order) { Ended(order); });
        if (!player_->Start(THREAD_EXIT_CODE)) {
            TRACE("WaveOut: no thread can be started\n");
            player_.reset();
            return false;
        }
        SoundChanged();
    }
    value = number;
    if (!player_) {
        return true;
    }
    ++order_;
    WavePlayer::Order order{.number = number == 0 ? 0 : order_, .name = {}, .path = {}, .device = driver};
    const auto names = logic::SplitFields(files, ';');
    if (number > 0 && static_cast<std::size_t>(number) <= names.size()) {
        order.name = std::string(logic::TrimBlanks(names[static_cast<std::size_t>(number) - 1]));
        char path[MAX_PATH];
        a_MakeFullPathName(order.name.c_str(), path);
        order.path = path;
    } else {
        order.name = "file " + std::to_string(number);
    }
    (*player_)->Play(std::move(order));
    return true;
}

void WAVEOUTPROPERTIES::Ended(unsigned order) {
    if (order != order_) { // something else was set meanwhile
        return;
    }
    value = 0;
    int nothing = 0;
    if (a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &nothing, nullptr) != 0) {
        lastPolled_ = 0;
    }
}

void WAVEOUTPROPERTIES::ServeCalls() {
    if (player_) {
        (*player_)->ServeCalls();
    }
}

extern const ControlImplementation waveOutControl =
    Implement<WAVEOUTPROPERTIES>(InterfaceProc, LAID_OUT,
                                 "Plays [wave files](interface-controls.md#wave-output). Seen only while the "
                                 "panel is edited.",
                                 SharePicture<>);
