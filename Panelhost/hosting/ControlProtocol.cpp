// The header for programs in C says the same as those for programs in C++.

#include "Panelhost/ControlProtocol.h"

#include "Panelhost/Messages.h"
#include "Panelhost/ValueRecord.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"

#include <cstddef>

static_assert(PH_MESSAGE == CWM_MESSAGE && PH_LOAD == CWM_LOAD && PH_SAVE == CWM_SAVE &&
              PH_SAVETOLISTCTRL == CWM_SAVETOLISTCTRL && PH_GETPROPERTIES == CWM_GETPROPERTIES &&
              PH_GETCONTROLTYPE == CWM_GETCONTROLTYPE && PH_PARAMETERDLG == CWM_PARAMETERDLG &&
              PH_GETPREFERREDWIDTH == CWM_GETPREFERREDWIDTH);
static_assert(PH_FROM_DIALOG == LOAD_FROM_DIALOG && PH_FROM_FILE == LOAD_FROM_FILE &&
              PH_SAVE_PROPERTIES == SAVE_PROPERTIES && PH_SAVE_CONNECTIONS == SAVE_CONNECTIONS);
static_assert(PH_GET == COMMAND_GET && PH_SET == COMMAND_SET && PH_RESOLVE == COMMAND_RESOLVE);
static_assert(PH_INTEGER == DATATYPE_INTEGER && PH_FLOAT == DATATYPE_FLOAT && PH_TEXT == DATATYPE_TEXT &&
              PH_DELAY == DATATYPE_DELAY && PH_CROSSOVER == DATATYPE_CROSSOVER &&
              PH_MASTER_EQ == DATATYPE_MASTER_EQ && PH_CHANNEL_EQ == DATATYPE_CHANNEL_EQ &&
              PH_TEXT_SIZE == TEXT_SIZE);
static_assert(sizeof(PH_VALUERECORD) == sizeof(VALUERECORD) &&
              offsetof(PH_VALUERECORD, datatype) == offsetof(VALUERECORD, datatype) &&
              offsetof(PH_VALUERECORD, data) == offsetof(VALUERECORD, data) &&
              offsetof(PH_VALUERECORD, name) == offsetof(VALUERECORD, name));
static_assert(sizeof(PH_DELAYSETTING) == sizeof(logic::DelaySetting) &&
              sizeof(PH_CROSSOVERSETTING) == sizeof(logic::Crossover) &&
              offsetof(PH_CROSSOVERSETTING, delay) == offsetof(logic::Crossover, delay) &&
              sizeof(PH_EQBAND) == sizeof(logic::EqBand));
