// What is read of a device, and what it tells by itself.
#include "logic/devices/osc/OscLink.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr Milliseconds HEARD_LATELY = 2000; // is not read by the sweep
constexpr Milliseconds SWEEP_SHARE = 5;     // of the rate
constexpr Milliseconds SECOND = 1000;

} // namespace

void OscLink::Want(const std::vector<std::size_t>& parameters, Milliseconds now) {
    std::vector<bool> wanted(bound_.size());
    for (const std::size_t parameter : parameters) {
        wanted.at(parameter) = true;
    }
    for (std::size_t parameter = 0; parameter < wanted.size(); ++parameter) {
        if (wanted[parameter] != bound_[parameter]) {
            bound_[parameter] = wanted[parameter];
            ChangeWanted(parameter, wanted[parameter] ? 1 : -1, now);
        }
    }
}

void OscLink::Ask(std::size_t parameter, Milliseconds now) {
    if (!asked_.Has(parameter)) {
        asked_.Put(parameter, now + ASKED_FOR);
        ChangeWanted(parameter, 1, now);
    }
    asked_.Put(parameter, now + ASKED_FOR);
    if (const auto number = cellOf_.at(parameter); number && IsLive() && !IsRead(cells_[*number])) {
        QueueRead(*number, true);
    }
}

void OscLink::ChangeWanted(std::size_t parameter, int by, Milliseconds now) {
    if (const auto& meters = Parameter(parameter).meters; meters) {
        Block& block = blocks_[*meters];
        if (block.wanted == 0) {
            block.renewal = now;
            block.heard = now;
            block.isStale = false;
        }
        block.wanted += static_cast<std::uint32_t>(by);
        if (!bound_[parameter] && !asked_.Has(parameter)) {
            TellMeter(parameter, ParameterState::Unknown, Parameter(parameter).minimum, 0);
        }
        return;
    }
    const auto number = cellOf_[parameter];
    if (!number || cells_[*number].isTrigger) {
        return;
    }
    Cell& cell = cells_[*number];
    cell.wanted += static_cast<std::uint32_t>(by);
    if (cell.wanted == 0) { // it changes unseen from now on
        wanted_.erase(*number);
        cell.life = 0;
        Tell(*number);
    } else if (wanted_.insert(*number).second && IsLive()) {
        QueueRead(*number, false);
    }
}

void OscLink::QueueRead(std::size_t number, bool isFirst) {
    Cell& cell = cells_[number];
    if (isFirst && (reads_.empty() || reads_.front() != number)) {
        reads_.push_front(number);
    } else if (!isFirst && !cell.isQueued) {
        reads_.push_back(number);
    }
    cell.isQueued = true;
}

void OscLink::ReadAll() {
    for (const std::size_t cell : wanted_) {
        QueueRead(cell, false);
    }
}

void OscLink::SendRead(std::size_t number, bool isSweep, Milliseconds patience, Milliseconds now) {
    Cell& cell = cells_[number];
    SendMessage(Parameter(cell.parameter).address);
    outstanding_.Put(number, now + patience);
    cell.isSwept = isSweep;
    if (const auto write = writes_.find(number);
        write != writes_.end() && write->second.phase == Phase::Unread && !firstReads_.Has(number)) {
        firstReads_.Put(number, now + FIRST_READ_PATIENCE);
    }
}

// Neither more often than every so often, nor with more than its share of the rate.
Milliseconds OscLink::SweepEvery() const {
    return std::max<Milliseconds>(SWEEP_PERIOD / std::max<std::size_t>(wanted_.size(), 1),
                                  (SECOND * SWEEP_SHARE + profile_->rate - 1) / profile_->rate);
}

