// The item's registry values with any type and any bytes: the first byte is the type, the rest every value.

#include "item/settings.h"

#include "item/item_state.h"
#include "tests/fuzz/fuzzer.h"

namespace {

void LoadSettings(std::span<const uint8_t> input) {
    const DWORD type = input.empty() ? REG_SZ : input[0];
    Take(input, 1);
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    for (const wchar_t* name : {L"Adapter", L"InstallDir", L"XLocation", L"TIcon", L"TFormat", L"EchoHost"}) {
        RegSetValueExW(key, name, 0, type, input.data(), static_cast<DWORD>(input.size()));
    }
    RegCloseKey(key);
    LoadFolderSettings();
    LoadDisplaySettings();
    Demand(itemState.xLocation <= kLargestXLocation);
    Demand(wcsnlen(itemState.dataFolder, kPathUnits) < kPathUnits);
    wchar_t few[4] = L"?";
    Demand(!ReadStringSetting(L"EchoHost", few) || (type == REG_SZ && wcsnlen(few, 4) < 4));
}

std::vector<Bytes> Values() {
    return {{REG_DWORD, 75, 0, 0, 0},
            {REG_DWORD, 0x80, 2, 0, 0},
            {REG_SZ, 'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0, 0, 0},
            Bytes(1 + kPathUnits * sizeof(wchar_t), REG_SZ)};
}

const RegisteredFuzzer kFuzzer({"settings", {"item/settings.cpp"}, LoadSettings, Values});

}  // namespace
