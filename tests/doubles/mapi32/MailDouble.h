// How a test drives the double of mapi32.dll: mails that were sent, functions that fail or take their time.
#pragma once

#include "tests/doubles/ScriptedCalls.h"

#include <string>

class MailDouble : public ScriptedCalls {
public:
    // No mails, no sessions, every call succeeds at once.
    virtual void Reset() = 0;
    // Each as "to|copy|subject|text|file", with "; " between recipients; a line each.
    virtual std::string TakeMails() = 0;
    virtual int OpenSessions() = 0;
    virtual int NamesHeld() = 0; // that were handed out and not freed

protected:
    ~MailDouble() = default;
};

// Exported by the double, not by the system's own library.
extern "C" MailDouble* GetMailDouble();
