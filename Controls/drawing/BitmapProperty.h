#pragma once

#include "Panelhost/Bitmap.h"

#include <string>

// The image of a control and the file name it was asked for by; keeps the registry's reference count right.
class BitmapProperty {
public:
    BitmapProperty() = default;
    ~BitmapProperty() { Release(); }
    BitmapProperty(const BitmapProperty&) = delete;
    BitmapProperty& operator=(const BitmapProperty&) = delete;

    // An empty name removes the image. False, and nothing changed, when the file holds no image.
    bool Load(const std::string& name) {
        if (bitmap_ != nullptr && name == name_) {
            return true; // as in most panel files, which name the picture that a control starts with
        }
        std::string kept = name; // before anything is changed: there may be no memory for it
        OSMIRBitmap* loaded = name.empty() ? nullptr : a_GetBitmap(name.c_str());
        if (!name.empty() && loaded == nullptr) {
            return false;
        }
        Set(kept, loaded);
        return true;
    }

    // The same, but the old image goes in any case: a file that holds none leaves the name without an image.
    bool Replace(const std::string& name) {
        std::string kept = name;
        Set(kept, name.empty() ? nullptr : a_GetBitmap(name.c_str()));
        return name.empty() || bitmap_ != nullptr;
    }

    const std::string& Name() const { return name_; }
    // Null when there is none.
    const OSMIRBitmap* Get() const { return bitmap_; }

private:
    void Set(std::string& name, OSMIRBitmap* bitmap) {
        Release();
        name_.swap(name);
        bitmap_ = bitmap;
    }
    void Release() {
        if (bitmap_ != nullptr) {
            a_UnregisterBitmap(bitmap_);
        }
    }

    std::string name_;
    OSMIRBitmap* bitmap_ = nullptr;
};
