// What Wine's own services answer where the desktop side corrects them, as Windows or a handheld would not: a line for
// each difference that still exists.

#include "tests/system/probe/wine_differences.h"

#include "platform/system.h"

#include <wininet.h>

#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

std::vector<uint8_t> ReadAdapters() {
    ULONG bytes = 0;
    GetAdaptersInfo(nullptr, &bytes);
    std::vector<uint8_t> buffer(bytes);
    return GetAdaptersInfo(reinterpret_cast<IP_ADAPTER_INFO*>(buffer.data()), &bytes) == NO_ERROR
               ? buffer
               : std::vector<uint8_t>(sizeof(IP_ADAPTER_INFO));
}

bool EveryAdapterClaimsDhcp() {
    const auto buffer = ReadAdapters();
    auto* adapter = reinterpret_cast<const IP_ADAPTER_INFO*>(buffer.data());
    bool every = true;
    for (; adapter != nullptr; adapter = adapter->Next) {
        every = every && adapter->DhcpEnabled != 0 && adapter->LeaseObtained == 0;
    }
    return every;
}

bool ReleaseIsNotSupported() {
    IP_ADAPTER_INDEX_MAP map = {};
    return IpReleaseAddress(&map) == ERROR_NOT_SUPPORTED;
}

// To a silent host, more at once than Wine has room for.
bool EchoesBeyond256AreRefused(const char* silent) {
    std::atomic<int> refused = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 270; ++i) {
        threads.emplace_back([&] {
            HANDLE echo = IcmpCreateFile();
            char data[32] = {};
            char reply[200];
            if (IcmpSendEcho(echo, inet_addr(silent), data, sizeof(data), nullptr, reply, sizeof(reply), 2000) == 0 &&
                GetLastError() == ERROR_NOT_ENOUGH_MEMORY) {
                ++refused;
            }
            IcmpCloseHandle(echo);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return refused > 0;
}

// The thread is left behind: that is the difference.
bool ConnectTimeoutIsIgnored(const char* silent) {
    std::atomic<bool>& ended = *new std::atomic<bool>(false);
    std::thread([silent, &ended] {
        DWORD timeoutMs = 500;
        HINTERNET session = InternetOpenA("probe", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
        InternetSetOptionA(session, INTERNET_OPTION_CONNECT_TIMEOUT, &timeoutMs, sizeof(timeoutMs));
        HINTERNET server = InternetConnectA(session, silent, 80, "", "", INTERNET_SERVICE_HTTP, 0, 0);
        HINTERNET request = HttpOpenRequestA(server, nullptr, "", nullptr, nullptr, nullptr, 0, 0);
        HttpSendRequestA(request, nullptr, 0, nullptr, 0);
        ended = true;
    }).detach();
    Sleep(4000);
    return !ended;
}

}  // namespace

void ShowWineDifferences(const char* silent) {
    printf("dhcp claimed %d\n", EveryAdapterClaimsDhcp());
    printf("release unsupported %d\n", ReleaseIsNotSupported());
    printf("echoes refused %d\n", EchoesBeyond256AreRefused(silent));
    printf("connect unbounded %d\n", ConnectTimeoutIsIgnored(silent));
    fflush(stdout);
    ExitProcess(0);
}
