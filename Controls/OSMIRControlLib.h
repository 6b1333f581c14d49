#pragma once

/* What OSMIRControlLib.dll exports, for C and for C++. Loading the library registers the window classes of
 * all controls; everything else goes by window messages. The object of a control is what its window answers
 * to CWM_GETPROPERTIES. Functions that take one are called on the thread of its window; an object that does
 * not live, or is of another class, makes them return 0. */

#include "Panelhost/HostInterface.h" /* HOSTINFO */

#ifdef CONTROLLIB_BUILD
#define CONTROLLIB_API __declspec(dllexport)
#else
#define CONTROLLIB_API __declspec(dllimport)
#endif

#ifdef __cplusplus
class KNOBPROPERTIES;
class NETWORKPROPERTIES;
class REVMETERPROPERTIES;

extern "C" {
#else
typedef HOSTINFO NETWORKPROPERTIES;
#endif

/* The build stamp for code 13, null for any other; the further arguments are ignored. */
CONTROLLIB_API const char* __stdcall fnCallback(int code, unsigned, unsigned);

/* Sends a get (command 1) or set (2) of the datatype over the request list of a knob or of a reverse meter;
 * value is the address of the value, a float for datatype 9. A relative object sends each connected control
 * its own offset plus the value, and a get then only tells by result 2 that a control does not hold it; a
 * reverse meter is relative only while its keyword settable is 1. result may be null; otherwise put 0 there,
 * and a get leaves 0 nothing new, 1 a new value, 2 the targets disagree, 3 one cannot be reached. Returns
 * non-zero, or 0 when an absolute request failed. */
CONTROLLIB_API int __cdecl l_SendRequest(HOSTINFO* knob, int command, int datatype, long value, int* result);
CONTROLLIB_API int __cdecl l_SendRequestReverseMeter(HOSTINFO* meter, int command, int datatype, long value,
                                                     int* result);

/* Hands the network interface a connected stream socket, which it owns from then on: records of a CAN
 * interface that arrive there are described on the trace. Returns 1, or 0 with the socket left alone. */
CONTROLLIB_API int __cdecl a_AttachCanChannel(NETWORKPROPERTIES* object, unsigned socket);

/* A constant and two exponential decays: x[0] + x[1] * exp(-x[2] * t) + x[3] * exp(-x[4] * t). Times are
 * sample numbers. */
enum { DECAY_SAMPLES = 201, DECAY_COORDINATES = 5 };
typedef struct DECAYFIT {
    double x[DECAY_COORDINATES];
    double squaredError; /* sum over the samples 1 to 200 */
    int evaluations;     /* of that sum, at most 100,000 */
} DECAYFIT;

/* Fits that model to the samples 1 to 200 of DECAY_SAMPLES by a pattern search from the DECAY_COORDINATES
 * values at start. rho, between 0 and 1, is the factor by which the steps shrink and the length of the first
 * one (0.4 suits most); the search ends when they are no longer than epsilon (1e-8), after 200 iterations or
 * after 100,000 evaluations, which take seconds at most. trace, which may be null, receives the progress as
 * text, line ends included. Returns 1 with the fit filled in, or 0 with it left alone when a pointer is null,
 * rho is no such factor or memory is short. Callable from any thread. */
CONTROLLIB_API int __cdecl a_FitDecays(const double* samples, const double* start, double rho, double epsilon,
                                       DECAYFIT* fit, void(__cdecl* trace)(const char* text, void* context),
                                       void* context);
/* The model x of DECAY_COORDINATES values at a time; 0 for null. */
CONTROLLIB_API double __cdecl a_DecayModel(const double* x, double time);
/* The largest of DECAY_SAMPLES samples, at least -1.7e308; 0 for null. */
CONTROLLIB_API double __cdecl a_LargestSample(const double* samples);

#ifdef __cplusplus
}

/* The same for callers of this library's own compiler, by the class of the object and without a check. */
CONTROLLIB_API int l_SendRequest(KNOBPROPERTIES* object, int command, int datatype, long value, int* result);
CONTROLLIB_API int l_SendRequest(REVMETERPROPERTIES* object, int command, int datatype, long value,
                                 int* result);
#endif
