#pragma once

#include "base/Gdi.h"

// Small pictures of what can be bound, in the order of BindableKind, on the colour of edit fields.
ImageList MakeBindingIcons();
