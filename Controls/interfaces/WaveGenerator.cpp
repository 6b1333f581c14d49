// IWAVEGENERATOR: writes a sine tone into a stereo wave file on a thread of its own as soon as its length is
// set. Durations in seconds, frequencies and rates in Hz, phases in radians.

#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/interfaces/wave/ToneGenerator.h"
#include "Panelhost/Trace.h"
#include "base/Threads.h"
#include "logic/controls/TestTone.h"

#include <algorithm>

namespace {

constexpr DWORD THREAD_EXIT_CODE = 14;

} // namespace

class WAVEGENERATORPROPERTIES : public INTERFACEPROPERTIES {
public:
    KeywordList Keywords() const override;
    void Destroying() override { tone.End(); }

    int DurationKeyword(VALUERECORD& record);
    std::string FileName() const { return ".\\Temp\\wave.wav"; }
    std::string FormatText() const;
    std::string SignalText() const { return logic::FormatSignal({tone->frequency, tone->amplitude}); }
    bool SetSignal(const std::string& text);

    // Starts a generation or has one follow. False when no thread can be started.
    bool Generate(int seconds);

    Worker<ToneGenerator> tone;
};

// Keywords

namespace {

constexpr KeywordTable KEYWORDS({
    NO_VALUE_KEYWORD,
    Refused("connection").Says("Nothing; a wave generator takes no connections."),
    Handled<&WAVEGENERATORPROPERTIES::DurationKeyword>("duration", KeywordKind::Text)
        .Saved()
        .Flagged(KEYWORD_RECORDING)
        .Says("Length of the tone, minutes and seconds, such as `2:05`; `0:00 min` when nothing is being "
              "written "
              "any more. Setting it starts the writing; as a whole number it is seconds."),
    TextProperty<&WAVEGENERATORPROPERTIES::FileName, nullptr>("filename", KeywordKind::File)
        .Saved()
        .OnlyWritten()
        .Says("The file that is written, in the application folder; it can only be read."),
    TextProperty<&WAVEGENERATORPROPERTIES::FormatText, nullptr>("format").Saved().OnlyWritten().Says(
        "Format of the file; it can only be read."),
    INTERVAL_KEYWORD.Says("Taken and kept."),
    LAYER_KEYWORD,
    TextProperty<&WAVEGENERATORPROPERTIES::SignalText, &WAVEGENERATORPROPERTIES::SetSignal>("signal")
        .Saved()
        .Says(
            "Frequency in Hz and peak sample value, 0 to 32767, such as `440 Hz,20000`; without the value it "
            "stays as it is; anything else is refused. The frequency counts from the next tone on, the value "
            "at once."),
    Refused("value").Says("Nothing; it can be neither set nor read."),
});

} // namespace

KeywordList WAVEGENERATORPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

int WAVEGENERATORPROPERTIES::DurationKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return record.datatype == DATATYPE_TEXT
                   ? a_AnswerText(&record, logic::FormatDuration(tone->duration).c_str())
                   : a_AnswerInteger(&record, tone->duration);
    }
    if (record.command != COMMAND_SET) {
        return 0;
    }
    if (record.datatype == DATATYPE_TEXT) {
        const auto text = TextToSet(&record);
        const auto seconds = text ? logic::ParseDuration(*text) : std::nullopt;
        return seconds && Generate(*seconds) ? 1 : 0;
    }
    int seconds = 0;
    return a_ReadInteger(&record, &seconds) != 0 && Generate(std::max(seconds, 0)) ? 1 : 0;
}

std::string WAVEGENERATORPROPERTIES::FormatText() const {
    return logic::FormatFloat(tone->sampleRate) + " Hz," + std::to_string(tone->bitsPerSample) + "bit,Stereo";
}

bool WAVEGENERATORPROPERTIES::SetSignal(const std::string& text) {
    const auto signal = logic::ParseSignal(text, tone->amplitude);
    if (!signal) {
        return false;
    }
    tone->frequency = signal->frequency;
    tone->amplitude = signal->amplitude;
    return true;
}

bool WAVEGENERATORPROPERTIES::Generate(int seconds) {
    const auto requested = tone->Request(seconds);
    if (requested != ToneGenerator::Requested::NeedsThread) {
        return requested == ToneGenerator::Requested::GoesOn;
    }
    if (tone.Start(THREAD_EXIT_CODE)) {
        return true;
    }
    TRACE("WaveGenerator: no thread can be started\n");
    tone->Withdraw();
    return false;
}

extern const ControlImplementation waveGeneratorControl = Implement<WAVEGENERATORPROPERTIES>(
    InterfaceProc, NO_DIALOG, "Writes a sine tone into a wave file.", SharePicture<>);
