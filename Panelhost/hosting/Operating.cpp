#include "Panelhost/Operating.h"

#include "Panelhost/Editing.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/security/PinLock.h"

#include <windows.h>
#include <ntsecapi.h>

static_assert(SHORTEST_PIN == logic::PinLock::SHORTEST && LONGEST_PIN == logic::PinLock::LONGEST);

namespace {

bool FillSalt(logic::PinLock::Salt& salt) {
    return RtlGenRandom(salt.data(), static_cast<ULONG>(salt.size())) != FALSE;
}

} // namespace

void a_SetOnlyOperated(HOSTINFO* root, bool onlyOperated) {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        panel->isOnlyOperated = onlyOperated;
    }
}

bool a_IsOnlyOperated(const HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    return panel != nullptr && panel->isOnlyOperated;
}

void a_SetNeverSendsOnOpen(HOSTINFO* root) {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        panel->neverSendsOnOpen = true;
    }
}

bool a_HasLock(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel != nullptr && !panel->lock.empty();
}

int a_TryLock(HOSTINFO* root, std::string_view pin) {
    return Guarded(LOCK_DAMAGED, [&] {
        if (!a_HasLock(root)) {
            return LOCK_OPENS;
        }
        const auto lock = logic::PinLock::Parse(PanelRoot::From(root)->lock);
        return !lock ? LOCK_DAMAGED : lock->Opens(pin) ? LOCK_OPENS : LOCK_STAYS;
    });
}

bool a_SetLock(HOSTINFO* root, std::string_view pin) {
    return Guarded(false, [&] {
        if (pin.empty()) {
            return a_ApplyEdit(root, "lock=") != 0;
        }
        logic::PinLock::Salt salt{};
        const auto lock = FillSalt(salt) ? logic::PinLock::Make(pin, salt) : std::nullopt;
        return lock && a_ApplyEdit(root, ("lock=" + lock->Text()).c_str()) != 0;
    });
}
