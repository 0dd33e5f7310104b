// scan_probe.exe ROUNDS - runs the detector's scan in a program of its own, one scan after the other. For each, a line
// a host that answered: "host", the ms after which it was complete, address, hardware address or "-", name in
// hexadecimal digits or "-"; then "round" with the ms of the whole scan and how many hosts stayed pending. At the end
// "left" with the threads and handles more than before, ms of processor time, and KB of the largest working set.

#include "diagnostics/scan.h"

#include <psapi.h>
#include <tlhelp32.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

int CountThreads() {
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof(entry);
    int count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    }
    CloseHandle(snapshot);
    return count;
}

// About: a new handle takes the lowest free number. (Wine does not count them.)
int CountHandles() {
    HANDLE probe = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    CloseHandle(probe);
    return static_cast<int>(reinterpret_cast<intptr_t>(probe) / 4);
}

bool WaitForThreads(int expected, DWORD timeoutMs) {
    const DWORD start = GetTickCount();
    while (CountThreads() > expected) {
        if (GetTickCount() - start > timeoutMs) {
            return false;
        }
        Sleep(20);
    }
    return true;
}

std::string AddressText(uint32_t address) {
    in_addr number;
    number.s_addr = address;
    return inet_ntoa(number);
}

std::string NameText(const char* name) {
    std::string text;
    for (; *name != 0; ++name) {
        char digits[4];
        snprintf(digits, sizeof(digits), "%02x", static_cast<uint8_t>(*name));
        text += digits;
    }
    return text.empty() ? "-" : text;
}

std::string HardwareText(const HostRecord& host) {
    const uint8_t* b = host.mac.bytes;
    char text[18] = "-";
    if (host.macKnown != 0) {
        snprintf(text, sizeof(text), "%02x:%02x:%02x:%02x:%02x:%02x", b[0], b[1], b[2], b[3], b[4], b[5]);
    }
    return text;
}

// Prints the hosts that have answered since; how many are still pending.
int ShowNewHosts(DWORD elapsed) {
    int pending = 0;
    for (HostRecord& host : scanState.table->hosts) {
        const int32_t status = StatusOf(host);
        pending += status == kHostPending ? 1 : 0;
        if (status == kHostAnswered && host.listed == 0) {
            host.listed = 1;
            printf("host %lu %s %s %s\n", elapsed, AddressText(host.address).c_str(), HardwareText(host).c_str(),
                   NameText(host.name).c_str());
        }
    }
    return pending;
}

void ShowUsage(int threads, int handles) {
    FILETIME created, ended, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    const auto ms = [](const FILETIME& time) {
        return ((static_cast<uint64_t>(time.dwHighDateTime) << 32) + time.dwLowDateTime) / 10000;
    };
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
    printf("left %d %d %llu %llu\n", CountThreads() - threads, CountHandles() - handles, ms(kernel) + ms(user),
           static_cast<unsigned long long>(memory.PeakWorkingSetSize / 1024));
}

int Scan(int rounds) {
    constexpr DWORD kBoundMs = 30000;
    WSADATA winsock;
    WSAStartup(0x0102, &winsock);
    int threads = 0;
    int handles = 0;
    for (int round = 0; round < rounds; ++round) {
        const DWORD start = GetTickCount();
        if (!StartScan(nullptr)) {
            return 1;
        }
        int pending = kScanHosts;
        while (pending > 0 && GetTickCount() - start < kBoundMs) {
            Sleep(20);
            pending = ShowNewHosts(GetTickCount() - start);
        }
        printf("round %lu %d\n", GetTickCount() - start, pending);
        fflush(stdout);
        ReleaseScanTable();
        WaitForThreads(round == 0 ? 1 : threads, 3000);
        if (round == 0) {  // what the system itself keeps after a first use is no leak
            threads = CountThreads();
            handles = CountHandles();
        }
    }
    ShowUsage(threads, handles);
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    return count > 1 ? Scan(_wtoi(arguments[1])) : 2;
}
