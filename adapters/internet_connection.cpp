// The connection manager's part: it may have to dial before there is an internet, and it knows the proxy.

#include "adapters/internet_connection.h"

#include "platform/connection.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr DWORD kLongestWaitMs = 12000;
constexpr DWORD kStatusConnected = 16;  // CONNMGR_STATUS_CONNECTED
constexpr GUID kDestinationInternet = {
    0x436EF144, 0xB4FB, 0x4863, {0xA0, 0x41, 0x8F, 0x90, 0x5A, 0x62, 0xC5, 0x72}};  // IID_DestNetInternet

platform::ConnectionRequest MakeRequest() {
    platform::ConnectionRequest request = {};
    request.cbSize = sizeof(request);
    request.dwParams = 1;         // CONNMGR_PARAM_GUIDDESTNET
    request.dwFlags = 1;          // CONNMGR_FLAG_PROXY_HTTP
    request.dwPriority = 0x2000;  // CONNMGR_PRIORITY_USERINTERACTIVE
    request.guidDestNet = kDestinationInternet;
    return request;
}

// Whether the manager has made up its mind: unknown, connected, one of the disconnected states (no path, busy, phone
// off ...) or waiting for resources of another.
bool IsFinal(DWORD status) {
    constexpr DWORD kFirstDisconnected = 33;
    constexpr DWORD kLastDisconnected = 37;
    constexpr DWORD kWaitingConnectionAbort = 66;
    return status == 0 || status == kStatusConnected || status == kWaitingConnectionAbort ||
           (status >= kFirstDisconnected && status <= kLastDisconnected);
}

// 0 to go on waiting.
HRESULT CodeOfFailedWait() {
    const auto error = static_cast<int32_t>(GetLastError());
    return error > 0 ? static_cast<HRESULT>(0x80070000U | (static_cast<uint32_t>(error) & 0xFFFF)) : error;
}

// Waits until the manager's answer is final or 12 s are over; `status` is the last one read.
HRESULT WaitForConnection(HANDLE connection, DWORD* status) {
    const DWORD start = GetTickCount();
    for (DWORD elapsed = 0; elapsed < kLongestWaitMs; elapsed = GetTickCount() - start) {
        HRESULT result = 0;
        switch (WaitForSingleObject(connection, kLongestWaitMs - elapsed)) {
            case WAIT_OBJECT_0:
                result = platform::ConnMgrConnectionStatus(connection, status);
                if (result >= 0 && IsFinal(*status)) {
                    return S_OK;
                }
                break;
            case WAIT_TIMEOUT:
                return E_FAIL;
            case WAIT_FAILED:
                result = CodeOfFailedWait();
                break;
            default:
                break;
        }
        if (result < 0) {
            return result;
        }
    }
    return S_OK;
}

HRESULT AskForProxy(HANDLE connection, InternetConnection& out) {
    platform::ProxyRecord proxy = {};
    const HRESULT result = platform::QueryProxy(connection, &proxy);
    if (result == S_OK) {
        out.accessType = kAccessThroughProxy;
        std::copy_n(proxy.szProxyServer, std::size(out.proxy) - 1, out.proxy);
        return S_OK;
    }
    return result == E_NOINTERFACE ? S_OK : result;
}

}  // namespace

HRESULT EstablishInternetConnection(InternetConnection& out) {
    out = {};
    out.accessType = kAccessDirect;
    HANDLE connection = nullptr;
    HRESULT result = platform::ConnMgrEstablishConnection(MakeRequest(), &connection);
    if (result < 0) {
        return result;
    }
    DWORD status = 0;
    result = WaitForConnection(connection, &status);
    if (result >= 0) {
        result = status == kStatusConnected ? AskForProxy(connection, out) : E_FAIL;
    }
    if (result < 0) {
        platform::ConnMgrReleaseConnection(connection, 1);
        return result;
    }
    out.connection = connection;
    return result;
}
