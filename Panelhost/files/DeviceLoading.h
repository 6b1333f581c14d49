#pragma once

#include "Panelhost/files/LineFile.h"
#include "Panelhost/objects/PanelRoot.h"

#include <functional>
#include <string>

// Declares the devices of a device file under a root. Number of devices declared, -1 when the file cannot be
// read. Blank lines and lines that begin with "#" are skipped; unknown lines are traced with their number.
int LoadDeviceFile(PanelRoot& root, const std::string& path);

// Devices of the file take the place of those that files declared before, whose lines are others; the rest
// stays as it is. Without a file they all go. Number of devices that the file declares, -1 with everything as
// it was when it cannot be read.
int ReloadDeviceFile(PanelRoot& root, const std::string& path);

// What a reload of a file with that text would refuse. The root can be null.
void CheckDeviceText(
    PanelRoot* root, const std::string& path, LineSource& source,
    const std::function<void(std::size_t line, const std::string& text, const std::string& why)>& refuse);
