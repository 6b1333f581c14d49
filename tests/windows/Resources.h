#pragma once

#include <ostream>

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
    friend std::ostream& operator<<(std::ostream& out, const Resources& held) {
        return out << "objects " << held.objects << " bitmaps " << held.bitmaps << " fonts " << held.fonts
                   << " gdi " << held.gdi << " handles " << held.handles << " windows " << held.windows
                   << " threads " << held.threads;
    }
};

Resources CountResources();
// Blocks on all heaps. Caches of the system let it vary a little.
int CountHeapBlocks();
