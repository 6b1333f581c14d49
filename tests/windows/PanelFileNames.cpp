// Folders and files whose names have characters outside the ANSI code page, and where files go that are made
// for a while.

#include "base/FileNames.h"
#include "base/Handles.h"
#include "tests/windows/TestPanel.h"

#include <shlobj.h>

TEST_SUITE_BEGIN("PanelFileNames");

namespace {

constexpr const wchar_t* FOLDER = L"\u0141ukasz \u6771\u4eac Zo\u00eb";
constexpr const wchar_t* STEM = L"\u6771\u4eac";
constexpr const char* PANEL = "size=400,300\r\ncontrol=0x00000000 KNOB \"Knob\" 0x50010000 10,10,57,57\r\n"
                              "Knob*bitmap=.\\Knob.bmp\r\nKnob*function=AMP1*gain\r\n";

// A folder with the programs and such a name below that of a test.
class ForeignFolder {
public:
    ForeignFolder() : path_(WideFileName(above_.Path("")) + FOLDER) {
        CreateDirectoryW(path_.c_str(), nullptr);
        for (const wchar_t* name : {L"Panel.exe", L"Panelhost.dll", L"OSMIRControlLib.dll"}) {
            CopyFileW((WideFileName(ProgramFolder()) + name).c_str(), Path(name).c_str(), TRUE);
        }
    }
    ~ForeignFolder() {
        for (const std::wstring& name : Names()) {
            DeleteFileW(Path(name).c_str());
        }
        RemoveDirectoryW(path_.c_str());
    }
    ForeignFolder(const ForeignFolder&) = delete;
    ForeignFolder& operator=(const ForeignFolder&) = delete;

    std::wstring Path(const std::wstring& name) const { return path_ + L"\\" + name; }
    const TestFolder& Above() const { return above_; }

    void Write(const std::wstring& name, const std::string& bytes) const {
        const Handle file = MakeFile(CreateFileW(Path(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                                 FILE_ATTRIBUTE_NORMAL, nullptr));
        DWORD written = 0;
        REQUIRE(WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    }

    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        WIN32_FIND_DATAW found;
        const HANDLE search = FindFirstFileW(Path(L"*").c_str(), &found);
        do {
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                names.emplace_back(found.cFileName);
            }
        } while (FindNextFileW(search, &found));
        FindClose(search);
        return names;
    }

private:
    TestFolder above_;
    std::wstring path_;
};

bool Has(const std::vector<std::wstring>& names, const std::wstring& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The user's documents are somewhere else while it lives.
class OtherDocuments {
public:
    explicit OtherDocuments(const std::wstring& folder) {
        Access([&](HKEY key) {
            DWORD size = sizeof old_;
            known_ = RegQueryValueExW(key, L"Personal", nullptr, &type_, reinterpret_cast<BYTE*>(old_),
                                      &size) == 0;
            size_ = size;
            Set(key, REG_SZ, folder.c_str(), static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
        });
    }
    ~OtherDocuments() {
        Access([&](HKEY key) {
            if (known_) {
                Set(key, type_, old_, size_);
            } else {
                RegDeleteValueW(key, L"Personal");
            }
        });
    }
    OtherDocuments(const OtherDocuments&) = delete;
    OtherDocuments& operator=(const OtherDocuments&) = delete;

private:
    static void Set(HKEY key, DWORD type, const wchar_t* text, DWORD size) {
        RegSetValueExW(key, L"Personal", 0, type, reinterpret_cast<const BYTE*>(text), size);
    }
    static void Access(const std::function<void(HKEY)>& change) {
        HKEY key = nullptr;
        REQUIRE(RegCreateKeyW(HKEY_CURRENT_USER,
                              L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders",
                              &key) == 0);
        change(key);
        RegCloseKey(key);
    }

    wchar_t old_[MAX_PATH] = L"";
    DWORD type_ = 0;
    DWORD size_ = 0;
    bool known_ = false;
};

} // namespace

TEST_CASE("a name that the code page lacks has a form there as long as the file exists") {
    const ForeignFolder folder;
    folder.Write(STEM + std::wstring(L".panel"), "");
    const auto narrow = NarrowFileName(folder.Path(STEM + std::wstring(L".panel")));
    REQUIRE(narrow);
    CHECK(GetFileAttributesA(narrow->c_str()) != INVALID_FILE_ATTRIBUTES);
    CHECK(narrow->find('?') == std::string::npos);
    CHECK(FullFileName(WideFileName(*narrow)).ends_with(L"\\" + std::wstring(STEM) + L".panel"));
    CHECK_FALSE(NarrowFileName(folder.Path(L"\u6771.panel"))); // there is none
    CHECK(NarrowFileName(L"C:/Zo\u00eb\\new.panel") == "C:/Zo\xeb\\new.panel");
    CHECK(FullFileName(L"C:\\windows\\~*") == L"C:\\windows\\~*"); // a pattern is no short name
    CHECK(NarrowText(L"\u6771") == "?");
}

TEST_CASE("the program runs from such a folder, and opens such a file with its devices and pictures") {
    const ForeignFolder folder;
    const std::wstring panel = STEM + std::wstring(L".panel");
    folder.Write(panel, PANEL);
    folder.Write(STEM + std::wstring(L".devices"),
                 "AMP1*device=simulated\r\nAMP1*gain=float,0,100,50,\r\nno device\r\n");
    folder.Write(L"Knob.bmp", "no bitmap");
    std::wstring command = L"\"" + folder.Path(L"Panel.exe") + L"\" \"" + folder.Path(panel) +
                           L"\" --exit-after 300" + L" --trace \"" + folder.Path(L"trace") +
                           L"\" --screenshot \"" + folder.Path(L"shot.png") + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    REQUIRE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                           &process));
    CHECK(WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0);
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process.hProcess, &code);
    TerminateProcess(process.hProcess, 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    CHECK(code == 0);
    CHECK(Has(folder.Names(), L"shot.png"));
    const std::string trace = ReadBytes(NarrowFileName(folder.Path(L"trace")).value_or(""));
    INFO(trace);
    CHECK(trace.find("(3): ") != std::string::npos); // the line that is no device
}

