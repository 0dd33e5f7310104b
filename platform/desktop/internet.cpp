// One HTTP exchange through the internet library, bounded as a whole. Neither the library's time-outs nor closing its
// handles end an exchange with every server under Wine (a host that swallows packets, a trickle of bytes), so a thread
// of its own runs the exchange and the caller waits for it only so long.

#include "platform/connection.h"

#include <algorithm>

#include "platform/atomics.h"
#include "platform/desktop/host_probe.h"
#include "platform/desktop/internet_library.h"
#include "platform/desktop/wine.h"
#include "platform/scoped.h"

namespace platform {
namespace {

constexpr size_t kMaxText = 256;
constexpr DWORD kMaxBodyBytes = 16384;

// What session, connection and request are made of; each handle is such a record. The thread of an exchange has its own
// reference, so that the last of the two to finish frees it.
struct Exchange {
    volatile int32_t owners;
    volatile int32_t abandoned;
    volatile int32_t reached;  // the server is there: it has earned more patience
    DWORD accessType;
    DWORD flags;
    DWORD_PTR context;
    WORD port;
    wchar_t agent[kMaxText];
    wchar_t proxy[kMaxText];  // empty: none
    wchar_t host[kMaxText];
    wchar_t path[kMaxText];
    HMODULE module;
    bool answered;
    DWORD bodyBytes;
    DWORD bodyRead;
    uint8_t body[kMaxBodyBytes];
};

bool CopyName(wchar_t (&to)[kMaxText], const wchar_t* from) {
    const size_t length = from != nullptr ? wcslen(from) : 0;
    if (length >= kMaxText) {
        return false;
    }
    wmemcpy(to, from, length);
    to[length] = 0;
    return true;
}

Exchange* NewExchange(const Exchange* like) {
    auto* exchange = static_cast<Exchange*>(LocalAlloc(LPTR, sizeof(Exchange)));
    if (exchange != nullptr && like != nullptr) {
        *exchange = *like;
    }
    if (exchange != nullptr) {
        exchange->owners = 1;
    }
    return exchange;
}

void Release(Exchange* exchange) {
    if (AtomicDecrement(&exchange->owners) == 0) {
        LocalFree(exchange);
    }
}

struct ScopedInternet {
    const InternetLibrary& library;
    HINTERNET handle;

    ScopedInternet(const InternetLibrary& of, HINTERNET owned) : library(of), handle(owned) {}
    ScopedInternet(const ScopedInternet&) = delete;
    ScopedInternet& operator=(const ScopedInternet&) = delete;
    ~ScopedInternet() {
        if (handle != nullptr) {
            library.closeHandle(handle);
        }
    }

