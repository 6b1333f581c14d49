// IMESSAGING: sends a mail when its value reaches a threshold. Its texts can hold values of the panel.

#include "Controls/families/AddressedValue.h"
#include "Controls/families/InterfaceControl.h"
#include "Controls/families/Question.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/interfaces/mail/MailQueue.h"
#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Trace.h"
#include "base/Handles.h"
#include "logic/remote/MailText.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <utility>

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

    MailFunctions Functions() const {
        MailFunctions found;
        Find(found.logon, "MAPILogon");
        Find(found.logoff, "MAPILogoff");
        Find(found.sendMail, "MAPISendMail");
        Find(found.resolveName, "MAPIResolveName");
        Find(found.freeBuffer, "MAPIFreeBuffer");
        return found;
    }

private:
    template <class Function>
    void Find(Function& function, const char* name) const {
        for (std::size_t i = 0; i < functions_.size(); ++i) {
            if (std::strcmp(MAIL_FUNCTIONS[i], name) == 0) {
                function = reinterpret_cast<Function>(reinterpret_cast<void*>(functions_[i]));
            }
        }
    }

    const Library library_;                                      // null when the system has none
    std::array<FARPROC, std::size(MAIL_FUNCTIONS)> functions_{}; // null where there is no such function
};

} // namespace

class MESSAGINGPROPERTIES : public INTERFACEPROPERTIES {
public:
    KeywordList Keywords() const override;
    void Poll() override;

    int Value() const { return value; }
    bool SetValue(int wanted);
    std::string Status() const { return status_->Get(); }

    int value = 0;
    std::string to;
    std::string copy;
    std::string subject;
    std::string text;
    std::string file;
    std::string confirm;
    int onValue = 1;
    int limit = 10; // tries an hour

private:
    void SendMail(); // the control may be gone afterwards
    Mail Compose() const;
    std::string ValueOf(std::string_view address) const;
    void Refuse(const std::string& why);

    const std::shared_ptr<MailStatus> status_ = std::make_shared<MailStatus>(); // the mails have it too
    logic::HourlyLimit tries_;
    bool isAsking_ = false;
};

// Keywords

namespace {

constexpr Keyword VALUE = Property<&MESSAGINGPROPERTIES::Value, &MESSAGINGPROPERTIES::SetValue>("value").Says(
    "A whole number. Set or polled from below `onvalue` to that or above, it sends a mail. Set to another "
    "number, it is sent to all it is bound to.");

constexpr int MOST_TRIES = 1000;

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Text<&MESSAGINGPROPERTIES::confirm>("confirm")
        .Saved()
        .Label("Ask before")
        .Says("Question that is asked before a mail is sent; empty for none. `\\n` and `\\t` in it are line "
              "feed "
              "and tab."),
    CONNECTION_KEYWORD,
    Text<&MESSAGINGPROPERTIES::copy>("copy")
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Label("Copy to")
        .Says("Recipients of a copy, as `to`."),
    Row("file", KeywordKind::File, TextKeyword<&MESSAGINGPROPERTIES::file>)
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .MayBeEmpty()
        .Label("Attachment")
        .Says(
            "File that goes with the mail, below the application folder unless it has a full path; empty for "
            "none."),
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Limited<&MESSAGINGPROPERTIES::limit, 0, MOST_TRIES>("limit")
        .Saved()
        .Label("Mails an hour at most")
        .Says("How many mails it tries to send in any hour at most, up to 1000; 0 for none at all."),
    Integer<&MESSAGINGPROPERTIES::onValue>("onvalue")
        .Saved()
        .Label("Sends from value")
        .Says("The value that sends a mail when it is reached from below."),
    Property<&MESSAGINGPROPERTIES::Status, nullptr>("status").Says(
        "What has become of the newest mail, in words: `waiting`, `being sent`, `sent` with the time, or "
        "`not sent` "
        "with the reason; empty before the first. It can only be read."),
    Text<&MESSAGINGPROPERTIES::subject>("subject")
        .Holds(logic::AddressForm::Inserted)
        .Saved()
        .Label("Subject")
        .Says("Subject of the mail, with the same insertions as `text`."),
    Text<&MESSAGINGPROPERTIES::text>("text")
        .Holds(logic::AddressForm::Inserted)
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Label("Text")
        .Says("Text of the mail. `%v` in it stands for the value, `%n` for the full name of this control, "
              "`%d` and "
              "`%t` for date and time, `%{OBJECT*keyword}` for any value of the panel; `\\n` and `\\t` are "
              "line feed "
              "and tab, `\\\\` is a backslash."),
    Text<&MESSAGINGPROPERTIES::to>("to")
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Label("To")
        .Says("Recipients, joined by `;`: addresses, or names that the mail program knows. Without one "
              "nothing is "
              "sent."),
    VALUE,
});

} // namespace

