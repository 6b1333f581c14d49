#include "Controls/drawing/Art.h"

#include "Panelhost/Bitmap.h"

#include <initializer_list>

OSMIRBitmap* FindArt(const std::string& name, const Art& wanted, Art& taken) {
    const std::size_t begin = name.find_last_of("\\/:") + 1; // 0 where there is none
    const std::string folder = name.substr(0, begin);
    const std::string file = name.substr(begin);
    const std::string asPng = file.substr(0, file.rfind('.')) + ".png";
    const Art forms[] = {wanted, {100, wanted.variant}, {wanted.percent, ""}};
    for (const Art& form : forms) {
        if (form == Art{}) {
            continue;
        }
        std::string place = folder;
        place += form.variant.empty() ? "" : form.variant + "\\";
        place += form.percent == 100 ? "" : std::to_string(form.percent) + "\\";
        for (const std::string& candidate : {place + file, place + asPng}) {
            if (OSMIRBitmap* found = a_GetBitmap(candidate.c_str())) {
                taken = form;
                return found;
            }
        }
    }
    taken = {};
    return a_GetBitmap(name.c_str());
}
