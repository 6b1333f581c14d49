#pragma once

#include "logic/controls/PitchBend.h"

#include <windows.h>

#include <array>
#include <atomic>
#include <mmsystem.h>

// The functions that MIDI drivers call, on threads of their own. They trace each message.

// Of the channels, counted from 0.
using MidiValues = std::array<std::atomic<std::uint16_t>, logic::PITCH_BEND_CHANNELS>;

void CALLBACK MidiInProc(HMIDIIN input, UINT message, DWORD_PTR instance, DWORD_PTR parameter,
                         DWORD_PTR time);
void CALLBACK MidiOutProc(HMIDIOUT output, UINT message, DWORD_PTR instance, DWORD_PTR parameter,
                          DWORD_PTR more);

// Pitch bends that an input with this instance data receives are stored there from now on.
void AddMidiReceiver(DWORD_PTR instance, MidiValues& values);
// No call is inside the values any more when it returns, and none comes later.
void RemoveMidiReceiver(DWORD_PTR instance);
// An input that cannot be closed goes on calling: the library then stays.
void KeepMidiProcsLoaded();
