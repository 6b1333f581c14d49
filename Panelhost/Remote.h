#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/ValueRecord.h"

#include <string_view>

class HOSTINFO;

// While it lives, what is set on this thread comes from another machine, such as a terminal, which may not
// set everything: keywords whose rows say so are refused, with a line in the edit trace. It counts for the
// object that is reached first. What that one passes on by its connections, or does in any other way, is the
// panel's.
class PANELHOST_API RemoteSetting {
public:
    explicit RemoteSetting(bool isRemote = true);
    ~RemoteSetting();
    RemoteSetting(const RemoteSetting&) = delete;
    RemoteSetting& operator=(const RemoteSetting&) = delete;

private:
    bool outer_;
};

PANELHOST_API bool a_IsRemote();

// Whether another machine may set a keyword, given by its row of the object's table, to that text, by what
// the flags of the row say. A binding or a click may not name a keyword that any object of the panel keeps to
// itself, except with a value that may be set. The edit trace of the panel says why not. Asked by
// a_IsPropertyValue while a_IsRemote.
PANELHOST_API bool a_MayBeSetRemotely(const HOSTINFO* object, const KEYWORDROW* table, int row,
                                      std::string_view text);

// Whether the panel above the object lets a terminal on the network connect from an IPv4 address, the first
// byte of the dotted form highest: root keyword `terminal`. True without a panel.
PANELHOST_API bool a_MayConnect(const HOSTINFO* object, unsigned long address);
