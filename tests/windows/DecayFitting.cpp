// The decay fitter that the control library exports, by the names and the types that a C host sees.

#include "Controls/OSMIRControlLib.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <cmath>

TEST_SUITE_BEGIN("DecayFitting");

namespace {

constexpr double SOLUTION[] = {2.0, 5.0, 0.5, 3.0, 0.02};

double Model(const double* x, double time) {
    return Exported<decltype(a_DecayModel)>(CONTROL_LIBRARY, "a_DecayModel")(x, time);
}

struct Fit : DECAYFIT {
    Fit() : DECAYFIT{}, samples(DECAY_SAMPLES) {
        for (int time = 0; time < DECAY_SAMPLES; ++time) {
            samples[static_cast<std::size_t>(time)] =
                2.0 + 5.0 * std::exp(-0.5 * time) + 3.0 * std::exp(-0.02 * time);
        }
    }

    int Run(const double* start, double rho = 0.4, double epsilon = 1e-8) {
        lines.clear();
        return Exported<decltype(a_FitDecays)>(CONTROL_LIBRARY, "a_FitDecays")(samples.data(), start, rho,
                                                                               epsilon, this, Take, this);
    }
    auto Iterations() const {
        return std::count_if(lines.begin(), lines.end(),
                             [](const std::string& line) { return line.starts_with("\nAfter"); });
    }
    double ErrorOf(const double* point) const {
        double sum = 0;
        for (int time = 1; time < DECAY_SAMPLES; ++time) {
            const double error = samples[static_cast<std::size_t>(time)] - Model(point, time);
            sum += error * error;
        }
        return sum;
    }

    std::vector<double> samples;
    std::vector<std::string> lines;

private:
    static void __cdecl Take(const char* text, void* context) {
        static_cast<Fit*>(context)->lines.emplace_back(text);
    }
};

} // namespace

TEST_CASE("the fitter finds its way from a rough start to the decay") {
    Fit fit;
    fit.samples[0] = 1000; // does not count
    CHECK(Exported<decltype(a_LargestSample)>(CONTROL_LIBRARY, "a_LargestSample")(fit.samples.data()) ==
          1000);
    const double start[] = {1.5, 4.0, 0.4, 3.5, 0.03};
    CHECK(fit.Run(start) == 1);
    CHECK(fit.squaredError == doctest::Approx(fit.ErrorOf(fit.x)));
    CHECK(fit.squaredError < fit.ErrorOf(start) / 1000);
    CHECK(Model(fit.x, 0) == doctest::Approx(fit.x[0] + fit.x[1] + fit.x[3]));

    REQUIRE(fit.lines.size() > 20 * 6);
    // Both were computed by an independent program: any other course of the search gives other numbers.
    CHECK(fit.Iterations() == 20);
    CHECK(fit.lines[19 * 6].starts_with("\nAfter  1017 funevals"));
    for (int i = 0; i < DECAY_COORDINATES; ++i) {
        CHECK(fit.x[i] == doctest::Approx(SOLUTION[i]).epsilon(1e-6));
    }
    CHECK(fit.lines[20 * 6] == "\n\n\nHOOKE USED 20 ITERATIONS, AND RETURNED\n");
}

TEST_CASE("a search that crawls comes to its end") {
    Fit fit;
    for (int time = 0; time < DECAY_SAMPLES; ++time) { // a slope: ever slower and larger decays fit better
        fit.samples[static_cast<std::size_t>(time)] = time;
    }
    const double start[DECAY_COORDINATES] = {};
    CHECK(fit.Run(start) == 1);
    CHECK(fit.evaluations == 100'000);
    CHECK(fit.squaredError < fit.ErrorOf(start)); // what was found by then
}

TEST_SUITE_END();
