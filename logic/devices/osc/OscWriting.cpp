// Values that are set: when they are sent, and when the device counts as having taken them.
#include "logic/devices/osc/OscLink.h"

#include <algorithm>

#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::size_t MOST_OLDER = 32;  // values of a write that are remembered
constexpr std::size_t MOST_SHOTS = 256; // that wait

std::string Counted(std::size_t count) {
    return count == 1 ? "1 value that waited was dropped"
                      : std::to_string(count) + " values that waited were dropped";
}

} // namespace

std::optional<OscValue> OscLink::WireOf(const DeviceProfile& profile, std::size_t number,
                                        const LinkValue& value) {
    const ProfileParameter& parameter = profile.parameters[number];
    if (parameter.address.empty() || !parameter.canBeSet) {
        return std::nullopt;
    }
    const ParameterLaw& law = profile.laws[parameter.law];
    if (law.Wire() == WireType::Text) {
        OscValue text = value.text;
        auto& bytes = std::get<std::string>(text);
        std::ranges::replace_if(
            bytes, [](char c) { return IsControl(c) || static_cast<unsigned char>(c) > 127; }, '?');
        const bool isSound =
            bytes.size() <= parameter.longest && WriteOsc(parameter.address, std::span(&text, 1));
        return isSound ? std::optional(std::move(text)) : std::nullopt;
    }
    const bool isInRange = value.number >= parameter.minimum && value.number <= parameter.maximum;
    const auto wire = isInRange ? law.ToWire(value.number) : std::nullopt;
    if (!wire) {
        return std::nullopt;
    }
    switch (law.Wire()) {
    case WireType::Integer:
        return static_cast<std::int32_t>(*wire);
    case WireType::Switch:
        return *wire != 0;
    default:
        return *wire;
    }
}

void OscLink::Set(const LinkSetting& setting, Milliseconds now) {
    const auto number = cellOf_.at(setting.parameter);
    if (!number) {
        return;
    }
    Cell& cell = cells_[*number];
    cell.serial = setting.serial;
    const bool isOpen = state_ == DeviceState::Open;
    const bool isReached = IsLive() || isOpen || state_ == DeviceState::Stale || setting.isOwed;
    auto sent = WireOf(*profile_, setting.parameter, setting.value);
    if (!sent || !isReached) {
        Tell(*number);
        return;
    }
    if (Law(setting.parameter).IsTrigger()) {
        Shoot(setting, std::move(*sent), now);
        return;
    }
    Wire wire;
    if (const auto* text = std::get_if<std::string>(&*sent)) {
        wire.text = *text;
    } else {
        wire.number = std::visit(
            [](const auto& given) {
                using Given = std::decay_t<decltype(given)>;
                if constexpr (std::is_same_v<Given, std::string>) {
                    return 0.0;
                } else {
                    return static_cast<double>(given);
                }
            },
            *sent);
    }
    if (!isOpen) {
        Ask(setting.parameter, now);
    }
    const bool isRead = IsLive() && IsRead(cell);
    auto write = writes_.find(*number);
    if (write == writes_.end()) {
        if (isRead && !cell.isUnconfirmed && IsHeld(setting.parameter, cell.wire, *sent)) {
            Tell(*number);
            return;
        }
        write = writes_.try_emplace(*number).first;
        write->second.phase = isOpen || isRead ? Phase::Sent : Phase::Unread;
        if (isRead) {
            write->second.before = cell.wire;
        }
    } else if (write->second.tries > 0) {
        auto& older = write->second.older;
        if (older.size() == MOST_OLDER) {
            older.erase(older.begin());
        }
        older.push_back(write->second.wire);
    }
    Write& written = write->second;
    const bool isOther = written.wire != wire || written.tries == 0;
    written.parameter = setting.parameter;
    written.value = setting.value;
    written.sent = std::move(*sent);
    written.wire = std::move(wire);
    written.asked = now;
    written.isOwed = setting.isOwed;
    if (written.phase != Phase::Unread && isOther) {
        written.tries = 0;
        QueueWrite(*number, written, now);
    }
    Tell(*number);
}

// Whether the device holds what would be sent.
bool OscLink::IsHeld(std::size_t parameter, const Wire& held, const OscValue& sent) const {
    if (const auto* text = std::get_if<std::string>(&sent)) {
        return held.text == *text;
    }
    const auto again = WireOf(*profile_, parameter, ValueOf(parameter, held));
    return again && *again == sent;
}

void OscLink::Shoot(const LinkSetting& setting, OscValue sent, Milliseconds now) {
    const std::size_t number = *cellOf_[setting.parameter];
    if (shots_.size() == MOST_SHOTS) {
        ++unconfirmed_;
        TellDevice();
        owner_.Trace(Named(setting.parameter) + ": too many at once");
    } else {
        shots_.push_back({number, setting.parameter, std::move(sent), now, setting.isOwed});
    }
    Tell(number);
}

void OscLink::QueueWrite(std::size_t number, Write& write, Milliseconds now) {
    const Cell& cell = cells_[number];
    write.phase = Phase::Queued;
    write.echo.reset();
    checks_.Drop(number);
    queued_.Put(number, cell.written == 0 ? now : std::max(now, cell.written + WRITE_EVERY));
}

