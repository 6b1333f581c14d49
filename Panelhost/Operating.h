#pragma once

#include "Panelhost/Api.h"

#include <string_view>

class HOSTINFO;

// What a program needs that hands panels over to people who operate them.

// While it is set, the panel can be operated and no more: no dialog about properties or bindings of its
// objects opens, and what is edited all the same, as by a file that is dropped, is refused.
PANELHOST_API void a_SetOnlyOperated(HOSTINFO* root, bool onlyOperated);
// Whether it is set for the panel above the object.
PANELHOST_API bool a_IsOnlyOperated(const HOSTINFO* object);
// From now on opening a panel file sends nothing to devices, even where the panel says onopen=send.
PANELHOST_API void a_SetNeverSendsOnOpen(HOSTINFO* root);

// The lock of a panel (root keyword `lock`): what a PIN is recognised by before the panel may be edited. It
// is for the host to ask; the panel file itself is text that anybody can change who may write it.
PANELHOST_API bool a_HasLock(HOSTINFO* root);
constexpr int LOCK_OPENS = 1;
constexpr int LOCK_STAYS = 0;    // the PIN is wrong
constexpr int LOCK_DAMAGED = -1; // no PIN opens it
// Takes some tenths of a second. A panel without a lock opens.
PANELHOST_API int a_TryLock(HOSTINFO* root, std::string_view pin);
// Locks the panel by that PIN on behalf of the user, or unlocks it when the PIN is empty. False when the PIN
// is shorter or longer than one may be (bytes), when the panel is only operated, and when the system has no
// random numbers.
constexpr int SHORTEST_PIN = 4;
constexpr int LONGEST_PIN = 64;
PANELHOST_API bool a_SetLock(HOSTINFO* root, std::string_view pin);
