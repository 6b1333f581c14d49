#pragma once

#include <windows.h>

#include <functional>
#include <ostream>
#include <set>
#include <string>

// What this process holds at the moment.
struct Resources {
    int objects; // HOSTINFO
    int bitmaps; // in the registry
    int fonts;   // in the cache
    int gdi;     // GDI objects
    int handles; // kernel handles
    int windows; // message-only ones included
    int threads;

    bool operator==(const Resources&) const = default;
    // The same, but with the handles of an earlier count when there are only a few more: the system opens one
    // of its own now and then, while a leak is one a round. To be compared after more rounds than that.
    Resources Settled(const Resources& earlier) const {
        Resources settled = *this;
        if (handles - earlier.handles < 5) {
            settled.handles = earlier.handles;
        }
        return settled;
    }
    // Less is no leak either: something that began before the earlier count may have ended since.
    bool IsAtMost(const Resources& earlier) const {
        return objects <= earlier.objects && bitmaps <= earlier.bitmaps && fonts <= earlier.fonts &&
               gdi <= earlier.gdi && handles <= earlier.handles && windows <= earlier.windows &&
               threads <= earlier.threads;
    }
    friend std::ostream& operator<<(std::ostream& out, const Resources& held) {
        return out << "objects " << held.objects << " bitmaps " << held.bitmaps << " fonts " << held.fonts
                   << " gdi " << held.gdi << " handles " << held.handles << " windows " << held.windows
                   << " threads " << held.threads;
    }
};

Resources CountResources();
std::set<DWORD> ListThreads(); // of this process
// Blocks on all heaps. Caches of the system let it vary a little.
int CountHeapBlocks();
// What is left behind by something that comes and goes that often: no text when it is nothing. The first
// times may fill caches.
std::string LeftBehind(int rounds, const std::function<void()>& live);
