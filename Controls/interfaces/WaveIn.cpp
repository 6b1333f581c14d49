// IWAVEIN: listens to a sound input: levels for meters, the newest samples, and a file that they are written
// into. Levels in dB below full scale.

#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/interfaces/sound/SoundListener.h"
#include "Panelhost/Trace.h"
#include "logic/remote/RemoteValues.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr DWORD THREAD_EXIT_CODE = 16;
constexpr int LONGEST_RECORDING = 100'000; // minutes

} // namespace

class WAVEINPROPERTIES : public INTERFACEPROPERTIES {
public:
    KeywordList Keywords() const override;
    LRESULT OnSave(WPARAM saveCode, LPARAM file) override;
    void Destroying() override { listener_.reset(); }

    int ValueKeyword(VALUERECORD& record);
    int RunKeyword(VALUERECORD& record);
    std::string FormatText() const { return logic::SampleFormatText(format); }
    bool SetFormat(const std::string& text);
    std::string File() const { return file; }
    bool SetFile(const std::string& text);
    int IsRecording() const { return listener_ && (*listener_)->IsRecording() ? 1 : 0; }
    bool SetRecording(int record);
    std::string Recorded() const { return listener_ ? (*listener_)->Recorded() : ""; }
    template <int Channel>
    float Peak() const {
        return logic::PeakDecibels(Levels().channels[Channel]);
    }
    template <int Channel>
    float Power() const {
        return logic::PowerDecibels(Levels().channels[Channel]);
    }

    int run = 0; // as it was set
    std::string driver;
    logic::SampleFormat format;
    std::string file = ".\\Temp\\recording.wav";
    int maximum = 60; // minutes

private:
    logic::BlockLevels Levels() const { return listener_ ? (*listener_)->Levels() : logic::BlockLevels(); }
    bool Listen();

    std::unique_ptr<Worker<SoundListener>> listener_; // from the first run on
    bool isSaving_ = false;
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&WAVEINPROPERTIES::ValueKeyword>("value", KeywordKind::Block)
        .Says("The newest samples, as data: their number of bytes (32 bit), then at most 4092 bytes of whole "
              "frames in the format. It can only be read, and is empty while nothing comes in.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    CONNECTION_KEYWORD.Says("Kept. Others connect to the levels, `OBJECT*peak1`."),
    Text<&WAVEINPROPERTIES::driver>("driver")
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Label("Input device")
        .Says(
            "Part of the name of the sound input; the first that has it is taken. Empty for the default one. "
            "Counts when it runs next."),
    Property<&WAVEINPROPERTIES::File, &WAVEINPROPERTIES::SetFile>("file", KeywordKind::File)
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Label("File to record into")
        .Says(
            "Wave file below the application folder that `record` writes. A file that is there is kept: the "
            "new one gets the next free number behind its name."),
    Property<&WAVEINPROPERTIES::FormatText, &WAVEINPROPERTIES::SetFormat>("format", KeywordKind::Text)
        .Saved()
        .Label("Format")
        .Says("Rate, size and channels, such as `48000 Hz,24bit,Mono`: 1000 to 384000 Hz; `8bit`, `16bit`, "
              "`24bit`, `32bit` or `float`; `Mono` or `Stereo`. Counts when it runs next."),
    FUNCTION_KEYWORD.Says("Kept; nothing is sent."),
    INTERVAL_KEYWORD.Says("Kept in milliseconds; nothing happens when it has passed."),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Limited<&WAVEINPROPERTIES::maximum, 1, LONGEST_RECORDING>("maximum")
        .Saved()
        .Unit("min")
        .Label("Longest recording in minutes")
        .Says("Minutes after which a recording ends by itself, up to 100000; at 4 GB it ends in any case."),
    Property<&WAVEINPROPERTIES::Peak<0>, nullptr>("peak1").Unit("dB").Says(
        "Greatest sample of the left channel in the newest tenth of a second, 0 for full scale; -144 for "
        "silence, and while it does not run. It can only be read."),
    Property<&WAVEINPROPERTIES::Peak<1>, nullptr>("peak2").Unit("dB").Says(
        "The same of the right channel, which is the left one in mono."),
    Property<&WAVEINPROPERTIES::IsRecording, &WAVEINPROPERTIES::SetRecording>("record")
        .Flagged(KEYWORD_CLOSED)
        .Limits(0, 1)
        .Says(
            "1 while what comes in is written into a file. Set to 1 it begins a new one, unless one is being "
            "written; refused while `run` is 0, and in a panel file. It ends at 0, at `maximum`, and when "
            "the "
            "device or the room on the disk is gone."),
    Property<&WAVEINPROPERTIES::Recorded, nullptr>("recorded")
        .Says("The file that was written last, with its number. It can only be read."),
    Property<&WAVEINPROPERTIES::Power<0>, nullptr>("rms1").Unit("dB").Says(
        "Root mean square of the left channel over the newest tenth of a second: -3 for a sine of full "
        "scale. "
        "It can only be read."),
    Property<&WAVEINPROPERTIES::Power<1>, nullptr>("rms2").Unit("dB").Says("The same of the right channel."),
    // Behind what it runs with.
    Handled<&WAVEINPROPERTIES::RunKeyword>("run", KeywordKind::Integer)
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Limits(0, 1)
        .Label("Listens")
        .Says(
            "1 while it listens. Set to 1 it does so as soon as the device is there: one that is missing, or "
            "is unplugged, is looked for once a second. Saved is what was set."),
    VALUE,
});

} // namespace

