// The mail functions of the double. It knows the name "Desk" as desk@example.org.

#include "tests/doubles/mapi32/MailDouble.h"

#include <cstring>
#include <mapi.h>

namespace {

constexpr LHANDLE SESSION = 0x700;

class MailLibrary final : public MailDouble {
public:
    void Reset() override {
        Forget();
        const std::lock_guard guard(lock_);
        mails_.clear();
        sessions_ = names_ = 0;
    }
    std::string TakeMails() override {
        const std::lock_guard guard(lock_);
        return std::exchange(mails_, {});
    }
    int OpenSessions() override {
        const std::lock_guard guard(lock_);
        return sessions_;
    }
    int NamesHeld() override {
        const std::lock_guard guard(lock_);
        return names_;
    }

    ULONG Logon(FLAGS flags, LHANDLE* session) {
        if (const auto failure = Begin("MAPILogon", std::to_string(flags))) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        ++sessions_;
        *session = SESSION;
        return SUCCESS_SUCCESS;
    }
    ULONG Logoff(LHANDLE session) {
        const auto failure = Begin("MAPILogoff");
        const std::lock_guard guard(lock_);
        sessions_ -= session == SESSION ? 1 : 0;
        return failure;
    }
    ULONG Resolve(const char* name, lpMapiRecipDesc* found) {
        if (const auto failure = Begin("MAPIResolveName", name)) {
            return failure;
        }
        if (std::strcmp(name, "Desk") != 0) {
            return MAPI_E_UNKNOWN_RECIPIENT;
        }
        static char address[] = "SMTP:desk@example.org";
        const std::lock_guard guard(lock_);
        ++names_;
        *found = new MapiRecipDesc{0, MAPI_TO, const_cast<char*>("Desk"), address, 0, nullptr};
        return SUCCESS_SUCCESS;
    }
    ULONG Free(void* memory) {
        const std::lock_guard guard(lock_);
        --names_;
        delete static_cast<MapiRecipDesc*>(memory);
        return SUCCESS_SUCCESS;
    }
    ULONG Send(LHANDLE session, const MapiMessage& message, FLAGS flags) {
        if (const auto failure = Begin("MAPISendMail", std::to_string(flags))) {
            return failure;
        }
        if (session != SESSION) {
            return MAPI_E_INVALID_SESSION;
        }
        std::string recipients[2];
        for (ULONG i = 0; i < message.nRecipCount; ++i) {
            const MapiRecipDesc& one = message.lpRecips[i];
            std::string& list = recipients[one.ulRecipClass == MAPI_CC ? 1 : 0];
            list += (list.empty() ? "" : "; ") + std::string(one.lpszAddress);
        }
        const std::lock_guard guard(lock_);
        mails_ += recipients[0] + "|" + recipients[1] + "|" + message.lpszSubject + "|" +
                  message.lpszNoteText + "|" +
                  (message.nFileCount == 1 ? message.lpFiles->lpszPathName : "") + "\n";
        return SUCCESS_SUCCESS;
    }

private:
    std::mutex lock_;
    std::string mails_;
    int sessions_ = 0;
    int names_ = 0;
};
MailLibrary library;

} // namespace

extern "C" {

MailDouble* GetMailDouble() {
    return &library;
}
ULONG WINAPI MAPILogon(ULONG_PTR, LPSTR, LPSTR, FLAGS flags, ULONG, LPLHANDLE session) {
    return library.Logon(flags, session);
}
ULONG WINAPI MAPILogoff(LHANDLE session, ULONG_PTR, FLAGS, ULONG) {
    return library.Logoff(session);
}
ULONG WINAPI MAPISendMail(LHANDLE session, ULONG_PTR, lpMapiMessage message, FLAGS flags, ULONG) {
    return library.Send(session, *message, flags);
}
ULONG WINAPI MAPIResolveName(LHANDLE, ULONG_PTR, LPSTR name, FLAGS, ULONG, lpMapiRecipDesc* found) {
    return library.Resolve(name, found);
}
ULONG WINAPI MAPIFreeBuffer(LPVOID memory) {
    return library.Free(memory);
}

} // extern "C"
