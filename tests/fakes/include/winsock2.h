// winsock2.h of the native build: Winsock's names over the sockets of the real system.
#pragma once

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <unistd.h>

#include "windows.h"

using SOCKET = int;
using u_long = unsigned long;
#define INVALID_SOCKET (-1)
#define SOCKET_ERROR (-1)
struct WSADATA {};

inline constexpr auto WSAStartup = [](WORD, WSADATA*) { return 0; };
inline constexpr auto WSACleanup = [] { return 0; };
inline constexpr auto& closesocket = close;
inline constexpr auto ioctlsocket = [](SOCKET socket, unsigned long command, u_long* argument) {
    return ioctl(socket, command, argument);
};
