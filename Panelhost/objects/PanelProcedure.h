#pragma once

#include <windows.h>

class PanelRoot;

// The procedure that a panel window gets in front of its own while it has a root: it answers the private
// messages for the root and paints the background. Not a subclass of the common controls: that one asks the
// system for its data several times a message, and a panel hears of each of its controls that comes or goes.
namespace PanelProcedure {

// False when the window does not take it.
bool Attach(HWND panel, PanelRoot& root);
// Where somebody else has put a procedure in front meanwhile, this one stays and passes everything on.
void Detach(HWND panel);

} // namespace PanelProcedure
