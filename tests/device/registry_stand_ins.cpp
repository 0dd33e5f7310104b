// A registry in memory. Names of keys and values are compared as they are written: the program spells each in one way.

#include "tests/device/stand_in.h"
#include "tests/device/stand_in_state.h"

namespace {

constexpr uint32_t kLocalMachine = 0x80000002;
enum Error { kSuccess = 0, kFileNotFound = 2, kInvalidHandle = 6, kMoreData = 234 };

struct Key : Object {
    std::u16string path;
};

Error Open(const Arguments& a, size_t result, bool creates) {
    Registry& registry = Part<Registry>(a.bed);
    const std::u16string path = ReadText(a.bed, a[1]);
    if (a[0] != kLocalMachine || (!creates && registry.keys.count(path) == 0)) {
        return kFileNotFound;
    }
    registry.keys[path];
    auto key = std::make_unique<Key>();
    key->path = path;
    WriteGuest(a.bed, a[result], AddObject(a.bed, std::move(key)));
    ++registry.open;
    return kSuccess;
}

Error RegQueryValueExW(Bed& bed, Key& key, std::u16string name, uint32_t, Address type, Address data, Address size) {
    const RegistryKey& values = Part<Registry>(bed).keys[key.path];
    const auto value = values.find(name);
    if (value == values.end()) {
        return kFileNotFound;
    }
    const auto bytes = static_cast<uint32_t>(value->second.bytes.size());
    const auto room = ReadGuest<uint32_t>(bed, size);
    WriteGuest(bed, size, bytes);
    if (type != 0) {
        WriteGuest(bed, type, value->second.type);
    }
    if (bytes > room) {
        return kMoreData;
    }
    WriteBytes(bed, data, value->second.bytes.data(), bytes);
    return kSuccess;
}

Error RegSetValueExW(Bed& bed, Key& key, std::u16string name, uint32_t, uint32_t type, Address data, uint32_t bytes) {
    const uint8_t* from = GuestMemory(bed, data, bytes);
    if (from == nullptr) {
        return kInvalidHandle;
    }
    Part<Registry>(bed).keys[key.path][name] = {type, {from, from + bytes}};
    return kSuccess;
}

Error RegCloseKey(Bed& bed, uint32_t key) {
    --Part<Registry>(bed).open;
    return RemoveObject<Key>(bed, key) ? kSuccess : kInvalidHandle;
}

}  // namespace

StandInTable RegistryStandIns() {
    return {
        {"RegOpenKeyExW", [](Bed&, const Arguments& a) { return Open(a, 4, false); }},
        {"RegCreateKeyExW", [](Bed&, const Arguments& a) { return Open(a, 7, true); }},
        {"RegQueryValueExW", RegQueryValueExW},
        {"RegSetValueExW", RegSetValueExW},
        {"RegCloseKey", RegCloseKey},
    };
}
