#pragma once

// Everything Panelhost.dll offers. Hosts in other languages need HostInterface.h alone.

#include "Panelhost/Api.h"
#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Background.h"
#include "Panelhost/Bitmap.h"
#include "Panelhost/Clipboard.h"
#include "Panelhost/Devices.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Filters.h"
#include "Panelhost/Fonts.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/PropertyValues.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Requests.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "Panelhost/ValueRecord.h"
