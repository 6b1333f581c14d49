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

class Report {
public:
    // rounds: 0 for what each figure takes by itself. Only groups whose name holds the filter are measured.
    Report(int rounds, std::string filter);

    int Rounds(int usual) const { return rounds_ > 0 ? rounds_ : usual; }
    bool Wants(const std::string& group) const { return group.find(filter_) != std::string::npos; }

    // Measures both by turns and adds the line.
    void Measure(const std::string& name, const Workload& ours, const std::string& yardstickName,
                 const Workload& yardstick, Unit unit, Aim aim, int rounds = 7);
    // A line from samples that were taken elsewhere, one of each a round. Without yardstick samples there is
    // no ratio.
    void Add(const std::string& name, const Samples& ours, const std::string& yardstickName,
             const Samples& yardstick, Unit unit, Aim aim);
    // What could not be measured.
    void Fail(const std::string& name, const std::string& reason);

    bool HasFailed() const { return failed_; }
    int Missed() const { return missed_; }

private:
    int rounds_;
    std::string filter_;
    int missed_ = 0;
    bool failed_ = false;
};
