// A connection attempt of our own, because Wine's internet library waits minutes for a host that swallows packets.

#include "platform/desktop/host_probe.h"

#include "platform/desktop/proxy_list.h"
#include "platform/format_text.h"

namespace platform {
namespace {

bool Resolve(const wchar_t* host, WORD port, sockaddr_in* address) {
    char name[256];
    FormatText(std::span<char>(name), "%S", host);
    address->sin_family = AF_INET;
    address->sin_port = htons(port);
    address->sin_addr.s_addr = inet_addr(name);
    if (address->sin_addr.s_addr != INADDR_NONE) {
        return true;
    }
    const hostent* entry = gethostbyname(name);
    if (entry == nullptr || entry->h_addr_list[0] == nullptr) {
        return false;
    }
    memcpy(&address->sin_addr, entry->h_addr_list[0], sizeof(address->sin_addr));
    return true;
}

bool Connects(SOCKET attempt, const sockaddr_in& address) {
    u_long nonBlocking = 1;
    ioctlsocket(attempt, FIONBIO, &nonBlocking);
    if (connect(attempt, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) {
        return true;
    }
    fd_set connected = {1, {attempt}};
    fd_set failed = {1, {attempt}};
    timeval limit = {3, 0};
    return select(0, nullptr, &connected, &failed, &limit) > 0 && connected.fd_count == 1;
}

}  // namespace

bool CanReachHost(const wchar_t* host, WORD port) {
    WSADATA data = {};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        return false;
    }
    bool reached = false;
    sockaddr_in address = {};
    if (Resolve(host, port, &address)) {
        const SOCKET attempt = socket(AF_INET, SOCK_STREAM, 0);
        reached = attempt != INVALID_SOCKET && Connects(attempt, address);
        if (attempt != INVALID_SOCKET) {
            closesocket(attempt);
        }
    }
    WSACleanup();
    return reached;
}

bool CanReachProxy(const wchar_t* proxyList) {
    wchar_t host[kProxyHostUnits];
    WORD port = 0;
    return !FindHttpProxy(proxyList, host, &port) || CanReachHost(host, port);
}

}  // namespace platform
