#include "logic/controls/DecayFitter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "logic/text/Numbers.h"

namespace logic {

namespace {

constexpr int MAXIMUM_ITERATIONS = 200;
constexpr double LEAST_SAMPLE = -1.7e308;

bool IsCoordinate(int number) {
    return number >= 0 && number < DecayFitter::coordinateCount;
}

std::size_t Index(int number) {
    return static_cast<std::size_t>(number);
}

// With blanks in front of a shorter text.
std::string AtLeast(std::size_t width, const std::string& text) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

} // namespace

double DecayFitter::LargestSample() const {
    double largest = LEAST_SAMPLE;
    for (const double sample : samples_) {
        largest = sample > largest ? sample : largest;
    }
    return largest;
}

double DecayFitter::Start(int coordinate) const {
    return IsCoordinate(coordinate) ? start_[Index(coordinate)] : 0.0;
}

void DecayFitter::SetStart(int coordinate, double value) {
    if (IsCoordinate(coordinate)) {
        start_[Index(coordinate)] = value;
    }
}

double DecayFitter::Result(int coordinate) const {
    return IsCoordinate(coordinate) ? result_[Index(coordinate)] : 0.0;
}

double DecayFitter::ModelAt(const Point& point, double time) {
    return point[0] + point[1] * std::exp(-point[2] * time) + point[3] * std::exp(-point[4] * time);
}

double DecayFitter::Objective(const Point& point) {
    ++evaluations_;
    double sum = 0;
    for (int time = 1; time < sampleCount; ++time) {
        const double error = samples_[Index(time)] - ModelAt(point, time);
        sum += error * error;
    }
    return sum;
}

// Moves the point to the best value within one step along each coordinate in turn.
double DecayFitter::StepNearby(Point& point, Point& delta, double best) {
    for (std::size_t i = 0; i < point.size(); ++i) {
        const double origin = point[i];
        for (int attempt = 0; attempt < 2; ++attempt) {
            if (IsExhausted()) {
                point[i] = origin;
                return best;
            }
            point[i] = origin + delta[i];
            const double value = Objective(point);
            if (value < best) {
                best = value;
                break;
            }
            if (attempt == 0) {
                delta[i] = -delta[i];
            } else {
                point[i] = origin;
            }
        }
    }
    return best;
}

int DecayFitter::Search(int limit) {
    Point base = start_;
    Point delta;
    for (std::size_t i = 0; i < delta.size(); ++i) {
        delta[i] = std::fabs(start_[i] * rho_);
        if (delta[i] == 0.0) {
            delta[i] = rho_;
        }
    }
    const auto hasMoved = [&](const Point& point) {
        for (std::size_t i = 0; i < point.size(); ++i) {
            if (std::fabs(point[i] - base[i]) > std::fabs(delta[i]) / 2) {
                return true;
            }
        }
        return false;
    };
    evaluations_ = 0;
    double best = Objective(base);
    double stepLength = rho_;
    int iterations = 0;
    while (iterations < limit && stepLength > epsilon_ && !IsExhausted()) {
        ++iterations;
        TraceProgress(base, best);
        Point point = base;
        double value = StepNearby(point, delta, best);
        while (value < best) {
            // The step was good: go the same way once more, twice as far.
            for (std::size_t i = 0; i < point.size(); ++i) {
                delta[i] = point[i] <= base[i] ? -std::fabs(delta[i]) : std::fabs(delta[i]);
                const double previous = base[i];
                base[i] = point[i];
                point[i] = 2 * point[i] - previous;
            }
            best = value;
            value = StepNearby(point, delta, best);
            if (value >= best || !hasMoved(point)) {
                break;
            }
        }
        if (stepLength >= epsilon_ && value >= best) {
            stepLength *= rho_;
            for (double& step : delta) {
                step *= rho_;
            }
        }
    }
    result_ = base;
    lastBest_ = best;
    return iterations;
}

int DecayFitter::Run(int* finished) {
    const int iterations = Search(MAXIMUM_ITERATIONS);
    const auto traceResult = [this](const char* label, double value) {
        Trace(std::string(label) + " = " + AtLeast(15, FormatFixed(value, 7)) + " \n");
    };
    Trace("\n\n\nHOOKE USED " + std::to_string(iterations) + " ITERATIONS, AND RETURNED\n");
    traceResult("x[0]=A", result_[0]);
    traceResult("x[1]=B", result_[1]);
    traceResult("tau1  ", 1 / result_[2]);
    traceResult("x[3]=D", result_[3]);
    traceResult("tau2  ", 1 / result_[4]);
    if (finished != nullptr) {
        *finished = 1;
    }
    return 0;
}

void DecayFitter::TraceProgress(const Point& point, double best) const {
    if (!trace_) {
        return;
    }
    Trace("\nAfter " + AtLeast(5, std::to_string(evaluations_)) +
          " funevals, f(x) =  " + FormatScientific(best, 4) + " at\n");
    for (std::size_t i = 0; i < point.size(); ++i) {
        Trace("   x[" + std::to_string(i) + "] = " + FormatFixed(point[i], 4) + "\n");
    }
}

void DecayFitter::Trace(const std::string& text) const {
    if (trace_) {
        trace_(text.c_str());
    }
}

} // namespace logic
