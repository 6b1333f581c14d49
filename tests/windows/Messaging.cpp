// The sender of mail on a double of mapi32.dll.

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Trace.h"
#include "tests/doubles/mapi32/MailDouble.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <mapi.h>

TEST_SUITE_BEGIN("Messaging");

namespace {

MailDouble& Double() {
    // Loaded by the control library when it is needed first.
    auto* const get = Exported<decltype(GetMailDouble)>("mapi32.dll", "GetMailDouble");
    REQUIRE_MESSAGE((get != nullptr), "the system's own mapi32.dll is loaded instead of the double");
    return *get();
}

struct MailPanel {
    MailPanel() {
        Double().Reset();
        mail = panel.Create("IMESSAGING", "Alarm");
        CHECK(Load(mail, "to=hall@example.org") == 1);
    }
    ~MailPanel() {
        Double().EndDelays();
        CHECK(Await([] { return Double().OpenSessions() == 0 && Double().NamesHeld() == 0; }));
    }
    void Trigger() const {
        CHECK(Load(mail, "value=0") == 1);
        CHECK(Load(mail, "value=1") == 1);
    }
    bool AwaitStatus(const std::string& begin) const {
        return Await([&] { return Text(mail, "status").starts_with(begin); });
    }

    const TestPanel panel;
    HWND mail;
};

} // namespace

TEST_CASE("a value that rises sends a mail with the values of the panel in it") {
    const MailPanel test;
    test.panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-2.5,dB\n");
    HWND knob = test.panel.Create("KNOB", "Level");
    CHECK(SetValue(knob, 7) == 1);
    CHECK(Text(test.mail, "status").empty());
    CHECK(SendMessageA(test.mail, CWM_GETCONTROLTYPE, 0, 0) == DATATYPE_INTEGER);
    for (const char* line :
         {"to=hall@example.org; Desk", "copy=b@example.org", "subject=%n = %v",
          "text=Level %{Level*value} %{level}, gain %{AMP1*gain} %{Nobody*x}.\\n%%\\t%{Level*caption",
          "file=Temp\\Readme.txt", "onvalue=3"}) {
        CHECK(Load(test.mail, line) == 1);
    }
    CHECK(Load(test.mail, "value=2") == 1);
    CHECK(Text(test.mail, "status").empty());
    CHECK(Load(test.mail, "value=4") == 1);
    CHECK(test.AwaitStatus("sent 2"));
    char file[MAX_PATH];
    a_MakeFullPathName("Temp\\Readme.txt", file);
    CHECK(
        Double().TakeMails() ==
        "SMTP:hall@example.org; SMTP:desk@example.org|SMTP:b@example.org|Alarm = 4|Level 7 7, gain -2.5 .\r\n"
        "%%\t%{Level*caption|" +
            std::string(file) + "\n");
    CHECK(Double().TakeCalls() == "MAPILogon 0; MAPIResolveName Desk; MAPISendMail 0"); // without a window
    CHECK(Load(test.mail, "value=5") == 1); // higher, and not from below
    CHECK(Load(test.mail, "value=5") == 1);
    Poll(test.mail);
    CHECK(Double().TakeCalls().empty());
    // A value that is polled counts as one that is set.
    CHECK(Load(test.mail, "value=0") == 1);
    CHECK(Load(test.mail, "connection=Level") == 1);
    Poll(test.mail);
    CHECK(Await([] { return !Double().TakeMails().empty(); }));
}

