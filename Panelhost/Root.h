#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/Hostinfo.h"

#include <string>
#include <string_view>

class cPanelBackground;

// What a host written in C++ can ask of a root beyond HostInterface.h.
// Keywords of the root itself, read and set through its panel window with CWM_MESSAGE or by lines without an
// object in a panel file; saved at the head of the file unless they say what a panel is without them:
//   background    colour "0x00bbggrr" or image file, repeated over the panel
//   layer         active layers ("u1,u5"), empty for all
//   layernames    what people call layers ("u1=Mix;u2=EQ")
//   page          number of the only active layer, 0 for all or several (not saved)
//   onopen        "follow" when a panel file that is opened moves no device, "send" when the values saved in
//                 it go to the devices
//   lock          what a PIN is recognised by (Operating.h); never answered
//   terminal      IPv4 networks that terminals may connect from ("192.168.0.0/16,10.1.2.3"), "none" for
//                 nobody, empty for all
//   size          "width,height" of the panel in pixels, for the host to follow
//   artscale      size of the controls' pictures in percent: "100", "150" or "200"
//   devices       the device file, for the host to follow; empty for the one beside the panel
//   ground        "graphite", "brushed" or "night": what is drawn behind the controls while there is no
//                 background
//   style         "dark" when what draws itself in colours of its own does so in those of the dark panels,
//                 "classic" when it does not
//   title         title of the panel
//   bandwidth     "bw" when equaliser bands show bandwidth in place of Q, else empty
//   parameterdlg  name of the control whose parameter dialog is open (not saved)

// What the lines of a panel file, or of a text of one, say of a keyword of the root; empty when they say
// nothing. Nothing is loaded.
PANELHOST_API std::string a_RootValueOf(const char* panelFile, const char* keyword);
PANELHOST_API std::string a_RootValueIn(std::string_view text, const char* keyword);

// What the panel asks of its controls: the value of a keyword of the root above the object, as 1 when it is
// set and 0 when it is empty. Returns 1; 0 with the value untouched when there is no root or no such keyword.
PANELHOST_API int a_Request(HOSTINFO* object, const char* keyword, int* value);

// Whether the panel above the object has the style "dark"; not without a panel. OnSystem tells of a change.
PANELHOST_API bool a_IsDark(const HOSTINFO* object);

// The size in percent (100, 150 or 200) of the art that the panel above the object wants, for the panel
// and for what stands on it; 100 for the parts of others, whose places are fixed, and without a panel.
// OnSystem tells of a change.
PANELHOST_API int a_ArtScale(const HOSTINFO* object);

// The value of the control has changed by its user or by what set it: those that are bound to it ask at the
// next tick, however long their interval is. A request that is sent says so by itself.
PANELHOST_API void a_LetBoundAsk(const HOSTINFO* control);

// Layers whose controls are shown while the panel of the root is edited, as bits; 0: all of them. Not saved.
PANELHOST_API std::uint64_t a_GetEditedLayers(HOSTINFO* root);
PANELHOST_API void a_SetEditedLayers(HOSTINFO* root, std::uint64_t layers);

// Whether a property of the root or of one of its objects was changed since it was loaded or saved.
PANELHOST_API bool a_IsChanged(HOSTINFO* root);
PANELHOST_API void a_SetChanged(HOSTINFO* root, bool changed);
// Number of lines that the last ph_LoadPanel, ph_LoadDevices or ph_ReloadDevices of this root could not
// apply.
PANELHOST_API int a_LoadErrorCount(HOSTINFO* root);
// Whether a panel file, or text of one, is being loaded into the root above the object: what is asked of
// devices meanwhile is not sent.
PANELHOST_API bool a_IsLoading(const HOSTINFO* object);
// The root's background; null for a null root.
PANELHOST_API const cPanelBackground* a_GetBackground(HOSTINFO* root);
