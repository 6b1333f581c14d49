#pragma once

#include <windows.h>

#include <string>

class StatusBar;

// While a large panel is loaded: shows in the status bar how far it is, and looks for Escape. Nothing is
// taken from the message queue meanwhile, so that nothing reaches a panel that is half there.
class LoadProgress {
public:
    static constexpr int LARGE =
        2000; // controls; a panel of so many or fewer is there before one could read it

    // The name is that of what is loaded.
    LoadProgress(HWND frame, StatusBar& status, std::string name, bool mayCancel);
    // Takes what is left of the Escape key out of the queue when it has cancelled the loading.
    ~LoadProgress();
    LoadProgress(const LoadProgress&) = delete;
    LoadProgress& operator=(const LoadProgress&) = delete;

    // For ph_SetLoadProgress, with the object as context.
    static int __cdecl Tell(int read, int total, void* context) noexcept;
    bool IsCancelled() const { return isCancelled_; }

private:
    bool GoesOn(int read, int total);
    void Begin();
    bool IsEscapePressed() const;

    HWND frame_;
    StatusBar& status_;
    std::string name_;
    bool mayCancel_;
    bool isShown_ = false;
    bool isCancelled_ = false;
};
