#pragma once

// What OSMIRControlLib.dll exports. Loading the library registers the window classes of all controls;
// everything else goes by window messages.

#ifdef CONTROLLIB_BUILD
#define CONTROLLIB_API __declspec(dllexport)
#else
#define CONTROLLIB_API __declspec(dllimport)
#endif

class KNOBPROPERTIES;
class NETWORKPROPERTIES;
class REVMETERPROPERTIES;

// The build stamp for code 13, null for any other; the further arguments are ignored.
extern "C" CONTROLLIB_API const char* __stdcall fnCallback(int code, unsigned, unsigned);

// Sends a get (command 1) or set (2) of the datatype over the object's request list; value is the address of
// the value. A relative object sends each connected control its own offset plus the value, and a get then
// only tells by result 2 that a control does not hold it. Returns non-zero, or 0 when an absolute request
// failed.
CONTROLLIB_API int l_SendRequest(KNOBPROPERTIES* object, int command, int datatype, long value, int* result);
CONTROLLIB_API int l_SendRequest(REVMETERPROPERTIES* object, int command, int datatype, long value,
                                 int* result);

// Hands the network interface a connected stream socket, which it owns from then on: records of a CAN
// interface that arrive there are described on the trace. Returns 1, or 0 with the socket left alone when the
// object is no network interface that lives.
extern "C" CONTROLLIB_API int __cdecl a_AttachCanChannel(NETWORKPROPERTIES* object, unsigned socket);
