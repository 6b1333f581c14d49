// How the parameters of a simulated device move at a tick, in the order in which they were declared.

#include "Panelhost/devices/simulated/SimulatedDevice.h"

#include "logic/text/Numbers.h"

#include <algorithm>

const SimulatedDevice::Parameter* SimulatedDevice::Source(const std::string& source) const {
    const auto star = source.rfind('*');
    const SimulatedDevice* device = this;
    if (star != std::string::npos) {
        device = dynamic_cast<SimulatedDevice*>(a_FindHostinfo(parent, source.substr(0, star).c_str()));
    }
    return device == nullptr ? nullptr
                             : device->Find(star == std::string::npos ? source : source.substr(star + 1));
}

float SimulatedDevice::SourceValue(const std::string& source) const {
    const Parameter* parameter = Source(source);
    return parameter == nullptr ? 0.0F : parameter->Number();
}

float SimulatedDevice::NextReduction(const Parameter& parameter, std::uint32_t elapsed) {
    const Reduction& from = *parameter.reduction;
    const logic::DynamicsCurve curve{from.mode, from.threshold->Number(), from.ratio->Number(),
                                     from.knee->Number(), 0.0F};
    // Any of them can have been declared anew, as something else.
    const bool isAtWork = from.on->Number() != 0 && logic::IsSound(curve);
    const double target = isAtWork ? logic::Reduction(curve, from.level->Number()) : 0.0;
    return logic::ReductionStep(from.mode, parameter.Number(), static_cast<float>(target), elapsed,
                                from.attack->Number(), from.release->Number());
}

float SimulatedDevice::MixedLevel(const Parameter& parameter) const {
    const Mix& mix = *parameter.mix;
    std::vector<float> levels;
    for (std::size_t input = 0; input < mix.inputs.size(); ++input) {
        if (mix.crosspoints[input]->Number() == 0) {
            continue;
        }
        if (const Parameter* source = Source(mix.inputs[input]); source != nullptr && source->IsNumber()) {
            levels.push_back(source->Number());
        }
    }
    return logic::PowerSum(levels).value_or(parameter.Declaration().minimum);
}

float SimulatedDevice::MonitorLevel(const Monitor& monitor) const {
    const auto level = [this](const std::string& channel) {
        const Parameter* source = Source(channel);
        return source != nullptr && source->IsNumber() ? source->Number()
                                                       : static_cast<float>(logic::LOWEST_LEVEL);
    };
    return logic::MonitorLevel({.speaker = logic::TruncateToInteger(monitor.speaker->Number()),
                                .level = monitor.level->Number(),
                                .isDim = monitor.dim->Number() != 0,
                                .isMono = monitor.mono->Number() != 0,
                                .isMute = monitor.mute->Number() != 0},
                               monitor.set, level(monitor.own), level(monitor.other));
}

// Of all channels at once: one that was declared anew as something else counts and does not move.
void SimulatedDevice::ShareGain(const std::shared_ptr<SharedGain>& shared, std::uint32_t elapsed) const {
    std::vector<logic::AutoMixerChannel> channels;
    for (const SharedGain::Channel& from : shared->channels) {
        const Parameter* source = Source(from.source);
        const bool hasLevel = source != nullptr && source->IsNumber();
        const double hold = std::max(from.hold->Number(), 0.0F);
        channels.push_back({.level = hasLevel ? std::optional(source->Number()) : std::nullopt,
                            .weight = from.weight->Number(),
                            .threshold = from.threshold->Number(),
                            .hold = static_cast<std::uint32_t>(logic::TruncateToInteger(hold)),
                            .hasPriority = from.priority->Number() != 0,
                            .isFrozen = from.freeze->Number() != 0,
                            .isMuted = from.mute->Number() != 0,
                            .gain = from.gain->Number()});
    }
    shared->mixer.Step(channels, elapsed);
    for (std::size_t place = 0; place < channels.size(); ++place) {
        if (Parameter& gain = *shared->channels[place].gain; gain.shared == shared) {
            gain.SetNumber(channels[place].gain);
        }
    }
    shared->movedAt = time_;
}

float SimulatedDevice::GainThrough(const std::vector<std::string>& stages) const {
    float gain = 0;
    std::vector<logic::Filter> filters;
    const auto pass = [&](const std::optional<logic::Filter>& filter) {
        if (filter) { // one that cannot be changes nothing
            filters.push_back(*filter);
        }
    };
    for (const std::string& stage : stages) {
        const Parameter* block = Source(stage);
        if (block == nullptr) { // dynamics, which have no value of their own
            if (SourceValue(stage + ".on") != 0) {
                gain += SourceValue(stage + ".reduction") + SourceValue(stage + ".gain");
            }
        } else if (const logic::EqBand* band = block->Band()) {
            if (band->bypass == 0) {
                pass(logic::Filter::OfBand(*band, logic::SIMULATED_RATE));
            }
        } else if (const logic::CrossoverFilters* pair = block->Filters()) {
            pass(logic::Filter::OfCrossover(pair->highPass, true, logic::SIMULATED_RATE));
            pass(logic::Filter::OfCrossover(pair->lowPass, false, logic::SIMULATED_RATE));
        }
    }
    return gain + logic::GainOfMusic(filters);
}

void SimulatedDevice::Move(Parameter& parameter, std::uint32_t elapsed) {
    if (parameter.reduction) {
        parameter.SetNumber(NextReduction(parameter, elapsed));
        return;
    }
    if (parameter.monitor) {
        parameter.SetNumber(MonitorLevel(*parameter.monitor));
        return;
    }
    if (parameter.shared) {
        if (parameter.shared->movedAt != time_) {
            ShareGain(parameter.shared, elapsed);
        }
        return;
    }
    float target = parameter.IsSourced() ? 0.0F : parameter.Number();
    if (parameter.mix) {
        target = MixedLevel(parameter);
    }
    if (parameter.wave) {
        target += logic::WaveValue(*parameter.wave, time_, static_cast<std::uint32_t>(parameter.index));
    }
    for (const std::string& source : parameter.added) {
        target += SourceValue(source);
    }
    if (parameter.follow) {
        target += SourceValue(parameter.follow->source) + parameter.follow->offset;
    }
    if (!parameter.through.empty()) {
        target += GainThrough(parameter.through);
    }
    const auto isOn = [this](const std::string& source) { return SourceValue(source) != 0; };
    const auto& solos = parameter.solos;
    const bool othersSolo =
        !solos.empty() && !isOn(solos.front()) && std::any_of(solos.begin(), solos.end(), isOn);
    if (othersSolo || std::any_of(parameter.muting.begin(), parameter.muting.end(), isOn)) {
        target = parameter.Declaration().minimum;
    }
    const std::uint32_t lag = parameter.follow ? parameter.follow->timeConstantMilliseconds : 0;
    parameter.SetNumber(logic::FollowStep(parameter.Number(), target, elapsed, lag));
}

LRESULT SimulatedDevice::OnTimer(WPARAM, LPARAM) {
    const DWORD now = GetTickCount();
    const DWORD elapsed = now - lastTick_;
    lastTick_ = now;
    time_ += elapsed;
    for (const auto& parameter : parameters_) {
        if (parameter->MovesByItself()) {
            Move(*parameter, elapsed);
        } else if (parameter->subscription) {
            const auto state =
                parameter->subscription->Step(parameter->Text(), parameter->offered->Text(), elapsed);
            parameter->subscriptionState->SetNumber(static_cast<float>(state));
        }
    }
    return 0;
}
