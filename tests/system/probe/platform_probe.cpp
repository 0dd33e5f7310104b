// platform_probe.exe COMMAND ARGUMENT... - asks the desktop's services and prints what they answer, a line a record,
// for the system tests to compare with what they know of their network.

#include "platform/adapters.h"
#include "platform/connection.h"
#include "platform/echo.h"
#include "tests/system/probe/wine_differences.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

double Now() {
    LARGE_INTEGER ticks, perSecond;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(ticks.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

std::string Text(uint32_t address) {
    in_addr number;
    number.s_addr = address;
    return inet_ntoa(number);
}

// The size-then-data protocol of the IP helper service. Empty on failure.
std::vector<uint8_t> Ask(const std::function<DWORD(void*, ULONG*)>& call, DWORD needsRoom) {
    ULONG bytes = 0;
    const DWORD sizeResult = call(nullptr, &bytes);
    std::vector<uint8_t> buffer(sizeResult == needsRoom ? bytes : 0);
    const DWORD result = buffer.empty() ? sizeResult : call(buffer.data(), &bytes);
    if (result != NO_ERROR) {
        printf("error %lu\n", result);
        buffer.clear();
    }
    return buffer;
}

void RunThreads(size_t count, const std::function<void(size_t)>& work) {
    std::vector<std::thread> threads;
    for (size_t i = 0; i < count; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// Adapter and interface lists, each in its order.
void ShowAdapters(const Arguments&) {
    DWORD count = 0;
    const DWORD result = platform::GetNumberOfInterfaces(&count);
    printf("count %lu %lu\n", result, count);
    const auto adapters = Ask(
        [](void* out, ULONG* bytes) { return platform::GetAdaptersInfo(static_cast<IP_ADAPTER_INFO*>(out), bytes); },
        ERROR_BUFFER_OVERFLOW);
    auto* adapter = adapters.empty() ? nullptr : reinterpret_cast<const IP_ADAPTER_INFO*>(adapters.data());
    for (; adapter != nullptr; adapter = adapter->Next) {
        printf("adapter %s %s %lu %u %s\n", adapter->AdapterName, adapter->Description, adapter->Index, adapter->Type,
               adapter->CurrentIpAddress->IpAddress.String);
        printf("lease %u %lld %lld [%s] [%s] [%s]\n", adapter->DhcpEnabled,
               static_cast<long long>(adapter->LeaseObtained), static_cast<long long>(adapter->LeaseExpires),
               adapter->DhcpServer.IpAddress.String, adapter->PrimaryWinsServer.IpAddress.String,
               adapter->SecondaryWinsServer.IpAddress.String);
    }
    const auto interfaces = Ask(
        [](void* out, ULONG* bytes) { return platform::GetInterfaceInfo(static_cast<IP_INTERFACE_INFO*>(out), bytes); },
        ERROR_INSUFFICIENT_BUFFER);
    auto* table = reinterpret_cast<const IP_INTERFACE_INFO*>(interfaces.data());
    for (LONG i = 0; table != nullptr && i < table->NumAdapters; ++i) {
        printf("interface %ls %lu\n", table->Adapter[i].Name, table->Adapter[i].Index);
    }
}

MIB_IFROW ReadCounters(DWORD index) {
    MIB_IFROW row = {};
    row.dwIndex = index;
    row.dwType = platform::GetIfEntry(&row) == NO_ERROR ? row.dwType : 0;
    return row;
}

// INDEX: the interface's counters and its DNS servers.
void ShowInterface(const Arguments& arguments) {
    const DWORD index = strtoul(arguments[0].c_str(), nullptr, 10);
    const MIB_IFROW row = ReadCounters(index);
    printf("counters %lu %lu %lu\n", row.dwType, row.dwInOctets, row.dwOutOctets);
    const auto info = Ask(
        [&](void* out, ULONG* bytes) {
            return platform::GetPerAdapterInfo(index, static_cast<IP_PER_ADAPTER_INFO*>(out), bytes);
        },
        ERROR_BUFFER_OVERFLOW);
    const IP_ADDR_STRING* server =
        info.empty() ? nullptr : &reinterpret_cast<const IP_PER_ADAPTER_INFO*>(info.data())->DnsServerList;
    for (; server != nullptr; server = server->Next) {
        printf("dns %s\n", server->IpAddress.String);
    }
}

// release|renew INDEX: with the name as the program knows it.
void ChangeLease(const Arguments& arguments) {
    IP_ADAPTER_INDEX_MAP map = {};
    map.Index = strtoul(arguments[1].c_str(), nullptr, 10);
    printf("result %lu\n",
           arguments[0] == "release" ? platform::IpReleaseAddress(&map) : platform::IpRenewAddress(&map));
}

// The hardware address as text, "-" when the table has none.
std::string LookUp(uint32_t address) {
    const auto buffer = Ask(
        [](void* out, ULONG* bytes) { return platform::GetIpNetTable(static_cast<MIB_IPNETTABLE*>(out), bytes, TRUE); },
        ERROR_INSUFFICIENT_BUFFER);
    auto* table = reinterpret_cast<const MIB_IPNETTABLE*>(buffer.data());
    for (DWORD i = 0; table != nullptr && i < table->dwNumEntries; ++i) {
        const MIB_IPNETROW& row = table->table[i];
        if (row.dwAddr == address) {
            char text[18];
            snprintf(text, sizeof(text), "%02x:%02x:%02x:%02x:%02x:%02x", row.bPhysAddr[0], row.bPhysAddr[1],
                     row.bPhysAddr[2], row.bPhysAddr[3], row.bPhysAddr[4], row.bPhysAddr[5]);
            return text;
        }
    }
    return "-";
}

// Fills `reply` like a worker of the scan does; the line's fields are replies, replier, status, ms waited.
DWORD SendEcho(uint32_t address, DWORD timeoutMs, platform::EchoReply* reply) {
    uint8_t data[32];
    uint8_t buffer[platform::kEchoReplyBytes] = {};
    for (int i = 0; i < 32; ++i) {
        data[i] = static_cast<uint8_t>(0x20 + i);
    }
    IP_OPTION_INFORMATION options = {};
    options.Ttl = 128;
    HANDLE echo = platform::IcmpCreateFile();
    const DWORD replies =
        platform::IcmpSendEcho(echo, address, data, sizeof(data), &options, buffer, sizeof(buffer), timeoutMs);
    platform::IcmpCloseHandle(echo);
    memcpy(reply, buffer, sizeof(*reply));
    return replies;
}

// TIMEOUT ADDRESS...: one echo to each, all at once.
void SendEchoes(const Arguments& arguments) {
    const DWORD timeoutMs = strtoul(arguments[0].c_str(), nullptr, 10);
    std::mutex printing;
    RunThreads(arguments.size() - 1, [&](size_t i) {
        const uint32_t address = inet_addr(arguments[i + 1].c_str());
        platform::EchoReply reply;
        const double start = Now();
        const DWORD replies = SendEcho(address, timeoutMs, &reply);
        const double waited = (Now() - start) * 1000;
        const std::lock_guard guard(printing);
        printf("echo %s %lu %s %u %u %.0f\n", arguments[i + 1].c_str(), replies, Text(reply.address).c_str(),
               reply.status, reply.roundTripTime, waited);
    });
}

// ROUNDS TIMEOUT ADDRESS...: each round is a scan's worth of threads, one an address, each of which sends an echo and
// looks up the hardware address of a host that answered; a thread more does what the tick does. Prints how often each
// host answered and was seen with which hardware address, and the slowest round.
void Scan(const Arguments& arguments) {
    const size_t rounds = strtoul(arguments[0].c_str(), nullptr, 10);
    const DWORD timeoutMs = strtoul(arguments[1].c_str(), nullptr, 10);
    const Arguments addresses(arguments.begin() + 2, arguments.end());
    std::mutex counting;
    std::map<std::pair<std::string, std::string>, int> found;
    double slowest = 0;
    int unreadable = 0;
    for (size_t round = 0; round < rounds; ++round) {
        std::atomic<bool> scanning = true;
        std::thread tick([&] {
            while (scanning) {
                unreadable += ReadCounters(1).dwType == 0;
                Sleep(20);
            }
        });
        const double start = Now();
        RunThreads(addresses.size(), [&](size_t i) {
            const uint32_t address = inet_addr(addresses[i].c_str());
            platform::EchoReply reply;
            if (SendEcho(address, timeoutMs, &reply) != 0 && reply.address == address) {
                const std::string hardware = LookUp(address);
                const std::lock_guard guard(counting);
                ++found[{addresses[i], hardware}];
            }
        });
        slowest = std::max(slowest, Now() - start);
        scanning = false;
        tick.join();
    }
    for (const auto& [host, count] : found) {
        printf("host %s %s %d\n", host.first.c_str(), host.second.c_str(), count);
    }
    printf("ticks without counters %d\nslowest %.0f\n", unreadable, slowest * 1000);
}

// HOST PORT PROXY|-: one exchange, with the time it took.
void Fetch(const Arguments& arguments) {
    constexpr DWORD kDirect = 1, kProxy = 3;
    const std::wstring host(arguments[0].begin(), arguments[0].end());
    const std::wstring proxy(arguments[2].begin(), arguments[2].end());
    const bool direct = proxy == L"-";
    const double start = Now();
    void* session = platform::InternetOpenW(L"probe", direct ? kDirect : kProxy, direct ? nullptr : proxy.c_str());
    void* connection = platform::InternetConnectW(session, host.c_str(), static_cast<WORD>(atoi(arguments[1].c_str())));
    void* request = platform::HttpOpenRequestW(connection, L"ip/ip.php", 0x80000000, 1);
    const bool sent = platform::HttpSendRequestW(request);
    std::string body(10000, 0);
    DWORD total = 0, read = 0;
    while (sent && platform::InternetReadFile(request, body.data() + total, 10000 - total, &read) && read > 0) {
        total += read;
    }
    for (void* handle : {request, connection, session}) {
        platform::InternetCloseHandle(handle);
    }
    printf("fetch %d %lu %.0f %.20s\n", sent, total, (Now() - start) * 1000, body.c_str());
}

// The connection manager's answers: established, signalled, status, proxy result and name.
void ShowConnection(const Arguments&) {
    platform::ConnectionRequest request = {};
    platform::ProxyRecord proxy = {};
    HANDLE connection = nullptr;
    DWORD status = 0;
    const HRESULT established = platform::ConnMgrEstablishConnection(request, &connection);
    const DWORD waited = WaitForSingleObject(connection, 0);
    platform::ConnMgrConnectionStatus(connection, &status);
    const HRESULT found = platform::QueryProxy(connection, &proxy);
    printf("connection %lx %lu %lu %lx %ls\n", established, waited, status, found,
           reinterpret_cast<const wchar_t*>(proxy.szProxyServer));
    platform::ConnMgrReleaseConnection(connection, 1);
}

const std::map<std::string, void (*)(const Arguments&)> kCommands = {
    {"adapters", ShowAdapters},
    {"interface", ShowInterface},
    {"lease", ChangeLease},
    {"scan", Scan},
    {"echo", SendEchoes},
    {"fetch", Fetch},
    {"connection", ShowConnection},
    {"differences", [](const Arguments& arguments) { ShowWineDifferences(arguments[0].c_str()); }},
};

}  // namespace

int main(int count, char** arguments) {
    const auto command = count > 1 ? kCommands.find(arguments[1]) : kCommands.end();
    if (command == kCommands.end()) {
        return 2;
    }
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    command->second(Arguments(arguments + 2, arguments + count));
    return 0;
}