void OscLink::SendReads(Milliseconds now) {
    const auto mayRead = [this] { return bucket_.HasToken() && outstanding_.Size() < profile_->window; };
    if (!IsLive()) {
        return;
    }
    while (mayRead()) {
        const auto number = checks_.Take(now);
        if (!number) {
            break;
        }
        if (outstanding_.Has(*number)) { // an answer to that could be older than the write
            constexpr Milliseconds later = 10;
            checks_.Put(*number, now + later);
        } else {
            writes_.at(*number).phase = Phase::ReadBack;
            SendRead(*number, false, CHECK_PATIENCE, now);
        }
    }
    while (!reads_.empty() && mayRead()) {
        const std::size_t number = reads_.front();
        reads_.pop_front();
        const bool isQueued = std::exchange(cells_[number].isQueued, false);
        if (isQueued && !outstanding_.Has(number) && !cells_[number].isTrigger &&
            (IsWanted(number) || writes_.contains(number))) {
            SendRead(number, false, READ_PATIENCE, now);
        }
    }
    // One after the other, so that a device that was started anew and forgot most of what it held shows soon.
    if (sweep_ <= now && !wanted_.empty() && mayRead()) {
        sweep_ = std::max(sweep_ + SweepEvery(), now);
        auto next = wanted_.upper_bound(sweptLast_);
        next = next == wanted_.end() ? wanted_.begin() : next;
        sweptLast_ = *next;
        Cell& cell = cells_[sweptLast_];
        if (!cell.isQueued && !outstanding_.Has(sweptLast_) && !writes_.contains(sweptLast_) &&
            now >= cell.heard + HEARD_LATELY) {
            cell.tries = cell.isSilent ? READ_TRIES - 1 : 0;
            SendRead(sweptLast_, true, READ_PATIENCE, now);
        }
    }
}

void OscLink::EndRead(Cell& cell, std::size_t number) {
    outstanding_.Drop(number);
    cell.tries = 0;
    cell.isSwept = false;
}

void OscLink::ReadTimedOut(std::size_t number, Milliseconds now) {
    Cell& cell = cells_[number];
    if (const auto write = writes_.find(number);
        write != writes_.end() && write->second.phase == Phase::ReadBack) {
        ReadBackTimedOut(number, now);
        return;
    }
    if (++cell.tries < READ_TRIES) {
        QueueRead(number, true);
        return;
    }
    EndRead(cell, number);
    cell.isSilent = true;
    Tell(number);
    if (!std::exchange(cell.isTold, true)) {
        owner_.Trace(Named(cell.parameter) + ": does not answer");
    }
}

void OscLink::TakeMessage(const OscMessage& message, Milliseconds now) {
    if (message.address == profile_->helloAnswer) {
        TakeHello(message, now);
        return;
    }
    if (!IsLive() && state_ != DeviceState::Stale) {
        return; // it has not said yet who it is
    }
    if (const auto cell = byAddress_.find(message.address); cell != byAddress_.end()) {
        HeardSomething(now);
        if (!message.arguments.empty()) {
            TakeValue(cell->second, message.arguments.front(), now);
        }
        return;
    }
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        if (profile_->meters[block].answer == message.address) {
            HeardSomething(now);
            if (!message.arguments.empty() && message.arguments.front().IsBlob()) {
                TakeMeters(block, message.arguments.front().text, now);
            }
        }
    }
}

void OscLink::TakeValue(std::size_t number, const OscArgument& argument, Milliseconds now) {
    Cell& cell = cells_[number];
    const ParameterLaw& law = Law(cell.parameter);
    Wire wire;
    if (law.Wire() == WireType::Text) {
        if (!argument.IsText()) {
            return;
        }
        wire.text = argument.text;
    } else {
        const bool isWhole = law.Wire() != WireType::Float;
        if (!argument.IsNumber() || !std::isfinite(argument.number) ||
            (isWhole && argument.number != TruncateToInteger(argument.number)) ||
            std::fabs(argument.number) > static_cast<double>(std::numeric_limits<float>::max())) {
            return;
        }
        wire.number = argument.number;
    }
    const bool isAnswer = outstanding_.Has(number);
    const bool isSwept = isAnswer && cell.isSwept;
    const auto write = writes_.find(number);
    const bool isPending = write != writes_.end();
    if (isPending && write->second.phase == Phase::ReadBack) {
        const Judgement judgement = JudgeReadBack(number, wire, now);
        if (judgement != Judgement::Waits) {
            EndRead(cell, number);
        }
        if (judgement != Judgement::Taken) {
            return;
        }
    } else {
        EndRead(cell, number);
        if (isPending ? write->second.phase != Phase::Unread : !IsWanted(number)) {
            return; // older than what was set, or of no interest
        }
    }
    const bool isOther = IsRead(cell) && !IsSame(cell.parameter, cell.wire, wire);
    Keep(number, std::move(wire), now);
    FirstRead(number, now);
    Tell(number);
    if (isOther && isSwept && profile_->echo != ProfileEcho::None) {
        keep_ = now; // it should have told: it was started anew, or has forgotten us
        ReadAll();
    }
}

