#pragma once

#include "Controls/framework/Control.h"

// The controls' own parts, each at the end of its file.
extern const ControlImplementation clockControl;         // Controls/Clock.cpp
extern const ControlImplementation editControl;          // Controls/Edit.cpp
extern const ControlImplementation eqControl;            // Controls/EQ.cpp
extern const ControlImplementation faderControl;         // Controls/Fader.cpp
extern const ControlImplementation knobControl;          // Controls/Knob.cpp
extern const ControlImplementation ledControl;           // Controls/Led.cpp
extern const ControlImplementation meterControl;         // Controls/Meter.cpp
extern const ControlImplementation midiControl;          // Controls/Midi.cpp
extern const ControlImplementation mixerControl;         // Controls/Mixer.cpp
extern const ControlImplementation networkControl;       // Controls/Network.cpp
extern const ControlImplementation miniView;             // the common part and a picture
extern const ControlImplementation plainControl;         // the common part alone
extern const ControlImplementation plainInterface;       // the common part of an interface control
extern const ControlImplementation plainReverseMeter;    // the common part and its request helper
extern const ControlImplementation pushButtonControl;    // Controls/PushButton.cpp
extern const ControlImplementation staticControl;        // Controls/Static.cpp
extern const ControlImplementation switchButtonControl;  // Controls/SwitchButton.cpp
extern const ControlImplementation telephoneControl;     // Controls/Telephone.cpp
extern const ControlImplementation waveGeneratorControl; // Controls/WaveGenerator.cpp
extern const ControlImplementation xoverControl;         // Controls/XOver.cpp
