// IWAVEGENERATOR: writes a sine tone into a stereo wave file on a thread of its own as soon as its length is
// set. Durations in seconds, frequencies and rates in Hz, phases in radians.

#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/interfaces/wave/ToneGenerator.h"
#include "base/Threads.h"
#include "logic/controls/TestTone.h"

#include <algorithm>

namespace {

constexpr DWORD THREAD_EXIT_CODE = 14;

} // namespace

class WAVEGENERATORPROPERTIES : public INTERFACEPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void Destroying() override { tone.End(); }
    bool IsOnlyWritten(std::string_view keyword) const override {
        return keyword == "filename" || keyword == "format";
    }

    // Starts a generation or has one follow. False when no thread can be started.
    bool Generate(int seconds);

    Worker<ToneGenerator> tone;
};

// Keyword handlers

namespace {

int DurationKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& generator = *static_cast<WAVEGENERATORPROPERTIES*>(object);
    if (record->command == COMMAND_GET) {
        return record->datatype == DATATYPE_TEXT
                   ? a_AnswerText(record, logic::FormatDuration(generator.tone->duration).c_str())
                   : a_AnswerInteger(record, generator.tone->duration);
    }
    if (record->command != COMMAND_SET) {
        return 0;
    }
    if (record->datatype == DATATYPE_TEXT) {
        const auto text = TextToSet(record);
        const auto seconds = text ? logic::ParseDuration(*text) : std::nullopt;
        return seconds && generator.Generate(*seconds) ? 1 : 0;
    }
    int seconds = 0;
    return a_ReadInteger(record, &seconds) != 0 && generator.Generate(std::max(seconds, 0)) ? 1 : 0;
}

int FilenameKeyword(VALUERECORD* record, HOSTINFO*) {
    return record->command == COMMAND_GET ? a_AnswerText(record, ".\\Temp\\wave.wav") : 0;
}

int FormatKeyword(VALUERECORD* record, HOSTINFO* object) {
    const auto& generator = *static_cast<WAVEGENERATORPROPERTIES*>(object);
    const std::string text = logic::FormatFloat(generator.tone->sampleRate) + " Hz," +
                             std::to_string(generator.tone->bitsPerSample) + "bit,Stereo";
    return record->command == COMMAND_GET ? a_AnswerText(record, text.c_str()) : 0;
}

int SignalKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& generator = *static_cast<WAVEGENERATORPROPERTIES*>(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(
            record, logic::FormatSignal({generator.tone->frequency, generator.tone->amplitude}).c_str());
    }
    const auto text = TextToSet(record);
    const auto signal = text ? logic::ParseSignal(*text, generator.tone->amplitude) : std::nullopt;
    if (!signal) {
        return 0;
    }
    generator.tone->frequency = signal->frequency;
    generator.tone->amplitude = signal->amplitude;
    return 1;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", nullptr, 0},
    {"connection", RefusedKeyword, 0},
    {"duration", DurationKeyword, KEYWORD_SAVED | KEYWORD_RECORDING},
    {"filename", TextOnly<FilenameKeyword>, KEYWORD_SAVED | KEYWORD_FILE},
    {"format", TextOnly<FormatKeyword>, KEYWORD_SAVED},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"signal", TextOnly<SignalKeyword>, KEYWORD_SAVED},
    {"value", RefusedKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* WAVEGENERATORPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
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

extern const ControlImplementation waveGeneratorControl{
    .create = CreateProperties<WAVEGENERATORPROPERTIES>, .procedure = InterfaceProc, .share = SharePicture<>};