    // Wine heeds the receive time-out on connection and request, not on the session.
    void LimitWaits() const {
        DWORD timeoutMs = 5000;
        for (const DWORD option :
             {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_SEND_TIMEOUT, INTERNET_OPTION_RECEIVE_TIMEOUT}) {
            library.setOption(handle, option, &timeoutMs, sizeof(timeoutMs));
        }
    }
};

// What came before a read failed is the body, and a read that fails tells how much had come to it.
void ReadBody(Exchange& exchange, const ScopedInternet& request) {
    bool more = true;
    while (more && exchange.bodyBytes < kMaxBodyBytes && AtomicLoad(&exchange.abandoned) == 0) {
        const DWORD room = kMaxBodyBytes - exchange.bodyBytes;
        DWORD read = 0;
        more = request.library.readFile(request.handle, exchange.body + exchange.bodyBytes, room, &read) && read != 0;
        exchange.bodyBytes += std::min(read, room);
    }
}

// Under Wine the library would wait for minutes for a server that swallows packets.
bool CanReachServer(const Exchange& exchange) {
    return !IsWine() ||
           (exchange.proxy[0] != 0 ? CanReachProxy(exchange.proxy) : CanReachHost(exchange.host, exchange.port));
}

bool RunExchange(Exchange& exchange) {
    InternetLibrary library;
    if (!FindInternetLibrary(library) || !CanReachServer(exchange)) {
        return false;
    }
    AtomicExchange(&exchange.reached, 1);
    const wchar_t* proxy = exchange.proxy[0] != 0 ? exchange.proxy : nullptr;
    const ScopedInternet session(library, library.open(exchange.agent, exchange.accessType, proxy, nullptr, 0));
    const ScopedInternet connection(
        library, library.connect(session.handle, exchange.host, exchange.port, L"", L"", INTERNET_SERVICE_HTTP, 0, 0));
    connection.LimitWaits();
    const ScopedInternet request(library, library.openRequest(connection.handle, nullptr, exchange.path, nullptr,
                                                              nullptr, nullptr, exchange.flags, exchange.context));
    request.LimitWaits();
    if (!library.sendRequest(request.handle, nullptr, 0, nullptr, 0)) {
        return false;
    }
    ReadBody(exchange, request);
    return true;
}

DWORD WINAPI ExchangeThread(void* parameter) {
    auto* exchange = static_cast<Exchange*>(parameter);
    HMODULE module = exchange->module;
    exchange->answered = RunExchange(*exchange);
    Release(exchange);
    FreeLibraryAndExitThread(module, 0);
}

// The thread holds the module: an abandoned one may outlive the item.
HANDLE StartThread(Exchange* exchange) {
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&ExchangeThread),
                            &exchange->module)) {
        return nullptr;
    }
    AtomicIncrement(&exchange->owners);
    HANDLE thread = CreateThread(nullptr, 0, ExchangeThread, exchange, 0, nullptr);
    if (thread == nullptr) {
        Release(exchange);
        FreeLibrary(exchange->module);
    }
    return thread;
}

bool EndsInTime(HANDLE thread, Exchange& exchange) {
    constexpr DWORD kReachServerMs = 4000;  // name and connection
    constexpr DWORD kAnswerMs = 6000;
    return WaitForSingleObject(thread, kReachServerMs) == WAIT_OBJECT_0 ||
           (AtomicLoad(&exchange.reached) != 0 && WaitForSingleObject(thread, kAnswerMs) == WAIT_OBJECT_0);
}

}  // namespace

void* InternetOpenW(const wchar_t* agent, DWORD accessType, const wchar_t* proxy) {
    Exchange* session = NewExchange(nullptr);
    if (session == nullptr) {
        return nullptr;
    }
    session->accessType = accessType;
    if (!CopyName(session->agent, agent) || !CopyName(session->proxy, proxy)) {
        Release(session);
        return nullptr;
    }
    return session;
}

void* InternetConnectW(void* session, const wchar_t* host, WORD port) {
    Exchange* connection = NewExchange(static_cast<const Exchange*>(session));
    if (connection == nullptr) {
        return nullptr;
    }
    connection->port = port;
    if (!CopyName(connection->host, host)) {
        Release(connection);
        return nullptr;
    }
    return connection;
}

void* HttpOpenRequestW(void* connection, const wchar_t* path, DWORD flags, DWORD_PTR context) {
    Exchange* request = NewExchange(static_cast<const Exchange*>(connection));
    if (request == nullptr) {
        return nullptr;
    }
    request->flags = flags;
    request->context = context;
    if (!CopyName(request->path, path)) {
        Release(request);
        return nullptr;
    }
    return request;
}

bool HttpSendRequestW(void* request) {
    auto* exchange = static_cast<Exchange*>(request);
    const ScopedHandle thread(StartThread(exchange));
    if (thread.IsOpen() && EndsInTime(thread.handle, *exchange)) {
        return exchange->answered;
    }
    AtomicExchange(&exchange->abandoned, 1);
    return false;
}

bool InternetReadFile(void* request, void* buffer, DWORD bytes, DWORD* read) {
    auto* exchange = static_cast<Exchange*>(request);
    if (AtomicLoad(&exchange->abandoned) != 0 || !exchange->answered) {
        return false;
    }
    *read = std::min(bytes, exchange->bodyBytes - exchange->bodyRead);
    memcpy(buffer, exchange->body + exchange->bodyRead, *read);
    exchange->bodyRead += *read;
    return true;
}

void InternetCloseHandle(void* handle) {
    Release(static_cast<Exchange*>(handle));
}

}  // namespace platform
