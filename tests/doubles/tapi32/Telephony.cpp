// The telephony functions of the double. A call is whatever number the test gives it, a line is 0x200 and the
// number of its device.

#include "tests/doubles/tapi32/TelephonyDouble.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

constexpr HLINEAPP APPLICATION = 0x100;
constexpr HLINE FIRST_LINE = 0x200;
constexpr DWORD PORT_OFFSET = 28; // a provider may put it anywhere behind the fixed part
constexpr char PORT_NAME[] = "Modem";
constexpr DWORD PORT_SIZE = sizeof(HANDLE) + sizeof PORT_NAME;

TelephonyDouble provider;

// Notes a call; what it is to return.
[[gnu::format(gnu_printf, 2, 3)]] LONG Begin(const char* function, const char* format, ...) {
    char arguments[200];
    va_list list;
    va_start(list, format);
    std::vsnprintf(arguments, sizeof arguments, format, list);
    va_end(list);
    provider.calls += (provider.calls.empty() ? "" : "; ") + std::string(function) + arguments;
    const auto failure = provider.failures.find(function);
    return failure == provider.failures.end() ? 0 : failure->second;
}

} // namespace

extern "C" {

TelephonyDouble* GetTelephonyDouble() {
    return &provider;
}

LONG WINAPI lineInitializeExA(LPHLINEAPP application, HINSTANCE instance, LINECALLBACK callback, LPCSTR name,
                              LPDWORD devices, LPDWORD version, LPLINEINITIALIZEEXPARAMS parameters) {
    const LONG result = Begin("lineInitializeExA", " %s %s %08lx, %lu bytes, options %lu",
                              instance == GetModuleHandleA(nullptr) ? "program" : "other", name, *version,
                              parameters->dwTotalSize, parameters->dwOptions);
    if (result == 0) {
        provider.callback = callback;
        *application = APPLICATION;
        *devices = provider.versions.size();
    }
    return result;
}

LONG WINAPI lineNegotiateAPIVersion(HLINEAPP application, DWORD device, DWORD low, DWORD high,
                                    LPDWORD version, LPLINEEXTENSIONID) {
    const LONG result =
        Begin("lineNegotiateAPIVersion", " %lx %lu %08lx %08lx", application, device, low, high);
    if (result != 0) {
        return result;
    }
    *version = provider.versions.at(device);
    return *version == 0 ? LINEERR_INCOMPATIBLEAPIVERSION : 0;
}

LONG WINAPI lineGetDevCapsA(HLINEAPP application, DWORD device, DWORD version, DWORD, LPLINEDEVCAPS record) {
    return Begin("lineGetDevCapsA", " %lx %lu %08lx, %lu bytes", application, device, version,
                 record->dwTotalSize);
}

LONG WINAPI lineOpenA(HLINEAPP application, DWORD device, LPHLINE line, DWORD version, DWORD,
                      DWORD_PTR instance, DWORD privileges, DWORD media, LPLINECALLPARAMS) {
    const LONG result = Begin("lineOpenA", " %lx %lu %08lx privileges %lu media %lu", application, device,
                              version, privileges, media);
    if (result == 0) {
        provider.instance = instance;
        *line = FIRST_LINE + device;
    }
    return result;
}

LONG WINAPI lineSetStatusMessages(HLINE line, DWORD lineStates, DWORD addressStates) {
    return Begin("lineSetStatusMessages", " %lx %lu %lu", line, lineStates, addressStates);
}

LONG WINAPI lineGetCallStatus(HCALL call, LPLINECALLSTATUS record) {
    return Begin("lineGetCallStatus", " %lx, %lu bytes", call, record->dwTotalSize);
}

LONG WINAPI lineGetCallInfoA(HCALL call, LPLINECALLINFO record) {
    return Begin("lineGetCallInfoA", " %lx, %lu bytes", call, record->dwTotalSize);
}

LONG WINAPI lineAnswer(HCALL call, LPCSTR information, DWORD size) {
    return Begin("lineAnswer", " %lx %s %lu", call, information == nullptr ? "null" : information, size);
}

LONG WINAPI lineDeallocateCall(HCALL call) {
    return Begin("lineDeallocateCall", " %lx", call);
}

LONG WINAPI lineGetIDA(HLINE line, DWORD, HCALL call, DWORD select, LPVARSTRING record, LPCSTR deviceClass) {
    const LONG result = Begin("lineGetIDA", " %lx %lx %lu %s, %lu bytes", line, call, select, deviceClass,
                              record->dwTotalSize);
    if (result != 0) {
        return result;
    }
    record->dwNeededSize = provider.neededSize;
    if (record->dwTotalSize >= PORT_OFFSET + PORT_SIZE) {
        record->dwUsedSize = PORT_OFFSET + PORT_SIZE;
        record->dwStringFormat = STRINGFORMAT_BINARY;
        record->dwStringSize = PORT_SIZE;
        record->dwStringOffset = provider.offset;
        char* place = reinterpret_cast<char*>(record) + PORT_OFFSET;
        std::memcpy(place, &provider.port, sizeof provider.port);
        std::memcpy(place + sizeof provider.port, PORT_NAME, sizeof PORT_NAME);
    }
    return 0;
}

LONG WINAPI lineClose(HLINE line) {
    return Begin("lineClose", " %lx", line);
}

LONG WINAPI lineShutdown(HLINEAPP application) {
    return Begin("lineShutdown", " %lx", application);
}

} // extern "C"
