// Loading and saving panel files of many knobs, and the timer tick of such a panel.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <span>

namespace {

constexpr int SMALLEST = 2500;
constexpr int MIDDLE = 5000;
constexpr int LARGEST = 10000;
// One round.
constexpr int SHORT_ORDER[] = {SMALLEST, MIDDLE, LARGEST};
constexpr int ORDER[] = {SMALLEST, MIDDLE, LARGEST, SMALLEST};
constexpr int PARAMETERS = 100; // of the device that the knobs are bound to
constexpr int IDLE_TICKS = 20;

std::string DeviceText() {
    std::string text = "AMP1*device=simulated\r\n";
    for (int i = 0; i < PARAMETERS; ++i) {
        text += "AMP1*gain" + std::to_string(i) + "=float,0,100,50,\r\n";
    }
    return text;
}

// Knobs bound to device parameters, every tenth also connected to the one before it, as they are saved.
std::string PanelText(int knobs) {
    std::string text;
    for (int i = 0; i < knobs; ++i) {
        const std::string name = "Knob" + std::to_string(i);
        const RECT place = PlaceOf(i);
        text += "control=0x00000000 KNOB \"" + name + "\" 0x50010000 " + std::to_string(place.left) + "," +
                std::to_string(place.top) + "," + std::to_string(place.right) + "," +
                std::to_string(place.bottom) + "\r\n";
        text += name + "*bitmap=.\\Controls\\Knob.bmp\r\n";
        text += name + "*function=AMP1*gain" + std::to_string(i % PARAMETERS) + "\r\n";
        text += name + "*interval=1000\r\n";
        text += name + "*properties=0,100,50\r\n";
        text += name + "*relative=0\r\n";
        text += name + "*resolution=0.5\r\n";
        text += name + "*values=\r\n";
        text += name + "*valuescopy=\r\n";
        text += name + "*connection=" + (i % 10 == 9 ? "Knob" + std::to_string(i - 1) : "") + "\r\n";
    }
    return text;
}

class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& text) {
        char folder[MAX_PATH];
        char name[MAX_PATH];
        GetTempPathA(MAX_PATH, folder);
        GetTempFileNameA(folder, "pan", 0, name);
        path_ = name;
        std::ofstream(path_, std::ios::binary) << text;
    }
    ~TemporaryFile() { DeleteFileA(path_.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* Path() const { return path_.c_str(); }
    std::string Text() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::string path_;
};

// Seconds for one of several ticks, the middle one: whoever else wants the processor meanwhile falls into
// few.
double MiddleOfTicks(const std::function<void()>& tick) {
    Samples times;
    for (int i = 0; i < IDLE_TICKS; ++i) {
        const double start = Now();
        tick();
        times.push_back(Now() - start);
    }
    std::nth_element(times.begin(), times.begin() + IDLE_TICKS / 2, times.end());
    return times[IDLE_TICKS / 2];
}

// Seconds: loading and saving for one control, ticks for the whole panel.
struct PanelTimes {
    double load = 0;
    double save = 0;
    double pollingTick = 0;
    double idleTick = 0;
};

// Loads, operates and saves a panel. Nothing when the result is not what the file says.
std::optional<PanelTimes> RunPanel(int knobs) {
    const std::string text = PanelText(knobs);
    const TemporaryFile devices(DeviceText());
    const TemporaryFile source(text);
    const TemporaryFile target("");
    const BenchPanel panel(false);
    if (ph_LoadDevices(panel.Root(), devices.Path()) != 1) {
        return std::nullopt;
    }
    PanelTimes times;
    double start = Now();
    const int created = ph_LoadPanel(panel.Root(), source.Path());
    times.load = (Now() - start) / knobs;
    if (created != knobs) {
        return std::nullopt;
    }
    start = Now();
    ph_Tick(panel.Root()); // none has polled yet, so all do
    times.pollingTick = Now() - start;
    times.idleTick = MiddleOfTicks([&panel] { ph_Tick(panel.Root()); });
    start = Now();
    const int saved = ph_SavePanel(panel.Root(), target.Path());
    times.save = (Now() - start) / knobs;
    return saved == 1 && target.Text() == text ? std::optional(times) : std::nullopt;
}

struct BareTimes {
    double create = 0; // one window
    double tick = 0;   // all of them
};

BareTimes RunBareWindows(int count) {
    const BenchPanel panel(false);
    const double start = Now();
    const std::vector<HWND> windows = panel.AddMany(BARE_CLASS, count);
    const double create = (Now() - start) / count;
    return {create, MiddleOfTicks([&windows] {
                for (const HWND window : windows) {
                    SendMessageA(window, WM_TIMER, 0, 0);
                }
            })};
}

// One sample a round; where a size occurs several times in it, their mean.
struct FileSamples {
    bool TakeRound(std::span<const int> order) {
        std::map<int, double> loadSum;
        std::map<int, double> saveSum;
        std::map<int, int> count;
        for (const int knobs : order) {
            const auto times = RunPanel(knobs);
            if (!times) {
                return false;
            }
            loadSum[knobs] += times->load;
            saveSum[knobs] += times->save;
            ++count[knobs];
            if (knobs == LARGEST) {
                pollingTick.push_back(times->pollingTick);
                idleTick.push_back(times->idleTick);
                const BareTimes bareTimes = RunBareWindows(LARGEST);
                bare.push_back(bareTimes.create);
                bareTick.push_back(bareTimes.tick);
            }
        }
        for (const auto& [knobs, times] : count) {
            load[knobs].push_back(loadSum[knobs] / times);
            save[knobs].push_back(saveSum[knobs] / times);
        }
        return true;
    }

    std::map<int, Samples> load, save; // of one control, by the number of controls
    Samples idleTick, pollingTick;     // of the largest panel
    Samples bare, bareTick;            // of as many bare windows
};

// Seconds for one of so many lines that can be applied to nothing: half of them belong to a knob that does
// not know their keywords.
Workload LoadJunk(int lines) {
    std::string text = "control=0x0 KNOB \"Knob\" 0x50010000 0,0,47,47\r\n";
    for (int i = 0; i < lines; ++i) {
        text += (i % 2 == 0 ? "Knob*newer" : "Nobody*keyword") + std::to_string(i) + "=1\r\n";
    }
    return [lines, text] {
        const TemporaryFile file(text);
        const BenchPanel panel(false);
        const double start = Now();
        ph_LoadPanel(panel.Root(), file.Path());
        return (Now() - start) / lines;
    };
}

} // namespace

