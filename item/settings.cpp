// Reads the item's settings once at attach; single values are also read and written by the tools.

#include "item/settings.h"

#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "platform/format_text.h"

namespace {

constexpr wchar_t kDefaultMakerFolder[] = L"\\Program Files\\Ostrik";
constexpr wchar_t kDefaultDataFolder[] = L"\\Program Files\\Ostrik\\Quorvane";

bool ReadSetting(const wchar_t* name, DWORD wantedType, void* value, DWORD bytes, DWORD* stored) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return false;
    }
    DWORD type = 0;
    DWORD size = bytes;
    const LONG result = RegQueryValueExW(key, name, nullptr, &type, static_cast<BYTE*>(value), &size);
    RegCloseKey(key);
    *stored = size;
    return result == ERROR_SUCCESS && type == wantedType;
}

bool WriteSetting(const wchar_t* name, DWORD type, const void* value, DWORD bytes) {
    HKEY key = nullptr;
    DWORD disposition = 0;  // of no interest, but a handheld is not promised to take a null for it
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, &disposition) !=
        ERROR_SUCCESS) {
        return false;
    }
    const LONG result = RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(value), bytes);
    RegCloseKey(key);
    return result == ERROR_SUCCESS;
}

uint32_t ReadOrWriteDefault(const wchar_t* name, uint32_t fallback) {
    uint32_t value = fallback;
    if (!ReadNumberSetting(name, &value)) {
        WriteNumberSetting(name, fallback);
    }
    return value;
}

void LoadAdapterName() {
    if (ReadStringSetting(L"Adapter", itemState.adapterName)) {
        return;
    }
    if (ChooseAdapter()) {
        WriteStringSetting(L"Adapter", itemState.adapterName, wcslen(itemState.adapterName) + 1);
    }
}

void LoadDataFolder() {
    if (ReadStringSetting(L"InstallDir", itemState.dataFolder)) {
        return;
    }
    FormatText(itemState.dataFolder, L"%s", kDefaultDataFolder);
    CreateDirectoryW(kDefaultMakerFolder, nullptr);
    CreateDirectoryW(kDefaultDataFolder, nullptr);
}

void LoadXLocation() {
    constexpr uint32_t kDefaultXLocation = 75;
    itemState.xLocation = ReadOrWriteDefault(L"XLocation", kDefaultXLocation);
    if (itemState.xLocation > kLargestXLocation) {
        itemState.xLocation = kLargestXLocation;
        WriteNumberSetting(L"XLocation", kLargestXLocation);
    }
}

}  // namespace

bool ReadStringSetting(const wchar_t* name, std::span<wchar_t> value) {
    wchar_t text[kPathUnits];
    if (value.empty()) {
        return false;
    }
    const size_t room = value.size() < kPathUnits ? value.size() : kPathUnits;
    DWORD bytes = 0;
    if (!ReadSetting(name, REG_SZ, text, static_cast<DWORD>(room * sizeof(wchar_t)), &bytes)) {
        return false;
    }
    // A stored text need not carry its terminator; the output always does.
    const size_t units = bytes / sizeof(wchar_t);
    text[units < room ? units : room - 1] = 0;
    FormatText(value, L"%s", text);
    return true;
}

bool ReadNumberSetting(const wchar_t* name, uint32_t* value) {
    uint32_t stored = 0;
    DWORD bytes = 0;
    if (!ReadSetting(name, REG_DWORD, &stored, sizeof(stored), &bytes) || bytes != sizeof(stored)) {
        return false;
    }
    *value = stored;
    return true;
}

bool WriteStringSetting(const wchar_t* name, const wchar_t* value, size_t characters) {
    return WriteSetting(name, REG_SZ, value, static_cast<DWORD>(characters * sizeof(wchar_t)));
}

bool WriteNumberSetting(const wchar_t* name, uint32_t value) {
    return WriteSetting(name, REG_DWORD, &value, sizeof(value));
}

void LoadFolderSettings() {
    LoadAdapterName();
    LoadDataFolder();
}

void LoadDisplaySettings() {
    LoadXLocation();
    itemState.showTaskbarIcon = ReadOrWriteDefault(L"TIcon", 1) != 0;
    itemState.amPmFormat = ReadOrWriteDefault(L"TFormat", 1) != 0;
}
