#include "logic/DecayFitter.h"

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include <doctest/doctest.h>

using logic::DecayFitter;

namespace {

double Decay(double time) {
    return 2.0 + 5.0 * std::exp(-0.5 * time) + 3.0 * std::exp(-0.02 * time);
}

void FillWithDecay(DecayFitter& fitter) {
    for (int time = 0; time < fitter.SampleCount(); ++time)
        fitter.Samples()[time] = Decay(time);
}

} // namespace

TEST_CASE("the fitter finds its way from a rough start to the decay") {
    std::vector<std::string> lines;
    DecayFitter fitter([&lines](const char* text) { lines.emplace_back(text); });
    CHECK(fitter.SampleCount() == 201);
    CHECK(fitter.Rho() == 0.4);
    CHECK(fitter.Epsilon() == 1e-8);
    FillWithDecay(fitter);
    fitter.Samples()[0] = 1000; // does not count
    CHECK(fitter.LargestSample() == 1000);
    const double start[] = {1.5, 4.0, 0.4, 3.5, 0.03};
    for (int i = 0; i < 5; ++i)
        fitter.SetStart(i, start[i]);
    CHECK(fitter.Start(2) == 0.4);
    fitter.SetStart(5, 1.0);
    CHECK(fitter.Start(5) == 0.0);

    int finished = 0;
    CHECK(fitter.Run(&finished) == 0);
    CHECK(finished == 1);
    double startError = 0;
    double error = 0;
    for (int time = 1; time <= 200; ++time) {
        const double guess =
            start[0] + start[1] * std::exp(-start[2] * time) + start[3] * std::exp(-start[4] * time);
        startError += (Decay(time) - guess) * (Decay(time) - guess);
        error += (Decay(time) - fitter.Model(time)) * (Decay(time) - fitter.Model(time));
    }
    CHECK(fitter.LastBest() == doctest::Approx(error));
    CHECK(error < startError / 1000);
    CHECK(fitter.Model(0) == doctest::Approx(fitter.Result(0) + fitter.Result(1) + fitter.Result(3)));

    REQUIRE(lines.size() > 12);
    char first[80];
    std::snprintf(first, sizeof first, "\nAfter     1 funevals, f(x) =  %.4e at\n", startError);
    CHECK(lines[0] == first);
    CHECK(lines[1] == "   x[0] = 1.5000\n");
    CHECK(lines[5] == "   x[4] = 0.0300\n");
    // Both were computed by an independent program: any other course of the search gives other numbers.
    const auto iterations = (lines.size() - 6) / 6;
    CHECK(iterations == 20);
    CHECK(lines[19 * 6].starts_with("\nAfter  1017 funevals"));
    const double solution[] = {2.0, 5.0, 0.5, 3.0, 0.02};
    for (int i = 0; i < 5; ++i)
        CHECK(fitter.Result(i) == doctest::Approx(solution[i]).epsilon(1e-6));
    CHECK(lines[iterations * 6] == "\n\n\nHOOKE USED 20 ITERATIONS, AND RETURNED\n");
    char tau[80];
    std::snprintf(tau, sizeof tau, "tau2   = %15.7f \n", 1 / fitter.Result(4));
    CHECK(lines.back() == tau);
}

TEST_CASE("a start at the solution stays there, and every shrinking step is one iteration") {
    int iterations = 0;
    DecayFitter fitter(
        [&iterations](const char* text) { iterations += std::string(text).starts_with("\nAfter") ? 1 : 0; });
    FillWithDecay(fitter);
    const double solution[] = {2.0, 5.0, 0.5, 3.0, 0.02};
    for (int i = 0; i < 5; ++i)
        fitter.SetStart(i, solution[i]);
    fitter.Run(nullptr);
    CHECK(fitter.LastBest() == 0.0);
    for (int i = 0; i < 5; ++i)
        CHECK(fitter.Result(i) == solution[i]);
    CHECK(iterations == 20); // 0.4^20 > 1e-8 > 0.4^21

    fitter.SetEpsilon(0.1);
    iterations = 0;
    fitter.Run(nullptr);
    CHECK(iterations == 2); // 0.4 and 0.16
    fitter.SetRho(0.05);
    iterations = 0;
    fitter.Run(nullptr);
    CHECK(iterations == 0);
}

TEST_CASE("samples that nothing fits end the search") {
    DecayFitter fitter;
    for (int time = 0; time < fitter.SampleCount(); ++time)
        fitter.Samples()[time] = std::nan("");
    int finished = 0;
    fitter.Run(&finished);
    CHECK(finished == 1);
    CHECK(fitter.LargestSample() == -1.7e308);
    for (int i = 0; i < 5; ++i)
        CHECK(fitter.Result(i) == 0.0);
}
