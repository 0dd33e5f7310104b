// The internet library with its own time-outs; not every handheld of the platform has it.

#include "platform/connection.h"
#include "platform/device/library_function.h"

#include <wininet.h>

namespace platform {
namespace {

LateLibrary wininet = {L"wininet.dll", nullptr};

}  // namespace

void* InternetOpenW(const wchar_t* agent, DWORD accessType, const wchar_t* proxy) {
    const auto open = wininet.Find<decltype(&::InternetOpenW)>(L"InternetOpenW");
    return open != nullptr ? open(agent, accessType, proxy, nullptr, 0) : nullptr;
}

void* InternetConnectW(void* session, const wchar_t* host, WORD port) {
    const auto connect = wininet.Find<decltype(&::InternetConnectW)>(L"InternetConnectW");
    return connect != nullptr ? connect(session, host, port, L"", L"", INTERNET_SERVICE_HTTP, 0, 0) : nullptr;
}

void* HttpOpenRequestW(void* connection, const wchar_t* path, DWORD flags, DWORD_PTR context) {
    const auto open = wininet.Find<decltype(&::HttpOpenRequestW)>(L"HttpOpenRequestW");
    return open != nullptr ? open(connection, nullptr, path, nullptr, nullptr, nullptr, flags, context) : nullptr;
}

bool HttpSendRequestW(void* request) {
    const auto send = wininet.Find<decltype(&::HttpSendRequestW)>(L"HttpSendRequestW");
    return send != nullptr && send(request, nullptr, 0, nullptr, 0);
}

bool InternetReadFile(void* request, void* buffer, DWORD bytes, DWORD* read) {
    const auto readFile = wininet.Find<decltype(&::InternetReadFile)>(L"InternetReadFile");
    return readFile != nullptr && readFile(request, buffer, bytes, read);
}

void InternetCloseHandle(void* handle) {
    if (const auto close = wininet.Find<decltype(&::InternetCloseHandle)>(L"InternetCloseHandle")) {
        close(handle);
    }
}

}  // namespace platform
