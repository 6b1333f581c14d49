#pragma once

#include "Controls/framework/Control.h"
#include "Panelhost/PropertyLines.h"

// What a click on a control sends: a property line in which "%c" stands for the control's connections, "%n"
// for its full name and "%l", where there is a caption, for that. With an object name the named object gets
// the line, unless it is gone or does not know the keyword. Without one the panel's root gets it, or, when
// that does not know the keyword, everything that the control is connected to.
void SendClickTemplate(CONTROLPROPERTIES& control, const std::string& clickTemplate,
                       const char* caption = nullptr);
// The same with another letter for what was clicked.
void SendClickTemplate(CONTROLPROPERTIES& control, const std::string& clickTemplate, INSERTION clicked);
