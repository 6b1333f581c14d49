// The device itself: whether it is there, and what keeps it telling.
#include "logic/devices/osc/OscLink.h"

#include <algorithm>
#include <iterator>

#include "logic/text/Numbers.h"

namespace logic {

namespace {

constexpr std::size_t LONGEST_MODEL = 255;

const char* FaultText(OscFault fault) {
    switch (fault) {
    case OscFault::Size:
        return "its size";
    case OscFault::Address:
        return "its address";
    case OscFault::Tags:
        return "its types";
    case OscFault::Argument:
        return "its arguments";
    default:
        return "its bundles";
    }
}

} // namespace

OscLink::OscLink(std::shared_ptr<const DeviceProfile> profile, std::string name, LinkOwner& owner,
                 Milliseconds now)
    : profile_(std::move(profile)),
      name_(std::move(name)),
      owner_(owner),
      since_(now),
      bucket_(profile_->rate, profile_->window),
      controls_(std::max(profile_->rate / 4, 1U), 2),
      cellOf_(profile_->parameters.size()),
      next_(profile_->parameters.size()),
      blocks_(profile_->meters.size()),
      bound_(profile_->parameters.size()) {
    cells_.reserve(profile_->parameters.size());
    for (std::size_t number = 0; number < profile_->parameters.size(); ++number) {
        const ProfileParameter& parameter = Parameter(number);
        next_[number] = number;
        if (parameter.meters) {
            blocks_[*parameter.meters].parameters.emplace(parameter.meterIndex, number);
        } else if (!parameter.address.empty()) {
            const auto [found, isNew] = byAddress_.try_emplace(parameter.address, cells_.size());
            if (isNew) {
                Cell& cell = cells_.emplace_back();
                cell.parameter = number;
                cell.isTrigger = true;
            } else {
                next_[number] = cells_[found->second].parameter;
                cells_[found->second].parameter = number;
            }
            Cell& cell = cells_[found->second];
            cell.isTrigger = cell.isTrigger && Law(number).IsTrigger();
            cellOf_[number] = found->second;
        }
    }
    bucket_.Fill(now);
    controls_.Fill(now);
    Enter(profile_->AnswersNothing() ? DeviceState::Open : DeviceState::Unknown, now);
}

void OscLink::TellDevice() {
    owner_.Tell(DeviceUpdate{state_, life_, since_, heard_, model_, unconfirmed_});
}

void OscLink::Enter(DeviceState state, Milliseconds now) {
    const bool wasLive = IsLive();
    state_ = state;
    since_ = now;
    if (wasLive) {
        reads_.clear();
        outstanding_.Clear();
        for (Cell& cell : cells_) {
            cell.isQueued = false;
            cell.tries = 0;
        }
        HoldWrites();
    }
    TellDevice();
}

void OscLink::BecomeLive(Milliseconds now) {
    const bool wasThere = life_ != 0;
    ++life_;
    Enter(DeviceState::Live, now);
    owner_.Trace(name_ + (wasThere ? " is back" : " is there") + (model_.empty() ? "" : ": " + model_));
    keep_ = now;
    sweep_ = now + SWEEP_PERIOD / 10;
    for (Block& block : blocks_) {
        block.renewal = now;
        block.heard = now;
        block.isStale = false;
    }
    for (std::size_t cell = 0; cell < cells_.size(); ++cell) {
        cells_[cell].isSilent = false;
        cells_[cell].isUnconfirmed = false;
        if (cells_[cell].isTrigger) {
            cells_[cell].life = life_;
            Tell(cell);
        }
    }
    ReadAll();
    ReleaseWrites(now);
}

void OscLink::Switch(bool isOn, Milliseconds now) {
    if (isOn == (state_ != DeviceState::Off)) {
        return;
    }
    if (!isOn) {
        DropAll();
        Enter(DeviceState::Off, now);
        return;
    }
    hello_.reset();
    Enter(profile_->AnswersNothing() ? DeviceState::Open : DeviceState::Unknown, now);
}

void OscLink::HeardSomething(Milliseconds now) {
    heard_ = now;
    if (state_ == DeviceState::Stale) {
        hello_.reset(); // who is it?
        BecomeLive(now);
    }
}

void OscLink::TakeHello(const OscMessage& message, Milliseconds now) {
    const auto& arguments = message.arguments;
    bool isFit = true;
    if (profile_->helloIndex) {
        isFit = *profile_->helloIndex < arguments.size() && arguments[*profile_->helloIndex].IsText() &&
                std::ranges::any_of(profile_->helloTexts, [&](const std::string& text) {
                    return arguments[*profile_->helloIndex].text.starts_with(text);
                });
    }
    std::string model;
    for (const OscArgument& argument : arguments) {
        const std::string word = argument.IsText()     ? std::string(argument.text)
                                 : argument.IsNumber() ? FormatFloat(static_cast<float>(argument.number))
                                                       : "";
        model += (model.empty() || word.empty() ? "" : " ") + word;
    }
    model.resize(std::min(model.size(), LONGEST_MODEL));
    std::ranges::replace_if(
        model, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 127; }, '?');
    const bool isNew = model != model_;
    model_ = std::move(model);
    heard_ = now;
    if (!isFit) {
        if (state_ != DeviceState::Refused) {
            Enter(DeviceState::Refused, now);
            DropAll();
            owner_.Trace(name_ + " is refused: " + (model_.empty() ? "something else" : model_) + " answers");
        }
    } else if (!IsLive()) {
        BecomeLive(now);
    } else if (isNew) {
        TellDevice();
    }
}

