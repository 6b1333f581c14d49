#pragma once

#include "Panelhost/objects/PanelRoot.h"

#include <string>

// Declares the devices of a device file under a root. Number of devices declared, -1 when the file cannot be
// read. Blank lines and lines that begin with "#" are skipped; unknown lines are traced with their number.
int LoadDeviceFile(PanelRoot& root, const std::string& path);
