// Measures a figure of ours and a yardstick by turns, so that both see the same machine, and prints one line
// a figure: medians, the median of their ratios in each round, and the range of the middle half of these.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

// Does its work once and returns one sample: seconds or bytes.
using Workload = std::function<double()>;
using Samples = std::vector<double>;

enum class Unit { Seconds, Bytes };

// What a figure is meant to reach.
struct Aim {
    enum class Of { Nothing, Ratio, Value };
    Of of = Of::Nothing;
    double limit = 0;
};
constexpr Aim NO_AIM{};
// Ours divided by the yardstick is not to exceed the limit.
constexpr Aim RatioUpTo(double limit) {
    return {Aim::Of::Ratio, limit};
}
// Ours alone is to stay below the limit, in the figure's unit.
constexpr Aim Below(double limit) {
    return {Aim::Of::Value, limit};
}

// Seconds since some fixed moment.
double Now();

// Runs each workload once a round, every other round in reverse order. One list of samples for each workload.
std::vector<Samples> TakeTurns(int rounds, const std::vector<Workload>& workloads);

// What a run measures, and how thoroughly.
struct RunSettings {
    int rounds = 0;       // of every figure; 0 for what each takes by itself
    bool isQuick = false; // the same figures from fewer samples
    bool isBusy = false;  // other programs keep the processors busy; said in the results
    std::string group;    // only groups whose name holds it are measured
    std::string subject;  // only this control is measured; empty for all
    std::string jsonFile; // receives the results as well; empty for none
};

// One line of the report.
struct Figure {
    std::string name;
    std::string yardstickName; // empty without a yardstick
    Unit unit = Unit::Seconds;
    double ours = 0; // medians
    double yardstick = 0;
    double ratio = 0;
    double low = 0; // the middle half of the ratios; without a yardstick, of ours
    double high = 0;
    Aim aim;

    bool HasYardstick() const { return !yardstickName.empty(); }
    bool IsMissed() const {
        return (aim.of == Aim::Of::Ratio && ratio > aim.limit) ||
               (aim.of == Aim::Of::Value && ours >= aim.limit);
    }
};

class Report {
public:
    explicit Report(RunSettings settings);

    // How often a figure is measured: what it usually takes, or what this run leaves of it. Many short
    // samples are better than few long ones: most of them fit between two moments in which others have the
    // processor.
    int Rounds(int usual) const;
    bool IsQuick() const { return settings_.isQuick; }
    bool Wants(const std::string& group) const { return group.find(settings_.group) != std::string::npos; }

    bool WantsSubject(const std::string& name) const {
        return settings_.subject.empty() || name == settings_.subject;
    }

    // Measures both by turns and adds the line.
    void Measure(const std::string& name, const Workload& ours, const std::string& yardstickName,
                 const Workload& yardstick, Unit unit, Aim aim, int rounds = 7);
    // A line from samples that were taken elsewhere, one of each a round. Without yardstick samples there is
    // no ratio.
    void Add(const std::string& name, const Samples& ours, const std::string& yardstickName,
             const Samples& yardstick, Unit unit, Aim aim);
    // What could not be measured.
    void Fail(const std::string& name, const std::string& reason);

    // Writes the results where they are wanted. False when the file cannot be written.
    bool Finish() const;

    bool HasFailed() const { return failed_; }
    int Missed() const { return missed_; }

private:
    RunSettings settings_;
    std::vector<Figure> figures_;
    int missed_ = 0;
    bool failed_ = false;
};
