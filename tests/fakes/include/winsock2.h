// winsock2.h of the native build: Winsock's names over the sockets of the real system.
#pragma once

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "windows.h"

using SOCKET = int;
using u_long = unsigned long;
#define INVALID_SOCKET (-1)
#define SOCKET_ERROR (-1)
struct WSADATA {
    WORD wVersion;
};

inline int WSAStartup(WORD, WSADATA*) {
    return 0;
}
inline int WSACleanup() {
    return 0;
}
inline int closesocket(SOCKET socket) {
    return close(socket);
}
inline int ioctlsocket(SOCKET socket, long command, u_long* argument) {
    int value = static_cast<int>(*argument);
    return ioctl(socket, static_cast<unsigned long>(command), &value);
}
