#pragma once

#include "base/Sockets.h"

#include "base/Threads.h"

#include <memory>
#include <mutex>
#include <string>

// Looks the names of hosts up without being held up by a name server that does not answer: the system's
// look-up cannot be cut short, so it is done aside.
class PeerName {
public:
    // The host's name, or the dotted address when it has none, when it does not come in time or when the stop
    // event is signalled. While a look-up that came too late is still going on there is no further one.
    std::string Find(const in_addr& address, HANDLE stop) const;
    // Gives a look-up that is going on a moment to come to its end.
    void Settle() const;

private:
    struct LookUp {
        SharedLock lock;
        bool isGoingOn = false;
        std::string name; // empty: none
        Event isDone{Event::ManualReset};
    };

    const std::shared_ptr<LookUp> lookUp_ = std::make_shared<LookUp>();
};
