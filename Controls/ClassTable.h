#pragma once

#include "Controls/framework/ControlClass.h"

#include <span>

// All control classes, in the order of their registration.
std::span<const ControlClass> ControlClasses();