TEST_CASE("what is not sent is told in words") {
    const struct {
        const char* line;
        const char* function;
        unsigned long result;
        const char* told;
    } rows[] = {
        {"to=", "", 0, "it has no recipient"},
        {"to= ; ", "", 0, "it has no recipient"},
        {"to=Nobody", "", 0, "nobody is called Nobody"},
        {"file=Temp\\nothing.txt", "", 0, "there is no file Temp\\nothing.txt"},
        {"limit=0", "", 0, "more than 0 an hour"},
        {"copy=", "MAPILogon", MAPI_E_LOGIN_FAILURE, "there is no mail profile"},
        {"copy=", "MAPISendMail", MAPI_E_INVALID_RECIPS, "a recipient was refused"},
        {"copy=", "MAPISendMail", MAPI_E_DISK_FULL, "the disk is full"},
        {"copy=", "MAPISendMail", 99, "error 99"},
        {"to=Desk", "MAPIResolveName", MAPI_E_AMBIGUOUS_RECIPIENT, "nobody is called Desk"},
    };
    for (const auto& row : rows) {
        INFO(std::string(row.told));
        const MailPanel test;
        const TraceCapture trace;
        CHECK(Load(test.mail, row.line) == 1);
        Double().Fail(row.function, row.result);
        test.Trigger();
        CHECK(test.AwaitStatus(std::string("not sent: ") + row.told));
        CHECK(Await(
            [&] { return trace.CountContaining(std::string("Mail: Alarm: not sent: ") + row.told) == 1; }));
        CHECK(Double().TakeMails().empty());
    }
}

TEST_CASE("an alarm that flutters sends no more than its limit") {
    const MailPanel test;
    CHECK(Load(test.mail, "limit=3") == 1);
    for (int i = 0; i < 20; ++i) {
        test.Trigger();
    }
    CHECK(test.AwaitStatus("not sent: more than 3 an hour"));
    std::string mails;
    CHECK(Await([&] {
        mails += Double().TakeMails();
        return std::count(mails.begin(), mails.end(), '\n') == 3;
    }));
}

TEST_CASE("a call that hangs delays mails and nothing else, and what it holds goes when it returns") {
    const Resources before = CountResources();
    {
        TestPanel panel;
        Double().Reset();
        Double().Delay("MAPISendMail", INFINITE);
        std::vector<HWND> senders;
        for (int i = 0; i < 18; ++i) {
            senders.push_back(panel.Create("IMESSAGING", "Alarm"));
            CHECK(Load(senders.back(), "to=hall@example.org") == 1);
            CHECK(Load(senders.back(), "subject=" + std::to_string(i)) == 1);
            CHECK(Load(senders.back(), "value=1") == 1);
            if (i == 0) {
                CHECK(Await([] { return Double().Waiting() == 1; }));
                CHECK(Text(senders[0], "status") == "being sent");
            }
        }
        CHECK(Text(senders[16], "status") == "waiting");
        CHECK(Text(senders[17], "status") == "not sent: too many mails are waiting");
        panel.Close();
        CHECK(Double().Waiting() == 1); // nobody waited for it
    }
    Double().EndDelays();
    std::string mails;
    CHECK(Await([&] {
        mails += Double().TakeMails();
        return std::count(mails.begin(), mails.end(), '\n') == 17;
    }));
    CHECK(mails.find("|0|") < mails.find("|1|"));
    CHECK(Await([&] { return CountResources().threads <= before.threads && Double().OpenSessions() == 0; }));
}

TEST_CASE("another machine sets no recipient, text or file of a mail") {
    const MailPanel test;
    const RemoteSetting remote;
    for (const char* line : {"to=x@example.org", "copy=x@example.org", "text=x", "file=Temp\\Readme.txt"}) {
        CHECK(Load(test.mail, line) == 0);
    }
    CHECK(Load(test.mail, "subject=x") == 1);
}

TEST_CASE("nothing is left behind by senders, whatever fails") {
    for (const char* function : {"", "MAPILogon", "MAPISendMail", "MAPIResolveName", "MAPILogoff"}) {
        INFO(std::string(function));
        CHECK(LeftBehind(10, [&] {
                  const MailPanel test;
                  CHECK(Load(test.mail, "to=Desk;a@example.org") == 1);
                  Double().Fail(function, 2);
                  test.Trigger();
                  CHECK(Await([&] {
                      const std::string status = Text(test.mail, "status");
                      return status.starts_with("sent") || status.starts_with("not sent");
                  }));
              }) == "");
    }
}

TEST_SUITE_END();
