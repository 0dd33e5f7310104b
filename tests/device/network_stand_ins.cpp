// The network as the script's tables and the world's state give it: IP helper, echo, and the wireless driver.

#include "tests/device/player.h"
#include "tests/device/stand_in_state.h"

#include <algorithm>

namespace {

using device_script::Adapter;
using device_script::Host;

constexpr uint8_t kNetwork[] = {192, 168, 7};
enum Error { kNoError = 0, kInvalidParameter = 87, kOverflow = 111, kInsufficientBuffer = 122, kNoData = 232 };

struct Driver : KernelObject {};
struct Echo : Object {};

// The adapters that are up, by their place in the script's table.
std::vector<size_t> UpAdapters(Bed& bed) {
    std::vector<size_t> up;
    for (size_t i = 0; i < std::size(device_script::kAdapters); ++i) {
        if (Part<World>(bed).adapters[i].up) {
            up.push_back(i);
        }
    }
    return up;
}

// Texts of records are narrow and of fixed room, which they do not fill here.
void WriteNarrow(Bed& bed, Address to, const char* text) {
    for (size_t i = 0; text != nullptr && i <= strlen(text); ++i) {
        WriteGuest(bed, to + static_cast<uint32_t>(i), text[i]);
    }
}

// The size-then-data protocol of most calls: true when `buffer` has the room that `size` says and the data need.
bool HasRoom(Bed& bed, Address buffer, Address size, uint32_t needed) {
    const bool fits = buffer != 0 && ReadGuest<uint32_t>(bed, size) >= needed;
    WriteGuest(bed, size, needed);
    if (fits) {
        WriteBytes(bed, buffer, std::vector<uint8_t>(needed).data(), needed);
    }
    return fits;
}

// IP_ADAPTER_INFO; an IP_ADDR_STRING is a link, 16 characters of address and 16 of mask.
constexpr uint32_t kAdapterInfoBytes = 640;
void WriteAdapter(Bed& bed, Address info, const Adapter& adapter, uint32_t index) {
    WriteNarrow(bed, info + 8, adapter.name);
    WriteNarrow(bed, info + 268, adapter.description);
    WriteGuest(bed, info + 400, uint32_t{sizeof(adapter.mac)});
    WriteGuest(bed, info + 404, adapter.mac);
    WriteGuest(bed, info + 412, index);
    WriteGuest(bed, info + 416, device_script::kInterfaceType);
    WriteGuest(bed, info + 420, uint32_t{adapter.dhcpServer != nullptr});
    WriteNarrow(bed, info + 428 + 4, adapter.address);  // with no current address: the driver's choice
    WriteNarrow(bed, info + 428 + 20, adapter.mask);
    WriteNarrow(bed, info + 468 + 4, adapter.gateway);
    WriteNarrow(bed, info + 508 + 4, adapter.dhcpServer);
    WriteGuest(bed, info + 548, uint32_t{adapter.wins[0] != nullptr});
    WriteNarrow(bed, info + 552 + 4, adapter.wins[0]);
    WriteNarrow(bed, info + 592 + 4, adapter.wins[1]);
    WriteGuest(bed, info + 632, adapter.leaseObtained);
    WriteGuest(bed, info + 636, adapter.leaseExpires);
}

uint32_t GetAdaptersInfo(Bed& bed, const Arguments& a) {
    const std::vector<size_t> up = UpAdapters(bed);
    if (up.empty()) {
        return kNoData;
    }
    if (!HasRoom(bed, a[0], a[1], static_cast<uint32_t>(up.size()) * kAdapterInfoBytes)) {
        return kOverflow;
    }
    for (uint32_t i = 0; i < up.size(); ++i) {
        const Address info = a[0] + i * kAdapterInfoBytes;
        WriteAdapter(bed, info, device_script::kAdapters[up[i]], Part<World>(bed).adapters[up[i]].index);
        WriteGuest(bed, info, i + 1 < up.size() ? info + kAdapterInfoBytes : 0);
    }
    return kNoError;
}

// IP_INTERFACE_INFO: a count, then an index and 128 units of name each.
uint32_t GetInterfaceInfo(Bed& bed, const Arguments& a) {
    constexpr uint32_t kRowBytes = 260;
    const std::vector<size_t> up = UpAdapters(bed);
    const auto count = static_cast<uint32_t>(up.size());
    if (!HasRoom(bed, a[0], a[1], 4 + std::max(count, 1U) * kRowBytes)) {
        return kInsufficientBuffer;
    }
    WriteGuest(bed, a[0], count);
    for (uint32_t i = 0; i < count; ++i) {
        WriteGuest(bed, a[0] + 4 + i * kRowBytes, Part<World>(bed).adapters[up[i]].index);
        WriteText(bed, a[0] + 8 + i * kRowBytes, Widen(device_script::kAdapters[up[i]].name));
    }
    return kNoError;
}

// The place of the adapter in the tables; none: -1.
int FindAdapter(Bed& bed, uint32_t index) {
    for (const size_t i : UpAdapters(bed)) {
        if (Part<World>(bed).adapters[i].index == index) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

uint32_t GetIfEntry(Bed& bed, const Arguments& a) {
    const int place = FindAdapter(bed, ReadGuest<uint32_t>(bed, a[0] + 512));
    if (place < 0 || GuestMemory(bed, a[0], 860, true) == nullptr) {
        return kInvalidParameter;
    }
    const auto& state = Part<World>(bed).adapters[place];
    WriteGuest(bed, a[0] + 516, device_script::kInterfaceType);
    WriteGuest(bed, a[0] + 524, device_script::kAdapters[place].speed);
    WriteGuest(bed, a[0] + 552, state.received);
    WriteGuest(bed, a[0] + 576, state.transmitted);
    return kNoError;
}

// IP_PER_ADAPTER_INFO, whose list of name servers begins at 12; further ones stand behind it.
uint32_t GetPerAdapterInfo(Bed& bed, const Arguments& a) {
    constexpr uint32_t kFirst = 12;
    constexpr uint32_t kEntryBytes = 40;
    const int place = FindAdapter(bed, a[0]);
    if (place < 0) {
        return kInvalidParameter;
    }
    const auto& servers = device_script::kAdapters[place].dns;
    const uint32_t count = servers[1] != nullptr ? 2 : 1;
    if (!HasRoom(bed, a[1], a[2], kFirst + count * kEntryBytes)) {
        return kOverflow;
    }
    for (uint32_t i = 0; i < count; ++i) {
        const Address entry = a[1] + kFirst + i * kEntryBytes;
        WriteGuest(bed, entry, i + 1 < count ? entry + kEntryBytes : 0);
        WriteNarrow(bed, entry + 4, servers[i]);
    }
    return kNoError;
}

uint32_t GetIpNetTable(Bed& bed, const Arguments& a) {
    constexpr uint32_t kRowBytes = 24;
    std::vector<Host> known;
    std::copy_if(std::begin(device_script::kHosts), std::end(device_script::kHosts), std::back_inserter(known),
                 [](const Host& host) { return host.mac != nullptr; });
    if (!HasRoom(bed, a[0], a[1], static_cast<uint32_t>(4 + known.size() * kRowBytes))) {
        return kInsufficientBuffer;
    }
    WriteGuest(bed, a[0], static_cast<uint32_t>(known.size()));
    for (uint32_t i = 0; i < known.size(); ++i) {
        const Address row = a[0] + 4 + i * kRowBytes;
        WriteGuest(bed, row + 4, uint32_t{6});
        WriteBytes(bed, row + 8, known[i].mac, 6);
        WriteGuest(bed, row + 16, std::array<uint8_t, 4>{kNetwork[0], kNetwork[1], kNetwork[2], known[i].lastByte});
    }
    return kNoError;
}

// ICMP_ECHO_REPLY of 28 bytes, then the bytes that were sent.
uint32_t IcmpSendEcho(Bed& bed, const Arguments& a) {
    const Host* host = FindHost(a[1]);
    const uint32_t bytes = a[3] & 0xFFFF;
    if (FindObject<Echo>(bed, a[0]) == nullptr || host == nullptr || a[6] < 28 + bytes) {
        return 0;
    }
    const uint8_t* data = GuestMemory(bed, a[2], bytes);
    uint8_t* reply = GuestMemory(bed, a[5], 28 + bytes, true);
    if (data == nullptr || reply == nullptr) {
        return 0;
    }
    const uint32_t fields[] = {a[1], 0, host->roundTripMs, bytes, a[5] + 28, 64, 0};
    memcpy(reply, fields, sizeof(fields));
    memcpy(reply + sizeof(fields), data, bytes);
    return 1;
}

std::vector<uint8_t> DriverValue(Bed& bed, uint32_t oid) {
    const World& world = Part<World>(bed);
    if (oid == device_script::kOidRssi) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(&world.dbm);
        return {bytes, bytes + sizeof(world.dbm)};
    }
    if (oid == device_script::kOidBssid) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(device_script::kAssociatedBssid);
        return world.associated ? std::vector<uint8_t>{bytes, bytes + 6} : std::vector<uint8_t>{};
    }
    const auto* found = std::find_if(std::begin(device_script::kOids), std::end(device_script::kOids),
                                     [&](const auto& value) { return value.oid == oid; });
    if (found == std::end(device_script::kOids)) {
        return {};
    }
    const auto* bytes = reinterpret_cast<const uint8_t*>(found->bytes);
    return {bytes, bytes + found->size};
}

// The binding's name behind a record of five words, or the value behind an identifier and the binding's name.
uint32_t DeviceIoControl(Bed& bed, const Arguments& a) {
    constexpr uint32_t kQueryBinding = 0x0012080C;
    constexpr uint32_t kSet = 0x00120814;
    const std::u16string binding = Widen(device_script::kBinding);
    const auto nameBytes = static_cast<uint32_t>(binding.size() * 2);
    if (FindObject<Driver>(bed, a[0]) == nullptr || a[3] < 8) {
        return 0;
    }
    if (a[1] == kQueryBinding) {
        WriteGuest(bed, a[4], std::array<uint32_t, 5>{0, 20, nameBytes, 20 + nameBytes, 0});
        WriteBytes(bed, a[4] + 20, binding.data(), nameBytes);
        WriteGuest(bed, a[6], 20 + nameBytes);
        return 1;
    }
    if (ReadText(bed, ReadGuest<uint32_t>(bed, a[2] + 4)) != binding) {
        return 0;
    }
    if (a[1] == kSet) {
        return 1;
    }
    const std::vector<uint8_t> value = DriverValue(bed, ReadGuest<uint32_t>(bed, a[2]));
    if (value.empty() || a[5] < 8 + value.size()) {
        return 0;
    }
    WriteBytes(bed, a[4] + 8, value.data(), value.size());
    WriteGuest(bed, a[6], static_cast<uint32_t>(8 + value.size()));
    return 1;
}

uint32_t Succeed(Bed&, const Arguments&) {
    return kNoError;
}

constexpr StandInRow kRows[] = {
    {"GetNumberOfInterfaces",
     [](Bed& bed, const Arguments& a) -> uint32_t {
         WriteGuest(bed, a[0], static_cast<uint32_t>(UpAdapters(bed).size()));
         return kNoError;
     }},
    {"GetAdaptersInfo", GetAdaptersInfo},
    {"GetInterfaceInfo", GetInterfaceInfo},
    {"GetIfEntry", GetIfEntry},
    {"GetPerAdapterInfo", GetPerAdapterInfo},
    {"GetIpNetTable", GetIpNetTable},
    {"IpReleaseAddress", Succeed},
    {"IpRenewAddress", Succeed},
    {"IcmpCreateFile", [](Bed& bed, const Arguments&) { return AddObject(bed, std::make_unique<Echo>()); }},
    {"IcmpCloseHandle", [](Bed& bed, const Arguments& a) -> uint32_t { return RemoveObject<Echo>(bed, a[0]); }},
    {"IcmpSendEcho", IcmpSendEcho},
    {"DeviceIoControl", DeviceIoControl},
};

}  // namespace

std::span<const StandInRow> NetworkStandIns() {
    return kRows;
}

uint32_t OpenDriver(Bed& bed) {
    return Part<World>(bed).radio ? AddObject(bed, std::make_unique<Driver>()) : 0;
}

const Host* FindHost(uint32_t address) {
    uint8_t bytes[4];
    memcpy(bytes, &address, sizeof(bytes));
    const auto* host = std::find_if(std::begin(device_script::kHosts), std::end(device_script::kHosts),
                                    [&](const Host& candidate) { return candidate.lastByte == bytes[3]; });
    return memcmp(bytes, kNetwork, sizeof(kNetwork)) == 0 && host != std::end(device_script::kHosts) ? host : nullptr;
}
