// How a test drives the sound of the double of winmm.dll: devices that play and listen by a clock of their
// own. What the outputs play is what the inputs of the same format hear.
#pragma once

#include "tests/doubles/ScriptedCalls.h"

#include <string>
#include <vector>

class SoundDouble : public ScriptedCalls {
public:
    // These devices, and every call succeeds at once. Ports that are in use stay open. The clock goes that
    // many times as fast as the real one.
    virtual void Reset(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
                       int speed) = 0;
    // Takes all devices away: they are not listed any more, give back what they have and refuse blocks; or
    // brings them back.
    virtual void Unplug(bool isUnplugged) = 0;
    // The devices stand still.
    virtual void Freeze(bool isFrozen) = 0;
    // Outputs know samples of 16 bits only.
    virtual void KnowOnly16Bits(bool isSo) = 0;

    virtual int OpenPorts() = 0;
    virtual int PreparedBlocks() = 0;
    // What was played since the last time, at most the newest 16 MB.
    virtual std::string TakePlayed() = 0;
    virtual unsigned LastBits() = 0; // of a sample of the output that was opened as the last

protected:
    ~SoundDouble() = default;
};

// Exported by the double, not by the real library.
extern "C" SoundDouble* GetSoundDouble();
