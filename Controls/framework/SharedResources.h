#pragma once

#include <windows.h>

#include <memory>

struct ControlClass;

// What a class keeps for all its windows from its registration until the library is unloaded.
class SharedResources {
public:
    SharedResources() = default;
    virtual ~SharedResources() = default;
    SharedResources(const SharedResources&) = delete;
    SharedResources& operator=(const SharedResources&) = delete;
};

// A tooltip window.
class SharedTooltip : public SharedResources {
public:
    SharedTooltip(DWORD style, HINSTANCE module);
    ~SharedTooltip() override;

    HWND Window() const { return window_; } // null when there is none

private:
    HWND window_;
};

// The picture that the row of the class names.
class SharedPicture : public SharedResources {
public:
    explicit SharedPicture(const ControlClass& controlClass);
    ~SharedPicture() override;

    HBITMAP Get() const { return bitmap_; } // null when it could not be loaded

private:
    HBITMAP bitmap_;
};

// The picture of a class; null without one.
HBITMAP PictureOf(const ControlClass& controlClass);

// For the implementations of classes.
std::unique_ptr<SharedResources> ShareTooltip(const ControlClass& controlClass, HINSTANCE module);
std::unique_ptr<SharedResources> SharePopupTooltip(const ControlClass& controlClass, HINSTANCE module);
template <class Picture = SharedPicture>
std::unique_ptr<SharedResources> SharePicture(const ControlClass& controlClass, HINSTANCE) {
    return std::make_unique<Picture>(controlClass);
}
