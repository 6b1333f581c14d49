#include "Controls/interfaces/network/PeerName.h"

namespace {

constexpr DWORD PATIENCE = 1000;    // milliseconds that a name is waited for
constexpr DWORD SETTLING_TIME = 50; // milliseconds that a look-up gets at the end

std::string LookUpName(const in_addr& address) {
    const hostent* found = gethostbyaddr(reinterpret_cast<const char*>(&address), sizeof address, AF_INET);
    return found == nullptr || found->h_name == nullptr ? "" : found->h_name;
}

} // namespace

std::string PeerName::Find(const in_addr& address, HANDLE stop) const {
    std::string dotted = inet_ntoa(address);
    {
        const std::lock_guard guard(lookUp_->lock);
        if (lookUp_->isGoingOn) {
            return dotted;
        }
        lookUp_->isDone.Reset();
        lookUp_->isGoingOn = RunAside([lookUp = lookUp_, address] {
            const std::string name = LookUpName(address);
            const std::lock_guard done(lookUp->lock);
            lookUp->name = name;
            lookUp->isGoingOn = false;
            lookUp->isDone.Set();
        });
        if (!lookUp_->isGoingOn) {
            return dotted;
        }
    }
    const HANDLE handles[] = {lookUp_->isDone.Get(), stop};
    if (WaitForMultipleObjects(2, handles, FALSE, PATIENCE) != WAIT_OBJECT_0) {
        return dotted;
    }
    const std::lock_guard guard(lookUp_->lock);
    return lookUp_->name.empty() ? dotted : lookUp_->name;
}

void PeerName::Settle() const {
    bool isGoingOn = false;
    {
        const std::lock_guard guard(lookUp_->lock);
        isGoingOn = lookUp_->isGoingOn;
    }
    if (isGoingOn) {
        WaitForSingleObject(lookUp_->isDone.Get(), SETTLING_TIME);
    }
}
