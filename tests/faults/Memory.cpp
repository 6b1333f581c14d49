// Memory that runs out at any moment: what is done then fails or succeeds as a whole, and the next works.

#include "Panelhost/Editing.h"
#include "tests/faults/Scenery.h"
#include "tests/windows/ImportHook.h"

#include <functional>

namespace {

DWORD failingThread = 0;
int left = 0;    // allocations that still succeed
int failing = 0; // those that fail then

// Of the two libraries only, and on this thread: the system and the compiler's runtime for other threads
// cannot do without. Nor can the runtime where a static of a function is made, for which it alone uses
// calloc.
bool Fails() {
    return GetCurrentThreadId() == failingThread && left-- <= 0 && failing-- > 0;
}

void* Allocate(std::size_t size) {
    return Fails() ? nullptr : std::malloc(size);
}
void* Reallocate(void* block, std::size_t size) {
    return Fails() ? nullptr : std::realloc(block, size);
}

class Shortage {
public:
    Shortage(int succeeding, int count) {
        left = succeeding;
        failing = count;
        failingThread = GetCurrentThreadId();
    }
    ~Shortage() { failingThread = 0; }

private:
    ImportHook hostAllocates_{"Panelhost.dll", "malloc", Allocate};
    ImportHook hostReallocates_{"Panelhost.dll", "realloc", Reallocate};
    ImportHook controlsAllocate_{CONTROL_LIBRARY, "malloc", Allocate};
    ImportHook controlsReallocate_{CONTROL_LIBRARY, "realloc", Reallocate};
};

// The first exceptions for want of memory that a library throws take a little memory themselves, once and for
// all: that of the compiler's runtime.
void PrepareRuntime(const std::string& path) {
    static bool isPrepared = false;
    if (!std::exchange(isPrepared, true)) {
        const TestPanel panel;
        constexpr int VALUE_AND_EXCEPTION = 2;
        for (int succeeding = 0; succeeding < 10; ++succeeding) {
            Doing("prepare the runtime");
            const Shortage shortage(succeeding, VALUE_AND_EXCEPTION);
            panel.Create("KNOB", "Prepared");
        }
        const Shortage shortage(0, VALUE_AND_EXCEPTION);
        ph_SavePanel(panel.Root(), path.c_str());
    }
}

void Round(Random& random, int) {
    const TestFolder folder;
    const std::string path = folder.Path("memory.panel");
    PrepareRuntime(path);
    const Scenery scenery(random, 4);
    HOSTINFO* root = scenery.panel.Root();
    ph_SavePanel(root, path.c_str());
    for (int i = 0; i < 12; ++i) {
        HWND control = scenery.Control(random);
        const std::string line = Scenery::Line(random, control);
        const char* className = random.Pick(EXPECTED_CLASSES).name;
        const std::string before = ReadBytes(path);
        int saved = 1;
        const std::function<void()> operations[] = {
            [&] { scenery.panel.Create(className, "New"); },
            [&] { Load(control, line); },
            [&] { saved = ph_SavePanel(root, path.c_str()); },
            [&] { const Picture picture(control); },
            [&] { SendMessageA(control, CWM_PARAMETERDLG, 0, 0); },
            [&] { SendMessageA(control, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT | MK_CONTROL, 0); },
            [&] { a_LoadText(root, before.substr(before.find("control=")), "memory"); },
            [&] {
                ph_Tick(root);
                SetValue(control, static_cast<float>(i));
            }};
        constexpr int SAVE = 2;
        const int operation = random.Below(std::size(operations));
        const int succeeding = random.Below(random.OneIn(2) ? 6 : 80);
        const int count = random.OneIn(3) ? 1 + random.Below(1000) : 1;
        Doing("operation %d of %s with %s, %s, after %d allocations %d fail", operation,
              Described(control).c_str(), Shown(line, 60).c_str(), className, succeeding, count);
        {
            const Shortage shortage(succeeding, count);
            operations[operation]();
        }
        Expect(saved == 1 || ReadBytes(path) == before, "a file that could not be saved has changed");
        PumpAll();
        if (operation == SAVE) {
            const std::string now = ReadBytes(path);
            Expect(ph_SavePanel(root, path.c_str()) == 1, "saving does not work afterwards");
            Expect(saved == 0 || ReadBytes(path) == now, "a save without memory counts as one, but has gaps");
        }
    }
    Doing("work on");
    HWND knob = scenery.panel.Create("KNOB", "Last");
    Expect(knob != nullptr && SetValue(knob, 3.0F) == 1 && Value(knob) == 3.0F, "no knob works afterwards");
    Doing("close the panel");
}

} // namespace

const Topic memoryTopic{"memory", Round};