TEST_CASE("a panel that is saved under its short name keeps its name") {
    const ForeignFolder folder;
    const std::wstring panel = STEM + std::wstring(L".panel");
    folder.Write(panel, "");
    const TestPanel host;
    host.Create("KNOB", "Knob");
    REQUIRE(ph_SavePanel(host.Root(), NarrowFileName(folder.Path(panel)).value_or("").c_str()) == 1);
    CHECK(Has(folder.Names(), panel));
    CHECK(folder.Names().size() == 4);
    CHECK(ReadBytes(NarrowFileName(folder.Path(panel)).value_or("")).find("KNOB") != std::string::npos);
}

TEST_CASE("where the folder for temporary files may not be written they go to the user's documents") {
    using MakeFullPathName = int(const char*, char*);
    const ForeignFolder folder;
    const std::wstring documents = WideFileName(folder.Above().Path("Documents"));
    CreateDirectoryW(documents.c_str(), nullptr);
    const OtherDocuments other(documents);
    // As each copy of the library finds it.
    const std::tuple<const wchar_t*, bool, bool> rows[] = {
        {L"Missing.dll", false, true}, {L"Writable.dll", true, true}, {L"Refused.dll", false, false}};
    const auto temp = folder.Path(L"Temp");
    for (const auto& [name, makeFolder, stays] : rows) {
        CAPTURE(NarrowText(name));
        CopyFileW(folder.Path(L"Panelhost.dll").c_str(), folder.Path(name).c_str(), TRUE);
        if (makeFolder) {
            CreateDirectoryW(temp.c_str(), nullptr);
        } else if (!stays) {
            folder.Write(L"Temp", "no folder");
        }
        const Library library(LoadLibraryW(folder.Path(name).c_str()));
        REQUIRE(library);
        auto* const makeFullPathName = reinterpret_cast<MakeFullPathName*>(
            reinterpret_cast<void*>(GetProcAddress(library.get(), "_Z18a_MakeFullPathNamePKcPc")));
        REQUIRE((makeFullPathName != nullptr));
        const std::string home = NarrowFileName(folder.Path(L"")).value_or("");
        const std::string away = folder.Above().Path("Documents\\OSMIR Panel\\");
        char path[MAX_PATH] = "";
        for (const char* file : {"Temp\\wave.wav", ".\\temp\\wave.wav"}) {
            CHECK(makeFullPathName(file, path) == 1);
            CHECK(std::string(path) ==
                  (stays ? home : away) + (strchr(file, 't') == file + 2 ? "temp" : "Temp") + "\\wave.wav");
        }
        CHECK(makeFullPathName("Temperature\\wave.wav", path) == 1);
        CHECK(std::string(path) == home + "Temperature\\wave.wav");
        RemoveDirectoryW(temp.c_str());
    }
    CHECK(GetFileAttributesA(folder.Above().Path("Documents\\OSMIR Panel\\Temp").c_str()) !=
          INVALID_FILE_ATTRIBUTES);
}

TEST_SUITE_END();