KeywordList MESSAGINGPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// Value

bool MESSAGINGPROPERTIES::SetValue(int wanted) {
    if (wanted != value) {
        const bool rises = value < onValue && wanted >= onValue;
        value = wanted;
        a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &wanted, nullptr);
        if (rises) {
            SendMail();
        }
    }
    return true;
}

void MESSAGINGPROPERTIES::Poll() {
    int polled = value;
    const int result = Ask(requests, DATATYPE_INTEGER, &polled);
    ShowPollResult(result);
    if (result == REQUEST_DELIVERED) {
        const bool rises = value < onValue && polled >= onValue;
        value = polled;
        if (rises) {
            SendMail();
        }
    }
}

// Mail

namespace {

std::vector<std::string> SplitNames(const std::string& text) {
    std::vector<std::string> names;
    for (const std::string_view field : logic::SplitFields(text, ';')) {
        if (const std::string_view name = logic::TrimBlanks(field); !name.empty()) {
            names.emplace_back(name);
        }
    }
    return names;
}

template <class... Numbers>
std::string Formatted(const char* format, Numbers... numbers) {
    char text[32];
    std::snprintf(text, sizeof text, format, int{numbers}...);
    return text;
}

} // namespace

void MESSAGINGPROPERTIES::SendMail() {
    if (isAsking_ || !a_IsAlive(this)) { // what comes while it asks is answered by the same word
        return;
    }
    isAsking_ = true;
    const bool isWanted = IsConfirmed(*this, confirm, a_OwnName(this));
    isAsking_ = false;
    if (!isWanted || !a_IsAlive(this)) {
        return;
    }
    Mail mail = Compose();
    if (mail.to.empty()) {
        Refuse("it has no recipient");
    } else if (!mail.file.empty() && GetFileAttributesA(mail.file.c_str()) == INVALID_FILE_ATTRIBUTES) {
        Refuse("there is no file " + file);
    } else if (!tries_.Pass(GetTickCount64(), limit)) {
        Refuse("more than " + std::to_string(limit) + " an hour");
    } else if (const std::string fault = QueueMail(std::move(mail)); !fault.empty()) {
        Refuse(fault);
    }
}

void MESSAGINGPROPERTIES::Refuse(const std::string& why) {
    status_->Set("not sent: " + why);
    TRACE("Mail: %s: not sent: %s\n", name.c_str(), why.c_str());
}

Mail MESSAGINGPROPERTIES::Compose() const {
    SYSTEMTIME now;
    GetLocalTime(&now);
    const logic::MailFacts facts{
        .value = std::to_string(value),
        .name = name,
        .date = Formatted("%04d-%02d-%02d", now.wYear, now.wMonth, now.wDay),
        .time = Formatted("%02d:%02d:%02d", now.wHour, now.wMinute, now.wSecond),
        .valueOf = [this](std::string_view address) { return ValueOf(address); },
    };
    Mail mail{.sender = name,
              .functions = {},
              .to = SplitNames(to),
              .copy = SplitNames(copy),
              .subject = logic::ExpandMailText(subject, facts),
              .text = logic::ExpandMailText(text, facts),
              .file = {},
              .status = status_};
    if (const auto* resources = SharedOf<MailResources>(*controlClass)) {
        mail.functions = resources->Functions();
    }
    char path[MAX_PATH];
    if (!file.empty()) {
        mail.file = a_MakeFullPathName(file.c_str(), path) != 0 ? path : file;
    }
    return mail;
}

std::string MESSAGINGPROPERTIES::ValueOf(std::string_view address) const {
    const std::string whole(address);
    HWND found = a_FindHwnd(parent, whole.c_str());
    std::string keyword;
    if (const std::size_t star = whole.rfind('*'); found == nullptr && star != std::string::npos) {
        found = a_FindHwnd(parent, whole.substr(0, star).c_str());
        keyword = whole.substr(star + 1);
    }
    return found != nullptr ? AddressedValue(found, keyword).Text() : "";
}

extern const ControlImplementation messagingControl = Implement<MESSAGINGPROPERTIES>(
    InterfaceProc, LAID_OUT,
    "Sends a [mail](interface-controls.md#mail) when its value reaches a threshold. "
    "Seen only while the panel is edited.",
    SharePicture<MailResources>);
