#pragma once

#include "Panelhost/AddressTexts.h"
#include "Panelhost/Devices.h"

#include <string>
#include <vector>

// Everything that is bound on a panel, and whether what it is bound to is there.

// An address in a text of an object (AddressTexts.h).
struct BINDING {
    HOSTINFO* object = nullptr;      // that is bound
    const KEYWORDROW* row = nullptr; // whose text holds the address
    std::string address;             // as it is looked up: with names in place of "%n", and with numbers in a
                                     // pattern, which stands for as many bindings
    HOSTINFO* target = nullptr;      // the device or object that was found; null when there is none
    std::string keyword;             // of the target; empty for its default value
    int state = PARAMETER_NONE;      // PARAMETER_..., ADDRESS_...; of an object that is there PARAMETER_LIVE
    DWORD age = NO_AGE;              // milliseconds since the value came, where that is known
};

// All bindings below a root: control by control in the order of saving, keyword by keyword. An address that
// depends on what is clicked has the state PARAMETER_UNKNOWN. Empty without memory. What is in it can be used
// until a_BindingsVersion changes.
PANELHOST_API std::vector<BINDING> a_ListBindings(HOSTINFO* root);
// The same of an address that the text could hold, whether it does or not: one binding, of a pattern as many
// as it stands for.
PANELHOST_API std::vector<BINDING> a_ResolveAddress(const ADDRESSTEXT& text, logic::AddressForm form,
                                                    const std::string& address);
// Another number when objects came or went, or an address may have changed: then the list is to be made anew.
PANELHOST_API unsigned a_BindingsVersion(HOSTINFO* root);

// State and age as they are now. Asking makes nothing be read, and takes no more than a look-up.
PANELHOST_API void a_RefreshBinding(BINDING* binding);
// The value that is known of what it is bound to, as text; empty when there is none.
PANELHOST_API std::string a_BindingValue(const BINDING& binding);
// "live", "no such control" and so on, for people.
PANELHOST_API const char* a_StateName(int state);
// Whether what is bound is there: live, or about to be.
constexpr bool a_IsLive(int state) {
    return state == PARAMETER_LIVE || state == PARAMETER_PENDING;
}
