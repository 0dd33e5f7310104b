// The socket calls that a fault can hit; the linker leads here what the tests' program calls by these names.

#include "tests/fakes/faults.h"
#include "winsock2.h"

extern "C" {

int __real_socket(int family, int type, int protocol);
ssize_t __real_sendto(int socket, const void* data, size_t bytes, int flags, const sockaddr* to, socklen_t length);
int __real_select(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout);
ssize_t __real_recvfrom(int socket, void* data, size_t bytes, int flags, sockaddr* from, socklen_t* length);
hostent* __real_gethostbyname(const char* name);

int __wrap_socket(int family, int type, int protocol) {
    return fakes::Fails("socket") ? INVALID_SOCKET : __real_socket(family, type, protocol);
}

ssize_t __wrap_sendto(int socket, const void* data, size_t bytes, int flags, const sockaddr* to, socklen_t length) {
    return fakes::Fails("sendto") ? SOCKET_ERROR : __real_sendto(socket, data, bytes, flags, to, length);
}

int __wrap_select(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout) {
    return fakes::Fails("select") ? SOCKET_ERROR : __real_select(count, readable, writable, failed, timeout);
}

ssize_t __wrap_recvfrom(int socket, void* data, size_t bytes, int flags, sockaddr* from, socklen_t* length) {
    return fakes::Fails("recvfrom") ? SOCKET_ERROR : __real_recvfrom(socket, data, bytes, flags, from, length);
}

hostent* __wrap_gethostbyname(const char* name) {
    return fakes::Fails("gethostbyname") ? nullptr : __real_gethostbyname(name);
}

}  // extern "C"
