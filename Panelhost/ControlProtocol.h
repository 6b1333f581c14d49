#pragma once

/* What a program in any language exchanges with the windows of panels, controls and devices, in plain C:
 * numbers of messages, value records, datatypes. The host guide says how they are used. */

#include <windows.h>

/* Messages */
#define PH_MESSAGE 0x8000 /* lParam PH_VALUERECORD*: get, set or look up a named value */
#define PH_LOAD 0x8001    /* wParam PH_FROM_..., lParam one property line, "keyword=value": 1 when applied */
#define PH_SAVE 0x8002    /* wParam PH_SAVE_..., lParam an open file HANDLE: 0 when written */
#define PH_SAVETOLISTCTRL 0x8003    /* lParam a report list view with two columns, to be filled */
#define PH_GETPROPERTIES 0x8014     /* answers the object of the window, HOSTINFO* */
#define PH_GETCONTROLTYPE 0x8033    /* answers the datatype of the main value */
#define PH_PARAMETERDLG 0x8035      /* lParam HWND*: opens the parameter dialog and stores its window */
#define PH_GETPREFERREDWIDTH 0x804C /* answers the width in pixels */

#define PH_FROM_DIALOG 0 /* marks the panel as changed */
#define PH_FROM_FILE 1
#define PH_SAVE_PROPERTIES 0
#define PH_SAVE_CONNECTIONS 1

/* Commands of a record */
#define PH_GET 1     /* 1: something new was stored; 0: the buffer held the value already */
#define PH_SET 2     /* 1: taken; 0: refused, or the old value */
#define PH_RESOLVE 4 /* stores the row of the keyword in index */

/* Datatypes of a record */
#define PH_INTEGER 5     /* 32-bit signed */
#define PH_FLOAT 9       /* 32-bit IEEE, always finite */
#define PH_TEXT 11       /* zero-terminated, buffer of PH_TEXT_SIZE bytes */
#define PH_DELAY 15      /* PH_DELAYSETTING */
#define PH_CROSSOVER 19  /* PH_CROSSOVERSETTING; a device reads and writes the first 16 bytes */
#define PH_MASTER_EQ 30  /* PH_EQBAND */
#define PH_CHANNEL_EQ 32 /* PH_EQBAND */

#define PH_TEXT_SIZE 4096

typedef struct PH_VALUERECORD {
    int command;
    int index; /* row of the keyword table; 0 is the default value, or the row of the name where one is given
                */
    int datatype;
    int reserved; /* 0 */
    void* data;
    const char* name; /* keyword, or null */
    int reserved2;    /* 0 */
} PH_VALUERECORD;

typedef struct PH_DELAYSETTING {
    int bypass; /* 0 or 1 */
    float amount;
    int unit; /* ms, samples, ft, in, m, cm, us, s from 0 on */
} PH_DELAYSETTING;

typedef struct PH_CROSSOVERSETTING {
    int highPassType;
    float highPassFrequency; /* Hz */
    int lowPassType;
    float lowPassFrequency; /* Hz */
    float gain;             /* dB */
    int inverted;           /* 0 or 1 */
    PH_DELAYSETTING delay;
} PH_CROSSOVERSETTING;

typedef struct PH_EQBAND {
    int bypass; /* 0 or 1 */
    int type;
    float frequency; /* Hz */
    float gain;      /* dB */
    float q;
    int slope; /* 1 or 2 for 6 or 12 dB an octave */
} PH_EQBAND;
