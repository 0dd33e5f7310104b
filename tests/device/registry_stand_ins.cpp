// A registry in memory. Names of keys and values are compared as they are written: the program spells each in one way.

#include "tests/device/stand_in_state.h"

namespace {

constexpr uint32_t kLocalMachine = 0x80000002;
enum Error { kSuccess = 0, kFileNotFound = 2, kInvalidHandle = 6, kMoreData = 234 };

struct Key : Object {
    std::u16string path;
};

uint32_t Open(Bed& bed, const Arguments& a, size_t result, bool creates) {
    Registry& registry = Part<Registry>(bed);
    const std::u16string path = ReadText(bed, a[1]);
    if (a[0] != kLocalMachine || (!creates && registry.keys.count(path) == 0)) {
        return kFileNotFound;
    }
    registry.keys[path];
    auto key = std::make_unique<Key>();
    key->path = path;
    WriteGuest(bed, a[result], AddObject(bed, std::move(key)));
    ++registry.open;
    return kSuccess;
}

uint32_t RegQueryValueExW(Bed& bed, const Arguments& a) {
    const Key* key = FindObject<Key>(bed, a[0]);
    if (key == nullptr) {
        return kInvalidHandle;
    }
    const RegistryKey& values = Part<Registry>(bed).keys[key->path];
    const auto value = values.find(ReadText(bed, a[1]));
    if (value == values.end()) {
        return kFileNotFound;
    }
    const auto bytes = static_cast<uint32_t>(value->second.bytes.size());
    const auto room = ReadGuest<uint32_t>(bed, a[5]);
    WriteGuest(bed, a[5], bytes);
    if (a[3] != 0) {
        WriteGuest(bed, a[3], value->second.type);
    }
    if (bytes > room) {
        return kMoreData;
    }
    WriteBytes(bed, a[4], value->second.bytes.data(), bytes);
    return kSuccess;
}

uint32_t RegSetValueExW(Bed& bed, const Arguments& a) {
    const Key* key = FindObject<Key>(bed, a[0]);
    const uint8_t* data = GuestMemory(bed, a[4], a[5]);
    if (key == nullptr || data == nullptr) {
        return kInvalidHandle;
    }
    Part<Registry>(bed).keys[key->path][ReadText(bed, a[1])] = {a[3], {data, data + a[5]}};
    return kSuccess;
}

constexpr StandInRow kRows[] = {
    {"RegOpenKeyExW", [](Bed& bed, const Arguments& a) { return Open(bed, a, 4, false); }},
    {"RegCreateKeyExW", [](Bed& bed, const Arguments& a) { return Open(bed, a, 7, true); }},
    {"RegQueryValueExW", RegQueryValueExW},
    {"RegSetValueExW", RegSetValueExW},
    {"RegCloseKey",
     [](Bed& bed, const Arguments& a) -> uint32_t {
         --Part<Registry>(bed).open;
         return RemoveObject<Key>(bed, a[0]) ? kSuccess : kInvalidHandle;
     }},
};

}  // namespace

std::span<const StandInRow> RegistryStandIns() {
    return kRows;
}
