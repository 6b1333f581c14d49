#pragma once

#include "base/SharedLock.h"

#include <windows.h>

#include <mapi.h>
#include <memory>
#include <string>
#include <vector>

// Mails go out one after the other on one thread for the whole process: a call of the mail library that hangs
// delays the mails behind it and nothing else.

// Those that are used of the mail library; null where it has none.
struct MailFunctions {
    LPMAPILOGON logon = nullptr;
    LPMAPILOGOFF logoff = nullptr;
    LPMAPISENDMAIL sendMail = nullptr;
    LPMAPIRESOLVENAME resolveName = nullptr;
    LPMAPIFREEBUFFER freeBuffer = nullptr;
};

// What has become of the newest mail of somebody, in words. From any thread.
class MailStatus {
public:
    void Set(const std::string& words);
    std::string Get() const;

private:
    mutable SharedLock lock_;
    std::string words_;
};

struct Mail {
    std::string sender; // who tells of it in the trace
    MailFunctions functions;
    std::vector<std::string> to; // addresses, or names that the mail library knows
    std::vector<std::string> copy;
    std::string subject;
    std::string text; // lines end with "\n"
    std::string file; // full path of the attachment; empty for none
    std::shared_ptr<MailStatus> status;
};

// Has it sent in its turn. Empty, or why not, in words.
std::string QueueMail(Mail mail);
