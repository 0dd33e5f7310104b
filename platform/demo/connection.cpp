// A connection that is always there, and an echo server that knows a made-up public address (RFC 5737).

#include "platform/connection.h"

#include <algorithm>
#include <string_view>

namespace platform {
namespace {

constexpr std::string_view kBody = "203.0.113.45\r\n";

// Session, connection and request are told apart by nobody: one at a time is open.
struct Request {
    size_t read;
};
Request onlyRequest;

}  // namespace

HRESULT ConnMgrEstablishConnection(const ConnectionRequest&, HANDLE* connection) {
    *connection = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    return *connection != nullptr ? S_OK : E_FAIL;
}

HRESULT ConnMgrConnectionStatus(HANDLE, DWORD* status) {
    constexpr DWORD kConnected = 16;
    *status = kConnected;
    return S_OK;
}

HRESULT ConnMgrReleaseConnection(HANDLE connection, LONG) {
    return CloseHandle(connection) ? S_OK : E_FAIL;
}

HRESULT QueryProxy(HANDLE, ProxyRecord*) {
    return E_NOINTERFACE;
}

void* InternetOpenW(const wchar_t*, DWORD, const wchar_t*) {
    return &onlyRequest;
}

void* InternetConnectW(void* session, const wchar_t*, WORD) {
    return session;
}

void* HttpOpenRequestW(void* connection, const wchar_t*, DWORD, DWORD_PTR) {
    onlyRequest.read = 0;
    return connection;
}

bool HttpSendRequestW(void*) {
    constexpr DWORD kServerMs = 120;
    Sleep(kServerMs);
    return true;
}

bool InternetReadFile(void*, void* buffer, DWORD bytes, DWORD* read) {
    const size_t count = std::min<size_t>(bytes, kBody.size() - onlyRequest.read);
    memcpy(buffer, kBody.data() + onlyRequest.read, count);
    onlyRequest.read += count;
    *read = static_cast<DWORD>(count);
    return true;
}

void InternetCloseHandle(void*) {}

}  // namespace platform
