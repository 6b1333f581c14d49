#pragma once

#include <windows.h>

#include <string>

// Tells the person at the screen or, in a run that ends by itself, whoever reads standard error.
class Reporter {
public:
    explicit Reporter(bool unattended) : unattended_(unattended) {}

    // A failure while the program starts or runs unattended: one line on standard error or, where there is
    // none, a message box.
    void Fail(const std::string& text) const;
    // A failure of something that was asked for at the owner window.
    void Warn(HWND owner, const std::string& text) const;
    // Yes, No or Cancel; an unattended run answers No.
    int Ask(HWND owner, const std::string& question) const;

private:
    bool unattended_;
};

// Writes to the inherited standard handle, else to the console of the calling program. False when there is
// neither.
bool WriteStandard(DWORD handle, const std::string& text);
