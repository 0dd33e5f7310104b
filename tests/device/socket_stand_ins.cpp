// Winsock with datagrams to the script's hosts, the connection manager, and the internet library.

#include "tests/device/stand_in.h"
#include "tests/device/stand_in_state.h"
#include "tests/support/node_status_reply.h"

#include <arpa/inet.h>

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

template <class Kind>
uint32_t New(Bed& bed) {
    return AddObject(bed, std::make_unique<Kind>());
}

uint32_t SetBlocking(Bed& bed, Socket& socket, uint32_t command, Address value) {
    constexpr uint32_t kNonBlocking = 0x8004667E;
    socket.blocks = ReadGuest<uint32_t>(bed, value) == 0;
    return command == kNonBlocking ? 0 : kFailed;
}

uint32_t SendTo(Bed& bed, Socket& socket, Address data, uint32_t bytes, uint32_t, Address to) {
    constexpr uint16_t kNodeStatusPort = 137;
    if (GuestMemory(bed, data, bytes) == nullptr || socket.blocks) {
        return kFailed;
    }
    const device_script::Host* host = device_script::FindHost(ReadGuest<uint32_t>(bed, to + 4));
    if (host != nullptr && host->name != nullptr && ntohs(ReadGuest<uint16_t>(bed, to + 2)) == kNodeStatusPort) {
        socket.waiting = NodeStatusReply({host->name});
    }
    return bytes;
}

// A set is a count and the sockets.
bool IsInSet(Bed& bed, uint32_t socket, Address set) {
    for (uint32_t i = 0; i < ReadGuest<uint32_t>(bed, set); ++i) {
        if (ReadGuest<uint32_t>(bed, set + 4 + i * 4) == socket) {
            return true;
        }
    }
    return false;
}

// A socket that has nothing will not get it by waiting.
uint32_t Select(Bed& bed, uint32_t, Address readable, uint32_t, Address exceptional) {
    uint32_t ready = 0;
    for (uint32_t i = 0; i < ReadGuest<uint32_t>(bed, readable); ++i) {
        const auto handle = ReadGuest<uint32_t>(bed, readable + 4 + i * 4);
        const auto* socket = FindObject<Socket>(bed, handle);
        if (socket != nullptr && !socket->waiting.empty()) {
            WriteGuest(bed, readable + 4 + ready++ * 4, handle);
        }
    }
    WriteGuest(bed, readable, ready);
    WriteGuest(bed, exceptional, uint32_t{0});
    return ready;
}

size_t ReceiveFrom(Bed& bed, Socket& socket, Address buffer, uint32_t room) {
    if (socket.waiting.empty() || socket.waiting.size() > room) {
        return kFailed;
    }
    const std::vector<uint8_t> datagram = std::move(socket.waiting);
    WriteBytes(bed, buffer, datagram.data(), datagram.size());
    return datagram.size();
}

// The entry belongs to Winsock and is there until the next call.
Address GetHostByName(Bed& bed, std::string name) {
    const device_script::Host* host = device_script::FindHostNamed(name);
    if (host == nullptr) {
        return 0;
    }
    Address& entry = Part<HostEntry>(bed).record;
    entry = entry != 0 ? entry : Allocate(bed, 32);
    const uint32_t words[] = {0, 0, 0x00040002, entry + 16, entry + 24, 0, device_script::AddressOf(*host)};
    WriteGuest(bed, entry, words);
    return entry;
}

uint32_t EndWinsock(Bed& bed) {
    Address& entry = Part<HostEntry>(bed).record;
    if (entry != 0) {
        Free(bed, entry);
    }
    entry = 0;
    return 0;
}

uint32_t EstablishConnection(Bed& bed, Address request, Address connection) {
    if (ReadGuest<uint32_t>(bed, request) != 64) {
        return kNoInterface;
    }
    WriteGuest(bed, connection, New<Connection>(bed));
    return 0;
}

uint32_t GetConnectionStatus(Bed& bed, Connection&, Address status) {
    constexpr uint32_t kConnected = 16;
    WriteGuest(bed, status, kConnected);
    return 0;
}

void ReadBody(Bed& bed, Internet& internet, Address buffer, uint32_t room, Address bytes) {
    const std::string_view rest = std::string_view(device_script::kEchoBody).substr(internet.read).substr(0, room);
    WriteBytes(bed, buffer, rest.data(), rest.size());
    internet.read += rest.size();
    WriteGuest(bed, bytes, static_cast<uint32_t>(rest.size()));
}

}  // namespace

StandInTable SocketStandIns() {
    return {
        {"WSAStartup",
         [](Bed& bed, uint32_t, Address data) { return WriteGuest(bed, data, std::array<uint8_t, 400>{}), 0; }},
        {"WSACleanup", EndWinsock},
        {"socket", New<Socket>},
        {"closesocket", [](Bed& bed, uint32_t socket) { return RemoveObject<Socket>(bed, socket) ? 0 : kFailed; }},
        {"ioctlsocket", SetBlocking},
        {"sendto", SendTo},
        {"select", Select},
        {"__WSAFDIsSet", IsInSet},
        {"recvfrom", ReceiveFrom},
        {"gethostbyname", GetHostByName},
        {"inet_addr", [](Bed&, std::string text) { return inet_addr(text.c_str()); }},
        {"htons", [](Bed&, uint16_t value) { return htons(value); }},
        {"htonl", [](Bed&, uint32_t value) { return htonl(value); }},
        {"ntohl", [](Bed&, uint32_t value) { return ntohl(value); }},
        {"ConnMgrEstablishConnection", EstablishConnection},
        {"ConnMgrConnectionStatus", GetConnectionStatus},
        {"ConnMgrReleaseConnection",
         [](Bed& bed, uint32_t handle) { return RemoveObject<Connection>(bed, handle) ? 0 : kFailed; }},
        {"ConnMgrProviderMessage", [](Bed&) { return kNoInterface; }},
        {"InternetOpenW", New<Internet>},
        {"InternetConnectW", New<Internet>},
        {"HttpOpenRequestW", New<Internet>},
        {"HttpSendRequestW", Ignore},
        {"InternetReadFile", ReadBody},
        {"InternetCloseHandle", RemoveObject<Internet>},
    };
}
