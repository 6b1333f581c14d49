#pragma once

#include "Controls/drawing/Art.h"
#include "Panelhost/Bitmap.h"

#include <string>
#include <utility>

// The image of a control, the file name it was asked for by, and in which form it is there; keeps the
// registry's reference count right.
class BitmapProperty {
public:
    BitmapProperty() = default;
    ~BitmapProperty() { Release(); }
    BitmapProperty(const BitmapProperty&) = delete;
    BitmapProperty& operator=(const BitmapProperty&) = delete;

    // An empty name removes the image. False, and nothing changed, when the file holds no image.
    bool Load(const std::string& name, const Art& wanted = {}) {
        if (bitmap_ != nullptr && name == name_ && wanted == wanted_) {
            return true; // as in most panel files, which name the picture that a control starts with
        }
        return Take(name, wanted, false);
    }

    // The same, but the old image goes in any case: a file that holds none leaves the name without an image.
    bool Replace(const std::string& name, const Art& wanted = {}) {
        return Take(name, wanted, true) && (name.empty() || bitmap_ != nullptr);
    }

    const std::string& Name() const { return name_; }
    // Null when there is none.
    const OSMIRBitmap* Get() const { return bitmap_; }
    // The form that the image has.
    const Art& Taken() const { return taken_; }

private:
    bool Take(const std::string& name, const Art& wanted, bool evenNone) {
        std::string kept = name; // before anything is changed: there may be no memory for it
        Art keptWanted = wanted;
        Art taken;
        OSMIRBitmap* loaded = name.empty() ? nullptr : FindArt(name, wanted, taken);
        if (!name.empty() && loaded == nullptr && !evenNone) {
            return false;
        }
        Release();
        name_.swap(kept);
        wanted_ = std::move(keptWanted);
        taken_ = std::move(taken);
        bitmap_ = loaded;
        return true;
    }
    void Release() {
        if (bitmap_ != nullptr) {
            a_UnregisterBitmap(bitmap_);
        }
    }

    std::string name_;
    Art wanted_;
    Art taken_;
    OSMIRBitmap* bitmap_ = nullptr;
};
