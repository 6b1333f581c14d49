// What a panel file says of its panel, before it is loaded.

#include "Panelhost/Root.h"
#include "Panelhost/files/LineFile.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

namespace {

std::string RootValueIn(LineSource& source, const char* keyword) {
    std::string value;
    std::string line;
    bool usable = false;
    while (source.Next(line, usable)) {
        const logic::PropertyLine parts = logic::SplitPropertyLine(line);
        if (usable && parts.hasEquals && parts.object.empty() && parts.keyword == keyword) {
            value = parts.value;
        }
    }
    return value;
}

} // namespace

std::string a_RootValueOf(const char* panelFile, const char* keyword) {
    return Guarded(std::string(), [&] {
        LineFile file(panelFile);
        return file.IsOpen() ? RootValueIn(file, keyword) : std::string();
    });
}

std::string a_RootValueIn(std::string_view text, const char* keyword) {
    return Guarded(std::string(), [&] {
        LineText source(text, "");
        return RootValueIn(source, keyword);
    });
}
