#pragma once

#include "Panelhost/devices/DeviceKind.h"

// NAME*device=osc,ADDRESS[:PORT],PROFILE[,RANGE=first-last...]: a device that speaks Open Sound Control, as a
// profile describes it. The profile lies beside the device file, or in Profiles\ beside this library.
extern const DeviceKind OSC_DEVICES;
