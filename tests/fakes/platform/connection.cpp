// Echo replies, the connection manager and the internet library from the script. A connection is a signalled event, so
// that it can be waited for on every build.

#include "platform/connection.h"
#include "platform/echo.h"

#include <algorithm>

#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace platform {

using scripted::system;

static void* OpenHandle(const char* call) {
    const bool fails = fakes::Fails(call);
    fakes::openResources += fails ? 0 : 1;
    return fails ? nullptr : &system.internet;
}

HANDLE IcmpCreateFile() {
    void* echo = OpenHandle("IcmpCreateFile");
    return echo != nullptr ? echo : INVALID_HANDLE_VALUE;
}

BOOL IcmpCloseHandle(HANDLE) {
    --fakes::openResources;
    return TRUE;
}

DWORD IcmpSendEcho(HANDLE, uint32_t address, const void*, WORD, const IP_OPTION_INFORMATION*, void* reply, DWORD,
                   DWORD timeoutMs) {
    const bool fails = fakes::Fails("IcmpSendEcho") || !system.echo;
    const std::optional<EchoReply> answer = fails ? std::nullopt : system.echo(address, timeoutMs);
    return answer ? (memcpy(reply, &*answer, sizeof(*answer)), 1) : 0;
}

HRESULT ConnMgrEstablishConnection(const ConnectionRequest&, HANDLE* connection) {
    const bool fails = fakes::Fails("ConnMgrEstablishConnection");
    *connection = fails ? nullptr : CreateEventW(nullptr, TRUE, TRUE, nullptr);
    return fails ? E_FAIL : S_OK;
}

HRESULT ConnMgrConnectionStatus(HANDLE, DWORD* status) {
    auto& statuses = system.connectionManager.statuses;
    *status = statuses.empty() ? 16 : statuses.front();
    statuses.erase(statuses.begin(), std::ranges::next(statuses.begin(), 1, statuses.end()));
    return fakes::Fails("ConnMgrConnectionStatus") ? E_FAIL : S_OK;
}

HRESULT ConnMgrReleaseConnection(HANDLE connection, LONG) {
    CloseHandle(connection);
    return S_OK;
}

HRESULT QueryProxy(HANDLE, ProxyRecord* proxy) {
    std::ranges::copy(system.connectionManager.proxy, proxy->szProxyServer);
    return fakes::Fails("QueryProxy") ? E_FAIL : system.connectionManager.proxyResult;
}

void* InternetOpenW(const wchar_t*, DWORD, const wchar_t*) {
    return OpenHandle("InternetOpenW");
}

void* InternetConnectW(void*, const wchar_t* host, WORD) {
    system.internet.hosts.push_back(host);
    return OpenHandle("InternetConnectW");
}

void* HttpOpenRequestW(void*, const wchar_t*, DWORD, DWORD_PTR) {
    return OpenHandle("HttpOpenRequestW");
}

bool HttpSendRequestW(void*) {
    return !fakes::Fails("HttpSendRequestW");
}

bool InternetReadFile(void*, void* buffer, DWORD bytes, DWORD* read) {
    auto& pieces = system.internet.answers[system.internet.hosts.back()];
    const bool fails = fakes::Fails("InternetReadFile");
    *read = fails || pieces.empty() ? 0 : static_cast<DWORD>(pieces[0].copy(static_cast<char*>(buffer), bytes));
    pieces.erase(pieces.begin(), std::ranges::next(pieces.begin(), fails ? 0 : 1, pieces.end()));
    return !fails;
}

void InternetCloseHandle(void*) {
    --fakes::openResources;
}

}  // namespace platform
