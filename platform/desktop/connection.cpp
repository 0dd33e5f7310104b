// A desktop's connection manager: the connection is there at once. The proxy is the one of the user's internet
// settings.

#include "platform/connection.h"

#include <iterator>

#include "platform/desktop/internet_library.h"
#include "platform/desktop/proxy_list.h"
#include "platform/format_text.h"

namespace platform {
namespace {

bool FillProxy(const wchar_t* servers, ProxyRecord& proxy) {
    static_assert(sizeof(wchar_t) == sizeof(proxy.szProxyServer[0]));
    wchar_t host[kProxyHostUnits];
    WORD port = 0;
    if (!FindHttpProxy(servers, host, &port)) {
        return false;
    }
    FormatText(std::span<wchar_t>(reinterpret_cast<wchar_t*>(proxy.szProxyServer), std::size(proxy.szProxyServer)),
               L"%s:%d", host, port);
    return true;
}

}  // namespace

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
    InternetLibrary library;
    if (!FindInternetLibrary(library) ||
        !library.queryOption(nullptr, INTERNET_OPTION_PER_CONNECTION_OPTION, &list, &bytes)) {
        return E_NOINTERFACE;
    }
    wchar_t* const servers = options[1].Value.pszValue;
    const bool inUse = (options[0].Value.dwValue & PROXY_TYPE_PROXY) != 0 && servers != nullptr;
    const bool found = inUse && FillProxy(servers, *proxy);
    GlobalFree(servers);
    return found ? S_OK : E_NOINTERFACE;
}

}  // namespace platform