KeywordList WAVEINPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

int WAVEINPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command != COMMAND_GET || record.datatype != DATATYPE_DATA || record.data == nullptr ||
        !listener_) {
        return 0;
    }
    const std::vector<std::uint8_t> block = (*listener_)->NewestBlock();
    const auto size = static_cast<std::int32_t>(block.size());
    auto* held = static_cast<char*>(record.data);
    std::int32_t heldSize = 0;
    std::memcpy(&heldSize, held, sizeof heldSize);
    if (heldSize == size && std::memcmp(held + sizeof size, block.data(), block.size()) == 0) {
        return 0;
    }
    std::memcpy(held, &size, sizeof size);
    std::memcpy(held + sizeof size, block.data(), block.size());
    return 1;
}

int WAVEINPROPERTIES::RunKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        const bool runs = listener_ && (*listener_)->IsListening();
        return a_AnswerInteger(&record, isSaving_ ? run : runs ? 1 : 0);
    }
    int wanted = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &wanted) == 0 || wanted < 0 || wanted > 1) {
        return 0;
    }
    if (wanted == run) {
        return 1;
    }
    if (wanted == 1 && !Listen()) {
        return 0;
    }
    if (wanted == 0) {
        (*listener_)->Rest();
    }
    run = wanted;
    return 1;
}

bool WAVEINPROPERTIES::Listen() {
    if (!listener_) {
        listener_ = std::make_unique<Worker<SoundListener>>();
        if (!listener_->Start(THREAD_EXIT_CODE)) {
            TRACE("WaveIn: no thread can be started\n");
            listener_.reset();
            return false;
        }
    }
    (*listener_)->Listen({driver, format});
    return true;
}

LRESULT WAVEINPROPERTIES::OnSave(WPARAM saveCode, LPARAM target) {
    isSaving_ = true;
    const struct Saved {
        ~Saved() { flag = false; }
        bool& flag;
    } saved{isSaving_};
    return INTERFACEPROPERTIES::OnSave(saveCode, target);
}

bool WAVEINPROPERTIES::SetFormat(const std::string& text) {
    const auto read = logic::ParseSampleFormat(text);
    format = read.value_or(format);
    return read.has_value();
}

bool WAVEINPROPERTIES::SetFile(const std::string& text) {
    if (text.empty() || !logic::IsPathBelow(text)) {
        EDITTRACE(parent, "A recording must lie below the application folder: %s", text.c_str());
        return false;
    }
    file = text;
    return true;
}

bool WAVEINPROPERTIES::SetRecording(int record) {
    if (record == IsRecording()) {
        return true;
    }
    if (record == 0) {
        (*listener_)->EndRecording();
        return true;
    }
    return record == 1 && !isLoadingFile && listener_ && (*listener_)->Record({file, maximum});
}

extern const ControlImplementation waveInControl =
    Implement<WAVEINPROPERTIES>(InterfaceProc, LAID_OUT,
                                "Listens to a [sound input](interface-controls.md#wave-input): levels, and "
                                "recordings. Seen only while the "
                                "panel is edited.",
                                SharePicture<>);
