// The connection manager and the internet library from the script. A connection is a signalled event, so that it can be
// waited for on every build.

#include "platform/connection.h"

#include <algorithm>

#include "platform/format_text.h"
#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace platform {

namespace {

void* OpenHandle(const char* call) {
    if (fakes::Fails(call)) {
        return nullptr;
    }
    fakes::CountResource(1);
    return &scripted::system.internet;
}

}  // namespace

HRESULT ConnMgrEstablishConnection(const ConnectionRequest& request, HANDLE* connection) {
    auto& manager = scripted::system.connectionManager;
    manager.request = request;
    if (fakes::Fails("ConnMgrEstablishConnection")) {
        return E_FAIL;
    }
    *connection = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    ++manager.open;
    return S_OK;
}

HRESULT ConnMgrConnectionStatus(HANDLE, DWORD* status) {
    auto& manager = scripted::system.connectionManager;
    if (fakes::Fails("ConnMgrConnectionStatus")) {
        return E_FAIL;
    }
    *status = 16;
    if (!manager.statuses.empty()) {
        *status = manager.statuses.front();
        manager.statuses.erase(manager.statuses.begin());
    }
    return S_OK;
}

HRESULT ConnMgrReleaseConnection(HANDLE connection, LONG cache) {
    auto& manager = scripted::system.connectionManager;
    CloseHandle(connection);
    --manager.open;
    manager.releasedWith = cache;
    return S_OK;
}

HRESULT QueryProxy(HANDLE, ProxyRecord* proxy) {
    const auto& manager = scripted::system.connectionManager;
    std::copy(manager.proxy.begin(), manager.proxy.end(), proxy->szProxyServer);
    return fakes::Fails("QueryProxy") ? E_FAIL : manager.proxyResult;
}

void* InternetOpenW(const wchar_t* agent, DWORD accessType, const wchar_t* proxy) {
    scripted::system.internet.asked = std::wstring(agent) + L", access " + std::to_wstring(accessType) + L", " +
                                      (proxy != nullptr ? proxy : L"no proxy");
    return OpenHandle("InternetOpenW");
}

void* InternetConnectW(void*, const wchar_t* host, WORD port) {
    scripted::system.internet.hosts.push_back(host);
    scripted::system.internet.asked += L", port " + std::to_wstring(port);
    return OpenHandle("InternetConnectW");
}

void* HttpOpenRequestW(void*, const wchar_t* path, DWORD flags, DWORD_PTR context) {
    wchar_t rest[300];
    FormatText(rest, L", %s, %X, %d", path, flags, static_cast<uint32_t>(context));
    scripted::system.internet.asked += rest;
    return OpenHandle("HttpOpenRequestW");
}

bool HttpSendRequestW(void*) {
    return !fakes::Fails("HttpSendRequestW");
}

bool InternetReadFile(void*, void* buffer, DWORD bytes, DWORD* read) {
    auto& internet = scripted::system.internet;
    auto& pieces = internet.answers[internet.hosts.back()].pieces;
    *read = 0;
    if (fakes::Fails("InternetReadFile")) {
        return false;
    }
    if (!pieces.empty()) {
        *read = static_cast<DWORD>(pieces[0].copy(static_cast<char*>(buffer), bytes));
        pieces[0].erase(0, *read);
        pieces.erase(pieces.begin(), pieces.begin() + (pieces[0].empty() ? 1 : 0));
    }
    return true;
}

void InternetCloseHandle(void*) {
    fakes::CountResource(-1);
}

}  // namespace platform