void MeasurePanelFiles(Report& report) {
    FileSamples samples;
    const std::span<const int> order = report.IsQuick() ? std::span<const int>(SHORT_ORDER) : ORDER;
    for (int round = 0; round < report.Rounds(3); ++round) {
        if (!samples.TakeRound(order)) {
            report.Fail("panel files of knobs", "what was loaded and saved is not what the file says");
            return;
        }
    }
    auto& [load, save, idleTick, pollingTick, bare, bareTick] = samples;
    report.Add("load one knob of 10,000", load[LARGEST], "creating a bare window", bare, Unit::Seconds,
               RatioUpTo(1.2));
    report.Add("load one knob of 10,000", load[LARGEST], "one of 2,500", load[SMALLEST], Unit::Seconds,
               RatioUpTo(1.25));
    report.Add("load one knob of 5,000", load[MIDDLE], "one of 2,500", load[SMALLEST], Unit::Seconds,
               RatioUpTo(1.25));
    report.Add("save one knob of 10,000", save[LARGEST], "creating a bare window", bare, Unit::Seconds,
               NO_AIM);
    report.Add("save one knob of 10,000", save[LARGEST], "one of 2,500", save[SMALLEST], Unit::Seconds,
               NO_AIM);
    report.Add("save one knob of 5,000", save[MIDDLE], "one of 2,500", save[SMALLEST], Unit::Seconds, NO_AIM);
    report.Add("one tick over 10,000 idle knobs", idleTick, "WM_TIMER to 10,000 bare windows", bareTick,
               Unit::Seconds, RatioUpTo(0.1));
    report.Add("one tick with 10,000 knobs polling", pollingTick, "WM_TIMER to 10,000 bare windows", bareTick,
               Unit::Seconds, NO_AIM);
    report.Measure("load one line of 100,000 of junk", LoadJunk(100000), "one of 10,000", LoadJunk(10000),
                   Unit::Seconds, RatioUpTo(2), 5);
}
