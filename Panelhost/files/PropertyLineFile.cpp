// Files of property lines for a single object.

#include "Panelhost/Hostinfo.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/Trace.h"
#include "Panelhost/files/LineFile.h"
#include "base/Guard.h"

namespace {

// A file can hold a line that loads a file.
constexpr int MAXIMUM_DEPTH = 4;
int depth = 0;

class Depth {
public:
    Depth() { ++depth; }
    ~Depth() { --depth; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
};

} // namespace

int a_LoadFile(HOSTINFO* object, const char* fullPath, WPARAM loadMode) {
    if (object == nullptr || fullPath == nullptr || depth >= MAXIMUM_DEPTH) {
        return -1;
    }
    return Guarded(-1, [&] {
        const Depth nested;
        LineFile file(fullPath);
        if (!file.IsOpen()) {
            return -1;
        }
        int taken = 0;
        std::string line;
        bool usable = false;
        while (file.Next(line, usable) && a_IsAlive(object)) {
            if (usable && (line.empty() || line.front() == '#')) {
                continue;
            }
            if (!usable) {
                EDITTRACE(object, "Error reading line %s", line.c_str());
                continue;
            }
            taken +=
                SendMessageA(object->window, CWM_LOAD, loadMode, reinterpret_cast<LPARAM>(line.c_str())) != 0
                    ? 1
                    : 0;
        }
        return file.HasFailed() ? -1 : taken;
    });
}
