// The sound output and the sound input on a double of winmm.dll, whose inputs hear what its outputs play.

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Trace.h"
#include "logic/sound/Levels.h"
#include "logic/sound/LittleEndian.h"
#include "logic/sound/WaveFile.h"
#include "tests/doubles/winmm/SoundDouble.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <cmath>
#include <cstring>
#include <mmsystem.h>

TEST_SUITE_BEGIN("Sound");

namespace {

SoundDouble& Double() {
    auto* const get = Exported<decltype(GetSoundDouble)>("winmm.dll", "GetSoundDouble");
    REQUIRE_MESSAGE((get != nullptr), "the system's own winmm.dll is loaded instead of the double");
    return *get();
}

std::string InTemp(const std::string& name) {
    char path[MAX_PATH];
    a_MakeFullPathName(("Temp\\" + name).c_str(), path);
    return path;
}

std::string WaveOf(const logic::SampleFormat& format, const std::string& samples) {
    const auto header = logic::WaveHeader(format, static_cast<std::uint32_t>(samples.size()));
    return std::string(header.begin(), header.end()) + samples;
}

std::string Noise(std::size_t size) {
    std::string bytes;
    for (std::uint32_t state = 1; bytes.size() < size;) {
        state = state * 1664525 + 1013904223;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

std::string Tone(const logic::SampleFormat& format, int frames, double amplitude) {
    std::string bytes;
    for (int i = 0; i < frames * format.channels; ++i) {
        std::uint8_t sample[4];
        const double turn = 6.283185307179586 * 997.0 * (i / format.channels) / format.rate;
        logic::WriteSample(format, static_cast<float>(std::sin(turn) * amplitude), sample);
        bytes.append(reinterpret_cast<const char*>(sample), format.bits / 8U);
    }
    return bytes;
}

// A panel with a sound output that is bound to a parameter of a device, and files of its own in Temp.
struct SoundPanel {
    explicit SoundPanel(int speed = 20) {
        Double().Reset({"Microphone", "Line A"}, {"Headphones", "Line A"}, speed);
        panel.Declare("AMP1*device=simulated\nAMP1*play=integer,0,9,0\n");
        output = panel.Create("IWAVEOUT", "Out");
        input = panel.Create("IWAVEIN", "In");
        CHECK(Load(output, "files=.\\Temp\\one.wav;Temp\\two.wav") == 1);
    }
    ~SoundPanel() {
        Double().EndDelays();
        DestroyWindow(output);
        DestroyWindow(input);
        CHECK(Await([this] { return Double().OpenPorts() == portsLeft; }));
        for (const std::string& name : written) {
            DeleteFileA(name.c_str());
        }
    }
    void Write(const std::string& name, const std::string& bytes) {
        written.push_back(InTemp(name));
        REQUIRE(WriteBytes(InTemp(name), bytes));
    }
    bool AwaitValue(const std::string& value) const {
        return Await([&] { return Text(output, "value") == value; });
    }
    void Run() const {
        CHECK(Load(input, "run=1") == 1);
        CHECK(Await([this] { return Text(input, "run") == "1"; }));
    }
    float Decibels(const char* keyword) const {
        float level = 1;
        Send(input, COMMAND_GET, DATATYPE_FLOAT, &level, keyword);
        return level;
    }

    const TestPanel panel;
    HWND output;
    HWND input;
    std::vector<std::string> written;
    int portsLeft = 0; // that the system did not close
};

} // namespace

TEST_CASE("files of every format are played as they are, and the value goes to 0 at their end") {
    SoundPanel test;
    const logic::SampleFormat formats[] = {{2, 16, 44100, false},
                                           {1, 8, 8000, false},
                                           {2, 24, 48000, false},
                                           {2, 32, 96000, true},
                                           {6, 32, 8000, false}};
    CHECK(Load(test.output, "function=AMP1*play") == 1);
    for (const logic::SampleFormat& format : formats) {
        CAPTURE(logic::SampleFormatText(format));
        const std::string samples = Noise(format.FrameSize() * format.FramesIn(330));
        test.Write("two.wav", WaveOf(format, samples));
        Double().TakePlayed();
        CHECK(Load(test.output, "value=2") == 1);
        CHECK(test.panel.Parameter("AMP1*play") == "2");
        CHECK(test.AwaitValue("0"));
        CHECK(test.panel.Parameter("AMP1*play") == "0");
        CHECK(Double().TakePlayed() == samples);
        CHECK(Double().LastBits() == format.bits);
    }
    // A device that does not know them gets 16 bits; and softer ones.
    Double().KnowOnly16Bits(true);
    const logic::SampleFormat floats{1, 32, 44100, true};
    test.Write("one.wav", WaveOf(floats, Tone(floats, 4410, 0.5)));
    CHECK(Load(test.output, "volume=-6.0206") == 1);
    CHECK(Load(test.output, "value=1") == 1);
    CHECK(test.AwaitValue("0"));
    const std::string played = Double().TakePlayed();
    CHECK(played.size() == 8820);
    const auto levels = logic::MeasureLevels(
        {1, 16, 44100, false}, {reinterpret_cast<const std::uint8_t*>(played.data()), played.size()});
    CHECK(std::abs(logic::PeakDecibels(levels.channels[0]) + 12.04) < 0.02);
    CHECK(Await([] { return Double().PreparedBlocks() == 0 && Double().OpenPorts() == 0; }));
}

TEST_CASE("what cannot be played is told in words, and the value is 0 again") {
    SoundPanel test;
    const std::string good = WaveOf({}, Noise(4000));
    const std::pair<std::string, const char*> rows[] = {
        {"", "is no wave file"},
        {std::string(50000, 'x'), "is no wave file"},
        {good.substr(0, 30), "ends in its header"},
        {good.substr(0, 44), "has no samples"},
        {good.substr(0, 3000), "is cut short"}, // and played as far as it goes
    };
    for (const auto& [bytes, fault] : rows) {
        const TraceCapture trace;
        test.Write("one.wav", bytes);
        CHECK(Load(test.output, "value=1") == 1);
        CHECK(test.AwaitValue("0"));
        CHECK(trace.CountContaining(std::string("Sound output: .\\Temp\\one.wav ") + fault) == 1);
    }
    CHECK(Double().TakePlayed().size() == 2956);
    TraceCapture trace;
    const auto play = [&](const char* value, const std::string& fault) {
        trace.Clear();
        CHECK(Load(test.output, value) == 1);
        CHECK(test.AwaitValue("0"));
        INFO(trace.All());
        CHECK(trace.CountContaining(fault) == 1);
    };
    play("value=2", "Temp\\two.wav is not there");
    play("value=3", "file 3 is not in the list");
    test.Write("one.wav", good);
    CHECK(Load(test.output, "driver=Nothing") == 1);
    play("value=1", "is not played: error");
    CHECK(Load(test.output, "driver=Line") == 1);
    Double().TakeCalls();
    CHECK(Load(test.output, "value=1") == 1);
    CHECK(test.AwaitValue("0"));
    CHECK(Double().TakeCalls().find("waveOutOpen 1") == 0);
    const HANDLE writer = CreateFileA(InTemp("one.wav").c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    play("value=1", "is being written");
    CloseHandle(writer);
    // Others may rewrite it while it is played.
    test.Write("one.wav", WaveOf({}, Noise(4'000'000)));
    Double().TakePlayed();
    CHECK(Load(test.output, "value=1") == 1);
    CHECK(Await([] { return !Double().TakePlayed().empty(); }));
    trace.Clear();
    test.Write("one.wav", good);
    CHECK(test.AwaitValue("0"));
    CHECK(trace.CountContaining("is being rewritten") == 1);
    for (const char* line :
         {"value=-1", "files=C:\\a.wav", "files=\\\\desk\\a.wav", "files=..\\a.wav", "position=0"}) {
        CAPTURE(line);
        CHECK(Load(test.output, line) == 0);
    }
}

TEST_CASE("the value that is polled starts a file once, whatever the other one makes of the 0") {
    SoundPanel test;
    test.Write("one.wav", WaveOf({}, Noise(44100)));
    HWND lamp = test.panel.Create("LED", "Lamp"); // keeps its value where it is set back below
    CHECK(Load(test.output, "connection=Lamp") == 1);
    CHECK(SetValue(lamp, 1) == 1);
    Double().TakeCalls();
    Poll(test.output);
    CHECK(Text(test.output, "value") == "1");
    CHECK(test.AwaitValue("0"));
    CHECK(Value(lamp) == 0);
    // A set that changes nothing starts nothing, and so does a poll of what was found before.
    const auto opened = [] {
        const std::string calls = Double().TakeCalls();
        return calls.find("waveOutOpen") != std::string::npos;
    };
    CHECK(opened());
    Poll(test.output);
    CHECK(Load(test.output, "value=0") == 1);
    CHECK_FALSE(opened());
    CHECK(SetValue(lamp, 1) == 1);
    Poll(test.output);
    CHECK(test.AwaitValue("0"));
    CHECK(opened());
    CHECK(Load(test.output, "connection=Nobody;Lamp") == 1); // the 0 does not reach all
    CHECK(SetValue(lamp, 2) == 1);
    CHECK(Load(test.output, "connection=Lamp*offthreshold") == 1); // a number that nobody sets back
    CHECK(Load(lamp, "offthreshold=1") == 1);
    Poll(test.output);
    CHECK(Text(test.output, "value") == "1");
    CHECK(Load(test.output, "connection=Nobody;Lamp*offthreshold") == 1);
    CHECK(test.AwaitValue("0"));
    CHECK(opened());
    CHECK(Load(lamp, "offthreshold=1") == 1); // again
    CHECK(Load(test.output, "connection=Lamp*offthreshold") == 1);
    for (int i = 0; i < 3; ++i) {
        Poll(test.output);
    }
    CHECK(Text(test.output, "value") == "0");
    CHECK_FALSE(opened());
}

TEST_CASE("position, length, loop, another file and the end of it") {
    SoundPanel test(1);
    const logic::SampleFormat mono{1, 16, 8000, false};
    const std::string samples = Noise(16000 * 20);
    test.Write("one.wav", WaveOf(mono, samples));
    CHECK(Text(test.output, "length") == "0");
    CHECK(Load(test.output, "value=1") == 1);
    CHECK(Await([&] { return Text(test.output, "length") == "20"; }));
    CHECK(Await([&] { return Text(test.output, "position") != "0"; }));
    CHECK(Load(test.output, "position=7") == 1);
    std::string played; // ends with what lies behind that place
    CHECK(Await([&] {
        played += Double().TakePlayed();
        return played.size() > 8000 && samples.find(played.substr(played.size() - 4000)) >= 7 * 16000;
    }));
    CHECK(samples.find(played.substr(played.size() - 4000)) < 9 * 16000 + 10 * 16000);
    CHECK(Load(test.output, "value=1") == 1); // from its beginning again
    CHECK(Await([&] { return Text(test.output, "length") == "20"; }));
    CHECK(Text(test.output, "position")[0] < '5');
    CHECK(Load(test.output, "loop=1") == 1);
    CHECK(Load(test.output, "position=1e9") == 1); // limited to the length
    CHECK(Await(
        [&] { return Text(test.output, "position").size() > 2 && Text(test.output, "position")[0] < '5'; }));
    CHECK(Text(test.output, "value") == "1");
    CHECK(Load(test.output, "value=0") == 1);
    CHECK(Await([] { return Double().OpenPorts() == 0; }));
    CHECK(Text(test.output, "length") == "0");
    CHECK(Load(test.output, "position=1") == 0);
}

TEST_CASE("a file of 2 GB begins at once") {
    SoundPanel test;
    constexpr std::uint32_t LENGTH = 0x7FFF0000;
    const auto header = logic::WaveHeader({}, LENGTH);
    test.Write("one.wav", std::string(header.begin(), header.end()));
    const HANDLE file =
        CreateFileA(InTemp("one.wav").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    LARGE_INTEGER end;
    end.QuadPart = LENGTH + std::int64_t{44};
    const bool isMade = SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file);
    CloseHandle(file);
    REQUIRE(isMade);
    CHECK(Load(test.output, "value=1") == 1);
    CHECK(Await([] { return !Double().TakePlayed().empty(); }));
    CHECK(Text(test.output, "length") == "12173.6");
    CHECK(Load(test.output, "position=12170") == 1);
    CHECK(test.AwaitValue("0")); // it ends at its end
}

TEST_CASE("levels and the newest samples of what comes in") {
    SoundPanel test;
    const logic::SampleFormat stereo;
    test.Write("one.wav", WaveOf(stereo, Tone(stereo, 441000, 0.5)));
    CHECK(test.Decibels("peak1") == -144);
    test.Run();
    CHECK(Load(test.output, "loop=1") == 1);
    CHECK(Load(test.output, "value=1") == 1);
    CHECK(Await([&] { return std::abs(test.Decibels("rms2") + 9.03) < 0.05; }));
    CHECK(std::abs(test.Decibels("peak1") + 6.02) < 0.1);

    char block[TEXT_SIZE] = {};
    CHECK(Send(test.input, COMMAND_GET, DATATYPE_DATA, block) == 1);
    std::int32_t size = 0;
    std::memcpy(&size, block, 4);
    CHECK(size == 4092);
    CHECK(Await([&] { return Send(test.input, COMMAND_GET, DATATYPE_DATA, block) == 1; })); // a newer one
    Double().Freeze(true);
    Await([&] { return Send(test.input, COMMAND_GET, DATATYPE_DATA, block) == 0; });
    CHECK(Send(test.input, COMMAND_GET, DATATYPE_DATA, block) == 0); // the same one
    CHECK(Text(test.input, "value").empty());
    CHECK(SendMessageA(test.input, CWM_GETCONTROLTYPE, 0, 0) == 37);
    Double().Freeze(false);
    CHECK(Load(test.input, "run=0") == 1);
    CHECK(Text(test.input, "run") == "0");
    CHECK(Await([&] { return test.Decibels("peak1") == -144; }));
}

TEST_CASE("a device that is unplugged ends the run, which begins again when it is back") {
    SoundPanel test;
    CHECK(Load(test.input, "driver=Line") == 1);
    Double().Unplug(true);
    const TraceCapture trace;
    CHECK(Load(test.input, "run=1") == 1);
    CHECK(Await([&] { return trace.CountContaining("cannot be listened to") == 1; }));
    CHECK(Text(test.input, "run") == "0");
    CHECK(test.panel.Saved().find("In*run=1\r\n") != std::string::npos);
    Double().Unplug(false);
    CHECK(Await([&] { return Text(test.input, "run") == "1"; }));
    CHECK(Double().TakeCalls().find("waveInOpen 1") == 0);
    CHECK(Load(test.input, "record=1") == 1);
    CHECK(Await([&] { return !Text(test.input, "recorded").empty(); }));
    test.written.push_back(InTemp(Text(test.input, "recorded").substr(7)));
    Double().Unplug(true);
    CHECK(Await([&] { return Text(test.input, "run") == "0"; }));
    CHECK(Text(test.input, "record") == "0");
    CHECK(trace.CountContaining("it is gone") == 1);
    Double().Unplug(false);
    CHECK(Await([&] { return Text(test.input, "run") == "1"; }));
    Double().Freeze(true); // it is there, and gives nothing
    CHECK(Await([&] { return trace.CountContaining("it is gone: nothing comes in any more") == 1; }));
    Double().Freeze(false);
    CHECK(Load(test.input, "run=0") == 1);
    CHECK(test.panel.Saved().find("In*run=0\r\n") != std::string::npos);
}

TEST_CASE("a recording is what came in, and its header is right at any moment") {
    SoundPanel test(4);
    for (const char* name : {"rec.wav", "rec2.wav", "rec3.wav", "recorded.wav"}) {
        DeleteFileA(InTemp(name).c_str());
    }
    test.Write("rec.wav", "somebody else's");
    test.written.push_back(InTemp("rec2.wav"));
    test.written.push_back(InTemp("rec3.wav"));
    const std::string samples = Noise(44100 * 4 * 30);
    test.Write("one.wav", WaveOf({}, samples));
    CHECK(Load(test.input, "file=Temp\\rec.wav") == 1);
    CHECK(Load(test.input, "record=1") == 0); // it does not run
    test.Run();
    CHECK(Load(test.input, "record=1", LOAD_FROM_FILE) == 0);
    CHECK(Load(test.output, "value=1") == 1);
    CHECK(Await([] { return !Double().TakePlayed().empty(); }));
    CHECK(Load(test.input, "record=1") == 1);
    const std::string path = InTemp("rec2.wav");
    // While it is being written, what the header promises is there.
    std::uint32_t promised = 0;
    CHECK(Await([&] {
        const std::string bytes = ReadBytes(path);
        if (bytes.size() < 44) {
            return false;
        }
        promised = logic::Read32(reinterpret_cast<const std::uint8_t*>(bytes.data()) + 40);
        CHECK(promised + 44 <= bytes.size());
        return promised > 100'000;
    }));
    CHECK(Text(test.input, "recorded") == "Temp\\rec2.wav");
    CHECK(Load(test.input, "record=0") == 1);
    CHECK(Await([&] {
        const std::string bytes = ReadBytes(path);
        return bytes.size() - 44 == logic::Read32(reinterpret_cast<const std::uint8_t*>(bytes.data()) + 40);
    }));
    const std::string recorded = ReadBytes(path).substr(44);
    CHECK(recorded.size() >= promised);
    const std::size_t begin = recorded.find_first_not_of('\0') & ~std::size_t{3};
    const std::string heard = recorded.substr(begin);
    CHECK(heard.size() > 50'000);
    CHECK(samples.compare(samples.find(heard.substr(0, 1000)), heard.size(), heard) == 0);
    CHECK(CopyFileA(path.c_str(), InTemp("recorded.wav").c_str(), FALSE)); // for a reader that is not ours
    CHECK(ReadBytes(InTemp("rec.wav")) == "somebody else's");

    // The next one, which is as long as it may get.
    Double().Reset({"Line A"}, {"Line A"}, 200);
    CHECK(Load(test.input, "maximum=1") == 1);
    const TraceCapture trace;
    CHECK(Load(test.input, "record=1") == 1);
    CHECK(Await([&] { return Text(test.input, "record") == "0"; }, 60000));
    CHECK(Text(test.input, "recorded") == "Temp\\rec3.wav");
    CHECK(trace.CountContaining("rec3.wav is as long as it may get") == 1);
    CHECK(Await([] { return ReadBytes(InTemp("rec3.wav")).size() == 44 + 60 * 44100 * 4; }));
    CHECK(Load(test.input, "file=Nowhere\\rec.wav") == 1);
    CHECK(Load(test.input, "record=1") == 1);
    CHECK(Await([&] { return Text(test.input, "record") == "0"; }));
    CHECK(trace.CountContaining("Nowhere\\rec.wav has no folder") == 1);
}

TEST_CASE("another machine sets no file and no device, and does not listen") {
    const SoundPanel test;
    const RemoteSetting remote;
    for (const char* line : {"driver=Line", "files=Temp\\two.wav"}) {
        CHECK(Load(test.output, line) == 0);
    }
    for (const char* line : {"driver=Line", "file=Temp\\a.wav", "run=1", "record=1"}) {
        CAPTURE(line);
        CHECK(Load(test.input, line) == 0);
    }
    CHECK(Load(test.output, "value=0") == 1);
}

namespace {

constexpr const char* OUTPUT_FUNCTIONS[] = {"waveOutOpen",       "waveOutPrepareHeader",   "waveOutWrite",
                                            "waveOutReset",      "waveOutUnprepareHeader", "waveOutClose",
                                            "waveOutGetDevCapsA"};
constexpr const char* INPUT_FUNCTIONS[] = {"waveInOpen",  "waveInPrepareHeader", "waveInAddBuffer",
                                           "waveInStart", "waveInReset",         "waveInUnprepareHeader",
                                           "waveInClose", "waveInGetDevCapsA"};

} // namespace

TEST_CASE("whatever the system refuses is told, and nothing is kept that it has given back") {
    const auto use = [](const char* function, bool isInput) {
        SoundPanel test(50);
        test.Write("one.wav", WaveOf({}, Noise(44100)));
        for (HWND control : {test.output, test.input}) {
            CHECK(Load(control, "driver=Line") == 1);
        }
        const TraceCapture trace;
        Double().Fail(function, 5);
        test.portsLeft = std::string(function).ends_with("Close") ? 1 : 0;
        CHECK(Load(isInput ? test.input : test.output, isInput ? "run=1" : "value=1") == 1);
        if (isInput) {
            Await([&] { return Text(test.input, "run") == "1" || trace.CountContaining("Sound input") > 0; });
            CHECK(Load(test.input, "run=0") == 1);
        } else {
            CHECK(test.AwaitValue("0"));
        }
        CHECK(Await([&] { return trace.CountContaining("Sound ") > 0; }));
        Double().Fail(function, 0);
    };
    const auto useAll = [&] {
        for (const char* function : OUTPUT_FUNCTIONS) {
            INFO(std::string(function));
            use(function, false);
        }
        for (const char* function : INPUT_FUNCTIONS) {
            INFO(std::string(function));
            use(function, true);
        }
    };
    useAll(); // caches fill
    const Resources before = CountResources();
    useAll();
    CHECK(Await([&] { return CountResources().Settled(before).IsAtMost(before); }));
}

TEST_SUITE_END();
