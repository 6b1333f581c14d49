// Fits the sum of a constant and two exponential decays to measured samples by least squares.
#pragma once

#include <array>
#include <functional>
#include <string>

namespace logic {

// The model at the time t is x0 + x1 * exp(-x2 * t) + x3 * exp(-x4 * t): x0 = A, x1 = B, x2 = 1 / tau1, x3 =
// D, x4 = 1 / tau2. Times are sample numbers. The search is a Hooke-Jeeves pattern search.
class DecayFitter {
public:
    static constexpr int sampleCount = 201;
    static constexpr int coordinateCount = 5;
    // A search that crawls along a valley, as for samples on a straight line, would go on and on.
    static constexpr int maximumEvaluations = 100'000;
    using Point = std::array<double, coordinateCount>;

    // Receives the progress as text, line ends included; may be empty.
    explicit DecayFitter(std::function<void(const char*)> trace = {}) : trace_(std::move(trace)) {}

    int SampleCount() const { return sampleCount; }
    // The first sample does not count towards the fit.
    double* Samples() { return samples_.data(); }
    // The largest of all samples, at least -1.7e308.
    double LargestSample() const;

    // Coordinates are numbered from 0 to 4; any other number reads 0 and sets nothing.
    double Start(int coordinate) const;
    void SetStart(int coordinate, double value);
    double Result(int coordinate) const;

    // Factor by which the steps shrink, and the length of the first one: between 0 and 1.
    double Rho() const { return rho_; }
    void SetRho(double rho) { rho_ = rho; }
    // The search ends when the steps are no longer than this.
    double Epsilon() const { return epsilon_; }
    void SetEpsilon(double epsilon) { epsilon_ = epsilon; }

    // Sum of the squared errors of the last fit.
    double LastBest() const { return lastBest_; }
    // The fitted model.
    double Model(double time) const { return ModelAt(result_, time); }

    // Evaluations of the sum of squared errors in the last fit.
    int Evaluations() const { return evaluations_; }

    // Fits from the starting point in at most 200 iterations and maximumEvaluations evaluations, then sets
    // the flag to 1. Returns 0.
    int Run(int* finished);

    // The model of any point.
    static double ModelAt(const Point& point, double time);

private:
    double Objective(const Point& point);
    bool IsExhausted() const { return evaluations_ >= maximumEvaluations; }
    double StepNearby(Point& point, Point& delta, double best);
    int Search(int maximumIterations);
    void TraceProgress(const Point& point, double best) const;
    void Trace(const std::string& text) const;

    std::function<void(const char*)> trace_;
    std::array<double, sampleCount> samples_{};
    Point start_{};
    Point result_{};
    double rho_ = 0.4;
    double epsilon_ = 1e-8;
    int evaluations_ = 0; // of the objective
    double lastBest_ = 0;
};

} // namespace logic
