// MINIDELAY: a small view of a delay block.

#include "Controls/families/PlainControl.h"
#include "Controls/resources/resource.h"
#include "base/Gdi.h"

namespace {

// The picture and the two lamps of the view.
class DelayPictures : public SharedPicture {
public:
    DelayPictures(const ControlClass& controlClass, HINSTANCE module)
        : SharedPicture(controlClass),
          lit_(LoadBitmapA(module, MAKEINTRESOURCEA(IDB_DELAY_ON))),
          dark_(LoadBitmapA(module, MAKEINTRESOURCEA(IDB_DELAY_OFF))) {}

private:
    const Bitmap lit_;
    const Bitmap dark_;
};

std::unique_ptr<SharedResources> Share(const ControlClass& controlClass, HINSTANCE module) {
    return std::make_unique<DelayPictures>(controlClass, module);
}

} // namespace

extern const ControlImplementation miniDelayControl{
    .create = CreateMiniView, .procedure = CommonProc, .purpose = "Small view of a delay.", .share = Share};
