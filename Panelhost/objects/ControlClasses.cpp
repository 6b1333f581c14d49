// The window classes that libraries of controls have registered.

#include "Panelhost/objects/ControlClasses.h"

#include "Panelhost/HostInterface.h"
#include "base/Guard.h"
#include "base/SharedLock.h"
#include "logic/text/PropertyLine.h"

#include <unordered_map>

namespace {

constexpr std::size_t LONGEST_NAME = 64; // of a class in a panel file

struct ControlClasses {
    SharedLock lock;
    std::unordered_map<std::string, int> counts; // folded name: how often it is registered

    static ControlClasses& Get() {
        static ControlClasses classes;
        return classes;
    }
};

} // namespace

bool IsControlClass(const std::string& windowClass) {
    const std::string name = logic::FoldName(windowClass);
    ControlClasses& classes = ControlClasses::Get();
    const SharedLock::Reading reading(classes.lock);
    return classes.counts.contains(name);
}

int ph_RegisterControlClass(const char* windowClass) noexcept {
    return Guarded(0, [&] {
        const std::string name = logic::FoldName(windowClass == nullptr ? "" : windowClass);
        if (name.empty() || name.size() > LONGEST_NAME) {
            return 0;
        }
        ControlClasses& classes = ControlClasses::Get();
        const SharedLock::Writing writing(classes.lock);
        ++classes.counts[name];
        return 1;
    });
}

int ph_UnregisterControlClass(const char* windowClass) noexcept {
    return Guarded(0, [&] {
        const std::string name = logic::FoldName(windowClass == nullptr ? "" : windowClass);
        ControlClasses& classes = ControlClasses::Get();
        const SharedLock::Writing writing(classes.lock);
        const auto known = classes.counts.find(name);
        if (known == classes.counts.end()) {
            return 0;
        }
        if (--known->second == 0) {
            classes.counts.erase(known);
        }
        return 1;
    });
}
