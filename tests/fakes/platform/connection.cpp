// The connection manager and the internet library from the script. A connection is a signalled event, so that it can be
// waited for on every build.

#include "platform/connection.h"

#include <algorithm>

#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace scripted {
namespace {

// Handles of the internet library only have to differ.
enum Handle : intptr_t { kSession = 1, kConnection, kRequest };

void* Open(Handle handle, const char* call) {
    if (fakes::Fails(call)) {
        return nullptr;
    }
    fakes::CountResource(1);
    system.internet.calls.push_back(call);
    return reinterpret_cast<void*>(handle);
}

EchoAnswer& CurrentAnswer() {
    static EchoAnswer none;
    const auto found = system.internet.answers.find(system.internet.hosts.empty() ? L"" : system.internet.hosts.back());
    return found == system.internet.answers.end() ? none : found->second;
}

}  // namespace
}  // namespace scripted

namespace platform {

using scripted::CurrentAnswer;
using scripted::Open;

HRESULT ConnMgrEstablishConnection(const ConnectionRequest& request, HANDLE* connection) {
    auto& manager = scripted::system.connectionManager;
    manager.request = request;
    if (fakes::Fails("ConnMgrEstablishConnection")) {
        return E_FAIL;
    }
    if (manager.establish < 0) {
        return manager.establish;
    }
    *connection = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    ++manager.open;
    return manager.establish;
}

HRESULT ConnMgrConnectionStatus(HANDLE, DWORD* status) {
    auto& manager = scripted::system.connectionManager;
    if (fakes::Fails("ConnMgrConnectionStatus")) {
        return E_FAIL;
    }
    if (manager.statuses.empty()) {
        *status = 16;
        return manager.statusResult;
    }
    *status = manager.statuses.front();
    manager.statuses.erase(manager.statuses.begin());
    return manager.statusResult;
}

HRESULT ConnMgrReleaseConnection(HANDLE connection, LONG cache) {
    auto& manager = scripted::system.connectionManager;
    CloseHandle(connection);
    --manager.open;
    manager.releasedWith.push_back(cache);
    return S_OK;
}

HRESULT QueryProxy(HANDLE, ProxyRecord* proxy) {
    const auto& manager = scripted::system.connectionManager;
    std::copy(manager.proxy.begin(), manager.proxy.end(), proxy->szProxyServer);
    return fakes::Fails("QueryProxy") ? E_FAIL : manager.proxyResult;
}

void* InternetOpenW(const wchar_t* agent, DWORD accessType, const wchar_t* proxy) {
    auto& internet = scripted::system.internet;
    internet.agent = agent;
    internet.accessType = accessType;
    internet.proxy = proxy != nullptr ? std::optional<std::wstring>(proxy) : std::nullopt;
    return Open(scripted::kSession, "InternetOpenW");
}

void* InternetConnectW(void*, const wchar_t* host, WORD port) {
    scripted::system.internet.hosts.push_back(host);
    scripted::system.internet.port = port;
    return Open(scripted::kConnection, "InternetConnectW");
}

void* HttpOpenRequestW(void*, const wchar_t* path, DWORD flags, DWORD_PTR context) {
    auto& internet = scripted::system.internet;
    internet.path = path;
    internet.flags = flags;
    internet.context = context;
    return Open(scripted::kRequest, "HttpOpenRequestW");
}

bool HttpSendRequestW(void*) {
    if (fakes::Fails("HttpSendRequestW")) {
        return false;
    }
    scripted::system.internet.calls.push_back("HttpSendRequestW");
    return true;
}

bool InternetReadFile(void*, void* buffer, DWORD bytes, DWORD* read) {
    auto& pieces = CurrentAnswer().pieces;
    *read = 0;
    if (fakes::Fails("InternetReadFile")) {
        return false;
    }
    if (pieces.empty()) {
        return !CurrentAnswer().breaksOff;
    }
    std::string& piece = pieces.front();
    *read = static_cast<DWORD>(std::min<size_t>(piece.size(), bytes));
    std::copy_n(piece.begin(), *read, static_cast<char*>(buffer));
    piece.erase(0, *read);
    if (piece.empty()) {
        pieces.erase(pieces.begin());
    }
    return true;
}

void InternetCloseHandle(void* handle) {
    fakes::CountResource(-1);
    const char* const names[] = {"", "session", "connection", "request"};
    scripted::system.internet.calls.push_back(std::string("close ") + names[reinterpret_cast<intptr_t>(handle)]);
}

}  // namespace platform
