// platform/connection.h - the connection manager and the internet library, as public address detection uses them.
#pragma once

#include "platform/system.h"

namespace platform {

// CONNMGR_CONNECTIONINFO of the connection manager, as laid out on a 32-bit handheld (64 bytes).
struct ConnectionRequest {
    uint32_t cbSize;
    uint32_t dwParams;
    uint32_t dwFlags;
    uint32_t dwPriority;
    uint32_t bExclusive;
    uint32_t bDisabled;
    GUID guidDestNet;
    uint32_t hWnd;
    uint32_t uMsg;
    uint32_t lParam;
    uint32_t ulMaxCost;
    uint32_t ulMinRcvBw;
    uint32_t ulMaxConnLatency;
};
static_assert(sizeof(ConnectionRequest) == 64);

inline constexpr size_t kProxyRecordBytes = 1288;

// PROXY_CONFIG; only the proxy's name is read.
struct ProxyRecord {
    uint32_t dwType;
    uint32_t dwEnable;
    uint16_t szProxyServer[256];
    uint8_t rest[kProxyRecordBytes - 8 - 512];
};
static_assert(sizeof(ProxyRecord) == kProxyRecordBytes);

// The connection manager's calls; QueryProxy is ConnMgrProviderMessage asked of IID_ConnPrv_IProxyExtension. HRESULTs
// as theirs. A desktop is connected at once and answers E_NOINTERFACE to the proxy query unless the system has one set.
HRESULT ConnMgrEstablishConnection(const ConnectionRequest& request, HANDLE* connection);
HRESULT ConnMgrConnectionStatus(HANDLE connection, DWORD* status);
HRESULT ConnMgrReleaseConnection(HANDLE connection, LONG cache);
HRESULT QueryProxy(HANDLE connection, ProxyRecord* proxy);

// The internet library's calls of the same names (null on failure). A desktop's exchange takes place within
// HttpSendRequestW, which fails when the server cannot be reached within 4 s or the whole answer is not there within
// 10; a body is cut at 16 KB. Host, path, agent and proxy have at most 255 characters.
void* InternetOpenW(const wchar_t* agent, DWORD accessType, const wchar_t* proxy);
void* InternetConnectW(void* session, const wchar_t* host, WORD port);
void* HttpOpenRequestW(void* connection, const wchar_t* path, DWORD flags, DWORD_PTR context);
bool HttpSendRequestW(void* request);
bool InternetReadFile(void* request, void* buffer, DWORD bytes, DWORD* read);
void InternetCloseHandle(void* handle);

}  // namespace platform
