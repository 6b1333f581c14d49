#include "Panelhost/BindingList.h"

#include "Panelhost/bindings/AddressKeywords.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Panelhost/objects/RequestAddress.h"
#include "base/Guard.h"
#include "logic/text/NamePattern.h"
#include "logic/text/PropertyLine.h"

#include <cstring>

namespace {

using logic::AddressForm;

std::string Replaced(std::string text, std::string_view insertion, const std::string& by) {
    for (auto place = text.find(insertion); place != std::string::npos;
         place = text.find(insertion, place + by.size())) {
        text.replace(place, insertion.size(), by);
    }
    return text;
}

// An object as clicks and mails look for it: among those of the same parent first.
HOSTINFO* FindNear(PanelRoot& root, const HOSTINFO* object, const std::string& name) {
    const HOSTINFO* parent = object->parent;
    HOSTINFO* found = parent == nullptr || parent == &root ? nullptr : root.Find(parent->name + "*" + name);
    return found == nullptr ? root.Find(name) : found;
}

ADDRESSED FindOfLine(PanelRoot& root, const HOSTINFO* object, const std::string& address) {
    const auto star = address.rfind('*');
    return {FindNear(root, object, address.substr(0, star)), address.substr(star + 1)};
}

ADDRESSED FindInserted(PanelRoot& root, const HOSTINFO* object, const std::string& address) {
    if (HOSTINFO* found = FindNear(root, object, address); found != nullptr) {
        return {found};
    }
    return address.find('*') == std::string::npos ? ADDRESSED{} : FindOfLine(root, object, address);
}

// The default value, or a keyword that the object knows.
bool Knows(HOSTINFO* object, const std::string& keyword) {
    if (keyword.empty() || keyword == " ") {
        return true;
    }
    if (object->HasHostinfoTable() != 0 && object->GetHostinfoTable() != nullptr) {
        return a_FindKeyword(object->GetHostinfoTable(), keyword.c_str()) > 0;
    }
    VALUERECORD query = VALUERECORD::Resolve(keyword.c_str());
    SendMessageA(object->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&query));
    return query.index != 0;
}

// How many numbers a pattern is written for.
int CountOf(HOSTINFO* object, const char* keyword) {
    int count = 0;
    if (*keyword != '\0') {
        VALUERECORD record = VALUERECORD::Get(DATATYPE_INTEGER, &count).Named(keyword);
        SendMessageA(object->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    }
    return count;
}

std::vector<std::string> AddressesOfPattern(HOSTINFO* object, const KEYWORDROW* row,
                                            const std::string& pattern) {
    const KEYWORDINFO* infos = object->GetKeywordInfo();
    if (infos == nullptr) {
        return {pattern};
    }
    const KEYWORDINFO& info = infos[row - object->GetHostinfoTable()];
    return logic::ExpandPatterns(pattern, CountOf(object, info.inputs), CountOf(object, info.outputs));
}

class Resolver {
public:
    Resolver(PanelRoot& root, std::vector<BINDING>& bindings) : root_(root), bindings_(bindings) {}

    void Resolve(HOSTINFO* object, const KEYWORDROW* row, AddressForm form, const std::string& address) {
        switch (form) {
        case AddressForm::Pattern:
            for (const std::string& one : AddressesOfPattern(object, row, address)) {
                Take(object, row, form, ExpandAddress(one, object));
            }
            break;
        case AddressForm::Line:
            ResolveLine(object, row, address);
            break;
        case AddressForm::Inserted:
            Take(object, row, form, address);
            break;
        default:
            Take(object, row, form, ExpandAddress(address, object));
            break;
        }
    }

    // Of a line that names no object: a keyword of the panel where that knows it, else of all that the
    // control is connected to.
    void ResolveOwnLine(HOSTINFO* object, const KEYWORDROW* row, const std::string& text) {
        const logic::PropertyLine line = logic::SplitPropertyLine(text);
        const std::string keyword(line.keyword);
        if (!line.object.empty() || keyword.empty()) {
            return;
        }
        const bool isFixed = keyword.find('%') == std::string::npos;
        if (!isFixed || Knows(&root_, keyword) || object->connections.empty()) {
            const int state = !isFixed                 ? PARAMETER_UNKNOWN
                              : Knows(&root_, keyword) ? PARAMETER_LIVE
                                                       : ADDRESS_NO_KEYWORD;
            bindings_.push_back({object, row, "*" + keyword, &root_, keyword, state});
            return;
        }
        for (const std::string& connection : object->connections) {
            const std::string address = ExpandAddress(connection, object);
            HOSTINFO* target = FindAddressed(root_, address).object;
            const int state = target == nullptr        ? ADDRESS_NO_CONTROL
                              : Knows(target, keyword) ? PARAMETER_LIVE
                                                       : ADDRESS_NO_KEYWORD;
            bindings_.push_back({object, row, (target == nullptr ? address : target->name) + "*" + keyword,
                                 target, keyword, state});
        }
    }

private:
    // "%c" of a line stands for the connections, "%n" for the control itself.
    void ResolveLine(HOSTINFO* object, const KEYWORDROW* row, const std::string& address) {
        std::string line = address;
        if (line.find('%') != std::string::npos) {
            line = Replaced(Replaced(std::move(line), "%c", a_BuildString(object->connections)), "%n",
                            object->name);
        }
        Take(object, row, AddressForm::Line, line);
    }

    void Take(HOSTINFO* object, const KEYWORDROW* row, AddressForm form, const std::string& address) {
        BINDING& binding = bindings_.emplace_back();
        binding.object = object;
        binding.row = row;
        binding.address = address;
        if (form == AddressForm::Line && address.find('%') != std::string::npos) {
            binding.state = PARAMETER_UNKNOWN; // it is another one for each that is clicked
            return;
        }
        ADDRESSED found = form == AddressForm::Line       ? FindOfLine(root_, object, address)
                          : form == AddressForm::Inserted ? FindInserted(root_, object, address)
                                                          : FindAddressed(root_, address);
        if (found.object == nullptr) {
            const bool isFunction = form == AddressForm::Functions || form == AddressForm::Pattern;
            binding.state = isFunction ? PARAMETER_NONE : ADDRESS_NO_CONTROL;
            return;
        }
        binding.target = found.object;
        binding.keyword = found.keyword.value_or("");
        if (found.object->kind != KIND_DEVICE) {
            binding.state = Knows(found.object, binding.keyword) ? PARAMETER_LIVE : ADDRESS_NO_KEYWORD;
        } else {
            a_RefreshBinding(&binding);
        }
    }

    PanelRoot& root_;
    std::vector<BINDING>& bindings_;
};

} // namespace

