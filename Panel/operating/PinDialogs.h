#pragma once

#include "logic/security/PinLock.h"

#include <windows.h>

class HOSTINFO;

// Asks for the PIN of a panel until it is right or the user gives up; too many wrong ones make wait, however
// often it is asked. Whether it was right.
bool AskPin(HWND owner, HOSTINFO* root, logic::PinTries& tries);
// Asks for a new PIN and locks the panel by it, or unlocks it.
void AskNewPin(HWND owner, HOSTINFO* root);
