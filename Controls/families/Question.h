#pragma once

#include "Controls/framework/Control.h"

#include <string>

// A question in front of what a control does. Without one it acts at once; else a message box beside the
// control asks it, in which "\n" and "\t" are a line feed and a tab, and only Yes lets it act. Both texts are
// copies, because the control's own may be replaced while the question is open; the control may be gone then
// as well.
bool IsConfirmed(const CONTROLPROPERTIES& control, std::string question, std::string title);
