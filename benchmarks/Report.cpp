#include "benchmarks/Report.h"

#include "benchmarks/Json.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <tuple>
#include <utility>

namespace {

constexpr const char* ROW = "%-50s %10s   %-31s %10s %7s  %-15s %-9s %s\n";

double Median(Samples samples) {
    std::sort(samples.begin(), samples.end());
    const std::size_t middle = samples.size() / 2;
    return samples.size() % 2 != 0 ? samples[middle] : (samples[middle - 1] + samples[middle]) / 2;
}

// The ends of the middle half: a machine that does other things as well spoils the outer quarters.
std::pair<double, double> Quartiles(Samples samples) {
    std::sort(samples.begin(), samples.end());
    const std::size_t quarter = samples.size() / 4;
    return {samples[quarter], samples[samples.size() - 1 - quarter]};
}

std::string Formatted(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string ValueText(double value, Unit unit) {
    if (unit == Unit::Bytes) {
        return Formatted("%.0f B", value);
    }
    for (const auto& [name, size] : {std::pair{" s", 1.0}, {" ms", 1e-3}, {" us", 1e-6}}) {
        if (value >= size) {
            return Formatted(value >= 100 * size ? "%.0f" : "%.3g", value / size) + name;
        }
    }
    return Formatted("%.0f ns", value * 1e9);
}

std::string AimText(Aim aim, Unit unit) {
    switch (aim.of) {
    case Aim::Of::Ratio:
        return Formatted("<= %.3g x", aim.limit);
    case Aim::Of::Value:
        return "< " + ValueText(aim.limit, unit);
    default:
        return "-";
    }
}

} // namespace

double Now() {
    static const double ticksPerSecond = [] {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return static_cast<double>(frequency.QuadPart);
    }();
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    return static_cast<double>(ticks.QuadPart) / ticksPerSecond;
}

std::vector<Samples> TakeTurns(int rounds, const std::vector<Workload>& workloads) {
    std::vector<Samples> samples(workloads.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t turn = 0; turn < workloads.size(); ++turn) {
            const std::size_t which = round % 2 == 0 ? turn : workloads.size() - 1 - turn;
            samples[which].push_back(workloads[which]());
        }
    }
    return samples;
}

Report::Report(RunSettings settings) : settings_(std::move(settings)) {
    std::printf(ROW, "Figure", "ours", "yardstick", "", "ratio", "middle half", "aim", "");
}

int Report::Rounds(int usual) const {
    if (settings_.rounds > 0) {
        return settings_.rounds;
    }
    if (!settings_.isQuick) {
        return usual;
    }
    return usual <= 3 ? 1 : std::max(3, usual / 5);
}

void Report::Measure(const std::string& name, const Workload& ours, const std::string& yardstickName,
                     const Workload& yardstick, Unit unit, Aim aim, int rounds) {
    ours(); // what is done only once is done now
    yardstick();
    const std::vector<Samples> samples = TakeTurns(Rounds(rounds), {ours, yardstick});
    Add(name, samples[0], yardstickName, samples[1], unit, aim);
}

void Report::Add(const std::string& name, const Samples& ours, const std::string& yardstickName,
                 const Samples& yardstick, Unit unit, Aim aim) {
    Figure figure{name, yardstick.empty() ? "" : yardstickName, unit, Median(ours), 0, 0, 0, 0, aim};
    std::string ratioText;
    std::string spread;
    if (figure.HasYardstick()) {
        Samples ratios;
        for (std::size_t round = 0; round < ours.size(); ++round) {
            ratios.push_back(ours[round] / yardstick[round]); // of one round, so that slow moments cancel out
        }
        figure.yardstick = Median(yardstick);
        figure.ratio = Median(ratios);
        std::tie(figure.low, figure.high) = Quartiles(ratios);
        ratioText = Formatted("%.2f", figure.ratio);
        spread = Formatted("%.2f", figure.low) + "-" + Formatted("%.2f", figure.high);
    } else {
        std::tie(figure.low, figure.high) = Quartiles(ours);
        spread = ValueText(figure.low, unit) + "-" + ValueText(figure.high, unit);
    }
    missed_ += figure.IsMissed() ? 1 : 0;
    std::printf(ROW, name.c_str(), ValueText(figure.ours, unit).c_str(), figure.yardstickName.c_str(),
                figure.HasYardstick() ? ValueText(figure.yardstick, unit).c_str() : "", ratioText.c_str(),
                spread.c_str(), AimText(aim, unit).c_str(),
                aim.of == Aim::Of::Nothing ? ""
                : figure.IsMissed()        ? "MISSED"
                                           : "met");
    std::fflush(stdout);
    figures_.push_back(std::move(figure));
}

void Report::Fail(const std::string& name, const std::string& reason) {
    failed_ = true;
    std::printf("%-50s not measured: %s\n", name.c_str(), reason.c_str());
    std::fflush(stdout);
}

bool Report::Finish() const {
    std::printf("\n%s\n", missed_ == 0 ? "All aims met." : "Some aims were missed.");
    return settings_.jsonFile.empty() || WriteJson(settings_, figures_);
}
