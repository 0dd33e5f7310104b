// Winsock with datagrams to the script's hosts, the connection manager, and the internet library.

#include "tests/device/player.h"
#include "tests/device/stand_in_state.h"
#include "tests/support/node_status_reply.h"

#include <arpa/inet.h>
#include <strings.h>

#include <algorithm>

namespace {

constexpr uint32_t kFailed = 0xFFFFFFFF;
constexpr uint32_t kNoInterface = 0x80004002;

struct Socket : Object {
    bool blocks = true;
    std::vector<uint8_t> waiting;  // a datagram
};
struct Connection : KernelObject {};
struct Internet : Object {
    size_t read = 0;
};
struct HostEntry {
    Address record = 0;
};

uint32_t NewInternet(Bed& bed, const Arguments&) {
    return AddObject(bed, std::make_unique<Internet>());
}

uint32_t SendTo(Bed& bed, const Arguments& a) {
    constexpr uint16_t kNodeStatusPort = 137;
    auto* socket = FindObject<Socket>(bed, a[0]);
    if (socket == nullptr || GuestMemory(bed, a[1], a[2]) == nullptr || socket->blocks) {
        return kFailed;
    }
    const device_script::Host* host = FindHost(ReadGuest<uint32_t>(bed, a[4] + 4));
    if (host != nullptr && host->name != nullptr && ntohs(ReadGuest<uint16_t>(bed, a[4] + 2)) == kNodeStatusPort) {
        socket->waiting = NodeStatusReply({host->name});
    }
    return a[2];
}

// Sets are a count and the sockets. One that has nothing will not get it by waiting.
uint32_t Select(Bed& bed, const Arguments& a) {
    uint32_t ready = 0;
    for (uint32_t i = 0; i < ReadGuest<uint32_t>(bed, a[1]); ++i) {
        const auto handle = ReadGuest<uint32_t>(bed, a[1] + 4 + i * 4);
        const auto* socket = FindObject<Socket>(bed, handle);
        if (socket != nullptr && !socket->waiting.empty()) {
            WriteGuest(bed, a[1] + 4 + ready++ * 4, handle);
        }
    }
    WriteGuest(bed, a[1], ready);
    WriteGuest(bed, a[3], uint32_t{0});
    return ready;
}

uint32_t IsInSet(Bed& bed, const Arguments& a) {
    for (uint32_t i = 0; i < ReadGuest<uint32_t>(bed, a[1]); ++i) {
        if (ReadGuest<uint32_t>(bed, a[1] + 4 + i * 4) == a[0]) {
            return 1;
        }
    }
    return 0;
}

uint32_t ReceiveFrom(Bed& bed, const Arguments& a) {
    auto* socket = FindObject<Socket>(bed, a[0]);
    if (socket == nullptr || socket->waiting.empty() || socket->waiting.size() > a[2]) {
        return kFailed;
    }
    const std::vector<uint8_t> datagram = std::move(socket->waiting);
    WriteBytes(bed, a[1], datagram.data(), datagram.size());
    return static_cast<uint32_t>(datagram.size());
}

// The entry belongs to Winsock and is there until the next call.
uint32_t GetHostByName(Bed& bed, const Arguments& a) {
    const std::string name = ReadNarrow(bed, a[0]);
    const auto* host =
        std::find_if(std::begin(device_script::kHosts), std::end(device_script::kHosts), [&](const auto& candidate) {
            return candidate.dnsName != nullptr && strcasecmp(candidate.dnsName, name.c_str()) == 0;
        });
    if (host == std::end(device_script::kHosts)) {
        return 0;
    }
    Address& entry = Part<HostEntry>(bed).record;
    entry = entry != 0 ? entry : Allocate(bed, 32);
    const uint32_t words[] = {a[0], 0, 0x00040002, entry + 16, entry + 24, 0, htonl(0xC0A80700U | host->lastByte)};
    WriteGuest(bed, entry, words);
    return entry;
}

uint32_t EstablishConnection(Bed& bed, const Arguments& a) {
    if (ReadGuest<uint32_t>(bed, a[0]) != 64) {
        return kNoInterface;
    }
    WriteGuest(bed, a[1], AddObject(bed, std::make_unique<Connection>()));
    return 0;
}

uint32_t ReadBody(Bed& bed, const Arguments& a) {
    constexpr std::string_view kBody = device_script::kEchoBody;
    auto* internet = FindObject<Internet>(bed, a[0]);
    if (internet == nullptr) {
        return 0;
    }
    const std::string_view rest = kBody.substr(internet->read).substr(0, a[2]);
    WriteBytes(bed, a[1], rest.data(), rest.size());
    internet->read += rest.size();
    WriteGuest(bed, a[3], static_cast<uint32_t>(rest.size()));
    return 1;
}

constexpr StandInRow kRows[] = {
    {"WSAStartup",
     [](Bed& bed, const Arguments& a) {
         WriteGuest(bed, a[1], std::array<uint8_t, 400>{});
         return 0U;
     }},
    {"WSACleanup",
     [](Bed& bed, const Arguments&) {
         Address& entry = Part<HostEntry>(bed).record;
         if (entry != 0) {
             Free(bed, entry);
             entry = 0;
         }
         return 0U;
     }},
    {"socket", [](Bed& bed, const Arguments&) { return AddObject(bed, std::make_unique<Socket>()); }},
    {"closesocket", [](Bed& bed, const Arguments& a) { return RemoveObject<Socket>(bed, a[0]) ? 0 : kFailed; }},
    {"ioctlsocket",
     [](Bed& bed, const Arguments& a) {
         constexpr uint32_t kNonBlocking = 0x8004667E;
         auto* socket = FindObject<Socket>(bed, a[0]);
         if (socket == nullptr || a[1] != kNonBlocking) {
             return kFailed;
         }
         socket->blocks = ReadGuest<uint32_t>(bed, a[2]) == 0;
         return 0U;
     }},
    {"sendto", SendTo},
    {"select", Select},
    {"__WSAFDIsSet", IsInSet},
    {"recvfrom", ReceiveFrom},
    {"gethostbyname", GetHostByName},
    {"inet_addr", [](Bed& bed, const Arguments& a) { return inet_addr(ReadNarrow(bed, a[0]).c_str()); }},
    {"htons", [](Bed&, const Arguments& a) -> uint32_t { return htons(static_cast<uint16_t>(a[0])); }},
    {"htonl", [](Bed&, const Arguments& a) { return htonl(a[0]); }},
    {"ntohl", [](Bed&, const Arguments& a) { return ntohl(a[0]); }},
    {"ConnMgrEstablishConnection", EstablishConnection},
    {"ConnMgrConnectionStatus",
     [](Bed& bed, const Arguments& a) {
         constexpr uint32_t kConnected = 16;
         WriteGuest(bed, a[1], kConnected);
         return 0U;
     }},
    {"ConnMgrReleaseConnection",
     [](Bed& bed, const Arguments& a) { return RemoveObject<Connection>(bed, a[0]) ? 0 : kFailed; }},
    {"ConnMgrProviderMessage", [](Bed&, const Arguments&) { return kNoInterface; }},
    {"InternetOpenW", NewInternet},
    {"InternetConnectW", NewInternet},
    {"HttpOpenRequestW", NewInternet},
    {"HttpSendRequestW", [](Bed&, const Arguments&) { return 1U; }},
    {"InternetReadFile", ReadBody},
    {"InternetCloseHandle", [](Bed& bed, const Arguments& a) -> uint32_t { return RemoveObject<Internet>(bed, a[0]); }},
};

}  // namespace

std::span<const StandInRow> SocketStandIns() {
    return kRows;
}