void OscLink::Keep(std::size_t number, Wire wire, Milliseconds now) {
    Cell& cell = cells_[number];
    cell.wire = std::move(wire);
    cell.heard = now;
    cell.life = life_;
    cell.isSilent = false;
    cell.isUnconfirmed = false;
}

bool OscLink::IsSame(std::size_t parameter, const Wire& one, const Wire& other) const {
    const ProfileParameter& declared = Parameter(parameter);
    return one.text == other.text &&
           Law(parameter).IsSame(one.number, other.number, declared.maximum - declared.minimum);
}

void OscLink::TakeMeters(std::size_t number, std::string_view blob, Milliseconds now) {
    Block& block = blocks_[number];
    const auto values = ReadMeterBlock(blob, profile_->meters[number].format);
    if (!values) {
        return;
    }
    block.heard = now;
    block.isStale = false;
    for (const auto& [place, parameter] : block.parameters) {
        if ((bound_[parameter] || asked_.Has(parameter)) && place < values->size() &&
            std::isfinite((*values)[place])) {
            const float value = Law(parameter).ToValue(static_cast<double>((*values)[place]));
            TellMeter(parameter, ParameterState::Live, Limited(parameter, value), now);
        }
    }
}

void OscLink::MetersFellSilent(std::size_t number, Milliseconds now) {
    Block& block = blocks_[number];
    block.isStale = true;
    block.renewal = now; // it may have forgotten us
    for (const auto& [place, parameter] : block.parameters) {
        if (bound_[parameter] || asked_.Has(parameter)) {
            TellMeter(parameter, ParameterState::Stale, Parameter(parameter).minimum, block.heard);
        }
    }
}

void OscLink::TellMeter(std::size_t parameter, ParameterState state, float value, Milliseconds heard) {
    owner_.Tell(parameter, ParameterUpdate{state, life_, 0, heard, {value, {}}});
}

float OscLink::Limited(std::size_t parameter, float value) const {
    const ProfileParameter& declared = Parameter(parameter);
    const bool isUnknown = Law(parameter).HasUnknown() && value == ParameterLaw::UNKNOWN;
    return isUnknown ? value : Clamp(value, declared.minimum, declared.maximum);
}

LinkValue OscLink::ValueOf(std::size_t parameter, const Wire& wire) const {
    if (Parameter(parameter).type != ParameterType::Text) {
        return {Limited(parameter, Law(parameter).ToValue(wire.number)), {}};
    }
    LinkValue value{0, wire.text.substr(0, Parameter(parameter).longest)};
    std::ranges::replace_if(value.text, IsControl, '?');
    return value;
}

void OscLink::Tell(std::size_t number) {
    const Cell& cell = cells_[number];
    const auto write = writes_.find(number);
    ParameterUpdate update{ParameterState::Live, cell.life, cell.serial, cell.heard, {}};
    if (write != writes_.end()) {
        update.state = ParameterState::Pending;
    } else if (cell.isUnconfirmed) {
        update.state = ParameterState::Unconfirmed;
    } else if (cell.isSilent) {
        update.state = ParameterState::Stale;
    } else if (cell.heard == 0 && !cell.isTrigger) {
        update.state = ParameterState::Unknown;
    } else if (profile_->AnswersNothing()) {
        update.state = ParameterState::Sent;
    }
    for (std::size_t parameter = cell.parameter;; parameter = next_[parameter]) {
        const bool isSet = write != writes_.end() && write->second.parameter == parameter;
        update.value = isSet ? write->second.value
                             : ValueOf(parameter, write != writes_.end() ? write->second.wire : cell.wire);
        owner_.Tell(parameter, update);
        if (next_[parameter] == parameter) {
            break;
        }
    }
}

} // namespace logic
