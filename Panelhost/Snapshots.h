#pragma once

#include "Panelhost/Api.h"

#include <list>
#include <string>

class HOSTINFO;

// Snapshots: what parameters of devices held at some time, kept in text files (docs/snapshots.md), and their
// recall. What a host written in C can do is in HostInterface.h.

struct SNAPSHOTVALUE {
    std::string address; // DEVICE*parameter
    std::string text;
};

struct SNAPSHOT {
    std::string panel, time, program; // of its head
    std::list<SNAPSHOTVALUE> values;
};

// What became of a value of the last recall.
constexpr int RECALL_UNDER_WAY = 1;
constexpr int RECALL_DONE = 2;      // the device holds it, or answers nothing by nature
constexpr int RECALL_FAILED = 3;    // why, stands beside it
constexpr int RECALL_STOPPED = 4;   // on its way
constexpr int RECALL_OVERTAKEN = 5; // somebody else has set it meanwhile

struct RECALLEDVALUE {
    std::string address;
    std::string text;
    int state = RECALL_UNDER_WAY;
    std::string why; // in words; empty when it is done
};

// False when the file is no snapshot, or cannot be read.
PANELHOST_API bool a_ReadSnapshot(const char* file, SNAPSHOT* snapshot);
// ph_RecallSnapshot of those values alone that have one of the addresses.
PANELHOST_API int a_RecallSnapshot(HOSTINFO* root, const char* file, const std::list<std::string>& addresses,
                                   int milliseconds);
// The values of the last recall, in the order of its file; those of earlier ones that were still on their way
// stand in front.
PANELHOST_API std::list<RECALLEDVALUE> a_ListRecall(HOSTINFO* root);

// How a value of a snapshot compares with what the device holds now.
constexpr int SNAPSHOT_EQUAL = 1;
constexpr int SNAPSHOT_DIFFERS = 2;
constexpr int SNAPSHOT_UNKNOWN = 3; // nobody knows what is held
// Receives what is held now as text, where that is known. Asking makes a parameter of a real device be read.
PANELHOST_API int a_CompareWithNow(HOSTINFO* root, const SNAPSHOTVALUE& value, std::string* now);

// The addresses of all device parameters that controls of the panel are bound to and a snapshot can hold, in
// the panel's order.
PANELHOST_API std::list<std::string> a_ListRecallable(HOSTINFO* root);

// Names of the snapshots beside the panel file, in alphabetical order.
PANELHOST_API std::list<std::string> a_ListSnapshots(HOSTINFO* root);
// The file of the snapshot of that name; empty when the name is none or the panel has no file.
PANELHOST_API std::string a_SnapshotFile(HOSTINFO* root, const char* name);
// The panel file that snapshots lie beside. ph_LoadPanel and ph_SavePanel say so by themselves; a host that
// fills a panel in another way does it by this.
PANELHOST_API void a_SetPanelFile(HOSTINFO* root, const char* file);
