#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/ValueRecord.h"

#include <list>
#include <memory>
#include <string>

class HOSTINFO;

// Answers a value record for a device parameter. Get: 1 stored something new, 0 the caller holds it already.
// Set: 1 taken, 0 held already. -1: the device cannot be reached at the moment, the parameter has no form for
// the datatype (a_HasForm; asked for a number, a text that is none), or it refuses the value.
using REQUESTHANDLER = int (*)(VALUERECORD* record, void* context);

// What an item was built from.
struct REQUESTADDRESS;

// One bound value. Exactly one of target and handler is set; with neither the item cannot be reached at
// present.
struct REQUESTITEM {
    VALUERECORD record;
    HOSTINFO* target = nullptr; // a control, reached through its window; null for a device parameter
    REQUESTHANDLER handler = nullptr;
    void* context = nullptr;
    // The device that the handler belongs to: what is asked of one that is gone is not answered. Null for a
    // control, and for a handler that is always there.
    HOSTINFO* device = nullptr;
    std::shared_ptr<REQUESTADDRESS> address; // null for an item that was not built from a list
    // Of the target or device when the item was made (a_LifeOf): it may be gone, and another one stand in its
    // place. 0: whichever lives there.
    unsigned life = 0;
};

using REQUESTLIST = std::list<REQUESTITEM>;

// Addresses as they were loaded: OBJECT*keyword, or OBJECT for the default value. "%n" stands for the full
// name of the object that contains the control.
using BINDINGLIST = std::list<std::string>;

constexpr int REQUEST_UNCHANGED = 0;   // all items answered that the value is still the same
constexpr int REQUEST_DELIVERED = 1;   // all items agree on a new value, which is in data
constexpr int REQUEST_DISAGREE = 2;    // the items hold different values
constexpr int REQUEST_UNREACHABLE = 3; // at least one item could not be reached

// Replace the functions (connections) by the addresses in the text, joined by ";", and rebuild the requests.
// Return 1; 0 with everything as it was when the object is null, or the text is longer than TEXT_SIZE - 1
// bytes or holds control characters.
PANELHOST_API int a_FunctionChanged(const char* text, HOSTINFO* object, BINDINGLIST& functions,
                                    BINDINGLIST& connections, REQUESTLIST& requests);
PANELHOST_API int a_ConnectionChanged(const char* text, HOSTINFO* object, BINDINGLIST& functions,
                                      BINDINGLIST& connections, REQUESTLIST& requests);

// Whether the object's functions name this device parameter (address OBJECT*keyword, object without regard to
// case).
PANELHOST_API int a_IsConnected(HOSTINFO* object, const char* function, void* reserved);

// The list as text, joined by ";".
PANELHOST_API std::string a_BuildString(const BINDINGLIST& list);
// The same with what "%n" stands for in the lists of that object.
PANELHOST_API std::string a_BuildString(const BINDINGLIST& list, const HOSTINFO* object);

// Build the items for functions, then connections, in order. An address that names nothing becomes an item
// that cannot be reached; it is resolved when the object comes, as long as it is the object's own request
// list or one given to a_FollowRequests. With a keyword, every item asks for that keyword in place of the
// address's own.
PANELHOST_API void a_BuildRequestList(const BINDINGLIST& functions, const BINDINGLIST& connections,
                                      HOSTINFO* object, REQUESTLIST& requests, const char* keyword = nullptr);
// A further list of an object, built from functions of its own. From then on it is followed as the object's
// own list is: built anew whenever one of the functions' devices or controls comes or goes, and counted by
// a_IsConnected. Both lists must live until a_CleanHostinfo of the object, which empties the request list.
PANELHOST_API void a_FollowRequests(HOSTINFO* object, const BINDINGLIST& functions, REQUESTLIST& requests);
PANELHOST_API void a_EmptyRequestList(REQUESTLIST& requests);

// Sends a get (1) or set (2) to every item. data points to the value: for a get it holds the caller's current
// value and receives the new one when the result is REQUEST_DELIVERED. An item that has no form for the
// datatype counts as one that cannot be reached. Returns non-zero on success: every item was reached and none
// refused, whether or not it held a set value before. The list may change, and objects may go, while it is
// being sent. While a panel file is loaded (a_IsLoading) devices take a set as any other, and get nothing.
// Requests are made on the panel's thread only; one on another thread reaches nothing, and is traced.
PANELHOST_API int a_SendRequest(REQUESTLIST& requests, int command, int datatype, void* data, int* result);

// Sends one record to one item: through its handler, or as CWM_MESSAGE to its target's window. -1 when the
// item cannot be reached, when it is asked for a datatype that it has no form for - of a control the datatype
// of its keyword decides (OnGetDatatype), where it has a keyword table - and when requests lead to each other
// without end (a ring that never settles).
PANELHOST_API int a_SendToItem(const REQUESTITEM& item, int command, int datatype, void* data);
