// The clipboard format of values.

#include "Panelhost/Clipboard.h"

#include "base/Guard.h"

#include <string>

UINT a_GetClipboardFormat(const char* kind) {
    return kind == nullptr ? 0 : Guarded(0U, [&] {
        return RegisterClipboardFormatA((std::string("OSMIR ") + kind).c_str());
    });
}
