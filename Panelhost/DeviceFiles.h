#pragma once

#include "Panelhost/Api.h"

#include <cstddef>
#include <list>
#include <string>
#include <string_view>

class HOSTINFO;

// What a program that writes device files needs. ph_LoadDevices and ph_ReloadDevices read them.

struct DEVICELINEFAULT {
    std::size_t line; // from 1 on
    std::string text; // of it
    std::string why;  // "no device AMP2 is declared above this line"
};
// The lines of a text that ph_ReloadDevices would refuse if the file held it. Names that others on the panel
// have are taken; a root of null has none. The file, which need not be there, says where profiles lie beside
// it. Nothing is declared or sent.
PANELHOST_API std::list<DEVICELINEFAULT> a_CheckDeviceText(HOSTINFO* root, const char* file,
                                                           std::string_view text);

// A kind of device that files can declare.
struct DEVICEKINDINFO {
    std::string word;  // NAME*device=word
    std::string title; // for people
    // Lines of a first device of the kind, without "NAME*" in front and with "\n" behind each. "{address}",
    // "{port}" and "{profile}" stand for what its user has to say.
    std::string example;
};
PANELHOST_API std::list<DEVICEKINDINFO> a_ListDeviceKinds();

// A description of devices of a kind that lies beside a device file, or with the program.
struct DEVICEPROFILE {
    std::string name;  // without its extension, as device lines have it
    std::string title; // empty where it has none
    int port = 0;      // 0 when it names none
};
PANELHOST_API std::list<DEVICEPROFILE> a_ListProfiles(const char* kind, const char* file);

// The text takes the place of what the file held, all of it or nothing. 0, or the system's reason with the
// file as it was.
PANELHOST_API unsigned long a_ReplaceFile(const char* file, std::string_view text);
