// The trace: to the sink and to a file, from any thread.

#include "Panelhost/Trace.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <sstream>
#include <thread>

TEST_SUITE_BEGIN("Trace");

TEST_CASE("lines reach the sink as they were written, from any thread") {
    const TestPanel panel;
    TraceCapture trace;
    TRACE("%d of %s\n", 7, "nine");
    EDITTRACE(panel.Root(), "Bad %s!", "100 %s %n");
    EDITTRACE(panel.Root(), "%d %x no place", "x");
    EDITTRACE(nullptr, "Unseen %s", "x");
    std::thread([] { TRACE("elsewhere\n"); }).join();
    {
        TraceLocation file("a.panel");
        file.SetLine(12);
        TRACE("here\n");
        std::thread([] { TRACE("not here\n"); }).join(); // the place is that of one thread
    }
    CHECK(trace.All() == "0 7 of nine\n\n1 Bad 100 %s %n!\n1 %d %x no place\n0 elsewhere\n\n"
                         "0 a.panel(12): here\n\n0 not here\n\n");
    TRACE("%s", std::string(20000, 'x').c_str());
    CHECK(trace.CountContaining(std::string(4096, 'x')) == 1);
}

TEST_CASE("a removed sink is called no more, however many threads trace") {
    static std::atomic<int> calls, lateCalls;
    static std::atomic<bool> isRemoved;
    const auto sink = [](int, const char*, void*) __attribute__((cdecl)) {
        ++calls;
        lateCalls += isRemoved ? 1 : 0;
        TRACE("a sink may trace without calling itself\n");
        lateCalls += isRemoved ? 1 : 0;
    };
    std::vector<std::jthread> threads;
    while (threads.size() < 3) {
        threads.emplace_back([](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                TRACE("busy\n");
            }
        });
    }
    for (int round = 0; round < 100; ++round) {
        isRemoved = false;
        ph_SetTraceSink(sink, nullptr);
        const int before = calls;
        while (calls == before) {
            Sleep(0);
        }
        ph_SetTraceSink(nullptr, nullptr);
        isRemoved = true;
    }
    threads.clear();
    CHECK(lateCalls == 0);
}

TEST_CASE("a trace file is appended to, one line a message, until it ends") {
    const TestFolder folder;
    const std::string path = folder.Write("trace.txt", "before\r\n");
    CHECK(a_SetTraceFile(folder.Path("nowhere\\trace.txt").c_str()) == 0);
    REQUIRE(a_SetTraceFile(path.c_str()) == 1);
    TRACE("one\n");
    TRACE("two\r\n\n");
    TRACE("three");
    std::vector<std::jthread> threads;
    while (threads.size() < 2) {
        threads.emplace_back([] {
            for (int i = 0; i < 1000; ++i) {
                TRACE("busy\n");
            }
        });
    }
    threads.clear();
    CHECK(a_SetTraceFile(folder.Path("nowhere\\trace.txt").c_str()) == 0); // the file in use stays
    TRACE("last\n");
    CHECK(a_SetTraceFile(nullptr) == 1);
    TRACE("unwritten\n");
    int whole = 0; // lines, in whatever order
    std::string rest;
    std::istringstream lines(ReadBytes(path));
    for (std::string line; std::getline(lines, line);) {
        const bool isOne = line == "busy\r";
        whole += isOne ? 1 : 0;
        rest += isOne ? "" : line + "\n";
    }
    CHECK(whole == 2000);
    CHECK(rest == "before\r\none\r\ntwo\r\nthree\r\nlast\r\n");
    CHECK(DeleteFileA(path.c_str()));
}

TEST_SUITE_END();
