// The window classes that libraries of controls have registered.

#include "Panelhost/objects/ControlClasses.h"

#include "Panelhost/HostInterface.h"
#include "base/Guard.h"
#include "base/SharedLock.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace {

constexpr std::size_t LONGEST_NAME = 64; // of a class in a panel file

// A description with the texts that it points to.
class Description {
public:
    explicit Description(const PH_CONTROLCLASS& from) : told_(from) {
        std::size_t next = 0;
        for (const char** text :
             {&told_.windowClass, &told_.systemClass, &told_.purpose, &told_.name, &told_.letters}) {
            if (*text != nullptr) {
                texts_[next] = *text;
                *text = texts_[next++].c_str();
            }
        }
    }
    Description(const Description&) = delete;
    Description& operator=(const Description&) = delete;

    const PH_CONTROLCLASS& Told() const { return told_; }

private:
    PH_CONTROLCLASS told_;
    std::string texts_[5];
};

struct Registered {
    int count = 0; // how often it is registered
    std::unique_ptr<const Description> description;
};

struct ControlClasses {
    SharedLock lock;
    std::unordered_map<std::string, Registered> known; // by folded name

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
    return classes.known.contains(name);
}

int ph_RegisterControlClass(const char* windowClass) noexcept {
    return Guarded(0, [&] {
        const std::string name = logic::FoldName(windowClass == nullptr ? "" : windowClass);
        if (name.empty() || name.size() > LONGEST_NAME) {
            return 0;
        }
        ControlClasses& classes = ControlClasses::Get();
        const SharedLock::Writing writing(classes.lock);
        ++classes.known[name].count;
        return 1;
    });
}

int ph_UnregisterControlClass(const char* windowClass) noexcept {
    return Guarded(0, [&] {
        const std::string name = logic::FoldName(windowClass == nullptr ? "" : windowClass);
        ControlClasses& classes = ControlClasses::Get();
        const SharedLock::Writing writing(classes.lock);
        const auto known = classes.known.find(name);
        if (known == classes.known.end()) {
            return 0;
        }
        if (--known->second.count == 0) {
            classes.known.erase(known);
        }
        return 1;
    });
}

int ph_DescribeControlClass(const PH_CONTROLCLASS* controlClass) noexcept {
    return Guarded(0, [&] {
        if (controlClass == nullptr || controlClass->windowClass == nullptr || controlClass->group < 0 ||
            controlClass->group >= PH_GROUPS) {
            return 0;
        }
        auto description = std::make_unique<const Description>(*controlClass);
        ControlClasses& classes = ControlClasses::Get();
        const SharedLock::Writing writing(classes.lock);
        const auto known = classes.known.find(logic::FoldName(controlClass->windowClass));
        if (known == classes.known.end()) {
            return 0;
        }
        if (known->second.description == nullptr) {
            known->second.description = std::move(description);
        }
        return 1;
    });
}

int ph_ListControlClasses(void (*each)(const PH_CONTROLCLASS* controlClass, void* context),
                          void* context) noexcept {
    return Guarded(0, [&] {
        std::vector<const PH_CONTROLCLASS*> all;
        {
            ControlClasses& classes = ControlClasses::Get();
            const SharedLock::Reading reading(classes.lock);
            for (const auto& [name, registered] : classes.known) {
                if (registered.description != nullptr) {
                    all.push_back(&registered.description->Told());
                }
            }
        }
        std::sort(all.begin(), all.end(), [](const PH_CONTROLCLASS* one, const PH_CONTROLCLASS* other) {
            return std::tuple(one->group, one->position, std::string_view(one->windowClass)) <
                   std::tuple(other->group, other->position, std::string_view(other->windowClass));
        });
        for (const PH_CONTROLCLASS* controlClass : all) {
            if (each != nullptr) {
                each(controlClass, context);
            }
        }
        return static_cast<int>(all.size());
    });
}