void OscLink::SendWrites(Milliseconds now) {
    if (!IsLive() && state_ != DeviceState::Open) {
        return;
    }
    while (!shots_.empty() && bucket_.HasToken()) {
        const Shot shot = std::move(shots_.front());
        shots_.pop_front();
        SendMessage(Parameter(shot.parameter).address, std::span(&shot.sent, 1));
    }
    while (bucket_.HasToken()) {
        const auto number = queued_.Take(now);
        if (!number) {
            break;
        }
        SendWrite(*number, writes_.at(*number), now);
    }
}

void OscLink::SendWrite(std::size_t number, Write& write, Milliseconds now) {
    Cell& cell = cells_[number];
    SendMessage(Parameter(write.parameter).address, std::span(&write.sent, 1));
    cell.written = now;
    if (state_ == DeviceState::Open) {
        cell.wire = write.wire;
        cell.heard = now;
        EndWrite(number);
        return;
    }
    ++write.tries;
    write.phase = Phase::Sent;
    checks_.Put(number, now + CHECK_AFTER);
}

// The first value of a parameter that is to be set has come.
void OscLink::FirstRead(std::size_t number, Milliseconds now) {
    const auto found = writes_.find(number);
    if (found == writes_.end() || found->second.phase != Phase::Unread) {
        return;
    }
    Write& write = found->second;
    firstReads_.Drop(number);
    write.before = cells_[number].wire;
    if (IsHeld(write.parameter, cells_[number].wire, write.sent)) {
        EndWrite(number);
    } else {
        QueueWrite(number, write, now);
    }
}

// What was sent before may still be echoed: that says nothing about the last value, unless nothing else
// comes. What the device held before all that says that the last value was lost.
OscLink::Judgement OscLink::JudgeReadBack(std::size_t number, const Wire& wire, Milliseconds now) {
    Write& write = writes_.at(number);
    const auto isSame = [&](const Wire& other) { return IsSame(write.parameter, other, wire); };
    if (isSame(write.wire)) {
        writes_.erase(number);
        return Judgement::Taken;
    }
    if (std::ranges::any_of(write.older, isSame)) {
        write.echo = wire;
        return Judgement::Waits;
    }
    if (write.before && isSame(*write.before) && write.tries < WRITE_TRIES) {
        QueueWrite(number, write, now);
        return Judgement::SentAgain;
    }
    writes_.erase(number);
    return Judgement::Taken;
}

void OscLink::ReadBackTimedOut(std::size_t number, Milliseconds now) {
    Write& write = writes_.at(number);
    const bool isSilent =
        heard_ < cells_[number].written; // it may be gone: what is owed waits for its return
    if (write.tries < WRITE_TRIES || (write.isOwed && isSilent)) {
        QueueWrite(number, write, now);
    } else if (write.echo) {
        Keep(number, *write.echo, now);
        EndWrite(number);
    } else {
        GiveUp(number);
    }
}

void OscLink::FirstReadTimedOut(std::size_t number, Milliseconds now) {
    Write& write = writes_.at(number);
    if (write.isOwed) {
        QueueWrite(number, write, now);
    } else {
        GiveUp(number);
    }
}

void OscLink::GiveUp(std::size_t number) {
    const std::size_t parameter = writes_.at(number).parameter;
    ++unconfirmed_;
    cells_[number].isUnconfirmed = true;
    EndWrite(number);
    TellDevice();
    owner_.Trace(Named(parameter) + ": not confirmed");
    QueueRead(number, false);
}

void OscLink::EndWrite(std::size_t number) {
    writes_.erase(number);
    queued_.Drop(number);
    checks_.Drop(number);
    firstReads_.Drop(number);
    Tell(number);
}

void OscLink::HoldWrites() {
    queued_.Clear();
    checks_.Clear();
    firstReads_.Clear();
    for (auto& [number, write] : writes_) {
        write.phase = Phase::Unread;
        write.tries = 0;
        write.before.reset();
        write.older.clear();
    }
}

// What waited goes out behind the first read, unless it is too old by now.
void OscLink::ReleaseWrites(Milliseconds now) {
    DropWrites([now](Milliseconds asked) { return now >= asked + LONGEST_WAIT; });
    for (auto& [number, write] : writes_) {
        QueueRead(number, true);
    }
}

void OscLink::DropWrites(const std::function<bool(Milliseconds asked)>& isDropped) {
    std::size_t count = 0;
    std::vector<std::size_t> dropped;
    for (const auto& [number, write] : writes_) {
        if (!write.isOwed && isDropped(write.asked)) {
            dropped.push_back(number);
        }
    }
    for (const std::size_t number : dropped) {
        EndWrite(number);
    }
    count = dropped.size() +
            std::erase_if(shots_, [&](const Shot& shot) { return !shot.isOwed && isDropped(shot.asked); });
    if (count > 0) {
        unconfirmed_ += static_cast<std::uint32_t>(count);
        TellDevice();
        owner_.Trace(name_ + ": " + Counted(count));
    }
}

void OscLink::Finish(Milliseconds) {
    if (state_ == DeviceState::Off) {
        return;
    }
    const bool isReached = IsLive() || state_ == DeviceState::Stale || state_ == DeviceState::Open;
    for (const Shot& shot : shots_) {
        if (isReached || shot.isOwed) {
            SendMessage(Parameter(shot.parameter).address, std::span(&shot.sent, 1));
        }
    }
    shots_.clear();
    for (auto& [number, write] : writes_) {
        if ((write.phase == Phase::Unread || write.phase == Phase::Queued) && (isReached || write.isOwed)) {
            SendMessage(Parameter(write.parameter).address, std::span(&write.sent, 1));
            write.phase = Phase::Sent;
        }
    }
}

} // namespace logic
