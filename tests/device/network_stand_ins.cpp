// The network as the script's tables and the world's state give it: IP helper, echo, and the wireless driver.

#include "tests/device/stand_in.h"
#include "tests/device/stand_in_state.h"

#include <algorithm>

namespace {

using device_script::Adapter;
using device_script::Host;

enum Error { kNoError = 0, kInvalidParameter = 87, kOverflow = 111, kInsufficientBuffer = 122, kNoData = 232 };

struct Driver : KernelObject {};
struct Echo : Object {};

// The adapters that are up, with their present state.
struct UpAdapter {
    const Adapter& adapter;
    const World::AdapterState& now;
};
std::vector<UpAdapter> UpAdapters(Bed& bed) {
    std::vector<UpAdapter> up;
    for (size_t i = 0; i < std::size(device_script::kAdapters); ++i) {
        if (const auto& now = Part<World>(bed).adapters[i]; now.up) {
            up.push_back({device_script::kAdapters[i], now});
        }
    }
    return up;
}

// Texts of records are narrow and of fixed room, which they do not fill here.
void WriteNarrow(Bed& bed, Address to, const char* text) {
    WriteBytes(bed, to, text, text != nullptr ? strlen(text) + 1 : 0);
}

// The size-then-data protocol of most calls: true when `buffer` has the room that `size` says and the data need.
bool HasRoom(Bed& bed, Address buffer, Address size, size_t needed) {
    const bool fits = buffer != 0 && ReadGuest<uint32_t>(bed, size) >= needed;
    WriteGuest(bed, size, static_cast<uint32_t>(needed));
    WriteBytes(bed, buffer, std::vector<uint8_t>(needed).data(), fits ? needed : 0);
    return fits;
}

// IP_ADAPTER_INFO; an IP_ADDR_STRING is a link, 16 characters of address and 16 of mask.
constexpr uint32_t kAdapterInfoBytes = 640;
void WriteAdapter(Bed& bed, Address info, const Adapter& adapter, uint32_t index) {
    const std::pair<uint32_t, const char*> texts[] = {{8, adapter.name},          {268, adapter.description},
                                                      {428 + 4, adapter.address}, {428 + 20, adapter.mask},
                                                      {468 + 4, adapter.gateway}, {508 + 4, adapter.dhcpServer},
                                                      {552 + 4, adapter.wins[0]}, {592 + 4, adapter.wins[1]}};
    const std::pair<uint32_t, uint32_t> numbers[] = {
        {400, sizeof(adapter.mac)},           {412, index},
        {416, device_script::kInterfaceType}, {420, adapter.dhcpServer != nullptr},
        {548, adapter.wins[0] != nullptr},    {632, adapter.leaseObtained},
        {636, adapter.leaseExpires}};
    for (const auto& [place, text] : texts) {
        WriteNarrow(bed, info + place, text);
    }
    for (const auto& [place, number] : numbers) {
        WriteGuest(bed, info + place, number);
    }
    WriteGuest(bed, info + 404, adapter.mac);
}

Error GetAdaptersInfo(Bed& bed, Address buffer, Address size) {
    const std::vector<UpAdapter> up = UpAdapters(bed);
    if (up.empty()) {
        return kNoData;
    }
    if (!HasRoom(bed, buffer, size, up.size() * kAdapterInfoBytes)) {
        return kOverflow;
    }
    for (const auto& [adapter, now] : up) {
        WriteAdapter(bed, buffer, adapter, now.index);
        WriteGuest(bed, buffer, &now != &up.back().now ? buffer + kAdapterInfoBytes : 0);
        buffer += kAdapterInfoBytes;
    }
    return kNoError;
}

// IP_INTERFACE_INFO: a count, then an index and 128 units of name each.
Error GetInterfaceInfo(Bed& bed, Address buffer, Address size) {
    constexpr uint32_t kRowBytes = 260;
    const std::vector<UpAdapter> up = UpAdapters(bed);
    if (!HasRoom(bed, buffer, size, 4 + std::max<size_t>(up.size(), 1) * kRowBytes)) {
        return kInsufficientBuffer;
    }
    WriteGuest(bed, buffer, static_cast<uint32_t>(up.size()));
    for (const auto& [adapter, now] : up) {
        WriteGuest(bed, buffer + 4, now.index);
        WriteText(bed, buffer + 8, Widen(adapter.name));
        buffer += kRowBytes;
    }
    return kNoError;
}

const UpAdapter* FindAdapter(const std::vector<UpAdapter>& up, uint32_t index) {
    const auto found = std::find_if(up.begin(), up.end(), [&](const UpAdapter& a) { return a.now.index == index; });
    return found != up.end() ? &*found : nullptr;
}

Error GetIfEntry(Bed& bed, Address row) {
    const std::vector<UpAdapter> up = UpAdapters(bed);
    const UpAdapter* found = FindAdapter(up, ReadGuest<uint32_t>(bed, row + 512));
    if (found == nullptr || GuestMemory(bed, row, 860, true) == nullptr) {
        return kInvalidParameter;
    }
    WriteGuest(bed, row + 516, device_script::kInterfaceType);
    WriteGuest(bed, row + 524, found->adapter.speed);
    WriteGuest(bed, row + 552, found->now.received);
    WriteGuest(bed, row + 576, found->now.transmitted);
    return kNoError;
}

// IP_PER_ADAPTER_INFO, whose list of name servers begins at 12; further ones stand behind it.
Error GetPerAdapterInfo(Bed& bed, uint32_t index, Address buffer, Address size) {
    constexpr uint32_t kFirst = 12, kEntryBytes = 40;
    const std::vector<UpAdapter> up = UpAdapters(bed);
    const UpAdapter* found = FindAdapter(up, index);
    if (found == nullptr) {
        return kInvalidParameter;
    }
    const auto& servers = found->adapter.dns;
    const uint32_t count = servers[1] != nullptr ? 2 : 1;
    if (!HasRoom(bed, buffer, size, kFirst + count * kEntryBytes)) {
        return kOverflow;
    }
    for (uint32_t i = 0; i < count; ++i) {
        const Address entry = buffer + kFirst + i * kEntryBytes;
        WriteGuest(bed, entry, i + 1 < count ? entry + kEntryBytes : 0);
        WriteNarrow(bed, entry + 4, servers[i]);
    }
    return kNoError;
}

// MIB_IPNETTABLE: a count, then index, length and 8 bytes of hardware address, address, type.
Error GetIpNetTable(Bed& bed, Address buffer, Address size) {
    constexpr uint32_t kRowBytes = 24;
    std::vector<Host> known(std::begin(device_script::kHosts), std::end(device_script::kHosts));
    std::erase_if(known, [](const Host& host) { return host.mac == nullptr; });
    if (!HasRoom(bed, buffer, size, 4 + known.size() * kRowBytes)) {
        return kInsufficientBuffer;
    }
    WriteGuest(bed, buffer, static_cast<uint32_t>(known.size()));
    for (const Host& host : known) {
        WriteGuest(bed, buffer + 8, uint32_t{6});
        WriteBytes(bed, buffer + 12, host.mac, 6);
        WriteGuest(bed, buffer + 20, AddressOf(host));
        buffer += kRowBytes;
    }
    return kNoError;
}

// ICMP_ECHO_REPLY of 28 bytes, then the bytes that were sent.
bool IcmpSendEcho(Bed& bed, Echo&, uint32_t address, Address data, uint16_t bytes, uint32_t, Address reply,
                  uint32_t room) {
    const Host* host = device_script::FindHost(address);
    if (host == nullptr || room < 28U + bytes) {
        return false;
    }
    WriteGuest(bed, reply, std::array<uint32_t, 7>{address, 0, host->roundTripMs, bytes, reply + 28, 64, 0});
    if (const uint8_t* sent = GuestMemory(bed, data, bytes)) {
        WriteBytes(bed, reply + 28, sent, bytes);
    }
    return true;
}

std::string_view DriverValue(const World& world, uint32_t oid) {
    if (oid == device_script::kOidRssi) {
        return {reinterpret_cast<const char*>(&world.dbm), sizeof(world.dbm)};
    }
    if (oid == device_script::kOidBssid && world.associated) {
        return {device_script::kAssociatedBssid, 6};
    }
    const auto* found = std::find_if(std::begin(device_script::kOids), std::end(device_script::kOids),
                                     [&](const auto& value) { return value.oid == oid; });
    return found != std::end(device_script::kOids)
               ? std::string_view(static_cast<const char*>(found->bytes), found->size)
               : "";
}

// The binding's name behind a record of five words, or the value behind an identifier and the binding's name.
bool DeviceIoControl(Bed& bed, Driver&, uint32_t code, Address in, uint32_t inBytes, Address out, uint32_t room,
                     Address done) {
    constexpr uint32_t kQueryBinding = 0x0012080C, kSet = 0x00120814;
    const std::u16string binding = Widen(device_script::kBinding);
    const auto nameBytes = static_cast<uint32_t>(binding.size() * 2);
    if (code == kQueryBinding) {
        WriteGuest(bed, out, std::array<uint32_t, 5>{0, 20, nameBytes, 20 + nameBytes, 0});
        WriteBytes(bed, out + 20, binding.data(), nameBytes);
        WriteGuest(bed, done, 20 + nameBytes);
        return inBytes >= 8;
    }
    const bool isBound = ReadText(bed, ReadGuest<uint32_t>(bed, in + 4)) == binding;
    if (!isBound || code == kSet) {
        return isBound;
    }
    const std::string_view value = DriverValue(Part<World>(bed), ReadGuest<uint32_t>(bed, in));
    if (value.empty() || room < 8 + value.size()) {
        return false;
    }
    WriteBytes(bed, out + 8, value.data(), value.size());
    WriteGuest(bed, done, static_cast<uint32_t>(8 + value.size()));
    return true;
}

Error GetNumberOfInterfaces(Bed& bed, Address number) {
    WriteGuest(bed, number, static_cast<uint32_t>(UpAdapters(bed).size()));
    return kNoError;
}

}  // namespace

StandInTable NetworkStandIns() {
    return {
        {"GetNumberOfInterfaces", GetNumberOfInterfaces},
        {"GetAdaptersInfo", GetAdaptersInfo},
        {"GetInterfaceInfo", GetInterfaceInfo},
        {"GetIfEntry", GetIfEntry},
        {"GetPerAdapterInfo", GetPerAdapterInfo},
        {"GetIpNetTable", GetIpNetTable},
        {"IpReleaseAddress", [](Bed&) { return kNoError; }},
        {"IpRenewAddress", [](Bed&) { return kNoError; }},
        {"IcmpCreateFile", [](Bed& bed) { return AddObject(bed, std::make_unique<Echo>()); }},
        {"IcmpCloseHandle", RemoveObject<Echo>},
        {"IcmpSendEcho", IcmpSendEcho},
        {"DeviceIoControl", DeviceIoControl},
    };
}

uint32_t OpenDriver(Bed& bed) {
    return Part<World>(bed).radio ? AddObject(bed, std::make_unique<Driver>()) : 0;
}
