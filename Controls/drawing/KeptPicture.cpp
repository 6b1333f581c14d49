#include "Controls/drawing/KeptPicture.h"

#include "base/Gdi.h"

#include <algorithm>

const OSMIRBitmap* KeptPicture::Get(int width, int height, const Render& render) {
    constexpr int LARGEST = 1 << 20; // pixels
    if (width <= 0 || height <= 0 || height > LARGEST / width) {
        return nullptr;
    }
    if (picture_ == nullptr || picture_->Width() != width || picture_->Height() != height) {
        picture_.reset();
        Bitmap bitmap(CreatePixels(width, height, &pixels_));
        if (bitmap == nullptr) {
            return nullptr;
        }
        picture_ = std::make_unique<OSMIRBitmap>(bitmap.get(), width, height, isTransparent_);
        (void)bitmap.release();
        isDrawn_ = false;
    }
    if (!isDrawn_) {
        GdiFlush();
        if (!isAllPainted_) {
            std::fill(pixels_, pixels_ + width * height, 0);
        }
        render(picture_->Dc(), pixels_);
        isDrawn_ = true;
    }
    return picture_.get();
}

void KeptPicture::Update(int width, int height, const Render& render) {
    if (isDrawn_ && picture_ != nullptr && picture_->Width() == width && picture_->Height() == height) {
        GdiFlush();
        render(picture_->Dc(), pixels_);
    }
}
