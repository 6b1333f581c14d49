#pragma once

#include "base/FileNames.h"
#include "tests/windows/ImportHook.h"

#include <windows.h>
#include <shellapi.h>

#include <stdexcept>
#include <string>
#include <utility>

// Takes the place of the system's program for web pages while it lives; or there is none.
class OpenedPages {
public:
    explicit OpenedPages(bool isThere = true) {
        if (GetFileAttributesA((ModuleFolder(nullptr) + "Documentation\\index.html").c_str()) ==
            INVALID_FILE_ATTRIBUTES) {
            throw std::runtime_error("the build has written no documentation");
        }
        there = isThere;
        opened.clear();
    }

    // The page that was opened since the last question, with its place; empty for none.
    static std::string Last() {
        const std::string address = std::exchange(opened, {});
        return address.substr(address.rfind('/') + 1);
    }

private:
    static HINSTANCE WINAPI Find(const wchar_t*, const wchar_t*, wchar_t* program) {
        lstrcpyW(program, L"C:\\browser.exe");
        return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(there ? 33 : SE_ERR_NOASSOC));
    }
    static BOOL WINAPI Open(SHELLEXECUTEINFOW* given) {
        const bool isBrowser = given->lpFile != nullptr && lstrcmpW(given->lpFile, L"C:\\browser.exe") == 0;
        opened = isBrowser ? NarrowText(given->lpParameters) : "";
        return isBrowser;
    }

    static inline bool there = true;
    static inline std::string opened;

    ImportHook find_{nullptr, "FindExecutableW", Find};
    ImportHook open_{nullptr, "ShellExecuteExW", Open};
};