std::vector<BINDING> a_ListBindings(HOSTINFO* root) {
    return Guarded(std::vector<BINDING>(), [&] {
        std::vector<BINDING> bindings;
        PanelRoot* panel = PanelRoot::From(root);
        if (panel == nullptr) {
            return bindings;
        }
        Resolver resolver(*panel, bindings);
        for (const ADDRESSTEXT& text : TextsThatBind(*panel)) {
            if (text.form == AddressForm::Line) {
                resolver.ResolveOwnLine(text.object, text.row, text.text);
            }
            for (const logic::AddressPlace& place : text.addresses) {
                resolver.Resolve(text.object, text.row, place.form, std::string(place.In(text.text)));
            }
        }
        return bindings;
    });
}

std::vector<BINDING> a_ResolveAddress(const ADDRESSTEXT& text, AddressForm form, const std::string& address) {
    return Guarded(std::vector<BINDING>(), [&] {
        std::vector<BINDING> bindings;
        PanelRoot* panel = a_IsAlive(text.object) ? PanelRoot::Above(text.object) : nullptr;
        if (panel != nullptr) {
            Resolver(*panel, bindings).Resolve(text.object, text.row, form, address);
        }
        return bindings;
    });
}

unsigned a_BindingsVersion(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? 0 : panel->AddressVersion();
}

void a_RefreshBinding(BINDING* binding) {
    if (binding->target == nullptr || binding->target->kind != KIND_DEVICE) {
        return; // as it was found
    }
    auto* device = dynamic_cast<DEVICE*>(binding->target);
    Guarded([&] {
        binding->age = NO_AGE;
        binding->state = device == nullptr
                             ? PARAMETER_NONE
                             : device->OnParameterState(binding->keyword.c_str(), &binding->age);
    });
}

std::string a_BindingValue(const BINDING& binding) {
    return Guarded(std::string(), [&] {
        std::string value;
        if (!a_IsAlive(binding.target) || binding.state == ADDRESS_NO_KEYWORD) {
            return value;
        }
        if (auto* device = dynamic_cast<DEVICE*>(binding.target); device != nullptr) {
            return device->OnLastValue(binding.keyword.c_str(), &value) == 0 ? std::string() : value;
        }
        char text[TEXT_SIZE] = "";
        VALUERECORD record = VALUERECORD::GetText(text);
        if (!binding.keyword.empty()) {
            record.name = binding.keyword.c_str();
        }
        SendMessageA(binding.target->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
        text[TEXT_SIZE - 1] = '\0';
        return std::string(text);
    });
}

const char* a_StateName(int state) {
    constexpr const char* names[] = {"no such parameter",
                                     "no value yet",
                                     "pending",
                                     "live",
                                     "not confirmed",
                                     "does not answer",
                                     "lost",
                                     "switched off",
                                     "something else answers",
                                     "sent",
                                     "no such keyword",
                                     "no such control"};
    return state >= 0 && state < static_cast<int>(std::size(names)) ? names[state] : "";
}