// Silence.
void OscLink::Watch(Milliseconds now) {
    if (IsLive() && now >= heard_ + STALE_AFTER) {
        Enter(DeviceState::Stale, now);
        owner_.Trace(name_ + ": nothing heard any more");
    }
    if (state_ == DeviceState::Stale && now >= heard_ + LOST_AFTER) {
        Enter(DeviceState::Lost, now);
        DropAll();
    }
}

Milliseconds OscLink::NextHello() const {
    if (state_ == DeviceState::Off || state_ == DeviceState::Open) {
        return NEVER;
    }
    if (!hello_) {
        return 0;
    }
    switch (state_) {
    case DeviceState::Live:
        return std::max(heard_ + HELLO_WHEN_SILENT, *hello_ + HELLO_EVERY);
    case DeviceState::Refused:
        return *hello_ + HELLO_WHEN_REFUSED;
    case DeviceState::Lost:
        return *hello_ + (*hello_ - since_ < LONG_LOST ? HELLO_EVERY : HELLO_WHEN_LONG_LOST);
    default:
        return *hello_ + HELLO_EVERY;
    }
}

bool OscLink::SendMessage(std::string_view address, std::span<const OscValue> arguments) {
    const auto datagram = WriteOsc(address, arguments);
    if (!datagram) {
        return false;
    }
    bucket_.Take();
    owner_.Send(*datagram);
    return true;
}

// What keeps the device telling is not kept waiting by all the rest: it has a part of the rate to itself.
void OscLink::SendControls(Milliseconds now) {
    if (NextHello() <= now && controls_.HasToken()) {
        controls_.Take();
        hello_ = now;
        SendMessage(profile_->helloSend);
    }
    if (!IsLive()) {
        return;
    }
    if (!profile_->keepAddress.empty() && keep_ <= now && controls_.HasToken()) {
        controls_.Take();
        keep_ = now + profile_->keepEvery;
        SendMessage(profile_->keepAddress);
    }
    for (std::size_t number = 0; number < blocks_.size(); ++number) {
        Block& block = blocks_[number];
        const ProfileMeters& meters = profile_->meters[number];
        if (block.wanted > 0 && block.renewal <= now && controls_.HasToken()) {
            controls_.Take();
            block.renewal = now + meters.renewal;
            const OscValue argument = meters.argument;
            SendMessage(meters.request,
                        meters.argument.empty() ? std::span<const OscValue>() : std::span(&argument, 1));
        }
        if (block.wanted > 0 && !block.isStale && now >= block.heard + METERS_PATIENCE) {
            MetersFellSilent(number, now);
        }
    }
}

Milliseconds OscLink::Step(Milliseconds now) {
    bucket_.Fill(now);
    controls_.Fill(now);
    Watch(now);
    while (const auto parameter = asked_.Take(now)) {
        ChangeWanted(*parameter, -1, now);
    }
    while (const auto cell = firstReads_.Take(now)) {
        FirstReadTimedOut(*cell, now);
    }
    while (const auto cell = outstanding_.Take(now)) {
        ReadTimedOut(*cell, now);
    }
    SendWrites(now);
    SendControls(now);
    SendReads(now);

    Milliseconds next = std::min({asked_.Next(), firstReads_.Next(), outstanding_.Next(), NextHello()});
    const Milliseconds token = bucket_.HasToken() ? now : bucket_.Next();
    const bool isSending = IsLive() || state_ == DeviceState::Open;
    if (isSending) {
        next = std::min(next, std::max(queued_.Next(), token));
        next = std::min(next, shots_.empty() ? NEVER : token);
    }
    if (IsLive()) {
        next = std::min(next, heard_ + STALE_AFTER);
        next = std::min(next, profile_->keepAddress.empty() ? NEVER : keep_);
        if (outstanding_.Size() < profile_->window) {
            next = std::min(next, std::max(checks_.Next(), token));
            next = std::min(next, reads_.empty() ? NEVER : token);
            next = std::min(next, wanted_.empty() ? NEVER : std::max(sweep_, token));
        }
        for (const Block& block : blocks_) {
            if (block.wanted > 0) {
                next = std::min(next, block.renewal);
                next = std::min(next, block.isStale ? NEVER : block.heard + METERS_PATIENCE);
            }
        }
    } else if (state_ == DeviceState::Stale) {
        next = std::min(next, heard_ + LOST_AFTER);
    }
    return std::max(next, now + 1);
}

void OscLink::Receive(std::string_view datagram, Milliseconds now) {
    if (state_ == DeviceState::Off || state_ == DeviceState::Open) {
        return;
    }
    const OscFault fault = ReadOsc(datagram, messages_);
    if (fault != OscFault::None) {
        if (faults_[static_cast<std::size_t>(fault)]++ == 0) {
            owner_.Trace(name_ + ": a datagram was dropped for " + FaultText(fault));
        }
        return;
    }
    for (const OscMessage& message : messages_) {
        TakeMessage(message, now);
    }
}

} // namespace logic
