// The exported functions of the decay fitter, which no control uses.

#include "Controls/OSMIRControlLib.h"
#include "base/Guard.h"
#include "logic/controls/DecayFitter.h"

#include <algorithm>

static_assert(DECAY_SAMPLES == logic::DecayFitter::sampleCount);
static_assert(DECAY_COORDINATES == logic::DecayFitter::coordinateCount);

int a_FitDecays(const double* samples, const double* start, double rho, double epsilon, DECAYFIT* fit,
                void(__cdecl* trace)(const char* text, void* context), void* context) {
    if (samples == nullptr || start == nullptr || fit == nullptr || !(rho > 0 && rho < 1)) {
        return 0;
    }
    return Guarded(0, [&] {
        std::function<void(const char*)> sink;
        if (trace != nullptr) {
            sink = [trace, context](const char* text) { trace(text, context); };
        }
        logic::DecayFitter fitter(sink);
        std::copy_n(samples, DECAY_SAMPLES, fitter.Samples());
        for (int i = 0; i < DECAY_COORDINATES; ++i) {
            fitter.SetStart(i, start[i]);
        }
        fitter.SetRho(rho);
        fitter.SetEpsilon(epsilon);
        fitter.Run(nullptr);
        for (int i = 0; i < DECAY_COORDINATES; ++i) {
            fit->x[i] = fitter.Result(i);
        }
        fit->squaredError = fitter.LastBest();
        fit->evaluations = fitter.Evaluations();
        return 1;
    });
}

double a_DecayModel(const double* x, double time) {
    if (x == nullptr) {
        return 0;
    }
    logic::DecayFitter::Point point;
    std::copy_n(x, point.size(), point.begin());
    return logic::DecayFitter::ModelAt(point, time);
}

double a_LargestSample(const double* samples) {
    if (samples == nullptr) {
        return 0;
    }
    logic::DecayFitter fitter;
    std::copy_n(samples, DECAY_SAMPLES, fitter.Samples());
    return fitter.LargestSample();
}
