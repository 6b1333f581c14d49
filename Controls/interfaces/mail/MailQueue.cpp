#include "Controls/interfaces/mail/MailQueue.h"

#include "Panelhost/Trace.h"
#include "base/Threads.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <utility>

namespace {

constexpr std::size_t LONGEST_QUEUE = 16;

SharedLock queueLock;
std::deque<Mail> queue; // that wait
bool isServed = false;  // there is a thread that takes them

std::string ErrorText(ULONG error) {
    switch (error) {
    case MAPI_E_USER_ABORT:
        return "it was cancelled";
    case MAPI_E_LOGIN_FAILURE:
        return "there is no mail profile that can be used";
    case MAPI_E_DISK_FULL:
        return "the disk is full";
    case MAPI_E_INSUFFICIENT_MEMORY:
        return "there is not enough memory";
    case MAPI_E_ATTACHMENT_NOT_FOUND:
    case MAPI_E_ATTACHMENT_OPEN_FAILURE:
        return "the attachment cannot be read";
    case MAPI_E_UNKNOWN_RECIPIENT:
    case MAPI_E_BAD_RECIPTYPE:
    case MAPI_E_INVALID_RECIPS:
    case MAPI_E_AMBIG_RECIP:
        return "a recipient was refused";
    case MAPI_E_NOT_SUPPORTED:
        return "the mail program cannot do it without its window";
    default:
        return "error " + std::to_string(error);
    }
}

// The recipients of one mail as the mail library wants them.
class Recipients {
public:
    Recipients(const Mail& mail, LHANDLE session) : functions_(mail.functions), session_(session) {
        texts_.reserve(mail.to.size() + mail.copy.size()); // they stay where they are
        for (const std::string& name : mail.to) {
            Add(name, MAPI_TO);
        }
        for (const std::string& name : mail.copy) {
            Add(name, MAPI_CC);
        }
    }
    ~Recipients() {
        for (const lpMapiRecipDesc found : found_) {
            if (functions_.freeBuffer != nullptr) {
                functions_.freeBuffer(found);
            }
        }
    }
    Recipients(const Recipients&) = delete;
    Recipients& operator=(const Recipients&) = delete;

    std::vector<MapiRecipDesc>& All() { return all_; }
    const std::string& Unknown() const { return unknown_; } // the first one; empty for none

private:
    struct Texts {
        std::string name;
        std::string address;
    };

    void Add(const std::string& name, ULONG kind) {
        MapiRecipDesc recipient{};
        recipient.ulRecipClass = kind;
        if (name.find('@') == std::string::npos && functions_.resolveName != nullptr) {
            lpMapiRecipDesc found = nullptr;
            std::string asked = name;
            const ULONG result = functions_.resolveName(session_, 0, asked.data(), 0, 0, &found);
            if (result != SUCCESS_SUCCESS || found == nullptr) {
                unknown_ = unknown_.empty() ? name : unknown_;
                return;
            }
            found_.push_back(found);
            recipient = *found;
            recipient.ulRecipClass = kind;
        } else {
            texts_.push_back({name, "SMTP:" + name});
            recipient.lpszName = texts_.back().name.data();
            recipient.lpszAddress = texts_.back().address.data();
        }
        all_.push_back(recipient);
    }

    const MailFunctions functions_;
    const LHANDLE session_;
    std::vector<Texts> texts_;
    std::vector<lpMapiRecipDesc> found_;
    std::vector<MapiRecipDesc> all_;
    std::string unknown_;
};

std::string WithLineEnds(const std::string& text) {
    std::string lines;
    for (const char letter : text) {
        lines += letter == '\n' ? std::string("\r\n") : std::string(1, letter);
    }
    return lines;
}

std::string SendIn(const Mail& mail, LHANDLE session) {
    Recipients recipients(mail, session);
    if (!recipients.Unknown().empty()) {
        return "nobody is called " + recipients.Unknown();
    }
    std::string subject = mail.subject;
    std::string text = WithLineEnds(mail.text);
    std::string file = mail.file;
    MapiFileDesc attachment{};
    attachment.nPosition = static_cast<ULONG>(-1); // nowhere in the text
    attachment.lpszPathName = file.data();
    MapiMessage message{};
    message.lpszSubject = subject.data();
    message.lpszNoteText = text.data();
    message.nRecipCount = static_cast<ULONG>(recipients.All().size());
    message.lpRecips = recipients.All().data();
    message.nFileCount = file.empty() ? 0 : 1;
    message.lpFiles = file.empty() ? nullptr : &attachment;
    const ULONG result = mail.functions.sendMail(session, 0, &message, 0, 0);
    return result == SUCCESS_SUCCESS ? "" : ErrorText(result);
}

// Without a window, by the profile that is the default one. Empty, or why not, in words.
std::string Send(const Mail& mail) {
    LHANDLE session = 0;
    if (mail.functions.logon != nullptr) {
        const ULONG result = mail.functions.logon(0, nullptr, nullptr, 0, 0, &session);
        if (result != SUCCESS_SUCCESS) {
            return ErrorText(result);
        }
    }
    std::string fault = SendIn(mail, session);
    if (mail.functions.logoff != nullptr && session != 0) {
        mail.functions.logoff(session, 0, 0, 0);
    }
    return fault;
}

std::string TimeText() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text;
}

void SendAll() {
    for (;;) {
        Mail mail;
        {
            const std::lock_guard guard(queueLock);
            if (queue.empty()) {
                isServed = false;
                return;
            }
            mail = std::move(queue.front());
            queue.pop_front();
        }
        mail.status->Set("being sent");
        const std::string fault = Send(mail);
        mail.status->Set(fault.empty() ? "sent " + TimeText() : "not sent: " + fault);
        TRACE("Mail: %s: %s\n", mail.sender.c_str(), mail.status->Get().c_str());
    }
}

} // namespace

void MailStatus::Set(const std::string& words) {
    const std::lock_guard guard(lock_);
    words_ = words;
}

std::string MailStatus::Get() const {
    const SharedLock::Reading reading(lock_);
    return words_;
}

std::string QueueMail(Mail mail) {
    if (mail.functions.sendMail == nullptr) {
        return "there is no mail library";
    }
    mail.status->Set("waiting");
    {
        const std::lock_guard guard(queueLock);
        if (queue.size() >= LONGEST_QUEUE) {
            return "too many mails are waiting";
        }
        queue.push_back(std::move(mail));
        if (std::exchange(isServed, true)) {
            return {};
        }
    }
    const bool isStarted = Guarded(false, [] { return RunAside(SendAll); });
    if (!isStarted) {
        const std::lock_guard guard(queueLock);
        queue.pop_back();
        isServed = false;
        return "no thread can be started";
    }
    return {};
}
