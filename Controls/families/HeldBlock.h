#pragma once

#include "Controls/framework/Control.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

// A part of a block that travels alone.
template <class Block>
struct BlockPart {
    REQUESTLIST* asked; // for the part
    REQUESTLIST* told;  // when the part has changed
    int datatype;
    void* (*of)(Block&);
    void (*copy)(Block& to, const Block& from);
    // Whether the part was set as a whole or is what the bound devices hold. What a new control starts with
    // must reach no device.
    bool isKnown = false;
    // What the devices hold, where it has members of no known meaning: the type of another kind of device.
    // What the control held stays in their place, and is sent with the next edit of the part.
    std::optional<Block> odd = std::nullopt;
    int lastResult = REQUEST_UNCHANGED; // of the last poll

    bool IsOneNumber() const { return datatype == DATATYPE_FLOAT || datatype == DATATYPE_INTEGER; }
    void SetKnown(bool known) {
        isKnown = known;
        odd.reset();
    }
};

// The part that is the whole of a block.
template <class Block>
BlockPart<Block> WholeBlock(REQUESTLIST& requests, int datatype) {
    return {&requests, &requests, datatype, [](Block& block) -> void* { return &block; },
            [](Block& to, const Block& from) { to = from; }};
}

// Has a list hold that one item, or none (null): what a control asks and tells of the one of its blocks that
// the item is of.
inline void TakeOne(REQUESTLIST& list, const REQUESTITEM* item) {
    const bool isSame = item != nullptr && !list.empty() && list.front().target == item->target &&
                        list.front().handler == item->handler && list.front().context == item->context &&
                        list.front().device == item->device && list.front().address == item->address;
    if (isSame) {
        return;
    }
    list.clear();
    if (item != nullptr) {
        list.push_back(*item);
    }
}

// One block of devices - a band, a pair of filters with gain, polarity and delay, a delay - as a control
// holds it: polled, learned before it is changed in part, and sent. A control with one block derives from
// BLOCKHOLDER (BlockHolder.h), which adds the keyword of the whole block; one with several has members of a
// class derived from this one. Either fills `parts` at the start, and then calls
//
//     Ask      at each poll, and hands the result to ShowPollResult
//     Edit     for whatever a user changes in one part
//     SetKnown of a part, with false, when it was bound to something else
//
// Show is told of every block that becomes the one that is held. A control that is asked or told may end this
// one; the object that Owner answers is then without a parent.
template <class Block>
class HeldBlock {
public:
    HeldBlock() = default;
    virtual ~HeldBlock() = default;
    HeldBlock(const HeldBlock&) = delete;
    HeldBlock& operator=(const HeldBlock&) = delete;

    virtual CONTROLPROPERTIES& Owner() = 0;
    // Takes a known block as the one that is held, and shows it. What is odd of its parts can be seen there.
    virtual void ShowBlock(const Block& next) = 0;
    virtual bool IsSending() { return Owner().parent != nullptr; } // now
    virtual void PartSent() {} // after each part, for those who are told of all of them

    // Asks for all parts and shows what is new. The worst of the results.
    int Ask() {
        Block next = value;
        int worst = REQUEST_UNCHANGED;
        bool isNew = false;
        for (BlockPart<Block>& part : parts) {
            Block polled = next;
            int result = REQUEST_UNCHANGED;
            a_SendRequest(*part.asked, COMMAND_GET, part.datatype, part.of(polled), &result);
            if (result <= REQUEST_DELIVERED && !part.asked->empty()) {
                const std::optional<Block> before = part.odd;
                next = Learned(part, polled, next);
                isNew = isNew || part.odd != before;
            }
            part.lastResult = result;
            Owner().Answered(*part.asked, part.datatype, result);
            worst = std::max({worst, result, part.odd ? REQUEST_DISAGREE : REQUEST_UNCHANGED});
        }
        if (isNew || next != value) {
            ShowBlock(next);
        }
        return worst;
    }

    // Before the block is changed in part: what is bound may hold another one. False when the control has
    // ended meanwhile: nobody holds the block that was edited any more.
    bool Learn() {
        if (Owner().parent == nullptr) {
            return true;
        }
        for (BlockPart<Block>& part : parts) {
            if (part.isKnown) {
                continue;
            }
            Block held = value;
            const bool isAnswered =
                !part.asked->empty() && AskForValue(*part.asked, part.datatype, part.of(held));
            if (Owner().parent == nullptr) {
                return false;
            }
            if (isAnswered) {
                Block next = Learned(part, held, value);
                for (const BlockPart<Block>& other : parts) { // of which a linked control tells as well
                    if (&other != &part && other.isKnown && !other.asked->empty()) {
                        other.copy(next, value);
                    }
                }
                ShowBlock(next);
            }
            part.isKnown = isAnswered || part.asked->empty();
        }
        return true;
    }

    // Learns, has a copy of the block changed, and shows and sends that part of it unless it is as it was.
    // False when nothing was sent: what the devices hold of it is not known either.
    template <class Change>
    bool Edit(std::size_t number, Change change) {
        if (!Learn()) {
            return false;
        }
        BlockPart<Block>& part = parts[number];
        Block next = value;
        change(next);
        if (!(part.isKnown || part.IsOneNumber()) || (next == value && !part.odd)) {
            return false;
        }
        ShowBlock(next);
        part.isKnown = true;
        Send(part);
        return true;
    }

    void Send(BlockPart<Block>& part) {
        if (!IsSending() || !(part.isKnown || part.IsOneNumber())) {
            return;
        }
        if (part.odd) {
            part.odd.reset();
            ShowBlock(value);
        }
        Block sent = value;
        a_SendRequest(*part.told, COMMAND_SET, part.datatype, part.of(sent), nullptr);
        PartSent();
    }

    void SendAll() {
        for (BlockPart<Block>& part : parts) {
            Send(part);
        }
        if (IsSending() && a_IsLoading(&Owner())) { // to no device
            for (BlockPart<Block>& part : parts) {
                part.isKnown = part.isKnown && std::none_of(part.told->begin(), part.told->end(), IsOfDevice);
            }
        }
    }

    bool AreAllKnown() const {
        return std::all_of(parts.begin(), parts.end(), [](const auto& part) { return part.isKnown; });
    }

    bool IsAnyOdd() const {
        return std::any_of(parts.begin(), parts.end(), [](const auto& part) { return part.odd.has_value(); });
    }

    void KnowAll() {
        for (BlockPart<Block>& part : parts) {
            part.SetKnown(true);
        }
    }

    Block value{};
    std::vector<BlockPart<Block>> parts;

private:
    // What is held once the devices of a part have answered.
    Block Learned(BlockPart<Block>& part, const Block& answered, const Block& held) const {
        const Block known = KnownOf(answered, held);
        part.SetKnown(true);
        if (known != answered) {
            part.odd = answered;
        }
        return known;
    }

    static bool IsOfDevice(const REQUESTITEM& item) { return item.target == nullptr; }
};
