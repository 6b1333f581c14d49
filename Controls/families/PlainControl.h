#pragma once

#include "Controls/framework/Control.h"

// Objects that have the common part alone, for classes that add only what their windows share.

CONTROLPROPERTIES* CreateMiniView(); // shows the picture of its class
