// A desktop's connection manager: the connection is there at once. The proxy is the one of the user's internet
// settings.

#include "platform/connection.h"

#include <wininet.h>

#include <iterator>

namespace platform {

HRESULT ConnMgrEstablishConnection(const ConnectionRequest&, HANDLE* connection) {
    *connection = CreateEventW(nullptr, TRUE, TRUE, nullptr);  // signalled: there is nothing to wait for
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

HRESULT QueryProxy(HANDLE, ProxyRecord* proxy) {
    INTERNET_PER_CONN_OPTIONW options[2] = {};
    options[0].dwOption = INTERNET_PER_CONN_FLAGS;
    options[1].dwOption = INTERNET_PER_CONN_PROXY_SERVER;
    INTERNET_PER_CONN_OPTION_LISTW list = {};
    list.dwSize = sizeof(list);
    list.dwOptionCount = 2;
    list.pOptions = options;
    DWORD bytes = sizeof(list);
    if (!::InternetQueryOptionW(nullptr, INTERNET_OPTION_PER_CONNECTION_OPTION, &list, &bytes)) {
        return E_NOINTERFACE;
    }
    wchar_t* const server = options[1].Value.pszValue;
    HRESULT result = E_NOINTERFACE;
    if (server != nullptr) {
        const size_t length = wcslen(server);
        if ((options[0].Value.dwValue & PROXY_TYPE_PROXY) != 0 && length != 0 &&
            length < std::size(proxy->szProxyServer)) {
            memcpy(proxy->szProxyServer, server, (length + 1) * sizeof(wchar_t));
            result = S_OK;
        }
        GlobalFree(server);
    }
    return result;
}

}  // namespace platform
