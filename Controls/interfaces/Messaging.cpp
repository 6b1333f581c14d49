// IMESSAGING: sends mail.

#include "Controls/families/InterfaceControl.h"
#include "Controls/families/PlainControl.h"
#include "base/Handles.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

// The functions of the system's mail library. All are found in any version of it.
constexpr const char* MAIL_FUNCTIONS[] = {
    "MAPILogon",       "MAPILogoff",   "MAPISendMail", "MAPISendDocuments",
    "MAPIReadMail",    "MAPISaveMail", "MAPIFindNext", "MAPIDeleteMail",
    "MAPIResolveName", "MAPIAddress",  "MAPIDetails",  "MAPIFreeBuffer",
};

// The picture and the mail library.
class MailResources : public SharedPicture {
public:
    explicit MailResources(const ControlClass& controlClass)
        : SharedPicture(controlClass), library_(LoadLibraryA("MAPI32.DLL")) {
        if (library_ != nullptr) {
            std::transform(std::begin(MAIL_FUNCTIONS), std::end(MAIL_FUNCTIONS), functions_.begin(),
                           [this](const char* name) { return GetProcAddress(library_.get(), name); });
        }
    }

private:
    const Library library_;                                      // null when the system has none
    std::array<FARPROC, std::size(MAIL_FUNCTIONS)> functions_{}; // null where there is no such function
};

} // namespace

extern const ControlImplementation messagingControl{.create = CreatePlainInterface,
                                                    .procedure = InterfaceProc,
                                                    .purpose = "Sender of mail.",
                                                    .share = SharePicture<MailResources>};
